// The settings dialog over the running main window.

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include "open_settings.h"
#include "ui/colours.h"
#include "ui/picture_folder.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

const QColor factory_yellow(255, 255, 0);

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void is_a_modeless_window_of_the_main_one();
    void tabs_show_their_pages();
    void a_second_opening_raises_the_one();
    void a_colour_edited_live_shows_everywhere();
    void backgrounds_edited_live_show_everywhere();
    void without_autoupdate_only_the_dialog_changes();
    void numbers_are_typed();
    void ok_keeps_what_was_edited();
    void cancel_escape_and_the_frame_put_the_colours_back();
    void cancel_escape_and_the_frame_put_the_colours_back_data();
    void defaults_show_at_once();
    void the_path_is_off_while_the_dialog_is_always_shown();
    void a_folder_is_chosen();
    void an_empty_path_says_that_it_is_the_root_folder();
    void a_path_that_is_not_read_as_it_is_has_a_line_that_tells();
    void the_dialog_goes_with_the_program();
    void the_depth_slider_tells_its_number();
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
    QCOMPARE(on.window().findChildren<SettingsWindow*>(u"frmSettings"_s).size(), 1);
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
}

void SettingsTest::backgrounds_edited_live_show_everywhere() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(2);
    on.click_mark("chkAutoUpd");
    // The plot box with its margin, and the results.
    on.click_mark("optColor(2)");
    on.type_over("txtRGB(2)", u"90"_s);
    QCOMPARE(on.back_colour("Picture1"), QColor(0, 0, 90));
    QCOMPARE(on.back_colour("picMeasure"), QColor(0, 0, 90));
    QVERIFY(on.pixels(rgb(0, 0, 90)) > 300'000);
    const QImage window = on.window().grab().toImage();
    const QWidget& plot = on.main_widget("Picture1");
    const QPoint corner = plot.mapTo(&on.window(), QPoint(2, plot.height() - 3));
    QCOMPARE(window.pixelColor(corner * window.devicePixelRatio()), QColor(0, 0, 90));
    // Combos, marker labels, label frames, results.
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
    QVERIFY(settings.snapshotinvert);
    QVERIFY(!settings.snapshotdialog);
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
    QTRY_COMPARE(on.window().findChildren<SettingsWindow*>(u"frmSettings"_s).size(), 0);
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
    const QString folder = picture_folder();
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

void SettingsTest::an_empty_path_says_that_it_is_the_root_folder() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(0);
    auto& path = on.in_dialog<QLineEdit>("txtSnapshotpath");
    const QString text = u"empty: the root folder, "_s + QDir::rootPath();
    QCOMPARE(path.placeholderText(), text);
    // As wide as the box, so that it can be read.
    QVERIFY(path.fontMetrics().horizontalAdvance(text) < path.width());
    path.setFocus();
    path.selectAll();
    QTest::keyClick(&path, Qt::Key_Delete);
    QVERIFY(path.text().isEmpty());
    on.click("cmdOK");
    QCOMPARE(on.program.scope().parts().settings.snapshotpath, "");
}

void SettingsTest::a_path_that_is_not_read_as_it_is_has_a_line_that_tells() {
    OpenSettings on;
    QVERIFY(on.open);
    on.show_page(0);
    auto& line = on.in_dialog<QLabel>("shownPath");
    QVERIFY(!line.isVisible());
    const int width = on.shown()->width();
    // As a set-up from somebody else may have it.
    const std::string path = "/<b>a</b>\xE2\x80\xAE/" + std::string(300, 'x');
    Scope& scope = on.program.scope();
    scope.act([&] { scope.settings_dialog().controls().txtsnapshotpath.set_text(path); });
    QVERIFY(line.isVisible());
    QCOMPARE(line.text(), u"that is: /<b>a</b>\\xe2\\x80\\xae/"_s + QString(300, u'x'));
    QCOMPARE(line.textFormat(), Qt::PlainText);
    QCOMPARE(on.shown()->width(), width);
    on.click("cmdOK");
    QCOMPARE(on.program.scope().parts().settings.snapshotpath, path);
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

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SettingsTest)
#include "settings_test.moc"
