#pragma once

#include <cstdint>
#include <filesystem>

namespace kv408 {

/// Where new content of the file at `target` lies before it takes its place: beside it, under a
/// name made of the start of its own, this process and `number`. The name is never longer than file
/// systems allow, however long the file's own is.
[[nodiscard]] std::filesystem::path new_file_path(const std::filesystem::path& target,
                                                  std::uint64_t number);

/// Removes what is left beside the file at `target` of writes whose processes were killed, under
/// the present names and those of earlier releases: plain files of this user that have not been
/// written for an hour.
void remove_leftovers(const std::filesystem::path& target);

} // namespace kv408
