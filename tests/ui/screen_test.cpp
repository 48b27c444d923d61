// Trigger, delays, tabs and read-outs in the whole window.

#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTabBar>
#include <QTest>

#include "display/box_geometry.h"
#include "program_on_bench.h"
#include "state/plot_geometry.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QStringList captions(const QTabBar& tabs) {
    QStringList captions;
    for (int index = 0; index < tabs.count(); ++index) {
        captions.append(tabs.tabText(index));
    }
    return captions;
}

void click_tab(QTabBar& tabs, int index) {
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(index).center());
}

/// Types `text` over what is in the box.
void type_over(QLineEdit& box, const QString& text) {
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, text);
}

/// Chooses the entry `text` of `list` with the arrow keys.
void choose(QComboBox& list, const QString& text) {
    const int wanted = list.findText(text);
    while (list.currentIndex() != wanted) {
        QTest::keyClick(&list, list.currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
    }
}

class ScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tabs_come_and_go();
    void a_level_above_the_signal_waits();
    void the_edge_turns_the_picture_over();
    void each_source_keeps_its_level_and_hysteresis();
    void hysteresis_moves_that_wait_are_one();
    void a_time_out_goes_with_the_next_set_up();
    void a_typed_delay_is_held_in_range();
    void the_additional_delay_moves_the_trigger_time();
    void read_outs_lie_in_the_plots_corner_data();
    void read_outs_lie_in_the_plots_corner();
    void the_cursor_channel_changes_the_read_outs();
    void cursor_lines_bear_their_numbers();
    void the_trigger_level_has_its_unit_once_in_its_tip();
    void the_hysteresis_shows_its_number();
};

void ScreenTest::tabs_come_and_go() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto& adjust = *on.widget<QTabBar>("TabStrip2");
    auto& type = *on.widget<QTabBar>("TabStrip3");
    auto& time = *on.widget<QComboBox>("seltimediv");
    const QStringList few = {u"CH1"_s, u"CH2"_s, u"Trigger"_s};
    const QStringList cursors = {u"Cursor 1"_s, u"Cursor 2"_s};
    const QStringList delay = {u"Hor. Position"_s};
    QCOMPARE(captions(adjust), few + delay);
    click_tab(type, 0);
    QCOMPARE(captions(adjust), few + delay + cursors);
    QCOMPARE(adjust.currentIndex(), 4);
    click_tab(type, 1);
    QCOMPARE(captions(adjust), few + delay + cursors);
    click_tab(adjust, 3);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string("HPOS"));
    // Too slow a time base for delays: the tab goes, and what it had selected with it.
    choose(time, u"500ns/div"_s);
    QCOMPARE(captions(adjust), few + cursors);
    QCOMPARE(adjust.currentIndex(), 0);
    QVERIFY(!on.widget("psofsetch1")->isEnabled());
    choose(time, u"100ns/div"_s);
    QCOMPARE(captions(adjust), few + cursors + delay);
    QVERIFY(on.widget("psofsetch1")->isEnabled());
    click_tab(adjust, 4);
    click_tab(type, 2);
    QCOMPARE(captions(adjust), few + delay);
    QCOMPARE(adjust.currentIndex(), 0);
    QVERIFY(!on.widget("centerfr")->isVisible());
}

void ScreenTest::a_level_above_the_signal_waits() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const status = on.widget<QLineEdit>("textstatus");
    click_tab(*on.widget<QTabBar>("TabStrip2"), 2);
    // The signal reaches 200 mV.
    QTest::keyClick(on.widget("Slider1"), Qt::Key_End);
    QCOMPARE(on.widget<QLabel>("trlevelmv")->text(), u" 2048mV"_s);
    QTRY_COMPARE(status->text(), u"Waiting For TRIGGER"_s);
    QTest::mouseClick(on.widget("trzero"), Qt::LeftButton);
    QTRY_COMPARE(on.widget<QLabel>("trlevelmv")->text(), u" 0mV"_s);
    QTRY_COMPARE(status->text(), u"Running"_s);
}

