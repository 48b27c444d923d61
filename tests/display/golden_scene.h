#pragma once

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "golden.h"
#include "picture_scene.h"
#include "support/png.h"

namespace kv408::test {

inline constexpr Pixel grey = pixel_of(rgb(92, 92, 92));
inline constexpr Pixel text_white = pixel_of(rgb(255, 255, 255));

/// A picture on the grid with the list of the pixels that it should have. The pictures that the
/// lists give are kept in golden/ to be looked at. With KV408_WRITE_GOLDEN in the environment those
/// files are written anew, out of the lists and not out of what the program draws.
struct GoldenTest : testing::Test, PictureScene {
    GoldenTest() {
        panel.trigsource.set_entries({"TRIG1", "TRIG2"});
        panel.trigsource.set_index(0);
        golden.graticule(grey);
    }

    void show_only(bool first, bool second) {
        panel.channel[0].enable.set_checked(first);
        panel.channel[1].enable.set_checked(second);
    }

    /// Gives `channel` the rows that `row` has for the points 1..640 and maps them one by one.
    void sweep(Channel channel, const std::function<int(int)>& row) {
        for (int index = 1; index <= 640; ++index) {
            set_row(channel, index, row(index));
            picture.refresh(channel, index);
        }
    }

    /// Whether the picture is that of the list, and the list that of the file `name`.
    [[nodiscard]] testing::AssertionResult is_golden(const std::string& name) {
        picture.draw(draw_flags::all);
        const std::string path = std::string(KV408_GOLDEN_FOLDER) + "/" + name + ".png";
        const std::string expected = PngWriter::file(golden.pixels(), plot::width);
        if (std::getenv("KV408_WRITE_GOLDEN") != nullptr) {
            std::ofstream(path, std::ios::binary) << expected;
        }
        std::ifstream file(path, std::ios::binary);
        const std::string kept{std::istreambuf_iterator<char>(file), {}};
        if (kept != expected) {
            return testing::AssertionFailure() << path << " is not the picture of the list";
        }
        return same(picture.surface(), golden);
    }

    Golden golden;
};

} // namespace kv408::test
