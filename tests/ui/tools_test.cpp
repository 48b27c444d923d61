// References, statistics and maths, in the running window.

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include "export/statistics_table.h"
#include "program_on_bench.h"
#include "scope/tools.h"
#include "ui/box_answers.h"
#include "ui/colours.h"
#include "ui/picture_folder.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The running program with its tools.
struct WithTools : ProgramOnBench {
    /// Chooses the menu entry named `name`.
    void choose(const char* name) {
        auto* const action = window().findChild<QAction*>(QString::fromLatin1(name));
        QVERIFY(action != nullptr && action->isEnabled());
        action->trigger();
    }

    void press(Qt::Key key) { QTest::keyClick(&window(), key, Qt::ControlModifier); }

    /// What the plot shows beside reference `place`.
    [[nodiscard]] QCheckBox& plate(int place) {
        return *window().findChild<QCheckBox*>(u"mnuReferenceShow(%1)"_s.arg(place));
    }

    /// Whether any pixel of the plot has the colour of reference `place`.
    [[nodiscard]] bool is_drawn(int place) {
        const Pixel colour = pixel_of(*program.scope()
                                           .tools()
                                           .references()
                                           .controls(static_cast<std::size_t>(place))
                                           .lblReference.fore_colour());
        const auto pixels = program.scope().picture().surface().pixels();
        return std::find(pixels.begin(), pixels.end(), colour) != pixels.end();
    }

    /// Switches both live traces off.
    void leave_references_alone() {
        program.scope().act([this] {
            panel().channel[0].enable.set_checked(false);
            panel().channel[1].enable.set_checked(false);
        });
    }

    [[nodiscard]] StatisticsDialog& statistics() { return program.scope().tools().statistics(); }

    /// Opens the statistics window and waits for the first values.
    [[nodiscard]] bool open_statistics() {
        choose("mnustatistics");
        return widget("frmStatistics")->isVisible() &&
               QTest::qWaitFor([this] { return statistics().statistics().sweeps() > 2; });
    }
};

class ToolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void references_are_kept_and_shown_by_one_click_or_key();
    void references_move_with_the_panel();
    void statistics_are_shown_chosen_and_copied();
    void a_limit_marks_its_value_and_stops_the_sweep();
    void statistics_are_reached_and_left_by_the_keyboard();
    void a_log_that_has_ended_or_could_not_begin_can_be_begun();
    void maths_is_chosen_by_keys_and_stays_when_its_window_is_closed_data();
    void maths_is_chosen_by_keys_and_stays_when_its_window_is_closed();
};

void ToolsTest::references_are_kept_and_shown_by_one_click_or_key() {
    WithTools on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(!on.plate(0).isVisible());
    on.choose("mnuReferenceKeepCH1(0)");
    on.choose("mnuReferenceKeepCH2(3)");
    on.leave_references_alone();
    QVERIFY(on.plate(0).isVisible() && on.plate(3).isVisible() && !on.plate(1).isVisible());
    QVERIFY(on.plate(0).text().startsWith(u"R1 CH1 sweep "_s));
    QVERIFY(on.plate(0).text().endsWith(u"   0.1V/div   20ns/div"_s));
    // They lie at the right, within the plot.
    const QWidget& plot = on.window().plot();
    QVERIFY(plot.rect().contains(QRect(on.plate(3).mapTo(&plot, QPoint()), on.plate(3).size())));
    QVERIFY(on.plate(0).mapTo(&plot, QPoint()).x() > plot.width() / 3);
    QVERIFY(on.is_drawn(0) && on.is_drawn(3));
    QTest::mouseClick(&on.plate(0), Qt::LeftButton, {}, QPoint(12, on.plate(0).height() / 2));
    QVERIFY(!on.is_drawn(0) && on.is_drawn(3));
    on.press(Qt::Key_4);
    QVERIFY(!on.is_drawn(3) && !on.plate(3).isChecked());
    on.press(Qt::Key_1);
    QVERIFY(on.is_drawn(0) && on.plate(0).isChecked());
    on.choose("mnuReferenceClear(0)");
    QVERIFY(!on.is_drawn(0) && !on.plate(0).isVisible());
    on.press(Qt::Key_1); // nothing is there
    QVERIFY(!on.is_drawn(0));
}

