#include "remote/network.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include <asio/ip/tcp.hpp>
#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <asio/write.hpp>

namespace kv408 {
namespace {

using asio::ip::tcp;

constexpr std::size_t piece = std::size_t{16} * 1024;

/// How long who finds no place waits for that of one that is going: longer than an exchange with
/// the instrument, during which nobody is let go.
constexpr std::chrono::seconds longest_wait{5};

std::string text_of(const tcp::endpoint& end) {
    const std::string address = end.address().to_string();
    return (end.address().is_v6() ? '[' + address + ']' : address) + ':' +
           std::to_string(end.port());
}

#ifdef TCP_KEEPIDLE
template <int name>
using TcpNumber = asio::detail::socket_option::integer<IPPROTO_TCP, name>;
#endif

// A computer that has been switched off, or whose cable has been pulled, does not say so: it is
// asked whether it is there once the connection has been silent for half a minute, and has gone
// when it has not answered for as long again.
void look_after(tcp::socket& socket) {
    std::error_code gone;
    socket.set_option(asio::socket_base::keep_alive(true), gone);
#ifdef TCP_KEEPIDLE // elsewhere the system's own times hold: hours
    socket.set_option(TcpNumber<TCP_KEEPIDLE>(30), gone);
    socket.set_option(TcpNumber<TCP_KEEPINTVL>(10), gone);
    socket.set_option(TcpNumber<TCP_KEEPCNT>(3), gone);
#endif
}

} // namespace

// All members but those below `mutex_` belong to the thread.
class Network::Sockets {
public:
    Sockets(const Place& place, std::size_t most, std::function<void()> wake)
        : wake_(std::move(wake)), most_(most), acceptor_(context_) {
        const tcp::endpoint end(asio::ip::make_address(place.address), place.port);
        acceptor_.open(end.protocol());
#ifndef _WIN32 // where it would let two programs listen at one port
        acceptor_.set_option(tcp::acceptor::reuse_address(true));
#endif
        acceptor_.bind(end);
        acceptor_.listen();
        port_ = acceptor_.local_endpoint().port();
        accept();
        thread_ = std::thread([this] { context_.run(); });
    }

    ~Sockets() {
        context_.stop();
        thread_.join();
    }
    Sockets(const Sockets&) = delete;
    Sockets& operator=(const Sockets&) = delete;

    [[nodiscard]] std::uint16_t port() const {
        return port_;
    }

    std::vector<Event> take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(events_, {});
    }

    bool all_sent(Connection connection) {
        const std::lock_guard lock(mutex_);
        const auto unsent = unsent_.find(connection);
        if (unsent == unsent_.end()) {
            return true;
        }
        unsent->second = true;
        return false;
    }

    void send(Connection connection, std::string bytes) {
        {
            const std::lock_guard lock(mutex_);
            unsent_.emplace(connection, false);
        }
        asio::post(context_, [this, connection, bytes = std::move(bytes)]() mutable {
            Peer* const peer = find(connection);
            if (peer != nullptr && !peer->broken) {
                if (peer->unsent.empty()) {
                    peer->unsent = std::move(bytes);
                } else {
                    peer->unsent += bytes;
                }
                if (!peer->writing) {
                    write(connection, *peer);
                }
            } else {
                sent(connection);
            }
        });
    }

    // Calls `act` with the connection's peer, on the thread, unless the peer has gone.
    template <typename Act>
    void on_peer(Connection connection, Act act) {
        asio::post(context_, [this, connection, act] {
            if (Peer* const peer = find(connection)) {
                act(*peer);
                admit(); // it may have gone
            }
        });
    }

    void read_on(Connection connection) {
        on_peer(connection, [this, connection](Peer& peer) { read(connection, peer); });
    }

    void give_way(Connection connection) {
        on_peer(connection, [](Peer& peer) { peer.gives_way = true; });
    }

    void close(Connection connection) {
        on_peer(connection, [this, connection](Peer& peer) {
            peer.closing = true;
            if (!peer.writing) {
                drop_peer(connection);
            }
        });
    }

