// What is changed while the sweep is stopped.

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "scope/trace_reader.h"

namespace kv408 {
namespace {

constexpr std::size_t vmax_slot = 0;
constexpr std::size_t frequency_slot = 2;

/// A program whose channel 1 alone sweeps.
class Stopped : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(program_.scope.start());
        program_.scope.act([&] { program_.channel(1).enable.set_checked(false); });
        program_.ticks(10);
    }

    FrontPanel& panel() { return program_.scope.panel(); }

    void stop() {
        program_.scope.act([&] { panel().cmdstop.click(); });
        program_.ticks(3);
    }

    void select(TabStrip& tabs, int position) {
        program_.scope.act([&] { tabs.select(position); });
    }

    /// Stops before data taken with the last change have come, so that no tick draws.
    void stop_without_new_data() {
        select(panel().tabstrip2, 2);
        program_.scope.act([&] { panel().slider1.turn(1); });
        stop();
    }

    [[nodiscard]] int top_of(Colour colour) {
        return top_row(program_.scope.picture().surface(), colour);
    }
    [[nodiscard]] int top_of_trace() { return top_of(program_.scope.parts().colours.ch1); }
    [[nodiscard]] int top_mark() { return top_of(program_.scope.parts().colours.annotations); }

    Program program_;
};

TEST_F(Stopped, TheMarksStayOnTheTraceInAnotherScale) {
    program_.choose(panel().measurement[vmax_slot].selector, "VMax");
    program_.scope.act([&] { panel().measurement[vmax_slot].annotate.press(true); });
    program_.ticks(4);
    stop_without_new_data();
    const int before = top_of_trace();
    EXPECT_NEAR(top_mark(), before, 1);
    program_.choose(program_.channel(0).vdiv, "0.2V");
    EXPECT_GT(top_of_trace(), before + 50);
    EXPECT_NEAR(top_mark(), top_of_trace(), 1);
}

TEST_F(Stopped, TheResultsKeepTheTimeBaseOfTheirSweep) {
    stop();
    MeasurementControls& slot = panel().measurement[frequency_slot];
    const std::string before = slot.ch1.caption();
    EXPECT_NEAR(std::strtod(before.c_str(), nullptr), 10.0, 0.1) << before;
    program_.choose(panel().seltimediv, "100ns/div");
    program_.scope.act([&] { slot.annotate.press(true); });
    EXPECT_EQ(slot.ch1.caption(), before);
    program_.choose(slot.selector, "Period");
    EXPECT_NEAR(std::strtod(slot.ch1.caption().c_str(), nullptr), 100.0, 1.0) << slot.ch1.caption();
}

TEST_F(Stopped, AnotherTriggerSourceBringsItsLevelToTheWheel) {
    stop();
    select(panel().tabstrip2, 3);
    ASSERT_EQ(panel().tabstrip2.selected_key(), "TRIG");
    program_.scope.act([&] { panel().slider1.turn_to(600); });
    program_.choose(panel().trigsource, "TRIG2");
    EXPECT_EQ(panel().slider1.Value(), 512); // the middle
    program_.choose(panel().trigsource, "TRIG1");
    EXPECT_EQ(panel().slider1.Value(), 600);
}

TEST_F(Stopped, ATimeCursorAtTheEndComesBackWithTheFirstNotch) {
    stop();
    select(panel().tabstrip3, 2);
    program_.scope.act([&] { panel().slider1.turn_to(1024); });
    EXPECT_EQ(program_.scope.parts().cursor_state.hpos[0], 640);
    EXPECT_EQ(panel().slider1.Value(), 640);
    program_.scope.act([&] { panel().slider1.turn(-1); });
    EXPECT_EQ(program_.scope.parts().cursor_state.hpos[0], 636); // a step of 4
}

} // namespace
} // namespace kv408
