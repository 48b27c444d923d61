#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace kv408 {

/// How often values fell into each of some equally wide ranges.
struct Histogram {
    double least = 0.0;               ///< lower end of the first range
    double width = 0.0;               ///< of a range; 0 when all values are equal
    std::vector<std::uint32_t> count; ///< by range, the least value in the first
};

/// The values of one measurement over the last minutes.
class ValueTrend {
public:
    struct Point {
        std::chrono::nanoseconds time; ///< on the clock that never goes back
        double value;
    };

    /// How far back it goes, and at how many values it ends in any case.
    static constexpr std::chrono::minutes span{5};
    static constexpr std::size_t most_points = 20000;

    /// Takes the value of a sweep that came at `time`, which never goes back, and drops what is
    /// older than the span by then.
    void add(std::chrono::nanoseconds time, double value);

    void clear() { points_.clear(); }

    /// The values, oldest first.
    [[nodiscard]] const std::deque<Point>& points() const { return points_; }

    /// The distribution of the values over `ranges`, 1.., from the least to the greatest value; one
    /// range where all are equal, none without values.
    [[nodiscard]] Histogram histogram(std::size_t ranges) const;

private:
    std::deque<Point> points_;
};

} // namespace kv408
