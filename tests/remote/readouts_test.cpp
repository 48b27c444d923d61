// What the time cursors tell, over the network.

#include <cmath>

#include <gtest/gtest.h>

#include "remote_program.h"

namespace kv408 {
namespace {

TEST(RemoteReadouts, TellWhatTheTimeCursorsCross) {
    RemoteProgram program;
    program.start();
    program.ticks(10);
    EXPECT_EQ(program.ask("CURS:DELT:INV?"), "");
    EXPECT_EQ(program.error().substr(0, 5), "-221,") << "without time cursors";
    program.ask("CURS:MODE TIME;:CURS:POS1 25NS;:CURS:POS2 75NS");
    EXPECT_EQ(program.ask("CURS:DELT:INV?"), "2.000000E+07");
    // A sine of 400 mVpp and 10 MHz: 25 ns after the trigger at its top, 75 ns after it at its
    // bottom.
    EXPECT_NEAR(std::stod(program.ask("CURS:VOLT1? CHAN1")), 0.2, 0.002);
    EXPECT_NEAR(std::stod(program.ask("CURS:VOLT2? CHAN1")), -0.2, 0.002);
    EXPECT_NEAR(std::stod(program.ask("CURS:VOLT:DELT? CHAN1")), -0.4, 0.003);
    program.ask("CHAN2:DISP OFF");
    EXPECT_EQ(program.ask("CURS:VOLT1? CHAN2"), "9.91E+37");
    program.ask("CURS:POS2 25NS");
    EXPECT_EQ(program.ask("CURS:DELT:INV?"), "9.9E+37") << "both at one place";
    EXPECT_EQ(program.ask("CURS:VOLT1?"), "");
    EXPECT_EQ(program.error().substr(0, 5), "-109,") << "of no channel";
}

} // namespace
} // namespace kv408
