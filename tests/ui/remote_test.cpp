// Remote control in the window, by its own menu entry and a client's socket.

#include <memory>
#include <string>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "calibration/calibration_form.h"
#include "display/settings_dialog.h"
#include "support/socket_line.h"
#include "ui/bind.h"
#include "ui/box_answers.h"
#include "ui/program_on_bench.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The window, with the remote control window open.
struct WithRemote : ProgramOnBench {
    static constexpr int patience = int{SocketLine::patience.count()}; ///< milliseconds

    /// Types `text` in the place of what stands in the box `name`.
    void type(const char* name, const QString& text) {
        auto* const box = widget<QLineEdit>(name);
        box->selectAll();
        QTest::keyClicks(box, text);
    }
    void open() {
        window().findChild<QAction*>(u"mnuremote"_s)->trigger();
        type("txtRemotePort", u"0"_s);
    }
    void switch_on() {
        open();
        widget<QCheckBox>("chkRemote")->click();
    }
    /// What is answered to `question`, while the window goes on.
    std::string ask(const SocketLine& line, const std::string& question) {
        line.say(question + '\n');
        std::string answer = "(nothing)";
        const bool came = QTest::qWaitFor(
            [&] {
                answer = line.hear(std::chrono::milliseconds(0));
                return answer != "(nothing)";
            },
            patience);
        return came ? answer : "(nothing)";
    }
    /// Stops the sweep by a client's command; then the instrument answers no more. False where the
    /// command has failed.
    bool stop_and_silence(const SocketLine& line) {
        const bool stopped = ask(line, "STOP;:SYST:ERR?") == "0,\"No error\"\n";
        clock.sleep(std::chrono::seconds(1)); // in which what was still on its way comes
        simulation.bench().devices.front().answers = false;
        return stopped;
    }
};

class RemoteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void is_off_and_unseen_at_first();
    void clients_are_shown_and_disconnected();
    void disconnect_ends_the_client_that_was_chosen();
    void a_command_is_seen_on_the_panel();
    void a_client_locks_the_panel_and_the_person_the_network();
    void a_locked_panel_leaves_no_way_to_its_controls();
    void a_message_becomes_the_clients_error();
    void a_clients_run_opens_no_box();
    void clients_are_told_that_no_data_come();
    void a_client_that_has_gone_locks_nobody_out();
    void eight_clients_leave_the_menus_their_room();
    void the_network_may_connect_through_a_named_address();
    void an_address_that_is_none_is_told();
    void a_client_closes_the_windows_that_it_has_opened();
    void a_taken_port_is_told();
    void the_end_of_the_program_ends_it();
};

void RemoteTest::is_off_and_unseen_at_first() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(!on.program.remote().is_open());
    QVERIFY(on.window().menuBar()->cornerWidget() == nullptr);
    on.open();
    QVERIFY(!on.widget<QCheckBox>("chkRemote")->isChecked());
    QCOMPARE(on.widget<QLabel>("lblRemoteState")->text(),
             u"Off: there is no connection to the network."_s);
    QVERIFY(!on.program.remote().is_open());
}

void RemoteTest::clients_are_shown_and_disconnected() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    QVERIFY(on.program.remote().is_open());
    QVERIFY(on.window().menuBar()->cornerWidget()->isVisible());
    const SocketLine line(on.program.remote().port());
    QCOMPARE(on.ask(line, "SYST:VERS?"), std::string("1999.0\n"));
    auto* const clients = on.widget<QComboBox>("cmbRemoteClients");
    QCOMPARE(clients->count(), 1);
    QVERIFY(clients->itemText(0).startsWith(u"127.0.0.1:"_s));
    QCOMPARE(on.widget<QLabel>("lblRemote")->text().trimmed(),
             u"Remote control: 1 client: "_s + clients->itemText(0));
    on.widget<QPushButton>("cmdRemoteDisconnect")->click();
    QTRY_COMPARE_WITH_TIMEOUT(clients->count(), 0, WithRemote::patience);
    QCOMPARE(line.hear(), std::string());
    on.widget<QCheckBox>("chkRemote")->click();
    QVERIFY(!on.program.remote().is_open());
    QVERIFY(!on.window().menuBar()->cornerWidget()->isVisible());
}

