#include "display/cursors.h"

#include <gtest/gtest.h>

#include "support/panel_rig.h"
#include "support/time_base_lines.h"

namespace kv408 {
namespace {

/// The panel with the cursor frame connected.
struct CursorRig : StartedPanelRig {
    CursorRig() {
        panel.tabstrip3.on_click([this] { frame.TabStrip3_Click(); });
        panel.combocursorselect.on_click([this] { frame.combocursorselect_Click(); });
        panel.combocursorselect.set_entries({"CH1", "CH2"});
        screen.on_calccursors = [this] { show_cursor_readouts(panel, channels, cursor_state); };
    }
    Cursors frame{panel, cursor_state, adjust, screen};
};

TEST(CursorDistance, ColumnsAreSecondsByTheTimeBase) {
    for (const TimeBaseLine& line : time_base_lines) {
        EXPECT_EQ(deltacursorhor(64, std::string(line.text)), line.read_out) << line.text;
    }
    EXPECT_EQ(deltacursorhor(1, "25ps/div"), "0.00s"); // 0.39 ps is less than a pico
    EXPECT_EQ(deltacursorhor(640, "5ns/div"), "50.0ns");
    EXPECT_EQ(deltacursorhor(1, "3ns/div"), "");
}

TEST(CursorReadOut, VoltagesCountFromTheChannelsZeroLine) {
    CursorRig rig;
    rig.cursor_state.vpos = {192, 320};
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.panel.centerfr.caption(), "Delta Cursor : 200mV");
    EXPECT_EQ(rig.panel.lblc1.caption(), "C1: 100mV");
    EXPECT_EQ(rig.panel.lblc2.caption(), "C2: -100mV");
    EXPECT_TRUE(rig.panel.centerfr.visible());
    EXPECT_TRUE(rig.panel.lblc1.visible());
    EXPECT_TRUE(rig.panel.lblc2.visible());
    rig.cursor_state.vpos = {100, 100};
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.panel.centerfr.caption(), "Delta Cursor : 0.00V");
}

TEST(CursorReadOut, AnotherChannelIsAnotherScaleAtOnce) {
    CursorRig rig;
    PanelRig::choose(rig.panel.channel[1].vdiv, "10mV");
    rig.cursor_state.vpos = {192, 320};
    rig.panel.tabstrip3.select(1);
    PanelRig::choose(rig.panel.combocursorselect, "CH2");
    EXPECT_EQ(rig.cursor_state.channel, ch2);
    EXPECT_EQ(rig.panel.centerfr.caption(), "Delta Cursor : 20.0mV");
    EXPECT_EQ(rig.panel.lblc1.caption(), "C1: 10.0mV");
    EXPECT_EQ(rig.screen.calls.back(), "draw 255");
}

TEST(CursorReadOut, TimesHaveNoBlankBeforeTheColon) {
    CursorRig rig;
    rig.cursor_state.hpos = {64, 320};
    rig.panel.tabstrip3.select(2);
    EXPECT_EQ(rig.panel.centerfr.caption(), "Delta Cursor: 80.0ns");
    EXPECT_EQ(rig.panel.lblc1.caption(), "C1: 20.0ns");
    EXPECT_EQ(rig.panel.lblc2.caption(), "C2: 100ns");
    PanelRig::choose(rig.panel.seltimediv, "1ns/div");
    EXPECT_EQ(rig.panel.centerfr.caption(), "Delta Cursor: 4.00ns");
}

TEST(CursorType, TheTabsComeOnceAndGo) {
    CursorRig rig;
    rig.panel.tabstrip3.select(1);
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().size(), 6U);
    EXPECT_EQ(rig.panel.tabstrip2.tabs()[4], (Tab{"C1", "Cursor 1"}));
    EXPECT_EQ(rig.panel.tabstrip2.tabs()[5], (Tab{"C2", "Cursor 2"}));
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "C1");
    EXPECT_EQ(rig.cursor_state.cursormode, 1);
    rig.panel.tabstrip3.select(3);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().size(), 4U);
    EXPECT_EQ(rig.cursor_state.cursormode, 0);
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "CH1");
    EXPECT_FALSE(rig.panel.centerfr.visible());
    EXPECT_FALSE(rig.panel.lblc1.visible());
    EXPECT_FALSE(rig.panel.lblc2.visible());
}

TEST(CursorType, TheSecondCursorStaysActiveAcrossTheTypes) {
    CursorRig rig;
    rig.panel.tabstrip3.select(2);
    EXPECT_EQ(rig.cursor_state.cursormode, 3);
    int position = 0;
    ASSERT_FALSE(hasnotab(rig.panel.tabstrip2, "C2", position));
    rig.panel.tabstrip2.select(position);
    EXPECT_EQ(rig.cursor_state.cursormode, 4);
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.cursor_state.cursormode, 2);
    EXPECT_EQ(rig.panel.slider1.Value(), 1024 - 2 * 320);
    rig.panel.tabstrip3.select(2);
    EXPECT_EQ(rig.cursor_state.cursormode, 4);
    EXPECT_EQ(rig.panel.slider1.Value(), 448);
}

TEST(CursorType, ComeAlsoWithoutTheDelayTab) {
    CursorRig rig;
    PanelRig::choose(rig.panel.seltimediv, "1us/div");
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().size(), 5U);
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().size(), 5U);
    rig.panel.tabstrip3.select(3);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().size(), 3U);
}

TEST(CursorType, ThePositionsStayWhileTheCursorsAreOff) {
    CursorRig rig;
    rig.cursor_state.vpos = {11, 22};
    rig.panel.tabstrip3.select(1);
    rig.panel.tabstrip3.select(3);
    rig.panel.tabstrip3.select(1);
    EXPECT_EQ(rig.cursor_state.vpos, (std::array<std::int16_t, 2>{11, 22}));
}

} // namespace
} // namespace kv408