    void drop(Connection connection) {
        on_peer(connection, [this, connection](Peer&) { drop_peer(connection); });
    }

private:
    struct Peer {
        explicit Peer(tcp::socket&& connected) : socket(std::move(connected)) {}
        tcp::socket socket;
        std::array<char, piece> buffer{};
        std::string unsent;   ///< behind what is being written
        std::string leaving;  ///< what is being written
        bool writing = false; ///< something is
        bool closing = false;
        bool ended = false;     ///< it sends no more
        bool broken = false;    ///< nothing more would come of the socket
        bool gives_way = false; ///< to a client that finds no place
    };
    using Peers = std::map<Connection, std::shared_ptr<Peer>>;

    Peer* find(Connection connection) {
        const auto found = peers_.find(connection);
        return found == peers_.end() ? nullptr : found->second.get();
    }

    void accept() {
        acceptor_.async_accept([this](const std::error_code& failed, tcp::socket socket) {
            if (failed == asio::error::operation_aborted) {
                return;
            }
            if (failed) { // for example because too many files are open
                rest_.expires_after(std::chrono::milliseconds(100));
                rest_.async_wait([this](const std::error_code&) { accept(); });
                return;
            }
            newcomer_.emplace(std::move(socket));
            patience_.expires_after(longest_wait);
            patience_.async_wait([this](const std::error_code& decided) {
                if (!decided) {
                    admit();
                }
            });
            admit();
        });
    }

    // Decides about the one that has come last. Behind one that has closed, and whose end the
    // program has not dealt with, it waits; those behind it wait in the system's queue.
    void admit() {
        if (!newcomer_) {
            return;
        }
        make_place();
        const bool place = peers_.size() < most_;
        if (!place && patience_.expiry() > asio::steady_timer::clock_type::now() &&
            std::any_of(peers_.begin(), peers_.end(),
                        [](const auto& peer) { return goes(*peer.second); })) {
            return;
        }
        patience_.cancel();
        tcp::socket socket = std::move(*newcomer_);
        newcomer_.reset();
        if (place) {
            open(std::move(socket));
        }
        accept();
    }

    // Whether the peer has ended its side, seen or not yet seen in reading, or is being closed.
    static bool goes(Peer& peer) {
        std::array<char, 1> next{};
        std::error_code failed;
        peer.socket.receive(asio::buffer(next), tcp::socket::message_peek, failed);
        return peer.ended || peer.broken || peer.closing ||
               (failed && failed != asio::error::would_block);
    }

    void make_place() {
        const auto oldest = std::find_if(peers_.begin(), peers_.end(),
                                         [](const auto& peer) { return peer.second->gives_way; });
        if (peers_.size() >= most_ && oldest != peers_.end()) {
            const Connection connection = oldest->first;
            lost(connection, *oldest->second);
            drop_peer(connection);
        }
    }

    void open(tcp::socket&& socket) {
        std::error_code gone;
        const tcp::endpoint end = socket.remote_endpoint(gone);
        if (gone) {
            return;
        }
        socket.set_option(tcp::no_delay(true), gone);
        socket.non_blocking(true, gone); // for those who only look
        look_after(socket);
        const Connection connection = ++last_;
        Peer& peer =
            *peers_.emplace(connection, std::make_shared<Peer>(std::move(socket))).first->second;
        tell(Opened{connection, text_of(end)});
        watch(connection, peer);
        read(connection, peer);
    }

    // Sees a reset while nothing is being read: while the client is held back, or says no more.
    void watch([[maybe_unused]] Connection connection, [[maybe_unused]] Peer& peer) {
#ifndef _WIN32 // where it waits for urgent bytes alone
        peer.socket.async_wait(
            tcp::socket::wait_error,
            [this, connection, alive = peers_.at(connection)](const std::error_code& failed) {
                asio::detail::socket_option::integer<SOL_SOCKET, SO_ERROR> reset;
                std::error_code unknown;
                if (failed || find(connection) != alive.get()) {
                    return;
                }
                alive->socket.get_option(reset, unknown);
                if (unknown || reset.value() != 0) {
                    lost(connection, *alive);
                } // else urgent bytes have come, which mean nothing here
            });
#endif
    }

