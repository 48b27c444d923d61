#include "simulator/waveform.h"

#include "simulator/random_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>

namespace kv408::simulator {
namespace {

Source source(SignalKind kind) {
    Source result;
    result.kind = kind;
    result.amplitude_mvpp = 300.0;
    result.frequency_hz = 20.0e6; // 50 ns
    result.offset_mv = 25.0;
    result.rise_time_ps = 1000.0;
    result.duty = 0.3;
    return result;
}

double at_ps(const Source& signal, double picoseconds) {
    return value_mv(signal, moved({}, picoseconds * 1e-12 * signal.frequency_hz));
}

TEST(Waveform, NoneIsZeroVolt) {
    EXPECT_EQ(value_mv(source(SignalKind::none), {3, 0.25}), 0.0);
}

TEST(Waveform, SineIsASine) {
    const Source sine = source(SignalKind::sine);
    for (int step = -80; step <= 80; ++step) {
        const double time = 777.0 * step;
        EXPECT_NEAR(at_ps(sine, time), 25.0 + 150.0 * std::sin(2.0 * std::numbers::pi * time / 5e4),
                    1e-9)
            << time;
    }
}

TEST(Waveform, PulseHasItsLevelsEdgesAndDuty) {
    const Source pulse = source(SignalKind::pulse);
    EXPECT_NEAR(at_ps(pulse, 0.0), 25.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, -500.0), 25.0 - 120.0, 1e-9); // 10 %
    EXPECT_NEAR(at_ps(pulse, 500.0), 25.0 + 120.0, 1e-9);  // 90 %
    EXPECT_NEAR(at_ps(pulse, 15000.0), 25.0, 1e-9);        // 0.3 * 50 ns
    EXPECT_NEAR(at_ps(pulse, 15000.0 - 500.0), 25.0 + 120.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, 15000.0 + 500.0), 25.0 - 120.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, 7500.0), 175.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, 30000.0), -125.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, 50000.0 + 7500.0), 175.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, -20000.0), -125.0, 1e-9);
}

TEST(Waveform, SquareIsHighHalfOfThePeriodWhateverTheDuty) {
    const Source square = source(SignalKind::square);
    EXPECT_NEAR(at_ps(square, 24000.0), 175.0, 1e-9);
    EXPECT_NEAR(at_ps(square, 25000.0), 25.0, 1e-9);
    EXPECT_NEAR(at_ps(square, 26000.0), -125.0, 1e-9);
}

TEST(Waveform, AStepNeedsNoTime) {
    Source square = source(SignalKind::square);
    square.rise_time_ps = 0.0;
    EXPECT_NEAR(at_ps(square, -0.001), -125.0, 1e-9);
    EXPECT_NEAR(at_ps(square, 0.0), 175.0, 1e-9);
    EXPECT_NEAR(at_ps(square, 24999.9), 175.0, 1e-9);
    EXPECT_NEAR(at_ps(square, 25000.1), -125.0, 1e-9);
}

TEST(Waveform, EdgesSlowerThanThePulseStillReachBothLevels) {
    Source pulse = source(SignalKind::pulse);
    pulse.rise_time_ps = 1e6;
    EXPECT_NEAR(at_ps(pulse, 7500.0), 175.0, 1e-9);
    EXPECT_NEAR(at_ps(pulse, 32500.0), -125.0, 1e-9);
}

TEST(Waveform, RandomDataIsAMaximumLengthSequenceOf127Bits) {
    const Source data = source(SignalKind::random_data);
    const auto high = [&](std::int64_t bit) { return value_mv(data, {bit, 0.5}) > 25.0; };
    int highs = 0;
    std::set<int> windows;
    for (std::int64_t bit = 0; bit < 127; ++bit) {
        EXPECT_NEAR(std::abs(value_mv(data, {bit, 0.5}) - 25.0), 150.0, 1e-9);
        highs += high(bit) ? 1 : 0;
        EXPECT_EQ(high(bit), high(bit + 127));
        EXPECT_EQ(high(bit), high(bit - 127));
        int window = 0;
        for (int place = 0; place < 7; ++place) {
            window = window * 2 + (high(bit + place) ? 1 : 0);
        }
        windows.insert(window);
    }
    EXPECT_EQ(highs, 64);
    EXPECT_EQ(windows.size(), 127U); // every combination of seven bits but one
}

TEST(Waveform, RandomDataHasThePatternThatIsChosen) {
    for (const int order : {7, 15, 31}) {
        Source data = source(SignalKind::random_data);
        data.pattern_bits = order;
        RandomBits bits(order, 0);
        for (std::int64_t bit = 0; bit < 200; ++bit) {
            EXPECT_NEAR(value_mv(data, {bit, 0.5}), bits.take() ? 175.0 : -125.0, 1e-9)
                << order << ' ' << bit;
        }
    }
}

