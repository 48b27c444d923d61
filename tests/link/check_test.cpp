#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

constexpr const char* check_frame = "SI_Write 4 8 0 0 1 0 255 8";

TEST(CheckDevice, SendsTheCheckFrameAndTakesTheAcknowledge) {
    LinkRig rig;
    rig.open();
    rig.bridge.acknowledge_all();
    EXPECT_TRUE(rig.link.checkdevice());
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_SetTimeouts 1000 1000 @0", "SI_FlushBuffers 1 1 @0",
                                            std::string(check_frame) + " @0", "SI_Read 1 @20"}));
    EXPECT_EQ(rig.link.cmdargs(), (CommandArguments{0, 0, 0, 1, 0, 255}));
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_TRUE(rig.link.state().open);
}

TEST(CheckDevice, ClosesTheDeviceAfterThreeTimeOutsWithoutAMessage) {
    LinkRig rig;
    rig.open();
    EXPECT_FALSE(rig.link.checkdevice());
    const std::string frame = check_frame;
    EXPECT_EQ(rig.bridge.timeline(),
              (Texts{"SI_SetTimeouts 1000 1000 @0", "SI_FlushBuffers 1 1 @0", frame + " @0",
                     "SI_Read 1 @20", "SI_FlushBuffers 1 1 @1020", frame + " @1020",
                     "SI_Read 1 @1040", "SI_FlushBuffers 1 1 @2040", frame + " @2040",
                     "SI_Read 1 @2060", "SI_Close @3060"}));
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_FALSE(rig.link.state().open);
    EXPECT_FALSE(rig.program.ended);
}

TEST(CheckDevice, AnAnswerToALaterAttemptCounts) {
    for (const std::size_t attempt : {2U, 3U}) {
        LinkRig rig;
        rig.open();
        rig.bridge.on_frame = [&](const FakeBridge::Frame&) {
            if (rig.bridge.frames().size() == attempt) {
                rig.bridge.receive({6});
            }
        };
        EXPECT_TRUE(rig.link.checkdevice());
        EXPECT_EQ(rig.bridge.frames().size(), attempt);
        EXPECT_EQ(rig.bridge.count("SI_Close"), 0);
    }
}

TEST(CheckDevice, AWrongByteIsToldAndNotTriedAgain) {
    for (const int byte : {0, 5, 7, 255}) {
        LinkRig rig;
        rig.open();
        rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive({byte}); };
        EXPECT_FALSE(rig.link.checkdevice()) << byte;
        EXPECT_EQ(rig.boxes.texts(), Texts{"Buffer(0) <> 6"}) << byte;
        EXPECT_EQ(rig.bridge.frames().size(), 1U) << byte;
        EXPECT_EQ(rig.bridge.count("SI_Close"), 0) << byte;
        EXPECT_TRUE(rig.link.state().open) << byte;
    }
}

TEST(CheckDevice, TheByteCountsWhateverTheStatusIsUnlessItIsATimeOut) {
    for (const BridgeStatus status : {1, 5, 255, 65536, 65536 + 13}) {
        LinkRig rig;
        rig.open();
        rig.bridge.status["SI_Read"] = status;
        rig.bridge.acknowledge_all();
        EXPECT_TRUE(rig.link.checkdevice()) << status;
        EXPECT_EQ(rig.bridge.frames().size(), 1U) << status;
    }
    LinkRig rig;
    rig.open();
    rig.bridge.status["SI_Read"] = 13;
    rig.bridge.acknowledge_all();
    EXPECT_FALSE(rig.link.checkdevice());
    EXPECT_EQ(rig.bridge.frames().size(), 3U);
}

TEST(CheckDevice, AFailingReadWithoutAByteIsAWrongByte) {
    LinkRig rig;
    rig.open();
    rig.bridge.status["SI_Read"] = 5;
    EXPECT_FALSE(rig.link.checkdevice());
    EXPECT_EQ(rig.boxes.texts(), Texts{"Buffer(0) <> 6"});
}

TEST(CheckDevice, WithNothingOpenNothingIsSent) {
    LinkRig rig;
    rig.bridge.serials = {};
    rig.link.finddevice();
    rig.link.select_and_open();
    rig.bridge.calls.clear();
    rig.boxes.shown.clear();
    EXPECT_FALSE(rig.link.checkdevice());
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_FALSE(rig.program.ended);
}

TEST(CheckDevice, CountsItsAttemptsFromTheStartEachTime) {
    LinkRig rig;
    rig.open();
    EXPECT_FALSE(rig.link.checkdevice());
    EXPECT_EQ(rig.link.state().retrycount, 3);
    rig.open();
    rig.clock.advance(std::chrono::milliseconds(1));
    EXPECT_FALSE(rig.link.checkdevice());
    EXPECT_EQ(rig.bridge.frames().size(), 3U);
    EXPECT_EQ(rig.link.state().retrycount, 3);
}

TEST(CheckDevice, AFailedWriteEndsTheProgram) {
    LinkRig rig;
    rig.open();
    rig.bridge.status["SI_Write"] = 4;
    EXPECT_THROW(rig.link.checkdevice(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error finding WKTP2B device. Aborting application."});
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Write");
}

TEST(CloseDevice, ClosesWhatIsOpenOnce) {
    LinkRig rig;
    rig.link.close();
    EXPECT_EQ(rig.bridge.count("SI_Close"), 0);
    rig.open();
    rig.bridge.status["SI_Close"] = 3;
    rig.link.close();
    EXPECT_EQ(rig.link.state().commstatus, 3);
    rig.link.close();
    EXPECT_EQ(rig.bridge.count("SI_Close"), 1);
    EXPECT_TRUE(rig.boxes.shown.empty());
}

} // namespace
} // namespace kv408
