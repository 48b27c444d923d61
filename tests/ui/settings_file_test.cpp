// Load Setup and Save Setup in the window, with their dialogs, and where the settings are kept.

#include <functional>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "host/system_files.h"
#include "program_on_bench.h"
#include "ui/machine_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Runs `action` on the next dialog of its kind as soon as it can be seen.
template <typename Dialog>
class WhenOpen {
public:
    explicit WhenOpen(std::function<void(Dialog&)> action) : action_(std::move(action)) {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
            for (QWidget* const widget : QApplication::topLevelWidgets()) {
                if (auto* const dialog = qobject_cast<Dialog*>(widget);
                    dialog && dialog->isVisible()) {
                    look_.stop();
                    ran_ = true;
                    action_(*dialog);
                    return;
                }
            }
        });
        look_.start(5);
    }

    /// True once the dialog was seen.
    [[nodiscard]] bool ran() const { return ran_; }

private:
    QTimer look_;
    std::function<void(Dialog&)> action_;
    bool ran_ = false;
};

/// Gives `name` to the file dialog and presses its button.
void enter_name(QFileDialog& dialog, const QString& name) {
    auto* const edit = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
    auto* const buttons = dialog.findChild<QDialogButtonBox*>(u"buttonBox"_s);
    QVERIFY(edit != nullptr && buttons != nullptr);
    // Typing would open the completer's list, which takes the next click.
    edit->setText(name);
    QTest::mouseClick(buttons->buttons().front(), Qt::LeftButton);
}

/// The program with its window on the simulated instrument and the machine's own files.
struct ProgramOnDisk {
    ProgramOnDisk() {
        simulation.set_calibrated();
        program.window().on_closed([this] { ++closed; });
    }

    [[nodiscard]] FrontPanel& panel() { return program.scope().panel(); }
    [[nodiscard]] QString at(const QString& name) const { return folder.filePath(name); }
    [[nodiscard]] QAction* entry(const char* name) {
        return program.window().findChild<QAction*>(QString::fromLatin1(name));
    }

    [[nodiscard]] bool run_until_sweeping() {
        program.window().show();
        return QTest::qWaitForWindowExposed(&program.window()) && QTest::qWaitFor([this] {
                   return panel().textstatus.text() == "Running" &&
                          program.scope().parts().program.loaded;
               });
    }

    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(at(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    HurriedClock clock;
    simulator::Simulation simulation{clock};
    SystemFiles files;
    Program program{
        clock,
        simulation.bridge(),
        files,
        {.settings = (folder.path() + u"/kv408"_s).toStdU16String(), .program = u"/program"}};
    int closed = 0;
};

/// Watches the note that says that a set-up is loaded.
class NoteWatch : public QObject {
public:
    explicit NoteWatch(QWidget& window) : note_(window.findChild<QLabel*>(u"loading"_s)) {
        if (note_ == nullptr) {
            qFatal("no note");
        }
        note_->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint && note_->isVisible()) {
            painted_.append(note_->text());
            if (on_paint) {
                on_paint(note_->text());
            }
        }
        return false;
    }

    [[nodiscard]] QLabel& note() const { return *note_; }
    /// What it said each time that it was painted.
    [[nodiscard]] const QStringList& painted() const { return painted_; }

    std::function<void(const QString&)> on_paint;

private:
    QLabel* note_;
    QStringList painted_;
};

/// A set-up whose lines each make the program wait for a reply in progress.
QByteArray long_set_up() {
    return "ch1vdiv\t5\r\nch2vdiv\t5\r\nch1vdiv\t2\r\nch2vdiv\t3\r\nseltimediv\t12\r\n"
           "seltimediv\t11\r\ntrigsource\t1\r\ntrigsource\t0\r\n";
}

constexpr auto takes_effect = "Loading the set-up: it takes effect"_L1;

class SettingsFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void load_setup_asks_for_a_file_and_reads_it();
    void save_setup_asks_for_a_file_and_writes_it();
    void cancelling_does_nothing_data();
    void cancelling_does_nothing();
    void a_bad_line_is_told_with_its_number();
    void what_loads_long_is_shown_in_the_window_until_it_has_taken_effect();
    void the_window_closes_while_a_set_up_takes_effect();
    void settings_come_back_after_a_restart();
    void a_folder_that_cannot_be_made_is_told_and_the_window_closes();
    void the_window_closes_while_a_file_dialog_is_open();
    void appdata_names_the_folder_of_the_settings();
};

