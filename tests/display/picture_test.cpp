#include <gtest/gtest.h>

#include <algorithm>

#include "picture_scene.h"

namespace kv408::test {
namespace {

constexpr Pixel background = pixel_of(rgb(0, 0, 0));
constexpr Pixel grid = pixel_of(rgb(92, 92, 92));

struct PictureTest : testing::Test, PictureScene {
    PictureTest() {
        set_flat(ch1, 100);
        set_flat(ch2, 200);
    }

    /// Number of pixels of the picture with the colour `pixel`.
    [[nodiscard]] auto count(Pixel pixel) {
        const auto pixels = picture.surface().pixels();
        return std::count(pixels.begin(), pixels.end(), pixel);
    }
};

// Points 1..639, of which a line leaves the last pixel out.
TEST_F(PictureTest, shows_both_traces_on_the_grid) {
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 638);
    EXPECT_EQ(count(blue), 638);
    EXPECT_EQ(at(0, 100), grid);
    EXPECT_EQ(at(1, 100), yellow);
    EXPECT_EQ(at(638, 100), yellow);
    EXPECT_EQ(at(639, 100), background);
    EXPECT_EQ(at(1, 200), blue);
    EXPECT_EQ(at(64, 64), grid);
}

TEST_F(PictureTest, shows_a_pixel_a_point_in_dot_mode) {
    panel.eyeon.set_checked(true);
    set_row(ch1, 50, 400);
    picture.refreshCH1(50);
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 639);
    EXPECT_EQ(at(639, 100), yellow);
    EXPECT_EQ(at(50, 400), yellow);
    EXPECT_EQ(at(50, 399), background);
}

TEST_F(PictureTest, has_ch1_on_top) {
    set_flat(ch2, 100);
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 638);
    EXPECT_EQ(count(blue), 0);
}

TEST_F(PictureTest, shows_the_parts_that_the_flags_name_on_a_fresh_grid) {
    picture.draw(draw_flags::all);
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(count(yellow), 638);
    EXPECT_EQ(count(blue), 0);
    picture.draw(draw_flags::ch2);
    EXPECT_EQ(count(yellow), 0);
    EXPECT_EQ(count(blue), 638);
    picture.draw(0);
    EXPECT_EQ(count(yellow) + count(blue), 0);
    EXPECT_EQ(count(grid), 3991);
}

TEST_F(PictureTest, shows_only_enabled_channels) {
    panel.channel[ch1].enable.set_checked(false);
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 0);
    EXPECT_EQ(count(blue), 638);
    panel.channel[ch1].enable.set_checked(true);
    panel.channel[ch2].enable.set_checked(false);
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 638);
    EXPECT_EQ(count(blue), 0);
}

TEST_F(PictureTest, waits_with_ch2_but_not_with_ch1_for_a_whole_sweep) {
    acquisition.ready = {false, false};
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 638);
    EXPECT_EQ(count(blue), 0);
    acquisition.ready = {false, true};
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(blue), 638);
}

TEST_F(PictureTest, has_no_trace_while_the_instrument_waits_for_its_trigger) {
    acquisition.activity = Activity::waiting_for_trigger;
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow) + count(blue), 0);
    EXPECT_EQ(count(grid), 3991);
    // Cursors and labels are drawn all the same.
    cursors.cursormode = 1;
    trigger.saved_trigpos[0] = 2148;
    panel.trigsource.set_entries({"TRIG1"});
    panel.trigsource.set_index(0);
    panel.trlevelmv.set_caption("old");
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow) + count(blue), 0);
    EXPECT_LT(count(grid), 3991);
    EXPECT_NE(panel.trlevelmv.caption(), "old");
    cursors.cursormode = 0;
    acquisition.activity = Activity::running;
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(yellow), 638);
}

TEST_F(PictureTest, leaves_the_labels_before_start_up) {
    panel.channel[0].ofset.set_caption("before");
    program.loaded = false;
    picture.show_labels();
    EXPECT_EQ(panel.channel[0].ofset.caption(), "before");
    program.loaded = true;
    picture.show_labels();
    EXPECT_NE(panel.channel[0].ofset.caption(), "before");
}

TEST_F(PictureTest, stays_as_it_is_before_start_up_and_during_a_set_up) {
    picture.draw(draw_flags::all);
    set_flat(ch1, 300);
    int drawn = 0;
    picture.on_drawn([&drawn](Columns) { ++drawn; });
    for (const char* state : {"startscope", "changes", "changes1"}) {
        acquisition.scopestate = state;
        picture.draw(draw_flags::all);
    }
    acquisition.scopestate = "scope";
    program.loaded = false;
    picture.draw(draw_flags::all);
    EXPECT_EQ(drawn, 0);
    EXPECT_EQ(at(20, 100), yellow);
    EXPECT_EQ(at(20, 300), background);
    program.loaded = true;
    for (const char* state : {"stoped", "idle", "Changes"}) {
        acquisition.scopestate = state;
        set_flat(ch1, 301);
        picture.draw(draw_flags::all);
        EXPECT_EQ(at(20, 301), yellow) << state;
        set_flat(ch1, 300);
        picture.draw(draw_flags::all);
        EXPECT_EQ(at(20, 300), yellow) << state;
    }
}

