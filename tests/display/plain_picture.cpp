#include "plain_picture.h"

#include "display/copies.h"
#include "display/graticule.h"
#include "display/lines.h"
#include "display/shapes.h"
#include "state/rounding.h"

namespace kv408::test {

PlainPicture::PlainPicture(const PictureScene& scene) : scene_(&scene) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        current_[channel].assign(641, Point{});
        history_[channel].assign(9, current_[channel]);
    }
}

void PlainPicture::refresh(int channel, int index) {
    const auto slot = static_cast<std::size_t>(channel);
    const ChannelState& state = scene_->channels[slot];
    for (int at = index == 0 ? 1 : index; at <= (index == 0 ? 639 : index); ++at) {
        const auto place = static_cast<std::size_t>(at);
        const double y =
            (state.offsetdac - scene_->samples[slot].raw[place]) * state.scale * state.vtfactor +
            256.0;
        current_[slot][place] = {at - state.delaypts + state.shown_delaypts,
                                 std::clamp(round_to_int32(y), 1, 511)};
    }
    if (index == 0) {
        history_[slot].assign(9, current_[slot]);
    }
}

void PlainPicture::shift() {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        history_[channel].insert(history_[channel].begin(), current_[channel]);
        history_[channel].pop_back();
    }
}

bool PlainPicture::shows(int channel, unsigned flags) const {
    return (flags & (channel == ch1 ? 1U : 2U)) != 0 &&
           (channel == ch1 || scene_->acquisition.ready[1]) &&
           scene_->panel.channel[static_cast<std::size_t>(channel)].enable.checked() &&
           scene_->panel.textstatus.text() != "Waiting For TRIGGER";
}

std::vector<std::pair<const PlainPicture::Points*, Pixel>> PlainPicture::layers(int channel) const {
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

void PlainPicture::draw_trace(Surface& picture, int channel) const {
    const Pixel background = pixel_of(scene_->colours.background);
    Surface trace(plot::width, plot::height);
    const Canvas canvas(trace);
    fill_rectangle(canvas, whole(trace), background);
    const auto all = layers(channel);
    if (scene_->panel.eyeon.checked()) {
        for (std::size_t index = 1; index <= 639; ++index) {
            for (const auto& [points, colour] : all) {
                set_pixel(canvas, (*points)[index], colour);
            }
        }
    } else {
        for (const auto& [points, colour] : all) {
            draw_polyline(canvas, std::span(*points).subspan(1, 639), colour);
        }
    }
    if (scene_->acquisition.pointmode) {
        const std::int32_t x =
            current_[static_cast<std::size_t>(channel)][static_cast<std::size_t>(newest_point_)].x;
        fill_rectangle(canvas, {x + 1, 0, x + 20, plot::height}, background);
    }
    copy_transparent(Canvas(picture), {}, trace, whole(trace), background);
}

Surface PlainPicture::draw(unsigned flags) const {
    Surface picture(plot::width, plot::height);
    draw_graticule(Canvas(picture), pixel_of(scene_->colours.background),
                   pixel_of(scene_->colours.grid), scene_->panel.gridenable.checked());
    for (const int channel : {ch2, ch1}) {
        if (shows(channel, flags)) {
            draw_trace(picture, channel);
        }
    }
    return picture;
}

} // namespace kv408::test
