#include <gtest/gtest.h>

#include "measure/measure_rig.h"

namespace kv408 {
namespace {

/// -100 mV and 100 mV from column 1 on, each `half` columns long, low first or high first, with a
/// spur beyond either level so that no level is the end of the histogram.
double square(int column, int half, bool low_first) {
    if (column == 5) {
        return low_first ? -120.0 : 120.0;
    }
    if (column == half + 5) {
        return low_first ? 120.0 : -120.0;
    }
    const bool first = (column - 1) / half % 2 == 0;
    return first == low_first ? -100.0 : 100.0;
}

TEST(MeasurementEngine, AFlatTraceHasNoTimes) {
    MeasureRig rig;
    rig.measure(3);
    for (const Channel channel : both_channels) {
        EXPECT_EQ(rig.texts(channel)[meas::vmax], "0.000V");
        EXPECT_EQ(rig.texts(channel)[meas::vmin], "0.000V");
        EXPECT_EQ(rig.texts(channel)[meas::vpp], "0.000V");
        for (const std::size_t time : {meas::frequency, meas::period, meas::rise, meas::fall,
                                       meas::pulse_high, meas::pulse_low}) {
            EXPECT_EQ(rig.texts(channel)[time], "---") << time;
        }
    }
}

TEST(MeasurementEngine, ASingleRisingEdgeHasARiseTimeAndNoPulse) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) {
        if (column == 10) {
            return -101.0;
        }
        // 10 columns from -100 mV to 100 mV: 8 of them between 10 % and 90 %.
        return column <= 300 ? -100.0 : column >= 310 ? 100.0 : -100.0 + 20.0 * (column - 300);
    });
    rig.measure(3);
    EXPECT_EQ(rig.record()[meas::rise], 8.0);
    EXPECT_EQ(rig.texts()[meas::rise], "2.500ns");
    for (const std::size_t missing :
         {meas::fall, meas::pulse_high, meas::pulse_low, meas::period, meas::frequency}) {
        EXPECT_EQ(rig.texts()[missing], "---") << missing;
    }
}

TEST(MeasurementEngine, AnEdgeSteeperThanAColumnOnTheFirstSweepTakesNoTime) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return column <= 300 ? -100.0 : 100.0; });
    rig.measure();
    EXPECT_EQ(rig.texts()[meas::rise], "-inf-");
    EXPECT_EQ(rig.texts()[meas::fall], "---");
}

TEST(MeasurementEngine, FrequencyComesFromTheMeanWidths) {
    MeasureRig rig;
    // 96 columns low, 64 high.
    rig.sweep(ch1, [](int column) {
        if (column == 5 || column == 100) {
            return column == 5 ? -120.0 : 120.0;
        }
        return (column - 1) % 160 < 96 ? -100.0 : 100.0;
    });
    rig.measure(3);
    EXPECT_EQ(rig.record()[meas::pulse_high], 64.0);
    EXPECT_EQ(rig.record()[meas::pulse_low], 96.0);
    EXPECT_EQ(rig.record()[meas::period], 160.0);
    EXPECT_EQ(rig.record()[meas::frequency], 1.0 / 160.0);
    EXPECT_EQ(rig.texts()[meas::frequency], "20.00MHz");
}

TEST(MeasurementEngine, MoreThanEightPeriodsAreMeasuredOverTheFirstCrossings) {
    MeasureRig rig;
    // 20 columns each up to column 341, where the 17th crossing lies; then 10 each.
    rig.sweep(ch1, [](int column) {
        return column <= 360 ? square(column, 20, true) : square(column, 10, true);
    });
    rig.measure(3);
    EXPECT_EQ(rig.record()[meas::pulse_high], 20.0);
    EXPECT_EQ(rig.record()[meas::pulse_low], 20.0);
}

TEST(MeasurementEngine, MarksLevelsAtTheirVoltages) {
    MeasureRig rig;
    rig.sweep(ch2, [](int column) { return square(column, 40, true); });
    rig.measure(3);
    const AnnotationPlaces& places = rig.places(ch2);
    const auto& record = rig.record(ch2);
    for (const std::size_t level :
         {meas::vmax, meas::vmin, meas::top, meas::base, meas::vrms, meas::vmean}) {
        EXPECT_EQ(places.start[level], record[level]) << level;
        EXPECT_EQ(places.end[level], record[level]) << level;
    }
    EXPECT_EQ(places.start[meas::vmax], 120.0);
    EXPECT_EQ(places.start[meas::base], -100.0);
    EXPECT_EQ(places.start[meas::vpp], 120.0);
    EXPECT_EQ(places.end[meas::vpp], -120.0);
    EXPECT_EQ(places.start[meas::amplitude], 100.0);
    EXPECT_EQ(places.end[meas::amplitude], -100.0);
}

TEST(MeasurementEngine, MarksTimesFromARisingCrossingOn) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return square(column, 40, true); });
    rig.measure(3);
    // Crossings at 40.5 (rising), 80.5 (falling), 120.5.
    const AnnotationPlaces& places = rig.places();
    EXPECT_EQ(places.start[meas::period], 40.5);
    EXPECT_EQ(places.end[meas::period], 120.5);
    EXPECT_EQ(places.start[meas::pulse_high], 40.5);
    EXPECT_EQ(places.end[meas::pulse_high], 80.5);
    EXPECT_EQ(places.start[meas::pulse_low], 80.5);
    EXPECT_EQ(places.end[meas::pulse_low], 120.5);
    EXPECT_DOUBLE_EQ(places.start[meas::rise], 40.1);
    EXPECT_DOUBLE_EQ(places.end[meas::rise], 40.9);
    EXPECT_DOUBLE_EQ(places.start[meas::fall], 80.1);
    EXPECT_DOUBLE_EQ(places.end[meas::fall], 80.9);
}

TEST(MeasurementEngine, MarksTimesFromAFallingCrossingOn) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return square(column, 40, false); });
    rig.measure(3);
    const AnnotationPlaces& places = rig.places();
    EXPECT_EQ(places.start[meas::period], 40.5);
    EXPECT_EQ(places.end[meas::period], 120.5);
    EXPECT_EQ(places.start[meas::pulse_low], 40.5);
    EXPECT_EQ(places.end[meas::pulse_low], 80.5);
    EXPECT_EQ(places.start[meas::pulse_high], 80.5);
    EXPECT_EQ(places.end[meas::pulse_high], 120.5);
}

TEST(MeasurementEngine, MarksNothingFoundAtZero) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return square(column, 40, true); });
    rig.measure(3);
    rig.sweep(ch1, [](int) { return 0.0; });
    rig.measure();
    for (const std::size_t time :
         {meas::period, meas::pulse_high, meas::pulse_low, meas::rise, meas::fall}) {
        EXPECT_EQ(rig.places().start[time], 0.0) << time;
        EXPECT_EQ(rig.places().end[time], 0.0) << time;
    }
}

TEST(MeasurementEngine, PlacesNothingForTheFieldsThatHaveNone) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return square(column, 40, true); });
    rig.measure(3);
    EXPECT_EQ(rig.places().start[meas::frequency], 0.0);
    EXPECT_EQ(rig.places().start[meas::mid], 0.0);
}

} // namespace
} // namespace kv408
