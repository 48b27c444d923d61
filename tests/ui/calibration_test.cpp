// The calibration window on the simulated instrument.

#include <QAction>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>

#include "box_answers.h"
#include "cut_off.h"
#include "demo/test_bench_window.h"
#include "program_on_bench.h"
#include "simulator/test_connections.h"
#include "ui/look.h"

namespace kv408::ui {
namespace {

using simulator::TestConnection;

/// The program sweeping, on an instrument with the errors and the noise of delivery, its
/// calibration window open.
struct CalibrationOnBench : ProgramOnBench {
    CalibrationOnBench() {
        simulation.set_factory_state();
        simulation.bench().sampler_noise_codes = 1.0;
    }

    /// Chooses the entry in the menu, and waits until the sweep goes on.
    [[nodiscard]] bool open() {
        if (!run_until_sweeping()) {
            return false;
        }
        window().findChild<QAction*>(u"mnucalibration"_s)->trigger();
        if (form() == nullptr || !QTest::qWaitForWindowExposed(form())) {
            return false;
        }
        // The screen of the tests is smaller than this.
        form()->resize(form()->sizeHint());
        return QTest::qWaitFor([this] { return panel().textstatus.text() == "Running"; });
    }

    [[nodiscard]] QWidget* form() { return window().findChild<QWidget*>(u"frmcalibration"_s); }
    void press(const char* name) { QTest::mouseClick(widget(name), Qt::LeftButton); }
    [[nodiscard]] QString text(const char* name) { return widget<QLabel>(name)->text(); }

    /// Types `text` into box `index` in place of what stands there.
    void type(int index, const QString& text) {
        auto* const box = form()->findChild<QLineEdit*>(u"cald(%1)"_s.arg(index));
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }

    /// Waits for `count` blocks of samples.
    [[nodiscard]] bool wait_for_sweeps(int count) {
        const std::size_t from = log.frames.size();
        return QTest::qWaitFor([&] { return codes(from).count(32) >= count; }, 10000);
    }

    /// The eighth calibration to its end; time is skipped from one point to the next.
    void run_linearity() {
        press("cmdsetforlinearitycal");
        press("cmdcalint");
        for (int tick = 0; tick < 9000 && state() == "calibrationint"; ++tick) {
            clock.sleep(std::chrono::milliseconds(225));
            program.scope().tick();
        }
    }

    [[nodiscard]] QList<int> codes(std::size_t from) const {
        const auto all = ProgramOnBench::codes(from);
        return {all.begin(), all.end()};
    }
};

class CalibrationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_menu_opens_it_and_it_reads();
    void it_says_what_it_has_to_say();
    void every_widget_is_described();
    void nothing_is_cut_off_data();
    void nothing_is_cut_off();
    void everything_is_reached_with_larger_letters();
    void a_text_that_is_no_value_is_marked();
    void the_main_window_can_be_used_beside_it();
    void closed_it_opens_again_as_it_was();
    void the_main_window_takes_it_along();
    void the_whole_calibration_by_its_buttons();
    void the_linearity_run_is_shown_and_stopped();
    void software_offset_has_its_check_mark();
    void enter_is_no_where_a_calibration_would_be_lost();
};

void CalibrationTest::the_menu_opens_it_and_it_reads() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    QCOMPARE(on.form()->windowTitle(), u"Calibration"_s);
    QVERIFY(!on.form()->isModal());
    QCOMPARE(on.text("calstatus"), u"Read complete"_s);
    const QStringList values = {u"2033"_s,  u"2081"_s, u"2058"_s, u"2059"_s, u"10100"_s, u"9900"_s,
                                u"10050"_s, u"9950"_s, u"9950"_s, u"100"_s,  u"70"_s};
    for (int index = 0; index < 11; ++index) {
        QCOMPARE(on.form()->findChild<QLineEdit*>(u"cald(%1)"_s.arg(index))->text(),
                 values.at(index));
    }
    QCOMPARE(on.widget<QLineEdit>("cald61")->text(), u"408"_s);
    QCOMPARE(on.widget<QLineEdit>("cald62")->text(), u"16"_s);
    QVERIFY(on.widget<QLineEdit>("cald61")->isReadOnly());
    const auto* const bar = on.widget<QProgressBar>("ProgressBar1");
    QCOMPARE(bar->value(), bar->maximum());
}

