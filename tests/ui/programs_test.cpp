// The two programs as processes: they start, and a signal ends them cleanly.

#include <csignal>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "support/places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QString path_of(const QString& program) {
    return QString::fromUtf8(place::programs) + u'/' + program;
}

/// True once process `id` has reached its event handling: it holds the signals back.
bool holds_signals_back(qint64 id) {
    QFile status(u"/proc/%1/status"_s.arg(id));
    if (!status.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("SigBlk:")) {
            const qulonglong blocked = line.mid(7).trimmed().toULongLong(nullptr, 16);
            return (blocked & (1ULL << (SIGTERM - 1))) != 0;
        }
    }
    return false;
}

class ProgramsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_signal_ends_them_cleanly_data();
    void a_signal_ends_them_cleanly();
    void the_demo_keeps_its_flash_memory_beside_the_settings();
    void a_signal_saves_the_settings();
    void settings_are_saved_when_the_compositor_is_gone();
};

void ProgramsTest::a_signal_ends_them_cleanly_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<int>("signal");
    QTest::newRow("kv408, TERM") << u"kv408"_s << SIGTERM;
    QTest::newRow("kv408-demo, TERM") << u"kv408-demo"_s << SIGTERM;
    QTest::newRow("kv408-demo, INT") << u"kv408-demo"_s << SIGINT;
}

void ProgramsTest::a_signal_ends_them_cleanly() {
    QFETCH(QString, program);
    QFETCH(int, signal);
    const QTemporaryDir settings;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"APPDATA"_s, settings.path());
    process.setProcessEnvironment(environment);
    process.start(path_of(program), QStringList());
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY(holds_signals_back(process.processId()));
    // Some time to come as far as a message box or a sweep.
    QTest::qWait(200);
    QCOMPARE(process.state(), QProcess::Running);
    QCOMPARE(::kill(static_cast<pid_t>(process.processId()), signal), 0);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

void ProgramsTest::the_demo_keeps_its_flash_memory_beside_the_settings() {
    const QTemporaryDir settings;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"APPDATA"_s, settings.path());
    process.setProcessEnvironment(environment);
    process.start(path_of(u"kv408-demo"_s), QStringList());
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY(QFile::exists(settings.filePath(u"kv408/simulated-flash.bin"_s)));
    process.terminate();
    QVERIFY(process.waitForFinished());
}

void ProgramsTest::a_signal_saves_the_settings() {
    const QTemporaryDir settings;
    const QString file = settings.filePath(u"kv408/ConfigsLM4RX.TXT"_s);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"APPDATA"_s, settings.path());
    process.setProcessEnvironment(environment);
    process.start(path_of(u"kv408-demo"_s), QStringList());
    QVERIFY(process.waitForStarted());
    // Start-up makes the missing file; taken away, it comes back at the end.
    QTRY_VERIFY(QFile::exists(file));
    QVERIFY(QFile::remove(file));
    process.terminate();
    QVERIFY(process.waitForFinished());
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QByteArray bytes = saved.readAll();
    QVERIFY2(bytes.startsWith("intcr1vpos\t 192 \r\n"), bytes);
    QVERIFY2(bytes.contains(QByteArray("\r\nsnapshotpath\t") + place::programs), bytes);
}

void ProgramsTest::settings_are_saved_when_the_compositor_is_gone() {
    const QTemporaryDir settings;
    const QString file = settings.filePath(u"kv408/ConfigsLM4RX.TXT"_s);
    const QString sign = settings.filePath(u"gone"_s);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"APPDATA"_s, settings.path());
    environment.insert(u"QT_PLUGIN_PATH"_s, QString::fromUtf8(place::plugins));
    environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"dyingdisplay"_s);
    environment.insert(u"KV408_DYING_DISPLAY"_s, sign);
    process.setProcessEnvironment(environment);
    process.start(path_of(u"kv408-demo"_s), QStringList());
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY(QFile::exists(file));
    // Only a complete start is followed by a saving.
    QTest::qWait(1000);
    QVERIFY(QFile::remove(file));
    QVERIFY(QFile(sign).open(QIODevice::WriteOnly));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(QFile::exists(file));
    QVERIFY(process.readAllStandardError().contains("The Wayland connection broke"));
}

} // namespace
} // namespace kv408::ui

QTEST_GUILESS_MAIN(kv408::ui::ProgramsTest)
#include "programs_test.moc"
