#include <cmath>

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

/// The pair (from 0) that each of the points 1 to 650 comes from at a stretch of `step`: after
/// every point the position grows by the step and the next pair is due, unless the position is
/// then more than the point's number past 1; in that case both go back.
std::vector<int> plain_reading(double step) {
    std::vector<int> pairs = {-1};
    double position = 1.0;
    int pair = 0;
    while (pairs.size() <= 650) {
        const auto point = static_cast<double>(pairs.size());
        pairs.push_back(pair);
        const double further = position + step;
        const bool back = further - 1.0 > point;
        position = back ? further - step : further;
        pair += back ? 0 : 1;
    }
    return pairs;
}

/// The pairs that the points of a block come from at a stretch of `step`.
std::vector<int> pairs_taken(double step) {
    AcquisitionRig rig;
    rig.start();
    rig.time_base_state.hstretch = step;
    for (int pair = 0; pair < 650; ++pair) {
        rig.bridge.receive({pair / 256, pair % 256});
    }
    rig.block.sdisplaych(ch1);
    std::vector<int> pairs = {-1};
    for (std::size_t point = 1; point <= 650; ++point) {
        pairs.push_back(rig.samples[0].raw[point]);
    }
    return pairs;
}

/// The first `count` points of `pairs`.
std::vector<int> first_points(const std::vector<int>& pairs, std::ptrdiff_t count) {
    return {pairs.begin() + 1, pairs.begin() + 1 + count};
}

TEST(BlockStretch, EveryBlockTimeBaseIsLaidOutAsReadPlainly) {
    for (const double step : {2.56, 1.28, 1.28, 1.28, 1.024, 1.024, 1.024, 1.0112, 1.0048, 1.0016,
                              1.00032010243278, 1.0, 1.0}) {
        EXPECT_EQ(pairs_taken(step), plain_reading(step)) << step;
    }
}

TEST(BlockStretch, AStepOfOneUsesEveryPairOnce) {
    const std::vector<int> pairs = pairs_taken(1.0);
    for (int point = 1; point <= 650; ++point) {
        EXPECT_EQ(pairs[static_cast<std::size_t>(point)], point - 1);
    }
}

TEST(BlockStretch, StepsWorkedOutByHand) {
    // 3.56 - 1 > 1 and > 2 but not > 3; then 6.12 - 1 > 4 and > 5 but not > 6; 8.68 - 1 > 7.
    EXPECT_EQ(first_points(pairs_taken(2.56), 9), (std::vector<int>{0, 0, 0, 1, 1, 1, 2, 2, 3}));
    // 2.28 - 1 > 1; 3.56 - 1 and 4.84 - 1 stay behind; 6.12 - 1 > 5.
    EXPECT_EQ(first_points(pairs_taken(1.28), 7), (std::vector<int>{0, 0, 1, 2, 3, 3, 4}));
    // The smallest excess over 1 doubles the first pair at once.
    EXPECT_EQ(first_points(pairs_taken(1.00032010243278), 4), (std::vector<int>{0, 0, 1, 2}));
}

TEST(BlockStretch, APointComesFromThePairThatLiesJustBeforeIt) {
    for (const double step : {2.56, 1.28, 1.024, 1.0112, 1.0048, 1.0016, 1.00032010243278}) {
        const std::vector<int> pairs = pairs_taken(step);
        for (int point = 1; point <= 650; ++point) {
            const double place = (point - 1) / step;
            if (std::abs(place - std::round(place)) < 1e-6 && point > 1) {
                continue; // on a pair's very edge the rounding of the additions decides
            }
            EXPECT_EQ(pairs[static_cast<std::size_t>(point)], std::floor(place))
                << "point " << point << " at " << step;
        }
    }
}

} // namespace
} // namespace kv408
