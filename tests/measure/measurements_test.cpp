#include "measure/measurements.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "measure/annotation_geometry.h"
#include "measure/measurement_rows.h"
#include "support/fake_screen.h"
#include "support/measurement_lines.h"
#include "support/sweep_of.h"

namespace kv408 {
namespace {

/// The results panel with three slots and a text of its own in every field: "A3" is field 3 of
/// CH1, "B3" that of CH2.
struct PresentationRig {
    PresentationRig() {
        for (MeasurementControls& slot : panel.measurement) {
            slot.selector.set_entries(measurement_names());
            slot.selector.set_index(0);
        }
        for (std::size_t field = 0; field < meas::fields; ++field) {
            const std::string number = std::to_string(field);
            state.meastexts[ch1][field] = "A";
            state.meastexts[ch1][field] += number;
            state.meastexts[ch2][field] = "B";
            state.meastexts[ch2][field] += number;
            const auto place = static_cast<double>(10 * field);
            state.annotations[ch1].start[field] = place + 1.0;
            state.annotations[ch1].end[field] = place + 2.0;
            state.annotations[ch2].start[field] = place + 3.0;
            state.annotations[ch2].end[field] = place + 4.0;
        }
        for (std::size_t index = 0; index < samples[ch1].raw.size(); ++index) {
            samples[ch1].raw[index] = static_cast<std::uint16_t>(1900 + index % 300);
            samples[ch2].raw[index] = static_cast<std::uint16_t>(2200 - index % 300);
        }
        sweep();
    }

    /// Chooses as the user does, and forgets what that draws.
    void choose(std::size_t slot, int index) {
        panel.measurement[slot].selector.set_index(index);
        screen.calls.clear();
    }
    /// What the panel's row `slot` says: mark, label, CH1, CH2.
    [[nodiscard]] std::vector<std::string> row(std::size_t slot) const {
        const MeasurementControls& controls = panel.measurement[slot];
        return {controls.mark.caption(), controls.label.caption(), controls.ch1.caption(),
                controls.ch2.caption()};
    }

    /// Makes the samples the last finished sweep.
    void sweep() { sweeps.finish(SweepMode::block, {}, parts_of(samples, 3.2e9), {true, true}); }

    FrontPanel panel;
    Samples samples;
    Sweeps sweeps;
    Channels channels;
    MeasurementState state;
    AnnotationMarks marks;
    FakeScreen screen;
    Measurements measurements{
        panel, {.sweeps = sweeps, .channels = channels, .state = state, .marks = marks}, screen};
};

using Row = std::vector<std::string>;

constexpr const auto& lines = measurement_lines;

TEST(ResultsPanel, TheSelectionListsOfferEveryMeasurementInItsOrder) {
    EXPECT_EQ(measurement_names(), measurement_entries());
}

TEST(ResultsPanel, EveryMeasurementHasItsLabelAndField) {
    for (std::size_t slot = 0; slot < 3; ++slot) {
        PresentationRig rig;
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const MeasurementLine& line = lines[index];
            rig.choose(slot, static_cast<int>(index) + 1);
            ASSERT_EQ(rig.panel.measurement[slot].selector.text(), line.name);
            rig.measurements.showmeasurements();
            const std::string field = std::to_string(line.field);
            EXPECT_EQ(rig.row(slot),
                      (Row{"", std::string(line.label), "A" + field + " ", "B" + field + " "}))
                << line.name;
        }
    }
}

TEST(ResultsPanel, EveryMeasurementIsMarkedAtItsPlaces) {
    for (std::size_t slot = 0; slot < 3; ++slot) {
        PresentationRig rig;
        rig.panel.measurement[slot].annotate.set_checked(true);
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const MeasurementLine& line = lines[index];
            rig.choose(slot, static_cast<int>(index) + 1);
            rig.measurements.showmeasurements();
            EXPECT_EQ(rig.row(slot)[0], "*");
            const auto place = static_cast<double>(10 * line.marked);
            AnnotationMarks expected;
            if (line.in_time) {
                expected.mark = {
                    {{annomarkrect(rig.channels[ch1], rig.samples[ch1], place + 1.0),
                      annomarkrect(rig.channels[ch1], rig.samples[ch1], place + 2.0)},
                     {annomarkrect(rig.channels[ch2], rig.samples[ch2], place + 3.0),
                      annomarkrect(rig.channels[ch2], rig.samples[ch2], place + 4.0)}}};
            } else {
                expected.mark = {{{annolevelline(rig.channels[ch1], place + 1.0),
                                   annolevelline(rig.channels[ch1], place + 2.0)},
                                  {annolevelline(rig.channels[ch2], place + 3.0),
                                   annolevelline(rig.channels[ch2], place + 4.0)}}};
            }
            EXPECT_EQ(rig.marks.mark, expected.mark) << line.name;
            const MarkKind kind = line.in_time ? MarkKind::dots : MarkKind::lines;
            EXPECT_EQ(rig.marks.kind[slot], (std::array{kind, kind})) << line.name;
        }
    }
}

