#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "remote/client.h"
#include "remote/network.h"

namespace kv408 {

/// Remote control over the network: what clients send is run here, on the thread that calls
/// `serve`, a command of each in turn, and answered.
class Server {
public:
    /// How many clients there may be at a time.
    static constexpr std::size_t most_clients = 8;

    /// Gives the time, and whether what the client waits for is pending.
    using Look = std::function<Client::Moment(Client&)>;

    /// Serves commands of `table` to clients at `place`. `wake` is called on a thread of its own
    /// when `serve` is wanted. Throws `std::system_error` where it cannot listen there.
    Server(const CommandTable& table, const Network::Place& place, std::function<void()> wake,
           Look look);

    /// Runs what clients have sent: one command, and more as long as `longest` has not passed. True
    /// when commands are left: it is to be called again when all else has had its turn.
    bool serve(std::chrono::nanoseconds longest);

    /// A client as people see it.
    struct Seen {
        Network::Connection connection;
        std::string address;
    };
    [[nodiscard]] std::vector<Seen> clients() const;

    /// Ends a client's connection; what it has sent and what has not been run is lost.
    void disconnect(Network::Connection connection);

    /// The port that is listened at.
    [[nodiscard]] std::uint16_t port() const { return network_.port(); }

    /// Sets what runs when a client has come or gone.
    void on_change(std::function<void()> listener) { changed_ = std::move(listener); }

    /// Sets what runs when a client is held back that sends no more. It may still want its answers,
    /// and may as well have gone.
    void on_silent(std::function<void(Client&)> listener) { silent_ = std::move(listener); }

    /// Sets what runs just before a client is removed.
    void on_gone(std::function<void(Client&)> listener) { gone_ = std::move(listener); }

    /// Calls `act` with each client.
    void for_each(const std::function<void(Client&)>& act);

private:
    /// What is known of a client's connection.
    enum class Line {
        open,
        ended, ///< no more will come; answers may go
        lost,  ///< neither
    };
    struct Remote {
        Remote(const CommandTable& table, std::string from)
            : client(table), address(std::move(from)) {}
        Client client;
        std::string address;
        std::string unread = {}; ///< what has come and has not been taken
        bool reading = true;     ///< the next piece is being read
        Line line = Line::open;
        bool gives_way = false; ///< to a client that finds no place
    };
    using Clients = std::map<Network::Connection, Remote>;

    void take_events();
    bool step(Clients::iterator at);
    bool feed(Clients::iterator at);
    void hold(Clients::iterator at);
    void read_on(Clients::iterator at);
    void remove(Clients::iterator at);
    void changed() const;

    const CommandTable& table_;
    Look look_;
    std::function<void()> changed_;
    std::function<void(Client&)> silent_;
    std::function<void(Client&)> gone_;
    Clients clients_;
    Network network_;
};

} // namespace kv408
