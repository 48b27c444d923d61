#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kv408 {

/// How a request to the file system ended.
enum class FileStatus { done, not_found, failed, exists };

/// The outcome of a request to the file system.
struct FileResult {
    FileStatus status = FileStatus::done;
    std::string reason = {}; ///< the system's own words, empty when done
    /// Where a copy lies of what a file held that had to be written in place; empty otherwise.
    std::filesystem::path copy = {};
};

/// Whole files of the machine.
class Files {
public:
    virtual ~Files() = default;

    /// Reads the file at `path` into `bytes`. `not_found` when the file or its folder is missing;
    /// `bytes` is then unchanged.
    virtual FileResult read(const std::filesystem::path& path, std::string& bytes) = 0;

    /// Makes `bytes` the content of the file at `path` in one step: whatever happens meanwhile,
    /// the file is either the old one or the new one, whole. A file that may be written, but in
    /// whose folder nothing can be made or replaced, is written in place, after a copy of it has
    /// been laid elsewhere.
    virtual FileResult replace(const std::filesystem::path& path, std::string_view bytes) = 0;

    /// The same for what the program itself lays beside a file: a link at `path` is replaced, and
    /// what it leads to stays as it is.
    virtual FileResult put(const std::filesystem::path& path, std::string_view bytes) {
        return replace(path, bytes);
    }

    /// The same for `bytes` that are a copy of the file at `original`: only who may read that may
    /// read the copy.
    virtual FileResult put_copy(const std::filesystem::path& path, std::string_view bytes,
                                const std::filesystem::path& /*original*/) {
        return put(path, bytes);
    }

    /// Makes a file at `path` with the content `bytes` in one step, where there is nothing yet;
    /// `exists` when there is something, even a link to nothing.
    virtual FileResult create(const std::filesystem::path& path, std::string_view bytes) = 0;

    /// Makes the folder `path` and those above it; done as well when it is there already.
    virtual FileResult create_folder(const std::filesystem::path& path) = 0;

    /// Lays `bytes`, which could not be written to the file at `target`, aside for a later start:
    /// beside it or else in the folder for temporary files. `place` becomes where.
    virtual FileResult set_aside(const std::filesystem::path& target, std::string_view bytes,
                                 std::filesystem::path& place) = 0;

    /// Where the latest lies that this user has set aside for the file at `target`; empty when
    /// there is nothing.
    virtual std::filesystem::path aside(const std::filesystem::path& target) = 0;

    /// Removes all that this user has set aside for the file at `target`.
    virtual void drop_aside(const std::filesystem::path& target) = 0;
};

} // namespace kv408
