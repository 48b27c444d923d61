#include "panel/time_base.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/panel_rig.h"
#include "support/time_base_lines.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

TEST(TimeBase, TheListRunsFromSlowestToFastest) {
    PanelRig rig;
    const auto& entries = rig.panel.seltimediv.entries();
    ASSERT_EQ(entries.size(), 21U);
    EXPECT_EQ(rig.panel.seltimediv.index(), -1);
    for (const TimeBaseLine& row : time_base_lines) {
        EXPECT_EQ(entries[static_cast<std::size_t>(row.index)], row.text);
    }
}

TEST(TimeBase, EachEntrySetsItsFourValues) {
    for (const TimeBaseLine& row : time_base_lines) {
        PanelRig rig;
        rig.acquisition.pointmode = !row.pointmode;
        rig.panel.seltimediv.set_index(row.index);
        EXPECT_EQ(rig.time_base_state.tbresolution, row.tbresolution) << row.text;
        EXPECT_DOUBLE_EQ(rig.time_base_state.samplerate, row.samplerate) << row.text;
        EXPECT_EQ(rig.time_base_state.hstretch, row.hstretch) << row.text;
        EXPECT_EQ(rig.acquisition.pointmode, row.pointmode) << row.text;
        EXPECT_TRUE(rig.boxes.shown.empty()) << row.text;
    }
}

TEST(TimeBase, TheLabelShowsTheShortTextAndThenTheFullOne) {
    for (const TimeBaseLine& row : time_base_lines) {
        PanelRig rig;
        Texts seen;
        const Listening listening =
            rig.panel.tdivtext.on_shown([&] { seen.push_back(rig.panel.tdivtext.caption()); });
        rig.panel.seltimediv.set_index(row.index);
        EXPECT_EQ(seen, (Texts{std::string(row.short_label), std::string(row.text)}));
    }
}

TEST(TimeBase, NothingIsSentToTheInstrument) {
    PanelRig rig;
    for (const TimeBaseLine& row : time_base_lines) {
        rig.panel.seltimediv.set_index(row.index);
    }
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_EQ(rig.clock.now(), milliseconds(0));
}

TEST(TimeBase, BothTracesAreRemapped) {
    PanelRig rig;
    rig.panel.seltimediv.set_index(11);
    EXPECT_THAT(rig.screen.calls, testing::UnorderedElementsAre("refresh 1 0", "refresh 2 0"));
}

TEST(TimeBase, WhileStoppedTheStateWordStays) {
    for (const char* word : {"stoped", "idle", "startscope"}) {
        PanelRig rig;
        rig.acquisition.scopestate = word;
        rig.panel.seltimediv.set_index(11);
        EXPECT_EQ(rig.acquisition.scopestate, word);
    }
}

TEST(TimeBase, WhileRunningTheSetUpIsMarkedChangedBeforeTheWait) {
    PanelRig rig;
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.acquisition.laststate = "scopech1f";
    rig.acquisition.ready = {true, true};
    rig.bridge.receive({1, 2, 3});
    rig.bridge.on_check = [&](std::uint32_t&) {
        EXPECT_EQ(rig.acquisition.scopestate, "changes");
        EXPECT_EQ(rig.panel.tdivtext.caption(), "");
    };
    rig.panel.seltimediv.set_index(13);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_CheckRXQueue @100", "SI_CheckRXQueue @200"}));
    EXPECT_EQ(rig.time_base_state.tbresolution, 79);
    // Only the vertical controls write these.
    EXPECT_EQ(rig.acquisition.laststate, "scopech1f");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, true}));
}

TEST(TimeBase, ATextThatMatchesNoEntryIsToldAndTheRestStillRuns) {
    for (const char* text : {"25ps", "20NS/div", " 20ns/div", "1ms/div", ""}) {
        PanelRig rig;
        rig.panel.seltimediv.set_index(13);
        rig.acquisition.acqrunning = true;
        rig.panel.channel[0].psofset.set_text("120");
        rig.panel.channel[0].psofset.set_enabled(false);
        rig.forget();
        rig.panel.seltimediv.set_entries({text});
        rig.panel.seltimediv.set_index(0);
        EXPECT_EQ(rig.boxes.texts(), Texts{"Invalid time base!"}) << text;
        EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::ok);
        EXPECT_EQ(rig.time_base_state.tbresolution, 79);
        EXPECT_DOUBLE_EQ(rig.time_base_state.samplerate, 12.8e9);
        EXPECT_EQ(rig.time_base_state.hstretch, 1.0112);
        EXPECT_FALSE(rig.acquisition.pointmode);
        EXPECT_EQ(rig.panel.tdivtext.caption(), text);
        EXPECT_TRUE(rig.panel.channel[0].psofset.enabled());
        EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  120ps");
        EXPECT_EQ(rig.acquisition.scopestate, "changes");
        EXPECT_THAT(rig.screen.calls, testing::UnorderedElementsAre("refresh 1 0", "refresh 2 0"));
    }
}

TEST(TimeBase, NoSelectionIsNoTimeBase) {
    PanelRig rig;
    rig.panel.seltimediv.set_index(-1);
    EXPECT_EQ(rig.boxes.texts(), Texts{"Invalid time base!"});
}

TEST(TimeBase, ANonMatchInPointModeKeepsTheHorizontalPositionAway) {
    PanelRig rig;
    rig.panel.seltimediv.set_index(7);
    rig.panel.seltimediv.set_entries({"?"});
    rig.panel.seltimediv.set_index(0);
    EXPECT_TRUE(rig.acquisition.pointmode);
    EXPECT_EQ(rig.panel.tabstrip2.tabs().size(), 3U);
    EXPECT_FALSE(rig.panel.channel[0].psofset.enabled());
}

} // namespace
} // namespace kv408
