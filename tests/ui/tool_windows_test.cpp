// The windows of the tools, operated by mouse and keyboard.

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

#include "box_answers.h"
#include "export/record_dialog.h"
#include "host/system_files.h"
#include "program_on_bench.h"
#include "support/temporary_folder.h"
#include "tool_entries.h"
#include "ui/manual_topic.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The running program on the files of the machine, which all lie in a folder of their own.
struct ToolsBench {
    ToolsBench() {
        simulation.set_calibrated();
        simulator::silence(simulation.bench());
        std::filesystem::create_directories(folder.path() / "bin" / "manual");
        for (const char* const page : {"index", "window", "trigger", "delays", "cursors",
                                       "measurements", "export", "record"}) {
            files.replace(folder.path() / "bin" / "manual" / (std::string(page) + ".html"), "page");
        }
    }

    [[nodiscard]] MainWindow& window() { return program.window(); }
    [[nodiscard]] FrontPanel& panel() { return program.scope().panel(); }

    [[nodiscard]] bool sweep() {
        window().show();
        window().activateWindow();
        return QTest::qWaitForWindowActive(&window()) && QTest::qWaitFor([this] {
                   return program.scope().parts().sweeps.last_complete() != nullptr;
               });
    }

    /// The window `name`, when it is seen.
    [[nodiscard]] QDialog* shown(const char* name) {
        auto* const found = window().findChild<QDialog*>(QString::fromLatin1(name));
        return found != nullptr && found->isVisible() ? found : nullptr;
    }

