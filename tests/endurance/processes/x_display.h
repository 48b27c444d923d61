#pragma once

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>

#include "endurance/processes/program_process.h"

namespace kv408 {

/// An X server of its own, without a screen. It keeps the name in `folder`, which may have had one
/// before.
class XDisplay {
public:
    explicit XDisplay(const std::filesystem::path& folder)
        : number_file_(without_file(folder / "display")),
          server_({.program = "/bin/sh",
                   .environment = {{"NUMBER", number_file_}},
                   .arguments = {"-c",
                                 "exec Xvfb -displayfd 3 -screen 0 1280x1024x24 3>\"$NUMBER\""}}) {}

    /// Its name; empty when it does not come up.
    [[nodiscard]] std::string name() const {
        comes_true([this] { return content_of(number_file_).ends_with('\n'); },
                   std::chrono::seconds(20));
        const std::string number = content_of(number_file_);
        return number.empty() ? number : ":" + number.substr(0, number.find('\n'));
    }

    void kill() const { server_.signal(SIGKILL); }

private:
    /// `path`, where no file is then: one that an earlier server left would name that one.
    static std::filesystem::path without_file(std::filesystem::path path) {
        std::filesystem::remove(path);
        return path;
    }

    std::filesystem::path number_file_;
    ProgramProcess server_;
};

} // namespace kv408
