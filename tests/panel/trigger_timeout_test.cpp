#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

/// A running panel whose trigger has been uploaded with the time-out "1000".
struct TimeOutRig : PanelRig {
    TimeOutRig() {
        trigger.settriger();
        acquisition.acqrunning = true;
        acquisition.scopestate = "scopech1f";
    }
};

TEST(TriggerTimeOut, ANewOneMarksTheSetUpWhenTheBoxIsLeftOrEnterPressed) {
    for (const bool by_enter : {true, false}) {
        TimeOutRig rig;
        rig.panel.trtout.set_text("500");
        EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
        by_enter ? rig.panel.trtout.enter() : rig.panel.trtout.leave();
        EXPECT_EQ(rig.acquisition.scopestate, "changes");
    }
}

TEST(TriggerTimeOut, TheSameOneChangesNothing) {
    TimeOutRig rig;
    rig.panel.trtout.set_text("1000.2");
    rig.panel.trtout.leave();
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(TriggerTimeOut, OneThatTheInstrumentDidNotAcknowledgeIsSentAgain) {
    TimeOutRig rig;
    rig.panel.trtout.set_text("500");
    rig.panel.trtout.enter();
    rig.bridge.on_frame = {};
    rig.trigger.settriger();
    EXPECT_EQ(rig.boxes.shown.back().text, "error set triger");
    rig.acquisition.scopestate = "scopech1f";
    rig.panel.trtout.enter();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TriggerTimeOut, WhileStoppedItWaitsForTheNextStart) {
    TimeOutRig rig;
    rig.acquisition.acqrunning = false;
    rig.acquisition.scopestate = "stoped";
    rig.panel.trtout.set_text("500");
    rig.panel.trtout.enter();
    EXPECT_EQ(rig.acquisition.scopestate, "stoped");
}

} // namespace
} // namespace kv408
