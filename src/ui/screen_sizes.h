#pragma once

#include <QFont>
#include <QSize>
#include <QWidget>

#include "display/plot_scale.h"
#include "ui/panel_frame.h"
#include "ui/screen_header.h"

namespace kv408::ui {

/// Lengths of the screen in units of the window, and its parts.
namespace screen_measure {
inline constexpr int padding = 4;
inline constexpr int footer_spacing = 12; ///< between a channel's name and its volts per division,
                                          ///< beside texts of the desktop's size
/// The outermost columns of the plot box are empty.
inline constexpr int empty_columns = 2;
/// Parts of the column right of the plot that CH1, with the names, and CH2 take.
inline constexpr int first_part = 7;
inline constexpr int second_part = 5;
} // namespace screen_measure

/// `font` in letters `growth` times as large.
[[nodiscard]] QFont grown(const QFont& font, double growth);

/// Heights of the rows around the plot, units of the window.
struct RowHeights {
    int line;   ///< of a line of read-outs
    int result; ///< of a row of the results
};

/// What the plot has to fit into.
struct PlotRoom {
    QSize size;                         ///< of the screen, units of the window
    qreal ratio = 1.0;                  ///< pixels of the screen for each unit of the window
    const PanelFrame* beside = nullptr; ///< what stands in the column right of the plot, or null
};

/// How large the plot and what is around it become: the read-outs above and below it, the results,
/// or the column to its right with these and a frame. Texts of the desktop's size have a growth of
/// 1.
class ScreenSizes {
public:
    /// For the texts of `screen` in its font, and `header` above the plot. Both outlive this.
    ScreenSizes(const QWidget& screen, const ScreenHeader& header)
        : screen_(screen), header_(header) {}

    /// How much larger than the desktop's the texts are beside a plot of `scale` on a screen of
    /// `ratio` pixels for each unit of the window: 1 to 2, by quarters.
    [[nodiscard]] static double growth_at(const PlotScale& scale, qreal ratio);

    /// As high as the rows are where there is room, and as low as they may become.
    [[nodiscard]] RowHeights usual_heights(double growth) const;
    [[nodiscard]] RowHeights least_heights() const;

    /// Lines of the read-outs below the plot whose narrower half is `half` units of the window
    /// wide: 1, or 2 where the channels' names stand above their values.
    [[nodiscard]] int footer_lines(double half, double growth) const;

    /// The lines of those below a plot of `columns` units of the window, and in a `column` as wide
    /// as that beside it.
    [[nodiscard]] int footer_lines_beneath(int columns, double growth) const {
        return footer_lines(columns / 2.0, growth);
    }
    [[nodiscard]] int footer_lines_beside(int column, double growth) const;

    /// The least width of the column with `beside` in it.
    [[nodiscard]] int column_width(const PanelFrame& beside, double growth) const;

    /// The size of all of it around a plot of `scale`.
    [[nodiscard]] QSize size_around(const PlotScale& scale, const PlotRoom& room,
                                    const RowHeights& heights) const;

    /// Whether all of it has room around a plot of `scale`, with rows of their usual heights.
    [[nodiscard]] bool fits(const PlotScale& scale, const PlotRoom& room) const;

    /// The largest scale that fits; natural size where none does.
    [[nodiscard]] PlotScale largest_scale(const PlotRoom& room) const;

private:
    /// Lines of read-outs above and, where there is no column, below a plot of `scale`.
    [[nodiscard]] int lines_around(const PlotScale& scale, const PlotRoom& room) const;

    /// What the plot's size grows by with `lines` lines of read-outs and the results around it.
    [[nodiscard]] QSize size_of_rows(int lines, double growth, const RowHeights& heights,
                                     const PanelFrame* beside) const;

    /// The largest scale with which there is room for `lines` lines of texts of `growth`, and which
    /// has texts no larger than that; natural size where there is none.
    [[nodiscard]] PlotScale largest_with(double growth, int lines, const PlotRoom& room) const;

    const QWidget& screen_;
    const ScreenHeader& header_;
};

} // namespace kv408::ui
