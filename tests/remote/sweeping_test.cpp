// Commands that sweep, wait and fetch, on the whole program.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "calibration/calibration_form.h"
#include "config/settings_file.h"
#include "link/commands.h"
#include "remote/remote_program.h"

namespace kv408 {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class RemoteSweeping : public testing::Test, protected RemoteProgram {
protected:
    RemoteSweeping() { start(); }

    // How many sweeps there are from now until `ticks` have passed.
    long sweeps_in(int count) {
        const long before = std::stol(ask("ACQ:COUN?"));
        ticks(count);
        return std::stol(ask("ACQ:COUN?")) - before;
    }
};

TEST_F(RemoteSweeping, RunsAndStops) {
    ticks(10);
    EXPECT_EQ(ask("ACQ:STAT?"), "RUN");
    EXPECT_GT(sweeps_in(10), 0);
    EXPECT_EQ(ask("STAT:OPER:COND?"), "8");
    ask("STOP");
    EXPECT_EQ(ask("ACQ:STAT?"), "STOP");
    ticks(1);
    EXPECT_EQ(sweeps_in(10), 0);
    EXPECT_EQ(ask("STAT:OPER:COND?"), "0");
    ask("RUN");
    EXPECT_EQ(ask("ACQ:STAT?"), "SET");
    EXPECT_EQ(ask("STAT:OPER:COND?"), "2");
    ticks(10);
    EXPECT_EQ(ask("ACQ:STAT?"), "RUN");
    EXPECT_EQ(ask("STAT:OPER?"), "10"); // both have begun since
    EXPECT_EQ(ask("STAT:OPER?"), "0");
}

TEST_F(RemoteSweeping, TellsThatALinearityRunGoesOn) {
    ask("STOP");
    ticks(5);
    ask("STAT:OPER?");
    CalibrationForm& form = scope.calibration_form();
    press([&form] { form.cmdsetforlinearitycal.click(); });
    press([&form] { form.cmdcalint.click(); });
    ticks(1);
    EXPECT_EQ(ask("STAT:OPER:COND?"), "1");
    ask("STOP");
    EXPECT_EQ(ask("STAT:OPER:COND?;EVEN?"), "0;1");
}

TEST(RemoteStart, WaitsForTheFirstSweep) {
    RemoteProgram program;
    program.scope.start();
    program.control.attach(program.scope, [&](const auto& action) { program.scope.act(action); });
    EXPECT_EQ(program.ask_and_wait("*OPC?;:ACQ:COUN?"), "1;1");
}

TEST_F(RemoteSweeping, WaitsForTheSweepOfAChangedSetUp) {
    EXPECT_EQ(ask_and_wait("*OPC?"), "1");
    EXPECT_EQ(ask("*OPC?"), "1"); // nothing has changed since
    ask("STOP");
    EXPECT_EQ(ask("TIM:SCAL 5NS;*OPC?"), "1"); // nor is anything pending while stopped
    ask("RUN");
    EXPECT_EQ(ask("TIM:SCAL 10NS;*OPC?"), "(held)");
    ticks(1);
    EXPECT_EQ(go_on(client), "(held)");
    const Sweep* const before = parts().sweeps.last_complete().get();
    std::string answer = "(held)";
    for (int most = 50; answer == "(held)" && most > 0; --most) {
        ticks(1);
        answer = go_on(client);
    }
    EXPECT_EQ(answer, "1");
    const auto& sweep = parts().sweeps.last_complete();
    EXPECT_NE(sweep.get(), before);
    EXPECT_EQ(sweep->channel[0]->time_per_point, 157.0); // both with 10ns/div
    EXPECT_EQ(sweep->channel[1]->time_per_point, 157.0);
}

// What the instrument has been asked for already was asked for at the other speed.
TEST_F(RemoteSweeping, DoesNotTakeWhatWasUnderWayForNew) {
    ask_and_wait("CHAN2:DISP OFF;*OPC?");
    const auto asked_for = [this] {
        return std::count_if(log.frames.begin(), log.frames.end(), [](const auto& frame) {
            return frame.command.code == command::start_sweep;
        });
    };
    for (int phase = 0; phase < 6; ++phase) {
        ticks(phase);
        const auto before = asked_for();
        EXPECT_EQ(ask_and_wait(phase % 2 == 0 ? "ACQ:SPE ON;*OPC?" : "ACQ:SPE OFF;*OPC?"), "1");
        EXPECT_GE(asked_for(), before + 2) << "one has come, and the next has been asked for";
    }
}

TEST_F(RemoteSweeping, WaitsForAChannelThatWasSwitchedOn) {
    ask_and_wait("*OPC?");
    ask_and_wait("CHAN2:DISP OFF;*OPC?");
    EXPECT_FALSE(parts().sweeps.last_complete()->came[1]);
    EXPECT_EQ(ask_and_wait("CHAN2:DISP ON;*OPC?"), "1");
    EXPECT_TRUE(parts().sweeps.last_complete()->came[1]);
}

TEST_F(RemoteSweeping, TakesOneSweepAndStops) {
    ask_and_wait("STOP;*OPC?");
    const long before = std::stol(ask("ACQ:COUN?"));
    EXPECT_EQ(ask_and_wait("SING;*OPC?"), "1");
    EXPECT_EQ(std::stol(ask("ACQ:COUN?")), before + 1);
    EXPECT_EQ(ask("ACQ:STAT?"), "STOP");
    ticks(1);
    EXPECT_EQ(sweeps_in(20), 0);
    EXPECT_EQ(ask_and_wait("*TRG;*WAI;:ACQ:STAT?"), "STOP");
    EXPECT_EQ(std::stol(ask("ACQ:COUN?")), before + 2);
    EXPECT_EQ(ask_and_wait("DIG;:ACQ:COUN?"), std::to_string(before + 3));
}

TEST_F(RemoteSweeping, GoesOnBehindASingleWhereAPersonHasPressedStart) {
    ask_and_wait("STOP;*OPC?");
    const long before = std::stol(ask("ACQ:COUN?"));
    EXPECT_EQ(ask("DIG;:ACQ:COUN?"), "(held)");
    ticks(1);
    scope.act([this] { scope.panel().cmdstartsweep.click(); });
    EXPECT_EQ(go_on(client), "(held)");
    for (int tick = 0; tick < 50 && client.busy(); ++tick) {
        ticks(1);
        go_on(client);
    }
    ticks(10);
    EXPECT_EQ(ask("ACQ:STAT?"), "RUN");
    EXPECT_GT(sweeps_in(10), 0);
    EXPECT_EQ(numbers_in(ask("WAV:PRE?")).at(2), before + 1) << "its sweep is the client's";
    EXPECT_EQ(ask("DIG"), "(held)");
    scope.act([this] { scope.panel().cmdstop.click(); });
    EXPECT_EQ(go_on(client), "(held)") << "until a tick has shown it";
    ticks(1);
    EXPECT_EQ(go_on(client), "") << "Stop has the last word";
    EXPECT_EQ(numbers_in(ask("WAV:PRE?")).at(2), before + 1);
    EXPECT_EQ(error(), "0,\"No error\"");
}

TEST_F(RemoteSweeping, GivesOneSweepToAllThatWaitForOne) {
    Client other(control.table());
    ask_and_wait("STOP;*OPC?");
    const long before = std::stol(ask("ACQ:COUN?"));
    EXPECT_EQ(ask(other, "DIG;:WAV:PRE?"), "(held)");
    ticks(1);
    EXPECT_EQ(numbers_in(ask_and_wait("DIG;:WAV:PRE?")).at(2), before + 1);
    EXPECT_EQ(numbers_in(go_on(other)).at(2), before + 1);
    EXPECT_EQ(ask("ACQ:STAT?"), "STOP");
    control.instrument().forget(other);
}

TEST_F(RemoteSweeping, TakesOnePassPointByPoint) {
    ask("STOP;:TIM:SCAL 1US");
    EXPECT_EQ(ask_and_wait("DIG;:ACQ:STAT?"), "STOP");
    EXPECT_EQ(numbers_in(ask("WAV:PRE?")).at(1), 640);
}

TEST_F(RemoteSweeping, HoldsNobodyElseBack) {
    Client other(control.table());
    EXPECT_EQ(ask("DIG;*OPC?"), "(held)");
    EXPECT_EQ(ask(other, "SYST:VERS?"), "1999.0");
}

TEST_F(RemoteSweeping, GivesUpAfterTheTimeOut) {
    simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                   simulator::TriggerRoute::disconnected};
    ticks(10);
    ask("ACQ:TIM 2");
    const auto start = clock.now();
    EXPECT_EQ(ask_and_wait("SING;*OPC?"), "0");
    EXPECT_GE(clock.now() - start, std::chrono::seconds(2));
    EXPECT_LE(clock.now() - start, std::chrono::milliseconds(2700)); // two ticks and a set-up
    EXPECT_EQ(error(), "-365,\"Time out error\"");
    ask("RUN");
    ticks(10);
    EXPECT_EQ(ask("ACQ:STAT?"), "TRIG");
    EXPECT_EQ(ask("STAT:OPER:COND?"), "40");
}

