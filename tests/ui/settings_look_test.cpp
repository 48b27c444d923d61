// How the settings dialog looks, and what it makes of the window.

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include "open_settings.h"
#include "ui/colours.h"
#include "ui/look.h"
#include "ui/picture_folder.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Every widget of the dialog by its control's name.
const QStringList settings_widget_names = {
    u"TabStrip1"_s,         u"cmdOK"_s,           u"cmdCancel"_s,
    u"frmSnapshot"_s,       u"frmDisplay"_s,      u"frmColors"_s,
    u"Command1"_s,          u"txtSnapshotpath"_s, u"chkSnapshotDialog"_s,
    u"chkSnapshotInvert"_s, u"persist"_s,         u"optColor(0)"_s,
    u"optColor(1)"_s,       u"optColor(2)"_s,     u"optColor(3)"_s,
    u"optColor(4)"_s,       u"optColor(5)"_s,     u"optColor(6)"_s,
    u"shpColor(0)"_s,       u"shpColor(1)"_s,     u"shpColor(2)"_s,
    u"shpColor(3)"_s,       u"shpColor(4)"_s,     u"shpColor(5)"_s,
    u"shpColor(6)"_s,       u"slRGB(0)"_s,        u"slRGB(1)"_s,
    u"slRGB(2)"_s,          u"txtRGB(0)"_s,       u"txtRGB(1)"_s,
    u"txtRGB(2)"_s,         u"shpRed"_s,          u"shpGreen"_s,
    u"shpBlue"_s,           u"shpCurrentCol"_s,   u"chkAutoUpd"_s,
    u"cmdSetDefault"_s,     u"cmdOnBlack"_s,      u"cmdOnWhite"_s};

class SettingsLookTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { apply_look(Look::dark); }
    void every_control_has_a_described_widget();
    void captions_are_the_given_ones();
    void no_two_mnemonics_are_alike();
    void looks_well_data();
    void looks_well();
    void handles_of_scroll_bars_stand_out_data() { looks_well_data(); }
    void handles_of_scroll_bars_stand_out();
    void the_screen_is_readable_on_white();
    void one_press_sets_colours_on_white_and_on_black();
    void follows_the_desktop_while_it_runs();
};

void SettingsLookTest::every_control_has_a_described_widget() {
    OpenSettings on;
    QVERIFY(on.open);
    for (const QString& name : settings_widget_names) {
        const auto found = on.shown()->findChildren<QWidget*>(name);
        QVERIFY2(found.size() == 1, qPrintable(name));
        QVERIFY2(!found.front()->accessibleName().isEmpty(), qPrintable(name));
        if (!name.startsWith(u"frm"_s)) {
            QVERIFY2(!found.front()->toolTip().isEmpty(), qPrintable(name));
        }
    }
    QCOMPARE(on.in_dialog<QSlider>("slRGB(1)").pageStep(), 5);
    QCOMPARE(on.in_dialog<QSlider>("persist").pageStep(), 1);
    QCOMPARE(on.in_dialog<QSlider>("persist").singleStep(), 1);
}

void SettingsLookTest::captions_are_the_given_ones() {
    OpenSettings on;
    QVERIFY(on.open);
    QCOMPARE(on.in_dialog<QCheckBox>("chkSnapshotDialog").text().remove(u'&'),
             u"Always show Save-Dialog"_s);
    QCOMPARE(on.in_dialog<QCheckBox>("chkSnapshotInvert").text().remove(u'&'), u"Invert Colors"_s);
    QCOMPARE(on.in_dialog<QCheckBox>("chkAutoUpd").text().remove(u'&'), u"Autoupdate"_s);
    QCOMPARE(on.in_dialog<QPushButton>("cmdSetDefault").text(), u"Set all colors to default"_s);
    QCOMPARE(on.in_dialog<QPushButton>("cmdOK").text(), u"OK"_s);
    QCOMPARE(on.in_dialog<QPushButton>("cmdCancel").text(), u"Cancel"_s);
    QStringList captions;
    for (const QLabel* const label : on.shown()->findChildren<QLabel*>()) {
        captions.append(label->text().remove(u'&'));
    }
    QVERIFY(captions.contains(u"Snapshot Path:"_s));
    QVERIFY(captions.contains(u"Persistence Time:"_s));
}

