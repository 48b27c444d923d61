// Autoset on the simulated instrument: what it finds, and that everything comes back.

#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scope/autoset_program.h"
#include "support/autoset_cases.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

/// The text has a part that `pattern` describes: gMock's own matcher knows less on Windows.
MATCHER_P(Says, pattern, "") {
    return std::regex_search(std::string(arg), std::regex(pattern));
}

TEST(AutosetCases, AreFoundButForOneInFifty) {
    // bench/autoset_table tries all of them; docs/manual/autoset-table.md names those that are
    // missed.
    const std::size_t stride = 41 * series_stride;
    const std::vector<AutosetCase> cases = autoset_cases();
    std::size_t tried = 0;
    std::vector<std::string> missed;
    for (std::size_t index = 0; index < cases.size(); index += stride) {
        AutosetBench bench(cases[index]);
        const double seconds = bench.run();
        EXPECT_LE(seconds, 6.0) << name_of(cases[index]);
        ++tried;
        if (const std::string fault = bench.fault(seconds); !fault.empty()) {
            missed.push_back(name_of(cases[index]) + ": " + fault);
        }
    }
    EXPECT_LE(50 * missed.size(), tried) << testing::PrintToString(missed);
}

TEST(AutosetCases, ThatLeaveTheScaleAreNotTheirOwnNoise) {
    // While it is high its noise alone is seen below the end of the scale, and that is like data.
    AutosetBench bench({simulator::SignalKind::square, 3000.0, 10e3, -300.0, 0.03});
    EXPECT_EQ(bench.fault(bench.run()), "");
}

struct AutosetTest : AutosetProgram {};

TEST_F(AutosetTest, ShowsBothSignalsEachInItsHalf) {
    start();
    finish();
    ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_THAT(autoset().line(), Says("^CH1 (10.0|9.9.) MHz [34].. mVpp on TRIG1, CH2 .* [23].. "
                                       "mVpp. One Undo takes it all back."));
    // 400 mV and 300 mV in 3.25 divisions each: 0.2 V and 0.1 V; two divisions up and down.
    EXPECT_EQ(channel(0).vdiv.text(), "0.2V");
    EXPECT_EQ(channel(1).vdiv.text(), "0.1V");
    EXPECT_NEAR(scope.parts().channels[ch1].marker_wheel, 512 + 256, 10);
    EXPECT_NEAR(scope.parts().channels[ch2].marker_wheel, 512 - 256, 10);
    EXPECT_EQ(scope.panel().seltimediv.text(), "20ns/div");
    expect_agreement();
}

TEST_F(AutosetTest, IsOneStepOfUndo) {
    choose(scope.panel().seltimediv, "1us/div");
    ticks(20);
    const PanelSetUp before = set_up();
    const std::size_t steps = scope.undo().steps().count();
    start();
    finish();
    ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_NE(set_up(), before);
    ASSERT_EQ(scope.undo().steps().count(), steps + 1);
    EXPECT_EQ(scope.undo().steps().words(steps), "Autoset");
    scope.act([this] { scope.undo().controls().mnuundo.click(); });
    EXPECT_EQ(set_up(), before);
    expect_agreement();
}

TEST_F(AutosetTest, PutsEverythingBackWhenItIsCancelled) {
    choose(scope.panel().seltimediv, "50ns/div");
    choose(channel(0).vdiv, "20mV");
    ticks(20);
    const PanelSetUp before = set_up();
    for (const int after : {0, 1, 3, 5, 8, 11}) {
        start();
        ticks(after);
        ASSERT_TRUE(autoset().under_way()) << after;
        EXPECT_LT(autoset().progress(), 100);
        scope.act([this] { autoset().controls().cmdAutosetCancel.click(); });
        EXPECT_EQ(autoset().outcome(), Autoset::Outcome::cancelled);
        EXPECT_EQ(set_up(), before) << after;
        expect_agreement();
        EXPECT_TRUE(scope.parts().acquisition.acqrunning);
    }
    EXPECT_EQ(scope.undo().steps().words(scope.undo().steps().count() - 1), "CH1 V/div 20mV")
        << "nothing of it is a step";
}

TEST_F(AutosetTest, PutsEverythingBackWhenTheInstrumentFallsSilent) {
    for (const int after : {1, 3, 6}) {
        const PanelSetUp before = set_up();
        start();
        ticks(after);
        ASSERT_TRUE(autoset().under_way());
        simulation.bench().faults.no_power = true;
        finish();
        EXPECT_EQ(autoset().outcome(), Autoset::Outcome::not_found) << autoset().line();
        EXPECT_EQ(set_up(), before) << after;
        simulation.bench().faults.no_power = false;
        scope.act([this] { scope.panel().cmdstartsweep.click(); });
        ticks(20);
        EXPECT_THAT(set_up_differences(scope.parts(), simulation.settings()), testing::IsEmpty());
    }
}

TEST_F(AutosetTest, PutsEverythingBackWhereNothingTriggers) {
    simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                   simulator::TriggerRoute::disconnected};
    const PanelSetUp before = set_up();
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::not_found);
    EXPECT_EQ(autoset().line(), "No trigger at TRIG1 or TRIG2. Everything is as it was.");
    EXPECT_EQ(set_up(), before);
    expect_agreement();
}

