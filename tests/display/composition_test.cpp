// The picture is composed by shortcuts: runs instead of lines, changed columns instead of all.
// Whatever happens to it, its pixels must be those of the plain way.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "plain_picture.h"
#include "support/series_stride.h"

namespace kv408::test {
namespace {

/// Does the same things to a picture and to its plain counterpart.
class Composition : public testing::TestWithParam<unsigned> {
protected:
    Composition() {
        refresh(ch1, 0);
        refresh(ch2, 0);
    }

    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }
    bool chance(int percent) { return random(1, 100) <= percent; }

    void refresh(Channel channel, int index) {
        scene_.picture.refresh(channel, index);
        plain_.refresh(channel, index);
    }

    void shift() {
        scene_.picture.movepersistance();
        plain_.shift();
    }

    void set_newest_point(int index) {
        scene_.picture.set_newest_point(index);
        plain_.set_newest_point(index);
    }

    void set_depth(int depth) {
        scene_.settings.persisttime = static_cast<std::int16_t>(depth);
        scene_.picture.calcPersistColors();
        plain_.set_depth(depth);
    }

    /// Samples of `channel` from point `first` to `last`: noise of a height of its own.
    void sample(Channel channel, int first, int last) {
        const int height = chance(30) ? 600 : random(0, 40);
        const int centre = random(0, 512);
        for (int index = first; index <= last; ++index) {
            scene_.set_row(channel, index, centre + random(-height, height));
        }
    }

    void sweep(Channel channel, int first, int last) {
        sample(channel, first, last);
        for (int index = first; index <= last; ++index) {
            refresh(channel, index);
        }
    }

    /// A history with a sweep of its own in each generation.
    void fill_history() {
        for (int generation = 0; generation <= plot::generations; ++generation) {
            sweep(ch1, 1, 640);
            sweep(ch2, 1, 640);
            shift();
        }
        sweep(ch1, 1, 640);
        sweep(ch2, 1, 640);
    }

    void set_colours() {
        // Black on the last of them fades past the background: a generation in the middle of the
        // history has its colour.
        constexpr std::array choice{rgb(255, 255, 0), rgb(128, 220, 255), rgb(0, 0, 0),
                                    rgb(255, 255, 255), rgb(4, 4, 4)};
        const auto any = [&] { return choice[static_cast<std::size_t>(random(0, 4))]; };
        scene_.colours.background = any();
        scene_.colours.ch1 = any();
        scene_.colours.ch2 = any();
        set_depth(random(0, 9));
        scene_.picture.makegrid();
    }

    void set_panel() {
        scene_.panel.eyeon.set_checked(chance(40));
        scene_.panel.persist.set_checked(chance(70));
        scene_.panel.gridenable.set_checked(chance(90));
        scene_.picture.makegrid();
        for (ChannelControls& controls : scene_.panel.channel) {
            controls.enable.set_checked(chance(90));
        }
        scene_.acquisition.ready[1] = chance(90);
        scene_.acquisition.pointmode = chance(50);
        set_newest_point(random(1, 640));
    }

    void set_overlays() {
        scene_.panel.trigsource.set_entries({"TRIG1"});
        scene_.panel.trigsource.set_index(0);
        scene_.acquisition.holdoff = chance(50);
        scene_.trigger.saved_trigpos[0] = static_cast<std::int16_t>(random(1800, 2300));
        scene_.cursors.cursormode = static_cast<std::int16_t>(random(0, 6));
        for (const std::size_t cursor : {0U, 1U}) {
            scene_.cursors.vpos[cursor] = static_cast<std::int16_t>(random(0, 512));
            scene_.cursors.hpos[cursor] = static_cast<std::int16_t>(random(0, 640));
        }
        scene_.panel.check1.set_checked(true);
        scene_.panel.measurement[0].annotate.put_checked(chance(70));
        for (const Channel channel : both_channels) {
            const bool lines = chance(50);
            scene_.marks.kind[0][channel] = lines ? MarkKind::lines : MarkKind::dots;
            for (AnnotationGeometry& mark : scene_.marks.mark[channel]) {
                const int x = random(-8, 640);
                const int y = random(-8, 520);
                mark = lines ? AnnotationGeometry{{{1, y}, {639, y}}}
                             : AnnotationGeometry{{{x, y}, {x + 8, y + 8}}};
            }
        }
    }

    void set_factor(double factor) {
        plain_.set_factor(factor);
        scene_.picture.set_scale(PlotScale(factor));
    }

    /// Whether the picture is what the plain way gives, or the first place where they differ.
    testing::AssertionResult same(const Surface& picture, unsigned flags) {
        const Surface expected = plain_.draw(flags);
        if (picture.width() != expected.width() || picture.height() != expected.height()) {
            return testing::AssertionFailure() << "the sizes differ";
        }
        const auto [differs, other] = std::mismatch(
            picture.pixels().begin(), picture.pixels().end(), expected.pixels().begin());
        if (differs == picture.pixels().end()) {
            return testing::AssertionSuccess();
        }
        const auto place = differs - picture.pixels().begin();
        return testing::AssertionFailure()
               << "at " << place % picture.width() << ", " << place / picture.width() << ": "
               << std::hex << *differs << " instead of " << *other;
    }

