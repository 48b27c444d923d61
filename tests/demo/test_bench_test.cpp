// The window of the simulated test bench.

#include <array>
#include <tuple>
#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QTest>

#include "demo/test_bench_window.h"
#include "simulator/test_connections.h"
#include "ui/engineering_spin_box.h"
#include "ui/when_placed.h"
#include "ui/window_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;
using simulator::TestBench;

class BenchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values_read_like_an_engineer_writes_them_data();
    void values_read_like_an_engineer_writes_them();
    void typed_texts_are_understood_data();
    void typed_texts_are_understood();
    void steps_stay_in_the_decade_data();
    void steps_stay_in_the_decade();
    void signals_are_edited();
    void what_one_kind_has_is_shown_with_it();
    void an_eye_is_connected_from_the_list();
    void cables_are_plugged();
    void a_calibration_is_connected_from_the_list();
    void faults_are_switched();
    void an_acknowledge_is_lost_or_wrong();
    void an_edit_ends_the_connection_from_the_list();
    void leaves_the_controls_free_data();
    void leaves_the_controls_free();
    void two_windows_stand_on_different_sides();
    void is_put_beside_a_window_title_bar_and_all();
    void waits_for_the_main_window_to_have_its_place();
};

void BenchTest::values_read_like_an_engineer_writes_them_data() {
    QTest::addColumn<QString>("unit");
    QTest::addColumn<double>("base");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("MHz") << u"Hz"_s << 1.0 << 10e6 << u"10 MHz"_s;
    QTest::newRow("GHz") << u"Hz"_s << 1.0 << 1.25e9 << u"1.25 GHz"_s;
    QTest::newRow("kHz") << u"Hz"_s << 1.0 << 999e3 << u"999 kHz"_s;
    QTest::newRow("ps") << u"s"_s << 1e-12 << 800.0 << u"800 ps"_s;
    QTest::newRow("ns") << u"s"_s << 1e-12 << 1000.0 << u"1 ns"_s;
    QTest::newRow("zero") << u"s"_s << 1e-12 << 0.0 << u"0 s"_s;
    QTest::newRow("mV") << u"V"_s << 1e-3 << -250.0 << u"-250 mV"_s;
    QTest::newRow("uV") << u"V"_s << 1e-3 << 0.5 << u"500 uV"_s;
    QTest::newRow("V") << u"V"_s << 1e-3 << 1000.0 << u"1 V"_s;
}

void BenchTest::values_read_like_an_engineer_writes_them() {
    QFETCH(QString, unit);
    QFETCH(double, base);
    QFETCH(double, value);
    QFETCH(QString, text);
    const EngineeringSpinBox box(unit, base);
    QCOMPARE(box.textFromValue(value), text);
    QVERIFY(std::abs(box.valueFromText(text) - value) <= std::abs(value) * 1e-12);
}

void BenchTest::typed_texts_are_understood_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("prefix and unit") << u"3 MHz"_s << 3e6;
    QTest::newRow("no blank") << u"3MHz"_s << 3e6;
    QTest::newRow("prefix only") << u"3k"_s << 3e3;
    QTest::newRow("unit only") << u"50 Hz"_s << 50.0;
    QTest::newRow("nothing: the prefix shown") << u"12"_s << 12e6;
    QTest::newRow("exponent") << u"2e3 Hz"_s << 2e3;
    QTest::newRow("nonsense keeps the value") << u"fast"_s << 10e6;
    QTest::newRow("too much keeps the value in its range") << u"900 GHz"_s << 20e9;
}

void BenchTest::typed_texts_are_understood() {
    QFETCH(QString, text);
    QFETCH(double, value);
    EngineeringSpinBox box(u"Hz"_s, 1.0);
    box.setRange(1.0, 20e9);
    box.setValue(10e6);
    box.selectAll();
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.value(), value);
}

void BenchTest::steps_stay_in_the_decade_data() {
    QTest::addColumn<double>("from");
    QTest::addColumn<int>("steps");
    QTest::addColumn<double>("to");
    QTest::newRow("up") << 10e6 << 1 << 11e6;
    QTest::newRow("down below the decade") << 10e6 << -1 << 9.9e6;
    QTest::newRow("within") << 250e3 << 2 << 270e3;
}

void BenchTest::steps_stay_in_the_decade() {
    QFETCH(double, from);
    QFETCH(int, steps);
    QFETCH(double, to);
    EngineeringSpinBox box(u"Hz"_s, 1.0);
    box.setRange(1.0, 20e9);
    box.setValue(from);
    box.stepBy(steps);
    QCOMPARE(box.value(), to);
}

