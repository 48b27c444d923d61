#include "export/references.h"

#include <gtest/gtest.h>

#include "export/csv.h"
#include "export/sample_sweep.h"

namespace kv408 {
namespace {

/// The screen at 20ns/div and 50 mV/div, its zero line in the middle.
constexpr ReferenceScreen usual = {
    .mv_per_division = 50.0, .zero_row = 256.0, .columns_per_second = 3.2e9, .first_time = 0.0};

/// Points 0, 10 ns, 20 ns ... of these millivolts.
ExportedChannel curve(std::vector<double> mv) {
    ExportedChannel channel;
    channel.interval = 10000.0;
    channel.mv = std::move(mv);
    return channel;
}

TEST(Reference, LiesWhereALiveTraceOfItsSignalWould) {
    // 50 mV are one division of 64 rows up; 10 ns are half a division of 64 columns.
    const auto points = on_screen(curve({0.0, 50.0, -100.0}), usual);
    ASSERT_EQ(points.size(), 3U);
    EXPECT_DOUBLE_EQ(points[0].column, 1.0);
    EXPECT_DOUBLE_EQ(points[0].row, 256.0);
    EXPECT_DOUBLE_EQ(points[1].column, 33.0);
    EXPECT_DOUBLE_EQ(points[1].row, 192.0);
    EXPECT_DOUBLE_EQ(points[2].row, 384.0);
}

TEST(Reference, FollowsThePanelInItsOwnUnits) {
    ReferenceScreen screen = usual;
    screen.mv_per_division = 100.0;
    screen.zero_row = 96.0;
    screen.columns_per_second = 6.4e9; // 10ns/div
    screen.first_time = 5000.0;        // delayed by half a division
    const auto points = on_screen(curve({0.0, 50.0}), screen);
    EXPECT_DOUBLE_EQ(points[0].column, -31.0);
    EXPECT_DOUBLE_EQ(points[0].row, 96.0);
    EXPECT_DOUBLE_EQ(points[1].column, 33.0);
    EXPECT_DOUBLE_EQ(points[1].row, 64.0);
}

TEST(Reference, OfAPassHasItsFirstPointInTheFirstColumn) {
    const ExportedSweep pass = exported(pass_sweep());
    ReferenceScreen screen = usual;
    screen.columns_per_second = 128e6;
    screen.first_time = pass.channels[0].first_time;
    const auto points = on_screen(pass.channels[0], screen);
    EXPECT_DOUBLE_EQ(points.front().column, 1.0);
    // 639 steps of 7812 ps, each a bit short of a column of 7812.5 ps.
    EXPECT_NEAR(points.back().column, 639.96, 0.001);
}

TEST(References, AreKeptFromAChannelShownAndHidden) {
    References references;
    EXPECT_FALSE(references.at(2));
    EXPECT_TRUE(references.keep(2, exported(block_sweep()), "CH2"));
    ASSERT_TRUE(references.at(2));
    EXPECT_EQ(references.at(2)->name, "R3 CH2 sweep 7");
    EXPECT_EQ(references.at(2)->curve, exported(block_sweep()).channels[1]);
    EXPECT_DOUBLE_EQ(references.at(2)->time_per_div, 20000.0);
    EXPECT_TRUE(references.at(2)->shown);
    references.toggle(2);
    EXPECT_FALSE(references.at(2)->shown);
    references.toggle(2);
    EXPECT_TRUE(references.at(2)->shown);
    references.toggle(0); // empty
    EXPECT_FALSE(references.at(0));
    EXPECT_FALSE(references.keep(2, exported(pass_sweep()), "CH1")) << "was off";
    EXPECT_EQ(references.at(2)->name, "R3 CH2 sweep 7");
    references.clear(2);
    EXPECT_FALSE(references.at(2));
}

TEST(References, AreLoadedFromAFile) {
    References references;
    EXPECT_EQ(references.load(0, "curve.csv", csv_text(exported(block_sweep(64.0)))), "");
    EXPECT_EQ(references.at(0)->name, "curve.csv");
    EXPECT_EQ(references.at(0)->curve.name, "CH1");
    EXPECT_EQ(references.at(0)->curve.v_per_div, 0.1);
    EXPECT_EQ(references.at(0)->time_per_div, 20000.0);
    EXPECT_EQ(references.load(0, "letter.txt", "Dear Sir"),
              "line 1: no headings of ours: Dear Sir");
    EXPECT_EQ(references.at(0)->name, "curve.csv");
}

} // namespace
} // namespace kv408
