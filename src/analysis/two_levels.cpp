#include "analysis/two_levels.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace kv408 {
namespace {

constexpr int points_apart = 4;
constexpr double clipped_share = 1e-3;
/// Levels closer than this part of the range that the trace covers are noise about one level.
constexpr double least_distance = 0.35;
constexpr int level_bins = 64;

std::vector<std::uint64_t> all_codes(const Density& density) {
    std::vector<std::uint64_t> sums(scale_codes);
    for (int point = 0; point < density.points(); point += points_apart) {
        const Density::Codes passed = density.passed(point);
        const auto counts = density.at(point);
        for (auto code = static_cast<std::size_t>(passed.first);
             code < static_cast<std::size_t>(passed.end); ++code) {
            sums[code] += counts[code];
        }
    }
    return sums;
}

/// The mean code of the hits about that of `level_bins` parts of first..end which has most, looked
/// for in the parts from `part` to `end_part`.
double mode_of_half(const std::vector<std::uint64_t>& sums, int first, int end, int part,
                    int end_part) {
    const auto begin_of = [&](int which) {
        return static_cast<std::size_t>(first + (end - first) * which / level_bins);
    };
    std::uint64_t most = 0;
    std::size_t from = begin_of(part);
    std::size_t to = begin_of(part + 1);
    for (; part < end_part; ++part) {
        const auto begin = sums.begin() + static_cast<std::ptrdiff_t>(begin_of(part));
        const auto finish = sums.begin() + static_cast<std::ptrdiff_t>(begin_of(part + 1));
        const std::uint64_t hits = std::accumulate(begin, finish, std::uint64_t{0});
        if (hits > most) {
            most = hits;
            from = begin_of(std::max(part - 1, 0));
            to = begin_of(std::min(part + 2, level_bins));
        }
    }
    double hits = 0.0;
    double weighted = 0.0;
    for (std::size_t code = from; code < to; ++code) {
        hits += static_cast<double>(sums[code]);
        weighted += static_cast<double>(sums[code]) * static_cast<double>(code);
    }
    return hits > 0.0 ? weighted / hits : static_cast<double>(from);
}

} // namespace

Told<TwoLevels> two_levels(const Collected& collected) {
    const std::vector<std::uint64_t> sums = all_codes(collected.counts);
    const auto hit = [](std::uint64_t sum) { return sum != 0; };
    const auto lowest = std::find_if(sums.begin(), sums.end(), hit);
    if (lowest == sums.end()) {
        return WhyNot::no_hits;
    }
    const auto highest = std::find_if(sums.rbegin(), sums.rend(), hit);
    const int first = static_cast<int>(lowest - sums.begin());
    const int end = static_cast<int>(sums.rend() - highest);
    const double low = mode_of_half(sums, first, end, 0, level_bins / 2);
    const double high = mode_of_half(sums, first, end, level_bins / 2, level_bins);
    if (high - low < least_distance * (end - first) || end - first < level_bins / 4) {
        return WhyNot::flat;
    }
    const double all =
        static_cast<double>(std::accumulate(sums.begin(), sums.end(), std::uint64_t{0}));
    TwoLevels levels;
    levels.zero = level_at(collected.with, low);
    levels.one = level_at(collected.with, high);
    if (levels.zero > levels.one) {
        std::swap(levels.zero, levels.one);
    }
    levels.clipped = static_cast<double>(sums.front() + sums.back()) > clipped_share * all;
    return levels;
}

} // namespace kv408