void ToolsTest::references_move_with_the_panel() {
    WithTools on;
    QVERIFY(on.run_until_sweeping());
    on.choose("mnuReferenceKeepCH1(1)");
    on.leave_references_alone();
    const auto highest = [&on] {
        const Surface& picture = on.program.scope().picture().at_natural_size();
        const Pixel colour = pixel_of(
            *on.program.scope().tools().references().controls(1).lblReference.fore_colour());
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.at(x, y) == colour) {
                    return y;
                }
            }
        }
        return -1;
    };
    // The sine of 200 mV above 0 V: two divisions at 0.1V, one at 0.2V.
    QVERIFY(std::abs(highest() - (256 - 128)) <= 2);
    auto* const list = on.widget<QComboBox>("ch1vdiv");
    QTest::keyClick(list, Qt::Key_Up);
    QCOMPARE(list->currentText(), u"0.2V"_s);
    QTRY_VERIFY(std::abs(highest() - (256 - 64)) <= 1);
}

void ToolsTest::statistics_are_shown_chosen_and_copied() {
    WithTools on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(on.open_statistics());
    auto* const grid = on.widget<QTableWidget>("grdStatistics");
    QCOMPARE(grid->rowCount(), 28);
    QCOMPARE(grid->item(16, 0)->text(), u"CH2 Vpp"_s);
    // Without noise every sweep is alike: 400 mV from crest to crest on CH1.
    QTRY_VERIFY(!grid->item(2, 2)->text().isEmpty());
    QVERIFY(std::abs(grid->item(2, 2)->text().section(u'm', 0, 0).toDouble() - 400.0) < 8.0);
    // A click chooses; lists and limits follow.
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualItemRect(grid->item(2, 0)).center());
    QCOMPARE(on.widget<QComboBox>("cmbStatisticsValue")->currentText(), u"Vpp"_s);
    QCOMPARE(on.statistics().chosen_row(), 2U);
    on.program.scope().act([&] { on.panel().cmdstop.click(); });
    QTest::mouseClick(on.widget("cmdStatisticsCopy"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             QString::fromStdString(statistics_table(on.statistics().statistics())));
    QTest::mouseClick(on.widget("cmdStatisticsReset"), Qt::LeftButton);
    QCOMPARE(grid->item(2, 2)->text(), QString());
    auto* const state = on.widget<QLabel>("lblStatisticsState");
    QVERIFY(state->text().startsWith(u"0 sweeps since "_s));
    // A long text gets its lines, and gives them back.
    const int one_line = state->height();
    Label& text = on.statistics().controls().lblStatisticsState;
    text.set_caption(state->text().repeated(20).toStdString());
    QTRY_VERIFY(state->height() > one_line);
    QCOMPARE(state->height(), state->heightForWidth(state->width()));
    text.set_caption("0 sweeps");
    QTRY_COMPARE(state->height(), one_line);
}

void ToolsTest::a_limit_marks_its_value_and_stops_the_sweep() {
    WithTools on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(on.open_statistics());
    auto* const action = on.widget<QComboBox>("cmbStatisticsAction");
    action->setFocus();
    QTest::keyClicks(action, u"St"_s);
    QCOMPARE(action->currentText(), u"Stop"_s);
    auto* const high = on.widget<QLineEdit>("txtStatisticsHigh");
    high->setFocus();
    QTest::keyClicks(high, u"150mV"_s); // VMax of CH1 is 200 mV
    QTRY_COMPARE(on.state(), std::string("stoped"));
    auto* const grid = on.widget<QTableWidget>("grdStatistics");
    QTRY_COMPARE(grid->item(0, 7)->text(), u"1"_s);
    QCOMPARE(grid->item(0, 1)->background().color(), qcolor(limit_colours[0].colour));
    QCOMPARE(grid->item(1, 1)->background().style(), Qt::NoBrush);
}