    template <typename Widget>
    [[nodiscard]] Widget& in(const char* window_name, const char* name) {
        auto* const dialog = window().findChild<QDialog*>(QString::fromLatin1(window_name));
        auto* const found =
            dialog == nullptr ? nullptr : dialog->findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("no widget %s in %s", name, window_name);
        }
        return *found;
    }

    void click(const char* window_name, const char* name) {
        QTest::mouseClick(&in<QPushButton>(window_name, name), Qt::LeftButton);
    }

    void type(const char* window_name, const char* name, const QString& text) {
        auto& box = in<QLineEdit>(window_name, name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    /// A file in the folder, as it is typed.
    [[nodiscard]] QString file(const QString& name) const {
        return QString::fromStdString(folder.path().generic_string()) + u'/' + name;
    }

    [[nodiscard]] QByteArray content_of(const QString& name) const {
        return QByteArray::fromStdString(content(folder.path() / name.toStdString()));
    }

    TemporaryFolder folder;
    HurriedClock clock;
    simulator::Simulation simulation{clock, {}, 1};
    SystemFiles files;
    Program program{clock,
                    simulation.bridge(),
                    files,
                    {.settings = folder.path() / "settings",
                     .program = folder.path() / "bin",
                     .documents = folder.path()}};
};

class ToolWindowsTest : public QObject {
    Q_OBJECT
    QList<QUrl> urls_;

public Q_SLOTS:
    void take_url(const QUrl& url) { urls_.append(url); }

private Q_SLOTS:
    void init() { QDesktopServices::setUrlHandler(u"file"_s, this, "take_url"); }
    void cleanup() {
        QDesktopServices::unsetUrlHandler(u"file"_s);
        urls_.clear();
    }
    void every_widget_is_described_and_reached_by_keyboard_data() { add_tool_rows(); }
    void every_widget_is_described_and_reached_by_keyboard();
    void export_saves_what_is_shown_and_asks_before_it_replaces();
    void export_tells_why_a_file_cannot_be_written();
    void the_table_goes_to_the_clipboard();
    void recording_keeps_its_stop_in_sight();
    void help_opens_the_page_of_the_frame_in_focus();
    void about_tells_where_things_lie();
};

void ToolWindowsTest::every_widget_is_described_and_reached_by_keyboard() {
    QFETCH(QString, entry);
    QFETCH(QString, window);
    QFETCH(int, operated);
    ToolsBench on;
    QVERIFY(on.sweep());
    on.window().findChild<QAction*>(entry)->trigger();
    QDialog* const dialog = on.shown(qPrintable(window));
    QVERIFY(dialog != nullptr);
    QVERIFY(!dialog->isModal());
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    QList<QWidget*> wanted;
    for (QWidget* const widget : dialog->findChildren<QWidget*>()) {
        if (qobject_cast<QAbstractItemView*>(widget->parentWidget()) != nullptr) {
            continue; // the corner of a table
        }
        const bool is_operated = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                                 qobject_cast<QComboBox*>(widget) != nullptr ||
                                 qobject_cast<QLineEdit*>(widget) != nullptr;
        if (is_operated) {
            QVERIFY2(!widget->objectName().isEmpty(), qPrintable(widget->accessibleName()));
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
            QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
            if (widget->isEnabled()) {
                wanted.append(widget);
            }
        }
    }
    QVERIFY2(wanted.size() >= operated, qPrintable(QString::number(wanted.size())));
    for (int press = 0; press < 60; ++press) {
        wanted.removeAll(dialog->focusWidget());
        QTest::keyClick(dialog->focusWidget() != nullptr ? dialog->focusWidget() : dialog,
                        Qt::Key_Tab);
    }
    QVERIFY2(wanted.isEmpty(),
             qPrintable(wanted.isEmpty() ? QString() : wanted.front()->objectName()));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(on.shown(qPrintable(window)) == nullptr);
}

void ToolWindowsTest::export_saves_what_is_shown_and_asks_before_it_replaces() {
    ToolsBench on;
    QVERIFY(on.sweep());
    QTest::keyClick(&on.window(), Qt::Key_E, Qt::ControlModifier);
    QVERIFY(on.shown("frmExport") != nullptr);
    QVERIFY(on.in<QLineEdit>("frmExport", "txtExportFile")
                .text()
                .endsWith(u"/Kv408_261116_010937.csv"_s));
    // Letters of every kind, and the kind of file by the end of the name.
    const QString name = u"Kurve µ π ü & 1.npy"_s;
    on.in<QLineEdit>("frmExport", "txtExportFile").setFocus();
    on.in<QLineEdit>("frmExport", "txtExportFile").selectAll();
    QApplication::clipboard()->setText(on.file(name));
    QTest::keyClick(&on.in<QLineEdit>("frmExport", "txtExportFile"), Qt::Key_V,
                    Qt::ControlModifier);
    QCOMPARE(on.in<QComboBox>("frmExport", "cmbExportType").currentText(),
             u"NumPy array (*.npy)"_s);
    on.click("frmExport", "cmdExport");
    const QByteArray first = on.content_of(name);
    QVERIFY(first.startsWith("\x93NUMPY"));
    // 650 points of time and two channels, 8 bytes each, behind the head.
    QVERIFY(first.size() > 15600 && first.size() < 15900);
    QCOMPARE(on.in<QLabel>("frmExport", "lblExportSaved").text(), u"Saved to "_s + on.file(name));
    QVERIFY(on.shown("frmExport") != nullptr);

    on.panel().channel[1].enable.set_checked(false);
    QVERIFY(QTest::qWaitFor(
        [&] { return !on.in<QLabel>("frmExport", "lblExportPreview").text().contains(u"CH2"_s); }));
    BoxAnswers answers;
    answers.agree = {QMessageBox::No};
    on.click("frmExport", "cmdExport");
    QCOMPARE(answers.texts.size(), 1);
    QVERIFY(answers.texts[0].contains(u"exists already"_s));
    QCOMPARE(on.content_of(name), first);
    answers.agree = {QMessageBox::Yes};
    on.click("frmExport", "cmdExport");
    QVERIFY(on.content_of(name).size() < first.size());
}

void ToolWindowsTest::export_tells_why_a_file_cannot_be_written() {
    ToolsBench on;
    QVERIFY(on.sweep());
    QTest::keyClick(&on.window(), Qt::Key_E, Qt::ControlModifier);
    BoxAnswers answers;
    for (const QString& path : {on.file(u"gone/curve.csv"_s), u"/proc/kv408-curve.csv"_s}) {
        answers.texts.clear();
        on.type("frmExport", "txtExportFile", path);
        on.click("frmExport", "cmdExport");
        QCOMPARE(answers.texts.size(), 1);
        QVERIFY2(answers.texts[0].startsWith(path + u" could not be saved: "_s),
                 qPrintable(answers.texts[0]));
        QCOMPARE(on.in<QLabel>("frmExport", "lblExportSaved").text(), answers.texts[0]);
    }
}

void ToolWindowsTest::the_table_goes_to_the_clipboard() {
    ToolsBench on;
    QVERIFY(on.sweep());
    const auto copied = [] {
        const QString text = QApplication::clipboard()->text();
        return text.startsWith(u"Time (s)\tCH1 (V)\tCH2 (V)\n0\t"_s) &&
               text.count(u'\n') == 1 + 650;
    };
    QApplication::clipboard()->clear();
    QTest::keyClick(&on.window(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(copied());
    // In the export window too, by its keys and its button.
    QTest::keyClick(&on.window(), Qt::Key_E, Qt::ControlModifier);
    QVERIFY(QTest::qWaitForWindowActive(on.shown("frmExport")));
    QApplication::clipboard()->clear();
    QTest::keyClick(on.shown("frmExport"), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(copied());
    QApplication::clipboard()->clear();
    on.click("frmExport", "cmdExportCopy");
    QVERIFY(copied());
}

void ToolWindowsTest::recording_keeps_its_stop_in_sight() {
    ToolsBench on;
    QVERIFY(on.sweep());
    on.program.scope().tools().record_dialog().close(); // before its window was ever shown
    on.window().findChild<QAction*>(u"mnurecord"_s)->trigger();
    on.type("frmRecord", "txtRecordFile", on.file(u"run.csv"_s));
    on.click("frmRecord", "cmdRecord");
    auto& done = on.in<QLabel>("frmRecord", "lblRecordDone");
    QVERIFY(QTest::qWaitFor([&] { return done.text().toInt() >= 3; }));
    QCOMPARE(on.in<QLabel>("frmRecord", "lblRecordMissed").text(), u"0"_s);
    QVERIFY(on.in<QLabel>("frmRecord", "lblRecordFree").text().endsWith(u" MB free"_s));
    QVERIFY(on.in<QPushButton>("frmRecord", "cmdRecordStop").isEnabled());
    {
        BoxAnswers answers;
        answers.agree = {QMessageBox::No};
        QTest::keyClick(on.shown("frmRecord"), Qt::Key_Escape);
        QCOMPARE(answers.texts, QStringList{u"Sweeps are being recorded. End the recording?"_s});
        QVERIFY(on.shown("frmRecord") != nullptr);
    }
    on.click("frmRecord", "cmdRecordStop");
    QVERIFY(
        QTest::qWaitFor([&] { return on.in<QPushButton>("frmRecord", "cmdRecord").isEnabled(); }));
    const QByteArray text = on.content_of(u"run.csv"_s);
    qsizetype points = 0;
    for (const QByteArray& line : text.split('\n')) {
        points += static_cast<qsizetype>(!line.isEmpty() && line[0] >= '0' && line[0] <= '9');
    }
    QCOMPARE(points, 650 * done.text().toInt());
    QVERIFY(on.panel().textstatus.text() == "Running");
    QTest::keyClick(on.shown("frmRecord"), Qt::Key_Escape);
    QVERIFY(on.shown("frmRecord") == nullptr);
}

void ToolWindowsTest::help_opens_the_page_of_the_frame_in_focus() {
    ToolsBench on;
    QVERIFY(on.sweep());
    const auto press = [&](QWidget& at) {
        urls_.clear();
        at.setFocus();
        QTest::keyClick(&at, Qt::Key_F1);
        return urls_.size() == 1 ? urls_[0].toLocalFile() : QString();
    };
    auto& source = *on.window().findChild<QWidget*>(u"trigsource"_s);
    QCOMPARE(press(source), on.file(u"bin/manual/trigger.html"_s));
    auto& start = *on.window().findChild<QWidget*>(u"cmdstartsweep"_s);
    QCOMPARE(press(start), on.file(u"bin/manual/window.html"_s));
    for (const auto& [widget, page] :
         {std::pair{u"psofsetch1"_s, u"delays"_s}, std::pair{u"combocursorselect"_s, u"cursors"_s},
          std::pair{u"cmbMeas(0)"_s, u"measurements"_s}}) {
        QCOMPARE(press(*on.window().findChild<QWidget*>(widget)),
                 on.file(u"bin/manual/"_s + page + u".html"_s));
    }
    QTest::keyClick(&on.window(), Qt::Key_E, Qt::ControlModifier);
    // Behind the main window it would count as active, too.
    on.shown("frmExport")->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), on.shown("frmExport"));
    QCOMPARE(press(on.in<QComboBox>("frmExport", "cmbExportType")),
             on.file(u"bin/manual/export.html"_s));
    // The menu entry does the same.
    urls_.clear();
    on.window().findChild<QAction*>(u"MenuHelp"_s)->trigger();
    QCOMPARE(urls_.size(), 1);
    QCOMPARE(QString::fromStdString(manual_topic(nullptr)), u"index"_s);
}

void ToolWindowsTest::about_tells_where_things_lie() {
    ToolsBench on;
    QVERIFY(on.sweep());
    QString told;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if (QMessageBox* const box = open_box()) {
            told = box->informativeText();
            box->button(QMessageBox::Ok)->click();
        }
    });
    look.start(5);
    on.window().findChild<QAction*>(u"MenuAbout"_s)->trigger();
    QVERIFY(told.contains(u"Settings: "_s + on.file(u"settings"_s)));
    QVERIFY(told.contains(u"Manual: "_s + on.file(u"bin/manual/index.html"_s)));
    QVERIFY(told.contains(u"Qt 6 (GNU LGPL version 3)"_s));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ToolWindowsTest)
#include "tool_windows_test.moc"
