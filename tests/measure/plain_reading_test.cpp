// The engine against the plain reading of its rules, bit for bit.

#include <bit>
#include <cstdint>

#include <gtest/gtest.h>

#include "measure/engine.h"
#include "support/measurement_records.h"
#include "support/plain_measurement.h"
#include "support/series_stride.h"
#include "support/sweep_of.h"

namespace kv408 {
namespace {

template <typename Numbers>
testing::AssertionResult same_bits(const Numbers& engine, const Numbers& plain) {
    for (std::size_t field = 0; field < engine.size(); ++field) {
        if (std::bit_cast<std::uint64_t>(engine[field]) !=
            std::bit_cast<std::uint64_t>(plain[field])) {
            return testing::AssertionFailure()
                   << "field " << field << ": " << engine[field] << ", plainly " << plain[field];
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult same(const MeasurementState& engine, const MeasurementState& plain) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (const auto& result :
             {same_bits(engine.measresults[channel], plain.measresults[channel]),
              same_bits(engine.annotations[channel].start, plain.annotations[channel].start),
              same_bits(engine.annotations[channel].end, plain.annotations[channel].end)}) {
            if (!result) {
                return testing::AssertionFailure()
                       << "CH" << channel + 1 << " " << result.message();
            }
        }
    }
    return engine.meastexts == plain.meastexts ? testing::AssertionSuccess()
                                               : testing::AssertionFailure() << "texts differ";
}

TEST(PlainReading, GivesTheSameResultsOverTenThousandSweeps) {
    const int sequences = 1250 / static_cast<int>(series_stride);
    constexpr int sweeps = 8; // a sequence; the results of each carry over to the next
    MeasurementRecords records(20261121);
    Samples samples;
    for (int sequence = 0; sequence < sequences; ++sequence) {
        MeasurementState engine;
        MeasurementState plain;
        for (int sweep = 0; sweep < sweeps; ++sweep) {
            // As in a block sweep, a channel may keep its samples for the next run.
            for (std::size_t channel = 0; channel < 2; ++channel) {
                if (records.whole(0, 3) != 0) {
                    records.fill(samples[channel], engine.measresults[channel]);
                }
            }
            const double samplerate = records.real(1e5, 1e12);
            measure_sweep(sweep_of(samples, samplerate), engine);
            plain_measure_sweeps(samples, samplerate, plain);
            ASSERT_TRUE(same(engine, plain)) << "sequence " << sequence << " sweep " << sweep;
        }
    }
}

} // namespace
} // namespace kv408
