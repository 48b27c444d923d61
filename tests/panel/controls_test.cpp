#include "panel/controls.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

using Texts = std::vector<std::string>;

TEST(Control, StartsEnabledVisibleAndInTheDesktopsColours) {
    const Label label("lblDate");
    EXPECT_EQ(label.name(), "lblDate");
    EXPECT_TRUE(label.enabled());
    EXPECT_TRUE(label.visible());
    EXPECT_EQ(label.fore_colour(), std::nullopt);
    EXPECT_EQ(label.back_colour(), std::nullopt);
}

TEST(Control, TellsTheListenerAfterEveryVisibleChange) {
    Label label("x");
    Texts seen;
    const Listening listening = label.on_shown([&] {
        seen.push_back(label.caption() + (label.enabled() ? " on" : " off") +
                       (label.visible() ? " seen" : " hidden"));
    });
    label.set_caption("a");
    label.set_enabled(false);
    label.set_visible(false);
    EXPECT_EQ(seen, (Texts{"a on seen", "a off seen", "a off hidden"}));
    label.set_fore_colour(rgb(1, 2, 3));
    label.set_back_colour(rgb(4, 5, 6));
    EXPECT_EQ(seen.size(), 5U);
    EXPECT_EQ(label.fore_colour(), rgb(1, 2, 3));
    EXPECT_EQ(label.back_colour(), rgb(4, 5, 6));
}

TEST(MarkerLabel, MovesAndComesToTheFront) {
    MarkerLabel marker("ch1text");
    int told = 0;
    const Listening listening = marker.on_shown([&] { ++told; });
    EXPECT_FALSE(marker.marked().has_value());
    marker.mark(256);
    marker.mark(256);
    EXPECT_EQ(told, 1) << "only where it moves";
    EXPECT_EQ(marker.marked(), 256);
    marker.bring_to_front();
    EXPECT_EQ(marker.times_brought_to_front(), 1);
    EXPECT_EQ(told, 2);
}

TEST(Control, TellsEachListenerAsLongAsItListens) {
    Label label("x");
    Texts seen;
    const Listening first = label.on_shown([&] { seen.push_back("1 " + label.caption()); });
    Listening second = label.on_shown([&] { seen.push_back("2 " + label.caption()); });
    label.set_caption("a");
    second.reset();
    label.set_caption("b");
    const Listening third = label.on_shown([&] { seen.push_back("3 " + label.caption()); });
    label.set_caption("c");
    EXPECT_EQ(seen, (Texts{"1 a", "2 a", "1 b", "1 c", "3 c"}));
}

TEST(Control, StandsInTheListOfItsPanelAsWhatItIs) {
    ControlList all;
    ListBox list(all, {"cmbMeas(0)", 34, "cmbmeas(0)"});
    Label label(all, "trlevelmv", "mV");
    CheckBox box(all, {"eyeon", 28});
    ASSERT_EQ(all, (ControlList{&list, &label, &box}));
    EXPECT_EQ(std::get<ListBox*>(all[0]->kind()), &list);
    EXPECT_EQ(std::get<Label*>(all[1]->kind()), &label);
    EXPECT_EQ(list.key(), "cmbmeas(0)");
    EXPECT_EQ(box.key(), "eyeon");
    EXPECT_EQ(label.about().unit, "mV");
    EXPECT_EQ(label.about().outside, Outside::read);
    EXPECT_EQ(box.about().outside, Outside::set);
}

TEST(Button, RunsItsHandlerOnEachClick) {
    Button button("cmdstop");
    button.click();
    int clicks = 0;
    button.on_click([&] { ++clicks; });
    button.click();
    button.click();
    EXPECT_EQ(clicks, 2);
    button.set_caption("Stop");
    EXPECT_EQ(button.caption(), "Stop");
    EXPECT_EQ(clicks, 2);
}

TEST(OptionButton, ChoosingRunsTheHandlerAndClearingDoesNot) {
    OptionButton option("optColor(0)");
    option.set_caption("CH1 trace");
    EXPECT_EQ(option.caption(), "CH1 trace");
    EXPECT_FALSE(option.checked());
    std::vector<bool> seen;
    option.on_click([&] { seen.push_back(option.checked()); });
    option.choose();
    option.choose();
    EXPECT_TRUE(option.checked());
    option.clear();
    EXPECT_FALSE(option.checked());
    EXPECT_EQ(seen, (std::vector<bool>{true, true}));
}

TEST(CheckBox, PuttingItRunsNoHandlerButIsShown) {
    CheckBox box("chkMeasAnno(0)");
    int shown = 0;
    box.on_click([] { FAIL(); });
    const Listening listening = box.on_shown([&shown] { ++shown; });
    box.put_checked(true);
    EXPECT_TRUE(box.checked());
    EXPECT_EQ(shown, 1);
}