void SettingsLookTest::no_two_mnemonics_are_alike() {
    OpenSettings on;
    QVERIFY(on.open);
    QStringList texts;
    for (const QLabel* const label : on.shown()->findChildren<QLabel*>()) {
        texts.append(label->buddy() != nullptr ? label->text() : QString());
    }
    for (const QAbstractButton* const button : on.shown()->findChildren<QAbstractButton*>()) {
        texts.append(button->text());
    }
    QStringList mnemonics;
    for (const QString& text : texts) {
        if (const QKeySequence keys = QKeySequence::mnemonic(text); !keys.isEmpty()) {
            QVERIFY2(!mnemonics.contains(keys.toString()), qPrintable(text));
            mnemonics.append(keys.toString());
        }
    }
    QVERIFY(mnemonics.size() >= 8);
}

void SettingsLookTest::looks_well_data() {
    QTest::addColumn<Look>("look");
    QTest::newRow("dark") << Look::dark;
    QTest::newRow("light") << Look::light;
}

// Nothing is cut off, and the pictures are there to be looked at.
void SettingsLookTest::looks_well() {
    QFETCH(Look, look);
    apply_look(look);
    OpenSettings on;
    QVERIFY(on.open);
    const QString folder = picture_folder() + u"/settings_"_s;
    for (const int page : {0, 1, 2}) {
        on.show_page(page);
        QTest::qWait(20);
        for (const QWidget* const widget : on.shown()->findChildren<QWidget*>()) {
            if (widget->isVisible() && widget->parentWidget()->layout() != nullptr) {
                QVERIFY2(widget->width() >= widget->minimumSizeHint().width() &&
                             widget->height() >= widget->minimumSizeHint().height(),
                         qPrintable(widget->objectName()));
            }
        }
        const QString name = folder + QString::fromLatin1(QTest::currentDataTag()) + u'_' +
                             QString::number(page) + u"-at-"_s +
                             QString::number(on.shown()->devicePixelRatioF()) + u".png"_s;
        QVERIFY(on.shown()->grab().save(name));
    }
}

// Dark traces on white, as for printing: every text of the screen can still be read.
void SettingsLookTest::handles_of_scroll_bars_stand_out() {
    QFETCH(Look, look);
    apply_look(look);
    QScrollBar bar(Qt::Vertical);
    bar.resize(bar.sizeHint().width(), 200);
    bar.setRange(0, 100);
    bar.setPageStep(100); // half of the bar, at its upper end
    const QImage picture = bar.grab().toImage();
    const auto colour_at = [&](int y) {
        return picture.pixelColor(
            (QPointF(bar.width() / 2.0, y) * picture.devicePixelRatio()).toPoint());
    };
    const QColor handle = colour_at(60);
    const QColor groove = colour_at(150);
    QVERIFY2(std::abs(handle.lightness() - groove.lightness()) > 25,
             qPrintable(handle.name() + u" on "_s + groove.name()));
}

void SettingsLookTest::the_screen_is_readable_on_white() {
    apply_look(Look::light);
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    on.click_mark("chkAutoUpd");
    const QList<QStringList> wanted = {
        {u"160"_s, u"80"_s, u"0"_s}, {u"0"_s, u"60"_s, u"160"_s},    {u"255"_s, u"255"_s, u"255"_s},
        {u"20"_s, u"20"_s, u"20"_s}, {u"170"_s, u"170"_s, u"170"_s}, {u"255"_s, u"255"_s, u"255"_s},
        {u"200"_s, u"0"_s, u"0"_s}};
    for (int item = 0; item < 7; ++item) {
        on.click_mark(qPrintable(u"optColor(%1)"_s.arg(item)));
        for (int part = 0; part < 3; ++part) {
            on.type_over(qPrintable(u"txtRGB(%1)"_s.arg(part)), wanted[item][part]);
        }
    }
    on.click("cmdOK");
    for (const char* name :
         {"ch1text", "ch2text", "ch1label", "ch2label", "ch1vdiv", "ch2vdiv", "ch1vdivtext",
          "ch2vdivtext", "seltimediv", "tdivtext", "trigertext", "ltp2", "avglabel", "lblMeas(0)",
          "txtMeasCH1(0)", "txtMeasCH2(0)", "lblHorDelay1", "lblHorDelay2", "lblDate"}) {
        // What lies behind a widget that fills nothing itself is all white here too.
        QVERIFY2(contrast(on.text_colour(name), Qt::white) > 4.5, name);
    }
    QTest::qWait(100);
    const QString name = picture_folder() + u"/window_on_white-at-"_s +
                         QString::number(on.window().devicePixelRatioF()) + u".png"_s;
    QVERIFY(on.window().grab().save(name));
}

