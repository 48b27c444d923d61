#pragma once

#include <array>

#include "display/surface.h"
#include "display/trace.h"
#include "state/plot_geometry.h"

namespace kv408 {

/// How one channel's trace is drawn; with its points, everything that its pixels depend on.
struct TraceLook {
    bool shown = false;   ///< the trace is drawn at all; the other members matter only then
    bool dots = false;    ///< a dot for each point instead of lines
    bool history = false; ///< the persistence history is drawn under the current trace
    Pixel colour = 0;     ///< of the current trace
    std::array<Pixel, plot::generations> faded = {}; ///< of the history, generation 0 first

    friend bool operator==(const TraceLook&, const TraceLook&) = default;
};

/// A trace as it is to be drawn.
struct TraceView {
    const Trace* trace = nullptr;
    TraceLook look;
    Columns gap; ///< columns of pixels left blank ahead of the newest point; empty: none
};

/// Generations that one trace can show: the current one and the history.
inline constexpr int most_layers = 1 + plot::generations;

/// The generation that `view` shows as layer `layer`: 0 the current one, on top, then the history
/// from the newest down.
[[nodiscard]] inline const Generation& layer_of(const TraceView& view, int layer) {
    return layer == 0 ? view.trace->current() : view.trace->history(layer - 1);
}

/// The colour of layer `layer` of `view`.
[[nodiscard]] inline Pixel layer_colour(const TraceLook& look, int layer) {
    return layer == 0 ? look.colour : look.faded[static_cast<std::size_t>(layer - 1)];
}

/// Number of layers that `look` shows.
[[nodiscard]] inline int layers_of(const TraceLook& look) {
    return !look.shown ? 0 : look.history ? most_layers : 1;
}

} // namespace kv408
