#pragma once

#include "acquisition/block_sweep.h"
#include "acquisition/point_pass.h"
#include "acquisition/set_up_upload.h"
#include "acquisition/state_machine.h"
#include "panel/panel_parts.h"

namespace kv408 {

/// The samples: the sweep in the making, and the finished ones.
struct SweepState {
    Samples samples;
    Sweeps sweeps;
};

/// The parts of the acquisition, in the order in which they are built.
struct AcquisitionParts {
    /// The parts that sweep with what `panel` sets, into `state`. Each finished sweep goes into the
    /// screen's history and is measured before any other listener of `state.sweeps` is told.
    AcquisitionParts(PanelParts& panel, SweepState& state)
        : upload(panel.around, panel.trigger), block(panel.around, state.samples, state.sweeps),
          pass(panel.around, state.samples, state.sweeps),
          state_machine(
              panel.around,
              {.vertical = panel.vertical, .upload = upload, .block = block, .pass = pass}) {
        state.sweeps.on_finished([&around = panel.around](const auto& /*sweep*/) {
            around.screen.movepersistance();
            around.measuring.makemeasurement();
        });
    }

    SetUpUpload upload;
    BlockSweep block;
    PointPass pass;
    StateMachine state_machine;
};

} // namespace kv408
