#include "scope/parts.h"

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
      settings_dialog(panel, settings, colours, colour_update, picture, choosers),
      snapshot(panel, picture, settings,
               {.clock = clock,
                .boxes = boxes,
                .files = files,
                .choosers = choosers,
                .coder = machine.coder}),
      measuring(panel,
                {.sweeps = sweeps, .channels = channels, .state = measurements, .marks = marks},
                picture),
      on_panel(*this, {.link = link,
                       .clock = clock,
                       .boxes = boxes,
                       .messages = messages,
                       .screen = picture,
                       .measuring = measuring}),
      cursors(panel, cursor_state, on_panel.adjust, picture),
      plot_mouse(panel, channels, cursor_state, on_panel.adjust, picture),
      acquiring(on_panel, *this),
      settings_file({.panel = panel,
                     .channels = channels,
                     .trigger = trigger_state,
                     .cursors = cursor_state,
                     .colours = colours,
                     .display = settings,
                     .adjust = on_panel.adjust},
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
                     .confirmed_colours = [this] { return settings_dialog.confirmed_colours(); },
                     .loaded = [this] { undo.name("Load Setup"); }}),
      undo(panel, settings_file, clock), start_up(on_panel, {.program = program,
                                                             .samples = samples,
                                                             .calibration = calibration,
                                                             .cursors = cursors,
                                                             .colour_update = colour_update,
                                                             .settings = settings_file}),
      frmcalibration(on_panel.around, {.in_use = calibration,
                                       .measurements = measurements,
                                       .samples = samples,
                                       .state_machine = acquiring.state_machine,
                                       .files = files,
                                       .choosers = choosers,
                                       .places = places}),
      tools(panel, sweeps,
            {.picture = picture,
             .snapshot = snapshot,
             .measurements = measurements,
             .readouts = {.panel = panel,
                          .sweeps = sweeps,
                          .samples = samples,
                          .channels = channels,
                          .cursors = cursor_state,
                          .time_base = time_base_state,
                          .acquisition = acquisition}},
            {.clock = clock,
             .boxes = boxes,
             .files = files,
             .choosers = choosers,
             .places = places,
             .beep = machine.beep}),
      help(panel, {.files = files, .boxes = boxes, .places = places, .browse = machine.browse},
           KV408_VERSION),
      single(*this), autoset(autoset_works()) {
    link.on_ending([this] { settings_file.save_at_end(false); });
    link.on_long_work([this] {
        settings_file.tell_progress();
        messages.process_endings();
    });
    sweeps.on_finished([this](const auto& sweep) {
        tools.sweep_finished(*sweep);
        if (sweep->complete) {
            tools.sweep_complete(sweep);
        }
    });
    sweeps.on_finished([this](const auto& sweep) { single.watch().take(sweep); });
    acquiring.state_machine.on_start([this] { single.started(); });
    colour_update.recolour_panel();
    link.on_operation([this] { note_before_bridge(); });
    boxes.on_stop([this] { panel.cmdstop.click(); });
}

Autoset::Works Parts::autoset_works() {
    return {.panel = panel,
            .channels = channels,
            .sweeps = sweeps,
            .trigger = trigger_state,
            .acquisition = acquisition,
            .clock = clock,
            .one_word = [this] { return acquiring.block.one_word_came(); },
            .keep =
                [this] {
                    before_autoset_ = set_up_of(panel, settings_file.confirmed_bytes());
                    settings_file.hold();
                    tools.set_paused(true);
                },
            .put_back =
                [this] {
                    // Held until all is back: the program may be ended in the middle of it.
                    settings_file.put_back(before_autoset_);
                    autoset_over();
                },
            .done =
                [this] {
                    autoset_over();
                    settings_file.note_for_end();
                    undo.name("Autoset");
                    return undo.note();
                }};
}

void Parts::autoset_over() {
    settings_file.release();
    tools.set_paused(false);
}

void Parts::note_before_bridge() {
    // What the user has just set is known even if the operation never comes back. A tick changes
    // nothing that is kept.
    if (acts > 0) {
        settings_file.note_for_end();
    }
}

} // namespace kv408
