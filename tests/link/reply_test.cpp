#include <array>

#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

struct IdleRow {
    const char* what;
    std::vector<std::uint32_t> counts; ///< waiting at each poll; the last one stays
    int polls;
};

TEST(WaitRxIdle, ReturnsWhenTwoPollsShowTheSameCount) {
    const IdleRow rows[] = {
        {"nothing has arrived", {0}, 1},
        {"all is there already", {1300, 1300}, 2},
        {"it grows for a while", {100, 600, 1300, 1300}, 4},
        {"it starts late", {0, 100}, 1},
        {"it empties by itself", {100, 0, 0}, 3},
    };
    for (const IdleRow& row : rows) {
        LinkRig rig;
        rig.open();
        std::size_t poll = 0;
        rig.bridge.on_check = [&](std::uint32_t& waiting) {
            waiting = row.counts[std::min(poll, row.counts.size() - 1)];
            ++poll;
        };
        rig.link.waitrxidle();
        EXPECT_EQ(rig.bridge.count("SI_CheckRXQueue"), row.polls) << row.what;
        EXPECT_EQ(rig.clock.now(), row.polls * milliseconds(100)) << row.what;
        EXPECT_EQ(rig.bridge.calls.size(), static_cast<std::size_t>(row.polls)) << row.what;
    }
}

TEST(WaitRxIdle, SleepsBeforeEachPoll) {
    LinkRig rig;
    rig.open();
    rig.bridge.receive({1, 2, 3});
    rig.link.waitrxidle();
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_CheckRXQueue @100", "SI_CheckRXQueue @200"}));
    EXPECT_EQ(rig.bridge.received.size(), 3U);
}

TEST(WaitRxIdle, GivesUpAfterFourSeconds) {
    LinkRig rig;
    rig.open();
    std::uint32_t growing = 0;
    rig.bridge.on_check = [&](std::uint32_t& waiting) { waiting = ++growing; };
    rig.link.waitrxidle();
    EXPECT_EQ(rig.bridge.count("SI_CheckRXQueue"), 40);
    EXPECT_EQ(rig.clock.now(), milliseconds(4000));
}

TEST(WaitRxIdle, AFailingCheckEndsTheWait) {
    LinkRig rig;
    rig.open();
    rig.bridge.status["SI_CheckRXQueue"] = 1;
    std::uint32_t growing = 0;
    rig.bridge.on_check = [&](std::uint32_t& waiting) { waiting = ++growing; };
    rig.link.waitrxidle();
    EXPECT_EQ(rig.clock.now(), milliseconds(100));
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(Waiting, TellsTheBytesInTheQueue) {
    LinkRig rig;
    rig.open();
    EXPECT_EQ(rig.link.waiting(), 0U);
    rig.bridge.receive({1, 2, 3});
    EXPECT_EQ(rig.link.waiting(), 3U);
    // A failing check tells nothing, also where its low 16 bits are those of a success.
    for (const BridgeStatus failure : {1, 65536}) {
        rig.bridge.status["SI_CheckRXQueue"] = failure;
        EXPECT_EQ(rig.link.waiting(), 0U) << failure;
    }
}

TEST(Read, NeedsEveryByteAndAGoodStatus) {
    LinkRig rig;
    rig.open();
    std::array<Byte, 2> bytes = {};
    rig.bridge.receive({26, 10, 99});
    EXPECT_TRUE(rig.link.read(bytes));
    EXPECT_EQ(bytes, (std::array<Byte, 2>{26, 10}));
    EXPECT_FALSE(rig.link.read(bytes)) << "one byte of two";
    EXPECT_FALSE(rig.link.read(bytes)) << "none of two";
    EXPECT_EQ(rig.link.state().commstatus, 13);
    for (const BridgeStatus failure : {1, 65536}) {
        rig.bridge.receive({1, 2});
        rig.bridge.status["SI_Read"] = failure;
        EXPECT_FALSE(rig.link.read(bytes)) << failure;
    }
}

TEST(Flush, EmptiesBothQueues) {
    LinkRig rig;
    rig.open();
    rig.link.flush();
    EXPECT_EQ(rig.bridge.timeline(), Texts{"SI_FlushBuffers 1 1 @0"});
}

TEST(CommStatus, HoldsTheLastStatusWithin16Bits) {
    LinkRig rig;
    rig.open();
    const std::pair<BridgeStatus, int> rows[] = {
        {0, 0}, {13, 13}, {255, 255}, {32767, 32767}, {65536, 32767}, {-65536, -32768}, {-1, -1},
    };
    for (const auto& [status, kept] : rows) {
        rig.bridge.status["SI_FlushBuffers"] = status;
        rig.link.flush();
        EXPECT_EQ(rig.link.state().commstatus, kept) << status;
    }
}

} // namespace
} // namespace kv408