// While the set-up goes out nothing is drawn, and while only one channel has come: a window whose
// size changes meanwhile, or a copy that is taken, shows what was drawn, not already what comes.
TEST_F(PictureTest, shows_at_another_size_what_was_drawn_last) {
    panel.persist.set_checked(true);
    settings.persisttime = 9;
    picture.calcPersistColors();
    picture.draw(draw_flags::all);
    for (const auto& [state, point] : {std::pair{"changes", 300}, {"scopech2f", 400}}) {
        const int column = 2 * point + 1; // of pixels at twice the size
        picture.set_scale(PlotScale());
        picture.draw(draw_flags::all);
        acquisition.scopestate = state;
        set_row(ch1, point, 60);
        picture.refresh(ch1, point);
        picture.movepersistance();
        picture.set_scale(PlotScale(2.0));
        EXPECT_EQ(at(column, 201), yellow) << state;
        EXPECT_EQ(at(column, 121), background) << state;
        EXPECT_EQ(picture.at_natural_size().at(point, 100), yellow) << state;
        EXPECT_EQ(picture.drawn().traces[1].trace->current().point(point).y, 100.0) << state;
        acquisition.scopestate = "scope";
        picture.draw(draw_flags::all);
        EXPECT_EQ(at(column, 121), yellow) << state;
        set_row(ch1, point, 100);
        picture.refresh(ch1, point);
    }
}

TEST_F(PictureTest, without_the_grid_box_has_the_border_alone) {
    panel.gridenable.set_checked(false);
    picture.makegrid();
    picture.draw(0);
    EXPECT_EQ(count(grid), 2304);
}

TEST_F(PictureTest, shows_the_history_fading_when_persistence_is_on) {
    for (int row = 110; row >= 100; --row) { // generation g ends up on row 101 + g
        for (int index = 1; index <= 639; ++index) {
            set_row(ch1, index, row);
            picture.refreshCH1(index);
        }
        if (row > 100) {
            picture.movepersistance();
        }
    }
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(at(30, 101), background);
    panel.persist.set_checked(true);
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(at(30, 100), yellow);
    EXPECT_EQ(at(30, 101), pixel_of(rgb(192, 192, 0)));
    EXPECT_EQ(at(30, 102), pixel_of(rgb(129, 129, 0)));
    EXPECT_EQ(at(30, 103), pixel_of(rgb(66, 66, 0)));
    EXPECT_EQ(at(30, 104), background);
    EXPECT_EQ(at(30, 109), background);
    settings.persisttime = 99; // held at 9: steps of 25
    picture.calcPersistColors();
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(at(30, 101), pixel_of(rgb(230, 230, 0)));
    EXPECT_EQ(at(30, 109), pixel_of(rgb(30, 30, 0)));
    settings.persisttime = -1; // held at 0
    picture.calcPersistColors();
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(at(30, 101), background);
}

// A generation in the background colour erases the older ones on its trace, not the grid or CH2.
TEST_F(PictureTest, lets_a_trace_in_the_background_colour_hide_only_what_is_below_it_on_its_trace) {
    colours.ch1 = colours.background;
    set_flat(ch2, 100);
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(blue), 638);
    panel.channel[ch2].enable.set_checked(false);
    set_flat(ch1, 64);
    picture.draw(draw_flags::all);
    EXPECT_EQ(count(grid), 3991);
}

// Black on 4, 4, 4 at depth 9 fades by -1 a step: 1, 2, 3, then 4, which is the background, then 5.
TEST_F(PictureTest, lets_a_generation_in_the_background_colour_hide_the_older_ones) {
    colours.ch1 = rgb(0, 0, 0);
    colours.background = rgb(4, 4, 4);
    settings.persisttime = 9;
    picture.calcPersistColors();
    picture.makegrid();
    panel.persist.set_checked(true);
    // Up to column 300 both sweeps lie on row 90.
    const auto sweep = [this](int row) {
        for (int index = 1; index <= 639; ++index) {
            set_row(ch1, index, index <= 300 ? 90 : row);
            picture.refreshCH1(index);
        }
        picture.movepersistance();
    };
    set_flat(ch1, 100);
    for (const int row : {80, 90}) { // become generations 4 and 3
        sweep(row);
    }
    for (int index = 1; index <= 639; ++index) {
        set_row(ch1, index, 110);
        picture.refreshCH1(index);
    }
    for (int younger = 0; younger < 3; ++younger) {
        picture.movepersistance();
    }
    set_flat(ch2, 90);
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(at(500, 80), pixel_of(rgb(5, 5, 5))) << "generation 4 alone";
    EXPECT_EQ(at(200, 90), pixel_of(rgb(4, 4, 4))) << "generation 3 over generation 4";
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(200, 90), blue) << "and through it the other channel";
}

