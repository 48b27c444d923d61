// Sweeps of a program that the computer leaves without time for a while.

#include <chrono>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "remote/remote_program.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// What is wrong with the sweep of channel 1, a sine of 400 mV and 10 MHz, that a client gets who
/// has the sweeping program stop at `phase` of a block and then asks for one sweep, when before the
/// operation `place` of the bridge nothing is done for `pause`. Empty when all is well.
std::string fetched_with(milliseconds phase, int place, nanoseconds pause) {
    RemoteProgram program;
    program.start();
    program.ticks(5);
    program.ask("MEAS:STAT ON;:CHAN1:SCAL 0.1");
    program.ask_and_wait("*OPC?");
    program.clock.advance(phase);
    program.ask("STOP");
    program.bridge.before_each([&program, place, pause, count = 0]() mutable {
        if (count++ == place) {
            program.clock.advance(pause);
        }
    });
    std::string held = program.ask("DIG");
    // A tick that took too long is followed by the next.
    nanoseconds next = program.clock.now();
    for (int tick = 0; tick < 30 && held == "(held)"; ++tick) {
        program.clock.advance(next - program.clock.now());
        program.scope.tick();
        program.control.tick_over();
        next += milliseconds(100);
        held = program.go_on(program.client);
    }
    const std::string volts = program.ask("MEAS:VPP? CHAN1");
    const std::string hertz = program.ask("MEAS:FREQ? CHAN1");
    if (std::abs(std::stod(volts) - 0.4) < 0.02 && std::abs(std::stod(hertz) - 1e7) < 1e5) {
        return {};
    }
    return held + volts + " V, " + hertz + " Hz";
}

TEST(Starved, AClientIsNotGivenASweepFromTheMiddleOfAnother) {
    constexpr int operations = 45; // until the sweep has come
    for (const milliseconds phase : {milliseconds(0), milliseconds(20)}) {
        for (int place = 0; place < operations; place += static_cast<int>(series_stride)) {
            for (const int pause : {3001, 13481, 14518, 20740, 27003}) {
                EXPECT_EQ(fetched_with(phase, place, microseconds(pause)), "")
                    << phase.count() << " ms into a block, " << pause << " us before operation "
                    << place;
            }
        }
    }
}

TEST(Starved, AProgramTellsNoSilenceOfTheInstrument) {
    RemoteProgram program;
    program.start();
    program.ticks(5);
    int silences = 0;
    program.control.on_silence([&silences](bool silent) { silences += silent ? 1 : 0; });
    for (int place = 0; place < 45; ++place) {
        program.bridge.before_each([&program, place, count = 0]() mutable {
            if (count++ == place) {
                program.clock.advance(milliseconds(1500));
            }
        });
        program.ticks(10);
        EXPECT_EQ(silences, 0) << "nothing done for a while before operation " << place;
    }
    program.bridge.before_each({});
    program.simulation.bench().devices.front().answers = false;
    program.ticks(40);
    EXPECT_EQ(silences, 1);
}

} // namespace
} // namespace kv408
