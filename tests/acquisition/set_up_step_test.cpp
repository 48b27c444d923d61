#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

/// A started program whose next tick uploads the set-up.
struct SetUpRig : AcquisitionRig {
    SetUpRig() {
        start();
        state_machine.cmdstartsweep_Click();
        clock.sleep(std::chrono::seconds(1) - clock.now());
    }
};

TEST(SetUpStep, SendsTriggerTimeBaseAndTheFirstRequestWithTheirPauses) {
    SetUpRig rig;
    rig.tick();
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_SetTimeouts 1000 1000 @1000",
                                            "SI_FlushBuffers 1 1 @1000",
                                            "SI_Write 4 8 8 0 1 10 255 26 @1000",
                                            "SI_Read 1 @1020",
                                            "SI_SetTimeouts 1000 1000 @1030",
                                            "SI_FlushBuffers 1 1 @1030",
                                            "SI_Write 4 27 3 232 1 10 255 16 @1030",
                                            "SI_Read 1 @1050",
                                            "SI_SetTimeouts 1000 1000 @1050",
                                            "SI_FlushBuffers 1 1 @1050",
                                            "SI_Write 4 30 0 0 0 0 255 29 @1050",
                                            "SI_Read 1 @1070",
                                            "SI_SetTimeouts 1000 1000 @1090",
                                            "SI_FlushBuffers 1 1 @1090",
                                            "SI_Write 4 35 0 0 0 0 255 34 @1090",
                                            "SI_Read 1 @1110",
                                            "SI_SetTimeouts 1000 1000 @1111",
                                            "SI_FlushBuffers 1 1 @1111",
                                            "SI_Write 4 31 0 0 1 57 255 88 @1111",
                                            "SI_Read 1 @1131",
                                            "SI_FlushBuffers 1 1 @1131",
                                            "SI_Write 4 32 2 138 0 0 1 173 @1133"}));
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(SetUpStep, ShowsAndPaintsItsStatusBeforeAnythingIsSent) {
    SetUpRig rig;
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) {
        EXPECT_EQ(rig.status(), "Setup...");
        EXPECT_EQ(rig.messages.repainted, Texts{"textstatus"});
        rig.bridge.receive({6});
    };
    rig.tick();
    EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(192, 192, 255));
    EXPECT_EQ(rig.bridge.frames().size(), 6U);
}

