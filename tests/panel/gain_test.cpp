#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using Frames = std::vector<FakeBridge::Frame>;

/// The gain frame of the ranges `first` and `second`.
FakeBridge::Frame gain_frame(int first, int second) {
    return {4, 9, first, second, 0, 0, 0, 9 + first + second};
}

/// Both channels at "0.1V", told to the instrument.
void start_in_low_gain(PanelRig& rig) {
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    PanelRig::choose(rig.panel.channel[1].vdiv, "0.1V");
    rig.forget();
}

TEST(Gain, TheFirstRunTellsTheInstrumentItsRange) {
    PanelRig rig;
    EXPECT_EQ(rig.channels[0].gain, 1);
    EXPECT_EQ(rig.channels[1].gain, 1);
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    PanelRig::choose(rig.panel.channel[1].vdiv, "0.1V");
    EXPECT_EQ(rig.bridge.frames(), (Frames{gain_frame(2, 1), gain_frame(2, 2)}));
}

TEST(Gain, IsSentOnceWhenTheRangeChangesAndNotWithinARange) {
    for (const Channel channel : both_channels) {
        PanelRig rig;
        start_in_low_gain(rig);
        ListBox& vdiv = rig.panel.channel[channel].vdiv;
        for (const char* text : {"0.2V", "0.1V", "0.5V", "0.1V", "0.1V"}) {
            PanelRig::choose(vdiv, text);
        }
        EXPECT_TRUE(rig.bridge.calls.empty());
        PanelRig::choose(vdiv, "50mV");
        const auto high = channel == 0 ? gain_frame(1, 2) : gain_frame(2, 1);
        EXPECT_EQ(rig.bridge.frames(), Frames{high});
        for (const char* text : {"20mV", "10mV", "50mV"}) {
            PanelRig::choose(vdiv, text);
        }
        EXPECT_EQ(rig.bridge.frames(), Frames{high});
        PanelRig::choose(vdiv, "0.1V");
        EXPECT_EQ(rig.bridge.frames(), (Frames{high, gain_frame(2, 2)}));
    }
}

TEST(Gain, TheFrameGoesOutAcknowledgedWithinASecond) {
    PanelRig rig;
    rig.link.cmdargs() = {0, 9, 9, 9, 9, 9};
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    EXPECT_EQ(rig.bridge.timeline(), (Texts{"SI_SetTimeouts 1000 1000 @0", "SI_FlushBuffers 1 1 @0",
                                            "SI_Write 4 9 2 1 0 0 0 12 @0", "SI_Read 1 @20"}));
}

TEST(Gain, FailureIsToldUnderTheChannelsLabel) {
    const char* const labels[] = {"_SET AMP GAIN_Comm timed out", " SET AMP GAIN Comm timed out"};
    for (const Channel channel : both_channels) {
        PanelRig rig;
        rig.bridge.on_frame = nullptr;
        PanelRig::choose(rig.panel.channel[channel].vdiv, "0.1V");
        EXPECT_EQ(rig.boxes.texts(),
                  (Texts{labels[channel], "Error Sending Data.", "Error Vold/div set"}));
        EXPECT_EQ(rig.boxes.shown[2].buttons, MessageButtons::ok);
        EXPECT_EQ(rig.bridge.frames().size(), 3U);
    }
}

TEST(Gain, AfterAFailureTheScaleIsTakenButOffsetAndCaptionStay) {
    PanelRig rig;
    ChannelState& state = rig.channels[0];
    PanelRig::choose(rig.panel.channel[0].vdiv, "50mV");
    state.pos = 0;
    rig.forget();
    rig.bridge.on_frame = nullptr;
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    EXPECT_EQ(state.gain, 2);
    EXPECT_DOUBLE_EQ(state.atten, 0.5);
    EXPECT_DOUBLE_EQ(state.scale, 0.32);
    EXPECT_DOUBLE_EQ(state.pixpermv, 0.64);
    EXPECT_EQ(state.offsetdac, 2048);
    EXPECT_EQ(rig.panel.channel[0].vdivtext.caption(), "50mV");
    EXPECT_TRUE(rig.screen.calls.empty());
}

