#include "display/annotations.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "golden_scene.h"

namespace kv408::test {
namespace {

constexpr Pixel mark_colour = pixel_of(rgb(255, 128, 128));
constexpr int level = 1;
constexpr int time = 9;

/// A picture with marks for both channels and results in all three slots.
struct AnnotationTest : GoldenTest {
    AnnotationTest() {
        for (MeasurementControls& slot : panel.measurement) {
            slot.selector.set_entries(std::vector<std::string>(15));
            slot.selector.set_index(level);
            slot.ch1.set_caption("1.000V ");
            slot.ch2.set_caption("2.000V ");
        }
        set_flat(ch1, 150);
        set_flat(ch2, 300);
        golden.across(1, 638, 300, blue);
        golden.across(1, 638, 150, yellow);
    }

    /// Annotates slot `slot` alone, which measures the entry `index` of its list.
    void annotate(std::size_t slot, int index) {
        for (MeasurementControls& each : panel.measurement) {
            each.annotate.set_checked(false);
        }
        panel.measurement[slot].annotate.set_checked(true);
        panel.measurement[slot].selector.set_index(index);
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
            if (shown().channel[channel].kind != Annotations::Kind::none) {
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

TEST_F(AnnotationTest, FromFrequencyOnMeasurementsAreMarkedWithDots) {
    for (int index = 1; index < 15; ++index) {
        annotate(1, index);
        EXPECT_EQ(shown().channel[0].kind,
                  index < 9 ? Annotations::Kind::lines : Annotations::Kind::dots)
            << index;
    }
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
    panel.textstatus.set_text("Waiting For TRIGGER");
    EXPECT_EQ(marked(), "");
}

TEST_F(AnnotationTest, AResultThatIsNotThereHasNoMark) {
    annotate(1, time);
    panel.measurement[0].ch1.set_caption("--- "); // another slot's result does not matter
    EXPECT_EQ(marked(), "12");
    for (const char* const missing : {"--- ", "-inf- "}) {
        panel.measurement[1].ch1.set_caption(missing);
        EXPECT_EQ(marked(), "2") << missing;
        panel.measurement[1].ch1.set_caption("1.000s ");
        panel.measurement[1].ch2.set_caption(missing);
        EXPECT_EQ(marked(), "1") << missing;
        panel.measurement[1].ch2.set_caption("1.000s ");
    }
    panel.measurement[1].ch1.set_caption("---");
    EXPECT_EQ(marked(), "12") << "the blank belongs to it";
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
    panel.measurement[1].selector.set_index(level);
    panel.measurement[2].selector.set_index(time);
    EXPECT_EQ(shown().channel[0].kind, Annotations::Kind::lines);
    panel.measurement[1].ch1.set_caption("--- ");
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
    EXPECT_TRUE(std::equal(bare.pixels().begin(), bare.pixels().end(),
                           std::as_const(picture).surface().pixels().begin()));
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
