#include "remote/server.h"

#include <utility>

namespace kv408 {

Server::Server(const CommandTable& table, const Network::Place& place, std::function<void()> wake,
               Look look)
    : table_(table), look_(std::move(look)), network_(place, most_clients, std::move(wake)) {}

bool Server::serve(std::chrono::nanoseconds longest) {
    const auto end = std::chrono::steady_clock::now() + longest;
    take_events();
    for (bool any = true; any;) {
        any = false;
        for (auto at = clients_.begin(); at != clients_.end();) {
            const auto next = std::next(at); // the step may end this one
            any = step(at) || any;
            at = next;
        }
        if (any && std::chrono::steady_clock::now() >= end) {
            return true;
        }
    }
    return false;
}

void Server::take_events() {
    for (Network::Event& event : network_.take()) {
        if (const auto* opened = std::get_if<Network::Opened>(&event)) {
            clients_.try_emplace(opened->connection, table_, opened->address);
            changed();
            continue;
        }
        const auto at = clients_.find(
            std::visit([](const auto& any) { return any.connection; }, std::as_const(event)));
        if (at == clients_.end()) {
            continue;
        }
        if (auto* received = std::get_if<Network::Received>(&event)) {
            at->second.unread += received->bytes;
            at->second.reading = false;
        } else {
            at->second.line =
                std::holds_alternative<Network::Lost>(event) ? Line::lost : Line::ended;
        }
    }
}

bool Server::step(Clients::iterator at) {
    Remote& remote = at->second;
    if (!network_.all_sent(at->first)) {
        return false; // a client that does not read its answers is given no more
    }
    const Client::Moment moment = look_(remote.client);
    if (remote.client.can_run(moment)) {
        std::string reply = remote.client.run(moment);
        if (!reply.empty()) {
            network_.send(at->first, std::move(reply));
        }
        return true;
    }
    if (remote.client.busy()) {
        hold(at);
        return false;
    }
    return feed(at);
}

// What a client sent before it went is run, but is not waited for.
void Server::hold(Clients::iterator at) {
    Remote& remote = at->second;
    // A little is read in advance, to see whether more will come.
    constexpr std::size_t read_in_advance = std::size_t{16} * 1024;
    if (remote.unread.size() < read_in_advance) {
        read_on(at);
    }
    if (remote.line == Line::lost) {
        disconnect(at->first);
    } else if (remote.line == Line::ended && !remote.client.awaits_answer()) {
        if (!std::exchange(remote.gives_way, true)) {
            network_.give_way(at->first);
        }
        if (silent_) {
            silent_(remote.client);
        }
    }
}

void Server::read_on(Clients::iterator at) {
    if (!std::exchange(at->second.reading, true)) {
        network_.read_on(at->first);
    }
}

bool Server::feed(Clients::iterator at) {
    Remote& remote = at->second;
    if (!remote.unread.empty()) {
        remote.unread.erase(0, remote.client.take(remote.unread));
        if (remote.client.closed()) {
            disconnect(at->first);
        } else if (remote.unread.empty()) {
            read_on(at);
        }
        return true;
    }
    if (remote.line != Line::open) { // and all that came before that has been run
        network_.close(at->first);
        remove(at);
    }
    return false;
}

std::vector<Server::Seen> Server::clients() const {
    std::vector<Seen> seen;
    for (const auto& [connection, remote] : clients_) {
        seen.push_back({connection, remote.address});
    }
    return seen;
}

void Server::disconnect(Network::Connection connection) {
    network_.drop(connection);
    if (const auto at = clients_.find(connection); at != clients_.end()) {
        remove(at);
    }
}

void Server::remove(Clients::iterator at) {
    if (gone_) {
        gone_(at->second.client);
    }
    clients_.erase(at);
    changed();
}

void Server::for_each(const std::function<void(Client&)>& act) {
    for (auto& [connection, remote] : clients_) {
        act(remote.client);
    }
}

void Server::changed() const {
    if (changed_) {
        changed_();
    }
}

} // namespace kv408
