// Undo and Redo of the set-up from the network.

#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

class RemoteUndo : public testing::Test, protected RemoteProgram {
protected:
    RemoteUndo() { start(); }
};

TEST_F(RemoteUndo, TakesStepsBackAndAgain) {
    EXPECT_EQ(ask("SYST:STEP?"), "\"\"");
    ask("CHAN1:SCAL 50MV");
    ask("TIM:SCAL 5NS");
    EXPECT_EQ(ask("SYST:STEP?"), "\"CH1 V/div 50mV\",\"Time/div 5ns/div\"");
    ask("SYST:UNDO");
    EXPECT_EQ(ask("TIM:SCAL?"), "2.000000E-08");
    ask("SYSTEM:UNDO");
    EXPECT_EQ(ask("CHAN1:SCAL?"), "1.000000E-01");
    EXPECT_EQ(ask("SYST:STEP?"), "\"\"");
    ask("SYST:REDO;REDO");
    EXPECT_EQ(ask("CHAN1:SCAL?;:TIM:SCAL?"), "5.000000E-02;5.000000E-09");
    EXPECT_EQ(error(), "0,\"No error\"");
}

TEST_F(RemoteUndo, SaysWhenThereIsNone) {
    ask("SYST:UNDO");
    EXPECT_EQ(error(), "-221,\"Settings conflict;There is no step to take back\"");
    ask("SYST:REDO");
    EXPECT_EQ(error(), "-221,\"Settings conflict;No step has been taken back\"");
}

} // namespace
} // namespace kv408
