#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "display/density_layer.h"
#include "state/colour.h"

namespace kv408 {

/// A density as it was drawn, for those who draw it in their own way.
struct DensityView {
    const DensityLayer* layer = nullptr;
    DensityColours colours = {};
};

/// The densities of both channels on the plot, CH1's on top. Off, they need no memory.
class DensityLayers {
public:
    /// What a density's pixels depend on.
    struct Look {
        const Collected* collected = nullptr; ///< null: nothing is shown
        std::uint64_t state = 0;              ///< of its counters, as they were set last
        DensityColours colours = {};
        DensityScreen screen;

        friend bool operator==(const Look&, const Look&) = default;
    };
    using Looks = std::array<Look, 2>; ///< by channel

    /// What a look is made from besides.
    struct Inputs {
        const FrontPanel& panel;
        const Channels& channels;
        const AcquisitionState& acquisition;
        const ColourTable& colours;
    };

    /// Shows from the next draw on what was collected of `channel`, or nothing: null. Its counters
    /// may have changed in any way. What is shown must outlive that or the next call.
    void set(Channel channel, const Collected* collected);

    void set_palette(DensityPalette palette) { palette_ = palette; }
    [[nodiscard]] DensityPalette palette() const { return palette_; }

    /// A sweep of `channel` was counted, each hit `weight` times.
    void add(Channel channel, std::span<const std::int16_t> codes, std::uint32_t weight);

    /// The density of `channel` as it was shown last; null where it is not.
    [[nodiscard]] const DensityLayer* layer(Channel channel) const {
        const DensityLayer& layer = channels_.at(channel).layer;
        return layer.shown() ? &layer : nullptr;
    }

    /// How the densities of the channels that are on are to be drawn, of those that `flags` names
    /// (bits of draw_flags).
    [[nodiscard]] Looks looks(const Inputs& inputs, unsigned flags) const;

    /// Brings the hits up to date with `looks`.
    void show(const Looks& looks);

    /// Lets the next `paint_changed` paint all that has hits.
    void change_all();

    /// Paints `looks`, which were shown last, onto `surface`, which shows the plot at `scale`:
    /// what has changed of them since this was called last. Calls `painted` with rectangles of
    /// pixels that hold all of that.
    void paint_changed(const Looks& looks, Surface& surface, const PlotScale& scale,
                       const std::function<void(const Rectangle&)>& painted);

    /// What `looks`, which were shown last, look like.
    [[nodiscard]] std::vector<DensityView> views(const Looks& looks) const;

private:
    struct Shown {
        const Collected* collected = nullptr;
        std::uint64_t state = 0;
        DensityLayer layer;
    };

    std::array<Shown, 2> channels_;
    DensityPalette palette_ = DensityPalette::cividis;
};

} // namespace kv408