TEST_F(RemoteSweeping, NeedsAChannel) {
    ask("CHAN1:DISP OFF;:CHAN2:DISP OFF");
    ask("DIG");
    EXPECT_EQ(error(), "-221,\"Settings conflict;No channel is on\"");
}

TEST_F(RemoteSweeping, StaysWithTheSweepThatAClientHasTaken) {
    RemoteProgram nothing_yet;
    nothing_yet.scope.start();
    nothing_yet.control.attach(nothing_yet.scope, [](const auto&) {});
    EXPECT_EQ(nothing_yet.ask("WAV:DATA?"), "");
    EXPECT_EQ(nothing_yet.error(), "-230,\"Data corrupt or stale;No sweep has been finished\"");
    ask_and_wait("*OPC?");
    const std::string number = ask("WAV:SEQ?");
    EXPECT_EQ(number, ask("ACQ:COUN?"));
    const std::string data = ask("WAV:DATA?");
    ticks(20);
    EXPECT_NE(ask("ACQ:COUN?"), number);
    EXPECT_EQ(ask("WAV:DATA?"), data);
    EXPECT_THAT(ask("WAV:SOUR CHAN2;PRE?"), StartsWith("0,650," + number + ','));
    EXPECT_EQ(ask("WAV:SEQ?"), ask("ACQ:COUN?"));
}

