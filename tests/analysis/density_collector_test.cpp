#include "analysis/density_collector.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kv408 {
namespace {

using Codes = std::vector<std::int16_t>;

/// Announces sweeps as the program does: in blocks each channel's part by itself.
class Announced {
public:
    explicit Announced(DensityCollector& collector) : collector_(collector) {
        part.whole = true;
        sweep_.channel.fill(std::make_shared<const ChannelSweep>());
    }

    /// What the next parts are measured with.
    ChannelSweep part;

    /// CH1's part with `codes` comes alone.
    void ch1_comes(Codes codes) {
        next();
        come(ch1, std::move(codes));
    }

    /// The parts of both come, CH1's first.
    void both_come(Codes first, Codes second) {
        next();
        come(ch1, std::move(first));
        come(ch2, std::move(second));
    }

private:
    void next() {
        ++sweep_.number;
        sweep_.came = {};
    }

    void come(Channel channel, Codes codes) {
        auto made = std::make_shared<ChannelSweep>(part);
        made->codes = std::move(codes);
        sweep_.channel.at(channel) = made;
        sweep_.came.at(channel) = true;
        collector_.take(sweep_);
    }

    DensityCollector& collector_;
    Sweep sweep_;
};

std::uint32_t hits(const DensityCollector& collector, Channel channel, int point, int code) {
    return collector.collected(channel)->counts.at(point)[static_cast<std::size_t>(code)];
}

TEST(DensityCollector, CountsEachPartOfASweepOnce) {
    DensityCollector collector;
    collector.collect(ch1, true);
    collector.collect(ch2, true);
    Announced sweeps(collector);
    sweeps.both_come({100, 200}, {300, 400});
    sweeps.both_come({100, 201}, {300, 400});
    EXPECT_EQ(collector.collected(ch1)->sweeps, 2U);
    EXPECT_EQ(hits(collector, ch1, 0, 100), 2U);
    EXPECT_EQ(hits(collector, ch1, 1, 201), 1U);
    EXPECT_EQ(hits(collector, ch2, 1, 400), 2U);
}

TEST(DensityCollector, KeepsNothingOfAChannelThatItDoesNotCollect) {
    DensityCollector collector;
    Announced sweeps(collector);
    sweeps.both_come({1}, {2});
    EXPECT_EQ(collector.collected(ch1), nullptr);
    collector.collect(ch2, true);
    sweeps.both_come({1}, {2});
    EXPECT_EQ(collector.collected(ch1), nullptr);
    EXPECT_NE(collector.collected(ch2), nullptr);
    collector.collect(ch2, false);
    EXPECT_EQ(collector.collected(ch2), nullptr);
}

TEST(DensityCollector, AChannelThatIsOffCollectsNothing) {
    DensityCollector collector;
    collector.collect(ch1, true);
    collector.collect(ch2, true);
    Announced sweeps(collector);
    sweeps.both_come({1}, {2});
    sweeps.ch1_comes({1});
    EXPECT_EQ(collector.collected(ch1)->sweeps, 2U);
    EXPECT_EQ(collector.collected(ch2)->sweeps, 1U);
}

TEST(DensityCollector, LeavesOutWhatCameBrokenOrBehindSomethingElse) {
    DensityCollector collector;
    collector.collect(ch1, true);
    Announced sweeps(collector);
    sweeps.ch1_comes({7});
    sweeps.part.alone = false;
    sweeps.ch1_comes({7});
    sweeps.part.alone = true;
    sweeps.part.whole = false;
    sweeps.ch1_comes({7});
    EXPECT_EQ(hits(collector, ch1, 0, 7), 1U);
}

TEST(DensityCollector, BeginsAnewWithAnotherSetUpAndTellsWhy) {
    DensityCollector collector;
    collector.collect(ch1, true);
    int changes = 0;
    collector.on_changed([&changes](Channel) { ++changes; });
    Announced sweeps(collector);
    sweeps.ch1_comes({7});
    sweeps.ch1_comes({7});
    EXPECT_EQ(collector.begun_anew_by(ch1), "");
    changes = 0;
    sweeps.part.first_time = 500.0;
    sweeps.ch1_comes({9});
    EXPECT_EQ(collector.begun_anew_by(ch1), "Delay");
    EXPECT_EQ(collector.collected(ch1)->sweeps, 1U);
    EXPECT_EQ(hits(collector, ch1, 0, 7), 0U);
    EXPECT_EQ(hits(collector, ch1, 0, 9), 1U);
    EXPECT_EQ(changes, 1);
    // A pass has another number of points.
    sweeps.part.time_per_point = 1.0;
    sweeps.ch1_comes({9, 10});
    EXPECT_EQ(collector.begun_anew_by(ch1), "Time base");
    EXPECT_EQ(collector.collected(ch1)->counts.points(), 2);
    collector.clear();
    EXPECT_EQ(collector.collected(ch1), nullptr);
    EXPECT_EQ(collector.begun_anew_by(ch1), "");
}

TEST(DensityCollector, FrozenItKeepsWhatItHasThroughAnotherSetUp) {
    DensityCollector collector;
    collector.collect(ch1, true);
    Announced sweeps(collector);
    sweeps.ch1_comes({7});
    collector.freeze(true);
    sweeps.ch1_comes({8});
    sweeps.part.gain = low_gain;
    sweeps.ch1_comes({8});
    EXPECT_EQ(collector.collected(ch1)->sweeps, 1U);
    EXPECT_EQ(hits(collector, ch1, 0, 7), 1U);
    collector.freeze(false);
    sweeps.ch1_comes({8});
    EXPECT_EQ(collector.begun_anew_by(ch1), "Range");
    EXPECT_EQ(hits(collector, ch1, 0, 7), 0U);
    EXPECT_EQ(hits(collector, ch1, 0, 8), 1U);
}

TEST(DensityCollector, CountsAveragedSweepsApart) {
    DensityCollector collector;
    collector.collect(ch1, true);
    Announced sweeps(collector);
    sweeps.ch1_comes({7});
    sweeps.part.averaged = true;
    sweeps.ch1_comes({7});
    EXPECT_EQ(collector.collected(ch1)->sweeps, 2U);
    EXPECT_EQ(collector.collected(ch1)->averaged, 1U);
}

TEST(DensityCollector, FadesToAHalfInTheHalfLife) {
    DensityCollector collector;
    collector.collect(ch1, true);
    collector.set_half_life(10);
    Announced sweeps(collector);
    sweeps.ch1_comes({7});
    for (int halves = 1; halves <= 3; ++halves) {
        for (int sweep = 0; sweep < 10; ++sweep) {
            sweeps.ch1_comes({8});
        }
        const Collected& collected = *collector.collected(ch1);
        EXPECT_NEAR(hits(collector, ch1, 0, 7) / collected.weight, std::exp2(-halves), 1e-3);
    }
    // All that lies longer back is forgotten in the end.
    for (int sweep = 0; sweep < 150; ++sweep) {
        sweeps.ch1_comes({8});
    }
    const Collected& collected = *collector.collected(ch1);
    EXPECT_EQ(hits(collector, ch1, 0, 7), 0U);
    EXPECT_EQ(collected.counts.passed(0), (Density::Codes{8, 9}));
    // 1 + q + q^2 + ... with q = 2^(-1/10)
    EXPECT_NEAR(hits(collector, ch1, 0, 8) / collected.weight, 1 / (1 - std::exp2(-0.1)), 0.02);
}

TEST(DensityCollector, TurningFadingOnAndOffKeepsWhatIsThere) {
    DensityCollector collector;
    collector.collect(ch1, true);
    Announced sweeps(collector);
    for (int sweep = 0; sweep < 5; ++sweep) {
        sweeps.ch1_comes({7});
    }
    collector.set_half_life(20);
    EXPECT_EQ(hits(collector, ch1, 0, 7) / collector.collected(ch1)->weight, 5.0);
    collector.set_half_life(30);
    EXPECT_EQ(hits(collector, ch1, 0, 7) / collector.collected(ch1)->weight, 5.0);
    collector.set_half_life(std::nullopt);
    EXPECT_EQ(hits(collector, ch1, 0, 7), 5U);
    EXPECT_EQ(collector.collected(ch1)->weight, 1.0);
}

TEST(DensityCollector, SaysThatACounterIsAtItsEnd) {
    DensityCollector collector;
    collector.collect(ch1, true);
    Announced sweeps(collector);
    constexpr int sweeps_of_weight = 1 << 20; // times 4096 that is one more than 32 bits hold
    for (int sweep = 0; sweep < sweeps_of_weight; ++sweep) {
        sweeps.ch1_comes({7});
    }
    EXPECT_FALSE(collector.collected(ch1)->counts.saturated());
    collector.set_half_life(1000);
    EXPECT_TRUE(collector.collected(ch1)->counts.saturated());
    EXPECT_EQ(hits(collector, ch1, 0, 7), highest_count);
}

} // namespace
} // namespace kv408