void ToolsTest::statistics_are_reached_and_left_by_the_keyboard() {
    WithTools on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(on.open_statistics());
    QWidget& window = *on.widget("frmStatistics");
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    on.widget("grdStatistics")->setFocus();
    QStringList reached;
    for (int press = 0; press < 20; ++press) {
        reached.append(window.focusWidget()->objectName());
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    for (const char* const name :
         {"grdStatistics", "cmbStatisticsChannel", "cmbStatisticsValue", "txtStatisticsLow",
          "txtStatisticsHigh", "cmbStatisticsColour", "cmbStatisticsAction", "cmdStatisticsReset",
          "cmdStatisticsCopy", "cmdStatisticsLog", "cmdStatisticsClose"}) {
        QVERIFY2(reached.contains(QString::fromLatin1(name)), name);
        QVERIFY2(!on.widget(name)->accessibleName().isEmpty(), name);
        QVERIFY2(!on.widget(name)->toolTip().isEmpty(), name);
    }
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
    QVERIFY(!on.statistics().is_open());
}

void ToolsTest::a_log_that_has_ended_or_could_not_begin_can_be_begun() {
    constexpr int patience = 60'000; // the computer may have much else to do
    WithTools on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(on.open_statistics());
    auto* const button = on.widget<QPushButton>("cmdStatisticsLog");
    const auto begin = [&on] {
        on.program.scope().act([&on] { on.statistics().begin_log("/nowhere/log.csv"); });
    };
    const auto can_begin = [button] {
        return button->isEnabled() && button->text().remove(u'&') == u"Log..."_s;
    };
    BoxAnswers answers;
    on.files.refusal = "No space left on device";
    begin();
    QTRY_COMPARE_WITH_TIMEOUT(answers.texts.size(), 1, patience);
    QVERIFY(can_begin());
    on.files.refusal.clear();
    begin(); // in memory; the first line finds no file on the disk
    QTRY_COMPARE_WITH_TIMEOUT(answers.texts.size(), 2, patience);
    QTRY_VERIFY_WITH_TIMEOUT(can_begin(), patience);
    QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(on.state(), std::string(state_word::stopped), patience);
    begin();
    QCOMPARE(button->text().remove(u'&'), u"Stop Log"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!button->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(can_begin(), patience);
    QCOMPARE(answers.texts.size(), 2);
}

void ToolsTest::maths_is_chosen_by_keys_and_stays_when_its_window_is_closed_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("small screen") << QSize(1280, 800);
    QTest::newRow("large screen") << QSize(1920, 1080);
}

void ToolsTest::maths_is_chosen_by_keys_and_stays_when_its_window_is_closed() {
    QFETCH(QSize, size);
    WithTools on;
    on.window().resize(size);
    QVERIFY(on.run_until_sweeping());
    auto* const plate = on.widget<QLabel>("lblMaths(0)");
    QVERIFY(!plate->isVisible());
    on.choose("mnumaths");
    QWidget* const window = on.widget("frmMaths");
    QVERIFY(window->isVisible());
    QVERIFY2(window->height() <= 740 && window->width() <= 700,
             "beside the plot on a small screen");
    auto* const function = on.widget<QComboBox>("cmbMathsFunction(0)");
    QTRY_COMPARE(QApplication::activeWindow(), window);
    QTest::keyClick(window, Qt::Key_F, Qt::AltModifier);
    QCOMPARE(QApplication::focusWidget(), function);
    QTest::keyClick(function, Qt::Key_Down);
    QTest::keyClick(function, Qt::Key_Down);
    QCOMPARE(function->currentText(), u"A - B"_s);
    QTRY_COMPARE(plate->text(), u"MATH1 CH1 - CH2   100mV/div"_s);
    const QWidget& plot = on.window().plot();
    QVERIFY(plot.rect().contains(QRect(plate->mapTo(&plot, QPoint()), plate->size())));
    auto* const second = on.widget<QComboBox>("cmbMathsFunction(1)");
    second->setFocus();
    QTest::keyClick(second, Qt::Key_End); // the envelope
    QTRY_VERIFY(on.widget<QLabel>("lblMathsState(1)")->text().startsWith(u"Envelope of CH1, "_s));
    // Sine and rectangle without noise: 400 mV and 300 mV from crest to crest.
    QTRY_VERIFY(on.widget<QLabel>("lblMathsValues(1)")->text().contains(u"400"_s));
    for (const char* const name :
         {"lblMathsState(0)", "lblMathsRemark(0)", "lblMathsState(1)", "lblMathsRemark(1)"}) {
        const auto* const told = on.widget<QLabel>(name);
        QVERIFY2(told->heightForWidth(told->width()) <= told->height(), name); // wholly seen
    }
    QVERIFY(window->grab().save(picture_folder() +
                                u"/screenshot-maths-window-%1.png"_s.arg(size.width())));
    QVERIFY(on.window().grab().save(picture_folder() +
                                    u"/screenshot-maths-%1.png"_s.arg(size.width())));
    QTest::mouseClick(on.widget<QPushButton>("cmdMathsCopy"), Qt::LeftButton);
    QVERIFY(QApplication::clipboard()->text().startsWith(
        u"Measurement\tMATH1 CH1 - CH2\tUnit\tMATH2 Envelope of CH1\tUnit\nVMax\t"_s));
    QTest::keyClick(window, Qt::Key_Escape);
    QVERIFY(!window->isVisible());
    QVERIFY(plate->isVisible());
    on.choose("mnuReferenceKeepMATH1(0)");
    QVERIFY(on.plate(0).text().startsWith(u"R1 CH1 - CH2 sweep "_s));
    on.choose("mnumaths");
    QTest::keyClick(function, Qt::Key_Home);
    QTRY_VERIFY(!plate->isVisible());
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ToolsTest)
#include "tools_test.moc"
