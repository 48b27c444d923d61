#include "display/annotations.h"

#include <algorithm>
#include <string>

#include "display/lines.h"
#include "display/shapes.h"
#include "panel/withheld_traces.h"
#include "state/channel_state.h"
#include "state/shared_texts.h"

namespace kv408 {
namespace {

/// Place of "Frequency" in the selection lists: from it on the measurements are times.
constexpr int first_in_time = 9;

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
    const auto kind = slot->selector.index() >= first_in_time ? Annotations::Kind::dots
                                                              : Annotations::Kind::lines;
    const std::string no_pulse = std::string(not_measurable) + ' ';
    const std::string no_width = std::string(infinitely_fast) + ' ';
    Annotations shown;
    const auto add = [&](std::size_t channel, const Label& result, bool held) {
        const bool measured = result.caption() != no_pulse && result.caption() != no_width;
        if (measured && held && panel.channel[channel].enable.checked()) {
            shown.channel[channel] = {kind, marks.mark[channel]};
            shown.colour = pixel_of(colours.annotations);
        }
    };
    add(ch1, slot->ch1, true);
    add(ch2, slot->ch2, acquisition.ready[ch2]);
    return shown;
}

void draw_annotations(const Canvas& canvas, const Annotations& annotations) {
    const Pixel colour = annotations.colour;
    for (const Annotations::ChannelMarks& channel : annotations.channel) {
        if (channel.kind == Annotations::Kind::none) {
            continue;
        }
        for (const auto& [first, second] : channel.mark) {
            if (channel.kind == Annotations::Kind::lines) {
                draw_line(canvas, point_of(first), point_of(second), {colour, PenStyle::dotted});
            } else {
                draw_ellipse(canvas, {first.x, first.y, second.x, second.y}, colour, colour);
            }
        }
    }
}

} // namespace kv408
