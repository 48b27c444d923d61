// Measuring a sweep takes no memory from the heap. Counts what this whole test program takes.

#include <cmath>

#include <gtest/gtest.h>

#include "measure/engine.h"
#include "measure/pulse_times.h"
#include "measure/sweep_pass.h"
#include "support/allocations/allocations.h"
#include "support/measurement_records.h"
#include "support/sweep_of.h"

namespace kv408 {
namespace {

TEST(Allocation, AnEngineRunOverOrdinarySignalsTakesNoneForItsTextsEither) {
    Samples samples;
    MeasurementState state;
    for (int sweep = 0; sweep < 5; ++sweep) {
        for (std::size_t column = 0; column < samples[0].mv.size(); ++column) {
            const double turn = static_cast<double>(column) / 50.0 + sweep;
            samples[0].mv[column] = 200.0 * std::sin(turn) - 30.0;
            samples[1].mv[column] = std::sin(3.0 * turn) > 0.0 ? 1023.5 : -1024.0;
        }
        const Sweep measured = sweep_of(samples, 3.2e9);
        const std::size_t before = allocations().times;
        measure_sweep(measured, state);
        EXPECT_EQ(allocations().times, before);
    }
}

TEST(Allocation, ThePassTakesNoneWhateverTheSweep) {
    MeasurementRecords records(7);
    Samples samples;
    MeasurementState state;
    for (int sweep = 0; sweep < 50; ++sweep) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            records.fill(samples[channel], state.measresults[channel]);
        }
        const std::size_t before = allocations().times;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            MeasurementRecord& record = state.measresults[channel];
            const SweepFindings found = pass_over(samples[channel], record);
            calcpulsetimes(record, found.crossings.found(), found.rises.found(),
                           found.falls.found());
            record[meas::vmax] = found.maximum;
            record[meas::vmin] = found.minimum;
            record[meas::vpp] = found.maximum - found.minimum;
        }
        EXPECT_EQ(allocations().times, before);
    }
    const std::size_t before = allocations().times;
    delete new int(7);
    EXPECT_EQ(allocations().times, before + 1) << "it does count";
}

} // namespace
} // namespace kv408
