#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "host/files.h"

namespace kv408 {

/// How saving a file ended.
struct SavedFile {
    FileStatus status =
        FileStatus::done; ///< `exists`: nothing was written, the user is to be asked
    std::string message;  ///< for the user: where the file lies, or which one failed and why
};

/// Saves `bytes` as the file at `path` in one step: whatever happens, there is the whole file or
/// what was there before. With `over` it takes the place of a file that is there.
[[nodiscard]] SavedFile save_export(Files& files, const std::filesystem::path& path,
                                    std::string_view bytes, bool over);

} // namespace kv408
