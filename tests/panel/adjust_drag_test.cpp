#include "panel/adjust.h"

#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

/// A running panel with a hand on its wheel.
struct DragRig : StartedPanelRig {
    DragRig() {
        acquisition.acqrunning = true;
        acquisition.scopestate = "scopech1f";
        acquisition.ready = {true, true};
    }

    void select(std::string_view key) {
        int position = 0;
        ASSERT_FALSE(hasnotab(panel.tabstrip2, key, position)) << key;
        panel.tabstrip2.select(position);
    }

    /// What a set-up upload does with the tabs.
    void refresh_tab() { panel.tabstrip2.select(panel.tabstrip2.selected()); }

    void drag(int pixels) {
        panel.slider1.mouse_down(0, 0);
        panel.slider1.mouse_move(left_mouse_button, pixels, 0);
    }
};

TEST(WheelDrag, SurvivesASetUpUploadUntilItIsLetGo) {
    DragRig rig;
    rig.panel.channel[0].slenps.set_checked(true);
    rig.select("HPOS");
    rig.drag(-10); // 10 x 64 ps at 20ns/div
    rig.refresh_tab();
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "640");
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.panel.slider1.mouse_up();
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  640ps");
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(WheelDrag, OfTheTriggerStillShowsItsLineAfterASetUpUpload) {
    DragRig rig;
    rig.select("TRIG");
    rig.drag(5);
    rig.refresh_tab();
    rig.acquisition.holdoff = false;
    rig.panel.slider1.mouse_up();
    EXPECT_TRUE(rig.acquisition.holdoff);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_EQ(rig.trigger_state.saved_trigpos[0], 4 * 517);
}

TEST(WheelDrag, AnotherTabInTheMiddleOfItKeepsAndTellsWhatWasDraggedSoFar) {
    DragRig rig;
    rig.select("CH1");
    rig.drag(5); // 512 + 5 x 4
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.select("TRIG");
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
    EXPECT_EQ(rig.channels[0].marker_wheel, 532);
    EXPECT_EQ(rig.panel.slider1.Value(), 512);
    EXPECT_EQ(rig.trigger_state.trigwheel, 512);
}

TEST(WheelDrag, EachMovementWritesTheCursorReadOutsAndDrawsEverything) {
    for (const char* key : {"CH1", "CH2", "TRIG", "HPOS"}) {
        DragRig rig;
        rig.select(key);
        rig.forget();
        rig.screen.cursor_readouts = 0;
        rig.drag(-1);
        EXPECT_EQ(rig.screen.cursor_readouts, 1) << key;
        ASSERT_FALSE(rig.screen.calls.empty()) << key;
        EXPECT_EQ(rig.screen.calls.back(), "draw 255") << key;
    }
}

struct OtherModes {
    const char* key;
    std::array<std::int16_t, 4> modes;
};

TEST(WheelDrag, OfACursorInAnotherCursorsModeMovesNothing) {
    for (const OtherModes& cursor :
         {OtherModes{"C1", {2, 4, 5, 6}}, OtherModes{"C2", {1, 3, 5, 6}}}) {
        for (const std::int16_t mode : cursor.modes) {
            DragRig rig;
            rig.panel.tabstrip2.add({cursor.key, "Cursor"});
            rig.select(cursor.key);
            rig.cursor_state.cursormode = mode;
            const CursorState before = rig.cursor_state;
            rig.drag(-7);
            EXPECT_EQ(rig.cursor_state.vpos, before.vpos) << cursor.key << mode;
            EXPECT_EQ(rig.cursor_state.hpos, before.hpos) << cursor.key << mode;
        }
    }
}

TEST(WheelDrag, OfTheSecondTimeCursorEndsAtTheRightEdge) {
    DragRig rig;
    rig.panel.tabstrip2.add({"C2", "Cursor 2"});
    rig.cursor_state.cursormode = 4;
    rig.select("C2");
    rig.panel.slider1.drag_to(1024);
    EXPECT_EQ(rig.cursor_state.hpos[1], 640);
}

TEST(TypedDelay, IsTakenWhenTheBoxIsLeft) {
    DragRig rig;
    rig.panel.channel[0].slenps.set_checked(true);
    TextBox& box = rig.panel.channel[0].psofset;
    box.focus();
    box.set_text("70000");
    box.leave();
    EXPECT_EQ(box.text(), "65535");
    EXPECT_EQ(rig.channels[0].delaypts, 210); // 65535 / 312.5 = 209.7
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  65535ps");
    EXPECT_EQ(rig.panel.slider1.Value(), -32768);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TypedDelay, LeftAsItWasMarksNothing) {
    DragRig rig;
    TextBox& box = rig.panel.channel[1].psofset;
    box.focus();
    box.leave();
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    box.set_text(" 0 ");
    box.leave();
    EXPECT_EQ(box.text(), "0");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(TypedDelay, OfTheSameValueCorrectsItsLabel) {
    DragRig rig;
    TextBox& box = rig.panel.channel[0].psofset;
    box.set_text("65535");
    box.leave();
    rig.acquisition.offset[0] = 65535;
    box.set_text("610375535");
    PanelRig::choose(rig.panel.seltimediv, "10ns/div");
    ASSERT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  610375535ps");
    box.leave();
    EXPECT_EQ(box.text(), "65535");
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  65535ps");
}

TEST(TypedDelay, IsTakenWhereNoTabTurnsDelays) {
    DragRig rig;
    PanelRig::choose(rig.panel.seltimediv, "500ns/div");
    const std::string tab = rig.panel.tabstrip2.selected_key();
    rig.acquisition.scopestate = "scope";
    const std::int32_t wheel = rig.panel.slider1.Value();
    TextBox& box = rig.panel.channel[0].psofset;
    box.focus();
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), tab);
    box.set_text("-3");
    box.leave();
    EXPECT_EQ(box.text(), "0");
    box.set_text("400");
    box.leave();
    EXPECT_EQ(box.text(), "400");
    EXPECT_EQ(rig.panel.slider1.Value(), wheel);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TypedDelay, IsDrawnBeforeTheSetUpCountsAsChanged) {
    DragRig rig;
    std::string drawn_in;
    rig.screen.on_draw = [&] { drawn_in = rig.acquisition.scopestate; };
    TextBox& box = rig.panel.channel[0].psofset;
    box.focus();
    box.set_text("500");
    rig.forget();
    box.enter();
    EXPECT_EQ(drawn_in, "scopech1f");
    EXPECT_TRUE(rig.screen.shows_both_traces_anew());
}

TEST(DelayCheckBox, UncheckedOrOnAnotherTabLeavesTheWheel) {
    DragRig rig;
    rig.select("HPOS");
    rig.panel.channel[0].slenps.set_checked(true);
    rig.panel.channel[0].psofset.set_text("1000");
    const std::int32_t wheel = rig.panel.slider1.Value();
    rig.panel.channel[0].slenps.set_checked(false);
    EXPECT_EQ(rig.panel.slider1.Value(), wheel);
    rig.select("TRIG");
    rig.panel.channel[0].slenps.set_checked(true);
    EXPECT_EQ(rig.panel.slider1.Value(), 512);
}

TEST(TriggerZero, ShowsItsLineAtOnceAndMarksTheSetUp) {
    DragRig rig;
    bool line = false;
    rig.screen.on_draw = [&] { line = rig.acquisition.holdoff; };
    rig.panel.trzero.click();
    EXPECT_TRUE(line);
    EXPECT_EQ(rig.acquisition.holdoff_time, 1000);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

} // namespace
} // namespace kv408
