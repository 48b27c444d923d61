#include "bench_driver.h"

#include <cmath>

namespace kv408::simulator {
namespace {

class Trigger : public BenchDriver {
protected:
    Trigger() {
        make_exact();
        set_gain(2, 2);
        set_resolution(313);
    }

    bool triggers() { return sweep(1) != waiting_words; }

    static constexpr double rounding = 0.5 + 1e-6;
};

TEST_F(Trigger, TheFirstPointIsTheLevelOnTheChosenEdge) {
    for (const int level : {-150, -60, 0, 75, 180}) {
        set_trigger(level, 1);
        const auto rising = sweep(1);
        ASSERT_EQ(rising.size(), 650U) << level;
        EXPECT_NEAR(rising[0], 2048 + 2 * level, rounding);
        EXPECT_GT(rising[1], rising[0]);
        set_trigger(level, 2);
        const auto falling = sweep(1);
        ASSERT_EQ(falling.size(), 650U) << level;
        EXPECT_NEAR(falling[0], 2048 + 2 * level, rounding);
        EXPECT_LT(falling[1], falling[0]);
    }
}

TEST_F(Trigger, OnAnEdgeOfAPulse) {
    bench().sources[0] = {SignalKind::pulse, 400.0, 10.0e6, 30.0, 2000.0, 0.3, 0.0, 0.0};
    set_resolution(50);
    for (const int level : {-100, 30, 100}) {
        set_trigger(level, 1);
        const auto rising = sweep(1);
        ASSERT_EQ(rising.size(), 650U) << level;
        EXPECT_NEAR(rising[0], 2048 + 2 * level, rounding);
        EXPECT_GT(rising[5], rising[0]);
        set_trigger(level, 2);
        const auto falling = sweep(1);
        ASSERT_EQ(falling.size(), 650U) << level;
        EXPECT_NEAR(falling[0], 2048 + 2 * level, rounding);
        EXPECT_LT(falling[5], falling[0]);
    }
    // From the middle of the rising edge to that of the falling one it is 0.3 * 100 ns.
    set_trigger(30, 1);
    EXPECT_NEAR(sweep(1)[600], 2048 + 2 * 30, rounding);
}

TEST_F(Trigger, ALevelBeyondTheSignalIsNeverReached) {
    bench().sources[0].offset_mv = 50.0; // -150 mV to 250 mV
    for (const int code : {1, 2}) {
        set_trigger(249, code, 0);
        EXPECT_TRUE(triggers());
        set_trigger(251, code, 0);
        EXPECT_FALSE(triggers());
        set_trigger(-149, code, 0);
        EXPECT_TRUE(triggers());
        set_trigger(-151, code, 0);
        EXPECT_FALSE(triggers());
    }
}

TEST_F(Trigger, TheSignalMustComeFromBeyondTheHysteresis) {
    // -200 mV to 200 mV.
    set_trigger(0, 1, 199);
    EXPECT_TRUE(triggers());
    set_trigger(0, 1, 201);
    EXPECT_FALSE(triggers());
    set_trigger(100, 1, 255);
    EXPECT_TRUE(triggers());
    set_trigger(100, 2, 99);
    EXPECT_TRUE(triggers());
    set_trigger(100, 2, 101);
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, TheHysteresisOfTheOtherSourceDoesNotCount) {
    set_trigger(0, 1, 10); // the other byte is 255
    EXPECT_TRUE(triggers());
    set_trigger(0, 21, 10);
    EXPECT_TRUE(triggers());
    set_trigger(0, 21, 151); // the pulse is -150 mV to 150 mV
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, TheSecondSourceIsTheSecondInput) {
    bench().sources[1].kind = SignalKind::sine;
    set_trigger(100, 21);
    const auto codes = sweep(2);
    ASSERT_EQ(codes.size(), 650U);
    EXPECT_NEAR(codes[0], 2048 + 200, rounding);
    bench().triggers[1] = TriggerRoute::disconnected;
    EXPECT_FALSE(triggers());
    bench().triggers[1] = TriggerRoute::signal_1;
    EXPECT_NEAR(sweep(1)[0], 2048 + 200, rounding);
}

TEST_F(Trigger, NoSignalNoTrigger) {
    set_trigger(0, 1);
    EXPECT_TRUE(triggers());
    bench().triggers[0] = TriggerRoute::disconnected;
    EXPECT_FALSE(triggers());
    bench().triggers[0] = TriggerRoute::signal_1;
    bench().sources[0].kind = SignalKind::none;
    EXPECT_FALSE(triggers());
    bench().sources[0].kind = SignalKind::sine;
    bench().sources[0].amplitude_mvpp = 0.0;
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, TheStartUpCheckLeavesALevelThatNothingReaches) {
    set_up(8, {0, 0, 1, 0, 255});
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, WaitingWordComesAfterTheTimeOut) {
    set_trigger(2000, 1);
    for (const int time_out : {10, 5000, 65535}) {
        set_up(27, {time_out >> 8, time_out & 0xFF, 1, 10, 255});
        double start = now_us();
        send(32, {2, 138, 0, 0, 1});
        EXPECT_EQ(read(2), (std::vector<Byte>{0x1A, 0x0A}));
        EXPECT_NEAR(now_us() - start, 10 * byte_us + time_out, 0.02);
        EXPECT_EQ(waiting(), 0U);
        start = now_us();
        send(26, {0, 100, 0, 1, 240});
        EXPECT_EQ(read(2), (std::vector<Byte>{0x1A, 0x0A}));
        EXPECT_NEAR(now_us() - start, 10 * byte_us + time_out, 0.02);
    }
}

TEST_F(Trigger, APeriodLongerThanTheTimeOutIsNotWaitedFor) {
    set_trigger(0, 1);
    bench().sources[0].frequency_hz = 200.0; // 5000 us
    set_up(27, {4990 >> 8, 4990 & 0xFF, 1, 10, 255});
    EXPECT_FALSE(triggers());
    set_up(27, {5010 >> 8, 5010 & 0xFF, 1, 10, 255});
    EXPECT_TRUE(triggers());
}

TEST_F(Trigger, ABlockTakesAsLongAsItsTriggers) {
    set_trigger(0, 1);
    bench().sources[0].frequency_hz = 2000.0;
    EXPECT_EQ(bridge().set_time_out(1000), bridge_success);
    const double start = now_us();
    send(32, {2, 138, 0, 0, 1});
    // 500 us a trigger. The words come as they are taken: some 200 in the first 100 ms.
    clock_.advance(milliseconds(100));
    EXPECT_NEAR(waiting(), 400.0, 4.0);
    EXPECT_EQ(words(read(1300)).size(), 650U);
    EXPECT_NEAR(now_us() - start, 650 * 500.0, 600.0);
    // Four triggers per point with averaging.
    const double averaged = now_us();
    EXPECT_EQ(bridge().set_time_out(2000), bridge_success);
    EXPECT_EQ(sweep(1, true).size(), 650U);
    EXPECT_NEAR(now_us() - averaged, 4 * 650 * 500.0, 600.0);
}

TEST_F(Trigger, AFastTriggerDoesNotHoldABlockUp) {
    set_trigger(0, 1);
    bench().sources[0].frequency_hz = 1.0e6;
    const double start = now_us();
    EXPECT_EQ(sweep(1).size(), 650U);
    EXPECT_NEAR(now_us() - start, (8 + 1300) * byte_us + 13000.0, 0.1);
}

TEST_F(Trigger, ASlowBlockGoesOnWhereTheSignalsStartAnew) {
    set_trigger(0, 1);
    bench().sources[0].frequency_hz = 2000.0;
    EXPECT_EQ(bridge().set_time_out(1000), bridge_success);
    clock_.advance(std::chrono::seconds(1000) - milliseconds(100) - clock_.now());
    const double start = now_us();
    EXPECT_EQ(sweep(1).size(), 650U);
    EXPECT_NEAR(now_us() - start, 650 * 500.0, 1100.0);
}

TEST_F(Trigger, SignalsPassedOnAreHalvedForTheTriggerToo) {
    bench().samplers[0] = SamplerRoute::via_trigger; // -100 mV to 100 mV arrive
    set_trigger(99, 1);
    EXPECT_TRUE(triggers());
    set_trigger(101, 1);
    EXPECT_FALSE(triggers());
    set_trigger(50, 1);
    EXPECT_NEAR(sweep(1)[0], 2048 + 100, rounding);
}

TEST_F(Trigger, OnRandomDataIsTheDatasOwnCrossing) {
    bench().sources[0] = {SignalKind::random_data, 400.0, 100.0e6, 0.0, 500.0, 0.5, 0.0, 0.0};
    set_resolution(1);
    for (const int level : {-150, 0, 120}) {
        for (const bool rising : {true, false}) {
            set_trigger(level, rising ? 1 : 2);
            set_offset(1, 0);
            const auto crossing = sweep(1);
            ASSERT_EQ(crossing.size(), 650U);
            EXPECT_NEAR(crossing[0], 2048 + 2 * level, rounding) << rising;
            // Half a bit of 10 ns later every bit has become what the edge goes to, half a bit
            // earlier it is what the edge comes from.
            set_offset(1, 5000 - 325);
            EXPECT_EQ(sweep(1), std::vector<int>(650, rising ? 2448 : 1648)) << level;
            set_offset(1, -5000 - 325);
            EXPECT_EQ(sweep(1), std::vector<int>(650, rising ? 1648 : 2448)) << level;
        }
    }
}

TEST_F(Trigger, OnRandomDataNeedsLevelAndHysteresisToo) {
    bench().sources[0] = {SignalKind::random_data, 400.0, 100.0e6, 0.0, 500.0, 0.5, 0.0, 0.0};
    set_trigger(201, 1);
    EXPECT_FALSE(triggers());
    set_trigger(0, 1, 199);
    EXPECT_TRUE(triggers());
    set_trigger(0, 1, 201);
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, OnRandomDataWaitsForTheLongestGapBetweenEdges) {
    // Seven ones and six zeros are the longest runs of the pattern, so that two rising edges are
    // at most 13 bits apart.
    bench().sources[0] = {SignalKind::random_data, 400.0, 1000.0, 0.0, 0.0, 0.5, 0.0, 0.0};
    set_trigger(0, 1);
    set_up(27, {14000 >> 8, 14000 & 0xFF, 1, 10, 255});
    EXPECT_EQ(bridge().set_time_out(10000), bridge_success);
    EXPECT_TRUE(triggers());
    // The seven ones alone take longer than this.
    set_up(27, {5000 >> 8, 5000 & 0xFF, 1, 10, 255});
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, OnRandomDataIsWhereDistortionPutsTheirEdgesAndBeforeTheCable) {
    bench().sources[0] = {SignalKind::random_data, 400.0, 100.0e6, 0.0, 500.0, 0.5, 0.0, 0.0};
    bench().sources[0].distortion_ps = 2000.0;
    set_trigger(0, 1);
    set_resolution(0);
    set_offset(1, 0);
    EXPECT_EQ(sweep(1), std::vector<int>(650, 2048));
    // A one of a single bit ends after 10 ns and the distortion.
    const auto crossings = [this](std::int32_t delay_ps) {
        set_offset(1, delay_ps);
        const auto codes = sweep(1);
        return std::count(codes.begin(), codes.end(), 2048);
    };
    EXPECT_EQ(crossings(10000), 0);
    EXPECT_GT(crossings(12000), 200);
    // What a cable does to the channel the trigger does not see.
    bench().sources[0].cable_ps = 10000.0;
    set_offset(1, 0);
    const auto codes = sweep(1);
    ASSERT_EQ(codes.size(), 650U);
    EXPECT_LT(*std::max_element(codes.begin(), codes.end()), 2048);
}

TEST_F(Trigger, OnTheClockOfRandomDataEveryBitBeginsAtTheSamePlace) {
    bench().sources[0] = {SignalKind::random_data, 300.0, 100.0e6, 50.0, 500.0, 0.5, 3.0, 20.0};
    set_resolution(1);
    bench().triggers[0] = TriggerRoute::clock_1;
    // The clock is 400 mVpp around 0 V whatever the data are, and without their noise.
    for (const int level : {-199, 0, 199}) {
        set_trigger(level, 1, 0);
        EXPECT_TRUE(triggers()) << level;
    }
    set_trigger(201, 1, 0);
    EXPECT_FALSE(triggers());
    // It rises where a bit begins, and falls in its middle.
    bench().samplers[1] = SamplerRoute::trigger_output;
    set_trigger(0, 1);
    set_offset(2, 2500);
    EXPECT_EQ(sweep(2), std::vector<int>(650, 2448));
    set_offset(2, 7500 - 325);
    EXPECT_EQ(sweep(2), std::vector<int>(650, 1648));
    // Before a bit begins and in its middle the data are at their levels: 200 mV and -100 mV, with
    // up to 6 * 3 mV of noise.
    for (const auto& [code, offset] : {std::pair{1, 5000 - 325}, std::pair{2, -325}}) {
        set_trigger(0, code);
        set_offset(1, offset);
        int high = 0;
        for (const int word : sweep(1)) {
            high += word > 2048 + 100 ? 1 : 0;
            ASSERT_NEAR(word, word > 2048 + 100 ? 2048 + 400 : 2048 - 200, 37) << offset;
        }
        EXPECT_GT(high, 200);
        EXPECT_LT(high, 450);
    }
    // Of a generator that is off there is none.
    bench().sources[0].kind = SignalKind::none;
    EXPECT_FALSE(triggers());
}

TEST_F(Trigger, EverySampleOfASlowTriggerHasATriggerOfItsOwn) {
    bench().sources[0].frequency_hz = 1000.0;
    bench().sources[1] = {SignalKind::square, 400.0, 500.0, 0.0, 0.0, 0.5, 0.0, 0.0};
    set_trigger(0, 1);
    set_offset(2, 1000);
    EXPECT_EQ(bridge().set_time_out(1000), bridge_success);
    const auto codes = sweep(2);
    ASSERT_EQ(codes.size(), 650U);
    for (std::size_t k = 1; k < codes.size(); ++k) {
        ASSERT_EQ(std::abs(codes[k] - codes[k - 1]), 800) << k; // high and low in turns
    }
}

TEST(TriggerPhase, LockedSignalsStayLockedThroughManyPeriods) {
    Source trigger;
    trigger.kind = SignalKind::sine;
    trigger.frequency_hz = 30.0e9;
    Source third = trigger;
    third.frequency_hz = 10.0e9;
    for (const std::int64_t period : {0LL, 1LL, 2LL, 29999999999997LL, 29999999999998LL}) {
        const Phase phase = phase_at(third, {.generator = &trigger, .phase = {period, 0.6}});
        const auto thirds = static_cast<double>(period % 3);
        EXPECT_EQ(phase.periods, period / 3);
        EXPECT_NEAR(phase.fraction, (thirds + 0.6) / 3.0, 1e-12) << period;
    }
}

TEST(TriggerPhase, ThePeriodsOfAnEventNeverOutgrowADouble) {
    Source source;
    source.kind = SignalKind::sine;
    source.frequency_hz = 30.0e9;
    const TriggerEvents events(source, source, {.part = 1.0}); // a quarter of the period
    const auto event = events.first_after(std::chrono::hours(10000));
    EXPECT_LE(event.phase.periods, std::int64_t{30'000'000'000'000}); // 1000 s
    EXPECT_EQ(event.phase.fraction, 0.25);
}

TEST(TriggerPhase, TheFirstEventIsTheNextCrossing) {
    Source source;
    source.kind = SignalKind::sine;
    source.frequency_hz = 1.0e6;
    const TriggerEvents events(source, source, {.part = 1.0}); // a quarter of the period
    EXPECT_EQ(events.first_after(nanoseconds(0)).phase.periods, 0);
    EXPECT_EQ(events.first_after(nanoseconds(249)).phase.periods, 0);
    EXPECT_EQ(events.first_after(nanoseconds(251)).phase.periods, 1);
    EXPECT_EQ(events.next(events.first_after(nanoseconds(251))).phase.periods, 2);
    const auto event = events.first_after(nanoseconds(5300));
    EXPECT_EQ(events.time_of(event, nanoseconds(5300)), nanoseconds(6250));
}

TEST_F(Trigger, PhasesAreExactAfterLongTimes) {
    set_trigger(0, 1);
    bench().sources[0].frequency_hz = 3.0e9;
    bench().sources[1] = bench().sources[0];
    bench().sources[1].frequency_hz = 9.0e9;
    set_resolution(1);
    clock_.advance(std::chrono::hours(1000));
    const auto codes = sweep(2);
    ASSERT_EQ(codes.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        ASSERT_NEAR(codes[std::size_t(k)],
                    2048.0 + 400.0 * std::sin(2.0 * 3.14159265358979 * 9.0e-3 * k), rounding)
            << k;
    }
}

} // namespace
} // namespace kv408::simulator
