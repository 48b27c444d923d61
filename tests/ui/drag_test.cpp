// Dragging the markers and the adjust wheel in the whole window, and what then goes to the
// instrument.

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
    void the_trigger_marker_sets_the_level_once_let_go();
    void a_marker_that_goes_in_the_middle_of_a_drag_is_let_go();
    void the_wheel_turns_the_delay();
    void the_wheel_turns_the_level_by_keys();
};

void DragTest::a_channel_marker_moves_its_trace_data() {
    QTest::addColumn<int>("channel");
    QTest::addColumn<QSize>("size");
    QTest::newRow("CH1") << 0 << QSize(1280, 800);
    QTest::newRow("CH2") << 1 << QSize(1280, 800);
    QTest::newRow("CH1, larger") << 0 << QSize(2560, 1440);
}

void DragTest::a_channel_marker_moves_its_trace() {
    QFETCH(int, channel);
    QFETCH(QSize, size);
    const auto index = static_cast<std::size_t>(channel);
    Dragging on;
    QVERIFY(on.begin(size));
    const QPoint away = on.units(0, -40);
    Mouse mouse(on.window());
    if (channel == 1) {
        // CH1's marker lies over CH2's until CH2 is chosen.
        QCOMPARE(on.widget("ch1text")->pos(), on.widget("ch2text")->pos());
        on.widget<QTabBar>("TabStrip2")->setCurrentIndex(channel);
    }
    const char* const name = channel == 0 ? "ch1text" : "ch2text";
    QWidget& marker = *on.widget(name);
    QCOMPARE(marker.cursor().shape(), Qt::SizeVerCursor);
    const int widget_top = marker.y();
    mouse.press(marker, {4, 4});
    mouse.drag(away);
    const ChannelState& state = on.parts().channels[index];
    QCOMPARE(static_cast<int>(state.pos), 256 - 40);
    QCOMPARE(state.marker_wheel, 512 + 80);
    QCOMPARE(on.panel().channel[index].text.top(), plot::top + state.pos - plot::marker_middle);
    QVERIFY(std::abs(marker.y() - (widget_top + away.y())) <= 1);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string(channel == 0 ? "CH1" : "CH2"));
    QCOMPARE(on.widget<QTabBar>("TabStrip2")->currentIndex(), channel);
    const std::size_t from = on.log.frames.size();
    mouse.release();
    QVERIFY(on.uploads_after(from));
    QCOMPARE(static_cast<int>(state.pos), 256 - 40);
}

void DragTest::the_trigger_marker_sets_the_level_once_let_go() {
    Dragging on;
    QVERIFY(on.begin());
    QWidget& marker = *on.widget("trigertext");
    QVERIFY(marker.isVisible());
    Mouse mouse(on.window());
    const std::size_t pressed = on.log.frames.size();
    mouse.press(marker, {8, 4});
    mouse.drag(on.units(0, -32));
    // 32 rows up at 0.1V/div are 50 mV, in the marker's factor 2 of low gain 64 rows a division.
    const TriggerState& trigger = on.parts().trigger_state;
    const ChannelState& channel = on.parts().channels[0];
    const double expected = 2048 + 32 / (2.0 * channel.scale * channel.vtfactor);
    QVERIFY(std::abs(trigger.trigpos - expected) <= 4.0);
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
    mouse.press(*on.widget("ch1text"), {4, 4});
    mouse.drag(on.units(0, 25));
    QVERIFY(on.state() != "changes");
    on.panel().channel[0].enable.set_checked(false);
    QVERIFY(!on.widget("ch1text")->isVisible());
    QCOMPARE(on.state(), std::string("changes"));
    mouse.drag(on.units(0, 25));
    mouse.release();
    QCOMPARE(static_cast<int>(on.parts().channels[0].pos), 256 + 25);
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
