#include <chrono>
#include <vector>

#include <gtest/gtest.h>

#include "scope/program.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using simulator::Operation;
using Frames = std::vector<std::vector<int>>;

/// Time from the arrival of frame `index` to that of the one after it, in milliseconds.
double gap_ms(const Program& program, std::size_t index) {
    return std::chrono::duration<double, std::milli>(program.log.frames[index + 1].time -
                                                     program.log.frames[index].time)
        .count();
}

/// A frame of 8 bytes at 833000 baud, 10 bits a byte, in milliseconds.
constexpr double frame_ms = 80.0 / 833.0;

TEST(StartUpOnTheWire, SendsTheCheckTheRangesAndTheTriggerInOrder) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    EXPECT_TRUE(program.boxes.shown.empty());
    EXPECT_EQ(frames_of(program), (Frames{{8, 0, 0, 1, 0, 255},
                                          {9, 2, 1, 0, 0, 0},
                                          {9, 2, 2, 0, 0, 0},
                                          {8, 8, 0, 1, 10, 255},
                                          {27, 3, 232, 1, 10, 255},
                                          {8, 8, 0, 1, 10, 255},
                                          {27, 3, 232, 1, 10, 255},
                                          {8, 8, 0, 1, 10, 255},
                                          {27, 3, 232, 1, 10, 255}}));
    // Each acknowledged frame takes 20 ms before its answer is read; 10 ms lie between the trigger
    // and its time-out.
    EXPECT_NEAR(gap_ms(program, 0), 20.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, 1), 20.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, 2), 20.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, 3), 30.0 + frame_ms, 0.3);
}

TEST(StartUpOnTheWire, ListsOpensAndSetsTheSpeedBeforeTheFirstFrame) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    std::vector<Operation> operations;
    for (const auto& operation : program.log.operations) {
        operations.push_back(operation.operation);
        if (operation.operation == Operation::write) {
            break;
        }
    }
    EXPECT_EQ(operations, (std::vector<Operation>{Operation::get_num_devices,
                                                  Operation::get_product_string, Operation::open,
                                                  Operation::set_baud_rate, Operation::set_timeouts,
                                                  Operation::flush_buffers, Operation::write}));
    EXPECT_EQ(program.log.operations[3].arguments, std::vector<std::uint32_t>{833000});
    EXPECT_EQ(program.log.operations[4].arguments, (std::vector<std::uint32_t>{1000, 1000}));
}

TEST(StartUpOnTheWire, TheFirstTicksStartTheSweepsByThemselves) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    const std::size_t started = program.log.frames.size();
    program.ticks(1);
    EXPECT_EQ(program.status(), "Idle");
    EXPECT_EQ(program.state(), "startscope");
    EXPECT_EQ(program.log.frames.size(), started);
    program.ticks(1);
    EXPECT_EQ(program.status(), "Setup...");
    EXPECT_EQ(program.state(), "scopech1f");
    EXPECT_EQ(frames_of(program, started), (Frames{{8, 8, 0, 1, 10, 255},
                                                   {27, 3, 232, 1, 10, 255},
                                                   {30, 0, 0, 0, 0, 255},
                                                   {35, 0, 0, 0, 0, 255},
                                                   {31, 0, 0, 1, 57, 255},
                                                   {32, 2, 138, 0, 0, 1}}));
    EXPECT_NEAR(gap_ms(program, started + 0), 30.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, started + 1), 20.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, started + 2), 40.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, started + 3), 21.0 + frame_ms, 0.3);
    EXPECT_NEAR(gap_ms(program, started + 4), 22.0 + frame_ms, 0.3);
}

TEST(StartUpOnTheWire, BlockSweepsAlternateBetweenTheChannels) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(2);
    const std::size_t before = program.log.frames.size();
    program.ticks(4);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_EQ(frames_of(program, before), (Frames{{32, 2, 138, 0, 0, 2},
                                                  {32, 2, 138, 0, 0, 1},
                                                  {32, 2, 138, 0, 0, 2},
                                                  {32, 2, 138, 0, 0, 1}}));
}

TEST(StartUpOnTheWire, APointPassInterleavesTheChannels) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "500ns/div");
    program.ticks(2);
    const std::size_t before = program.log.frames.size();
    program.ticks(1);
    const Frames frames = frames_of(program, before);
    ASSERT_EQ(frames.size(), 1280U);
    // Point 1 lies at 7812 + 2500 = 10312 ps, undivided; point 2 at 18124 ps, divider
    // round(28624 / 10500) = 3, coarse round(18124 / 3) = 6041.
    EXPECT_EQ(frames[0], (std::vector<int>{26, 10312 / 256, 10312 % 256, 0, 1, 240}));
    EXPECT_EQ(frames[1], (std::vector<int>{26, 128 + 10312 / 256, 10312 % 256, 0, 1, 240}));
    EXPECT_EQ(frames[2], (std::vector<int>{26, 6041 / 256, 6041 % 256, 0, 1, 239}));
    EXPECT_EQ(frames[3], (std::vector<int>{26, 128 + 6041 / 256, 6041 % 256, 0, 1, 239}));
    EXPECT_EQ(program.status(), "Running");
    EXPECT_EQ(program.state(), "scope");
}

} // namespace
} // namespace kv408
