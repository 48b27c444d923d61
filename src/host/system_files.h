#pragma once

#include <system_error>

#include "host/files.h"

namespace kv408 {

/// The machine's file system.
class SystemFiles : public Files {
public:
    FileResult read(const std::filesystem::path& path, std::string& bytes) override;

    /// Writes a new file beside the old one, flushes it to the disk and renames it over the old,
    /// whose permissions it gets. Then removes what killed programs left of such new files.
    FileResult replace(const std::filesystem::path& path, std::string_view bytes) override;

    FileResult put(const std::filesystem::path& path, std::string_view bytes) override;

    /// The copy has the permissions and, as far as the user may give files away, the owner of the
    /// original.
    FileResult put_copy(const std::filesystem::path& path, std::string_view bytes,
                        const std::filesystem::path& original) override;

    FileResult create(const std::filesystem::path& path, std::string_view bytes) override;

    FileResult create_folder(const std::filesystem::path& path) override;

    /// Beside the target it gets the further ending ".unsaved". Nobody else may read it.
    FileResult set_aside(const std::filesystem::path& target, std::string_view bytes,
                         std::filesystem::path& place) override;
    std::filesystem::path aside(const std::filesystem::path& target) override;
    void drop_aside(const std::filesystem::path& target) override;

private:
    /// Writes `bytes` into the file at `target`, whose replacement was `refused`, and keeps what it
    /// held in the folder for temporary files.
    FileResult write_with_copy(const std::filesystem::path& target, std::string_view bytes,
                               const std::error_code& refused);
};

} // namespace kv408
