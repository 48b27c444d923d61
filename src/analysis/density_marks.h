#pragma once

#include <vector>

#include "analysis/collected.h"
#include "analysis/eye.h"
#include "analysis/mask.h"
#include "state/channel.h"

namespace kv408 {

/// A line over a density, from one place to another: points and codes, fractions lie between these.
struct DensityMark {
    MaskPoint from;
    MaskPoint to;
    bool dotted = false;

    friend bool operator==(const DensityMark&, const DensityMark&) = default;
};

/// Lines over the density of a channel.
struct DensityMarks {
    Channel channel = ch1;
    MeasuredWith with; ///< what its points and codes mean
    std::vector<DensityMark> lines;
};

/// What is seen of `eye` in `collected`, for its interval in the middle of the screen: one and zero
/// level and both crossing times as lines, the middle fifth dotted, and the opening as a cross of
/// the eye's height and width, each where it is open.
[[nodiscard]] std::vector<DensityMark> eye_marks(const Collected& collected, const Eye& eye);

/// The edges of the polygons of `mask`.
[[nodiscard]] std::vector<DensityMark> mask_marks(const PlacedMask& mask);

} // namespace kv408
