#pragma once

#include <string>
#include <vector>

namespace kv408 {

/// The addresses by which the network reaches this computer now, IPv4 first; none where the system
/// does not tell.
[[nodiscard]] std::vector<std::string> own_addresses();

/// Whether `text` is an address, IPv4 or IPv6, of whatever computer.
[[nodiscard]] bool is_address(const std::string& text);

} // namespace kv408
