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
        bridge.receive({8, 0});
        std::array<Byte, 2> reply = {};
        EXPECT_TRUE(link.read(reply));
    }

    void acknowledge(std::int16_t code = command::set_amplifier_gain) {
        bridge.on_frame = [this](const FakeBridge::Frame&) { bridge.receive({6}); };
        EXPECT_TRUE(link.send_setup(code, "set-up "));
        bridge.on_frame = nullptr;
    }

    [[nodiscard]] bool off_since(std::uint32_t silences) const {
        return link.may_have_been_off(silences);
    }
};

TEST(Silence, WhoAnsweredLessThanTwoSecondsAgoWasNotOff) {
    HeardRig rig;
    const std::uint32_t before = rig.link.state().silences;
    rig.clock.advance(milliseconds(1999));
    EXPECT_FALSE(rig.off_since(before));
    rig.hear();
    rig.clock.advance(milliseconds(1999));
    EXPECT_FALSE(rig.off_since(before));
}

TEST(Silence, WhoWasAskedNothingForTwoSecondsMayHaveBeenOff) {
    HeardRig rig;
    const std::uint32_t before = rig.link.state().silences;
    rig.clock.advance(milliseconds(2000));
    EXPECT_TRUE(rig.off_since(before));
    rig.hear();
    EXPECT_TRUE(rig.off_since(before)) << "an answer does not tell what it is set up to";
    EXPECT_FALSE(rig.off_since(rig.link.state().silences));
}

TEST(Silence, ARequestLeftUnansweredIsEnough) {
    HeardRig rig;
    const std::uint32_t before = rig.link.state().silences;
    rig.link.note_silence();
    EXPECT_TRUE(rig.off_since(before));
    EXPECT_FALSE(rig.off_since(rig.link.state().silences));
}

TEST(Silence, ACommandWithoutAcknowledgeIsJudgedByTheNextAnswer) {
    HeardRig rig;
    const std::uint32_t before = rig.link.state().silences;
    std::int16_t once = 1;
    EXPECT_FALSE(rig.link.sendcmdack(command::set_trigger, {}, once, 100, "trigger "));
    EXPECT_FALSE(rig.off_since(before));
    rig.hear();
    EXPECT_TRUE(rig.off_since(before));
    EXPECT_FALSE(rig.off_since(rig.link.state().silences));
}

TEST(Silence, AsLongAsNothingIsAnsweredItIsNotTakenForOff) {
    HeardRig rig;
    const std::uint32_t before = rig.link.state().silences;
    rig.link.note_silence();
    rig.clock.advance(milliseconds(2000));
    EXPECT_FALSE(rig.off_since(before));
    rig.hear();
    EXPECT_TRUE(rig.off_since(before));
}

TEST(Silence, AnAcknowledgeIsAnAnswer) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1500));
    rig.acknowledge();
    rig.clock.advance(milliseconds(1500));
    EXPECT_FALSE(rig.off_since(rig.link.state().silences));
}

TEST(Silence, TheCheckIsAnAnswer) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1500));
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive({6}); };
    EXPECT_TRUE(rig.link.checkdevice());
    rig.clock.advance(milliseconds(1500));
    EXPECT_FALSE(rig.off_since(rig.link.state().silences));
}

TEST(Silence, AReplyThatDoesNotComeWholeIsNone) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1500));
    rig.bridge.receive({8});
    std::array<Byte, 2> reply = {};
    EXPECT_FALSE(rig.link.read(reply));
    rig.clock.advance(milliseconds(500));
    EXPECT_TRUE(rig.off_since(rig.link.state().silences));
}

TEST(Silence, ShorterThanTwoSecondsNobodyIsBack) {
    HeardRig rig;
    rig.clock.advance(milliseconds(1999));
    rig.link.note_silence();
    EXPECT_FALSE(rig.link.is_back());
}

TEST(Silence, AfterUnansweredRequestsForTwoSecondsItIsBackOnce) {
    HeardRig rig;
    rig.clock.advance(milliseconds(2000));
    rig.link.note_silence();
    rig.link.note_silence();
    rig.hear();
    EXPECT_TRUE(rig.link.is_back());
    EXPECT_FALSE(rig.link.is_back());
}

TEST(Silence, WhoWasAskedNothingIsNotBack) {
    HeardRig rig;
    rig.clock.advance(milliseconds(5000));
    rig.hear();
    EXPECT_FALSE(rig.link.is_back());
}

TEST(Silence, WhoHasTakenTheRangesSinceIsNotBack) {
    HeardRig rig;
    rig.clock.advance(milliseconds(2000));
    rig.link.note_silence();
    rig.acknowledge(command::set_trigger);
    rig.acknowledge();
    EXPECT_FALSE(rig.link.is_back());
}

TEST(Silence, WhoTookALaterCommandAfterTwoSecondsIsBack) {
    HeardRig rig;
    rig.clock.advance(milliseconds(2000));
    rig.acknowledge(command::set_trigger);
    rig.acknowledge(command::set_resolution);
    rig.hear();
    EXPECT_TRUE(rig.link.is_back());
}

TEST(Silence, WhoNeverTookTheLastCommandIsNotBack) {
    HeardRig rig;
    EXPECT_FALSE(rig.link.send_setup(command::set_resolution, "resolution "));
    EXPECT_GE(rig.clock.now(), milliseconds(3000)); // three attempts, and that is told
    rig.hear();
    EXPECT_FALSE(rig.link.is_back());
}

TEST(Silence, IsBackBringsNoSecondSetUpForACommandThatIsNeverTaken) {
    HeardRig rig;
    for (const bool back : {true, false, true}) {
        EXPECT_FALSE(rig.link.send_setup(command::set_trigger, "trigger "));
        rig.acknowledge(command::set_resolution);
        rig.hear();
        EXPECT_EQ(rig.link.is_back(), back);
    }
}

} // namespace
} // namespace kv408
