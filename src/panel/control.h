#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "state/colour.h"

namespace kv408 {

class Button;
class CheckBox;
class Control;
class Label;
class ListBox;
class OptionButton;
class Slider;
class TabStrip;
class TextBox;
class ThumbWheel;

/// A control as what it is; nothing for a kind that only its own window knows.
using AnyControl = std::variant<std::monostate, Button*, CheckBox*, OptionButton*, ListBox*,
                                TextBox*, Label*, Slider*, TabStrip*, ThumbWheel*>;

/// The controls of one window in the order in which they are declared.
using ControlList = std::vector<Control*>;

/// What may be done to a control from outside the program, by people and by other programs.
enum class Outside {
    none, ///< nothing but by people: it opens a dialog or ends the program
    read, ///< it only shows something
    set,  ///< it can be operated
};

/// What there is to know about a control, besides its kind.
struct About {
    std::string name;     ///< also its widget's; in an array with the index, as in "cmbMeas(0)"
    int line = 0;         ///< place of its key in the settings file, from 1; 0: it is not kept
    std::string key = {}; ///< in the settings file; empty: its name
    Outside outside = Outside::set;
    std::string_view unit = {}; ///< of the number that is typed or shown; empty: none
    std::string words = {};     ///< what people call it in the list of steps; empty: its key
};

/// A listener to a control; whoever has one is told.
using Listening = std::shared_ptr<const std::function<void()>>;

/// What every kind of control has: what there is to know about it, whether it can be used and seen
/// and how, and who is told when that changes.
class Control {
public:
    /// A control named `name` that is in no list.
    explicit Control(std::string name) : about_{.name = std::move(name)} {}

    /// A control that is added to `list`.
    Control(ControlList& list, About about) : about_(std::move(about)) { list.push_back(this); }

    virtual ~Control() = default;

    /// A control is shared by reference; a copy would lose its listeners.
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// What there is to know about it.
    [[nodiscard]] const About& about() const { return about_; }
    [[nodiscard]] const std::string& name() const { return about_.name; }

    /// Its key in the settings file, where it is kept.
    [[nodiscard]] const std::string& key() const {
        return about_.key.empty() ? about_.name : about_.key;
    }

    /// The control as what it is.
    [[nodiscard]] virtual AnyControl kind() { return {}; }

    /// Whether the user can operate it.
    [[nodiscard]] bool enabled() const { return enabled_; }
    void set_enabled(bool enabled) { show(enabled_, enabled); }

    /// Whether it can be seen.
    [[nodiscard]] bool visible() const { return visible_; }
    void set_visible(bool visible) { show(visible_, visible); }

    /// Colour of its text; none: the desktop's.
    [[nodiscard]] std::optional<Colour> fore_colour() const { return fore_colour_; }
    void set_fore_colour(Colour colour) { show(fore_colour_, std::optional(colour)); }

    /// Colour behind its text; none: the desktop's.
    [[nodiscard]] std::optional<Colour> back_colour() const { return back_colour_; }
    void set_back_colour(Colour colour) { show(back_colour_, std::optional(colour)); }

    /// Whether what it shows is older than it looks: the window shows it fainter.
    [[nodiscard]] bool dimmed() const { return dimmed_; }
    void set_dimmed(bool dimmed) { show(dimmed_, dimmed); }

    /// Adds a listener that is told after anything visible has changed, as long as the result is
    /// kept. It must only show: it may not set the control.
    [[nodiscard]] Listening on_shown(std::function<void()> listener) {
        std::erase_if(listeners_, [](const auto& gone) { return gone.expired(); });
        auto listening = std::make_shared<const std::function<void()>>(std::move(listener));
        listeners_.push_back(listening);
        return listening;
    }

protected:
    /// Tells the listeners, in the order in which they were added.
    void shown() const {
        for (const auto& listener : listeners_) {
            if (const Listening listening = listener.lock()) {
                (*listening)();
            }
        }
    }

    /// Puts `next` into `member` and tells the listeners if that is a change.
    template <typename Value>
    void show(Value& member, Value next) {
        if (member != next) {
            member = std::move(next);
            shown();
        }
    }

private:
    About about_;
    bool enabled_ = true;
    bool visible_ = true;
    bool dimmed_ = false;
    std::optional<Colour> fore_colour_;
    std::optional<Colour> back_colour_;
    std::vector<std::weak_ptr<const std::function<void()>>> listeners_;
};

} // namespace kv408
