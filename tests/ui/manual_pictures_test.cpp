// The pictures of the manual, as the program draws them now: docs/make-pictures puts them into
// docs/manual/images, and those that lie there have to be these.

#include "manual_scenes.h"

#include <QFontDatabase>
#include <QLocale>

#include "ui/look.h"
#include "ui/picture_folder.h"

namespace kv408::ui {
namespace {

/// Where the manual has its pictures.
QDir manual_folder() {
    return QDir(u"" KV408_SOURCE_ROOT "/docs/manual/images"_s);
}

/// How many pixels of two pictures differ more than another processor's rounding makes them.
int differing_pixels(const QImage& one, const QImage& other) {
    constexpr int rounding = 16;
    const auto differ = [](QRgb left, QRgb right) {
        return std::abs(qRed(left) - qRed(right)) > rounding ||
               std::abs(qGreen(left) - qGreen(right)) > rounding ||
               std::abs(qBlue(left) - qBlue(right)) > rounding;
    };
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            count += differ(one.pixel(x, y), other.pixel(x, y)) ? 1 : 0;
        }
    }
    return count;
}

class ManualPicturesTest : public QObject {
    Q_OBJECT

    Gallery gallery_{picture_folder() + u"/manual"_s};

private Q_SLOTS:
    void initTestCase();
    void first_picture() { show_first_picture(gallery_); }
    void window() { show_window(gallery_); }
    void sizes() { show_sizes(gallery_); }
    void menus() { show_menus(gallery_); }
    void steps() { show_steps(gallery_); }
    void display() { show_display(gallery_); }
    void trigger() { show_trigger(gallery_); }
    void delays() { show_delays(gallery_); }
    void cursors() { show_cursors(gallery_); }
    void measurements() { show_measurements(gallery_); }
    void each_measurement() { show_each_measurement(gallery_); }
    void references() { show_references(gallery_); }
    void statistics() { show_statistics(gallery_); }
    void density() { show_density(gallery_); }
    void eye() { show_eye(gallery_); }
    void mask() { show_mask(gallery_); }
    void jitter() { show_jitter(gallery_); }
    void calibration() { show_calibration(gallery_); }
    void linearity() { show_linearity(gallery_); }
    void settings() { show_settings(gallery_); }
    void snapshots() { show_snapshots(gallery_); }
    void messages() { show_messages(gallery_); }
    void exporting() { show_export(gallery_); }
    void recording() { show_recording(gallery_); }
    void remote() { show_remote(gallery_); }
    void autoset() { show_autoset(gallery_); }
    void readouts() { show_readouts(gallery_); }
    void maths() { show_maths(gallery_); }
    void spectrum() { show_spectrum(gallery_); }
    void they_are_those_of_the_manual();
};

void ManualPicturesTest::initTestCase() {
    apply_look(Look::dark);
    QApplication::setCursorFlashTime(0);
    QLocale::setDefault(QLocale::c());
    // The texts look alike on every machine that has this font.
    QVERIFY2(QFontDatabase::families().contains(u"DejaVu Sans"_s), "fonts-dejavu-core is missing");
    QApplication::setFont(QFont(u"DejaVu Sans"_s, 9));
}

void ManualPicturesTest::they_are_those_of_the_manual() {
    QStringList findings;
    QStringList made;
    for (const auto& [name, picture] : gallery_.pictures()) {
        made.append(name + u".png"_s);
        const QImage kept(manual_folder().filePath(made.last()));
        if (kept.isNull()) {
            findings.append(made.last() + u" is not there"_s);
        } else if (kept.size() != picture.size()) {
            findings.append(made.last() + u" has another size"_s);
        } else if (const int count = differing_pixels(kept, picture); count > 0) {
            findings.append(u"%1 differs in %2 pixels"_s.arg(made.last()).arg(count));
        }
    }
    for (const QString& file : manual_folder().entryList(QDir::Files)) {
        if (!made.contains(file)) {
            findings.append(file + u" is not made by docs/make-pictures"_s);
        }
    }
    QVERIFY2(findings.isEmpty(),
             qPrintable(findings.join(u'\n') + u"\ndocs/make-pictures makes them anew."_s));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ManualPicturesTest)
#include "manual_pictures_test.moc"