void CalibrationTest::it_says_what_it_has_to_say() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    QStringList texts;
    for (const QLabel* const label : on.form()->findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    for (const QAbstractButton* const button : on.form()->findChildren<QAbstractButton*>()) {
        texts.append(button->text());
    }
    const QStringList expected = {u"Cal Data Range = 1800 - 2400"_s,
                                  u"Cal Data Range : 9000-11000"_s,
                                  u"Cal Data Range = 9000-11000"_s,
                                  u"@200mV/div"_s,
                                  u"@50mV/div"_s,
                                  u"Bridge offset@8ns"_s,
                                  u"Offset = -100ps +Cal Data"_s,
                                  u"ADC Delay"_s,
                                  u"Cal Data range 50-200 (nom=70)"_s,
                                  u"Hardware ID"_s,
                                  u"Firmware ID"_s,
                                  u"Linearity Calibration will take minimum 30 minutes!"_s,
                                  u"Error count"_s,
                                  u"Max Error(ps)"_s,
                                  u"Read Cal. from Kv408 flash memory"_s,
                                  u"Write Cal. to Kv408 flash memeory"_s,
                                  u"Set all to Default none calibrated values"_s,
                                  u"Set Cal"_s,
                                  u"Cal GH1"_s,
                                  u"Cal GH2"_s,
                                  u"Cal GL1"_s,
                                  u"Cal GL2"_s,
                                  u"Set for CalH"_s,
                                  u"Cal. OffsetH"_s,
                                  u"Set for CalL"_s,
                                  u"Cal. OffsetL"_s,
                                  u"Set for Cal GL"_s,
                                  u"Cal. time base scale"_s,
                                  u"Set for Linearity Calibration"_s,
                                  u"Cal. Time Base Linearity"_s};
    for (const QString& text : expected) {
        QVERIFY2(texts.contains(text), qPrintable(text));
    }
}

void CalibrationTest::every_widget_is_described() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    QStringList names;
    for (const QWidget* const widget : on.form()->findChildren<QWidget*>()) {
        if (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_"_s)) {
            continue;
        }
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!names.contains(widget->accessibleName()), qPrintable(widget->accessibleName()));
        names.append(widget->accessibleName());
    }
    // 11 + 2 boxes, 4 + 16 + 1 buttons, 4 texts, the bar.
    QCOMPARE(names.size(), 39);
}

void CalibrationTest::nothing_is_cut_off_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("calibration-dark") << true;
    QTest::newRow("calibration-light") << false;
}

void CalibrationTest::nothing_is_cut_off() {
    QFETCH(bool, dark);
    apply_look(dark ? Look::dark : Look::light);
    CalibrationOnBench on;
    QVERIFY(on.open());
    QVERIFY2(on.form()->width() <= 1280 && on.form()->height() <= 760,
             qPrintable(u"%1x%2"_s.arg(on.form()->width()).arg(on.form()->height())));
    save_picture(*on.form(), QString::fromLatin1(QTest::currentDataTag()));
    CalibrationForm& form = on.program.scope().calibration_form();
    form.calstatus.set_caption("Ready for CH1 AND CH2 offset calibration @200mV/div, Press  <Cal. "
                               "OffsetL>  after CH1 AND CH2 display is visible");
    form.calnote.set_caption(
        "Read back from the instrument: CH1 offset, low gain is 2000 and not "
        "2033; CH1 offset, high gain is 2000 and not 2081; ADC delay is 71 and "
        "not 70");
    form.calerorcnt.set_caption("8000");
    form.calerormax.set_caption("128");
    QCOMPARE(cut_off(*on.form()).join(u'\n'), QString());
    // The longest that is said while nothing can be written.
    for (int index = 0; index < 11; ++index) {
        on.type(index, u"-"_s);
    }
    form.calnote.set_caption(
        form.calnote.caption().substr(0, form.calnote.caption().find('\n')) +
        "\n10999999Hz measured in place of 10000000Hz. So large an error takes "
        "a second time: write, set up and calibrate again. The calibration was "
        "never read from the instrument: this comes from the values in use "
        "here. Read it first.");
    QTest::qWait(20);
    QCOMPARE(cut_off(*on.form()).join(u'\n'), QString());
    save_picture(*on.form(), QString::fromLatin1(QTest::currentDataTag()) + u"-long"_s);
}

