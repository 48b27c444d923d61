#include "analysis/dual_dirac.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "analysis/normal.h"

namespace kv408 {
namespace {

constexpr double tail_share = 0.1;
/// With fewer hits beyond a time their share is too uncertain.
constexpr double hits_beyond = 4.0;
constexpr double least_tail_hits = 50.0;
constexpr int tail_rounds = 60;

/// A time, counted outward from the middle, and the share of all hits that lie beyond it.
struct Beyond {
    double time = 0.0;
    double share = 0.0;
};

/// The tail of one side: the left one's times count to the left.
struct Tail {
    std::vector<Beyond> places;
    double hits = 0.0;
};

Tail tail_of(const DensityHistogram& times, double all, bool left) {
    Tail tail;
    double beyond = 0.0;
    const std::size_t bins = times.hits.size();
    for (std::size_t step = 0; step < bins; ++step) {
        const std::size_t bin = left ? step : bins - 1 - step;
        beyond += times.hits[bin];
        if (beyond > tail_share * all) {
            break;
        }
        if (times.hits[bin] > 0.0) {
            tail.hits = beyond;
        }
        if (beyond >= hits_beyond) {
            const double edge = times.value_of(static_cast<double>(bin) + (left ? 0.5 : -0.5));
            tail.places.push_back({left ? -edge : edge, beyond / all});
        }
    }
    return tail;
}

/// A line of the model, at `place`, outward, and its spread.
struct Line {
    double place = 0.0;
    double spread = 0.0;
};

/// The line of the tail's own side, where the other one, `other`, is at `other.place` outward from
/// this side.
std::optional<Line> line_of(const Tail& tail, const std::optional<Line>& other) {
    double sum = 0.0;
    double mean_q = 0.0;
    double mean_time = 0.0;
    std::vector<std::pair<double, double>> found; // Q and weight
    for (const Beyond& beyond : tail.places) {
        double share = 2.0 * beyond.share;
        if (other && other->spread > 0.0) {
            share -= normal_share((other->place - beyond.time) / other->spread);
        }
        if (share <= 0.0 || share >= 1.0) {
            found.emplace_back(0.0, 0.0);
            continue;
        }
        const double q = -normal_quantile(share);
        // The uncertainty of a share of few hits, as an uncertainty of Q.
        const double density = std::exp(-q * q / 2.0);
        const double weight = density * density / (beyond.share * (1.0 - beyond.share));
        found.emplace_back(q, weight);
        sum += weight;
        mean_q += weight * q;
        mean_time += weight * beyond.time;
    }
    if (!(sum > 0.0)) {
        return std::nullopt;
    }
    mean_q /= sum;
    mean_time /= sum;
    double squares = 0.0;
    double products = 0.0;
    for (std::size_t index = 0; index < found.size(); ++index) {
        const auto [q, weight] = found[index];
        squares += weight * (q - mean_q) * (q - mean_q);
        products += weight * (q - mean_q) * (tail.places[index].time - mean_time);
    }
    if (!(squares > 0.0) || !(products > 0.0)) {
        return std::nullopt;
    }
    const double spread = products / squares;
    return Line{mean_time - spread * mean_q, spread};
}

Line seen_from_other_side(const Line& line) {
    return {-line.place, line.spread};
}

} // namespace

double DualDirac::total(double ratio) const {
    return deterministic - 2.0 * normal_quantile(ratio) * random;
}

Told<DualDirac> dual_dirac(const DensityHistogram& times) {
    const double all = std::accumulate(times.hits.begin(), times.hits.end(), 0.0);
    const Tail left_tail = tail_of(times, all, true);
    const Tail right_tail = tail_of(times, all, false);
    if (left_tail.hits < least_tail_hits || right_tail.hits < least_tail_hits) {
        return WhyNot::few_hits;
    }
    std::optional<Line> left = line_of(left_tail, std::nullopt);
    std::optional<Line> right = line_of(right_tail, std::nullopt);
    if (!left || !right) {
        return WhyNot::few_hits;
    }
    for (int round = 0; round < tail_rounds; ++round) {
        const auto next_left = line_of(left_tail, seen_from_other_side(*right));
        const auto next_right = line_of(right_tail, seen_from_other_side(*left));
        if (!next_left || !next_right) {
            break; // one line: by chance its two halves have passed each other
        }
        left = next_left;
        right = next_right;
    }
    DualDirac model;
    model.random = (left->spread + right->spread) / 2.0;
    model.left = -left->place;
    model.right = right->place;
    if (model.left > model.right) {
        // One line: only by chance is the left one to the right.
        model.left = model.right = (model.left + model.right) / 2.0;
    }
    model.deterministic = model.right - model.left;
    model.tail_hits = left_tail.hits + right_tail.hits;
    return model;
}

Told<DualDirac> without_spread(DualDirac model, double spread) {
    const double rest = model.random * model.random - spread * spread;
    if (rest < 0.0) {
        return WhyNot::only_noise;
    }
    model.random = std::sqrt(rest);
    return model;
}

double bit_error_ratio(const DualDirac& model, double mean, double time, double interval,
                       double edges) {
    // A crossing that comes later than the decision, or one of the next that came before it.
    const auto beyond = [&](double distance) {
        if (model.random > 0.0) {
            return normal_share(-distance / model.random);
        }
        return distance < 0.0 ? 1.0 : 0.0;
    };
    double ratio = 0.0;
    for (const double line : {model.left - mean, model.right - mean}) {
        ratio += 0.5 * edges * (beyond(time - line) + beyond(interval + line - time));
    }
    return std::min(ratio, 1.0);
}

} // namespace kv408
