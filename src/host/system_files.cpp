#include "host/system_files.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "host/path_text.h"
#include "host/processes.h"
#include "host/system_error.h"
#include "state/rounding.h"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kv408 {
namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using OpenFile = std::unique_ptr<std::FILE, Close>;

OpenFile open_file(const std::filesystem::path& path, bool writing) {
#ifdef _WIN32
    return OpenFile(_wfopen(path.c_str(), writing ? L"wb" : L"rb"));
#else
    return OpenFile(std::fopen(path.c_str(), writing ? "wb" : "rb"));
#endif
}

FileResult failure(const std::error_code& error) {
    return {.status = error == std::errc::no_such_file_or_directory ? FileStatus::not_found
                                                                    : FileStatus::failed,
            .reason = reason_of(error)};
}

/// The failure `error` of the C library.
FileResult failure(int error) {
    return failure(std::error_code(error, std::generic_category()));
}

/// Why the file at `path` cannot be read or replaced as a file: devices would swallow the program's
/// time or be replaced themselves, and no file of the program comes near the size limit.
FileResult check_file(const std::filesystem::path& path) {
    std::error_code error;
    std::error_code parent_error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        // Not every system says so itself.
        if (std::filesystem::is_regular_file(path.parent_path(), parent_error)) {
            return failure(ENOTDIR);
        }
        return error ? failure(error) : failure(ENOENT);
    }
    if (std::filesystem::is_directory(status)) {
        return failure(EISDIR);
    }
    if (!std::filesystem::is_regular_file(status)) {
        return failure(EINVAL);
    }
    constexpr std::uintmax_t largest = std::uintmax_t{1} << 30U;
    return std::filesystem::file_size(path, error) > largest ? failure(EFBIG) : FileResult{};
}

/// Where the links that start at `path` lead to, be it there or not.
std::filesystem::path behind_links(std::filesystem::path path) {
    constexpr int longest_chain = 40;
    std::error_code error;
    for (int link = 0; link < longest_chain && std::filesystem::is_symlink(path, error); ++link) {
        const auto next = std::filesystem::read_symlink(path, error);
        if (error) {
            break;
        }
        path = path.parent_path() / next;
    }
    return path;
}

/// True for a file that nobody may write to; replacing it would get round that.
bool is_write_protected(const std::filesystem::path& path) {
    using std::filesystem::perms;
    std::error_code error;
    const perms writers = perms::owner_write | perms::group_write | perms::others_write;
    return (std::filesystem::status(path, error).permissions() & writers) == perms::none;
}

bool flush_to_disk(std::FILE* file) {
    if (std::fflush(file) != 0) {
        return false;
    }
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

/// Makes a renaming in `folder` last over a power cut, where the system knows such a thing.
void flush_folder([[maybe_unused]] const std::filesystem::path& folder) {
#ifndef _WIN32
    const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (descriptor >= 0) {
        fsync(descriptor);
        ::close(descriptor);
    }
#endif
}

/// Renames the file at `from` to `to` in one step, over a file that is there already.
std::error_code move_over(const std::filesystem::path& from, const std::filesystem::path& to) {
#ifdef _WIN32
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    // A virus scanner or an indexer may hold a file that has just been written for a moment.
    constexpr int tries = 10;
    constexpr DWORD pause_ms = 50;
    std::error_code error;
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), how) != 0) {
            return {};
        }
        error = latest_error();
        if (error.value() != ERROR_SHARING_VIOLATION && error.value() != ERROR_ACCESS_DENIED) {
            break;
        }
        Sleep(pause_ms);
    }
    return error;
#else
    std::error_code error;
    std::filesystem::rename(from, to, error);
    return error;
#endif
}

/// Gives the file at `path` the permissions of the one at `model`, if that exists.
void copy_permissions(const std::filesystem::path& model, const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(model, error);
    if (std::filesystem::exists(status)) {
        std::filesystem::permissions(path, status.permissions(), error);
    }
}

