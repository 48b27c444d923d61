#include "link/posix/serial_trouble.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <grp.h>
#include <sys/stat.h>

namespace kv408 {
namespace {

/// Name of the group that joining gives the right to use the file `path`; empty where no group does
/// that a user should join, "dialout" where the file cannot be looked at.
std::string group_to_join(const std::string& path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return "dialout";
    }
    constexpr mode_t needed = S_IRGRP | S_IWGRP;
    constexpr gid_t group_of_root = 0;
    if ((status.st_mode & needed) != needed || status.st_gid == group_of_root) {
        return {};
    }
    group entry = {};
    group* found = nullptr;
    std::array<char, 1024> buffer = {};
    getgrgid_r(status.st_gid, &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? found->gr_name : "";
}

std::string no_permission(const std::string& port) {
    const std::string group = group_to_join(port);
    if (group.empty()) {
        return permission_for_now(port);
    }
    return "You have no permission to use " + port + ". This line gives it to you:\n" +
           "sudo usermod -aG " + group + " $USER\n" + "Then log out and in again.";
}

} // namespace

std::string serial_trouble(const std::string& port, int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return no_permission(port);
    case EBUSY:
        return "Another program is using " + port + ". Close it and start this one again.";
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return "There is no port " + port + " any more. Check the instrument's USB cable.";
    case EIO:
        return "The port " + port + " does not work any more. Check the instrument's USB cable.";
    case ETIMEDOUT:
        return "The port " + port + " takes no more data.";
    default:
        return "The port " + port + " failed: " + std::generic_category().message(error) + ".";
    }
}

std::string permission_for_now(const std::string& node) {
    return "You have no permission to use " + node +
           ". This line gives it to you until the instrument is unplugged:\n" + "sudo chmod a+rw " +
           node;
}

} // namespace kv408
