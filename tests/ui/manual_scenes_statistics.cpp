// The pictures of references and statistics.

#include "manual_scenes.h"

#include "scope/tools.h"

namespace kv408::ui {
namespace {

/// The window of the statistics as it stands after some sweeps, wide enough for all of it.
struct Watching : SteadyProgram {
    Watching() {
        start_sweeping();
        act([this] { panel().mnustatistics.click(); });
        shown().resize(shown().sizeHint());
        ticks(150);
    }

    [[nodiscard]] QWidget& shown() { return widget("frmStatistics"); }
    [[nodiscard]] StatisticsDialog& dialog() { return program.scope().tools().statistics(); }
};

} // namespace

void show_references(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    ReferenceMenu& references = on.program.scope().tools().references();
    on.act([&] {
        references.controls(0).mnuReferenceKeepCH1.click();
        references.controls(1).mnuReferenceKeepCH2.click();
    });
    // The signals have become smaller since.
    on.simulation.bench().sources[0].amplitude_mvpp = 250.0;
    on.simulation.bench().sources[1].amplitude_mvpp = 150.0;
    on.ticks(20);
    gallery.add(u"references"_s, on.screen());
}

void show_statistics(Gallery& gallery) {
    Watching on;
    on.act([&] { on.dialog().choose(0, 2); });
    gallery.add(u"statistics"_s, on.shown());
    on.act([&] {
        on.dialog().choose(1, 0);
        on.dialog().controls().txtStatisticsHigh.set_text("100mV");
        on.dialog().controls().cmbStatisticsColour.set_index(1);
    });
    on.ticks(20);
    gallery.add(u"statistics-limits"_s, on.shown());
}

} // namespace kv408::ui
