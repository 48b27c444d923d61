// The lines of the statistics' log.

#include "export/measurement_log.h"

#include <gtest/gtest.h>

#include "export/sample_sweep.h"
#include "state/measurement_state.h"

namespace kv408 {
namespace {

TEST(MeasurementLog, LeavesACellEmptyWhereThereIsNoValue) {
    Statistics statistics;
    Sweep both = block_sweep();
    MeasurementState measured; // no widths: no edge was found
    measured.measresults[ch1][meas::vmax] = 125.0;
    for (int sweep = 0; sweep <= Statistics::settling_sweeps; ++sweep) {
        statistics.take(both, measured);
    }
    // Eight voltages, then six times of which there is none, for each channel.
    EXPECT_EQ(measurement_log_line(7, "today", statistics),
              "7,today,0.125,0,0,0,0,0,0,0,,,,,,,0,0,0,0,0,0,0,0,,,,,,\n");
    both.came = {true, false};
    for (int sweep = 0; sweep <= Statistics::settling_sweeps; ++sweep) {
        statistics.take(both, measured);
    }
    EXPECT_EQ(measurement_log_line(8, "today", statistics),
              "8,today,0.125,0,0,0,0,0,0,0,,,,,,,,,,,,,,,,,,,,\n");
}

} // namespace
} // namespace kv408
