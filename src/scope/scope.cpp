#include "scope/scope.h"

#include <utility>

#include "scope/parts.h"

namespace kv408 {
namespace {

/// Counts one entry into the program for as long as it lasts. It begins an exchange that nobody has
/// given up yet.
class Entry {
public:
    Entry(int& entries, bool& given_up)
        : entries_(entries), given_up_(given_up), around_(std::exchange(given_up, false)) {
        ++entries_;
    }
    ~Entry() {
        --entries_;
        given_up_ = around_;
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

private:
    int& entries_;
    bool& given_up_;
    bool around_; ///< whether the exchange was given up that this entry fell into
};

} // namespace

Scope::Scope(const Machine& machine) : parts_(std::make_unique<Parts>(machine)) {}

Scope::~Scope() = default;

bool Scope::start() {
    act([this] { parts_->start_up.Form_Load(); });
    return !ended();
}

void Scope::tick() {
    const bool exchange_under_way = parts_->entries > 0;
    act([&] { parts_->state_machine.Timer1_Timer(exchange_under_way); });
}

void Scope::act(const std::function<void()>& action) {
    if (ended()) {
        return;
    }
    const Entry entry(parts_->entries, parts_->program.given_up);
    try {
        action();
    } catch (const ProgramEnded&) {
        // Unwound to here on purpose: the program has ended and the window asks ended().
        parts_->program.ended = true;
        // Shut-down has done both already; an end from deep inside has saved at most.
        parts_->link.close();
        parts_->program.keep_settings();
    }
}

void Scope::close() {
    act([this] { parts_->start_up.Form_Unload(); });
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

} // namespace kv408
