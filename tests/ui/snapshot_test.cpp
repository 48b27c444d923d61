// Snapshots and the clipboard, out of the running window.

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "box_answers.h"
#include "display/scale_lines.h"
#include "program_on_bench.h"
#include "ui/colours.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The running program, stopped, so that its picture stays.
struct Stopped : ProgramOnBench {
    /// Shows the window and stops the sweeps; false when there were none or they go on.
    [[nodiscard]] bool stop() {
        const bool sweeping = run_until_sweeping();
        QTest::mouseClick(widget("cmdstop"), Qt::LeftButton);
        return sweeping && state() == "stoped";
    }

    /// Whether `image` is the plot box: the picture in its place, and the background around it.
    [[nodiscard]] bool is_plot_box(const QImage& image) {
        const Surface& picture = program.scope().picture().surface();
        bool same = image.width() == 705 && image.height() == 540;
        for (int y = 0; same && y < image.height(); ++y) {
            for (int x = 0; same && x < image.width(); ++x) {
                const bool inside = x >= 32 && x < 32 + 641 && y >= 20 && y < 20 + 513;
                same = image.pixel(x, y) == (inside ? picture.at(x - 32, y - 20) : 0xFF000000U);
            }
        }
        return same;
    }

    [[nodiscard]] QImage saved(const std::string& path) {
        return QImage::fromData(QByteArray::fromStdString(files.files[path]));
    }

