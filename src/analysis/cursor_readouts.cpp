#include "analysis/cursor_readouts.h"

#include <cmath>
#include <cstdint>

#include "state/plot_geometry.h"
#include "state/trace_mapping.h"
#include "state/units.h"

namespace kv408 {
namespace {

CrossingVolts crossing_at(const ShownTrace& trace, std::int16_t column) {
    if (trace.hidden) {
        return {.volts = {}, .why = *trace.hidden};
    }
    const std::int64_t point = column - trace_shift(trace.channel);
    if (point < plot::first_point || point > plot::last_point) {
        return {.volts = {}, .why = NoCrossing::beside};
    }
    return {.volts = trace.samples.mv.at(static_cast<std::size_t>(point)) / millivolts_per_volt};
}

} // namespace

std::string_view text_of(NoCrossing why) {
    switch (why) {
    case NoCrossing::off:
        return "channel is off";
    case NoCrossing::no_sweep:
        return "no sweep yet";
    case NoCrossing::no_trace:
        return "no trace is shown";
    case NoCrossing::beside:
        return "beside the trace";
    }
    return "";
}

CursorCrossings crossings_of(const ShownTrace& trace, const CursorState& cursors) {
    const auto& [first, second] = cursors.hpos;
    CursorCrossings found{.cursor = {crossing_at(trace, first), crossing_at(trace, second)},
                          .difference = {}};
    const auto& [at_first, at_second] = found.cursor;
    if (at_first.volts && at_second.volts) {
        found.difference.volts = *at_second.volts - *at_first.volts;
    } else {
        found.difference.why = at_first.volts ? at_second.why : at_first.why;
    }
    return found;
}

double cursor_interval(const CursorState& cursors, double columns_per_second) {
    const auto& [first, second] = cursors.hpos;
    return std::abs(second - first) / columns_per_second;
}

} // namespace kv408
