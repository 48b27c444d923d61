#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

/// A started program that has asked for a block of channel 1.
struct ReplyRig : AcquisitionRig {
    ReplyRig() {
        start();
        acquisition.scopestate = "scopech1f";
        clock.sleep(std::chrono::seconds(1) - clock.now());
        panel.textstatus.set_text("before");
    }

    /// One look at a queue to which `bytes` have come.
    void look(const std::vector<int>& bytes = {}) {
        forget();
        bridge.receive(bytes);
        block.sdisplaych(ch1);
    }
};

constexpr const char* request = "SI_Write 4 32 2 138 0 0 1 173 @1001";

/// A reply of `size` bytes that ends in `high` and `low`.
std::vector<int> reply_ending(std::size_t size, int high, int low) {
    std::vector<int> reply(size, 9);
    reply[size - 2] = high;
    reply[size - 1] = low;
    return reply;
}

TEST(BlockReply, WithNothingWaitingTheBlockIsAskedForAgain) {
    ReplyRig rig;
    rig.look();
    EXPECT_EQ(rig.bridge.timeline(),
              (Texts{"SI_CheckRXQueue @1000", "SI_FlushBuffers 1 1 @1001", request}));
    EXPECT_EQ(rig.status(), "before");
}

TEST(BlockReply, OneByteIsDrainedAndTheBlockAskedForAgain) {
    ReplyRig rig;
    rig.bridge.flush_empties = false;
    rig.look({26});
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_CheckRXQueue @1000", "SI_Read 1 @1000",
                                            "SI_FlushBuffers 1 1 @1001", request}));
    EXPECT_TRUE(rig.bridge.received.empty());
}

TEST(BlockReply, ATellingShortReplyIsTheWaitingWord) {
    for (const std::size_t size : {2U, 3U, 100U, 1299U}) {
        ReplyRig rig;
        rig.look(reply_ending(size, 26, 10));
        EXPECT_EQ(rig.bridge.timeline(), Texts{"SI_CheckRXQueue @1000"}) << size;
        EXPECT_EQ(rig.status(), "before");
        rig.look();
        EXPECT_EQ(rig.bridge.timeline(),
                  (Texts{"SI_CheckRXQueue @1000", "SI_Read " + std::to_string(size) + " @1000",
                         "SI_FlushBuffers 1 1 @1001", request}));
        EXPECT_EQ(rig.status(), "Waiting For TRIGGER");
        EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(255, 224, 192));
        EXPECT_EQ(rig.block.lastword(), 6666);
        EXPECT_FALSE(rig.acquisition.ready[0]);
        EXPECT_TRUE(rig.screen.calls.empty());
    }
}

TEST(BlockReply, AShortReplyIsReadOnceItHasStoppedGrowing) {
    ReplyRig rig;
    rig.look(std::vector<int>(100, 9));
    EXPECT_EQ(rig.bridge.calls.size(), 1U);
    rig.look(reply_ending(100, 26, 10));
    EXPECT_EQ(rig.bridge.calls.size(), 1U);
    rig.look();
    EXPECT_EQ(rig.bridge.count("SI_Read"), 1);
    EXPECT_EQ(rig.status(), "Waiting For TRIGGER");
}

TEST(BlockReply, AnyOtherShortReplyIsReadAndTheBlockAskedForOnTheNextLook) {
    struct Row {
        int high;
        int low;
        int word;
    };
    const Row rows[] = {{26, 11, 6667},
                        {25, 10, 6410},
                        {10, 26, 2586},
                        {0, 0, 0},
                        // Past the high byte's limit of 32.
                        {255, 10, 8202},
                        {33, 255, 8447}};
    for (const Row& row : rows) {
        ReplyRig rig;
        rig.look(reply_ending(40, row.high, row.low));
        rig.look();
        EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_CheckRXQueue @1000", "SI_Read 40 @1000"}));
        EXPECT_EQ(rig.status(), "before");
        EXPECT_EQ(rig.block.lastword(), row.word);
        rig.look();
        EXPECT_EQ(rig.bridge.timeline().back(), request);
    }
}

TEST(BlockReply, OfMoreThanABlockTheFirstBytesAreTakenAndTheSweepSaysSo) {
    ReplyRig rig;
    rig.look(); // asks again, and what was on its way then is still in front
    std::vector<int> rest_and_block(3 + 1300, 8);
    rest_and_block[0] = 1;
    rig.look(rest_and_block);
    EXPECT_EQ(rig.bridge.timeline(),
              (Texts{"SI_CheckRXQueue @1001", "SI_Read 1300 @1001", "SI_FlushBuffers 1 1 @1002",
                     "SI_Write 4 32 2 138 0 0 2 174 @1002"}));
    EXPECT_EQ(rig.samples[ch1].raw[1], 1 * 256 + 8);
    EXPECT_FALSE(rig.sweeps.last()->channel[ch1]->alone);
    rig.look(std::vector<int>(1300, 8));
    EXPECT_TRUE(rig.sweeps.last()->channel[ch1]->alone);
}

