#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

constexpr CommandArguments check_arguments = {0, 0, 0, 1, 0, 255};

TEST(SendCommand, WritesOneFrameOfEightBytesAndReadsNothing) {
    LinkRig rig;
    rig.open();
    rig.link.sendcommand(8, check_arguments);
    EXPECT_EQ(rig.bridge.timeline(), Texts{"SI_Write 4 8 0 0 1 0 255 8 @0"});
    EXPECT_EQ(rig.link.state().commstatus, 0);
}

TEST(SendCommand, AFrameThatCannotBeWrittenEndsTheProgram) {
    // The last one has the low 16 bits of a success.
    for (const BridgeStatus failure : {1, 13, 255, -1, 65536}) {
        LinkRig rig;
        rig.open();
        rig.bridge.status["SI_Write"] = failure;
        EXPECT_THROW(rig.link.sendcommand(8, check_arguments), ProgramEnded) << failure;
        EXPECT_TRUE(rig.program.ended);
        EXPECT_EQ(rig.boxes.texts(), Texts{"Error finding WKTP2B device. Aborting application."});
        EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::ok);
        EXPECT_EQ(rig.boxes.shown[0].title, "");
        EXPECT_NE(rig.boxes.shown[0].informative, "");
        EXPECT_NE(rig.link.state().commstatus, 0);
        EXPECT_EQ(rig.bridge.calls.size(), 1U);
    }
}

TEST(SendCmdAck, GoesThroughItsOperationsInOrder) {
    LinkRig rig;
    rig.open();
    rig.bridge.acknowledge_all();
    std::int16_t retries = 3;
    EXPECT_TRUE(rig.link.sendcmdack(8, check_arguments, retries, 700, " SETTRIG "));
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_SetTimeouts 700 700 @0", "SI_FlushBuffers 1 1 @0",
                                            "SI_Write 4 8 0 0 1 0 255 8 @0", "SI_Read 1 @20"}));
    EXPECT_EQ(retries, 2);
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(SendCmdAck, EachAttemptFlushesWritesPausesAndReads) {
    LinkRig rig;
    rig.open();
    std::int16_t retries = 2;
    EXPECT_FALSE(rig.link.sendcmdack(27, {0, 3, 232, 1, 10, 255}, retries, 100, "x"));
    EXPECT_EQ(
        rig.bridge.timeline(),
        (Texts{"SI_SetTimeouts 100 100 @0", "SI_FlushBuffers 1 1 @0",
               "SI_Write 4 27 3 232 1 10 255 16 @0", "SI_Read 1 @20", "SI_FlushBuffers 1 1 @120",
               "SI_Write 4 27 3 232 1 10 255 16 @120", "SI_Read 1 @140"}));
    EXPECT_EQ(rig.clock.now(), std::chrono::milliseconds(240));
}

struct AttemptsRow {
    std::int16_t retries;
    std::size_t attempts;
    std::int16_t left;
};

TEST(SendCmdAck, MakesAsManyAttemptsAsAskedButAtLeastOne) {
    const AttemptsRow rows[] = {{3, 3, 0}, {2, 2, 0}, {1, 1, 0}, {0, 1, -1}, {-5, 1, -6}};
    for (const AttemptsRow& row : rows) {
        LinkRig rig;
        rig.open();
        std::int16_t retries = row.retries;
        EXPECT_FALSE(rig.link.sendcmdack(8, check_arguments, retries, 1000, "x"));
        EXPECT_EQ(rig.bridge.frames().size(), row.attempts) << row.retries;
        EXPECT_EQ(retries, row.left) << row.retries;
        EXPECT_EQ(rig.boxes.shown.size(), 2U);
    }
}

TEST(SendCmdAck, SucceedsOnTheSecondAttempt) {
    LinkRig rig;
    rig.open();
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) {
        if (rig.bridge.frames().size() == 2) {
            rig.bridge.receive({6});
        }
    };
    std::int16_t retries = 3;
    EXPECT_TRUE(rig.link.sendcmdack(8, check_arguments, retries, 1000, "x"));
    EXPECT_EQ(rig.bridge.frames().size(), 2U);
    EXPECT_EQ(retries, 1);
    EXPECT_EQ(rig.clock.now(), std::chrono::milliseconds(20 + 1000 + 20));
    EXPECT_TRUE(rig.boxes.shown.empty());
}

/// A bridge whose first read gives 6 under a failing status and whose later ones succeed without
/// a byte.
struct EmptyReads : FakeBridge {
    using FakeBridge::FakeBridge;
    Counted read(std::span<Byte> bytes) override {
        if (reads++ == 0) {
            bytes[0] = 6;
            return {5, 1};
        }
        return {bridge_success, 0};
    }
    int reads = 0;
};

TEST(SendCmdAck, AByteLeftFromAnEarlierAttemptIsNoAcknowledge) {
    LinkRig rig;
    EmptyReads bridge(rig.clock);
    DeviceLink link(bridge, rig.clock, rig.boxes, rig.program);
    std::int16_t retries = 3;
    EXPECT_FALSE(link.sendcmdack(8, check_arguments, retries, 1000, "x"));
    EXPECT_EQ(bridge.reads, 3);
    EXPECT_EQ(rig.boxes.texts(), (Texts{"xCommError", "Error Sending Data."}));
}

