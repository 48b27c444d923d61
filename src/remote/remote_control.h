#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "host/clock.h"
#include "remote/command_table.h"
#include "remote/instrument.h"
#include "remote/server.h"

namespace kv408 {

/// Remote control as a whole: the command tree over the program, and the server, which is there
/// only between `open` and `close`.
class RemoteControl {
public:
    /// What it needs of the machine.
    struct Host {
        const Clock& clock;
        Gate& gate;                 ///< that the program's boxes and messages go through
        std::function<void()> wake; ///< called on another thread when `serve` is wanted
    };

    explicit RemoteControl(Host host);
    ~RemoteControl();
    RemoteControl(const RemoteControl&) = delete;
    RemoteControl& operator=(const RemoteControl&) = delete;

    /// See `Instrument`.
    void attach(Scope& scope, Instrument::Act act) { instrument_.attach(scope, std::move(act)); }
    void detach();

    /// Begins to listen at `place`. Throws `std::system_error` where that is not possible.
    void open(const Network::Place& place);

    /// Disconnects all clients; from now on there is no socket.
    void close();

    [[nodiscard]] bool is_open() const { return server_.has_value(); }

    /// The port that is listened at; 0 while closed.
    [[nodiscard]] std::uint16_t port() const { return server_ ? server_->port() : 0; }

    /// Runs what clients have sent: one command, and more as long as `longest` has not passed;
    /// nothing in the middle of an exchange. True when commands are left.
    bool serve(std::chrono::nanoseconds longest);

    /// To be called after each tick of the program; where there is no program, as often. Tells all
    /// clients when the instrument sends no data any more.
    void tick_over();

    /// The clients, in the order in which they came.
    [[nodiscard]] std::vector<Server::Seen> clients() const;
    void disconnect(Network::Connection connection);

    /// Sets what runs when the instrument sends no data any more, and when data have come again.
    void on_silence(std::function<void(bool silent)> listener) { silence_ = std::move(listener); }

    /// Notes `error` in the queue of each client; false where there is none.
    bool tell_all(const Refused& error);

    /// Makes `message` an error of the client that has caused it, or of all where that has gone;
    /// see `Instrument::take_message`. False where no client is told of it.
    bool tell_cause(const Message& message);

    /// From now on there is a person in front of the program, for whom a message box would wait,
    /// and all clients with it: what a client has caused and a tick tells becomes the client's
    /// error, until the person presses something.
    void spare_person();

    /// The person has pressed something.
    void person_pressed() { instrument_.person_pressed(); }

    /// Brings the condition registers of `client` up to date, and tells whether it may go on.
    [[nodiscard]] Client::Moment moment(Client& client);

    /// The program that commands work on, and the locks.
    [[nodiscard]] Instrument& instrument() { return instrument_; }

    /// All commands.
    [[nodiscard]] const CommandTable& table() const { return table_; }

    /// Sets what runs when a client has come or gone, or a lock has changed.
    void on_change(std::function<void()> listener) { changed_ = std::move(listener); }

private:
    void changed() const;
    void watch_silence();

    Host host_;
    Instrument instrument_;
    CommandTable table_;
    std::optional<Server> server_;
    std::function<void()> changed_;
    std::function<void(bool)> silence_;
    int silent_ticks_ = 0; ///< in a row, up to the last one
    bool silent_ = false;  ///< and it has been told
};

} // namespace kv408
