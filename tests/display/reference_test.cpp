#include "display/reference_lines.h"

#include <gtest/gtest.h>

#include "display/picture_scene.h"
#include "display/svg_file.h"
#include "panel/time_base.h"

namespace kv408 {
namespace {

using test::PictureScene;

/// The screen at 20ns/div and 50 mV/div, its zero line in the middle.
constexpr ReferenceScreen usual = {
    .mv_per_division = 50.0, .zero_row = 256.0, .columns_per_second = 3.2e9, .first_time = 0.0};

/// Points 0, 10 ns, 20 ns ... of these millivolts.
ReferenceCurve curve(std::vector<double> mv) {
    return {.channel = ch1, .first_time = 0.0, .interval = 10000.0, .mv = std::move(mv)};
}

TEST(Reference, LiesWhereALiveTraceOfItsSignalWould) {
    // 50 mV are one division of 64 rows up; 10 ns are half a division of 64 columns.
    const ReferenceCurve kept = curve({0.0, 50.0, -100.0, 500.0});
    const auto points = on_screen(kept, kept.mv, usual);
    ASSERT_EQ(points.size(), 4U);
    EXPECT_EQ(points[0], (ReferencePoint{1.0, 256.0}));
    EXPECT_EQ(points[1], (ReferencePoint{33.0, 192.0}));
    EXPECT_EQ(points[2], (ReferencePoint{65.0, 384.0}));
    EXPECT_EQ(points[3], (ReferencePoint{97.0, 1.0})) << "held in the plot, as a trace is";
}

TEST(Reference, FollowsThePanelInItsOwnUnits) {
    ReferenceScreen screen = usual;
    screen.mv_per_division = 100.0;
    screen.zero_row = 96.0;
    screen.columns_per_second = 6.4e9; // 10ns/div
    screen.first_time = 5000.0;        // delayed by half a division
    const ReferenceCurve kept = curve({0.0, 50.0});
    const auto points = on_screen(kept, kept.mv, screen);
    EXPECT_EQ(points[0], (ReferencePoint{-31.0, 96.0}));
    EXPECT_EQ(points[1], (ReferencePoint{33.0, 64.0}));
}

TEST(Reference, HasTheScreenThatThePanelSets) {
    PictureScene scene;
    EXPECT_FALSE(reference_screen(scene.panel, scene.channels, ch1)) << "no time base yet";
    std::vector<std::string> entries;
    for (const TimeBaseRow& row : time_base_rows()) {
        entries.emplace_back(row.text);
    }
    scene.panel.seltimediv.set_entries(entries);
    const auto choose = [&](std::string_view text) {
        scene.panel.seltimediv.set_index(
            static_cast<int>(std::find(entries.begin(), entries.end(), text) - entries.begin()));
    };
    choose("20ns/div");
    scene.panel.channel[0].psofset.set_text("5ns");
    scene.channels[0].mv_per_division = 200.0;
    // At 0.2V/div two codes are a millivolt and 8 divisions: 0.16 rows per code.
    scene.channels[0].scale = 0.16;
    scene.channels[0].offsetdac = 2048 - 400; // 64 rows
    EXPECT_EQ(reference_screen(scene.panel, scene.channels, ch1),
              (ReferenceScreen{.mv_per_division = 200.0,
                               .zero_row = 192.0,
                               .columns_per_second = 3.2e9,
                               .first_time = 5000.0}));
    choose("500ns/div");
    // A pass knows no delay: its first point is one step after the trigger.
    EXPECT_EQ(reference_screen(scene.panel, scene.channels, ch1)->first_time, 7812.0);
}

/// A picture at 20ns/div, its graticule alone.
struct ReferenceScene : PictureScene {
    /// Its picture before anything else is shown.
    Surface begin() {
        panel.seltimediv.set_entries({"20ns/div"});
        panel.seltimediv.set_index(0);
        picture.draw(draw_flags::all);
        return picture.surface();
    }

    /// Shows `reference` alone.
    void show(ReferenceCurve reference) {
        picture.set_references(
            {{.curve = std::make_shared<const ReferenceCurve>(std::move(reference)),
              .colour = orange,
              .caption = "R1"}});
        picture.draw(draw_flags::all);
    }

