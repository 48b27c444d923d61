#pragma once

// The controls of the front panel as plain values with their handlers. The window binds to them
// both ways; setting one from code runs its handler just as a click does, so that everything the
// panel does can be had without a window.
//
// How to add a control: 1. give it a member in FrontPanel (panel/front_panel.h), with what there is
// to know about it; 2. set its handler in the constructor of the part that does what it is for;
// 3. place and bind a widget in src/ui.

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "panel/control.h"

namespace kv408 {

/// A handler of a control; without one a control only keeps its value.
using Handler = std::function<void()>;

/// A push button or menu entry.
class Button : public Control {
public:
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// The caption on it.
    [[nodiscard]] const std::string& caption() const { return caption_; }
    void set_caption(std::string caption) { show(caption_, std::move(caption)); }

    /// Sets what a click does.
    void on_click(Handler handler) { handler_ = std::move(handler); }

    /// Presses it.
    void click() {
        if (handler_) {
            handler_();
        }
    }

private:
    std::string caption_;
    Handler handler_;
};

/// A check box, checked or not.
class CheckBox : public Control {
public:
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// True when checked.
    [[nodiscard]] bool checked() const { return checked_; }

    /// Checks or unchecks it and runs the handler, also when nothing changes.
    void set_checked(bool checked) {
        checked_ = checked;
        shown();
        if (handler_) {
            handler_();
        }
    }

    /// Checks or unchecks it without a click: no handler runs.
    void put_checked(bool checked) { show(checked_, checked); }

    /// Sets what a click does, after the box has its new value.
    void on_click(Handler handler) { handler_ = std::move(handler); }

    /// Sets what only the user's pressing does, after the click's handler, and does it: setting the
    /// box from code does not run it.
    void on_mouse_down(Handler handler) { mouse_down_ = std::move(handler); }

    void mouse_down() {
        if (mouse_down_) {
            mouse_down_();
        }
    }

    /// The user presses it, which leaves it checked or unchecked.
    void press(bool checked) {
        set_checked(checked);
        mouse_down();
    }

private:
    bool checked_ = false;
    Handler handler_;
    Handler mouse_down_;
};

/// One of several options, of which exactly one is chosen. Whoever owns them clears the others.
class OptionButton : public Control {
public:
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// The caption beside it.
    [[nodiscard]] const std::string& caption() const { return caption_; }
    void set_caption(std::string caption) { show(caption_, std::move(caption)); }

    /// True when it is the chosen one.
    [[nodiscard]] bool checked() const { return checked_; }

    /// Chooses it and runs the handler, also when nothing changes.
    void choose() {
        show(checked_, true);
        if (handler_) {
            handler_();
        }
    }

    /// Takes the choice from it; no handler runs.
    void clear() { show(checked_, false); }

    /// Sets what a click does, after the option has been chosen.
    void on_click(Handler handler) { handler_ = std::move(handler); }

private:
    std::string caption_;
    bool checked_ = false;
    Handler handler_;
};

/// A drop-down list of texts.
class ListBox : public Control {
public:
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// The entries, index 0 first.
    [[nodiscard]] const std::vector<std::string>& entries() const { return entries_; }

    /// Replaces the entries; nothing is selected afterwards and no handler runs.
    void set_entries(std::vector<std::string> entries) {
        entries_ = std::move(entries);
        index_ = -1;
        shown();
    }

    /// The selected entry's index; -1 when none is.
    [[nodiscard]] int index() const { return index_; }

    /// True when `index` is an entry's index, or -1 for no selection.
    [[nodiscard]] bool has_index(int index) const {
        return index >= -1 && index < static_cast<int>(entries_.size());
    }

    /// Selects entry `index` (-1: none) and runs the handler, also when nothing changes. An index
    /// outside the list is a programming error.
    void set_index(int index) {
        assert(has_index(index));
        index_ = index;
        shown();
        if (handler_) {
            handler_();
        }
    }

    /// The selected entry's text; empty when none is selected.
    [[nodiscard]] std::string text() const {
        return index_ < 0 ? std::string() : entries_[static_cast<std::size_t>(index_)];
    }

    /// Sets what a choice does, after the list has its new selection.
    void on_click(Handler handler) { handler_ = std::move(handler); }

private:
    std::vector<std::string> entries_;
    int index_ = -1;
    Handler handler_;
};

/// A box that the user types one line of text into, or that only shows one.
class TextBox : public Control {
public:
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// The text in it.
    [[nodiscard]] const std::string& text() const { return text_; }

    /// Replaces the text and runs the change handler.
    void set_text(std::string text) {
        text_ = std::move(text);
        shown();
        if (change_) {
            change_();
        }
    }

    /// Whether the text is marked as one that cannot be taken.
    [[nodiscard]] bool faulty() const { return faulty_; }
    void set_faulty(bool faulty) { show(faulty_, faulty); }

    /// Sets what a change of the text does.
    void on_change(Handler handler) { change_ = std::move(handler); }

    /// Sets what the Enter key does, and presses it.
    void on_enter(Handler handler) { enter_ = std::move(handler); }
    void enter() {
        if (enter_) {
            enter_();
        }
    }

    /// Sets what gaining the keyboard focus does, and gives it.
    void on_focus(Handler handler) { focus_ = std::move(handler); }
    void focus() {
        if (focus_) {
            focus_();
        }
    }

    /// Sets what leaving it does, and leaves it.
    void on_leave(Handler handler) { leave_ = std::move(handler); }
    void leave() {
        if (leave_) {
            leave_();
        }
    }

private:
    std::string text_;
    bool faulty_ = false;
    Handler change_;
    Handler enter_;
    Handler focus_;
    Handler leave_;
};

/// A text that the program shows.
class Label : public Control {
public:
    explicit Label(std::string name) : Control(std::move(name)) {}

