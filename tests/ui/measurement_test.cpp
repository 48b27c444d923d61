// The Measurement frame and the results panel on a simulated instrument.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QTest>

#include "program_on_bench.h"
#include "ui/look.h"
#include "ui/picture_folder.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QByteArray numbered(const char* name, int slot) {
    return QByteArray(name) + '(' + QByteArray::number(slot) + ')';
}

/// The program with its window, sweeping.
struct Sweeping : ProgramOnBench {
    /// Shows the window; false when the program does not sweep.
    [[nodiscard]] bool begin() {
        apply_look(Look::dark);
        window().resize(1280, 800);
        return run_until_sweeping();
    }

    QComboBox* selector(int slot) { return widget<QComboBox>(numbered("cmbMeas", slot)); }
    QCheckBox* box(int slot) { return widget<QCheckBox>(numbered("chkMeasAnno", slot)); }
    QString shown(const char* name, int slot) {
        return widget<QLabel>(numbered(name, slot))->text();
    }

    /// Chooses `text` in selector `slot` by keyboard, as a user does.
    void choose(int slot, const QString& text) {
        QComboBox* const list = selector(slot);
        const int steps = list->findText(text) - list->currentIndex();
        for (int step = 0; step < std::abs(steps); ++step) {
            QTest::keyClick(list, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        }
    }

    void click(QCheckBox* check) {
        QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(8, check->height() / 2));
    }

    /// Pixels of the picture in the colour of annotations.
    [[nodiscard]] int marked_pixels() {
        const auto pixels = program.scope().picture().surface().pixels();
        return static_cast<int>(
            std::count(pixels.begin(), pixels.end(), pixel_of(ColourTable{}.annotations)));
    }

    bool running = begin();
};

class MeasurementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_frame_starts_with_its_defaults();
    void results_appear_with_the_sweeps();
    void a_selector_chooses_what_its_row_shows();
    void an_empty_slot_is_an_empty_row();
    void the_master_box_hides_the_results_and_brings_them_back();
    void the_rules_of_the_results_are_of_one_thickness();
    void annotation_boxes_exclude_each_other_and_mark_the_picture();
    void a_channel_that_is_off_has_no_result();
};

void MeasurementTest::the_frame_starts_with_its_defaults() {
    Sweeping on;
    QVERIFY(on.running);
    QCOMPARE(on.widget<QCheckBox>("Check1")->text().remove(u'&'), u"Measure"_s);
    QVERIFY(on.widget<QCheckBox>("Check1")->isChecked());
    const QStringList defaults = {u"VMax"_s, u"Vpp"_s, u"Frequency"_s};
    for (int slot = 0; slot < 3; ++slot) {
        QCOMPARE(on.selector(slot)->currentText(), defaults[slot]);
        QCOMPARE(on.selector(slot)->count(), 15);
        QVERIFY(on.selector(slot)->isEnabled());
        QVERIFY(!on.selector(slot)->toolTip().isEmpty());
        QVERIFY(!on.box(slot)->isChecked());
        QVERIFY(!on.box(slot)->toolTip().isEmpty());
    }
}

void MeasurementTest::results_appear_with_the_sweeps() {
    Sweeping on;
    QVERIFY(on.running);
    const QStringList labels = {u"Vmax"_s, u"Vpp"_s, u"f"_s};
    QVERIFY(QTest::qWaitFor([&] { return on.shown("txtMeasCH1", 2).contains(u"Hz"_s); }));
    for (int slot = 0; slot < 3; ++slot) {
        QCOMPARE(on.shown("lblMeas", slot), labels[slot]);
        QVERIFY(on.shown("txtMeasCH1", slot).endsWith(u' '));
        QVERIFY(on.shown("txtMeasCH2", slot).endsWith(u' '));
        QCOMPARE(on.shown("lblAnnoMark", slot), QString());
    }
    QVERIFY(on.shown("txtMeasCH1", 0).endsWith(u"V "_s));
}

void MeasurementTest::a_selector_chooses_what_its_row_shows() {
    Sweeping on;
    QVERIFY(on.running);
    for (int slot = 0; slot < 3; ++slot) {
        on.choose(slot, u"VRMS"_s);
        QCOMPARE(on.selector(slot)->currentText(), u"VRMS"_s);
        QVERIFY(QTest::qWaitFor([&] { return on.shown("lblMeas", slot) == u"Vrms"_s; }));
        on.choose(slot, u"tPuls-"_s);
        QVERIFY(QTest::qWaitFor([&] {
            return on.shown("lblMeas", slot) == u"tp-"_s &&
                   on.shown("txtMeasCH1", slot).endsWith(u"s "_s);
        }));
    }
}