    /// Draws both and tells the first place where they differ, on the picture or in a window that
    /// paints what it is told has changed.
    testing::AssertionResult same_after(unsigned flags) {
        scene_.picture.draw(flags);
        const Surface& composed = scene_.picture.surface();
        if (window_.width() != composed.width()) {
            window_ = Surface(composed.width(), composed.height());
        }
        for (const Rectangle& area : scene_.picture.take_changed()) {
            for (int y = area.top; y < area.bottom; ++y) {
                const auto from = composed.row(y);
                std::copy(from.begin() + area.left, from.begin() + area.right,
                          window_.row(y).begin() + area.left);
            }
        }
        const testing::AssertionResult result = same(composed, flags);
        return result ? same(window_, flags) : result;
    }

    unsigned any_flags() {
        constexpr std::array<unsigned, 6> choice{1, 2, 3, 255, 255, 255};
        return choice[static_cast<std::size_t>(random(0, 5))];
    }

    std::mt19937 random_{GetParam()};
    PictureScene scene_;
    PlainPicture plain_{scene_};
    Surface window_{1, 1};
    /// Points of a pass that are tried, fewer under the sanitizers, where each takes a fifth of a
    /// second.
    const int steps_ = series_stride == 1 ? 60 : 15;
};

TEST_P(Composition, of_everything_equals_the_plain_picture) {
    fill_history();
    for (int round = 0; round < 12; ++round) {
        set_panel();
        set_colours();
        sweep(random(0, 1) == 0 ? ch1 : ch2, 1, 640);
        shift();
        ASSERT_TRUE(same_after(any_flags())) << "round " << round;
    }
}

TEST_P(Composition, of_each_depth_equals_the_plain_picture) {
    fill_history();
    scene_.panel.persist.set_checked(true);
    for (int depth = 0; depth <= 9; ++depth) {
        set_depth(depth);
        ASSERT_TRUE(same_after(draw_flags::all)) << "depth " << depth;
    }
}

TEST_P(Composition, of_shifted_traces_equals_the_plain_picture) {
    fill_history();
    scene_.panel.persist.set_checked(true);
    for (int round = 0; round < 6; ++round) {
        scene_.panel.eyeon.set_checked(chance(50));
        for (const Channel channel : both_channels) {
            scene_.channels[static_cast<std::size_t>(channel)].delaypts = random(-800, 800);
            scene_.channels[static_cast<std::size_t>(channel)].shown_delaypts = random(-100, 100);
            if (chance(50)) {
                refresh(channel, 0); // the history too: all of one shift
            }
            sweep(channel, 1, 640); // else the generations differ in their shift
        }
        scene_.acquisition.pointmode = chance(50);
        set_newest_point(random(1, 640));
        ASSERT_TRUE(same_after(draw_flags::all)) << "round " << round;
        shift();
    }
}

TEST_P(Composition, of_single_points_of_a_pass_equals_the_plain_picture) {
    fill_history();
    set_panel();
    scene_.acquisition.pointmode = true;
    ASSERT_TRUE(same_after(draw_flags::all));
    int index = random(1, 600);
    for (int step = 0; step < steps_; ++step) {
        sample(ch1, index, index);
        sample(ch2, index, index);
        refresh(ch1, index);
        if (chance(70)) {
            refresh(ch2, index);
        }
        set_newest_point(index);
        ASSERT_TRUE(same_after(draw_flags::all)) << "step " << step;
        index = chance(90) ? index % 640 + 1 : random(1, 640);
    }
}

TEST_P(Composition, between_single_points_follows_everything_else) {
    fill_history();
    scene_.acquisition.pointmode = true;
    for (int step = 0; step < steps_; ++step) {
        const int index = random(1, 640);
        const Channel channel = random(0, 1) == 0 ? ch1 : ch2;
        sample(channel, index, index);
        refresh(channel, index);
        set_newest_point(index);
        switch (random(0, 9)) {
        case 0:
            set_panel();
            break;
        case 1:
            set_colours();
            break;
        case 2:
            shift();
            break;
        case 3:
            refresh(channel, 0);
            break;
        case 4: // a delay that moves by a point in the middle of a pass
            scene_.channels[static_cast<std::size_t>(channel)].delaypts = random(0, 2);
            break;
        default:
            break;
        }
        ASSERT_TRUE(same_after(chance(80) ? 255U : any_flags())) << "step " << step;
    }
}

/// Random contents at random scales, among them those at which a unit is just not a pixel more. A
/// window shows a whole number of pixels for the plot's 641 columns.
TEST_P(Composition, at_any_scale_equals_the_plain_picture) {
    fill_history();
    for (const double factor :
         {644.0 / 641, 722.0 / 641, 1.25, 1.49, 1.5, 1078.0 / 641, 1.9, 2.0, 1465.0 / 641,
          random(11, 29) / 10.0, random(642, 704) / 641.0, random(705, 1923) / 641.0}) {
        set_factor(factor);
        for (int round = 0; round < 2; ++round) {
            set_panel();
            set_colours();
            set_overlays();
            const Channel channel = random(0, 1) == 0 ? ch1 : ch2;
            scene_.channels[static_cast<std::size_t>(channel)].scale =
                chance(50) ? 1.0 : random(10, 300) / 128.0;
            sweep(channel, 1, 640);
            shift();
            ASSERT_TRUE(same_after(any_flags())) << "round " << round << " at " << factor;
        }
    }
}

TEST_P(Composition, at_large_scales_equals_the_plain_picture) {
    fill_history();
    set_panel();
    set_overlays();
    constexpr std::array factors{3.4, 4.7, 5.0, 8.0};
    for (const double factor : {factors[GetParam() % factors.size()], random(1924, 5128) / 641.0}) {
        set_factor(factor);
        for (const bool dots : {false, true}) {
            scene_.panel.eyeon.set_checked(dots);
            ASSERT_TRUE(same_after(draw_flags::all)) << dots << " at " << factor;
        }
    }
}

TEST_P(Composition, of_single_points_at_any_scale_equals_the_plain_picture) {
    fill_history();
    set_panel();
    set_factor(random(11, 22) / 10.0);
    scene_.acquisition.pointmode = true;
    for (int step = 0; step < 12; ++step) {
        const int index = random(1, 640);
        sample(ch1, index, index);
        sample(ch2, index, index);
        refresh(ch1, index);
        refresh(ch2, index);
        set_newest_point(index);
        if (chance(10)) { // a delay that moves by a point in the middle of a pass
            scene_.channels[0].delaypts = random(0, 2);
        }
        ASSERT_TRUE(same_after(draw_flags::all)) << "step " << step;
    }
}

/// On a plot that is nearly bare, so that nothing else covers where they were.
TEST_P(Composition, of_what_moves_leaves_nothing_behind) {
    for (const double factor : {1.0, 1.9, 3.4}) {
        set_factor(factor);
        for (int round = 0; round < 10; ++round) {
            const int row = random(0, 512);
            for (int index = 1; index <= plot::last_point; ++index) {
                scene_.set_row(ch1, index, row);
                refresh(ch1, index);
            }
            scene_.panel.eyeon.set_checked(chance(50));
            set_overlays();
            ASSERT_TRUE(same_after(draw_flags::all)) << factor << ", round " << round;
        }
    }
}

/// The persistence is that of the same sweeps, whatever sizes the window had meanwhile.
TEST_P(Composition, follows_a_change_of_the_scale_with_all_it_shows) {
    fill_history();
    scene_.panel.persist.set_checked(true);
    set_overlays();
    scene_.picture.draw(draw_flags::all);
    for (const double factor : {2.3, 1.1, 1.0}) {
        Columns told;
        scene_.picture.on_drawn([&told](Columns columns) { told = columns; });
        set_factor(factor);
        EXPECT_EQ(told, (Columns{0, scene_.picture.surface().width()}));
        ASSERT_TRUE(same(scene_.picture.surface(), draw_flags::all)) << factor;
    }
}

TEST_P(Composition, gives_the_picture_of_natural_size_at_any_scale) {
    fill_history();
    set_panel();
    set_overlays();
    scene_.picture.draw(draw_flags::all);
    const Surface natural = scene_.picture.surface();
    set_factor(1.9);
    const Surface shown = scene_.picture.surface();
    const Surface again = scene_.picture.at_natural_size();
    EXPECT_TRUE(std::ranges::equal(again.pixels(), natural.pixels()));
    EXPECT_TRUE(std::ranges::equal(scene_.picture.surface().pixels(), shown.pixels()));
}

TEST_P(Composition, of_partly_mapped_points_equals_the_plain_picture) {
    PictureScene scene;
    Picture picture({scene.panel, scene.samples, scene.channels, scene.acquisition, scene.program,
                     scene.colours, scene.cursors, scene.trigger, scene.settings, scene.marks});
    PlainPicture plain(scene);
    picture.makegrid();
    scene.panel.persist.set_checked(chance(50));
    scene.panel.eyeon.set_checked(chance(50));
    scene.acquisition.pointmode = chance(50);
    for (int step = 0; step < 30; ++step) {
        const int index = step < 20 ? random(1, 640) : step;
        for (const Channel channel : both_channels) {
            scene.set_row(channel, index, random(-10, 520));
            picture.refresh(channel, index);
            plain.refresh(channel, index);
        }
        picture.set_newest_point(index);
        plain.set_newest_point(index);
        if (chance(20)) {
            picture.movepersistance();
            plain.shift();
        }
        picture.draw(draw_flags::all);
        const Surface expected = plain.draw(draw_flags::all);
        const auto pixels = picture.surface().pixels();
        ASSERT_TRUE(std::equal(pixels.begin(), pixels.end(), expected.pixels().begin()))
            << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Composition, testing::Range(1U, series_stride == 1 ? 5U : 2U));

} // namespace
} // namespace kv408::test
