// The window on the serial port: umockdev shows a pseudo terminal as the port of the instrument,
// which stands behind it in real time.

#include <iostream>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include "box_answers.h"
#include "doctor/diagnosis.h"
#include "host/system_clock.h"
#include "link/make_bridge.h"
#include "program_on_bench.h"
#include "support/ports/instrument_on_port.h"
#include "support/ports/usb_ports.h"
#include "ui/picture_folder.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The whole program with its window on `bridge`.
struct WindowOn {
    WindowOn(Clock& clock, Bridge& bridge, Diagnose diagnose = {})
        : program(clock, bridge, files, fake_places(), std::move(diagnose)) {
        program.window().on_closed([] {});
    }

    /// Shows the window and waits until the program has swept and drawn both channels.
    [[nodiscard]] bool sweep() {
        program.window().show();
        return QTest::qWaitForWindowExposed(&program.window()) && QTest::qWaitFor([this] {
                   const auto& ready = program.scope().parts().acquisition.ready;
                   return ready[0] && ready[1];
               });
    }

    /// The plot with its markers as it is on the screen.
    [[nodiscard]] QImage plot() { return program.window().plot().grab().toImage(); }

    FakeFiles files;
    Program program;
};

/// Presses the button of `box` that shows its details.
void open_details(const QMessageBox& box) {
    for (QAbstractButton* const button : box.buttons()) {
        if (box.buttonRole(button) == QMessageBox::ActionRole) {
            button->click();
        }
    }
}

class SerialTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_plot_is_that_of_the_instrument_in_the_process();
    void the_message_tells_in_its_details_what_stands_in_the_way();
};

void SerialTest::the_plot_is_that_of_the_instrument_in_the_process() {
    SystemClock clock;
    UsbPorts ports;
    ports.plug(0, "lm4rxa-SIM00001");
    InstrumentOnPort instrument(ports.far_end(0));
    const auto choice = make_bridge(clock, std::clog, "libNoSuchBridge.so");
    WindowOn outside(clock, *choice.bridge);
    QVERIFY(outside.sweep());

    HurriedClock hurried;
    simulator::Simulation simulation(hurried);
    make_exact(simulation);
    WindowOn inside(hurried, simulation.bridge());
    QVERIFY(inside.sweep());
    // The history of the last sweeps fills up with the same one.
    QTRY_COMPARE(outside.plot(), inside.plot());

    // Half the signal is another picture, and the same one again on both.
    const auto halve = [](simulator::TestBench& bench) { bench.sources[0].amplitude_mvpp /= 2.0; };
    const QImage before = inside.plot();
    halve(simulation.bench());
    QTRY_VERIFY(inside.plot() != before);
    instrument.on_bench(halve);
    QTRY_COMPARE(outside.plot(), inside.plot());
    QVERIFY(outside.plot() != before);
    outside.plot().save(picture_folder() + u"/screenshot-plot-over-serial-port.png"_s);
}

void SerialTest::the_message_tells_in_its_details_what_stands_in_the_way() {
    SystemClock clock;
    UsbPorts ports;
    ports.plug(0, "another-device");
    const auto choice = make_bridge(clock, std::clog, "libNoSuchBridge.so");
    WindowOn on(clock, *choice.bridge, [&choice] { return diagnosis(choice); });
    QString text;
    QString details;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        auto* const box = open_box();
        if (box != nullptr) {
            text = box->text();
            details = box->detailedText();
            open_details(*box);
            box->grab().save(picture_folder() + u"/screenshot-message-doctor.png"_s);
            box->button(QMessageBox::Ok)->click();
        }
    });
    look.start(5);
    on.program.window().show();
    QTRY_VERIFY(on.program.scope().ended());
    QCOMPARE(text, u"Error finding WKTP2B device. Aborting application."_s);
    const QStringList lines = details.split(u'\n');
    QCOMPARE(lines.value(0), u"The bridge library libSiUSBXp.so is not there: the kernel's serial "
                             "ports are used in its place."_s);
    // What the system says is in the user's language.
    QVERIFY2(lines.value(1).startsWith(u"The system says: libNoSuchBridge.so: "_s),
             qPrintable(details));
    QCOMPARE(lines.mid(2).join(u'\n'),
             u"\n/dev/ttyUSB0 (USB device 1-1, 10c4:ea60, serial number another-device):\n"
             "Its serial number is another one than the instrument's, which begins with "
             "lm4rxa.\n"_s);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SerialTest)
#include "serial_test.moc"