TEST(ResultsPanel, ASlotWithoutAMeasurementIsAnEmptyRow) {
    PresentationRig rig;
    for (std::size_t slot = 0; slot < 3; ++slot) {
        rig.choose(slot, 1);
        rig.panel.measurement[slot].annotate.set_checked(slot == 1);
    }
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(1), (Row{"*", "Vmax", "A0 ", "B0 "}));
    rig.choose(1, 0);
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(1), (Row{"", "", "", ""}));
    EXPECT_EQ(rig.row(2), (Row{"", "Vmax", "A0 ", "B0 "}));
    EXPECT_EQ(rig.marks.mark, AnnotationMarks{}.mark);
    rig.panel.measurement[1].selector.set_index(-1);
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(1), (Row{"", "", "", ""}));
    rig.panel.measurement[1].selector.set_entries({"vmax"}); // no such name
    rig.panel.measurement[1].selector.set_index(0);
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(1), (Row{"", "", "", ""}));
}

TEST(ResultsPanel, TwoSlotsMayShowTheSameMeasurement) {
    PresentationRig rig;
    rig.choose(0, 7);
    rig.choose(2, 7);
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(0), (Row{"", "Vrms", "A7 ", "B7 "}));
    EXPECT_EQ(rig.row(2), rig.row(0));
}

TEST(ResultsPanel, AChannelThatIsOffHasAnEmptyResult) {
    PresentationRig rig;
    rig.choose(0, 1);
    rig.panel.channel[ch1].enable.set_checked(false);
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(0), (Row{"", "Vmax", " ", "B0 "}));
    rig.panel.channel[ch1].enable.set_checked(true);
    rig.panel.channel[ch2].enable.set_checked(false);
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(0), (Row{"", "Vmax", "A0 ", " "}));
}

TEST(ResultsPanel, AResultThatIsNotThereIsThreeDashes) {
    PresentationRig rig;
    rig.choose(0, 1);
    rig.state.meastexts[ch1][meas::vmax].clear();
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(0), (Row{"", "Vmax", "--- ", "B0 "}));
    rig.state.meastexts[ch1][meas::vmax] = "-inf-";
    rig.state.meastexts[ch2][meas::vmax].clear();
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.row(0), (Row{"", "Vmax", "-inf- ", "--- "}));
}

TEST(ResultsPanel, AResultThatIsNotThereIsNotMarked) {
    PresentationRig rig;
    rig.choose(0, 9);
    rig.choose(1, 11);
    rig.state.meastexts[ch1][meas::frequency] = "---";
    rig.state.meastexts[ch2][meas::rise] = "-inf-";
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.marks.kind[0], (std::array{MarkKind::none, MarkKind::dots}));
    EXPECT_EQ(rig.marks.kind[1], (std::array{MarkKind::dots, MarkKind::none}));
    rig.state.meastexts[ch1][meas::frequency].clear();
    rig.measurements.showmeasurements();
    EXPECT_EQ(rig.marks.kind[0], (std::array{MarkKind::none, MarkKind::dots}));
}

TEST(ResultsPanel, IsHiddenWhileTheMeasurementsAreOff) {
    PresentationRig rig;
    rig.choose(0, 1);
    rig.panel.check1.set_checked(false);
    rig.measurements.showmeasurements();
    EXPECT_FALSE(rig.panel.picmeasure.visible());
    rig.panel.check1.set_checked(true);
    EXPECT_FALSE(rig.panel.picmeasure.visible()); // comes with the next sweep
    rig.measurements.showmeasurements();
    EXPECT_TRUE(rig.panel.picmeasure.visible());
    EXPECT_EQ(rig.row(0), (Row{"", "Vmax", "A0 ", "B0 "}));
}

TEST(ResultsPanel, ShowsANewChoiceAtOnce) {
    PresentationRig rig;
    rig.screen.calls.clear();
    rig.panel.measurement[1].selector.set_index(2);
    EXPECT_EQ(rig.row(1), (Row{"", "Vmin", "A1 ", "B1 "}));
    EXPECT_EQ(rig.screen.calls, (std::vector<std::string>{"draw 255"}));
}

