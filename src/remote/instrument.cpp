#include "remote/instrument.h"

#include <algorithm>
#include <utility>

#include "maths/maths_trace.h"
#include "scope/parts.h"
#include "scope/tool_settings.h"
#include "scope/tools.h"
#include "state/sweeps.h"

namespace kv408 {
namespace {

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

/// What was computed of `sweep` itself.
std::array<std::shared_ptr<const MathsTrace>, 2> traces_of(Scope& scope, const Sweep& sweep) {
    std::array<std::shared_ptr<const MathsTrace>, 2> traces;
    for (std::size_t place = 0; place < traces.size(); ++place) {
        const auto trace = scope.tools().maths().tool(place).trace();
        if (trace && trace->sweep == sweep.number) {
            traces.at(place) = trace;
        }
    }
    return traces;
}

} // namespace

void Instrument::attach(Scope& scope, Act act) {
    scope_ = &scope;
    act_ = std::move(act);
    if (!tools_at_first_) {
        tools_at_first_ = std::make_shared<const ToolSettings>(settings_of(scope.tools()));
    }
    scope.single().carry_on(single_before_);
    single_done_ = scope.single().on_done([this](bool came) { single_done(came); });
    taking_ = std::make_shared<const Scope*>(&scope);
    // The program has measured a sweep before those are told of it that came later than its parts.
    scope.sweeps().on_finished([this, alive = std::weak_ptr(taking_)](const auto& sweep) {
        if (sweep->complete && !alive.expired()) {
            take(sweep);
        }
    });
}

void Instrument::take(const std::shared_ptr<const Sweep>& sweep) {
    const Parts& parts = scope_->parts();
    last_ = std::make_shared<const MeasuredSweep>(
        MeasuredSweep{.sweep = sweep,
                      .number = counted_before_ + sweep->number,
                      .measured = parts.panel.check1.checked(),
                      .results = parts.measurements.measresults,
                      .maths = traces_of(*scope_, *sweep)});
    if (cause_) {
        cause_->told.clear();
        if (!cause_->run && !pending()) {
            cause_.reset();
        }
    }
}

void Instrument::note_run(Client& client) {
    cause_ = Cause{.client = &client, .run = true};
}

bool Instrument::take_message(const Message& message,
                              const std::function<bool(const Refused&)>& tell_all) {
    const bool of_exchange = message.link_failure || message.holds_sweep;
    if (!of_exchange || !cause_ || !attached() || (!cause_->run && !pending())) {
        return false;
    }
    std::vector<std::string>& told = cause_->told;
    if (std::find(told.begin(), told.end(), message.text) != told.end()) {
        return true;
    }
    const Refused error{ScpiError::hardware_error, message.text};
    if (cause_->client != nullptr) {
        cause_->client->note(error);
    } else if (!tell_all(error)) {
        return false; // there is nobody but the person
    }
    told.push_back(message.text);
    return true;
}

void Instrument::detach() {
    if (scope_ != nullptr) {
        counted_before_ = sweep_count();
        swept_ = pending() || scope_->parts().acquisition.acqrunning;
        single_before_ = scope_->single().state();
    }
    scope_ = nullptr;
    single_done_.reset();
    taking_.reset();
    last_.reset();
    cause_.reset();
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
    if (!network_locked_ && scope().autoset().under_way()) {
        throw Refused{ScpiError::settings_conflict, "Autoset is under way"};
    }
    press_for(client, press);
}

void Instrument::stop_and_act(Client& client, const std::function<void(Scope&)>& press) {
    press_for(client, [&press](Scope& scope) {
        scope.panel().cmdstop.click();
        scope.autoset().end_if_stopped();
        press(scope);
    });
}

void Instrument::press_for(Client& client, const std::function<void(Scope&)>& press) {
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
    scope.single().watch().look();
    cause_ = Cause{.client = &client, .run = cause_ && cause_->run};
    for (const std::string& text : collecting.texts()) {
        client.note({ScpiError::hardware_error, text});
    }
    if (refused) {
        throw Refused(*refused);
    }
}

void Instrument::cancel_autoset(Client& client) {
    if (!scope().autoset().under_way()) {
        return;
    }
    if (network_locked_) {
        throw Refused{ScpiError::command_protected};
    }
    const Gate::Closed alone(gate_);
    const Gate::Collecting collecting(gate_);
    act_([this] { scope_->autoset().controls().cmdAutosetCancel.click(); });
    for (const std::string& text : collecting.texts()) {
        client.note({ScpiError::hardware_error, text});
    }
}

void Instrument::single(Client& client) {
    act(client, [](Scope& scope) {
        if (!scope.single().begin()) {
            throw Refused{ScpiError::settings_conflict, "No channel is on"};
        }
    });
    note_run(client);
    std::erase(single_clients_, &client);
    single_clients_.push_back(&client);
}

void Instrument::forget_single() {
    single_clients_.clear();
    if (scope_ != nullptr) {
        scope_->single().forget();
    }
}

bool Instrument::pending() const {
    if (scope_ == nullptr) {
        return swept_; // until the instrument has been found again
    }
    const SingleSweep& single = scope_->single();
    return single.state().under_way || single.watch().pending() || scope_->autoset().under_way();
}

void Instrument::single_done(bool came) {
    const std::vector<Client*> clients = std::exchange(single_clients_, {});
    if (!came || !last_) {
        return;
    }
    for (Client* const client : clients) {
        client->line_sweep = last_;
        client->waveform.sweep = last_->sweep;
        client->waveform.number = last_->number;
    }
}

const MeasuredSweep& Instrument::sweep_of(Client& client) const {
    if (!client.line_sweep) {
        static_cast<void>(scope());
        if (!last_) {
            throw Refused{ScpiError::data_stale, "No sweep has been finished"};
        }
        client.line_sweep = last_;
    }
    return *client.line_sweep;
}

std::uint64_t Instrument::sweep_count() const {
    return last_ ? last_->number : counted_before_;
}

bool Instrument::silent() const {
    return scope_ != nullptr && !scope_->ended() &&
           scope_->parts().acquisition.data.silence().has_value();
}

bool Instrument::sweeping() const {
    return scope_ != nullptr && !scope_->ended() && scope_->parts().acquisition.acqrunning;
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
        questionable |= silent() ? no_data_bit : 0U;
        for (const Channel channel : both_channels) {
            const Clipping clips =
                clipping_.look(channel, parts.sweeps.last()->channel.at(channel));
            const bool on = parts.panel.channel.at(channel).enable.checked();
            questionable |= on && (clips.lowest || clips.highest) ? clipped_bit : 0U;
        }
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

void Instrument::unlock_panel_of(const Client& client) {
    if (locked_by_ == &client) {
        unlock_panel();
    }
}

void Instrument::forget(Client& client) {
    unlock_panel_of(client);
    if (cause_ && (cause_->client == nullptr || cause_->client == &client)) {
        cause_->client = nullptr;
        cause_->told.clear(); // it may have been the only one that was told
    }
    std::erase(single_clients_, &client);
}

} // namespace kv408
