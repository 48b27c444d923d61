#include "acquisition/state_machine.h"

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

TEST(Buttons, StartSetsTheStateWordAndNothingElseHappensYet) {
    AcquisitionRig rig;
    rig.start();
    rig.state_machine.cmdstartsweep_Click();
    EXPECT_TRUE(rig.acquisition.acqrunning);
    EXPECT_EQ(rig.acquisition.scopestate, "startscope");
    EXPECT_TRUE(rig.bridge.calls.empty());
}

TEST(Buttons, StopSetsTheStateWordAndItsRequest) {
    AcquisitionRig rig;
    rig.start();
    rig.state_machine.cmdstartsweep_Click();
    EXPECT_FALSE(rig.acquisition.stoprequest);
    rig.state_machine.cmdstop_Click();
    EXPECT_TRUE(rig.acquisition.stoprequest);
    EXPECT_FALSE(rig.acquisition.acqrunning);
    EXPECT_EQ(rig.acquisition.scopestate, "stoped");
    EXPECT_TRUE(rig.bridge.calls.empty());
}

struct QuietRow {
    const char* state;
    const char* next;
};

TEST(States, ThatOnlyMoveOnSendAndShowNothing) {
    const QuietRow rows[] = {
        {"changes", "startscope"},
        {"changes1", "startscope"},
        {"scope", "startscope"},
        {"Idle", "Idle"},
        {"", ""},
        {"STOPED", "STOPED"},
        {"startscope ", "startscope "},
        {"Scope", "Scope"},
        {"stopped", "stopped"},
        {"changes2", "changes2"},
        {"scopech3f", "scopech3f"},
    };
    for (const QuietRow& row : rows) {
        AcquisitionRig rig;
        rig.start();
        rig.acquisition.laststate = "scopech2f";
        rig.panel.textstatus.set_text("before");
        rig.acquisition.scopestate = row.state;
        rig.tick();
        EXPECT_EQ(rig.acquisition.scopestate, row.next) << row.state;
        EXPECT_EQ(rig.status(), "before") << row.state;
        EXPECT_EQ(rig.acquisition.laststate, "scopech2f") << row.state;
        EXPECT_FALSE(rig.acquisition.acqrunning) << row.state;
        EXPECT_TRUE(rig.bridge.calls.empty()) << row.state;
        EXPECT_TRUE(rig.screen.calls.empty()) << row.state;
        EXPECT_TRUE(rig.messages.repainted.empty()) << row.state;
    }
}

TEST(States, IdleIsShownAndActsAsStart) {
    AcquisitionRig rig;
    rig.start();
    EXPECT_EQ(rig.acquisition.scopestate, "idle");
    rig.tick();
    EXPECT_EQ(rig.status(), "Idle");
    EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(255, 255, 192));
    EXPECT_EQ(rig.acquisition.scopestate, "startscope");
    EXPECT_TRUE(rig.acquisition.acqrunning);
    EXPECT_TRUE(rig.bridge.calls.empty());
}

TEST(States, StopedIsShownAndStays) {
    AcquisitionRig rig;
    rig.start();
    rig.state_machine.cmdstop_Click();
    for (int tick = 0; tick < 3; ++tick) {
        rig.tick();
        EXPECT_EQ(rig.status(), "Stopped");
        EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(255, 192, 192));
        EXPECT_EQ(rig.acquisition.scopestate, "stoped");
        EXPECT_TRUE(rig.bridge.calls.empty());
    }
}

TEST(States, ABlockStateLooksForItsChannel) {
    for (const int channel : {1, 2}) {
        AcquisitionRig rig;
        rig.start();
        rig.acquisition.acqrunning = false;
        const std::string state = channel == 1 ? "scopech1f" : "scopech2f";
        const std::string other = channel == 1 ? "scopech2f" : "scopech1f";
        rig.acquisition.scopestate = state;
        rig.bridge.receive(std::vector<int>(1300, 8));
        rig.tick();
        EXPECT_EQ(rig.acquisition.laststate, state);
        EXPECT_TRUE(rig.acquisition.acqrunning);
        EXPECT_EQ(rig.acquisition.scopestate, other);
        EXPECT_EQ(rig.samples[static_cast<std::size_t>(channel - 1)].raw[650], 8 * 256 + 8);
        EXPECT_EQ(rig.samples[static_cast<std::size_t>(2 - channel)].raw[650], 0);
    }
}

TEST(States, ABlockStateCountsAsExecutedWhileItsBlockIsStillComing) {
    AcquisitionRig rig;
    rig.start();
    rig.acquisition.scopestate = "scopech2f";
    rig.bridge.receive(std::vector<int>(700, 8));
    rig.tick();
    EXPECT_EQ(rig.acquisition.laststate, "scopech2f");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech2f");
    EXPECT_TRUE(rig.acquisition.acqrunning);
}

TEST(States, ScopeInPointModeRunsAPass) {
    AcquisitionRig rig;
    rig.start();
    rig.acquisition.pointmode = true;
    rig.acquisition.scopestate = "scope";
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive({8, 0}); };
    rig.tick();
    EXPECT_EQ(rig.bridge.frames().size(), 1280U);
    EXPECT_EQ(rig.acquisition.scopestate, "scope");
    EXPECT_TRUE(rig.acquisition.acqrunning);
}

TEST(States, BothChannelsTakeTurnsWhileTheirBlocksCome) {
    AcquisitionRig rig;
    rig.start();
    rig.acknowledge_set_up();
    Texts states;
    for (int tick = 0; tick < 6; ++tick) {
        rig.tick();
        states.push_back(rig.acquisition.scopestate);
        rig.bridge.receive(std::vector<int>(1300, 8));
    }
    EXPECT_EQ(states, (Texts{"startscope", "scopech1f", "scopech2f", "scopech1f", "scopech2f",
                             "scopech1f"}));
}

TEST(States, AChangeWhileRunningUploadsTheWholeSetUpAgain) {
    AcquisitionRig rig;
    rig.start();
    rig.tick();
    rig.tick();
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.panel.seltimediv.set_index(13);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    rig.forget();
    rig.tick();
    EXPECT_TRUE(rig.bridge.calls.empty());
    rig.tick();
    const auto frames = rig.bridge.frames();
    ASSERT_EQ(frames.size(), 6U);
    // The resolution of "5ns/div" is 79: 31 + 79 + 255 = 365.
    EXPECT_EQ(frames[4], (FakeBridge::Frame{4, 31, 0, 0, 0, 79, 255, 109}));
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

} // namespace
} // namespace kv408