TEST(CheckBox, SettingItFromCodeRunsTheHandlerAlsoWithTheSameValue) {
    CheckBox box("invert1");
    EXPECT_FALSE(box.checked());
    box.set_checked(true);
    EXPECT_TRUE(box.checked());
    std::vector<bool> seen;
    box.on_click([&] { seen.push_back(box.checked()); });
    box.set_checked(true);
    box.set_checked(false);
    box.set_checked(false);
    EXPECT_EQ(seen, (std::vector<bool>{true, false, false}));
}

TEST(ListBox, SelectingFromCodeRunsTheHandlerAlsoWithTheSameEntry) {
    ListBox list("ch1vdiv");
    EXPECT_EQ(list.index(), -1);
    EXPECT_EQ(list.text(), "");
    list.set_entries({"0.5V", "0.2V"});
    Texts seen;
    list.on_click([&] { seen.push_back(std::to_string(list.index()) + list.text()); });
    list.set_index(1);
    list.set_index(1);
    list.set_index(0);
    list.set_index(-1);
    EXPECT_EQ(seen, (Texts{"10.2V", "10.2V", "00.5V", "-1"}));
}

TEST(ListBox, NewEntriesLeaveNothingSelectedAndRunNoHandler) {
    ListBox list("ch1vdiv");
    list.set_entries({"a", "b"});
    list.set_index(1);
    int runs = 0;
    list.on_click([&] { ++runs; });
    list.set_entries({"c"});
    EXPECT_EQ(list.index(), -1);
    EXPECT_EQ(list.text(), "");
    EXPECT_EQ(list.entries(), Texts{"c"});
    EXPECT_EQ(runs, 0);
}

TEST(ListBox, KnowsItsIndices) {
    ListBox list("x");
    EXPECT_TRUE(list.has_index(-1));
    EXPECT_FALSE(list.has_index(0));
    list.set_entries({"a", "b"});
    EXPECT_TRUE(list.has_index(0));
    EXPECT_TRUE(list.has_index(1));
    EXPECT_FALSE(list.has_index(2));
    EXPECT_FALSE(list.has_index(-2));
}

TEST(TextBox, RunsTheHandlerOfEachEvent) {
    TextBox box("psofsetch1");
    box.enter();
    box.focus();
    box.leave();
    Texts seen;
    box.on_change([&] { seen.push_back("change " + box.text()); });
    box.on_enter([&] { seen.push_back("enter " + box.text()); });
    box.on_focus([&] { seen.emplace_back("focus"); });
    box.on_leave([&] { seen.emplace_back("leave"); });
    box.focus();
    box.set_text("120");
    box.set_text("120");
    box.enter();
    box.leave();
    EXPECT_EQ(seen, (Texts{"focus", "change 120", "change 120", "enter 120", "leave"}));
}

TEST(TextBox, TheListenerIsToldBeforeTheHandler) {
    TextBox box("x");
    Texts seen;
    const Listening listening = box.on_shown([&] { seen.emplace_back("shown"); });
    box.on_change([&] { seen.emplace_back("handled"); });
    box.set_text("a");
    EXPECT_EQ(seen, (Texts{"shown", "handled"}));
}

TEST(Slider, HoldsItsValueWithinItsRangeAndRunsTheHandler) {
    Slider slider("shyst", 0, 255, 10);
    EXPECT_EQ(slider.minimum(), 0);
    EXPECT_EQ(slider.maximum(), 255);
    EXPECT_EQ(slider.value(), 10);
    std::vector<int> seen;
    slider.on_change([&] { seen.push_back(slider.value()); });
    for (const int value : {0, 255, 256, -1, 100000, -100000, 10, 10}) {
        slider.set_value(value);
    }
    EXPECT_EQ(seen, (std::vector<int>{0, 255, 255, 0, 255, 0, 10, 10}));
}

TEST(Slider, MayLieWhollyBelowZero) {
    Slider slider("x", -32768, -1, -1);
    slider.set_value(0);
    EXPECT_EQ(slider.value(), -1);
    slider.set_value(-40000);
    EXPECT_EQ(slider.value(), -32768);
}

TEST(CheckBox, OnlyTheUsersPressingRunsItsMouseDownHandler) {
    CheckBox box("box");
    std::vector<std::string> calls;
    box.on_click([&] { calls.emplace_back(box.checked() ? "click on" : "click off"); });
    box.on_mouse_down([&] { calls.emplace_back(box.checked() ? "down on" : "down off"); });
    box.set_checked(true);
    EXPECT_EQ(calls, (std::vector<std::string>{"click on"}));
    box.press(false);
    EXPECT_EQ(calls, (std::vector<std::string>{"click on", "click off", "down off"}));
    box.press(true);
    EXPECT_EQ(calls.back(), "down on");
}

TEST(TextBoxControl, CanBeMarkedAsOneThatCannotBeTaken) {
    TextBox box("box");
    int shown = 0;
    const Listening listening = box.on_shown([&] { ++shown; });
    EXPECT_FALSE(box.faulty());
    box.set_faulty(true);
    EXPECT_TRUE(box.faulty());
    box.set_faulty(true);
    EXPECT_EQ(shown, 1);
    box.set_faulty(false);
    EXPECT_EQ(shown, 2);
}

} // namespace
} // namespace kv408
