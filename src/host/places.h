#pragma once

#include <filesystem>

namespace kv408 {

/// Where the program finds and keeps its files on this machine.
struct Places {
    std::filesystem::path settings;       ///< the folder "kv408" in the user's application data
    std::filesystem::path program;        ///< the folder that the program itself lies in
    std::filesystem::path documents = {}; ///< where the user keeps files; empty: the current folder
};

} // namespace kv408
