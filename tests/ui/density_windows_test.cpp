// The windows of what many sweeps tell, operated by mouse and keys.

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "demo/test_bench_window.h"
#include "dragging.h"
#include "scope/tools.h"
#include "shipped_files.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The program over a bench, with the masks that come with it.
struct OverBench : Dragging {
    OverBench() { add_shipped_masks(files, "/program/masks"); }

    Tools& tools() { return program.scope().tools(); }

    /// Chooses the menu entry named `name`.
    void choose(const char* name) {
        auto* const action = window().findChild<QAction*>(QString::fromLatin1(name));
        QVERIFY(action != nullptr && action->isEnabled());
        action->trigger();
    }

    /// Chooses the entry `text` of the bench's list, by keys.
    void connect_bench(const QString& text) {
        auto* const list = bench.findChild<QComboBox*>(u"connection"_s);
        QTest::keyClick(list, Qt::Key_Home);
        while (list->currentText() != text && list->currentIndex() + 1 < list->count()) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        QCOMPARE(list->currentText(), text);
        // A sweep may be on its way that has the signal before.
        const auto number = [this] { return parts().sweeps.last_complete()->number; };
        const auto before = number();
        QTRY_VERIFY_WITH_TIMEOUT(number() > before + 2, 60'000);
    }

    QString text(const char* label) { return widget<QLabel>(label)->text(); }

    TestBenchWindow bench{simulation.bench()};
};

class DensityWindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_rectangle_of_the_histogram_is_moved_by_mouse_and_keys();
    void an_eye_is_three_clicks_away();
    void jitter_is_told_typed_and_copied();
    void a_mask_tells_its_verdict_and_stops_the_sweep();
    void filter_avg_is_told_in_each_window();
};

