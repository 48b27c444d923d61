// What Autoset leaves as it was: the settings file, what it has nothing to do with, and what has
// been collected.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "config/last_settings.h"
#include "measure/measurement_rows.h"
#include "scope/autoset_program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

struct AutosetKeeps : AutosetProgram {
    /// Nothing at CH2 and TRIG2.
    void leave_second_open() {
        simulation.bench().sources[1].kind = simulator::SignalKind::none;
        simulation.bench().triggers[1] = simulator::TriggerRoute::disconnected;
    }

    /// What stands in the settings file; it is not looked at again.
    [[nodiscard]] std::string saved() {
        return files.files[scope.settings_file().default_path().generic_string()];
    }
};

TEST_F(AutosetKeeps, TheSettingsOfBeforeWhenTheProgramEndsMeanwhile) {
    const std::vector<std::pair<const char*, std::function<void(Scope&)>>> ends = {
        {"close", [](Scope& program) { program.close(); }},
        {"end", [](Scope& program) { program.end(); }},
        {"abandon", [](Scope& program) { program.abandon(); }},
        // As another thread does when the program is killed.
        {"kill", [](Scope& program) { program.last_settings().save(true); }}};
    for (const auto& [name, end] : ends) {
        for (const int after : {0, 3, 9}) {
            Program program(false);
            ASSERT_TRUE(program.scope.start());
            program.ticks(10);
            program.choose(program.channel(0).vdiv, "20mV");
            program.ticks(5);
            const std::string before = program.scope.settings_file().bytes();
            program.scope.act([&] { program.scope.autoset().controls().mnuautoset.click(); });
            program.ticks(after);
            ASSERT_TRUE(program.scope.autoset().under_way());
            ASSERT_NE(program.scope.settings_file().bytes(), before);
            end(program.scope);
            ASSERT_FALSE(program.files.written.empty());
            EXPECT_EQ(program.files.files[program.files.written.back()], before)
                << name << " after " << after;
        }
    }
}

TEST_F(AutosetKeeps, NoSettingsOfBeforeOnceItHasEnded) {
    start();
    ticks(2);
    scope.act([this] { autoset().controls().cmdAutosetCancel.click(); });
    choose(channel(0).vdiv, "20mV");
    EXPECT_EQ(scope.settings_file().noted_bytes(), scope.settings_file().bytes());
    start();
    finish();
    ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    const std::string found = scope.settings_file().bytes();
    scope.close();
    EXPECT_EQ(saved(), found);
}

TEST_F(AutosetKeeps, TheOtherSourceAndTheChannelThatIsOff) {
    // Below 0 V, so that TRIG1 triggers with its second level only. With 100 kHz the time base is
    // one at which no delay can be typed.
    for (const double hertz : {10e6, 100e3}) {
        leave_second_open();
        simulation.bench().sources[0].amplitude_mvpp = 40.0;
        simulation.bench().sources[0].offset_mv = -30.0;
        simulation.bench().sources[0].frequency_hz = hertz;
        choose(scope.panel().seltimediv, "20ns/div");
        scope.act([this] {
            channel(1).enable.press(true);
            channel(1).psofset.set_text("1234");
            channel(1).psofset.leave();
            scope.settings_file().setConfigVal("ch2text.top", "300");
        });
        choose(channel(1).vdiv, "20mV");
        choose(scope.panel().trigsource, "TRIG2");
        scope.act([this] { scope.panel().shyst.set_value(7); });
        choose(scope.panel().trigsource, "TRIG1");
        // Between two steps of the wheel.
        scope.act([this] { scope.settings_file().setConfigVal("trigpos2", "2349"); });
        ticks(10);
        const PanelSetUp before = set_up();
        start();
        finish();
        ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
        EXPECT_EQ(scope.panel().trigsource.text(), "TRIG1");
        EXPECT_FALSE(channel(1).enable.checked());
        for (const auto& [key, value] : differences(before, set_up())) {
            EXPECT_THAT(key, testing::AnyOf("ch1vdiv", "ch1text.top", "ch2enable", "seltimediv",
                                            "trigpos1", "hyst1", "shyst", "trtout"))
                << value;
        }
        EXPECT_EQ(scope.panel().shyst.value(), scope.parts().trigger_state.hyst[ch1]);
        expect_agreement();
    }
}

