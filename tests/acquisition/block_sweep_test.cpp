#include "acquisition/block_sweep.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

/// A block of `bytes` bytes in which pair k holds the code 2048 + k.
std::vector<int> ramp(std::size_t bytes) {
    std::vector<int> block;
    for (std::size_t byte = 0; byte < bytes; ++byte) {
        const int code = 2048 + static_cast<int>(byte / 2);
        block.push_back(byte % 2 == 0 ? code / 256 : code % 256);
    }
    return block;
}

/// A started program that has asked for a block of channel 1, at a stretch of 1.
struct BlockRig : AcquisitionRig {
    BlockRig() {
        start();
        time_base_state.hstretch = 1.0;
        acquisition.scopestate = "scopech1f";
        clock.sleep(std::chrono::seconds(1) - clock.now());
        panel.textstatus.set_text("before");
    }
};

TEST(BlockSweep, ABlockOf1300BytesIsTakenOnTheTickItIsComplete) {
    BlockRig rig;
    rig.bridge.receive(ramp(1300));
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.bridge.timeline(),
              (Texts{"SI_CheckRXQueue @1000", "SI_Read 1300 @1000", "SI_FlushBuffers 1 1 @1001",
                     "SI_Write 4 32 2 138 0 0 2 174 @1001"}));
    EXPECT_EQ(rig.status(), "Running");
    EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(192, 255, 192));
    for (int point = 1; point <= 650; ++point) {
        const auto index = static_cast<std::size_t>(point);
        EXPECT_EQ(rig.samples[0].raw[index], 2048 + point - 1);
        EXPECT_EQ(rig.samples[0].mv[index], (point - 1) / 2.0);
    }
    EXPECT_EQ(rig.samples[0].raw[0], 0);
    EXPECT_EQ(rig.samples[0].raw[651], 0);
    EXPECT_EQ(rig.samples[1].raw[1], 0);
    EXPECT_EQ(rig.block.lastword(), 2048 + 649);
}

TEST(BlockSweep, TheHistoryGetsEachSweepWholeAndOnceAndTheOtherTraceStays) {
    for (const Channel channel : both_channels) {
        BlockRig rig;
        rig.bridge.receive(ramp(1300));
        rig.block.sdisplaych(channel);
        Texts& calls = rig.screen.calls;
        ASSERT_EQ(calls.back(), "movepersistance") << "all of the sweep is mapped by then";
        calls.pop_back();
        Texts points;
        for (int point = 1; point <= 650; ++point) {
            points.push_back("refresh " + std::to_string(number_of(channel)) + " " +
                             std::to_string(point));
        }
        EXPECT_TRUE(std::is_permutation(calls.begin(), calls.end(), points.begin(), points.end()));
    }
}

TEST(BlockSweep, OneByteLessWaitsForTheLastOne) {
    BlockRig rig;
    rig.bridge.receive(ramp(1299));
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.bridge.timeline(), Texts{"SI_CheckRXQueue @1000"});
    EXPECT_EQ(rig.status(), "before");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.bridge.receive({ramp(1300).back()});
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.status(), "Running");
    EXPECT_EQ(rig.samples[0].raw[650], 2048 + 649);
    EXPECT_TRUE(rig.acquisition.ready[0]);
}

TEST(BlockSweep, BytesBeyondABlockAreNotReadButFlushed) {
    BlockRig rig;
    rig.bridge.receive(ramp(1310));
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.bridge.timeline()[1], "SI_Read 1300 @1000");
    EXPECT_TRUE(rig.bridge.received.empty());
}

TEST(BlockSweep, AHighByteStopsAt32) {
    BlockRig rig;
    std::vector<int> block = ramp(1300);
    block[0] = 255;
    block[1] = 200;
    block[1298] = 33;
    block[1299] = 0;
    rig.bridge.receive(block);
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.samples[0].raw[1], 32 * 256 + 200);
    EXPECT_EQ(rig.samples[0].raw[650], 32 * 256);
    EXPECT_EQ(rig.block.lastword(), 32 * 256);
}

TEST(BlockSweep, TheChannelsOwnCorrectionAndInversionAreUsed) {
    BlockRig rig;
    rig.channels[1].swoffset = 2;
    rig.channels[0].swoffset = 100;
    rig.channels[1].vtfactor = 2.0;
    rig.panel.channel[1].invert.set_checked(true);
    rig.bridge.receive(ramp(1300));
    rig.block.sdisplaych(ch2);
    // 4096 - (2 + 2048) = 2046; two codes below zero at half a millivolt, doubled.
    EXPECT_EQ(rig.samples[1].raw[1], 2046);
    EXPECT_EQ(rig.samples[1].mv[1], -2.0);
    EXPECT_EQ(rig.samples[0].raw[1], 0);
}

struct HandOverRow {
    Channel channel;
    bool first;
    bool second;
    const char* state_before;
    const char* state_after;
    int asked; ///< channel of the next block
};

TEST(BlockSweep, HandsOverToTheOtherChannelWhenThatIsOn) {
    const HandOverRow rows[] = {
        {ch1, true, true, "scopech1f", "scopech2f", 2},
        {ch2, true, true, "scopech2f", "scopech1f", 1},
        {ch1, true, false, "scopech1f", "scopech1f", 1},
        {ch2, false, true, "scopech2f", "scopech2f", 2},
        {ch1, false, true, "scopech1f", "scopech2f", 2}, // channel 1 was switched off meanwhile
        {ch2, true, false, "scopech2f", "scopech1f", 1},
        {ch1, false, false, "scopech1f", "scopech1f", 1},
        {ch2, false, false, "scopech2f", "scopech2f", 2},
    };
    for (const HandOverRow& row : rows) {
        BlockRig rig;
        rig.enable(row.first, row.second);
        rig.acquisition.scopestate = row.state_before;
        rig.bridge.receive(ramp(1300));
        rig.block.sdisplaych(row.channel);
        EXPECT_EQ(rig.acquisition.scopestate, row.state_after) << row.channel << row.first;
        EXPECT_EQ(rig.bridge.frames().at(0).at(6), row.asked) << row.channel << row.first;
        EXPECT_EQ(rig.acquisition.ready[0], row.channel == ch1);
        EXPECT_EQ(rig.acquisition.ready[1], row.channel == ch2);
    }
}

TEST(BlockSweep, TheOtherChannelsFlagStays) {
    BlockRig rig;
    rig.acquisition.ready = {false, true};
    rig.bridge.receive(ramp(1300));
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, true}));
}

TEST(BlockSweep, ABlockThatCannotBeReadIsAskedForAgainQuietly) {
    BlockRig rig;
    rig.bridge.receive(ramp(1300));
    rig.bridge.status["SI_Read"] = 5;
    rig.block.sdisplaych(ch1);
    EXPECT_FALSE(rig.acquisition.ready[0]);
    EXPECT_EQ(rig.samples[0].raw[1], 0);
    EXPECT_TRUE(rig.screen.calls.empty());
    EXPECT_EQ(rig.bridge.frames().size(), 1U);
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(BlockSweep, AFailedWriteOfTheNextRequestEndsTheProgram) {
    BlockRig rig;
    rig.bridge.receive(ramp(1300));
    rig.bridge.status["SI_Write"] = 5;
    EXPECT_THROW(rig.block.sdisplaych(ch1), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error finding WKTP2B device. Aborting application."});
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Write");
}

} // namespace
} // namespace kv408