TEST_F(PictureTest, leaves_a_gap_of_19_columns_ahead_of_the_newest_point) {
    acquisition.pointmode = true;
    picture.set_newest_point(300);
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(300, 100), yellow);
    for (int x = 301; x < 320; ++x) {
        EXPECT_EQ(at(x, 100), background) << x;
        EXPECT_EQ(at(x, 200), background) << x;
    }
    EXPECT_EQ(at(320, 100), yellow);
    EXPECT_EQ(at(307, 256), grid) << "the gap shows the grid";
    acquisition.pointmode = false;
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(310, 100), yellow);
}

TEST_F(PictureTest, places_the_gap_at_the_newest_point_of_each_channel) {
    acquisition.pointmode = true;
    channels[ch2].delaypts = 50;
    picture.refreshCH2(0);
    picture.set_newest_point(300);
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(250, 200), blue);
    EXPECT_EQ(at(251, 200), background);
    EXPECT_EQ(at(269, 200), background);
    EXPECT_EQ(at(270, 200), blue);
    EXPECT_EQ(at(301, 100), background);
}

TEST_F(PictureTest, leaves_what_the_plot_holds_of_a_gap_at_its_edges) {
    acquisition.pointmode = true;
    channels[ch2].delaypts = 50;
    picture.refreshCH2(0);
    picture.set_newest_point(40); // at x -10: the gap is -9..9
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(0, 200), grid) << "the border";
    EXPECT_EQ(at(9, 200), background);
    EXPECT_EQ(at(10, 200), blue);
    channels[ch2].delaypts = -50;
    picture.refreshCH2(0);
    picture.set_newest_point(580); // at x 630: the gap is 631..649
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(630, 200), blue);
    EXPECT_EQ(at(631, 200), background);
    EXPECT_EQ(at(640, 200), grid) << "the border";
    picture.set_newest_point(620); // at x 670, beyond the plot
    picture.draw(draw_flags::all);
    EXPECT_EQ(at(639, 200), blue);
    EXPECT_EQ(at(640, 200), blue);
}

TEST_F(PictureTest, tells_its_listener_which_columns_changed) {
    std::vector<Columns> told;
    picture.on_drawn([&told](Columns columns) { told.push_back(columns); });
    picture.draw(draw_flags::all);
    picture.draw(draw_flags::all); // nothing has changed
    set_row(ch1, 40, 101);
    picture.refreshCH1(40);
    picture.draw(draw_flags::all);
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(told, (std::vector<Columns>{{0, 641}, {39, 42}, {0, 641}}));
}

TEST_F(PictureTest, tells_where_it_has_changed_since_it_was_asked) {
    picture.draw(draw_flags::all);
    const auto holds = [](const std::vector<Rectangle>& areas, int x, int y) {
        return std::any_of(areas.begin(), areas.end(), [=](const Rectangle& area) {
            return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
        });
    };
    EXPECT_EQ(picture.take_changed().size(), 17U); // all of it, in rows of 32 pixels
    EXPECT_TRUE(picture.take_changed().empty());
    set_row(ch1, 40, 300);
    picture.refreshCH1(40);
    picture.draw(draw_flags::all);
    const std::vector<Rectangle> changed = picture.take_changed();
    EXPECT_TRUE(holds(changed, 40, 100)); // where the point was
    EXPECT_TRUE(holds(changed, 40, 300)); // where it is
    EXPECT_FALSE(holds(changed, 40, 400));
    EXPECT_FALSE(holds(changed, 100, 100));
}

// Two draws that change different columns, and a third one of which somebody is told.
TEST_F(PictureTest, has_everything_that_was_drawn_while_nobody_listened) {
    picture.draw(draw_flags::all);
    ASSERT_EQ(at(40, 100), yellow);
    picture.on_drawn({});
    for (const int column : {40, 400}) {
        set_row(ch1, column, 130);
        picture.refreshCH1(column);
        picture.draw(draw_flags::all);
    }
    EXPECT_EQ(at(40, 130), yellow);
    EXPECT_EQ(at(400, 130), yellow);
    set_row(ch1, 200, 130);
    picture.refreshCH1(200);
    picture.draw(draw_flags::all);
    Columns told;
    picture.on_drawn([&told](Columns columns) { told = columns; });
    EXPECT_EQ(at(200, 130), yellow);
    picture.draw(draw_flags::ch1);
    EXPECT_EQ(told, (Columns{0, 641}));
    EXPECT_EQ(at(20, 200), background);
    EXPECT_EQ(at(20, 100), yellow);
}

TEST_F(PictureTest, draws_lines_to_points_that_no_sweep_has_reached_yet) {
    Picture fresh({panel, samples, channels, acquisition, program, colours, cursors, trigger,
                   settings, marks});
    fresh.makegrid();
    for (int index = 1; index <= 10; ++index) {
        fresh.refreshCH1(index);
    }
    fresh.draw(draw_flags::ch1);
    EXPECT_EQ(fresh.surface().at(5, 100), yellow);
    // From (10, 100) back to point 11, still at the origin: half way it passes (5, 50).
    EXPECT_EQ(fresh.surface().at(10, 100), yellow);
    EXPECT_EQ(fresh.surface().at(5, 50), yellow);
}

} // namespace
} // namespace kv408::test
