#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "state/sweep.h"

namespace kv408 {

/// One channel's points as they leave the program, and what they were taken with.
struct ExportedChannel {
    std::string name;        ///< "CH1" or "CH2"
    double first_time = 0.0; ///< of the first point, after the trigger, picoseconds
    double interval = 0.0;   ///< from point to point, picoseconds
    std::vector<double> mv;  ///< point by point, millivolts at the input
    double v_per_div = 0.0;  ///< volts per division that were selected
    double position = 0.0;   ///< of the zero line, divisions above the centre of the screen
    double delay = 0.0;      ///< as it was set, picoseconds

    /// The time of point `index`, from 0, after the trigger, seconds.
    [[nodiscard]] double time(std::size_t index) const;

    /// The voltage of point `index`, from 0, volts.
    [[nodiscard]] double volts(std::size_t index) const;

    friend bool operator==(const ExportedChannel&, const ExportedChannel&) = default;
};

/// A sweep as it leaves the program, or as it comes back from one of our files.
struct ExportedSweep {
    std::string version;       ///< of the program that took it
    std::string serial;        ///< serial number of the instrument
    std::string date;          ///< when it had come: ISO 8601, local time with its zone
    std::string mode;          ///< "block" or "point"
    std::uint64_t number = 0;  ///< of the sweep
    double time_per_div = 0.0; ///< picoseconds per division that were selected
    std::string trigger;       ///< source, edge, level, hysteresis and time-out in words
    bool averaged = false;     ///< with "Filter Avg."
    std::vector<ExportedChannel> channels; ///< those that were on, in their order

    /// Whether the points of all channels lie at the same times.
    [[nodiscard]] bool same_times() const;

    friend bool operator==(const ExportedSweep&, const ExportedSweep&) = default;
};

/// What a sweep does not know of itself.
struct ExportOrigin {
    std::string version;                ///< of this program
    std::string serial;                 ///< serial number of the instrument
    std::chrono::minutes utc_offset{0}; ///< of the local time at the time of the sweep
};

/// `sweep` with those of the channels `on` that have come whole with its number: the points that
/// the instrument sent, all or the first `most`, without the repeats that fill the screen.
[[nodiscard]] ExportedSweep exported_sweep(const Sweep& sweep, const std::array<bool, 2>& on,
                                           const ExportOrigin& origin, std::size_t most = npoints);

} // namespace kv408
