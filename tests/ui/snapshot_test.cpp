// Snapshots and the clipboard, out of the running window.

#include <cstdlib>

#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QHash>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QXmlStreamReader>

#include "box_answers.h"
#include "program_on_bench.h"
#include "ui/colours.h"
#include "ui/picture_folder.h"

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
        const Surface picture = program.scope().picture().at_natural_size();
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

    /// What Ctrl+Shift+P puts on the clipboard.
    [[nodiscard]] QImage copied_with_scales() {
        QGuiApplication::clipboard()->clear();
        widget("cmdstop")->setFocus();
        QTest::keyClick(widget("cmdstop"), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        return QGuiApplication::clipboard()->image();
    }

    /// What the row under the plot shows in the label `name`.
    [[nodiscard]] QString result(const char* name) {
        return widget<QLabel>(name)->text().trimmed();
    }

    bool stopped = stop();
    QString title;
    QString offered;
    QStringList filters;
};

/// Whether `image` bears `text` in `colour` on black somewhere below the plot box, with nothing
/// right behind it.
bool bears(const QImage& image, const QString& text, Colour colour) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(14);
    const QFontMetrics metrics(font);
    constexpr int behind = 8;
    QImage wanted(metrics.horizontalAdvance(text) + behind, 20, QImage::Format_RGB32);
    wanted.fill(Qt::black);
    QPainter painter(&wanted);
    painter.setFont(font);
    painter.setPen(qcolor(colour));
    painter.drawText(wanted.rect(), Qt::AlignVCenter | Qt::AlignLeft, text);
    painter.end();
    const auto stands_at = [&](int left, int top) {
        for (int y = 0; y < wanted.height(); ++y) {
            const auto* const from = reinterpret_cast<const QRgb*>(image.constScanLine(top + y));
            const auto* const as = reinterpret_cast<const QRgb*>(wanted.constScanLine(y));
            if (!std::equal(as, as + wanted.width(), from + left)) {
                return false;
            }
        }
        return true;
    };
    for (int top = 540; top + wanted.height() <= image.height(); ++top) {
        for (int left = 0; left + wanted.width() <= image.width(); ++left) {
            if (stands_at(left, top)) {
                return true;
            }
        }
    }
    return false;
}

class SnapshotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goes_silently_into_its_folder();
    void goes_where_the_dialog_says();
    void a_png_is_one();
    void the_kind_that_is_chosen_changes_the_names_ending();
    void as_on_the_screen_it_has_each_pixel_of_the_window_around_and_on_the_plot();
    void is_copied_to_the_clipboard();
    void is_copied_with_its_scales();
    void its_scales_follow_the_panel();
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
    const QString folder = picture_folder();
    on.snapshot_by_dialog(folder + u"/mine.bmp"_s);
    QCOMPARE(on.title, u"Save Snapshot"_s);
    QCOMPARE(on.offered, u"261116_010937.bmp"_s);
    QCOMPARE(on.filters,
             (QStringList{u"Bitmap (*.bmp *.BMP)"_s, u"All Files (*)"_s, u"PNG (*.png *.PNG)"_s,
                          u"Bitmap with Scales (*.bmp *.BMP)"_s, u"PNG with Scales (*.png *.PNG)"_s,
                          u"PNG, as on the screen (*.png *.PNG)"_s, u"SVG (*.svg *.SVG)"_s}));
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
    const QString folder = picture_folder();
    on.snapshot_by_dialog(folder + u"/mine.png"_s);
    const std::string path = folder.toStdString() + "/mine.png";
    QCOMPARE(on.files.files[path].substr(0, 4), std::string("\x89PNG"));
    QVERIFY(on.is_plot_box(on.saved(path)));
}

