#include "link/power_watch.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// A watch over an instrument that has just answered and has acknowledged its ranges.
struct WatchedPower {
    WatchedPower() { power.note_acknowledge(true); }

    /// Asks for samples in vain, every tenth of a second, for `duration`.
    void ask_in_vain(std::chrono::nanoseconds duration) {
        for (const auto end = clock.now() + duration; clock.now() < end;) {
            power.note_request();
            clock.advance(milliseconds(100));
            EXPECT_TRUE(power.note_empty_queue());
        }
    }

    /// Asks for samples, which come `after` that. Whether this brings a set-up.
    bool reply(std::chrono::nanoseconds after = milliseconds(100)) {
        power.note_request();
        clock.advance(after);
        const bool back = power.is_back();
        if (!back) {
            power.note_answer();
        }
        return back;
    }

    /// All commands of a set-up are acknowledged.
    void set_up() {
        for (const bool ranges : {true, false, false}) {
            clock.advance(milliseconds(20));
            power.note_acknowledge(ranges);
        }
    }

    VirtualClock clock;
    PowerWatch power{clock};
};

TEST(PowerWatch, WhoAnsweredLessThanTwoSecondsAgoHasItsRanges) {
    WatchedPower watched;
    for (int answer = 0; answer < 3; ++answer) {
        watched.clock.advance(milliseconds(1999));
        EXPECT_FALSE(watched.power.ranges_lost());
        watched.power.note_answer();
    }
}

TEST(PowerWatch, WhoWasAskedNothingForTwoSecondsMayHaveLostThem) {
    WatchedPower watched;
    watched.clock.advance(seconds(2));
    EXPECT_TRUE(watched.power.ranges_lost());
    watched.power.note_answer();
    EXPECT_TRUE(watched.power.ranges_lost()) << "an answer does not tell what it is set up to";
    watched.power.note_acknowledge(true);
    EXPECT_FALSE(watched.power.ranges_lost());
}

TEST(PowerWatch, ARequestLeftUnansweredIsEnough) {
    WatchedPower watched;
    watched.power.note_silence();
    EXPECT_TRUE(watched.power.ranges_lost());
    watched.power.note_acknowledge(false);
    EXPECT_TRUE(watched.power.ranges_lost()) << "the ranges were not acknowledged";
    watched.power.note_acknowledge(true);
    EXPECT_FALSE(watched.power.ranges_lost());
}

TEST(PowerWatch, ACommandWithoutAcknowledgeIsJudgedByTheNextAnswer) {
    WatchedPower watched;
    watched.power.note_no_acknowledge();
    EXPECT_FALSE(watched.power.ranges_lost());
    watched.power.note_answer();
    EXPECT_TRUE(watched.power.ranges_lost());
}

TEST(PowerWatch, AsLongAsNothingIsAnsweredItIsNotTakenForOff) {
    WatchedPower watched;
    watched.power.note_silence();
    watched.clock.advance(seconds(2));
    EXPECT_FALSE(watched.power.ranges_lost());
    watched.power.note_answer();
    EXPECT_TRUE(watched.power.ranges_lost());
}

TEST(PowerWatch, AQueueIsASilenceOnceTheReplyHadItsTime) {
    WatchedPower watched;
    watched.power.note_request();
    watched.clock.advance(milliseconds(79));
    EXPECT_FALSE(watched.power.note_empty_queue());
    EXPECT_FALSE(watched.power.ranges_lost());
    watched.clock.advance(milliseconds(1));
    EXPECT_TRUE(watched.power.note_empty_queue());
    EXPECT_TRUE(watched.power.ranges_lost());
    watched.power.note_request();
    EXPECT_FALSE(watched.power.note_empty_queue());
}

TEST(PowerWatch, ASilenceUnderTwoSecondsBringsNoSetUp) {
    WatchedPower watched;
    watched.ask_in_vain(milliseconds(1900));
    EXPECT_FALSE(watched.reply(milliseconds(99)));
}

TEST(PowerWatch, ALongSilenceBringsOneSetUp) {
    WatchedPower watched;
    watched.ask_in_vain(seconds(2));
    EXPECT_TRUE(watched.reply());
    EXPECT_TRUE(watched.power.ranges_lost()) << "the set-up is to send them";
    watched.set_up();
    EXPECT_FALSE(watched.power.ranges_lost());
    for (int reply = 0; reply < 5; ++reply) {
        EXPECT_FALSE(watched.reply());
    }
    watched.ask_in_vain(seconds(2));
    EXPECT_TRUE(watched.reply()) << "another silence";
}

