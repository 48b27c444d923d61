#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "display/density_layers.h"
#include "display/histogram_marks.h"
#include "display/picture_scene.h"
#include "display/svg_file.h"
#include "panel/time_base.h"
#include "state/block_points.h"

namespace kv408 {
namespace {

using test::PictureScene;

constexpr Pixel few = 0xFF213B6E; // the first and the last colour of cividis
constexpr Pixel most = 0xFFFEE838;

/// A scene that has a density of CH1, of blocks at 20ns/div unless told otherwise.
struct DensityScene : PictureScene {
    explicit DensityScene(std::string_view time_base = "20ns/div") {
        std::vector<std::string> entries;
        for (const TimeBaseRow& row : time_base_rows()) {
            entries.emplace_back(row.text);
        }
        panel.seltimediv.set_entries(entries);
        choose(time_base);
        panel.channel[ch1].enable.put_checked(true);
        panel.channel[ch2].enable.put_checked(true);
        const TimeBaseRow& row = *selected_time_base(panel);
        collected.with.mode = row.pointmode ? SweepMode::point : SweepMode::block;
        collected.with.time_per_point = row.tbresolution;
        collected.with.first_time = row.pointmode ? row.tbresolution : 0.0;
        collected.with.gain = high_gain;
        collected.counts = Density(row.pointmode ? 640 : npoints);
    }

    void choose(std::string_view text) {
        const auto& entries = panel.seltimediv.entries();
        panel.seltimediv.set_index(
            static_cast<int>(std::find(entries.begin(), entries.end(), text) - entries.begin()));
    }

    /// Counts `times` sweeps of `codes`.
    void count(const std::vector<std::int16_t>& codes, std::uint32_t times = 1) {
        collected.counts.add(codes, times);
        collected.sweeps += times;
        picture.densities().add(ch1, codes, times);
    }

    std::vector<std::int16_t> flat(int code) const {
        return std::vector<std::int16_t>(static_cast<std::size_t>(collected.counts.points()),
                                         static_cast<std::int16_t>(code));
    }

    void show() {
        picture.densities().set(ch1, &collected);
        picture.draw(draw_flags::all);
    }

    /// Only the densities are drawn, no trace lies over them.
    void withhold_traces() { acquisition.activity = Activity::waiting_for_trigger; }

