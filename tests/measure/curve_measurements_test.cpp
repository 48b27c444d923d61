#include "measure/curve_measurements.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "measure/measurement_rows.h"

namespace kv408 {
namespace {

/// `count` columns of a trapezoid between -2 and 6 of `period` columns, of which a tenth each are
/// its edges; one column reaches -2.4: the engine counts none of those at the minimum itself for
/// the base.
std::vector<double> trapezoid(int count, int period, double scale) {
    std::vector<double> columns;
    for (int column = 0; column < count; ++column) {
        const double phase = static_cast<double>(column % period) / period;
        const double up = phase < 0.1   ? phase / 0.1
                          : phase < 0.5 ? 1.0
                          : phase < 0.6 ? (0.6 - phase) / 0.1
                                        : 0.0;
        columns.push_back((column == period - 5 ? -2.4 : -2.0 + 8.0 * up) * scale);
    }
    return columns;
}

/// The value of the measurement called `name`.
double curve_value(const std::vector<MeasuredValue>& values, std::string_view name) {
    const auto rows = measurement_rows();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].name == name) {
            return values.at(row).value.value_or(std::nan(""));
        }
    }
    return std::nan("");
}

TEST(CurveMeasurements, TellLevelsAndTimesOfAnyUnitAtOnce) {
    // From picovolt seconds to volts per picosecond.
    for (const double scale : {1e-12, 1.0, 3e11}) {
        const auto found = curve_measurements(trapezoid(640, 160, scale), 1e9);
        EXPECT_EQ(found.size(), measurement_rows().size());
        EXPECT_NEAR(curve_value(found, "VMax"), 6.0 * scale, 1e-12 * scale);
        EXPECT_NEAR(curve_value(found, "VMin"), -2.4 * scale, 1e-12 * scale);
        EXPECT_NEAR(curve_value(found, "Vpp"), 8.4 * scale, 1e-12 * scale);
        EXPECT_NEAR(curve_value(found, "VAmpl+"), 6.0 * scale, 1e-9 * scale);
        EXPECT_NEAR(curve_value(found, "VAmpl-"), -2.0 * scale, 1e-9 * scale);
        EXPECT_NEAR(curve_value(found, "VMean"), (2.0 - 0.4 / 640.0) * scale, 1e-9 * scale);
        EXPECT_NEAR(curve_value(found, "Period"), 160e-9, 1e-15);
        EXPECT_NEAR(curve_value(found, "Frequency"), 6.25e6, 1e-3);
        EXPECT_NEAR(curve_value(found, "tRise"), 0.8 * 16e-9, 1e-15); // 10 % to 90 %
        EXPECT_NEAR(curve_value(found, "tFall"), 0.8 * 16e-9, 1e-15);
        EXPECT_NEAR(curve_value(found, "tPuls+"), 80.8e-9, 1e-15); // at 1.8
        EXPECT_NEAR(curve_value(found, "tPuls-"), 79.2e-9, 1e-15);
    }
}

TEST(CurveMeasurements, HaveTheTimesOfACurveThatCoversHalfOfTheScreen) {
    const auto found = curve_measurements(trapezoid(320, 80, 1.0), 1e9);
    EXPECT_NEAR(curve_value(found, "Period"), 80e-9, 0.5e-9);
    EXPECT_NEAR(curve_value(found, "VMean"), 2.0 - 0.4 / 320.0, 1e-9);
    EXPECT_NEAR(curve_value(found, "VMax"), 6.0, 1e-12);
}

TEST(CurveMeasurements, OfALineHaveLevelsAndNoTimes) {
    for (const std::vector<double>& line : {std::vector<double>{0.0}, std::vector<double>(640)}) {
        const auto found = curve_measurements(line, 1e9);
        EXPECT_EQ(curve_value(found, "VMax"), 0.0);
        EXPECT_EQ(curve_value(found, "VRMS"), 0.0);
        EXPECT_TRUE(std::isnan(curve_value(found, "Frequency")));
        EXPECT_TRUE(std::isnan(curve_value(found, "tPuls+")));
    }
}

} // namespace
} // namespace kv408
