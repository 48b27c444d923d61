// Undo and Redo in the running window, by keys, menu and mouse.

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "config/undo.h"
#include "mouse.h"
#include "program_on_bench.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

struct WithSteps : ProgramOnBench {
    [[nodiscard]] const SetUpSteps& steps() { return program.scope().undo().steps(); }

    void press(Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&window(), Qt::Key_Z, modifiers);
    }

    /// The words in the list of steps from the top, that of the present one in brackets.
    [[nodiscard]] QStringList list() {
        auto* const menu = widget<QMenu>("lststeps");
        Q_EMIT menu->aboutToShow();
        QStringList words;
        for (const QAction* const step : menu->actions()) {
            words.append(step->isChecked() ? u"[%1]"_s.arg(step->text()) : step->text());
        }
        return words;
    }
};

class UndoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keys_take_steps_back_and_again();
    void a_drag_is_one_step_however_slow();
    void the_list_leads_to_a_step();
    void a_text_box_keeps_its_own_undo();
    void a_locked_panel_takes_nothing_back();
    void each_entry_of_a_menu_has_a_letter_of_its_own();
    void each_menu_is_named_for_who_hears_it();
};

void UndoTest::keys_take_steps_back_and_again() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("ch1vdiv");
    auto* const undo = on.widget<QAction>("mnuundo");
    auto* const redo = on.widget<QAction>("mnuredo");
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    QTest::keyClick(list, Qt::Key_Up);
    QCOMPARE(list->currentText(), u"0.2V"_s);
    QVERIFY(undo->isEnabled());
    on.press(Qt::ControlModifier);
    QCOMPARE(list->currentText(), u"0.1V"_s);
    QVERIFY(!undo->isEnabled() && redo->isEnabled());
    on.press(Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(list->currentText(), u"0.2V"_s);
}

void UndoTest::a_drag_is_one_step_however_slow() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    const std::int32_t before = on.program.scope().parts().channels[0].marker_wheel;
    QWidget& marker = *on.widget("ch1text");
    Mouse mouse(on.window());
    mouse.press(marker, marker.rect().center());
    mouse.drag(QPoint(0, -60));
    on.clock.sleep(std::chrono::seconds(5));
    mouse.drag(QPoint(0, 25));
    mouse.release();
    QCOMPARE(on.steps().count(), std::size_t{1});
    QVERIFY(on.program.scope().parts().channels[0].marker_wheel != before);
    on.press(Qt::ControlModifier);
    QCOMPARE(on.program.scope().parts().channels[0].marker_wheel, before);

    // Another drag is another step, even at once.
    for (int drag = 0; drag < 2; ++drag) {
        mouse.press(marker, marker.rect().center());
        mouse.drag(QPoint(0, -20));
        mouse.release();
    }
    QCOMPARE(on.steps().count(), std::size_t{2});
}

void UndoTest::the_list_leads_to_a_step() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("ch1vdiv");
    QTest::keyClick(list, Qt::Key_Up);
    on.clock.sleep(std::chrono::seconds(5));
    QTest::keyClick(list, Qt::Key_Up);
    QCOMPARE(on.list(),
             (QStringList{u"[CH1 V/div 0.5V]"_s, u"CH1 V/div 0.2V"_s, u"The beginning"_s}));
    on.widget<QMenu>("lststeps")->actions().at(2)->trigger();
    QCOMPARE(list->currentText(), u"0.1V"_s);
    QCOMPARE(on.list(),
             (QStringList{u"CH1 V/div 0.5V"_s, u"CH1 V/div 0.2V"_s, u"[The beginning]"_s}));
    on.widget<QMenu>("lststeps")->actions().at(1)->trigger();
    QCOMPARE(list->currentText(), u"0.2V"_s);
}

void UndoTest::a_text_box_keeps_its_own_undo() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("ch1vdiv");
    QTest::keyClick(list, Qt::Key_Up);
    auto* const box = on.widget<QLineEdit>("trtout");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, u"20"_s);
    QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(box->text() != u"20"_s);
    QCOMPARE(list->currentText(), u"0.2V"_s);
}

void UndoTest::a_locked_panel_takes_nothing_back() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    auto* const list = on.widget<QComboBox>("ch1vdiv");
    QTest::keyClick(list, Qt::Key_Up);
    on.program.scope().undo().set_locked(true);
    QVERIFY(!on.widget<QAction>("mnuundo")->isEnabled());
    on.press(Qt::ControlModifier);
    QCOMPARE(on.list().size(), qsizetype{2});
    on.widget<QMenu>("lststeps")->actions().at(1)->trigger();
    QCOMPARE(list->currentText(), u"0.2V"_s);
    on.program.scope().undo().set_locked(false);
    on.press(Qt::ControlModifier);
    QCOMPARE(list->currentText(), u"0.1V"_s);
}

void UndoTest::each_entry_of_a_menu_has_a_letter_of_its_own() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    int letters = 0;
    for (const QAction* const title : on.window().menuBar()->actions()) {
        QStringList taken;
        for (const QAction* const entry : title->menu()->actions()) {
            const qsizetype sign = entry->text().indexOf(u'&');
            if (sign < 0) {
                continue;
            }
            const QString letter = entry->text().mid(sign + 1, 1).toLower();
            QVERIFY2(!taken.contains(letter), qPrintable(entry->text()));
            taken.append(letter);
            ++letters;
        }
    }
    QVERIFY(letters > 20);
}

void UndoTest::each_menu_is_named_for_who_hears_it() {
    WithSteps on;
    QVERIFY(on.run_until_sweeping());
    QCOMPARE(on.window().menuBar()->accessibleName(), u"Menus"_s);
    QList<QMenu*> menus = on.window().menuBar()->findChildren<QMenu*>();
    menus.removeIf([](const QMenu* menu) { return menu->title().isEmpty(); }); // the bar's own
    // Six in the bar; the steps, the sweep, the references, and each of four references.
    QVERIFY(menus.size() >= 13);
    for (const QMenu* const menu : menus) {
        QVERIFY2(!menu->accessibleName().isEmpty(), qPrintable(menu->title()));
        QVERIFY2(!menu->accessibleName().contains(u'&'), qPrintable(menu->accessibleName()));
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::UndoTest)
#include "undo_test.moc"
