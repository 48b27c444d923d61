#include "display/annotations.h"

#include <algorithm>

#include "display/lines.h"
#include "display/shapes.h"
#include "panel/withheld_traces.h"
#include "state/channel_state.h"

namespace kv408 {
namespace {

Point point_of(const AnnotationPoint& point) {
    return {point.x, point.y};
}

} // namespace

Annotations annotations(const FrontPanel& panel, const AnnotationMarks& marks,
                        const ColourTable& colours, const AcquisitionState& acquisition) {
    const auto* const slot =
        std::find_if(panel.measurement.begin(), panel.measurement.end(),
                     [](const MeasurementControls& at) { return at.annotate.checked(); });
    if (!panel.check1.checked() || traces_withheld(panel, acquisition) ||
        slot == panel.measurement.end()) {
        return {};
    }
    const auto place = static_cast<std::size_t>(slot - panel.measurement.begin());
    Annotations shown;
    for (std::size_t channel = 0; channel < shown.channel.size(); ++channel) {
        const MarkKind kind = marks.kind[place][channel];
        const bool held = channel == ch1 || acquisition.ready[ch2];
        if (kind != MarkKind::none && held && panel.channel[channel].enable.checked()) {
            shown.channel[channel] = {kind, marks.mark[channel]};
            shown.colour = pixel_of(colours.annotations);
        }
    }
    return shown;
}

void draw_annotations(const Canvas& canvas, const Annotations& annotations) {
    const Pixel colour = annotations.colour;
    for (const Annotations::ChannelMarks& channel : annotations.channel) {
        if (channel.kind == MarkKind::none) {
            continue;
        }
        for (const auto& [first, second] : channel.mark) {
            if (channel.kind == MarkKind::lines) {
                draw_line(canvas, point_of(first), point_of(second), {colour, PenStyle::dotted});
            } else {
                draw_ellipse(canvas, {first.x, first.y, second.x, second.y}, colour, colour);
            }
        }
    }
}

} // namespace kv408
