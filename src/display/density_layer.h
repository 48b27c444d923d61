#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "analysis/collected.h"
#include "analysis/histogram.h"
#include "display/density_palette.h"
#include "display/plot_scale.h"
#include "display/tiles.h"
#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/plot_geometry.h"
#include "state/plot_window.h"

namespace kv408 {

/// Where the codes and points of what was collected lie on the plot.
struct DensityScreen {
    double codes_per_code = 1.0; ///< codes of the channel as it is set now for one collected
    double centre_code = 0.0;    ///< the channel's code on the centre row
    double rows_per_code = 0.0;  ///< of the channel's codes
    /// It was collected with the time base and the delay that are set: each point lies in the
    /// columns of the live trace's, `shift` further right.
    bool aligned = false;
    bool stretched = false; ///< a block, as `block_points` has it
    double hstretch = 1.0;
    std::int64_t shift = 0;
    double first_column = 0.0;      ///< otherwise: of its first point
    double columns_per_point = 1.0; ///< otherwise

    friend bool operator==(const DensityScreen&, const DensityScreen&) = default;
};

/// The screen of what was collected `with` on `channel`, as panel and channel are set now; nothing
/// while no time base is selected.
[[nodiscard]] std::optional<DensityScreen>
density_screen(const FrontPanel& panel, const Channels& channels,
               const AcquisitionState& acquisition, Channel channel, const MeasuredWith& with);

/// How often one channel's trace passed through each unit of the plot.
///
/// A code lies in the row that the trace has there. Where rows are finer than codes, each row has
/// the hits of the code nearest to it; where they are coarser, those of all its codes. Columns are
/// filled in the same way by points. The hits are brought up to date with each sweep; all of them
/// are only counted when codes or points come to lie elsewhere.
class DensityLayer {
public:
    /// Shows `collected` on `screen`.
    void show(const Collected& collected, const DensityScreen& screen);

    /// Shows nothing, and needs no memory.
    void hide() { *this = {}; }

    /// The counters have changed; the next `show` counts anew.
    void forget() { current_ = false; }

    /// A sweep of `codes` was counted, each hit `weight` times.
    void add(std::span<const std::int16_t> codes, std::uint32_t weight);

    /// The hits in row `y` of the plot by column, in units of the plot.
    [[nodiscard]] std::span<const std::uint32_t> row(int y) const;

    /// The highest of all hits.
    [[nodiscard]] std::uint32_t most() const { return most_; }

    /// The points and codes that lie in `window`, whose edges are the plot's or within it.
    [[nodiscard]] DensityWindow within(const PlotWindow& window) const;

    [[nodiscard]] bool shown() const { return !hits_.empty(); }

    /// The units of the plot, as tiles of a surface at natural size, that hold all whose bands may
    /// have changed since this was asked last; all that have hits where they were counted anew.
    [[nodiscard]] Tiles take_changed();

    /// Lets the next `take_changed` give all units that have hits.
    void change_all() { changed_ = hit_; }

    /// Paints those of `units`, a rectangle of units of the plot, that have hits onto `surface`,
    /// which shows the plot at `scale`.
    void paint(Surface& surface, const PlotScale& scale, const Rectangle& units,
               const DensityColours& colours) const;

private:
    /// The points that a column has hits of, from `first` to, not including, `end`.
    struct Points {
        std::int16_t first = 0;
        std::int16_t end = 0;
    };

    void place_codes(const Conversion& conversion);
    void place_points(int points);
    void count(const Density& density);
    std::uint32_t hit(int column, int y, std::uint32_t hits);
    void add_moved();

    std::vector<std::uint32_t> hits_; ///< row by row
    std::vector<RowRun> rows_;        ///< by code, those within 1..511 that it has hits in
    std::vector<Points> points_;      ///< by column
    const Collected* collected_ = nullptr;
    DensityScreen screen_;
    std::uint32_t most_ = 0;
    std::uint32_t taken_most_ = 0;             ///< `most_` when `take_changed` was asked last
    Tiles hit_{plot::width, plot::height};     ///< all units that have hits, and more
    Tiles changed_{plot::width, plot::height}; ///< all units in which `add` has changed the band
    bool current_ = false;
};

} // namespace kv408
