// What the mask window is over the network.

#include <gtest/gtest.h>

#include "remote/with_masks.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

TEST(RemoteMask, IsOperatedAsInItsWindow) {
    WithMasks program(simulator::TestConnection::eye_clean);
    EXPECT_EQ(program.ask("MASK:STAT?;SOUR?;NAME?;ACT?;VERD?;RAT:AUTO?"),
              "0;CHAN1;HEX40;NONE;NONE;1");
    EXPECT_EQ(program.ask("MASK:DATA?"), "");
    EXPECT_EQ(program.error(), "-230,\"Data corrupt or stale;Nothing has been collected\"");
    EXPECT_EQ(program.ask("MASK:STAT ON"), "");
    program.ticks(100);
    EXPECT_EQ(program.ask("MASK:VERD?;FOUN?"),
              "PASS;\"Hexagon, 40 %, in unit intervals and amplitudes\"");
    EXPECT_FALSE(program.scope.picture().drawn().overlays.marks.lines.empty());
    for (const char* const name : {"HEX60", "DIAM", "STM1", "TENG", "PULS"}) {
        EXPECT_EQ(program.ask("MASK:NAME " + std::string(name) + ";NAME?"), name);
        EXPECT_EQ(program.ask("MASK:FOUN?").find("not been found"), std::string::npos) << name;
    }
    EXPECT_EQ(program.ask("MASK:NAME OWN"), "");
    EXPECT_EQ(program.error(), "-221,\"Settings conflict;No mask has been loaded\"");
    EXPECT_EQ(program.ask("MASK:RAT 5e-5;RAT?;RAT:AUTO?"), "5.000000E-05;0");
    EXPECT_EQ(program.ask("MASK:RAT:AUTO ON;AUTO?"), "1");
    EXPECT_EQ(program.ask("MASK:STAT OFF;STAT?;:DENS:STAT?"), "0;1");
}

TEST(RemoteMask, AClosingEyeFailsAndStopsTheSweep) {
    WithMasks program(simulator::TestConnection::eye_closing);
    EXPECT_EQ(program.ask("MASK:NAME HEX60;ACT STOP;STAT ON"), "");
    program.ticks(60);
    EXPECT_EQ(program.ask("MASK:VERD?"), "FAIL");
    EXPECT_EQ(program.ask("ACQ:STAT?"), "STOP");
}

} // namespace
} // namespace kv408
