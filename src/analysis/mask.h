#pragma once

#include <string>
#include <vector>

#include "analysis/collected.h"
#include "analysis/eye.h"
#include "analysis/told.h"
#include "analysis/two_levels.h"

namespace kv408 {

/// A corner of a mask.
struct MaskPoint {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const MaskPoint&, const MaskPoint&) = default;
};

/// A region in which the trace must not pass: what lies within its corners, taken in turn.
struct MaskPolygon {
    std::string name;
    std::vector<MaskPoint> points; ///< at least three

    friend bool operator==(const MaskPolygon&, const MaskPolygon&) = default;
};

/// What a mask's x and y mean.
enum class MaskUnits {
    interval_amplitude, ///< 0 and 1: a crossing and the next one; the zero and the one level
    time_level          ///< picoseconds after the trigger; millivolts
};

/// Polygons that a trace has to stay out of.
struct Mask {
    std::string name;
    std::string source; ///< where its corners are from; may be empty
    MaskUnits units = MaskUnits::interval_amplitude;
    double hit_ratio = 0.0; ///< of the hits in its time that may lie in it, 0..1
    std::vector<MaskPolygon> polygons;

    friend bool operator==(const Mask&, const Mask&) = default;
};

/// A mask's polygons where they lie for a trace: x in points, y in codes.
struct PlacedMask {
    std::vector<MaskPolygon> polygons;
    /// The points in which hits count as samples: to, not including, the end.
    int first_point = 0;
    int end_point = 0;
    double half_amplitude = 0.0; ///< of the trace, codes
};

/// `mask`, of intervals and amplitudes, at `eye`. What lies outside the screen tests nothing.
[[nodiscard]] PlacedMask placed_at_eye(const Collected& collected, const Mask& mask,
                                       const Eye& eye);

/// `mask`, of times and levels, for a trace that goes between `levels`. Samples are the hits from
/// its first to its last corner.
[[nodiscard]] PlacedMask placed_in_time(const Collected& collected, const Mask& mask,
                                        const TwoLevels& levels);

/// How often a trace passed through a mask.
struct MaskHits {
    std::vector<double> by_polygon;
    double hits = 0.0;    ///< in all polygons
    double samples = 0.0; ///< hits in the mask's time, in a polygon or not
    double ratio = 0.0;   ///< hits / samples, 0 without samples
};

/// The hits of `collected` in `mask`. A hit on an edge counts where its point and code lie inside.
[[nodiscard]] MaskHits mask_hits(const Collected& collected, const PlacedMask& mask);

/// `mask`, grown by `margin` toward the trace, or below 0 away from it. Of a polygon above the
/// trace or below it the corners on the trace's side of its middle are moved by that part of half
/// the amplitude, at most to its other side; one within the trace, hits being above its middle as
/// well as below, is enlarged about its middle by 1 + `margin`.
[[nodiscard]] PlacedMask grown(const Collected& collected, const PlacedMask& mask, double margin);

/// By how much `mask` can be grown until more than the share `ratio` of its samples hit it: above
/// 0 where it passes, below 0 where it fails. Found by bisection between -1 and 8, to a thousandth;
/// 8 where it never is. None without samples, and where even -1 does not do.
[[nodiscard]] Told<double> mask_margin(const Collected& collected, const PlacedMask& mask,
                                       double ratio);

} // namespace kv408