TEST(SetUpStep, GainsThatWereNeverAcknowledgedComeFirst) {
    SetUpRig rig;
    rig.bridge.on_frame = nullptr;
    rig.panel.channel[0].vdiv.on_click({});
    rig.panel.channel[1].vdiv.set_index(3); // "50mV", unacknowledged; running, so marked changed
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    rig.acknowledge_set_up();
    rig.forget();
    rig.tick();
    rig.tick();
    const auto frames = rig.bridge.frames();
    ASSERT_EQ(frames.size(), 7U);
    EXPECT_EQ(frames[0], (FakeBridge::Frame{4, 9, 2, 1, 0, 0, 0, 12}));
    EXPECT_EQ(frames[1].at(1), 8);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(SetUpStep, BothVoltsPerDivisionHandlersRun) {
    SetUpRig rig;
    rig.acquisition.ready = {true, true};
    rig.channels[0].pos = 0;
    rig.channels[1].pos = 512;
    rig.tick();
    // 2048 -+ 256 / 0.32
    EXPECT_EQ(rig.channels[0].offsetdac, 1248);
    EXPECT_EQ(rig.channels[1].offsetdac, 2848);
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
    EXPECT_THAT(rig.screen.calls, testing::IsSupersetOf({"refresh 1 0", "refresh 2 0"}));
}

struct OffsetRow {
    const char* text;
    std::int32_t offset;
    FakeBridge::Frame ch1; ///< command 30 when the text stands in the first box
};

TEST(SetUpStep, TheOffsetsAreTheLeadingNumbersOfTheDelayBoxes) {
    const OffsetRow rows[] = {
        {"0", 0, {4, 30, 0, 0, 0, 0, 255, 29}},
        {"120", 120, {4, 30, 0, 0, 0, 120, 255, 149}},
        {"12.5", 12, {4, 30, 0, 0, 0, 12, 255, 41}},
        {"13.5", 14, {4, 30, 0, 0, 0, 14, 255, 43}},
        {"-7", -7, {4, 30, 255, 255, 255, 249, 255, 19}},
        {" 65535ps", 65535, {4, 30, 0, 0, 255, 255, 255, 27}},
        {"99999999999", 2147483647, {4, 30, 127, 255, 255, 255, 255, 153}},
        {"-99999999999", -2147483647 - 1, {4, 30, 128, 0, 0, 0, 255, 157}},
        {"none", 0, {4, 30, 0, 0, 0, 0, 255, 29}},
        {"", 0, {4, 30, 0, 0, 0, 0, 255, 29}},
    };
    for (const OffsetRow& row : rows) {
        SetUpRig rig;
        rig.panel.channel[0].psofset.set_text(row.text);
        rig.panel.channel[1].psofset.set_text("3");
        rig.tick();
        EXPECT_EQ(rig.acquisition.offset, (std::array<std::int32_t, 2>{row.offset, 3})) << row.text;
        EXPECT_EQ(rig.bridge.frames().at(2), row.ch1) << row.text;
        EXPECT_EQ(rig.bridge.frames().at(3), (FakeBridge::Frame{4, 35, 0, 0, 0, 3, 255, 37}));
    }
}

TEST(SetUpStep, InPointModeItEndsInScope) {
    SetUpRig rig;
    rig.acquisition.pointmode = true;
    rig.tick();
    EXPECT_EQ(rig.acquisition.scopestate, "scope");
    EXPECT_EQ(rig.bridge.frames().back().at(1), 31);
}

TEST(SetUpStep, ARefusedTimeBaseIsTriedAgainAsAWhole) {
    SetUpRig rig;
    bool refusing = true;
    rig.bridge.on_frame = [&](const FakeBridge::Frame& frame) {
        if (frame.at(1) != 32 && !(refusing && frame.at(1) == 35)) {
            rig.bridge.receive({6});
        }
    };
    for (int round = 0; round < 2; ++round) {
        rig.tick();
        EXPECT_EQ(rig.boxes.texts(), (Texts{" set time base offset ch2 Comm timed out",
                                            "Error Sending Data.", "Error setting scope"}));
        EXPECT_EQ(rig.acquisition.scopestate, "scope");
        rig.forget();
        rig.tick();
        EXPECT_EQ(rig.acquisition.scopestate, "startscope");
        EXPECT_TRUE(rig.bridge.calls.empty());
    }
    refusing = false;
    rig.tick();
    EXPECT_TRUE(rig.boxes.shown.empty());
    // But for the ranges, which it acknowledged before.
    ASSERT_EQ(rig.bridge.frames().size(), 6U);
    EXPECT_EQ(rig.bridge.frames().front().at(1), 8);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(SetUpStep, InPointModeARefusedTimeBaseLetsThePassesRun) {
    SetUpRig rig;
    rig.acquisition.pointmode = true;
    rig.bridge.on_frame = [&](const FakeBridge::Frame& frame) {
        if (frame.at(1) == 26) {
            rig.bridge.receive({8, 0});
        } else if (frame.at(1) != 35) {
            rig.bridge.receive({6});
        }
    };
    rig.tick();
    EXPECT_EQ(rig.boxes.shown.size(), 3U);
    EXPECT_EQ(rig.acquisition.scopestate, "scope");
    rig.forget();
    rig.tick();
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.bridge.frames().size(), 1280U); // 640 points of both channels
    EXPECT_EQ(rig.acquisition.scopestate, "scope");
}

TEST(SetUpStep, AFrameOfBothRangesThatIsNotAcknowledgedIsToldOnce) {
    SetUpRig rig;
    rig.link.power().note_silence();
    rig.bridge.on_frame = [&](const FakeBridge::Frame& frame) {
        if (frame.at(1) != 9 && frame.at(1) != 32) {
            rig.bridge.receive({6});
        }
    };
    rig.tick();
    EXPECT_EQ(rig.boxes.texts(),
              (Texts{"_SET AMP GAIN_Comm timed out", "Error Sending Data.", "Error Vold/div set"}));
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(SetUpStep, ARefusedTriggerIsToldAndTheSweepStartsAllTheSame) {
    SetUpRig rig;
    rig.bridge.on_frame = [&](const FakeBridge::Frame& frame) {
        if (frame.at(1) != 32 && frame.at(1) != 8) {
            rig.bridge.receive({6});
        }
    };
    rig.tick();
    EXPECT_EQ(rig.boxes.texts(),
              (Texts{" SETTRIG Comm timed out", "Error Sending Data.", "error set triger"}));
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    EXPECT_EQ(rig.bridge.frames().back().at(1), 32);
}

TEST(SetUpStep, StopDuringItsMessagesStaysAStop) {
    for (const std::int64_t silent : {9, 8, 27, 30, 35, 31}) {
        SetUpRig rig;
        rig.link.power().note_silence(); // the ranges are sent too
        rig.bridge.on_frame = [&](const FakeBridge::Frame& frame) {
            if (frame.at(1) != 32 && frame.at(1) != silent) {
                rig.bridge.receive({6});
            }
        };
        rig.boxes.on_show = [&](const Message&) { rig.state_machine.cmdstop_Click(); };
        rig.tick();
        EXPECT_EQ(rig.acquisition.scopestate, "stoped") << silent;
        EXPECT_FALSE(rig.acquisition.acqrunning) << silent;
        rig.forget();
        rig.tick();
        EXPECT_EQ(rig.status(), "Stopped") << silent;
        EXPECT_TRUE(rig.bridge.calls.empty()) << silent;
    }
}

TEST(SetUpStep, TheAssemblyOfBlocksStartsAfresh) {
    SetUpRig rig;
    rig.acquisition.scopestate = "scopech1f";
    rig.bridge.receive(std::vector<int>(40, 9));
    rig.tick();
    rig.acquisition.scopestate = "startscope";
    rig.tick();
    // As many bytes of the new reply as were seen of the old one are no reply that has stopped.
    rig.bridge.receive(std::vector<int>(40, 9));
    rig.forget();
    rig.tick();
    EXPECT_EQ(rig.bridge.count("SI_Read"), 0);
}

} // namespace
} // namespace kv408