void RemoteTest::disconnect_ends_the_client_that_was_chosen() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    auto first = std::make_unique<SocketLine>(on.program.remote().port());
    QCOMPARE(on.ask(*first, "SYST:VERS?"), std::string("1999.0\n"));
    const SocketLine second(on.program.remote().port());
    QCOMPARE(on.ask(second, "SYST:VERS?"), std::string("1999.0\n"));
    const SocketLine third(on.program.remote().port());
    QCOMPARE(on.ask(third, "SYST:VERS?"), std::string("1999.0\n"));
    auto* const clients = on.widget<QComboBox>("cmbRemoteClients");
    QCOMPARE(clients->count(), 3);
    QTest::keyClick(clients, Qt::Key_Down);
    QCOMPARE(clients->currentIndex(), 1);
    const QString chosen = clients->currentText();
    first.reset();
    QTRY_COMPARE_WITH_TIMEOUT(clients->count(), 2, WithRemote::patience);
    QCOMPARE(clients->currentText(), chosen);
    on.widget<QPushButton>("cmdRemoteDisconnect")->click();
    QTRY_COMPARE_WITH_TIMEOUT(clients->count(), 1, WithRemote::patience);
    QCOMPARE(second.hear(), std::string());
    QCOMPARE(on.ask(third, "SYST:VERS?"), std::string("1999.0\n"));
}

void RemoteTest::a_command_is_seen_on_the_panel() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    QCOMPARE(on.ask(line, "CHAN2:SCAL 20MV;:TIM:SCAL 5NS;:DISP:GRID OFF;:SYST:ERR?"),
             std::string("0,\"No error\"\n"));
    QCOMPARE(on.widget<QComboBox>("ch2vdiv")->currentText(), u"20mV"_s);
    QCOMPARE(on.widget<QComboBox>("seltimediv")->currentText(), u"5ns/div"_s);
    QVERIFY(!on.widget<QCheckBox>("gridenable")->isChecked());
    QCOMPARE(on.ask(line, "*OPC?"), std::string("1\n"));
    QVERIFY(on.ask(line, "HCOP:SDUM:DATA? PNG").substr(0, 1) == "#");
}

void RemoteTest::a_client_locks_the_panel_and_the_person_the_network() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    QCOMPARE(on.ask(line, "SYST:LOCK ON;LOCK?"), std::string("1\n"));
    QVERIFY(!on.widget("ch1vdiv")->isEnabled());
    QVERIFY(!on.widget("cmdstartsweep")->isEnabled());
    QVERIFY(on.widget("cmdstop")->isEnabled());
    QVERIFY(!on.window().plot().isEnabled());
    QVERIFY(!on.window().findChild<QAction*>(u"loadconfig"_s)->isEnabled());
    on.widget<QPushButton>("cmdRemoteUnlock")->click();
    QVERIFY(on.widget("ch1vdiv")->isEnabled() && on.widget("cmdstartsweep")->isEnabled());
    QVERIFY(on.window().plot().isEnabled());
    QCOMPARE(on.ask(line, "SYST:LOCK?"), std::string("0\n"));
    on.widget<QCheckBox>("chkRemoteLock")->click();
    QCOMPARE(on.ask(line, "DISP:GRID OFF;:SYST:ERR?"), std::string("-203,\"Command protected\"\n"));
    QVERIFY(on.widget<QCheckBox>("gridenable")->isChecked());
}

