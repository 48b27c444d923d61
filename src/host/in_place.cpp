#include "host/in_place.h"

#include <cstddef>

#ifdef _WIN32
#include <algorithm>

#include "host/system_error.h"
#include <windows.h>
#else
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kv408 {
namespace {

#ifdef _WIN32

/// Whether `file` is open, and a plain file.
bool is_plain(void* file) {
    constexpr DWORD others = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    BY_HANDLE_FILE_INFORMATION information = {};
    return file != INVALID_HANDLE_VALUE && GetFileType(file) == FILE_TYPE_DISK &&
           GetFileInformationByHandle(file, &information) != 0 &&
           (information.dwFileAttributes & others) == 0;
}

/// A plain file that is open for writing, and not emptied by that. Others may go on using it.
class Writable {
public:
    explicit Writable(const std::filesystem::path& path)
        : file_(CreateFileW(path.c_str(), GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr)) {
        if (file_ != INVALID_HANDLE_VALUE && !is_plain(file_)) {
            CloseHandle(file_);
            file_ = INVALID_HANDLE_VALUE;
            SetLastError(ERROR_ACCESS_DENIED);
        }
    }
    ~Writable() {
        if (open()) {
            CloseHandle(file_);
        }
    }
    Writable(const Writable&) = delete;
    Writable& operator=(const Writable&) = delete;

    [[nodiscard]] bool open() const { return file_ != INVALID_HANDLE_VALUE; }

    /// Makes `bytes` its content, on the disk.
    [[nodiscard]] bool put(std::string_view bytes) const {
        constexpr std::size_t most = std::size_t{1} << 20U;
        bool written = SetFilePointerEx(file_, {}, nullptr, FILE_BEGIN) != 0;
        while (written && !bytes.empty()) {
            DWORD count = 0;
            written =
                WriteFile(file_, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), most)),
                          &count, nullptr) != 0;
            bytes.remove_prefix(count);
        }
        return written && SetEndOfFile(file_) != 0 && FlushFileBuffers(file_) != 0;
    }

private:
    void* file_;
};

#else

std::error_code latest_error() {
    return {errno, std::generic_category()};
}

/// A plain file that is open for writing, and not emptied by that.
class Writable {
public:
    explicit Writable(const std::filesystem::path& path)
        : descriptor_(
              ::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
        struct stat status = {};
        if (descriptor_ >= 0 && (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))) {
            ::close(descriptor_);
            descriptor_ = -1;
            errno = EINVAL;
        }
    }
    ~Writable() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    Writable(const Writable&) = delete;
    Writable& operator=(const Writable&) = delete;

    [[nodiscard]] bool open() const { return descriptor_ >= 0; }

    /// Makes `bytes` its content, on the disk.
    [[nodiscard]] bool put(std::string_view bytes) const {
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t count = ::pwrite(descriptor_, bytes.data() + done, bytes.size() - done,
                                           static_cast<off_t>(done));
            if (count <= 0 && errno != EINTR) {
                return false;
            }
            done += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        return ::ftruncate(descriptor_, static_cast<off_t>(bytes.size())) == 0 &&
               ::fsync(descriptor_) == 0;
    }

private:
    int descriptor_;
};

#endif

} // namespace

bool may_be_written(const std::filesystem::path& path) {
    return Writable(path).open();
}

std::error_code write_in_place(const std::filesystem::path& path, std::string_view bytes,
                               std::string_view old) {
    const Writable file(path);
    if (!file.open()) {
        return latest_error();
    }
    if (file.put(bytes)) {
        return {};
    }
    const std::error_code refused = latest_error();
    // If even that fails, the copy of it is there.
    [[maybe_unused]] const bool as_before = file.put(old);
    return refused;
}

} // namespace kv408
