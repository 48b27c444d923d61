#include "display/plot_mouse.h"

#include <gtest/gtest.h>

#include "display/cursors.h"
#include "display/overlays.h"
#include "state/plot_geometry.h"
#include "support/panel_rig.h"

namespace kv408 {
namespace {

/// The panel with the mouse on the plot and the labels placed after each drawing.
struct MouseRig : StartedPanelRig {
    MouseRig() {
        panel.tabstrip3.on_click([this] { frame.TabStrip3_Click(); });
        screen.on_draw = [this] { show_labels(panel, channels, trigger_state); };
        vertical.place_marker(ch1);
        vertical.place_marker(ch2);
        screen.draw(255);
    }
    Cursors frame{panel, cursor_state, adjust, screen};
    PlotMouse mouse{panel, channels, cursor_state, adjust, screen};
};

TEST(ChannelMarker, StaysUnderTheMouseAndMovesTheChannel) {
    MouseRig rig;
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.mouse.chtext_MouseDown(ch2, 5);
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "CH2");
    rig.mouse.chtext_MouseMove(ch2, 25);
    EXPECT_EQ(rig.channels[1].pos, 276);
    EXPECT_EQ(rig.panel.channel[1].text.marked(), 276);
    EXPECT_EQ(rig.panel.slider1.Value(), 1024 - 2 * 276);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.mouse.chtext_MouseUp();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(ChannelMarker, StopsAtTheEdgesOfThePlot) {
    MouseRig rig;
    rig.mouse.chtext_MouseDown(ch1, 0);
    rig.mouse.chtext_MouseMove(ch1, -5000);
    EXPECT_EQ(rig.channels[0].pos, 0);
    rig.mouse.chtext_MouseMove(ch1, 5000);
    EXPECT_EQ(rig.channels[0].pos, 512);
}

TEST(TriggerMarker, LiesAtItsLevelAndStopsAtTheEdges) {
    MouseRig rig; // 0.1V/div: (2048 - code) x 2 x 0.32 pixels below the zero line
    EXPECT_EQ(rig.panel.trigertext.marked(), 256);
    rig.trigger_state.saved_trigpos[0] = 2148;
    rig.screen.draw(255);
    EXPECT_EQ(rig.panel.trigertext.marked(), 256 - 64);
    rig.trigger_state.saved_trigpos[0] = 4096;
    rig.screen.draw(255);
    EXPECT_EQ(rig.panel.trigertext.marked(), 1);
    rig.trigger_state.saved_trigpos[0] = 0;
    rig.screen.draw(255);
    EXPECT_EQ(rig.panel.trigertext.marked(), 513);
}

TEST(TriggerMarker, StaysWhereItWasDroppedAndUploadsItsLevel) {
    MouseRig rig;
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.mouse.trigertext_MouseDown(3);
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "TRIG");
    rig.mouse.trigertext_MouseMove(3 - 64);
    // 64 pixels up are 64 / 0.64 = 100 codes.
    EXPECT_EQ(rig.trigger_state.saved_trigpos[0], 2148);
    EXPECT_EQ(rig.panel.trigertext.marked(), 256 - 64);
    EXPECT_TRUE(rig.acquisition.holdoff);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.mouse.trigertext_MouseUp();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TriggerMarker, ADragBeyondThePlotStopsAtItsEdge) {
    MouseRig rig;
    rig.mouse.trigertext_MouseDown(0);
    rig.mouse.trigertext_MouseMove(-3000);
    EXPECT_GE(rig.panel.trigertext.marked(), 1);
    EXPECT_LE(rig.panel.trigertext.marked(), 3);
    rig.mouse.trigertext_MouseMove(3000);
    EXPECT_LE(rig.panel.trigertext.marked(), 513);
    EXPECT_GE(rig.panel.trigertext.marked(), 511);
}

TEST(TriggerMarker, BelongsToTheChannelOfItsSource) {
    // 64 pixels down are 64 / 0.64 = 100 codes at 0.1V/div and 64 / 0.128 = 500 at 0.5V/div.
    const std::pair<const char*, std::array<std::int16_t, 2>> rows[] = {
        {"TRIG1", {1948, 2048}},
        {"TRIG2", {2048, 1548}},
    };
    for (const auto& [source, levels] : rows) {
        MouseRig rig;
        PanelRig::choose(rig.panel.trigsource, source);
        PanelRig::choose(rig.panel.channel[1].vdiv, "0.5V");
        rig.channels[1].pos = 192; // the zero lines lie apart
        rig.vertical.place_marker(ch2);
        rig.screen.draw(255);
        rig.mouse.trigertext_MouseDown(0);
        rig.mouse.trigertext_MouseMove(64);
        EXPECT_EQ(rig.trigger_state.saved_trigpos, levels) << source;
    }
}

TEST(CursorLine, IsGrabbedWithinFourPixelsAndBecomesTheActiveOne) {
    MouseRig rig;
    rig.panel.tabstrip3.select(1); // rows 192 and 320
    EXPECT_FALSE(rig.mouse.plot_MouseDown(300, 315, false));
    ASSERT_TRUE(rig.mouse.plot_MouseDown(300, 316, false));
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "C2");
    EXPECT_EQ(rig.cursor_state.cursormode, 2);
    rig.mouse.plot_MouseMove(10, 400);
    EXPECT_EQ(rig.cursor_state.vpos, (std::array<std::int16_t, 2>{192, 400}));
    rig.mouse.plot_MouseMove(10, 9000);
    EXPECT_EQ(rig.cursor_state.vpos[1], 512);
    rig.mouse.plot_MouseUp();
    rig.mouse.plot_MouseMove(10, 100);
    EXPECT_EQ(rig.cursor_state.vpos[1], 512);
}

