#pragma once

#include <array>
#include <cstdint>

#include "display/annotations.h"
#include "display/histogram_marks.h"
#include "display/plot_marks.h"
#include "display/unit_painter.h"
#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/colour.h"
#include "state/cursor_state.h"
#include "state/trigger_state.h"

namespace kv408 {

/// The two cursor lines as they are to be drawn.
struct CursorLines {
    enum class Kind { none, voltage, time } kind = Kind::none; ///< none, horizontal, vertical lines
    std::array<std::int32_t, 2> place = {}; ///< rows of voltage cursors, columns of time cursors
    std::array<bool, 2> solid = {};         ///< the active cursor is solid, the other one dotted
    Pixel colour = 0;

    friend bool operator==(const CursorLines&, const CursorLines&) = default;
};

/// The trigger-level line as it is to be drawn.
struct TriggerLine {
    bool shown = false;
    std::int32_t row = 0;
    Pixel colour = 0;

    friend bool operator==(const TriggerLine&, const TriggerLine&) = default;
};

/// What is drawn over the traces.
struct Overlays {
    CursorLines cursors;
    Annotations annotations;
    TriggerLine trigger;
    HistogramMarks histogram;
    PlotMarks marks; ///< of eye and mask

    friend bool operator==(const Overlays&, const Overlays&) = default;
};

/// The cursor lines of `cursors`, in the mean of the cursor channel's colour and the cursor colour.
[[nodiscard]] CursorLines cursor_lines(const CursorState& cursors, const ColourTable& colours);

/// The row of the level of `source` (`ch1` for TRIG1, `ch2` for TRIG2) on its own channel's trace:
/// (2048 - level) x 2 x scale x gain + the channel's zero row, rounded halves to even.
[[nodiscard]] std::int32_t trigger_row(Channel source, const TriggerState& trigger,
                                       const Channels& channels);

/// Draws the marks of eye and mask, then the histogram, then the cursor lines, then the marks of
/// the annotated measurement, then the trigger-level line.
void draw_overlays(const UnitPainter& painter, const Overlays& overlays);

/// Writes the offset read-outs and the trigger level, and puts the trigger marker beside the plot.
void show_labels(FrontPanel& panel, const Channels& channels, const TriggerState& trigger);

} // namespace kv408
