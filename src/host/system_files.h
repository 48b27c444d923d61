#pragma once

#include "host/files.h"

namespace kv408 {

/// The machine's file system.
class SystemFiles : public Files {
public:
    FileResult read(const std::filesystem::path& path, std::string& bytes) override;

    /// Writes a new file beside the old one, flushes it to the disk and renames it over the old,
    /// whose permissions it gets. Then removes what killed programs left of such new files.
    FileResult replace(const std::filesystem::path& path, std::string_view bytes) override;

    FileResult create(const std::filesystem::path& path, std::string_view bytes) override;

    FileResult create_folder(const std::filesystem::path& path) override;
};

} // namespace kv408
