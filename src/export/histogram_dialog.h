#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/histogram.h"
#include "export/density_watch.h"
#include "panel/controls.h"
#include "state/plot_window.h"

namespace kv408 {

/// The names of the values that the histogram window shows, in this order.
inline constexpr std::array<std::string_view, 11> histogram_names = {
    "Hits",     "Mean",         "Median",         "Mode",           "Std dev",       "Least",
    "Greatest", "Peak to peak", "Within 1 sigma", "Within 2 sigma", "Within 3 sigma"};

/// The controls of the histogram window.
struct HistogramControls {
    Button mnuhistogram{"mnuhistogram"};                ///< Tools: opens it
    ListBox cmbHistogramChannel{"cmbHistogramChannel"}; ///< whose density
    ListBox cmbHistogramOf{"cmbHistogramOf"};           ///< levels or times
    Button cmdHistogramCopy{"cmdHistogramCopy"};        ///< copies the table
    Label lblHistogramWindow{"lblHistogramWindow"};     ///< times and levels of the rectangle
    Label lblHistogramNames{"lblHistogramNames"};
    Label lblHistogramValues{"lblHistogramValues"}; ///< the values, a line for each name
    Label lblHistogramRemark{"lblHistogramRemark"}; ///< what makes them wrong, such as clipping
};

/// The values of `statistics` in the order of `histogram_names`: volts or seconds, shares 0..1.
[[nodiscard]] std::array<double, histogram_names.size()>
values_of(const HistogramStatistics& statistics, HistogramOf of);

/// The histogram window `frmHistogram`: a rectangle of the plot that can be moved and resized, the
/// histogram of the hits in it, and its statistics. Opening it switches the density on.
class HistogramDialog {
public:
    /// What it does on the plot.
    struct Plot {
        /// The points and codes that lie in a rectangle of a channel's density; nothing where that
        /// is not shown.
        std::function<std::optional<DensityWindow>(Channel, const PlotWindow&)> find;
        /// Shows a rectangle with the histogram of what a channel's density has there, or none.
        std::function<void(Channel, const std::optional<PlotWindow>&, HistogramOf)> show;
    };

    /// Works on what `density` collects, which outlives it.
    HistogramDialog(DensityDialog& density, const Clock& clock, Plot plot);
    HistogramDialog(const HistogramDialog&) = delete;
    HistogramDialog& operator=(const HistogramDialog&) = delete;

    [[nodiscard]] HistogramControls& controls() { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open() { watch_.open(); }
    [[nodiscard]] bool is_open() const { return watch_.is_open(); }
    void close();

    [[nodiscard]] const PlotWindow& window() const { return window_; }

    /// Puts the rectangle there, held within the plot and at least `least_side` units wide and
    /// high.
    void set_window(PlotWindow window);
    static constexpr int least_side = 2;

    /// Moves the rectangle, or its right and bottom edge, by so many units of the plot.
    void nudge(int right, int down);
    void stretch(int right, int down);

    /// The mouse was pressed at (`x`, `y`) of the plot: near an edge or a corner it takes hold of
    /// that, elsewhere inside of the whole rectangle. False outside and while the window is closed.
    bool press(double x, double y);
    void drag(double x, double y);
    void release() { held_.reset(); }

    /// The statistics of the hits in the rectangle; nothing where there are none.
    [[nodiscard]] std::optional<HistogramStatistics> statistics() const;

    /// The histogram of the hits in the rectangle; nothing where there is no density.
    [[nodiscard]] std::optional<DensityHistogram> histogram() const;

    [[nodiscard]] Channel channel() const { return watch_.channel(); }
    [[nodiscard]] HistogramOf of() const;

    /// Statistics and bins with headings, separated by tabs, as a spreadsheet takes them from the
    /// clipboard: volts and seconds.
    [[nodiscard]] std::string table() const;

    /// Brings numbers and bars up to date.
    void refresh() { watch_.refresh(); }

    /// The same, not more often than people read.
    void tick_over() { watch_.tick_over(); }

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { watch_.on_show(std::move(listener)); }

private:
    /// What a drag moves.
    struct Held {
        bool left = false;
        bool top = false;
        bool right = false;
        bool bottom = false;
        long x = 0; ///< unit where it was taken
        long y = 0;
        PlotWindow before;
    };

    void show_values();
    void tell_clipping(double hits);
    [[nodiscard]] std::string place_text() const;

    Plot plot_;
    HistogramControls controls_;
    DensityWatch watch_;
    PlotWindow window_;
    std::optional<Held> held_;
};

} // namespace kv408
