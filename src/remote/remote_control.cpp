#include "remote/remote_control.h"

#include <utility>

#include "remote/common_commands.h"
#include "remote/tree.h"

namespace kv408 {
namespace {

/// Ticks without data after which it is the instrument that sends none. Where the program itself
/// had no time, data are there again within a few.
constexpr int ticks_of_silence = 10;

} // namespace

RemoteControl::RemoteControl(Host host)
    : host_(std::move(host)), instrument_(host_.gate, host_.wake) {
    table_.add(common_commands(table_));
    for (const auto& commands :
         {acquisition_commands, panel_commands, display_commands, cursor_commands,
          measurement_commands, waveform_commands, density_commands, histogram_commands,
          jitter_commands, eye_commands, mask_commands, maths_commands, spectrum_commands,
          statistics_commands, autoset_commands, system_commands}) {
        table_.add(commands(instrument_));
    }
    instrument_.on_lock([this] { changed(); });
}

RemoteControl::~RemoteControl() {
    host_.gate.on_message({});
    changed_ = {};
    close();
}

void RemoteControl::open(const Network::Place& place) {
    close();
    server_.emplace(table_, place, host_.wake, [this](Client& client) { return moment(client); });
    server_->on_change([this] { changed(); });
    server_->on_silent([this](Client& client) { instrument_.unlock_panel_of(client); });
    server_->on_gone([this](Client& client) { instrument_.forget(client); });
    changed();
}

void RemoteControl::close() {
    if (!server_) {
        return;
    }
    server_->for_each([this](Client& client) { instrument_.forget(client); });
    server_.reset();
    changed();
}

bool RemoteControl::serve(std::chrono::nanoseconds longest) {
    if (!server_ || !instrument_.may_run()) {
        return false;
    }
    const Gate::Closed alone(host_.gate);
    return server_->serve(longest);
}

void RemoteControl::tick_over() {
    if (!instrument_.may_run()) {
        return;
    }
    watch_silence();
    if (server_) {
        server_->for_each([this](Client& client) { instrument_.show_conditions(client); });
    }
}

void RemoteControl::watch_silence() {
    silent_ticks_ = instrument_.silent() ? silent_ticks_ + 1 : 0;
    const bool silent = silent_ticks_ >= ticks_of_silence;
    if (std::exchange(silent_, silent) == silent) {
        return;
    }
    if (silent) {
        tell_all({ScpiError::hardware_error, "No data from the instrument"});
    }
    // Stopped, nothing has come: nobody waits for it any more.
    if (silence_ && (silent || instrument_.sweeping())) {
        silence_(silent);
    }
}

void RemoteControl::detach() {
    instrument_.detach();
    silent_ = false; // the loss is told instead
    silent_ticks_ = 0;
}

std::vector<Server::Seen> RemoteControl::clients() const {
    return server_ ? server_->clients() : std::vector<Server::Seen>();
}

void RemoteControl::disconnect(Network::Connection connection) {
    if (server_) {
        server_->disconnect(connection);
    }
}

bool RemoteControl::tell_all(const Refused& error) {
    bool anybody = false;
    if (server_) {
        server_->for_each([&](Client& client) {
            client.note(error);
            anybody = true;
        });
    }
    return anybody;
}

bool RemoteControl::tell_cause(const Message& message) {
    return instrument_.take_message(message,
                                    [this](const Refused& error) { return tell_all(error); });
}

void RemoteControl::spare_person() {
    host_.gate.on_message([this](const Message& message) { return tell_cause(message); });
}

Client::Moment RemoteControl::moment(Client& client) {
    instrument_.show_conditions(client);
    return {std::chrono::duration<double>(host_.clock.now()).count(), instrument_.pending()};
}

void RemoteControl::changed() const {
    if (changed_) {
        changed_();
    }
}

} // namespace kv408
