// The settings dialog over the running main window.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include "program_on_bench.h"
#include "ui/colours.h"
#include "ui/look.h"
#include "ui/settings_window.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Every widget of the dialog by its control's name.
const QStringList widget_names = {
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
    u"cmdSetDefault"_s};

const QColor factory_yellow(255, 255, 0);

/// The running program with its settings dialog open.
struct OpenSettings : ProgramOnBench {
    OpenSettings() { open = run_until_sweeping() && open_settings(); }

    /// Opens the dialog by its menu entry.
    [[nodiscard]] bool open_settings() {
        action("mnusettings").trigger();
        return shown() != nullptr && QTest::qWaitForWindowExposed(shown());
    }

    /// The open dialog; none while it is closed.
    [[nodiscard]] SettingsWindow* shown() {
        for (auto* const dialog : window().findChildren<SettingsWindow*>()) {
            if (dialog->isVisible()) {
                return dialog;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QAction& action(const char* name) {
        return *window().findChild<QAction*>(QString::fromLatin1(name));
    }

    /// The dialog's widget named `name`.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget& in_dialog(const char* name) {
        auto* const found = shown()->findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("no widget %s", name);
        }
        return *found;
    }

    void click(const char* name) { QTest::mouseClick(&in_dialog(name), Qt::LeftButton); }

    /// Clicks the mark of a check box or option, at its left end.
    void click_mark(const char* name) {
        QWidget& widget = in_dialog(name);
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(9, widget.height() / 2));
    }

    void show_page(int index) {
        auto& tabs = in_dialog<QTabBar>("TabStrip1");
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(index).center());
    }

    void type_over(const char* name, const QString& text) {
        auto& box = in_dialog<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    [[nodiscard]] const ColourTable& colours() { return program.scope().parts().colours; }

    /// The text colour of the main window's widget `name`, and what lies behind it.
    [[nodiscard]] QColor text_colour(const char* name) {
        return main_widget(name).palette().color(QPalette::WindowText);
    }
    [[nodiscard]] QColor back_colour(const char* name) {
        return main_widget(name).palette().color(QPalette::Window);
    }

    /// The main window's widget `name`, not the dialog's.
    [[nodiscard]] QWidget& main_widget(const char* name) {
        return *window().centralWidget()->findChild<QWidget*>(QString::fromLatin1(name));
    }

    /// How many pixels of the picture have the colour `colour`.
    [[nodiscard]] std::ptrdiff_t pixels(Colour colour) {
        const auto all = program.scope().picture().surface().pixels();
        return std::count(all.begin(), all.end(), pixel_of(colour));
    }

    bool open = false;
};

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { apply_look(Look::dark); }
    void is_a_modeless_window_of_the_main_one();
    void every_control_has_a_described_widget();
    void no_two_mnemonics_are_alike();
    void tabs_show_their_pages();
    void a_second_opening_raises_the_one();
    void a_colour_edited_live_shows_everywhere();
    void without_autoupdate_only_the_dialog_changes();
    void numbers_are_typed();
    void ok_keeps_what_was_edited();
    void cancel_escape_and_the_frame_put_the_colours_back();
    void cancel_escape_and_the_frame_put_the_colours_back_data();
    void defaults_show_at_once();
    void the_path_is_off_while_the_dialog_is_always_shown();
    void a_folder_is_chosen();
    void the_dialog_goes_with_the_program();
    void the_depth_slider_tells_its_number();
    void looks_well_data();
    void looks_well();
    void the_screen_is_readable_on_white();
};

void SettingsTest::is_a_modeless_window_of_the_main_one() {
    OpenSettings on;
    QVERIFY(on.open);
    QCOMPARE(on.shown()->windowTitle(), u"Kv408 - Tarvo  Settings"_s);
    QVERIFY(!on.shown()->isModal());
    QCOMPARE(on.shown()->parentWidget(), static_cast<QWidget*>(&on.window()));
    QVERIFY(on.shown()->isWindow());
    // Sweeping goes on meanwhile.
    const std::size_t before = on.log.frames.size();
    QTRY_VERIFY(on.log.frames.size() > before + 4);
}

