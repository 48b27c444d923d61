// The maths window: what it computes of sweeps, shows on the plot, tells and hands to exports.

#include "export/maths_dialog.h"

#include <gtest/gtest.h>

#include "export/csv.h"
#include "export/csv_import.h"
#include "export/quantity_text.h"
#include "export/reference_menu.h"
#include "export/sample_sweep.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

/// The window over sweeps of both channels: points 20 ps apart, at 0.1 V/div and 50 mV/div.
struct MathsDialogTest : testing::Test {
    MathsDialogTest() {
        for (const Channel channel : both_channels) {
            panel.channel.at(channel).enable.set_checked(true);
            panel.channel.at(channel).vdiv.set_entries({"0.1V", "50mV"});
            panel.channel.at(channel).vdiv.set_index(channel == ch1 ? 0 : 1);
        }
    }

    /// Announces a sweep with these points, millivolts, as the program does.
    void come(const std::vector<double>& one, const std::vector<double>& two) {
        Sweeps::Parts parts;
        for (const Channel channel : both_channels) {
            auto part = std::make_shared<ChannelSweep>();
            part->mv = channel == ch1 ? one : two;
            part->codes.assign(part->mv.size(), 2048);
            part->whole = true;
            part->time_per_point = 20.0;
            part->columns_per_second = 50e9;
            part->mv_per_division = channel == ch1 ? 100.0 : 50.0;
            part->position = channel == ch1 ? 2.0 : -1.0;
            if (panel.channel.at(channel).enable.checked()) {
                parts.at(channel) = part;
            }
        }
        sweeps.finish(SweepMode::block, {}, parts,
                      {panel.channel[ch1].enable.checked(), panel.channel[ch2].enable.checked()});
        dialog.take(*sweeps.last_complete());
        clock.advance(std::chrono::milliseconds(500));
        dialog.tick_over();
    }

    void choose(MathsFunction function, std::size_t place = 0) {
        dialog.tool(place).controls().cmbMathsFunction.set_index(static_cast<int>(function));
    }

    [[nodiscard]] MathsControls& first() { return dialog.tool(0).controls(); }

    VirtualClock clock;
    FrontPanel panel;
    Sweeps sweeps;
    std::vector<ShownReference> shown;
    int drawn = 0;
    int times_shown = 0;
    MathsDialog dialog{panel, sweeps, clock,
                       [this](std::vector<ShownReference> traces) {
                           shown = std::move(traces);
                           ++times_shown;
                       },
                       [this] { ++drawn; }};
};

TEST_F(MathsDialogTest, IsNoWorkWhileBothAreOff) {
    come({1.0, 2.0}, {3.0, 4.0});
    EXPECT_EQ(times_shown, 0);
    EXPECT_EQ(drawn, 0);
    EXPECT_EQ(first().lblMathsState.caption(), "Off.");
    EXPECT_FALSE(first().cmbMathsA.enabled());
    EXPECT_FALSE(first().lblMaths.visible());
}

TEST_F(MathsDialogTest, ShowsVoltsAsTheirChannelUnlessToldOtherwise) {
    choose(MathsFunction::difference);
    EXPECT_EQ(first().lblMathsState.caption(), "No whole sweep has come yet.");
    come({250.0, 500.0}, {500.0, 125.0});
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].curve->mv, (std::vector<double>{-250.0, 375.0}));
    EXPECT_EQ(shown[0].curve->channel, ch1);
    EXPECT_EQ(shown[0].curve->scale, CurveScale{});
    EXPECT_EQ(shown[0].caption, "MATH1 CH1 - CH2   100mV/div");
    EXPECT_EQ(first().lblMaths.caption(), shown[0].caption);
    EXPECT_EQ(first().lblMaths.fore_colour(), shown[0].colour);
    EXPECT_EQ(first().lblMathsState.caption(), "CH1 - CH2, 100mV per division, sweep 1.");
    EXPECT_EQ(first().lblMathsRemark.caption(),
              "The channels are swept one after the other: what changes from sweep to sweep does "
              "not cancel.");
    const int before = drawn;
    first().txtMathsScale.set_text("20mV");
    first().txtMathsPosition.set_text("-1.5");
    EXPECT_EQ(shown[0].curve->scale, (CurveScale{.per_division = 20.0, .position = -1.5}));
    EXPECT_EQ(shown[0].caption, "MATH1 CH1 - CH2   20mV/div");
    EXPECT_EQ(drawn, before + 2) << "at once, even when stopped";
    for (const char* const bad : {"x", "0", "-1", "1V/s", "1e16"}) {
        first().txtMathsScale.set_text(bad);
        EXPECT_TRUE(first().txtMathsScale.faulty()) << bad;
        EXPECT_EQ(dialog.tool(0).per_division(), 0.02) << bad;
    }
    first().txtMathsPosition.set_text("4.01");
    EXPECT_TRUE(first().txtMathsPosition.faulty());
    first().txtMathsScale.set_text("");
    first().txtMathsPosition.set_text("");
    EXPECT_FALSE(first().txtMathsScale.faulty());
    EXPECT_EQ(shown[0].curve->scale, CurveScale{});
}

