#include "calibration/calibration.h"

namespace kv408 {

Calibration::Calibration(FrontPanel& panel, const Quantities& quantities, DeviceLink& link,
                         StateMachine& state_machine, const Host& host)
    : backup_(host.files, host.choosers, host.places, host.clock),
      record_(form_, note_,
              {.in_use = quantities.in_use,
               .acquisition = quantities.acquisition,
               .link = link,
               .state_machine = state_machine,
               .clock = host.clock,
               .boxes = host.boxes,
               .messages = host.messages},
              backup_),
      guided_(form_, note_,
              {.panel = panel,
               .acquisition = quantities.acquisition,
               .time_base = quantities.time_base,
               .measurements = quantities.measurements,
               .state_machine = state_machine,
               .boxes = host.boxes},
              record_),
      linearity_(form_, note_,
                 {.panel = panel,
                  .acquisition = quantities.acquisition,
                  .link = link,
                  .state_machine = state_machine,
                  .clock = host.clock,
                  .boxes = host.boxes,
                  .messages = host.messages}),
      software_offset_(panel, quantities.acquisition, quantities.samples, quantities.channels,
                       host.boxes) {
    connect(panel);
    state_machine.on_calibration_step([this] { linearity_.caldelaypstint(); });
    state_machine.on_calibration_broken_off([this] { linearity_.broken_off(); });
    form_.cmdcalstop.on_click([this] { linearity_.cmdcalstop_Click(); });
}

void Calibration::connect(FrontPanel& panel) {
    panel.mnucalibration.on_click([this] { record_.mnucalibration_Click(); });
    panel.cmdcaloofset.on_click([this] { software_offset_.cmdcaloofset_Click(); });
    form_.cmdreadcald.on_click([this] { record_.cmdreadcald_Click(); });
    form_.cmdwritecal.on_click([this] { record_.cmdwritecal_Click(); });
    form_.cmdsetalltodefault.on_click([this] { record_.cmdsetalltodefault_Click(); });
    form_.cmdrestorecal.on_click([this] { record_.cmdrestorecal_Click(); });
    for (std::size_t index = 0; index < form_.cald.size(); ++index) {
        form_.cald.at(index).on_change([this, index] { record_.cald_Change(index); });
    }
    for (const Guide& guide : guides()) {
        (form_.*guide.set_up).on_click([this, &guide] { guided_.set_up(guide); });
        if (guide.what == Calibrates::linearity) {
            (form_.*guide.compute).on_click([this] { linearity_.cmdcalint_Click(); });
        } else {
            (form_.*guide.compute).on_click([this, &guide] { guided_.compute(guide); });
        }
    }
}

} // namespace kv408
