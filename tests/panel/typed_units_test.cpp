// What is typed into the boxes of the panel, with and without a unit.

#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

/// A sweeping panel with 1000 ps of delay for CH1.
struct TypingRig : StartedPanelRig {
    TypingRig() {
        trigger.settriger();
        adjust.restore_delay(ch1, "1000");
        acquisition.offset = {1000, 0};
        acquisition.acqrunning = true;
        acquisition.scopestate = "scopech1f";
        forget();
    }

    TextBox& delay = panel.channel[0].psofset;
};

struct TypedRow {
    const char* typed;
    const char* shown; ///< once the box is left
};

TEST(TypedDelayUnit, IsTakenAndTheBoxShowsPicoseconds) {
    const TypedRow rows[] = {
        {"7ns", "7000"},    {"1.5 NS", "1500"}, {"0.04us", "40000"},     {"320ps", "320"},
        {"70ns", "65535"},  {"1us", "65535"},   {"-3ns", "0"},           {"", "0"},
        {" 500 ", "500"},   {"12.5", "12"},     {"13.5ps", "14"},        {"0.0005ns", "0"},
        {"70000", "65535"}, {"-5", "0"},        {"2\xC2\xB5s", "65535"}, {"0.0015 ns", "2"}};
    for (const TypedRow& row : rows) {
        for (const bool by_enter : {true, false}) {
            TypingRig rig;
            rig.delay.focus();
            rig.delay.set_text(row.typed);
            EXPECT_FALSE(rig.delay.faulty()) << row.typed;
            by_enter ? rig.delay.enter() : rig.delay.leave();
            EXPECT_EQ(rig.delay.text(), row.shown) << row.typed;
            EXPECT_EQ(rig.channels[0].delay, std::stoi(row.shown)) << row.typed;
            EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(),
                      std::string(row.shown) == "0" ? ""
                                                    : "Delay:  " + std::string(row.shown) + "ps");
            EXPECT_EQ(rig.acquisition.scopestate, "changes") << row.typed;
        }
    }
}

TEST(TypedDelayUnit, ThatDoesNotFitIsMarkedAndNotTaken) {
    for (const char* typed : {"70ms", "70x", "ns", "1,5ns", "70 s", "abc", "7 ns ns"}) {
        for (const bool by_enter : {true, false}) {
            TypingRig rig;
            rig.delay.focus();
            rig.delay.set_text(typed);
            EXPECT_TRUE(rig.delay.faulty()) << typed;
            by_enter ? rig.delay.enter() : rig.delay.leave();
            EXPECT_EQ(rig.delay.text(), typed);
            EXPECT_TRUE(rig.delay.faulty()) << typed;
            EXPECT_EQ(rig.channels[0].delay, 1000) << typed;
            EXPECT_EQ(rig.channels[0].delaypts, 3) << typed; // 1000 / 312.5 = 3.2
            EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  1000ps") << typed;
            EXPECT_EQ(rig.acquisition.scopestate, "scopech1f") << typed;
        }
    }
}

TEST(TypedDelayUnit, TheMarkGoesWithTheNextTextThatCanBeTaken) {
    TypingRig rig;
    rig.panel.channel[0].slenps.set_checked(true);
    rig.delay.focus();
    rig.delay.set_text("70x");
    rig.delay.leave();
    EXPECT_EQ(rig.panel.slider1.Value(), 32767 - 1000) << "the wheel stands at the delay in use";
    rig.panel.slider1.turn(-1); // 64 ps
    EXPECT_EQ(rig.delay.text(), "1064");
    EXPECT_FALSE(rig.delay.faulty());
    rig.delay.set_text("7n");
    EXPECT_TRUE(rig.delay.faulty());
    rig.delay.set_text("7ns");
    EXPECT_FALSE(rig.delay.faulty());
}

TEST(TypedDelayUnit, OfWhatCannotBeTakenNothingStaysInTheInstrument) {
    TypingRig rig;
    rig.delay.set_text("7x");
    rig.acquisition.offset[0] = 7; // sent before the x
    rig.delay.leave();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TypedDelayUnit, ATimeBaseChosenMeanwhileKeepsTheDelayInUse) {
    TypingRig rig;
    rig.delay.set_text("70x");
    PanelRig::choose(rig.panel.seltimediv, "10ns/div");
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  1000ps");
    EXPECT_EQ(rig.channels[0].delaypts, 6); // 1000 / 156.25 = 6.4
    rig.delay.set_text("7ns");
    PanelRig::choose(rig.panel.seltimediv, "20ns/div");
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "Delay:  7000ps");
}