TEST(BlockReply, AfterARequestTheCountIsForgotten) {
    ReplyRig rig;
    rig.look(std::vector<int>(40, 9));
    rig.look();
    rig.look(); // asks again
    rig.look(std::vector<int>(40, 9));
    EXPECT_EQ(rig.bridge.count("SI_Read"), 0);
    rig.block.restart();
    rig.look();
    EXPECT_EQ(rig.bridge.count("SI_Read"), 0);
    rig.look();
    EXPECT_EQ(rig.bridge.count("SI_Read"), 1);
}

TEST(BlockReply, AfterAShortReplyThatCannotBeReadTheBlockIsAskedForAgain) {
    ReplyRig rig;
    rig.look(reply_ending(40, 26, 10));
    rig.bridge.status["SI_Read"] = 5;
    rig.look();
    EXPECT_EQ(rig.status(), "before");
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_CheckRXQueue @1000", "SI_Read 40 @1000",
                                            "SI_FlushBuffers 1 1 @1001", request}));
}

TEST(BlockReply, OnlyAQueueThatStaysEmptyIsASilence) {
    ReplyRig rig;
    rig.link.power().note_request();
    rig.clock.advance(std::chrono::milliseconds(79));
    rig.look(); // too soon to tell
    rig.clock.advance(std::chrono::milliseconds(100));
    rig.look({26});
    rig.clock.advance(std::chrono::milliseconds(100));
    rig.look(reply_ending(40, 26, 10));
    rig.clock.advance(std::chrono::milliseconds(100));
    rig.look();
    EXPECT_FALSE(rig.link.power().ranges_lost());
    rig.clock.advance(std::chrono::milliseconds(80));
    rig.look();
    EXPECT_TRUE(rig.link.power().ranges_lost());
}

TEST(BlockReply, AfterTwoSecondsOfSilenceTheFirstBytesBringASetUpInsteadOfATrace) {
    for (const std::size_t bytes : {2U, 1300U}) {
        ReplyRig rig;
        rig.link.power().note_request();
        rig.clock.advance(std::chrono::seconds(2));
        rig.look();
        rig.look(std::vector<int>(bytes, 8));
        EXPECT_EQ(rig.acquisition.scopestate, "startscope") << bytes;
        EXPECT_EQ(rig.status(), "before") << bytes;
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false})) << bytes;
        EXPECT_EQ(rig.bridge.timeline().size(), 1U) << "only the count is asked for";
    }
}

TEST(BlockRequest, CarriesAveragingAndSpeed) {
    for (const bool average : {false, true}) {
        for (const bool speed : {false, true}) {
            ReplyRig rig;
            rig.panel.average.set_checked(average);
            rig.panel.adcspeed.set_checked(speed);
            rig.look();
            const int sum = 32 + 2 + 138 + (average ? 1 : 0) + (speed ? 1 : 0) + 1;
            EXPECT_EQ(rig.bridge.frames(),
                      (std::vector<FakeBridge::Frame>{{4, 32, 2, 138, average, speed, 1, sum}}));
        }
    }
}

struct ChannelRow {
    Channel calling;
    const char* state;
    bool first;
    bool second;
    int asked;
};

TEST(BlockRequest, NamesTheCallingChannelUnlessTheStateSaysTheOther) {
    const ChannelRow rows[] = {
        {ch1, "scopech1f", true, true, 1},  {ch1, "scopech1f", true, false, 1},
        {ch1, "scopech1f", false, true, 1}, {ch1, "scopech1f", false, false, 1},
        {ch1, "scopech2f", true, true, 2},  {ch1, "scopech2f", false, true, 2},
        {ch1, "scopech2f", true, false, 1}, {ch1, "scopech2f", false, false, 1},
        {ch2, "scopech2f", true, true, 2},  {ch2, "scopech2f", false, true, 2},
        {ch2, "scopech2f", true, false, 2}, {ch2, "scopech2f", false, false, 2},
        {ch2, "scopech1f", true, true, 1},  {ch2, "scopech1f", true, false, 1},
        {ch2, "scopech1f", false, true, 2}, {ch2, "scopech1f", false, false, 2},
        {ch1, "changes", true, true, 1},    {ch2, "changes", true, true, 2},
    };
    for (const ChannelRow& row : rows) {
        AcquisitionRig rig;
        rig.start();
        rig.enable(row.first, row.second);
        rig.acquisition.scopestate = row.state;
        rig.block.sdisplaych(row.calling);
        EXPECT_EQ(rig.bridge.frames().at(0).at(6), row.asked)
            << row.calling << " in " << row.state << " " << row.first << row.second;
        EXPECT_EQ(rig.acquisition.scopestate, row.state);
    }
}

} // namespace
} // namespace kv408
