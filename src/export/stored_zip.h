#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kv408 {

/// A file of a ZIP archive.
struct ZipEntry {
    std::string_view name; ///< ASCII
    std::string_view bytes;
};

/// A ZIP archive of `entries`, uncompressed and together below 4 GiB. All files are dated
/// 1980-01-01, so that equal entries give equal archives.
[[nodiscard]] std::string stored_zip(std::span<const ZipEntry> entries);

} // namespace kv408
