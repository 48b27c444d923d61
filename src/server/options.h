#pragma once

#include <optional>
#include <ostream>
#include <span>

#include "remote/network.h"

namespace kv408 {

/// What kv408-server is started with.
struct ServerOptions {
    Network::Place place;   ///< where clients are listened for
    bool simulated = false; ///< with the simulated instrument
};

/// What a command line asks for: options, or, where it asks for a text or is wrong, the exit code.
struct CommandLine {
    std::optional<ServerOptions> options;
    int exit_code = 0;
};

/// Reads `arguments`, those behind the program's name. Texts that were asked for go to `out`, what
/// is wrong to `err`, with exit code 2.
[[nodiscard]] CommandLine read_command_line(std::span<const char* const> arguments,
                                            std::ostream& out, std::ostream& err);

} // namespace kv408
