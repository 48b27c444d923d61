#include <gtest/gtest.h>

#include "state/plot_geometry.h"
#include "support/panel_rig.h"

namespace kv408 {
namespace {

TEST(Invert, SetsTheSuffixAndShowsItsTraceMappedAnew) {
    const std::string mapped[] = {"refresh 1 0", "refresh 2 0"};
    for (const Channel channel : both_channels) {
        PanelRig rig;
        ChannelControls& controls = rig.panel.channel[channel];
        PanelRig::choose(controls.vdiv, "10mV");
        rig.forget();
        controls.invert.set_checked(true);
        EXPECT_EQ(rig.channels[channel].invsuffix, " (inv)");
        EXPECT_EQ(controls.vdivtext.caption(), "10mV (inv)");
        EXPECT_TRUE(rig.screen.shows(mapped[channel]));
        EXPECT_FALSE(rig.screen.shows(mapped[other(channel)])) << "its history stays";
        controls.invert.set_checked(false);
        EXPECT_EQ(rig.channels[channel].invsuffix, "");
        EXPECT_EQ(controls.vdivtext.caption(), "10mV");
        EXPECT_TRUE(rig.bridge.calls.empty());
    }
}

TEST(Enable, ShowsOrHidesMarkerAndLabelAndDrawsEverything) {
    for (const Channel channel : both_channels) {
        PanelRig rig;
        ChannelControls& controls = rig.panel.channel[channel];
        const ChannelControls& untouched = rig.panel.channel[other(channel)];
        for (const bool enabled : {false, true}) {
            rig.forget();
            controls.enable.set_checked(enabled);
            EXPECT_EQ(controls.text.visible(), enabled);
            EXPECT_EQ(controls.vdivtext.visible(), enabled);
            EXPECT_TRUE(untouched.text.visible());
            EXPECT_TRUE(untouched.vdivtext.visible());
            EXPECT_TRUE(rig.screen.shows_both_traces_anew());
            EXPECT_TRUE(rig.bridge.calls.empty());
        }
    }
}

TEST(Marker, MarksTheZeroLine) {
    const std::int16_t rows[] = {0, 1, 256, 512};
    for (const Channel channel : both_channels) {
        PanelRig rig;
        for (const std::int16_t row : rows) {
            rig.channels[channel].pos = row;
            rig.vertical.place_marker(channel);
            const MarkerLabel& marker = rig.panel.channel[channel].text;
            EXPECT_EQ(marker.marked(), row);
        }
        EXPECT_FALSE(rig.panel.channel[1 - channel].text.marked().has_value());
    }
}

TEST(Display, TheGridBoxRedrawsTheGridAndThenEverything) {
    PanelRig rig;
    rig.panel.gridenable.set_checked(false);
    EXPECT_TRUE(rig.screen.shows("makegrid"));
}

TEST(Display, DotsAndPersistenceAreShownAtOnce) {
    PanelRig rig;
    rig.panel.eyeon.set_checked(true);
    EXPECT_EQ(rig.screen.calls, Texts{"draw 255"});
    rig.panel.persist.set_checked(true);
    EXPECT_EQ(rig.screen.calls, (Texts{"draw 255", "draw 255"}));
}

TEST(Averaging, ItsLabelFollowsTheBox) {
    PanelRig rig;
    rig.panel.average.set_checked(true);
    EXPECT_TRUE(rig.panel.avglabel.visible());
    rig.panel.average.set_checked(false);
    EXPECT_FALSE(rig.panel.avglabel.visible());
}

TEST(Averaging, WhileRunningTheNextSetUpIsAskedFor) {
    PanelRig rig;
    rig.acquisition.scopestate = "stoped";
    rig.panel.average.set_checked(true);
    EXPECT_EQ(rig.acquisition.scopestate, "stoped");
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.panel.average.set_checked(false);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_TRUE(rig.bridge.frames().empty());
}

} // namespace
} // namespace kv408