/// The names of those of `controls` that a person can operate now in `window`, by mouse or keys.
QStringList usable(const QWidget& window, const ControlList& controls) {
    QStringList names;
    for (const Control* const control : controls) {
        const QString name = object_name(*control);
        for (const QWidget* const widget : window.findChildren<QWidget*>(name)) {
            const bool shows_only = widget->inherits("QLabel") || widget->inherits("QFrame");
            if (widget->window() == &window && widget->isEnabled() && !shows_only) {
                names += name;
            }
        }
        for (const QAction* const action : window.findChildren<QAction*>(name)) {
            if (action->isEnabled()) {
                names += name;
            }
        }
    }
    names.removeDuplicates();
    return names;
}

void RemoteTest::a_locked_panel_leaves_no_way_to_its_controls() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    for (const char* const entry :
         {"mnusettings", "mnuexport", "mnurecord", "mnustatistics", "mnucalibration"}) {
        on.window().findChild<QAction*>(QString::fromLatin1(entry))->trigger();
    }
    const SocketLine line(on.program.remote().port());
    auto& settings = *on.window().findChild<QDialog*>(u"frmSettings"_s);
    const ControlList& set = on.program.scope().settings_dialog().controls().all;
    auto& calibration = *on.window().findChild<QWidget*>(u"frmcalibration"_s);
    const ControlList& calibrated = on.program.scope().calibration_form().all;
    const QStringList before = usable(on.window(), on.panel().all);
    QVERIFY(before.size() > 40);
    QVERIFY(usable(settings, set).size() > 5);
    QVERIFY(usable(calibration, calibrated).size() > 5);
    QCOMPARE(on.ask(line, "SYST:LOCK ON;LOCK?"), std::string("1\n"));
    // What stops, saves, looks and ends, but sets nothing.
    QStringList left = usable(on.window(), on.panel().all);
    left.sort();
    QCOMPARE(left, (QStringList{u"ExportData"_s, u"MenuAbout"_s, u"MenuExit"_s, u"MenuHelp"_s,
                                u"cmdstop"_s, u"mnudensity"_s, u"mnuexport"_s, u"mnurecord"_s,
                                u"mnuremote"_s, u"mnustatistics"_s, u"saveconfig"_s}));
    QCOMPARE(usable(settings, set), (QStringList{u"TabStrip1"_s, u"cmdCancel"_s}));
    QCOMPARE(usable(calibration, calibrated), QStringList());
    on.widget<QPushButton>("cmdRemoteUnlock")->click();
    QCOMPARE(usable(on.window(), on.panel().all), before);
    QVERIFY(usable(settings, set).contains(u"cmdOK"_s));
}

void RemoteTest::a_message_becomes_the_clients_error() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    QVERIFY(on.stop_and_silence(line));
    QCOMPARE(QString::fromStdString(on.ask(line, "TRIG:SOUR TRIG2;:SYST:ERR?")),
             u"-240,\"Hardware error; SETTRIG Comm timed out\"\n"_s);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void RemoteTest::a_clients_run_opens_no_box() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    QVERIFY(on.stop_and_silence(line));
    BoxAnswers answers;
    QCOMPARE(on.ask(line, "RUN;:SYST:ERR?"), std::string("0,\"No error\"\n"));
    QTRY_VERIFY_WITH_TIMEOUT(on.ask(line, "SYST:ERR:COUN?") != "0\n", WithRemote::patience);
    QCOMPARE(answers.texts, QStringList());
    QTest::mouseClick(on.widget("cmdstartsweep"), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(!answers.texts.isEmpty(), WithRemote::patience);
    on.simulation.bench().devices.front().answers = true;
}

