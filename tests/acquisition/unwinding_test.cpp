#include <algorithm>

#include <gtest/gtest.h>

#include "acquisition/point_pass_rig.h"

namespace kv408 {
namespace {

constexpr const char* not_found = "Error finding WKTP2B device. Aborting application.";

/// Makes the write of every frame with the code `code` fail; all other frames are acknowledged.
void refuse(AcquisitionRig& rig, std::int64_t code) {
    rig.bridge.on_frame = [&rig, code](const FakeBridge::Frame& frame) {
        rig.bridge.receive({6});
        const auto order = std::vector<std::int64_t>{8, 27, 30, 35, 31, 32};
        const auto place = std::find(order.begin(), order.end(), frame.at(1));
        if (place != order.end() && place + 1 != order.end() && *(place + 1) == code) {
            rig.bridge.status["SI_Write"] = 4;
        }
    };
    if (code == 8) {
        rig.bridge.status["SI_Write"] = 4;
    }
}

TEST(Unwinding, AFailedWriteAnywhereInTheSetUpIsTheLastThingThatHappens) {
    const std::vector<std::int64_t> order = {8, 27, 30, 35, 31, 32};
    for (std::size_t step = 0; step < order.size(); ++step) {
        AcquisitionRig rig;
        rig.start();
        rig.acquisition.scopestate = "startscope";
        rig.panel.lbldate.set_caption("before");
        refuse(rig, order[step]);
        EXPECT_THROW(rig.tick(), ProgramEnded) << order[step];
        EXPECT_TRUE(rig.program.ended);
        EXPECT_EQ(rig.boxes.texts(), Texts{not_found}) << order[step];
        const auto frames = rig.bridge.frames();
        ASSERT_EQ(frames.size(), step + 1);
        EXPECT_EQ(frames.back().at(1), order[step]);
        EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Write");
        EXPECT_EQ(rig.panel.lbldate.caption(), "before");
    }
}

TEST(Unwinding, AFailedGainFrameInAPanelHandlerDrawsNothingMore) {
    AcquisitionRig rig;
    rig.start();
    rig.bridge.status["SI_Write"] = 4;
    EXPECT_THROW(rig.panel.channel[0].vdiv.set_index(3), ProgramEnded);
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Write");
    EXPECT_TRUE(rig.screen.calls.empty());
    EXPECT_EQ(rig.panel.channel[0].vdivtext.caption(), "0.1V");
    EXPECT_EQ(rig.boxes.texts(), Texts{not_found});
}

TEST(Unwinding, AFailedWriteInTheMiddleOfAPassEndsItThere) {
    PassRig rig(true, true);
    rig.answer = [&](int point) {
        if (point == 7) {
            rig.bridge.status["SI_Write"] = 4;
        }
        return std::vector{8, 0};
    };
    EXPECT_THROW(rig.tick(), ProgramEnded);
    EXPECT_EQ(rig.bridge.frames().size(), 8U);
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Write");
    EXPECT_EQ(rig.screen.calls.size(), 3U * 4U);
    EXPECT_EQ(rig.boxes.texts(), Texts{not_found});
}

TEST(Unwinding, ExitAmongTheWindowMessagesOfAPassEndsItThere) {
    PassRig rig(true, false);
    rig.messages.on_process = [&](int processed) {
        if (processed == 4) {
            EXPECT_THROW(rig.panel.menuexit.click(), ProgramEnded);
        }
    };
    EXPECT_THROW(rig.tick(), ProgramEnded);
    EXPECT_EQ(rig.bridge.frames().size(), 3U);
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Close");
    EXPECT_EQ(rig.screen.calls.size(), 3U * 4U);
}

TEST(Unwinding, ExitWhileAMessageIsOpenSendsAndShowsNothingMore) {
    AcquisitionRig rig;
    rig.start();
    rig.acquisition.scopestate = "startscope";
    rig.bridge.on_frame = nullptr;
    rig.boxes.on_show = [&](const Message&) {
        EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
    };
    EXPECT_THROW(rig.tick(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{" SETTRIG Comm timed out"});
    EXPECT_EQ(rig.bridge.frames().size(), 3U);
    EXPECT_EQ(rig.bridge.calls.back().operation, "SI_Close");
}

TEST(Unwinding, ExitWhileTheRetryQuestionIsOpenListsNothingAgain) {
    AcquisitionRig rig;
    rig.boxes.answers = {MessageAnswer::retry};
    rig.boxes.on_show = [&](const Message&) {
        EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
    };
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    EXPECT_EQ(rig.bridge.count("SI_GetNumDevices"), 1);
    EXPECT_EQ(rig.bridge.count("SI_Close"), 1);
}

} // namespace
} // namespace kv408
