// The program for the instrument.

#include <iostream>
#include <optional>
#include <utility>

#include <QApplication>

#include "doctor/diagnosis.h"
#include "host/system_clock.h"
#include "host/system_files.h"
#include "host/termination_signals.h"
#include "link/make_bridge.h"
#include "ui/display_needed.h"
#include "ui/endings.h"
#include "ui/look.h"
#include "ui/machine_places.h"
#include "ui/program.h"

int main(int argc, char** argv) {
    kv408::TerminationSignals signals;
    std::optional<kv408::ui::DisplayNeeded> display_needed(std::in_place);
    const QApplication application(argc, argv);
    display_needed.reset();
    QApplication::setDesktopFileName(QStringLiteral("org.kv408.Kv408"));
    kv408::ui::apply_look(kv408::ui::desktop_look());
    kv408::SystemClock clock;
    const auto choice = kv408::make_bridge(clock, std::clog);
    kv408::SystemFiles files;
    kv408::ui::Program program(clock, *choice.bridge, files, kv408::ui::machine_places(),
                               [&choice] { return kv408::diagnosis(choice); });
    const kv408::ui::Endings endings(signals, program);
    kv408::ui::follow_desktop_look(program.window());
    program.window().show();
    return QApplication::exec();
}
