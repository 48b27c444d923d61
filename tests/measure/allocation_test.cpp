// Measuring a sweep takes no memory from the heap. Counts what this whole test program takes.

#include <cmath>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

#include "measure/engine.h"
#include "measure/pulse_times.h"
#include "measure/sweep_pass.h"
#include "support/measurement_records.h"
#include "support/sweep_of.h"

namespace {

/// How often memory was taken so far.
std::size_t& taken() {
    static std::size_t times = 0;
    return times;
}

} // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc): these are what everything else allocates with
void* operator new(std::size_t size) {
    ++taken();
    if (void* const memory = std::malloc(size); memory != nullptr) {
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    ++taken();
    return std::malloc(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

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
        const std::size_t before = taken();
        measure_sweep(measured, state);
        EXPECT_EQ(taken(), before);
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
        const std::size_t before = taken();
        for (std::size_t channel = 0; channel < 2; ++channel) {
            MeasurementRecord& record = state.measresults[channel];
            const SweepFindings found = pass_over(samples[channel], record);
            calcpulsetimes(state, static_cast<int>(channel) + 1, found.crossings.found(),
                           found.rises.found(), found.falls.found());
            record[meas::vmax] = found.maximum;
            record[meas::vmin] = found.minimum;
            record[meas::vpp] = found.maximum - found.minimum;
        }
        EXPECT_EQ(taken(), before);
    }
    const std::size_t before = taken();
    delete new int(7);
    EXPECT_EQ(taken(), before + 1) << "it does count";
}

} // namespace
} // namespace kv408
