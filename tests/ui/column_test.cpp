// The column of frames in a low window: what scrolls it, and what a click does to the controls
// in it.

#include <QAbstractButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "mouse.h"
#include "program_on_bench.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// A sweeping program in a window of `size`.
struct Column {
    explicit Column(QSize size) : ready(sweeps_in(size)) {}

    /// The whole of `widget` is seen.
    [[nodiscard]] bool in_sight(const QWidget& widget) const {
        const QWidget& viewport = *area->viewport();
        return viewport.rect().contains(QRect(widget.mapTo(&viewport, QPoint()), widget.size()));
    }

    /// Takes the keyboard focus from every control.
    void focus_nothing() { on.window().setFocus(); }

    ProgramOnBench on;
    QScrollArea* area = on.window().findChild<QScrollArea*>();
    QScrollBar* bar = area->verticalScrollBar();
    bool ready; ///< shown, in front and sweeping

private:
    bool sweeps_in(QSize size) {
        on.window().resize(size);
        return on.run_until_sweeping() && QTest::qWaitForWindowActive(&on.window());
    }
};

constexpr QSize low(1277, 695);

class ColumnTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_click_on_what_is_half_seen_counts();
    void the_keyboard_brings_into_sight_what_it_goes_to();
    void a_window_that_comes_to_the_front_stays_as_it_was();
};

void ColumnTest::a_click_on_what_is_half_seen_counts() {
    Column column(low);
    QVERIFY(column.ready);
    const int height = column.area->viewport()->height();
    QStringList clicked;
    for (auto* const button : column.area->findChildren<QAbstractButton*>()) {
        if (!button->isVisible()) {
            continue;
        }
        const int middle = button->mapTo(column.area->widget(), button->rect().center()).y();
        // The middle lies on the upper edge, then on the lower one.
        for (const auto& [scrolled, inside] :
             {std::pair(middle, 4), std::pair(middle - height, -4)}) {
            column.focus_nothing();
            column.bar->setValue(scrolled);
            if (column.bar->value() != scrolled || column.in_sight(*button)) {
                continue;
            }
            int clicks = 0;
            const auto counting = connect(button, &QAbstractButton::clicked, [&] { ++clicks; });
            Mouse mouse(column.on.window());
            mouse.press(*button, {8, button->rect().center().y() + inside});
            const int after = column.bar->value();
            mouse.release();
            disconnect(counting);
            QVERIFY2(after == scrolled && clicks == 1, qPrintable(button->objectName()));
            clicked.append(button->objectName());
        }
    }
    for (const QString& name : {u"gridenable"_s, u"average"_s, u"Check1"_s}) {
        QVERIFY2(clicked.contains(name), qPrintable(clicked.join(u' ')));
    }
}

void ColumnTest::the_keyboard_brings_into_sight_what_it_goes_to() {
    Column column(low);
    QVERIFY(column.ready);
    // So low that much is out of sight.
    column.area->setFixedHeight(300);
    QTRY_VERIFY(column.bar->maximum() > 200);
    const QWidget& volts = *column.on.widget("ch1vdiv");
    const QWidget& channel = *column.on.widget("combocursorselect");
    column.focus_nothing();
    column.bar->setValue(0);
    QVERIFY(!column.in_sight(volts) && !column.in_sight(channel));
    QTest::keyClick(&column.on.window(), Qt::Key_V, Qt::AltModifier);
    QVERIFY(volts.hasFocus());
    QVERIFY(column.in_sight(volts));

    QWidget& below = *column.on.widget("TabStrip2");
    below.setFocus();
    column.bar->setValue(0);
    QTest::keyClick(&below, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(channel.hasFocus());
    QVERIFY(column.in_sight(channel));

    int reached = 0;
    for (QWidget* focused = QApplication::focusWidget(); column.area->isAncestorOf(focused);
         focused = QApplication::focusWidget()) {
        QVERIFY2(column.in_sight(*focused), qPrintable(focused->objectName()));
        ++reached;
        QTest::keyClick(focused, Qt::Key_Backtab, Qt::ShiftModifier);
    }
    // Counted off the manual's tables: 5 + 7 + 5 + 6 + 8 + 2.
    QCOMPARE(reached, 33);
}

void ColumnTest::a_window_that_comes_to_the_front_stays_as_it_was() {
    Column column(low);
    QVERIFY(column.ready);
    const QWidget& channel = *column.on.widget("combocursorselect");
    column.on.widget("combocursorselect")->setFocus(Qt::TabFocusReason);
    QVERIFY(column.in_sight(channel));
    column.bar->setValue(0);
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    column.on.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&column.on.window()));
    QVERIFY(channel.hasFocus());
    QCOMPARE(column.bar->value(), 0);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ColumnTest)
#include "column_test.moc"
