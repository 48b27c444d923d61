// The pass over a sweep takes no memory from the heap. Counts what this whole test program takes.

#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

#include "measure/pulse_times.h"
#include "measure/sweep_pass.h"
#include "support/measurement_records.h"

namespace {

/// How often memory was taken so far.
std::size_t taken = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): of the process

} // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc): these are what everything else allocates with
void* operator new(std::size_t size) {
    ++taken;
    if (void* const memory = std::malloc(size); memory != nullptr) {
        return memory;
    }
    throw std::bad_alloc();
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

TEST(Allocation, AnEngineRunTakesNone) {
    MeasurementRecords records(7);
    Samples samples;
    MeasurementState state;
    for (int sweep = 0; sweep < 50; ++sweep) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            records.fill(samples[channel], state.measresults[channel]);
        }
        const std::size_t before = taken;
        const auto findings = pass_over(samples, state.measresults);
        for (std::size_t channel = 0; channel < 2; ++channel) {
            calcpulsetimes(state, static_cast<int>(channel) + 1,
                           findings[channel].crossings.found(), findings[channel].rises.found(),
                           findings[channel].falls.found());
            state.measresults[channel][meas::vmax] = findings[channel].maximum;
            state.measresults[channel][meas::vmin] = findings[channel].minimum;
            state.measresults[channel][meas::vpp] =
                findings[channel].maximum - findings[channel].minimum;
        }
        EXPECT_EQ(taken, before);
    }
    const std::size_t before = taken;
    delete new int(7);
    EXPECT_EQ(taken, before + 1) << "it does count";
}

} // namespace
} // namespace kv408
