#include "display/trace.h"

#include <limits>

#include "state/rounding.h"
#include "state/trace_mapping.h"

namespace kv408 {
namespace {

constexpr std::int32_t top_row = 1;
constexpr std::int32_t bottom_row = 511;
} // namespace

Point map_sample(const ChannelState& channel, std::uint16_t code, int index) {
    const std::int64_t x = index + trace_shift(channel);
    return {
        static_cast<std::int32_t>(std::clamp<std::int64_t>(
            x, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max())),
        std::clamp(round_to_int32(trace_row(channel, code)), top_row, bottom_row)};
}

Columns Trace::map_point(const ChannelState& channel, std::uint16_t code, int index) {
    const Point mapped = map_sample(channel, code, index);
    if (mapped == current_.point(index)) {
        return {};
    }
    const bool was_uniform = current_.is_uniform();
    current_.set_point(index, mapped);
    if (index > plot::last_point) {
        return {}; // the last point is not drawn
    }
    if (!was_uniform || !current_.is_uniform()) {
        return all_columns;
    }
    // Half of each neighbouring segment lies in the neighbour's column.
    return common(all_columns, {mapped.x - 1, mapped.x + 2});
}

Columns Trace::map(const ChannelState& channel, const SampleBuffer& samples, int index) {
    const auto code = [&samples](int at) { return samples.raw[static_cast<std::size_t>(at)]; };
    if (index >= plot::first_point && index < plot::points) {
        return map_point(channel, code(index), index);
    }
    if (index != 0) {
        return {};
    }
    for (int at = plot::first_point; at <= plot::last_point; ++at) {
        current_.set_point(at, map_sample(channel, code(at), at));
    }
    std::fill(history_.begin(), history_.end(), current_);
    return all_columns;
}

void Trace::shift() {
    std::shift_right(history_.begin(), history_.end(), 1);
    history_.front() = current_;
}

} // namespace kv408
