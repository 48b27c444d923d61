#include "display/annotations.h"

#include <algorithm>

#include "state/channel_state.h"

namespace kv408 {

Annotations annotations(const FrontPanel& panel, const AnnotationMarks& marks,
                        const ColourTable& colours, const AcquisitionState& acquisition) {
    const auto* const slot =
        std::find_if(panel.measurement.begin(), panel.measurement.end(),
                     [](const MeasurementControls& at) { return at.annotate.checked(); });
    if (!panel.check1.checked() || acquisition.traces_withheld() ||
        slot == panel.measurement.end()) {
        return {};
    }
    const auto place = static_cast<std::size_t>(slot - panel.measurement.begin());
    Annotations shown;
    for (const Channel channel : both_channels) {
        const MarkKind kind = marks.kind[place][channel];
        const bool held = channel == ch1 || acquisition.ready[ch2];
        if (kind != MarkKind::none && held && panel.channel[channel].enable.checked()) {
            shown.channel[channel] = {kind, marks.mark[channel]};
            shown.colour = pixel_of(colours.annotations);
        }
    }
    return shown;
}

void draw_annotations(const UnitPainter& painter, const Annotations& annotations) {
    for (const Annotations::ChannelMarks& channel : annotations.channel) {
        if (channel.kind == MarkKind::none) {
            continue;
        }
        for (const auto& [first, second] : channel.mark) {
            if (channel.kind == MarkKind::lines) {
                painter.draw_row(first.y, first.x, second.x, annotations.colour, PenStyle::dotted);
            } else {
                painter.draw_ellipse({first.x, first.y, second.x, second.y}, annotations.colour);
            }
        }
    }
}

} // namespace kv408
