#include "display/trace.h"

#include <gtest/gtest.h>

#include "sketch.h"

namespace kv408::test {
namespace {

ChannelState row_a_code() {
    ChannelState channel;
    channel.scale = 1.0;
    return channel;
}

TEST(Mapping, puts_the_offset_code_on_the_centre_row) {
    EXPECT_EQ(map_sample(row_a_code(), 2048, 5), (TracePoint{5, 256}));
    ChannelState channel = row_a_code();
    channel.offsetdac = 1448;
    EXPECT_EQ(map_sample(channel, 1448, 5), (TracePoint{5, 256}));
    channel.offsetdac = -100; // as a position at the very bottom can give
    EXPECT_EQ(map_sample(channel, 0, 5), (TracePoint{5, 156}));
}

TEST(Mapping, puts_higher_codes_higher_and_holds_them_on_screen) {
    EXPECT_EQ(map_sample(row_a_code(), 2050, 1).y, 254);
    EXPECT_EQ(map_sample(row_a_code(), 2303, 1).y, 1);
    EXPECT_EQ(map_sample(row_a_code(), 2304, 1).y, 1);
    EXPECT_EQ(map_sample(row_a_code(), 65535, 1).y, 1);
    EXPECT_EQ(map_sample(row_a_code(), 1793, 1).y, 511);
    EXPECT_EQ(map_sample(row_a_code(), 1792, 1).y, 511);
    EXPECT_EQ(map_sample(row_a_code(), 0, 1).y, 511);
}

// Half a row a code: codes one apart lie on halves. They are rounded where they are drawn.
TEST(Mapping, keeps_fractions_of_a_row) {
    ChannelState channel = row_a_code();
    channel.scale = 0.5;
    EXPECT_EQ(map_sample(channel, 2047, 1).y, 256.5);
    EXPECT_EQ(map_sample(channel, 2049, 1).y, 255.5);
}

TEST(PlotScale, at_natural_size_rounds_halves_to_even_rows) {
    const PlotScale scale;
    EXPECT_EQ(scale.width(), 641);
    EXPECT_EQ(scale.height(), 513);
    EXPECT_EQ(scale.line_width(), 1);
    EXPECT_EQ(scale.place(256.5), 256);
    EXPECT_EQ(scale.place(255.5), 256);
    EXPECT_EQ(scale.place(257.5), 258);
    EXPECT_EQ(scale.place(lowest), lowest);
    EXPECT_EQ(scale.place(highest), highest);
}

TEST(PlotScale, puts_a_unit_to_the_pixel_of_its_middle) {
    const PlotScale scale(1.9);
    EXPECT_EQ(scale.width(), 1218); // 1217.9
    EXPECT_EQ(scale.height(), 975); // 974.7
    EXPECT_EQ(scale.line_width(), 2);
    EXPECT_EQ(scale.place(0), 0);      // 0.95
    EXPECT_EQ(scale.place(1), 2);      // 2.85
    EXPECT_EQ(scale.place(640), 1216); // 1216.95
    EXPECT_EQ(scale.place(1.25), 3);   // 3.325
    EXPECT_EQ(PlotScale(0.3).factor(), 1.0);
    EXPECT_EQ(PlotScale(9.0).factor(), 8.0);
}

TEST(Mapping, doubles_with_the_factor_of_the_trigger_input) {
    ChannelState channel = row_a_code();
    channel.vtfactor = 2.0;
    EXPECT_EQ(map_sample(channel, 2058, 1).y, 236);
}

TEST(Mapping, shifts_by_the_change_of_the_delay_since_the_data_was_taken) {
    ChannelState channel = row_a_code();
    channel.delaypts = 30;
    channel.shown_delaypts = 12;
    EXPECT_EQ(map_sample(channel, 2048, 100).x, 82);
    channel.delaypts = 2147483647;
    channel.shown_delaypts = -2147483647;
    EXPECT_EQ(map_sample(channel, 2048, 100).x, -2147483647 - 1);
}

struct OneTrace : testing::Test {
    void set_row(int index, int row) {
        samples.raw[static_cast<std::size_t>(index)] = static_cast<std::uint16_t>(2304 - row);
    }

