#include "acquisition/set_up_upload.h"

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

using Frames = std::vector<FakeBridge::Frame>;

/// Codes of the frames that `rig` has written.
std::vector<std::int64_t> codes(const AcquisitionRig& rig) {
    std::vector<std::int64_t> result;
    for (const auto& frame : rig.bridge.frames()) {
        result.push_back(frame.at(1));
    }
    return result;
}

/// Makes the instrument acknowledge every frame but those of the code `silent`.
void acknowledge_all_but(AcquisitionRig& rig, std::int64_t silent) {
    rig.bridge.on_frame = [&rig, silent](const FakeBridge::Frame& frame) {
        if (frame.at(1) != silent && frame.at(1) != 32) {
            rig.bridge.receive({6});
        }
    };
}

struct TriggerFrameRow {
    int source;
    int edge;
    std::int16_t level;
    int hysteresis;
    const char* timeout;
    FakeBridge::Frame trigger;
    FakeBridge::Frame timeout_frame;
};

TEST(SetTriger, UploadsSourceEdgeLevelHysteresisAndTimeOut) {
    const TriggerFrameRow rows[] = {
        {0, 0, 0, 0, "1000", {4, 8, 0, 0, 1, 0, 255, 8}, {4, 27, 3, 232, 1, 0, 255, 6}},
        {0, 0, 2048, 10, "1000", {4, 8, 8, 0, 1, 10, 255, 26}, {4, 27, 3, 232, 1, 10, 255, 16}},
        {0, 1, 2048, 10, "3", {4, 8, 8, 0, 2, 10, 255, 27}, {4, 27, 0, 10, 2, 10, 255, 48}},
        {1,
         0,
         2048,
         10,
         "100000",
         {4, 8, 8, 0, 21, 255, 10, 46},
         {4, 27, 255, 255, 21, 255, 10, 55}},
        {1,
         1,
         -1,
         200,
         "abc", // is no time-out: the one in use stays
         {4, 8, 255, 255, 22, 255, 200, 227},
         {4, 27, 3, 232, 22, 255, 200, 227}},
    };
    for (const TriggerFrameRow& row : rows) {
        AcquisitionRig rig;
        rig.start();
        rig.panel.trigsource.set_index(row.source);
        rig.panel.trigeredge.set_index(row.edge);
        rig.trigger_state.trigpos = row.level;
        rig.panel.shyst.set_value(row.hysteresis);
        rig.panel.trtout.set_text(row.timeout);
        rig.forget();
        rig.upload.settriger();
        EXPECT_EQ(rig.bridge.frames(), (Frames{row.trigger, row.timeout_frame})) << row.timeout;
        EXPECT_TRUE(rig.boxes.shown.empty());
    }
}

TEST(SetTriger, PausesTenMillisecondsBetweenItsCommands) {
    AcquisitionRig rig;
    rig.start();
    rig.clock.sleep(std::chrono::seconds(1) - rig.clock.now());
    rig.upload.settriger();
    EXPECT_EQ(rig.bridge.timeline(),
              (Texts{"SI_SetTimeouts 1000 1000 @1000", "SI_FlushBuffers 1 1 @1000",
                     "SI_Write 4 8 8 0 1 10 255 26 @1000", "SI_Read 1 @1020",
                     "SI_SetTimeouts 1000 1000 @1030", "SI_FlushBuffers 1 1 @1030",
                     "SI_Write 4 27 3 232 1 10 255 16 @1030", "SI_Read 1 @1050"}));
}

TEST(SetTriger, TakesTheReferenceOfTheSource) {
    AcquisitionRig rig;
    rig.start();
    rig.trigger_state.trigdelay = {111, 222};
    rig.panel.trigsource.set_index(1);
    rig.upload.settriger();
    EXPECT_EQ(rig.trigger_state.trigsrcdelay, 222);
    rig.panel.trigsource.set_index(0);
    rig.upload.settriger();
    EXPECT_EQ(rig.trigger_state.trigsrcdelay, 111);
}

TEST(SetTriger, AFailedTriggerSkipsTheTimeOut) {
    AcquisitionRig rig;
    rig.start();
    acknowledge_all_but(rig, 8);
    rig.upload.settriger();
    EXPECT_EQ(codes(rig), (std::vector<std::int64_t>{8, 8, 8}));
    EXPECT_EQ(rig.boxes.texts(),
              (Texts{" SETTRIG Comm timed out", "Error Sending Data.", "error set triger"}));
}

TEST(SetTriger, AFailedTimeOutIsToldToo) {
    AcquisitionRig rig;
    rig.start();
    acknowledge_all_but(rig, 27);
    rig.upload.settriger();
    EXPECT_EQ(codes(rig), (std::vector<std::int64_t>{8, 27, 27, 27}));
    EXPECT_EQ(rig.boxes.texts(),
              (Texts{" SETTTO Comm timed out", "Error Sending Data.", "error set triger"}));
}

