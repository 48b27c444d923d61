#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "display/canvas.h"
#include "display/plot_scale.h"
#include "display/tiles.h"
#include "panel/front_panel.h"
#include "state/channel_state.h"
#include "state/reference_curve.h"

namespace kv408 {

/// The screen of the channel that a reference follows.
struct ReferenceScreen {
    double mv_per_division = 0.0;    ///< selected now
    double zero_row = 0.0;           ///< the channel's zero line, 0 the top
    double columns_per_second = 0.0; ///< of the time base that is selected now
    double first_time = 0.0;         ///< time of column 1 after the trigger, picoseconds

    friend bool operator==(const ReferenceScreen&, const ReferenceScreen&) = default;
};

/// A point of a reference on the plot, in its units; it may lie left or right of it.
struct ReferencePoint {
    double column = 0.0;
    double row = 0.0; ///< held within 1..511, as that of a trace

    friend bool operator==(const ReferencePoint&, const ReferencePoint&) = default;
};

/// A reference as it is to be drawn; everything that its pixels depend on.
struct ReferenceLook {
    std::shared_ptr<const ReferenceCurve> curve;
    ReferenceScreen screen;
    Pixel colour = 0;

    friend bool operator==(const ReferenceLook&, const ReferenceLook&) = default;
};

/// The screen of `channel` as `panel` and `channels` set it now; nothing while no
/// time base is selected.
[[nodiscard]] std::optional<ReferenceScreen>
reference_screen(const FrontPanel& panel, const Channels& channels, Channel channel);

/// The same for `curve`, which may have a scale of its own.
[[nodiscard]] std::optional<ReferenceScreen>
curve_screen(const FrontPanel& panel, const Channels& channels, const ReferenceCurve& curve);

/// The lines of `curve`: its points, and those of the lower line of an envelope.
[[nodiscard]] std::vector<std::span<const double>> lines_of(const ReferenceCurve& curve);

/// `line` of `curve` as it lies on `screen`: where a live trace of the same signal would lie.
[[nodiscard]] std::vector<ReferencePoint>
on_screen(const ReferenceCurve& curve, std::span<const double> line, const ReferenceScreen& screen);

/// A reference as it lies on a surface.
struct PlacedReference {
    std::vector<std::vector<Point>> lines; ///< pixels, from left to right
    Pixel colour = 0;
};

/// `look` on a surface that shows the whole plot at `scale`.
[[nodiscard]] PlacedReference placed(const ReferenceLook& look, const PlotScale& scale);

/// Draws `reference` onto `canvas`, whose surface shows the whole plot at `scale`, within the
/// plot's border. What it may have changed is added to `touched`, where there is one.
void draw_reference(const Canvas& canvas, const PlotScale& scale, const PlacedReference& reference,
                    Tiles* touched = nullptr);

} // namespace kv408
