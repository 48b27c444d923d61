// Autoset over the network.

#include <gtest/gtest.h>

#include "remote_program.h"

namespace kv408 {
namespace {

TEST(RemoteAutoset, IsWaitedForAndTellsWhatItHasFound) {
    RemoteProgram program;
    program.start();
    program.ticks(5);
    program.ask("TIM:SCAL 200NS;:AUT");
    EXPECT_EQ(program.ask("TIM:SCAL 1US"), "");
    EXPECT_EQ(program.error(), "-221,\"Settings conflict;Autoset is under way\"");
    EXPECT_EQ(program.ask_and_wait("*OPC?"), "1");
    const std::string told = program.ask("AUT:RES?");
    EXPECT_NE(told.find(" mVpp on TRIG1, CH2 "), std::string::npos) << told;
    EXPECT_EQ(program.ask("TIM:SCAL?"), "2.000000E-08");
    EXPECT_EQ(program.ask("SYST:UNDO;:TIM:SCAL?"), "2.000000E-07");
    program.ask("AUT;:AUT:CANC");
    EXPECT_EQ(program.ask("AUT:RES?"), "\"Cancelled. Everything is as it was.\"");
    EXPECT_EQ(program.ask("TIM:SCAL?"), "2.000000E-07");
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

} // namespace
} // namespace kv408