TEST(Waveform, RandomDataChangesWhereBitsMeet) {
    const Source data = source(SignalKind::random_data);
    for (std::int64_t bit = 0; bit < 127; ++bit) {
        const double before = value_mv(data, {bit - 1, 0.5});
        const double after = value_mv(data, {bit, 0.5});
        EXPECT_NEAR(value_mv(data, {bit, 0.0}), (before + after) / 2.0, 1e-9);
        // 500 ps are 0.01 of the period: 90 % of the way from one level to the other.
        EXPECT_NEAR(value_mv(data, {bit, 0.01}), before + 0.9 * (after - before), 1e-9);
        EXPECT_NEAR(value_mv(data, {bit - 1, 0.99}), before + 0.1 * (after - before), 1e-9);
    }
}

TEST(Waveform, DistortionMakesTheOnesOfRandomDataLonger) {
    Source data = source(SignalKind::random_data);
    data.distortion_ps = 4000.0; // of 50000
    for (std::int64_t bit = 0; bit < 127; ++bit) {
        const double before = value_mv(data, {bit - 1, 0.5});
        const double after = value_mv(data, {bit, 0.5});
        if (after > before) { // its middle comes 2000 ps early
            EXPECT_NEAR(value_mv(data, {bit - 1, 0.96}), 25.0, 1e-9);
            EXPECT_NEAR(value_mv(data, {bit, 0.0}), 175.0, 1e-9);
        } else if (after < before) { // late
            EXPECT_NEAR(value_mv(data, {bit, 0.04}), 25.0, 1e-9);
            EXPECT_NEAR(value_mv(data, {bit, 0.0}), 175.0, 1e-9);
        }
    }
    // However much it is, the data stay between their levels.
    data.distortion_ps = -1e9;
    for (std::int64_t bit = 0; bit < 127; ++bit) {
        for (const double place : {0.0, 0.25, 0.5, 0.75}) {
            EXPECT_LE(std::abs(value_mv(data, {bit, place}) - 25.0), 150.0 + 1e-9);
        }
    }
}

TEST(Waveform, ACableDelaysWhatRandomDataBecomeAsOnePoleDoes) {
    Source data = source(SignalKind::random_data);
    data.rise_time_ps = 0.0;
    data.cable_ps = 37000.0; // of 50000
    // From bit to bit what is missing shrinks by the same factor.
    double at_end = -125.0;
    for (std::int64_t bit = -60; bit < 127; ++bit) {
        Source without = data;
        without.cable_ps = 0.0;
        const double level = value_mv(without, {bit, 0.5});
        if (bit >= 0) { // whatever it began with is forgotten
            const double middle = level + (at_end - level) * std::exp(-25000.0 / 37000.0);
            EXPECT_NEAR(value_mv(data, {bit, 0.5}), middle, 1e-5) << bit;
            EXPECT_NEAR(value_mv(data, {bit, 0.0}), at_end, 1e-5) << bit;
        }
        at_end = level + (at_end - level) * std::exp(-50000.0 / 37000.0);
    }
}

TEST(Waveform, ACableRoundsEdgesThatTakeTime) {
    Source data = source(SignalKind::random_data);
    data.rise_time_ps = 15000.0;
    data.distortion_ps = 3000.0;
    Source cabled = data;
    cabled.cable_ps = 20000.0;
    // The pole's equation, taken in small steps: how fast it follows is what is missing by its time
    // constant.
    constexpr int steps = 20000;
    constexpr double step_ps = 50000.0 / steps;
    double follower = 0.0;
    for (std::int64_t bit = -30; bit < 40; ++bit) {
        for (int step = 0; step < steps; ++step) {
            const double middle = value_mv(data, {bit, (step + 0.5) / steps});
            follower += (middle - follower) * (1.0 - std::exp(-step_ps / 20000.0));
            if (bit >= 0 && step % 1000 == 999) {
                const double place = double(step + 1) / steps;
                EXPECT_NEAR(value_mv(cabled, moved({bit, 0.0}, place)), follower, 0.01)
                    << bit << ' ' << place;
            }
        }
    }
}

TEST(Waveform, ImpossibleValuesGiveASteadyOffset) {
    Source sine = source(SignalKind::sine);
    sine.frequency_hz = 0.0;
    EXPECT_EQ(value_mv(sine, {0, 0.25}), 25.0);
    sine.frequency_hz = -5.0;
    EXPECT_EQ(value_mv(sine, {0, 0.25}), 25.0);
    sine.frequency_hz = std::nan("");
    EXPECT_EQ(value_mv(sine, {0, 0.25}), 25.0);
    sine = source(SignalKind::sine);
    sine.amplitude_mvpp = 0.0;
    EXPECT_EQ(value_mv(sine, {0, 0.25}), 25.0);
}

TEST(Waveform, MovingAPhaseCarriesWholePeriods) {
    const Phase forward = moved({5, 0.75}, 2.5);
    EXPECT_EQ(forward.periods, 8);
    EXPECT_NEAR(forward.fraction, 0.25, 1e-12);
    const Phase back = moved({5, 0.25}, -0.5);
    EXPECT_EQ(back.periods, 4);
    EXPECT_NEAR(back.fraction, 0.75, 1e-12);
    const Phase barely_back = moved({5, 0.0}, -1e-30);
    EXPECT_EQ(barely_back.periods, 5);
    EXPECT_EQ(barely_back.fraction, 0.0);
}

} // namespace
} // namespace kv408::simulator
