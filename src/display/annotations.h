#pragma once

#include <array>

#include "display/unit_painter.h"
#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/colour.h"
#include "state/measurement_state.h"

namespace kv408 {

/// The marks of the annotated measurement as they are to be drawn.
struct Annotations {
    /// One channel's marks: the ends of the two lines, or opposite corners of the dots' squares.
    struct ChannelMarks {
        MarkKind kind = MarkKind::none;
        std::array<AnnotationGeometry, 2> mark = {};

        friend bool operator==(const ChannelMarks&, const ChannelMarks&) = default;
    };

    std::array<ChannelMarks, 2> channel; ///< by channel index
    Pixel colour = 0;

    friend bool operator==(const Annotations&, const Annotations&) = default;
};

/// The marks of the first slot whose annotation box is checked, in the places that `marks` holds.
/// There are none without such a slot, while measuring is off and while the instrument waits for a
/// trigger; a channel has none when it is off or has no result there, and CH2 also while no whole
/// sweep of it is there.
[[nodiscard]] Annotations annotations(const FrontPanel& panel, const AnnotationMarks& marks,
                                      const ColourTable& colours,
                                      const AcquisitionState& acquisition);

/// Draws the marks, CH1's first: dotted level lines, dots filled with the colour.
void draw_annotations(const UnitPainter& painter, const Annotations& annotations);

} // namespace kv408
