#pragma once

#include <cstdint>

namespace kv408 {

/// Mean, standard deviation and extremes of values that come one by one and are not kept. Welford's
/// sums: they stay exact however far from zero the values lie and however many come.
class RunningStatistics {
public:
    /// Takes one more value.
    void add(double value);

    [[nodiscard]] std::uint64_t count() const { return count_; }

    /// The mean, the least and the greatest value; 0 before the first.
    [[nodiscard]] double mean() const { return mean_; }
    [[nodiscard]] double least() const { return least_; }
    [[nodiscard]] double greatest() const { return greatest_; }

    /// The standard deviation that the values let expect of all others of their kind (divided by
    /// one less than their number); 0 for fewer than two.
    [[nodiscard]] double deviation() const;

private:
    std::uint64_t count_ = 0;
    double mean_ = 0.0;
    double squares_ = 0.0; ///< sum of the squared distances from the mean
    double least_ = 0.0;
    double greatest_ = 0.0;
};

} // namespace kv408
