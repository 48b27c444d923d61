// What the program needs of its machine, on the screen.

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include "box_answers.h"
#include "program_on_bench.h"
#include "ui/picture_folder.h"
#include "ui/qt_message_boxes.h"
#include "ui/qt_window_messages.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Runs `action` on the next message box as soon as it is open.
class WhenBoxOpens {
public:
    explicit WhenBoxOpens(std::function<void(QMessageBox&)> action) : action_(std::move(action)) {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
            if (QMessageBox* const box = open_box()) {
                look_.stop();
                action_(*box);
            }
        });
        look_.start(5);
    }

private:
    QTimer look_;
    std::function<void(QMessageBox&)> action_;
};

void press(QMessageBox& box, QMessageBox::StandardButton button) {
    box.button(button)->click();
}

/// The button of `box` that opens its details, null where it has none.
QAbstractButton* details_button(const QMessageBox& box) {
    for (QAbstractButton* const button : box.buttons()) {
        if (box.buttonRole(button) == QMessageBox::ActionRole) {
            return button;
        }
    }
    return nullptr;
}

class HostTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_box_shows_its_texts_as_they_stand();
    void the_keys_open_a_box_with_details();
    void a_box_without_details_has_no_button_for_them();
    void every_button_has_its_answer_data();
    void every_button_has_its_answer();
    void closing_a_box_is_an_answer_data();
    void closing_a_box_is_an_answer();
    void enter_presses_the_button_that_changes_nothing_data();
    void enter_presses_the_button_that_changes_nothing();
    void retry_finds_an_instrument_that_is_switched_on();
    void cancel_ends_the_program();
    void ticks_go_on_while_a_box_is_open();
    void ticks_go_on_while_a_box_of_a_tick_is_open();
    void ticks_go_on_in_the_middle_of_a_pass();
    void the_window_closes_while_a_box_is_open();
    void pending_messages_run_and_nothing_is_waited_for();
    void repaints_the_named_control_at_once();
};

void HostTest::a_box_shows_its_texts_as_they_stand() {
    QtMessageBoxes boxes;
    WhenBoxOpens opened([](QMessageBox& box) {
        QCOMPARE(box.objectName(), u"messageBox"_s);
        QCOMPARE(box.windowTitle(), u"Kv408"_s);
        QCOMPARE(box.text(), u"please click <Retry>!"_s);
        QCOMPARE(box.informativeText(), u"Is <it> on?"_s);
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QCOMPARE(box.icon(), QMessageBox::Warning);
        box.grab().save(picture_folder() + u"/screenshot-message-box.png"_s);
        press(box, QMessageBox::Retry);
    });
    const MessageAnswer answer = boxes.show({.text = "please click <Retry>!",
                                             .buttons = MessageButtons::retry_cancel,
                                             .icon = MessageIcon::exclamation,
                                             .informative = "Is <it> on?"});
    QCOMPARE(answer, MessageAnswer::retry);
}