void MeasurementTest::an_empty_slot_is_an_empty_row() {
    Sweeping on;
    QVERIFY(on.running);
    on.choose(1, u"---"_s);
    QVERIFY(QTest::qWaitFor([&] { return on.shown("lblMeas", 1).isEmpty(); }));
    QCOMPARE(on.shown("txtMeasCH1", 1), QString());
    QCOMPARE(on.shown("txtMeasCH2", 1), QString());
    QCOMPARE(on.shown("lblMeas", 2), u"f"_s);
}

void MeasurementTest::the_master_box_hides_the_results_and_brings_them_back() {
    Sweeping on;
    QVERIFY(on.running);
    QWidget* const panel = on.widget("picMeasure");
    const QRect place = panel->geometry();
    QVERIFY(panel->isVisible());
    on.click(on.widget<QCheckBox>("Check1"));
    QVERIFY(!panel->isVisible());
    QTest::qWait(250);
    QVERIFY(!panel->isVisible());
    on.click(on.widget<QCheckBox>("Check1"));
    QVERIFY(QTest::qWaitFor([&] { return panel->isVisible(); }));
    QCOMPARE(panel->geometry(), place);
}

void MeasurementTest::the_rules_of_the_results_are_of_one_thickness() {
    ProgramOnBench on;
    const double ratio = on.window().devicePixelRatioF();
    const auto thickness = static_cast<int>(ratio);
    QVERIFY(on.run_until_sweeping());
    const QWidget& results = *on.widget("picMeasure");
    // Each window has the results at another height.
    for (int high = 800; high < 808; ++high) {
        on.window().resize(1280, high);
        QTest::qWait(20);
        const QImage shown = on.window().grab().toImage();
        const QRectF place(QPointF(results.mapTo(&on.window(), QPoint())) * ratio,
                           QSizeF(results.size()) * ratio);
        const QRgb rule = results.palette().color(QPalette::WindowText).rgb();
        // Between the rule in the middle and the values of CH2 there is no text.
        const int column = static_cast<int>(place.center().x() - 2 * ratio);
        std::vector<int> rules;
        bool within = false;
        for (int row = static_cast<int>(place.top()) - 2; row < place.bottom(); ++row) {
            const bool on_rule = shown.pixel(column, row) == rule;
            if (on_rule && !within) {
                rules.push_back(0);
            }
            if (on_rule) {
                ++rules.back();
            }
            within = on_rule;
        }
        QCOMPARE(rules, std::vector<int>(3, thickness));
        const int row = static_cast<int>(place.center().y());
        int across = 0;
        for (int pixel = static_cast<int>(place.center().x() - 9 * ratio); pixel <= column;
             ++pixel) {
            across += shown.pixel(pixel, row) == rule ? 1 : 0;
        }
        QCOMPARE(across, thickness);
    }
}

void MeasurementTest::annotation_boxes_exclude_each_other_and_mark_the_picture() {
    Sweeping on;
    QVERIFY(on.running);
    QVERIFY(QTest::qWaitFor([&] { return on.shown("txtMeasCH1", 2).contains(u"Hz"_s); }));
    QCOMPARE(on.marked_pixels(), 0);
    for (const int slot : {1, 0, 2}) {
        on.click(on.box(slot));
        for (int other = 0; other < 3; ++other) {
            QCOMPARE(on.box(other)->isChecked(), other == slot);
            QCOMPARE(on.shown("lblAnnoMark", other), other == slot ? u"*"_s : QString());
        }
        QVERIFY(on.marked_pixels() > 0);
    }
    QVERIFY(on.window().grab().save(picture_folder() + u"/screenshot-annotated-times.png"_s));
    on.click(on.box(1));
    QVERIFY(on.window().grab().save(picture_folder() + u"/screenshot-annotated-levels.png"_s));
    on.click(on.box(1));
    QVERIFY(!on.box(1)->isChecked());
    QCOMPARE(on.shown("lblAnnoMark", 1), QString());
    QCOMPARE(on.marked_pixels(), 0);
}

void MeasurementTest::a_channel_that_is_off_has_no_result() {
    Sweeping on;
    QVERIFY(on.running);
    QVERIFY(QTest::qWaitFor([&] { return on.shown("txtMeasCH2", 0).endsWith(u"V "_s); }));
    on.click(on.widget<QCheckBox>("ch2enable"));
    QVERIFY(QTest::qWaitFor([&] { return on.shown("txtMeasCH2", 0) == u" "_s; }));
    QVERIFY(on.shown("txtMeasCH1", 0).endsWith(u"V "_s));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::MeasurementTest)
#include "measurement_test.moc"
