#include "maths/curve_operations.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

using CurveValues = std::vector<double>;

TEST(CommonPartOfCurves, IsPointByPointWhereBothHaveTheSameTimes) {
    const CommonPart common =
        common_part({100.0, 50.0, {1.0, 2.0, 3.0}}, {100.0, 50.0, {7.0, 8.0}});
    EXPECT_EQ(common.first, 0U);
    EXPECT_EQ(common.a, (CurveValues{1.0, 2.0}));
    EXPECT_EQ(common.b, (CurveValues{7.0, 8.0}));
}

TEST(CommonPartOfCurves, LiesOnTheTimesOfTheFirstAlongTheLinesOfTheOther) {
    // A at 0, 10, 20, 30, 40; B at 12, 22, 32: at 20 it is 8 of 10 on its way from 5 to 25, at 30
    // 8 of 10 from 25 to -5.
    const CommonPart common =
        common_part({0.0, 10.0, {0.0, 1.0, 2.0, 3.0, 4.0}}, {12.0, 10.0, {5.0, 25.0, -5.0}});
    EXPECT_EQ(common.first, 2U);
    EXPECT_EQ(common.a, (CurveValues{2.0, 3.0}));
    ASSERT_EQ(common.b.size(), 2U);
    EXPECT_DOUBLE_EQ(common.b[0], 21.0);
    EXPECT_DOUBLE_EQ(common.b[1], 1.0);
}

TEST(CommonPartOfCurves, HasItsEndsWhereBothCurvesHaveAPoint) {
    // B from 10 to 30 in steps of 4: both ends lie on points of A.
    const CommonPart common = common_part({0.0, 10.0, {0.0, 1.0, 2.0, 3.0, 4.0}},
                                          {10.0, 4.0, {0.0, 4.0, 8.0, 12.0, 16.0, 20.0}});
    EXPECT_EQ(common.first, 1U);
    EXPECT_EQ(common.b, (CurveValues{0.0, 10.0, 20.0}));
}

TEST(CommonPartOfCurves, IsEmptyWhereTheyHaveNoTimeInCommon) {
    EXPECT_TRUE(common_part({0.0, 10.0, {1.0, 2.0}}, {11.0, 10.0, {1.0, 2.0}}).a.empty());
    EXPECT_TRUE(common_part({30.0, 10.0, {1.0, 2.0}}, {11.0, 10.0, {1.0, 2.0}}).a.empty());
    EXPECT_TRUE(common_part({0.0, 10.0, {}}, {0.0, 10.0, {1.0}}).a.empty());
    // One point each, at the same and at another time.
    EXPECT_EQ(common_part({5.0, 10.0, {1.0}}, {5.0, 20.0, {3.0}}).b, CurveValues{3.0});
    EXPECT_TRUE(common_part({5.0, 10.0, {1.0}}, {6.0, 20.0, {3.0}}).b.empty());
}

TEST(DerivativeOfCurves, IsHalfTheDifferenceOfTheNeighboursAndOneSidedAtTheEnds) {
    EXPECT_EQ(derivative_of(CurveValues{0.0, 1.0, 4.0, 9.0}, 0.5),
              (CurveValues{2.0, 4.0, 8.0, 10.0}));
    EXPECT_EQ(derivative_of(CurveValues{3.0, 1.0}, 2.0), (CurveValues{-1.0, -1.0}));
}

TEST(IntegralOfCurves, IsTheSumOfTheTrapezoidsSoFar) {
    EXPECT_EQ(integral_of(CurveValues{1.0, 3.0, 5.0, -5.0}, 0.5),
              (CurveValues{0.0, 1.0, 3.0, 3.0}));
    EXPECT_EQ(integral_of(CurveValues{7.0}, 0.5), CurveValues{0.0});
}

} // namespace
} // namespace kv408
