#include "display/box_geometry.h"
#include "display/overlays.h"

#include <gtest/gtest.h>

#include "golden.h"
#include "picture_scene.h"

namespace kv408::test {
namespace {

constexpr Pixel text = pixel_of(rgb(255, 255, 255));

/// A picture of the frame alone, without traces.
struct OverlayTest : testing::Test, PictureScene {
    OverlayTest() {
        panel.gridenable.set_checked(false);
        panel.trigsource.set_entries({"TRIG1", "TRIG2", "EXT"});
        panel.trigsource.set_index(0);
        for (ChannelControls& controls : panel.channel) {
            controls.enable.set_checked(false);
        }
        picture.makegrid();
        golden.border(pixel_of(rgb(92, 92, 92)));
    }

    [[nodiscard]] testing::AssertionResult is_golden() {
        picture.draw(draw_flags::all);
        return same(picture.surface(), golden);
    }

    /// The line of cursor `cursor`. A line has no last pixel: those at 640 and at 512 are left out.
    void put_line(bool voltage, bool solid, std::size_t cursor) {
        const Pixel pen = pixel_of(rgb(255, 255, 128));
        if (voltage && solid) {
            golden.across(0, 639, cursors.vpos[cursor], pen);
        } else if (voltage) {
            golden.dots_across(0, 639, cursors.vpos[cursor], pen);
        } else if (solid) {
            golden.down(cursors.hpos[cursor], 0, 511, pen);
        } else {
            golden.dots_down(cursors.hpos[cursor], 0, 511, pen);
        }
    }

