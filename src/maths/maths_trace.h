#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "state/channel.h"

namespace kv408 {

/// What is computed from one channel, A, or from two, A and B.
enum class MathsFunction {
    off,
    sum,        ///< A + B
    difference, ///< A - B
    product,    ///< A x B
    negative,   ///< -A
    derivative, ///< dA/dt
    integral,   ///< of A from its first point on
    mean,       ///< of A over sweeps, point by point
    envelope,   ///< highest and lowest of A over sweeps, point by point
};

/// What each is called in lists, in their order.
inline constexpr std::array<std::string_view, 9> maths_function_names = {
    "Off", "A + B", "A - B", "A x B", "-A", "dA/dt", "Integral of A", "Mean of A", "Envelope of A"};

/// What a trace's values count.
enum class MathsUnit { volt, square_volt, volt_per_second, volt_second };

/// What people and files call it: "V", "V^2", "V/s" or "Vs".
[[nodiscard]] std::string_view unit_name(MathsUnit unit);

/// What a trace is to be computed from.
struct MathsDefinition {
    MathsFunction function = MathsFunction::off;
    Channel a = ch1;
    Channel b = ch2; ///< of those with two channels

    /// Whether B counts.
    [[nodiscard]] bool has_two_channels() const;

    /// Whether it takes more than the last sweep.
    [[nodiscard]] bool has_sweeps() const;

    /// The unit of what comes out.
    [[nodiscard]] MathsUnit unit() const;

    /// What it is called with its channels: "CH1 - CH2", "Mean of CH1".
    [[nodiscard]] std::string label() const;

    friend bool operator==(const MathsDefinition&, const MathsDefinition&) = default;
};

/// What was computed. It never changes.
struct MathsTrace {
    MathsDefinition definition; ///< what it was computed from
    std::uint64_t sweep = 0;    ///< number of the last sweep in it
    std::size_t sweeps = 1;     ///< how many are in it

    /// Of the first value, after the trigger, picoseconds. The times are those of A.
    double first_time = 0.0;
    double time_per_point = 0.0;     ///< picoseconds
    std::size_t first_point = 0;     ///< the point of A at whose time the first value lies
    double columns_per_second = 0.0; ///< of the screen
    bool averaged = false;           ///< A of its last sweep came averaged
    bool clipped = false;            ///< one of its sweeps leaves the instrument's scale

    std::vector<double> values; ///< in the unit of the definition; of an envelope the highest
    std::vector<double> lowest; ///< of an envelope, as many; else none
};

/// The values as they stand in the columns of the screen, from its first value on, at most 640 of
/// them: in each the last value up to its time. Empty without values.
[[nodiscard]] std::vector<double> screen_columns(const MathsTrace& trace);

} // namespace kv408
