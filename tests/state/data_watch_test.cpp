#include "state/data_watch.h"

#include <gtest/gtest.h>

#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Doing = DataWatch::Doing;

constexpr Doing blocks = {.sweeps = true, .by_points = false};
constexpr Doing points = {.sweeps = true, .by_points = true};
constexpr Doing nothing = {.sweeps = false, .by_points = false};

/// A watch on a virtual clock that has seen a sweep.
struct Watched {
    Watched() {
        watch.look(clock.now(), blocks);
        watch.take_sweep(clock.now());
    }

    /// What is told after `time` more, in seconds; -1 for nothing.
    long long after(milliseconds time, const Doing& doing) {
        clock.advance(time);
        watch.look(clock.now(), doing);
        return watch.silence() ? static_cast<long long>(watch.silence()->count()) : -1;
    }

    /// A pass of points that come every `each`.
    void pass(milliseconds each, int count = 640) {
        watch.begin_pass(clock.now());
        for (int index = 1; index <= count; ++index) {
            clock.advance(each);
            watch.take_point(clock.now(), index);
        }
        if (count == 640) {
            watch.take_sweep(clock.now());
        }
    }

    VirtualClock clock;
    DataWatch watch;
};

TEST(DataWatch, FromOneSecondOnTheWholeSecondsAreTold) {
    const struct {
        milliseconds time;
        long long told;
    } rows[] = {{milliseconds(0), -1},    {milliseconds(999), -1}, {milliseconds(1000), 1},
                {milliseconds(1999), 1},  {milliseconds(2000), 2}, {milliseconds(12345), 12},
                {milliseconds(60000), 60}};
    for (const auto& row : rows) {
        EXPECT_EQ(Watched().after(row.time, blocks), row.told) << row.time.count();
    }
}

TEST(DataWatch, OfPointsFromTheTimeOfTwoPassesOn) {
    const struct {
        int point_ms; ///< time per point
        milliseconds time;
        long long told;
    } rows[] = {
        {0, milliseconds(999), -1},    {0, milliseconds(1000), 1}, // never less than a second
        {1, milliseconds(1279), -1},   {1, milliseconds(1280), 1}, // 640 ms per pass
        {5, milliseconds(6399), -1},   {5, milliseconds(6400), 6}, // 3.2 s a pass
        {30, milliseconds(38399), -1}, {30, milliseconds(38400), 38}};
    for (const auto& row : rows) {
        Watched on;
        on.pass(milliseconds(row.point_ms));
        EXPECT_EQ(on.after(row.time, points), row.told) << row.point_ms << row.time.count();
    }
}

TEST(DataWatch, TheFirstPointsOfAPassTellHowLongItTakes) {
    Watched on;
    on.pass(milliseconds(10), 50); // 6.4 s a pass
    EXPECT_EQ(on.after(milliseconds(12800 - 500 - 1), points), -1);
    EXPECT_EQ(on.after(milliseconds(1), points), 12);
}

TEST(DataWatch, APassThatIsNeverCompleteIsNoData) {
    Watched on;
    for (int pass = 0; pass < 9; ++pass) {
        on.pass(milliseconds(1), 140);
    }
    EXPECT_EQ(on.after(milliseconds(0), points), -1); // 1.26 s of 1.28
    on.pass(milliseconds(1), 140);
    EXPECT_EQ(on.after(milliseconds(0), points), 1);
}

TEST(DataWatch, BlocksHaveNoPassToWaitFor) {
    Watched on;
    on.pass(milliseconds(30));
    EXPECT_EQ(on.after(milliseconds(1000), blocks), 1);
}

TEST(DataWatch, TheNextSweepEndsIt) {
    Watched on;
    EXPECT_EQ(on.after(seconds(12), blocks), 12);
    on.watch.take_sweep(on.clock.now());
    EXPECT_EQ(on.after(milliseconds(0), blocks), -1);
    EXPECT_EQ(on.after(milliseconds(999), blocks), -1);
    EXPECT_EQ(on.after(milliseconds(1), blocks), 1);
}

TEST(DataWatch, AnInstrumentThatWaitsForATriggerIsNotSilent) {
    Watched on;
    for (int answer = 0; answer < 20; ++answer) {
        EXPECT_EQ(on.after(milliseconds(300), blocks), -1);
        on.watch.take_answer(on.clock.now());
    }
    EXPECT_EQ(on.after(milliseconds(1000), blocks), 1);
    on.watch.take_answer(on.clock.now());
    EXPECT_EQ(on.after(milliseconds(0), blocks), -1);
}

TEST(DataWatch, ASetUpGivesTimeButEndsNoSilence) {
    Watched on;
    EXPECT_EQ(on.after(milliseconds(900), blocks), -1);
    on.watch.take_set_up(on.clock.now());
    EXPECT_EQ(on.after(milliseconds(900), blocks), -1);
    EXPECT_EQ(on.after(milliseconds(100), blocks), 1);
    on.watch.take_set_up(on.clock.now());
    EXPECT_EQ(on.after(milliseconds(500), blocks), 1);
    EXPECT_EQ(on.after(milliseconds(500), blocks), 2);
}

TEST(DataWatch, WhereNothingSweepsNothingIsAwaited) {
    Watched on;
    EXPECT_EQ(on.after(seconds(5), blocks), 5);
    EXPECT_EQ(on.after(milliseconds(0), nothing), -1);
    EXPECT_EQ(on.after(seconds(60), nothing), -1);
    EXPECT_EQ(on.after(milliseconds(100), blocks), -1) << "counted from the start on";
    EXPECT_EQ(on.after(milliseconds(999), blocks), -1);
    EXPECT_EQ(on.after(milliseconds(1), blocks), 1);
}

} // namespace
} // namespace kv408
