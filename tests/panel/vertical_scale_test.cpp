#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

struct ScaleRow {
    const char* text;
    std::int16_t gain;
    double atten;
    double scale;
    double pixpermv;
};

constexpr ScaleRow scale_rows[] = {
    {"1V", 2, 0.5, 0.032, 0.064},
    {"0.5V", 2, 0.5, 0.064, 0.128},
    {"0.2V", 2, 0.5, 0.16, 0.32},
    {"0.1V", 2, 0.5, 0.32, 0.64},
    {"50mV", 1, 1.0 / 6, 512.0 / 2400, 1.28},
    {"20mV", 1, 1.0 / 6, 512.0 / 960, 3.2},
    {"10mV", 1, 1.0 / 6, 512.0 / 480, 6.4},
};

TEST(VerticalList, HoldsSixEntriesFromCoarseToFine) {
    PanelRig rig;
    for (const ChannelControls& controls : rig.panel.channel) {
        EXPECT_EQ(controls.vdiv.entries(), (Texts{"0.5V", "0.2V", "0.1V", "50mV", "20mV", "10mV"}));
        EXPECT_EQ(controls.vdiv.index(), -1);
    }
}

TEST(VerticalScale, EachTextSetsItsValuesAlsoOneThatTheListDoesNotOffer) {
    for (const ScaleRow& row : scale_rows) {
        for (const Channel channel : both_channels) {
            PanelRig rig;
            const ChannelState other = rig.channels[1 - channel];
            rig.panel.channel[channel].vdiv.set_entries({row.text});
            rig.panel.channel[channel].vdiv.set_index(0);
            const ChannelState& state = rig.channels[channel];
            EXPECT_EQ(state.gain, row.gain) << row.text;
            EXPECT_DOUBLE_EQ(state.atten, row.atten) << row.text;
            EXPECT_DOUBLE_EQ(state.scale, row.scale) << row.text;
            EXPECT_DOUBLE_EQ(state.pixpermv, row.pixpermv) << row.text;
            EXPECT_EQ(state.vtfactor, 1.0) << row.text;
            EXPECT_EQ(rig.channels[1 - channel].gain, other.gain) << row.text;
            EXPECT_EQ(rig.channels[1 - channel].scale, other.scale) << row.text;
            EXPECT_TRUE(rig.boxes.shown.empty()) << row.text;
        }
    }
}

TEST(VerticalScale, OtherTextsHaveNone) {
    for (const char* text : {"", "2V", "1v", " 1V", "0.1", "100mV", "10mV "}) {
        EXPECT_FALSE(vertical_scale(text).has_value()) << text;
    }
}

struct OffsetCodeRow {
    const char* text;
    bool via_trigger;
    std::int16_t pos;
    std::int16_t code;
};

TEST(OffsetCode, IsTheCodeThatFallsOnTheCentreRow) {
    const OffsetCodeRow offsets[] = {
        {"50mV", true, 256, 2048},
        {"50mV", true, 0, 1448}, // 2048 - 256 / (2 * 512 / 2400)
        {"50mV", false, 0, 848}, // 2048 - 256 * 2400 / 512
        {"50mV", false, 512, 3248},
        {"0.1V", false, 0, 1248}, // 2048 - 256 / 0.32
        {"0.1V", true, 0, 1648},
        {"10mV", false, 512, 2288}, // 2048 + 256 * 480 / 512
        {"20mV", false, 128, 1808}, // 2048 - 128 * 960 / 512
        {"0.5V", false, 0, -1952},  // 2048 - 256 / 0.064
        {"1V", false, 0, -5952},    // 2048 - 256 / 0.032
        {"1V", true, 0, -1952},
        {"1V", false, 512, 10048},
        // Halves go to the even code: 2048 - 2 / 0.032 = 1985.5, 2048 + 62.5 = 2110.5.
        {"1V", false, 254, 1986},
        {"1V", false, 258, 2110},
    };
    for (const OffsetCodeRow& row : offsets) {
        for (const Channel channel : both_channels) {
            PanelRig rig;
            rig.channels[channel].pos = row.pos;
            rig.panel.channel[channel].inviatr.on_click({});
            rig.panel.channel[channel].inviatr.set_checked(row.via_trigger);
            rig.panel.channel[channel].vdiv.set_entries({row.text});
            rig.panel.channel[channel].vdiv.set_index(0);
            EXPECT_EQ(rig.channels[channel].offsetdac, row.code)
                << row.text << " at row " << row.pos;
            EXPECT_EQ(offset_code(rig.channels[channel]), row.code);
            EXPECT_EQ(rig.channels[1 - channel].offsetdac, 2048);
        }
    }
}

struct CaptionRow {
    bool via_trigger;
    bool inverted;
    const char* caption;
};

TEST(Caption, IsTheEntryWithItsSuffixes) {
    const CaptionRow captions[] = {
        {false, false, "20mV"},
        {true, false, "20mV (VT)"},
        {false, true, "20mV (inv)"},
        {true, true, "20mV (VT) (inv)"},
    };
    for (const CaptionRow& row : captions) {
        for (const Channel channel : both_channels) {
            PanelRig rig;
            ChannelControls& controls = rig.panel.channel[channel];
            PanelRig::choose(controls.vdiv, "20mV");
            controls.invert.set_checked(row.inverted);
            controls.inviatr.set_checked(row.via_trigger);
            EXPECT_EQ(controls.vdivtext.caption(), row.caption);
            EXPECT_EQ(rig.channels[channel].vtsuffix, row.via_trigger ? " (VT)" : "");
            EXPECT_EQ(rig.channels[channel].invsuffix, row.inverted ? " (inv)" : "");
            EXPECT_EQ(rig.panel.channel[1 - channel].vdivtext.caption(), "");
            PanelRig::choose(controls.vdiv, "10mV");
            EXPECT_EQ(controls.vdivtext.caption(), "10mV" + std::string(row.caption).substr(4));
        }
    }
}

TEST(InputViaTrigger, FollowsItsBoxAtOnce) {
    for (const Channel channel : both_channels) {
        PanelRig rig;
        rig.channels[channel].pos = 0;
        PanelRig::choose(rig.panel.channel[channel].vdiv, "50mV");
        rig.panel.channel[channel].inviatr.set_checked(true);
        EXPECT_EQ(rig.channels[channel].vtfactor, 2.0);
        EXPECT_EQ(rig.channels[channel].offsetdac, 1448);
        EXPECT_DOUBLE_EQ(rig.channels[channel].pixpermv, 1.28);
        rig.panel.channel[channel].inviatr.set_checked(false);
        EXPECT_EQ(rig.channels[channel].vtfactor, 1.0);
        EXPECT_EQ(rig.channels[channel].offsetdac, 848);
        EXPECT_TRUE(rig.bridge.calls.empty());
    }
}

} // namespace
} // namespace kv408
