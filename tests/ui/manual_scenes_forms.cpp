// The pictures of calibration, settings, snapshots and messages.

#include "box_answers.h"
#include "manual_scenes.h"

#include "simulator/test_connections.h"
#include "ui/qt_picture_coder.h"
#include "ui/settings_window.h"

namespace kv408::ui {
namespace {

using simulator::TestConnection;

/// The program sweeping on an instrument as delivered, its calibration window open.
struct Calibrating : SteadyProgram {
    Calibrating() {
        simulation.set_factory_state();
        start_sweeping();
        act([this] { panel().mnucalibration.click(); });
        // The screen without a display is smaller than this.
        shown().resize(shown().sizeHint());
        ticks(10);
    }

    [[nodiscard]] CalibrationForm& form() { return program.scope().calibration_form(); }
    [[nodiscard]] QWidget& shown() { return widget("frmcalibration"); }

    void press(Button& button) {
        act([&] { button.click(); });
    }
};

/// The dialog as it stands open.
QWidget& dialog_of(SteadyProgram& on) {
    auto* const dialog = on.window().findChild<SettingsWindow*>(u"frmSettings"_s);
    if (dialog == nullptr) {
        qFatal("no settings dialog");
    }
    return *dialog;
}

/// The question of a start without an instrument.
void show_question(Gallery& gallery) {
    SteadyProgram on;
    on.simulation.bench().faults.no_power = true;
    bool asked = false;
    // Switched on while the question stands, so that Retry finds it.
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        auto* const box = open_box();
        if (box != nullptr) {
            look.stop();
            gallery.add(u"message-no-connection"_s, *box);
            on.simulation.bench().faults.no_power = false;
            asked = true;
            box->button(QMessageBox::Retry)->click();
        }
    });
    look.start(1);
    on.start();
    QVERIFY(asked);
}

/// The box that a command brings which the instrument does not take while it sweeps.
void show_lost_command(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    QTimer look;
    bool seen = false;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if (auto* const box = open_box(); box != nullptr) {
            look.stop();
            gallery.add(u"message-stop"_s, *box);
            seen = true;
            box->findChild<QPushButton*>(u"extraButton"_s)->click();
        }
    });
    look.start(1);
    on.act([&] { on.panel().trigeredge.set_index(1); });
    on.ticks(5);
    QVERIFY(seen);
}

} // namespace

void show_calibration(Gallery& gallery) {
    Calibrating on;
    gallery.add(u"calibration-opened"_s, on.shown());
    simulator::connect(on.simulation.bench(), TestConnection::sine_200mv_ch1);
    {
        const NextBox box(gallery, u"calibration-connect"_s, QMessageBox::Ok);
        on.press(on.form().cmdsetforcalgainh);
        QVERIFY(box.came());
    }
    gallery.add(u"calibration-ready"_s, on.shown());
    {
        const NextBox box(gallery, u"calibration-refused"_s, QMessageBox::Ok);
        on.press(on.form().cmdcalgain1h);
        QVERIFY(box.came());
    }
    on.ticks(20);
    gallery.add(u"calibration-trace"_s, on.window());
    on.press(on.form().cmdcalgain1h);
    gallery.add(u"calibration-computed"_s, on.shown());
    on.press(on.form().cmdwritecal);
    gallery.add(u"calibration-written"_s, on.shown());
    on.act([&] { on.form().cald[4].set_text("10.100"); });
    gallery.add(u"calibration-faulty"_s, on.shown());
}

void show_linearity(Gallery& gallery) {
    Calibrating on;
    simulator::connect(on.simulation.bench(), TestConnection::sine_1v_ch1);
    {
        const NextBox box(gallery, {}, QMessageBox::Ok);
        on.press(on.form().cmdsetforlinearitycal);
        QVERIFY(box.came());
    }
    on.ticks(10);
    {
        const NextBox box(gallery, u"calibration-linearity-start"_s, QMessageBox::Ok);
        on.press(on.form().cmdcalint);
        QVERIFY(box.came());
    }
    for (int point = 0; point < 2000; ++point) {
        on.clock.advance(std::chrono::milliseconds(225));
        on.program.scope().tick();
    }
    gallery.add(u"calibration-linearity"_s, on.shown());
}

void show_settings(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.act([&] { on.panel().mnusettings.click(); });
    SettingsControls& controls = on.program.scope().settings_dialog().controls();
    on.act([&] { controls.tabstrip1.select(1); });
    gallery.add(u"settings-snapshot"_s, dialog_of(on));
    on.act([&] { controls.tabstrip1.select(2); });
    gallery.add(u"settings-display"_s, dialog_of(on));
    on.act([&] { controls.tabstrip1.select(3); });
    gallery.add(u"settings-colors"_s, dialog_of(on));
    on.act([&] {
        controls.chkautoupd.set_checked(true);
        const auto paint = [&](std::size_t item, const char* red, const char* green,
                               const char* blue) {
            controls.optcolor.at(item).choose();
            controls.txtrgb[0].set_text(red);
            controls.txtrgb[1].set_text(green);
            controls.txtrgb[2].set_text(blue);
        };
        paint(0, "180", "60", "0");
        paint(1, "0", "70", "160");
        paint(2, "255", "255", "255");
        paint(3, "0", "0", "0");
        paint(4, "170", "170", "170");
        paint(5, "255", "255", "255");
    });
    on.ticks(10);
    gallery.add(u"colours-on-white"_s, on.window());
}

void show_snapshots(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    const auto take = [&](const QString& name, const QString& box_name) {
        const NextBox box(gallery, box_name, QMessageBox::Ok);
        on.act([&] { on.panel().snapshot.click(); });
        QVERIFY(box.came());
        const std::string& bytes = on.files.files.at(on.files.written.back());
        gallery.add(name, QImage::fromData(QByteArray::fromStdString(bytes)));
    };
    take(u"snapshot"_s, u"snapshot-saved"_s);
    on.act([&] {
        on.panel().mnusettings.click();
        SettingsControls& controls = on.program.scope().settings_dialog().controls();
        controls.chksnapshotinvert.set_checked(true);
        controls.cmdok.click();
    });
    take(u"snapshot-inverted"_s, {});
}

void show_messages(Gallery& gallery) {
    show_question(gallery);
    show_lost_command(gallery);
}

} // namespace kv408::ui