void SettingsFileTest::load_setup_asks_for_a_file_and_reads_it() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    on.put(u"set-up.TXT"_s, "ch1vdiv\t 4 \r\neyeon\t 1 \r\nhorpos\t640\r\n");
    const WhenOpen<QFileDialog> opened([&on](QFileDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Open File"_s);
        QCOMPARE(dialog.nameFilters(),
                 (QStringList{u"Text files (*.txt *.TXT)"_s, u"All Files (*)"_s}));
        QCOMPARE(dialog.selectedNameFilter(), u"Text files (*.txt *.TXT)"_s);
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
        enter_name(dialog, on.at(u"set-up.TXT"_s));
    });
    QVERIFY(on.entry("loadconfig")->isEnabled());
    on.entry("loadconfig")->trigger();
    QVERIFY(opened.ran());
    QCOMPARE(on.panel().channel[0].vdiv.text(), "20mV");
    QVERIFY(on.panel().eyeon.checked());
    QCOMPARE(on.program.window().findChild<QLineEdit*>(u"psofsetch1"_s)->text(), u"640"_s);
    QTRY_COMPARE(on.panel().textstatus.text(), "Running");
}

void SettingsFileTest::save_setup_asks_for_a_file_and_writes_it() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    on.program.scope().act([&on] { on.panel().channel[1].invert.set_checked(true); });
    // The ending is added by which Load Setup lists it.
    const WhenOpen<QFileDialog> opened([&on](QFileDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Save File"_s);
        QCOMPARE(dialog.nameFilters(),
                 (QStringList{u"Text files (*.txt *.TXT)"_s, u"All Files (*)"_s}));
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
        enter_name(dialog, on.at(u"my set-up"_s));
    });
    on.entry("saveconfig")->trigger();
    QVERIFY(opened.ran());
    const QByteArray saved = on.content(u"my set-up.TXT"_s);
    QVERIFY2(saved.startsWith("intcr1vpos\t 192 \r\n"), saved);
    QVERIFY2(saved.contains("\r\ninvert2\t 1 \r\n"), saved);
    QVERIFY2(saved.contains("\r\nsnapshotinvert\t 0 \r\n"), saved);
    QVERIFY(!on.program.scope().ended());
}

void SettingsFileTest::cancelling_does_nothing_data() {
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("load") << QByteArray("loadconfig");
    QTest::newRow("save") << QByteArray("saveconfig");
}

void SettingsFileTest::cancelling_does_nothing() {
    QFETCH(QByteArray, entry);
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    const QByteArray before = on.content(u"kv408/ConfigsLM4RX.TXT"_s);
    const WhenOpen<QFileDialog> opened(
        [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    on.entry(entry)->trigger();
    QVERIFY(opened.ran());
    QCOMPARE(on.content(u"kv408/ConfigsLM4RX.TXT"_s), before);
    QCOMPARE(QDir(on.folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{u"kv408"_s});
    QTRY_COMPARE(on.panel().textstatus.text(), "Running");
}

void SettingsFileTest::a_bad_line_is_told_with_its_number() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    on.put(u"set-up.TXT"_s, "eyeon\t 1 \r\nch1vdiv\t 6 \r\npersist\t 1 \r\n");
    const WhenOpen<QFileDialog> opened(
        [&on](QFileDialog& dialog) { enter_name(dialog, on.at(u"set-up.TXT"_s)); });
    const WhenOpen<QMessageBox> told([](QMessageBox& box) {
        QCOMPARE(box.text(), u"Error while reading configuration file in line 2"_s);
        QCOMPARE(box.standardButtons(), QMessageBox::Ok);
        box.button(QMessageBox::Ok)->click();
    });
    on.entry("loadconfig")->trigger();
    QVERIFY(opened.ran());
    QVERIFY(told.ran());
    QVERIFY(on.panel().eyeon.checked());
    QVERIFY(!on.panel().persist.checked());
}

void SettingsFileTest::what_loads_long_is_shown_in_the_window_until_it_has_taken_effect() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    NoteWatch watch(on.program.window());
    on.put(u"set-up.TXT"_s, long_set_up());
    const WhenOpen<QFileDialog> opened(
        [&on](QFileDialog& dialog) { enter_name(dialog, on.at(u"set-up.TXT"_s)); });
    on.entry("loadconfig")->trigger();
    QVERIFY(opened.ran());
    QVERIFY2(watch.painted().join(u'|').contains(u"Loading the set-up: line "_s),
             qPrintable(watch.painted().join(u'|')));
    QVERIFY(watch.painted().contains(takes_effect));
    // In the middle of the window, and gone.
    const QPoint middle = watch.note().geometry().center() - on.program.window().rect().center();
    QVERIFY2(middle.manhattanLength() <= 2, qPrintable(QString::number(middle.manhattanLength())));
    QVERIFY(!watch.note().isVisible());
    QCOMPARE(on.panel().channel[1].vdiv.index(), 3);
    QTRY_COMPARE(on.panel().textstatus.text(), "Running");
}

void SettingsFileTest::the_window_closes_while_a_set_up_takes_effect() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    NoteWatch watch(on.program.window());
    std::chrono::nanoseconds closed_at{0};
    watch.on_paint = [&](const QString& text) {
        if (text == takes_effect && closed_at.count() == 0) {
            closed_at = on.clock.now();
            QMetaObject::invokeMethod(
                &on.program.window(), [&on] { on.program.window().close(); }, Qt::QueuedConnection);
        }
    };
    on.put(u"set-up.TXT"_s, long_set_up());
    const WhenOpen<QFileDialog> opened(
        [&on](QFileDialog& dialog) { enter_name(dialog, on.at(u"set-up.TXT"_s)); });
    on.entry("loadconfig")->trigger();
    QVERIFY(closed_at.count() > 0);
    QVERIFY(on.program.scope().ended());
    QVERIFY2(on.clock.now() - closed_at <= std::chrono::seconds(1),
             qPrintable(QString::number((on.clock.now() - closed_at).count())));
    QTRY_COMPARE(on.closed, 1);
    const QByteArray saved = on.content(u"kv408/ConfigsLM4RX.TXT"_s);
    QVERIFY2(saved.contains("ch2vdiv\t 3 \r\n"), saved);
}

