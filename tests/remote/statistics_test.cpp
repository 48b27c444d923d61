// The statistics of measurements over the network.

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "remote_program.h"

namespace kv408 {
namespace {

// CH1 is a sine of 400 mVpp with 40 mV more from the eleventh sweep on.
TEST(RemoteStatistics, TellsWhatTheWindowShows) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("STAT:STAT?;COUN? CHAN1,VPP;MEAN? CHAN1,VPP"), "0;0;9.91E+37");
    program.ask_and_wait("CHAN1:SCAL 0.1;:CHAN2:DISP OFF;:STAT:STAT ON;:STAT:OPER:ENAB 8;*OPC?");
    program.ticks(10);
    program.ask("STAT:RES");
    EXPECT_EQ(program.ask("STAT:SWE?"), "0");
    const auto sweeps = [&] { return std::stoi(program.ask("STAT:SWE?")); };
    while (sweeps() < 10) {
        program.ticks(1);
    }
    program.simulation.bench().sources[0].offset_mv = 40;
    const int before = sweeps();
    while (sweeps() < 2 * before) {
        program.ticks(1);
    }
    const std::vector<double> all = numbers_in(program.ask("STATistics:ALL? CHANnel1,VMEAN"));
    ASSERT_EQ(all.size(), 9U);
    const double low = all[3];
    const double high = all[4];
    EXPECT_NEAR(high - low, 0.04, 0.002);
    EXPECT_NEAR(all[0], high, 0.001);
    // One sweep of the first half may have been on its way.
    EXPECT_NEAR(all[1], (low + high) / 2, 0.04 / before + 0.001);
    EXPECT_NEAR(all[2], 0.02, 0.003);
    EXPECT_EQ(all[5], 2.0 * before);
    EXPECT_EQ(all[6], 0);
    EXPECT_EQ(all[7] + all[8], 0);
    EXPECT_EQ(numbers_in(program.ask("STAT:MEAN? CHAN1,VMEAN;DEV? CHAN1,VMEAN")).at(0), all[1]);
    EXPECT_EQ(program.ask("STAT:MIN? CHAN2,VPP;COUN? CHAN2,VPP"), "9.91E+37;0") << "it is off";
    EXPECT_EQ(program.ask("STAT:MEAN? CHAN1"), "");
    EXPECT_EQ(program.error().substr(0, 5), "-109,");
    program.ask("TIM:SCAL 1NS");
    program.ticks(20);
    const std::string without = program.ask("STAT:WITH? CHAN1,FREQ");
    EXPECT_EQ(without, program.ask("STAT:SWE?") + ",0") << "no period on the screen";
}

TEST(RemoteStatistics, LimitsValuesOfEachMeasurement) {
    RemoteProgram program;
    program.start();
    program.ask_and_wait("CHAN1:SCAL 0.1;:STAT:STAT ON;*OPC?");
    program.ask("STAT:SOUR CHAN1;VAL VPP;LOW 300MV;HIGH 0.35;COL ORAN;ACT BEEP");
    EXPECT_EQ(program.error(), "0,\"No error\"");
    const StatisticsDialog& dialog = program.scope.tools().statistics();
    EXPECT_EQ(dialog.rule(0, 2).low, "0.3");
    EXPECT_EQ(dialog.rule(0, 2).action, LimitAction::beep);
    EXPECT_EQ(program.ask("STAT:LOW?;HIGH?;COL?;ACT?;LOW:STAT?"),
              "3.000000E-01;3.500000E-01;ORAN;BEEP;1");
    program.ticks(20);
    EXPECT_GT(std::stoi(program.ask("STAT:OUTS? CHAN1,VPP")), 0) << "400 mV lie above";
    EXPECT_EQ(program.ask("STAT:VAL FREQ;LOW:STAT?;:STAT:LOW?;LOW 1MHZ;LOW?"),
              "0;9.91E+37;1.000000E+06");
    program.ask("STAT:HIGH 1V");
    EXPECT_EQ(program.error(), "-131,\"Invalid suffix\"") << "of a frequency";
    EXPECT_EQ(program.ask("STAT:VAL VPP;LOW?;LOW:STAT OFF;STAT?;:STAT:LOW?"),
              "3.000000E-01;0;9.91E+37");
}

/// The short forms of the header `pattern` in capitals, without what may be left out or chosen.
std::string shortest(std::string pattern) {
    for (const char* const marks : {"[]", "<>"}) {
        for (auto open = pattern.find(marks[0]); open != std::string::npos;
             open = pattern.find(marks[0])) {
            pattern.erase(open, pattern.find(marks[1]) - open + 1);
        }
    }
    return short_form(pattern);
}

// "STAT" is short for statistics and for status: what stands behind it tells them.
TEST(RemoteTree, NoShortHeaderMeansTwoCommands) {
    const RemoteProgram program;
    std::set<std::string> seen;
    for (const Command& command : program.control.table().commands()) {
        EXPECT_TRUE(seen.insert(shortest(command.header)).second) << command.header;
    }
}

} // namespace
} // namespace kv408
