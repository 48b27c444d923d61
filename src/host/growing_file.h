#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "host/files.h"

namespace kv408 {

/// A file that only grows, piece by piece. Each piece is with the system as soon as it is appended,
/// so that it outlives the program; of one that cannot be appended whole nothing stays.
class GrowingFile {
public:
    /// Goes on with the file at `path`, which there is.
    explicit GrowingFile(std::filesystem::path path);

    /// How long it is, bytes.
    [[nodiscard]] std::uintmax_t size() const { return size_; }

    /// Appends `bytes`. After a failure further calls try again.
    FileResult append(std::string_view bytes);

private:
    std::filesystem::path path_;
    std::ofstream file_;
    std::uintmax_t size_ = 0; ///< of the pieces that are whole
};

} // namespace kv408
