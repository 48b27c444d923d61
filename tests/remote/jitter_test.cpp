// What the jitter window is over the network.

#include <cmath>

#include <gtest/gtest.h>

#include "remote_program.h"
#include "scope/tools.h"
#include "simulator/test_connections.h"

namespace kv408 {
namespace {

TEST(RemoteJitter, IsOperatedAsInItsWindow) {
    RemoteProgram program;
    simulator::connect(program.simulation.bench(), simulator::TestConnection::eye_jitter_noise);
    program.start();
    EXPECT_EQ(program.ask("JITT:STAT?;SOUR?;EDGE?;LEV:AUTO?"), "0;CHAN1;ANY;1");
    EXPECT_EQ(program.ask("JITT:STAT ON"), "");
    EXPECT_TRUE(program.scope.tools().jitter().is_open());
    const std::string reasons = program.ask("JITT:REAS?");
    EXPECT_EQ(reasons.rfind("\"Nothing has been collected\",", 0), 0U) << reasons;
    EXPECT_EQ(program.ask("JITT:DATA?").rfind("9.91E+37,", 0), 0U);
    EXPECT_EQ(program.ask("JITT:BATH?"), "");
    EXPECT_EQ(program.error(), "-230,\"Data corrupt or stale;Nothing has been collected\"");
    program.ticks(600);
    program.ask("STOP");
    // The edges of the bench's data: 1 ns rms, a sine of 3 ns amplitude, and edges that fall 2 ns
    // later than they rise, one to each side of the mean.
    const std::string data = program.ask("JITT:DATA?");
    std::vector<double> values;
    for (std::size_t at = 0; at != std::string::npos; at = data.find(',', at + 1)) {
        values.push_back(std::stod(data.substr(at + (at == 0 ? 0 : 1))));
    }
    ASSERT_EQ(values.size(), 15U);
    EXPECT_NEAR(values[9], std::sqrt(1.0 + 9.0 / 2.0 + 1.0) * 1e-9, 0.15e-9);
    EXPECT_NEAR(values[10], 80e-9, 0.4e-9) << "12.5 Mbit/s";
    const std::string bathtub = program.ask("JITT:BATH?");
    EXPECT_EQ(std::count(bathtub.begin(), bathtub.end(), ','), 200);
    EXPECT_EQ(program.ask("JITT:STAT OFF;STAT?;:DENS:STAT?"), "0;1");
}

TEST(RemoteJitter, TypesIntoItsBoxes) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("JITT:LEV 0.125;INST 2ps;INT 8ns;NUMB 3;EDGE FALL;SOUR CHAN2"), "");
    const JitterSetup& setup = program.scope.tools().jitter().setup();
    EXPECT_DOUBLE_EQ(setup.level.value_or(0), 125.0);
    EXPECT_DOUBLE_EQ(setup.instrument_ps, 2.0);
    EXPECT_DOUBLE_EQ(setup.interval.value_or(0), 8000.0);
    EXPECT_EQ(setup.number, 3);
    EXPECT_EQ(setup.way, Crosses::falling);
    EXPECT_EQ(program.ask("JITT:LEV?;LEV:AUTO?;:JITT:NUMB?;INT?;EDGE?;SOUR?"),
              "1.250000E-01;0;3;8.000000E-09;FALL;CHAN2");
    EXPECT_EQ(program.ask("JITT:LEV 0;NUMB 0;INT 0;INST 0"), "");
    EXPECT_TRUE(setup.level && *setup.level == 0.0) << "0 V is a level";
    EXPECT_FALSE(setup.number || setup.interval);
    EXPECT_EQ(program.ask("JITT:LEV:AUTO ON"), "");
    EXPECT_FALSE(setup.level);
    EXPECT_EQ(program.ask("JITT:NUMB 1001"), "");
    EXPECT_EQ(program.error(), "-222,\"Data out of range\"");
}

} // namespace
} // namespace kv408