TEST_F(RemoteSweeping, TellsPointsInEachForm) {
    ask_and_wait("CHAN1:SCAL 0.1;INV ON;:TIM:DEL1 2NS;*OPC?");
    ask("STOP;:WAV:SEQ?");
    const std::vector<double> volts = numbers_in(ask("WAV:DATA?"));
    const std::vector<double> preamble = numbers_in(ask("WAV:FORM WORD;PRE?"));
    ASSERT_EQ(volts.size(), 650U);
    ASSERT_EQ(preamble.size(), 10U);
    EXPECT_EQ(preamble[0], 1);
    EXPECT_EQ(preamble[1], 650);
    EXPECT_DOUBLE_EQ(preamble[3], 313e-12);
    EXPECT_DOUBLE_EQ(preamble[4], 2e-9);
    EXPECT_DOUBLE_EQ(preamble[6], -0.0005); // half a millivolt per code, upside down
    EXPECT_DOUBLE_EQ(preamble[7], 1.024);
    EXPECT_EQ(preamble[9], 1);
    const std::string words = ask("WAV:DATA?");
    const std::string reals = ask("WAV:FORM REAL;BYT LSBF;DATA?");
    ASSERT_THAT(words, StartsWith("#41300"));
    ASSERT_THAT(reals, StartsWith("#45200"));
    for (std::size_t i = 0; i < volts.size(); i += 50) {
        const auto byte = [](char letter) {
            return std::uint64_t{static_cast<unsigned char>(letter)};
        };
        const auto code = static_cast<double>(byte(words[6 + 2 * i]) << 8 | byte(words[7 + 2 * i]));
        EXPECT_NEAR(preamble[7] + preamble[6] * code, volts[i], 1e-6) << i;
        std::uint64_t bits = 0;
        for (std::size_t k = 8; k > 0; --k) {
            bits = bits << 8 | byte(reals[6 + 8 * i + k - 1]);
        }
        EXPECT_NEAR(std::bit_cast<double>(bits), volts[i], 1e-6) << i;
    }
}

TEST_F(RemoteSweeping, ResetsToTheFactorySetUp) {
    const std::string first = scope.settings_file().factory_bytes();
    ask("CHAN1:SCAL 10MV;POS 2;INV ON;:TIM:SCAL 1NS;:TRIG:SOUR TRIG2;LEV 0.1;HYST 99;TIM 33;"
        ":DISP:GRID OFF;COL CH1,\"#123456\";PERS:DEPT 9;:MEAS:ANN 2;:CURS:MODE TIME;"
        ":ACQ:TYPE AVER;SPE ON;:TIM:DEL2 4NS;DEL:ADD 1NS");
    EXPECT_EQ(error(), "0,\"No error\"");
    ticks(5);
    EXPECT_NE(scope.settings_file().bytes(), first);
    ask("*RST");
    EXPECT_EQ(ask("ACQ:STAT?"), "STOP");
    EXPECT_EQ(scope.settings_file().bytes(), first);
    EXPECT_EQ(ask("ACQ:SPE?;:TRIG:TIM?;HYST?;:TIM:DEL:ADD?"), "0;1000;10;0.000000E+00");
    EXPECT_EQ(error(), "0,\"No error\"");
}

