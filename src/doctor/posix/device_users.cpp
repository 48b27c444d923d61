#include "doctor/posix/device_users.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace kv408 {
namespace {

namespace fs = std::filesystem;

/// The whole of `text` as a number, nothing when it is none.
std::optional<unsigned long> number(const std::string& text, int base = 10) {
    unsigned long value = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc{} && stopped == end && !text.empty() ? std::optional(value)
                                                                   : std::nullopt;
}

/// The id that `text` is, nothing when it is none.
std::optional<int> process_id(const std::string& text) {
    const auto value = number(text);
    return value && *value > 0 && *value <= 0x7fffffff ? std::optional(static_cast<int>(*value))
                                                       : std::nullopt;
}

fs::path folder_of(int process) {
    return fs::path("/proc") / std::to_string(process);
}

std::string name_of(int process) {
    std::ifstream file(folder_of(process) / "comm");
    std::string name;
    std::getline(file, name);
    return name;
}

/// Runs `action(process)` for every process that shows.
template <typename Action>
void for_each_process(const Action& action) {
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        if (const auto process = process_id(entry->path().filename().string())) {
            action(*process);
        }
    }
}

/// A device node, by which the same device is known again.
class Node {
public:
    explicit Node(const std::string& path) : known_(stat(path.c_str(), &status_) == 0) {}

    /// Whether `path` leads to the same device.
    [[nodiscard]] bool is(const fs::path& path) const {
        struct stat other = {};
        if (!known_ || stat(path.c_str(), &other) != 0) {
            return false;
        }
        return (other.st_dev == status_.st_dev && other.st_ino == status_.st_ino) ||
               (S_ISCHR(other.st_mode) && S_ISCHR(status_.st_mode) &&
                other.st_rdev == status_.st_rdev);
    }

    /// Whether a line of /proc/locks that ends its fifth word with `place`, "00:18:12", means it.
    [[nodiscard]] bool is_at(const std::string& place) const {
        constexpr int hexadecimal = 16;
        std::istringstream words(place);
        std::string major_number;
        std::string minor_number;
        std::string file;
        std::getline(words, major_number, ':');
        std::getline(words, minor_number, ':');
        std::getline(words, file);
        return known_ && number(major_number, hexadecimal) == major(status_.st_dev) &&
               number(minor_number, hexadecimal) == minor(status_.st_dev) &&
               number(file) == status_.st_ino;
    }

private:
    struct stat status_ = {};
    bool known_;
};

bool has_open(int process, const Node& node) {
    std::error_code error;
    for (fs::directory_iterator entry(folder_of(process) / "fd", error), end;
         !error && entry != end; entry.increment(error)) {
        // Only what is a device: asking after a file may wait for a server that is gone.
        std::error_code unread;
        if (fs::read_symlink(entry->path(), unread).string().starts_with("/dev/") &&
            node.is(entry->path())) {
            return true;
        }
    }
    return false;
}

void add_who_locks(const Node& node, std::set<int>& found) {
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        // "1: FLOCK  ADVISORY  WRITE 4711 00:18:12 0 EOF"; one that waits has an arrow in front.
        std::istringstream words(line);
        std::string word;
        std::string process;
        std::string place;
        words >> word >> word >> word >> word >> process >> place;
        if (const auto id = process_id(process); id && node.is_at(place)) {
            found.insert(*id);
        }
    }
}

void add_who_left_a_lock_file(const std::string& device, const fs::path& locks,
                              std::set<int>& found) {
    std::ifstream file(locks / ("LCK.." + fs::path(device).filename().string()));
    std::string word;
    file >> word;
    // Of a process that has ended it means nothing.
    if (const auto id = process_id(word); id && !name_of(*id).empty()) {
        found.insert(*id);
    }
}

} // namespace

DeviceUsers users_of(const std::string& device, const fs::path& locks) {
    const Node node(device);
    std::set<int> found;
    for_each_process([&](int process) {
        if (has_open(process, node)) {
            found.insert(process);
        }
    });
    add_who_locks(node, found);
    add_who_left_a_lock_file(device, locks, found);
    DeviceUsers users;
    std::transform(found.begin(), found.end(), std::back_inserter(users), [](int process) {
        return DeviceUser{process, name_of(process)};
    });
    return users;
}

DeviceUsers processes_called(const std::string& name) {
    DeviceUsers found;
    for_each_process([&](int process) {
        if (name_of(process) == name) {
            found.push_back({process, name});
        }
    });
    std::sort(found.begin(), found.end(), [](const DeviceUser& one, const DeviceUser& other) {
        return one.process < other.process;
    });
    return found;
}

} // namespace kv408
