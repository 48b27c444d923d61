#pragma once

#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

namespace kv408 {

/// The files of the masks that come with the program, in the order in which they are offered.
inline constexpr std::array<std::string_view, 6> shipped_masks = {
    "hexagon-40.yaml", "hexagon-60.yaml", "diamond-50.yaml",
    "stm-1.yaml",      "10gbase-lr.yaml", "pulse-20ns.yaml"};

/// Where `file` of these may lie, seen from the folder `program` that the program lies in: beside
/// it, as on Windows; where a package puts it; in the tree that it was built in.
[[nodiscard]] std::vector<std::filesystem::path>
shipped_mask_paths(const std::filesystem::path& program, std::string_view file);

} // namespace kv408