    Collected collected{.counts = Density(npoints), .with = {}};
};

/// Rows of column `x` of which the colour is one of cividis' seven.
std::vector<int> coloured_rows(PictureScene& scene, int x) {
    const DensityColours colours = density_colours(DensityPalette::cividis, {}, {});
    std::vector<int> rows;
    for (int y = 0; y < plot::height; ++y) {
        if (std::find(colours.begin(), colours.end(), scene.at(x, y)) != colours.end()) {
            rows.push_back(y);
        }
    }
    return rows;
}

TEST(DensityBand, EndsAtHalvesOfTheMost) {
    // Of 200 the bands end at 3, 6, 12, 25, 50, 100 and 200.
    EXPECT_EQ(density_band(200, 200), 6);
    EXPECT_EQ(density_band(101, 200), 6);
    EXPECT_EQ(density_band(100, 200), 5);
    EXPECT_EQ(density_band(51, 200), 5);
    EXPECT_EQ(density_band(50, 200), 4);
    EXPECT_EQ(density_band(26, 200), 4);
    EXPECT_EQ(density_band(25, 200), 3);
    EXPECT_EQ(density_band(13, 200), 3);
    EXPECT_EQ(density_band(12, 200), 2);
    EXPECT_EQ(density_band(7, 200), 2);
    EXPECT_EQ(density_band(6, 200), 1);
    EXPECT_EQ(density_band(4, 200), 1);
    EXPECT_EQ(density_band(3, 200), 0);
    EXPECT_EQ(density_band(1, 200), 0);
    EXPECT_EQ(density_band(1, 1), 6);
    EXPECT_EQ(density_band(1, 2), 5);
    EXPECT_EQ(density_band(1, highest_count), 0);
    EXPECT_EQ(density_band(highest_count, highest_count), 6);
}

TEST(DensityLayer, AShiftMovesEachPointToTheRightAndASingleHitHasAWholeBar) {
    std::vector<std::int16_t> codes(npoints, 2048);
    codes[100] = 2148;
    Collected collected{.counts = Density(npoints), .with = {}};
    collected.sweeps = 1;
    collected.counts.add(codes, 1);
    const DensityScreen screen{
        .centre_code = 2048.0, .rows_per_code = 1.0, .aligned = true, .shift = 7};
    DensityLayer layer;
    layer.show(collected, screen);
    const auto row = layer.row(256 - 100);
    for (int column = 0; column < plot::width; ++column) {
        EXPECT_EQ(row[static_cast<std::size_t>(column)], column == 1 + 100 + 7 ? 1 : 0) << column;
    }
    const PlotWindow window{.left = 100, .top = 150, .right = 120, .bottom = 160};
    EXPECT_EQ(histogram_on(layer, window, true).bars,
              (std::vector{0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0}));
}

TEST(Density, LiesUnderItsTrace) {
    DensityScene scene;
    // A ramp; the trace gets it as a block sweep stretches it.
    std::vector<std::int16_t> codes;
    codes.reserve(npoints);
    for (int point = 0; point < npoints; ++point) {
        codes.push_back(static_cast<std::int16_t>(2048 + point / 4 - 80));
    }
    const auto columns = block_points(selected_time_base(scene.panel)->hstretch);
    ASSERT_NE(columns[640], 639) << "some points are shown twice at this time base";
    for (int column = 1; column <= 640; ++column) {
        scene.samples[ch1].raw[static_cast<std::size_t>(column)] = static_cast<std::uint16_t>(
            codes[static_cast<std::size_t>(columns[static_cast<std::size_t>(column)])]);
    }
    scene.panel.eyeon.put_checked(true); // dots
    scene.channels[ch1].scale = 0.7;
    scene.channels[ch1].offsetdac = 2071;
    scene.refresh_all();
    scene.count(codes);
    scene.acquisition.ready[ch2] = false;
    scene.picture.draw(draw_flags::all);
    std::vector<int> trace;
    for (int x = 1; x <= 639; ++x) {
        int row = 0;
        while (row < plot::height && scene.at(x, row) != test::yellow) {
            ++row;
        }
        trace.push_back(row);
    }
    scene.withhold_traces();
    scene.show();
    for (int x = 1; x <= 639; ++x) {
        EXPECT_EQ(coloured_rows(scene, x), (std::vector{trace[static_cast<std::size_t>(x - 1)]}))
            << x;
    }
    EXPECT_TRUE(coloured_rows(scene, 640).empty());
}

TEST(Density, AddsTheCodesThatFallIntoOneRow) {
    DensityScene scene;
    scene.channels[ch1].scale = 0.25; // four codes per row
    scene.withhold_traces();
    scene.show();
    scene.count(scene.flat(2048), 3);
    scene.count(scene.flat(2049), 2);
    scene.count(scene.flat(2148), 4);
    scene.show();
    // Rows 256 of 5 hits and 231 of 4.
    EXPECT_EQ(scene.at(100, 256), most);
    EXPECT_EQ(scene.at(100, 231), most);
    EXPECT_EQ(scene.picture.drawn().densities.at(0).layer->row(256)[100], 5U);
    EXPECT_EQ(scene.picture.drawn().densities.at(0).layer->row(231)[100], 4U);
}

TEST(Density, HasNoHolesWhereCodesAreHigherThanRows) {
    DensityScene scene;
    scene.channels[ch1].scale = 512.0 / 480.0; // 10mV/div
    scene.channels[ch1].vtfactor = 2.0;
    scene.collected.with.conversion.vtfactor = 2.0;
    for (int code = 1950; code <= 2140; ++code) {
        scene.count(scene.flat(code));
    }
    scene.withhold_traces();
    scene.show();
    std::vector<int> all;
    for (int y = coloured_rows(scene, 50).front(); y <= coloured_rows(scene, 50).back(); ++y) {
        all.push_back(y);
    }
    EXPECT_EQ(coloured_rows(scene, 50), all);
    // 191 codes of 2.1333 rows each.
    EXPECT_NEAR(static_cast<double>(all.size()), 191 * 2.1333, 1.0);
    for (int y = all.front(); y <= all.back(); ++y) {
        EXPECT_EQ(scene.picture.drawn().densities.at(0).layer->row(y)[50], 1U) << y;
    }
}

TEST(Density, SweepBySweepItIsWhatCountingAnewGives) {
    DensityScene scene;
    scene.withhold_traces();
    scene.show();
    unsigned seed = 7;
    for (int sweep = 0; sweep < 200; ++sweep) {
        std::vector<std::int16_t> codes = scene.flat(0);
        for (std::int16_t& code : codes) {
            seed = seed * 1664525U + 1013904223U;
            code = static_cast<std::int16_t>(1900 + (seed >> 16U) % 300);
        }
        scene.count(codes, 1 + seed % 3);
    }
    scene.picture.draw(draw_flags::all);
    const Surface grown = scene.picture.surface();
    scene.show(); // counts anew
    EXPECT_TRUE(std::ranges::equal(grown.pixels(), scene.picture.surface().pixels()));
}

TEST(Density, WithEachSweepThePictureIsTheOneDrawnAnew) {
    for (const double factor : {1.0, 1.37}) {
        DensityScene grown;
        DensityScene anew;
        std::minstd_rand random(5);
        for (DensityScene* const scene : {&grown, &anew}) {
            scene->picture.set_scale(PlotScale(factor));
            scene->panel.gridenable.put_checked(true);
            scene->picture.makegrid();
            scene->show();
        }
        for (int sweep = 0; sweep < 60; ++sweep) {
            // Of few codes, so that it is their bands' ends that move most of the time.
            std::vector<std::int16_t> codes = grown.flat(0);
            for (std::int16_t& code : codes) {
                code = static_cast<std::int16_t>(2000 + random() % (sweep < 30 ? 12 : 60));
            }
            const auto times = static_cast<std::uint32_t>(1 + random() % 3);
            for (DensityScene* const scene : {&grown, &anew}) {
                scene->count(codes, times);
                scene->set_row(ch1, 1 + sweep, 300);
                scene->refresh_all();
                if (sweep % 3 != 1) {
                    scene->picture.draw(draw_flags::all);
                }
            }
            anew.show();
            if (sweep % 3 != 1) {
                ASSERT_TRUE(std::ranges::equal(grown.picture.surface().pixels(),
                                               anew.picture.surface().pixels()))
                    << factor << ", sweep " << sweep;
            }
        }
    }
}

TEST(Density, FollowsThePanelWithoutLosingWhatWasCollected) {
    DensityScene scene;
    scene.count(scene.flat(2148));
    scene.withhold_traces();
    scene.show();
    EXPECT_EQ(coloured_rows(scene, 320), std::vector{156});
    scene.channels[ch1].offsetdac = 2098;
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(coloured_rows(scene, 320), std::vector{206});
    scene.channels[ch1].scale = 2.0;
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(coloured_rows(scene, 320), (std::vector{155, 156}));
    scene.panel.channel[ch1].enable.put_checked(false);
    scene.picture.draw(draw_flags::all);
    EXPECT_TRUE(coloured_rows(scene, 320).empty()) << "a channel that is off shows nothing";
}

TEST(Density, ClippedCodesAndThoseBeyondThePlotLieOnItsEdges) {
    DensityScene scene;
    scene.count(scene.flat(4095));
    scene.count(scene.flat(0));
    scene.withhold_traces();
    scene.show();
    EXPECT_EQ(coloured_rows(scene, 10), (std::vector{1, 511})) << "as a trace does";
}

TEST(Density, OfAPassHasAPointInEachColumn) {
    DensityScene scene("1us/div");
    std::vector<std::int16_t> codes = scene.flat(2048);
    codes[9] = 2148;
    scene.count(codes);
    scene.withhold_traces();
    scene.show();
    EXPECT_EQ(coloured_rows(scene, 9), std::vector{256});
    EXPECT_EQ(coloured_rows(scene, 10), std::vector{156});
    EXPECT_EQ(coloured_rows(scene, 11), std::vector{256});
}

TEST(Density, FrozenItKeepsItsTimesAndLevelsWhenTheSetUpChanges) {
    DensityScene scene;
    std::vector<std::int16_t> codes = scene.flat(2048);
    for (std::size_t point = 0; point < 320; ++point) {
        codes[point] = 2148; // up to 320 x 313 ps, five divisions
    }
    scene.channels[ch1].mv_per_division = 64.0 / 6.0; // a row a code
    scene.count(codes);
    scene.withhold_traces();
    scene.choose("50ns/div"); // 64 columns are 50 ns, 160 points 1.0016 divisions
    scene.show();
    EXPECT_EQ(coloured_rows(scene, 128), std::vector{156});
    EXPECT_EQ(coloured_rows(scene, 130), std::vector{256});
    // 650 points end after 203 ns: 260 columns.
    EXPECT_EQ(coloured_rows(scene, 260), std::vector{256});
    EXPECT_TRUE(coloured_rows(scene, 263).empty());
    scene.choose("10ns/div"); // each point is two columns wide
    scene.picture.draw(draw_flags::all);
    for (int x = 1; x <= 639; ++x) {
        EXPECT_EQ(coloured_rows(scene, x).size(), 1U) << x;
    }
    // In the other range a code is three times the millivolts.
    scene.channels[ch1].atten = 0.5;
    scene.picture.draw(draw_flags::all);
    EXPECT_EQ(coloured_rows(scene, 100), std::vector{256 - 33});
}

TEST(Density, IsPaintedOverTheGridAndUnderTheTrace) {
    DensityScene scene;
    scene.acquisition.ready[ch2] = false;
    scene.count(scene.flat(2048));
    scene.count(scene.flat(2112)); // on row 192, where the grid has its dots
    scene.panel.gridenable.put_checked(true);
    scene.picture.makegrid();
    scene.show();
    EXPECT_EQ(scene.at(300, 256), test::yellow);
    EXPECT_EQ(scene.at(320, 192), most);
    scene.picture.densities().set(ch1, nullptr);
    scene.picture.draw(draw_flags::all);
    const Surface off = scene.picture.surface();
    DensityScene never;
    never.acquisition.ready[ch2] = false;
    never.panel.gridenable.put_checked(true);
    never.picture.makegrid();
    never.picture.draw(draw_flags::all);
    EXPECT_TRUE(std::ranges::equal(off.pixels(), never.picture.surface().pixels()))
        << "off, nothing is left of it";
}

TEST(Density, IsTheSameAtEachSizeOfThePlot) {
    for (const double factor : {1.0, 1.37, 2.0, 3.5}) {
        DensityScene scene;
        scene.withhold_traces();
        scene.picture.set_scale(PlotScale(factor));
        for (int sweep = 0; sweep < 16; ++sweep) {
            scene.count(scene.flat(2048 + sweep), static_cast<std::uint32_t>(1 << (sweep / 2)));
        }
        scene.show();
        const PlotScale scale(factor);
        for (int sweep = 0; sweep < 16; ++sweep) {
            EXPECT_EQ(scene.at(scale.place(100), scale.place(256 - sweep)),
                      density_colours(DensityPalette::cividis, {}, {})
                          .at(static_cast<std::size_t>(
                              density_band(1U << (static_cast<unsigned>(sweep) / 2), 128))))
                << factor << " " << sweep;
        }
    }
}

TEST(Density, HasShadesOfItsChannelsColourByChoice) {
    DensityScene scene;
    scene.withhold_traces();
    scene.picture.densities().set_palette(DensityPalette::channel);
    scene.count(scene.flat(2048), 64);
    scene.count(scene.flat(2058), 1);
    scene.show();
    EXPECT_EQ(scene.at(100, 256), test::yellow);
    EXPECT_EQ(scene.at(100, 246), 0xFF3F3F00) << "a quarter of it";
}

TEST(Density, IsInTheVectorsToo) {
    DensityScene scene;
    scene.withhold_traces();
    scene.count(scene.flat(2048), 64);
    scene.count(scene.flat(2058), 1);
    scene.show();
    const std::string svg = svg_file(scene.picture, scene.panel, {}, false);
    // Columns 1 to 639 of rows 256 and 246.
    EXPECT_NE(svg.find(R"(<path d="M0.5,256h639" fill="none" stroke="#fee838")"),
              std::string::npos);
    EXPECT_NE(svg.find(R"(<path d="M0.5,246h639" fill="none" stroke="#213b6e")"),
              std::string::npos);
    EXPECT_EQ(few, pixel_of(rgb(0x21, 0x3b, 0x6e)));
}

} // namespace
} // namespace kv408
