// How the adjust wheel's widget looks, and what screen readers see of it.

#include <QAccessible>
#include <QTest>

#include "ui/look.h"
#include "wheel_alone.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

class WheelFaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_ribs_stand_where_the_phase_says_data();
    void the_ribs_stand_where_the_phase_says();
    void light_comes_from_the_upper_left();
    void focus_and_disabling_show();
    void a_screen_reader_reads_and_sets_it();
};

void WheelFaceTest::the_ribs_stand_where_the_phase_says_data() {
    QTest::addColumn<bool>("dark");
    QTest::addColumn<int>("phase");
    for (const int phase : {0, 1, 7, 11}) {
        QTest::addRow("dark, phase %d", phase) << true << phase;
        QTest::addRow("light, phase %d", phase) << false << phase;
    }
}

void WheelFaceTest::the_ribs_stand_where_the_phase_says() {
    QFETCH(bool, dark);
    QFETCH(int, phase);
    apply_look(dark ? Look::dark : Look::light);
    WheelAlone on;
    on.wheel.turn(phase);
    QCOMPARE(on.wheel.phase(), phase);
    const QImage picture = on.picture();
    const int middle = picture.height() / 2;
    const auto lightness = [&](int x, int y) { return picture.pixelColor(x, y).lightness(); };
    const int body = lightness(on.widget.width() / 2, 2);
    constexpr int pitch = 12;
    constexpr int rib = 8;
    for (int x = 120 + phase; x < 170; x += pitch) {
        QVERIFY(lightness(x, middle) > body);
        for (int inner = 1; inner < rib - 1; ++inner) {
            QCOMPARE(lightness(x + inner, middle), body);
        }
        for (int groove = rib - 1; groove < pitch; ++groove) {
            QVERIFY(lightness(x + groove, middle) < body);
        }
        // Three pixels are left free above and below.
        QVERIFY(lightness(x, 3) > body && lightness(x, picture.height() - 4) > body);
        QVERIFY(lightness(x, 2) == body && lightness(x, picture.height() - 3) == body);
    }
}

void WheelFaceTest::light_comes_from_the_upper_left() {
    for (const Look look : {Look::dark, Look::light}) {
        apply_look(look);
        WheelAlone on;
        const QImage picture = on.picture();
        const int right = picture.width() - 1;
        const int lower = picture.height() - 1;
        const auto lightness = [&](int x, int y) { return picture.pixelColor(x, y).lightness(); };
        const int body = lightness(right / 2, 2);
        QVERIFY(lightness(right / 2, 0) > body);
        QVERIFY(lightness(right / 2, lower) < body);
        QVERIFY(lightness(0, 2) > lightness(1, 2));
        QVERIFY(lightness(right, 2) < lightness(right - 1, 2));
        // The cylinder turns away at its ends.
        QVERIFY(lightness(2, 2) < lightness(40, 2) && lightness(40, 2) < body);
        QVERIFY(lightness(right - 2, 2) < lightness(right - 40, 2));
    }
}

void WheelFaceTest::focus_and_disabling_show() {
    apply_look(Look::dark);
    WheelAlone on;
    QVERIFY(on.show());
    on.widget.setFocus();
    const QColor accent = qApp->palette().color(QPalette::Highlight);
    QCOMPARE(on.picture().pixelColor(50, 1), accent);
    on.widget.clearFocus();
    QVERIFY(on.picture().pixelColor(50, 1) != accent);
    const auto contrast = [&] {
        const QImage picture = on.picture();
        return picture.pixelColor(144, 15).lightness() - picture.pixelColor(151, 15).lightness();
    };
    const int enabled = contrast();
    on.wheel.set_enabled(false);
    QVERIFY(contrast() > 0);
    QVERIFY(contrast() < enabled / 2);
}

void WheelFaceTest::a_screen_reader_reads_and_sets_it() {
    WheelAlone on;
    on.widget.setAccessibleName(u"Adjust wheel"_s);
    QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(&on.widget);
    QVERIFY(read != nullptr);
    QCOMPARE(read->role(), QAccessible::Slider);
    QCOMPARE(read->text(QAccessible::Name), u"Adjust wheel"_s);
    QCOMPARE(read->text(QAccessible::Value), u"100"_s);
    QVERIFY(read->state().focusable);
    QAccessibleValueInterface* const value = read->valueInterface();
    QVERIFY(value != nullptr);
    QCOMPARE(value->currentValue().toInt(), 100);
    QCOMPARE(value->minimumValue().toInt(), 0);
    QCOMPARE(value->maximumValue().toInt(), 1024);
    QCOMPARE(value->minimumStepSize().toInt(), 4);
    QList<int> told;
    on.widget.announce_through([&told](QAccessibleEvent& event) {
        if (event.type() == QAccessible::ValueChanged) {
            told.append(static_cast<QAccessibleValueChangeEvent&>(event).value().toInt());
        }
    });
    value->setCurrentValue(700);
    QTest::keyClick(&on.widget, Qt::Key_Left);
    on.wheel.set_Value(696);
    QCOMPARE(on.wheel.Value(), 696);
    QCOMPARE(on.changes, 2);
    QCOMPARE(told, (QList<int>{700, 696}));
    on.wheel.set_enabled(false);
    value->setCurrentValue(5);
    QCOMPARE(on.wheel.Value(), 696);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::WheelFaceTest)
#include "wheel_face_test.moc"
