#include "remote/instrument.h"

#include <algorithm>
#include <utility>

#include "scope/parts.h"

namespace kv408 {
namespace {

constexpr std::int16_t lowest_code = 0;
constexpr std::int16_t highest_code = 4095;

// Bits of STATus:OPERation and STATus:QUEStionable.
constexpr unsigned linearity_bit = 1U << 0;
constexpr unsigned set_up_bit = 1U << 1;
constexpr unsigned sweeping_bit = 1U << 3;
constexpr unsigned waiting_bit = 1U << 5;
constexpr unsigned clipped_bit = 1U << 0;
constexpr unsigned no_data_bit = 1U << 9;

bool is_set_up(const AcquisitionState& acquisition) {
    const std::string& word = acquisition.scopestate;
    return word == state_word::set_up || word == state_word::changes ||
           word == state_word::changes1;
}

} // namespace

void Instrument::attach(Scope& scope, Act act) {
    scope_ = &scope;
    act_ = std::move(act);
    watch_ = std::make_shared<SweepWatch>(scope.parts());
    scope.sweeps().on_finished(
        [watching = std::weak_ptr(watch_)](const std::shared_ptr<const Sweep>& sweep) {
            if (const auto watch = watching.lock()) {
                watch->take(sweep);
            }
        });
    scope.on_start([this, watching = std::weak_ptr(watch_)] {
        if (!watching.expired() && single_) {
            single_->stops = false;
        }
    });
}

void Instrument::detach() {
    if (scope_ != nullptr) {
        counted_before_ = sweep_count();
        swept_ = pending() || scope_->parts().acquisition.acqrunning;
    }
    scope_ = nullptr;
    watch_.reset();
}

bool Instrument::may_run() const {
    // Without a program there is no exchange that a command could fall into.
    return scope_ == nullptr || (!gate_.closed() && !scope_->parts().program.taking_over_since);
}

Scope& Instrument::scope() const {
    if (scope_ == nullptr || scope_->ended()) {
        throw Refused{ScpiError::hardware_error, "No instrument"};
    }
    return *scope_;
}

void Instrument::act(Client& client, const std::function<void(Scope&)>& press) {
    if (network_locked_) {
        throw Refused{ScpiError::command_protected};
    }
    Scope& scope = this->scope();
    std::optional<Refused> refused;
    const Gate::Closed alone(gate_);
    const Gate::Collecting collecting(gate_);
    act_([&] {
        try {
            press(scope);
        } catch (const Refused& thrown) {
            refused = thrown; // the program's entry is left in its own way
        }
    });
    watch_->look();
    for (const std::string& text : collecting.texts()) {
        client.note({ScpiError::hardware_error, text});
    }
    if (refused) {
        throw Refused(*refused);
    }
}

void Instrument::single(Client& client) {
    const FrontPanel& panel = parts().panel;
    if (!panel.channel[ch1].enable.checked() && !panel.channel[ch2].enable.checked()) {
        throw Refused{ScpiError::settings_conflict, "No channel is on"};
    }
    act(client, [](Scope& scope) { scope.panel().cmdstartsweep.click(); });
    watch_->want_new();
    watch_->look();
    if (!single_) {
        single_ = Single{{}, true};
    }
    single_->stops = true;
    std::erase(single_->clients, &client);
    single_->clients.push_back(&client);
}

bool Instrument::pending() const {
    if (scope_ == nullptr) {
        return swept_; // until the instrument has been found again
    }
    return single_.has_value() || watch_->pending();
}

void Instrument::tick_over() {
    if (scope_ == nullptr || scope_->ended()) {
        return;
    }
    watch_->look();
    if (!single_ || watch_->pending()) {
        return;
    }
    const Single done = *std::exchange(single_, std::nullopt);
    if (!scope_->parts().acquisition.acqrunning) {
        return; // somebody has pressed Stop
    }
    if (done.stops) {
        act_([this] { scope_->panel().cmdstop.click(); });
    }
    for (Client* const client : done.clients) {
        client->waveform.sweep = scope_->parts().sweeps.last_complete();
        client->waveform.number = sweep_count();
    }
}

std::uint64_t Instrument::sweep_count() const {
    const auto last = scope_ == nullptr ? nullptr : scope_->parts().sweeps.last_complete();
    return last ? number_of(*last) : counted_before_;
}

bool Instrument::clips(Channel channel) {
    const Parts& parts = this->parts();
    const auto& part = parts.sweeps.last()->channel.at(channel);
    Clipping& known = clipping_.at(channel);
    if (known.part != part) {
        const auto clips = [](std::int16_t code) {
            return code <= lowest_code || code >= highest_code;
        };
        known = {part, std::any_of(part->codes.begin(), part->codes.end(), clips)};
    }
    return known.clips && parts.panel.channel.at(channel).enable.checked();
}

void Instrument::show_conditions(Client& client) {
    unsigned operation = 0;
    unsigned questionable = 0;
    if (scope_ == nullptr || scope_->ended()) {
        questionable = no_data_bit;
    } else {
        const Parts& parts = scope_->parts();
        const AcquisitionState& acquisition = parts.acquisition;
        operation |= acquisition.scopestate == state_word::linearity ? linearity_bit : 0U;
        operation |= is_set_up(acquisition) ? set_up_bit : 0U;
        operation |= state_word::sweeps(acquisition.scopestate) ? sweeping_bit : 0U;
        operation |= acquisition.activity == Activity::waiting_for_trigger ? waiting_bit : 0U;
        questionable |= acquisition.data.silence() ? no_data_bit : 0U;
        questionable |= clips(ch1) || clips(ch2) ? clipped_bit : 0U;
    }
    client.status.operation.set_condition(static_cast<std::uint16_t>(operation));
    client.status.questionable.set_condition(static_cast<std::uint16_t>(questionable));
}

void Instrument::lock_panel(Client& client, bool lock) {
    if (network_locked_) {
        throw Refused{ScpiError::command_protected};
    }
    if (locked_by_ != nullptr && locked_by_ != &client) {
        throw Refused{ScpiError::settings_conflict, "Another client has locked the panel"};
    }
    if (lock == panel_locked()) {
        return;
    }
    locked_by_ = lock ? &client : nullptr;
    if (lock_listener_) {
        lock_listener_();
    }
}

void Instrument::unlock_panel() {
    if (std::exchange(locked_by_, nullptr) != nullptr && lock_listener_) {
        lock_listener_();
    }
}

void Instrument::forget(Client& client) {
    if (locked_by_ == &client) {
        unlock_panel();
    }
    if (single_) {
        std::erase(single_->clients, &client);
    }
}

} // namespace kv408