void ScreenTest::the_edge_turns_the_picture_over() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const auto& sample = on.program.scope().parts().samples[0];
    const auto shown = [&] {
        QTest::qWait(50);
        return std::vector<double>(sample.mv.begin() + plot::first_point,
                                   sample.mv.begin() + plot::last_point);
    };
    const std::vector<double> rising = shown();
    QVERIFY(*std::max_element(rising.begin(), rising.end()) > 190.0);
    const std::size_t from = on.log.frames.size();
    QTest::keyClick(on.widget("trigeredge"), Qt::Key_Down);
    QCOMPARE(on.widget<QComboBox>("trigeredge")->currentText(), u"Negative"_s);
    QTRY_COMPARE(static_cast<int>(on.first(8, from).arguments[2]), 2);
    const auto& ready = on.program.scope().parts().acquisition.ready;
    QTRY_VERIFY(ready[0] && ready[1] && on.panel().textstatus.text() == "Running");
    // A sine without offset from its falling zero on is the one from its rising zero, negated.
    QTRY_VERIFY(std::abs(sample.mv[100] + rising[100 - plot::first_point]) < 12.0);
    const std::vector<double> falling = shown();
    for (std::size_t index = 0; index < rising.size(); ++index) {
        QVERIFY(std::abs(rising[index] + falling[index]) < 12.0);
    }
}

void ScreenTest::each_source_keeps_its_level_and_hysteresis() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto& source = *on.widget<QComboBox>("trigsource");
    auto& hysteresis = *on.widget<QSlider>("shyst");
    click_tab(*on.widget<QTabBar>("TabStrip2"), 2);
    QTest::keyClick(on.widget("Slider1"), Qt::Key_PageUp);
    for (int step = 0; step < 5; ++step) {
        QTest::keyClick(&hysteresis, Qt::Key_Right);
    }
    const std::size_t from = on.log.frames.size();
    choose(source, u"TRIG2"_s);
    QCOMPARE(on.widget<QLabel>("trlevelmv")->text(), u" 0mV"_s);
    QCOMPARE(hysteresis.value(), 10);
    const simulator::Command second = on.first(8, from);
    QCOMPARE(static_cast<int>(simulator::word_argument(second, 0)), 2048);
    QCOMPARE(static_cast<int>(second.arguments[2]), 21);
    QCOMPARE(static_cast<int>(second.arguments[3]), 255);
    QCOMPARE(static_cast<int>(second.arguments[4]), 10);
    const std::size_t back = on.log.frames.size();
    choose(source, u"TRIG1"_s);
    QCOMPARE(on.widget<QLabel>("trlevelmv")->text(), u" 40mV"_s);
    QCOMPARE(hysteresis.value(), 15);
    const simulator::Command first = on.first(8, back);
    QCOMPARE(static_cast<int>(simulator::word_argument(first, 0)), 2048 + 40);
    QCOMPARE(static_cast<int>(first.arguments[2]), 1);
    QCOMPARE(static_cast<int>(first.arguments[3]), 15);
}

// Each move that reaches the program waits a tenth of a second and more for the reply on its way.
void ScreenTest::hysteresis_moves_that_wait_are_one() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QWidget& hysteresis = *on.widget("shyst");
    constexpr int moves = 20;
    for (int move = 0; move < moves; ++move) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QCoreApplication::postEvent(&hysteresis, new QKeyEvent(type, Qt::Key_Right, {}));
        }
    }
    const std::size_t from = on.log.frames.size();
    const auto before = on.clock.now();
    QTRY_COMPARE(on.panel().shyst.value(), 10 + moves);
    QVERIFY(on.clock.now() - before < std::chrono::seconds(1));
    QTRY_COMPARE(static_cast<int>(on.first(8, from).arguments[3]), 10 + moves);
}

