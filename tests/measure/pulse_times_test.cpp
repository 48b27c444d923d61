#include "measure/pulse_times.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

using Ends = std::vector<double>;

/// A record with these crossings and edges.
MeasurementRecord timed(const Ends& crossings, const Ends& rises = {}, const Ends& falls = {}) {
    MeasurementRecord record = {};
    calcpulsetimes(record, crossings, rises, falls);
    return record;
}

TEST(PulseTimes, WidthsAreMeansFromOneCrossingToTheNext) {
    const auto record = timed({10.0, -30.0, 60.0, -90.0, 130.0});
    EXPECT_EQ(record[meas::pulse_high], 25.0); // 20 and 30
    EXPECT_EQ(record[meas::pulse_low], 35.0);  // 30 and 40
}

TEST(PulseTimes, OneCrossingOrNoneGivesNoWidth) {
    for (const Ends& crossings : {Ends{}, Ends{10.0}, Ends{-10.0}}) {
        const auto record = timed(crossings);
        EXPECT_EQ(record[meas::pulse_high], 0.0);
        EXPECT_EQ(record[meas::pulse_low], 0.0);
    }
}

TEST(PulseTimes, TwoCrossingsGiveTheWidthOfTheFirstsKind) {
    EXPECT_EQ(timed({10.0, -35.0})[meas::pulse_high], 25.0);
    EXPECT_EQ(timed({10.0, -35.0})[meas::pulse_low], 0.0);
    EXPECT_EQ(timed({-10.0, 35.0})[meas::pulse_high], 0.0);
    EXPECT_EQ(timed({-10.0, 35.0})[meas::pulse_low], 25.0);
}

TEST(PulseTimes, ACrossingAtZeroBeginsNoPulse) {
    const auto record = timed({0.0, -30.0, 40.0});
    EXPECT_EQ(record[meas::pulse_high], 0.0);
    EXPECT_EQ(record[meas::pulse_low], 10.0);
}

TEST(PulseTimes, EdgesAreMeansOfTheirPairs) {
    const auto record = timed({}, {10.0, 12.0, 50.0, 56.0}, {20.0, 21.0, 60.0, 62.0, 100.0, 106.0});
    EXPECT_EQ(record[meas::rise], 4.0);
    EXPECT_EQ(record[meas::fall], 3.0);
}

TEST(PulseTimes, WithoutAPairThereIsNoEdge) {
    EXPECT_EQ(timed({})[meas::rise], -1.0);
    EXPECT_EQ(timed({})[meas::fall], -1.0);
    EXPECT_EQ(timed({}, {10.0}, {10.0})[meas::rise], -1.0);
    EXPECT_EQ(timed({}, {10.0}, {10.0})[meas::fall], -1.0);
}

TEST(PulseTimes, AnEndWithoutItsPartnerDoesNotCount) {
    const auto record = timed({}, {10.0, 12.0, 99.0}, {10.0, 13.0, 99.0});
    EXPECT_EQ(record[meas::rise], 2.0);
    EXPECT_EQ(record[meas::fall], 3.0);
}

TEST(PulseTimes, OnlyTheFourTimesChange) {
    MeasurementRecord record = {};
    record.fill(7.0);
    MeasurementRecord expected = record;
    calcpulsetimes(record, Ends{10.0, -20.0, 50.0}, Ends{1.0, 2.0}, Ends{3.0, 5.0});
    expected[meas::rise] = 1.0;
    expected[meas::fall] = 2.0;
    expected[meas::pulse_high] = 10.0;
    expected[meas::pulse_low] = 30.0;
    EXPECT_EQ(record, expected);
}

} // namespace
} // namespace kv408
