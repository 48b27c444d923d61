// The manual tells of everything that the windows show, and of every setting that is kept.

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTabBar>

#include "demo/test_bench_window.h"
#include "program_on_bench.h"
#include "ui/panel_frame.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QString page(const QString& name) {
    QFile file(u"" KV408_SOURCE_ROOT "/docs/manual/"_s + name + u".md"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no page %s", qPrintable(name));
    }
    return QString::fromUtf8(file.readAll());
}

/// What is read of all pages that tell of the windows: without marks, in single blanks.
QString manual_text() {
    QString text;
    for (const QString& name :
         {u"window"_s, u"first-picture"_s, u"trigger"_s, u"delays"_s, u"cursors"_s, u"readouts"_s,
          u"autoset"_s, u"spectrum"_s, u"maths"_s, u"measurements"_s, u"references"_s,
          u"statistics"_s, u"density"_s, u"eye"_s, u"calibration"_s, u"settings"_s, u"export"_s,
          u"record"_s, u"automation"_s}) {
        text += page(name);
    }
    text.remove(u"**"_s).remove(u'`').remove(u'\\');
    return text.simplified();
}

/// Whether `manual` has `text` as words of their own, not as part of longer ones.
bool has(const QString& manual, const QString& text, Qt::CaseSensitivity cases) {
    const auto part_of_word = [&](qsizetype at) {
        return at >= 0 && at < manual.size() && manual[at].isLetterOrNumber();
    };
    for (qsizetype at = manual.indexOf(text, 0, cases); at >= 0;
         at = manual.indexOf(text, at + 1, cases)) {
        if ((!text.front().isLetterOrNumber() || !part_of_word(at - 1)) &&
            (!text.back().isLetterOrNumber() || !part_of_word(at + text.size()))) {
            return true;
        }
    }
    return false;
}

/// A caption as it is read: without the mark of its letter.
QString unmarked(QString caption) {
    return caption.remove(u'&').simplified();
}

/// Everything that the user reads on `top`: titles, captions, tabs, list entries.
QStringList captions(const QWidget& top) {
    QStringList texts;
    for (const QFrame* const frame : top.findChildren<QFrame*>()) {
        if (dynamic_cast<const PanelFrame*>(frame) != nullptr) {
            texts.append(frame->accessibleName().simplified());
        }
    }
    for (const QAbstractButton* const button : top.findChildren<QAbstractButton*>()) {
        texts.append(unmarked(button->text()));
    }
    for (const QLabel* const label : top.findChildren<QLabel*>()) {
        // A label with a name shows what changes; one of digits is a number.
        if (label->objectName().isEmpty() && label->text().toInt() == 0) {
            texts.append(unmarked(label->text()));
        }
    }
    for (const QComboBox* const list : top.findChildren<QComboBox*>()) {
        if (list->objectName() != u"cmbDevice"_s) {
            for (int entry = 0; entry < list->count(); ++entry) {
                // Through which addresses the network comes is the computer's.
                const bool own = list->itemText(entry).startsWith(u"Through "_s);
                texts.append(own ? u"Through"_s : list->itemText(entry).simplified());
            }
        }
    }
    for (const QTabBar* const tabs : top.findChildren<QTabBar*>()) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            texts.append(unmarked(tabs->tabText(tab)));
        }
    }
    for (const QAction* const action : top.findChildren<QAction*>()) {
        texts.append(unmarked(action->text()));
    }
    texts.removeAll(QString());
    texts.removeDuplicates();
    return texts;
}

/// What every control without a caption of its own is called: for people who hear the window, and
/// here for the first of controls that come more than once.
QStringList names_without_caption(const QWidget& top) {
    QList<const QWidget*> captioned;
    for (const QLabel* const label : top.findChildren<QLabel*>()) {
        captioned.append(label->buddy());
    }
    static const QRegularExpression number(u"(CH|[Mm]easurement )[23]"_s);
    QStringList names;
    for (const QWidget* const widget : top.findChildren<QWidget*>()) {
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        const bool has_text = button != nullptr && !button->text().isEmpty();
        if (!widget->toolTip().isEmpty() && !has_text && !captioned.contains(widget)) {
            // A read-out says its value behind its name.
            QString name = widget->accessibleName().section(u": "_s, 0, 0);
            names.append(name.replace(number, u"\\1#"_s).replace(u'#', u'1'));
        }
    }
    names.removeDuplicates();
    return names;
}

class ManualTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void captions_are_told_of_data();
    void captions_are_told_of();
    void every_setting_is_told_of_with_its_default();
};

