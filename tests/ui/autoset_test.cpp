// Autoset in the running window: what it keeps away while it works, and how it is left.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QTest>

#include "autoset/autoset.h"
#include "program_on_bench.h"

namespace kv408::ui {
namespace {

class AutosetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothing_but_its_window_is_used_while_it_works();
};

void AutosetTest::nothing_but_its_window_is_used_while_it_works() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    auto* const grid = on.widget<QCheckBox>("gridenable");
    auto* const times = on.widget<QComboBox>("seltimediv");
    const bool before = grid->isChecked();
    const QString time = times->currentText();
    const Autoset& autoset = on.program.scope().autoset();
    on.widget<QAction>("mnuautoset")->trigger();
    auto* const window = on.widget<QDialog>("frmAutoset");
    QVERIFY(window->isVisible() && autoset.under_way());
    QTest::mouseClick(grid, Qt::LeftButton);
    QCOMPARE(grid->isChecked(), before);
    QTest::keyClick(grid, Qt::Key_Space);
    QCOMPARE(grid->isChecked(), before);
    QTest::mouseClick(on.widget("cmdstop"), Qt::LeftButton);
    QVERIFY(autoset.under_way());
    QVERIFY(!on.widget("cmdAutosetClose")->isEnabled());
    QTest::keyClick(window, Qt::Key_Escape);
    QVERIFY(!autoset.under_way() && !window->isVisible());
    QCOMPARE(times->currentText(), time);
    QTest::mouseClick(grid, Qt::LeftButton);
    QCOMPARE(grid->isChecked(), !before);
    // It can be begun again, and runs to its end.
    on.widget<QAction>("mnuautoset")->trigger();
    QVERIFY(window->isVisible() && autoset.under_way());
    QTRY_VERIFY_WITH_TIMEOUT(!autoset.under_way(), 60'000);
    QVERIFY(window->isVisible() && on.widget("cmdAutosetClose")->isEnabled());
    QTest::mouseClick(grid, Qt::LeftButton);
    QCOMPARE(grid->isChecked(), before);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::AutosetTest)
#include "autoset_test.moc"
