#pragma once

#include <array>
#include <memory>

#include "display/generation.h"
#include "state/channel_state.h"
#include "state/samples.h"

namespace kv408 {

/// All columns of the plot, in its units.
inline constexpr Columns all_columns{0, plot::width};

/// The rows that a trace's points are held within.
inline constexpr double highest_row = 1.0;
inline constexpr double lowest_row = 511.0;

/// The place of sample `index` with the code `code`: higher codes lie higher, the channel's offset
/// code lies on the centre row; y is held within 1..511.
[[nodiscard]] TracePoint map_sample(const ChannelState& channel, std::uint16_t code, int index);

/// One channel's current trace and its persistence history.
class Trace {
public:
    Trace();

    /// Maps sample `index` of `samples` anew: 0 maps all drawn points, 1..639, and makes every
    /// generation of the history equal to the new trace; 1..640 maps that point; any other index
    /// changes nothing. The result are the columns of the plot that a point's change can be seen
    /// in: none when the point stayed, all when that cannot be told.
    Columns map(const ChannelState& channel, const SampleBuffer& samples, int index);

    /// Brings what the traces cover up to date; to be called before they are drawn.
    void settle() { current_.settle(); }

    /// Moves the history on by one generation; the current trace becomes its newest.
    void shift();

    /// Draws all generations from now on at `scale`.
    void rescale(const PlotScale& scale);

    [[nodiscard]] const Generation& current() const { return current_; }

    /// Generation `generation` of the history, 0 the newest, 8 the oldest.
    [[nodiscard]] const Generation& history(int generation) const {
        return *history_[static_cast<std::size_t>(generation)];
    }

private:
    Columns map_point(const TracePoint& mapped, int index);
    void fill_history();

    Generation current_;
    /// Several places hold the same generation where they are alike.
    std::array<std::shared_ptr<Generation>, plot::generations> history_;
};

} // namespace kv408
