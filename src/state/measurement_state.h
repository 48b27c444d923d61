#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kv408 {

/// Fields of a channel's measurement record, by their index.
namespace meas {
inline constexpr std::size_t vmax = 0;        ///< largest value, millivolts
inline constexpr std::size_t vmin = 1;        ///< smallest value, millivolts
inline constexpr std::size_t top = 2;         ///< top level (VAmpl+), millivolts
inline constexpr std::size_t base = 3;        ///< base level (VAmpl-), millivolts
inline constexpr std::size_t amplitude = 4;   ///< top less base (VAmplPP), millivolts
inline constexpr std::size_t mid = 5;         ///< crossing threshold of the sweep, millivolts
inline constexpr std::size_t vpp = 6;         ///< peak to peak, millivolts
inline constexpr std::size_t vrms = 7;        ///< root of the mean square, millivolts
inline constexpr std::size_t vmean = 8;       ///< mean, millivolts
inline constexpr std::size_t frequency = 9;   ///< one over the period, 1/columns
inline constexpr std::size_t period = 10;     ///< positive and negative width, columns
inline constexpr std::size_t rise = 11;       ///< 10 % to 90 %, columns; -1 when none was found
inline constexpr std::size_t fall = 12;       ///< 90 % to 10 %, columns; -1 when none was found
inline constexpr std::size_t pulse_high = 13; ///< positive pulse width, columns; 0 when none
inline constexpr std::size_t pulse_low = 14;  ///< negative pulse width, columns; 0 when none
inline constexpr std::size_t fields = 15;     ///< number of fields per channel
} // namespace meas

/// One channel's results; the engine's memory from one sweep to the next. All 0 at start-up.
using MeasurementRecord = std::array<double, meas::fields>;

/// One channel's results as texts with their units; field `mid` is never written.
using MeasurementTexts = std::array<std::string, meas::fields>;

/// Where each field of one channel is marked on the trace: a level in millivolts for a voltage, a
/// fractional column for a time.
struct AnnotationPlaces {
    std::array<double, meas::fields> start = {};
    std::array<double, meas::fields> end = {};
};

/// What the measurement engine leaves behind after each run, by channel index 0 or 1.
struct MeasurementState {
    std::array<MeasurementRecord, 2> measresults = {};
    std::array<MeasurementTexts, 2> meastexts;
    std::array<AnnotationPlaces, 2> annotations;
};

/// A point of the plot, in its units.
struct AnnotationPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend constexpr bool operator==(const AnnotationPoint&, const AnnotationPoint&) = default;
};

/// Two points: the ends of a level line, or opposite corners of a mark's square.
using AnnotationGeometry = std::array<AnnotationPoint, 2>;

/// What marks a channel's result on the trace: nothing where there is no result, two level lines,
/// or two dots on the trace.
enum class MarkKind { none, lines, dots };

/// The marks of the annotated measurement that the picture draws. The one owner is the measurement
/// presentation; the picture reads it.
struct AnnotationMarks {
    /// By channel index, the first and the second mark, of the highest annotated slot.
    std::array<std::array<AnnotationGeometry, 2>, 2> mark = {};
    /// By slot, then by channel index: what would mark the slot's result.
    std::array<std::array<MarkKind, 2>, 3> kind = {};

    friend constexpr bool operator==(const AnnotationMarks&, const AnnotationMarks&) = default;
};

} // namespace kv408
