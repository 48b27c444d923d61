// What clients are told of one sweep, and of what fails in their runs, on the whole program.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

class RemoteResults : public testing::Test, protected RemoteProgram {
protected:
    RemoteResults() { start(); }
};

// Signal 1 is a sine of 10 MHz and 400 mVpp around 0 V.
TEST_F(RemoteResults, MeasuresInVoltsHertzAndSeconds) {
    ask_and_wait("CHAN1:SCAL 0.1;:TIM:SCAL 20NS;*OPC?");
    const auto number = [this](const char* query) { return numbers_in(ask(query)).at(0); };
    EXPECT_NEAR(number("MEAS:VMAX? CHAN1"), 0.2, 0.005);
    EXPECT_NEAR(number("MEAS:VPP? CHANNEL1"), 0.4, 0.01);
    EXPECT_NEAR(number("MEAS:FREQ? CHAN1"), 10e6, 0.2e6);
    EXPECT_NEAR(number("MEAS:PER? CHAN1"), 100e-9, 2e-9);
    const std::vector<double> all = numbers_in(ask("MEAS:ALL? CHAN1"));
    ASSERT_EQ(all.size(), 14U);
    EXPECT_NEAR(all[1], -0.2, 0.005);
    EXPECT_NEAR(all[8], 10e6, 0.2e6);
    EXPECT_EQ(all[9], number("MEAS:PERIOD? CHAN1"));
    ask("CHAN1:DISP OFF");
    EXPECT_EQ(ask("MEAS:VMAX? CHAN1"), "9.91E+37");
    EXPECT_EQ(error(), "0,\"No error\"");
    EXPECT_EQ(ask("MEAS:STAT OFF;VMAX? CHAN2"), "9.91E+37");
    EXPECT_EQ(error(), "-221,\"Settings conflict;Measure is off\"");
}

// CH1 has a steady level, another one for each block, and both channels come one after the other.
TEST_F(RemoteResults, MeasurementsAndPointsInOneLineAreOfOneSweep) {
    simulation.bench().sources[1] = simulation.bench().sources[0]; // which triggers
    auto& source = simulation.bench().sources[0];
    source.amplitude_mvpp = 0;
    ask_and_wait("TRIG:SOUR TRIG2;*OPC?");
    int sweeps = 0;
    std::string last;
    for (int tick = 0; tick < 60; ++tick) {
        source.offset_mv = 2 * tick;
        ticks(1);
        std::istringstream answers(ask("MEAS:VMAX? CHAN1;:WAV:SEQ?;DATA?"));
        std::string volts;
        std::string number;
        std::string data;
        std::getline(std::getline(std::getline(answers, volts, ';'), number, ';'), data);
        const std::vector<double> points = numbers_in(data);
        EXPECT_EQ(numbers_in(volts).at(0), *std::max_element(points.begin(), points.end())) << tick;
        sweeps += number == last ? 0 : 1;
        last = number;
    }
    EXPECT_GT(sweeps, 10);
    const std::string one = ask("MEAS:VMAX? CHAN1;:WAV:SEQ?");
    client.take("MEAS:VMAX? CHAN1;:WAV:SEQ?\n");
    client.run(control.moment(client)); // the rest of the line is run when sweeps have come
    source.offset_mv = -300;
    ticks(20);
    EXPECT_EQ(go_on(client), one);
    EXPECT_NE(ask("MEAS:VMAX? CHAN1;:WAV:SEQ?"), one);
    const std::string both = ask_and_wait("MEAS:VMAX? CHAN1;:DIG;:MEAS:VMAX? CHAN1;:WAV:SEQ?");
    EXPECT_EQ(both.substr(both.find_last_of(';') + 1), ask("ACQ:COUN?")) << "a new one was wanted";
}