TEST(Gain, IsSentAgainAfterAFailure) {
    PanelRig rig;
    rig.bridge.on_frame = nullptr;
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    rig.forget();
    rig.bridge.acknowledge_all();
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.2V");
    EXPECT_EQ(rig.bridge.frames(), Frames{gain_frame(2, 1)});
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.panel.channel[0].vdivtext.caption(), "0.2V");
    rig.vertical.vdiv_Click(ch1);
    EXPECT_EQ(rig.bridge.frames().size(), 1U);
}

TEST(Gain, IsSentForEveryRangeAfterALostAcknowledge) {
    PanelRig rig;
    rig.bridge.on_frame = nullptr;
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    rig.forget();
    rig.bridge.acknowledge_all();
    // The instrument may stand in low gain already although it never said so.
    PanelRig::choose(rig.panel.channel[0].vdiv, "50mV");
    EXPECT_EQ(rig.bridge.frames(), Frames{gain_frame(1, 1)});
}

TEST(Gain, ARangeThatTheFailedFrameOnlyRepeatsIsNotSentAgain) {
    for (const Channel channel : both_channels) {
        PanelRig rig;
        start_in_low_gain(rig);
        rig.bridge.on_frame = nullptr;
        PanelRig::choose(rig.panel.channel[channel].vdiv, "50mV");
        rig.forget();
        rig.acquisition.scopestate = "startscope";
        rig.vertical.vdiv_Click(other(channel));
        EXPECT_TRUE(rig.bridge.frames().empty());
        EXPECT_TRUE(rig.boxes.shown.empty());
        rig.vertical.vdiv_Click(channel);
        EXPECT_EQ(rig.bridge.frames().size(), 3U) << "what was not acknowledged is";
    }
}

TEST(Gain, ARepeatedFrameWaitsForTheReplyInProgress) {
    PanelRig rig;
    rig.bridge.on_frame = nullptr;
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V");
    rig.bridge.acknowledge_all();
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.forget();
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.2V");
    EXPECT_EQ(rig.bridge.frames(), Frames{gain_frame(2, 1)});
    EXPECT_EQ(rig.bridge.calls.front().operation, "SI_CheckRXQueue");
}

TEST(Gain, AnUnknownTextIsAnErrorAndChangesNothing) {
    for (const char* text : {"2V", "0.1v", ""}) {
        PanelRig rig;
        start_in_low_gain(rig);
        rig.acquisition.acqrunning = true;
        rig.acquisition.scopestate = "scopech1f";
        rig.panel.channel[0].vdiv.set_entries({text});
        rig.panel.channel[0].vdiv.set_index(0);
        EXPECT_EQ(rig.boxes.texts(), Texts{"Error Vold/div set"}) << text;
        EXPECT_EQ(rig.channels[0].gain, 2);
        EXPECT_DOUBLE_EQ(rig.channels[0].scale, 0.32);
        EXPECT_EQ(rig.panel.channel[0].vdivtext.caption(), "0.1V");
        EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
        EXPECT_TRUE(rig.bridge.calls.empty());
        EXPECT_TRUE(rig.screen.calls.empty());
    }
}

TEST(Gain, WhileRunningARangeChangeMarksTheSetUpAndWaitsBeforeTheFrame) {
    for (const Channel channel : both_channels) {
        PanelRig rig;
        start_in_low_gain(rig);
        rig.clock.sleep(milliseconds(1000) - rig.clock.now());
        rig.acquisition.acqrunning = true;
        rig.acquisition.scopestate = "scopech2f";
        rig.acquisition.laststate = "scopech1f";
        rig.acquisition.ready = {true, true};
        rig.bridge.on_check = [&](std::uint32_t&) {
            EXPECT_EQ(rig.acquisition.scopestate, "changes");
            EXPECT_EQ(rig.acquisition.laststate, "changes");
        };
        PanelRig::choose(rig.panel.channel[channel].vdiv, "50mV");
        EXPECT_EQ(rig.acquisition.scopestate, "changes");
        EXPECT_EQ(rig.acquisition.laststate, "changes");
        EXPECT_EQ(rig.acquisition.ready[channel], false);
        EXPECT_EQ(rig.acquisition.ready[1 - channel], true);
        EXPECT_EQ(rig.bridge.timeline(),
                  (Texts{"SI_CheckRXQueue @1100", "SI_SetTimeouts 1000 1000 @1100",
                         "SI_FlushBuffers 1 1 @1100",
                         channel == 0 ? "SI_Write 4 9 1 2 0 0 0 12 @1100"
                                      : "SI_Write 4 9 2 1 0 0 0 12 @1100",
                         "SI_Read 1 @1120"}));
    }
}

