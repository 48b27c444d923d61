// What both time cursors tell of a trace.

#include <gtest/gtest.h>

#include "analysis/cursor_readouts.h"

namespace kv408 {
namespace {

/// A trace that rises by 10 mV a column from 0 mV at point 0.
struct RisingTrace {
    RisingTrace() {
        for (std::size_t point = 0; point < samples.mv.size(); ++point) {
            samples.mv.at(point) = 10.0 * static_cast<double>(point);
        }
    }

    [[nodiscard]] CursorCrossings with_cursors_at(std::int16_t first, std::int16_t second,
                                                  std::optional<NoCrossing> hidden = {}) const {
        CursorState cursors;
        cursors.hpos = {first, second};
        return crossings_of({.hidden = hidden, .channel = channel, .samples = samples}, cursors);
    }

    SampleBuffer samples;
    ChannelState channel;
};

TEST(CursorReadouts, TellTheVoltagesWhereTheLinesCrossTheTrace) {
    const RisingTrace trace;
    const CursorCrossings found = trace.with_cursors_at(100, 40);
    EXPECT_DOUBLE_EQ(found.cursor[0].volts.value(), 1.0);
    EXPECT_DOUBLE_EQ(found.cursor[1].volts.value(), 0.4);
    EXPECT_DOUBLE_EQ(found.difference.volts.value(), -0.6);
}

TEST(CursorReadouts, FollowATraceThatIsShownBesideItsPoints) {
    RisingTrace trace;
    trace.channel.shown_delaypts = 30; // its delay was then reduced by 20 columns
    trace.channel.delaypts = 10;
    const CursorCrossings found = trace.with_cursors_at(100, 21);
    EXPECT_DOUBLE_EQ(found.cursor[0].volts.value(), 0.8);
    EXPECT_DOUBLE_EQ(found.cursor[1].volts.value(), 0.01);
    const CursorCrossings beside = trace.with_cursors_at(20, 640);
    EXPECT_FALSE(beside.cursor[0].volts) << "the first point lies in column 21";
    EXPECT_EQ(beside.cursor[0].why, NoCrossing::beside);
    EXPECT_DOUBLE_EQ(beside.cursor[1].volts.value(), 6.2);
    EXPECT_FALSE(beside.difference.volts);
    EXPECT_EQ(beside.difference.why, NoCrossing::beside);
}

TEST(CursorReadouts, SayWhyThereIsNoVoltage) {
    const RisingTrace trace;
    for (const NoCrossing why : {NoCrossing::off, NoCrossing::no_sweep, NoCrossing::no_trace}) {
        const CursorCrossings found = trace.with_cursors_at(100, 200, why);
        EXPECT_FALSE(found.cursor[0].volts || found.cursor[1].volts || found.difference.volts);
        EXPECT_EQ(found.difference.why, why);
        EXPECT_NE(text_of(why), text_of(NoCrossing::beside));
    }
    // The last point that is drawn is 639.
    EXPECT_TRUE(trace.with_cursors_at(1, 639).difference.volts);
    EXPECT_FALSE(trace.with_cursors_at(0, 639).difference.volts);
    EXPECT_FALSE(trace.with_cursors_at(1, 640).difference.volts);
}

TEST(CursorReadouts, TellTheTimeBetweenTheLines) {
    CursorState cursors;
    cursors.hpos = {400, 80};
    EXPECT_DOUBLE_EQ(cursor_interval(cursors, 3.2e9), 100e-9);
    cursors.hpos = {80, 80};
    EXPECT_EQ(cursor_interval(cursors, 3.2e9), 0.0);
}

} // namespace
} // namespace kv408
