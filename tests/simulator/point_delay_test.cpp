#include "simulator/point_delay.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace kv408::simulator {
namespace {

/// What the program computes for one point of a point-by-point pass.
struct Encoded {
    int coarse;
    int second;
    int fine;
    std::int64_t divider;
};

// std::nearbyint rounds halves to even in the mode that a process starts with.
Encoded encode(std::int64_t delay) {
    if (delay <= 10500) {
        return {static_cast<int>(delay), 1, 240, 1};
    }
    const auto exact = static_cast<double>(delay);
    auto divider = static_cast<std::int64_t>(std::nearbyint((exact + 10500.0) / 10500.0));
    if (divider % 2 == 0) {
        ++divider;
    }
    if (divider < 3) {
        divider = 3;
    }
    const auto wide = static_cast<double>(divider);
    const int coarse = static_cast<int>(std::nearbyint(exact / wide));
    if (divider >= 482) {
        const int second = static_cast<int>(std::nearbyint(wide / 16.0 - 16.0));
        const int half = static_cast<int>(std::nearbyint((wide - 1.0) / 2.0)) % 256;
        return {coarse, second, ((240 - half) % 256 + 256) % 256, divider};
    }
    return {coarse, 1, 240 - static_cast<int>((divider - 1) / 2), divider};
}

Command command(const Encoded& encoded, int channel) {
    const int first = encoded.coarse + (channel == 2 ? 32768 : 0);
    return {26,
            {static_cast<Byte>(first >> 8), static_cast<Byte>(first & 0xFF),
             static_cast<Byte>(encoded.second >> 8), static_cast<Byte>(encoded.second & 0xFF),
             static_cast<Byte>(encoded.fine)}};
}

TEST(PointDelay, EveryPointOfEveryTimeBase) {
    for (const int resolution :
         {1,    2,    4,    8,     16,    32,    79,     157,    313,    781,
          1562, 3125, 7812, 15625, 31250, 78125, 156250, 312500, 780125, 1562500}) {
        for (int point = 1; point <= 640; ++point) {
            const std::int64_t delay = std::int64_t{point} * resolution + 2500;
            const Encoded encoded = encode(delay);
            for (const int channel : {1, 2}) {
                const PointRequest request = decode_point(command(encoded, channel));
                ASSERT_EQ(request.channel, static_cast<std::size_t>(channel - 1));
                ASSERT_EQ(request.delay_ps, encoded.coarse * encoded.divider)
                    << resolution << " ps, point " << point;
                ASSERT_LE(std::abs(request.delay_ps - delay), encoded.divider / 2 + 1);
            }
        }
    }
}

TEST(PointDelay, HandComputedPoints) {
    // 10500 ps: no divider.
    EXPECT_EQ(decode_point({26, {0x29, 0x04, 0, 1, 240}}).delay_ps, 10500);
    // 10501 ps: divider 3, coarse 3500, fine 240 - 1.
    EXPECT_EQ(decode_point({26, {0x0D, 0xAC, 0, 1, 239}}).delay_ps, 10500);
    // 1000002500 ps, the end of 100us/div: divider 95239 (95239.3 rounded, odd).
    const Encoded last = encode(1000002500);
    EXPECT_EQ(last.divider, 95239);
    EXPECT_EQ(last.coarse, 10500);
    // 95239 / 16 - 16 = 5936.4; (95239 - 1) / 2 = 47619 = 186 * 256 + 3.
    EXPECT_EQ(last.second, 5936);
    EXPECT_EQ(last.fine, 237);
    EXPECT_EQ(decode_point(command(last, 1)).delay_ps, std::int64_t{10500} * 95239);
}

TEST(PointDelay, TheSecondValueTellsTurnsOfTheFineByteApart) {
    // Dividers 483 and 995 share the fine byte (240 - 241) mod 256 = 255; second values are
    // 483 / 16 - 16 = 14.2 and 995 / 16 - 16 = 46.2.
    EXPECT_EQ(decode_point({26, {0, 100, 0, 14, 255}}).delay_ps, 48300);
    EXPECT_EQ(decode_point({26, {0, 100, 0, 46, 255}}).delay_ps, 99500);
}

} // namespace
} // namespace kv408::simulator
