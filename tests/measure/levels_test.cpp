#include <cmath>

#include <gtest/gtest.h>

#include "measure/measure_rig.h"

namespace kv408 {
namespace {

/// A rectangular wave of -400 mV and 600 mV, each for half of `period` columns, low first, with
/// one sample of -500 mV in its first low half and one of 700 mV in its first high half.
double rectangle(int column, int period) {
    if (column == 10) {
        return -500.0;
    }
    if (column == period / 2 + 20) {
        return 700.0;
    }
    return (column - 1) % period < period / 2 ? -400.0 : 600.0;
}

TEST(MeasurementLevels, AreTheExtremesMeanAndRootMeanSquareOfColumns1To640) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return column == 0 || column > 640 ? 9999.0 : 3.0; });
    rig.sweep(ch2, [](int column) {
        return column == 0 || column > 640 ? -9999.0 : column <= 320 ? -4.0 : 8.0;
    });
    rig.measure();
    EXPECT_EQ(rig.record()[meas::vmax], 3.0);
    EXPECT_EQ(rig.record()[meas::vmin], 3.0);
    EXPECT_EQ(rig.record()[meas::vpp], 0.0);
    EXPECT_EQ(rig.record()[meas::vmean], 3.0);
    EXPECT_EQ(rig.record()[meas::vrms], 3.0);
    EXPECT_EQ(rig.record(ch2)[meas::vmax], 8.0);
    EXPECT_EQ(rig.record(ch2)[meas::vmin], -4.0);
    EXPECT_EQ(rig.record(ch2)[meas::vpp], 12.0);
    EXPECT_EQ(rig.record(ch2)[meas::vmean], 2.0);
    EXPECT_DOUBLE_EQ(rig.record(ch2)[meas::vrms], std::sqrt(40.0));
}

TEST(MeasurementLevels, TheFirstSweepHasNoLevelsAndCrossesAtZero) {
    MeasureRig rig;
    // -10 mV, 30 mV, -10 mV ... : crosses 0 mV a quarter of the way up.
    rig.sweep(ch1, [](int column) { return (column - 1) / 40 % 2 == 0 ? -10.0 : 30.0; });
    rig.measure();
    EXPECT_EQ(rig.record()[meas::top], 0.0);
    EXPECT_EQ(rig.record()[meas::base], 0.0);
    EXPECT_EQ(rig.record()[meas::amplitude], 0.0);
    EXPECT_EQ(rig.record()[meas::mid], 0.0);
    EXPECT_EQ(rig.record()[meas::vmax], 30.0);
    EXPECT_EQ(rig.record()[meas::vmin], -10.0);
    EXPECT_EQ(rig.record()[meas::vmean], 10.0);
    // First crossing between columns 40 and 41, 10 of the 40 mV up.
    EXPECT_DOUBLE_EQ(rig.places().start[meas::pulse_high], 40.25);
}

TEST(MeasurementLevels, SettleBySweepsFromTheSweepBefore) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return rectangle(column, 80); });
    rig.measure();
    EXPECT_EQ(rig.record()[meas::vmax], 700.0);
    EXPECT_EQ(rig.record()[meas::vmin], -500.0);
    // The second sweep has a histogram over -500 .. 700 mV in bins of 37.5 mV, and 100 mV as mid.
    rig.measure();
    EXPECT_EQ(rig.record()[meas::mid], 100.0);
    EXPECT_EQ(rig.record()[meas::top], 600.0);
    EXPECT_EQ(rig.record()[meas::base], -400.0);
    EXPECT_EQ(rig.record()[meas::amplitude], 1000.0);
    // Its 10 % and 90 % levels were still those of the first sweep, 0 mV both: a rise is found
    // there, and it takes no time.
    EXPECT_EQ(rig.record()[meas::rise], 0.0);
    // The third has -300 mV and 500 mV: from -400 to 600 within one column that is 0.8 of it.
    rig.measure();
    EXPECT_NEAR(rig.record()[meas::rise], 0.8, 1e-12);
    EXPECT_NEAR(rig.record()[meas::fall], 0.8, 1e-12);
    EXPECT_EQ(rig.record()[meas::pulse_high], 40.0);
    EXPECT_EQ(rig.record()[meas::pulse_low], 40.0);
}

TEST(MeasurementLevels, FollowAChangedSignalInTwoSweeps) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return rectangle(column, 80); });
    rig.measure(3);
    rig.sweep(ch1, [](int column) { return rectangle(column, 80) / 10.0; });
    rig.measure();
    EXPECT_EQ(rig.record()[meas::vmax], 70.0);
    // The bins are still 37.5 mV wide: -40 mV and 60 mV fall into the 13th and the 15th, both up
    // to the mid level of 100 mV, and the higher one of them holds fewer samples.
    EXPECT_EQ(rig.record()[meas::top], 0.0);
    EXPECT_EQ(rig.record()[meas::base], -40.0);
    rig.measure();
    EXPECT_EQ(rig.record()[meas::top], 60.0);
    EXPECT_EQ(rig.record()[meas::base], -40.0);
}

TEST(MeasurementLevels, EachChannelHasAMemoryOfItsOwn) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return rectangle(column, 80); });
    rig.sweep(ch2, [](int column) { return rectangle(column, 160) / 10.0; });
    rig.measure(3);
    EXPECT_EQ(rig.record(ch1)[meas::top], 600.0);
    EXPECT_EQ(rig.record(ch2)[meas::top], 60.0);
    EXPECT_EQ(rig.record(ch1)[meas::pulse_high], 40.0);
    EXPECT_EQ(rig.record(ch2)[meas::pulse_high], 80.0);
}

TEST(MeasurementLevels, ExtremesStartAtTenVoltsOnEitherSide) {
    MeasureRig rig;
    rig.sweep(ch1, [](int) { return 12000.0; });
    rig.sweep(ch2, [](int) { return -12000.0; });
    rig.measure();
    EXPECT_EQ(rig.record(ch1)[meas::vmax], 12000.0);
    EXPECT_EQ(rig.record(ch1)[meas::vmin], 10000.0);
    EXPECT_EQ(rig.record(ch2)[meas::vmax], -10000.0);
    EXPECT_EQ(rig.record(ch2)[meas::vmin], -12000.0);
}

} // namespace
} // namespace kv408
