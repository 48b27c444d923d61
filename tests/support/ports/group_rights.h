#pragma once

#include <stdexcept>
#include <string>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kv408 {

/// Gives the file `path` the rights `mode` and to a group that is not root's: one that Debian has
/// for serial ports, or the user's own where the test does not run as root. Gives the group's name.
inline std::string leave_to_a_group(const std::string& path, mode_t mode) {
    constexpr gid_t dialout = 20;
    const gid_t id = geteuid() == 0 ? dialout : getegid();
    const group* const found = getgrgid(id);
    if (found == nullptr || chown(path.c_str(), static_cast<uid_t>(-1), id) != 0 ||
        chmod(path.c_str(), mode) != 0) {
        throw std::runtime_error(path + " cannot be left to a group");
    }
    return found->gr_name;
}

} // namespace kv408