void SettingsTest::every_control_has_a_described_widget() {
    OpenSettings on;
    QVERIFY(on.open);
    for (const QString& name : widget_names) {
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

void SettingsTest::no_two_mnemonics_are_alike() {
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

void SettingsTest::tabs_show_their_pages() {
    OpenSettings on;
    QVERIFY(on.open);
    const QSize size = on.shown()->size();
    for (const int page : {2, 1, 0}) {
        on.show_page(page);
        QCOMPARE(on.in_dialog("frmSnapshot").isVisible(), page == 0);
        QCOMPARE(on.in_dialog("frmDisplay").isVisible(), page == 1);
        QCOMPARE(on.in_dialog("frmColors").isVisible(), page == 2);
        QTest::qWait(20);
        QCOMPARE(on.shown()->size(), size);
    }
}

void SettingsTest::a_second_opening_raises_the_one() {
    OpenSettings on;
    QVERIFY(on.open);
    SettingsWindow* const first = on.shown();
    on.show_page(1);
    QTest::keyClick(&on.in_dialog("persist"), Qt::Key_End);
    QVERIFY(on.open_settings());
    QCOMPARE(on.shown(), first);
    QCOMPARE(on.window().findChildren<SettingsWindow*>().size(), 1);
    QCOMPARE(on.in_dialog<QSlider>("persist").value(), 9);
}

void SettingsTest::a_colour_edited_live_shows_everywhere() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    on.click_mark("chkAutoUpd");
    QVERIFY(on.pixels(rgb(255, 255, 0)) > 500);
    for (const char* name : {"ch1text", "ch1label", "ch1vdivtext", "ch1vdiv", "txtMeasCH1(0)"}) {
        QCOMPARE(on.text_colour(name), factory_yellow);
    }
    QTest::keyClick(&on.in_dialog("slRGB(0)"), Qt::Key_Home);
    const Colour green = rgb(0, 255, 0);
    QCOMPARE(on.colours().ch1, green);
    QCOMPARE(on.pixels(rgb(255, 255, 0)), 0);
    QVERIFY(on.pixels(green) > 500);
    for (const char* name : {"ch1text", "ch1label", "ch1vdivtext", "ch1vdiv", "lblHorDelay1",
                             "txtMeasCH1(0)", "txtMeasCH1(2)"}) {
        QCOMPARE(on.text_colour(name), qcolor(green));
    }
    QCOMPARE(on.text_colour("ch2text"), QColor(128, 220, 255));
    // Background: the plot box with its margin, and the results.
    on.click_mark("optColor(2)");
    on.type_over("txtRGB(2)", u"90"_s);
    QCOMPARE(on.back_colour("Picture1"), QColor(0, 0, 90));
    QCOMPARE(on.back_colour("picMeasure"), QColor(0, 0, 90));
    QVERIFY(on.pixels(rgb(0, 0, 90)) > 300'000);
    const QImage window = on.window().grab().toImage();
    const QWidget& plot = on.main_widget("Picture1");
    const QPoint corner = plot.mapTo(&on.window(), QPoint(2, plot.height() - 3));
    QCOMPARE(window.pixelColor(corner * window.devicePixelRatio()), QColor(0, 0, 90));
    // Text background: combos, marker labels, label frames, results.
    on.click_mark("optColor(5)");
    on.type_over("txtRGB(0)", u"40"_s);
    for (const char* name : {"ch1text", "ch2text", "ch1labelframe", "ch2labelframe", "ch1vdiv",
                             "ch2vdiv", "seltimediv", "txtMeasCH1(1)", "txtMeasCH2(1)"}) {
        QCOMPARE(on.back_colour(name), QColor(40, 0, 0));
    }
    on.click_mark("optColor(3)");
    on.type_over("txtRGB(1)", u"0"_s);
    for (const char* name : {"tdivtext", "lblDate", "trigertext", "seltimediv", "lblMeas(0)"}) {
        QCOMPARE(on.text_colour(name), QColor(255, 0, 255));
    }
}

void SettingsTest::without_autoupdate_only_the_dialog_changes() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    QTest::keyClick(&on.in_dialog("slRGB(0)"), Qt::Key_Home);
    QCOMPARE(on.in_dialog("shpColor(0)").palette().color(QPalette::Window), QColor(0, 255, 0));
    QCOMPARE(on.in_dialog("shpCurrentCol").palette().color(QPalette::Window), QColor(0, 255, 0));
    QCOMPARE(on.in_dialog("shpRed").palette().color(QPalette::Window), QColor(0, 0, 0));
    QCOMPARE(on.in_dialog<QLineEdit>("txtRGB(0)").text(), u"0"_s);
    QCOMPARE(on.colours(), ColourTable{});
    QCOMPARE(on.text_colour("ch1text"), factory_yellow);
    on.click_mark("chkAutoUpd");
    QCOMPARE(on.text_colour("ch1text"), QColor(0, 255, 0));
    on.click_mark("chkAutoUpd");
    QCOMPARE(on.text_colour("ch1text"), factory_yellow);
}

void SettingsTest::numbers_are_typed() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    on.click_mark("optColor(4)");
    QCOMPARE(on.in_dialog<QLineEdit>("txtRGB(1)").text(), u"92"_s);
    on.type_over("txtRGB(1)", u"300"_s);
    QCOMPARE(on.in_dialog<QSlider>("slRGB(1)").value(), 255);
    QCOMPARE(on.in_dialog<QLineEdit>("txtRGB(1)").text(), u"255"_s);
    on.type_over("txtRGB(1)", u"-52"_s);
    QCOMPARE(on.in_dialog<QSlider>("slRGB(1)").value(), 0);
    QTest::keyClick(&on.in_dialog("txtRGB(1)"), Qt::Key_Tab);
    QCOMPARE(on.in_dialog<QLineEdit>("txtRGB(1)").text(), u"0"_s);
    on.type_over("txtRGB(1)", u"128"_s);
    QCOMPARE(on.in_dialog<QSlider>("slRGB(1)").value(), 128);
    QCOMPARE(on.in_dialog<QSlider>("slRGB(0)").value(), 92);
    QCOMPARE(on.in_dialog("shpColor(4)").palette().color(QPalette::Window), QColor(92, 128, 92));
}

void SettingsTest::ok_keeps_what_was_edited() {
    OpenSettings on;
    QVERIFY(on.open);
    on.type_over("txtSnapshotpath", u"/pictures"_s);
    on.click_mark("chkSnapshotInvert");
    on.show_page(1);
    QTest::keyClick(&on.in_dialog("persist"), Qt::Key_End);
    on.show_page(2);
    on.click_mark("optColor(1)");
    on.type_over("txtRGB(0)", u"255"_s);
    on.click("cmdOK");
    QVERIFY(on.shown() == nullptr);
    const DisplaySettings& settings = on.program.scope().parts().settings;
    QCOMPARE(settings.snapshotpath, std::string("/pictures"));
    QCOMPARE(settings.snapshotinvert, 1);
    QCOMPARE(settings.snapshotdialog, 0);
    QCOMPARE(static_cast<int>(settings.persisttime), 9);
    QCOMPARE(on.text_colour("ch2text"), QColor(255, 220, 255));
    QVERIFY(on.open_settings());
    QCOMPARE(on.in_dialog<QLineEdit>("txtSnapshotpath").text(), u"/pictures"_s);
    QVERIFY(on.in_dialog<QCheckBox>("chkSnapshotInvert").isChecked());
    QCOMPARE(on.in_dialog<QSlider>("persist").value(), 9);
}

void SettingsTest::cancel_escape_and_the_frame_put_the_colours_back_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("Cancel") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("frame") << 2;
}

