#include "simulator/random_data.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace kv408::simulator {
namespace {

/// The first `count` bits of a shift register of `order` bits, all 1 at first, whose fresh bit is
/// the sum of its last one and of that at `tap`.
std::vector<bool> shifted(int order, int tap, std::size_t count) {
    std::vector<bool> bits(static_cast<std::size_t>(order), true);
    while (bits.size() < count + static_cast<std::size_t>(order)) {
        bits.push_back(bits[bits.size() - static_cast<std::size_t>(order)] !=
                       bits[bits.size() - static_cast<std::size_t>(tap)]);
    }
    return {bits.begin() + order, bits.end()};
}

std::vector<bool> taken(int order, std::int64_t first, std::size_t count) {
    RandomBits bits(order, first);
    std::vector<bool> result;
    while (result.size() < count) {
        result.push_back(bits.take());
    }
    return result;
}

TEST(RandomData, AreThoseOfTheShiftRegisters) {
    EXPECT_EQ(taken(7, 0, 300), shifted(7, 6, 300));
    EXPECT_EQ(taken(15, 0, 70000), shifted(15, 14, 70000));
    EXPECT_EQ(taken(31, 0, 70000), shifted(31, 28, 70000));
}

TEST(RandomData, BeginAnywhereAndRepeat) {
    for (const int order : {7, 15, 31}) {
        const std::int64_t length = (std::int64_t{1} << order) - 1;
        const auto bits = taken(order, -40, 200);
        EXPECT_EQ(taken(order, -40 + length, 200), bits) << order;
        EXPECT_EQ(taken(order, -40 - 1000 * length, 200), bits) << order;
        EXPECT_EQ(taken(order, 0, 160), std::vector<bool>(bits.begin() + 40, bits.end()));
        // All ones stand right before the first bit.
        EXPECT_TRUE(std::all_of(bits.begin() + 40 - order, bits.begin() + 40, [](bool bit) {
            return bit;
        })) << order;
    }
}

TEST(RandomData, KnowHowFarTheirEdgesAreApart) {
    for (const int order : {7, 15}) {
        const auto length = (std::size_t{1} << static_cast<unsigned>(order)) - 1;
        const auto bits = taken(order, 0, 2 * length + 1);
        for (const bool rising : {true, false}) {
            std::size_t last = 0;
            std::size_t longest = 0;
            for (std::size_t bit = 1; bit < bits.size(); ++bit) {
                if (bits[bit] == rising && bits[bit - 1] != rising) {
                    longest = last == 0 ? 0 : std::max(longest, bit - last);
                    last = bit;
                }
            }
            EXPECT_EQ(longest_gap_of_data(order, rising), static_cast<int>(longest))
                << order << rising;
        }
    }
    // Going once through all bits of the longest one takes seconds.
    EXPECT_EQ(longest_gap_of_data(31, true), 59);
    EXPECT_EQ(longest_gap_of_data(31, false), 34);
}

} // namespace
} // namespace kv408::simulator
