// Each command of the tree that sets a control, on the whole program.

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

class RemotePanel : public testing::Test, protected RemoteProgram {
protected:
    RemotePanel() { start(); }
};

struct Set {
    const char* command;
    const char* answer; ///< of its query afterwards
};

std::string query_of(const std::string& command) {
    return command.substr(0, command.find(' ')) + '?';
}

TEST_F(RemotePanel, IsSetAndAskedCommandByCommand) {
    constexpr std::array cases{
        Set{"TIM:SCAL 5NS", "5.000000E-09"},
        Set{"TIMEBASE:SCALE 1e-7", "1.000000E-07"},
        Set{":tim:scal 25 ps", "2.500000E-11"},
        Set{"TIM:SCAL 2.4999999999999998e-11", "2.500000E-11"}, // rounded digits mean the step
        Set{"TIM:SCAL 1.0000000000000002e-04", "1.000000E-04"},
        Set{"TIM:SCAL 2.00000000001E-8", "2.000000E-08"},
        Set{"TIM:SCAL MIN", "2.500000E-11"},
        Set{"TIM:SCAL MAX", "1.000000E-04"},
        Set{"TIM:SCAL DEF", "2.000000E-08"},
        Set{"TIM:DEL1 1500PS", "1.500000E-09"},
        Set{"TIM:DEL2 65.535E-9", "6.553500E-08"},
        Set{"TIM:DEL 0", "0.000000E+00"},
        Set{"TIM:DEL2:WHE ON", "1"},
        Set{"TIM:DEL1:WHE 0", "0"},
        Set{"TIM:DEL:ADD 250PS", "2.500000E-10"},
        Set{"CHAN2:DISP OFF", "0"},
        Set{"CHAN2:DISP 1", "1"},
        Set{"CHAN1:SCAL 50MV", "5.000000E-02"},
        Set{"CHANNEL2:SCALE 0.5", "5.000000E-01"},
        Set{"CHAN1:SCAL 0.5000000001", "5.000000E-01"},
        Set{"CHAN1:SCAL 0.00999999999999999", "1.000000E-02"},
        Set{"CHAN1:SCAL MIN", "1.000000E-02"},
        Set{"CHAN1:POS -1.5", "-1.500000E+00"},
        Set{"CHAN2:POS MAX", "4.000000E+00"},
        Set{"CHAN1:INV ON", "1"},
        Set{"CHAN2:VTR ON", "1"},
        Set{"TRIG:SLOP NEG", "NEG"},
        Set{"TRIG:LEV 100MV", "1.000000E-01"},
        Set{"TRIG:SOUR TRIG2", "TRIG2"},
        Set{"TRIG:LEV -0.2", "-2.000000E-01"}, // twice what the wheel says: via trigger
        Set{"TRIG:HYST 25", "25"},
        Set{"TRIG:TIM 2000", "2000"},
        Set{"TRIG:TIM 1000US", "1000"},
        Set{"TRIG:TIM 20 ms", "20000"},
        Set{"TRIG:TIM 3E-5 S", "30"},
        Set{"DISP:GRID OFF", "0"},
        Set{"DISP:DOTS ON", "1"},
        Set{"DISP:PERS ON", "1"},
        Set{"DISP:PERS:DEPT 7", "7"},
        Set{"MEAS:STAT OFF", "0"},
        Set{"MEAS:STAT ON", "1"},
        Set{"MEAS:SLOT1 RISE", "RIS"},
        Set{"MEAS:SLOT3 NONE", "NONE"},
        Set{"MEAS:ANN 2", "2"},
        Set{"MEAS:ANN 0", "0"},
        Set{"CURS:MODE VOLT", "VOLT"},
        Set{"CURS:SOUR CH2", "CH2"},
        Set{"CURS:MODE TIME", "TIME"},
        Set{"CURS:POS1 20NS", "2.000000E-08"},
        Set{"CURS:MODE OFF", "OFF"},
        Set{"ACQ:TYPE AVER", "AVER"},
        Set{"ACQ:SPE ON", "1"},
        Set{"ACQ:TIM 2.5", "2.500000E+00"},
        Set{"WAV:SOUR CHAN2", "CHAN2"},
        Set{"WAV:FORM REAL", "REAL"},
        Set{"WAV:BYT LSBF", "LSBF"},
        Set{"SYST:LOCK ON", "1"},
    };
    for (const Set& one : cases) {
        const std::string wanted = std::string(one.command) == "MEAS:SLOT1 RISE"
                                       ? "-224,\"Illegal parameter value\""
                                       : "0,\"No error\"";
        ask(one.command);
        EXPECT_EQ(error(), wanted) << one.command;
        if (wanted.front() == '0') {
            EXPECT_EQ(ask(query_of(one.command)), one.answer) << one.command;
        }
    }
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(RemotePanel, TellsLimitsAndRefusesWhatLiesOutside) {
    constexpr std::array limits{
        Set{"TIM:SCAL? MIN", "2.500000E-11"},   Set{"TIM:SCAL? MAX", "1.000000E-04"},
        Set{"TIM:DEL1? MAX", "6.553500E-08"},   Set{"CHAN1:SCAL? MAX", "5.000000E-01"},
        Set{"CHAN1:SCAL? DEF", "1.000000E-01"}, Set{"CHAN2:POS? MIN", "-4.000000E+00"},
        Set{"TRIG:LEV? MIN", "-2.048000E+00"},  Set{"TRIG:LEV? MAX", "2.048000E+00"},
        Set{"TRIG:HYST? MAX", "255"},           Set{"TRIG:TIM? MIN", "10"},
        Set{"TRIG:TIM? DEF", "1000"},           Set{"DISP:PERS:DEPT? DEF", "3"},
        Set{"ACQ:TIM? MAX", "3.600000E+03"},
    };
    for (const Set& one : limits) {
        EXPECT_EQ(ask(one.command), one.answer) << one.command;
    }
    constexpr std::array refused{
        Set{"TIM:SCAL 30NS", "-222,\"Data out of range\""},
        Set{"TIM:SCAL 2.49999E-11", "-222,\"Data out of range\""},
        Set{"TIM:SCAL 1.00000001E-4", "-222,\"Data out of range\""},
        Set{"CHAN1:SCAL 0.50000001", "-222,\"Data out of range\""},
        Set{"CHAN1:SCAL 0.00999999", "-222,\"Data out of range\""},
        Set{"CHAN1:SCAL 0", "-222,\"Data out of range\""},
        Set{"CHAN1:SCAL 1V", "-222,\"Data out of range\""},
        Set{"CHAN1:SCAL 50MAV", "-222,\"Data out of range\""},
        Set{"CHAN1:POS 4.1", "-222,\"Data out of range\""},
        Set{"TRIG:HYST 256", "-222,\"Data out of range\""},
        Set{"TRIG:TIM 5", "-222,\"Data out of range\""},
        Set{"TIM:SCAL 20V", "-131,\"Invalid suffix\""},
        Set{"TRIG:HYST 5V", "-131,\"Invalid suffix\""},
        Set{"TRIG:TIM 1000V", "-131,\"Invalid suffix\""},
        Set{"TRIG:TIM 1S", "-222,\"Data out of range\""},
        Set{"CHAN3:DISP ON", "-114,\"Header suffix out of range\""},
        Set{"MEAS:SLOT4 VPP", "-114,\"Header suffix out of range\""},
        Set{"TRIG:SOUR TRIG3", "-224,\"Illegal parameter value\""},
        Set{"DISP:GRID MAYBE", "-224,\"Illegal parameter value\""},
        Set{"CHAN1:DISP", "-109,\"Missing parameter\""},
        Set{"CHAN1:DISP 1,1", "-108,\"Parameter not allowed\""},
        Set{"CHAN1:SCAL \"0.1\"", "-104,\"Data type error\""},
        Set{"CURS:POS1 0.1", "-221,\"Settings conflict;The cursors are off\""},
        Set{"CHAN1:GAIN 2", "-113,\"Undefined header\""},
        Set{"DISP:COL CH1,\"yellow\"", "-224,\"Illegal parameter value\""},
        Set{"DISP:COL CH3,\"#000000\"", "-224,\"Illegal parameter value\""},
    };
    for (const Set& one : refused) {
        ask(one.command);
        EXPECT_EQ(error(), one.answer) << one.command;
        EXPECT_EQ(error(), "0,\"No error\"") << one.command;
    }
}

TEST_F(RemotePanel, RoundsToStepsOfTheWheel) {
    ask("CHAN1:POS 1.003"); // 128 steps per division: 1.003 is 128.384 of them
    EXPECT_EQ(ask("CHAN1:POS?"), "1.000000E+00");
    ask("TRIG:LEV 101MV"); // a step is 4 mV: 25.25 of them
    EXPECT_EQ(ask("TRIG:LEV?"), "1.000000E-01");
}

TEST_F(RemotePanel, TakesColoursAndTellsThem) {
    EXPECT_EQ(ask("DISP:COL? CH1"), "\"#FFFF00\"");
    EXPECT_EQ(ask("DISP:COL? BACK"), "\"#000000\"");
    ask("DISP:COL ANN,\"#12abEF\"");
    EXPECT_EQ(ask("DISP:COL? ANNOTATION"), "\"#12ABEF\"");
    EXPECT_EQ(parts().colours.annotations, rgb(0x12, 0xAB, 0xEF));
}

TEST_F(RemotePanel, MeasuresCursorsInTheUnitsOfTheMode) {
    ask("CHAN1:SCAL 0.1;POS 0;:CURS:SOUR CH1;MODE VOLT;POS1 0.2;POS2 -0.1");
    EXPECT_EQ(error(), "0,\"No error\"");
    EXPECT_EQ(ask("CURS:POS1?;POS2?;DELT?"), "2.000000E-01;-1.000000E-01;3.000000E-01");
    EXPECT_EQ(scope.panel().centerfr.caption(), "Delta Cursor : 300mV");
    EXPECT_EQ(ask("CURS:POS1? MAX"), "4.000000E-01");
    ask("TIM:SCAL 20NS;:CURS:MODE TIME;POS1 20NS;POS2 0.1US");
    EXPECT_EQ(ask("CURS:DELT?"), "8.000000E-08");
    EXPECT_EQ(scope.panel().centerfr.caption(), "Delta Cursor: 80.0ns");
}

TEST_F(RemotePanel, RefusesDelaysThatThePanelDoesNotTake) {
    ask("TIM:SCAL 1US"); // point by point there is none
    ask("TIM:DEL1 5NS");
    EXPECT_EQ(error(), "-221,\"Settings conflict;It cannot be operated now\"");
}

// What a person can press, a client can; what is left out opens dialogs, ends the program, or is
// the way to something that has commands of its own.
TEST_F(RemotePanel, IsReachedAsAWhole) {
    std::vector<std::string> reached;
    const auto press = [&](const std::string& line) {
        std::vector<Listening> listening;
        for (Control* const one : scope.panel().all) {
            listening.push_back(one->on_shown([&reached, one] { reached.push_back(one->name()); }));
        }
        ask(line);
    };
    for (const char* const line :
         {"TIM:SCAL 10NS", "TIM:DEL1 1NS;DEL2 1NS", "TIM:DEL1:WHE ON", "TIM:DEL2:WHE ON",
          "TIM:DEL:ADD 1NS", "CHAN1:DISP OFF;SCAL 20MV;INV ON;VTR ON",
          "CHAN2:DISP OFF;SCAL 20MV;INV ON;VTR ON", "CHAN1:DISP ON", "TRIG:SLOP NEG;HYST 3;TIM 50",
          "TRIG:SOUR TRIG2", "DISP:GRID OFF;DOTS ON;PERS ON",
          "MEAS:STAT OFF;SLOT1 VPP;SLOT2 VPP;SLOT3 VMAX", "MEAS:ANN 1", "MEAS:ANN 2", "MEAS:ANN 3",
          "CURS:MODE TIME;SOUR CH2;POS1 5NS", "ACQ:TYPE AVER;SPE ON"}) {
        press(line);
        EXPECT_EQ(error(), "0,\"No error\"") << line;
    }
    for (Control* const one : scope.panel().all) {
        const bool otherwise = one->name() == "cmbDevice" || one->name() == "trzero" ||
                               one->name() == "cmdstartsweep" || one->name() == "cmdstop";
        if (one->about().outside == Outside::set && !otherwise) {
            EXPECT_THAT(reached, testing::Contains(one->name()));
        }
    }
}

} // namespace
} // namespace kv408
