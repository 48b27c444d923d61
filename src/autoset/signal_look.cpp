#include "autoset/signal_look.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "measure/clipping.h"

namespace kv408 {
namespace {

/// Of fewer points neither noise nor extremes can be told.
constexpr std::size_t fewest_points_to_judge = 32;

/// A trace that is so much higher than its noise's deviation is more than noise. 99 % of 650 points
/// of normal noise lie within 5.1 deviations on average; what is read of both scatters, and of
/// 100000 such traces 1 in 26 looked 7 deviations high and 1 in 670 looked 9.
constexpr double clear_of_noise = 9.0;

/// The `share` quantile of `sorted`, 0..1.
double quantile(std::span<const double> sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    return sorted[static_cast<std::size_t>(std::lround(place))];
}

/// The noise of one point, rms: from the median of how much each point bends away from the line
/// between its neighbours, which a smooth signal hardly moves. Of normal noise that bend has the
/// deviation sqrt(1 + 4 + 1), and the median of its size is 0.6745 deviations.
double noise_of(std::span<const double> values) {
    constexpr double median_of_normal = 0.6745;
    const double bend_deviation = std::sqrt(6.0);
    std::vector<double> bends;
    bends.reserve(values.size());
    for (std::size_t i = 1; i + 1 < values.size(); ++i) {
        bends.push_back(std::abs(values[i - 1] - 2.0 * values[i] + values[i + 1]));
    }
    const auto middle = bends.begin() + static_cast<std::ptrdiff_t>(bends.size() / 2);
    std::nth_element(bends.begin(), middle, bends.end());
    return *middle / median_of_normal / bend_deviation;
}

/// Of a signal that is random data all points bend, but not those right behind the trigger.
std::span<const double> beginning_of(std::span<const double> values) {
    constexpr std::size_t beginning = 64;
    return values.first(std::min(beginning, values.size()));
}

/// A code, millivolts: the instrument's own noise is about that, and points that lie on few codes
/// do not bend.
double code_of(const ChannelSweep& part) {
    return part.conversion.atten * part.conversion.vtfactor;
}

double deviation_of(std::span<const double> values) {
    double sum = 0.0;
    double squares = 0.0;
    for (const double value : values) {
        sum += value;
        squares += value * value;
    }
    const auto count = static_cast<double>(values.size());
    return std::sqrt(std::max(squares / count - sum / count * (sum / count), 0.0));
}

/// Whether points that spread with `deviation` are more than noise of `noise`.
bool is_more_than(double deviation, double noise) {
    constexpr double least = 0.6;     // millivolts: a code of the coarser range is half of one
    constexpr double certainly = 4.0; // millivolts: far above the instrument's own noise
    const double signal = std::sqrt(std::max(deviation * deviation - noise * noise, 0.0));
    return deviation > certainly || (signal > least && signal > noise / 2.0);
}

/// Where a trace passes its middle, points from the first one on.
struct Passes {
    std::vector<double> rising;
    std::vector<double> falling;
    double left_low = 0.0;  ///< where it was low for the last time before the first rising one
    double left_high = 0.0; ///< where it was high for the last time before the first falling one
};

/// The straight line through points, by least squares.
class StraightLine {
public:
    void add(double x, double y) {
        count_ += 1.0;
        x_ += x;
        y_ += y;
        xx_ += x * x;
        xy_ += x * y;
    }

    /// Where it passes 0; with a line that does not, where its points are.
    [[nodiscard]] double zero() const {
        const double along = xx_ - x_ * x_ / count_;
        const double across = xy_ - x_ * y_ / count_;
        return across == 0.0 ? x_ / count_ : (x_ - y_ * along / across) / count_;
    }

private:
    double count_ = 0.0;
    double x_ = 0.0;
    double y_ = 0.0;
    double xx_ = 0.0;
    double xy_ = 0.0;
};

/// The passes of `values` through `middle` of which each leads from beyond `reach` on one side
/// beyond it on the other: where the line passes it through all points from side to side, which
/// noise moves least.
Passes passes_of(std::span<const double> values, double middle, double reach) {
    Passes found;
    int side = 0;
    double left = 0.0; // where the side was left
    StraightLine line; // since then
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto place = static_cast<double>(i);
        const double above = values[i] - middle;
        line.add(place, above);
        const int beyond = above > reach ? 1 : above < -reach ? -1 : 0;
        if (beyond == 0) {
            continue;
        }
        if (side != 0 && beyond != side) {
            std::vector<double>& passes = beyond > 0 ? found.rising : found.falling;
            if (passes.empty()) {
                (beyond > 0 ? found.left_low : found.left_high) = left;
            }
            passes.push_back(std::clamp(line.zero(), left, place));
        }
        side = beyond;
        left = place;
        line = {};
        line.add(place, above);
    }
    return found;
}

/// The mean distance of `places`, which are at least two; nothing where they are not regular.
std::optional<double> regular_distance(const std::vector<double>& places) {
    // Noise moves passes by far less of a period, and those of data lie farther apart. With 0.1 and
    // 0.4 bench/autoset_table comes out the same.
    constexpr double tolerance = 0.2;
    if (places.size() < 2) {
        return std::nullopt;
    }
    const double mean = (places.back() - places.front()) / static_cast<double>(places.size() - 1);
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (std::abs(places[i] - places[i - 1] - mean) > tolerance * mean) {
            return std::nullopt;
        }
    }
    return mean;
}