TEST(TypedTimeOut, IsShownAsTheInstrumentUsesIt) {
    const TypedRow rows[] = {{"2ms", "2000"},     {"2 MS", "2000"},   {"500us", "500"},
                             {"0.05ms", "50"},    {"5", "10"},        {"100000", "65535"},
                             {"1000ms", "65535"}, {"-4ms", "10"},     {"", "10"},
                             {"1000.5", "1000"},  {"1001.5", "1002"}, {"300\xC2\xB5s", "300"}};
    for (const TypedRow& row : rows) {
        for (const bool by_enter : {true, false}) {
            TypingRig rig;
            rig.panel.trtout.set_text(row.typed);
            EXPECT_FALSE(rig.panel.trtout.faulty()) << row.typed;
            by_enter ? rig.panel.trtout.enter() : rig.panel.trtout.leave();
            EXPECT_EQ(rig.panel.trtout.text(), row.shown) << row.typed;
            EXPECT_EQ(rig.acquisition.scopestate,
                      std::string(row.shown) == "1000" ? "scopech1f" : "changes");
            rig.forget();
            rig.trigger.settriger();
            const int sent = std::stoi(row.shown);
            EXPECT_EQ(rig.bridge.frames().at(1).at(2), sent / 256) << row.typed;
            EXPECT_EQ(rig.bridge.frames().at(1).at(3), sent % 256) << row.typed;
        }
    }
}

TEST(TypedTimeOut, ThatCannotBeTakenIsMarkedAndTheOneInUseStays) {
    for (const char* typed : {"2ns", "2s", "abc", "2x", "1,5ms"}) {
        TypingRig rig;
        rig.panel.trtout.set_text(typed);
        EXPECT_TRUE(rig.panel.trtout.faulty()) << typed;
        rig.panel.trtout.leave();
        EXPECT_EQ(rig.panel.trtout.text(), typed);
        EXPECT_TRUE(rig.panel.trtout.faulty()) << typed;
        EXPECT_EQ(rig.acquisition.scopestate, "scopech1f") << typed;
        rig.trigger.settriger();
        EXPECT_EQ(rig.bridge.frames().at(1).at(2), 3) << typed; // 1000 is 0x3e8
        EXPECT_EQ(rig.bridge.frames().at(1).at(3), 232) << typed;
    }
}

TEST(TypedTimeOut, OfWhatCannotBeTakenNothingStaysInTheInstrument) {
    TypingRig rig;
    rig.panel.trtout.set_text("2");
    rig.trigger.settriger(); // a set-up while it is being typed
    rig.panel.trtout.set_text("2x");
    rig.panel.trtout.leave();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TypedAdditionalDelay, TakesItsUnitAndShowsPicoseconds) {
    // 312.5 ps, the 313 of the table, are a column: the mark stands at column 0 for none.
    const std::tuple<const char*, const char*, int> rows[] = {
        {"-31.3ns", "-31300", 100},   {"-31300", "-31300", 100}, {"", "0", 0},
        {"-0.0313us", "-31300", 100}, {"5us", "5000000", 0},     {"-1us", "-1000000", 640},
        {"1e9us", "2147483647", 0}};
    for (const auto& [typed, shown, column] : rows) {
        TypingRig rig;
        rig.panel.delaytrttdis.set_text(typed);
        EXPECT_FALSE(rig.panel.delaytrttdis.faulty()) << typed;
        rig.panel.delaytrttdis.leave();
        EXPECT_EQ(rig.panel.delaytrttdis.text(), shown) << typed;
        EXPECT_EQ(rig.panel.ltp2.marked(), column) << typed;
    }
}

TEST(TypedAdditionalDelay, ThatCannotBeTakenIsMarkedAndMovesNothing) {
    TypingRig rig;
    rig.panel.delaytrttdis.set_text("-31.3ns");
    rig.panel.delaytrttdis.leave();
    rig.panel.delaytrttdis.set_text("-62x");
    EXPECT_TRUE(rig.panel.delaytrttdis.faulty());
    rig.panel.delaytrttdis.leave();
    EXPECT_EQ(rig.panel.delaytrttdis.text(), "-62x");
    EXPECT_EQ(rig.panel.ltp2.marked(), 100);
}

} // namespace
} // namespace kv408