void BenchTest::signals_are_edited() {
    TestBench bench;
    TestBenchWindow window(bench);
    const auto frequencies = window.findChildren<QDoubleSpinBox*>(u"frequency"_s);
    QCOMPARE(frequencies.size(), 2);
    QCOMPARE(frequencies[0]->text(), u"10 MHz"_s);
    frequencies[1]->setValue(33e6);
    QCOMPARE(bench.sources[1].frequency_hz, 33e6);
    QCOMPARE(bench.sources[0].frequency_hz, 10e6);
    const std::array<std::pair<QString, double simulator::Source::*>, 9> others = {
        {{u"amplitude"_s, &simulator::Source::amplitude_mvpp},
         {u"offset"_s, &simulator::Source::offset_mv},
         {u"rise"_s, &simulator::Source::rise_time_ps},
         {u"noise"_s, &simulator::Source::noise_mv},
         {u"jitter"_s, &simulator::Source::jitter_ps},
         {u"sine_jitter"_s, &simulator::Source::sine_jitter_ps},
         {u"sine_jitter_rate"_s, &simulator::Source::sine_jitter_hz},
         {u"distortion"_s, &simulator::Source::distortion_ps},
         {u"cable"_s, &simulator::Source::cable_ps}}};
    for (const auto& [name, member] : others) {
        window.findChildren<QDoubleSpinBox*>(name).front()->setValue(123.0);
        QCOMPARE(bench.sources[0].*member, 123.0);
    }
    window.findChildren<QDoubleSpinBox*>(u"duty"_s).back()->setValue(25.0);
    QCOMPARE(bench.sources[1].duty, 0.25);
    auto* const kind = window.findChildren<QComboBox*>(u"kind"_s).front();
    kind->setCurrentText(u"Random data"_s);
    QCOMPARE(bench.sources[0].kind, simulator::SignalKind::random_data);
    QCOMPARE(bench.sources[0].pattern_bits, 7);
    kind->setCurrentText(u"Random 2^31 - 1"_s);
    QCOMPARE(bench.sources[0].kind, simulator::SignalKind::random_data);
    QCOMPARE(bench.sources[0].pattern_bits, 31);
}

void BenchTest::what_one_kind_has_is_shown_with_it() {
    TestBench bench;
    TestBenchWindow window(bench);
    window.show();
    auto* const kind = window.findChildren<QComboBox*>(u"kind"_s).front();
    const auto shown = [&window](const QString& name) {
        return window.findChildren<QDoubleSpinBox*>(name).front()->isVisible();
    };
    for (const auto& [text, of_pulse, of_data] :
         {std::tuple(u"Sine"_s, false, false), std::tuple(u"Pulse"_s, true, false),
          std::tuple(u"Random 2^15 - 1"_s, false, true)}) {
        kind->setCurrentText(text);
        QCOMPARE(shown(u"duty"_s), of_pulse);
        QCOMPARE(shown(u"distortion"_s), of_data);
        QCOMPARE(shown(u"cable"_s), of_data);
        QVERIFY(shown(u"sine_jitter"_s));
    }
}

void BenchTest::an_eye_is_connected_from_the_list() {
    TestBench bench;
    TestBenchWindow window(bench);
    auto* const list = window.findChild<QComboBox*>(u"connection"_s);
    list->setCurrentText(u"Eye, closing"_s);
    Q_EMIT list->activated(list->currentIndex());
    QCOMPARE(simulator::connected(bench), simulator::TestConnection::eye_closing);
    QCOMPARE(window.findChildren<QComboBox*>(u"kind"_s).front()->currentText(),
             u"Random 2^31 - 1"_s);
    QCOMPARE(window.findChildren<QDoubleSpinBox*>(u"cable"_s).front()->text(), u"60 ns"_s);
    QCOMPARE(list->currentText(), u"Eye, closing"_s);
}

void BenchTest::cables_are_plugged() {
    TestBench bench;
    TestBenchWindow window(bench);
    window.findChild<QComboBox*>(u"CH2"_s)->setCurrentText(u"Trigger output"_s);
    QCOMPARE(bench.samplers[1], simulator::SamplerRoute::trigger_output);
    window.findChild<QComboBox*>(u"CH1"_s)->setCurrentText(u"Via trigger"_s);
    QCOMPARE(bench.samplers[0], simulator::SamplerRoute::via_trigger);
    window.findChild<QComboBox*>(u"TRIG1"_s)->setCurrentText(u"Signal 2"_s);
    QCOMPARE(bench.triggers[0], simulator::TriggerRoute::signal_2);
    window.findChild<QComboBox*>(u"TRIG2"_s)->setCurrentText(u"Nothing"_s);
    QCOMPARE(bench.triggers[1], simulator::TriggerRoute::disconnected);
    window.findChild<QComboBox*>(u"TRIG1"_s)->setCurrentText(u"Clock 1"_s);
    QCOMPARE(bench.triggers[0], simulator::TriggerRoute::clock_1);
    window.findChild<QComboBox*>(u"TRIG2"_s)->setCurrentText(u"Clock 2"_s);
    QCOMPARE(bench.triggers[1], simulator::TriggerRoute::clock_2);
}