void SettingsTest::cancel_escape_and_the_frame_put_the_colours_back() {
    QFETCH(int, way);
    OpenSettings on;
    QVERIFY(on.open);
    const std::string path = on.program.scope().parts().settings.snapshotpath;
    on.type_over("txtSnapshotpath", u"/elsewhere"_s);
    on.show_page(2);
    on.click_mark("chkAutoUpd");
    on.type_over("txtRGB(1)", u"1"_s);
    QCOMPARE(on.colours().ch1, rgb(255, 1, 0));
    if (way == 0) {
        on.click("cmdCancel");
    } else if (way == 1) {
        QTest::keyClick(on.shown(), Qt::Key_Escape);
    } else {
        on.shown()->close();
    }
    QVERIFY(on.shown() == nullptr);
    QVERIFY(!on.program.scope().settings_dialog().is_open());
    QCOMPARE(on.colours(), ColourTable{});
    QCOMPARE(on.text_colour("ch1text"), factory_yellow);
    QCOMPARE(on.program.scope().parts().settings.snapshotpath, path);
    QTRY_COMPARE(on.window().findChildren<SettingsWindow*>().size(), 0);
    QVERIFY(on.open_settings());
}

void SettingsTest::defaults_show_at_once() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    on.type_over("txtRGB(1)", u"1"_s);
    on.click_mark("chkAutoUpd");
    on.click_mark("chkAutoUpd");
    on.click("cmdSetDefault");
    QCOMPARE(on.colours(), ColourTable{});
    QCOMPARE(on.in_dialog<QLineEdit>("txtRGB(1)").text(), u"255"_s);
    QCOMPARE(on.in_dialog("shpColor(0)").palette().color(QPalette::Window), factory_yellow);
}