void DensityWindowsTest::the_rectangle_of_the_histogram_is_moved_by_mouse_and_keys() {
    OverBench on;
    QVERIFY(on.begin());
    on.choose("mnuhistogram");
    const HistogramDialog& dialog = on.tools().histogram();
    const PlotWindow first = dialog.window();
    Mouse mouse(on.window());
    const QWidget& plot = on.window().plot();
    mouse.press_pixel(plot, on.pixel_of_unit(first.left + 20, first.top + 100));
    mouse.drag_to_pixel(plot, on.pixel_of_unit(first.left + 60, first.top + 90));
    mouse.release();
    QCOMPARE(dialog.window(),
             (PlotWindow{first.left + 40, first.top - 10, first.right + 40, first.bottom - 10}));
    const PlotWindow moved = dialog.window();
    mouse.press_pixel(plot, on.pixel_of_unit(moved.right, moved.top + 100)); // its right edge
    mouse.drag_to_pixel(plot, on.pixel_of_unit(moved.right + 30, moved.top + 150));
    mouse.release();
    QCOMPARE(dialog.window(), (PlotWindow{moved.left, moved.top, moved.right + 30, moved.bottom}));
    mouse.press_pixel(plot, on.pixel_of_unit(20, 20)); // beside it
    mouse.drag_to_pixel(plot, on.pixel_of_unit(50, 50));
    mouse.release();
    QCOMPARE(dialog.window().left, moved.left);
    auto* const place = on.widget("lblHistogramWindow");
    QTest::keyClick(place, Qt::Key_Left);
    QCOMPARE(dialog.window().left, moved.left - 1);
    QCOMPARE(dialog.window().right, moved.right + 29);
    QTest::keyClick(place, Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(dialog.window().top, moved.top + 13);
    QTest::keyClick(place, Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(dialog.window().top, moved.top + 13);
    QCOMPARE(dialog.window().bottom, moved.bottom + 12);
    QTest::keyClick(on.widget("frmHistogram"), Qt::Key_Escape);
    mouse.press_pixel(plot, on.pixel_of_unit(moved.left + 20, moved.top + 100));
    mouse.drag_to_pixel(plot, on.pixel_of_unit(moved.left + 60, moved.top + 100));
    mouse.release();
    QCOMPARE(dialog.window().left, moved.left - 1);
}

void DensityWindowsTest::an_eye_is_three_clicks_away() {
    OverBench on;
    QVERIFY(on.begin());
    on.connect_bench(u"Eye, clean"_s);
    on.choose("mnueye");
    QTRY_COMPARE_WITH_TIMEOUT(on.text("lblEyeFound"), u"The eye is open"_s, 60'000);
    QVERIFY(!on.program.scope().picture().drawn().overlays.marks.lines.empty());
    const QStringList names = on.text("lblEyeNames").split(u'\n');
    const QStringList values = on.text("lblEyeValues").split(u'\n');
    QCOMPARE(names.size(), values.size());
    const auto value = [&](const QString& name) { return values.at(names.indexOf(name)); };
    const QString interval_found = value(u"Unit interval"_s);
    QVERIFY2(std::abs(interval_found.section(u'n', 0, 0).toDouble() - 80.0) < 0.5,
             qPrintable(interval_found + on.text("lblEyeState")));
    QVERIFY(std::abs(value(u"Eye amplitude"_s).section(u'm', 0, 0).toDouble() - 400.0) < 5.0);
    // Another interval than the data's own has other crossings, or none.
    auto* const interval = on.widget<QLineEdit>("txtEyeInterval");
    interval->setFocus();
    QTest::keyClicks(interval, u"40ns"_s);
    QCOMPARE(on.tools().eye().setup().interval.value_or(0), 40000.0);
    QTest::keyClick(on.widget("frmEye"), Qt::Key_Escape);
    QVERIFY(on.program.scope().picture().drawn().overlays.marks.lines.empty());
    QVERIFY(on.tools().density().controls().chkDensity.checked());
}

void DensityWindowsTest::jitter_is_told_typed_and_copied() {
    OverBench on;
    QVERIFY(on.begin());
    on.connect_bench(u"Eye, clean"_s);
    on.simulation.bench().sources[0].jitter_ps = 500.0;
    on.choose("mnujitter");
    QTRY_COMPARE_WITH_TIMEOUT(on.text("lblJitterEdge"), u"Random data: edges of both directions"_s,
                              60'000);
    auto* const level = on.widget<QLineEdit>("txtJitterLevel");
    level->setFocus();
    QTest::keyClicks(level, u"3V"_s);
    QCOMPARE(on.text("lblJitterEdge"), u"The trace does not cross the level there"_s);
    QVERIFY(on.text("lblJitterValues").startsWith(u"-\n-\n"_s));
    QTest::keyClick(level, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(level, u"2mV"_s);
    QCOMPARE(on.text("lblJitterEdge"), u"Random data: edges of both directions"_s);
    QVERIFY(on.text("lblJitterValues").contains(u"\n2.0000mV\n"_s));
    QTest::mouseClick(on.widget("cmdJitterCopy"), Qt::LeftButton);
    const QString copied = QGuiApplication::clipboard()->text();
    QVERIFY2(copied.contains(u"\nCrossing level\t0.002\tV\t\n"_s), qPrintable(copied));
}

void DensityWindowsTest::a_mask_tells_its_verdict_and_stops_the_sweep() {
    OverBench on;
    QVERIFY(on.begin());
    on.connect_bench(u"Eye, clean"_s);
    on.choose("mnumask");
    QTRY_COMPARE_WITH_TIMEOUT(on.text("lblMaskVerdict"), u"PASS"_s, 60'000);
    auto* const verdict = on.widget<QLabel>("lblMaskVerdict");
    QVERIFY(verdict->fontInfo().pixelSize() >= 4 * on.widget("frmMask")->fontInfo().pixelSize());
    auto* const action = on.widget<QComboBox>("cmbMaskAction");
    action->setFocus();
    QTest::keyClicks(action, u"St"_s);
    QCOMPARE(action->currentText(), u"Stop"_s);
    QCOMPARE(on.panel().textstatus.text(), std::string("Running"));
    // Some of the noise reaches the middle of the eye, which stays open enough to be found.
    on.simulation.bench().sources[0].noise_mv = 40.0;
    QTRY_COMPARE_WITH_TIMEOUT(on.state(), std::string("stoped"), 60'000);
    QTRY_COMPARE(on.text("lblMaskVerdict"), u"FAIL"_s);
    QVERIFY(!on.program.scope().picture().drawn().overlays.marks.lines.empty());
}

void DensityWindowsTest::filter_avg_is_told_in_each_window() {
    OverBench on;
    QVERIFY(on.begin());
    for (const char* const entry : {"mnuhistogram", "mnujitter", "mnueye", "mnumask"}) {
        on.choose(entry);
    }
    on.program.scope().act([&] { on.panel().average.set_checked(true); });
    for (const char* const remark :
         {"lblHistogramRemark", "lblJitterRemark", "lblEyeRemark", "lblMaskRemark"}) {
        QTRY_VERIFY_WITH_TIMEOUT(on.text(remark).startsWith(u"Filter Avg. is on"_s), 60'000);
        QVERIFY(on.widget(remark)->isVisible());
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::DensityWindowsTest)
#include "density_windows_test.moc"
