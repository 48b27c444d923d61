// When the service's timer ticks.

#include <gtest/gtest.h>

#include "server/tick_pace.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

/// When the tick behind one is due that lasts from 100 ms on until `end`.
nanoseconds next_behind(nanoseconds end, bool asked = true) {
    TickPace pace(0ms);
    EXPECT_FALSE(pace.due(100ms - 1ns));
    EXPECT_TRUE(pace.due(100ms));
    pace.ticked(end, asked);
    EXPECT_FALSE(pace.due(end + pace.left(end) - 1ns));
    EXPECT_TRUE(pace.due(end + pace.left(end)));
    return end + pace.left(end);
}

TEST(TickPace, KeepsItsGridAndGivesTheInstrumentTimeToAnswer) {
    EXPECT_EQ(next_behind(101ms), 200ms);
    EXPECT_EQ(next_behind(150ms), 200ms);
    EXPECT_EQ(next_behind(151ms), 300ms); // 49 ms are too short for a block
    EXPECT_EQ(next_behind(230ms), 300ms); // a set-up that was sent
    EXPECT_EQ(next_behind(5170ms), 5300ms);
}

TEST(TickPace, GoesOnAtOnceWhereNothingIsAwaited) {
    EXPECT_EQ(next_behind(199ms, false), 200ms);
    EXPECT_EQ(next_behind(1130ms, false), 1130ms);
}

} // namespace
} // namespace kv408
