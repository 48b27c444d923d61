// Nothing of the window is cut off or out of line, in both looks and at the sizes of common
// screens. Leaves pictures of what it looked at.

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QToolButton>

#include "cut_off.h"
#include "demo/test_bench_window.h"
#include "display/box_geometry.h"
#include "operable.h"
#include "program_on_bench.h"
#include "state/plot_geometry.h"
#include "text_size.h"
#include "ui/colours.h"
#include "ui/look.h"
#include "ui/marker.h"
#include "ui/panel_frame.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The scroll area around `widget`.
QScrollArea& area_around(const QWidget& widget) {
    for (QWidget* parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(parent)) {
            return *area;
        }
    }
    qFatal("no scroll area around %s", qPrintable(widget.objectName()));
}

/// All of `widget` is seen in `window`; of one that is wider than the scroll area around it, as
/// much as that shows.
bool in_sight(const QWidget& widget, const QWidget& window) {
    const QRect seen = widget.visibleRegion().boundingRect();
    const QRect place(widget.mapTo(&window, seen.topLeft()), seen.size());
    int width = widget.width();
    for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (const auto* const area = qobject_cast<const QScrollArea*>(parent)) {
            width = std::min(width, area->viewport()->width());
        }
    }
    return window.rect().contains(place) && seen.height() == widget.height() &&
           seen.width() == width;
}

/// Writes the longest texts that there may be into all read-outs.
void write_long_texts(FrontPanel& panel) {
    panel.trlevelmv.set_caption("-2048mV");
    for (ChannelControls& channel : panel.channel) {
        channel.inviatr.set_checked(true);
        channel.invert.set_checked(true);
        channel.psofset.set_text("65535");
        channel.hor_delay.set_caption("Delay:  65535ps");
    }
    for (MeasurementControls& slot : panel.measurement) {
        slot.selector.set_index(6);
        slot.mark.set_caption("*");
        slot.label.set_caption("Vmean");
        slot.ch1.set_caption("-123.456mV ");
        slot.ch2.set_caption("-inf- ");
    }
}

class LayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothing_is_cut_off_data();
    void nothing_is_cut_off();
    void the_window_leaves_room_for_its_title_bar();
    void a_low_window_lets_every_control_be_reached();
    void everything_is_reached_at_any_text_size_data();
    void everything_is_reached_at_any_text_size();
    void a_usual_laptop_shows_every_frame();
    void nothing_is_cut_off_while_everything_is_shown_data();
    void nothing_is_cut_off_while_everything_is_shown();
    void the_frames_stand_on_an_even_grid();
    void texts_stand_out_from_their_ground();
    void the_bench_window_is_whole();
};

void LayoutTest::nothing_is_cut_off_data() {
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QSize>("size");
    QTest::newRow("dark-1280x800") << true << QSize(1280, 800);
    QTest::newRow("light-1280x800") << false << QSize(1280, 800);
    QTest::newRow("dark-1920x1080") << true << QSize(1920, 1080);
    QTest::newRow("light-1920x1080") << false << QSize(1920, 1080);
    QTest::newRow("dark-2560x1440") << true << QSize(2560, 1440);
}

void LayoutTest::nothing_is_cut_off() {
    QFETCH(bool, dark);
    QFETCH(QSize, size);
    apply_look(dark ? Look::dark : Look::light);
    ProgramOnBench on;
    on.window().resize(size);
    QVERIFY(on.run_until_sweeping());
    QCOMPARE(on.window().size(), size);
    QCOMPARE(cut_off(on.window()).join(u'\n'), QString());
    save_picture(on.window(), QString::fromLatin1(QTest::currentDataTag()));
}

void LayoutTest::the_window_leaves_room_for_its_title_bar() {
    apply_look(Look::dark);
    ProgramOnBench on;
    const QSize least = on.window().minimumSizeHint();
    QVERIFY2(least.width() <= 1280 && least.height() <= 766,
             qPrintable(u"%1x%2"_s.arg(least.width()).arg(least.height())));
}

void LayoutTest::a_low_window_lets_every_control_be_reached() {
    apply_look(Look::dark);
    ProgramOnBench on;
    MainWindow& window = on.window();
    const QSize least = window.minimumSizeHint();
    // What a screen of 1920x1080 at 150 % has beside its task bar and the window's title bar.
    QVERIFY2(window.devicePixelRatioF() < 1.5 || least.height() <= 720 - 48 - 32,
             qPrintable(QString::number(least.height())));
    const QSize low(1277, 600);
    window.resize(low);
    QVERIFY(on.run_until_sweeping());
    QCOMPARE(window.size(), low);
    write_long_texts(on.panel());
    QTest::qWait(20);
    save_picture(window, u"low"_s);
    const QScrollArea& frames = area_around(*on.widget("gridenable"));
    QVERIFY(frames.verticalScrollBar()->isVisible());
    QCOMPARE(cut_off(*frames.widget()).join(u'\n'), QString());
    for (const char* const name :
         {"cmdstartsweep", "cmdstop", "Command1", "textstatus", "Slider1"}) {
        QVERIFY2(in_sight(*on.widget(name), window), name);
    }
    for (const char* const name :
         {"combocursorselect", "gridenable", "chkMeasAnno(2)", "psofsetch2"}) {
        on.widget(name)->setFocus();
        QVERIFY2(in_sight(*on.widget(name), window), name);
    }
}

