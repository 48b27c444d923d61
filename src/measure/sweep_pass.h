#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <span>

#include "state/measurement_state.h"
#include "state/samples.h"

namespace kv408 {

/// Display columns that a sweep is measured over, 1..640.
inline constexpr int measured_columns = 640;

/// Places on the time axis, fractional display columns, in the order in which they were found.
template <std::size_t capacity>
class Positions {
public:
    /// Notes `position`; there must be room for it.
    void add(double position) {
        assert(count_ < capacity);
        position_[count_] = position;
        ++count_;
    }

    [[nodiscard]] std::size_t count() const { return count_; }

    /// The positions found.
    [[nodiscard]] std::span<const double> found() const {
        return std::span(position_).first(count_);
    }

    /// Position `index` below `capacity`; 0 where none was found.
    [[nodiscard]] double operator[](std::size_t index) const { return position_[index]; }

private:
    std::array<double, capacity> position_ = {};
    std::size_t count_ = 0;
};

/// At most this many crossings of the mid level are noted, and this many ends of rising and of
/// falling edges (two per edge).
inline constexpr std::size_t most_crossings = 17;
inline constexpr std::size_t most_edge_ends = 16;

/// What one pass over a channel's sweep has found; voltages in millivolts.
struct SweepFindings {
    double maximum = 0.0;
    double minimum = 0.0;
    double sum = 0.0;
    double squares = 0.0; ///< sum of the squares, square millivolts
    double mid = 0.0;     ///< crossing threshold of this sweep
    double top = 0.0;     ///< mean of the fullest bin above `mid`; 0 when no bin was hit
    double base = 0.0;    ///< mean of the fullest bin up to `mid`; 0 when no bin was hit
    /// Crossings of `mid`: a rising one positive, a falling one negative.
    Positions<most_crossings> crossings;
    Positions<most_edge_ends> rises; ///< low end and high end of each rising edge, in turn
    Positions<most_edge_ends> falls; ///< high end and low end of each falling edge, in turn
};

/// Goes once over columns 1..640 of a channel. Thresholds and the histograms' range are those that
/// its `previous` results give, so that they settle from sweep to sweep.
[[nodiscard]] SweepFindings pass_over(const SampleBuffer& samples,
                                      const MeasurementRecord& previous);

} // namespace kv408