TEST_F(RemoteResults, ASweepThatWasNotMeasuredHasNoResults) {
    ask_and_wait("TIM:SCAL 20NS;*OPC?");
    ask_and_wait("MEAS:STAT OFF;:TIM:SCAL 5NS;*OPC?");
    ask("STOP;:MEAS:STAT ON");
    EXPECT_EQ(ask("MEAS:VPP? CHAN1"), "9.91E+37");
    EXPECT_EQ(error(), "-230,\"Data corrupt or stale;The sweep was not measured\"");
    // Half a period of a sine, from 0 V to its top and back.
    EXPECT_NEAR(numbers_in(ask_and_wait("DIG;:MEAS:VPP? CHAN1")).at(0), 0.2, 0.005);
    EXPECT_EQ(error(), "0,\"No error\"");
}

// A sweep of which the first channel was asked for before the change is not the one that was waited
// for, though all channels have come since.
TEST_F(RemoteResults, WaitsForASweepThatIsNewAsAWhole) {
    for (int phase = 0; phase < 6; ++phase) {
        ticks(phase);
        EXPECT_EQ(ask_and_wait(phase % 2 == 0 ? "ACQ:SPE ON;*OPC?" : "ACQ:SPE OFF;*OPC?"), "1");
        EXPECT_TRUE(parts().sweeps.last()->complete) << "after " << phase << " ticks";
    }
}

// Nor is one opened in the ticks of a run that a client has begun, for which all would wait.
TEST_F(RemoteResults, TellsTheClientWhatFailsInItsRun) {
    Client other(control.table());
    const auto answers = [this](bool on) { simulation.bench().devices[0].answers = on; };
    const auto works_again = [&] {
        answers(true);
        EXPECT_EQ(ask_and_wait("*OPC?;*CLS"), "1");
    };
    ask_and_wait("STOP;*OPC?");
    answers(false);
    ask("RUN;*CLS"); // the press itself fails too
    ticks(5);
    EXPECT_TRUE(boxes.shown.empty());
    std::vector<std::string> told;
    for (std::string one = error(); one != "0,\"No error\""; one = error()) {
        told.push_back(one);
    }
    EXPECT_THAT(told, testing::Contains("-240,\"Hardware error;Error setting scope\""));
    std::sort(told.begin(), told.end());
    EXPECT_EQ(std::unique(told.begin(), told.end()), told.end()) << "in however many ticks";
    EXPECT_EQ(error(other), "0,\"No error\"");
    works_again();

    press([this] { scope.panel().cmdstartsweep.click(); });
    answers(false);
    ticks(5);
    const std::size_t shown = boxes.shown.size();
    EXPECT_GT(shown, 0U) << "the person's own run";
    EXPECT_EQ(error(), "0,\"No error\"");
    works_again();

    // What a client sets in it is the client's doing until it has taken effect.
    ask(other, "TIM:SCAL 5NS");
    answers(false);
    ticks(2);
    EXPECT_EQ(boxes.shown.size(), shown);
    EXPECT_EQ(error(other).substr(0, 5), "-240,");
    works_again();
    ticks(10);
    answers(false);
    ask("STOP"); // whose frame it does not take
    press([this] { scope.panel().cmdstartsweep.click(); });
    ticks(2);
    EXPECT_GT(boxes.shown.size(), shown) << "a person has pressed since";
    control.instrument().forget(other);
}

// Where every client has gone a person is the one to tell, for whom a box is opened.
TEST_F(RemoteResults, TellsThePersonWhatFailsInTheRunOfAClientThatHasGone) {
    ask_and_wait("STOP;*OPC?");
    simulation.bench().devices[0].answers = false;
    ask("RUN");
    ticks(5);
    EXPECT_NE(ask("SYST:ERR:COUN?"), "0");
    EXPECT_TRUE(boxes.shown.empty());
    control.instrument().forget(client);
    ticks(5);
    EXPECT_FALSE(boxes.shown.empty()) << "with a text that only that client was told";
}

} // namespace
} // namespace kv408
