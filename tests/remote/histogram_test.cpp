// What the histogram is over the network.

#include <gtest/gtest.h>

#include "remote_program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

TEST(RemoteHistogram, IsOperatedAsInItsWindow) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("HIST:STAT?;SOUR?;OF?;WIND?"), "0;CHAN1;LEV;288,64,352,449");
    EXPECT_EQ(program.ask("HIST:DATA?"), "");
    EXPECT_EQ(program.error().substr(0, 5), "-230,");
    EXPECT_EQ(program.ask("HIST:STAT ON;OF TIM;WIND 100,0,102,513"), "");
    EXPECT_TRUE(program.scope.tools().histogram().is_open());
    program.ticks(20);
    program.ask("STOP");
    const int sweeps = std::stoi(program.ask("DENS:SWE1?"));
    EXPECT_GE(sweeps, 5);
    // Two points, each hit once a sweep.
    const std::string hits = program.ask("HIST:BINS?");
    const std::string data = program.ask("HIST:DATA?");
    EXPECT_DOUBLE_EQ(std::stod(data), 2.0 * sweeps);
    EXPECT_DOUBLE_EQ(std::stod(hits.substr(hits.rfind(',') + 1)), sweeps);
    EXPECT_EQ(program.ask("HIST:WIND 100,0,101,513"), "");
    EXPECT_EQ(program.error(), "-222,\"Data out of range\"");
    EXPECT_EQ(program.ask("HIST:STAT OFF;STAT?;:DENS:STAT?"), "0;1");
}

} // namespace
} // namespace kv408
