// Single sweeps by the menu, and the window of read-outs, over the whole program.

#include <cmath>
#include <sstream>

#include <gtest/gtest.h>

#include "scope/program.h"
#include "scope/single_sweep.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

struct SingleSweepTest : testing::Test, protected Program {
    SingleSweepTest() {
        EXPECT_TRUE(scope.start());
        ticks(10);
    }

    void choose_single() {
        scope.act([this] { scope.single().controls().mnusingle.click(); });
    }

    [[nodiscard]] std::uint64_t swept() { return scope.sweeps().last_complete()->number; }
    [[nodiscard]] bool sweeping() const { return scope.parts().acquisition.acqrunning; }
};

TEST_F(SingleSweepTest, SweepsOnceAndStops) {
    scope.act([this] { scope.single().controls().mnustop.click(); });
    ticks(3);
    EXPECT_EQ(status(), "Stopped");
    const std::uint64_t before = swept();
    choose_single();
    EXPECT_TRUE(sweeping());
    ticks(20);
    EXPECT_EQ(swept(), before + 1);
    EXPECT_EQ(status(), "Stopped");
    scope.act([this] { scope.single().controls().mnustart.click(); });
    ticks(20);
    EXPECT_GT(swept(), before + 2);
    EXPECT_TRUE(sweeping()) << "Start sweeps on";
}

TEST_F(SingleSweepTest, SweepsOnForWhoPressesStartMeanwhile) {
    choose_single();
    scope.act([this] { scope.panel().cmdstartsweep.click(); });
    ticks(20);
    EXPECT_TRUE(sweeping());
}

TEST_F(SingleSweepTest, WaitsForTheTrigger) {
    simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                   simulator::TriggerRoute::disconnected};
    choose_single();
    ticks(30);
    EXPECT_TRUE(sweeping());
    simulation.bench().triggers[0] = simulator::TriggerRoute::signal_1;
    ticks(30);
    EXPECT_FALSE(sweeping());
}

TEST_F(SingleSweepTest, SaysThatNoChannelIsOn) {
    scope.act([this] {
        channel(0).enable.set_checked(false);
        channel(1).enable.set_checked(false);
        scope.panel().cmdstop.click();
    });
    choose_single();
    EXPECT_EQ(boxes.texts(), std::vector<std::string>{"No channel is on"});
    EXPECT_FALSE(sweeping());
}

/// The program with the window of read-outs open and time cursors an exact period apart.
struct ReadoutsTest : SingleSweepTest {
    ReadoutsTest() {
        scope.act([this] {
            controls().mnureadouts.click();
            scope.panel().tabstrip3.select(2);
        });
        ticks(10);
    }

    [[nodiscard]] ReadoutsControls& controls() { return scope.tools().readouts().controls(); }

    /// Line `line` of the values.
    [[nodiscard]] std::string value(int line) {
        std::istringstream lines(controls().lblReadoutsValues.caption());
        std::string text;
        for (; line >= 0; --line) {
            text.clear();
            std::getline(lines, text);
        }
        return text;
    }
};

TEST_F(ReadoutsTest, TellWhatTheCursorsCross) {
    // Columns 192 and 448 of 312.5 ps, 256 columns: 80 ns. CH2 repeats every 50 ns, CH1 every 100.
    EXPECT_EQ(value(0), "80.00ns");
    EXPECT_EQ(value(1), "12.50MHz");
    const CursorCrossings found = scope.tools().readouts().crossings(ch1);
    // A sine of 400 mVpp that rises through 0 V at the trigger, which is the first point.
    const auto volts = [](int column) {
        return 0.2 * std::sin(2.0 * 3.14159265358979 * 10e6 * (column - 1) * 312.5e-12);
    };
    EXPECT_NEAR(found.cursor[0].volts.value(), volts(192), 0.004);
    EXPECT_NEAR(found.cursor[1].volts.value(), volts(448), 0.004);
    EXPECT_NEAR(found.difference.volts.value(), volts(448) - volts(192), 0.006);
}

TEST_F(ReadoutsTest, SayWhyThereIsNone) {
    scope.act([this] { channel(1).enable.set_checked(false); });
    ticks(3);
    EXPECT_EQ(value(5), "--- (channel is off)");
    EXPECT_EQ(value(2).find("---"), std::string::npos);
    simulation.bench().triggers[0] = simulator::TriggerRoute::disconnected;
    ticks(60);
    EXPECT_EQ(value(2), "--- (no trace is shown)");
    scope.act([this] { scope.panel().tabstrip3.select(1); });
    ticks(3);
    EXPECT_EQ(value(0), "--- (no time cursors: choose Time in the frame Cursor)");
}

TEST_F(ReadoutsTest, MarkWhatLeavesTheScale) {
    const auto marked = [this] {
        return std::array{controls().above[ch1].visible(), controls().below[ch1].visible(),
                          controls().above[ch2].visible(), controls().below[ch2].visible()};
    };
    using Marks = std::array<bool, 4>;
    // 50mV/div: the scale ends at 2047 and -2048 codes of a sixth of a millivolt.
    choose(channel(0).vdiv, "50mV");
    simulation.bench().sources[0].amplitude_mvpp = 800.0;
    simulation.bench().sources[0].offset_mv = 100.0; // -300 to 500 mV: cut off above
    ticks(20);
    EXPECT_EQ(marked(), Marks{}) << "off at first";
    EXPECT_NE(controls().lblReadoutsClipping.caption().find("CH1"), std::string::npos);
    scope.act([this] { controls().chkClippingMark.press(true); });
    EXPECT_EQ(marked(), (Marks{true, false, false, false}));
    scope.act([this] { channel(0).invert.press(true); });
    ticks(20);
    EXPECT_EQ(marked(), (Marks{false, true, false, false})) << "upside down";
    scope.act([this] { scope.tools().readouts().close(); });
    simulation.bench().sources[0].amplitude_mvpp = 200.0; // 0 to 200 mV
    ticks(20);
    EXPECT_EQ(marked(), Marks{}) << "the marks go on without the window";
}

} // namespace
} // namespace kv408