void BenchTest::a_calibration_is_connected_from_the_list() {
    TestBench bench;
    TestBenchWindow window(bench);
    auto* const list = window.findChild<QComboBox*>(u"connection"_s);
    const auto choose = [list](const QString& text) {
        list->setCurrentText(text);
        Q_EMIT list->activated(list->currentIndex());
    };
    choose(u"1 Vpp, 10 MHz sine; CH2 to trigger output"_s);
    QCOMPARE(bench.sources[0].amplitude_mvpp, 1000.0);
    QVERIFY(bench.samplers[1] == simulator::SamplerRoute::trigger_output);
    // What is shown follows, and still edits.
    auto* const amplitude = window.findChildren<QDoubleSpinBox*>(u"amplitude"_s).front();
    QCOMPARE(amplitude->text(), u"1 Vpp"_s);
    QCOMPARE(window.findChild<QComboBox*>(u"CH2"_s)->currentText(), u"Trigger output"_s);
    QCOMPARE(window.findChild<QComboBox*>(u"CH1"_s)->currentText(), u"Nothing"_s);
    amplitude->setValue(500.0);
    QCOMPARE(bench.sources[0].amplitude_mvpp, 500.0);
    choose(u"As delivered"_s);
    QCOMPARE(bench.sources[0].amplitude_mvpp, TestBench().sources[0].amplitude_mvpp);
    QVERIFY(bench.samplers == TestBench().samplers);
    QVERIFY(bench.triggers == TestBench().triggers);
}

void BenchTest::an_edit_ends_the_connection_from_the_list() {
    TestBench bench;
    TestBenchWindow window(bench);
    auto* const list = window.findChild<QComboBox*>(u"connection"_s);
    QCOMPARE(list->currentText(), u"As delivered"_s);
    auto* const offset = window.findChildren<QDoubleSpinBox*>(u"offset"_s).front();
    offset->setValue(50.0);
    QCOMPARE(list->currentIndex(), -1);
    QCOMPARE(list->placeholderText(), u"Your own signals and cables"_s);
    offset->setValue(0.0);
    QCOMPARE(list->currentText(), u"As delivered"_s);
    window.findChild<QComboBox*>(u"CH1"_s)->setCurrentText(u"Nothing"_s);
    QCOMPARE(list->currentIndex(), -1);
    list->setCurrentIndex(0);
    Q_EMIT list->activated(0);
    QCOMPARE(window.findChild<QComboBox*>(u"CH1"_s)->currentText(), u"Signal 1"_s);
    QCOMPARE(list->currentText(), u"As delivered"_s);
}

void BenchTest::faults_are_switched() {
    TestBench bench;
    int noticed = 0;
    TestBenchWindow window(bench, [&] { ++noticed; });
    const auto click = [&](const QString& name) { window.findChild<QCheckBox*>(name)->click(); };
    const simulator::Faults& faults = bench.faults;
    for (const bool on : {true, false}) {
        for (const QString& name : {u"unplugged"_s, u"no_power"_s, u"no_trigger"_s, u"bytes_lost"_s,
                                    u"bytes_garbled"_s, u"block_short"_s}) {
            click(name);
        }
        QCOMPARE(noticed, on ? 6 : 12);
        QCOMPARE(faults.unplugged, on);
        QCOMPARE(faults.no_power, on);
        QCOMPARE(faults.no_trigger, on);
        QCOMPARE(faults.lose_every > 0, on);
        QCOMPARE(faults.flipped_bits != 0, on);
        QCOMPARE(faults.block_bytes.has_value(), on);
    }
}

void BenchTest::an_acknowledge_is_lost_or_wrong() {
    using simulator::AcknowledgeFault;
    TestBench bench;
    TestBenchWindow window(bench);
    auto* const lost = window.findChild<QCheckBox*>(u"acknowledge_lost"_s);
    auto* const wrong = window.findChild<QCheckBox*>(u"acknowledge_wrong"_s);
    lost->click();
    QCOMPARE(bench.faults.acknowledge, AcknowledgeFault::lost);
    wrong->click();
    QCOMPARE(bench.faults.acknowledge, AcknowledgeFault::wrong);
    QVERIFY(!lost->isChecked());
    lost->click();
    QCOMPARE(bench.faults.acknowledge, AcknowledgeFault::lost);
    QVERIFY(!wrong->isChecked());
    lost->click();
    QCOMPARE(bench.faults.acknowledge, AcknowledgeFault::none);
}

