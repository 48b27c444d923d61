#include "simulator/frame_reader.h"

#include <gtest/gtest.h>

namespace kv408::simulator {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Feeds bytes that follow each other closely and returns the codes of the commands they make.
std::vector<int> commands_in(FrameReader& reader, const std::vector<Byte>& bytes,
                             nanoseconds start = nanoseconds(0)) {
    std::vector<int> codes;
    nanoseconds at = start;
    for (const Byte byte : bytes) {
        at += nanoseconds(12005);
        if (const auto command = reader.take(byte, at)) {
            codes.push_back(command->code);
        }
    }
    return codes;
}

const std::vector<Byte> check_frame = {4, 8, 0, 0, 1, 0, 255, 8};
const std::vector<Byte> gain_frame = {4, 9, 1, 2, 0, 0, 0, 12};

std::vector<Byte> joined(std::vector<Byte> first, const std::vector<Byte>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST(FrameReader, TakesAFrameWithItsArguments) {
    FrameReader reader;
    for (std::size_t index = 0; index < 7; ++index) {
        EXPECT_FALSE(reader.take(check_frame[index], nanoseconds(index)));
    }
    const auto command = reader.take(check_frame[7], nanoseconds(7));
    ASSERT_TRUE(command);
    EXPECT_EQ(command->code, 8);
    EXPECT_EQ(command->arguments, (std::array<Byte, 5>{0, 0, 1, 0, 255}));
}

TEST(FrameReader, TakesFramesBackToBack) {
    FrameReader reader;
    EXPECT_EQ(commands_in(reader, joined(check_frame, gain_frame)), (std::vector<int>{8, 9}));
}

TEST(FrameReader, RefusesAWrongChecksum) {
    for (int wrong = 0; wrong < 256; ++wrong) {
        FrameReader reader;
        std::vector<Byte> bytes = check_frame;
        bytes[7] = static_cast<Byte>(wrong);
        EXPECT_EQ(commands_in(reader, bytes).size(), wrong == 8 ? 1U : 0U) << wrong;
    }
}

TEST(FrameReader, TheStartByteIsNotPartOfTheSum) {
    FrameReader reader;
    std::vector<Byte> bytes = check_frame;
    bytes[7] = 12; // with the start byte
    EXPECT_TRUE(commands_in(reader, bytes).empty());
}

TEST(FrameReader, SkipsGarbageInFront) {
    FrameReader reader;
    EXPECT_EQ(commands_in(reader, joined({0, 255, 6, 17}, check_frame)), std::vector<int>{8});
}

TEST(FrameReader, FindsAFrameThatBeginsInsideAWrongOne) {
    // Start bytes among the garbage open frames whose checksums fail, one after the other.
    for (std::size_t length = 1; length <= 7; ++length) {
        FrameReader reader;
        const std::vector<Byte> garbage(length, 4);
        EXPECT_EQ(commands_in(reader, joined(garbage, check_frame)), std::vector<int>{8}) << length;
    }
}

TEST(FrameReader, RecoversAfterAHalfFrameWithinAFewBytes) {
    FrameReader reader;
    const std::vector<Byte> half(check_frame.begin(), check_frame.begin() + 5);
    EXPECT_EQ(commands_in(reader, joined(half, gain_frame)), std::vector<int>{9});
}

TEST(FrameReader, DropsAStaleHalfFrame) {
    FrameReader reader;
    commands_in(reader, {4, 8, 0});
    // The rest would have completed the frame.
    EXPECT_TRUE(commands_in(reader, {0, 1, 0, 255, 8}, milliseconds(10)).empty());
    EXPECT_EQ(commands_in(reader, check_frame, milliseconds(30)), std::vector<int>{8});
}

TEST(FrameReader, KeepsAHalfFrameThatGoesOnInTime) {
    FrameReader reader;
    commands_in(reader, {4, 8, 0});
    EXPECT_EQ(commands_in(reader, {0, 1, 0, 255, 8}, milliseconds(4)), std::vector<int>{8});
}

TEST(FrameReader, SplitsArguments) {
    EXPECT_EQ(word_argument({26, {1, 2, 3, 4, 5}}, 0), 258);
    EXPECT_EQ(word_argument({26, {1, 2, 3, 4, 5}}, 2), 772);
    EXPECT_EQ(long_argument({31, {0, 0x17, 0xD7, 0x84, 9}}), 1562500);
    EXPECT_EQ(long_argument({30, {255, 255, 255, 156, 9}}), -100);
}

} // namespace
} // namespace kv408::simulator
