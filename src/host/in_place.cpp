#include "host/in_place.h"

#ifndef _WIN32
#include <cerrno>
#include <cstddef>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kv408 {

#ifdef _WIN32

bool may_be_written(const std::filesystem::path& /*path*/) {
    return false;
}

std::error_code write_in_place(const std::filesystem::path& /*path*/, std::string_view /*bytes*/,
                               std::string_view /*old*/) {
    return std::make_error_code(std::errc::operation_not_supported);
}

#else

namespace {

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
    // Where not even that can be done, its copy is there.
    [[maybe_unused]] const bool as_before = file.put(old);
    return refused;
}

#endif

} // namespace kv408
