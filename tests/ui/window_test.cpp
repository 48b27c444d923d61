// The main window on a simulated instrument.

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "acquisition/status.h"
#include "program_on_bench.h"
#include "ui/colours.h"
#include "ui/look.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// What cannot be used: it has no function yet, or, as the list of one instrument, nothing to
/// choose.
const QStringList idle = {u"cmbDevice"_s};

class WindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void has_the_given_title_and_menus();
    void every_control_has_a_described_widget();
    void a_read_out_is_told_with_its_text();
    void no_two_mnemonics_are_alike();
    void only_what_works_is_enabled();
    void stop_and_start_reach_the_program();
    void time_base_is_chosen_by_keyboard();
    void time_base_is_chosen_by_mouse();
    void setting_from_code_runs_the_handler_once();
    void check_boxes_change_the_picture();
    void disabling_a_channel_hides_its_marker();
    void status_is_readable_on_every_colour();
    void exit_closes_the_window();
    void closing_the_window_ends_the_program();
    void closing_in_the_middle_of_a_pass_unwinds();
};

void WindowTest::has_the_given_title_and_menus() {
    ProgramOnBench on;
    QCOMPARE(on.window().windowTitle(), u"Kv408 - Tarvo  V1.6"_s);
    QStringList titles;
    for (const QAction* const action : on.window().menuBar()->actions()) {
        titles.append(action->text().remove(u'&'));
    }
    QCOMPARE(titles, (QStringList{u"Load Setup"_s, u"Save Setup"_s, u"Calibration"_s, u"Options"_s,
                                  u"Tools"_s, u"Help"_s}));
}

void WindowTest::every_control_has_a_described_widget() {
    ProgramOnBench on;
    for (const Control* const control : on.panel().all) {
        const QString name = QString::fromStdString(control->name());
        const auto widgets = on.window().findChildren<QWidget*>(name);
        const auto actions = on.window().findChildren<QAction*>(name);
        QVERIFY2(widgets.size() + actions.size() == 1, qPrintable(name));
        QVERIFY2(actions.isEmpty() ? !widgets.front()->accessibleName().isEmpty() &&
                                         !widgets.front()->toolTip().isEmpty()
                                   : !actions.front()->toolTip().isEmpty(),
                 qPrintable(name));
    }
    QVERIFY(on.window().findChild<QTimer*>(u"Timer1"_s) != nullptr);
}

void WindowTest::a_read_out_is_told_with_its_text() {
    ProgramOnBench on;
    const auto told = [&on](const char* name) {
        return QAccessible::queryAccessibleInterface(on.widget(name))->text(QAccessible::Name);
    };
    on.panel().trlevelmv.set_caption("-5mV");
    QCOMPARE(told("trlevelmv"), u"Trigger level: -5mV"_s);
    on.panel().trlevelmv.set_caption("");
    QCOMPARE(told("trlevelmv"), u"Trigger level"_s);
}

void WindowTest::no_two_mnemonics_are_alike() {
    ProgramOnBench on;
    QStringList texts;
    for (const QAction* const action : on.window().menuBar()->actions()) {
        texts.append(action->text());
    }
    for (const QLabel* const label : on.window().findChildren<QLabel*>()) {
        texts.append(label->buddy() != nullptr ? label->text() : QString());
    }
    for (const QAbstractButton* const button : on.window().findChildren<QAbstractButton*>()) {
        texts.append(button->text());
    }
    QStringList mnemonics;
    for (const QString& text : texts) {
        if (const QKeySequence keys = QKeySequence::mnemonic(text); !keys.isEmpty()) {
            QVERIFY2(!mnemonics.contains(keys.toString()), qPrintable(text));
            mnemonics.append(keys.toString());
        }
    }
    QVERIFY(mnemonics.size() >= 15);
}

void WindowTest::only_what_works_is_enabled() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    for (const Control* const control : on.panel().all) {
        const QString name = QString::fromStdString(control->name());
        if (const auto* const action = on.window().findChild<QAction*>(name)) {
            QVERIFY2(action->isEnabled(), qPrintable(name));
        } else if (control->about().outside != Outside::read) {
            QVERIFY2(on.widget(control->name().c_str())->isEnabled() != idle.contains(name),
                     qPrintable(name));
        }
    }
    for (const char* const shown : {"ch1text", "ch2text", "trigertext", "ltp2"}) {
        QVERIFY2(on.widget(shown)->isVisible(), shown);
    }
    for (const char* const hidden : {"centerfr", "lblC1", "lblC2"}) {
        QVERIFY2(!on.widget(hidden)->isVisible(), hidden);
    }
}

void WindowTest::stop_and_start_reach_the_program() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
    QCOMPARE(on.state(), std::string("stoped"));
    QTRY_COMPARE(on.widget<QLineEdit>("textstatus")->text(), u"Stopped"_s);
    QTest::mouseClick(on.widget("cmdstartsweep"), Qt::LeftButton);
    QCOMPARE(on.state(), std::string("startscope"));
    QTRY_COMPARE(on.widget<QLineEdit>("textstatus")->text(), u"Running"_s);
}