TEST_F(AutosetKeeps, AMathsTraceAndItsSpectrumWhenStopped) {
    const MathsTool& tool = scope.tools().maths().tool(0);
    SpectrumControls& spectrum = scope.tools().spectrum().controls();
    scope.act([&] {
        scope.tools().maths().tool(0).controls().cmbMathsFunction.set_index(
            static_cast<int>(MathsFunction::mean));
        spectrum.mnuspectrum.click();
        spectrum.cmbSpectrumChannel.set_index(2);
    });
    ticks(20);
    scope.act([this] { scope.panel().cmdstop.click(); });
    ticks(5);
    const auto before = tool.trace();
    ASSERT_NE(before, nullptr);
    start();
    ticks(5);
    ASSERT_TRUE(autoset().under_way());
    scope.act([this] { autoset().controls().cmdAutosetCancel.click(); });
    ticks(10);
    EXPECT_EQ(tool.trace(), before);
    scope.act([&] { spectrum.cmbSpectrumWindow.set_index(1); });
    EXPECT_FALSE(scope.tools().spectrum().peaks().empty()) << spectrum.lblSpectrumState.caption();
    // A function that is chosen then is of the last sweep there was, and so is its spectrum.
    scope.act([&] {
        scope.tools().maths().tool(0).controls().cmbMathsFunction.set_index(
            static_cast<int>(MathsFunction::negative));
    });
    EXPECT_FALSE(scope.tools().spectrum().spectrum().power.empty())
        << spectrum.lblSpectrumState.caption();
}

TEST_F(AutosetKeeps, WhatWasCollectedWhenItIsCancelled) {
    for (const bool measuring : {true, false}) {
        scope.act([&] {
            scope.panel().check1.press(measuring);
            scope.tools().density().controls().chkDensity.set_checked(true);
            scope.panel().mnustatistics.click();
            scope.tools().spectrum().controls().mnuspectrum.click();
        });
        ticks(30);
        const DensityDialog& density = scope.tools().density();
        const Statistics& statistics = scope.tools().statistics().statistics();
        const std::uint64_t counted = density.collected(ch1)->sweeps;
        const std::uint64_t measured = statistics.sweeps();
        const std::uint64_t beginnings = statistics.beginnings();
        const std::size_t spectra = scope.tools().spectrum().sweeps();
        ASSERT_GT(measured, 5U);
        start();
        ticks(5); // sweeps of 250 ps, in which the signal hardly rises
        ASSERT_TRUE(autoset().under_way());
        EXPECT_EQ(density.collected(ch1)->sweeps, counted);
        EXPECT_EQ(statistics.sweeps(), measured);
        EXPECT_EQ(scope.tools().spectrum().sweeps(), spectra);
        scope.act([this] { autoset().controls().cmdAutosetCancel.click(); });
        ticks(30);
        EXPECT_GT(density.collected(ch1)->sweeps, counted + 5);
        EXPECT_EQ(statistics.beginnings(), beginnings);
        EXPECT_GT(statistics.sweeps(), measured + 5);
        // The first results after the trials go by thresholds that those have left behind: of a
        // sine from 10 % to 90 %, 2 asin(0.8) / (2 pi) of its 100 ns.
        const auto row =
            static_cast<std::size_t>(measurement_row("tRise") - measurement_rows().data());
        const RunningStatistics& rises = statistics.of(0, row).values;
        EXPECT_EQ(rises.count(), statistics.sweeps());
        EXPECT_NEAR(rises.least(), 29.5e-9, 2e-9);
        EXPECT_NEAR(rises.greatest(), 29.5e-9, 2e-9);
    }
}

TEST_F(AutosetKeeps, NothingCollectedOfAnotherSetUp) {
    choose(scope.panel().seltimediv, "50ns/div");
    scope.act([this] {
        scope.tools().density().controls().chkDensity.set_checked(true);
        scope.panel().mnustatistics.click();
    });
    ticks(30);
    const std::uint64_t beginnings = scope.tools().statistics().statistics().beginnings();
    start();
    finish();
    ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
    ticks(10);
    EXPECT_LT(scope.tools().density().collected(ch1)->sweeps, 10U);
    EXPECT_EQ(scope.tools().statistics().statistics().beginnings(), beginnings + 1);
}

TEST_F(AutosetKeeps, TheStepsOfUndoWhereNothingHadToBeChanged) {
    simulation.bench().sampler_noise_codes = 0.0;
    choose(channel(0).vdiv, "20mV");
    bool unchanged = false;
    bool changed = false;
    for (int again = 0; again < 8; ++again) {
        ticks(10);
        const PanelSetUp before = set_up();
        const std::size_t steps = scope.undo().steps().count();
        start();
        finish();
        ASSERT_EQ(autoset().outcome(), Autoset::Outcome::found) << autoset().line();
        const bool same = set_up() == before;
        EXPECT_EQ(scope.undo().steps().count(), same ? steps : steps + 1);
        EXPECT_THAT(autoset().line(),
                    testing::EndsWith(same ? "mVpp. Nothing had to be changed."
                                           : "mVpp. One Undo takes it all back."));
        unchanged = unchanged || same;
        changed = changed || !same;
    }
    EXPECT_TRUE(unchanged && changed) << "nothing was shown of one of the two";
}

} // namespace
} // namespace kv408