void SettingsTest::the_path_is_off_while_the_dialog_is_always_shown() {
    OpenSettings on;
    QVERIFY(on.open);
    QVERIFY(on.in_dialog("txtSnapshotpath").isEnabled());
    on.click_mark("chkSnapshotDialog");
    QVERIFY(!on.in_dialog("txtSnapshotpath").isEnabled());
    QVERIFY(!on.in_dialog("Command1").isEnabled());
    on.click_mark("chkSnapshotDialog");
    QVERIFY(on.in_dialog("txtSnapshotpath").isEnabled());
    QVERIFY(on.in_dialog("Command1").isEnabled());
}

void SettingsTest::a_folder_is_chosen() {
    OpenSettings on;
    QVERIFY(on.open);
    const QString folder = QStringLiteral(KV408_PICTURE_DIR);
    QString title;
    QTimer::singleShot(0, &on.window(), [&] {
        auto* const dialog = on.window().findChild<QFileDialog*>(u"fileDialog"_s);
        title = dialog->windowTitle();
        dialog->selectFile(folder);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    on.click("Command1");
    QCOMPARE(title, u"Select a Folder"_s);
    QCOMPARE(on.in_dialog<QLineEdit>("txtSnapshotpath").text(), folder);
}

void SettingsTest::the_dialog_goes_with_the_program() {
    OpenSettings on;
    QVERIFY(on.open);
    on.window().close();
    QVERIFY(on.shown() == nullptr);
    QTRY_COMPARE(on.closed, 1);
}

void SettingsTest::the_depth_slider_tells_its_number() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(1);
    auto& slider = on.in_dialog<QSlider>("persist");
    QCOMPARE(slider.value(), 3);
    QCOMPARE(slider.minimum(), 1);
    QCOMPARE(slider.maximum(), 9);
    QStringList texts;
    QTest::keyClick(&slider, Qt::Key_Right);
    for (const QLabel* const label : on.in_dialog("frmDisplay").findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    QVERIFY(texts.contains(u"4"_s));
}

void SettingsTest::looks_well_data() {
    QTest::addColumn<Look>("look");
    QTest::newRow("dark") << Look::dark;
    QTest::newRow("light") << Look::light;
}

// Nothing is cut off, and the pictures are there to be looked at.
void SettingsTest::looks_well() {
    QFETCH(Look, look);
    apply_look(look);
    OpenSettings on;
    QVERIFY(on.open);
    const QString folder = QStringLiteral(KV408_PICTURE_DIR "/settings_");
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
                             QString::number(page) + u".png"_s;
        QVERIFY(on.shown()->grab().save(name));
    }
}

// Dark traces on white, as for printing: every text of the screen can still be read.
void SettingsTest::the_screen_is_readable_on_white() {
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
    QVERIFY(on.window().grab().save(QStringLiteral(KV408_PICTURE_DIR "/window_on_white.png")));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SettingsTest)
#include "settings_test.moc"
