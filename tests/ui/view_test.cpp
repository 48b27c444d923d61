// The window shows the plot full screen, or in the panel's room, and comes back as it was.

#include <array>
#include <utility>
#include <vector>

#include <QAction>
#include <QLineEdit>
#include <QTest>

#include "cut_off.h"
#include "dragging.h"
#include "text_size.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Where the widgets of the panel stand in the window.
QList<QRect> places(ProgramOnBench& on) {
    QList<QRect> result;
    for (const char* const name : {"textstatus", "cmdstartsweep", "gridenable", "Picture1"}) {
        QWidget* const widget = on.widget(name);
        result.append({widget->mapTo(&on.window(), QPoint()), widget->size()});
    }
    return result;
}

/// The same once nothing moves any more; a busy machine takes its time to lay out a new size.
QList<QRect> settled_places(ProgramOnBench& on) {
    QList<QRect> result;
    QList<QRect> again = places(on);
    while (result != again) {
        result = std::exchange(again, {});
        QTest::qWait(200);
        again = places(on);
    }
    return result;
}

/// Writes the longest texts around the plot; they are whole, and grow away from each other as they
/// grow.
void longest_texts_stand_whole_and_apart(ProgramOnBench& on) {
    for (ChannelControls& channel : on.panel().channel) {
        channel.vdivtext.set_caption("50mV (VT) (inv)");
    }
    on.panel().measurement[0].mark.set_caption("*");
    on.panel().measurement[0].label.set_caption("Vmean");
    QTest::qWait(20);
    QCOMPARE(cut_off(on.window()).join(u'\n'), QString());
    const QWidget& star = *on.widget("lblAnnoMark(0)");
    const int wide = star.fontMetrics().horizontalAdvance(u'*');
    QVERIFY(on.widget("lblMeas(0)")->x() - star.x() >= 3 * wide / 2);
    const QWidget& volts = *on.widget("ch2vdivtext");
    const QWidget& heading = *volts.parentWidget()->findChildren<QLabel*>().back();
    if (heading.y() == volts.y()) { // else one stands above the other
        const double growth = volts.font().pointSizeF() / QApplication::font().pointSizeF();
        QVERIFY(volts.x() - heading.x() - heading.width() >= std::floor(12 * growth));
    }
}

class ViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void f9_leaves_the_plot_the_panels_room_and_brings_it_back();
    void the_plot_gains_by_f9_data();
    void the_plot_gains_by_f9();
    void f9_leaves_the_window_at_rest_and_the_keyboard_where_it_is();
    void what_is_hidden_has_no_keyboard_and_gets_it_back();
    void a_wider_window_has_no_smaller_plot_data();
    void a_wider_window_has_no_smaller_plot();
    void the_window_opens_with_its_whole_panel_at_a_larger_font();
    void a_change_of_the_desktops_font_is_followed_at_once_data();
    void a_change_of_the_desktops_font_is_followed_at_once();
    void the_results_rules_are_as_thick_all_along();
    void f9_and_f11_come_back_in_any_order();
    void f11_shows_the_window_full_screen_and_as_it_was();
    void what_is_dragged_follows_while_the_panel_is_hidden();
    void the_frames_keep_their_size_in_any_window();
    void nothing_is_cut_off_on_a_large_screen();
};

void ViewTest::f9_leaves_the_plot_the_panels_room_and_brings_it_back() {
    ProgramOnBench on;
    on.window().resize(1280, 900);
    QVERIFY(on.run_until_sweeping());
    const QList<QRect> before = settled_places(on);
    const double scale = on.window().plot().scale().factor();
    on.widget("Slider1")->setFocus();
    QTest::keyClick(&on.window(), Qt::Key_F9);
    QTest::qWait(20);
    QVERIFY(!on.widget("cmdstartsweep")->isVisible());
    QVERIFY(!on.widget("gridenable")->isVisible());
    const QWidget& status = *on.widget("textstatus");
    QVERIFY(status.isVisible());
    const auto below = [&](const QWidget& widget) {
        return widget.mapTo(&on.window(), QPoint(0, widget.height())).y();
    };
    QVERIFY(status.mapTo(&on.window(), QPoint()).y() >= below(*on.widget("picMeasure")));
    QVERIFY(below(status) <= on.window().height());
    QVERIFY(on.window().plot().scale().factor() > 1.2 * scale);
    QCOMPARE(cut_off(on.window()).join(u'\n'), QString());
    QVERIFY(on.window().findChild<QAction*>(u"hidePanel"_s)->isChecked());
    // What is not seen can still be done by the menus' keys, and the panel comes back.
    QTest::keyClick(&on.window(), Qt::Key_F9);
    QTest::qWait(20);
    QCOMPARE(places(on), before);
    QVERIFY(on.widget("cmdstartsweep")->isVisible());
    QCOMPARE(on.window().plot().scale().factor(), scale);
}

