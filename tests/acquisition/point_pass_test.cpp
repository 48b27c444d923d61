#include "acquisition/point_pass.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"
#include "acquisition/point_pass_rig.h"

namespace kv408 {
namespace {

TEST(PointPass, FlushesOnceAndThenFetchesEachPointWithOneExchange) {
    PassRig rig(true, false);
    rig.pass.sdisplay1ghzt();
    Texts expected = {"SI_FlushBuffers 1 1 @1000"};
    // d = 2500 + 12 i up to 640 * 12 + 2500 = 10180: sent as it is.
    for (int point = 1; point <= 640; ++point) {
        const int delay = 2500 + 12 * point;
        const int high = delay / 256;
        const int low = delay % 256;
        const int sum = (26 + high + low + 0 + 1 + 240) % 256;
        expected.push_back("SI_Write 4 26 " + std::to_string(high) + " " + std::to_string(low) +
                           " 0 1 240 " + std::to_string(sum) + " @1000");
        expected.emplace_back("SI_Read 2 @1000");
    }
    EXPECT_EQ(rig.bridge.timeline(), expected);
}

TEST(PointPass, Channel2AloneSetsBit15OfTheDelay) {
    PassRig rig(false, true);
    rig.pass.sdisplay1ghzt();
    ASSERT_EQ(rig.bridge.frames().size(), 640U);
    // 2512 + 32768 = 35280 = 137 * 256 + 208; 26 + 137 + 208 + 1 + 240 = 612.
    EXPECT_EQ(rig.bridge.frames()[0], (FakeBridge::Frame{4, 26, 137, 208, 0, 1, 240, 100}));
    EXPECT_EQ(rig.samples[0].raw[1], 0);
    EXPECT_EQ(rig.samples[1].raw[1], 1000);
    EXPECT_EQ(rig.samples[1].raw[640], 1639);
}

TEST(PointPass, BothChannelsAreInterleavedPointByPoint) {
    PassRig rig(true, true);
    rig.pass.sdisplay1ghzt();
    const auto frames = rig.bridge.frames();
    ASSERT_EQ(frames.size(), 1280U);
    for (std::size_t point = 0; point < 640; ++point) {
        EXPECT_EQ(frames[2 * point][2] + 128, frames[2 * point + 1][2]) << point;
        EXPECT_EQ(frames[2 * point][3], frames[2 * point + 1][3]) << point;
    }
    // The n-th reply holds the code 1000 + n.
    EXPECT_EQ(rig.samples[0].raw[1], 1000);
    EXPECT_EQ(rig.samples[1].raw[1], 1001);
    EXPECT_EQ(rig.samples[0].raw[640], 2278);
    EXPECT_EQ(rig.samples[1].raw[640], 2279);
}

TEST(PointPass, WithNeitherChannelNoPointIsTaken) {
    PassRig rig(false, false);
    rig.pass.sdisplay1ghzt();
    EXPECT_TRUE(rig.bridge.frames().empty());
    EXPECT_EQ(rig.bridge.count("SI_Read"), 0);
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
    EXPECT_EQ(rig.status(), "before");
}

TEST(PointPass, EachPointIsSeenOnBothTracesAsSoonAsItHasCome) {
    for (const bool second : {false, true}) {
        PassRig rig(true, second);
        const Texts& calls = rig.screen.calls;
        int point = 0;
        std::size_t before = 0;
        rig.screen.on_draw = [&] {
            const std::string number = std::to_string(++point);
            Texts since(calls.begin() + static_cast<std::ptrdiff_t>(before), calls.end());
            before = calls.size();
            std::sort(since.begin(), since.end());
            EXPECT_EQ(since, (Texts{"draw 255", "newest " + number, "refresh 1 " + number,
                                    "refresh 2 " + number}));
            EXPECT_EQ(rig.messages.processed, point) << "no point waits for the next";
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(point, 640);
        // The pass goes to the history once it is whole.
        EXPECT_EQ(Texts(calls.begin() + static_cast<std::ptrdiff_t>(before), calls.end()),
                  Texts{"movepersistance"});
    }
}

TEST(PointPass, LetsWindowMessagesRunBeforeEachPoint) {
    PassRig rig(true, false);
    rig.messages.on_process = [&](int processed) {
        EXPECT_EQ(rig.bridge.frames().size(), static_cast<std::size_t>(processed - 1));
    };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.messages.processed, 640);
}

TEST(PointPass, TheChoiceOfChannelsIsThatOfItsStart) {
    PassRig rig(true, false);
    rig.messages.on_process = [&](int processed) {
        if (processed == 3) {
            rig.enable(false, true);
        }
    };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.bridge.frames().size(), 640U);
    EXPECT_EQ(rig.samples[1].raw[640], 0);
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, false}));
}

TEST(PointPass, TheHighByteStopsAt16) {
    PassRig rig(true, false);
    rig.answer = [](int point) { return point == 1 ? std::vector{255, 9} : std::vector{17, 11}; };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.samples[0].raw[1], 16 * 256 + 9);
    EXPECT_EQ(rig.samples[0].raw[2], 16 * 256 + 11);
}

TEST(PointPass, InversionAndCorrectionAreEachChannelsOwn) {
    PassRig rig(true, true);
    rig.channels[0].swoffset = 10;
    rig.panel.channel[1].invert.set_checked(true);
    rig.answer = [](int) { return std::vector{8, 100}; };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.samples[0].raw[640], 2158);
    EXPECT_EQ(rig.samples[0].mv[640], 55.0);
    EXPECT_EQ(rig.samples[1].raw[640], 1948);
    EXPECT_EQ(rig.samples[1].mv[640], -50.0);
}

TEST(PointPass, AFullPassSetsItsReadyFlags) {
    for (const auto& [first, second] : {std::pair{true, false}, {false, true}, {true, true}}) {
        PassRig rig(first, second);
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{first, second}));
        EXPECT_EQ(rig.acquisition.scopestate, "scope");
    }
}

TEST(PointPass, ASingleChannelIsReadyAtTheEndBothChannelsAfterEveryPoint) {
    for (const bool second : {false, true}) {
        PassRig rig(true, second);
        rig.messages.on_process = [&](int processed) {
            const bool ready = second && processed > 1;
            EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{ready, ready})) << processed;
        };
        rig.pass.sdisplay1ghzt();
    }
}

} // namespace
} // namespace kv408
