// The program on a simulated instrument, with a window for the bench that the instrument stands on.

#include <optional>
#include <utility>

#include <QApplication>
#include <QMenuBar>

#include "demo/test_bench_window.h"
#include "host/system_clock.h"
#include "host/system_files.h"
#include "host/termination_signals.h"
#include "simulator/simulation.h"
#include "ui/display_needed.h"
#include "ui/endings.h"
#include "ui/look.h"
#include "ui/machine_places.h"
#include "ui/program.h"
#include "ui/when_placed.h"
#include "ui/window_places.h"

namespace {

using namespace Qt::StringLiterals;

/// Adds an entry for `bench` to the menus of `window`, and opens it beside the window once that has
/// its place on the screen.
void offer(kv408::ui::TestBenchWindow& bench, kv408::ui::MainWindow& window) {
    QAction* const entry = window.menuBar()->addAction(u"Simulated &Bench"_s);
    QObject::connect(entry, &QAction::triggered, &bench, [&bench, &window] {
        if (!bench.isVisible()) {
            kv408::ui::put_beside(bench, window, window.controls());
        }
        bench.show();
        bench.raise();
        bench.activateWindow();
    });
    kv408::ui::when_placed(window, [&bench, &window] {
        kv408::ui::put_beside(bench, window, window.controls());
        bench.setAttribute(Qt::WA_ShowWithoutActivating);
        bench.show();
    });
}

} // namespace

int main(int argc, char** argv) {
    kv408::TerminationSignals signals;
    std::optional<kv408::ui::DisplayNeeded> display_needed(std::in_place);
    const QApplication application(argc, argv);
    display_needed.reset();
    QApplication::setDesktopFileName(QStringLiteral("org.kv408.Kv408Demo"));
    kv408::ui::apply_look(kv408::ui::desktop_look());
    kv408::SystemClock clock;
    kv408::SystemFiles files;
    const kv408::Places places = kv408::ui::machine_places();
    kv408::simulator::Simulation simulation(clock,
                                            kv408::simulator::kept_flash(files, places.settings));
    kv408::ui::Program program(clock, simulation.bridge(), files, places);
    const kv408::ui::Endings endings(signals, program);
    kv408::ui::TestBenchWindow bench(simulation.bench(),
                                     [&simulation] { simulation.notice_faults(); });
    offer(bench, program.window());
    kv408::ui::follow_desktop_look(program.window());
    program.window().show();
    return QApplication::exec();
}
