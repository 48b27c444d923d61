#include "host/new_file.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <random>
#include <utility>

#include "host/new_file_name.h"
#include "host/system_error.h"

#include <fcntl.h>
#include <sys/stat.h>
#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <cstdio>

#include <unistd.h>
#endif

namespace kv408 {
namespace {

/// Names tried until one is free. A folder in which all of them are taken is under attack.
constexpr int most_tries = 20;

std::error_code latest_c_error() {
    return {errno, std::generic_category()};
}

#ifdef _WIN32

int create_for_writing(const std::filesystem::path& path) {
    return ::_wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                    _S_IREAD | _S_IWRITE);
}

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        constexpr std::size_t most = std::size_t{1} << 20U;
        const int written =
            ::_write(descriptor, bytes.data(), static_cast<unsigned>(std::min(bytes.size(), most)));
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::_commit(descriptor) == 0;
}

/// Renames the file at `from` to `to` in one step, as `flags` say.
std::error_code move(const std::filesystem::path& from, const std::filesystem::path& to,
                     DWORD flags) {
    // A virus scanner or an indexer may hold a file that has just been written for a moment.
    constexpr int tries = 10;
    constexpr DWORD pause_ms = 50;
    std::error_code error;
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH) != 0) {
            return {};
        }
        error = latest_error();
        if (error.value() != ERROR_SHARING_VIOLATION && error.value() != ERROR_ACCESS_DENIED) {
            break;
        }
        Sleep(pause_ms);
    }
    return error;
}

#else

constexpr mode_t for_nobody_else = 0600;

int create_for_writing(const std::filesystem::path& path) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                  for_nobody_else);
}

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::fsync(descriptor) == 0;
}

/// What a file gets from the one whose place it takes.
struct Rights {
    mode_t mode = 0;
    std::optional<std::pair<uid_t, gid_t>> owner = {};
};

/// The rights of the file at `path`, where there is none those that the user gives new files.
Rights rights_at(const std::filesystem::path& path) {
    constexpr mode_t permissions = 0777;
    constexpr mode_t of_new_files = 0666;
    constexpr mode_t meanwhile = 077;
    struct stat old = {};
    if (::lstat(path.c_str(), &old) == 0 && S_ISREG(old.st_mode)) {
        return {.mode = old.st_mode & permissions, .owner = {{old.st_uid, old.st_gid}}};
    }
    const mode_t mask = ::umask(meanwhile);
    ::umask(mask);
    return {.mode = of_new_files & ~mask};
}

/// The rights of new content of the file at `target` that is to be like `like`.
Rights rights_of(const NewFile::Like& like, const std::filesystem::path& target) {
    if (like.nobody) {
        return {.mode = for_nobody_else};
    }
    return rights_at(like.file.empty() ? target : like.file);
}

/// Gives the open file `rights`, as far as the user may.
void give(int descriptor, const Rights& rights) {
    constexpr auto as_it_is = static_cast<uid_t>(-1);
    if (rights.owner) {
        const auto [user, group] = *rights.owner;
        // A user who may not give it away keeps it.
        [[maybe_unused]] const bool given =
            ::fchown(descriptor, user, group) == 0 || ::fchown(descriptor, as_it_is, group) == 0;
    }
    ::fchmod(descriptor, rights.mode);
}

/// Makes a renaming in `folder` last over a power cut.
void flush_folder(const std::filesystem::path& folder) {
    const int descriptor =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

std::error_code move_over(const std::filesystem::path& from, const std::filesystem::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : latest_c_error();
}

/// Renames the file at `from` to `to`, where nothing is yet, on systems that cannot do so in one
/// step.
std::error_code move_to_reserved(const std::filesystem::path& from,
                                 const std::filesystem::path& to) {
    const int reserved = create_for_writing(to);
    if (reserved < 0) {
        return latest_c_error();
    }
    ::close(reserved);
    const std::error_code refused = move_over(from, to);
    if (refused) {
        ::unlink(to.c_str());
    }
    return refused;
}

std::error_code move_to_free(const std::filesystem::path& from, const std::filesystem::path& to) {
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return latest_c_error();
    }
#endif
    return move_to_reserved(from, to);
}

#endif

} // namespace

std::uint64_t unforeseeable_number() {
    constexpr unsigned half = 32;
    std::random_device random;
    return std::uint64_t{random()} << half | random();
}

NewFile::NewFile(std::filesystem::path target, NumberDraw draw)
    : target_(std::move(target)), draw_(std::move(draw)) {}

NewFile::~NewFile() {
    if (descriptor_ >= 0) {
        close();
    }
    if (!path_.empty()) {
        std::error_code error;
        std::filesystem::remove(path_, error);
    }
}

std::error_code NewFile::create() {
    for (int tries = 1; true; ++tries) {
        const std::filesystem::path path = new_file_path(target_, draw_());
        descriptor_ = create_for_writing(path);
        if (descriptor_ >= 0) {
            path_ = path;
            return {};
        }
        if (errno != EEXIST || tries == most_tries) {
            return latest_c_error();
        }
    }
}

std::error_code NewFile::write(std::string_view bytes) {
    if (const std::error_code refused = create()) {
        return refused;
    }
    return write_all(descriptor_, bytes) ? std::error_code() : latest_c_error();
}

#ifdef _WIN32

bool NewFile::close() {
    return ::_close(std::exchange(descriptor_, -1)) == 0;
}

std::error_code NewFile::take_place() {
    if (!close()) {
        return latest_c_error();
    }
    const std::error_code refused = move(path_, target_, MOVEFILE_REPLACE_EXISTING);
    if (!refused) {
        settle();
    }
    return refused;
}

std::error_code NewFile::take_free_place() {
    if (!close()) {
        return latest_c_error();
    }
    const std::error_code refused = move(path_, target_, 0);
    if (!refused) {
        settle();
    }
    return refused;
}

void NewFile::settle() {
    path_.clear();
}

#else

bool NewFile::close() {
    return ::close(std::exchange(descriptor_, -1)) == 0;
}

std::error_code NewFile::take_place() {
    const Rights rights = rights_of(like_, target_);
    const std::error_code refused = move_over(path_, target_);
    if (!refused) {
        give(descriptor_, rights);
        settle();
    }
    return refused;
}

std::error_code NewFile::take_free_place() {
    const std::error_code refused = move_to_free(path_, target_);
    if (!refused) {
        give(descriptor_, rights_of(like_, {}));
        settle();
    }
    return refused;
}

void NewFile::settle() {
    path_.clear();
    close();
    flush_folder(target_.parent_path());
}

#endif

} // namespace kv408