    /// A label of `list` named `name`, which shows a number in `unit`.
    Label(ControlList& list, std::string name, std::string_view unit = {})
        : Control(list, {.name = std::move(name), .outside = Outside::read, .unit = unit}) {}

    [[nodiscard]] AnyControl kind() override { return this; }

    /// The text on it.
    [[nodiscard]] const std::string& caption() const { return caption_; }
    void set_caption(std::string caption) { show(caption_, std::move(caption)); }

private:
    std::string caption_;
};

/// A text beside the plot that moves along it.
class MarkerLabel : public Label {
public:
    using Label::Label;

    /// What it marks, in units of the plot: a row, and a column of a marker above the plot; nothing
    /// before it has first been given a place.
    [[nodiscard]] std::optional<int> marked() const { return marked_; }
    void mark(int unit) {
        if (marked_ != unit) {
            marked_ = unit;
            shown();
        }
    }

    /// Lays it over the markers that share its place.
    void bring_to_front() {
        ++times_brought_;
        shown();
    }

    /// How often it was brought to the front, 0..
    [[nodiscard]] int times_brought_to_front() const { return times_brought_; }

private:
    std::optional<int> marked_;
    int times_brought_ = 0;
};

/// A slider over a range of whole numbers.
class Slider : public Control {
public:
    /// A slider named `name` over `minimum`..`maximum`, standing at `value`.
    Slider(std::string name, int minimum, int maximum, int value)
        : Control(std::move(name)), minimum_(minimum), maximum_(maximum), value_(value) {
        assert(minimum <= value && value <= maximum);
    }
    Slider(ControlList& list, About about, int minimum, int maximum, int value)
        : Control(list, std::move(about)), minimum_(minimum), maximum_(maximum), value_(value) {
        assert(minimum <= value && value <= maximum);
    }

    [[nodiscard]] AnyControl kind() override { return this; }

    [[nodiscard]] int minimum() const { return minimum_; }
    [[nodiscard]] int maximum() const { return maximum_; }
    [[nodiscard]] int value() const { return value_; }

    /// Moves it to `value`, held within the range, and runs the handler.
    void set_value(int value) {
        value_ = std::clamp(value, minimum_, maximum_);
        shown();
        if (handler_) {
            handler_();
        }
    }

    /// Sets what a movement does, after the slider has its new value.
    void on_change(Handler handler) { handler_ = std::move(handler); }

private:
    int minimum_;
    int maximum_;
    int value_;
    Handler handler_;
};

/// The name of control `index` of the array `name`, as "cmbMeas(0)".
[[nodiscard]] inline std::string indexed(std::string name, std::size_t index) {
    name += '(';
    name += std::to_string(index);
    name += ')';
    return name;
}

/// A control array, "`name`(0)" and so on, added to `list`.
template <typename Kind, std::size_t count>
[[nodiscard]] std::array<Kind, count> numbered(ControlList& list, const std::string& name) {
    return [&]<std::size_t... index>(std::index_sequence<index...>) {
        return std::array<Kind, count>{Kind(list, {indexed(name, index)})...};
    }
    (std::make_index_sequence<count>{});
}

/// One tab of a strip.
struct Tab {
    std::string key;     ///< what the program knows it by
    std::string caption; ///< what the user reads

    friend bool operator==(const Tab&, const Tab&) = default;
};

/// A strip of tabs, one of them selected. Positions count from 1.
class TabStrip : public Control {
public:
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// The tabs from left to right.
    [[nodiscard]] const std::vector<Tab>& tabs() const { return tabs_; }

    /// Adds a tab at the end; the first tab added is selected. No handler runs.
    void add(Tab tab) {
        tabs_.push_back(std::move(tab));
        selected_ = std::max(selected_, 1);
        shown();
    }

    /// Removes the tab at `position` (from 1). A selected tab that goes leaves its right neighbour
    /// selected, the last one its left neighbour; no handler runs.
    void remove(int position) {
        assert(position >= 1 && position <= static_cast<int>(tabs_.size()));
        tabs_.erase(tabs_.begin() + (position - 1));
        if (selected_ > position) {
            --selected_;
        }
        selected_ = std::min(selected_, static_cast<int>(tabs_.size()));
        shown();
    }

    /// Position of the selected tab, from 1; 0 in an empty strip.
    [[nodiscard]] int selected() const { return selected_; }

    /// Key of the selected tab; empty in an empty strip.
    [[nodiscard]] std::string selected_key() const {
        return selected_ == 0 ? std::string() : tabs_[static_cast<std::size_t>(selected_ - 1)].key;
    }

    /// Selects the tab at `position` (from 1) and runs the handler, also when nothing changes.
    void select(int position) {
        assert(position >= 1 && position <= static_cast<int>(tabs_.size()));
        selected_ = position;
        shown();
        if (handler_) {
            handler_();
        }
    }

    /// Sets what a choice does, after the strip has its new selection.
    void on_click(Handler handler) { handler_ = std::move(handler); }

private:
    std::vector<Tab> tabs_;
    int selected_ = 0;
    Handler handler_;
};

/// `hasnotab`: true when no tab of `strip` has `key`; otherwise false, and `position` is the
/// matching tab's place from 1. An empty strip has none.
[[nodiscard]] inline bool hasnotab(const TabStrip& strip, std::string_view key, int& position) {
    const auto& tabs = strip.tabs();
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [key](const Tab& tab) { return tab.key == key; });
    if (found == tabs.end()) {
        return true;
    }
    position = static_cast<int>(found - tabs.begin()) + 1;
    return false;
}

} // namespace kv408
