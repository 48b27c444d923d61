#include "link/serial_trouble.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <grp.h>
#include <sys/stat.h>

namespace kv408 {
namespace {

/// Name of the group that the file `path` belongs to; "dialout" when it cannot be told.
std::string group_of(const std::string& path) {
    struct stat status = {};
    group entry = {};
    group* found = nullptr;
    std::array<char, 1024> buffer = {};
    if (stat(path.c_str(), &status) != 0 ||
        getgrgid_r(status.st_gid, &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr) {
        return "dialout";
    }
    return found->gr_name;
}

} // namespace

std::string serial_trouble(const std::string& port, int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return "You have no permission to use " + port + ". This line gives it to you:\n" +
               "sudo usermod -aG " + group_of(port) + " $USER\n" + "Then log out and in again.";
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

} // namespace kv408