/// What follows the name of a file in that of its new content before the renaming; the number of
/// the process that writes it comes last.
constexpr const char* new_mark = ".kv408-new";

/// Age from which new content counts as left behind. Where several computers share a folder the
/// process that writes may run on another one.
constexpr std::chrono::hours leftover_age{1};

/// The process that wrote the new content called `name` of the file called `file`; nothing when it
/// is not called so. No name is turned into text that might not be text.
std::optional<int> writer_of(const std::filesystem::path& name, std::filesystem::path file) {
    const auto start = (file += new_mark).native();
    if (!name.native().starts_with(start)) {
        return std::nullopt;
    }
    const auto number = name.native().substr(start.size());
    const auto is_digit = [](auto character) { return character >= '0' && character <= '9'; };
    if (!std::all_of(number.begin(), number.end(), is_digit)) {
        return std::nullopt;
    }
    return int32_in(text_of_path(number));
}

/// True when the file at `path` was last written more than `leftover_age` ago.
bool is_old(const std::filesystem::path& path) {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(path, error);
    return !error && std::filesystem::file_time_type::clock::now() - written > leftover_age;
}

/// Removes what is left beside the file at `path` of writes whose processes were killed.
void remove_leftovers(const std::filesystem::path& path) {
    const auto folder = path.has_parent_path() ? path.parent_path() : ".";
    std::error_code error;
    std::error_code refused;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const auto writer = writer_of(entry->path().filename(), path.filename());
        if (writer && !process_runs(*writer) && entry->is_regular_file(refused) &&
            is_old(entry->path())) {
            std::filesystem::remove(entry->path(), refused);
        }
    }
}

/// Writes a new file at `path` that is to replace the one at `old`.
FileResult write_whole(const std::filesystem::path& path, const std::filesystem::path& old,
                       std::string_view bytes) {
    OpenFile file = open_file(path, true);
    if (!file) {
        return failure(errno);
    }
    copy_permissions(old, path);
    if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() ||
        !flush_to_disk(file.get())) {
        return failure(errno);
    }
    if (std::fclose(file.release()) != 0) {
        return failure(errno);
    }
    return {};
}

} // namespace

FileResult SystemFiles::read(const std::filesystem::path& path, std::string& bytes) {
    if (FileResult checked = check_file(path); checked.status != FileStatus::done) {
        return checked;
    }
    const OpenFile file = open_file(path, false);
    if (!file) {
        return failure(errno);
    }
    std::string content;
    std::string part(std::size_t{1} << 16U, '\0');
    for (;;) {
        const std::size_t count = std::fread(part.data(), 1, part.size(), file.get());
        content.append(part, 0, count);
        if (count < part.size()) {
            break;
        }
    }
    if (std::ferror(file.get()) != 0) {
        return failure(errno);
    }
    bytes = std::move(content);
    return {};
}

FileResult SystemFiles::replace(const std::filesystem::path& path, std::string_view bytes) {
    // A link stays a link: what it leads to is replaced.
    const std::filesystem::path target = behind_links(path);
    FileResult checked = check_file(target);
    if (checked.status == FileStatus::failed) {
        return checked;
    }
    if (checked.status == FileStatus::done && is_write_protected(target)) {
        return failure(EACCES);
    }
    // The process in the name: two programs that end together do not write into one file.
    std::filesystem::path beside = target;
    beside += new_mark + std::to_string(process_id());
    FileResult written = write_whole(beside, target, bytes);
    std::error_code error;
    if (written.status != FileStatus::done) {
        std::filesystem::remove(beside, error);
        return written;
    }
    if (const std::error_code refused = move_over(beside, target); refused) {
        std::filesystem::remove(beside, error);
        return failure(refused);
    }
    remove_leftovers(target);
    flush_folder(target.parent_path());
    return {};
}

FileResult SystemFiles::create_folder(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        return {.status = FileStatus::failed, .reason = reason_of(error)};
    }
    return {};
}

} // namespace kv408
