#include "analysis/density.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>

namespace kv408 {
namespace {

std::uint64_t total(const Density& density, int point) {
    const auto counts = density.at(point);
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

TEST(Density, CountsEachPointAtItsCode) {
    Density density(3);
    density.add(std::array<std::int16_t, 3>{0, 2048, 4095});
    density.add(std::array<std::int16_t, 3>{0, 2050, 4095});
    EXPECT_EQ(density.at(0)[0], 2U);
    EXPECT_EQ(density.at(1)[2048], 1U);
    EXPECT_EQ(density.at(1)[2049], 0U);
    EXPECT_EQ(density.at(1)[2050], 1U);
    EXPECT_EQ(density.at(2)[4095], 2U);
    for (int point = 0; point < 3; ++point) {
        EXPECT_EQ(total(density, point), 2U) << point;
    }
    EXPECT_EQ(density.passed(1), (Density::Codes{2048, 2051}));
    EXPECT_EQ(density.highest(), 2U);
}

TEST(Density, CountsACodeBeyondTheScaleAtItsEnd) {
    Density density(2);
    density.add(std::array<std::int16_t, 2>{-1, 8447});
    EXPECT_EQ(density.at(0)[0], 1U);
    EXPECT_EQ(density.at(1)[4095], 1U);
    EXPECT_EQ(density.passed(1), (Density::Codes{4095, 4096}));
}

TEST(Density, PassedNowhereWhereNothingWasCounted) {
    const Density density(650);
    EXPECT_EQ(density.points(), 650);
    EXPECT_EQ(density.passed(649), (Density::Codes{0, 0}));
    EXPECT_EQ(density.highest(), 0U);
}

TEST(Density, StopsAtTheHighestCountAndSaysSo) {
    Density density(1);
    const std::array<std::int16_t, 1> codes = {7};
    density.add(codes, 0xFFFFFFFE);
    density.add(codes);
    EXPECT_EQ(density.at(0)[7], 0xFFFFFFFFU);
    EXPECT_FALSE(density.saturated());
    density.add(codes);
    EXPECT_EQ(density.at(0)[7], 0xFFFFFFFFU);
    EXPECT_TRUE(density.saturated());
}

TEST(Density, HalvesRoundDownSoThatWhatIsOldVanishes) {
    Density density(1);
    density.add(std::array<std::int16_t, 1>{5}, 1);
    density.add(std::array<std::int16_t, 1>{6}, 4);
    density.add(std::array<std::int16_t, 1>{9}, 7);
    density.multiply(0.5);
    EXPECT_EQ(density.at(0)[5], 0U);
    EXPECT_EQ(density.at(0)[6], 2U);
    EXPECT_EQ(density.at(0)[9], 3U);
    EXPECT_EQ(density.passed(0), (Density::Codes{6, 10}));
    EXPECT_EQ(density.highest(), 3U);
    density.clear();
    EXPECT_EQ(total(density, 0), 0U);
    EXPECT_EQ(density.passed(0), (Density::Codes{0, 0}));
    EXPECT_EQ(density.highest(), 0U);
}

} // namespace
} // namespace kv408
