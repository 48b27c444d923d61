#include "display/scale_lines.h"

#include <array>
#include <cstdio>
#include <string>

namespace kv408 {
namespace {

constexpr Colour unless_told = rgb(255, 255, 255);

/// `text` in the colour of `control`.
PictureText piece(const Control& control, std::string text) {
    return {.text = std::move(text), .colour = control.fore_colour().value_or(unless_told)};
}

std::string local_date_text(const LocalTime& time) {
    std::array<char, 96> text = {};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month,
                  time.day, time.hour, time.minute, time.second);
    return text.data();
}

TextLine channel_line(const ChannelControls& channel, const std::string& name) {
    const std::string& scale = channel.vdiv.text();
    const std::string& read_out = channel.vdivtext.caption();
    // Behind the scale the read-out says how the channel is switched.
    const std::string switched = read_out.starts_with(scale) ? read_out.substr(scale.size()) : "";
    TextLine line = {piece(channel.vdivtext, name),
                     piece(channel.vdivtext, scale + "/div" + switched),
                     piece(channel.vdivtext, "Offset: " + channel.ofset.caption())};
    if (!channel.hor_delay.caption().empty()) {
        line.push_back(piece(channel.vdivtext, channel.hor_delay.caption()));
    }
    return line;
}

/// The results of one slot; empty when it shows none.
TextLine result_line(const MeasurementControls& slot) {
    if (slot.label.caption().empty()) {
        return {};
    }
    TextLine line = {piece(slot.label, slot.label.caption()), piece(slot.ch1, slot.ch1.caption()),
                     piece(slot.ch2, slot.ch2.caption())};
    // Only what stands last may be left out: the pieces are columns.
    while (line.back().text.empty()) {
        line.pop_back();
    }
    return line;
}

} // namespace

std::vector<TextLine> scale_lines(const FrontPanel& panel, const LocalTime& time,
                                  const std::vector<ShownReference>& references) {
    std::vector<TextLine> lines = {{piece(panel.tdivtext, panel.seltimediv.text()),
                                    piece(panel.tdivtext, local_date_text(time))}};
    for (std::size_t index = 0; index < panel.channel.size(); ++index) {
        if (panel.channel.at(index).enable.checked()) {
            lines.push_back(
                channel_line(panel.channel.at(index), "CH" + std::to_string(index + 1)));
        }
    }
    if (panel.check1.checked()) {
        for (const MeasurementControls& slot : panel.measurement) {
            if (TextLine line = result_line(slot); !line.empty()) {
                lines.push_back(std::move(line));
            }
        }
    }
    for (const ShownReference& reference : references) {
        lines.push_back({{.text = reference.caption, .colour = reference.colour}});
    }
    return lines;
}

} // namespace kv408