TEST(SendCmdAck, LateBytesOfAnEarlierExchangeAreFlushed) {
    LinkRig rig;
    rig.open();
    rig.bridge.receive({6, 6, 6});
    std::int16_t retries = 1;
    EXPECT_FALSE(rig.link.sendcmdack(8, check_arguments, retries, 1000, "x"));
}

struct FailureRow {
    const char* what;
    BridgeStatus read_status;
    std::vector<int> reply;
    const char* label;
    const char* message;
};

TEST(SendCmdAck, FailureIsToldInTwoMessages) {
    const FailureRow rows[] = {
        {"silence", 0, {}, " SETTRIG ", " SETTRIG Comm timed out"},
        {"a wrong byte", 0, {7}, " SETTRIG ", " SETTRIG CommError"},
        {"a zero", 0, {0}, "_SET AMP GAIN_", "_SET AMP GAIN_CommError"},
        {"6 under a failing status", 5, {6}, " SETTTO ", " SETTTO CommError"},
        {"6 under a time-out", 13, {6}, " SETTTO ", " SETTTO Comm timed out"},
        {"6 under a status whose low 16 bits are 0", 65536, {6}, "x", "xCommError"},
        {"a status whose low 16 bits are 13", 65536 + 13, {}, "x", "xCommError"},
        {"a negative status", -13, {6}, "x", "xCommError"},
        {"an empty label", 0, {}, "", "Comm timed out"},
    };
    for (const FailureRow& row : rows) {
        LinkRig rig;
        rig.open();
        rig.bridge.status["SI_Read"] = row.read_status;
        rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive(row.reply); };
        std::int16_t retries = 3;
        EXPECT_FALSE(rig.link.sendcmdack(8, check_arguments, retries, 1000, row.label)) << row.what;
        EXPECT_EQ(rig.boxes.texts(), (Texts{row.message, "Error Sending Data."})) << row.what;
        EXPECT_EQ(rig.bridge.frames().size(), 3U) << row.what;
        EXPECT_FALSE(rig.program.ended) << row.what;
    }
}

TEST(SendCmdAck, TheLastAttemptDecidesTheMessage) {
    LinkRig rig;
    rig.open();
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) {
        if (rig.bridge.frames().size() < 3) {
            rig.bridge.receive({9});
        }
    };
    std::int16_t retries = 3;
    EXPECT_FALSE(rig.link.sendcmdack(8, check_arguments, retries, 1000, "x"));
    EXPECT_EQ(rig.boxes.texts(), (Texts{"xComm timed out", "Error Sending Data."}));
}

TEST(SendCmdAck, AFailedWriteEndsTheProgramWithoutAnotherAttempt) {
    LinkRig rig;
    rig.open();
    rig.bridge.status["SI_Write"] = 2;
    std::int16_t retries = 3;
    EXPECT_THROW(rig.link.sendcmdack(8, check_arguments, retries, 1000, "x"), ProgramEnded);
    EXPECT_EQ(rig.bridge.count("SI_Write"), 1);
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Write");
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error finding WKTP2B device. Aborting application."});
}

TEST(SendCmdAck, KeepsTheArgumentsAndClearsTheAttemptCounterOnSuccessOnly) {
    LinkRig rig;
    rig.open();
    EXPECT_FALSE(rig.link.checkdevice());
    EXPECT_EQ(rig.link.state().retrycount, 3);
    rig.arguments({0, 1, 2, 3, 4, 5});
    std::int16_t retries = 1;
    EXPECT_FALSE(rig.link.sendcmdack(30, rig.link.cmdargs(), retries, 1000, "x"));
    EXPECT_EQ(rig.link.state().retrycount, 3);
    rig.bridge.acknowledge_all();
    EXPECT_TRUE(rig.link.sendcmdack(30, rig.link.cmdargs(), retries, 1000, "x"));
    EXPECT_EQ(rig.link.state().retrycount, 0);
    EXPECT_EQ(rig.link.cmdargs(), (CommandArguments{0, 1, 2, 3, 4, 5}));
}

TEST(SendSetup, TakesTheLinksOwnArgumentsThreeTimesForASecondEach) {
    LinkRig rig;
    rig.open();
    rig.arguments({0, 2, 1, 0, 0, 0});
    EXPECT_FALSE(rig.link.send_setup(9, "_SET AMP GAIN_"));
    const FakeBridge::Frame frame = {4, 9, 2, 1, 0, 0, 0, 12};
    EXPECT_EQ(rig.bridge.frames(), (std::vector{frame, frame, frame}));
    EXPECT_EQ(rig.bridge.timeline().front(), "SI_SetTimeouts 1000 1000 @0");
    EXPECT_EQ(rig.clock.now(), std::chrono::milliseconds(3 * 1020));
}

TEST(SendCmdAck, InAnExchangeGivenUpNothingIsSentOrTold) {
    LinkRig rig;
    rig.open();
    rig.program.given_up = true;
    EXPECT_FALSE(rig.link.send_setup(command::set_trigger, " SETTRIG "));
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.clock.now(), std::chrono::nanoseconds(0));
}

} // namespace
} // namespace kv408
