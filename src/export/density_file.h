#pragma once

#include <filesystem>
#include <string>

#include "analysis/collected.h"

namespace kv408 {

/// The counters of `collected` as the bytes of a NumPy file: an array of 32-bit unsigned numbers,
/// points by 4096 codes as the instrument sends them.
[[nodiscard]] std::string density_file(const Collected& collected);

/// What they stand for, as a NumPy file of one record: "first_time" and "time_per_point" (seconds),
/// "sweeps" and of these "averaged", "weight" (what a hit of the last sweep counts), and "levels"
/// (volts, of each of the 4096 codes).
[[nodiscard]] std::string density_axes_file(const Collected& collected);

/// Where the axes of the counters at `path` belong: "density.npy" has "density_axes.npy" beside it.
[[nodiscard]] std::filesystem::path density_axes_path(const std::filesystem::path& path);

} // namespace kv408
