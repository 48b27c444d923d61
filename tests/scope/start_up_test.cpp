#include "scope/start_up.h"
#include "support/measurement_lines.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

TEST(StartUp, GoesOverTheWireInItsOrder) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.start_up.Form_Load();
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_GetNumDevices @0",
                                            "SI_GetProductString 0 0 @0",
                                            "SI_Open 0 @0",
                                            "SI_SetBaudRate 833000 @0",
                                            "SI_SetTimeouts 1000 1000 @0",
                                            "SI_FlushBuffers 1 1 @0",
                                            "SI_Write 4 8 0 0 1 0 255 8 @0",
                                            "SI_Read 1 @20",
                                            "SI_SetTimeouts 1000 1000 @20",
                                            "SI_FlushBuffers 1 1 @20",
                                            "SI_Write 4 9 2 1 0 0 0 12 @20",
                                            "SI_Read 1 @40",
                                            "SI_SetTimeouts 1000 1000 @40",
                                            "SI_FlushBuffers 1 1 @40",
                                            "SI_Write 4 9 2 2 0 0 0 13 @40",
                                            "SI_Read 1 @60",
                                            "SI_SetTimeouts 1000 1000 @60",
                                            "SI_FlushBuffers 1 1 @60",
                                            "SI_Write 4 8 8 0 1 10 255 26 @60",
                                            "SI_Read 1 @80",
                                            "SI_SetTimeouts 1000 1000 @90",
                                            "SI_FlushBuffers 1 1 @90",
                                            "SI_Write 4 27 3 232 1 10 255 16 @90",
                                            "SI_Read 1 @110",
                                            "SI_SetTimeouts 1000 1000 @110",
                                            "SI_FlushBuffers 1 1 @110",
                                            "SI_Write 4 8 8 0 1 10 255 26 @110",
                                            "SI_Read 1 @130",
                                            "SI_SetTimeouts 1000 1000 @140",
                                            "SI_FlushBuffers 1 1 @140",
                                            "SI_Write 4 27 3 232 1 10 255 16 @140",
                                            "SI_Read 1 @160",
                                            "SI_SetTimeouts 1000 1000 @160",
                                            "SI_FlushBuffers 1 1 @160",
                                            "SI_Write 4 8 8 0 1 10 255 26 @160",
                                            "SI_Read 1 @180",
                                            "SI_SetTimeouts 1000 1000 @190",
                                            "SI_FlushBuffers 1 1 @190",
                                            "SI_Write 4 27 3 232 1 10 255 16 @190",
                                            "SI_Read 1 @210"}));
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_TRUE(rig.program.loaded);
    EXPECT_FALSE(rig.program.ended);
}

TEST(StartUp, LeavesTheStateWordIdleSoThatTheFirstTickStarts) {
    AcquisitionRig rig;
    rig.start();
    EXPECT_EQ(rig.acquisition.scopestate, "idle");
    EXPECT_FALSE(rig.acquisition.acqrunning);
    rig.tick();
    EXPECT_EQ(rig.acquisition.scopestate, "startscope");
}

TEST(StartUp, FillsTheListsAndChoosesTheirFirstEntries) {
    AcquisitionRig rig;
    rig.start();
    const FrontPanel& panel = rig.panel;
    EXPECT_EQ(panel.trigeredge.entries(), (Texts{"Positive", "Negative"}));
    EXPECT_EQ(panel.trigeredge.text(), "Positive");
    EXPECT_EQ(panel.trigsource.entries(), (Texts{"TRIG1", "TRIG2"}));
    EXPECT_EQ(panel.trigsource.text(), "TRIG1");
    EXPECT_EQ(panel.combocursorselect.entries(), (Texts{"CH1", "CH2"}));
    EXPECT_EQ(panel.combocursorselect.index(), 0);
    EXPECT_EQ(panel.seltimediv.entries().size(), 21U);
    EXPECT_EQ(panel.seltimediv.text(), "20ns/div");
    for (const ChannelControls& controls : panel.channel) {
        EXPECT_EQ(controls.vdiv.entries().size(), 6U);
        EXPECT_EQ(controls.vdiv.text(), "0.1V");
        EXPECT_EQ(controls.vdivtext.caption(), "0.1V");
        EXPECT_TRUE(controls.psofset.enabled());
    }
    EXPECT_EQ(panel.tdivtext.caption(), "20ns/div");
    for (const MeasurementControls& slot : panel.measurement) {
        EXPECT_EQ(slot.selector.entries(), measurement_entries());
    }
    EXPECT_EQ(panel.measurement[0].selector.text(), "VMax");
    EXPECT_EQ(panel.measurement[1].selector.text(), "Vpp");
    EXPECT_EQ(panel.measurement[2].selector.text(), "Frequency");
}

TEST(StartUp, AppliesTheColoursBeforeAllOtherSettings) {
    AcquisitionRig rig;
    rig.files.files[(rig.places.settings / "ConfigsLM4RX.TXT").generic_string()] =
        "colorcursor\t197121\r\n"; // 1 + 2 * 256 + 3 * 65536
    rig.acknowledge_set_up();
    rig.start_up.Form_Load();
    // Filling the lists draws too; the colours come after it.
    const Texts& calls = rig.screen.calls;
    const auto ramp = std::find(calls.begin(), calls.end(), "calcPersistColors");
    EXPECT_NE(std::find(ramp, calls.end(), "makegrid"), calls.end());
    EXPECT_EQ(rig.panel.tdivtext.fore_colour(), rgb(1, 2, 3));
}

TEST(StartUp, EndsWithTheGridAndADrawing) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.start_up.Form_Load();
    EXPECT_TRUE(rig.screen.shows("makegrid"));
}

TEST(StartUp, ClearsTheSamplesAndTakesTheDefaultCalibration) {
    AcquisitionRig rig;
    rig.samples[0].mv[650] = 5.0;
    rig.samples[1].raw[1] = 5;
    rig.start();
    EXPECT_EQ(rig.samples[0].mv[650], 0.0);
    EXPECT_EQ(rig.samples[1].raw[1], 0);
    EXPECT_EQ(rig.calibration, default_calibration);
}

TEST(StartUp, ActivationRunsOnce) {
    AcquisitionRig rig;
    rig.start_up.Form_Activate();
    EXPECT_EQ(rig.acquisition.scopestate, "Idle");
    EXPECT_TRUE(rig.program.activated);
    rig.forget();
    rig.acquisition.scopestate = "stoped";
    rig.start_up.Form_Activate();
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_EQ(rig.acquisition.scopestate, "stoped");
}

TEST(StartUp, ALoadAfterTheProgramIsLoadedDoesNothing) {
    AcquisitionRig rig;
    rig.start();
    rig.start_up.Form_Load();
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_TRUE(rig.screen.calls.empty());
}

TEST(StartUp, ARefusedLinkSpeedIsToldAndTheStartGoesOn) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.bridge.status["SI_SetBaudRate"] = 6;
    rig.start_up.Form_Load();
    EXPECT_EQ(rig.boxes.texts(), Texts{"error seting baud rate"});
    EXPECT_TRUE(rig.program.loaded);
}

TEST(StartUp, ASecondInstrumentIsLeftAlone) {
    AcquisitionRig rig;
    rig.bridge.serials = {"printer", "lm4rxa1FIRST01", "lm4rxa2SECOND2"};
    rig.start();
    EXPECT_EQ(rig.panel.device.text(), "lm4rxa1FIRST01");
    EXPECT_FALSE(rig.panel.device.enabled());
}

} // namespace
} // namespace kv408