TEST(CursorLine, TheNearerOneIsGrabbedAndOfTwoEquallyNearTheFirst) {
    for (const int tab : {1, 2}) {
        for (const auto& [place, key] :
             {std::pair{187, ""}, std::pair{188, "C1"}, std::pair{195, "C1"}, std::pair{196, "C1"},
              std::pair{197, "C2"}, std::pair{204, "C2"}, std::pair{205, ""}}) {
            MouseRig rig;
            rig.panel.tabstrip3.select(tab);
            (tab == 1 ? rig.cursor_state.vpos : rig.cursor_state.hpos) = {192, 200};
            // The other coordinate lies where a line of the other kind would be.
            const bool grabbed = tab == 1 ? rig.mouse.plot_MouseDown(192, place, false)
                                          : rig.mouse.plot_MouseDown(place, 192, false);
            EXPECT_EQ(grabbed, key[0] != '\0') << tab << ' ' << place;
            if (grabbed) {
                EXPECT_EQ(rig.panel.tabstrip2.selected_key(), key) << tab << ' ' << place;
            }
        }
    }
}

TEST(CursorLine, OfTimeMovesSideways) {
    MouseRig rig;
    rig.panel.tabstrip3.select(2); // columns 192 and 448
    ASSERT_TRUE(rig.mouse.plot_MouseDown(196, 40, false));
    EXPECT_EQ(rig.cursor_state.cursormode, 3);
    rig.mouse.plot_MouseMove(-20, 40);
    EXPECT_EQ(rig.cursor_state.hpos[0], 0);
    EXPECT_EQ(rig.panel.slider1.Value(), 0);
    rig.mouse.plot_MouseMove(2000, 40);
    EXPECT_EQ(rig.cursor_state.hpos[0], 640);
    EXPECT_EQ(rig.panel.slider1.Value(), 640) << "a step back moves the line at once";
    rig.mouse.plot_MouseUp();
}