TEST_F(MathsDialogTest, FindsAScaleForWhatIsNoVoltageAndKeepsItWhileItFits) {
    choose(MathsFunction::product);
    come({1000.0, 500.0}, {300.0, -100.0}); // 0.3 and -0.05 V^2: four divisions of 0.1
    EXPECT_EQ(shown[0].caption, "MATH1 CH1 x CH2   100m V^2/div");
    EXPECT_EQ(shown[0].curve->scale, (CurveScale{.per_division = 100.0, .position = 0.0}));
    come({1000.0, 500.0}, {90.0, -100.0}); // 0.09: still nearly a division
    EXPECT_EQ(dialog.tool(0).per_division(), 0.1);
    come({1000.0, 500.0}, {60.0, -100.0}); // 0.06 takes 0.015 of four divisions each
    EXPECT_EQ(dialog.tool(0).per_division(), 0.02);
    come({1000.0, 500.0}, {-900.0, 0.0});
    EXPECT_EQ(dialog.tool(0).per_division(), 0.5);
    choose(MathsFunction::derivative); // 0.5 V in 20 ps: 25 GV/s
    EXPECT_EQ(shown[0].caption, "MATH1 dCH1/dt   10GV/s/div");
    choose(MathsFunction::integral); // 15 pVs
    EXPECT_EQ(shown[0].caption, "MATH1 Integral of CH1   5pVs/div");
    first().txtMathsScale.set_text("50fVs");
    EXPECT_DOUBLE_EQ(dialog.tool(0).per_division(), 50e-15);
    choose(MathsFunction::off); // has no unit: what is typed stays
    choose(MathsFunction::integral);
    EXPECT_DOUBLE_EQ(dialog.tool(0).per_division(), 50e-15);
    for (const char* const typed : {"50fVs", "2e9"}) { // says nothing in another unit
        choose(MathsFunction::integral);
        first().txtMathsScale.set_text(typed);
        choose(MathsFunction::product);
        EXPECT_EQ(first().txtMathsScale.text(), "") << typed;
        EXPECT_FALSE(first().txtMathsScale.faulty()) << typed;
        EXPECT_EQ(dialog.tool(0).per_division(), 0.5) << typed;
    }
}

TEST_F(MathsDialogTest, FollowsScaleAndMarkerOfItsChannelWhenStopped) {
    panel.channel[ch1].text.mark(256 - 2 * 64);
    choose(MathsFunction::negative);
    come({100.0}, {300.0});
    EXPECT_EQ(dialog.tool(0).position(), 2.0);
    panel.channel[ch1].vdiv.set_index(1);
    panel.channel[ch1].text.mark(256 + 96);
    dialog.tick_over();
    EXPECT_EQ(shown.at(0).caption, "MATH1 -CH1   50mV/div");
    EXPECT_EQ(first().lblMaths.caption(), shown[0].caption);
    EXPECT_EQ(dialog.tool(0).position(), -1.5);
    ExportedSweep exported = exported_sweep(*sweeps.last_complete(), {true, true}, sample_origin);
    dialog.add_to(*sweeps.last_complete(), exported);
    EXPECT_EQ(exported.channels.at(2).position, 2.0) << "that of its sweep";
    EXPECT_EQ(exported.channels.at(2).v_per_div, 0.1);
    const int before = times_shown;
    dialog.tick_over();
    EXPECT_EQ(times_shown, before);
}

TEST_F(MathsDialogTest, ASettingThatChangesNothingKeepsTheSweeps) {
    choose(MathsFunction::mean);
    come({250.0}, {0.0});
    come({500.0}, {0.0});
    choose(MathsFunction::mean);
    first().cmbMathsA.set_index(0);
    first().cmbMathsB.set_index(0); // of one channel: B does not count
    come({750.0}, {0.0});
    EXPECT_EQ(shown.at(0).curve->mv, std::vector<double>{500.0});
    choose(MathsFunction::sum); // now it does
    EXPECT_EQ(shown.at(0).curve->mv, std::vector<double>{1500.0});
}

