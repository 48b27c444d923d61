#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kv408 {

/// A name in the folder for temporary files, `kind` of the file at `target`, that nobody can
/// foresee; empty where there is no such folder.
[[nodiscard]] std::filesystem::path elsewhere(const std::string& kind,
                                              const std::filesystem::path& target);

/// The files that this user has under such names, newest first. What is no plain file or another
/// user's does not count.
[[nodiscard]] std::vector<std::filesystem::path>
found_elsewhere(const std::string& kind, const std::filesystem::path& target);

/// Whether there is a plain file of this user at `path`.
[[nodiscard]] bool is_own_file(const std::filesystem::path& path);

} // namespace kv408