// Sizes in pixels of the screen.
void ViewTest::the_plot_gains_by_f9_data() {
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(1024, 600), QSize(1280, 800), QSize(1366, 768),
                             QSize(1920, 1080), QSize(2560, 1440), QSize(3840, 2160),
                             QSize(1080, 1920), QSize(1300, 1000), QSize(1280, 1024)}) {
        QTest::addRow("%dx%d", size.width(), size.height()) << size;
    }
}

void ViewTest::the_plot_gains_by_f9() {
    QFETCH(QSize, size);
    ProgramOnBench on;
    const double ratio = on.window().devicePixelRatioF();
    const QSize wanted = size / ratio;
    on.window().resize(wanted);
    QVERIFY(on.run_until_sweeping());
    QCOMPARE(on.window().size(), wanted);
    const auto plot_width = [&] { return on.window().plot().scale().width(); };
    const auto in_sight = [&] {
        const QSize seen = on.widget("Picture1")->visibleRegion().boundingRect().size();
        return seen.width() * seen.height();
    };
    const int with_panel = plot_width();
    const int seen_with_panel = in_sight();
    QTest::keyClick(&on.window(), Qt::Key_F9);
    QTest::qWait(20);
    QVERIFY2(plot_width() >= with_panel,
             qPrintable(u"%1, with the panel %2"_s.arg(plot_width()).arg(with_panel)));
    QVERIFY(in_sight() >= seen_with_panel);
    // What 600 units of height leave is natural size.
    QVERIFY(plot_width() > with_panel || wanted.height() <= 600);
    QCOMPARE(cut_off(on.window()).join(u'\n'), QString());
    longest_texts_stand_whole_and_apart(on);
    const auto place = [&](const char* name) {
        const QWidget& widget = *on.widget(name);
        return QRect(widget.mapTo(&on.window(), QPoint()), widget.size());
    };
    QVERIFY(!place("picMeasure").intersects(place("Picture1")));
    if (on.widget("picMeasure")->visibleRegion().boundingRect() ==
        on.widget("picMeasure")->rect()) {
        QVERIFY(place("textstatus").top() >= place("picMeasure").bottom());
        QVERIFY(!place("textstatus").intersects(place("Picture1")));
        // In a wide window both stand in a column beside the plot, in a narrow one below it.
        const bool beside = place("picMeasure").left() >= place("Picture1").right();
        QVERIFY(beside || 2 * size.width() < 3 * size.height());
        QVERIFY(!beside || size.width() > size.height());
    }
    save_picture(on.window(), u"hidden-"_s + QString::fromLatin1(QTest::currentDataTag()));
}

/// Counts how often the widgets of a window ask to be laid out.
class LayoutRequests : public QObject {
public:
    explicit LayoutRequests(const QWidget& window) : window_(window) {
        qApp->installEventFilter(this);
    }

    int count = 0;

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* const widget = qobject_cast<QWidget*>(watched);
        count += event->type() == QEvent::LayoutRequest && widget != nullptr &&
                         widget->window() == &window_
                     ? 1
                     : 0;
        return false;
    }

private:
    const QWidget& window_;
};

