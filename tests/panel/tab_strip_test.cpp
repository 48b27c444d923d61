#include <gtest/gtest.h>

#include "panel/controls.h"

namespace kv408 {
namespace {

/// A strip with one tab a key, the tab at `selected` chosen.
struct Strip {
    explicit Strip(const std::vector<std::string>& keys, int selected = 1) {
        for (const std::string& key : keys) {
            strip.add({key, "caption " + key});
        }
        if (selected != strip.selected()) {
            strip.select(selected);
        }
        strip.on_click([this] { ++clicks; });
        listening = strip.on_shown([this] { ++shown; });
    }

    TabStrip strip{"TabStrip2"};
    int clicks = 0;
    int shown = 0;
    Listening listening;
};

TEST(TabStrip, IsEmptyAtFirst) {
    const TabStrip strip("TabStrip2");
    EXPECT_TRUE(strip.tabs().empty());
    EXPECT_EQ(strip.selected(), 0);
    EXPECT_EQ(strip.selected_key(), "");
}

TEST(TabStrip, AddsAtTheEndAndSelectsTheFirstTabOnly) {
    Strip rig({}, 0);
    rig.strip.add({"CH1", "one"});
    EXPECT_EQ(rig.strip.selected_key(), "CH1");
    rig.strip.add({"CH2", "two"});
    EXPECT_EQ(rig.strip.tabs(), (std::vector<Tab>{{"CH1", "one"}, {"CH2", "two"}}));
    EXPECT_EQ(rig.strip.selected(), 1);
    EXPECT_EQ(rig.clicks, 0);
    EXPECT_EQ(rig.shown, 2);
}

TEST(TabStrip, SelectingRunsTheHandlerAlsoForTheSameTab) {
    Strip rig({"A", "B"});
    rig.strip.select(2);
    EXPECT_EQ(rig.strip.selected_key(), "B");
    rig.strip.select(2);
    EXPECT_EQ(rig.clicks, 2);
    EXPECT_EQ(rig.shown, 2);
}

struct RemovalRow {
    int selected;
    int removed;
    int selected_then;
    const char* key_then;
};

TEST(TabStrip, RemovalKeepsTheSelectionOrGivesItToANeighbour) {
    const RemovalRow rows[] = {
        {1, 1, 1, "B"},                 // the right neighbour
        {2, 2, 2, "C"}, {3, 3, 2, "B"}, // the last one: the left neighbour
        {1, 3, 1, "A"}, {3, 1, 2, "C"}, {2, 1, 1, "B"}, {2, 3, 2, "B"},
    };
    for (const RemovalRow& row : rows) {
        Strip rig({"A", "B", "C"}, row.selected);
        rig.strip.remove(row.removed);
        EXPECT_EQ(rig.strip.tabs().size(), 2U);
        EXPECT_EQ(rig.strip.selected(), row.selected_then) << row.selected << " " << row.removed;
        EXPECT_EQ(rig.strip.selected_key(), row.key_then) << row.selected << " " << row.removed;
        EXPECT_EQ(rig.clicks, 0);
        EXPECT_EQ(rig.shown, 1);
    }
}

TEST(TabStrip, RemovingTheOnlyTabLeavesNothingSelected) {
    Strip rig({"A"});
    rig.strip.remove(1);
    EXPECT_EQ(rig.strip.selected(), 0);
    EXPECT_EQ(rig.strip.selected_key(), "");
    rig.strip.add({"B", ""});
    EXPECT_EQ(rig.strip.selected_key(), "B");
}

struct LookUpRow {
    std::vector<std::string> keys;
    const char* key;
    bool lacking;
    int position; ///< 77 where it stays as it was
};

TEST(HasNoTab, ComparesKeysExactlyFromTheFirstOn) {
    const LookUpRow rows[] = {
        {{}, "HPOS", true, 77},
        {{"CH1", "CH2", "TRIG"}, "HPOS", true, 77},
        {{"CH1", "CH2", "TRIG", "HPOS"}, "HPOS", false, 4},
        {{"HPOS", "CH1"}, "HPOS", false, 1},
        {{"A", "HPOS", "HPOS"}, "HPOS", false, 2},
        {{"hpos", "HPOS ", "HPO"}, "HPOS", true, 77},
        {{"A", ""}, "", false, 2},
    };
    for (const LookUpRow& row : rows) {
        const Strip rig(row.keys, row.keys.empty() ? 0 : 1);
        int position = 77;
        EXPECT_EQ(hasnotab(rig.strip, row.key, position), row.lacking) << row.key;
        EXPECT_EQ(position, row.position) << row.key;
    }
}

TEST(HasNoTab, LooksAtKeysAndNotAtCaptions) {
    TabStrip strip("TabStrip2");
    strip.add({"X", "HPOS"});
    int position = 0;
    EXPECT_TRUE(hasnotab(strip, "HPOS", position));
}

} // namespace
} // namespace kv408