/// The period, points, of what passes its middle at `passes`.
/// Of a trace that is not `clear` of its noise few regular passes may be chance.
std::optional<double> period_of(const Passes& passes, bool clear) {
    constexpr double alike = 0.2;        // as each of them may differ from its mean
    constexpr std::size_t no_chance = 6; // five distances that agree to a fifth
    if (!clear && passes.rising.size() < no_chance) {
        return std::nullopt;
    }
    const std::optional<double> rising = regular_distance(passes.rising);
    const std::optional<double> falling = regular_distance(passes.falling);
    if ((passes.rising.size() >= 2 && !rising) || (passes.falling.size() >= 2 && !falling)) {
        return std::nullopt;
    }
    if (rising && falling && std::abs(*rising - *falling) > alike * *rising) {
        return std::nullopt;
    }
    return passes.rising.size() >= passes.falling.size() ? rising : falling;
}

/// Where the first of many irregular passes lies, points, when it is not at the very beginning.
/// Behind an edge that started the sweep it is one back.
std::optional<double> edge_of_data(const Passes& passes, StartedBy started) {
    constexpr std::size_t fewest_passes = 6;
    // What does not follow the trigger is as likely high as low in each point: six alike come by
    // chance in one of 32 sweeps, and two looks must agree.
    constexpr double steady_points = 6.0;
    if (passes.rising.empty() || passes.falling.empty() ||
        passes.rising.size() + passes.falling.size() < fewest_passes) {
        return std::nullopt;
    }
    const bool falls =
        started == StartedBy::rising ||
        (started == StartedBy::unknown && passes.falling.front() < passes.rising.front());
    const double left = falls ? passes.left_high : passes.left_low;
    const double edge = falls ? passes.falling.front() : passes.rising.front();
    return left >= steady_points ? std::optional(edge) : std::nullopt;
}

/// `values` averaged over `width` points, an odd number.
std::vector<double> smoothed(std::span<const double> values, std::size_t width) {
    std::vector<double> result;
    double sum = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        sum += values[i];
        if (i >= width) {
            sum -= values[i - width];
        }
        if (i + 1 >= width) {
            result.push_back(sum / static_cast<double>(width));
        }
    }
    return result;
}

/// Lowest and highest value of `values`, of which each has `noise`. What that adds is taken off as
/// far as can be told: a period of `period` points is not to lose its tips.
void set_extremes(SignalLook& look, std::span<const double> values, double period, double noise) {
    constexpr double points_per_tip = 40.0;
    constexpr std::size_t most = 9;
    // Share of the points, 3 of 650, that may be thrown out; with 0.001 and 0.02
    // bench/autoset_table comes out the same.
    constexpr double tip = 0.005;
    constexpr double added = 1.5;   // what noise adds at that share, in its deviations: 2.3 of a
                                    // signal that rests at its ends, less of one that does not
    constexpr double at_most = 0.1; // of the height
    const auto half = static_cast<std::size_t>(period / points_per_tip / 2.0);
    const std::size_t width = std::min(2 * half + 1, most);
    std::vector<double> sorted = smoothed(values, width);
    std::sort(sorted.begin(), sorted.end());
    const double low = quantile(sorted, tip);
    const double high = quantile(sorted, 1.0 - tip);
    const double off =
        std::min(added * noise / std::sqrt(static_cast<double>(width)), at_most * (high - low));
    look.low = low + off;
    look.high = high - off;
}

} // namespace

SignalLook look_at(const ChannelSweep& part, StartedBy started) {
    SignalLook look;
    if (part.mv.size() < fewest_points_to_judge) {
        return look;
    }
    std::vector<double> values = part.mv;
    if (part.conversion.inverted) {
        std::transform(values.begin(), values.end(), values.begin(), std::negate<>());
    }
    const double code = code_of(part);
    const double noise = std::max(code, std::min(noise_of(values), noise_of(beginning_of(values))));
    look.clipped = clipping_of(part) != Clipping{};
    set_extremes(look, values, 0.0, 0.0);
    look.alive = is_more_than(deviation_of(values), noise);
    if (!look.alive) {
        return look;
    }
    constexpr double least_reach = 0.2;
    constexpr double most_reach = 0.4;
    const double reach =
        std::clamp(3.0 * noise, least_reach * look.height(), most_reach * look.height());
    const Passes passes = passes_of(values, look.middle(), reach);
    const double first = part.first_time / part.time_per_point; // points after the trigger
    Passes with_start = passes;
    if (started != StartedBy::unknown &&
        std::abs(values.front() - look.middle()) < look.height() / 4.0) {
        // The edge that started the sweep lies in front of its first point.
        const bool rising = started == StartedBy::rising;
        std::vector<double>& alike = rising ? with_start.rising : with_start.falling;
        const std::vector<double>& back = rising ? passes.falling : passes.rising;
        if (alike.size() == 1 && !back.empty() && back.front() < alike.front()) {
            alike.insert(alike.begin(), -first);
        }
    }
    const bool clear = look.height() >= clear_of_noise * noise;
    if (const auto period = period_of(with_start, clear)) {
        // The trigger is as far from the middle as the level is; edges that are seen are not.
        look.period = period_of(passes, clear).value_or(*period) * part.time_per_point;
        set_extremes(look, values, *period, noise);
    } else if (const auto edge = edge_of_data(passes, started)) {
        // Behind the edge neighbours have nothing to do with each other.
        const double steady_noise =
            std::max(noise_of(std::span(values).first(static_cast<std::size_t>(*edge))), code);
        if (look.height() >= clear_of_noise * steady_noise) {
            look.edge = (*edge + first) * part.time_per_point;
            set_extremes(look, values, 0.0, steady_noise);
        }
    }
    return look;
}

} // namespace kv408
