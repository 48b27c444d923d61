// The adjust wheel's widget by mouse, keys and mouse wheel.

#include <QTest>

#include "mouse.h"
#include "wheel_alone.h"

namespace kv408::ui {
namespace {

/// Turns the mouse wheel over `widget` by `eighths` of a degree, upwards or sideways.
void turn_mouse_wheel(QWidget& widget, QPoint eighths) {
    const QPointF middle = QRectF(widget.rect()).center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), {}, eighths, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

class WheelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_drag_scrolls_and_letting_go_commits();
    void a_drag_stops_at_the_ends_while_the_ribs_go_on();
    void other_buttons_do_not_drag();
    void keys_turn_it_data();
    void keys_turn_it();
    void the_mouse_wheel_turns_it_by_notches();
    void a_disabled_wheel_stands_still();
    void an_interrupted_drag_is_let_go();
};

void WheelTest::a_drag_scrolls_and_letting_go_commits() {
    WheelAlone on;
    QVERIFY(on.show());
    Mouse mouse(on.widget);
    mouse.press(on.widget, {100, 15});
    mouse.drag({10, 0});
    QCOMPARE(on.wheel.Value(), 140);
    QCOMPARE(on.wheel.phase(), 10);
    QCOMPARE(on.scrolls, 2);
    QCOMPARE(on.changes, 0);
    mouse.release();
    QCOMPARE(on.changes, 1);
    QCOMPARE(on.wheel.Value(), 140);
    QVERIFY(!on.wheel.uncommitted());
    // Without the button nothing turns.
    mouse.go(on.widget, {150, 15});
    QCOMPARE(on.wheel.Value(), 140);
    QCOMPARE(on.scrolls, 2);
}

void WheelTest::a_drag_stops_at_the_ends_while_the_ribs_go_on() {
    WheelAlone on;
    QVERIFY(on.show());
    Mouse mouse(on.widget);
    mouse.press(on.widget, {100, 15});
    mouse.drag({-50, 0});
    QCOMPARE(on.wheel.Value(), 0);
    const int scrolls = on.scrolls;
    const int phase = on.wheel.phase();
    mouse.drag({-5, 0});
    QCOMPARE(on.scrolls, scrolls);
    QCOMPARE(on.wheel.phase(), (phase - 5 + 12) % 12);
    mouse.release();
    QCOMPARE(on.wheel.Value(), 0);
}

void WheelTest::other_buttons_do_not_drag() {
    WheelAlone on;
    QVERIFY(on.show());
    QTest::mousePress(on.widget.windowHandle(), Qt::RightButton, {}, {100, 15});
    QTest::mouseMove(on.widget.windowHandle(), {120, 15});
    QTest::mouseRelease(on.widget.windowHandle(), Qt::RightButton, {}, {120, 15});
    QCOMPARE(on.wheel.Value(), 100);
    QCOMPARE(on.scrolls + on.changes, 0);
}

void WheelTest::keys_turn_it_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("value");
    QTest::newRow("right") << Qt::Key_Right << 104;
    QTest::newRow("up") << Qt::Key_Up << 104;
    QTest::newRow("left") << Qt::Key_Left << 96;
    QTest::newRow("down") << Qt::Key_Down << 96;
    QTest::newRow("page up") << Qt::Key_PageUp << 140;
    QTest::newRow("page down") << Qt::Key_PageDown << 60;
    QTest::newRow("home") << Qt::Key_Home << 0;
    QTest::newRow("end") << Qt::Key_End << 1024;
    QTest::newRow("none") << Qt::Key_A << 100;
}

void WheelTest::keys_turn_it() {
    QFETCH(Qt::Key, key);
    QFETCH(int, value);
    WheelAlone on;
    QVERIFY(on.show());
    on.widget.setFocus();
    QTest::keyClick(on.widget.windowHandle(), key);
    QCOMPARE(on.wheel.Value(), value);
    QCOMPARE(on.scrolls, value == 100 ? 0 : 1);
    QCOMPARE(on.changes, value == 100 ? 0 : 1);
    QVERIFY(!on.wheel.uncommitted());
}

void WheelTest::the_mouse_wheel_turns_it_by_notches() {
    WheelAlone on;
    turn_mouse_wheel(on.widget, {0, 120});
    QCOMPARE(on.wheel.Value(), 104);
    QCOMPARE(on.changes, 1);
    turn_mouse_wheel(on.widget, {0, -240});
    QCOMPARE(on.wheel.Value(), 96);
    turn_mouse_wheel(on.widget, {120, 0});
    QCOMPARE(on.wheel.Value(), 100);
    // Parts of a notch add up, but not across a change of direction.
    for (int part = 0; part < 3; ++part) {
        turn_mouse_wheel(on.widget, {0, 30});
    }
    QCOMPARE(on.wheel.Value(), 100);
    turn_mouse_wheel(on.widget, {0, 30});
    QCOMPARE(on.wheel.Value(), 104);
    turn_mouse_wheel(on.widget, {0, 90});
    turn_mouse_wheel(on.widget, {0, -30});
    turn_mouse_wheel(on.widget, {0, -60});
    QCOMPARE(on.wheel.Value(), 104);
    turn_mouse_wheel(on.widget, {0, -30});
    QCOMPARE(on.wheel.Value(), 100);
}

void WheelTest::a_disabled_wheel_stands_still() {
    WheelAlone on;
    QVERIFY(on.show());
    on.wheel.set_enabled(false);
    QVERIFY(!on.widget.isEnabled());
    Mouse mouse(on.widget);
    mouse.press(on.widget, {100, 15});
    mouse.drag({20, 0});
    mouse.release();
    QTest::keyClick(on.widget.windowHandle(), Qt::Key_Right);
    QTest::keyClick(&on.widget, Qt::Key_End);
    turn_mouse_wheel(on.widget, {0, 120});
    QCOMPARE(on.wheel.Value(), 100);
}

void WheelTest::an_interrupted_drag_is_let_go() {
    WheelAlone on;
    QVERIFY(on.show());
    Mouse mouse(on.widget);
    mouse.press(on.widget, {100, 15});
    mouse.drag({5, 0});
    on.wheel.set_enabled(false);
    QVERIFY(!on.wheel.uncommitted());
    QCOMPARE(on.changes, 1);
    on.wheel.set_enabled(true);
    mouse.release();
    mouse.press(on.widget, {100, 15});
    mouse.drag({5, 0});
    QEvent left(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&on.widget, &left);
    QVERIFY(!on.wheel.uncommitted());
    QCOMPARE(on.wheel.Value(), 140);
    QCOMPARE(on.changes, 2);
    mouse.release();
    mouse.press(on.widget, {100, 15});
    mouse.drag({5, 0});
    on.widget.hide();
    QVERIFY(!on.wheel.uncommitted());
    QCOMPARE(on.wheel.Value(), 160);
    QCOMPARE(on.changes, 3);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::WheelTest)
#include "wheel_test.moc"
