#include "simulator/serial_line.h"

#include <gtest/gtest.h>

namespace kv408::simulator {
namespace {

using std::chrono::microseconds;
using std::chrono::nanoseconds;

const std::vector<Byte> three = {1, 2, 3};

TEST(SerialLine, TenBitsAByte) {
    EXPECT_EQ(wire_time(1, 10), std::chrono::seconds(1));
    EXPECT_EQ(wire_time(8, 9600), nanoseconds(8333333));
    EXPECT_EQ(wire_time(1300, 833000), nanoseconds(15606242)); // 13000 bits
}

TEST(SerialLine, BytesArriveOneAfterTheOther) {
    SerialLine line;
    line.send(three, microseconds(100));
    EXPECT_EQ(line.arrival(1), microseconds(100) + nanoseconds(12004));
    EXPECT_EQ(line.arrival(3), microseconds(100) + nanoseconds(36014));
    EXPECT_FALSE(line.arrival(0));
    EXPECT_FALSE(line.arrival(4));
    EXPECT_EQ(line.arrived(microseconds(112)), 0U);
    EXPECT_EQ(line.arrived(microseconds(113)), 1U);
    EXPECT_EQ(line.arrived(microseconds(137)), 3U);
}

TEST(SerialLine, ASecondReplyWaitsForTheFirst) {
    SerialLine line;
    line.send(three, microseconds(100));
    line.send(three, microseconds(110));
    EXPECT_EQ(line.arrival(4), microseconds(100) + nanoseconds(36014 + 12004));
    line.send(three, microseconds(500));
    EXPECT_EQ(line.arrival(7), microseconds(500) + nanoseconds(12004));
}

TEST(SerialLine, AByteThatHasBegunIsStillSent) {
    SerialLine line;
    line.send(three, microseconds(100));
    line.stop_sending(microseconds(118)); // in the middle of the second byte
    EXPECT_TRUE(line.arrival(2));
    EXPECT_FALSE(line.arrival(3));
    line.send(three, microseconds(118));
    EXPECT_GE(*line.arrival(3), *line.arrival(2) + nanoseconds(12004));
}

TEST(SerialLine, TakingAndDroppingLeaveWhatIsUnderWay) {
    SerialLine line;
    line.send(three, microseconds(0));
    EXPECT_EQ(line.take(5, microseconds(25)), (std::vector<Byte>{1, 2}));
    EXPECT_TRUE(line.take(5, microseconds(25)).empty());
    line.drop_arrived(microseconds(25));
    EXPECT_EQ(line.take(5, microseconds(40)), std::vector<Byte>{3});
    line.send(three, microseconds(100));
    line.drop_arrived(microseconds(113));
    EXPECT_EQ(line.take(1, microseconds(200)), std::vector<Byte>{2});
    EXPECT_EQ(line.take(5, microseconds(200)), std::vector<Byte>{3});
}

} // namespace
} // namespace kv408::simulator
