// Dragging the markers and the adjust wheel in the whole window, and what then goes to the
// instrument.

#include <set>

#include <QLabel>
#include <QLineEdit>

#include "dragging.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

class DragTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_channel_marker_moves_its_trace_data();
    void a_channel_marker_moves_its_trace();
    void a_channel_marker_follows_every_pixel_data();
    void a_channel_marker_follows_every_pixel();
    void markers_on_one_row_are_both_seen_and_grabbed_data();
    void markers_on_one_row_are_both_seen_and_grabbed();
    void markers_on_different_rows_lie_where_they_always_did();
    void the_trigger_marker_sets_the_level_once_let_go_data();
    void the_trigger_marker_sets_the_level_once_let_go();
    void a_marker_that_goes_in_the_middle_of_a_drag_is_let_go();
    void the_wheel_turns_the_delay();
    void the_wheel_turns_the_level_by_keys();
};

void DragTest::a_channel_marker_moves_its_trace_data() {
    QTest::addColumn<int>("channel");
    QTest::addColumn<double>("scale");
    for (const double scale : drag_scales()) {
        QTest::addRow("CH1 at %g", scale) << 0 << scale;
    }
    QTest::newRow("CH2") << 1 << 1.0;
}

void DragTest::a_channel_marker_moves_its_trace() {
    QFETCH(int, channel);
    QFETCH(double, scale);
    const auto index = static_cast<std::size_t>(channel);
    Dragging on;
    QVERIFY(on.begin(scale));
    Mouse mouse(on.window());
    if (channel == 1) {
        on.widget<QTabBar>("TabStrip2")->setCurrentIndex(channel);
    }
    const char* const name = channel == 0 ? "ch1text" : "ch2text";
    QWidget& marker = *on.widget(name);
    QCOMPARE(marker.cursor().shape(), Qt::SizeVerCursor);
    const int widget_top = marker.y();
    on.drag_marker(mouse, marker, 256, 216);
    const ChannelState& state = on.parts().channels[index];
    QCOMPARE(static_cast<int>(state.pos), 256 - 40);
    // The mouse went a whole number of pixels, which may be a little more or less than 40 rows.
    const int pixels = on.pixel_of_unit(0, 256).y() - on.pixel_of_unit(0, 216).y();
    const double rows = pixels / on.window().plot().scale().factor();
    QVERIFY(std::abs(rows - 40.0) <= 0.5);
    QCOMPARE(static_cast<double>(state.marker_wheel), 512 + std::nearbyint(2 * rows));
    QCOMPARE(on.panel().channel[index].text.marked().value(), static_cast<int>(state.pos));
    QVERIFY(std::abs(marker.y() - (widget_top + on.units(0, -40).y())) <= 1);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string(channel == 0 ? "CH1" : "CH2"));
    QCOMPARE(on.widget<QTabBar>("TabStrip2")->currentIndex(), channel);
    const std::size_t from = on.log.frames.size();
    mouse.release();
    QVERIFY(on.uploads_after(from));
    QCOMPARE(static_cast<int>(state.pos), 256 - 40);
}

void DragTest::a_channel_marker_follows_every_pixel_data() {
    QTest::addColumn<double>("scale");
    for (const double scale : pixel_scales(qApp->devicePixelRatio())) {
        QTest::addRow("at %g", scale) << scale;
    }
}

// A step of the wheel is half a row: the nearest step to the mouse is taken, and where half a row
// is at least a pixel there is none that cannot be reached.
void DragTest::a_channel_marker_follows_every_pixel() {
    QFETCH(double, scale);
    Dragging on;
    QVERIFY(on.begin(scale / on.window().devicePixelRatioF()));
    scale = on.window().plot().scale().factor();
    Mouse mouse(on.window());
    // The zero line is on row 256, where the wheel stands at 512.
    const QRect marker = on.widget("ch1text")->geometry();
    const qreal ratio = on.window().devicePixelRatioF();
    const QPoint start(static_cast<int>(marker.center().x() * ratio), on.pixel_of_unit(0, 256).y());
    mouse.press_pixel(on.window().plot(), start);
    const std::int32_t& wheel = on.parts().channels[0].marker_wheel;
    std::set<int> reached;
    for (int down = 40; down >= -40; --down) {
        mouse.drag_to_pixel(on.window().plot(), start + QPoint(0, down));
        const double there = 512 - 2 * down / scale;
        QVERIFY2(std::abs(wheel - there) <= 0.5,
                 qPrintable(u"%1 pixels: %2, not %3"_s.arg(down).arg(wheel).arg(there)));
        reached.insert(wheel);
    }
    if (scale >= 2.0) {
        QCOMPARE(static_cast<int>(reached.size()), *reached.rbegin() - *reached.begin() + 1);
    }
}