void BenchTest::leaves_the_controls_free_data() {
    QTest::addColumn<QRect>("room");
    QTest::addColumn<QRect>("main_window");
    QTest::addColumn<QPoint>("corner");
    // The window is 500x700 with its title bar; the controls take the right 540 of the main window.
    const QRect hd(0, 0, 1920, 1040);
    const QRect uhd(0, 0, 3840, 2120);
    QTest::newRow("room on the right") << uhd << QRect(1280, 600, 1280, 780) << QPoint(2568, 600);
    QTest::newRow("4K, far right") << uhd << QRect(2500, 600, 1280, 780) << QPoint(1992, 600);
    QTest::newRow("low on the screen") << uhd << QRect(1280, 1500, 1280, 600) << QPoint(2568, 1420);
    QTest::newRow("1920, on the left") << hd << QRect(0, 100, 1280, 780) << QPoint(1288, 100);
    // From here on over the plot, whose edge it leaves free as far as the screen allows.
    QTest::newRow("1920, in the middle") << hd << QRect(320, 130, 1280, 780) << QPoint(0, 130);
    QTest::newRow("1920, right of the middle")
        << hd << QRect(340, 130, 1280, 780) << QPoint(0, 130);
    QTest::newRow("1920, left of the middle") << hd << QRect(300, 130, 1280, 780) << QPoint(0, 130);
    QTest::newRow("all taken") << hd << hd << QPoint(0, 0);
    QTest::newRow("a panel on top")
        << QRect(0, 40, 1366, 728) << QRect(0, 40, 1366, 728) << QPoint(0, 40);
    QTest::newRow("too small a screen")
        << QRect(0, 0, 480, 600) << QRect(0, 0, 480, 600) << QPoint(0, 0);
}

void BenchTest::leaves_the_controls_free() {
    QFETCH(QRect, room);
    QFETCH(QRect, main_window);
    QFETCH(QPoint, corner);
    const QRect controls(QPoint(main_window.right() + 1 - 540, main_window.top()),
                         main_window.bottomRight());
    const QSize size(500, 700);
    QCOMPARE(place_beside(size, {.room = room, .main_window = main_window, .keep = controls}),
             corner);
}

void BenchTest::two_windows_stand_on_different_sides() {
    const QRect uhd(0, 0, 3840, 2120);
    const QSize size(500, 700);
    // The first one on the right, so the second on the left; or on the left, so below.
    QRect main(1280, 600, 1280, 780);
    QCOMPARE(
        place_beside(
            size,
            {.room = uhd, .main_window = main, .keep = main, .others = {{2568, 600, 500, 700}}}),
        QPoint(772, 600));
    main.moveLeft(2500);
    QCOMPARE(
        place_beside(
            size,
            {.room = uhd, .main_window = main, .keep = main, .others = {{1992, 600, 500, 700}}}),
        QPoint(2500, 1388));
}

void BenchTest::is_put_beside_a_window_title_bar_and_all() {
    const QRect screen = qApp->primaryScreen()->availableGeometry();
    QWidget main;
    main.setGeometry(screen.left() + 20, screen.top() + 60, 300, 200);
    main.show();
    QVERIFY(QTest::qWaitForWindowExposed(&main));
    QWidget keep(&main);
    keep.setGeometry(200, 0, 100, 200);
    class Sized : public QWidget {
    public:
        [[nodiscard]] QSize sizeHint() const override { return wanted; }
        QSize wanted = QSize(250, 150);
    } window;
    put_beside(window, main, keep);
    QCOMPARE(window.size(), QSize(250, 150));
    const int title = main.geometry().top() - main.frameGeometry().top();
    QCOMPARE(window.geometry().top(), main.frameGeometry().top() + (title > 0 ? title : 40));
    QVERIFY(window.geometry().left() >= main.frameGeometry().right() + 1 + 8);
    // One that is too large gets the screen, and its title bar is on that.
    window.wanted = QSize(5000, 5000);
    put_beside(window, main, keep);
    QVERIFY(screen.contains(window.geometry()));
    QVERIFY(window.geometry().top() > screen.top());
    QVERIFY(window.width() > screen.width() - 40 && window.height() > screen.height() - 60);
}

void BenchTest::waits_for_the_main_window_to_have_its_place() {
    QWidget window;
    int placed = 0;
    QPoint where;
    when_placed(window, [&] {
        ++placed;
        where = window.pos();
    });
    window.show();
    QTest::qWait(50);
    // As a window manager does that puts it into the middle.
    window.move(300, 130);
    QTRY_COMPARE(placed, 1);
    QCOMPARE(where, QPoint(300, 130));
    window.move(0, 0);
    QTest::qWait(400);
    QCOMPARE(placed, 1);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::BenchTest)
#include "test_bench_test.moc"
