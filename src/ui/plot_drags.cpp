#include "ui/plot_drags.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "display/box_geometry.h"
#include "display/plot_mouse.h"
#include "scope/tools.h"
#include "state/cursor_state.h"
#include "ui/bind.h"
#include "ui/left_drag.h"

namespace kv408::ui {
namespace {

/// What the mouse does to one marker; `y` counts from the row that it marks.
struct MarkerHandlers {
    std::function<void(PlotMouse&, double y)> press;
    std::function<void(PlotMouse&, double y)> move;
    std::function<void(PlotMouse&)> release;
};

/// The place in the plot, in its units, of `place` of the screen.
QPointF plot_place(const PlotWidget& plot, QPointF place) {
    return plot.box_place_at(place) - QPointF(box::left, box::top);
}

void take_marker_drags(PlotWidget& plot, MarkerLabel& control, ScopeDriver& driver,
                       const MarkerHandlers& handlers) {
    auto* const marker = plot.findChild<QWidget*>(object_name(control));
    assert(marker != nullptr);
    marker->setCursor(Qt::SizeVerCursor);
    const auto below_marked = [&plot, &control](QPointF place) {
        return plot_place(plot, place).y() - control.marked().value_or(0);
    };
    new LeftDrag(
        marker,
        {.press =
             [=, &driver](QPointF place, Qt::KeyboardModifiers /*modifiers*/) {
                 driver.act([&] { handlers.press(driver.plot_mouse(), below_marked(place)); });
                 return true;
             },
         .move =
             [=, &driver](QPointF place) {
                 driver.act([&] { handlers.move(driver.plot_mouse(), below_marked(place)); });
             },
         .release = [=, &driver] { driver.act([&] { handlers.release(driver.plot_mouse()); }); }});
}

/// Whether a cursor line can be grabbed from `place` of the plot.
bool within_reach(QPointF place) {
    constexpr int reach = PlotMouse::grab_distance;
    return QRectF(0, 0, plot::width - 1, plot::height - 1)
        .adjusted(-reach, -reach, reach, reach)
        .contains(place);
}

/// The mouse's shape at `place` of the plot: the way the cursor line there can be moved.
Qt::CursorShape shape_at(const CursorState& cursors, QPointF place) {
    const auto near_one = [](const auto& lines, double at) {
        return std::any_of(lines.begin(), lines.end(),
                           [at](int line) { return PlotMouse::reaches(at, line); });
    };
    if (!within_reach(place)) {
        return Qt::ArrowCursor;
    }
    if (cursor_mode::is_voltage(cursors.cursormode) && near_one(cursors.vpos, place.y())) {
        return Qt::SizeVerCursor;
    }
    if (cursor_mode::is_time(cursors.cursormode) && near_one(cursors.hpos, place.x())) {
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
                show_shape(shape_at(driver_.cursors(), plot_place(plot_, mouse.globalPosition())));
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
        const QPointF at = plot_place(plot, place);
        bool grabbed = false;
        if (within_reach(at)) {
            driver.act([&] {
                grabbed = driver.plot_mouse().plot_MouseDown(at.x(), at.y(),
                                                             modifiers.testFlag(Qt::ShiftModifier));
            });
        }
        return grabbed;
    };
    const auto move = [&plot, &driver](QPointF place) {
        const QPointF at = plot_place(plot, place);
        driver.act([&] { driver.plot_mouse().plot_MouseMove(at.x(), at.y()); });
    };
    new LeftDrag(&plot, {.press = press, .move = move, .release = [&driver] {
                             driver.act([&] { driver.plot_mouse().plot_MouseUp(); });
                         }});
}

void take_histogram_drags(PlotWidget& plot, ScopeDriver& driver) {
    const auto press = [&plot, &driver](QPointF place, Qt::KeyboardModifiers /*modifiers*/) {
        const QPointF at = plot_place(plot, place);
        bool grabbed = false;
        driver.act([&] { grabbed = driver.tools().histogram().press(at.x(), at.y()); });
        return grabbed;
    };
    const auto move = [&plot, &driver](QPointF place) {
        const QPointF at = plot_place(plot, place);
        driver.act([&] { driver.tools().histogram().drag(at.x(), at.y()); });
    };
    new LeftDrag(&plot, {.press = press, .move = move, .release = [&driver] {
                             driver.act([&] { driver.tools().histogram().release(); });
                         }});
}

} // namespace

void take_plot_drags(PlotWidget& plot, ScopeDriver& driver) {
    FrontPanel& panel = driver.panel();
    for (const Channel channel : both_channels) {
        take_marker_drags(
            plot, panel.channel[channel].text, driver,
            {.press = [channel](PlotMouse& mouse, double y) { mouse.chtext_MouseDown(channel, y); },
             .move = [channel](PlotMouse& mouse, double y) { mouse.chtext_MouseMove(channel, y); },
             .release = [](PlotMouse& mouse) { mouse.chtext_MouseUp(); }});
    }
    take_marker_drags(plot, panel.trigertext, driver,
                      {.press = [](PlotMouse& mouse, double y) { mouse.trigertext_MouseDown(y); },
                       .move = [](PlotMouse& mouse, double y) { mouse.trigertext_MouseMove(y); },
                       .release = [](PlotMouse& mouse) { mouse.trigertext_MouseUp(); }});
    // What watches first is asked last: a cursor line goes before the rectangle that it crosses.
    take_histogram_drags(plot, driver);
    take_cursor_drags(plot, driver);
}

} // namespace kv408::ui
