#include "analysis/mask.h"

#include <gtest/gtest.h>

#include "synthetic.h"

namespace kv408 {
namespace {

/// A square from `low` to `high` in both directions.
MaskPolygon square(double low, double high) {
    return {"", {{low, low}, {high, low}, {high, high}, {low, high}}};
}

/// One hit at each of the 640 points, at 0 mV, and one more at point 100 and code 2148.
Collected a_line() {
    Collected all = synthetic::nothing();
    synthetic::count(all, 1, [](double) { return 0.0; });
    synthetic::count(all, 1, [](double time) { return time == 2000.0 ? 25.0 : 0.0; });
    return all;
}

TEST(MaskHits, AreCountedByPolygon) {
    PlacedMask mask;
    mask.polygons = {{"hit", {{90, 2100}, {110, 2100}, {110, 2200}, {90, 2200}}},
                     {"line", {{200, 2000}, {210, 2000}, {210, 2100}, {200, 2100}}},
                     {"missed", {{300, 2100}, {400, 2100}, {400, 2200}}}};
    mask.first_point = 0;
    mask.end_point = 640;
    const MaskHits found = mask_hits(a_line(), mask);
    EXPECT_EQ(found.by_polygon, (std::vector<double>{1, 20, 0}));
    EXPECT_EQ(found.hits, 21.0);
    EXPECT_EQ(found.samples, 1280.0);
    EXPECT_DOUBLE_EQ(found.ratio, 21.0 / 1280.0);
}

TEST(MaskHits, CountWhatLiesWithinSlantedAndNotchedPolygons) {
    PlacedMask mask;
    // A V: at point 100 it reaches from 2148 upwards on both sides of its notch.
    mask.polygons = {{"", {{50, 2200}, {100, 2140}, {150, 2200}, {100, 2160}}}};
    mask.end_point = 640;
    EXPECT_EQ(mask_hits(a_line(), mask).hits, 1.0);
    mask.polygons = {{"", {{50, 2200}, {100, 2149}, {150, 2200}, {100, 2160}}}};
    EXPECT_EQ(mask_hits(a_line(), mask).hits, 0.0);
}

TEST(MaskHits, WhatLiesOutsideTheScreenIsNeitherHitNorAnError) {
    PlacedMask mask;
    mask.polygons = {square(-1e6, -10.0), square(5000.0, 1e6), square(-1e9, 1e9)};
    mask.end_point = 640;
    EXPECT_EQ(mask_hits(a_line(), mask).by_polygon, (std::vector<double>{0, 0, 1280}));
    mask.end_point = 0;
    EXPECT_EQ(mask_hits(a_line(), mask).ratio, 0.0);
    EXPECT_EQ(mask_margin(a_line(), mask, 0.0).why(), WhyNot::no_hits);
}

TEST(MaskMargin, OfAPolygonAboveTheTraceIsItsDistanceFromIt) {
    PlacedMask mask;
    mask.polygons = {{"", {{200, 2148}, {300, 2148}, {300, 2400}, {200, 2400}}}};
    mask.end_point = 640;
    mask.half_amplitude = 200.0;
    const auto free = mask_margin(a_line(), mask, 0.0);
    ASSERT_TRUE(free);
    EXPECT_NEAR(*free, 0.5, 0.006); // 100 codes, to one code
    mask.polygons = {{"", {{200, 1948}, {300, 1948}, {300, 2400}, {200, 2400}}}};
    const auto hit = mask_margin(a_line(), mask, 0.0);
    ASSERT_TRUE(hit);
    EXPECT_NEAR(*hit, -0.5, 0.006);
    const auto below = grown(a_line(), mask, 0.25).polygons[0];
    EXPECT_EQ(below.points[0], (MaskPoint{200, 1898}));
    EXPECT_EQ(below.points[2], (MaskPoint{300, 2400}));
    const auto some = mask_margin(a_line(), mask, 0.5); // more than it can be hit
    ASSERT_TRUE(some);
    EXPECT_EQ(*some, 8.0);
}

TEST(MaskMargin, OfAPolygonInTheTraceIsHowFarItCanBeEnlarged) {
    // Two lines, 100 mV above and below 0 mV.
    Collected all = synthetic::nothing();
    synthetic::count(all, 1, [](double) { return 100.0; });
    synthetic::count(all, 1, [](double) { return -100.0; });
    PlacedMask mask;
    mask.polygons = {{"", {{300, 1948}, {340, 1948}, {340, 2148}, {300, 2148}}}};
    mask.end_point = 640;
    mask.half_amplitude = 400.0;
    const auto margin = mask_margin(all, mask, 0.0);
    ASSERT_TRUE(margin);
    EXPECT_NEAR(*margin, 3.0, 0.011);
    const PlacedMask twice = grown(all, mask, 1.0);
    EXPECT_EQ(twice.polygons[0].points[0], (MaskPoint{280, 1848}));
    EXPECT_EQ(twice.polygons[0].points[2], (MaskPoint{360, 2248}));
}

TEST(MaskMargin, IsNoneWhereTheTracePassesEverywhere) {
    Collected all = synthetic::nothing();
    synthetic::Chance chance(2);
    synthetic::count(all, 20, [&](double) { return 1000.0 * chance.uniform() - 500.0; });
    PlacedMask mask;
    mask.polygons = {{"", {{0, 0}, {640, 0}, {640, 4096}, {0, 4096}}},
                     {"", {{0, 3000}, {640, 3000}, {640, 6096}, {0, 6096}}}};
    mask.end_point = 640;
    mask.half_amplitude = 10.0;
    EXPECT_EQ(mask_margin(all, mask, 0.0).why(), WhyNot::closed);
}

TEST(MaskPlaces, AnIntervalIsFromOneCrossingToTheNextAndAnAmplitudeFromZeroToOne) {
    for (const bool inverted : {false, true}) {
        const Collected all = synthetic::nothing(inverted);
        Eye eye;
        eye.crossing = 2000.0; // point 100
        eye.interval = 2000.0;
        eye.levels.zero.mean = -100.0;
        eye.levels.one.mean = 100.0;
        const Mask mask{.name = "", .source = "", .polygons = {square(0.0, 0.5)}};
        const PlacedMask placed = placed_at_eye(all, mask, eye);
        const double below = inverted ? 400.0 : -400.0;
        EXPECT_EQ(placed.polygons[0].points[0], (MaskPoint{100.0, 2048.0 + below}));
        EXPECT_EQ(placed.polygons[0].points[2], (MaskPoint{200.0, 2048.0}));
        EXPECT_EQ(placed.first_point, 100);
        EXPECT_EQ(placed.end_point, 300);
        EXPECT_DOUBLE_EQ(placed.half_amplitude, 400.0);
    }
}

TEST(MaskPlaces, TimesCountFromTheTrigger) {
    const Collected all = synthetic::nothing();
    const Mask mask{.name = "",
                    .source = "",
                    .units = MaskUnits::time_level,
                    .polygons = {{"", {{1500.0, 10.0}, {2500.0, 10.0}, {2500.0, 20.0}}}}};
    const PlacedMask placed = placed_in_time(all, mask, {.zero = -50.0, .one = 50.0});
    EXPECT_EQ(placed.polygons[0].points[0], (MaskPoint{50.0, 2088.0}));
    EXPECT_EQ(placed.first_point, 50);
    EXPECT_EQ(placed.end_point, 151);
    EXPECT_DOUBLE_EQ(placed.half_amplitude, 200.0);
}

} // namespace
} // namespace kv408