/// Saves a snapshot of the kind that stands `from_last` before the last, and tells its name.
QString snapshot_of_kind(Stopped& on, int from_last) {
    QString named;
    QTimer::singleShot(0, &on.window(), [&] {
        auto* const dialog = on.window().findChild<QFileDialog*>(u"fileDialog"_s);
        dialog->setDirectory(picture_folder());
        auto* const kinds = dialog->findChild<QComboBox*>(u"fileTypeCombo"_s);
        kinds->setFocus();
        QTest::keyClick(kinds, Qt::Key_End);
        for (int step = 0; step < from_last; ++step) {
            QTest::keyClick(kinds, Qt::Key_Up);
        }
        named = QFileInfo(dialog->selectedFiles().value(0)).fileName();
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QTest::mouseClick(on.widget("Command1"), Qt::LeftButton);
    return named;
}

void SnapshotTest::the_kind_that_is_chosen_changes_the_names_ending() {
    Stopped on;
    QVERIFY(on.stopped);
    on.always_ask();
    on.window().resize(1920, 1080);
    QCOMPARE(snapshot_of_kind(on, 2), u"261116_010937.png"_s); // PNG with Scales
    const QImage saved = on.saved(on.files.written.back());
    QVERIFY(!saved.isNull());
    QVERIFY(saved.height() > 540);
    QVERIFY(on.is_plot_box(saved.copy(0, 0, 705, 540)));
    QCOMPARE(snapshot_of_kind(on, 1), u"261116_010937.png"_s); // PNG, as on the screen
    const QImage shown = on.saved(on.files.written.back());
    const Surface& picture = on.program.scope().picture().surface();
    QVERIFY(picture.width() > 641);
    QVERIFY(shown.width() > picture.width() && shown.height() > picture.height());
    QCOMPARE(snapshot_of_kind(on, 0), u"261116_010937.svg"_s);
    QXmlStreamReader svg(QByteArray::fromStdString(on.files.files[on.files.written.back()]));
    QHash<QString, int> elements;
    while (!svg.atEnd()) {
        if (svg.readNext() == QXmlStreamReader::StartElement) {
            ++elements[svg.name().toString()];
        }
    }
    QVERIFY2(!svg.hasError(), qPrintable(svg.errorString()));
    QVERIFY(elements[u"path"_s] >= 3); // graticule and two traces
    QVERIFY(elements[u"text"_s] >= 5); // three markers and the scales
    QFile file(picture_folder() + u"/snapshot.svg"_s);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(QByteArray::fromStdString(on.files.files[on.files.written.back()]));
}

/// The pixels of the window in which `part` of `widget` lies.
QRect pixels_of(const QWidget& widget, const QRect& part) {
    const qreal ratio = widget.devicePixelRatioF();
    const QPointF corner = widget.mapTo(widget.window(), part.topLeft());
    return QRectF(corner * ratio, QSizeF(part.size()) * ratio).toAlignedRect();
}

/// Whether `picture`, of the window's pixels of `place`, has letters in the label `name`, which are
/// faint where the results are old.
bool has_letters_of(Stopped& on, const QImage& picture, const QRect& place, const char* name) {
    const QWidget& label = *on.widget(name);
    const QRect pixels = pixels_of(label, label.rect()) & place;
    const QImage letters = picture.copy(pixels.translated(-place.topLeft()));
    const int ground = letters.isNull() ? 0 : qGray(letters.pixel(0, 0));
    int count = 0;
    for (int y = 0; y < letters.height(); ++y) {
        for (int x = 0; x < letters.width(); ++x) {
            count += std::abs(qGray(letters.pixel(x, y)) - ground) > 40 ? 1 : 0;
        }
    }
    return count > 4;
}

void SnapshotTest::as_on_the_screen_it_has_each_pixel_of_the_window_around_and_on_the_plot() {
    Stopped on;
    QVERIFY(on.stopped);
    on.always_ask();
    QWidget& screen = *on.window().plot().parentWidget();
    for (const QSize size : {QSize(1917, 1080), QSize(1366, 768), QSize(760, 480)}) {
        on.window().resize(size);
        QImage window = on.window().grab().toImage().convertToFormat(QImage::Format_RGB32);
        window.setDevicePixelRatio(1.0); // the file tells none
        const QRect place = pixels_of(screen, screen.childrenRect());
        QCOMPARE(snapshot_of_kind(on, 1), u"261116_010937.png"_s);
        const QImage shown =
            on.saved(on.files.written.back()).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(shown.size(), place.size());
        // In the smallest window a part is scrolled out of sight, and in the file all the same;
        // what is in sight has the frame's round corners on it.
        const QWidget& area = *screen.parentWidget();
        const bool scrolled = size.height() == 480;
        const int corner = scrolled ? 3 : 0;
        const QRect seen =
            place & pixels_of(area, area.rect().adjusted(corner, corner, -corner, -corner));
        QCOMPARE(seen == place, !scrolled);
        QCOMPARE(shown.copy(seen.translated(-place.topLeft())), window.copy(seen));
        for (const char* const name :
             {"tdivtext", "ch1text", "ch1vdivtext", "lblMeas(0)", "txtMeasCH1(0)"}) {
            QVERIFY2(has_letters_of(on, shown, place, name), name);
        }
        QCOMPARE(snapshot_of_kind(on, 4), u"261116_010937.png"_s); // PNG
        QVERIFY(on.is_plot_box(on.saved(on.files.written.back())));
    }
}

void SnapshotTest::is_copied_with_its_scales() {
    Stopped on;
    QVERIFY(on.stopped);
    const QImage copied = on.copied_with_scales();
    QVERIFY(on.is_plot_box(copied.copy(0, 0, 705, 540)));
    const ColourTable& colours = on.program.scope().parts().colours;
    const std::pair<QString, Colour> wanted[] = {{u"20ns/div"_s, colours.normal_text},
                                                 {u"2026-11-16 01:09:37"_s, colours.normal_text},
                                                 {u"CH1"_s, colours.ch1},
                                                 {u"0.1V/div"_s, colours.ch1},
                                                 {u"Offset: 0.00V"_s, colours.ch1},
                                                 {u"CH2"_s, colours.ch2},
                                                 {u"0.1V/div"_s, colours.ch2},
                                                 {u"Offset: 0.00V"_s, colours.ch2},
                                                 {on.result("lblMeas(0)"), colours.normal_text},
                                                 {on.result("txtMeasCH1(0)"), colours.ch1},
                                                 {on.result("txtMeasCH2(0)"), colours.ch2},
                                                 {on.result("lblMeas(2)"), colours.normal_text},
                                                 {on.result("txtMeasCH1(2)"), colours.ch1},
                                                 {on.result("txtMeasCH2(2)"), colours.ch2}};
    for (const auto& [text, colour] : wanted) {
        QVERIFY(!text.isEmpty());
        QVERIFY2(bears(copied, text, colour), qPrintable(text));
    }
    QVERIFY(!bears(copied, u"50ns/div"_s, colours.normal_text));
}

void SnapshotTest::its_scales_follow_the_panel() {
    Stopped on;
    QVERIFY(on.stopped);
    const ColourTable& colours = on.program.scope().parts().colours;
    const QImage before = on.copied_with_scales();
    on.clock.date.second = 38;
    on.program.scope().act([&] {
        on.panel().seltimediv.set_index(on.panel().seltimediv.index() - 1);
        on.panel().channel[0].vdiv.set_index(on.panel().channel[0].vdiv.index() + 1);
        on.panel().channel[1].invert.press(true);
        on.panel().tabstrip2.select(2);
        on.panel().slider1.turn_to(512 - 128); // a division of 64 rows
        on.panel().measurement[0].selector.set_index(7);
    });
    const QString time = on.widget<QComboBox>("seltimediv")->currentText();
    const QString volts = on.widget<QComboBox>("ch1vdiv")->currentText();
    QVERIFY(time != u"20ns/div"_s && volts != u"0.1V"_s);
    const QImage after = on.copied_with_scales();
    const std::pair<QString, Colour> gone[] = {{u"20ns/div"_s, colours.normal_text},
                                               {u"2026-11-16 01:09:37"_s, colours.normal_text},
                                               {u"0.1V/div"_s, colours.ch1},
                                               {u"Offset: 0.00V"_s, colours.ch2}};
    for (const auto& [text, colour] : gone) {
        QVERIFY2(bears(before, text, colour), qPrintable(text));
        QVERIFY2(!bears(after, text, colour), qPrintable(text));
    }
    const std::pair<QString, Colour> come[] = {{time, colours.normal_text},
                                               {u"2026-11-16 01:09:38"_s, colours.normal_text},
                                               {volts + u"/div"_s, colours.ch1},
                                               {u"0.1V/div (inv)"_s, colours.ch2},
                                               {u"Offset: -100mV"_s, colours.ch2},
                                               {on.result("lblMeas(0)"), colours.normal_text},
                                               {on.result("txtMeasCH1(0)"), colours.ch1}};
    for (const auto& [text, colour] : come) {
        QVERIFY2(!bears(before, text, colour), qPrintable(text));
        QVERIFY2(bears(after, text, colour), qPrintable(text));
    }
    // A channel that is off has no scale, and its results are gone.
    on.program.scope().act([&] { on.panel().channel[1].enable.set_checked(false); });
    QTest::qWait(150);
    const QImage alone = on.copied_with_scales();
    QVERIFY(bears(alone, u"CH1"_s, colours.ch1));
    QVERIFY(!bears(alone, u"CH2"_s, colours.ch2));
    QVERIFY(!bears(alone, u"0.1V/div (inv)"_s, colours.ch2));
    QCOMPARE(alone.height(), after.height() - 20);
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
