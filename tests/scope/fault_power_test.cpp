// The instrument is switched off and on while the program runs, and with that forgets how it was
// set up: what is shown is right all the same.

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "scope/fault_run.h"

namespace kv408 {
namespace {

using Texts = std::vector<std::string>;

/// The instrument is switched off for `off` ticks.
void switch_off_for(Program& program, int off) {
    program.simulation.bench().faults.no_power = true;
    program.simulation.notice_faults();
    program.ticks(off);
    program.simulation.bench().faults.no_power = false;
}

/// Peak to peak of the points of channel 1 in mV.
double vpp(Program& program) {
    const auto& mv = program.scope.parts().samples[0].mv;
    const auto [lowest, highest] = std::minmax_element(mv.begin() + 1, mv.begin() + 641);
    return *highest - *lowest;
}

constexpr double signal_mvpp = 400.0;
constexpr double within_mv = 10.0;

TEST(PowerLoss, AfterALossOfPowerTheNextStartSetsTheRangesToo) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    ASSERT_EQ(program.status(), "Running");
    program.simulation.bench().faults.no_power = true;
    program.ticks(3);
    program.simulation.bench().faults.no_power = false;
    const std::size_t from = program.log.frames.size();
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    program.ticks(3);
    EXPECT_EQ(program.status(), "Running");
    // Both channels stand at "0.1V", the low gain; the instrument wakes in the high one.
    ASSERT_GT(program.log.frames.size(), from);
    EXPECT_EQ(frames_of(program, from)[0], (std::vector<int>{9, 2, 2, 0, 0, 0}));
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(PowerLoss, SwitchedOffAndOnWhileSweepingItIsSetUpAnewByItself) {
    for (const char* const time : {"20ns/div", "10us/div"}) {
        SCOPED_TRACE(time);
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.choose(program.scope.panel().seltimediv, time);
        program.ticks(6);
        ASSERT_NEAR(vpp(program), signal_mvpp, within_mv);
        const auto ranges = program.simulation.settings().range;
        switch_off_for(program, 20);
        for (int tick = 0; tick < 6; ++tick) {
            program.ticks(1);
            EXPECT_NEAR(vpp(program), signal_mvpp, within_mv) << tick;
        }
        EXPECT_EQ(program.status(), "Running");
        EXPECT_EQ(program.simulation.settings().range, ranges);
        EXPECT_TRUE(program.boxes.shown.empty());
    }
}

TEST(PowerLoss, SwitchedOffAndOnWhileTheProgramWasHeldUpItIsSetUpAnewByItself) {
    // As the computer sleeps, or somebody stops the process: the reply that waits is an old one.
    // What the user does first of all after it may come before the timer.
    for (const bool acts : {false, true}) {
        SCOPED_TRACE(acts);
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.ticks(6);
        const auto ranges = program.simulation.settings().range;
        program.clock.advance(std::chrono::seconds(5));
        program.simulation.bench().faults.no_power = true;
        program.simulation.notice_faults();
        program.simulation.bench().faults.no_power = false;
        program.simulation.notice_faults();
        ASSERT_NE(program.simulation.settings().range, ranges);
        if (acts) {
            program.scope.act([&] { program.scope.panel().eyeon.press(true); });
        }
        for (int tick = 0; tick < 6; ++tick) {
            program.ticks(1);
            EXPECT_NEAR(vpp(program), signal_mvpp, within_mv) << tick;
        }
        EXPECT_EQ(program.status(), "Running");
        EXPECT_EQ(program.simulation.settings().range, ranges);
    }
}

TEST(PowerLoss, SwitchedOffAndOnWhileTheProgramWasHeldUpInTheMiddleOfATickItIsSetUpAnew) {
    // Stopped while it draws, for instance.
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    program.scope.act([&] { program.scope.panel().persist.press(true); }); // each sweep draws
    const auto ranges = program.simulation.settings().range;
    bool held_up = false;
    program.scope.picture().on_drawn([&](Columns /*columns*/) {
        if (!std::exchange(held_up, true)) {
            program.clock.advance(std::chrono::seconds(5));
            program.simulation.bench().faults.no_power = true;
            program.simulation.notice_faults();
            program.simulation.bench().faults.no_power = false;
            program.simulation.notice_faults();
        }
    });
    for (int tick = 0; tick < 12 && !held_up; ++tick) {
        program.ticks(1);
    }
    ASSERT_TRUE(held_up);
    ASSERT_NE(program.simulation.settings().range, ranges);
    for (int tick = 0; tick < 6; ++tick) {
        program.ticks(1);
        EXPECT_NEAR(vpp(program), signal_mvpp, within_mv) << tick;
    }
    EXPECT_EQ(program.status(), "Running");
    EXPECT_EQ(program.simulation.settings().range, ranges);
}

TEST(PowerLoss, SwitchedOffAndOnWhileStoppedItIsSetUpByStart) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    switch_off_for(program, 20);
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    program.ticks(6);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_NEAR(vpp(program), signal_mvpp, within_mv);
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(PowerLoss, SwitchedOnAfterAStartThatFailedItIsSetUpByTheNext) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    program.simulation.bench().faults.no_power = true;
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    program.ticks(1);
    EXPECT_FALSE(program.boxes.shown.empty());
    program.boxes.shown.clear();
    program.simulation.bench().faults.no_power = false;
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    program.ticks(6);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_NEAR(vpp(program), signal_mvpp, within_mv);
    EXPECT_TRUE(program.boxes.shown.empty());
}

/// For how long the instrument was off that was switched off before operation `first` and on again
/// after `count` operations.
std::chrono::nanoseconds time_off(const Program& program, std::size_t first, std::size_t count) {
    return program.log.operations.at(first + count).began - program.log.operations[first].began;
}

/// Whether the user was told that the set-up failed, so that Start is to be pressed.
bool told_of_set_up(const Program& program) {
    const Texts texts = program.boxes.texts();
    return std::find(texts.begin(), texts.end(), "Error setting scope") != texts.end();
}

TEST(PowerLoss, SwitchedOffAndOnWithinASetUpItIsSetUpAgain) {
    int long_ones = 0;
    for (const char* const time : {"50ns/div", "10us/div"}) {
        // Passes take longest: of those each third is tried.
        const std::size_t stride = std::max<std::size_t>(series_stride, time[0] == '5' ? 1 : 3);
        for (std::size_t count = 5; count <= 30; count += stride) {
            for (const bool stopped : {false, true}) {
                SCOPED_TRACE(std::string(time) + ", off for " + std::to_string(count) +
                             (stopped ? " operations after Start" : " operations"));
                Program program;
                ASSERT_TRUE(program.scope.start());
                program.ticks(10);
                if (stopped) {
                    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
                    program.ticks(1);
                }
                const std::size_t first = program.log.operations.size();
                program.simulation.bench().planned_faults = simulator::PlannedFaults{
                    .lasting_operations = static_cast<int>(count), .faults = {.no_power = true}};
                program.choose(program.scope.panel().seltimediv, time);
                program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
                program.ticks(20);
                if (time_off(program, first, count) < std::chrono::seconds(2)) {
                    continue; // nobody is that fast
                }
                ++long_ones;
                if (told_of_set_up(program)) {
                    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
                    program.ticks(20);
                }
                EXPECT_EQ(program.status(), "Running");
                EXPECT_NEAR(vpp(program), signal_mvpp, within_mv);
            }
        }
    }
    EXPECT_GT(long_ones, series_stride == 1 ? 54 : 7);
}

TEST(PowerLoss, ACommandThatIsNeverAcknowledgedDoesNotKeepItFromSweeping) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    program.simulation.bench().faults.replies[8] = {.length = 0, .times = simulator::without_end};
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    program.ticks(20);
    const Texts told = {" SETTRIG Comm timed out", "Error Sending Data.", "error set triger"};
    Texts twice = told;
    twice.insert(twice.end(), told.begin(), told.end());
    EXPECT_EQ(program.boxes.texts(), twice); // it may have been off, so it is set up once more
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.scope.parts().acquisition.taken_as_set[0]);
}

TEST(PowerLoss, StartSendsTheRangesOnlyAfterAPause) {
    for (const int pause : {1, 20}) {
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.ticks(6);
        program.scope.act([&] { program.scope.panel().cmdstop.click(); });
        program.ticks(pause);
        const std::size_t from = program.log.frames.size();
        program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
        program.ticks(1);
        ASSERT_GT(program.log.frames.size(), from);
        EXPECT_EQ(frames_of(program, from)[0][0], pause == 20 ? 9 : 8) << pause;
    }
}

} // namespace
} // namespace kv408
