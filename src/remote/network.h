#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace kv408 {

/// The sockets of remote control. They live on a thread of their own, which only moves bytes; all
/// decisions are made by the caller of `take`. What a client sends is read piece by piece, the next
/// piece when the last has been dealt with, so that no client can fill the memory.
class Network {
public:
    /// Counts the connections from 1; a number is never used again.
    using Connection = std::uint64_t;

    /// Where clients are listened for.
    struct Place {
        std::string address = "127.0.0.1"; ///< of one of this machine's interfaces, IPv4 or IPv6
        std::uint16_t port = 5025;         ///< 0 for any that is free
    };

    /// Somebody has connected.
    struct Opened {
        Connection connection;
        std::string address; ///< "192.168.1.5:40312"
    };
    /// A piece has come; `read_on` asks for the next.
    struct Received {
        Connection connection;
        std::string bytes; ///< at most 16 KiB
    };
    /// The client sends no more. It may still read: `close` it when it has its replies.
    struct Ended {
        Connection connection;
    };
    /// The connection is broken: nothing comes or goes any more. `drop` it.
    ///
    /// Noticed at once, whether or not something is being read, is a reset: the client's program
    /// has gone with answers unread, or has answered what was sent to it with one. A program that
    /// ends having read everything says no more than one that only has nothing further to ask:
    /// `Ended`. Its system tells of it when something is sent to it, or when it is asked whether
    /// the connection is there, once it has forgotten it: on Linux after one and a half minutes at
    /// most. On Windows a reset is noticed only in reading and sending.
    struct Lost {
        Connection connection;
    };
    using Event = std::variant<Opened, Received, Ended, Lost>;

    /// Listens at `place` for `most` connections at a time; further ones are refused. While one of
    /// these has ended its side the next waits a few seconds for its place.
    /// `wake` is called, on the sockets' thread, when there is something to take. Throws
    /// `std::system_error` where it cannot listen there.
    Network(const Place& place, std::size_t most, std::function<void()> wake);

    /// Closes all connections.
    ~Network();
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;

    /// The port that is listened at.
    [[nodiscard]] std::uint16_t port() const;

    /// What has happened since the last time, in order.
    std::vector<Event> take();

    /// Reads the connection's next piece.
    void read_on(Connection connection);

    /// Sends `bytes`, in one piece where the system takes them so. Only to be called when all that
    /// was sent before has left.
    void send(Connection connection, std::string bytes);

    /// True when all that was to be sent has left; otherwise `wake` is called when it has.
    [[nodiscard]] bool all_sent(Connection connection);

    /// From now on the connection ends, with `Lost`, where another client finds no place: it is one
    /// that sends no more and waits.
    void give_way(Connection connection);

    /// Ends the connection once all has left.
    void close(Connection connection);

    /// Ends the connection now.
    void drop(Connection connection);

private:
    class Sockets;
    std::unique_ptr<Sockets> sockets_;
};

} // namespace kv408
