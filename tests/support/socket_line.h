#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kv408 {

/// A stranger's connection to a port of this computer.
class SocketLine {
public:
    /// How long is waited for what should come. Who waits so long is sure that it does not: the
    /// computer may have much else to do, and under the sanitizers everything takes longer.
    static constexpr std::chrono::milliseconds patience = std::chrono::minutes(1);

    /// To `address`, IPv4 or IPv6.
    explicit SocketLine(std::uint16_t port, const std::string& address = "127.0.0.1")
        : socket_(::socket(address.find(':') == std::string::npos ? AF_INET : AF_INET6, SOCK_STREAM,
                           0)) {
        if (address.find(':') != std::string::npos) {
            sockaddr_in6 to{};
            to.sin6_family = AF_INET6;
            to.sin6_port = htons(port);
            inet_pton(AF_INET6, address.c_str(), &to.sin6_addr);
            connected_ = connect(socket_, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
            return;
        }
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(port);
        inet_pton(AF_INET, address.c_str(), &to.sin_addr);
        connected_ = connect(socket_, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
    }
    ~SocketLine() { ::close(socket_); }
    SocketLine(const SocketLine&) = delete;
    SocketLine& operator=(const SocketLine&) = delete;

    /// Whether this computer has IPv6 at all.
    [[nodiscard]] static bool has_ipv6() {
        const int tried = ::socket(AF_INET6, SOCK_STREAM, 0);
        sockaddr_in6 own{};
        own.sin6_family = AF_INET6;
        own.sin6_addr = in6addr_loopback;
        const bool bound = bind(tried, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0;
        ::close(tried);
        return bound;
    }

    [[nodiscard]] bool connected() const { return connected_; }

    /// Sends all of `text`; false when the other side has gone.
    bool say(std::string_view text) const {
        while (!text.empty()) {
            const auto sent = ::send(socket_, text.data(), text.size(), MSG_NOSIGNAL);
            if (sent <= 0) {
                return false;
            }
            text.remove_prefix(static_cast<std::size_t>(sent));
        }
        return true;
    }
    void say_no_more() const { shutdown(socket_, SHUT_WR); }

    /// From now on the connection's end is a reset, as when the other computer has lost it.
    void end_by_reset() const {
        const linger at_once{1, 0};
        setsockopt(socket_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    }

    /// What comes next, in one piece; empty where the connection has ended, "(nothing)" where
    /// nothing came.
    [[nodiscard]] std::string hear(std::chrono::milliseconds longest = patience) const {
        pollfd one{socket_, POLLIN, 0};
        if (poll(&one, 1, static_cast<int>(longest.count())) <= 0) {
            return "(nothing)";
        }
        std::string bytes(65536, '\0');
        const auto got = recv(socket_, bytes.data(), bytes.size(), 0);
        bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        return bytes;
    }

    /// The answer to `question`.
    [[nodiscard]] std::string ask(const std::string& question) const {
        return say(question + '\n') ? hear() : "(not sent)";
    }

    /// Looks again and again whether `wanted` holds at last.
    template <typename Wanted>
    [[nodiscard]] static bool comes(Wanted wanted) {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!wanted()) {
            if (std::chrono::steady_clock::now() >= end) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

private:
    int socket_;
    bool connected_ = false;
};

} // namespace kv408
