// The pictures of the manual's page on measurements, as the program draws them: each of the
// fourteen annotated on the same pulse train, and the screen with its results. docs/make-pictures
// puts them into docs/images.

#include <algorithm>
#include <cstddef>
#include <utility>

#include <QDir>
#include <QTest>

#include "program_on_bench.h"
#include "ui/look.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QString picture_file(const QString& name) {
    const QString folder = u"" KV408_PICTURE_DIR "/manual"_s;
    QDir().mkpath(folder);
    return folder + u'/' + name + u".png"_s;
}

/// The name of a measurement's picture: "tPuls+" is in "measure-tpuls-high.png".
QString picture_name(const QString& measurement) {
    QString name = measurement.toLower();
    name.replace(u"+"_s, u"-high"_s);
    if (name.endsWith(u'-')) {
        name.append(u"low"_s);
    }
    return u"measure-"_s + name;
}

/// CH1 alone on a noisy pulse train with slow edges: -150 mV to 250 mV, 40 % high, 80 ns.
struct PulseOnScreen : ProgramOnBench {
    /// Connects the signal and shows it; false when the program does not sweep.
    [[nodiscard]] bool begin() {
        apply_look(Look::dark);
        simulation.bench().sources[0] = {.kind = simulator::SignalKind::pulse,
                                         .amplitude_mvpp = 400.0,
                                         .frequency_hz = 12.5e6,
                                         .offset_mv = 50.0,
                                         .rise_time_ps = 12e3,
                                         .duty = 0.4,
                                         .noise_mv = 5.0};
        window().resize(1280, 800);
        const bool sweeping = run_until_sweeping();
        program.scope().act([this] {
            panel().channel[ch2].enable.set_checked(false);
            panel().channel[ch2].text.set_visible(false);
        });
        return sweeping;
    }

    /// Waits until `count` more sweeps of CH1 have been asked for.
    [[nodiscard]] bool wait_for_sweeps(std::size_t count) {
        const std::size_t before = log.frames.size();
        return QTest::qWaitFor([&] { return log.frames.size() >= before + count; });
    }

    /// Annotates `measurement` in slot 0 and lets it be measured.
    [[nodiscard]] bool annotate(const QString& measurement) {
        program.scope().act([&] {
            ListBox& list = panel().measurement[0].selector;
            const auto found =
                std::find(list.entries().begin(), list.entries().end(), measurement.toStdString());
            list.set_index(static_cast<int>(found - list.entries().begin()));
        });
        if (!wait_for_sweeps(2)) {
            return false;
        }
        program.scope().act([this] { panel().measurement[0].annotate.press(true); });
        return true;
    }

    [[nodiscard]] std::ptrdiff_t marked_pixels() {
        const auto pixels = std::as_const(program.scope().picture()).surface().pixels();
        return std::count(pixels.begin(), pixels.end(), pixel_of(ColourTable{}.annotations));
    }

    bool running = begin();
};

class ManualPicturesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void each_measurement_is_marked();
};

void ManualPicturesTest::each_measurement_is_marked() {
    PulseOnScreen on;
    QVERIFY(on.running);
    QVERIFY(on.wait_for_sweeps(6));
    const QStringList times = {u"Frequency"_s, u"Period"_s, u"tRise"_s,
                               u"tFall"_s,     u"tPuls+"_s, u"tPuls-"_s};
    const QStringList levels = {u"VMax"_s,   u"VMin"_s,    u"Vpp"_s,  u"VAmpl+"_s,
                                u"VAmpl-"_s, u"VAmplPP"_s, u"VRMS"_s, u"VMean"_s};
    for (const QString& measurement : levels + times) {
        QVERIFY(on.annotate(measurement));
        QVERIFY2(on.marked_pixels() > 0, qPrintable(measurement));
        QVERIFY(on.widget("Picture1")->grab().save(picture_file(picture_name(measurement))));
    }
    QVERIFY(on.annotate(u"Period"_s));
    QVERIFY(on.window().grab().save(picture_file(u"measurements"_s)));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ManualPicturesTest)
#include "manual_pictures_test.moc"
