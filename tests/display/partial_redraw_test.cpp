// A redraw of some parts leaves the pixels of the full redraw wherever nothing of the other parts
// lies over or under them, whatever was drawn before.

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "picture_scene.h"
#include "support/series_stride.h"

namespace kv408::test {
namespace {

class PartialRedraw : public testing::TestWithParam<unsigned> {
protected:
    PartialRedraw() {
        scene_.panel.trigsource.set_entries({"TRIG1", "TRIG2"});
        scene_.panel.persist.set_checked(random(0, 1) == 1);
        scene_.panel.eyeon.set_checked(random(0, 1) == 1);
        scene_.acquisition.pointmode = random(0, 1) == 1;
        scene_.settings.persisttime = 9;
        scene_.picture.calcPersistColors();
        change();
    }

    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }

    /// Another sweep, another place of the overlays.
    void change() {
        for (const Channel channel : both_channels) {
            const int centre = random(20, 490);
            for (int index = 1; index <= 640; ++index) {
                scene_.set_row(channel, index, centre + random(-15, 15));
                scene_.picture.refresh(channel, index);
            }
        }
        scene_.picture.movepersistance();
        scene_.picture.set_newest_point(random(1, 640));
        scene_.cursors.cursormode = static_cast<std::int16_t>(random(1, 6));
        for (std::size_t cursor = 0; cursor < 2; ++cursor) {
            scene_.cursors.vpos[cursor] = static_cast<std::int16_t>(random(0, 512));
            scene_.cursors.hpos[cursor] = static_cast<std::int16_t>(random(0, 640));
        }
        scene_.panel.trigsource.set_index(random(0, 1));
        scene_.acquisition.holdoff = random(0, 1) == 1;
        scene_.trigger.saved_trigpos = {static_cast<std::int16_t>(random(1970, 2120)),
                                        static_cast<std::int16_t>(random(1970, 2120))};
        change_marks();
    }

    /// Another annotated measurement: level lines, or dots that may reach over the plot's edges.
    void change_marks() {
        MeasurementControls& slot = scene_.panel.measurement[0];
        slot.annotate.set_checked(random(0, 3) != 0);
        const bool lines = random(0, 1) == 1;
        scene_.marks.kind[0].fill(lines ? MarkKind::lines : MarkKind::dots);
        for (auto& channel : scene_.marks.mark) {
            for (AnnotationGeometry& mark : channel) {
                const int x = random(-10, 645);
                const int y = random(-10, 515);
                mark = lines ? AnnotationGeometry{{{1, y}, {639, y}}}
                             : AnnotationGeometry{{{x, y}, {x + 8, y + 8}}};
            }
        }
    }

    Surface drawn(unsigned flags) {
        scene_.picture.draw(flags);
        return scene_.picture.surface();
    }

    std::mt19937 random_{GetParam()};
    PictureScene scene_;
};

TEST_P(PartialRedraw, EqualsTheFullOneWhereNothingElseLies) {
    constexpr std::array<unsigned, 5> parts{draw_flags::ch1, draw_flags::ch2, draw_flags::overlays,
                                            draw_flags::labels, draw_flags::all};
    for (int round = 0; round < 6; ++round) {
        const Surface grid = drawn(0);
        const Surface full = drawn(draw_flags::all);
        for (const unsigned flags : parts) {
            const Surface others = drawn(draw_flags::all & ~flags);
            const Surface partial = drawn(flags);
            int own = 0;
            int wrong = 0;
            for (int y = 0; y < plot::height; ++y) {
                for (int x = 0; x < plot::width; ++x) {
                    own += partial.at(x, y) != grid.at(x, y) ? 1 : 0;
                    const bool alone = others.at(x, y) == grid.at(x, y);
                    wrong += alone && partial.at(x, y) != full.at(x, y) ? 1 : 0;
                }
            }
            ASSERT_EQ(wrong, 0) << "flags " << flags;
            EXPECT_EQ(own == 0, flags == draw_flags::labels) << flags;
        }
        change();
    }
}

TEST_P(PartialRedraw, DependsOnNothingDrawnBefore) {
    for (int round = 0; round < 12; ++round) {
        const auto flags = static_cast<unsigned>(random(0, 15));
        scene_.picture.draw(static_cast<unsigned>(random(0, 15)));
        const Surface after_others = drawn(flags);
        scene_.picture.makegrid(); // makes the next drawing compose every column
        const Surface fresh = drawn(flags);
        ASSERT_TRUE(
            std::equal(fresh.pixels().begin(), fresh.pixels().end(), after_others.pixels().begin()))
            << "flags " << flags;
        change();
    }
}

// New points of a pass are composed column by column: the dots of the lines must go on as before.
TEST_P(PartialRedraw, OfSinglePointsKeepsTheLinesOverThem) {
    scene_.acquisition.pointmode = true;
    scene_.acquisition.holdoff = true;
    for (int step = 0; step < 25; ++step) {
        const int index = random(1, 640);
        for (const Channel channel : both_channels) {
            scene_.set_row(channel, index, random(1, 511));
            scene_.picture.refresh(channel, index);
        }
        scene_.picture.set_newest_point(index);
        if (step % 8 == 7) {
            scene_.cursors.cursormode = static_cast<std::int16_t>(random(1, 6));
        }
        const Surface point_by_point = drawn(draw_flags::all);
        scene_.picture.makegrid();
        const Surface fresh = drawn(draw_flags::all);
        ASSERT_TRUE(std::equal(fresh.pixels().begin(), fresh.pixels().end(),
                               point_by_point.pixels().begin()))
            << "step " << step;
        scene_.picture.draw(draw_flags::all);
    }
}

TEST_P(PartialRedraw, OfTheLabelsMovesThemAndTheOtherPartsDoNot) {
    scene_.picture.draw(draw_flags::labels);
    const int row = scene_.panel.trigertext.marked().value();
    scene_.trigger.saved_trigpos.fill(row < 256 ? 1000 : 3000);
    scene_.picture.draw(draw_flags::ch1 | draw_flags::ch2 | draw_flags::overlays);
    EXPECT_EQ(scene_.panel.trigertext.marked(), row);
    scene_.picture.draw(draw_flags::labels);
    EXPECT_NE(scene_.panel.trigertext.marked(), row);
}

INSTANTIATE_TEST_SUITE_P(Seeds, PartialRedraw, testing::Range(1U, series_stride == 1 ? 9U : 3U));

} // namespace
} // namespace kv408::test
