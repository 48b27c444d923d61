// What the link tells of the instrument's answers and silences; what follows from them is tested in
// power_watch_test.cpp.

#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

/// A link that has just read a reply.
struct HeardRig : LinkRig {
    HeardRig() {
        open();
        hear();
    }

    void hear() {
        link.sendcommand(command::fetch_sample, {});
        bridge.receive({8, 0});
        std::array<Byte, 2> reply = {};
        EXPECT_TRUE(link.read(reply));
    }

    void acknowledge(std::int16_t code = command::set_amplifier_gain) {
        bridge.on_frame = [this](const FakeBridge::Frame&) { bridge.receive({6}); };
        EXPECT_TRUE(link.send_setup(code, "set-up "));
        bridge.on_frame = nullptr;
    }
};

TEST(Silence, ACommandWithoutAcknowledgeIsOne) {
    HeardRig rig;
    std::int16_t once = 1;
    EXPECT_FALSE(rig.link.sendcmdack(command::set_trigger, {}, once, 100, "trigger "));
    EXPECT_FALSE(rig.link.power().ranges_lost());
    rig.hear();
    EXPECT_TRUE(rig.link.power().ranges_lost());
    rig.acknowledge();
    EXPECT_FALSE(rig.link.power().ranges_lost());
}

TEST(Silence, AnAcknowledgeIsAnAnswer) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1500));
    rig.acknowledge();
    rig.clock.advance(milliseconds(1500));
    EXPECT_FALSE(rig.link.power().ranges_lost());
}

TEST(Silence, TheCheckIsAnAnswer) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1500));
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive({6}); };
    EXPECT_TRUE(rig.link.checkdevice());
    rig.clock.advance(milliseconds(1500));
    EXPECT_FALSE(rig.link.power().ranges_lost());
}

TEST(Silence, AReplyThatDoesNotComeWholeIsNone) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1500));
    rig.bridge.receive({8});
    std::array<Byte, 2> reply = {};
    EXPECT_FALSE(rig.link.read(reply));
    rig.clock.advance(milliseconds(500));
    EXPECT_TRUE(rig.link.power().ranges_lost());
}

TEST(Silence, OfTheCommandsOnlyThatOfTheRangesMakesUpForIt) {
    for (const bool ranges : {false, true}) {
        HeardRig rig;
        rig.clock.advance(milliseconds(2000));
        rig.link.power().note_silence();
        rig.acknowledge(ranges ? command::set_amplifier_gain : command::set_trigger);
        rig.hear();
        EXPECT_EQ(rig.link.power().is_back(), !ranges);
        EXPECT_EQ(rig.link.power().ranges_lost(), !ranges);
    }
}

TEST(Silence, WhoNeverTookTheLastCommandIsNotBack) {
    HeardRig rig;
    EXPECT_FALSE(rig.link.send_setup(command::set_resolution, "resolution "));
    EXPECT_GE(rig.clock.now(), milliseconds(3000)); // three attempts, and that is told
    rig.hear();
    EXPECT_FALSE(rig.link.power().is_back());
}

TEST(Silence, EachRequestForSamplesIsJudgedByItself) {
    for (const std::int16_t request : {command::fetch_sample, command::start_sweep}) {
        HeardRig rig;
        EXPECT_FALSE(rig.link.power().is_back());
        rig.clock.advance(milliseconds(2000));
        rig.link.power().note_silence();
        EXPECT_FALSE(rig.link.power().is_back()) << "still the reply before";
        rig.link.sendcommand(command::set_trigger, {});
        EXPECT_FALSE(rig.link.power().is_back());
        rig.link.sendcommand(request, {});
        EXPECT_TRUE(rig.link.power().is_back()) << request;
    }
}

} // namespace
} // namespace kv408