void HostTest::the_keys_open_a_box_with_details() {
    QtMessageBoxes boxes;
    QMessageBox::StandardButton usual = QMessageBox::NoButton;
    bool closed_at_first = false;
    QString seen;
    WhenBoxOpens opened([&](QMessageBox& box) {
        usual = box.standardButton(box.defaultButton());
        const auto* const shown = box.findChild<QTextEdit*>();
        closed_at_first = shown != nullptr && !shown->isVisible();
        const QAbstractButton* const button = details_button(box);
        if (QTest::qWaitForWindowActive(&box) && closed_at_first && button != nullptr) {
            for (int presses = 0; presses < 3 && !button->hasFocus(); ++presses) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            seen = shown->isVisible() ? shown->toPlainText() : QString();
            box.grab().save(picture_folder() + u"/screenshot-message-details.png"_s);
        }
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    const MessageAnswer answer = boxes.show({.text = "please click <Retry>!",
                                             .buttons = MessageButtons::retry_cancel,
                                             .details = "<one>\ntwo"});
    QCOMPARE(answer, MessageAnswer::cancel);
    QCOMPARE(usual, QMessageBox::Retry);
    QVERIFY(closed_at_first);
    QCOMPARE(seen, u"<one>\ntwo"_s);
    // The only other button is the one that Escape presses.
    WhenBoxOpens alone([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(boxes.show({.text = "?", .details = "one"}), MessageAnswer::ok);
}

void HostTest::a_box_without_details_has_no_button_for_them() {
    QtMessageBoxes boxes;
    bool has_one = true;
    WhenBoxOpens opened([&](QMessageBox& box) {
        has_one = details_button(box) != nullptr;
        press(box, QMessageBox::Ok);
    });
    QCOMPARE(boxes.show({.text = "?"}), MessageAnswer::ok);
    QVERIFY(!has_one);
}

void HostTest::every_button_has_its_answer_data() {
    QTest::addColumn<MessageButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("pressed");
    QTest::addColumn<MessageAnswer>("answer");
    QTest::newRow("ok") << MessageButtons::ok << QMessageBox::Ok << MessageAnswer::ok;
    QTest::newRow("ok of two") << MessageButtons::ok_cancel << QMessageBox::Ok << MessageAnswer::ok;
    QTest::newRow("cancel") << MessageButtons::ok_cancel << QMessageBox::Cancel
                            << MessageAnswer::cancel;
    QTest::newRow("retry") << MessageButtons::retry_cancel << QMessageBox::Retry
                           << MessageAnswer::retry;
    QTest::newRow("no retry") << MessageButtons::retry_cancel << QMessageBox::Cancel
                              << MessageAnswer::cancel;
    QTest::newRow("yes") << MessageButtons::yes_no << QMessageBox::Yes << MessageAnswer::yes;
    QTest::newRow("no") << MessageButtons::yes_no << QMessageBox::No << MessageAnswer::no;
}

void HostTest::every_button_has_its_answer() {
    QFETCH(MessageButtons, buttons);
    QFETCH(QMessageBox::StandardButton, pressed);
    QFETCH(MessageAnswer, answer);
    QtMessageBoxes boxes;
    WhenBoxOpens opened([pressed](QMessageBox& box) { press(box, pressed); });
    QCOMPARE(boxes.show({.text = "?", .title = "Title", .buttons = buttons}), answer);
}

void HostTest::closing_a_box_is_an_answer_data() {
    QTest::addColumn<MessageButtons>("buttons");
    QTest::addColumn<MessageAnswer>("answer");
    QTest::newRow("ok") << MessageButtons::ok << MessageAnswer::ok;
    QTest::newRow("cancel") << MessageButtons::ok_cancel << MessageAnswer::cancel;
    QTest::newRow("retry") << MessageButtons::retry_cancel << MessageAnswer::cancel;
    QTest::newRow("no") << MessageButtons::yes_no << MessageAnswer::no;
}

void HostTest::closing_a_box_is_an_answer() {
    QFETCH(MessageButtons, buttons);
    QFETCH(MessageAnswer, answer);
    QtMessageBoxes boxes;
    WhenBoxOpens escaped([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(boxes.show({.text = "?", .buttons = buttons}), answer);
    WhenBoxOpens dismissed([&boxes](QMessageBox&) { boxes.dismiss(); });
    QCOMPARE(boxes.show({.text = "?", .buttons = buttons}), answer);
}

void HostTest::enter_presses_the_button_that_changes_nothing_data() {
    QTest::addColumn<MessageButtons>("buttons");
    QTest::addColumn<MessageAnswer>("answer");
    QTest::newRow("ok") << MessageButtons::ok << MessageAnswer::ok;
    QTest::newRow("ok of two") << MessageButtons::ok_cancel << MessageAnswer::ok;
    QTest::newRow("retry") << MessageButtons::retry_cancel << MessageAnswer::retry;
    QTest::newRow("no") << MessageButtons::yes_no << MessageAnswer::no;
}

void HostTest::enter_presses_the_button_that_changes_nothing() {
    QFETCH(MessageButtons, buttons);
    QFETCH(MessageAnswer, answer);
    QtMessageBoxes boxes;
    WhenBoxOpens entered([](QMessageBox& box) {
        QVERIFY(QTest::qWaitForWindowActive(&box));
        QTest::keyClick(&box, Qt::Key_Return);
    });
    QCOMPARE(boxes.show({.text = "?", .buttons = buttons}), answer);
}

void HostTest::retry_finds_an_instrument_that_is_switched_on() {
    ProgramOnBench on;
    on.simulation.bench().faults.no_power = true;
    WhenBoxOpens opened([&on](QMessageBox& box) {
        QVERIFY(box.text().startsWith(u"No connection to Device"_s));
        on.simulation.bench().faults.no_power = false;
        press(box, QMessageBox::Retry);
    });
    QVERIFY(on.run_until_sweeping());
}

void HostTest::cancel_ends_the_program() {
    ProgramOnBench on;
    on.simulation.bench().faults.no_power = true;
    WhenBoxOpens opened([](QMessageBox& box) { press(box, QMessageBox::Cancel); });
    on.window().show();
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(on.program.scope().ended());
    QVERIFY(!on.window().isVisible());
}

void HostTest::ticks_go_on_while_a_box_is_open() {
    ProgramOnBench on;
    on.simulation.bench().faults.no_power = true;
    QString date;
    WhenBoxOpens opened([&](QMessageBox& box) {
        on.panel().lbldate.set_caption("");
        const auto ticked = [&] { return !on.panel().lbldate.caption().empty(); };
        QVERIFY(QTest::qWaitFor(ticked, 2000));
        date = on.widget<QLabel>("lblDate")->text();
        press(box, QMessageBox::Cancel);
    });
    on.window().show();
    QTRY_COMPARE(on.closed, 1);
    QVERIFY2(date.startsWith(u"01:09:37, "_s), qPrintable(date));
}

void HostTest::ticks_go_on_while_a_box_of_a_tick_is_open() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    QString text;
    bool line_gone = false;
    WhenBoxOpens opened([&](QMessageBox& box) {
        text = box.text();
        on.panel().trzero.click();
        const AcquisitionState& acquisition = on.program.scope().parts().acquisition;
        line_gone =
            acquisition.holdoff && QTest::qWaitFor([&] { return !acquisition.holdoff; }, 3000);
        on.simulation.bench().faults = {};
        on.window().close();
    });
    on.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    // Only marks the set-up as changed; the next ticks send it.
    on.panel().trigeredge.set_index(1);
    QTRY_COMPARE(on.closed, 1);
    QCOMPARE(text, u" SETTRIG Comm timed out"_s);
    QVERIFY(line_gone);
}

void HostTest::ticks_go_on_in_the_middle_of_a_pass() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto& list = on.panel().seltimediv;
    const auto entry = std::find(list.entries().begin(), list.entries().end(), "500ns/div");
    list.set_index(static_cast<int>(entry - list.entries().begin()));
    bool ticked = false;
    QTimer in_the_pass;
    connect(&in_the_pass, &QTimer::timeout, &in_the_pass, [&] {
        if (on.program.scope().parts().entries.hold_ticks() && on.state() == "scope") {
            in_the_pass.stop();
            on.panel().lbldate.set_caption("");
            ticked = QTest::qWaitFor([&] { return !on.panel().lbldate.caption().empty(); }, 2000);
            on.window().close();
        }
    });
    in_the_pass.start(0);
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(ticked);
}

void HostTest::the_window_closes_while_a_box_is_open() {
    ProgramOnBench on;
    on.simulation.bench().faults.no_power = true;
    bool closed_at_once = true;
    WhenBoxOpens opened([&](QMessageBox&) { closed_at_once = on.window().close(); });
    on.window().show();
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(!closed_at_once);
    QVERIFY(!on.window().isVisible());
    QVERIFY(open_box() == nullptr);
}

void HostTest::pending_messages_run_and_nothing_is_waited_for() {
    QtWindowMessages messages;
    int ran = 0;
    QMetaObject::invokeMethod(
        qApp, [&ran] { ++ran; }, Qt::QueuedConnection);
    messages.process_pending();
    QCOMPARE(ran, 1);
    messages.process_pending();
    QCOMPARE(ran, 1);
}

void HostTest::repaints_the_named_control_at_once() {
    class Painted : public QWidget {
    public:
        using QWidget::QWidget;
        int times = 0;

    protected:
        void paintEvent(QPaintEvent* /*event*/) override { ++times; }
    };
    QWidget window;
    auto* const control = new Painted(&window);
    control->setObjectName(u"textstatus"_s);
    control->resize(50, 20);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QtWindowMessages messages;
    messages.repaint("textstatus");
    messages.set_window(&window);
    const int before = control->times;
    messages.repaint("another");
    QCOMPARE(control->times, before);
    messages.repaint("textstatus");
    QCOMPARE(control->times, before + 1);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::HostTest)
#include "host_test.moc"