TEST(SetScope, OffsetsAndResolutionGoOutMostSignificantByteFirst) {
    AcquisitionRig rig;
    rig.start();
    rig.link.cmdargs() = {0, 1, 1, 1, 1, 77};
    rig.acquisition.offset = {65535, -2};
    rig.time_base_state.tbresolution = 780125.0;
    rig.acquisition.pointmode = true;
    EXPECT_FALSE(rig.upload.setscope8ghz());
    // Argument 5 stays what it was.
    EXPECT_EQ(rig.bridge.frames(), (Frames{{4, 30, 0, 0, 255, 255, 77, 105},
                                           {4, 35, 255, 255, 255, 254, 77, 107},
                                           {4, 31, 0, 11, 231, 93, 77, 187}}));
}

struct UploadResolutionRow {
    double resolution;
    std::int64_t sent;
    double kept;
};

TEST(SetScope, TheResolutionIsRoundedAndNeverZero) {
    const UploadResolutionRow rows[] = {
        {0.0, 1, 1.0}, {0.4, 1, 1.0}, {0.5, 1, 1.0},    {0.51, 1, 0.51},
        {1.5, 2, 1.5}, {2.5, 2, 2.5}, {79.0, 79, 79.0},
    };
    for (const UploadResolutionRow& row : rows) {
        AcquisitionRig rig;
        rig.start();
        rig.acquisition.pointmode = true;
        rig.time_base_state.tbresolution = row.resolution;
        rig.upload.setscope8ghz();
        EXPECT_EQ(rig.bridge.frames().back().at(5), row.sent) << row.resolution;
        EXPECT_EQ(rig.time_base_state.tbresolution, row.kept);
    }
}

TEST(SetScope, InPointModeNoSweepIsStarted) {
    AcquisitionRig rig;
    rig.start();
    rig.acquisition.pointmode = true;
    rig.acquisition.scopestate = "scope";
    EXPECT_FALSE(rig.upload.setscope8ghz());
    EXPECT_EQ(codes(rig), (std::vector<std::int64_t>{30, 35, 31}));
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Read");
    EXPECT_EQ(rig.acquisition.scopestate, "scope");
}

struct FirstSweepRow {
    bool first;
    bool second;
    std::int64_t channel;
    const char* state;
};

TEST(SetScope, TheFirstSweepFetchesChannel1UnlessOnlyChannel2IsOn) {
    const FirstSweepRow rows[] = {
        {true, true, 1, "scopech1f"},
        {true, false, 1, "scopech1f"},
        {false, true, 2, "scopech2f"},
        {false, false, 1, "scopech1f"},
    };
    for (const FirstSweepRow& row : rows) {
        for (const bool average : {false, true}) {
            for (const bool speed : {false, true}) {
                AcquisitionRig rig;
                rig.start();
                rig.enable(row.first, row.second);
                rig.panel.average.set_checked(average);
                rig.panel.adcspeed.set_checked(speed);
                EXPECT_TRUE(rig.upload.setscope8ghz());
                const std::int64_t sum = 172 + average + speed + row.channel;
                EXPECT_EQ(rig.bridge.frames().back(),
                          (FakeBridge::Frame{4, 32, 2, 138, average, speed, row.channel, sum}));
                EXPECT_EQ(rig.acquisition.scopestate, row.state);
            }
        }
    }
}

struct UploadFailureRow {
    std::int64_t silent;
    std::vector<std::int64_t> codes;
    const char* message;
};

TEST(SetScope, AnUnacknowledgedCommandSkipsTheRest) {
    const UploadFailureRow rows[] = {
        {30, {30, 30, 30}, " set time base offset ch1 Comm timed out"},
        {35, {30, 35, 35, 35}, " set time base offset ch2 Comm timed out"},
        {31, {30, 35, 31, 31, 31}, " set time base resolution Comm timed out"},
    };
    for (const UploadFailureRow& row : rows) {
        AcquisitionRig rig;
        rig.start();
        acknowledge_all_but(rig, row.silent);
        rig.acquisition.scopestate = "scope";
        EXPECT_FALSE(rig.upload.setscope8ghz());
        EXPECT_EQ(codes(rig), row.codes);
        EXPECT_EQ(rig.boxes.texts(),
                  (Texts{row.message, "Error Sending Data.", "Error setting scope"}));
        EXPECT_EQ(rig.acquisition.scopestate, "scope");
        EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Read");
    }
}

TEST(SetScope, AChangedDelayAsksForARefreshOnceItIsUploaded) {
    for (const Channel channel : both_channels) {
        AcquisitionRig rig;
        rig.start();
        rig.upload.setscope8ghz();
        EXPECT_FALSE(rig.acquisition.pending_refresh);
        rig.channels[channel].delaypts = 12;
        acknowledge_all_but(rig, 31);
        rig.upload.setscope8ghz();
        EXPECT_FALSE(rig.acquisition.pending_refresh);
        rig.acknowledge_set_up();
        rig.acquisition.ready = {true, true};
        rig.upload.setscope8ghz();
        EXPECT_TRUE(rig.acquisition.pending_refresh);
        // What was taken with the old delay does not count as new data any more.
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
        EXPECT_EQ(rig.channels[channel].shown_delaypts, 0);
    }
}

} // namespace
} // namespace kv408