    ChannelState channel = row_a_code();
    SampleBuffer samples;
    Trace trace;
};

TEST_F(OneTrace, index_0_maps_every_drawn_point_and_resets_the_history) {
    for (int index = 0; index < plot::points; ++index) {
        set_row(index, 1 + index % 500);
    }
    EXPECT_EQ(trace.map(channel, samples, 0), (Columns{0, 641}));
    EXPECT_EQ(trace.current().point(0), (TracePoint{0, 0}))
        << "point 0 is not drawn and not mapped";
    EXPECT_EQ(trace.current().point(1), (TracePoint{1, 2}));
    EXPECT_EQ(trace.current().point(639), (TracePoint{639, 140}));
    EXPECT_EQ(trace.current().point(640), (TracePoint{0, 0}));
    for (int generation = 0; generation < plot::generations; ++generation) {
        EXPECT_EQ(trace.history(generation).point(1), (TracePoint{1, 2}));
        EXPECT_EQ(trace.history(generation).point(639), (TracePoint{639, 140}));
    }
}

TEST_F(OneTrace, another_index_maps_that_point_of_the_current_trace_alone) {
    trace.map(channel, samples, 0);
    set_row(7, 100);
    set_row(8, 200);
    EXPECT_EQ(trace.map(channel, samples, 7), (Columns{6, 9}));
    EXPECT_EQ(trace.current().point(7), (TracePoint{7, 100}));
    EXPECT_EQ(trace.current().point(8), (TracePoint{8, 511}));
    EXPECT_EQ(trace.history(0).point(7), (TracePoint{7, 511}));
    set_row(640, 30);
    trace.map(channel, samples, 640);
    EXPECT_EQ(trace.current().point(640), (TracePoint{640, 30}));
}

TEST_F(OneTrace, indices_outside_0_to_640_change_nothing) {
    trace.map(channel, samples, 0);
    for (int index = 0; index < plot::points; ++index) {
        set_row(index, 100);
    }
    for (const int index : {-32768, -1, 641, 650, 32767}) {
        EXPECT_TRUE(trace.map(channel, samples, index).empty());
    }
    for (int index = 1; index <= 639; ++index) {
        EXPECT_EQ(trace.current().point(index).y, 511);
    }
}

TEST_F(OneTrace, a_point_that_stays_changes_no_column) {
    trace.map(channel, samples, 0);
    EXPECT_TRUE(trace.map(channel, samples, 7).empty());
}

TEST_F(OneTrace, a_shift_moves_every_generation_on_by_one) {
    for (int sweep = 0; sweep < 12; ++sweep) {
        set_row(1, 100 + sweep);
        set_row(639, 200 + sweep);
        trace.map(channel, samples, 1);
        trace.map(channel, samples, 639);
        trace.shift();
    }
    for (int generation = 0; generation < plot::generations; ++generation) {
        EXPECT_EQ(trace.history(generation).point(1).y, 111 - generation);
        EXPECT_EQ(trace.history(generation).point(639).y, 211 - generation);
    }
}

void set_point(Generation& generation, int index, int x, int y) {
    const TracePoint point{x, static_cast<double>(y)};
    generation.set_points(index, std::span(&point, 1));
    generation.settle();
}

/// The runs of a line through rows `rows` from the first drawn point on; flat afterwards.
std::vector<RowRun> runs_of(const std::vector<int>& rows) {
    Generation generation;
    for (int index = plot::first_point; index <= plot::last_point; ++index) {
        const auto slot = static_cast<std::size_t>(index - plot::first_point);
        set_point(generation, index, index, rows[std::min(slot, rows.size() - 1)]);
    }
    EXPECT_TRUE(generation.is_uniform());
    const auto runs = generation.runs().subspan(plot::first_point, plot::last_point);
    return {runs.begin(), runs.end()};
}

TEST(Generation, of_a_flat_line_covers_a_pixel_a_column_but_the_last) {
    const auto runs = runs_of({256});
    ASSERT_EQ(runs.size(), 639U);
    EXPECT_EQ(runs.front(), (RowRun{256, 257}));
    EXPECT_EQ(runs[637], (RowRun{256, 257}));
    EXPECT_EQ(runs[638], RowRun{});
}

// The line ends in a step: the last point's own row is left out, the half of the step is not.
TEST(Generation, leaves_the_last_pixel_of_the_line_out) {
    Generation generation;
    for (int index = plot::first_point; index <= plot::last_point; ++index) {
        set_point(generation, index, index, 511);
    }
    EXPECT_EQ(generation.runs()[639], RowRun{});
    set_point(generation, 638, 638, 505); // 505..508 left, 509 and 510 right
    EXPECT_EQ(generation.runs()[639], (RowRun{509, 511}));
    set_point(generation, 638, 638, 510);
    EXPECT_EQ(generation.runs()[639], RowRun{});
    set_point(generation, 639, 639, 504); // 510..507 left, 506 and 505 right
    EXPECT_EQ(generation.runs()[639], (RowRun{505, 507}));
}

// 10 down to 14: rows 10, 11 and the middle 12 left, 13 and 14 right. 14 up to 9: 14, 13, 12 left,
// 11 and 10 right. 9 to 10: one pixel each.
TEST(Generation, divides_a_rise_between_two_columns) {
    const auto runs = runs_of({10, 14, 9, 10});
    EXPECT_EQ(runs[0], (RowRun{10, 13}));
    EXPECT_EQ(runs[1], (RowRun{12, 15}));
    EXPECT_EQ(runs[2], (RowRun{9, 12}));
    EXPECT_EQ(runs[3], (RowRun{10, 11}));
}

TEST(Generation, is_uniform_only_while_its_points_lie_column_by_column) {
    Generation generation;
    EXPECT_FALSE(generation.is_uniform());
    for (int index = plot::first_point; index <= plot::last_point; ++index) {
        EXPECT_FALSE(generation.is_uniform());
        set_point(generation, index, index - 50, 10);
    }
    EXPECT_TRUE(generation.is_uniform());
    EXPECT_EQ(generation.columns(), (Columns{-49, 590}));
    set_point(generation, 0, 900, 10);
    set_point(generation, 640, 900, 10);
    EXPECT_TRUE(generation.is_uniform()) << "points 0 and 640 are not drawn";
    set_point(generation, 300, 251, 10);
    EXPECT_FALSE(generation.is_uniform());
    set_point(generation, 300, 250, 99);
    EXPECT_TRUE(generation.is_uniform());
}

} // namespace
} // namespace kv408::test