void ScreenTest::a_time_out_goes_with_the_next_set_up() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto& box = *on.widget<QLineEdit>("trtout");
    const QColor ground = box.palette().color(QPalette::Base);
    type_over(box, u"5x"_s);
    QVERIFY(box.palette().color(QPalette::Base) != ground);
    type_over(box, u"5ms"_s);
    QCOMPARE(box.palette().color(QPalette::Base), ground);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.text(), u"5000"_s);
    const std::size_t from = on.log.frames.size();
    QTest::keyClick(on.widget("trigeredge"), Qt::Key_Down);
    QTRY_COMPARE(static_cast<int>(simulator::word_argument(on.first(27, from), 0)), 5000);
}

void ScreenTest::a_typed_delay_is_held_in_range() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto& box = *on.widget<QLineEdit>("psofsetch2");
    type_over(box, u"1500"_s);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string("HPOS"));
    std::size_t from = on.log.frames.size();
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(on.widget<QLabel>("lblHorDelay2")->text(), u"Delay:  1500ps"_s);
    QTRY_COMPARE(simulator::long_argument(on.first(35, from)), 1500);
    QCOMPARE(simulator::long_argument(on.first(30, from)), 0);
    type_over(box, u"70ns"_s);
    from = on.log.frames.size();
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.text(), u"65535"_s);
    QTRY_COMPARE(simulator::long_argument(on.first(35, from)), 65535);
}

void ScreenTest::the_additional_delay_moves_the_trigger_time() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QWidget& marker = *on.widget("ltp2");
    QVERIFY(marker.isVisible());
    QCOMPARE(on.panel().ltp2.marked().value(), 0);
    // 20ns/div are 312.5 ps per column.
    type_over(*on.widget<QLineEdit>("delaytrttdis"), u"-31250"_s);
    const QRect place = marker.geometry();
    on.widget("seltimediv")->setFocus();
    QCOMPARE(on.panel().ltp2.marked().value(), 100);
    QVERIFY(marker.geometry().left() > place.left());
}

void ScreenTest::read_outs_lie_in_the_plots_corner_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(1280, 800);
    QTest::newRow("large") << QSize(2560, 1440);
}

void ScreenTest::read_outs_lie_in_the_plots_corner() {
    QFETCH(QSize, size);
    ProgramOnBench on;
    on.window().resize(size);
    QVERIFY(on.run_until_sweeping());
    click_tab(*on.widget<QTabBar>("TabStrip3"), 0);
    PlotWidget& shown_plot = on.window().plot();
    const QRectF corner(
        shown_plot.place_of(box::left, box::top),
        shown_plot.place_of(box::left + plot::centre_x, box::top + 2 * plot::division));
    for (const char* const name : {"centerfr", "lblC1", "lblC2"}) {
        auto* const label = on.widget<QLabel>(name);
        QVERIFY2(label->isVisible(), name);
        const QRect place(label->mapTo(&shown_plot, QPoint(0, 0)), label->size());
        QVERIFY2(corner.toAlignedRect().contains(place), name);
        QVERIFY2(label->width() >= label->sizeHint().width(), name);
    }
    QCOMPARE(on.widget<QLabel>("centerfr")->text(), u"Delta Cursor : 200mV"_s);
    QCOMPARE(on.widget<QLabel>("lblC1")->text(), u"C1: 100mV"_s);
    QCOMPARE(on.widget<QLabel>("lblC2")->text(), u"C2: -100mV"_s);
    click_tab(*on.widget<QTabBar>("TabStrip3"), 1);
    QCOMPARE(on.widget<QLabel>("centerfr")->text(), u"Delta Cursor: 80.0ns"_s);
}

void ScreenTest::the_cursor_channel_changes_the_read_outs() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    choose(*on.widget<QComboBox>("ch2vdiv"), u"50mV"_s);
    click_tab(*on.widget<QTabBar>("TabStrip3"), 0);
    QCOMPARE(on.widget<QLabel>("centerfr")->text(), u"Delta Cursor : 200mV"_s);
    choose(*on.widget<QComboBox>("combocursorselect"), u"CH2"_s);
    QCOMPARE(on.widget<QLabel>("centerfr")->text(), u"Delta Cursor : 100mV"_s);
}

