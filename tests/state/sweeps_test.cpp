#include "state/sweeps.h"

#include <vector>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

using On = std::array<bool, 2>;
constexpr On both = {true, true};

std::shared_ptr<const ChannelSweep> part(bool whole = true) {
    ChannelSweep sweep;
    sweep.whole = whole;
    return std::make_shared<const ChannelSweep>(sweep);
}

/// What the listeners of some sweeps were told.
struct Heard {
    Heard() {
        sweeps.on_finished([this](const auto& sweep) { told.push_back(sweep); });
    }

    void finish(const Sweeps::Parts& parts, const On& on = both) {
        sweeps.finish(SweepMode::block, {}, parts, on);
    }

    /// Number of the sweep told last, and whether it is complete.
    [[nodiscard]] std::pair<std::uint64_t, bool> last() const {
        return {told.back()->number, told.back()->complete};
    }

    Sweeps sweeps;
    std::vector<std::shared_ptr<const Sweep>> told;
};

using NumberAndWhole = std::pair<std::uint64_t, bool>;

TEST(Sweeps, BeforeTheFirstOneBothChannelsAreFlatAndHaveNoPoints) {
    const Sweeps sweeps;
    EXPECT_FALSE(sweeps.last()->complete);
    for (const auto& channel : sweeps.last()->channel) {
        EXPECT_TRUE(channel->codes.empty());
        EXPECT_FALSE(channel->whole);
        EXPECT_EQ(channel->columns.mv[640], 0.0);
        EXPECT_EQ(channel->columns_per_second, 3.2e9);
    }
}

TEST(Sweeps, BothChannelsPartsAreOneSweep) {
    Heard heard;
    heard.finish({part(), nullptr});
    EXPECT_EQ(heard.last(), (NumberAndWhole{1, false}));
    heard.finish({nullptr, part()});
    EXPECT_EQ(heard.last(), (NumberAndWhole{1, true}));
    heard.finish({part(), nullptr});
    EXPECT_EQ(heard.last(), (NumberAndWhole{2, false}));
    heard.finish({part(), part()});
    EXPECT_EQ(heard.last(), (NumberAndWhole{2, true}));
}

TEST(Sweeps, AChannelThatIsOffIsNotWaitedForAndIsNoPartOfIt) {
    Heard heard;
    heard.finish({nullptr, part()}, {false, true});
    EXPECT_EQ(heard.last(), (NumberAndWhole{1, true}));
    heard.finish({part(), nullptr});
    heard.finish({nullptr, part()}, {false, true}); // the first was switched off in between
    EXPECT_EQ(heard.last(), (NumberAndWhole{2, true}));
    EXPECT_EQ(heard.told.back()->came, (On{false, true}));
    heard.finish({part(), nullptr}, {false, false});
    EXPECT_EQ(heard.last(), (NumberAndWhole{3, false}));
}

TEST(Sweeps, APartThatIsNotWholeCompletesNothing) {
    Heard heard;
    heard.finish({part(), nullptr});
    heard.finish({part(false), part(false)});
    EXPECT_EQ(heard.last(), (NumberAndWhole{1, false}));
    EXPECT_EQ(heard.told.back()->came, (On{false, false}));
    heard.finish({nullptr, part()});
    EXPECT_EQ(heard.last(), (NumberAndWhole{1, false}));
    heard.finish({part(), nullptr});
    EXPECT_EQ(heard.last(), (NumberAndWhole{1, true}));
}

TEST(Sweeps, WhatAListenerKeepsNeverChanges) {
    Heard heard;
    const auto first = part();
    const auto second = part();
    heard.finish({first, second});
    const Sweep kept = *heard.told.front();
    heard.finish({part(), nullptr});
    EXPECT_EQ(heard.told.front()->number, kept.number);
    EXPECT_EQ(heard.told.front()->channel, kept.channel);
    EXPECT_EQ(heard.told.back()->channel[1], second) << "what did not come anew is shared";
    EXPECT_EQ(heard.sweeps.last(), heard.told.back());
}

TEST(Sweeps, TheLastCompleteOneStaysUntilTheNextIsComplete) {
    Heard heard;
    heard.finish({part(), nullptr});
    EXPECT_EQ(heard.sweeps.last_complete(), nullptr);
    heard.finish({nullptr, part()});
    const auto complete = heard.told.back();
    EXPECT_EQ(heard.sweeps.last_complete(), complete);
    heard.finish({part(), nullptr});
    heard.finish({part(false), part(false)});
    EXPECT_EQ(heard.sweeps.last_complete(), complete);
    heard.finish({part(), part()});
    EXPECT_EQ(heard.sweeps.last_complete(), heard.told.back());
}

TEST(Sweeps, ListenersAreToldInTheirOrderAndFindTheSweepThere) {
    Sweeps sweeps;
    std::vector<int> order;
    sweeps.on_finished([&](const auto& sweep) {
        order.push_back(1);
        EXPECT_EQ(sweeps.last(), sweep);
    });
    sweeps.on_finished([&](const auto&) { order.push_back(2); });
    const auto time = std::chrono::system_clock::time_point(std::chrono::seconds(17));
    sweeps.finish(SweepMode::point, time, {part(), part()}, both);
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    EXPECT_EQ(sweeps.last()->mode, SweepMode::point);
    EXPECT_EQ(sweeps.last()->time, time);
}

} // namespace
} // namespace kv408
