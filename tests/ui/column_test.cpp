// The column of frames in a low window: what scrolls it, and what a click and the mouse wheel do to
// the controls in it.

#include <QAbstractButton>
#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTabBar>
#include <QTest>

#include "mouse.h"
#include "operable.h"
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
    QScrollArea* area = area_of(*on.widget("gridenable"));
    QScrollBar* bar = area->verticalScrollBar();
    bool ready; ///< shown, in front and sweeping

private:
    /// The scroll area that `widget` lies in.
    static QScrollArea* area_of(const QWidget& widget) {
        QWidget* parent = widget.parentWidget();
        while (parent != nullptr && qobject_cast<QScrollArea*>(parent) == nullptr) {
            parent = parent->parentWidget();
        }
        return qobject_cast<QScrollArea*>(parent);
    }

    bool sweeps_in(QSize size) {
        on.window().resize(size);
        return on.run_until_sweeping() && QTest::qWaitForWindowActive(&on.window());
    }
};

constexpr QSize low(1277, 600);
constexpr QSize high(1600, 1100);

/// The lists, sliders and tabs of the control panel.
QList<QWidget*> turned_by_wheel(QWidget& window) {
    QList<QWidget*> found;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (qobject_cast<QComboBox*>(widget) != nullptr ||
            qobject_cast<QSlider*>(widget) != nullptr ||
            qobject_cast<QTabBar*>(widget) != nullptr) {
            found.append(widget);
        }
    }
    return found;
}

/// What `widget` stands at.
int standing(const QWidget& widget) {
    if (const auto* const list = qobject_cast<const QComboBox*>(&widget)) {
        return list->currentIndex();
    }
    if (const auto* const slider = qobject_cast<const QSlider*>(&widget)) {
        return slider->value();
    }
    return qobject_cast<const QTabBar*>(&widget)->currentIndex();
}

class ColumnTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_click_on_what_is_half_seen_counts();
    void the_keyboard_brings_into_sight_what_it_goes_to();
    void a_window_that_comes_to_the_front_stays_as_it_was();
    void the_mouse_wheel_scrolls_over_what_has_no_focus();
    void the_mouse_wheel_turns_what_has_the_focus();
    void the_mouse_wheel_does_nothing_where_nothing_scrolls();
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
    column.area->setFixedHeight(220);
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

    QStringList reached;
    for (QWidget* focused = QApplication::focusWidget(); column.area->isAncestorOf(focused);
         focused = QApplication::focusWidget()) {
        QVERIFY2(column.in_sight(*focused), qPrintable(focused->objectName()));
        reached += focused->objectName();
        QTest::keyClick(focused, Qt::Key_Backtab, Qt::ShiftModifier);
    }
    QCOMPARE(missing_in(reached, operable(column.on.panel(), *column.area)), QString());
    QVERIFY(reached.size() > 25);
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

void ColumnTest::the_mouse_wheel_scrolls_over_what_has_no_focus() {
    Column column(low);
    QVERIFY(column.ready);
    const QList<QWidget*> all = turned_by_wheel(column.on.window());
    // Lists: 3 measurements, source, edge, time, 2 volts, cursor channel, device; the hysteresis;
    // 2 rows of tabs.
    QCOMPARE(all.size(), 13);
    for (QWidget* const widget : all) {
        column.focus_nothing();
        column.area->ensureWidgetVisible(widget);
        const int stood = standing(*widget);
        const int scrolled = column.bar->value();
        Mouse(column.on.window()).turn_wheel(*widget, scrolled == 0 ? -1 : 1);
        QVERIFY2(standing(*widget) == stood, qPrintable(widget->objectName()));
        QVERIFY2(!widget->hasFocus(), qPrintable(widget->objectName()));
        const bool inside = column.area->isAncestorOf(widget);
        QVERIFY2((column.bar->value() != scrolled) == inside, qPrintable(widget->objectName()));
    }
}

void ColumnTest::the_mouse_wheel_turns_what_has_the_focus() {
    Column column(low);
    QVERIFY(column.ready);
    FrontPanel& panel = column.on.panel();
    const auto turn = [&column](const char* name, int notches) {
        QWidget& widget = *column.on.widget(name);
        widget.setFocus(Qt::TabFocusReason);
        const int scrolled = column.bar->value();
        Mouse(column.on.window()).turn_wheel(widget, notches);
        return column.bar->value() == scrolled;
    };
    QVERIFY(turn("seltimediv", -1));
    QCOMPARE(panel.seltimediv.text(), std::string("10ns/div"));
    QVERIFY(turn("ch2vdiv", 1));
    QCOMPARE(panel.channel[1].vdiv.text(), std::string("0.2V"));
    QVERIFY(turn("shyst", 1));
    QTRY_VERIFY(panel.shyst.value() > 10);
    QVERIFY(turn("TabStrip3", 1));
    QCOMPARE(panel.tabstrip3.selected(), 2);
}

void ColumnTest::the_mouse_wheel_does_nothing_where_nothing_scrolls() {
    Column column(high);
    QVERIFY(column.ready);
    QCOMPARE(column.bar->maximum(), 0);
    for (QWidget* const widget : turned_by_wheel(column.on.window())) {
        for (const int notches : {-1, 1}) {
            column.focus_nothing();
            const int stood = standing(*widget);
            Mouse(column.on.window()).turn_wheel(*widget, notches);
            QVERIFY2(standing(*widget) == stood, qPrintable(widget->objectName()));
            QVERIFY2(!widget->hasFocus(), qPrintable(widget->objectName()));
        }
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ColumnTest)
#include "column_test.moc"
