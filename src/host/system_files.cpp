#include "host/system_files.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#ifdef _WIN32
#include <io.h>
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

/// What the file system said last.
FileResult failure(int error) {
    return {.status = error == ENOENT ? FileStatus::not_found : FileStatus::failed,
            .reason = std::generic_category().message(error)};
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

FileResult write_whole(const std::filesystem::path& path, std::string_view bytes) {
    OpenFile file = open_file(path, true);
    if (!file) {
        return failure(errno);
    }
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
        return {.status = FileStatus::failed, .reason = std::generic_category().message(errno)};
    }
    bytes = std::move(content);
    return {};
}

FileResult SystemFiles::replace(const std::filesystem::path& path, std::string_view bytes) {
    std::error_code error;
    // A link stays a link: what it leads to is replaced.
    std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
    if (error) {
        target = path;
    }
    std::filesystem::path beside = target;
    beside += ".new";
    const FileResult written = write_whole(beside, bytes);
    if (written.status != FileStatus::done) {
        std::filesystem::remove(beside, error);
        return written;
    }
    std::filesystem::rename(beside, target, error);
    if (error) {
        const std::string reason = error.message();
        std::filesystem::remove(beside, error);
        return {.status = FileStatus::failed, .reason = reason};
    }
    flush_folder(target.parent_path());
    return {};
}

FileResult SystemFiles::create_folder(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        return {.status = FileStatus::failed, .reason = error.message()};
    }
    return {};
}

} // namespace kv408
