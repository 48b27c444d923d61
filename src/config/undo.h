#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "config/set_up_steps.h"
#include "config/settings_file.h"
#include "host/clock.h"
#include "panel/controls.h"
#include "panel/front_panel.h"

namespace kv408 {

/// The controls of Undo, in the menu "Tools".
struct UndoControls {
    Button mnuundo{"mnuundo"};    ///< takes the last step back
    Button mnuredo{"mnuredo"};    ///< takes the step again that was taken back last
    ListBox lststeps{"lststeps"}; ///< the steps in words, the oldest first, behind the beginning
};

/// Undo and Redo of the whole set-up: watches what the user's actions make of it, and brings back
/// what it was.
class Undo {
public:
    /// Watches `panel`, whose settings `settings` keeps.
    Undo(FrontPanel& panel, SettingsFile& settings, const Clock& clock);
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;

    [[nodiscard]] UndoControls& controls() { return controls_; }
    [[nodiscard]] const SetUpSteps& steps() const { return steps_; }

    /// To be called after each of the user's actions, when its settings have been noted for the
    /// end: what it has changed is a step, or part of one. The first call after start-up is
    /// complete begins the steps. True where it was something new.
    bool note();

    /// Makes what the present action changes one step called `name`.
    void name(std::string name) { name_ = std::move(name); }

    /// A mouse button goes down, and up: what changes between is one step.
    void press_begins();
    void press_ends();

    /// While the panel is locked a person cannot use the controls; `go` works all the same.
    void set_locked(bool locked);

    /// Brings the panel to the set-up that it had after `place` steps; nothing happens where there
    /// are not as many, or while a set-up is being loaded.
    void go(std::size_t place);

private:
    [[nodiscard]] SetUpSteps::Moment moment() const;
    void show();

    FrontPanel& panel_;
    SettingsFile& settings_;
    const Clock& clock_;
    UndoControls controls_;
    SetUpSteps steps_;
    std::string name_; ///< of the present action's step; empty: named by what it changes
    std::uint64_t press_ = 0;
    bool held_ = false;
    std::chrono::nanoseconds released_{0};
    bool locked_ = false;
    bool showing_ = false; ///< the list is being brought up to date
};

} // namespace kv408