void SettingsLookTest::one_press_sets_colours_on_white_and_on_black() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    on.click("cmdOnWhite");
    const QString folder = picture_folder() + u"/settings_colours_"_s;
    for (const QColor& behind : {QColor(Qt::white), QColor(Qt::black)}) {
        const bool white = behind == QColor(Qt::white);
        for (const char* name :
             {"ch1text", "ch2text", "ch1label", "ch2label", "ch1vdiv", "ch2vdiv", "ch1vdivtext",
              "ch2vdivtext", "seltimediv", "tdivtext", "trigertext", "ltp2", "avglabel",
              "lblMeas(0)", "txtMeasCH1(0)", "txtMeasCH2(0)", "lblDate"}) {
            QVERIFY2(contrast(on.text_colour(name), behind) > 4.5, name);
        }
        const ColourTable& colours = on.program.scope().parts().colours;
        QCOMPARE(qcolor(colours.background), behind);
        QCOMPARE(qcolor(colours.text_background), behind);
        QVERIFY(contrast(qcolor(colours.annotations), behind) > 4.5);
        QVERIFY(contrast(qcolor(colours.grid), behind) > 3.0);
        QTest::qWait(150);
        QVERIFY(on.window().grab().save(folder + (white ? u"on_white.png"_s : u"on_black.png"_s)));
        QVERIFY(on.shown()->grab().save(folder + (white ? u"white.png"_s : u"black.png"_s)));
        if (white) {
            on.click("cmdOnBlack");
        }
    }
    // Cancel takes back what was pressed.
    on.click("cmdOnWhite");
    on.click("cmdCancel");
    QCOMPARE(qcolor(on.program.scope().parts().colours.background), QColor(Qt::black));
}

/// The colours of every widget of the window and of its dialogs.
QStringList colours_of(const QWidget& window) {
    QStringList colours;
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        QString line =
            QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Disabled}) {
            for (int role = 0; role < QPalette::NColorRoles; ++role) {
                line +=
                    u' ' +
                    widget->palette().color(group, static_cast<QPalette::ColorRole>(role)).name();
            }
        }
        colours.append(line);
    }
    return colours;
}

// With the dialog open, the window looks as one that had the new look from the
// start, and goes back again.
void SettingsLookTest::follows_the_desktop_while_it_runs() {
    const auto colours_begun_with = [](Look look) {
        apply_look(look);
        OpenSettings on;
        return on.open ? colours_of(on.window()) : QStringList();
    };
    const QStringList light = colours_begun_with(Look::light);
    const QStringList dark = colours_begun_with(Look::dark);
    QVERIFY(!light.empty() && light != dark);
    OpenSettings on;
    QVERIFY(on.open);
    Look desktop = Look::dark;
    follow_desktop_look(on.window(), [&desktop] { return desktop; });
    for (const Look look : {Look::light, Look::dark, Look::light}) {
        desktop = look;
        QEvent told(QEvent::ThemeChange);
        QCoreApplication::sendEvent(&on.window(), &told);
        QCoreApplication::processEvents();
        const QStringList colours = colours_of(on.window());
        const QStringList& expected = look == Look::light ? light : dark;
        QCOMPARE(colours.size(), expected.size());
        for (int index = 0; index < colours.size(); ++index) {
            QCOMPARE(colours[index], expected[index]);
        }
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SettingsLookTest)
#include "settings_look_test.moc"
