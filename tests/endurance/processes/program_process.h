#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace kv408 {

/// How a program is started.
struct ProgramStart {
    std::filesystem::path program;
    std::map<std::string, std::string> environment = {}; ///< set on top of the test's own
    std::vector<std::string> arguments = {};
    std::vector<std::string> unset = {}; ///< variables that the program lacks
    std::vector<int> ignored = {};       ///< signals that it finds ignored when it starts
    bool unread_stderr = false;          ///< stderr is a pipe that has no reader
    /// Bytes that a file may have, as on a disk that is nearly full; nothing: any number.
    std::optional<std::size_t> disk_room = {};
};

/// A program as a process of its own; one that still runs at the end is killed.
class ProgramProcess {
public:
    explicit ProgramProcess(const ProgramStart& start);
    ~ProgramProcess();
    ProgramProcess(const ProgramProcess&) = delete;
    ProgramProcess& operator=(const ProgramProcess&) = delete;

    void signal(int number) const;

    /// Its process.
    [[nodiscard]] pid_t id() const { return id_; }

    /// True while it has not ended.
    [[nodiscard]] bool runs();

    /// Waits until it has ended, `longest` at most. Its exit code; 1000 more than the signal that
    /// ended it; nothing when it runs on.
    std::optional<int> end_within(std::chrono::milliseconds longest);

    /// What it has said on stderr so far.
    const std::string& words();

private:
    int stderr_ = -1; ///< the end of the pipe where it is read
    pid_t id_ = -1;
    std::optional<int> ended_;
    std::string words_;
};

/// Waits until `condition` holds, `longest` at most; whether it does.
template <typename Condition>
bool comes_true(Condition condition, std::chrono::milliseconds longest);

/// Waits a while.
void pause_for(std::chrono::milliseconds duration);

/// The bytes of the file at `path`; empty where there is none.
[[nodiscard]] std::string content_of(const std::filesystem::path& path);

template <typename Condition>
bool comes_true(Condition condition, std::chrono::milliseconds longest) {
    constexpr std::chrono::milliseconds step{10};
    for (auto waited = step; !condition(); waited += step) {
        if (waited > longest) {
            return false;
        }
        pause_for(step);
    }
    return true;
}

} // namespace kv408
