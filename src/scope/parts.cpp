#include "scope/parts.h"

#include "measure/measurement_rows.h"
#include "panel/device_list.h"

namespace kv408 {

Parts::Parts(const Machine& machine)
    : clock(machine.clock), ending_boxes(machine.boxes, program),
      boxes(ending_boxes, program, acquisition, entries), messages(machine.messages, program),
      files(machine.files), ending_choosers(machine.choosers, program),
      choosers(ending_choosers, entries), places(machine.places),
      link(machine.bridge, clock, boxes, program, machine.diagnose),
      picture({.panel = panel,
               .samples = samples,
               .channels = channels,
               .acquisition = acquisition,
               .program = program,
               .colours = colours,
               .cursors = cursor_state,
               .trigger = trigger_state,
               .settings = settings,
               .marks = marks}),
      colour_update(panel, colours, picture),
      settings_dialog(settings, colours, colour_update, picture, choosers),
      snapshot(panel, picture, settings,
               {.clock = clock,
                .boxes = boxes,
                .files = files,
                .choosers = choosers,
                .coder = machine.coder}),
      measuring(panel,
                {.sweeps = sweeps, .channels = channels, .state = measurements, .marks = marks},
                picture),
      vertical(panel, channels, acquisition, link, picture, boxes),
      trigger(panel, trigger_state, channels, time_base_state, acquisition, link, clock, boxes),
      adjust(panel,
             {.channels = channels,
              .trigger = trigger_state,
              .cursors = cursor_state,
              .time_base = time_base_state,
              .acquisition = acquisition},
             vertical, trigger, picture, measuring),
      time_base(panel, time_base_state, acquisition, trigger, adjust, link, picture, boxes),
      cursors(panel, cursor_state, adjust, picture),
      plot_mouse(panel, channels, cursor_state, adjust, picture),
      display_controls(panel, acquisition, link, picture),
      upload(panel, acquisition, time_base_state, trigger, channels, link, clock, boxes),
      block(panel, acquisition, time_base_state, channels, samples, sweeps, link, clock, picture,
            measuring),
      pass(panel, acquisition, time_base_state, channels, samples, sweeps, link, clock, messages,
           picture),
      state_machine(panel, acquisition, channels,
                    {.vertical = vertical, .upload = upload, .block = block, .pass = pass}, clock,
                    messages, picture, measuring),
      settings_file({.panel = panel,
                     .channels = channels,
                     .trigger = trigger_state,
                     .cursors = cursor_state,
                     .colours = colours,
                     .display = settings,
                     .adjust = adjust},
                    {.files = files,
                     .choosers = choosers,
                     .boxes = boxes,
                     .places = places,
                     .clock = clock,
                     .messages = messages,
                     .program = program,
                     .log = machine.log},
                    {.apply = [this] { start_up.apply_settings(); },
                     .cancel_edits = [this] { settings_dialog.cancel(); },
                     .confirmed_colours = [this] { return settings_dialog.confirmed_colours(); }}),
      start_up(panel, acquisition, program, samples, calibration,
               {.time_base = time_base,
                .vertical = vertical,
                .trigger = trigger,
                .adjust = adjust,
                .cursors = cursors,
                .colour_update = colour_update,
                .settings = settings_file,
                .measurements = measurement_names()},
               link, boxes, picture),
      frmcalibration(panel,
                     {.in_use = calibration,
                      .acquisition = acquisition,
                      .time_base = time_base_state,
                      .measurements = measurements,
                      .samples = samples,
                      .channels = channels},
                     link, state_machine,
                     {.clock = clock,
                      .boxes = boxes,
                      .messages = messages,
                      .files = files,
                      .choosers = choosers,
                      .places = places}) {
    program.keep_settings = [this] { settings_file.save_at_end(false); };
    program.let_end = [this] {
        settings_file.tell_progress();
        messages.process_endings();
    };
    sweeps.on_finished([this](const auto&) { picture.movepersistance(); });
    sweeps.on_finished([this](const auto&) { measuring.makemeasurement(); });
    colour_update.recolour_panel();
    connect_channel(ch1);
    connect_channel(ch2);
    connect_display();
    connect_measurements();
    connect_trigger();
    connect_adjust();
    connect_acquisition();
    connect_settings();
}

void Parts::note_before_bridge() {
    // What the user has just set is known even if the operation never comes back. A tick changes
    // nothing that is kept.
    if (acts > 0) {
        settings_file.note_for_end();
    }
}

void Parts::connect_channel(int channel) {
    ChannelControls& controls = panel.channel[static_cast<std::size_t>(channel)];
    const auto vdiv_Click = [this, channel] {
        vertical.vdiv_Click(channel);
        state_machine.show_change();
    };
    controls.vdiv.on_click(vdiv_Click);
    controls.inviatr.on_click(vdiv_Click);
    controls.invert.on_click([this, channel] { vertical.invert_Click(channel); });
    controls.enable.on_click([this, channel] {
        // Before the picture is drawn, which marks by what the results say.
        measuring.showmeasurements();
        vertical.enable_Click(channel);
    });
    controls.psofset.on_change([this, channel] { adjust.psofset_Change(channel); });
    controls.psofset.on_enter([this, channel] {
        adjust.psofset_Enter(channel);
        state_machine.show_change();
    });
    controls.psofset.on_leave([this, channel] {
        adjust.psofset_Leave(channel);
        state_machine.show_change();
    });
    controls.psofset.on_focus([this] { adjust.psofset_GotFocus(); });
    controls.slenps.on_click([this, channel] { adjust.slenps_Click(channel); });
}

void Parts::connect_display() {
    panel.gridenable.on_click([this] { display_controls.gridenable_Click(); });
    panel.eyeon.on_click([this] { display_controls.redraw(); });
    panel.persist.on_click([this] { display_controls.redraw(); });
    panel.average.on_click([this] { display_controls.average_Click(); });
    panel.snapshot.on_click([this] { snapshot.Command1_Click(); });
    panel.mnusettings.on_click([this] { settings_dialog.mnusettings_Click(); });
    panel.tabstrip3.on_click([this] { cursors.TabStrip3_Click(); });
    panel.combocursorselect.on_click([this] { cursors.combocursorselect_Click(); });
}

void Parts::connect_measurements() {
    panel.check1.on_click([this] { measuring.Check1_Click(); });
    for (int slot = 0; slot < static_cast<int>(panel.measurement.size()); ++slot) {
        MeasurementControls& controls = panel.measurement[static_cast<std::size_t>(slot)];
        controls.selector.on_click([this] { measuring.cmbMeas_Click(); });
        controls.annotate.on_mouse_down([this, slot] { measuring.chkMeasAnno_MouseDown(slot); });
    }
}

void Parts::connect_trigger() {
    panel.trigsource.on_click([this] {
        trigger.trigsource_Click();
        // Each source has its own level.
        adjust.refresh_wheel();
    });
    panel.trigeredge.on_click([this] { trigger.trigeredge_Click(); });
    panel.shyst.on_change([this] { trigger.shyst_Change(); });
    panel.trtout.on_change([this] { trigger.trtout_Change(); });
    panel.trtout.on_enter([this] { trigger.trtout_Commit(); });
    panel.trtout.on_leave([this] { trigger.trtout_Commit(); });
    panel.trzero.on_click([this] { trigger.trzero_Click(); });
    panel.delaytrttdis.on_change([this] { trigger.delaytrttdis_Change(); });
    panel.delaytrttdis.on_leave([this] { trigger.delaytrttdis_Leave(); });
}

void Parts::connect_adjust() {
    panel.seltimediv.on_click([this] {
        time_base.seltimediv_Click();
        state_machine.show_change();
    });
    panel.tabstrip2.on_click([this] { adjust.TabStrip2_Click(); });
    panel.slider1.on_scroll([this] { adjust.Slider1_Scroll(); });
    panel.slider1.on_change([this] { adjust.Slider1_Change(); });
}

void Parts::connect_acquisition() {
    link.on_operation([this] { note_before_bridge(); });
    link.on_listing([this](const DeviceListing& devices) { show_devices(panel.device, devices); });
    panel.cmdstartsweep.on_click([this] { state_machine.cmdstartsweep_Click(); });
    panel.cmdstop.on_click([this] { state_machine.cmdstop_Click(); });
    panel.menuexit.on_click([this] { start_up.MenuExit_Click(); });
    boxes.on_stop([this] { panel.cmdstop.click(); });
}

void Parts::connect_settings() {
    panel.loadconfig.on_click([this] { settings_file.loadconfig_Click(); });
    panel.saveconfig.on_click([this] { settings_file.saveconfig_Click(); });
}

} // namespace kv408
