// The pictures of the window's parts: first steps, frames, menus, display.

#include "manual_scenes.h"

#include <QMenu>
#include <QMenuBar>
#include <QPainter>

#include "config/undo.h"
#include "demo/test_bench_window.h"
#include "ui/colours.h"
#include "ui/panel_frame.h"

namespace kv408::ui {
namespace {

/// The frame titled `title` of the control panel.
QWidget& frame_of(SteadyProgram& on, const QString& title) {
    for (QFrame* const frame : on.window().findChildren<QFrame*>()) {
        if (dynamic_cast<PanelFrame*>(frame) != nullptr && frame->accessibleName() == title) {
            return *frame;
        }
    }
    qFatal("no frame %s", qPrintable(title));
}

/// Where `widget` lies in the picture of its window.
QRect place_of(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint()), widget.size()};
}

/// Puts the number `number` on a disc at the upper right corner of `place`.
void put_number(QPainter& painter, const QRect& place, int number) {
    constexpr int radius = 12;
    const QPoint centre(place.right() - radius - 6, place.top() + radius + 2);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(QColor(196, 43, 28));
    painter.drawEllipse(centre, radius, radius);
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(QRect(centre - QPoint(radius, radius), QSize(2 * radius, 2 * radius)),
                     Qt::AlignCenter, QString::number(number));
}

void show_numbered(Gallery& gallery, SteadyProgram& on, const QImage& whole) {
    QImage numbered = whole;
    QPainter painter(&numbered);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(on.window().font());
    int number = 0;
    put_number(painter, place_of(*on.window().menuBar()), ++number);
    put_number(painter, place_of(*on.widget("Picture1").parentWidget()), ++number);
    for (const QString& title : {u"Display"_s, u"Measurement"_s, u"TRIGGER"_s, u"HORIZONTAL"_s,
                                 u"VERTICAL"_s, u"Cursor"_s, u"Adjust"_s, u"Status"_s}) {
        put_number(painter, place_of(frame_of(on, title)), ++number);
    }
    put_number(painter, place_of(*on.widget("Command1").parentWidget()), ++number);
    gallery.add(u"window"_s, numbered);
}

} // namespace

void show_first_picture(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    gallery.add(u"main-window"_s, on.window());
    TestBenchWindow bench(on.simulation.bench());
    bench.show();
    gallery.add(u"bench"_s, bench);
    on.choose(on.panel().seltimediv, "50ns/div");
    on.turn("CH1", 768);
    on.turn("CH2", 256);
    on.ticks(20);
    gallery.add(u"first-picture"_s, on.window());
}

void show_window(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    const QImage whole = picture_of(on.window());
    show_numbered(gallery, on, whole);
    const auto add = [&](const QString& name, const QWidget& part) {
        gallery.add(u"frame-"_s + name, whole.copy(place_of(part)));
    };
    for (const QString& title : {u"Display"_s, u"Measurement"_s, u"TRIGGER"_s, u"HORIZONTAL"_s,
                                 u"VERTICAL"_s, u"Cursor"_s, u"Adjust"_s, u"Status"_s}) {
        add(title.toLower(), frame_of(on, title));
    }
    add(u"buttons"_s, *on.widget("Command1").parentWidget());
}

// The window on the whole of a usual screen, with the panel and without it.
void show_sizes(Gallery& gallery) {
    SteadyProgram on;
    on.window().resize(1920, 1080);
    on.start_sweeping();
    on.choose(on.panel().seltimediv, "50ns/div");
    on.turn("CH1", 768);
    on.turn("CH2", 256);
    on.ticks(20);
    gallery.add(u"window-large"_s, on.window());
    on.window().resize(1280, 800);
    on.window().findChild<QAction*>(u"hidePanel"_s)->trigger();
    on.ticks(1);
    gallery.add(u"window-panel-hidden"_s, on.window());
}

void show_menus(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    std::vector<QImage> menus;
    QSize size;
    constexpr int gap = 12;
    for (const QAction* const title : on.window().menuBar()->actions()) {
        QMenu* const menu = title->menu();
        menu->popup(on.window().mapToGlobal(QPoint(20, 40)));
        menus.push_back(menu->grab().toImage());
        menu->hide();
        size = {size.width() + menus.back().width() + gap,
                std::max(size.height(), menus.back().height())};
    }
    QImage row(size.width() + gap, size.height() + 2 * gap, QImage::Format_RGB32);
    row.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&row);
    int x = gap;
    for (const QImage& menu : menus) {
        painter.drawImage(x, gap, menu);
        x += menu.width() + gap;
    }
    painter.end();
    gallery.add(u"menus"_s, row);
}

void show_steps(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.choose(on.panel().seltimediv, "10ns/div");
    on.choose(on.panel().channel[0].vdiv, "50mV");
    on.turn("CH1", 640);
    on.choose(on.panel().trigsource, "TRIG2");
    on.program.scope().act([&on] { on.program.scope().undo().controls().mnuundo.click(); });
    auto* const menu = on.window().findChild<QMenu*>(u"lststeps"_s);
    menu->popup(on.window().mapToGlobal(QPoint(20, 40)));
    gallery.add(u"undo"_s, menu->grab().toImage());
    menu->hide();
}

void show_display(Gallery& gallery) {
    SteadyProgram on;
    for (simulator::Source& source : on.simulation.bench().sources) {
        source.jitter_ps = 500.0;
        source.noise_mv = 6.0;
    }
    on.start_sweeping();
    on.choose(on.panel().seltimediv, "5ns/div");
    on.act([&] { on.panel().persist.set_checked(true); });
    on.ticks(30);
    gallery.add(u"persistence"_s, on.screen());
    on.act([&] {
        on.panel().persist.set_checked(false);
        on.panel().eyeon.set_checked(true);
        on.panel().average.set_checked(true);
        on.channel(0).invert.set_checked(true);
    });
    on.ticks(20);
    gallery.add(u"dots"_s, on.screen());
}

} // namespace kv408::ui