TEST_F(AutosetTest, BeginsFromPointModeAndFromStop) {
    choose(scope.panel().seltimediv, "20us/div");
    ticks(5);
    scope.act([this] { scope.panel().cmdstop.click(); });
    ticks(2);
    const PanelSetUp before = set_up();
    start();
    ticks(2);
    scope.act([this] { autoset().controls().cmdAutosetCancel.click(); });
    EXPECT_FALSE(scope.parts().acquisition.acqrunning) << "stopped, as it was";
    EXPECT_EQ(set_up(), before);
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_EQ(scope.panel().seltimediv.text(), "20ns/div");
    expect_agreement();
}

TEST_F(AutosetTest, SwitchesOnTheChannelThatHasASignal) {
    simulation.bench().sources[0].kind = simulator::SignalKind::none;
    scope.act([this] { channel(1).enable.press(false); });
    ticks(5);
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    // Three digits, of which what follows is cut off.
    EXPECT_THAT(autoset().line(), Says("CH1 no signal, CH2 (20.0|19.9) MHz .* on TRIG2"));
    EXPECT_FALSE(channel(0).enable.checked());
    EXPECT_TRUE(channel(1).enable.checked());
    EXPECT_EQ(scope.panel().trigsource.text(), "TRIG2");
    expect_agreement();
}

TEST_F(AutosetTest, TriesTheSourceOfTheChannelThatHasASignal) {
    // TRIG1 triggers, but CH1 has nothing to do with it.
    simulation.bench().sources[0].kind = simulator::SignalKind::none;
    simulation.bench().triggers[0] = simulator::TriggerRoute::signal_2;
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_EQ(scope.panel().trigsource.text(), "TRIG2");
    EXPECT_EQ(scope.panel().seltimediv.text(), "10ns/div"); // two periods of 50 ns
    expect_agreement();
    // With TRIG2 open, TRIG1 it is.
    simulation.bench().triggers[1] = simulator::TriggerRoute::disconnected;
    choose(scope.panel().trigsource, "TRIG1");
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_EQ(scope.panel().trigsource.text(), "TRIG1");
    expect_agreement();
}

TEST_F(AutosetTest, FindsWhatOnlyAFarLevelTriggers) {
    // All of it is above the 341 mV of the fine range, or most.
    for (const double offset : {400.0, -400.0, 480.0}) {
        simulation.bench().sources[0].amplitude_mvpp = offset == 480.0 ? 100.0 : 400.0;
        simulation.bench().sources[0].offset_mv = offset;
        simulation.bench().sources[1].kind = simulator::SignalKind::none;
        simulation.bench().triggers[1] = simulator::TriggerRoute::disconnected;
        start();
        finish();
        ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << offset << autoset().line();
        const double height = simulation.bench().sources[0].amplitude_mvpp;
        EXPECT_NEAR(autoset().found()[ch1].look.height(), height, 0.1 * height) << offset;
        EXPECT_NEAR(autoset().found()[ch1].look.middle(), offset, 0.1 * height) << offset;
        expect_agreement();
    }
}

TEST_F(AutosetTest, TriesTheLevelThatIsChosen) {
    // 275 to 325 mV lie between the levels that are tried.
    simulation.bench().sources[0].amplitude_mvpp = 50.0;
    simulation.bench().sources[0].offset_mv = 300.0;
    simulation.bench().triggers[1] = simulator::TriggerRoute::disconnected;
    start();
    finish();
    EXPECT_EQ(autoset().line(), "No trigger at TRIG1 or TRIG2. Everything is as it was.");
    scope.act([this] {
        scope.panel().tabstrip2.select(3); // "Trigger"
        scope.panel().slider1.turn_to((2048 + 304) / 4);
    });
    ticks(5);
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_THAT(autoset().line(), Says("CH1 .* (49|50|51)[.].* on TRIG1"));
    EXPECT_EQ(scope.panel().trigsource.text(), "TRIG1");
}

TEST_F(AutosetTest, IsNotHeldUpByASteadyVoltageBeyondTheFineRange) {
    simulator::Source& steady = simulation.bench().sources[0];
    steady.amplitude_mvpp = 0.0;
    steady.offset_mv = 600.0;
    simulation.bench().triggers[0] = simulator::TriggerRoute::clock_2;
    start();
    finish();
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    EXPECT_THAT(autoset().line(), testing::StartsWith("CH1 no signal, CH2 "));
    simulation.bench().samplers[1] = simulator::SamplerRoute::disconnected;
    start();
    finish();
    EXPECT_THAT(autoset().line(), Says("^TRIG. triggers, but CH1 and CH2 have no signal. .*"));
}

TEST_F(AutosetTest, EndsWhereAPersonPressesStop) {
    const PanelSetUp before = set_up();
    start();
    ticks(2);
    scope.act([this] { scope.panel().cmdstop.click(); });
    ticks(2);
    EXPECT_EQ(autoset().outcome(), Autoset::Outcome::cancelled);
    EXPECT_EQ(set_up(), before);
    EXPECT_FALSE(scope.parts().acquisition.acqrunning);
}

} // namespace
} // namespace kv408
