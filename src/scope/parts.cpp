#include "scope/parts.h"

namespace kv408 {

Parts::Parts(const Machine& machine)
    : clock(machine.clock), boxes(machine.boxes, program), messages(machine.messages, program),
      link(machine.bridge, clock, boxes, program, panel.device),
      picture({.panel = panel,
               .samples = samples,
               .channels = channels,
               .acquisition = acquisition,
               .program = program,
               .colours = colours}),
      time_base(panel, time_base_state, acquisition, link, picture, boxes),
      vertical(panel, channels, acquisition, link, picture, boxes),
      display_controls(panel, acquisition, link, picture),
      upload(panel, acquisition, time_base_state, trigger_state, channels, link, clock, boxes),
      block(panel, acquisition, time_base_state, channels, samples, link, clock, picture),
      pass(panel, acquisition, time_base_state, channels, samples, link, clock, messages, picture),
      state_machine(panel, acquisition, channels,
                    {.vertical = vertical, .upload = upload, .block = block, .pass = pass}, clock,
                    messages, picture),
      start_up(panel, acquisition, program, samples, calibration,
               {.time_base = time_base, .vertical = vertical, .upload = upload}, link, boxes,
               picture) {
    connect_channel(ch1);
    connect_channel(ch2);
    connect_controls();
}

void Parts::connect_channel(int channel) {
    ChannelControls& controls = panel.channel[static_cast<std::size_t>(channel)];
    controls.vdiv.on_click([this, channel] { vertical.vdiv_Click(channel); });
    controls.inviatr.on_click([this, channel] { vertical.vdiv_Click(channel); });
    controls.invert.on_click([this, channel] { vertical.invert_Click(channel); });
    controls.enable.on_click([this, channel] { vertical.enable_Click(channel); });
}

void Parts::connect_controls() {
    panel.seltimediv.on_click([this] { time_base.seltimediv_Click(); });
    panel.gridenable.on_click([this] { display_controls.gridenable_Click(); });
    panel.eyeon.on_click([this] { display_controls.redraw(); });
    panel.persist.on_click([this] { display_controls.redraw(); });
    panel.average.on_click([this] { display_controls.average_Click(); });
    panel.cmdstartsweep.on_click([this] { state_machine.cmdstartsweep_Click(); });
    panel.cmdstop.on_click([this] { state_machine.cmdstop_Click(); });
    panel.menuexit.on_click([this] { start_up.MenuExit_Click(); });
}

} // namespace kv408
