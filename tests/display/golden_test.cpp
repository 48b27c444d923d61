// Whole pictures against lists of their pixels.

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "golden_scene.h"

namespace kv408::test {
namespace {

TEST_F(GoldenTest, GridOn) {
    show_only(false, false);
    EXPECT_TRUE(is_golden("grid_on"));
}

TEST_F(GoldenTest, GridOff) {
    show_only(false, false);
    panel.gridenable.set_checked(false);
    picture.makegrid();
    golden = Golden();
    golden.border(grey);
    EXPECT_TRUE(is_golden("grid_off"));
}

/// Rises from row 399 (falls from row 101) by a row a point up to point 300, then stays flat.
int rising(int index) {
    return 400 - std::min(index, 300);
}
int falling(int index) {
    return 100 + std::min(index, 300);
}

// One row per column: every point is its own pixel. They cross at point 150 on row 250.
TEST_F(GoldenTest, BothTracesCrossing) {
    sweep(ch1, rising);
    sweep(ch2, falling);
    for (int x = 1; x <= 638; ++x) {
        golden.dot(x, falling(x), blue);
    }
    for (int x = 1; x <= 638; ++x) {
        golden.dot(x, rising(x), yellow);
    }
    ASSERT_EQ(golden.at(150, 250), yellow);
    EXPECT_TRUE(is_golden("traces_crossing"));
}

TEST_F(GoldenTest, BothTracesCrossingAsDots) {
    panel.eyeon.set_checked(true);
    sweep(ch1, rising);
    sweep(ch2, falling);
    for (int x = 1; x <= 639; ++x) {
        golden.dot(x, falling(x), blue);
    }
    for (int x = 1; x <= 639; ++x) {
        golden.dot(x, rising(x), yellow);
    }
    EXPECT_TRUE(is_golden("traces_crossing_dots"));
}

TEST_F(GoldenTest, CursorsOverATraceAndTheGrid) {
    show_only(true, false);
    set_flat(ch1, 150);
    golden.across(1, 638, 150, yellow);
    const Golden below = golden;
    const Pixel pen = pixel_of(rgb(192, 238, 255));
    cursors.channel = ch2;
    cursors.vpos = {150, 256};
    cursors.hpos = {320, 128};
    const auto rows = [&](bool first, bool second) {
        first ? golden.across(0, 639, 150, pen) : golden.dots_across(0, 639, 150, pen);
        second ? golden.across(0, 639, 256, pen) : golden.dots_across(0, 639, 256, pen);
    };
    const auto columns = [&](bool first, bool second) {
        first ? golden.down(320, 0, 511, pen) : golden.dots_down(320, 0, 511, pen);
        second ? golden.down(128, 0, 511, pen) : golden.dots_down(128, 0, 511, pen);
    };
    const std::function<void()> lines[] = {
        [] {},
        [&] { rows(true, false); },
        [&] { rows(false, true); },
        [&] { columns(true, false); },
        [&] { columns(false, true); },
        [&] { rows(false, false); },
        [&] { columns(false, false); },
    };
    for (std::int16_t mode = 0; mode <= 6; ++mode) {
        cursors.cursormode = mode;
        golden = below;
        lines[mode]();
        EXPECT_TRUE(is_golden("cursor_mode_" + std::to_string(mode)));
    }
}

TEST_F(GoldenTest, TriggerLineOverTheTraces) {
    channels[0].pos = 190;
    trigger.saved_trigpos[0] = 2053; // 10 rows up at a row a code
    set_flat(ch1, 180);
    set_flat(ch2, 180);
    acquisition.holdoff = true;
    golden.across(1, 638, 180, yellow);
    golden.dots_across(0, 639, 180, text_white);
    EXPECT_TRUE(is_golden("trigger_line"));
}

// A code of 65535 lies above the plot and is drawn on row 1; code 0 lies below, on row 511.
TEST_F(GoldenTest, ClampedTraces) {
    samples[0].raw.fill(65535);
    samples[1].raw.fill(0);
    refresh_all();
    golden.across(1, 638, 511, blue);
    golden.across(1, 638, 1, yellow);
    EXPECT_TRUE(is_golden("clamped_traces"));
}

// In a running pass 19 columns ahead of the newest point are blank.
TEST_F(GoldenTest, TheGapAheadOfTheNewestPoint) {
    set_flat(ch1, 150);
    set_flat(ch2, 300);
    acquisition.pointmode = true;
    picture.set_newest_point(400);
    for (const auto& [row, colour] : {std::pair{150, yellow}, std::pair{300, blue}}) {
        golden.across(1, 400, row, colour);
        golden.across(420, 638, row, colour);
    }
    EXPECT_TRUE(is_golden("gap_ahead_of_the_newest_point"));
}

} // namespace
} // namespace kv408::test
