#include "ui/screen_sizes.h"

#include <algorithm>
#include <cmath>

#include <QFontMetrics>

#include "display/box_geometry.h"
#include "state/plot_geometry.h"
#include "ui/plot_widget.h"
#include "ui/results_panel.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;
using namespace screen_measure;

constexpr double growth_step = 0.25; ///< of the texts
constexpr double most_growth = 2.0;  ///< of the texts
constexpr int most_lines = 6;        ///< of read-outs: four above the plot, two below it

/// The longest texts below the plot.
QString longest_volts() {
    return u"50mV (VT) (inv)"_s;
}
QString longest_result() {
    return u"-123.456mV "_s;
}

/// A scale at which the plot is `pixels` wide.
PlotScale scale_of_width(int pixels) {
    return PlotScale(static_cast<double>(pixels) / plot::width);
}

} // namespace

QFont grown(const QFont& font, double growth) {
    QFont result = font;
    if (font.pointSizeF() > 0.0) {
        result.setPointSizeF(font.pointSizeF() * growth);
    } else {
        result.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * growth)));
    }
    return result;
}

int ScreenSizes::column_width(const PanelFrame& beside, double growth) const {
    const auto width_of = [&](const QString& text) {
        return std::ceil(screen_.fontMetrics().horizontalAdvance(text) * growth);
    };
    const double first = width_of(u"Vmean "_s + longest_result()) +
                         results_measure::mark_width(QFontMetrics(grown(screen_.font(), growth))) +
                         results_measure::rule_gap;
    const double second = width_of(longest_volts());
    const double parts = std::max(first / first_part, second / second_part);
    return std::max(static_cast<int>(std::ceil(parts * (first_part + second_part))),
                    beside.least_width(true));
}

QSize ScreenSizes::size_of_rows(int lines, double growth, const RowHeights& heights,
                                const PanelFrame* beside) const {
    if (beside != nullptr) {
        // The plot box ends with a margin of its own.
        return {2 * padding + column_width(*beside, growth), lines * heights.line + padding};
    }
    return {2 * padding, lines * heights.line + results_rows * heights.result + 2 * padding};
}

RowHeights ScreenSizes::usual_heights(double growth) const {
    const int letters = static_cast<int>(std::ceil(screen_.fontMetrics().height() * growth));
    return {.line = std::max(24, letters + 7), .result = std::max(20, letters + 3)};
}

RowHeights ScreenSizes::least_heights() const {
    const int letters = screen_.fontMetrics().height();
    return {.line = letters + 2, .result = letters + 2};
}

double ScreenSizes::growth_at(const PlotScale& scale, qreal ratio) {
    const double unit = scale.factor() / ratio;
    return std::clamp(std::floor(unit / growth_step) * growth_step, 1.0, most_growth);
}

int ScreenSizes::footer_lines(double half, double growth) const {
    QFont bold = screen_.font();
    bold.setBold(true);
    const int longest = QFontMetrics(bold).horizontalAdvance(u"CH2"_s) + footer_spacing +
                        screen_.fontMetrics().horizontalAdvance(longest_volts());
    return longest * growth <= half ? 1 : 2;
}

int ScreenSizes::footer_lines_beside(int column, double growth) const {
    const int narrower = column * std::min(first_part, second_part) / (first_part + second_part);
    return footer_lines(narrower, growth);
}

int ScreenSizes::lines_around(const PlotScale& scale, const PlotRoom& room) const {
    const double growth = growth_at(scale, room.ratio);
    const int columns = PlotWidget::size_at(scale, room.ratio).width() * plot::width / box::width;
    const int above = header_.lines_within(columns, growth);
    return room.beside != nullptr ? above : above + footer_lines_beneath(columns, growth);
}

QSize ScreenSizes::size_around(const PlotScale& scale, const PlotRoom& room,
                               const RowHeights& heights) const {
    return PlotWidget::size_at(scale, room.ratio) + size_of_rows(lines_around(scale, room),
                                                                 growth_at(scale, room.ratio),
                                                                 heights, room.beside);
}

bool ScreenSizes::fits(const PlotScale& scale, const PlotRoom& room) const {
    const QSize needed = size_around(scale, room, usual_heights(growth_at(scale, room.ratio)));
    return needed.width() <= room.size.width() && needed.height() <= room.size.height();
}

PlotScale ScreenSizes::largest_scale(const PlotRoom& room) const {
    // A larger plot may need less height, as its texts stand in fewer lines. With texts of one size
    // in a given number of lines it always needs more.
    const int least_lines = room.beside != nullptr ? 1 : 2;
    for (double growth = most_growth; growth >= 1.0; growth -= growth_step) {
        for (int lines = least_lines; lines <= most_lines; ++lines) {
            const PlotScale scale = largest_with(growth, lines, room);
            if (growth_at(scale, room.ratio) == growth && lines_around(scale, room) <= lines &&
                fits(scale, room)) {
                return scale;
            }
        }
    }
    return PlotScale();
}

PlotScale ScreenSizes::largest_with(double growth, int lines, const PlotRoom& room) const {
    const QSize free = room.size - size_of_rows(lines, growth, usual_heights(growth), room.beside);
    const auto fitting = [&](const PlotScale& scale) {
        const QSize needed = PlotWidget::size_at(scale, room.ratio);
        return growth_at(scale, room.ratio) <= growth && needed.width() <= free.width() &&
               needed.height() <= free.height();
    };
    int widest = plot::width;
    int beyond = PlotScale(PlotScale::largest).width() + 1;
    while (beyond - widest > 1) {
        const int middle = (widest + beyond) / 2;
        (fitting(scale_of_width(middle)) ? widest : beyond) = middle;
    }
    // At whole twentieths the divisions are of one size. The last unit of the window need not be
    // filled for that.
    constexpr double steps = 20.0;
    const double twentieths = scale_of_width(widest).factor() * steps;
    for (const double whole : {std::ceil(twentieths), std::floor(twentieths)}) {
        const PlotScale even(whole / steps);
        if (widest - even.width() < room.ratio && fitting(even)) {
            return even;
        }
    }
    return scale_of_width(widest);
}

} // namespace kv408::ui