TEST(CursorLine, WithShiftBothMoveTogetherAndTheModeComesBack) {
    for (const int tab : {1, 2}) {
        MouseRig rig;
        rig.panel.tabstrip3.select(tab);
        auto& positions = tab == 1 ? rig.cursor_state.vpos : rig.cursor_state.hpos;
        const int distance = positions[1] - positions[0];
        ASSERT_TRUE(rig.mouse.plot_MouseDown(192, 192, true));
        EXPECT_EQ(rig.cursor_state.cursormode, tab == 1 ? 5 : 6);
        rig.mouse.plot_MouseMove(182, 182);
        EXPECT_EQ(positions[0], 182);
        EXPECT_EQ(positions[1] - positions[0], distance);
        rig.mouse.plot_MouseMove(-3000, -3000);
        EXPECT_EQ(positions[0], 0);
        EXPECT_EQ(positions[1], distance);
        rig.mouse.plot_MouseMove(3000, 3000);
        const int last = tab == 1 ? 512 : 640;
        EXPECT_EQ(positions[0], last - distance);
        EXPECT_EQ(positions[1], last);
        rig.mouse.plot_MouseMove(-3000, -3000);
        EXPECT_EQ(positions[0], 0);
        rig.mouse.plot_MouseUp();
        EXPECT_EQ(rig.cursor_state.cursormode, tab == 1 ? 1 : 3);
        EXPECT_EQ(rig.panel.slider1.Value(), tab == 1 ? 1024 : 0);
    }
}

TEST(CursorLine, ThereIsNoneToGrabWhileTheCursorsAreOff) {
    MouseRig rig;
    const CursorState before = rig.cursor_state;
    EXPECT_FALSE(rig.mouse.plot_MouseDown(192, 192, false));
    rig.mouse.plot_MouseMove(300, 300);
    EXPECT_EQ(rig.cursor_state.vpos, before.vpos);
    EXPECT_EQ(rig.cursor_state.hpos, before.hpos);
}

TEST(CursorLine, MovedTogetherKeepTheirDistanceThroughASetUpUpload) {
    MouseRig rig;
    rig.panel.tabstrip3.select(1); // rows 192 and 320
    ASSERT_TRUE(rig.mouse.plot_MouseDown(300, 192, true));
    rig.mouse.plot_MouseMove(300, 202);
    rig.panel.tabstrip2.select(rig.panel.tabstrip2.selected());
    rig.mouse.plot_MouseMove(300, 222);
    EXPECT_EQ(rig.cursor_state.vpos, (std::array<std::int16_t, 2>{222, 350}));
    EXPECT_EQ(rig.cursor_state.cursormode, 5);
    rig.mouse.plot_MouseUp();
    EXPECT_EQ(rig.cursor_state.cursormode, 1);
}

TEST(CursorLine, IsLostWhenTheCursorTypeChanges) {
    for (const int type : {2, 3}) {
        for (const bool together : {false, true}) {
            MouseRig rig;
            rig.panel.tabstrip3.select(1);
            ASSERT_TRUE(rig.mouse.plot_MouseDown(300, 192, together));
            rig.panel.tabstrip3.select(type);
            const std::int16_t mode = rig.cursor_state.cursormode;
            const CursorState before = rig.cursor_state;
            rig.mouse.plot_MouseMove(100, 100);
            rig.mouse.plot_MouseUp();
            EXPECT_EQ(rig.cursor_state.cursormode, mode) << type;
            EXPECT_EQ(rig.cursor_state.vpos, before.vpos) << type;
            EXPECT_EQ(rig.cursor_state.hpos, before.hpos) << type;
            EXPECT_EQ(rig.channels[0].pos, 256) << type;
        }
    }
}

TEST(Markers, LetGoWhenAnotherTabIsChosen) {
    MouseRig rig;
    rig.mouse.chtext_MouseDown(ch1, 5);
    rig.panel.tabstrip2.select(2);
    rig.mouse.chtext_MouseMove(ch1, 90);
    rig.mouse.chtext_MouseUp();
    EXPECT_EQ(rig.channels[0].pos, 256);
    EXPECT_EQ(rig.channels[1].pos, 256);
    rig.mouse.trigertext_MouseDown(5);
    rig.panel.tabstrip2.select(1);
    rig.mouse.trigertext_MouseMove(90);
    rig.mouse.trigertext_MouseUp();
    EXPECT_EQ(rig.channels[0].pos, 256);
    EXPECT_EQ(rig.trigger_state.saved_trigpos[0], 2048);
}

} // namespace
} // namespace kv408
