#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace kv408 {

/// Values that follow each other in equal steps of time.
struct Curve {
    double first_time = 0.0; ///< of the first value, picoseconds
    double interval = 0.0;   ///< from value to value, picoseconds, above 0
    std::vector<double> values;
};

/// What two curves have at the same times: those of the first one.
struct CommonPart {
    std::size_t first = 0; ///< index in the first curve of where it begins
    std::vector<double> a; ///< values of the first curve
    std::vector<double> b; ///< as many of the second one
};

/// The part of `a` and `b` over the time that both have. Where their values lie at the same times,
/// these are taken one by one. Else `b` is put onto the times of `a` along the straight line
/// between its neighbouring values, as by `numpy.interp`. Both lists are empty where the two have
/// no time in common.
[[nodiscard]] CommonPart common_part(const Curve& a, const Curve& b);

/// The derivative of `values`, at least two, which are `seconds` apart: half of the difference of
/// both neighbours over `seconds`, at both ends the difference to the one neighbour, as by
/// `numpy.gradient`.
[[nodiscard]] std::vector<double> derivative_of(std::span<const double> values, double seconds);

/// The integral of `values`, which are `seconds` apart, from the first on: the sum of the
/// trapezoids so far, 0 at the first, as by `scipy.integrate.cumulative_trapezoid` with
/// `initial=0`.
[[nodiscard]] std::vector<double> integral_of(std::span<const double> values, double seconds);

} // namespace kv408