TEST_F(MathsDialogTest, SaysWhichChannelIsOffAndTakesTheTraceAway) {
    choose(MathsFunction::sum);
    come({100.0}, {300.0});
    ASSERT_EQ(shown.size(), 1U);
    panel.channel[ch2].enable.set_checked(false); // stopped: no sweep comes
    dialog.tick_over();
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(first().lblMathsState.caption(), "CH2 is off.");
    EXPECT_FALSE(first().lblMaths.visible());
    panel.channel[ch2].enable.set_checked(true);
    dialog.tick_over();
    ASSERT_EQ(shown.size(), 1U) << "that of the sweep that is still shown";
    EXPECT_EQ(shown[0].curve->mv, std::vector<double>{400.0});
    panel.channel[ch2].enable.set_checked(false);
    come({100.0}, {300.0});
    panel.channel[ch2].enable.set_checked(true);
    clock.advance(std::chrono::milliseconds(500));
    dialog.tick_over();
    EXPECT_TRUE(shown.empty()) << "it is not in the sweep that came meanwhile";
    EXPECT_EQ(first().lblMathsState.caption(), "CH2 is not in the last sweep.");
    choose(MathsFunction::negative); // needs CH1 alone, and is made of the last sweep at once
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].curve->mv, std::vector<double>{-100.0});
}

TEST_F(MathsDialogTest, HasTwoTracesOfWhichTheFirstLiesOnTop) {
    choose(MathsFunction::negative, 0);
    choose(MathsFunction::sum, 1);
    come({100.0}, {300.0});
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].caption, "MATH2 CH1 + CH2   100mV/div");
    EXPECT_EQ(shown[1].caption, "MATH1 -CH1   100mV/div");
    EXPECT_NE(shown[0].colour, shown[1].colour);
    first().cmbMathsA.set_index(1);
    EXPECT_EQ(shown[1].caption, "MATH1 -CH2   50mV/div");
    EXPECT_EQ(shown[1].curve->mv, std::vector<double>{-300.0});
    EXPECT_EQ(shown[1].curve->channel, ch2);
    choose(MathsFunction::off, 1);
    EXPECT_EQ(shown.size(), 1U);
}

TEST_F(MathsDialogTest, CountsSweepsOfMeanAndEnvelope) {
    choose(MathsFunction::mean);
    EXPECT_TRUE(first().txtMathsCount.enabled());
    for (const double level : {100.0, 200.0, 600.0}) {
        come({level}, {0.0});
    }
    EXPECT_EQ(shown[0].curve->mv, std::vector<double>{300.0});
    EXPECT_EQ(first().lblMathsState.caption(), "Mean of CH1, 100mV per division, 3 sweeps.");
    first().txtMathsCount.set_text("2");
    EXPECT_EQ(shown[0].curve->mv, std::vector<double>{400.0});
    for (const char* const bad : {"", "0", "1001", "2.5"}) {
        first().txtMathsCount.set_text(bad);
        EXPECT_EQ(dialog.tool(0).kept(), 2U) << bad;
    }
    first().cmdMathsClear.click(); // begins with the last one
    EXPECT_EQ(shown[0].curve->mv, std::vector<double>{600.0});
    choose(MathsFunction::envelope);
    come({-50.0}, {0.0});
    EXPECT_EQ(shown[0].curve->mv, std::vector<double>{600.0});
    EXPECT_EQ(shown[0].curve->lower, std::vector<double>{-50.0});
}

TEST_F(MathsDialogTest, SaysThatAChannelClips) {
    choose(MathsFunction::negative);
    auto clipped = block_sweep();
    auto part = std::make_shared<ChannelSweep>(*clipped.channel[ch1]);
    part->codes[7] = 4095;
    clipped.channel[ch1] = part;
    const auto remark_after = [this](const Sweep& sweep) {
        dialog.take(sweep);
        clock.advance(std::chrono::seconds(1));
        dialog.tick_over();
        return first().lblMathsRemark.caption();
    };
    const std::string clips = "A channel leaves the instrument's scale: the trace is wrong there.";
    EXPECT_EQ(remark_after(clipped), clips);
    EXPECT_EQ(remark_after(block_sweep()), "");
    // A mean says so as long as it holds such a sweep.
    choose(MathsFunction::mean);
    first().txtMathsCount.set_text("3");
    EXPECT_EQ(remark_after(clipped), clips);
    EXPECT_EQ(remark_after(block_sweep()), clips);
    EXPECT_EQ(remark_after(block_sweep()), clips);
    EXPECT_EQ(remark_after(block_sweep()), "");
}