void DragTest::markers_on_one_row_are_both_seen_and_grabbed_data() {
    QTest::addColumn<int>("rows"); // CH2's marker below CH1's
    QTest::addColumn<double>("scale");
    for (const int rows : {0, 1, -1, 7, -7, 14, -14}) {
        QTest::addRow("%d rows apart", rows) << rows << 1.0;
    }
    QTest::newRow("larger") << 0 << 1.9;
}

void DragTest::markers_on_one_row_are_both_seen_and_grabbed() {
    QFETCH(int, rows);
    QFETCH(double, scale);
    Dragging on;
    QVERIFY(on.begin(scale));
    on.program.scope().act([&] { on.move_trace(ch2, 256 + rows); });
    QWidget& first = *on.widget("ch1text");
    QWidget& second = *on.widget("ch2text");
    QVERIFY(first.isVisible() && second.isVisible());
    QVERIFY(!first.geometry().intersects(second.geometry()));
    QVERIFY(on.window().plot().rect().contains(second.geometry()));
    QVERIFY(first.geometry().right() < on.on_plot(0, 0).x());
    // Each is what lies under the mouse in its own middle, and goes along with it.
    Mouse mouse(on.window());
    const int down = rows >= 0 ? 60 : -60;
    for (const auto& [marker, index, moved] : {std::tuple{&second, 1, down}, {&first, 0, -down}}) {
        const QWidget* const under =
            on.window().childAt(marker->mapTo(&on.window(), marker->rect().center()));
        QCOMPARE(under, marker);
        const int before = on.parts().channels[static_cast<std::size_t>(index)].pos;
        on.drag_marker(mouse, *marker, before, before + moved);
        mouse.release();
        const int now = on.parts().channels[static_cast<std::size_t>(index)].pos;
        QVERIFY(std::abs(now - (before + moved)) <= on.uncertain_rows());
    }
    QCOMPARE(second.x(), first.x());
}

// 17 and 14: left of the plot area, whose first column is the 32nd of the box.
void DragTest::markers_on_different_rows_lie_where_they_always_did() {
    Dragging on;
    QVERIFY(on.begin());
    const QWidget& first = *on.widget("ch1text");
    const QWidget& second = *on.widget("ch2text");
    for (const int rows : {15, -15, 100, -256}) {
        on.program.scope().act([&] { on.move_trace(ch2, 256 + rows); });
        for (const auto& [marker, row] : {std::pair{&first, 256}, {&second, 256 + rows}}) {
            const PlotWidget& plot = on.window().plot();
            const QRectF place(plot.place_of(17, box::top + row - 7),
                               plot.place_of(17 + 14, box::top + row + 8));
            QCOMPARE(marker->geometry(), place.toAlignedRect());
        }
    }
    // Where one of them is away there is nothing to make room for.
    on.program.scope().act([&] { on.move_trace(ch2, 256); });
    QVERIFY(second.x() < first.x());
    on.program.scope().act([&] { on.panel().channel[0].enable.press(false); });
    QCOMPARE(second.x(), first.x());
    on.program.scope().act([&] { on.panel().channel[0].enable.press(true); });
    QVERIFY(second.x() < first.x());
}

void DragTest::the_trigger_marker_sets_the_level_once_let_go_data() {
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.5, 1.9, 2.0, 3.4, 5.0}) {
        QTest::addRow("at %g", scale) << scale;
    }
}

