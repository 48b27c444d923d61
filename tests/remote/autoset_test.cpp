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

// As the person's press of Stop does.
TEST(RemoteAutoset, IsEndedByStop) {
    RemoteProgram program;
    program.start();
    program.ticks(5);
    program.ask("TIM:SCAL 200NS;:CHAN1:SCAL 50MV");
    program.ticks(5);
    program.ask("AUT");
    program.ticks(3);
    EXPECT_NE(program.ask("TIM:SCAL?;:CHAN1:SCAL?"), "2.000000E-07;5.000000E-02");
    EXPECT_EQ(program.ask("STOP;:AUT:RES?;:ACQ:STAT?;*OPC?"),
              "\"Stopped. Everything is as it was.\";STOP;1");
    EXPECT_EQ(program.ask("TIM:SCAL?;:CHAN1:SCAL?"), "2.000000E-07;5.000000E-02");
    EXPECT_EQ(program.error(), "0,\"No error\"");
    program.ask("TIM:SCAL 1US;:RUN"); // all can be set again
    program.ticks(5);
    EXPECT_EQ(program.ask("TIM:SCAL?;:ACQ:STAT?"), "1.000000E-06;RUN");
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

TEST(RemoteAutoset, IsEndedByReset) {
    RemoteProgram program;
    program.start();
    program.ticks(5);
    program.ask("TIM:SCAL 200NS;:CHAN1:SCAL 50MV");
    program.ticks(5);
    program.ask("AUT");
    program.ticks(3);
    program.ask("*RST");
    EXPECT_EQ(program.error(), "0,\"No error\"");
    EXPECT_EQ(program.ask("TIM:SCAL?;:CHAN1:SCAL?;:ACQ:STAT?"), "2.000000E-08;1.000000E-01;STOP");
    program.ticks(20);
    EXPECT_EQ(program.ask("TIM:SCAL?;:CHAN1:SCAL?;:ACQ:STAT?"), "2.000000E-08;1.000000E-01;STOP");
    EXPECT_EQ(program.ask("SYST:UNDO;:TIM:SCAL?;:CHAN1:SCAL?"), "2.000000E-07;5.000000E-02");
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

TEST(RemoteAutoset, IsNotEndedWhereThePersonHasLockedTheNetworkOut) {
    RemoteProgram program;
    program.start();
    program.ticks(5);
    program.ask("AUT");
    program.control.instrument().lock_network(true);
    for (const char* const ending : {"STOP", "*RST", "AUT:CANC"}) {
        program.ask(ending);
        EXPECT_EQ(program.error().substr(0, 5), "-203,") << ending;
    }
    EXPECT_TRUE(program.scope.autoset().under_way());
}

} // namespace
} // namespace kv408
