#include "measure/running_statistics.h"

#include <algorithm>
#include <cmath>

namespace kv408 {

void RunningStatistics::add(double value) {
    least_ = count_ == 0 ? value : std::min(least_, value);
    greatest_ = count_ == 0 ? value : std::max(greatest_, value);
    ++count_;
    const double distance = value - mean_;
    mean_ += distance / static_cast<double>(count_);
    squares_ += distance * (value - mean_);
}

double RunningStatistics::deviation() const {
    return count_ < 2 ? 0.0 : std::sqrt(squares_ / static_cast<double>(count_ - 1));
}

} // namespace kv408