// The letters half as large again, on a screen of 1366x768 with title bar and task bar.
void CalibrationTest::everything_is_reached_with_larger_letters() {
    apply_look(Look::dark);
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([usual] { QApplication::setFont(usual); });
    for (const int percent : {125, 150}) {
        QFont larger = usual;
        larger.setPointSizeF(usual.pointSizeF() * percent / 100.0);
        QApplication::setFont(larger);
        CalibrationOnBench on;
        QVERIFY(on.open());
        QWidget& form = *on.form();
        const QSize room(1366, 690);
        form.resize(form.sizeHint().boundedTo(room));
        QTest::qWait(20);
        QCOMPARE(form.size(), form.sizeHint().boundedTo(room));
        QCOMPARE(cut_off(form).join(u'\n'), QString());
        save_picture(form, u"calibration-text-%1"_s.arg(percent));
        int operated = 0;
        for (QWidget* const widget : form.findChildren<QWidget*>()) {
            if (widget->isVisible() && widget->isEnabled() &&
                (widget->focusPolicy() & Qt::TabFocus) != 0) {
                widget->setFocus(Qt::TabFocusReason);
                QVERIFY2(widget->visibleRegion().boundingRect() == widget->rect(),
                         qPrintable(described(*widget)));
                ++operated;
            }
        }
        // Eleven values, and the buttons of the manual's chapter that can be pressed at rest.
        QVERIFY2(operated >= 25, qPrintable(QString::number(operated)));
    }
}

void CalibrationTest::a_text_that_is_no_value_is_marked() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    const auto* const box = on.widget<QLineEdit>("cald(4)");
    const QColor usual = box->palette().color(QPalette::Base);
    on.type(4, u"10x"_s);
    QCOMPARE(box->palette().color(QPalette::Base), QColor(255, 192, 192));
    QCOMPARE(box->palette().color(QPalette::Text), QColor(Qt::black));
    QVERIFY(!on.widget("cmdwritecal")->isEnabled());
    QVERIFY(on.text("calnote").contains(u"CH1 gain, low gain"_s));
    on.type(4, u"10000"_s);
    QCOMPARE(box->palette().color(QPalette::Base), usual);
    QVERIFY(on.widget("cmdwritecal")->isEnabled());
    QCOMPARE(on.program.scope().parts().frmcalibration.record().edited()[4], 10000);
}

void CalibrationTest::the_main_window_can_be_used_beside_it() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
    QVERIFY(QTest::qWaitFor([&] { return on.panel().textstatus.text() == "Stopped"; }));
    QVERIFY(on.form()->isVisible());
}

void CalibrationTest::closed_it_opens_again_as_it_was() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    on.type(8, u"9990"_s);
    on.form()->close();
    QVERIFY(!on.form()->isVisible());
    QVERIFY(!on.program.scope().calibration_form().window.is_open());
    const std::size_t from = on.log.frames.size();
    on.window().findChild<QAction*>(u"mnucalibration"_s)->trigger();
    QVERIFY(on.form()->isVisible());
    QCOMPARE(on.widget<QLineEdit>("cald(8)")->text(), u"9990"_s);
    QCOMPARE(on.codes(from).count(33), 0);
}

void CalibrationTest::the_main_window_takes_it_along() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    on.window().close();
    QCOMPARE(on.closed, 1);
    QVERIFY(!on.form()->isVisible());
}

/// The corrections in the flash memory take the simulated errors away.
void expect_corrected(simulator::Simulation& simulation) {
    const auto& errors = simulation.bench().errors;
    const simulator::Flash& flash = simulation.flash();
    for (std::size_t place = 0; place < 4; ++place) {
        const auto index = static_cast<std::uint16_t>(place);
        const double gain = errors.gain.at(place / 2).at(place % 2) *
                            flash.record(static_cast<std::uint16_t>(4 + index)) / 10000.0;
        QVERIFY2(std::abs(gain - 1.0) < (place % 2 == 0 ? 0.003 : 0.006), QByteArray::number(gain));
        const double offset =
            errors.offset.at(place / 2).at(place % 2) + flash.record(index) - 2048.0;
        QVERIFY2(std::abs(offset) < 2.0, QByteArray::number(offset));
    }
    QVERIFY(std::abs(errors.time_scale * flash.record(8) / 10000.0 - 1.0) < 0.001);
}

