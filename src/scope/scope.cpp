#include "scope/scope.h"

#include <utility>

#include "scope/parts.h"

namespace kv408 {
namespace {

/// Counts one entry into the program for as long as it lasts. It begins an exchange that nobody has
/// given up yet.
class Entry {
public:
    Entry(Entries& entries, bool& given_up)
        : entries_(entries), given_up_(given_up), around_(std::exchange(given_up, false)) {
        ++entries_.count;
    }
    ~Entry() {
        --entries_.count;
        given_up_ = around_;
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

private:
    Entries& entries_;
    bool& given_up_;
    bool around_; ///< whether the exchange was given up that this entry fell into
};

/// Counts an action of the user's for as long as it lasts.
class UnderWay {
public:
    explicit UnderWay(int& count) : count_(count) { ++count_; }
    ~UnderWay() { --count_; }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    int& count_;
};

/// Runs one step of shutting down; the steps after it run even if it throws.
template <typename Act>
void try_to(const Act& act) noexcept {
    try {
        act();
    } catch (...) {
        // Nobody is left to report it to, and more is to be done.
        return;
    }
}

} // namespace

Scope::Scope(const Machine& machine) : parts_(std::make_unique<Parts>(machine)) {}

Scope::~Scope() = default;

bool Scope::start() {
    act([this] { parts_->start_up.Form_Load(); });
    return !ended();
}

void Scope::tick() {
    const bool exchange_under_way = parts_->entries.hold_ticks();
    enter([&] {
        parts_->acquiring.state_machine.Timer1_Timer(exchange_under_way);
        parts_->tools.tick();
        if (!exchange_under_way) {
            parts_->single.tick_over();
            autoset_tick_over();
            parts_->tools.tick_over();
        }
    });
}

void Scope::autoset_tick_over() {
    if (!parts_->autoset.under_way()) {
        return;
    }
    // What it presses is kept as what the user presses is.
    const UnderWay acting(parts_->acts);
    parts_->autoset.tick_over();
    parts_->settings_file.note_for_end();
}

void Scope::act(const std::function<void()>& action) {
    enter([&] {
        const UnderWay acting(parts_->acts);
        action();
        parts_->settings_file.note_for_end();
        if (parts_->acts == 1 && !parts_->autoset.under_way()) {
            parts_->undo.note(); // what an action does in another one belongs to that
        }
    });
}

void Scope::enter(const std::function<void()>& entry) {
    if (ended()) {
        return;
    }
    PowerWatch& power = parts_->link.power();
    std::string& state = parts_->acquisition.scopestate;
    const bool outermost = !parts_->entries.hold_ticks();
    if (outermost && state_word::sweeps(state) && power.was_away()) {
        state = state_word::set_up;
    }
    const Entry entering(parts_->entries, parts_->program.given_up);
    power.note_entry();
    try {
        entry();
        if (outermost && state_word::sweeps(state) && power.was_held_up()) {
            state = state_word::set_up;
        }
        power.note_entry();
    } catch (const ProgramEnded&) {
        // Unwound to here on purpose: the program has ended and the window asks ended().
        parts_->program.ended = true;
        // Shut-down has done both already; an end from deep inside has saved at most.
        parts_->link.close();
        parts_->settings_file.save_at_end(false);
    }
}

void Scope::close() {
    act([this] { parts_->start_up.Form_Unload(); });
}

void Scope::end() {
    act([this] { parts_->start_up.Form_Unload(false); });
}

void Scope::abandon() noexcept {
    if (ended()) {
        return;
    }
    // Saved first: closing may be what fails.
    try_to([this] { parts_->settings_file.save_without_the_window(); });
    try_to([this] { parts_->link.close(); });
    parts_->program.ended = true;
}

LastSettings& Scope::last_settings() {
    return parts_->settings_file.last_settings();
}

bool Scope::busy() const {
    return parts_->entries.count > 0;
}

bool Scope::ended() const {
    return parts_->program.ended;
}

FrontPanel& Scope::panel() {
    return parts_->panel;
}

Picture& Scope::picture() {
    return parts_->picture;
}

CalibrationForm& Scope::calibration_form() {
    return parts_->frmcalibration.form();
}

Label& Scope::loading() {
    return parts_->settings_file.loading();
}

PlotMouse& Scope::plot_mouse() {
    return parts_->plot_mouse;
}

SettingsDialog& Scope::settings_dialog() {
    return parts_->settings_dialog;
}

SettingsFile& Scope::settings_file() {
    return parts_->settings_file;
}

Snapshot& Scope::snapshot() {
    return parts_->snapshot;
}

Sweeps& Scope::sweeps() {
    return parts_->sweeps;
}

SingleSweep& Scope::single() {
    return parts_->single;
}

Help& Scope::help() {
    return parts_->help;
}

Autoset& Scope::autoset() {
    return parts_->autoset;
}

Undo& Scope::undo() {
    return parts_->undo;
}

Tools& Scope::tools() {
    return parts_->tools;
}

} // namespace kv408
