#include "measure/sweep_pass.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>

namespace kv408 {
namespace {

/// A histogram's bins are 1..32; bin 0 stands for none and holds nothing.
constexpr std::size_t bins = 32;

/// The running extremes start here, so that the first samples set them.
constexpr double extremes_start = 10000.0;

/// Two histograms over the same bins, one of the samples above a level and one of the others. Bin k
/// covers (base + (k - 1) x width, base + k x width].
class Histograms {
public:
    Histograms(double base, double width, double level) : level_(level), scale_(1.0 / width) {
        for (std::size_t bin = 0; bin <= bins; ++bin) {
            bounds_[bin] = base + static_cast<double>(bin) * width;
        }
    }

    void add(double value) {
        const std::size_t bin = bin_of(value);
        if (bin != 0) {
            Bin& hit = bins_[value > level_ ? above : below][bin];
            hit.sum += value;
            ++hit.count;
        }
    }

    /// Mean of the fullest bin of the samples above the level, or of the others; of two equally
    /// full ones the lower. 0 when no bin was hit.
    [[nodiscard]] double top() const { return mean_of_fullest(bins_[above]); }
    [[nodiscard]] double base() const { return mean_of_fullest(bins_[below]); }

private:
    struct Bin {
        double sum = 0.0;
        std::uint16_t count = 0;
    };
    using Bins = std::array<Bin, bins + 1>;

    static constexpr std::size_t below = 0;
    static constexpr std::size_t above = 1;

    /// The bin that `value` falls in; 0 when it falls in none.
    [[nodiscard]] std::size_t bin_of(double value) const {
        // Also leaves out everything when the width is not above 0.
        if (!(value > bounds_.front() && value <= bounds_.back())) {
            return 0;
        }
        // The quotient may be a rounding off, the bounds decide; it may also be infinite.
        const double quotient = (value - bounds_.front()) * scale_;
        auto bin = static_cast<std::size_t>(std::min(quotient, double{bins - 1})) + 1;
        while (value <= bounds_[bin - 1]) {
            --bin;
        }
        while (value > bounds_[bin]) {
            ++bin;
        }
        return bin;
    }

    [[nodiscard]] static double mean_of_fullest(const Bins& histogram) {
        const Bin* fullest = histogram.data();
        for (const Bin& bin : histogram) {
            if (bin.count > fullest->count) {
                fullest = &bin;
            }
        }
        return fullest->count == 0 ? 0.0 : fullest->sum / fullest->count;
    }

    double level_;
    double scale_; ///< bins per millivolt
    std::array<double, bins + 1> bounds_ = {};
    std::array<Bins, 2> bins_;
};

/// Two neighbouring columns: `column` with the value `now`, and the one before it.
struct Step {
    int column = 0;
    double before = 0.0;
    double now = 0.0;

    /// Where the straight line between the two columns meets `level`, in columns.
    [[nodiscard]] double meets(double level) const {
        const double height = std::fabs(now - before);
        return height == 0.0 ? static_cast<double>(column)
                             : (column - 1) + std::fabs(level - before) / height;
    }
};

/// Finds edges from one level to another: armed where the first is passed, complete where the
/// second is. `Beyond(value, level)` tells whether a value has passed a level.
template <typename Beyond>
class EdgeFinder {
public:
    EdgeFinder(double first, double second) : first_(first), second_(second) {}

    void look(const Step& step, Positions<most_edge_ends>& ends) {
        if (ends.count() >= most_edge_ends) {
            return;
        }
        if (passes(step, first_)) {
            armed_ = true;
            pending_ = step.meets(first_);
        }
        if (armed_ && passes(step, second_)) {
            ends.add(pending_);
            ends.add(step.meets(second_));
            armed_ = false;
        }
    }

private:
    [[nodiscard]] static bool passes(const Step& step, double level) {
        constexpr Beyond beyond{};
        return beyond(step.now, level) && !beyond(step.before, level);
    }

    double first_;
    double second_;
    bool armed_ = false;
    double pending_ = 0.0;
};

/// The pass over one channel, column by column.
class ChannelPass {
public:
    explicit ChannelPass(const MeasurementRecord& previous)
        : mid_((previous[meas::vmax] - previous[meas::vmin]) / 2.0 + previous[meas::vmin]),
          low_((previous[meas::top] - previous[meas::base]) * 0.1 + previous[meas::base]),
          high_(previous[meas::top] - (previous[meas::top] - previous[meas::base]) * 0.1),
          histograms_(previous[meas::vmin], previous[meas::vpp] / double{bins}, mid_),
          rise_(low_, high_), fall_(high_, low_) {}

    /// Takes a column's value into levels and sums.
    void take(double value) {
        sum_ += value;
        squares_ += value * value;
        histograms_.add(value);
        minimum_ = std::min(minimum_, value);
        maximum_ = std::max(maximum_, value);
    }

    /// Looks for crossings and edges between two columns.
    void look(const Step& step) {
        if (crossings_.count() < most_crossings) {
            look_for_crossing(step);
        }
        rise_.look(step, rises_);
        fall_.look(step, falls_);
    }

    [[nodiscard]] SweepFindings findings() const {
        return {.maximum = maximum_,
                .minimum = minimum_,
                .sum = sum_,
                .squares = squares_,
                .mid = mid_,
                .top = histograms_.top(),
                .base = histograms_.base(),
                .crossings = crossings_,
                .rises = rises_,
                .falls = falls_};
    }

private:
    /// After a crossing the signal must reach the level beyond it, 10 % or 90 %, before the next
    /// crossing counts.
    enum class State { empty, cross_pos, amp_pos, cross_neg, amp_neg };

    void look_for_crossing(const Step& step) {
        if (state_ == State::cross_pos && step.now > high_) {
            state_ = State::amp_pos;
        } else if (state_ == State::cross_neg && step.now < low_) {
            state_ = State::amp_neg;
        }
        if (step.before >= mid_ && step.now < mid_ &&
            (state_ == State::empty || state_ == State::amp_pos)) {
            crossings_.add(-step.meets(mid_));
            state_ = State::cross_neg;
        }
        if (step.before <= mid_ && step.now > mid_ &&
            (state_ == State::empty || state_ == State::amp_neg)) {
            crossings_.add(step.meets(mid_));
            state_ = State::cross_pos;
        }
    }

    double mid_;
    double low_;
    double high_;
    double sum_ = 0.0;
    double squares_ = 0.0;
    double minimum_ = extremes_start;
    double maximum_ = -extremes_start;
    Histograms histograms_;
    State state_ = State::empty;
    EdgeFinder<std::greater<>> rise_;
    EdgeFinder<std::less<>> fall_;
    Positions<most_crossings> crossings_;
    Positions<most_edge_ends> rises_;
    Positions<most_edge_ends> falls_;
};

} // namespace

SweepFindings pass_over(const SampleBuffer& samples, const MeasurementRecord& previous) {
    ChannelPass pass(previous);
    pass.take(samples.mv[1]);
    for (int column = 2; column <= measured_columns; ++column) {
        const auto index = static_cast<std::size_t>(column);
        pass.take(samples.mv[index]);
        pass.look({column, samples.mv[index - 1], samples.mv[index]});
    }
    return pass.findings();
}

} // namespace kv408