TEST_F(MathsDialogTest, MeasuresWhileItsWindowIsOpen) {
    choose(MathsFunction::product);
    come(std::vector<double>(650, 400.0), std::vector<double>(650, 100.0));
    EXPECT_EQ(first().lblMathsValues.caption(), "");
    dialog.open();
    EXPECT_TRUE(first().lblMathsValues.caption().starts_with("40.00m V^2\n40.00m V^2\n0.000 V^2\n"))
        << first().lblMathsValues.caption();
    EXPECT_TRUE(first().lblMathsValues.caption().ends_with("\nno edge on the screen"));
    EXPECT_TRUE(dialog.table().starts_with("Measurement\tMATH1 CH1 x CH2\tUnit\tMATH2\n"
                                           "VMax\t0.04\tV^2\t\nVMin\t0.04\tV^2\t\n"))
        << dialog.table();
}

TEST_F(MathsDialogTest, AreExportedBehindTheChannelsOfTheirSweep) {
    choose(MathsFunction::product, 0);
    choose(MathsFunction::envelope, 1);
    come({100.0, 500.0}, {300.0, -50.0});
    const Sweep& sweep = *sweeps.last_complete();
    ExportedSweep exported = exported_sweep(sweep, {true, true}, sample_origin);
    dialog.add_to(sweep, exported);
    ASSERT_EQ(exported.channels.size(), 5U);
    EXPECT_EQ(exported.channels[2].name, "MATH1");
    EXPECT_EQ(exported.channels[2].unit, "V^2");
    EXPECT_EQ(exported.channels[2].volts(0), 0.03);
    EXPECT_EQ(exported.channels[4].name, "MATH2MIN");
    const std::string text = csv_text(exported);
    EXPECT_NE(text.find("# MATH1: CH1 x CH2\n# MATH1 follows: CH1\n# MATH1 V^2/div: 0.01\n"
                        "# MATH1 position (div): 0\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\nTime (s),CH1 (V),CH2 (V),MATH1 (V^2),MATH2MAX (V),MATH2MIN (V)\n"
                        "0,0.1,0.3,0.03,0.1,0.1\n"),
              std::string::npos)
        << text;
    const CsvImport back = csv_import(text);
    ASSERT_TRUE(back.sweep) << back.problem;
    EXPECT_EQ(*back.sweep, exported);
    // Those of another sweep are not of this one.
    Sweep other = sweep;
    other.number = 99;
    ExportedSweep without = exported_sweep(other, {true, true}, sample_origin);
    dialog.add_to(other, without);
    EXPECT_EQ(without.channels.size(), 2U);
}