void DragTest::the_trigger_marker_sets_the_level_once_let_go() {
    QFETCH(double, scale);
    Dragging on;
    QVERIFY(on.begin(scale));
    QVERIFY(on.widget("trigertext")->isVisible());
    Mouse mouse(on.window());
    const std::size_t pressed = on.log.frames.size();
    const QPoint start = on.pixel_of_unit(plot::width + 6, 256);
    mouse.press_pixel(on.window().plot(), start);
    const QPoint up(0, -on.pixel_of_unit(0, 256).y() + on.pixel_of_unit(0, 224).y());
    mouse.drag_to_pixel(on.window().plot(), start + up);
    // 32 rows up at 0.1V/div are 50 mV, in the marker's factor 2 of low gain 64 rows per division.
    // The level is a whole code in mV, of which the wheel has every fourth.
    const double rows = -up.y() / on.window().plot().scale().factor();
    QVERIFY(std::abs(rows - 32.0) <= 0.5);
    const double code = std::nearbyint(2048 + rows * 50.0 / 32.0);
    const TriggerState& trigger = on.parts().trigger_state;
    QCOMPARE(static_cast<double>(trigger.trigpos), 4.0 * std::nearbyint(code / 4.0));
    QVERIFY(trigger.trigpos > 2048);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string("TRIG"));
    QVERIFY(on.parts().acquisition.holdoff);
    // Held, it goes to nobody yet.
    QTest::qWait(250);
    QVERIFY(on.only_sweeps_since(pressed));
    const std::size_t from = on.log.frames.size();
    mouse.release();
    QVERIFY(on.uploads_after(from));
    const simulator::Command sent = on.first(8, from);
    QCOMPARE(static_cast<int>(simulator::word_argument(sent, 0)),
             static_cast<int>(trigger.trigpos));
    QCOMPARE(static_cast<int>(sent.arguments[2]), 1);
    QCOMPARE(on.widget<QLabel>("trlevelmv")->text(),
             u" %1mV"_s.arg(static_cast<int>(trigger.trigpos) - 2048));
}

void DragTest::a_marker_that_goes_in_the_middle_of_a_drag_is_let_go() {
    Dragging on;
    QVERIFY(on.begin());
    Mouse mouse(on.window());
    on.drag_marker(mouse, *on.widget("ch1text"), 256, 256 + 25);
    QVERIFY(on.state() != "changes");
    on.panel().channel[0].enable.set_checked(false);
    QVERIFY(!on.widget("ch1text")->isVisible());
    QCOMPARE(on.state(), std::string("changes"));
    mouse.drag(on.units(0, 25));
    mouse.release();
    QVERIFY(std::abs(on.parts().channels[0].pos - (256 + 25)) <= on.uncertain_rows());
}

void DragTest::the_wheel_turns_the_delay() {
    Dragging on;
    QVERIFY(on.begin());
    QTest::mouseClick(on.widget("slenps1"), Qt::LeftButton, {}, {4, 8});
    QVERIFY(on.panel().channel[0].slenps.checked());
    on.choose_tab("TabStrip2", 3);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string("HPOS"));
    Mouse mouse(on.window());
    mouse.press(*on.widget("Slider1"), {300, 15});
    mouse.drag({-50, 0});
    // At 20ns/div a pixel of the wheel is 64 ps.
    QCOMPARE(on.widget<QLineEdit>("psofsetch1")->text(), u"3200"_s);
    QCOMPARE(on.widget<QLineEdit>("psofsetch2")->text(), u"0"_s);
    const std::size_t from = on.log.frames.size();
    mouse.release();
    QCOMPARE(on.widget<QLabel>("lblHorDelay1")->text(), u"Delay:  3200ps"_s);
    QCOMPARE(on.widget<QLabel>("lblHorDelay2")->text(), QString());
    QVERIFY(on.uploads_after(from));
    QCOMPARE(simulator::long_argument(on.first(30, from)), 3200);
    QCOMPARE(simulator::long_argument(on.first(35, from)), 0);
}

void DragTest::the_wheel_turns_the_level_by_keys() {
    Dragging on;
    QVERIFY(on.begin());
    on.choose_tab("TabStrip2", 2);
    auto* const wheel = on.widget("Slider1");
    wheel->setFocus();
    const std::size_t from = on.log.frames.size();
    QTest::keyClick(on.window().windowHandle(), Qt::Key_PageUp);
    QTest::keyClick(on.window().windowHandle(), Qt::Key_Left);
    QVERIFY(on.uploads_after(from));
    QCOMPARE(static_cast<int>(simulator::word_argument(on.first(8, from), 0)), 2048 + 9 * 4);
    QTRY_COMPARE(on.widget<QLabel>("trlevelmv")->text(), u" 36mV"_s);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::DragTest)
#include "drag_test.moc"
