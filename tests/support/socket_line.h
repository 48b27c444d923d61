#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kv408 {

/// A stranger's connection to a port of this computer.
class SocketLine {
public:
    explicit SocketLine(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(port);
        to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        connected_ = connect(socket_, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
    }
    ~SocketLine() { ::close(socket_); }
    SocketLine(const SocketLine&) = delete;
    SocketLine& operator=(const SocketLine&) = delete;

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

    /// What comes next, in one piece; empty where the connection has ended, "(nothing)" where
    /// nothing came.
    [[nodiscard]] std::string
    hear(std::chrono::milliseconds longest = std::chrono::seconds(1)) const {
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
    [[nodiscard]] std::string
    ask(const std::string& question,
        std::chrono::milliseconds longest = std::chrono::seconds(1)) const {
        return say(question + '\n') ? hear(longest) : "(not sent)";
    }

private:
    int socket_;
    bool connected_ = false;
};

} // namespace kv408
