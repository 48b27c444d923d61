#pragma once

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "display/surface.h"
#include "state/plot_geometry.h"

namespace kv408::test {

/// The picture as it should be, put down pixel by pixel from lists of places. It uses nothing of
/// the drawing code: what lies outside the picture is left out, later pixels cover earlier ones.
class Golden {
public:
    /// A picture of one colour.
    explicit Golden(Pixel background = 0xFF000000U)
        : pixels_(static_cast<std::size_t>(plot::width) * plot::height, background) {}

    void dot(int x, int y, Pixel colour) {
        if (x >= 0 && x < plot::width && y >= 0 && y < plot::height) {
            pixels_[place(x, y)] = colour;
        }
    }

    /// The pixels (`first`..`last`, `y`), both ends included.
    void across(int first, int last, int y, Pixel colour) {
        for (int x = first; x <= last; ++x) {
            dot(x, y, colour);
        }
    }

    /// The pixels (`x`, `first`..`last`), both ends included.
    void down(int x, int first, int last, Pixel colour) {
        for (int y = first; y <= last; ++y) {
            dot(x, y, colour);
        }
    }

    /// The same with three pixels drawn, three left as they are, and so on from `first`.
    void dots_across(int first, int last, int y, Pixel colour) {
        for (int x = first; x <= last; x += 6) {
            across(x, x + 2 < last ? x + 2 : last, y, colour);
        }
    }
    void dots_down(int x, int first, int last, Pixel colour) {
        for (int y = first; y <= last; y += 6) {
            down(x, y, y + 2 < last ? y + 2 : last, colour);
        }
    }

    /// The frame around the picture.
    void border(Pixel colour) {
        across(0, 640, 0, colour);
        across(0, 640, 512, colour);
        down(0, 0, 512, colour);
        down(640, 0, 512, colour);
    }

    /// Frame, dotted division lines and the ticks at every fifth of a division.
    void graticule(Pixel colour) {
        border(colour);
        for (int dot_number = 0; dot_number <= 50; ++dot_number) {
            const int x = fifth(dot_number);
            for (int row = 1; row <= 7; ++row) {
                dot(x, 64 * row, colour);
            }
            for (const int y : {0, 256, 512}) {
                down(x, y - 3, y + 3, colour);
            }
        }
        for (int dot_number = 0; dot_number <= 40; ++dot_number) {
            const int y = fifth(dot_number);
            for (int column = 1; column <= 9; ++column) {
                dot(64 * column, y, colour);
            }
            for (const int x : {0, 320, 640}) {
                across(x - 3, x + 3, y, colour);
            }
        }
    }

    [[nodiscard]] Pixel at(int x, int y) const { return pixels_[place(x, y)]; }

    /// Row after row from the top.
    [[nodiscard]] const std::vector<Pixel>& pixels() const { return pixels_; }

private:
    /// Place of a fifth of a division: 0, 13, 26, 38, 51, then the same again 64 further on.
    static int fifth(int number) {
        constexpr int places[] = {0, 13, 26, 38, 51};
        return 64 * (number / 5) + places[number % 5];
    }

    static std::size_t place(int x, int y) {
        return static_cast<std::size_t>(y) * plot::width + static_cast<std::size_t>(x);
    }

    std::vector<Pixel> pixels_;
};

/// Whether `picture` is `golden`; tells the number of wrong pixels and the first of them.
inline testing::AssertionResult same(const Surface& picture, const Golden& golden) {
    int wrong = 0;
    Point first;
    for (int y = 0; y < plot::height; ++y) {
        for (int x = 0; x < plot::width; ++x) {
            if (picture.at(x, y) != golden.at(x, y) && wrong++ == 0) {
                first = {x, y};
            }
        }
    }
    if (wrong == 0) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << wrong << " pixels differ, the first at " << first.x << ", " << first.y << ": "
           << std::hex << picture.at(first.x, first.y) << " instead of "
           << golden.at(first.x, first.y);
}

} // namespace kv408::test