void CalibrationTest::the_whole_calibration_by_its_buttons() {
    apply_look(Look::dark);
    CalibrationOnBench on;
    TestBenchWindow bench(on.simulation.bench());
    QVERIFY(on.open());
    BoxAnswers answers;
    struct Step {
        TestConnection connection;
        const char* set_up;
        const char* compute;
    };
    const QList<Step> steps = {
        {TestConnection::sine_200mv_ch1, "cmdsetforcalgainh", "cmdcalgain1h"},
        {TestConnection::sine_200mv_ch2, "cmdsetforcalgainh2", "cmdcalgain2h"},
        {TestConnection::sine_1v_ch1, "cmdsetforcalgainl", "cmdcalgain"},
        {TestConnection::sine_1v_ch2, "cmdsetforcalgainl2", "cmdcalg2l"},
        {TestConnection::inputs_open, "cmdsetforcalh", "cmdcaoffseth"},
        {TestConnection::inputs_open, "cmdsetforcall", "cmdcaoffsetl"},
        {TestConnection::sine_1v_ch1, "cmdsetforcalhscale", "cmdcaltb"}};
    auto* const list = bench.findChild<QComboBox*>(u"connection"_s);
    for (const Step& step : steps) {
        list->setCurrentIndex(static_cast<int>(step.connection));
        Q_EMIT list->activated(list->currentIndex());
        on.press(step.set_up);
        QVERIFY2(on.wait_for_sweeps(8), step.set_up);
        const qsizetype boxes = answers.texts.size();
        on.press(step.compute);
        QVERIFY2(answers.texts.size() == boxes, qPrintable(answers.texts.last()));
        QVERIFY2(on.text("calstatus").endsWith(u"Press  <Write Cal. to Kv408 flash memeory>"_s),
                 qPrintable(on.text("calstatus")));
        if (answers.texts.size() == 2) {
            save_picture(*on.form(), u"calibration-step"_s);
        }
        on.press("cmdwritecal");
        QCOMPARE(on.text("calstatus"), u"Write complete"_s);
    }
    QCOMPARE(answers.texts.size(), steps.size());
    on.run_linearity();
    QCOMPARE(on.text("calstatus"), u"Calibration Completed"_s);
    QCOMPARE(on.text("calerormax"), u"5"_s);
    expect_corrected(on.simulation);
}

void CalibrationTest::the_linearity_run_is_shown_and_stopped() {
    apply_look(Look::dark);
    CalibrationOnBench on;
    QVERIFY(on.open());
    BoxAnswers answers;
    on.press("cmdcalint");
    QCOMPARE(answers.texts,
             QStringList{u"Linearity Calibration will take minimum 30 minutes!\n\nStart now?"_s});
    QCOMPARE(QString::fromStdString(on.state()), u"calibrationint"_s);
    QVERIFY(QTest::qWaitFor(
        [&] { return on.text("calstatus") == u"Calibrating 2503 of 10500 points"_s; }, 10000));
    QCOMPARE(on.widget<QLineEdit>("textstatus")->text(), u"Calibrating 2503 of 10500 points"_s);
    QVERIFY(on.text("calnote").startsWith(u"Time left: about "_s));
    save_picture(*on.form(), u"calibration-linearity"_s);
    // The longest text that the main window's box has to hold.
    on.panel().textstatus.set_text("Calibrating 10499 of 10500 points");
    const auto* const box = on.widget<QLineEdit>("textstatus");
    QVERIFY(box->fontMetrics().horizontalAdvance(box->text()) + 8 <= box->width());
    save_picture(on.window(), u"main-window-linearity"_s);
    on.press("cmdcalstop");
    QVERIFY(QTest::qWaitFor([&] { return on.panel().textstatus.text() == "Stopped"; }));
}

void CalibrationTest::enter_is_no_where_a_calibration_would_be_lost() {
    CalibrationOnBench on;
    QVERIFY(on.open());
    int asked = 0;
    QTimer::singleShot(0, qApp, [&asked] {
        auto* const box = open_box();
        if (box == nullptr) {
            return;
        }
        ++asked;
        QTest::keyClick(box, Qt::Key_Return);
    });
    on.press("cmdsetalltodefault");
    QCOMPARE(asked, 1);
    QCOMPARE(on.widget<QLineEdit>("cald(4)")->text(), u"10100"_s);
    QCOMPARE(on.program.scope().parts().calibration[4], 10100);
}

void CalibrationTest::software_offset_has_its_check_mark() {
    CalibrationOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const item = on.window().findChild<QAction*>(u"cmdcaloofset"_s);
    QVERIFY(item->isCheckable());
    {
        BoxAnswers answers;
        answers.agree = {QMessageBox::Cancel};
        item->trigger();
        QVERIFY(!item->isChecked());
    }
    on.simulation.bench().samplers = {simulator::SamplerRoute::disconnected,
                                      simulator::SamplerRoute::disconnected};
    QVERIFY(on.wait_for_sweeps(4));
    BoxAnswers answers;
    item->trigger();
    QVERIFY(item->isChecked());
    QCOMPARE(answers.texts.size(), 1);
    item->trigger();
    QVERIFY(!item->isChecked());
    QCOMPARE(answers.texts.size(), 1);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::CalibrationTest)
#include "calibration_test.moc"
