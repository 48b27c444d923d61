// What the panel says of an instrument that has fallen silent, and of results that are old.

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "scope/program.h"

namespace kv408 {
namespace {

/// The program sweeping at `time_div` with CH1 alone, so that every sweep is one of its data.
struct SweepingOnCh1 : Program {
    explicit SweepingOnCh1(const std::string& time_div = "20ns/div") {
        EXPECT_TRUE(scope.start());
        choose(scope.panel().seltimediv, time_div);
        ticks(8);
        expect_fresh();
        EXPECT_EQ(status(), "Running");
    }

    /// The line; empty where it is not shown.
    [[nodiscard]] std::string line() {
        const Label& label = scope.panel().nodata;
        return label.visible() ? label.caption() : std::string();
    }

    void expect_fresh() {
        EXPECT_EQ(line(), "");
        EXPECT_FALSE(scope.panel().picture1.dimmed());
        EXPECT_FALSE(scope.panel().picmeasure.dimmed());
    }

    void expect_old(const std::string& text) {
        EXPECT_EQ(line(), text);
        EXPECT_TRUE(scope.panel().picture1.dimmed());
        EXPECT_TRUE(scope.panel().picmeasure.dimmed());
    }
};

TEST(NoData, IsToldFromOneSecondOnWhateverKeepsTheBlocksAway) {
    const std::function<void(simulator::Faults&)> breaks[] = {
        [](simulator::Faults& faults) { faults.no_power = true; },
        [](simulator::Faults& faults) { faults.lose_every = 100; },
        [](simulator::Faults& faults) { faults.block_bytes = 700; }};
    for (const auto& break_it : breaks) {
        SweepingOnCh1 program;
        // The block on its way still arrives.
        break_it(program.simulation.bench().faults);
        program.simulation.notice_faults();
        program.ticks(9);
        EXPECT_EQ(program.line(), "");
        program.ticks(2);
        program.expect_old("No data for 1 s");
        EXPECT_EQ(program.status(), "Running");
        program.ticks(110);
        program.expect_old("No data for 12 s");
        program.simulation.bench().faults = {};
        program.ticks(6);
        program.expect_fresh();
        EXPECT_EQ(program.status(), "Running");
    }
}

TEST(NoData, OfPointsIsToldAfterTwoPassesAndNotLessThanASecond) {
    SweepingOnCh1 program("100us/div");
    const auto begun = program.clock.now();
    program.ticks(1);
    const auto pass = program.clock.now() - begun;
    program.simulation.bench().faults.no_power = true;
    const auto silent_from = program.clock.now();
    while (program.line().empty() && program.clock.now() - silent_from < 10 * pass) {
        program.ticks(1);
    }
    const auto told = program.clock.now() - silent_from;
    // A tick that waits in vain for a point lasts a second.
    constexpr std::chrono::milliseconds tick{1200};
    EXPECT_GE(told, std::max<std::chrono::nanoseconds>(std::chrono::seconds(1), 2 * pass) -
                        std::chrono::milliseconds(200));
    EXPECT_LE(told, std::max<std::chrono::nanoseconds>(std::chrono::seconds(1), 2 * pass) + tick);
    EXPECT_TRUE(program.scope.panel().picmeasure.dimmed());
    program.simulation.bench().faults = {};
    program.ticks(4);
    program.expect_fresh();
}

TEST(NoData, StopEndsTheWaiting) {
    SweepingOnCh1 program;
    program.simulation.bench().faults.no_power = true;
    program.ticks(40);
    EXPECT_EQ(program.line(), "No data for 3 s");
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(1);
    program.expect_fresh();
}

TEST(NoData, GoesOnCountingUnderABox) {
    SweepingOnCh1 program;
    program.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    std::string under_box;
    program.boxes.on_show = [&](const Message&) {
        program.ticks(20);
        under_box = program.line();
    };
    program.boxes.answers = {MessageAnswer::extra};
    program.choose(program.channel(ch1).vdiv, "20mV");
    EXPECT_EQ(under_box, "No data for 5 s"); // three attempts of a second, two seconds of the box
}

TEST(NoData, WithBothChannelsOffNoneAreAwaited) {
    SweepingOnCh1 program("10us/div");
    for (const Channel channel : both_channels) {
        program.scope.act([&] { program.channel(channel).enable.set_checked(false); });
    }
    program.ticks(30);
    program.expect_fresh();
}

TEST(NoData, ResultsOfBeforeAreOldWhileThePlotWaitsForATrigger) {
    for (const char* const time_div : {"20ns/div", "10us/div"}) {
        SweepingOnCh1 program(time_div);
        program.simulation.bench().faults.no_trigger = true;
        program.ticks(30);
        ASSERT_EQ(program.status(), "Waiting For TRIGGER");
        EXPECT_EQ(program.line(), "");
        EXPECT_FALSE(program.scope.panel().picture1.dimmed());
        EXPECT_TRUE(program.scope.panel().picmeasure.dimmed());
        program.simulation.bench().faults = {};
        program.ticks(8);
        program.expect_fresh();
    }
}

TEST(NoData, SilenceIsToldToWhoWaitedForATrigger) {
    SweepingOnCh1 program;
    program.simulation.bench().faults.no_trigger = true;
    program.ticks(50);
    program.simulation.bench().faults.no_power = true;
    program.ticks(30);
    EXPECT_EQ(program.line().substr(0, 12), "No data for ");
    EXPECT_EQ(program.status(), "Waiting For TRIGGER");
}

/// Only the window dims: what is saved and copied is the picture as it is.
TEST(NoData, PictureAndSnapshotStayAsTheyAre) {
    SweepingOnCh1 program;
    program.simulation.bench().faults.no_power = true;
    program.simulation.notice_faults();
    program.ticks(5);
    const auto pixels = [&program] {
        const auto shown = program.scope.picture().surface().pixels();
        return std::vector<Pixel>(shown.begin(), shown.end());
    };
    const auto picture_before = pixels();
    const auto snapshot = [&program] {
        program.scope.act([&] { program.scope.panel().snapshot.click(); });
        return program.files.files[program.files.written.back()];
    };
    const std::string before = snapshot();
    program.ticks(30);
    program.expect_old(program.line());
    EXPECT_EQ(pixels(), picture_before);
    EXPECT_EQ(snapshot(), before);
}

} // namespace
} // namespace kv408