TEST(Gain, WhileRunningAChangeWithinARangeOnlyClearsTheNewDataFlag) {
    PanelRig rig;
    start_in_low_gain(rig);
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech2f";
    rig.acquisition.laststate = "scopech1f";
    rig.acquisition.ready = {true, true};
    PanelRig::choose(rig.panel.channel[0].vdiv, "0.2V");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech2f");
    EXPECT_EQ(rig.acquisition.laststate, "scopech1f");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, true}));
    EXPECT_TRUE(rig.bridge.calls.empty());
}

TEST(Gain, WhileStoppedNeitherStateNorFlagChanges) {
    PanelRig rig;
    start_in_low_gain(rig);
    rig.acquisition.scopestate = "stoped";
    rig.acquisition.laststate = "scopech2f";
    rig.acquisition.ready = {true, true};
    PanelRig::choose(rig.panel.channel[0].vdiv, "50mV");
    EXPECT_EQ(rig.acquisition.scopestate, "stoped");
    EXPECT_EQ(rig.acquisition.laststate, "scopech2f");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, true}));
    EXPECT_EQ(rig.bridge.count("SI_CheckRXQueue"), 0);
    EXPECT_EQ(rig.bridge.frames().size(), 1U);
}

TEST(Gain, IsSentAgainWithTheSetUpAfterTheInstrumentWasSilent) {
    PanelRig rig;
    start_in_low_gain(rig);
    PanelRig::choose(rig.panel.channel[1].vdiv, "0.2V");
    EXPECT_TRUE(rig.bridge.frames().empty());
    rig.link.power().note_silence();
    PanelRig::choose(rig.panel.channel[1].vdiv, "0.1V");
    EXPECT_TRUE(rig.bridge.frames().empty());
    rig.acquisition.scopestate = "startscope";
    rig.vertical.vdiv_Click(ch1);
    EXPECT_EQ(rig.bridge.frames(), Frames{gain_frame(2, 2)});
    rig.vertical.vdiv_Click(ch2);
    EXPECT_EQ(rig.bridge.frames().size(), 1U);
}

TEST(Gain, ChosenInALinearityRunItWaitsForTheNextSetUp) {
    PanelRig rig;
    start_in_low_gain(rig);
    rig.acquisition.scopestate = "calibrationint";
    PanelRig::choose(rig.panel.channel[1].vdiv, "20mV");
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_EQ(rig.panel.channel[1].vdivtext.caption(), "20mV");
    EXPECT_EQ(rig.acquisition.scopestate, "calibrationint");
    rig.acquisition.scopestate = "startscope";
    rig.vertical.vdiv_Click(ch2);
    EXPECT_EQ(rig.bridge.frames(), Frames{gain_frame(2, 1)});
}

TEST(Gain, TheCursorsAreReadAgainInTheNewScale) {
    PanelRig rig;
    start_in_low_gain(rig);
    std::vector<double> scales;
    rig.screen.on_calccursors = [&] { scales.push_back(rig.channels[1].pixpermv); };
    PanelRig::choose(rig.panel.channel[1].vdiv, "0.5V");
    ASSERT_FALSE(scales.empty());
    EXPECT_DOUBLE_EQ(scales.back(), 0.128);
}

TEST(Gain, BothTracesAreRemappedAfterAChoice) {
    PanelRig rig;
    start_in_low_gain(rig);
    PanelRig::choose(rig.panel.channel[1].vdiv, "0.5V");
    EXPECT_TRUE(rig.screen.shows_both_traces_anew());
}

TEST(Gain, AFrameThatCannotBeWrittenEndsTheProgramThere) {
    PanelRig rig;
    rig.bridge.status["SI_Write"] = 1;
    EXPECT_THROW(PanelRig::choose(rig.panel.channel[0].vdiv, "0.1V"), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error finding WKTP2B device. Aborting application."});
    EXPECT_EQ(rig.bridge.frames().size(), 1U);
    EXPECT_TRUE(rig.screen.calls.empty());
    EXPECT_EQ(rig.panel.channel[0].vdivtext.caption(), "");
}

} // namespace
} // namespace kv408