    /// Rows of column `x` that have the reference's colour.
    [[nodiscard]] std::vector<int> rows(int x) {
        std::vector<int> found;
        for (int y = 0; y < picture.surface().height(); ++y) {
            if (picture.surface().at(x, y) == pixel_of(orange)) {
                found.push_back(y);
            }
        }
        return found;
    }

    static constexpr Colour orange = rgb(255, 140, 0);
    Surface bare = begin();
};

bool same_pixels(const Surface& one, const Surface& other) {
    if (one.width() != other.width() || one.height() != other.height()) {
        return false;
    }
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.at(x, y) != other.at(x, y)) {
                return false;
            }
        }
    }
    return true;
}

TEST(PictureReferences, KeepTheirVoltsWhenTheScaleChanges) {
    ReferenceScene scene;
    const ReferenceCurve flat = curve(std::vector<double>(40, 100.0));
    scene.show(flat);
    // Two divisions above the middle at 50 mV/div, one at 0.1 V/div.
    EXPECT_EQ(scene.rows(300), (std::vector<int>{256 - 128}));
    scene.channels[0].mv_per_division = 100.0;
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(scene.rows(300), (std::vector<int>{256 - 64}));
    scene.picture.set_references({});
    scene.picture.draw(draw_flags::all);
    EXPECT_TRUE(same_pixels(scene.picture.surface(), scene.bare));
}

TEST(PictureReferences, LieUnderTheTracesAndNotOnTheBorder) {
    ReferenceScene scene;
    scene.set_flat(ch1, 128);
    scene.show(curve(std::vector<double>(80, 100.0)));
    EXPECT_EQ(scene.at(300, 128), test::yellow);
    EXPECT_EQ(scene.at(640, 128), scene.bare.at(640, 128));
    EXPECT_EQ(scene.at(0, 128), scene.bare.at(0, 128));
    scene.panel.channel[0].enable.set_checked(false);
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(scene.rows(300), (std::vector<int>{128}));
    EXPECT_EQ(scene.rows(1), (std::vector<int>{128}));
}

TEST(PictureReferences, AreDrawnAtAnyScaleAndStayWhenTheGridIsDrawnAnew) {
    ReferenceScene scene;
    scene.show(curve(std::vector<double>(40, 100.0)));
    scene.picture.set_scale(PlotScale(8.0));
    // Row 128 is eight pixels high, and so is the line.
    EXPECT_EQ(scene.rows(2400), (std::vector<int>{1024, 1025, 1026, 1027, 1028, 1029, 1030, 1031}));
    const Surface natural = scene.picture.at_natural_size();
    EXPECT_EQ(natural.at(300, 128), pixel_of(ReferenceScene::orange));
    scene.picture.makegrid();
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(scene.rows(2400).size(), 8U);
}

TEST(PictureReferences, StandInTheVectorsUnderTheTraces) {
    ReferenceScene scene;
    scene.show(curve({0.0, 50.0}));
    const std::string svg = svg_file(scene.picture, scene.panel, {}, false);
    const auto reference = svg.find(R"(<path d="M1,256L33,192" fill="none" stroke="#ff8c00")");
    ASSERT_NE(reference, std::string::npos);
    EXPECT_GT(svg.find("#ffff00"), reference) << "the trace comes after it";
}

// Taken at another time base a reference goes on beyond the plot, whose border it stays within:
// columns 1 and 639. Points lie 32 columns apart, 128 rows down 100 mV.
TEST(PictureReferences, EndAtTheBorderInTheVectorsAndBearTheirNames) {
    ReferenceScene scene;
    std::vector<double> mv(30, 0.0);
    mv[20] = 50.0;
    scene.show(curve(mv));
    const std::string svg = svg_file(scene.picture, scene.panel, {}, false);
    // Point 19 in column 609, point 20 beyond the border: 30 of 32 columns on the way up by 64
    // rows.
    EXPECT_NE(svg.find("L609,256L639,196\" fill=\"none\" stroke=\"#ff8c00\""), std::string::npos)
        << svg.substr(svg.find("M1,256"), 900);
    const auto name = svg.find("text-anchor=\"end\">" + scene.picture.captioned()[0].caption + "<");
    EXPECT_NE(name, std::string::npos);
}

} // namespace
} // namespace kv408