TEST_F(MathsDialogTest, AreKeptAsReferencesWithTheirUnit) {
    FakeMessageBoxes boxes;
    FakeFiles files;
    FakeFileChoosers choosers;
    std::vector<ShownReference> references;
    ReferenceMenu menu{
        sweeps,
        {.clock = clock, .boxes = boxes, .files = files, .choosers = choosers},
        [] { return sample_origin; },
        [&references](std::vector<ShownReference> next) { references = std::move(next); },
        [this](const Sweep& sweep, ExportedSweep& exported) { dialog.add_to(sweep, exported); }};
    choose(MathsFunction::product, 0);
    choose(MathsFunction::envelope, 1);
    first().cmbMathsA.set_index(1);
    come({100.0, 200.0}, {300.0, 250.0});
    come({100.0, 500.0}, {300.0, 250.0});
    menu.controls(0).mnuReferenceKeepMATH1.click();
    menu.controls(1).mnuReferenceKeepMATH2.click();
    ASSERT_EQ(references.size(), 2U);
    EXPECT_EQ(references[0].caption.substr(0, 34), "R1 CH2 x CH2 sweep 2   50m V^2/div");
    EXPECT_EQ(references[0].curve->channel, ch2);
    EXPECT_EQ(references[0].curve->scale, (CurveScale{.per_division = 50.0, .position = 0.0}));
    EXPECT_EQ(references[1].curve->scale, CurveScale{}) << "volts lie as their channel's do";
    EXPECT_EQ(references[1].curve->mv, (std::vector<double>{100.0, 500.0}));
    EXPECT_EQ(references[1].curve->lower, (std::vector<double>{100.0, 200.0}));
    // Saved and loaded again.
    choosers.answers = {"/product.csv", "/product.csv", "/envelope.csv", "/envelope.csv"};
    menu.controls(0).mnuReferenceSave.click();
    menu.controls(2).mnuReferenceLoad.click();
    menu.controls(1).mnuReferenceSave.click();
    menu.controls(3).mnuReferenceLoad.click();
    ASSERT_EQ(references.size(), 4U);
    EXPECT_EQ(choosers.saved.at(0).default_name, "R1_MATH1.csv");
    EXPECT_EQ(choosers.saved.at(1).default_name, "R2_MATH2.csv");
    EXPECT_EQ(references[2].curve->mv, references[0].curve->mv);
    EXPECT_EQ(references[2].curve->channel, ch2);
    EXPECT_EQ(references[2].curve->scale, references[0].curve->scale);
    EXPECT_EQ(references[3].curve->lower, references[1].curve->lower);
    EXPECT_TRUE(boxes.shown.empty());
    // Of a file with all of them each can be had.
    ExportedSweep all = exported_sweep(*sweeps.last_complete(), {true, true}, sample_origin);
    dialog.add_to(*sweeps.last_complete(), all);
    files.files["/all.csv"] = csv_text(all);
    choosers.answers = {"/all.csv"};
    boxes.answers = {MessageAnswer::extra, MessageAnswer::extra, MessageAnswer::extra};
    menu.controls(0).mnuReferenceLoad.click();
    ASSERT_EQ(boxes.shown.size(), 3U);
    EXPECT_EQ(boxes.shown[0].text, "all.csv holds CH1, CH2, MATH1 and MATH2.");
    EXPECT_EQ(boxes.shown[0].extra_button, "Another");
    EXPECT_EQ(boxes.shown[1].informative, "OK keeps CH2.");
    EXPECT_EQ(boxes.shown[2].extra_button, "Keep MATH2");
    EXPECT_EQ(references[0].curve->lower, references[1].curve->lower);
    boxes.shown.clear();
    choose(MathsFunction::off, 0);
    menu.controls(0).mnuReferenceKeepMATH1.click();
    EXPECT_EQ(boxes.shown.at(0).text, "MATH1 has no whole sweep to keep.");
}

TEST(QuantityTexts, HaveAPrefixOfTheWholeUnit) {
    EXPECT_EQ(quantity_text(0.05, "V", 3), "50.0mV");
    EXPECT_EQ(quantity_text(0.04, "V^2", 4), "40.00m V^2");
    EXPECT_EQ(quantity_text(2.0, "V^2", 2), "2.0 V^2");
    EXPECT_EQ(quantity_text(-2.5e9, "V/s", 3), "-2.50GV/s");
    EXPECT_EQ(quantity_text(4e13, "V/s", 3), "40.0TV/s");
    EXPECT_EQ(quantity_text(2.5e-14, "Vs", 3), "25.0fVs");
    EXPECT_EQ(quantity_text(0.0, "Vs", 3), "0.00Vs");
}

TEST(QuantityTexts, OfScalesEndWithTheirLastDigit) {
    EXPECT_EQ(scale_text(0.05, "V"), "50mV");
    EXPECT_EQ(scale_text(0.0125, "V"), "12.5mV");
    EXPECT_EQ(scale_text(100.0, "V"), "100V");
    EXPECT_EQ(scale_text(2.0, "V^2"), "2 V^2");
    EXPECT_EQ(scale_text(1e10, "V/s"), "10GV/s");
}

TEST(QuantityTexts, AreReadAsTheyAreWritten) {
    EXPECT_EQ(quantity_typed("50mV", "V"), 0.05);
    EXPECT_EQ(quantity_typed(" 50 m ", "V"), 0.05);
    EXPECT_EQ(quantity_typed("1e-3", "V"), 1e-3);
    EXPECT_EQ(quantity_typed("40m V^2", "V^2"), 0.04);
    EXPECT_EQ(quantity_typed("2.5GV/s", "V/s"), 2.5e9);
    EXPECT_EQ(quantity_typed("3M", "V/s"), 3e6);
    for (const char* const bad : {"", "V", "m", "50mVs", "50mm", "5 0"}) {
        EXPECT_FALSE(quantity_typed(bad, "V")) << bad;
    }
}

} // namespace
} // namespace kv408
