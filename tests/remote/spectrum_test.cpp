// What the spectrum window is over the network.

#include <gtest/gtest.h>

#include "remote_program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

TEST(RemoteSpectrum, IsOperatedAsInItsWindow) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("SPEC:STAT?;SOUR?;WIND?;UNIT?;HOLD?;COUN?"), "0;CHAN1;HANN;DBV;LAST;16");
    EXPECT_EQ(program.ask("SPEC:PEAK?"), "");
    EXPECT_EQ(program.error(), "-221,\"Settings conflict;The spectrum is off\"");
    EXPECT_EQ(program.ask("SPEC:STAT ON;WIND FLAT;HOLD MEAN;COUN 4"), "");
    EXPECT_TRUE(program.scope.tools().spectrum().is_open());
    program.ask("TIM:SCAL 100NS");
    program.ticks(40);
    program.ask("STOP");
    // Signal 1: a sine of 10 MHz and 400 mVpp, 141.4 mV rms.
    const std::string peaks = program.ask("SPEC:PEAK?");
    const std::size_t comma = peaks.find(',');
    ASSERT_NE(comma, std::string::npos) << peaks;
    EXPECT_NEAR(std::stod(peaks), 10e6, 0.3e6);
    EXPECT_NEAR(std::stod(peaks.substr(comma + 1)), -16.99, 0.1);
    const std::string preamble = program.ask("SPEC:PRE?");
    EXPECT_EQ(preamble.rfind("326,", 0), 0U) << preamble;
    EXPECT_EQ(preamble.substr(preamble.rfind(',')), ",4");
    const std::string lines = program.ask("SPEC:DATA?");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), ','), 325);
    EXPECT_NEAR(std::stod(program.ask("SPEC:UNIT DBM;PEAK?").substr(comma + 1)), -3.98, 0.1);
    EXPECT_EQ(program.ask("SPEC:PUR?").substr(0, 11), "9.91E+37,1,") << "too few periods";
    const std::string purity = program.ask("SPEC:WIND HANN;PUR?");
    EXPECT_LT(std::stod(purity), 2.0) << "percent of a sine's harmonics";
    EXPECT_EQ(program.ask("SPEC:CLE;COUN?;STAT OFF;STAT?"), "4;0");
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

// A query without an answer would make its client wait in vain.
TEST(RemoteSpectrum, TellsThatThereIsNoPeak) {
    RemoteProgram program;
    program.simulation.bench().sources[1] = program.simulation.bench().sources[0];
    program.simulation.bench().sources[0].amplitude_mvpp = 0;
    program.start();
    program.ask("TRIG:SOUR TRIG2;:SPEC:STAT ON");
    program.ticks(20);
    EXPECT_EQ(program.ask("SPEC:PEAK?;COUN?"), "9.91E+37,9.91E+37;16");
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

} // namespace
} // namespace kv408