void ScreenTest::cursor_lines_bear_their_numbers() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const std::array numbers = {on.widget<QLabel>("cursorNumber1"),
                                on.widget<QLabel>("cursorNumber2")};
    const PlotWidget& plot_box = on.window().plot();
    auto& type = *on.widget<QTabBar>("TabStrip3");
    // Over the picture they would hide what is measured.
    const QRect picture =
        QRectF(plot_box.place_of(box::left, box::top),
               plot_box.place_of(box::left + plot::width, box::top + plot::height))
            .toRect();
    const auto lie_apart = [&] {
        return !numbers[0]->geometry().intersects(picture) &&
               !numbers[1]->geometry().intersects(picture) &&
               !numbers[0]->geometry().intersects(numbers[1]->geometry()) &&
               plot_box.rect().contains(numbers[0]->geometry()) &&
               plot_box.rect().contains(numbers[1]->geometry());
    };
    QVERIFY(!numbers[0]->isVisible() && !numbers[1]->isVisible());
    click_tab(type, 0);
    const std::array rows = {192, 320};
    for (const std::size_t index : {0U, 1U}) {
        QVERIFY(numbers.at(index)->isVisible());
        QCOMPARE(numbers.at(index)->text(), QString::number(index + 1));
        const double row = plot_box.place_of(0, box::top + rows.at(index) + 0.5).y();
        QVERIFY(std::abs(numbers.at(index)->geometry().center().y() - row) <= 1.0);
    }
    QVERIFY(lie_apart());
    // A step of the arrow keys is four steps of the wheel: two rows.
    QTest::keyClick(on.widget("Slider1"), Qt::Key_Right);
    const double moved =
        plot_box.place_of(0, box::top + on.program.scope().parts().cursor_state.vpos[0] + 0.5).y();
    QVERIFY(on.program.scope().parts().cursor_state.vpos[0] != rows[0]);
    QVERIFY(std::abs(numbers[0]->geometry().center().y() - moved) <= 1.0);
    click_tab(type, 1);
    const std::array columns = {192, 448};
    for (const std::size_t index : {0U, 1U}) {
        const double column = plot_box.place_of(box::left + columns.at(index), 0).x();
        QVERIFY(std::abs(numbers.at(index)->geometry().center().x() - column) <= 6.0);
    }
    QVERIFY(lie_apart());
    click_tab(type, 2);
    QVERIFY(!numbers[0]->isVisible() && !numbers[1]->isVisible());
}

void ScreenTest::the_trigger_level_has_its_unit_once_in_its_tip() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const level = on.widget<QLabel>("trlevelmv");
    const auto tip = [level] {
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), level->mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(level, &event);
        return level->toolTip();
    };
    QCOMPARE(tip(), u"Trigger level: 0 mV"_s);
    on.panel().trlevelmv.set_caption("-80mV");
    QCOMPARE(tip(), u"Trigger level: -80 mV"_s);
}

void ScreenTest::the_hysteresis_shows_its_number() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const slider = on.widget<QSlider>("shyst");
    const auto shows = [&](const QString& number) {
        for (const QLabel* const label : slider->parentWidget()->findChildren<QLabel*>()) {
            if (label->buddy() == slider && label->text() == number && label->isVisible()) {
                return true;
            }
        }
        return false;
    };
    QVERIFY(shows(u"10"_s));
    slider->setValue(37);
    QVERIFY(shows(u"37"_s));
    // Choosing the other source brings back its own, from the program.
    choose(*on.widget<QComboBox>("trigsource"), u"TRIG2"_s);
    QVERIFY(shows(u"10"_s));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ScreenTest)
#include "screen_test.moc"