// What a script finds in the tools is no matter of who was there before it.
TEST_F(RemoteSweeping, ResetsTheToolsToo) {
    const std::string questions =
        "DENS:STAT?;HALF?;CHAN2?;:HIST:STAT?;OF?;WIND?;:JITT:STAT?;LEV:AUTO?;:EYE:STAT?;INT?;"
        ":MASK:STAT?;NAME?;ACT?;:MATH1:FUNC?;SCAL:AUTO?;:MATH2:COUN?;:SPEC:STAT?;SOUR?;AXIS?;"
        ":STAT:STAT?;SOUR?;VAL?;LOW?;ACT?";
    const std::string first = ask(questions);
    ask("DENS:HALF 5;CHAN2 OFF;:HIST:STAT ON;OF TIM;WIND 1,2,3,4;:JITT:STAT ON;LEV 0.1;:EYE:STAT "
        "ON;INT 80NS;:MASK:STAT ON;NAME STM1;ACT STOP;:MATH1:FUNC DIFF;SCAL 2E9;:MATH2:COUN 5");
    ask("SPEC:STAT ON;SOUR MATH1;AXIS LOG;:STAT:STAT ON;SOUR CHAN2;VAL VPP;LOW 0.125;ACT STOP");
    ticks(5);
    ask("*RST");
    EXPECT_EQ(ask(questions), first);
    EXPECT_EQ(ask("STAT:SOUR CHAN2;VAL VPP;LOW?;ACT?"), "9.91E+37;NONE");
    EXPECT_EQ(ask("DENS:SWE1?"), "0");
    EXPECT_EQ(error(), "0,\"No error\"");
}

TEST_F(RemoteSweeping, AResetForgetsThatCompletionWasToBeTold) {
    ask("*CLS;*OPC;*RST");
    ticks(20);
    EXPECT_EQ(ask("*ESR?"), "0");
}

TEST_F(RemoteSweeping, GivesAndTakesASetUpAsText) {
    ask("CHAN1:SCAL 10MV;POS 1;:DISP:GRID OFF");
    const std::string kept = scope.settings_file().bytes();
    const std::string set_up = ask("SYST:SET?");
    EXPECT_EQ(set_up, "#3" + std::to_string(kept.size()) + kept);
    EXPECT_THAT(kept, HasSubstr("gridenable\t 0"));
    ask("CHAN1:SCAL 0.5;POS 0;:DISP:GRID ON");
    ask("SYST:SET " + set_up + ";:CHAN1:SCAL?;POS?");
    EXPECT_EQ(ask("CHAN1:SCAL?;POS?;:DISP:GRID?"), "1.000000E-02;1.000000E+00;0");
    EXPECT_EQ(scope.settings_file().bytes(), kept);
    EXPECT_EQ(error(), "0,\"No error\"");
}

TEST_F(RemoteSweeping, TellsTheLineOfASetUpThatCannotBeTaken) {
    const std::string text = "gridenable\t0\r\nch1vdiv\t99\r\n";
    ask("SYST:SET #2" + std::to_string(text.size()) + text);
    EXPECT_EQ(error(), "-161,\"Invalid block data;Line 2\"");
    EXPECT_EQ(ask("DISP:GRID?"), "0");
    EXPECT_TRUE(boxes.shown.empty());
}

// Where files are written is not for the network to say.
TEST_F(RemoteSweeping, ASetUpLeavesTheProgramsFoldersAlone) {
    const std::string folder = parts().settings.snapshotpath;
    const std::string text = "gridenable\t0\r\nsnapshotpath\t/elsewhere\r\n snapshotpath \t"
                             "/elsewhere\n\"\tsnapshotpath\tx\nsnapshotpath\t/elsewhere";
    ask("SYST:SET #3" + std::to_string(text.size()) + text);
    EXPECT_EQ(ask("DISP:GRID?;:SYST:ERR?"), "0;0,\"No error\"");
    EXPECT_EQ(parts().settings.snapshotpath, folder);
    EXPECT_THAT(scope.settings_file().noted_bytes(), Not(HasSubstr("elsewhere")));
    ask("SYST:UNDO;REDO");
    EXPECT_EQ(parts().settings.snapshotpath, folder);
}