    /// Clicks Snapshot and answers the file dialog with `name`.
    void snapshot_by_dialog(const QString& name) {
        QTimer::singleShot(0, &window(), [&] {
            auto* const dialog = window().findChild<QFileDialog*>(u"fileDialog"_s);
            title = dialog->windowTitle();
            offered = QFileInfo(dialog->selectedFiles().value(0)).fileName();
            filters = dialog->nameFilters();
            dialog->setOption(QFileDialog::DontConfirmOverwrite);
            dialog->selectFile(name);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        QTest::mouseClick(widget("Command1"), Qt::LeftButton);
    }

    void always_ask() {
        program.scope().act([this] {
            panel().mnusettings.click();
            SettingsControls& controls = program.scope().settings_dialog().controls();
            controls.chksnapshotdialog.set_checked(true);
            controls.cmdok.click();
        });
    }

    bool stopped = stop();
    QString title;
    QString offered;
    QStringList filters;
};

class SnapshotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goes_silently_into_its_folder();
    void goes_where_the_dialog_says();
    void a_png_is_one();
    void the_kind_that_is_chosen_changes_the_names_ending();
    void is_copied_to_the_clipboard();
    void is_copied_with_its_scales();
};

void SnapshotTest::goes_silently_into_its_folder() {
    Stopped on;
    QVERIFY(on.stopped);
    on.program.scope().act([&] {
        on.panel().mnusettings.click();
        SettingsControls& controls = on.program.scope().settings_dialog().controls();
        controls.txtsnapshotpath.set_text("/pictures");
        controls.cmdok.click();
    });
    QString told;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QTimer::singleShot(0, &on.window(), [&] {
        auto* const box = open_box();
        told = box->text();
        icon = box->icon();
        box->accept();
    });
    QTest::mouseClick(on.widget("Command1"), Qt::LeftButton);
    QCOMPARE(told, u"Snapshot saved to: \n/pictures/261116_010937.bmp"_s);
    QCOMPARE(icon, QMessageBox::Information);
    QVERIFY(on.is_plot_box(on.saved("/pictures/261116_010937.bmp")));
}

void SnapshotTest::goes_where_the_dialog_says() {
    Stopped on;
    QVERIFY(on.stopped);
    on.always_ask();
    const QString folder = QStringLiteral(KV408_PICTURE_DIR);
    on.snapshot_by_dialog(folder + u"/mine.bmp"_s);
    QCOMPARE(on.title, u"Save Snapshot"_s);
    QCOMPARE(on.offered, u"261116_010937.bmp"_s);
    QCOMPARE(on.filters, (QStringList{u"Bitmap (*.bmp *.BMP)"_s, u"All Files (*)"_s,
                                      u"PNG (*.png *.PNG)"_s, u"Bitmap with Scales (*.bmp *.BMP)"_s,
                                      u"PNG with Scales (*.png *.PNG)"_s}));
    const std::string path = folder.toStdString() + "/mine.bmp";
    QCOMPARE(on.files.written.back(), path);
    QVERIFY(on.is_plot_box(on.saved(path)));
    // A name without an ending gets that of a bitmap.
    on.snapshot_by_dialog(folder + u"/plain"_s);
    QCOMPARE(on.files.written.back(), folder.toStdString() + "/plain.bmp");
}

void SnapshotTest::a_png_is_one() {
    Stopped on;
    QVERIFY(on.stopped);
    on.always_ask();
    const QString folder = QStringLiteral(KV408_PICTURE_DIR);
    on.snapshot_by_dialog(folder + u"/mine.png"_s);
    const std::string path = folder.toStdString() + "/mine.png";
    QCOMPARE(on.files.files[path].substr(0, 4), std::string("\x89PNG"));
    QVERIFY(on.is_plot_box(on.saved(path)));
}

void SnapshotTest::the_kind_that_is_chosen_changes_the_names_ending() {
    Stopped on;
    QVERIFY(on.stopped);
    on.always_ask();
    QString named;
    QTimer::singleShot(0, &on.window(), [&] {
        auto* const dialog = on.window().findChild<QFileDialog*>(u"fileDialog"_s);
        dialog->setDirectory(QStringLiteral(KV408_PICTURE_DIR));
        auto* const kinds = dialog->findChild<QComboBox*>(u"fileTypeCombo"_s);
        kinds->setFocus();
        QTest::keyClick(kinds, Qt::Key_End); // PNG with scales
        named = QFileInfo(dialog->selectedFiles().value(0)).fileName();
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QTest::mouseClick(on.widget("Command1"), Qt::LeftButton);
    QCOMPARE(named, u"261116_010937.png"_s);
    const QImage saved = on.saved(on.files.written.back());
    QVERIFY(!saved.isNull());
    QVERIFY(saved.height() > 540);
    QVERIFY(on.is_plot_box(saved.copy(0, 0, 705, 540)));
}

void SnapshotTest::is_copied_with_its_scales() {
    Stopped on;
    QVERIFY(on.stopped);
    QGuiApplication::clipboard()->clear();
    on.widget("cmdstop")->setFocus();
    QTest::keyClick(on.widget("cmdstop"), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    const QImage copied = QGuiApplication::clipboard()->image();
    QVERIFY(on.is_plot_box(copied.copy(0, 0, 705, 540)));
    // Each line below shows its text in its colour: time base, the channels, the results.
    const auto lines = scale_lines(on.panel(), {});
    QCOMPARE(copied.height(), 540 + 20 * int(lines.size()) + 8);
    for (int line = 0; line < int(lines.size()); ++line) {
        const QRgb colour = pixel_of(lines[std::size_t(line)][0].colour);
        int pixels = 0;
        for (int y = 540 + 20 * line; y < 560 + 20 * line; ++y) {
            for (int x = 0; x < 178; ++x) {
                pixels += copied.pixel(x, y) == colour ? 1 : 0;
            }
        }
        QVERIFY2(pixels > 0, QByteArray::number(line));
    }
}

void SnapshotTest::is_copied_to_the_clipboard() {
    Stopped on;
    QVERIFY(on.stopped);
    QGuiApplication::clipboard()->clear();
    on.widget("cmdstop")->setFocus();
    on.files.written.clear();
    QTest::keyClick(on.widget("cmdstop"), Qt::Key_C, Qt::ControlModifier);
    QVERIFY(on.is_plot_box(QGuiApplication::clipboard()->image()));
    QVERIFY(on.files.written.empty());
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SnapshotTest)
#include "snapshot_test.moc"
