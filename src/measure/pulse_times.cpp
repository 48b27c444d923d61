#include "measure/pulse_times.h"

#include <cmath>

namespace kv408 {
namespace {

/// What stands in a record for an edge that was not found.
constexpr double no_edge = -1.0;

/// A mean of some durations; 0 when there were none.
struct Mean {
    double sum = 0.0;
    int count = 0;

    void add(double duration) {
        sum += duration;
        ++count;
    }

    [[nodiscard]] double value() const { return count > 0 ? sum / count : 0.0; }
};

/// Mean duration of the edges whose ends are `ends`.
double mean_edge(std::span<const double> ends) {
    if (ends.size() < 2) {
        return no_edge;
    }
    Mean mean;
    for (std::size_t second = 1; second < ends.size(); second += 2) {
        mean.add(ends[second] - ends[second - 1]);
    }
    return mean.value();
}

} // namespace

void calcpulsetimes(MeasurementRecord& record, std::span<const double> crossings,
                    std::span<const double> rises, std::span<const double> falls) {
    Mean positive;
    Mean negative;
    for (std::size_t index = 1; index < crossings.size(); ++index) {
        const double start = crossings[index - 1];
        const double duration = std::fabs(crossings[index]) - std::fabs(start);
        if (start > 0.0) {
            positive.add(duration);
        } else if (start < 0.0) {
            negative.add(duration);
        }
    }
    record[meas::rise] = mean_edge(rises);
    record[meas::fall] = mean_edge(falls);
    record[meas::pulse_high] = positive.value();
    record[meas::pulse_low] = negative.value();
}

void calcperiod(MeasurementRecord& record) {
    const double high = record[meas::pulse_high];
    const double low = record[meas::pulse_low];
    if (high > 0.0 && low > 0.0) {
        const double period = low + high;
        record[meas::period] = period;
        record[meas::frequency] = 1.0 / period;
    }
}

} // namespace kv408