void RemoteTest::clients_are_told_that_no_data_come() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    QCOMPARE(on.ask(line, "SYST:ERR?"), std::string("0,\"No error\"\n"));
    on.simulation.bench().devices.front().answers = false;
    QTRY_COMPARE_WITH_TIMEOUT(on.ask(line, "STAT:QUES:COND?"), std::string("512\n"),
                              WithRemote::patience);
    QTRY_COMPARE_WITH_TIMEOUT(on.ask(line, "SYST:ERR:COUN?"), std::string("1\n"),
                              WithRemote::patience);
    on.simulation.bench().devices.front().answers = true;
    QCOMPARE(on.ask(line, "SYST:ERR?"),
             std::string("-240,\"Hardware error;No data from the instrument\"\n"));
    QCOMPARE(on.ask(line, "SYST:ERR?"), std::string("0,\"No error\"\n"));
}

void RemoteTest::a_client_that_has_gone_locks_nobody_out() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    on.simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                      simulator::TriggerRoute::disconnected};
    for (const bool reset : {true, false}) {
        auto line = std::make_unique<SocketLine>(on.program.remote().port());
        QCOMPARE(on.ask(*line, "ACQ:TIM 3600;:SYST:LOCK ON;LOCK?"), std::string("1\n"));
        line->say("DIG\n");
        QVERIFY(!on.widget("ch1vdiv")->isEnabled());
        if (reset) {
            line->end_by_reset();
        }
        line.reset();
        QTRY_VERIFY_WITH_TIMEOUT(on.widget("ch1vdiv")->isEnabled(), WithRemote::patience);
        const int left = reset ? 0 : 1; // which may as well still listen
        QTRY_COMPARE_WITH_TIMEOUT(on.widget<QComboBox>("cmbRemoteClients")->count(), left,
                                  WithRemote::patience);
    }
}

void RemoteTest::eight_clients_leave_the_menus_their_room() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    std::vector<std::unique_ptr<SocketLine>> lines;
    for (int i = 0; i < 8; ++i) {
        lines.push_back(std::make_unique<SocketLine>(on.program.remote().port()));
        QCOMPARE(on.ask(*lines.back(), "SYST:VERS?"), std::string("1999.0\n"));
    }
    QMenuBar& bar = *on.window().menuBar();
    auto* const told = on.widget<QLabel>("lblRemote");
    const auto* const clients = on.widget<QComboBox>("cmbRemoteClients");
    QTRY_COMPARE(clients->count(), 8);
    for (const int width : {on.window().width(), on.window().minimumWidth(), 1600}) {
        on.window().resize(width, on.window().height());
        QTRY_COMPARE(bar.width(), on.window().width());
        for (QAction* const menu : bar.actions()) {
            const QRect place = bar.actionGeometry(menu);
            QVERIFY2(!place.isEmpty() && place.right() < told->x() + 1, qPrintable(menu->text()));
        }
    }
    QVERIFY(told->text().startsWith(u"Remote control: 8 clients"_s));
    for (int i = 0; i < clients->count(); ++i) {
        QVERIFY(told->toolTip().contains(clients->itemText(i)));
    }
}

void RemoteTest::the_network_may_connect_through_a_named_address() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.open();
    auto* const who = on.widget<QComboBox>("cmbRemoteAddress");
    auto* const address = on.widget<QLineEdit>("txtRemoteAddress");
    auto* const remote = on.widget<QCheckBox>("chkRemote");
    QCOMPARE(address->text(), u"127.0.0.1"_s);
    const std::string second_loopback = "127.0.0.2";
    remote->click();
    QVERIFY(!SocketLine(on.program.remote().port(), second_loopback).connected());
    QVERIFY(!address->isEnabled() && !who->isEnabled());
    remote->click();

    QTest::keyClick(who, Qt::Key_Down);
    QCOMPARE(who->currentText(), u"The network too"_s);
    QCOMPARE(address->text(), u"0.0.0.0"_s);
    remote->click();
    for (const std::string& one : {std::string("127.0.0.1"), second_loopback}) {
        const SocketLine line(on.program.remote().port(), one);
        QCOMPARE(on.ask(line, "SYST:VERS?"), std::string("1999.0\n"));
    }
    remote->click();

    on.type("txtRemoteAddress", QString::fromStdString(second_loopback));
    QCOMPARE(who->currentIndex(), -1);
    remote->click();
    QVERIFY(!SocketLine(on.program.remote().port()).connected());
    QVERIFY(SocketLine(on.program.remote().port(), second_loopback).connected());
    remote->click();

    const std::string ipv6 = "::1";
    if (SocketLine::has_ipv6()) { // some computers have not
        on.type("txtRemoteAddress", QString::fromStdString(ipv6));
        remote->click();
        QVERIFY(!SocketLine(on.program.remote().port()).connected());
        const SocketLine line(on.program.remote().port(), ipv6);
        QCOMPARE(on.ask(line, "SYST:VERS?"), std::string("1999.0\n"));
        remote->click();
    }

    on.type("txtRemoteAddress", u"127.0.0.1"_s);
    QCOMPARE(who->currentIndex(), 0);
}

