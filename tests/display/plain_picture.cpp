#include "plain_picture.h"

#include <cmath>

#include "display/overlays.h"

namespace kv408::test {

PlainPicture::PlainPicture(const PictureScene& scene) : scene_(&scene) {
    for (const Channel channel : both_channels) {
        current_[channel].assign(641, Place{});
        history_[channel].assign(9, current_[channel]);
    }
}

void PlainPicture::refresh(Channel channel, int index) {
    const auto slot = static_cast<std::size_t>(channel);
    const ChannelState& state = scene_->channels[slot];
    for (int at = index == 0 ? 1 : index; at <= (index == 0 ? 639 : index); ++at) {
        const auto place = static_cast<std::size_t>(at);
        const double y =
            (state.offsetdac - scene_->samples[slot].raw[place]) * state.scale * state.vtfactor +
            256.0;
        current_[slot][place] = {at - state.delaypts + state.shown_delaypts,
                                 std::clamp(y, 1.0, 511.0)};
    }
    if (index == 0) {
        history_[slot].assign(9, current_[slot]);
    }
}

void PlainPicture::shift() {
    for (const Channel channel : both_channels) {
        history_[channel].insert(history_[channel].begin(), current_[channel]);
        history_[channel].pop_back();
    }
}

bool PlainPicture::shows(Channel channel, unsigned flags) const {
    return (flags & (channel == ch1 ? 1U : 2U)) != 0 &&
           (channel == ch1 || scene_->acquisition.ready[1]) &&
           scene_->panel.channel[static_cast<std::size_t>(channel)].enable.checked() &&
           scene_->acquisition.activity != Activity::waiting_for_trigger;
}

std::vector<std::pair<const PlainPicture::Points*, Pixel>>
PlainPicture::layers(Channel channel) const {
    const auto slot = static_cast<std::size_t>(channel);
    const Colour colour = scene_->colours.channel(channel);
    const auto faded = persistence_colours(colour, scene_->colours.background, depth_);
    std::vector<std::pair<const Points*, Pixel>> result;
    if (scene_->panel.persist.checked()) {
        for (std::size_t generation = 9; generation-- > 0;) {
            result.emplace_back(&history_[slot][generation], pixel_of(faded[generation]));
        }
    }
    result.emplace_back(&current_[slot], pixel_of(colour));
    return result;
}

Surface PlainPicture::surface() const {
    return {static_cast<int>(std::floor(641 * factor_ + 0.5)),
            static_cast<int>(std::floor(513 * factor_ + 0.5))};
}

void PlainPicture::draw_trace(Surface& picture, Channel channel) const {
    const Pixel background = pixel_of(scene_->colours.background);
    Surface trace = surface();
    const PlainPen pen(trace, factor_);
    pen.fill({0, 0, trace.width(), trace.height()}, background);
    const auto all = layers(channel);
    const auto at = [&pen](const Points& points, std::size_t index) {
        return Point{pen.place(points[index].x), pen.place(points[index].y)};
    };
    const bool dots = scene_->panel.eyeon.checked();
    for (std::size_t index = 1; dots && pen.line_width() == 1 && index <= 639; ++index) {
        for (const auto& [points, colour] : all) {
            pen.disc(at(*points, index), colour);
        }
    }
    for (const auto& [points, colour] : all) {
        for (std::size_t index = 1; dots && pen.line_width() > 1 && index <= 639; ++index) {
            pen.disc(at(*points, index), colour);
        }
        for (std::size_t index = 1; !dots && index < 639; ++index) {
            pen.line(at(*points, index), at(*points, index + 1), colour);
        }
    }
    if (scene_->acquisition.pointmode) {
        const int x =
            current_[static_cast<std::size_t>(channel)][static_cast<std::size_t>(newest_point_)].x;
        const auto edge = [this](int unit) {
            return static_cast<int>(std::floor(unit * factor_ + 0.5));
        };
        pen.fill({edge(x + 1), 0, edge(x + 20), trace.height()}, background);
    }
    for (std::size_t index = 0; index < trace.pixels().size(); ++index) {
        if (trace.pixels()[index] != background) {
            picture.pixels()[index] = trace.pixels()[index];
        }
    }
}

void PlainPicture::draw_overlays(const PlainPen& pen) const {
    extras.draw_marks(pen, pixel_of(scene_->colours.annotations));
    const CursorState& cursors = scene_->cursors;
    const CursorLines lines = cursor_lines(cursors, scene_->colours);
    for (const std::size_t cursor : {0U, 1U}) {
        const bool dotted = !lines.solid[cursor];
        if (cursor_mode::is_voltage(cursors.cursormode)) {
            pen.row(cursors.vpos[cursor], 0, 640, lines.colour, dotted);
        } else if (cursor_mode::is_time(cursors.cursormode)) {
            pen.column(cursors.hpos[cursor], 0, 512, lines.colour, dotted);
        }
    }
    const Annotations marks =
        annotations(scene_->panel, scene_->marks, scene_->colours, scene_->acquisition);
    for (const Annotations::ChannelMarks& channel : marks.channel) {
        for (const auto& [from, to] : channel.mark) {
            if (channel.kind == MarkKind::lines) {
                pen.row(from.y, from.x, to.x, marks.colour, true);
            } else if (channel.kind == MarkKind::dots) {
                pen.circle(from.x, from.y, to.x - from.x, marks.colour);
            }
        }
    }
    if (scene_->acquisition.holdoff) {
        pen.row(trigger_row(ch1, scene_->trigger, scene_->channels), 0, 640,
                pixel_of(scene_->colours.normal_text), true);
    }
}

Surface PlainPicture::draw(unsigned flags) const {
    Surface picture = surface();
    const PlainPen pen(picture, factor_);
    pen.graticule(pixel_of(scene_->colours.background), pixel_of(scene_->colours.grid),
                  scene_->panel.gridenable.checked());
    extras.draw_curves(picture, factor_, extras.references);
    extras.draw_densities(pen);
    for (const Channel channel : {ch2, ch1}) {
        if (shows(channel, flags)) {
            draw_trace(picture, channel);
        }
    }
    extras.draw_curves(picture, factor_, extras.maths);
    if ((flags & draw_flags::overlays) != 0) {
        draw_overlays(pen);
    }
    return picture;
}

} // namespace kv408::test
