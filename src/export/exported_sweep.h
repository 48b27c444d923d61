#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "state/channel.h"
#include "state/sweep.h"

namespace kv408 {

/// One channel's points as they leave the program, or those of a computed trace, and what they were
/// taken with.
struct ExportedChannel {
    /// "CH1" or "CH2"; of a computed trace "MATH1" or "MATH2", with "MAX" or "MIN" behind it where
    /// that is one of the two lines of an envelope.
    std::string name;
    double first_time = 0.0; ///< of the first point, after the trigger, picoseconds
    double interval = 0.0;   ///< from point to point, picoseconds
    std::vector<double> mv;  ///< point by point, thousandths of the unit, at the input
    double v_per_div = 0.0;  ///< units per division that were selected
    double position = 0.0;   ///< of the zero line, divisions above the centre of the screen
    double delay = 0.0;      ///< as it was set, picoseconds
    std::string unit = "V";
    std::string formula = {}; ///< of a computed trace what it is, "CH1 - CH2"; else empty
    Channel follows = ch1;    ///< of a computed trace the channel whose times it has

    /// The time of point `index`, from 0, after the trigger, seconds.
    [[nodiscard]] double time(std::size_t index) const;

    /// Whether it was computed from channels.
    [[nodiscard]] bool computed() const { return !formula.empty(); }

    /// Point `index`, from 0, in the unit.
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
    /// Those that were on, in their order; behind them what was computed from them.
    std::vector<ExportedChannel> channels;

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

/// Adds to a sweep that is to be exported what was computed from it.
using AddComputed = std::function<void(const Sweep& sweep, ExportedSweep& exported)>;

} // namespace kv408