TEST_F(RemoteSweeping, TellsWhoItIsAndHow) {
    EXPECT_EQ(ask("*IDN?"), std::string("Tarvo,Kv408,lm4rxa-SIM00001,") + KV408_VERSION);
    EXPECT_EQ(ask("*TST?"), "0");
    EXPECT_EQ(ask("CAL:REC?"), "2048,2048,2048,2048,10000,10000,10000,10000,10000,100,70");
    EXPECT_EQ(ask("HCOP:SDUM:DATA? PNG"), "#210a PNG file");
    // 705 x 540 pixels of three bytes, lines of whole words, behind 54 bytes.
    EXPECT_EQ(ask("HCOP:SDUM:DATA? BMP").substr(0, 11), "#71142694BM");
    EXPECT_THAT(ask("SYST:HELP:HEAD?"), StartsWith("#4"));
    EXPECT_EQ(ask("STAT:QUES:COND?"), "0");
}

TEST_F(RemoteSweeping, ReportsClippingAndSilence) {
    simulation.bench().sources[0].amplitude_mvpp = 9000;
    ask_and_wait("CHAN1:SCAL 10MV;*OPC?");
    ticks(4);
    EXPECT_EQ(ask("STAT:QUES:COND?"), "1");
    simulation.bench().devices[0].answers = false;
    ticks(40);
    EXPECT_EQ(ask("STAT:QUES:COND?"), "513");
    EXPECT_EQ(ask("*TST?"), "1");
}

// What a press would show as a message box is the client's error, and no box is opened.
TEST_F(RemoteSweeping, TellsTheClientWhatTheInstrumentDoesNotAcknowledge) {
    ask_and_wait("STOP;*OPC?");
    simulation.bench().devices[0].answers = false;
    ask("TRIG:SOUR TRIG2");
    EXPECT_EQ(error(), "-240,\"Hardware error; SETTRIG Comm timed out\"");
    EXPECT_EQ(error(), "-240,\"Hardware error;Error Sending Data.\"");
    EXPECT_EQ(error(), "-240,\"Hardware error;error set triger\"");
    EXPECT_EQ(error(), "0,\"No error\"");
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(RemoteSweeping, LocksPanelAndNetwork) {
    Client other(control.table());
    ask("SYST:LOCK ON");
    ask(other, "SYST:LOCK OFF");
    EXPECT_EQ(error(other), "-221,\"Settings conflict;Another client has locked the panel\"");
    EXPECT_EQ(ask(other, "SYST:LOCK?"), "1");
    control.instrument().unlock_panel(); // the switch of the person
    EXPECT_EQ(ask("SYST:LOCK?"), "0");
    ask("SYST:LOCK ON");
    control.instrument().forget(client); // the connection has ended
    EXPECT_EQ(ask("SYST:LOCK?"), "0");
    control.instrument().lock_network(true);
    ask("DISP:GRID OFF");
    EXPECT_EQ(error(), "-203,\"Command protected\"");
    EXPECT_EQ(ask("DISP:GRID?"), "1");
    for (const char* const line : {"RUN", "STOP", "SING", "DIG", "*RST", "*TRG", "SYST:LOCK ON"}) {
        ask(line);
        EXPECT_EQ(error(), "-203,\"Command protected\"") << line;
    }
}

TEST_F(RemoteSweeping, SaysThatThereIsNoInstrument) {
    control.detach();
    EXPECT_EQ(ask("CHAN1:SCAL?"), "");
    EXPECT_EQ(error(), "-240,\"Hardware error;No instrument\"");
    EXPECT_THAT(ask("*IDN?"), StartsWith("Tarvo,Kv408,0,"));
    EXPECT_EQ(ask("STAT:QUES:COND?"), "512");
}

// A box that holds the exchange, as one that a person has to answer, keeps commands out.
TEST_F(RemoteSweeping, WaitsForBoxesInTheMiddleOfAnExchange) {
    ask_and_wait("STOP;*OPC?");
    simulation.bench().devices[0].answers = false;
    int boxes_seen = 0;
    boxes.on_show = [&](const Message&) {
        ++boxes_seen;
        EXPECT_FALSE(control.instrument().may_run());
    };
    press([this] { scope.panel().trigsource.set_index(1); });
    EXPECT_EQ(boxes_seen, 3);
    EXPECT_TRUE(control.instrument().may_run());
}

} // namespace
} // namespace kv408