void ManualTextTest::captions_are_told_of_data() {
    QTest::addColumn<QString>("entry"); // of a menu; empty: the window is there already
    QTest::addColumn<QString>("window");
    QTest::addColumn<int>("least"); // texts that are read in it
    QTest::newRow("main") << QString() << QString() << 8;
    QTest::newRow("calibration") << u"mnucalibration"_s << u"frmcalibration"_s << 8;
    QTest::newRow("settings") << u"mnusettings"_s << u"frmSettings"_s << 8;
    QTest::newRow("export") << u"mnuexport"_s << u"frmExport"_s << 8;
    QTest::newRow("record") << u"mnurecord"_s << u"frmRecord"_s << 8;
    QTest::newRow("statistics") << u"mnustatistics"_s << u"frmStatistics"_s << 8;
    QTest::newRow("density") << u"mnudensity"_s << u"frmDensity"_s << 8;
    QTest::newRow("histogram") << u"mnuhistogram"_s << u"frmHistogram"_s << 8;
    QTest::newRow("jitter") << u"mnujitter"_s << u"frmJitter"_s << 8;
    QTest::newRow("eye") << u"mnueye"_s << u"frmEye"_s << 8;
    QTest::newRow("mask") << u"mnumask"_s << u"frmMask"_s << 8;
    QTest::newRow("readouts") << u"mnureadouts"_s << u"frmReadouts"_s << 4;
    QTest::newRow("maths") << u"mnumaths"_s << u"frmMaths"_s << 8;
    QTest::newRow("spectrum") << u"mnuspectrum"_s << u"frmSpectrum"_s << 8;
    QTest::newRow("autoset") << u"mnuautoset"_s << u"frmAutoset"_s << 2;
    QTest::newRow("remote") << u"mnuremote"_s << u"frmRemote"_s << 8;
    QTest::newRow("bench") << QString() << u"benchWindow"_s << 8;
}

void ManualTextTest::captions_are_told_of() {
    QFETCH(QString, entry);
    QFETCH(QString, window);
    QFETCH(int, least);
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const TestBenchWindow bench(on.simulation.bench());
    on.program.scope().act([&] { on.panel().tabstrip3.select(1); }); // brings the cursors' tabs
    if (!entry.isEmpty()) {
        on.window().findChild<QAction*>(entry)->trigger();
    }
    const QWidget* top = &on.window();
    if (window == bench.objectName()) {
        top = &bench;
    } else if (!window.isEmpty()) {
        top = on.window().findChild<QWidget*>(window);
    }
    QVERIFY(top != nullptr);
    const QString manual = manual_text();
    QStringList missing;
    const QStringList texts = captions(*top);
    QVERIFY2(texts.size() >= least, qPrintable(QString::number(texts.size())));
    for (const QString& text : texts) {
        if (!has(manual, text, Qt::CaseSensitive)) {
            missing.append(text);
        }
    }
    for (const QString& name : names_without_caption(*top)) {
        if (!has(manual, name, Qt::CaseInsensitive)) {
            missing.append(name);
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(u"not in the manual:\n"_s + missing.join(u'\n')));
}

void ManualTextTest::every_setting_is_told_of_with_its_default() {
    ProgramOnBench on;
    QVERIFY(on.run_until_sweeping());
    const auto settings = [&] {
        return QString::fromStdString(on.files.files.at("/settings/kv408/ConfigsLM4RX.TXT"))
            .split(u"\r\n"_s, Qt::SkipEmptyParts);
    };
    QMap<QString, QString> told; // default by key
    for (const QString& line : page(u"settings-file"_s).split(u'\n')) {
        const QStringList cells = line.split(u'|');
        if (cells.size() > 4 && cells[1].startsWith(u" `"_s)) {
            told[cells[1].trimmed().remove(u'`')] = cells[3].trimmed();
        }
    }
    const QStringList first = settings();
    for (const QString& line : first) {
        const QString key = line.section(u'\t', 0, 0);
        const QString value =
            key == u"snapshotpath"_s ? u"the program's folder"_s : line.section(u'\t', 1).trimmed();
        QVERIFY2(told.contains(key), qPrintable(key));
        QCOMPARE(key + u' ' + told[key], key + u' ' + value);
    }
    // One key has a line only where a box is checked.
    on.program.scope().act([&] { on.panel().measurement[0].annotate.press(true); });
    on.window().close();
    QCOMPARE(settings().size(), first.size() + 1);
    QStringList keys;
    for (const QString& line : settings()) {
        keys.append(line.section(u'\t', 0, 0));
    }
    keys.sort();
    QCOMPARE(told.keys(), keys);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ManualTextTest)
#include "manual_text_test.moc"
