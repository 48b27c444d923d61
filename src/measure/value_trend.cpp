#include "measure/value_trend.h"

#include <algorithm>

namespace kv408 {

void ValueTrend::add(std::chrono::nanoseconds time, double value) {
    points_.push_back({time, value});
    while (points_.size() > most_points || time - points_.front().time > span) {
        points_.pop_front();
    }
}

Histogram ValueTrend::histogram(std::size_t ranges) const {
    Histogram histogram;
    if (points_.empty()) {
        return histogram;
    }
    const auto [least, greatest] = std::minmax_element(
        points_.begin(), points_.end(),
        [](const Point& one, const Point& other) { return one.value < other.value; });
    histogram.least = least->value;
    if (least->value == greatest->value) {
        histogram.count = {static_cast<std::uint32_t>(points_.size())};
        return histogram;
    }
    histogram.count.resize(ranges);
    histogram.width = (greatest->value - least->value) / static_cast<double>(ranges);
    for (const Point& point : points_) {
        const auto range =
            static_cast<std::size_t>((point.value - histogram.least) / histogram.width);
        // The greatest value is the upper end of the last range.
        ++histogram.count[std::min(range, ranges - 1)];
    }
    return histogram;
}

} // namespace kv408
