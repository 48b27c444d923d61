#pragma once

// Which processes use a device, as the kernel shows them in files. Not there on Windows.

#include <filesystem>
#include <string>
#include <vector>

namespace kv408 {

/// A process.
struct DeviceUser {
    int process = 0;  ///< its id
    std::string name; ///< name of its program, empty when that cannot be told

    friend bool operator==(const DeviceUser&, const DeviceUser&) = default;
};

/// Processes in the order of their ids, each once.
using DeviceUsers = std::vector<DeviceUser>;

/// The processes that have the device node `device` open, hold a lock on it, or have left a lock
/// file about it in `locks`. Who is not root sees the locks of other users' processes, but not
/// what they have open.
[[nodiscard]] DeviceUsers users_of(const std::string& device,
                                   const std::filesystem::path& locks = "/run/lock");

/// The processes whose program is called `name`.
[[nodiscard]] DeviceUsers processes_called(const std::string& name);

} // namespace kv408
