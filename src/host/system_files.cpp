#include "host/system_files.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>

#include "host/elsewhere.h"
#include "host/in_place.h"
#include "host/new_file.h"
#include "host/new_file_name.h"
#include "host/system_error.h"

#ifndef _WIN32
#include <fcntl.h>
#endif

namespace kv408 {
namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using OpenFile = std::unique_ptr<std::FILE, Close>;

OpenFile open_file(const std::filesystem::path& path) {
#ifdef _WIN32
    return OpenFile(_wfopen(path.c_str(), L"rb"));
#else
    // Something else may have come to the place of the file: nobody is waited for.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    return OpenFile(descriptor < 0 ? nullptr : ::fdopen(descriptor, "rb"));
#endif
}

FileStatus status_of(const std::error_code& error) {
    if (error == std::errc::file_exists) {
        return FileStatus::exists;
    }
    return error == std::errc::no_such_file_or_directory ? FileStatus::not_found
                                                         : FileStatus::failed;
}

FileResult failure(const std::error_code& error) {
    return {.status = status_of(error), .reason = reason_of(error)};
}

/// The failure `error` of the C library.
FileResult failure(int error) {
    return failure(std::error_code(error, std::generic_category()));
}

/// Why the file at `path` cannot be read or replaced as a file: reading a device may
/// never end, and it would itself be replaced; no file of the program comes near the size limit.
FileResult check_file(const std::filesystem::path& path) {
    std::error_code error;
    std::error_code parent_error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        // Not every system reports this itself.
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

/// Lets new content with `bytes` take its place, in the way that `take` says. It has the rights of
/// the file at `like`, which is its place itself where nothing else is said.
std::error_code write_new(const std::filesystem::path& target, std::string_view bytes,
                          std::error_code (NewFile::*take)(), const NewFile::Like& like = {}) {
    NewFile content(target);
    content.be_like(like);
    if (const std::error_code refused = content.write(bytes)) {
        return refused;
    }
    if (const std::error_code refused = (content.*take)()) {
        return refused;
    }
    remove_leftovers(target);
    return {};
}

FileResult result_of(const std::error_code& error) {
    return error ? failure(error) : FileResult{};
}

/// Whether it is the folder of the file at `target` that keeps it from being replaced.
bool folder_refuses([[maybe_unused]] const std::filesystem::path& target) {
#ifdef _WIN32
    // A program that holds the file does so too, and would read what is half written.
    return static_cast<bool>(NewFile(target).write({}));
#else
    return true;
#endif
}

/// What the files in the folder for temporary files are.
constexpr const char* kind_of_copies = "before";
constexpr const char* kind_of_asides = "unsaved";

/// Where what could not be written to `target` lies beside it.
std::filesystem::path beside(std::filesystem::path target) {
    return target += ".unsaved";
}

} // namespace

FileResult SystemFiles::read(const std::filesystem::path& path, std::string& bytes) {
    if (FileResult checked = check_file(path); checked.status != FileStatus::done) {
        return checked;
    }
    const OpenFile file = open_file(path);
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
    const std::error_code refused = write_new(target, bytes, &NewFile::take_place);
    if (checked.status == FileStatus::done && (refused == std::errc::permission_denied ||
                                               refused == std::errc::operation_not_permitted)) {
        return write_with_copy(target, bytes, refused);
    }
    return result_of(refused);
}

FileResult SystemFiles::write_with_copy(const std::filesystem::path& target, std::string_view bytes,
                                        const std::error_code& refused) {
    std::string old;
    if (!folder_refuses(target) || !may_be_written(target) ||
        read(target, old).status != FileStatus::done) {
        return result_of(refused);
    }
    const auto former = found_elsewhere(kind_of_copies, target);
    const auto copy = elsewhere(kind_of_copies, target);
    if (write_new(copy, old, &NewFile::take_free_place, {.nobody = true})) {
        return result_of(refused);
    }
    for (const auto& path : former) {
        std::error_code error;
        std::filesystem::remove(path, error);
    }
    FileResult result = result_of(write_in_place(target, bytes, old));
    result.copy = copy;
    return result;
}

FileResult SystemFiles::put(const std::filesystem::path& path, std::string_view bytes) {
    return result_of(write_new(path, bytes, &NewFile::take_place));
}

FileResult SystemFiles::put_copy(const std::filesystem::path& path, std::string_view bytes,
                                 const std::filesystem::path& original) {
    return result_of(
        write_new(path, bytes, &NewFile::take_place, {.file = behind_links(original)}));
}

FileResult SystemFiles::create(const std::filesystem::path& path, std::string_view bytes) {
    // Looking for a free name must write nothing for each name that is taken.
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(path, error))) {
        return failure(EEXIST);
    }
    return result_of(write_new(path, bytes, &NewFile::take_free_place));
}

FileResult SystemFiles::create_folder(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        return {.status = FileStatus::failed, .reason = reason_of(error)};
    }
    return {};
}

FileResult SystemFiles::set_aside(const std::filesystem::path& target, std::string_view bytes,
                                  std::filesystem::path& place) {
    place = beside(target);
    if (!write_new(place, bytes, &NewFile::take_place, {.nobody = true})) {
        return {};
    }
    place = elsewhere(kind_of_asides, target);
    return result_of(write_new(place, bytes, &NewFile::take_free_place, {.nobody = true}));
}

std::filesystem::path SystemFiles::aside(const std::filesystem::path& target) {
    if (is_own_file(beside(target))) {
        return beside(target);
    }
    const auto found = found_elsewhere(kind_of_asides, target);
    return found.empty() ? std::filesystem::path() : found.front();
}

void SystemFiles::drop_aside(const std::filesystem::path& target) {
    std::error_code error;
    if (is_own_file(beside(target))) {
        std::filesystem::remove(beside(target), error);
    }
    for (const auto& path : found_elsewhere(kind_of_asides, target)) {
        std::filesystem::remove(path, error);
    }
}

} // namespace kv408