void ViewTest::f9_leaves_the_window_at_rest_and_the_keyboard_where_it_is() {
    // The frame below the plot, in two rows and in one, and in the column.
    for (const QSize size : {QSize(700, 900), QSize(1000, 1000), QSize(1900, 1000)}) {
        ProgramOnBench on;
        on.window().resize(size);
        QVERIFY(on.run_until_sweeping());
        QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
        QWidget& device = *on.widget("cmbDevice");
        on.panel().device.set_enabled(true); // as where there are two instruments
        device.setFocus();
        QVERIFY(device.hasFocus());
        QTest::keyClick(&on.window(), Qt::Key_F9);
        QTest::qWait(100);
        QVERIFY(device.hasFocus());
        LayoutRequests requests(on.window());
        constexpr int rounds = 100;
        for (int round = 0; round < rounds; ++round) {
            QCoreApplication::processEvents();
            QTest::qWait(1);
        }
        QVERIFY2(requests.count < rounds / 4, qPrintable(QString::number(requests.count)));
        QTest::keyClick(&on.window(), Qt::Key_F9);
        QTest::qWait(20);
        QVERIFY(device.hasFocus());
    }
}

// The keyboard operates only what is seen.
void ViewTest::what_is_hidden_has_no_keyboard_and_gets_it_back() {
    ProgramOnBench on;
    on.window().resize(1900, 1000);
    QVERIFY(on.run_until_sweeping());
    QVERIFY(QTest::qWaitForWindowActive(&on.window()));
    QWindow* const keyboard = on.window().windowHandle();
    const auto volts = [&] { return on.panel().channel[0].vdiv.index(); };
    const auto delay = [&] { return on.panel().channel[0].psofset.text(); };
    const int volts_before = volts();
    const std::string delay_before = delay();
    for (const char* const name : {"ch1vdiv", "psofsetch1"}) {
        QWidget& control = *on.widget(name);
        control.setFocus(Qt::MouseFocusReason);
        QVERIFY(control.hasFocus());
        QTest::keyClick(keyboard, Qt::Key_F9);
        QTRY_VERIFY(!control.isVisible());
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_7, Qt::Key_Backspace, Qt::Key_Return}) {
            QTest::keyClick(keyboard, key);
        }
        QCOMPARE(volts(), volts_before);
        QCOMPARE(delay(), delay_before);
        QVERIFY(!control.hasFocus());
        // The window's own keys work on.
        QTest::keyClick(keyboard, Qt::Key_F9);
        QTRY_VERIFY(control.isVisible());
        QVERIFY(control.hasFocus());
    }
    QTest::keyClick(keyboard, Qt::Key_7);
    QVERIFY(on.widget<QLineEdit>("psofsetch1")->text().contains(u'7'));
}

void ViewTest::a_wider_window_has_no_smaller_plot_data() {
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("height");
    QTest::newRow("540") << 100 << 540;
    QTest::newRow("720") << 100 << 720;
    QTest::newRow("larger-830") << 150 << 830;
}

// But for the one step where the panel gets the width that it has beside a plot of natural size.
void ViewTest::a_wider_window_has_no_smaller_plot() {
    QFETCH(int, percent);
    QFETCH(int, height);
    const TextSize text(percent);
    ProgramOnBench on;
    MainWindow& window = on.window();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // Side by side where the panel has two columns, else one below the other.
    const auto in_two_columns = [&] {
        const auto left = [&](const char* name) {
            return on.widget(name)->mapTo(&window, QPoint()).x();
        };
        return left("seltimediv") > left("gridenable") + 150;
    };
    int widest = 0;
    bool whole = false;
    for (int width = 700; width <= 1600; width += 20) {
        window.resize(width, height);
        QCoreApplication::processEvents();
        QCOMPARE(window.width(), width);
        const PlotScale& scale = window.plot().scale();
        if (!whole && in_two_columns() && scale.factor() >= window.devicePixelRatioF()) {
            whole = true;
        } else {
            QVERIFY2(scale.width() >= widest,
                     qPrintable(u"%1 wide: %2, in a narrower window %3"_s.arg(width)
                                    .arg(scale.width())
                                    .arg(widest)));
        }
        widest = scale.width();
    }
    QVERIFY(in_two_columns());
}

