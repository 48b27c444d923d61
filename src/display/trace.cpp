#include "display/trace.h"

#include <algorithm>
#include <limits>

#include "state/trace_mapping.h"

namespace kv408 {

TracePoint map_sample(const ChannelState& channel, std::uint16_t code, int index) {
    const std::int64_t x = index + trace_shift(channel);
    return {
        static_cast<std::int32_t>(std::clamp<std::int64_t>(
            x, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max())),
        std::clamp(trace_row(channel, code), highest_row, lowest_row)};
}

Trace::Trace() {
    fill_history();
}

void Trace::fill_history() {
    settle();
    history_.fill(std::make_shared<Generation>(current_));
}

Columns Trace::map_point(const TracePoint& mapped, int index) {
    if (mapped == current_.point(index)) {
        return {};
    }
    const bool was_uniform = current_.is_uniform();
    current_.set_points(index, std::span(&mapped, 1));
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
    const auto mapped = [&](int at) {
        return map_sample(channel, samples.raw[static_cast<std::size_t>(at)], at);
    };
    if (index >= plot::first_point && index < plot::points) {
        return map_point(mapped(index), index);
    }
    if (index != 0) {
        return {};
    }
    std::array<TracePoint, plot::last_point> points;
    for (int at = plot::first_point; at <= plot::last_point; ++at) {
        points[static_cast<std::size_t>(at - plot::first_point)] = mapped(at);
    }
    current_.set_points(plot::first_point, points);
    fill_history();
    return all_columns;
}

void Trace::shift() {
    std::shift_right(history_.begin(), history_.end(), 1);
    settle();
    history_.front() = std::make_shared<Generation>(current_);
}

void Trace::rescale(const PlotScale& scale) {
    current_.rescale(scale);
    for (const std::shared_ptr<Generation>& generation : history_) {
        generation->rescale(scale);
    }
}

} // namespace kv408
