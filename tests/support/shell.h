#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

#include <sys/wait.h>

namespace kv408 {

/// What a process wrote to its output, and its exit code, -1 when it had none.
struct Outcome {
    std::string output;
    int code = -1;
};

/// Runs the shell's command `command` to its end.
inline Outcome run_in_shell(const std::string& command) {
    Outcome outcome;
    FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 4096> bytes = {};
    while (const std::size_t count = fread(bytes.data(), 1, bytes.size(), pipe)) {
        outcome.output.append(bytes.data(), count);
    }
    const int status = pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

} // namespace kv408
