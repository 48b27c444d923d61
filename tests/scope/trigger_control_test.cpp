// The TRIGGER frame on the simulated instrument: what arrives there and what the picture shows.

#include <vector>

#include <gtest/gtest.h>

#include "scope/trace_reader.h"

namespace kv408 {
namespace {

using simulator::SignalKind;

constexpr int trigger_tab = 3;

/// The program sweeping; CH1 shows a sine from -200 mV to 200 mV, 10 MHz, in dots.
struct TriggerControl : testing::Test, Program {
    TriggerControl() {
        simulation.bench().sources[0] = {
            .kind = SignalKind::sine, .amplitude_mvpp = 400.0, .frequency_hz = 10.0e6};
        EXPECT_TRUE(scope.start());
        scope.act([this] {
            channel(ch2).enable.set_checked(false);
            panel.eyeon.set_checked(true);
        });
        ticks(4);
    }

    [[nodiscard]] const simulator::TriggerSettings& trigger() const {
        return simulation.settings().trigger;
    }

    void set_hysteresis(int millivolts) {
        scope.act([&] { panel.shyst.set_value(millivolts); });
    }

    FrontPanel& panel = scope.panel();
};

TEST_F(TriggerControl, EachControlReachesTheInstrument) {
    EXPECT_EQ(trigger().input, 0U);
    EXPECT_TRUE(trigger().rising);
    EXPECT_EQ(trigger().level_mv, 0);
    EXPECT_EQ(trigger().hysteresis_mv, 10);
    EXPECT_EQ(trigger().time_out_us, 1000);
    choose(panel.trigsource, "TRIG2");
    EXPECT_EQ(trigger().input, 1U) << "a source is sent at once";
    choose(panel.trigeredge, "Negative");
    ticks(2);
    EXPECT_FALSE(trigger().rising);
    set_hysteresis(33);
    ticks(2);
    EXPECT_EQ(trigger().hysteresis_mv, 33);
    turn_wheel(*this, trigger_tab, 537);
    ticks(2);
    EXPECT_EQ(trigger().level_mv, 100);
    scope.act([&] { panel.trzero.click(); });
    ticks(2);
    EXPECT_EQ(trigger().level_mv, 0);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(TriggerControl, TheTimeOutArrivesWithinItsLimits) {
    for (const auto& [text, microseconds] :
         {std::pair{"2000", 2000}, std::pair{"5", 10}, std::pair{"70000", 65535},
          std::pair{"300us", 300}, std::pair{"", 10}}) {
        scope.act([&, typed = text] { panel.trtout.set_text(typed); });
        choose(panel.trigsource, "TRIG1");
        EXPECT_EQ(trigger().time_out_us, microseconds) << text;
        ticks(3);
        EXPECT_EQ(trigger().time_out_us, microseconds) << text;
    }
}

TEST_F(TriggerControl, EachSourceKeepsItsLevelAndHysteresis) {
    turn_wheel(*this, trigger_tab, 520);
    set_hysteresis(7);
    choose(panel.trigsource, "TRIG2");
    turn_wheel(*this, trigger_tab, 500);
    set_hysteresis(9);
    ticks(3);
    EXPECT_EQ(trigger().level_mv, -48);
    EXPECT_EQ(trigger().hysteresis_mv, 9);
    choose(panel.trigsource, "TRIG1");
    EXPECT_EQ(trigger().level_mv, 32);
    EXPECT_EQ(trigger().hysteresis_mv, 7);
    scope.act([&] { panel.trzero.click(); });
    choose(panel.trigsource, "TRIG2");
    EXPECT_EQ(trigger().level_mv, -48) << "set to zero is for the selected source alone";
}

TEST_F(TriggerControl, ALevelAboveTheSignalIsWaitedFor) {
    turn_wheel(*this, trigger_tab, 512 + 51); // 204 mV
    ticks(6);
    EXPECT_EQ(status(), "Waiting For TRIGGER");
    EXPECT_EQ(panel.trlevelmv.caption(), " 204mV");
    turn_wheel(*this, trigger_tab, 512 + 45); // 180 mV
    ticks(6);
    EXPECT_EQ(status(), "Running");
    scope.act([&] { panel.trzero.click(); });
    ticks(12); // the level line has gone again
    EXPECT_NEAR(trace_row(*this, ch1, 1), 256, 1);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(TriggerControl, TheNegativeEdgeTurnsThePictureOver) {
    const auto rows = [this] {
        std::vector<int> result;
        for (int column = 1; column <= 639; ++column) {
            result.push_back(trace_row(*this, ch1, column));
        }
        return result;
    };
    const std::vector<int> rising = rows();
    EXPECT_LT(rising[40], 200) << "a rising edge goes upward first";
    choose(panel.trigeredge, "Negative");
    ticks(5);
    const std::vector<int> falling = rows();
    for (std::size_t point = 0; point < rising.size(); ++point) {
        ASSERT_NEAR(falling[point], 512 - rising[point], 1) << point;
    }
    choose(panel.trigeredge, "Positive");
    ticks(5);
    EXPECT_EQ(rows(), rising);
}

TEST_F(TriggerControl, TheSignalMustComeFromBeyondTheHysteresis) {
    for (const auto& [hysteresis, shown] :
         {std::pair{199, "Running"}, std::pair{201, "Waiting For TRIGGER"},
          std::pair{100, "Running"}}) {
        set_hysteresis(hysteresis);
        ticks(6);
        EXPECT_EQ(status(), shown) << hysteresis;
    }
}

// 50 kHz: one period in 20 microseconds.
TEST_F(TriggerControl, ASlowSignalNeedsALongTimeOut) {
    simulation.bench().sources[0].frequency_hz = 50.0e3;
    for (const auto& [text, shown] :
         {std::pair{"10", "Waiting For TRIGGER"}, std::pair{"30", "Running"}}) {
        scope.act([&, typed = text] { panel.trtout.set_text(typed); });
        choose(panel.trigsource, "TRIG1");
        ticks(8);
        EXPECT_EQ(status(), shown) << text;
    }
}

TEST_F(TriggerControl, TheLevelLineShowsForOneSecond) {
    const auto line_at = [this](int row) {
        return scope.picture().surface().at(0, row) == pixel_of(scope.parts().colours.normal_text);
    };
    EXPECT_FALSE(line_at(256 - 64));
    turn_wheel(*this, trigger_tab, 537); // 100 mV, a division at 0.1V/div
    EXPECT_TRUE(line_at(256 - 64)) << "at once";
    ticks(9);
    EXPECT_TRUE(line_at(256 - 64));
    ticks(1);
    EXPECT_FALSE(line_at(256 - 64));
    EXPECT_FALSE(scope.parts().acquisition.holdoff);
    scope.act([&] { panel.trzero.click(); });
    EXPECT_EQ(scope.parts().acquisition.holdoff_time, 1000);
    ticks(9);
    EXPECT_TRUE(line_at(256));
    ticks(1);
    EXPECT_NE(scope.picture().surface().at(1, 256), pixel_of(scope.parts().colours.normal_text));
}

} // namespace
} // namespace kv408
