#include "server/service.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "config/settings_file.h"
#include "remote/client.h"
#include "scope/parts.h"
#include "server/tick_pace.h"

namespace kv408 {
namespace {

/// How long clients are served before the time is looked at again.
constexpr std::chrono::milliseconds serving{1};
/// The pause before the instrument is looked for again.
constexpr std::chrono::milliseconds search_interval{1000};

} // namespace

Service::Service(const Host& host, const Network::Place& place)
    : host_(host), log_(host.log),
      control_({.clock = host.clock, .gate = gate_, .wake = [this] { waker_.wake(); }}) {
    control_.on_change([this] { show_clients(); });
    control_.on_silence([this](bool silent) {
        log_.write(silent ? "No data from the instrument" : "Data from the instrument again");
    });
    control_.open(place);
    log_.write("Listening at " + place.address + " port " + std::to_string(port()));
}

Service::~Service() {
    control_.on_change({});
}

void Service::run() {
    while (!end_asked_) {
        run_once();
        if (!end_asked_) {
            wait(search_interval);
        }
    }
    log_.write("Ended");
}

void Service::run_once() {
    auto scope = std::make_unique<Scope>(Machine{.clock = host_.clock,
                                                 .boxes = gated_boxes_,
                                                 .messages = gated_messages_,
                                                 .bridge = host_.bridge,
                                                 .files = host_.files,
                                                 .choosers = choosers_,
                                                 .places = host_.places,
                                                 .coder = host_.coder,
                                                 .log = host_.log,
                                                 .diagnose = host_.diagnose});
    {
        const std::lock_guard lock(saving_);
        scope_ = std::move(scope);
    }
    started_ = false;
    if (scope_->start()) {
        started_ = true;
        note_well();
        log_.write("Instrument " + scope_->parts().panel.device.text() + " found");
        carry_on();
        control_.attach(*scope_,
                        [this](const std::function<void()>& action) { scope_->act(action); });
        tick_until_ended();
        carried_ = carried();
        control_.detach();
        if (!end_asked_) {
            log_.write("Instrument lost");
            control_.tell_all({ScpiError::hardware_error, "The instrument is lost"});
        }
    }
    const std::lock_guard lock(saving_);
    scope_.reset();
}

void Service::tick_until_ended() {
    scope_->sweeps().on_finished([this](const auto&) { note_well(); });
    TickPace pace(host_.clock.now());
    while (!scope_->ended()) {
        if (end_asked_) {
            scope_->end();
            return;
        }
        if (pace.due(host_.clock.now())) {
            scope_->tick();
            control_.tick_over();
            // A pass has fetched each point that it has asked for.
            pace.ticked(host_.clock.now(), !scope_->parts().acquisition.pointmode);
        }
        const bool more = control_.serve(serving);
        const auto left = pace.left(host_.clock.now());
        if (!more && left > std::chrono::nanoseconds::zero()) {
            waker_.rest(left);
        }
    }
}

Service::Carried Service::carried() const {
    return {.set_up = scope_->parts().chosen_set_up(),
            .tools = settings_of(scope_->tools()),
            .sweeping = scope_->parts().acquisition.acqrunning ||
                        scope_->parts().acquisition.scopestate != state_word::stopped};
}

void Service::carry_on() {
    if (!carried_) {
        return;
    }
    scope_->act([this] {
        scope_->settings_file().put_back(carried_->set_up);
        set_tools(scope_->tools(), carried_->tools);
        if (!carried_->sweeping) {
            scope_->panel().cmdstop.click();
        }
    });
}

MessageAnswer Service::tell(const Message& message) {
    const std::string text =
        message.text + (message.informative.empty() ? "" : " " + message.informative);
    log_.write_trouble(text);
    if (!control_.tell_cause(message) && told_all_.first(text)) {
        control_.tell_all({ScpiError::hardware_error, message.text});
    }
    switch (message.buttons) {
    case MessageButtons::ok:
        return MessageAnswer::ok;
    case MessageButtons::ok_cancel:
        return MessageAnswer::cancel;
    case MessageButtons::yes_no: // whether to take what an earlier run could not save
        return MessageAnswer::yes;
    case MessageButtons::retry_cancel:
        break;
    }
    wait(search_interval);
    return end_asked_ ? MessageAnswer::cancel : MessageAnswer::retry;
}

void Service::Messages::process_pending() {
    service_.end_if_asked();
    service_.control_.serve(serving);
}

void Service::note_well() {
    log_.note_well();
    told_all_.forget();
}

void Service::end_if_asked() {
    if (end_asked_ && scope_ && started_) {
        scope_->end();
    }
}

void Service::wait(std::chrono::nanoseconds duration) {
    const auto end = host_.clock.now() + duration;
    for (auto now = host_.clock.now(); now < end && !end_asked_; now = host_.clock.now()) {
        control_.tick_over();
        if (!control_.serve(serving)) {
            waker_.rest(std::min<std::chrono::nanoseconds>(end - now, TickPace::interval));
        }
    }
}

void Service::show_clients() {
    std::map<Network::Connection, std::string> present;
    for (const Server::Seen& client : control_.clients()) {
        present.emplace(client.connection, client.address);
    }
    const std::string count =
        " (" + std::to_string(present.size()) + " of " + std::to_string(Server::most_clients) + ')';
    for (const auto& [connection, address] : present) {
        if (!known_.contains(connection)) {
            log_.write(address + " connected" + count);
        }
    }
    for (const auto& [connection, address] : known_) {
        if (!present.contains(connection)) {
            log_.write(address + " disconnected" + count);
        }
    }
    known_ = std::move(present);
}

void Service::ask_end() {
    end_asked_ = true;
    waker_.wake();
}

void Service::save() {
    const std::lock_guard lock(saving_);
    if (scope_) {
        scope_->last_settings().save(false);
    }
}

} // namespace kv408
