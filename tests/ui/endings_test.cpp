// The ends that a desktop brings about: none of them opens a box or loses the settings.

#include <QApplication>
#include <QMessageBox>
#include <QSessionManager>
#include <QTest>
#include <QTimer>

#include "host/termination_signals.h"
#include "program_on_bench.h"
#include "ui/endings.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* settings_file = "/settings/kv408/ConfigsLM4RX.TXT";

/// The program as its `main` has it, sweeping, with something set that has not been saved.
struct EndingProgram : ProgramOnBench {
    [[nodiscard]] bool run() {
        if (!run_until_sweeping() || !QTest::qWaitFor([this] { return parts().program.loaded; })) {
            return false;
        }
        program.scope().act([this] { panel().persist.set_checked(true); });
        files.files.erase(settings_file);
        return true;
    }

    [[nodiscard]] const Parts& parts() { return program.scope().parts(); }
    [[nodiscard]] bool device_open() { return parts().link.state().open; }
    [[nodiscard]] bool saved() {
        return files.files[settings_file].find("persist\t 1 \r\n") != std::string::npos;
    }

    /// The desktop asks to save: its session may be about to end.
    static void ask_to_save() {
        // Nobody but Qt makes a session's manager; nobody looks at this one.
        QMetaObject::invokeMethod(qGuiApp, "commitDataRequest", Qt::DirectConnection,
                                  QGenericArgument("QSessionManager&", qGuiApp));
    }

    /// Closes every box that comes up from now on, and counts them.
    void watch_boxes() {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                ++boxes;
                box->reject();
            }
        });
        look_.start(5);
    }

    TerminationSignals asked;
    Endings endings{asked, program};
    int boxes = 0;

private:
    QTimer look_;
};

class EndingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_session_that_may_end_has_the_settings_saved_and_goes_on();
    void a_session_that_ends_saves_closes_and_opens_no_box_data();
    void a_session_that_ends_saves_closes_and_opens_no_box();
    void closing_the_last_window_saves_closes_and_ends_the_process();
};

void EndingsTest::a_session_that_may_end_has_the_settings_saved_and_goes_on() {
    EndingProgram on;
    QVERIFY(on.run());
    on.watch_boxes();
    EndingProgram::ask_to_save();
    QVERIFY(on.saved());
    QVERIFY(on.device_open());
    QVERIFY(!on.program.scope().ended());
    // The user has called it off; what is set from then on is saved by the next end.
    on.program.scope().act([&on] { on.panel().average.set_checked(true); });
    on.files.refusal = "No space left on device";
    EndingProgram::ask_to_save();
    QTest::qWait(50);
    QCOMPARE(on.boxes, 0);
    on.files.refusal.clear();
    QVERIFY(on.window().close());
    QVERIFY(on.files.files[settings_file].find("average\t 1 \r\n") != std::string::npos);
}

void EndingsTest::a_session_that_ends_saves_closes_and_opens_no_box_data() {
    QTest::addColumn<bool>("refused");
    QTest::newRow("") << false;
    QTest::newRow("on a full disk") << true;
}

void EndingsTest::a_session_that_ends_saves_closes_and_opens_no_box() {
    QFETCH(bool, refused);
    EndingProgram on;
    QVERIFY(on.run());
    on.watch_boxes();
    on.files.refusal = refused ? "No space left on device" : "";
    QTimer::singleShot(50, qApp, [] { QCoreApplication::quit(); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(on.boxes, 0);
    QVERIFY(on.program.scope().ended());
    QVERIFY(!on.device_open());
    const std::string place = std::string(settings_file) + (refused ? ".unsaved" : "");
    QVERIFY(on.files.files[place].find("persist\t 1 \r\n") != std::string::npos);
}

void EndingsTest::closing_the_last_window_saves_closes_and_ends_the_process() {
    EndingProgram on;
    QVERIFY(on.run());
    QTimer::singleShot(50, &on.window(), [&on] { on.window().close(); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(on.saved());
    QVERIFY(!on.device_open());
    QCOMPARE(on.closed, 1);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::EndingsTest)
#include "endings_test.moc"
