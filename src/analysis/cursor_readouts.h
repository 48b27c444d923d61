#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "state/channel.h"
#include "state/channel_state.h"
#include "state/cursor_state.h"
#include "state/samples.h"

namespace kv408 {

/// Why there is no voltage at a cursor.
enum class NoCrossing {
    off,      ///< the channel is off
    no_sweep, ///< no sweep of the channel has come
    no_trace, ///< the traces are not shown: the instrument waits for its trigger, or for new data
    beside    ///< the trace does not reach the cursor
};

/// What `why` is for people.
[[nodiscard]] std::string_view text_of(NoCrossing why);

/// A voltage, or why there is none.
struct CrossingVolts {
    std::optional<double> volts; ///< at the channel's input
    NoCrossing why = NoCrossing::off;
};

/// A channel as far as its trace is concerned.
struct ShownTrace {
    /// What stands in the way of all of it; nothing while it is shown.
    std::optional<NoCrossing> hidden;
    const ChannelState& channel;
    const SampleBuffer& samples; ///< the trace, point by point
};

/// Where the time cursors cross the trace of a channel.
struct CursorCrossings {
    std::array<CrossingVolts, 2> cursor; ///< by cursor
    CrossingVolts difference;            ///< of cursor 2 from cursor 1
};

/// Where both time cursors cross `trace`: a point of it lies in each column of the plot.
[[nodiscard]] CursorCrossings crossings_of(const ShownTrace& trace, const CursorState& cursors);

/// The time between both time cursors, seconds, never negative, on a screen that shows
/// `columns_per_second`.
[[nodiscard]] double cursor_interval(const CursorState& cursors, double columns_per_second);

} // namespace kv408
