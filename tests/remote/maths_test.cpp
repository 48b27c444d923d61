// What the maths window is over the network.

#include <cmath>
#include <cstring>

#include <gtest/gtest.h>

#include "remote_program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

TEST(RemoteMaths, IsOperatedAsInItsWindow) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("MATH1:FUNC?;SOUR:FIRS?;SEC?;:MATH1:COUN?;SCAL:AUTO?;:MATH1:POS:AUTO?"),
              "OFF;CHAN1;CHAN2;16;1;1");
    EXPECT_EQ(program.ask("MATH2:DATA?"), "");
    EXPECT_EQ(program.error(), "-221,\"Settings conflict;MATH2 is off\"");
    EXPECT_EQ(program.ask("MATH1:FUNC SUBT;:MATH2:FUNC ENV;COUN 4;SOUR:FIRS CHAN2"), "");
    EXPECT_EQ(program.ask("MATH1:FUNC?;:MATH2:FUNC?;COUN?;SOUR:FIRS?"), "SUBT;ENV;4;CHAN2");
    program.ticks(40);
    program.ask("STOP");
    EXPECT_EQ(program.ask("MATH2:PRE?").substr(0, 6), "650,4,");
    const std::string preamble = program.ask("MATH1:PRE?");
    EXPECT_EQ(preamble.substr(0, 6), "650,1,");
    EXPECT_TRUE(preamble.ends_with(",\"V\",\"CH1 - CH2\"")) << preamble;
    const auto one = numbers_in(program.ask("WAV:SOUR CHAN1;DATA?"));
    const auto two = numbers_in(program.ask("WAV:SOUR CHAN2;DATA?"));
    const auto difference = numbers_in(program.ask("MATH1:DATA?"));
    const auto upper = numbers_in(program.ask("MATH2:DATA?"));
    const auto lower = numbers_in(program.ask("MATH2:DATA:LOW?"));
    ASSERT_EQ(difference.size(), 650U);
    ASSERT_EQ(upper.size(), 650U);
    ASSERT_EQ(lower.size(), 650U);
    for (std::size_t point = 0; point < difference.size(); ++point) {
        EXPECT_NEAR(difference[point], one[point] - two[point], 2e-7);
        EXPECT_GE(upper[point], two[point]);
        EXPECT_LE(lower[point], two[point]);
    }
    EXPECT_EQ(program.ask("MATH1:DATA:LOW?;:MATH1:SEQ?"), "9.91E+37;" + program.ask("ACQ:COUN?"));
    const std::string block = program.ask("WAV:FORM REAL;BYT LSBF;:MATH1:DATA?");
    ASSERT_EQ(block.substr(0, 6), "#45200");
    double second = 0.0; // as this machine has it, to the last bit
    std::memcpy(&second, block.data() + 6 + sizeof second, sizeof second);
    EXPECT_EQ(second, program.scope.tools().maths().tool(0).trace()->values[1]);
    const auto measured = numbers_in(program.ask("MATH1:MEAS:ALL?"));
    ASSERT_EQ(measured.size(), 14U);
    EXPECT_NEAR(measured[2], measured[0] - measured[1], 1e-6) << "Vpp";
    EXPECT_NEAR(measured[0], *std::max_element(difference.begin(), difference.end()), 0.01);
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

TEST(RemoteMaths, HasScaleAndPositionAndIsKeptAsAReference) {
    RemoteProgram program;
    program.start();
    program.ask("MATH1:FUNC DIFF;SCAL 2E9;POS -1.5");
    program.ticks(10);
    EXPECT_EQ(program.ask("MATH1:SCAL?;SCAL:AUTO?;:MATH1:POS?;POS:AUTO?"),
              "2.000000E+09;0;-1.500000E+00;0");
    const auto curve = program.scope.tools().maths().tool(0).shown()->curve;
    EXPECT_EQ(curve->scale, (CurveScale{.per_division = 2e12, .position = -1.5}));
    EXPECT_EQ(program.ask("MATH1:FUNC INT;SCAL:AUTO?"), "1") << "another unit";
    EXPECT_NE(program.ask("MATH1:SCAL?"), "2.000000E+09");
    program.ask("MATH1:FUNC DIFF;SCAL 2E9;SCAL:AUTO ON");
    EXPECT_NE(program.ask("MATH1:SCAL?"), "2.000000E+09");
    const std::string found = program.ask("MATH1:SCAL?");
    program.ask("MATH1:SCAL:AUTO OFF");
    EXPECT_EQ(program.ask("MATH1:SCAL?;SCAL:AUTO?"), found + ";0");
    EXPECT_EQ(program.ask("MATH1:POS 5"), "");
    EXPECT_EQ(program.error(), "-222,\"Data out of range\"");
    EXPECT_EQ(program.ask("MATH1:REF 3"), "");
    const auto& kept = program.scope.tools().references().references().at(2);
    ASSERT_TRUE(kept);
    EXPECT_TRUE(kept->name.starts_with("R3 dCH1/dt sweep ")) << kept->name;
    EXPECT_EQ(kept->channel().unit, "V/s");
    EXPECT_EQ(program.ask("MATH1:REF 5"), "");
    EXPECT_EQ(program.error(), "-222,\"Data out of range\"");
    program.ask("CHAN1:DISP OFF");
    EXPECT_EQ(program.ask("MATH1:REF 1"), "");
    EXPECT_EQ(program.error(), "-230,\"Data corrupt or stale;CH1 is off\"");
}