TEST(ResultsPanel, CanBeShownAndHidden) {
    PresentationRig rig;
    rig.measurements.disablemeasurements();
    EXPECT_FALSE(rig.panel.picmeasure.visible());
    rig.measurements.enablemeasurements();
    EXPECT_TRUE(rig.panel.picmeasure.visible());
}

TEST(ResultsPanel, GoesAtOnceWhenTheMeasurementsAreSwitchedOff) {
    PresentationRig rig;
    rig.screen.calls.clear();
    rig.panel.check1.set_checked(false);
    EXPECT_FALSE(rig.panel.picmeasure.visible());
    EXPECT_EQ(rig.screen.calls, (std::vector<std::string>{"draw 255"}));
    rig.panel.check1.set_checked(true);
    EXPECT_FALSE(rig.panel.picmeasure.visible());
    EXPECT_EQ(rig.screen.calls.size(), 1U);
}

TEST(ResultsPanel, ShowsItsThreeRows) {
    PresentationRig rig;
    for (MeasurementControls& slot : rig.panel.measurement) {
        slot.label.set_visible(false);
        slot.ch1.set_visible(false);
        slot.ch2.set_visible(false);
    }
    rig.measurements.showmeasurements();
    for (const MeasurementControls& slot : rig.panel.measurement) {
        EXPECT_TRUE(slot.label.visible());
        EXPECT_TRUE(slot.ch1.visible());
        EXPECT_TRUE(slot.ch2.visible());
    }
}

/// Presses annotation box `slot` as the user does.
void press(PresentationRig& rig, int slot, bool checked) {
    rig.panel.measurement[static_cast<std::size_t>(slot)].annotate.press(checked);
}

std::vector<bool> checked_boxes(const PresentationRig& rig) {
    std::vector<bool> checked;
    for (const MeasurementControls& slot : rig.panel.measurement) {
        checked.push_back(slot.annotate.checked());
    }
    return checked;
}

TEST(AnnotationBoxes, PressingOneUnchecksTheOthers) {
    PresentationRig rig;
    for (const int slot : {0, 2, 1}) {
        press(rig, slot, true);
        std::vector<bool> expected(3, false);
        expected[static_cast<std::size_t>(slot)] = true;
        EXPECT_EQ(checked_boxes(rig), expected);
    }
    press(rig, 1, false);
    EXPECT_EQ(checked_boxes(rig), std::vector<bool>(3, false));
}

TEST(AnnotationBoxes, PressingMeasuresShowsAndDraws) {
    PresentationRig rig;
    for (std::size_t slot = 0; slot < 3; ++slot) {
        rig.choose(slot, 1);
    }
    rig.samples[ch1].mv.fill(250.0);
    rig.sweep();
    AnnotationMarks when_drawn;
    rig.screen.on_draw = [&] { when_drawn = rig.marks; };
    press(rig, 1, true);
    EXPECT_EQ(rig.row(1), (Row{"*", "Vmax", "250.0mV ", "0.000V "}));
    EXPECT_EQ(rig.row(0)[0], "");
    EXPECT_EQ(rig.screen.calls, (std::vector<std::string>{"draw 255"}));
    // The pixels per millivolt are 1.28 at start-up: 320 rows above the centre.
    EXPECT_EQ(when_drawn.mark[ch1][0], (AnnotationGeometry{{{1, -64}, {639, -64}}}));
    press(rig, 1, false);
    EXPECT_EQ(rig.row(1)[0], "");
    EXPECT_EQ(rig.screen.calls.size(), 2U);
}

TEST(AnnotationBoxes, PressingWhileTheMeasurementsAreOffMeasuresNothing) {
    PresentationRig rig;
    rig.panel.check1.set_checked(false);
    rig.samples[ch1].mv.fill(250.0);
    rig.sweep();
    press(rig, 0, true);
    EXPECT_EQ(rig.state.measresults[ch1][meas::vmax], 0.0);
    EXPECT_FALSE(rig.panel.picmeasure.visible());
    EXPECT_EQ(checked_boxes(rig), (std::vector<bool>{true, false, false}));
}

TEST(AnnotationBoxes, OfSeveralCheckedFromCodeTheHighestIsMarked) {
    PresentationRig rig;
    rig.choose(0, 1);
    rig.choose(1, 2);
    rig.choose(2, 3);
    rig.panel.measurement[0].annotate.set_checked(true);
    rig.panel.measurement[1].annotate.set_checked(true);
    rig.measurements.showmeasurements();
    EXPECT_EQ(checked_boxes(rig), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(rig.row(0)[0], "*");
    EXPECT_EQ(rig.row(1)[0], "*");
    EXPECT_EQ(rig.marks.mark[ch1][0], annolevelline(rig.channels[ch1], 11.0));
}

} // namespace
} // namespace kv408
