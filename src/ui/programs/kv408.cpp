// The program for the instrument.

#include <iostream>

#include <QApplication>

#include "host/system_clock.h"
#include "host/system_files.h"
#include "link/make_bridge.h"
#include "ui/look.h"
#include "ui/machine_places.h"
#include "ui/program.h"
#include "ui/termination_signals.h"

int main(int argc, char** argv) {
    kv408::ui::TerminationSignals signals;
    const QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("org.kv408.Kv408"));
    kv408::ui::apply_look(kv408::ui::desktop_look());
    kv408::SystemClock clock;
    const auto bridge = kv408::make_bridge(clock, std::clog);
    kv408::SystemFiles files;
    kv408::ui::Program program(clock, *bridge, files, kv408::ui::machine_places());
    signals.on_signal([&program] { program.window().close(); });
    program.window().show();
    return QApplication::exec();
}
