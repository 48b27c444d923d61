// Measurements against what the signal is, on the simulated instrument with noise.

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "support/measured_cell.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

/// Whether `value` is as close as it has to be. Vpp takes in the noise of both its ends; at
/// 10mV/div, six codes per millivolt, that alone may be more than 1 % of the screen.
testing::AssertionResult agrees(const KnownValue& value, const VoltsCell& volts) {
    constexpr double codes_per_millivolt = 6.0;
    constexpr double most_noise_codes = 2 * 4.5;
    const bool noise_counts = value.name == "Vpp" && volts.text == "10mV";
    if (noise_counts ? value.value > value.truth &&
                           value.value < value.truth + most_noise_codes / codes_per_millivolt
                     : value.holds()) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "CH" << value.channel << " " << value.name << " is " << value.value << ", true "
           << value.truth << ", allowed " << value.allowed;
}

void check(const TimeBaseRow& row, const VoltsCell& volts) {
    const auto values = MeasuredCell(row, volts).values();
    ASSERT_EQ(values.size(), 28U);
    for (const KnownValue& value : values) {
        EXPECT_TRUE(agrees(value, volts)) << row.text << " " << volts.text;
    }
}

// What bench/accuracy.cpp prints, with noise whose peaks reach one code.
TEST(MeasurementAccuracy, EveryTimeBaseAndVoltsPerDivisionAgreesWithTheSignal) {
    std::size_t number = 0;
    for (const TimeBaseRow& row : time_base_rows()) {
        for (const VoltsCell& volts : volts_cells) {
            if (number++ % series_stride != 0) {
                continue; // the sanitizers look at how, not at what comes out
            }
            for (const KnownValue& value : MeasuredCell(row, volts, 1.0 / 3.0).values()) {
                EXPECT_TRUE(value.holds())
                    << row.text << " " << volts.text << " CH" << value.channel << " " << value.name
                    << " is " << value.value << ", true " << value.truth;
            }
        }
    }
}

// From here on with three times as much noise.
TEST(MeasurementAccuracy, EveryTimeBaseAgreesWithTheSignal) {
    std::size_t next = 0;
    for (const TimeBaseRow& row : time_base_rows()) {
        check(row, volts_cells.at(next++ % volts_cells.size()));
    }
}

TEST(MeasurementAccuracy, EveryVoltsPerDivisionAgreesWithTheSignalInBlocksAndPasses) {
    constexpr std::size_t twenty_ns = 9;
    constexpr std::size_t one_us = 14;
    for (const VoltsCell& volts : volts_cells) {
        check(time_base_rows()[twenty_ns], volts);
        check(time_base_rows()[one_us], volts);
    }
}

} // namespace
} // namespace kv408
