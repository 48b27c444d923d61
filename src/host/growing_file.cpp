#include "host/growing_file.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "host/system_error.h"

namespace kv408 {

GrowingFile::GrowingFile(std::filesystem::path path) : path_(std::move(path)) {
    std::error_code error;
    size_ = std::filesystem::file_size(path_, error);
}

FileResult GrowingFile::append(std::string_view bytes) {
    errno = 0;
    if (!file_.is_open()) {
        // Never made anew: where it has gone, what was recorded has gone with it.
        file_.open(path_, std::ios::binary | std::ios::in | std::ios::out | std::ios::ate);
    }
    if (file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size())) && file_.flush()) {
        size_ += bytes.size();
        return {};
    }
    const std::error_code failure(errno != 0 ? errno : EIO, std::generic_category());
    file_.close();
    file_.clear();
    std::error_code error;
    std::filesystem::resize_file(path_, size_, error);
    return {.status = FileStatus::failed, .reason = reason_of(failure)};
}

} // namespace kv408
