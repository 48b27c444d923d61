#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

constexpr int fastest_point_mode = 7; ///< "500ns/div"
constexpr int slowest_block_mode = 8; ///< "200ns/div"

Texts keys(const TabStrip& strip) {
    Texts result;
    for (const Tab& tab : strip.tabs()) {
        result.push_back(tab.key);
    }
    return result;
}

TEST(HorizontalPosition, TheTabComesAndGoesWithPointMode) {
    PanelRig rig;
    rig.panel.seltimediv.set_index(slowest_block_mode);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().back(), (Tab{"HPOS", "Hor. Position"}));
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG", "HPOS"}));
    rig.panel.seltimediv.set_index(fastest_point_mode);
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG"}));
    rig.panel.seltimediv.set_index(0);
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG"}));
    rig.panel.seltimediv.set_index(slowest_block_mode);
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG", "HPOS"}));
}

TEST(HorizontalPosition, TheTabIsNeverThereTwice) {
    PanelRig rig;
    for (int index = slowest_block_mode; index <= 20; ++index) {
        rig.panel.seltimediv.set_index(index);
    }
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG", "HPOS"}));
}

TEST(HorizontalPosition, TheTabIsFoundAmongOthersWhenItGoes) {
    PanelRig rig;
    rig.panel.seltimediv.set_index(11);
    rig.panel.tabstrip2.add({"C1", "Cursor 1"});
    rig.panel.tabstrip2.add({"C2", "Cursor 2"});
    rig.panel.tabstrip2.select(5);
    rig.panel.seltimediv.set_index(fastest_point_mode);
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG", "C1", "C2"}));
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "C1");
    rig.panel.seltimediv.set_index(11);
    EXPECT_EQ(keys(rig.panel.tabstrip2), (Texts{"CH1", "CH2", "TRIG", "C1", "C2", "HPOS"}));
}

TEST(HorizontalPosition, TheDelayBoxesCanBeUsedInBlockModeOnly) {
    PanelRig rig;
    for (const int index : {fastest_point_mode, slowest_block_mode, 0, 20}) {
        rig.panel.seltimediv.set_index(index);
        for (const ChannelControls& controls : rig.panel.channel) {
            EXPECT_EQ(controls.psofset.enabled(), index >= slowest_block_mode) << index;
        }
    }
}

TEST(DelayLabel, ShowsWhatTheBoxHoldsUnlessThatIsZero) {
    const std::pair<const char*, const char*> rows[] = {
        {"0", ""},
        {"120", "Delay:  120ps"},
        {"65535", "Delay:  65535ps"},
        {"-7", "Delay:  -7ps"},
        // Only the text "0" itself is no delay.
        {"00", "Delay:  00ps"},
        {" 0", "Delay:   0ps"},
        {"", "Delay:  ps"},
    };
    for (const auto& [text, label] : rows) {
        for (const Channel channel : both_channels) {
            PanelRig rig;
            rig.panel.channel[channel].psofset.set_text(text);
            rig.panel.channel[channel].hor_delay.set_caption("old");
            rig.panel.seltimediv.set_index(slowest_block_mode);
            EXPECT_EQ(rig.panel.channel[channel].hor_delay.caption(), label);
            EXPECT_EQ(rig.panel.channel[1 - channel].hor_delay.caption(), "");
        }
    }
}

TEST(DelayLabel, IsEmptyInPointMode) {
    PanelRig rig;
    for (ChannelControls& controls : rig.panel.channel) {
        controls.psofset.set_text("120");
    }
    rig.panel.seltimediv.set_index(slowest_block_mode);
    rig.panel.seltimediv.set_index(fastest_point_mode);
    for (const Channel channel : both_channels) {
        const ChannelControls& controls = rig.panel.channel[channel];
        EXPECT_EQ(controls.hor_delay.caption(), "");
        rig.adjust.show_delay_label(channel);
        EXPECT_EQ(controls.hor_delay.caption(), "");
        EXPECT_EQ(controls.psofset.text(), "120");
    }
    rig.panel.seltimediv.set_index(slowest_block_mode);
    EXPECT_EQ(rig.panel.channel[1].hor_delay.caption(), "Delay:  120ps");
}

} // namespace
} // namespace kv408
