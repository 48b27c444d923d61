#include "analysis/slice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace kv408 {
namespace {

constexpr int bins_per_sigma = 16;
constexpr int sigmas_to_a_side = 10;
constexpr std::size_t most_terms = 4;

/// Codes from the first to, not including, the end.
std::pair<int, int> codes_of(const Collected& collected, const Slice& slice) {
    double first = code_at(collected.with, slice.level + slice.low);
    double end = code_at(collected.with, slice.level + slice.high);
    if (first > end) {
        std::swap(first, end);
    }
    const auto held = [](double code) {
        return static_cast<int>(std::clamp(std::ceil(code), 0.0, double{scale_codes}));
    };
    return {held(first), held(end)};
}

/// Calls `what(point, code, counters)` with the counters of each point from that code on that lie
/// in the slice and may have been hit.
template <typename What>
void for_each_point(const Collected& collected, const Slice& slice, What what) {
    const auto [first, end] = codes_of(collected, slice);
    for (int point = std::max(slice.first_point, 0);
         point < std::min(slice.end_point, collected.counts.points()); ++point) {
        const Density::Codes passed = collected.counts.passed(point);
        const int from = std::max(passed.first, first);
        const int to = std::min(passed.end, end);
        if (from < to) {
            what(point, from,
                 collected.counts.at(point).subspan(static_cast<std::size_t>(from),
                                                    static_cast<std::size_t>(to - from)));
        }
    }
}

double time_after(const Collected& collected, const Slice& slice, int point) {
    return (point - slice.origin) * collected.with.time_per_point;
}

/// Solves the normal equations `matrix` x = `right` of `terms` unknowns; none where they leave one
/// open.
std::optional<std::array<double, most_terms>>
solved(std::array<std::array<double, most_terms>, most_terms> matrix,
       std::array<double, most_terms> right, std::size_t terms) {
    const double scale = matrix[0][0];
    for (std::size_t column = 0; column < terms; ++column) {
        // The matrix is symmetric and positive: its own diagonal serves as pivot.
        const double pivot = matrix.at(column).at(column);
        if (!(pivot > 1e-10 * scale)) {
            return std::nullopt;
        }
        for (std::size_t row = column + 1; row < terms; ++row) {
            const double part = matrix.at(row).at(column) / pivot;
            for (std::size_t other = column; other < terms; ++other) {
                matrix.at(row).at(other) -= part * matrix.at(column).at(other);
            }
            right.at(row) -= part * right.at(column);
        }
    }
    std::array<double, most_terms> result{};
    for (std::size_t row = terms; row-- > 0;) {
        double rest = right.at(row);
        for (std::size_t other = row + 1; other < terms; ++other) {
            rest -= matrix.at(row).at(other) * result.at(other);
        }
        result.at(row) = rest / matrix.at(row).at(row);
    }
    return result;
}

} // namespace

std::vector<SliceRow> rows_of(const Collected& collected, const Slice& slice) {
    const auto [first, end] = codes_of(collected, slice);
    const auto size = static_cast<std::size_t>(std::max(end - first, 0));
    // Apart, so that the loop over the codes runs on many at once.
    std::vector<double> hits(size);
    std::vector<double> times(size);
    std::vector<double> squares(size);
    for_each_point(collected, slice,
                   [&, first = first](int point, int code, std::span<const std::uint32_t> counts) {
                       const double time = time_after(collected, slice, point);
                       const double square = time * time;
                       const auto row = static_cast<std::size_t>(code - first);
                       for (std::size_t place = 0; place < counts.size(); ++place) {
                           const auto count = static_cast<double>(counts[place]);
                           hits[row + place] += count;
                           times[row + place] += count * time;
                           squares[row + place] += count * square;
                       }
                   });
    std::vector<SliceRow> rows;
    rows.reserve(size);
    for (std::size_t row = 0; row < size; ++row) {
        const int code = first + static_cast<int>(row);
        rows.push_back(
            {level_at(collected.with, code) - slice.level, hits[row], times[row], squares[row]});
    }
    return rows;
}

std::optional<TimeOfLevel> time_of_level(std::span<const SliceRow> rows, double reach, int degree) {
    const auto terms = static_cast<std::size_t>(degree) + 1;
    std::array<std::array<double, most_terms>, most_terms> matrix{};
    std::array<double, most_terms> right{};
    double squares = 0.0;
    for (const SliceRow& row : rows) {
        std::array<double, most_terms> powers{1.0};
        for (std::size_t term = 1; term < most_terms; ++term) {
            powers.at(term) = powers.at(term - 1) * row.above / reach;
        }
        for (std::size_t one = 0; one < terms; ++one) {
            for (std::size_t other = 0; other < terms; ++other) {
                matrix.at(one).at(other) += row.hits * powers.at(one) * powers.at(other);
            }
            right.at(one) += row.times * powers.at(one);
        }
        squares += row.squares;
    }
    const auto found = solved(matrix, right, terms);
    if (!found) {
        return std::nullopt;
    }
    TimeOfLevel fit;
    fit.terms = *found;
    fit.reach = reach;
    fit.hits = matrix[0][0];
    for (std::size_t term = 0; term < terms; ++term) {
        squares -= found->at(term) * right.at(term);
    }
    fit.variance = std::max(squares / fit.hits, 0.0);
    for (const SliceRow& row : rows) {
        const double x = row.above / reach;
        const double slope =
            ((3.0 * fit.terms[3] * x + 2.0 * fit.terms[2]) * x + fit.terms[1]) / reach;
        fit.square_slope += row.hits / fit.hits * slope * slope;
    }
    return fit;
}

void add_crossings(const Collected& collected, const Slice& slice, const TimeOfLevel& edge,
                   DensityHistogram& times) {
    const double last = static_cast<double>(times.hits.size()) - 1.0;
    const double level = time_of(collected.with, slice.origin) + edge.at(0.0);
    for_each_point(
        collected, slice, [&](int point, int code, std::span<const std::uint32_t> counts) {
            const double time = time_after(collected, slice, point);
            for (const std::uint32_t count : counts) {
                if (count != 0) {
                    const double above = level_at(collected.with, code) - slice.level;
                    const double moved = level + time - edge.at(above);
                    const double bin =
                        std::clamp(std::floor((moved - times.first) / times.step + 0.5), 0.0, last);
                    times.hits[static_cast<std::size_t>(bin)] += count / collected.weight;
                }
                ++code;
            }
        });
}

DensityHistogram times_about(double mean, double sigma, double least) {
    DensityHistogram times;
    times.of = HistogramOf::times;
    times.step = std::max(sigma / bins_per_sigma, least);
    times.hits.resize(2 * bins_per_sigma * sigmas_to_a_side + 1);
    times.first = mean - bins_per_sigma * sigmas_to_a_side * times.step;
    return times;
}

} // namespace kv408