void ViewTest::the_window_opens_with_its_whole_panel_at_a_larger_font() {
    const TextSize text(150);
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QCOMPARE(on.window().controls().width(), on.window().controls().sizeHint().width());
    QCOMPARE(on.window().plot().scale().factor(), on.window().devicePixelRatioF());
}

void ViewTest::a_change_of_the_desktops_font_is_followed_at_once_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("1920x1080") << QSize(1920, 1080);
    QTest::newRow("2560x1440") << QSize(2560, 1440);
}

// As after the next change of the window's size.
void ViewTest::a_change_of_the_desktops_font_is_followed_at_once() {
    QFETCH(QSize, size);
    ProgramOnBench on;
    MainWindow& window = on.window();
    const QSize wanted = size / window.devicePixelRatioF();
    window.resize(wanted);
    QVERIFY(on.run_until_sweeping());
    QTest::keyClick(&window, Qt::Key_F9);
    QTest::qWait(20);
    const auto looks = [&] {
        QStringList result;
        for (const char* const name : {"Picture1", "picMeasure", "ch2vdivtext", "lblMeas(0)",
                                       "tdivtext", "textstatus", "cmbDevice"}) {
            const QWidget& widget = *on.widget(name);
            const QRect place(widget.mapTo(&window, QPoint()), widget.size());
            result += u"%1 %2,%3 %4x%5 %6"_s.arg(QLatin1StringView(name))
                          .arg(place.x())
                          .arg(place.y())
                          .arg(place.width())
                          .arg(place.height())
                          .arg(widget.font().pointSizeF());
        }
        return result.join(u'\n');
    };
    // A busy machine takes its time.
    const auto settled_looks = [&] {
        QString result;
        QString again = looks();
        while (result != again) {
            result = std::exchange(again, {});
            QTest::qWait(200);
            again = looks();
        }
        return result;
    };
    QStringList seen;
    for (const int percent : {100, 140, 100}) {
        const TextSize text(percent);
        const QString at_once = settled_looks();
        QCOMPARE(cut_off(window).join(u'\n'), QString());
        window.resize(wanted - QSize(40, 40));
        QTest::qWait(20);
        window.resize(wanted);
        QCOMPARE(at_once, settled_looks());
        seen += at_once;
    }
    QVERIFY(seen[0] != seen[1]);
    QCOMPARE(seen[2], seen[0]);
}

// Whatever stands over them: names, values and what is free between these.
void ViewTest::the_results_rules_are_as_thick_all_along() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const double ratio = on.window().devicePixelRatioF();
    for (int height = 800; height < 816; height += 3) {
        on.window().resize(1280, height);
        QTest::qWait(20);
        const QImage shown = on.window().grab().toImage();
        const QWidget& results = *on.widget("picMeasure");
        const QRgb rule = results.palette().color(QPalette::WindowText).rgb();
        const QRectF place(QPointF(results.mapTo(&on.window(), QPoint())) * ratio,
                           QSizeF(results.size()) * ratio);
        const auto is_rule = [&](int x, int y) {
            // Over a longer way than a letter has.
            for (int pixel = x; pixel < x + 20; ++pixel) {
                if (shown.pixel(pixel, y) != rule) {
                    return false;
                }
            }
            return true;
        };
        std::vector<int> thick;
        for (const double part : {0.1, 0.15, 0.25, 0.4, 0.6, 0.8, 0.9}) {
            const int x = static_cast<int>(place.left() + part * place.width()) - 10;
            int lines = 0;
            for (int y = static_cast<int>(place.top()); y < place.bottom(); ++y) {
                lines += is_rule(x, y) ? 1 : 0;
            }
            thick.push_back(lines);
        }
        QCOMPARE(thick, std::vector<int>(thick.size(), 3 * static_cast<int>(ratio)));
    }
}

