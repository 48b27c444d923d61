#include "calibration/calibration.h"

namespace kv408 {

Calibration::Calibration(const Surroundings& around, const Parts& parts)
    : backup_(parts.files, parts.choosers, parts.places, around.clock),
      record_(around, form_, note_, parts.state_machine, parts.in_use, backup_),
      guided_(around, form_, note_, parts.state_machine, parts.measurements, record_),
      linearity_(around, form_, note_, parts.state_machine),
      software_offset_(around, parts.samples) {
    connect(around.panel);
    parts.state_machine.on_calibration_step([this] { linearity_.caldelaypstint(); });
    parts.state_machine.on_calibration_broken_off([this] { linearity_.broken_off(); });
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
