#include "analysis/density.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace kv408 {

Density::Density(int points)
    : counts_(static_cast<std::size_t>(points) * scale_codes),
      passed_(static_cast<std::size_t>(points)) {}

void Density::add(std::span<const std::int16_t> codes, std::uint32_t weight) {
    assert(codes.size() == passed_.size());
    for (std::size_t point = 0; point < codes.size(); ++point) {
        const int code = std::clamp(int{codes[point]}, 0, scale_codes - 1);
        std::uint32_t& count = counts_[point * scale_codes + static_cast<std::size_t>(code)];
        const std::uint32_t room = highest_count - count;
        saturated_ = saturated_ || weight > room;
        count += std::min(weight, room);
        highest_ = std::max(highest_, count);
        Codes& passed = passed_[point];
        if (passed.first == passed.end) {
            passed = {code, code + 1};
        } else {
            passed = {std::min(passed.first, code), std::max(passed.end, code + 1)};
        }
    }
}

void Density::clear() {
    for (std::size_t point = 0; point < passed_.size(); ++point) {
        const Codes passed = std::exchange(passed_[point], {});
        const auto first = counts_.begin() + static_cast<std::ptrdiff_t>(point) * scale_codes;
        std::fill(first + passed.first, first + passed.end, 0U);
    }
    highest_ = 0;
    saturated_ = false;
}

void Density::multiply(double factor) {
    highest_ = 0;
    for (std::size_t point = 0; point < passed_.size(); ++point) {
        const Codes passed = std::exchange(passed_[point], {});
        std::uint32_t* const counts = &counts_[point * scale_codes];
        for (int code = passed.first; code < passed.end; ++code) {
            if (counts[code] == 0) {
                continue;
            }
            const double product = std::ceil(counts[code] * factor - 0.5);
            saturated_ = saturated_ || product > double{highest_count};
            counts[code] =
                static_cast<std::uint32_t>(std::clamp(product, 0.0, double{highest_count}));
            highest_ = std::max(highest_, counts[code]);
            if (counts[code] != 0) {
                Codes& left = passed_[point];
                left = {left.end == 0 ? code : left.first, code + 1};
            }
        }
    }
}

} // namespace kv408
