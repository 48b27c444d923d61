// Computed traces in the picture.

#include <gtest/gtest.h>

#include "display/picture_scene.h"
#include "display/svg_file.h"

namespace kv408 {
namespace {

/// A picture at 20ns/div with computed traces whose points lie 10 ns apart, 32 columns.
struct MathsScene : test::PictureScene {
    MathsScene() {
        panel.seltimediv.set_entries({"20ns/div"});
        panel.seltimediv.set_index(0);
        picture.draw(draw_flags::all);
    }

    void show(std::vector<double> values, const CurveScale& scale, std::vector<double> lower = {}) {
        picture.set_maths({{.curve = std::make_shared<const ReferenceCurve>(
                                ReferenceCurve{.channel = ch1,
                                               .first_time = 0.0,
                                               .interval = 10000.0,
                                               .mv = std::move(values),
                                               .lower = std::move(lower),
                                               .scale = scale}),
                            .colour = red,
                            .caption = "MATH1 CH1 - CH2"}});
        picture.draw(draw_flags::all);
    }

    /// Rows of column `x` that have the trace's colour.
    [[nodiscard]] std::vector<int> red_rows(int x) {
        std::vector<int> found;
        for (int y = 0; y < picture.surface().height(); ++y) {
            if (at(x, y) == pixel_of(red)) {
                found.push_back(y);
            }
        }
        return found;
    }

    [[nodiscard]] std::vector<Pixel> all_pixels() {
        const auto pixels = picture.surface().pixels();
        return {pixels.begin(), pixels.end()};
    }

    static constexpr Colour red = rgb(240, 75, 60);
};

TEST(PictureMaths, LieOverTheTracesInAScaleOfTheirOwnOrThatOfTheirChannel) {
    MathsScene scene;
    const std::vector<Pixel> bare = scene.all_pixels();
    // 3 units of the 4 that are a division, above a zero line 2 divisions down: 256 + 128 - 48.
    scene.show(std::vector<double>(30, 3.0), CurveScale{.per_division = 4.0, .position = -2.0});
    EXPECT_EQ(scene.red_rows(300), std::vector<int>{336});
    scene.channels[0].mv_per_division = 100.0; // is no matter of its
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(scene.red_rows(300), std::vector<int>{336});
    scene.show(std::vector<double>(30, 0.0), CurveScale{});
    EXPECT_EQ(scene.red_rows(300), std::vector<int>{256}) << "over CH1's own line";
    EXPECT_EQ(scene.at(0, 256), bare[std::size_t{256} * 641]) << "not on the border";
    scene.show(std::vector<double>(30, 100.0), CurveScale{});
    EXPECT_EQ(scene.red_rows(300), std::vector<int>{256 - 64});
    scene.picture.set_maths({});
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(scene.all_pixels(), bare);
}

TEST(PictureMaths, HaveBothLinesOfAnEnvelope) {
    MathsScene scene;
    scene.show(std::vector<double>(30, 2.0), CurveScale{.per_division = 1.0, .position = 0.0},
               std::vector<double>(30, -1.0));
    EXPECT_EQ(scene.red_rows(300), (std::vector<int>{256 - 128, 256 + 64}));
}

// A point-by-point pass composes some columns at a time.
TEST(PictureMaths, StayWholeWhereOnlySomeColumnsAreComposed) {
    MathsScene scene;
    std::vector<double> zigzag(30, -3.0);
    for (std::size_t point = 1; point < zigzag.size(); point += 2) {
        zigzag[point] = 3.0;
    }
    for (const double factor : {1.0, 1.25, 3.0}) {
        scene.picture.set_scale(PlotScale(factor));
        scene.show(zigzag, CurveScale{.per_division = 1.0, .position = 0.0});
        for (const int column : {100, 101, 350}) {
            scene.set_row(ch1, column, 40);
            scene.picture.refresh(ch1, column);
            scene.picture.draw(draw_flags::all);
        }
        const std::vector<Pixel> by_parts = scene.all_pixels();
        scene.picture.makegrid(); // has all composed
        scene.picture.draw(draw_flags::all);
        EXPECT_EQ(by_parts, scene.all_pixels()) << factor;
    }
}

TEST(PictureMaths, AreNotDrawnWhileTheTracesAreNot) {
    MathsScene scene;
    scene.show(std::vector<double>(30, 3.0), CurveScale{.per_division = 4.0, .position = 0.0});
    scene.acquisition.activity = Activity::waiting_for_trigger;
    scene.picture.draw(draw_flags::all);
    EXPECT_TRUE(scene.red_rows(300).empty());
}

TEST(PictureMaths, StandInTheVectorsOverTheTracesWithTheirName) {
    MathsScene scene;
    scene.show({0.0, 1.0}, CurveScale{.per_division = 1.0, .position = 0.0}, {0.0, -1.0});
    const std::string svg = svg_file(scene.picture, scene.panel, {}, false);
    for (const char* const line : {R"(<path d="M1,256L33,192" fill="none" stroke="#f04b3c")",
                                   R"(<path d="M1,256L33,320" fill="none" stroke="#f04b3c")"}) {
        const auto found = svg.find(line);
        ASSERT_NE(found, std::string::npos) << line;
        EXPECT_LT(svg.find("#ffff00"), found) << "the trace comes before it";
    }
    EXPECT_NE(svg.find("text-anchor=\"end\">MATH1 CH1 - CH2<"), std::string::npos);
}

} // namespace
} // namespace kv408
