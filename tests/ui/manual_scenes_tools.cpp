// The pictures of export, recording and remote control.

#include "manual_scenes.h"

#include "autoset/autoset.h"
#include "export/export_dialog.h"
#include "export/record_dialog.h"

namespace kv408::ui {

void show_export(Gallery& gallery) {
    SteadyProgram on;
    // 2026-11-16 00:09:37 UTC: an hour behind the local time.
    on.clock.advance(std::chrono::seconds(1794787777));
    on.start_sweeping();
    on.ticks(10);
    on.act([&] {
        on.panel().mnuexport.click();
        ExportControls& controls = on.program.scope().tools().export_dialog().controls();
        controls.txtExportFile.set_text("/home/me/edge.csv");
        controls.cmdExport.click();
    });
    gallery.add(u"export"_s, on.tool_window("frmExport"));
}

void show_recording(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.ticks(10);
    on.act([&] {
        on.panel().mnurecord.click();
        RecordControls& controls = on.program.scope().tools().record_dialog().controls();
        controls.cmbRecordPace.set_index(2);
        controls.txtRecordPace.set_text("10");
        controls.txtRecordCount.set_text("360");
        controls.txtRecordFile.set_text("/home/me/drift.csv");
    });
    gallery.add(u"record"_s, on.tool_window("frmRecord"));
}

void show_remote(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.act([&] { on.panel().mnuremote.click(); });
    gallery.add(u"remote"_s, on.tool_window("frmRemote"));
}

void show_autoset(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.simulation.bench().sources[1].kind = simulator::SignalKind::none;
    on.ticks(5);
    on.act([&] { on.program.scope().autoset().controls().mnuautoset.click(); });
    on.ticks(8);
    gallery.add(u"autoset-works"_s, on.tool_window("frmAutoset"));
    on.ticks(40);
    gallery.add(u"autoset"_s, on.tool_window("frmAutoset"));
}

void show_readouts(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.act([&] {
        on.panel().tabstrip3.select(2);
        ReadoutsControls& controls = on.program.scope().tools().readouts().controls();
        controls.mnureadouts.click();
        controls.chkClippingMark.press(true);
    });
    on.simulation.bench().sources[0].amplitude_mvpp = 2400.0; // beyond +-1.02 V
    on.ticks(20);
    gallery.add(u"readouts"_s, on.tool_window("frmReadouts"));
    gallery.add(u"clipping"_s, *on.window().findChild<QWidget*>(u"Picture1"_s));
}

void show_maths(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.act([&] {
        MathsDialog& maths = on.program.scope().tools().maths();
        maths.controls().mnumaths.click();
        MathsControls& first = maths.tool(0).controls();
        first.cmbMathsFunction.set_index(static_cast<int>(MathsFunction::difference));
        first.txtMathsScale.set_text("200mV");
        first.txtMathsPosition.set_text("-2");
        maths.tool(1).controls().cmbMathsFunction.set_index(
            static_cast<int>(MathsFunction::derivative));
    });
    on.ticks(20);
    gallery.add(u"maths"_s, on.screen());
    gallery.add(u"maths-window"_s, on.tool_window("frmMaths"));
}

void show_spectrum(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.choose(on.panel().seltimediv, "50ns/div");
    on.act([&] {
        SpectrumControls& controls = on.program.scope().tools().spectrum().controls();
        controls.mnuspectrum.click();
        controls.cmbSpectrumChannel.set_index(1);
        controls.cmbSpectrumHold.set_index(1);
    });
    on.ticks(60);
    gallery.add(u"spectrum"_s, on.tool_window("frmSpectrum"));
}

} // namespace kv408::ui