TEST(PowerWatch, AReplyThatIsStillComingIsJudgedOnce) {
    WatchedPower watched;
    watched.ask_in_vain(seconds(3));
    EXPECT_TRUE(watched.reply());
    watched.set_up();
    watched.ask_in_vain(seconds(3));
    EXPECT_FALSE(watched.reply());
    EXPECT_FALSE(watched.power.is_back()) << "the other bytes of that reply";
}

TEST(PowerWatch, WhoWasAskedNothingIsNotBack) {
    WatchedPower watched;
    EXPECT_FALSE(watched.reply(seconds(5)));
}

TEST(PowerWatch, WhoIsSlowIsSetUpOnce) {
    for (const int apart : {3, 13}) {
        WatchedPower watched;
        watched.ask_in_vain(seconds(apart));
        EXPECT_TRUE(watched.reply()) << apart;
        watched.set_up();
        for (int reply = 0; reply < 5; ++reply) {
            watched.ask_in_vain(seconds(apart));
            EXPECT_FALSE(watched.reply()) << apart;
        }
    }
}

TEST(PowerWatch, ASilenceBringsOneSetUpAtMostAndTheReplyAfterItIsShown) {
    std::mt19937 chance(17);
    WatchedPower watched;
    int silences = 0;
    int set_ups = 0;
    bool just_set_up = false;
    for (int reply = 0; reply < 5000; ++reply) {
        const auto apart = milliseconds(100 * (chance() % 40));
        silences += apart >= PowerWatch::shortest_off ? 1 : 0;
        watched.ask_in_vain(apart);
        const bool back = watched.reply(milliseconds(60));
        ASSERT_FALSE(just_set_up && back) << "reply " << reply;
        just_set_up = back;
        if (back) {
            ++set_ups;
            watched.set_up();
        }
        ASSERT_LE(set_ups, silences) << "reply " << reply;
    }
    EXPECT_GT(set_ups, silences / 4);
}

TEST(PowerWatch, WhoIsNotSlowAfterAllMayHaveBeenOffASecondTime) {
    WatchedPower watched;
    watched.ask_in_vain(seconds(3));
    EXPECT_TRUE(watched.reply());
    watched.set_up();
    watched.ask_in_vain(seconds(3));
    EXPECT_FALSE(watched.reply());
    EXPECT_TRUE(watched.reply()) << "in time";
    EXPECT_TRUE(watched.power.ranges_lost());
    watched.set_up();
    EXPECT_FALSE(watched.reply());
    EXPECT_FALSE(watched.reply());
}

TEST(PowerWatch, ASetUpThatTheUserBringsStandsForTheOneThatIsDue) {
    WatchedPower watched;
    watched.ask_in_vain(seconds(2));
    watched.set_up();
    EXPECT_FALSE(watched.reply()) << "of the silence before it";
    watched.ask_in_vain(seconds(2));
    EXPECT_TRUE(watched.reply());
    watched.set_up();
    watched.ask_in_vain(seconds(2));
    EXPECT_FALSE(watched.reply());
    watched.set_up();
    EXPECT_FALSE(watched.reply()) << "of the slow reply before it";
}

TEST(PowerWatch, WhoTookALaterCommandAfterALongSilenceIsBack) {
    WatchedPower watched;
    watched.clock.advance(seconds(2));
    watched.power.note_acknowledge(false);
    watched.power.note_acknowledge(false);
    EXPECT_TRUE(watched.reply());
}

TEST(PowerWatch, ACommandThatIsNeverTakenBringsNoSecondSetUpBeforeAReplyIsShown) {
    WatchedPower watched;
    for (const bool back : {true, false, true}) {
        watched.clock.advance(seconds(3)); // the attempts of the command before
        watched.power.note_no_acknowledge();
        watched.power.note_acknowledge(false);
        EXPECT_EQ(watched.reply(), back);
    }
}

TEST(PowerWatch, BeingHeldUpBringsOneSetUpAsLongAsItLasts) {
    WatchedPower watched;
    const auto enter_after = [&](std::chrono::nanoseconds time) {
        watched.clock.advance(time);
        const bool away = watched.power.was_away();
        watched.power.note_entry();
        return away;
    };
    EXPECT_FALSE(enter_after(milliseconds(1999)));
    EXPECT_TRUE(enter_after(seconds(2)));
    EXPECT_FALSE(enter_after(milliseconds(100)));
    EXPECT_TRUE(enter_after(seconds(3)));
    EXPECT_FALSE(enter_after(seconds(3)));
    EXPECT_FALSE(enter_after(seconds(3)));
    EXPECT_TRUE(enter_after(milliseconds(100))) << "the last ones were no matter of course";
    EXPECT_FALSE(enter_after(milliseconds(100)));
}

} // namespace
} // namespace kv408