/// `pixels` of the screen in units of `window`; a screen twice as dense is taken as twice as fine.
QSize in_units(QSize pixels, const QWidget& window) {
    const qreal ratio = window.devicePixelRatioF();
    return ratio < 2.0 ? pixels / ratio : pixels;
}

/// The texts above and below the picture begin and end with its columns.
void read_outs_keep_to_the_plot(ProgramOnBench& on) {
    MainWindow& window = on.window();
    const auto left = [&](const QWidget& widget) { return widget.mapTo(&window, QPoint()).x(); };
    const auto right = [&](const QWidget& widget) { return left(widget) + widget.width(); };
    const double from = left(window.plot()) + window.plot().place_of(box::left, 0).x();
    const double to = left(window.plot()) + window.plot().place_of(box::left + plot::width, 0).x();
    for (const char* const first : {"tdivtext", "lblAnnoMark(0)"}) {
        QVERIFY2(std::abs(left(*on.widget(first)) - from) <= 1.0, first);
    }
    for (const char* const last : {"lblDate", "txtMeasCH2(0)"}) {
        QVERIFY2(std::abs(right(*on.widget(last)) - to) <= 1.0, last);
    }
    for (const char* const name : {"lblHorDelay2", "ch1vdivtext", "ch2vdivtext", "txtMeasCH1(0)"}) {
        QVERIFY2(left(*on.widget(name)) >= from - 1.0 && right(*on.widget(name)) <= to + 1.0, name);
    }
}

// Sizes of common screens less title bar and task bar, in pixels of the screen, with text sizes.
void LayoutTest::everything_is_reached_at_any_text_size_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("percent");
    for (const QSize size : {QSize(1024, 540), QSize(1366, 690), QSize(1920, 1000)}) {
        for (const int percent : {100, 125, 150}) {
            // A screen twice as dense shows larger texts without larger letters.
            if (percent == 100 || qGuiApp->devicePixelRatio() < 2.0) {
                QTest::addRow("%dx%d-%d", size.width(), size.height(), percent) << size << percent;
            }
        }
    }
}

void LayoutTest::everything_is_reached_at_any_text_size() {
    QFETCH(QSize, size);
    QFETCH(int, percent);
    apply_look(percent == 125 ? Look::light : Look::dark);
    const TextSize text(percent);
    ProgramOnBench on;
    MainWindow& window = on.window();
    const QSize wanted = in_units(size, window);
    window.resize(wanted);
    QVERIFY(on.run_until_sweeping());
    QCOMPARE(window.size(), wanted);
    on.panel().tabstrip3.select(1);
    write_long_texts(on.panel());
    QTest::qWait(20);
    QTRY_COMPARE(cut_off(window).join(u'\n'), QString());
    save_picture(window, u"text-"_s + QString::fromLatin1(QTest::currentDataTag()));
    read_outs_keep_to_the_plot(on);
    // What can be operated comes into sight with the keyboard.
    QStringList reached;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0 &&
            qobject_cast<QToolButton*>(widget) == nullptr) {
            widget->setFocus(Qt::TabFocusReason);
            QVERIFY2(in_sight(*widget, window), qPrintable(described(*widget)));
            reached += widget->objectName();
        }
    }
    QCOMPARE(missing_in(reached, operable(on.panel(), window)), QString());
    QVERIFY(reached.size() > 30);
    // What can only be read is scrolled to.
    QScrollArea& screen = area_around(window.plot());
    for (const char* const name :
         {"tdivtext", "lblDate", "Picture1", "ch2vdivtext", "picMeasure"}) {
        const QWidget& widget = *on.widget(name);
        screen.ensureWidgetVisible(on.widget(name), 0, 0);
        QVERIFY2(!widget.visibleRegion().isEmpty(), qPrintable(described(widget)));
    }
    const QSize hidden = screen.widget()->size() - screen.viewport()->size();
    QVERIFY(hidden.width() <= 0 || screen.horizontalScrollBar()->isVisible());
    QVERIFY(hidden.height() <= 0 || screen.verticalScrollBar()->isVisible());
    QCOMPARE(screen.horizontalScrollBar()->maximum(), std::max(0, hidden.width()));
    QCOMPARE(screen.verticalScrollBar()->maximum(), std::max(0, hidden.height()));
}

