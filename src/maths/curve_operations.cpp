#include "maths/curve_operations.h"

#include <algorithm>
#include <cmath>

namespace kv408 {
namespace {

/// `curve` at `place`, counted in its values from 0 and within them.
double value_at(const Curve& curve, double place) {
    const auto below = static_cast<std::size_t>(place);
    if (below + 1 >= curve.values.size()) {
        return curve.values.back();
    }
    const double part = place - std::floor(place);
    const double from = curve.values[below];
    return from + (curve.values[below + 1] - from) * part;
}

} // namespace

CommonPart common_part(const Curve& a, const Curve& b) {
    CommonPart common;
    if (a.values.empty() || b.values.empty()) {
        return common;
    }
    if (a.first_time == b.first_time && a.interval == b.interval) {
        const auto count = static_cast<std::ptrdiff_t>(std::min(a.values.size(), b.values.size()));
        common.a.assign(a.values.begin(), a.values.begin() + count);
        common.b.assign(b.values.begin(), b.values.begin() + count);
        return common;
    }
    const auto last = static_cast<double>(b.values.size() - 1);
    for (std::size_t index = 0; index < a.values.size(); ++index) {
        const double time = a.first_time + static_cast<double>(index) * a.interval;
        const double place = (time - b.first_time) / b.interval;
        if (place < 0.0 || place > last) {
            continue;
        }
        if (common.a.empty()) {
            common.first = index;
        }
        common.a.push_back(a.values[index]);
        common.b.push_back(value_at(b, place));
    }
    return common;
}

std::vector<double> derivative_of(std::span<const double> values, double seconds) {
    std::vector<double> slopes(values.size());
    const std::size_t last = values.size() - 1;
    slopes.front() = (values[1] - values[0]) / seconds;
    for (std::size_t index = 1; index < last; ++index) {
        slopes[index] = (values[index + 1] - values[index - 1]) / (2.0 * seconds);
    }
    slopes.back() = (values[last] - values[last - 1]) / seconds;
    return slopes;
}

std::vector<double> integral_of(std::span<const double> values, double seconds) {
    std::vector<double> sums;
    sums.reserve(values.size());
    double sum = 0.0;
    for (std::size_t index = 0; index < values.size(); ++index) {
        if (index > 0) {
            sum += seconds * (values[index] + values[index - 1]) / 2.0;
        }
        sums.push_back(sum);
    }
    return sums;
}

} // namespace kv408