    Golden golden;
};

TEST_F(OverlayTest, TheCursorPenIsTheMeanOfTheChannelsAndTheTextColour) {
    cursors.cursormode = cursor_mode::voltage_1;
    // 255 and 0 make 127.5, whose even neighbour is 128.
    EXPECT_EQ(cursor_lines(cursors, colours).colour, pixel_of(rgb(255, 255, 128)));
    cursors.channel = ch2;
    // (128 + 255) / 2 = 191.5, (220 + 255) / 2 = 237.5.
    EXPECT_EQ(cursor_lines(cursors, colours).colour, pixel_of(rgb(192, 238, 255)));
    cursors.cursormode = cursor_mode::time_both;
    colours.ch2 = rgb(2, 4, 255);
    colours.normal_text = rgb(1, 3, 254);
    // 1.5, 3.5 and 254.5 go to 2, 4 and 254.
    EXPECT_EQ(cursor_lines(cursors, colours).colour, pixel_of(rgb(2, 4, 254)));
}

TEST_F(OverlayTest, ThereAreNoLinesInModesWithoutCursors) {
    for (const int mode : {0, 7, -1, 32767}) {
        cursors.cursormode = static_cast<std::int16_t>(mode);
        EXPECT_TRUE(is_golden()) << mode;
    }
}

struct ModeRow {
    std::int16_t mode;
    bool voltage;
    bool first_solid;
    bool second_solid;
};

constexpr ModeRow mode_rows[] = {{1, true, true, false},  {2, true, false, true},
                                 {3, false, true, false}, {4, false, false, true},
                                 {5, true, false, false}, {6, false, false, false}};

TEST_F(OverlayTest, TheActiveCursorIsSolidAndTheOtherDotted) {
    cursors.vpos = {101, 350};
    cursors.hpos = {77, 600};
    const Golden frame = golden;
    for (const ModeRow& row : mode_rows) {
        golden = frame;
        for (const bool first : {true, false}) {
            const bool solid = first ? row.first_solid : row.second_solid;
            put_line(row.voltage, solid, first ? 0 : 1);
        }
        cursors.cursormode = row.mode;
        EXPECT_TRUE(is_golden()) << "mode " << row.mode;
    }
}

TEST_F(OverlayTest, CursorsReachTheEdgesOfThePlot) {
    cursors.vpos = {0, 512};
    cursors.cursormode = cursor_mode::voltage_2;
    const Pixel pen = pixel_of(rgb(255, 255, 128));
    golden.dots_across(0, 639, 0, pen);
    golden.across(0, 639, 512, pen);
    EXPECT_TRUE(is_golden());
}

struct LevelRow {
    Channel source;
    std::int16_t code;
    double scale;
    double vtfactor;
    std::int16_t pos;
    std::int32_t row;
};

TEST_F(OverlayTest, TheTriggerRowCountsFromTheSourceChannelsZeroRow) {
    const LevelRow rows[] = {
        {ch1, 2048, 0.32, 1.0, 256, 256},
        {ch1, 2148, 0.32, 1.0, 256, 192},         // 100 x 2 x 0.32 = 64 up
        {ch2, 1948, 0.32, 1.0, 200, 264},         // 64 down from 200
        {ch1, 2148, 0.32, 2.0, 300, 172},         // 128 up through the trigger input
        {ch1, 2068, 512.0 / 480, 1.0, 256, 213},  // 42.67 up: high gain has the 2 as well
        {ch2, 2058, 512.0 / 2400, 2.0, 256, 247}, // 8.53 up
        {ch1, 2049, 0.25, 1.0, 256, 256},         // 255.5, half to even
        {ch1, 2051, 0.25, 1.0, 256, 254},         // 254.5
        {ch2, 0, 0.064, 1.0, 256, 518},           // 262.144 down, outside the plot
    };
    for (const LevelRow& row : rows) {
        trigger.saved_trigpos = {1, 1};
        trigger.saved_trigpos[row.source] = row.code;
        channels = {};
        channels[row.source].scale = row.scale;
        channels[row.source].vtfactor = row.vtfactor;
        channels[row.source].pos = row.pos;
        EXPECT_EQ(trigger_row(row.source, trigger, channels), row.row) << row.code;
    }
}

TEST_F(OverlayTest, TheTriggerLineShowsOnlyWhileItsFlagIsSet) {
    channels[0].scale = 0.32;
    channels[1].scale = 0.064;
    channels[1].pos = 300;
    trigger.saved_trigpos = {2148, 1548};
    EXPECT_TRUE(is_golden());
    acquisition.holdoff = true;
    const Golden frame = golden;
    golden.dots_across(0, 639, 192, text);
    EXPECT_TRUE(is_golden());
    panel.trigsource.set_index(1);
    golden = frame;
    golden.dots_across(0, 639, 364, text); // 500 x 2 x 0.064 = 64 down from 300
    EXPECT_TRUE(is_golden());
    acquisition.holdoff = false;
    golden = frame;
    EXPECT_TRUE(is_golden());
}

TEST_F(OverlayTest, TheTriggerLineTakesTheTextColourAndCoversTheCursors) {
    colours.normal_text = rgb(10, 200, 30);
    cursors.cursormode = cursor_mode::voltage_1;
    cursors.vpos = {256, 20};
    acquisition.holdoff = true;                    // level 0 on row 256
    const Pixel pen = pixel_of(rgb(132, 228, 15)); // 132.5, 227.5, 15
    golden.dots_across(0, 639, 20, pen);
    golden.across(0, 639, 256, pen);
    golden.dots_across(0, 639, 256, pixel_of(rgb(10, 200, 30)));
    EXPECT_TRUE(is_golden());
}

/// Puts the zero lines of both channels on the rows `first` and `second` of the plot.
void put_zero_lines(Channels& channels, int first, int second) {
    channels[0].pos = static_cast<std::int16_t>(first);
    channels[1].pos = static_cast<std::int16_t>(second);
}

TEST_F(OverlayTest, TheOffsetLabelsTellTheZeroLinesDistanceFromTheCentre) {
    channels[0].pixpermv = 0.64;
    channels[1].pixpermv = 6.4;
    put_zero_lines(channels, 206, 356);
    picture.draw(draw_flags::labels);
    EXPECT_EQ(panel.channel[0].ofset.caption(), "78.1mV");  // 50 / 0.64 = 78.125
    EXPECT_EQ(panel.channel[1].ofset.caption(), "-15.6mV"); // -100 / 6.4 = -15.625
    put_zero_lines(channels, 256, 0);
    channels[1].pixpermv = 0.128;
    picture.draw(draw_flags::labels);
    EXPECT_EQ(panel.channel[0].ofset.caption(), "0.00V");
    EXPECT_EQ(panel.channel[1].ofset.caption(), "2.00V"); // 256 / 0.128 = 2000
}

TEST_F(OverlayTest, TheLevelIsReadOutInMillivoltsOfItsInput) {
    trigger.saved_trigpos = {2148, 1948};
    channels[0].vtfactor = 2.0;
    picture.draw(draw_flags::labels);
    EXPECT_EQ(panel.trlevelmv.caption(), " 200mV");
    panel.trigsource.set_index(1);
    picture.draw(draw_flags::labels);
    EXPECT_EQ(panel.trlevelmv.caption(), "-100mV");
}

TEST_F(OverlayTest, TheTriggerMarkerLiesAtItsLevelWithinThePlot) {
    channels[0].scale = 0.32;
    channels[1].scale = 0.25;
    put_zero_lines(channels, 256, 100);
    const auto top = [this](Channel source, std::int16_t code) {
        trigger.saved_trigpos[source] = code;
        panel.trigsource.set_index(static_cast<int>(source));
        picture.draw(draw_flags::labels);
        return box::right_marker(panel.trigertext.marked().value()).top;
    };
    EXPECT_EQ(top(ch1, 2048), 20 + 256 - 7);
    EXPECT_EQ(top(ch1, 2148), 20 + 256 - 7 - 64);
    EXPECT_EQ(top(ch2, 2048), 20 + 100 - 7);
    EXPECT_EQ(top(ch2, 2049), 112); // 112.5, half to even
    EXPECT_EQ(top(ch2, 2047), 114); // 113.5
    EXPECT_EQ(top(ch1, 4095), 20 - 6);
    EXPECT_EQ(top(ch1, 0), 20 + 506);
}

TEST_F(OverlayTest, AnUnknownSourceParksTheMarkerAboveThePlotAndKeepsTheReadOut) {
    trigger.saved_trigpos = {2148, 1948};
    put_zero_lines(channels, 256, 256);
    picture.draw(draw_flags::labels);
    panel.trigsource.set_index(2);
    acquisition.holdoff = true;
    EXPECT_TRUE(is_golden()) << "an unknown source has no level line";
    EXPECT_EQ(panel.trigertext.marked(), 1);
    EXPECT_EQ(panel.trlevelmv.caption(), " 100mV");
}

TEST_F(OverlayTest, TheLabelsWaitForStartUpAndTheEndOfAChange) {
    put_zero_lines(channels, 206, 256);
    channels[0].pixpermv = 0.64;
    const std::string before = panel.channel[0].ofset.caption();
    for (const char* state : {"changes", "changes1", "startscope"}) {
        acquisition.scopestate = state;
        picture.draw(draw_flags::all);
        EXPECT_EQ(panel.channel[0].ofset.caption(), before) << state;
    }
    acquisition.scopestate = "scope";
    picture.draw(draw_flags::ch1 | draw_flags::ch2 | draw_flags::overlays);
    EXPECT_EQ(panel.channel[0].ofset.caption(), before);
    picture.draw(draw_flags::labels);
    EXPECT_EQ(panel.channel[0].ofset.caption(), "78.1mV");
}

} // namespace
} // namespace kv408::test
