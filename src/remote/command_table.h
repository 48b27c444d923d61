#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "remote/header_pattern.h"
#include "remote/message_reader.h"

namespace kv408 {

class Client;

/// A command or query that a client has sent, as its function gets it.
struct Call {
    Client& client;
    std::vector<int> suffixes;         ///< the numbers in its header, as many as the pattern has
    std::vector<Parameter> parameters; ///< as many as the command takes
};

/// How many parameters a command or query takes.
struct ParameterCount {
    std::size_t least = 0;
    std::size_t most = 0;
};

/// A header of the command tree and what it does. The functions throw `Refused` for what cannot be
/// done.
struct Command {
    /// Runs the command; not set where there is only the query.
    using Act = std::function<void(const Call&)>;
    /// Gives the query's answer, empty where it comes later; not set where there is only the
    /// command.
    using Answer = std::function<std::string(const Call&)>;

    std::string header; ///< as a `HeaderPattern` is written
    Act act = {};
    ParameterCount takes = {};
    Answer answer = {};
    ParameterCount query_takes = {};
    /// What it takes, as the manual has it: "boolean", "`A`, `B`", "0 to 255, at first 10". Empty
    /// where it takes nothing.
    std::string value = {};
};

/// All that clients may send. A header stands in it once.
class CommandTable {
public:
    /// Adds `commands` behind those that are there.
    void add(std::vector<Command> commands);

    /// Does `unit`, whose whole header from the root is `nodes`, for `client`; returns the answer,
    /// empty for a command. Throws `Refused`.
    [[nodiscard]] std::string run(Client& client, const std::vector<std::string>& nodes,
                                  MessageUnit unit) const;

    /// All commands, in order.
    [[nodiscard]] const std::vector<Command>& commands() const { return commands_; }

private:
    std::vector<Command> commands_;
    std::vector<HeaderPattern> patterns_; ///< of the same index
};

} // namespace kv408