void ViewTest::f9_and_f11_come_back_in_any_order() {
    ProgramOnBench on;
    MainWindow& window = on.window();
    window.resize(QSize(1366, 720) / window.devicePixelRatioF());
    QVERIFY(on.run_until_sweeping());
    for (const bool maximised : {false, true}) {
        if (maximised) {
            window.showMaximized();
            QTRY_VERIFY(window.isMaximized());
        }
        const QList<QRect> before = settled_places(on);
        const QRect geometry = window.geometry();
        const double scale = window.plot().scale().factor();
        for (const auto& keys : {std::array{Qt::Key_F9, Qt::Key_F11, Qt::Key_F9, Qt::Key_F11},
                                 std::array{Qt::Key_F9, Qt::Key_F11, Qt::Key_F11, Qt::Key_F9},
                                 std::array{Qt::Key_F11, Qt::Key_F9, Qt::Key_F11, Qt::Key_F9},
                                 std::array{Qt::Key_F11, Qt::Key_F9, Qt::Key_F9, Qt::Key_F11}}) {
            for (const Qt::Key key : keys) {
                QTest::keyClick(&window, key);
                QTest::qWait(20);
            }
            QCOMPARE(window.isMaximized(), maximised);
            QTRY_COMPARE(window.geometry(), geometry);
            QTRY_COMPARE(places(on), before);
            QCOMPARE(window.plot().scale().factor(), scale);
        }
    }
}

void ViewTest::f11_shows_the_window_full_screen_and_as_it_was() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const QSize before = on.window().size();
    QTest::keyClick(&on.window(), Qt::Key_F11);
    QTRY_VERIFY(on.window().isFullScreen());
    QVERIFY(on.window().findChild<QAction*>(u"fullScreen"_s)->isChecked());
    QTest::keyClick(&on.window(), Qt::Key_F11);
    QTRY_VERIFY(!on.window().isFullScreen());
    QTRY_COMPARE(on.window().size(), before);
    // The desktop's own way tells the entry too.
    on.window().showFullScreen();
    QTRY_VERIFY(on.window().findChild<QAction*>(u"fullScreen"_s)->isChecked());
    on.window().showNormal();
}

// The wheel and the tabs, which a drag turns, are out of sight then.
void ViewTest::what_is_dragged_follows_while_the_panel_is_hidden() {
    Dragging on;
    on.window().resize(1280, 900);
    QVERIFY(on.run_until_sweeping());
    QTest::keyClick(&on.window(), Qt::Key_F9);
    QTest::qWait(20);
    QVERIFY(!on.widget("Slider1")->isVisible());
    Mouse mouse(on.window());
    for (const auto& [name, channel] : {std::pair{"ch2text", ch2}, {"ch1text", ch1}}) {
        const std::size_t from = on.log.frames.size();
        on.drag_marker(mouse, *on.widget(name), 256, 216);
        const double units = on.pixel_of_unit(0, 216).y() - on.pixel_of_unit(0, 256).y();
        const double rows = units / on.window().plot().scale().factor();
        QVERIFY(std::abs(on.parts().channels[channel].pos - (256 + rows)) <= 0.5);
        mouse.release();
        QVERIFY(on.uploads_after(from));
    }
}

void ViewTest::the_frames_keep_their_size_in_any_window() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const double natural = on.window().devicePixelRatioF();
    QCOMPARE(on.window().plot().scale().factor(), natural);
    const QSize controls = on.window().controls().size();
    for (const QSize size : {QSize(1920, 1080), QSize(2560, 1440), QSize(3840, 2160)}) {
        on.window().resize(size);
        QTest::qWait(20);
        QCOMPARE(on.window().controls().size().width(), controls.width());
        QVERIFY(std::abs(on.window().controls().size().height() - controls.height()) <= 12);
        QVERIFY(on.window().plot().scale().factor() > 1.4 * natural);
    }
}

// Sizes in pixels of the screen, with the panel and without it.
void ViewTest::nothing_is_cut_off_on_a_large_screen() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    for (const QSize size : {QSize(2560, 1440), QSize(3840, 2160)}) {
        on.window().resize(size / on.window().devicePixelRatioF());
        for (int turn = 0; turn < 2; ++turn) {
            QTest::qWait(20);
            QCOMPARE(cut_off(on.window()).join(u'\n'), QString());
            QVERIFY(on.window().plot().scale().factor() > 1.4);
            QTest::keyClick(&on.window(), Qt::Key_F9);
        }
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ViewTest)
#include "view_test.moc"