void SettingsFileTest::settings_come_back_after_a_restart() {
    QByteArray saved;
    {
        ProgramOnDisk on;
        QVERIFY(on.run_until_sweeping());
        on.program.scope().act([&on] { on.panel().channel[0].vdiv.set_index(5); });
        QVERIFY(on.program.window().close());
        saved = on.content(u"kv408/ConfigsLM4RX.TXT"_s);
        QVERIFY2(saved.contains("ch1vdiv\t 5 \r\n"), saved);
    }
    ProgramOnDisk again;
    QVERIFY(QDir(again.folder.path()).mkdir(u"kv408"_s));
    again.put(u"kv408/ConfigsLM4RX.TXT"_s, saved);
    QVERIFY(again.run_until_sweeping());
    QCOMPARE(again.panel().channel[0].vdiv.text(), "10mV");
}

void SettingsFileTest::a_folder_that_cannot_be_made_is_told_and_the_window_closes() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    QVERIFY(QDir(on.at(u"kv408"_s)).removeRecursively());
    on.put(u"kv408"_s, "a file in place of the folder");
    const WhenOpen<QMessageBox> told([&on](QMessageBox& box) {
        QVERIFY2(box.text().startsWith(u"The settings could not be saved. "_s + on.at(u"kv408"_s) +
                                       u": "_s),
                 qPrintable(box.text()));
        box.button(QMessageBox::Ok)->click();
    });
    on.program.window().close();
    QVERIFY(told.ran());
    QVERIFY(on.program.scope().ended());
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(!on.program.window().isVisible());
}

void SettingsFileTest::the_window_closes_while_a_file_dialog_is_open() {
    ProgramOnDisk on;
    QVERIFY(on.run_until_sweeping());
    const WhenOpen<QFileDialog> opened([&on](QFileDialog&) { on.program.window().close(); });
    on.entry("loadconfig")->trigger();
    QVERIFY(opened.ran());
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(on.content(u"kv408/ConfigsLM4RX.TXT"_s).startsWith("intcr1vpos\t 192 \r\n"));
}

void SettingsFileTest::appdata_names_the_folder_of_the_settings() {
    const auto settings = [] {
        return QString::fromStdU16String(machine_places().settings.u16string());
    };
    qputenv("APPDATA", "/data");
    qputenv("XDG_CONFIG_HOME", "/config");
    QCOMPARE(settings(), u"/data/kv408"_s);
    QCOMPARE(machine_places().program,
             std::filesystem::path(QCoreApplication::applicationDirPath().toStdU16String()));
#ifdef Q_OS_LINUX
    // Byte for byte, also where it is no text.
    qputenv("APPDATA", "/da\xFFta\x80");
    QCOMPARE(machine_places().settings, std::filesystem::path("/da\xFFta\x80/kv408"));
    qunsetenv("APPDATA");
    QCOMPARE(settings(), u"/config/kv408"_s);
    qputenv("APPDATA", "");
    QCOMPARE(settings(), u"/config/kv408"_s);
    qunsetenv("XDG_CONFIG_HOME");
    QCOMPARE(settings(), QDir::homePath() + u"/.config/kv408"_s);
#endif
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SettingsFileTest)
#include "settings_file_test.moc"
