#include "display/density_layers.h"

#include <algorithm>

#include "panel/screen.h"

namespace kv408 {
namespace {

/// CH1 comes to lie on top.
constexpr std::array<Channel, 2> from_below = {ch2, ch1};

} // namespace

void DensityLayers::set(Channel channel, const Collected* collected) {
    Shown& shown = channels_.at(channel);
    shown.collected = collected;
    ++shown.state;
    shown.layer.forget();
    if (collected == nullptr) {
        shown.layer.hide();
    }
}

void DensityLayers::add(Channel channel, std::span<const std::int16_t> codes,
                        std::uint32_t weight) {
    Shown& shown = channels_.at(channel);
    if (shown.collected != nullptr) {
        shown.layer.add(codes, weight);
    }
}

DensityLayers::Looks DensityLayers::looks(const Inputs& inputs, unsigned flags) const {
    Looks looks;
    for (const Channel channel : both_channels) {
        const Shown& shown = channels_.at(channel);
        const unsigned flag = channel == ch1 ? draw_flags::ch1 : draw_flags::ch2;
        if (shown.collected == nullptr || (flags & flag) == 0 ||
            !inputs.panel.channel.at(channel).enable.checked()) {
            continue;
        }
        const auto screen = density_screen(inputs.panel, inputs.channels, inputs.acquisition,
                                           channel, shown.collected->with);
        if (screen) {
            looks.at(channel) = {.collected = shown.collected,
                                 .state = shown.state,
                                 .colours =
                                     density_colours(palette_, inputs.colours.channel(channel),
                                                     inputs.colours.background),
                                 .screen = *screen};
        }
    }
    return looks;
}

void DensityLayers::show(const Looks& looks) {
    for (const Channel channel : both_channels) {
        const Look& look = looks.at(channel);
        if (look.collected != nullptr) {
            channels_.at(channel).layer.show(*look.collected, look.screen);
        } else {
            channels_.at(channel).layer.hide();
        }
    }
}

void DensityLayers::change_all() {
    for (Shown& shown : channels_) {
        shown.layer.change_all();
    }
}

void DensityLayers::paint_changed(const Looks& looks, Surface& surface, const PlotScale& scale,
                                  const std::function<void(const Rectangle&)>& painted) {
    const std::vector<DensityView> shown = views(looks);
    if (shown.empty()) {
        return;
    }
    Tiles changed = channels_.front().layer.take_changed();
    changed.add(channels_.back().layer.take_changed(), {0, plot::width});
    for (int top = 0; top < plot::height; top += Tiles::band_rows) {
        changed.for_each_row({0, plot::width}, top, [&](const Rectangle& units) {
            for (const DensityView& view : shown) {
                view.layer->paint(surface, scale, units, view.colours);
            }
            painted({scale.edge(units.left), scale.edge(units.top),
                     std::min(scale.edge(units.right), scale.width()),
                     std::min(scale.edge(units.bottom), scale.height())});
        });
    }
}

std::vector<DensityView> DensityLayers::views(const Looks& looks) const {
    std::vector<DensityView> views;
    for (const Channel channel : from_below) {
        const DensityLayer& layer = channels_.at(channel).layer;
        if (looks.at(channel).collected != nullptr && layer.shown()) {
            views.push_back({&layer, looks.at(channel).colours});
        }
    }
    return views;
}

} // namespace kv408
