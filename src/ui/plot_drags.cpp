#include "ui/plot_drags.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

#include "display/plot_mouse.h"
#include "state/cursor_state.h"
#include "state/plot_geometry.h"
#include "ui/bind.h"
#include "ui/left_drag.h"

namespace kv408::ui {
namespace {

/// What the mouse does to one marker; `y` counts from the marker's top.
struct MarkerHandlers {
    std::function<void(PlotMouse&, int y)> press;
    std::function<void(PlotMouse&, int y)> move;
    std::function<void(PlotMouse&)> release;
};

void take_marker_drags(PlotWidget& plot, Label& control, ScopeDriver& driver,
                       const MarkerHandlers& handlers) {
    auto* const marker = plot.findChild<QWidget*>(object_name(control));
    assert(marker != nullptr);
    marker->setCursor(Qt::SizeVerCursor);
    const auto below_top = [&plot, &control](QPointF place) {
        return plot.pixel_at(place).y() - control.top();
    };
    new LeftDrag(
        marker,
        {.press =
             [=, &driver](QPointF place, Qt::KeyboardModifiers /*modifiers*/) {
                 driver.act([&] { handlers.press(driver.plot_mouse(), below_top(place)); });
                 return true;
             },
         .move =
             [=, &driver](QPointF place) {
                 driver.act([&] { handlers.move(driver.plot_mouse(), below_top(place)); });
             },
         .release = [=, &driver] { driver.act([&] { handlers.release(driver.plot_mouse()); }); }});
}

/// The pixel of the plot area that `place` of the screen lies in.
QPoint area_pixel(const PlotWidget& plot, QPointF place) {
    return plot.pixel_at(place) - QPoint(plot::left, plot::top);
}

/// Whether a cursor line can be grabbed from `pixel` of the plot area.
bool within_reach(QPoint pixel) {
    constexpr int reach = PlotMouse::grab_distance;
    return QRect(0, 0, plot::width, plot::height)
        .adjusted(-reach, -reach, reach, reach)
        .contains(pixel);
}

/// The mouse's shape at `pixel` of the plot area: the way the cursor line there can be moved.
Qt::CursorShape shape_at(const CursorState& cursors, QPoint pixel) {
    const auto near_one = [](const auto& lines, int place) {
        return std::any_of(lines.begin(), lines.end(), [place](int line) {
            return std::abs(place - line) <= PlotMouse::grab_distance;
        });
    };
    if (!within_reach(pixel)) {
        return Qt::ArrowCursor;
    }
    if (cursor_mode::is_voltage(cursors.cursormode) && near_one(cursors.vpos, pixel.y())) {
        return Qt::SizeVerCursor;
    }
    if (cursor_mode::is_time(cursors.cursormode) && near_one(cursors.hpos, pixel.x())) {
        return Qt::SizeHorCursor;
    }
    return Qt::ArrowCursor;
}

/// Shapes the mouse over the plot by the cursor lines near it.
class HoverWatch : public QObject {
public:
    HoverWatch(PlotWidget& plot, const ScopeDriver& driver)
        : QObject(&plot), plot_(plot), driver_(driver) {
        plot.setMouseTracking(true);
        plot.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseMove) {
            const auto& mouse = static_cast<const QMouseEvent&>(*event);
            if (mouse.buttons() == Qt::NoButton) {
                show_shape(shape_at(driver_.cursors(), area_pixel(plot_, mouse.globalPosition())));
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void show_shape(Qt::CursorShape shape) {
        if (plot_.cursor().shape() != shape) {
            plot_.setCursor(shape);
        }
    }

    PlotWidget& plot_;
    const ScopeDriver& driver_;
};

void take_cursor_drags(PlotWidget& plot, ScopeDriver& driver) {
    new HoverWatch(plot, driver);
    const auto press = [&plot, &driver](QPointF place, Qt::KeyboardModifiers modifiers) {
        const QPoint pixel = area_pixel(plot, place);
        bool grabbed = false;
        if (within_reach(pixel)) {
            driver.act([&] {
                grabbed = driver.plot_mouse().plot_MouseDown(pixel.x(), pixel.y(),
                                                             modifiers.testFlag(Qt::ShiftModifier));
            });
        }
        return grabbed;
    };
    const auto move = [&plot, &driver](QPointF place) {
        const QPoint pixel = area_pixel(plot, place);
        driver.act([&] { driver.plot_mouse().plot_MouseMove(pixel.x(), pixel.y()); });
    };
    new LeftDrag(&plot, {.press = press, .move = move, .release = [&driver] {
                             driver.act([&] { driver.plot_mouse().plot_MouseUp(); });
                         }});
}

} // namespace

void take_plot_drags(PlotWidget& plot, ScopeDriver& driver) {
    FrontPanel& panel = driver.panel();
    for (const int channel : {ch1, ch2}) {
        take_marker_drags(
            plot, panel.channel[static_cast<std::size_t>(channel)].text, driver,
            {.press = [channel](PlotMouse& mouse, int y) { mouse.chtext_MouseDown(channel, y); },
             .move = [channel](PlotMouse& mouse, int y) { mouse.chtext_MouseMove(channel, y); },
             .release = [](PlotMouse& mouse) { mouse.chtext_MouseUp(); }});
    }
    take_marker_drags(plot, panel.trigertext, driver,
                      {.press = [](PlotMouse& mouse, int y) { mouse.trigertext_MouseDown(y); },
                       .move = [](PlotMouse& mouse, int y) { mouse.trigertext_MouseMove(y); },
                       .release = [](PlotMouse& mouse) { mouse.trigertext_MouseUp(); }});
    take_cursor_drags(plot, driver);
}

} // namespace kv408::ui