// 1366x768 with a title bar and a task bar.
void LayoutTest::a_usual_laptop_shows_every_frame() {
    ProgramOnBench on;
    MainWindow& window = on.window();
    window.resize(1366, 768 - 40 - 37);
    QVERIFY(on.run_until_sweeping());
    save_picture(window, u"laptop"_s);
    for (const QScrollArea* const area : window.findChildren<QScrollArea*>()) {
        QVERIFY(!area->verticalScrollBar()->isVisible());
        QVERIFY(!area->horizontalScrollBar()->isVisible());
    }
    for (const char* const name : {"combocursorselect", "TabStrip3", "gridenable", "cmdstop"}) {
        QVERIFY2(in_sight(*on.widget(name), window), name);
    }
}

void LayoutTest::nothing_is_cut_off_while_everything_is_shown_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("dark-everything") << true;
    QTest::newRow("light-everything") << false;
}

void LayoutTest::nothing_is_cut_off_while_everything_is_shown() {
    QFETCH(bool, dark);
    apply_look(dark ? Look::dark : Look::light);
    ProgramOnBench on;
    on.window().resize(1280, 800);
    QVERIFY(on.run_until_sweeping());
    FrontPanel& panel = on.panel();
    panel.average.set_checked(true);
    panel.persist.set_checked(true);
    panel.tabstrip3.select(1);
    panel.tabstrip2.select(3);
    QTest::keyClick(on.widget("Slider1"), Qt::Key_PageUp);
    // Sweeping with the new level, the trigger line still showing.
    const AcquisitionState& acquisition = on.program.scope().parts().acquisition;
    QVERIFY(QTest::qWaitFor([&] { return panel.textstatus.text() == "Setup..."; }));
    QVERIFY(QTest::qWaitFor([&] {
        return panel.textstatus.text() == "Running" && acquisition.ready[0] && acquisition.ready[1];
    }));
    QVERIFY(acquisition.holdoff);
    save_picture(on.window(), QString::fromLatin1(QTest::currentDataTag()) + u"-sweeping"_s);
    QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
    write_long_texts(panel);
    QTest::qWait(20);
    save_picture(on.window(), QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(cut_off(on.window()).join(u'\n'), QString());
    for (const char* const name : {"centerfr", "lblC1", "lblC2", "trigertext", "ltp2"}) {
        QVERIFY2(on.widget(name)->isVisible(), name);
    }
    auto* const tabs = on.widget<QTabBar>("TabStrip2");
    QCOMPARE(tabs->count(), 6);
    QVERIFY(tabs->rect().contains(tabs->tabRect(5)));
    for (int index = 0; index < tabs->count(); ++index) {
        QVERIFY(tabs->tabRect(index).width() >=
                tabs->fontMetrics().horizontalAdvance(tabs->tabText(index)));
    }
}

void LayoutTest::the_frames_stand_on_an_even_grid() {
    apply_look(Look::dark);
    ProgramOnBench on;
    on.window().resize(1280, 800);
    on.window().show();
    QList<int> edges;
    for (const QFrame* const child : on.window().findChildren<QFrame*>()) {
        const auto* const frame = dynamic_cast<const PanelFrame*>(child);
        if (frame == nullptr) {
            continue;
        }
        edges.append(frame->mapTo(&on.window(), QPoint(0, 0)).x());
        edges.append(frame->mapTo(&on.window(), QPoint(frame->width(), 0)).x());
    }
    QCOMPARE(edges.size(), 16);
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    QCOMPARE(edges.size(), 4);
    QCOMPARE(edges[1] - edges[0], edges[3] - edges[2]);
    const QRect buttons_from = on.widget("cmdstartsweep")->geometry();
    QCOMPARE(buttons_from.width(), on.widget("Command1")->width());
}

void LayoutTest::texts_stand_out_from_their_ground() {
    for (const Look look : {Look::dark, Look::light}) {
        const QPalette palette = palette_of(look);
        const auto against = [&](QPalette::ColorGroup group, QPalette::ColorRole text,
                                 QPalette::ColorRole ground) {
            return contrast(palette.color(group, text), palette.color(group, ground));
        };
        QVERIFY(against(QPalette::Active, QPalette::WindowText, QPalette::AlternateBase) > 7.0);
        QVERIFY(against(QPalette::Active, QPalette::ButtonText, QPalette::Button) > 7.0);
        QVERIFY(against(QPalette::Active, QPalette::Text, QPalette::Base) > 7.0);
        QVERIFY(against(QPalette::Active, QPalette::HighlightedText, QPalette::Highlight) > 3.0);
        QVERIFY(against(QPalette::Disabled, QPalette::WindowText, QPalette::AlternateBase) > 3.0);
    }
}

void LayoutTest::the_bench_window_is_whole() {
    for (const Look look : {Look::dark, Look::light}) {
        apply_look(look);
        simulator::TestBench bench;
        TestBenchWindow window(bench);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(cut_off(window).join(u'\n'), QString());
        save_picture(window, look == Look::dark ? u"bench-dark"_s : u"bench-light"_s);
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::LayoutTest)
#include "layout_test.moc"
