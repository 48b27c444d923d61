#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include <QScrollArea>
#include <QTabBar>
#include <QTest>

#include "display/box_geometry.h"
#include "mouse.h"
#include "program_on_bench.h"
#include "state/plot_geometry.h"
#include "support/series_stride.h"
#include "ui/control_panel.h"

namespace kv408::ui {

/// The commands of one set-up, from the trigger to the start of the sweep.
inline const std::vector<int> set_up = {8, 27, 30, 35, 31, 32};

/// The scales of the window at which dragging is tried. The sanitizers get the smaller ones, where
/// what is drawn takes less time than what is dragged.
inline std::vector<double> drag_scales() {
    std::vector<double> scales = {1.0, 1.25, 1.9};
    if (series_stride == 1) {
        scales.insert(scales.end(), {1.5, 2.0, 3.4, 5.0});
    }
    return scales;
}

/// Scales in pixels of the screen, `ratio` of which are a unit of the window. Some show a unit of
/// the plot smaller than that, as far as the least window goes.
inline std::vector<double> pixel_scales(qreal ratio) {
    std::vector<double> scales = {1.0, 1078.0 / 641, 1.3, 1.5, 1.9, 2.0, 2.6};
    if (series_stride == 1) {
        scales.insert(scales.end(), {3.4, 5.0});
    }
    std::erase_if(scales, [ratio](double scale) { return scale < 0.85 * ratio; });
    return scales;
}

/// The pixel of the screen in which unit (`x`, `y`) of the plot lies, from the first of `plot`.
inline QPoint pixel_of_unit(const PlotWidget& plot, int x, int y) {
    const double factor = plot.scale().factor();
    const auto pixel = [factor](int margin, int unit) {
        return static_cast<int>(std::floor(margin * factor + 0.5) +
                                std::floor((unit + 0.5) * factor));
    };
    return {pixel(box::left, x), pixel(box::top, y)};
}

/// Makes `window` just wide enough for the plot at `scale`.
inline void make_room(MainWindow& window, const PlotScale& scale) {
    const qreal ratio = window.devicePixelRatioF();
    // Beside a plot of less than natural size the panel has one column.
    const auto& panel = dynamic_cast<const ControlPanel&>(window.controls());
    const int columns = scale.factor() < ratio ? 1 : 2;
    const int beside = panel.width_within(columns, panel.sizeHint().width()) + 3 * 8 + 2 * 4;
    window.resize(beside + PlotWidget::size_at(scale, ratio).width(),
                  static_cast<int>(600 * scale.factor() / ratio) + 400);
}

/// The program sweeping, and the mouse over its window.
struct Dragging : ProgramOnBench {
    /// In a window just wide enough for the plot to be shown with `scale` units of the window for
    /// each of its own, or the most that there are.
    [[nodiscard]] bool begin(double scale = 1.0) {
        const qreal ratio = window().devicePixelRatioF();
        const PlotScale wanted(scale * ratio);
        make_room(window(), wanted);
        return run_until_sweeping() &&
               std::abs(window().plot().scale().width() - wanted.width()) <= std::ceil(ratio) - 1;
    }

    /// How far off a marker may be that was dragged over some rows: none, or the nearest row where
    /// the rows do not have whole numbers of pixels.
    [[nodiscard]] int uncertain_rows() {
        const double ratio = window().devicePixelRatioF();
        return ratio == std::floor(ratio) ? 0 : 1;
    }

    /// Presses at the middle of row `from` of the plot on `marker` and drags it to row `to`.
    void drag_marker(Mouse& mouse, const QWidget& marker, int from, int to) {
        const qreal ratio = window().devicePixelRatioF();
        const int x = static_cast<int>(marker.geometry().center().x() * ratio);
        mouse.press_pixel(window().plot(), {x, pixel_of_unit(0, from).y()});
        mouse.drag_to_pixel(window().plot(), {x, pixel_of_unit(0, to).y()});
    }

    [[nodiscard]] QPoint pixel_of_unit(int x, int y) {
        return ui::pixel_of_unit(window().plot(), x, y);
    }

    /// Units of the window for as many units of the plot.
    [[nodiscard]] QPoint units(int right, int down) {
        return (window().plot().place_of(right, down) - window().plot().place_of(0, 0)).toPoint();
    }

    /// The place of the middle of unit (`x`, `y`) of the plot on the plot widget.
    [[nodiscard]] QPoint on_plot(int x, int y) {
        const QPointF place = window().plot().place_of(box::left + x + 0.5, box::top + y + 0.5);
        return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
    }

    /// Turns the wheel until the zero line of `channel` lies on `row` of the picture.
    void move_trace(Channel channel, int row) {
        panel().tabstrip2.select(number_of(channel));
        panel().slider1.turn_to(plot::wheel_span - 2 * row);
    }

    /// Clicks the tab `index` of the strip `name`, which is scrolled to where it is out of sight.
    void choose_tab(const char* name, int index) {
        auto* const tabs = widget<QTabBar>(name);
        for (QScrollArea* const area : window().findChildren<QScrollArea*>()) {
            if (area->isAncestorOf(tabs)) {
                area->ensureWidgetVisible(tabs);
            }
        }
        QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {},
                          tabs->mapTo(&window(), tabs->tabRect(index).center()));
    }

    /// Whether the program uploads a whole set-up after the frame at index `from` and sweeps on.
    /// Requests for sweeps that were under way may come before it.
    [[nodiscard]] bool uploads_after(std::size_t from) {
        return QTest::qWaitFor([&] {
            std::vector<int> sent = codes(from);
            while (!sent.empty() && sent.front() == 32) {
                sent.erase(sent.begin());
            }
            return sent.size() > set_up.size() &&
                   std::equal(set_up.begin(), set_up.end(), sent.begin()) &&
                   panel().textstatus.text() == "Running";
        });
    }

    [[nodiscard]] const Parts& parts() { return program.scope().parts(); }
    [[nodiscard]] const CursorState& cursors() { return parts().cursor_state; }

    /// Whether only sweeps have been asked for since the frame at index `from`.
    [[nodiscard]] bool only_sweeps_since(std::size_t from) const {
        const std::vector<int> sent = codes(from);
        return std::all_of(sent.begin(), sent.end(), [](int code) { return code == 32; });
    }
};

} // namespace kv408::ui
