// The fading history, line by line and dot by dot, against the list of its pixels.

#include <string>
#include <tuple>
#include <vector>

#include "golden_scene.h"

namespace kv408::test {
namespace {

/// A trace that steps down by 5 rows after column 320. Of the connecting line, the upper rows up
/// to the middle belong to column 320 and the rest to column 321.
void put_step(Golden& golden, int row, bool dots, Pixel colour) {
    golden.across(1, 320, row, colour);
    golden.across(321, dots ? 639 : 638, row + 5, colour);
    if (!dots) {
        golden.down(320, row, row + 2, colour);
        golden.down(321, row + 3, row + 5, colour);
    }
}

struct FadeRow {
    int depth;
    std::vector<Pixel> ch1; ///< generation 0 first; the others are not seen
    std::vector<Pixel> ch2;
};

Pixel grey_yellow(int value) {
    const auto part = static_cast<std::uint8_t>(value);
    return pixel_of(rgb(part, part, 0));
}

Pixel dark_blue(int red_part, int green_part, int blue_part) {
    return pixel_of(rgb(static_cast<std::uint8_t>(red_part), static_cast<std::uint8_t>(green_part),
                        static_cast<std::uint8_t>(blue_part)));
}

const std::vector<FadeRow> fade_rows = {
    {0, {}, {}},
    // Steps of 255 / 4 = 63.75, cut to 63; 128 / 4 = 32, 220 / 4 = 55, 63.
    {3,
     {grey_yellow(192), grey_yellow(129), grey_yellow(66)},
     {dark_blue(96, 165, 192), dark_blue(64, 110, 129), dark_blue(32, 55, 66)}},
    // Steps of 25; 12, 22, 25.
    {9,
     {grey_yellow(230), grey_yellow(205), grey_yellow(180), grey_yellow(155), grey_yellow(130),
      grey_yellow(105), grey_yellow(80), grey_yellow(55), grey_yellow(30)},
     {dark_blue(116, 198, 230), dark_blue(104, 176, 205), dark_blue(92, 154, 180),
      dark_blue(80, 132, 155), dark_blue(68, 110, 130), dark_blue(56, 88, 105),
      dark_blue(44, 66, 80), dark_blue(32, 44, 55), dark_blue(20, 22, 30)}},
};

class GoldenPersistence : public GoldenTest,
                          public testing::WithParamInterface<std::tuple<std::size_t, bool>> {};

// The history: generation g lies 10 (g + 1) rows below the current trace.
TEST_P(GoldenPersistence, FadesWithAge) {
    const auto& [row, dots] = GetParam();
    const FadeRow& fade = fade_rows[row];
    panel.persist.set_checked(true);
    panel.eyeon.set_checked(dots);
    settings.persisttime = static_cast<std::int16_t>(fade.depth);
    picture.calcPersistColors();
    for (int age = 9; age >= 0; --age) {
        for (const Channel channel : both_channels) {
            const int left = (channel == ch1 ? 100 : 300) + 10 * age;
            sweep(channel, [left](int index) { return index <= 320 ? left : left + 5; });
        }
        if (age > 0) {
            picture.movepersistance();
        }
    }
    for (std::size_t generation = 0; generation < fade.ch1.size(); ++generation) {
        const int down = 10 * (static_cast<int>(generation) + 1);
        put_step(golden, 100 + down, dots, fade.ch1[generation]);
        put_step(golden, 300 + down, dots, fade.ch2[generation]);
    }
    put_step(golden, 100, dots, yellow);
    put_step(golden, 300, dots, blue);
    EXPECT_TRUE(
        is_golden("persistence_" + std::to_string(fade.depth) + (dots ? "_dots" : "_lines")));
}

INSTANTIATE_TEST_SUITE_P(DepthsAndModes, GoldenPersistence,
                         testing::Combine(testing::Values(0U, 1U, 2U), testing::Bool()));

} // namespace
} // namespace kv408::test