TEST(RemoteMaths, IsOfOneSweepInOneLine) {
    RemoteProgram program;
    auto& source = program.simulation.bench().sources[0]; // each sweep has another level
    program.simulation.bench().sources[1] = source;
    source.amplitude_mvpp = 0;
    program.start();
    program.ask("TRIG:SOUR TRIG2;:MATH1:FUNC NEG;:MATH2:FUNC ENV;COUN 3");
    program.ticks(20);
    const std::string line = "MATH1:SEQ?;DATA?;MEAS:ALL?;:MATH2:PRE?;DATA?;DATA:LOW?;:WAV:SEQ?";
    const std::string one = program.ask(line);
    EXPECT_EQ(one.substr(0, one.find(';')), one.substr(one.rfind(';') + 1));
    program.client.take(line + '\n');
    program.client.run(program.control.moment(program.client));
    source.offset_mv = 60; // the rest of the line is run when sweeps have come
    program.ticks(20);
    EXPECT_EQ(program.go_on(program.client), one);
    const std::string other = program.ask(line);
    EXPECT_NE(other, one);
    EXPECT_NE(other.substr(0, other.find(';')), one.substr(0, one.find(';')));

    // What is set is computed anew, of the last sweep.
    program.client.take("MATH1:SEQ?;:MATH2:FUNC INT;SEQ?\n");
    program.client.run(program.control.moment(program.client));
    program.ticks(20);
    const std::string anew = program.go_on(program.client);
    EXPECT_EQ(anew, other.substr(0, other.find(';') + 1) + program.ask("ACQ:COUN?"));
    // Another function that a person has chosen is of no sweep before.
    program.client.take("MATH1:SEQ?;DATA?\n");
    program.client.run(program.control.moment(program.client));
    program.ticks(20);
    program.press(
        [&] { program.scope.tools().maths().tool(0).controls().cmbMathsFunction.set_index(1); });
    EXPECT_EQ(program.go_on(program.client).find(','), std::string::npos);
    EXPECT_EQ(program.error(), "-230,\"Data corrupt or stale;MATH1 is of a later sweep\"");
}

TEST(RemoteMaths, HasASpectrum) {
    RemoteProgram program;
    program.start();
    program.ask("TIM:SCAL 100NS;:CHAN2:DISP OFF;:MATH2:FUNC NEG;:SPEC:STAT ON;SOUR MATH2");
    EXPECT_EQ(program.ask("SPEC:SOUR?;AXIS?;AXIS LOG;AXIS?"), "MATH2;LIN;LOG");
    program.ticks(20);
    const std::string negative = program.ask("STOP;SPEC:WIND FLAT;PEAK?");
    EXPECT_EQ(negative.substr(0, 2), "1.") << "10 MHz: " << negative;
    EXPECT_EQ(program.ask("SPEC:SOUR CHAN1;PEAK?"), negative) << "of -a as of a";
    // The derivative of a sine at f is 2 pi f times as high.
    program.ask("MATH2:FUNC DIFF;:SPEC:SOUR MATH2");
    const auto sine = numbers_in(negative);
    const auto slope = numbers_in(program.ask("SPEC:PEAK?"));
    EXPECT_NEAR(slope[1] - sine[1], 20.0 * std::log10(2.0 * 3.14159265358979 * 10e6), 0.2);
    EXPECT_EQ(program.error(), "0,\"No error\"");
    program.ask("MATH2:FUNC OFF");
    EXPECT_EQ(program.ask("SPEC:PEAK?"), "");
    EXPECT_EQ(program.error(), "-230,\"Data corrupt or stale;No function is chosen for MATH2\"");
}

} // namespace
} // namespace kv408
