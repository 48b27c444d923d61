#include "display/annotations.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "golden_scene.h"

namespace kv408::test {
namespace {

constexpr Pixel mark_colour = pixel_of(rgb(255, 128, 128));
constexpr MarkKind level = MarkKind::lines;
constexpr MarkKind time = MarkKind::dots;

/// A picture with marks for both channels and results in all three slots.
struct AnnotationTest : GoldenTest {
    AnnotationTest() {
        for (auto& slot : marks.kind) {
            slot.fill(level);
        }
        set_flat(ch1, 150);
        set_flat(ch2, 300);
        golden.across(1, 638, 300, blue);
        golden.across(1, 638, 150, yellow);
    }

    /// Annotates slot `slot` alone, whose results are marked by `kind`.
    void annotate(std::size_t slot, MarkKind kind) {
        for (MeasurementControls& each : panel.measurement) {
            each.annotate.set_checked(false);
        }
        panel.measurement[slot].annotate.set_checked(true);
        marks.kind.at(slot).fill(kind);
    }

    void mark_rows(int first, int second, int third, int fourth) {
        const auto line = [](int row) { return AnnotationGeometry{{{1, row}, {639, row}}}; };
        marks.mark = {{{line(first), line(second)}, {line(third), line(fourth)}}};
    }

    [[nodiscard]] Annotations shown() const {
        return annotations(panel, marks, colours, acquisition);
    }

    /// Whether the channels have marks, as "1 2", "1", "2" or "".
    [[nodiscard]] std::string marked() const {
        std::string result;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            if (shown().channel[channel].kind != MarkKind::none) {
                result += channel == 0 ? "1" : "2";
            }
        }
        return result;
    }
};

/// The pixels of a dot whose square has this upper left corner: 4, 6, 8, 8, 8, 8, 6 and 4 a row.
void put_dot(Golden& golden, int left, int top) {
    const int widths[] = {4, 6, 8, 8, 8, 8, 6, 4};
    for (int row = 0; row < 8; ++row) {
        const int inset = (8 - widths[row]) / 2;
        golden.across(left + inset, left + 7 - inset, top + row, mark_colour);
    }
}

TEST_F(AnnotationTest, LevelsAreDottedLinesAcrossThePlot) {
    annotate(0, level);
    mark_rows(100, 199, 300, 412);
    for (const int row : {100, 199, 300, 412}) {
        golden.dots_across(1, 638, row, mark_colour);
    }
    EXPECT_TRUE(is_golden("annotation_levels"));
}

TEST_F(AnnotationTest, TimesAreDotsOnTheTrace) {
    annotate(2, time);
    const auto square = [](int left, int top) {
        return AnnotationGeometry{{{left, top}, {left + 8, top + 8}}};
    };
    marks.mark = {{{square(96, 146), square(300, 146)}, {square(-3, 296), square(636, 508)}}};
    put_dot(golden, 96, 146);
    put_dot(golden, 300, 146);
    put_dot(golden, -3, 296);  // over the left edge
    put_dot(golden, 636, 508); // over the lower right corner
    EXPECT_TRUE(is_golden("annotation_dots"));
}

TEST_F(AnnotationTest, LieOverTheCursorsAndUnderTheTriggerLine) {
    annotate(0, level);
    mark_rows(100, 100, 256, 256);
    cursors.cursormode = cursor_mode::voltage_1;
    cursors.vpos = {100, 200};
    acquisition.holdoff = true; // level 0 V, row 256
    const Pixel pen = pixel_of(rgb(255, 255, 128));
    golden.across(0, 639, 100, pen);
    golden.dots_across(0, 639, 200, pen);
    golden.dots_across(1, 638, 100, mark_colour);
    golden.dots_across(1, 638, 256, mark_colour);
    golden.dots_across(0, 639, 256, text_white);
    EXPECT_TRUE(is_golden("annotation_levels_among_lines"));
}

TEST_F(AnnotationTest, TakeTheirColourFromTheTable) {
    colours.annotations = rgb(1, 2, 3);
    annotate(0, level);
    EXPECT_EQ(shown().colour, pixel_of(rgb(1, 2, 3)));
}

TEST_F(AnnotationTest, ThereAreNoneWithoutACheckedBox) {
    EXPECT_EQ(marked(), "");
}

TEST_F(AnnotationTest, ThereAreNoneWhileMeasuringIsOff) {
    annotate(0, level);
    EXPECT_EQ(marked(), "12");
    panel.check1.set_checked(false);
    EXPECT_EQ(marked(), "");
}

TEST_F(AnnotationTest, ThereAreNoneWhileTheInstrumentWaits) {
    annotate(0, level);
    acquisition.activity = Activity::waiting_for_trigger;
    EXPECT_EQ(marked(), "");
}

TEST_F(AnnotationTest, AResultThatIsNotThereHasNoMark) {
    annotate(1, time);
    marks.kind[0][ch1] = MarkKind::none; // another slot's result does not matter
    EXPECT_EQ(marked(), "12");
    marks.kind[1][ch1] = MarkKind::none;
    EXPECT_EQ(marked(), "2");
    marks.kind[1] = {time, MarkKind::none};
    EXPECT_EQ(marked(), "1");
}

TEST_F(AnnotationTest, AChannelThatIsOffHasNoMark) {
    annotate(0, level);
    show_only(false, true);
    EXPECT_EQ(marked(), "2");
    show_only(true, false);
    EXPECT_EQ(marked(), "1");
}

TEST_F(AnnotationTest, OnlyCh2WaitsForAWholeSweep) {
    annotate(0, level);
    mark_rows(100, 101, 200, 201);
    acquisition.ready = {false, false};
    golden = Golden();
    golden.graticule(grey);
    golden.across(1, 638, 150, yellow);
    golden.dots_across(1, 638, 100, mark_colour);
    golden.dots_across(1, 638, 101, mark_colour);
    picture.draw(draw_flags::all);
    EXPECT_TRUE(same(picture.surface(), golden));
}

TEST_F(AnnotationTest, OfSeveralCheckedBoxesTheFirstDecidesHowTheyLook) {
    panel.measurement[1].annotate.set_checked(true);
    panel.measurement[2].annotate.set_checked(true);
    marks.kind[1].fill(level);
    marks.kind[2].fill(time);
    EXPECT_EQ(shown().channel[0].kind, MarkKind::lines);
    marks.kind[1][ch1] = MarkKind::none;
    EXPECT_EQ(marked(), "2");
}

TEST_F(AnnotationTest, ComeAndGoAndMoveWithTheNextDraw) {
    picture.draw(draw_flags::all);
    const Surface bare = picture.surface();
    annotate(0, level);
    mark_rows(100, 100, 100, 100);
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(1, 100), mark_colour);
    mark_rows(101, 101, 101, 101);
    picture.draw(draw_flags::all);
    EXPECT_NE(at(1, 100), mark_colour);
    EXPECT_EQ(at(1, 101), mark_colour);
    panel.measurement[0].annotate.set_checked(false);
    picture.draw(draw_flags::all);
    EXPECT_TRUE(
        std::equal(bare.pixels().begin(), bare.pixels().end(), picture.surface().pixels().begin()));
}

TEST_F(AnnotationTest, BelongToTheOverlays) {
    annotate(0, level);
    mark_rows(100, 100, 100, 100);
    picture.draw(draw_flags::ch1 | draw_flags::ch2 | draw_flags::labels);
    EXPECT_NE(at(1, 100), mark_colour);
    picture.draw(draw_flags::overlays);
    EXPECT_EQ(at(1, 100), mark_colour);
}

} // namespace
} // namespace kv408::test