    void lost(Connection connection, Peer& peer) {
        if (!std::exchange(peer.broken, true)) {
            tell(Lost{connection});
        }
    }

    // The peer stays alive, in the handlers, for as long as its socket has something to do.
    void read(Connection connection, Peer& peer) {
        if (peer.broken) {
            return; // that has been told
        }
        peer.socket.async_read_some(
            asio::buffer(peer.buffer), [this, connection, alive = peers_.at(connection)](
                                           const std::error_code& failed, std::size_t count) {
                if (failed == asio::error::eof) {
                    alive->ended = true;
                    tell(Ended{connection});
                } else if (failed && find(connection) == alive.get()) {
                    lost(connection, *alive);
                } else if (!failed) {
                    tell(Received{connection, std::string(alive->buffer.data(), count)});
                }
            });
    }

    void write(Connection connection, Peer& peer) {
        peer.leaving = std::exchange(peer.unsent, {});
        peer.writing = true;
        asio::async_write(peer.socket, asio::buffer(peer.leaving),
                          [this, connection, alive = peers_.at(connection)](
                              const std::error_code& failed, std::size_t /*count*/) {
                              written(connection, *alive, failed);
                          });
    }

    void written(Connection connection, Peer& peer, const std::error_code& failed) {
        peer.leaving = std::string(); // with its memory
        peer.writing = false;
        if (failed) {
            lost(connection, peer);
        }
        if (!failed && !peer.unsent.empty()) {
            write(connection, peer);
            return;
        }
        peer.unsent = std::string();
        sent(connection);
        if (peer.closing && find(connection) == &peer) {
            drop_peer(connection);
            admit();
        }
    }

    // Its handlers come once more, with an error, and are the last to hold it.
    void drop_peer(Connection connection) {
        std::error_code gone;
        peers_.at(connection)->socket.shutdown(tcp::socket::shutdown_both, gone);
        peers_.at(connection)->socket.close(gone);
        peers_.erase(connection);
    }

    void tell(Event event) {
        {
            const std::lock_guard lock(mutex_);
            events_.push_back(std::move(event));
        }
        wake_();
    }

    void sent(Connection connection) {
        bool waited = false;
        {
            const std::lock_guard lock(mutex_);
            const auto unsent = unsent_.find(connection);
            if (unsent != unsent_.end()) {
                waited = unsent->second;
                unsent_.erase(unsent);
            }
        }
        if (waited) {
            wake_();
        }
    }

    std::function<void()> wake_;
    std::size_t most_;
    asio::io_context context_{1};
    tcp::acceptor acceptor_;
    asio::steady_timer rest_{context_};     ///< after a failure to accept
    std::optional<tcp::socket> newcomer_;   ///< has come, and nothing is decided about it
    asio::steady_timer patience_{context_}; ///< ends when it has waited long enough
    std::uint16_t port_ = 0;
    Peers peers_;
    Connection last_ = 0;

    std::mutex mutex_;
    std::vector<Event> events_;
    std::map<Connection, bool> unsent_; ///< that still send, and whether that is waited for

    std::thread thread_;
};

Network::Network(const Place& place, std::size_t most, std::function<void()> wake)
    : sockets_(std::make_unique<Sockets>(place, most, std::move(wake))) {}

Network::~Network() = default;

std::uint16_t Network::port() const {
    return sockets_->port();
}

std::vector<Network::Event> Network::take() {
    return sockets_->take();
}

void Network::read_on(Connection connection) {
    sockets_->read_on(connection);
}

void Network::send(Connection connection, std::string bytes) {
    sockets_->send(connection, std::move(bytes));
}

bool Network::all_sent(Connection connection) {
    return sockets_->all_sent(connection);
}

void Network::give_way(Connection connection) {
    sockets_->give_way(connection);
}

void Network::close(Connection connection) {
    sockets_->close(connection);
}

void Network::drop(Connection connection) {
    sockets_->drop(connection);
}

} // namespace kv408