void WindowTest::time_base_is_chosen_by_keyboard() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("seltimediv");
    QCOMPARE(list->currentText(), u"20ns/div"_s);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(on.panel().seltimediv.text(), std::string("10ns/div"));
    QCOMPARE(on.state(), std::string("changes"));
    QCOMPARE(on.widget<QLabel>("tdivtext")->text(), u"10ns/div"_s);
}

void WindowTest::time_base_is_chosen_by_mouse() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("seltimediv");
    QTest::mouseClick(list, Qt::LeftButton);
    QAbstractItemView* const view = list->view();
    QTRY_VERIFY(view->isVisible());
    const QModelIndex entry = list->model()->index(list->findText(u"5ns/div"_s), 0);
    view->scrollTo(entry);
    // The list takes a release that follows the opening click too closely for part of it.
    QTest::qWait(QApplication::doubleClickInterval() > 200 ? 200 : 50);
    QTest::mouseMove(view->viewport(), view->visualRect(entry).center());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(entry).center());
    QTRY_COMPARE(on.panel().seltimediv.text(), std::string("5ns/div"));
    QCOMPARE(list->currentText(), u"5ns/div"_s);
}

void WindowTest::setting_from_code_runs_the_handler_once() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    int runs = 0;
    on.panel().channel[0].vdiv.on_click([&] { ++runs; });
    on.panel().channel[0].vdiv.set_index(4);
    QCOMPARE(on.widget<QComboBox>("ch1vdiv")->currentText(), u"20mV"_s);
    QCOMPARE(runs, 1);
    QTest::keyClick(on.widget("ch1vdiv"), Qt::Key_Down);
    QCOMPARE(on.panel().channel[0].vdiv.text(), std::string("10mV"));
    QCOMPARE(runs, 2);
}

void WindowTest::check_boxes_change_the_picture() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
    const Surface& surface = on.program.scope().picture().surface();
    const auto pixels = [&] {
        return std::vector<Pixel>(surface.pixels().begin(), surface.pixels().end());
    };
    auto before = pixels();
    for (const char* const name : {"gridenable", "eyeon", "ch2enable"}) {
        on.widget<QCheckBox>(name)->click();
        const auto after = pixels();
        QVERIFY2(after != before, name);
        before = after;
    }
    on.widget<QCheckBox>("invert1")->click();
    QCOMPARE(on.widget<QLabel>("ch1vdivtext")->text(), u"0.1V (inv)"_s);
}

void WindowTest::disabling_a_channel_hides_its_marker() {
    ProgramOnBench on;
    QVERIFY(!on.widget("ch1text")->isVisible());
    QVERIFY(on.run_until_sweeping());
    QVERIFY(on.widget("ch1text")->isVisible());
    on.widget<QCheckBox>("ch1enable")->click();
    QVERIFY(!on.widget("ch1text")->isVisible());
    QVERIFY(!on.widget("ch1vdivtext")->isVisible());
    on.widget<QCheckBox>("ch1enable")->click();
    QVERIFY(on.widget("ch1text")->isVisible());
}

void WindowTest::status_is_readable_on_every_colour() {
    ProgramOnBench on;
    auto* const box = on.widget<QLineEdit>("textstatus");
    AcquisitionState acquisition;
    for (const Look look : {Look::dark, Look::light}) {
        apply_look(look);
        for (const Status& shown : {status::idle, status::stopped, status::setup, status::running,
                                    status::getting_data, status::waiting_for_trigger}) {
            show_status(on.panel(), acquisition, shown);
            QCOMPARE(box->text(), QString::fromLatin1(shown.text));
            const QColor back = box->palette().color(QPalette::Base);
            QCOMPARE(back, qcolor(shown.background));
            QVERIFY(contrast(box->palette().color(QPalette::Text), back) > 7.0);
        }
    }
}

void WindowTest::exit_closes_the_window() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    on.window().findChild<QAction*>(u"MenuExit"_s)->trigger();
    QVERIFY(on.program.scope().ended());
    QVERIFY(!on.window().isVisible());
    QCOMPARE(on.closed, 1);
}

void WindowTest::closing_the_window_ends_the_program() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(on.window().close());
    QVERIFY(on.program.scope().ended());
    QCOMPARE(on.closed, 1);
}

void WindowTest::closing_in_the_middle_of_a_pass_unwinds() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("seltimediv");
    list->setFocus();
    while (on.panel().seltimediv.text() != "500ns/div") {
        QTest::keyClick(list, Qt::Key_Up);
    }
    bool closed_at_once = true;
    QTimer in_the_pass;
    connect(&in_the_pass, &QTimer::timeout, &in_the_pass, [&] {
        if (on.program.scope().parts().entries.hold_ticks()) {
            in_the_pass.stop();
            closed_at_once = on.window().close();
        }
    });
    in_the_pass.start(0);
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(!on.window().isVisible());
    QVERIFY(on.program.scope().ended());
    QVERIFY(!closed_at_once);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::WindowTest)
#include "window_test.moc"
