#include "analysis/density.h"

#include <algorithm>
#include <cassert>

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

} // namespace kv408
