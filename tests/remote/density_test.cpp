// What density is over the network.

#include <gtest/gtest.h>

#include <cstdint>

#include "remote_program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

/// The numbers of 4 bytes in the block `reply`, the lowest byte first.
std::vector<std::uint32_t> words_in(const std::string& reply) {
    std::vector<std::uint32_t> numbers;
    const auto digits = static_cast<std::size_t>(reply.at(1) - '0');
    for (std::size_t at = 2 + digits; at + 4 <= reply.size(); at += 4) {
        std::uint32_t number = 0;
        for (std::size_t byte = 4; byte > 0; --byte) {
            number = number << 8U | static_cast<unsigned char>(reply[at + byte - 1]);
        }
        numbers.push_back(number);
    }
    return numbers;
}

TEST(RemoteDensity, IsOperatedAsInItsWindow) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("DENS:STAT?;CHAN1?;CHAN2?;FRE?;HALF?;PAL?"), "0;1;1;0;0;CIV");
    EXPECT_EQ(program.ask("DENS:STAT ON;HALF 50;PAL CHAN;CHAN2 OFF"), "");
    DensityControls& controls = program.scope.tools().density().controls();
    EXPECT_TRUE(controls.chkDensity.checked());
    EXPECT_EQ(controls.txtDensityHalfLife.text(), "50");
    EXPECT_EQ(controls.cmbDensityPalette.text(), "Channel colour");
    EXPECT_FALSE(controls.channel[ch2].checked());
    program.ticks(10);
    EXPECT_GE(std::stoi(program.ask("DENS:SWE1?")), 3);
    EXPECT_EQ(program.ask("DENS:SWE2?"), "0");
    EXPECT_EQ(program.ask("DENS:FRE ON"), "");
    const std::string sweeps = program.ask("DENS:SWE?");
    program.ticks(10);
    EXPECT_EQ(program.ask("DENS:SWE?"), sweeps);
    EXPECT_EQ(program.ask("DENS:HALF 0;HALF?;PAL CIV;PAL?;FRE OFF;CLE;SWE?"), "0;CIV;0");
    EXPECT_EQ(program.ask("DENS:HALF 100001"), "");
    EXPECT_EQ(program.error(), "-222,\"Data out of range\"");
}

TEST(RemoteDensity, HandsOverItsCountsWithTheirAxes) {
    RemoteProgram program;
    program.start();
    EXPECT_EQ(program.ask("DENS:COUN1? 0,1"), "");
    EXPECT_EQ(program.error().substr(0, 5), "-230,");
    program.ask("TIM:SCAL 20ns;:DENS:STAT ON");
    program.ticks(20);
    program.ask("STOP");
    program.ask("WAV:BYT LSBF");
    const int sweeps = std::stoi(program.ask("DENS:SWE1?"));
    EXPECT_GE(sweeps, 5);
    std::vector<std::uint32_t> counts;
    for (const char* const part : {"0,200", "200,200", "400,200", "600,50"}) {
        const auto words = words_in(program.ask(std::string("DENS:COUN1? ") + part));
        counts.insert(counts.end(), words.begin(), words.end());
    }
    ASSERT_EQ(counts.size(), 650U * 4096U);
    for (std::size_t point = 0; point < 650; ++point) {
        std::uint32_t hits = 0;
        for (std::size_t code = 0; code < 4096; ++code) {
            hits += counts[point * 4096 + code];
        }
        ASSERT_EQ(hits, static_cast<std::uint32_t>(sweeps)) << point;
    }
    for (const char* const part : {"0,201", "650,1", "600,51", "0,0"}) {
        EXPECT_EQ(program.ask(std::string("DENS:COUN1? ") + part), "") << part;
        EXPECT_EQ(program.error().substr(0, 5), "-222,") << part;
    }
    // At 20ns/div a point is 313 ps; a code of the range of 50mV/div is a sixth of a millivolt.
    program.ask("CHAN1:SCAL 0.05");
    program.ask("RUN");
    program.ticks(10);
    EXPECT_EQ(program.ask("DENS:PRE1?"),
              "650,4096,3.130000E-10,0.000000E+00,1.666667E-04,-3.413333E-01,1.000000E+00,0");
    EXPECT_EQ(program.ask("DENS:SAT1?"), "0");
}

} // namespace
} // namespace kv408
