// Where the calibration window opens, and which window its message boxes belong to.

#include <functional>

#include <QAction>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "program_on_bench.h"
#include "ui/window_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Starts the program and opens its calibration window; null when that fails.
QWidget* opened_form(ProgramOnBench& on) {
    if (!on.run_until_sweeping()) {
        return nullptr;
    }
    on.window().findChild<QAction*>(u"mnucalibration"_s)->trigger();
    auto* const form = on.window().findChild<QWidget*>(u"frmcalibration"_s);
    return form != nullptr && QTest::qWaitForWindowExposed(form) ? form : nullptr;
}

class CalibrationPlaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void it_opens_off_the_plot_data();
    void it_opens_off_the_plot();
    void its_boxes_belong_to_it();
};

void CalibrationPlaceTest::it_opens_off_the_plot_data() {
    QTest::addColumn<QRect>("room");
    QTest::addColumn<QRect>("main_window");
    QTest::addColumn<QRect>("plot");
    QTest::addColumn<QPoint>("place");
    // The window is 700 wide and 640 high with its frame.
    QTest::newRow("right of the main window")
        << QRect(0, 0, 2560, 1440) << QRect(100, 50, 1300, 760) << QRect(110, 100, 642, 513)
        << QPoint(1408, 50);
    QTest::newRow("left of it, where there is no room on the right")
        << QRect(0, 0, 2560, 1440) << QRect(1200, 50, 1300, 760) << QRect(1210, 100, 642, 513)
        << QPoint(492, 50);
    QTest::newRow("below it") << QRect(0, 0, 1440, 1800) << QRect(60, 50, 1300, 760)
                              << QRect(70, 100, 642, 513) << QPoint(60, 818);
    QTest::newRow("over the controls beside the plot on a small screen")
        << QRect(0, 0, 1466, 740) << QRect(0, 0, 1466, 740) << QRect(8, 60, 700, 560)
        << QPoint(766, 0);
    QTest::newRow("within the room of a second screen")
        << QRect(1920, 30, 1466, 740) << QRect(1920, 30, 1466, 740) << QRect(1928, 90, 700, 560)
        << QPoint(2686, 30);
    QTest::newRow("where there is no place off the plot over as little of it as can be")
        << QRect(0, 0, 1366, 740) << QRect(0, 0, 1366, 740) << QRect(8, 60, 700, 560)
        << QPoint(666, 0);
    QTest::newRow("on a screen that is too small from its corner on")
        << QRect(0, 0, 640, 480) << QRect(0, 0, 1300, 760) << QRect(8, 60, 700, 560)
        << QPoint(0, 0);
}

void CalibrationPlaceTest::it_opens_off_the_plot() {
    QFETCH(QRect, room);
    QFETCH(QRect, main_window);
    QFETCH(QRect, plot);
    QTEST(place_beside(QSize(700, 640), {.room = room, .main_window = main_window, .keep = plot}),
          "place");
    // The window itself is put so.
    ProgramOnBench on;
    QWidget* const form = opened_form(on);
    QVERIFY(form != nullptr);
    const QRect screen = on.window().screen()->availableGeometry();
    QVERIFY(screen.contains(form->geometry()));
    QVERIFY(form->geometry().top() > screen.top());
}

void CalibrationPlaceTest::its_boxes_belong_to_it() {
    ProgramOnBench on;
    QWidget* const form = opened_form(on);
    QVERIFY(form != nullptr);
    /// The window that the box belongs to which opens when `press` is done; it is answered with OK.
    const auto owner_of_box = [](const std::function<void()>& press) {
        QPointer<QWidget> owner;
        QTimer::singleShot(0, qApp, [&owner] {
            for (QWidget* const widget : QApplication::topLevelWidgets()) {
                auto* const box = qobject_cast<QMessageBox*>(widget);
                if (box != nullptr && box->isVisible()) {
                    owner = box->parentWidget();
                    box->button(QMessageBox::Ok)->click();
                }
            }
        });
        press();
        return owner;
    };
    form->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), form);
    // The instruction, and then the refusal of what is pressed too early.
    for (const char* const button : {"cmdsetforcalgainh", "cmdcalgain1h"}) {
        on.widget(button)->setFocus();
        QCOMPARE(owner_of_box([&] { QTest::mouseClick(on.widget(button), Qt::LeftButton); }).data(),
                 form);
        QTRY_COMPARE(QApplication::activeWindow(), form);
        QCOMPARE(QApplication::focusWidget(), on.widget(button));
    }
    // What is asked for in the main window is told there.
    on.window().activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &on.window());
    auto* const offset = on.window().findChild<QAction*>(u"cmdcaloofset"_s);
    QCOMPARE(owner_of_box([&] { offset->trigger(); }).data(), &on.window());
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::CalibrationPlaceTest)
#include "calibration_place_test.moc"
