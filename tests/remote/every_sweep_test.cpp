// A client that fetches each sweep once.

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "remote/remote_program.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

/// The codes of `sweep`'s channel 1 as `WAVeform:DATA?` answers them in the format WORD.
std::string block_of(const Sweep& sweep) {
    std::string bytes = "#41300";
    for (const std::int16_t code : sweep.channel[0]->codes) {
        bytes += static_cast<char>(code >> 8);
        bytes += static_cast<char>(code & 0xFF);
    }
    return bytes;
}

TEST(EverySweep, IsFetchedOnceOfTenThousand) {
    const auto wanted = static_cast<long>(10'000 / series_stride);
    RemoteProgram program;
    program.start();
    program.ask("CHAN2:DISP OFF;:WAV:FORM WORD");
    program.ask_and_wait("*OPC?");
    long last = std::stol(program.ask("ACQ:COUN?"));
    const long first = last;
    for (long tick = 0; tick < 2 * wanted && last < first + wanted; ++tick) {
        program.ticks(1);
        const std::string answer = program.ask("WAV:SEQ?;DATA?");
        const long number = std::stol(answer);
        if (number == last) {
            continue; // none has come in this tick
        }
        ASSERT_EQ(number, last + 1) << "one was missed";
        last = number;
        ASSERT_EQ(answer.substr(answer.find(';') + 1),
                  block_of(*program.parts().sweeps.last_complete()));
    }
    EXPECT_EQ(last, first + wanted);
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

} // namespace
} // namespace kv408
