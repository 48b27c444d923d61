#include "host/elsewhere.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <system_error>

#include "host/new_file.h"
#include "host/path_text.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kv408 {
namespace {

/// What the names begin with. The number stands for the whole path of `target`, so that files of
/// one name in several folders keep apart; it is the same in every run.
std::string start_of(const std::string& kind, const std::filesystem::path& target) {
    std::uint64_t number = 0xCBF29CE484222325; // FNV-1a
    for (const char byte : text_of_path(std::filesystem::absolute(target))) {
        number = (number ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    }
    std::array<char, 20> digits = {};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return "kv408-" + kind + "-" + digits.data() + "-";
}

std::filesystem::file_time_type age_of(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::last_write_time(path, error);
}

} // namespace

bool is_own_file(const std::filesystem::path& path) {
#ifdef _WIN32
    std::error_code error;
    return std::filesystem::is_regular_file(std::filesystem::symlink_status(path, error));
#else
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid();
#endif
}

std::filesystem::path elsewhere(const std::string& kind, const std::filesystem::path& target) {
    std::error_code error;
    const auto folder = std::filesystem::temp_directory_path(error);
    return error ? folder
                 : folder /
                       (start_of(kind, target) + std::to_string(unforeseeable_number()) + ".TXT");
}

std::vector<std::filesystem::path> found_elsewhere(const std::string& kind,
                                                   const std::filesystem::path& target) {
    const auto start = std::filesystem::path(start_of(kind, target)).native();
    std::vector<std::filesystem::path> found;
    std::error_code error;
    std::filesystem::directory_iterator entry(std::filesystem::temp_directory_path(error), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (entry->path().filename().native().starts_with(start) && is_own_file(entry->path())) {
            found.push_back(entry->path());
        }
    }
    std::sort(found.begin(), found.end(),
              [](const auto& one, const auto& other) { return age_of(one) > age_of(other); });
    return found;
}

} // namespace kv408
