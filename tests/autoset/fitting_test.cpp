// Which set-up shows a signal best.

#include <gtest/gtest.h>

#include "autoset/fitting.h"

namespace kv408 {
namespace {

SignalLook between(double low, double high) {
    return {.low = low, .high = high, .alive = true};
}

TEST(Fitting, TakesTheFinestVoltsPerDivisionThatHasRoomForTheTrace) {
    struct Case {
        double height;
        const char* vdiv;
    };
    // 6.5 divisions at most: 0.65 V at 0.1 V, 0.325 V at 50 mV, ...
    for (const Case& each :
         {Case{5.0, "10mV"}, Case{64.0, "10mV"}, Case{66.0, "20mV"}, Case{320.0, "50mV"},
          Case{400.0, "0.1V"}, Case{1200.0, "0.2V"}, Case{1400.0, "0.5V"}, Case{9000.0, "0.5V"}}) {
        const VerticalFit fit =
            fit_vertical(between(-each.height / 2.0, each.height / 2.0), Place{});
        EXPECT_EQ(fit.vdiv, each.vdiv) << each.height;
        EXPECT_EQ(fit.wheel, 512);
    }
}

TEST(Fitting, MovesTheZeroLineUntilTheTraceIsInItsPlace) {
    // Around 150 mV at 50 mV a division: three divisions down, 128 steps of the wheel each.
    EXPECT_EQ(fit_vertical(between(0.0, 300.0), Place{}).wheel, 512 - 3 * 128);
    EXPECT_EQ(fit_vertical(between(-50.0, 50.0), Place{.centre = 2.0, .height = 3.25}).wheel,
              512 + 2 * 128);
    EXPECT_EQ(fit_vertical(between(-50.0, 50.0), Place{.centre = 2.0, .height = 3.25}).vdiv,
              "50mV");
    // 100 mV around 900 mV: at 20 mV its zero line would lie 45 divisions down; at 0.5 V 1.8.
    const VerticalFit far = fit_vertical(between(850.0, 950.0), Place{});
    EXPECT_EQ(far.vdiv, "0.5V");
    EXPECT_EQ(far.wheel, 282);
}

TEST(Fitting, ShowsTwoToFivePeriods) {
    EXPECT_EQ(fit_period(100e3).time_base, "20ns/div"); // 100 ns: 200 ns on the screen
    EXPECT_EQ(fit_period(103e3).time_base, "50ns/div");
    EXPECT_EQ(fit_period(66.7).time_base, "25ps/div");
    EXPECT_EQ(fit_period(100e6).time_base, "20us/div");
    EXPECT_EQ(fit_period(1e12).time_base, "100us/div") << "the slowest that there is";
}

TEST(Fitting, BringsAnEdgeToTheMiddleOfTheScreen) {
    // 1000 ps: five divisions of 200 ps.
    EXPECT_EQ(fit_edge(1000.0).time_base, "200ps/div");
    EXPECT_EQ(fit_edge(1000.0).delay, 0);
    // 1500 ps: 200 ps, and 500 ps of delay.
    EXPECT_EQ(fit_edge(1500.0).time_base, "200ps/div");
    EXPECT_EQ(fit_edge(1500.0).delay, 500);
    // 200 ns: 20 ns would need 100 ns of delay, of which there are no more than 65535 ps.
    EXPECT_EQ(fit_edge(200e3).time_base, "50ns/div");
}

TEST(Fitting, PutsTheLevelInTheMiddleWithRoomForTheHysteresis) {
    // Steps of 4 mV from -2048 mV; half the room to the nearer end, at most 20 mV.
    EXPECT_EQ(fit_level(between(-200.0, 200.0), 1.0).wheel, 512);
    EXPECT_EQ(fit_level(between(-200.0, 200.0), 1.0).hysteresis, 20);
    EXPECT_EQ(fit_level(between(100.0, 140.0), 1.0).wheel, 542); // 120 mV
    EXPECT_EQ(fit_level(between(100.0, 140.0), 1.0).hysteresis, 10);
    EXPECT_EQ(fit_level(between(100.0, 140.0), 2.0).wheel, 527) << "60 mV behind the divider";
    EXPECT_EQ(fit_level(between(-2.5, 2.5), 1.0).hysteresis, 1);
    EXPECT_EQ(fit_level(between(0.5, 1.5), 1.0).hysteresis, 0) << "no step of the wheel lies in it";
}

} // namespace
} // namespace kv408
