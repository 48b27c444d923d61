// What the eye window is over the network.

#include <gtest/gtest.h>

#include "remote_program.h"
#include "scope/tools.h"
#include "simulator/test_connections.h"

namespace kv408 {
namespace {

TEST(RemoteEye, IsOperatedAsInItsWindow) {
    RemoteProgram program;
    simulator::connect(program.simulation.bench(), simulator::TestConnection::eye_clean);
    program.start();
    EXPECT_EQ(program.ask("EYE:STAT?;SOUR?;INT?;CROS:AUTO?"), "0;CHAN1;0.000000E+00;1");
    EXPECT_EQ(program.ask("EYE:STAT ON"), "");
    EXPECT_TRUE(program.scope.tools().eye().is_open());
    program.ticks(100);
    EXPECT_EQ(program.ask("EYE:REAS?").find("\"Nothing"), std::string::npos);
    const auto eye = program.scope.tools().eye().eye();
    ASSERT_TRUE(eye);
    // 12.5 Mbit/s, 400 mV: the third number is the unit interval, the eleventh the amplitude.
    const std::string data = program.ask("EYE:DATA?");
    std::vector<double> values;
    for (std::size_t at = 0; at != std::string::npos; at = data.find(',', at + 1)) {
        values.push_back(std::stod(data.substr(at + (at == 0 ? 0 : 1))));
    }
    ASSERT_EQ(values.size(), 19U);
    EXPECT_NEAR(values[2], 80e-9, 0.2e-9);
    EXPECT_NEAR(values[10], 0.4, 4e-3);
    EXPECT_FALSE(program.scope.picture().drawn().overlays.marks.lines.empty());
    EXPECT_EQ(program.ask("EYE:INT 80ns;CROS 82ns"), "");
    EXPECT_EQ(program.ask("EYE:INT?;CROS?;CROS:AUTO?"), "8.000000E-08;8.200000E-08;0");
    EXPECT_DOUBLE_EQ(program.scope.tools().eye().setup().crossing.value_or(0), 82000.0);
    EXPECT_EQ(program.ask("EYE:CROS:AUTO ON;AUTO?"), "1");
    EXPECT_EQ(program.ask("EYE:STAT OFF;STAT?;:DENS:STAT?"), "0;1");
    EXPECT_TRUE(program.scope.picture().drawn().overlays.marks.lines.empty());
}

} // namespace
} // namespace kv408
