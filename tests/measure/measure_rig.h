#pragma once

#include <array>
#include <cmath>
#include <functional>

#include "measure/engine.h"
#include "measure/sweep_pass.h"
#include "state/channel_state.h"
#include "state/measurement_state.h"
#include "state/samples.h"
#include "support/sweep_of.h"

namespace kv408 {

/// The engine's memory and what it measures.
struct MeasureRig {
    /// Makes `value(column)` the sweep of channel index `channel`, columns 0..650.
    void sweep(int channel, const std::function<double(int)>& value) {
        auto& mv = samples[static_cast<std::size_t>(channel)].mv;
        for (std::size_t column = 0; column < mv.size(); ++column) {
            mv[column] = value(static_cast<int>(column));
        }
    }

    /// Measures `times` sweeps at `samplerate` columns per second.
    void measure(int times = 1) {
        for (int time = 0; time < times; ++time) {
            measure_sweep(sweep_of(samples, samplerate), state);
        }
    }

    [[nodiscard]] MeasurementRecord& record(int channel = ch1) {
        return state.measresults[static_cast<std::size_t>(channel)];
    }
    [[nodiscard]] const MeasurementTexts& texts(int channel = ch1) const {
        return state.meastexts[static_cast<std::size_t>(channel)];
    }
    [[nodiscard]] const AnnotationPlaces& places(int channel = ch1) const {
        return state.annotations[static_cast<std::size_t>(channel)];
    }

    Samples samples;
    MeasurementState state;
    double samplerate = 64.0 / 20e-9; ///< that of 20ns/div
};

} // namespace kv408