void RemoteTest::an_address_that_is_none_is_told() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.open();
    auto* const remote = on.widget<QCheckBox>("chkRemote");
    BoxAnswers answers;
    for (const QString& none : {u"198.51.100.1"_s, u"here"_s}) { // not this computer's; not any
        on.type("txtRemoteAddress", none);
        remote->click();
        QVERIFY(!remote->isChecked() && !on.program.remote().is_open());
    }
    const QString begin = u"Remote control could not be switched on: "_s;
    QCOMPARE(answers.texts,
             (QStringList{begin + u"Cannot assign requested address"_s,
                          begin + u"The address is none: 192.168.1.5 and fd00::5 are such."_s}));
}

void RemoteTest::a_client_closes_the_windows_that_it_has_opened() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    const auto asked = [&](const std::string& text) {
        return on.ask(line, text + ";:SYST:ERR?") == "0,\"No error\"\n";
    };
    for (const auto& [name, command] : {std::pair{u"frmStatistics"_s, "STAT:STAT"},
                                        {u"frmSpectrum"_s, "SPEC:STAT"},
                                        {u"frmHistogram"_s, "HIST:STAT"},
                                        {u"frmJitter"_s, "JITT:STAT"},
                                        {u"frmEye"_s, "EYE:STAT"},
                                        {u"frmMask"_s, "MASK:STAT"}}) {
        const std::string state = command;
        QVERIFY2(asked(state + " ON"), command);
        auto* const window = on.window().findChild<QDialog*>(name);
        QVERIFY2(window != nullptr && window->isVisible(), command);
        QVERIFY2(asked(state + " OFF"), command);
        QTRY_VERIFY_WITH_TIMEOUT(!window->isVisible(), WithRemote::patience);
        QVERIFY2(asked(state + " ON"), command);
        QVERIFY2(window->isVisible(), command);
    }
}

void RemoteTest::a_taken_port_is_told() {
    WithRemote one;
    WithRemote other;
    QVERIFY(one.run_until_sweeping());
    QVERIFY(other.run_until_sweeping());
    one.switch_on();
    other.open();
    other.type("txtRemotePort", QString::number(one.program.remote().port()));
    BoxAnswers answers;
    other.widget<QCheckBox>("chkRemote")->click();
    QCOMPARE(answers.texts,
             QStringList(u"Remote control could not be switched on: Address already in use"_s));
    QVERIFY(!other.widget<QCheckBox>("chkRemote")->isChecked());
}

void RemoteTest::the_end_of_the_program_ends_it() {
    WithRemote on;
    QVERIFY(on.run_until_sweeping());
    on.switch_on();
    const SocketLine line(on.program.remote().port());
    QCOMPARE(on.ask(line, "SYST:VERS?"), std::string("1999.0\n"));
    on.window().close();
    QVERIFY(!on.program.remote().is_open());
    QCOMPARE(line.hear(), std::string());
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::RemoteTest)
#include "remote_test.moc"
