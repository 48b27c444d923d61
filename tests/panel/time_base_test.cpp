#include "panel/time_base.h"

#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

struct TimeBaseRow {
    int index;
    const char* text;
    const char* short_label;
    double tbresolution;
    double samplerate;
    double hstretch;
    bool pointmode;
};

constexpr TimeBaseRow time_base_rows[] = {
    {20, "25ps/div", "25ps", 1, 2560e9, 2.56, false},
    {19, "50ps/div", "50ps", 1, 1280e9, 1.28, false},
    {18, "100ps/div", "100ps", 2, 640e9, 1.28, false},
    {17, "200ps/div", "200ps", 4, 320e9, 1.28, false},
    {16, "500ps/div", "500ps", 8, 128e9, 1.024, false},
    {15, "1ns/div", "1ns", 16, 64e9, 1.024, false},
    {14, "2ns/div", "2ns", 32, 32e9, 1.024, false},
    {13, "5ns/div", "5ns", 79, 12.8e9, 1.0112, false},
    {12, "10ns/div", "10ns", 157, 6.4e9, 1.0048, false},
    {11, "20ns/div", "20ns", 313, 3.2e9, 1.0016, false},
    {10, "50ns/div", "50ns", 781, 1.28e9, 1.00032010243278, false},
    {9, "100ns/div", "100ns", 1562, 0.64e9, 1.0, false},
    {8, "200ns/div", "200ns", 3125, 0.32e9, 1.0, false},
    {7, "500ns/div", "500ns", 7812, 128e6, 1.0, true},
    {6, "1us/div", "1us", 15625, 64e6, 1.0, true},
    {5, "2us/div", "2us", 31250, 32e6, 1.0, true},
    {4, "5us/div", "5us", 78125, 12.8e6, 1.0, true},
    {3, "10us/div", "10us", 156250, 6.4e6, 1.0, true},
    {2, "20us/div", "20us", 312500, 3.2e6, 1.0, true},
    {1, "50us/div", "50us", 780125, 1.28e6, 1.0, true},
    {0, "100us/div", "100us", 1562500, 0.64e6, 1.0, true},
};

TEST(TimeBase, TheListRunsFromSlowestToFastest) {
    PanelRig rig;
    const auto& entries = rig.panel.seltimediv.entries();
    ASSERT_EQ(entries.size(), 21U);
    EXPECT_EQ(rig.panel.seltimediv.index(), -1);
    for (const TimeBaseRow& row : time_base_rows) {
        EXPECT_EQ(entries[static_cast<std::size_t>(row.index)], row.text);
    }
}

TEST(TimeBase, EachEntrySetsItsFourValues) {
    for (const TimeBaseRow& row : time_base_rows) {
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
    for (const TimeBaseRow& row : time_base_rows) {
        PanelRig rig;
        Texts seen;
        const Listening listening =
            rig.panel.tdivtext.on_shown([&] { seen.push_back(rig.panel.tdivtext.caption()); });
        rig.panel.seltimediv.set_index(row.index);
        EXPECT_EQ(seen, (Texts{row.short_label, row.text}));
    }
}

TEST(TimeBase, NothingIsSentToTheInstrument) {
    PanelRig rig;
    for (const TimeBaseRow& row : time_base_rows) {
        rig.panel.seltimediv.set_index(row.index);
    }
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_EQ(rig.clock.now(), milliseconds(0));
}

TEST(TimeBase, BothTracesAreRemapped) {
    PanelRig rig;
    rig.panel.seltimediv.set_index(11);
    EXPECT_EQ(rig.screen.calls, (Texts{"refresh 1 0", "refresh 2 0"}));
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
        EXPECT_EQ(rig.screen.calls, (Texts{"refresh 1 0", "refresh 2 0"}));
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
