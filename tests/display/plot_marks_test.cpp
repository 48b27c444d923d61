// Lines over a density, where its points and codes lie on the plot.

#include "display/plot_marks.h"

#include <gtest/gtest.h>

#include "state/plot_geometry.h"

namespace kv408 {
namespace {

constexpr Pixel line_colour = 0xFF00FF00U;

/// Ten columns per point from column 1 on; a code of the channel lies two rows above the one below
/// it, code 2048 on the centre row.
DensityMarks marks_of(std::vector<DensityMark> lines) {
    DensityMarks marks;
    marks.with.conversion = {.inverted = false, .atten = 0.5, .vtfactor = 1.0, .swoffset = 0};
    marks.lines = std::move(lines);
    return marks;
}

std::vector<PlotMark> on_plot(std::vector<DensityMark> lines) {
    const DensityScreen screen{.codes_per_code = 1.0,
                               .centre_code = 2048.0,
                               .rows_per_code = 2.0,
                               .first_column = 1.0,
                               .columns_per_point = 10.0};
    std::vector<PlotMark> found;
    add_marks(marks_of(std::move(lines)), screen, found);
    return found;
}

TEST(PlotMarks, LieWherePointsAndCodesDo) {
    const auto found = on_plot({{{3.0, 2048.0}, {5.5, 2058.0}, true}});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], (PlotMark{31.0, 256.0, 56.0, 236.0, true}));
}

TEST(PlotMarks, EndAtThePlotsEdge) {
    // From left of the plot to its middle, half of it outside: from column -99 to 101.
    const auto across = on_plot({{{-10.0, 2048.0}, {10.0, 2058.0}}});
    ASSERT_EQ(across.size(), 1U);
    EXPECT_DOUBLE_EQ(across[0].from_x, 0.0);
    EXPECT_NEAR(across[0].from_y, 256.0 - 20.0 * 99.0 / 200.0, 1e-9);
    EXPECT_DOUBLE_EQ(across[0].to_x, 101.0);
    const auto down = on_plot({{{3.0, 0.0}, {3.0, 4095.0}}});
    ASSERT_EQ(down.size(), 1U);
    EXPECT_DOUBLE_EQ(std::max(down[0].from_y, down[0].to_y), plot::height - 1.0);
    EXPECT_DOUBLE_EQ(std::min(down[0].from_y, down[0].to_y), 0.0);
    EXPECT_TRUE(on_plot({{{-5.0, 2048.0}, {-1.0, 2048.0}}}).empty());
    EXPECT_TRUE(on_plot({{{3.0, 100.0}, {5.0, 200.0}}}).empty()) << "far below";
}

/// Which units have the colour after `lines` were drawn at natural size.
std::vector<std::pair<int, int>> drawn_units(const std::vector<PlotMark>& lines) {
    Surface surface(plot::width, plot::height);
    const PlotScale scale;
    draw_marks(UnitPainter(Canvas(surface), scale), {.lines = lines, .colour = line_colour});
    std::vector<std::pair<int, int>> units;
    for (int y = 0; y < surface.height(); ++y) {
        for (int x = 0; x < surface.width(); ++x) {
            if (surface.at(x, y) == line_colour) {
                units.emplace_back(x, y);
            }
        }
    }
    return units;
}

TEST(PlotMarks, AreLinesOfUnits) {
    using Units = std::vector<std::pair<int, int>>;
    EXPECT_EQ(drawn_units({{10.0, 20.0, 13.0, 20.0}}),
              (Units{{10, 20}, {11, 20}, {12, 20}, {13, 20}}));
    EXPECT_EQ(drawn_units({{10.0, 22.0, 10.0, 20.0}}), (Units{{10, 20}, {10, 21}, {10, 22}}));
    // Three dotted units, three left out, three dotted.
    EXPECT_EQ(drawn_units({{10.0, 20.0, 18.0, 20.0, true}}),
              (Units{{10, 20}, {11, 20}, {12, 20}, {16, 20}, {17, 20}, {18, 20}}));
    // Slanting ones have one unit in each column, or in each row where they are steep.
    EXPECT_EQ(drawn_units({{14.0, 22.0, 10.0, 20.0}}).size(), 5U);
    EXPECT_EQ(drawn_units({{10.0, 20.0, 12.0, 24.0}}),
              (Units{{10, 20}, {10, 21}, {11, 22}, {12, 23}, {12, 24}}));
}

/// How many pieces, connected by sides or corners, `mark` is made of at `factor`.
int pieces_of(const PlotMark& mark, double factor) {
    const PlotScale scale(factor);
    Surface surface(scale.width(), scale.height());
    draw_marks(UnitPainter(Canvas(surface), scale), {.lines = {mark}, .colour = line_colour});
    int pieces = 0;
    for (int y = 0; y < surface.height(); ++y) {
        for (int x = 0; x < surface.width(); ++x) {
            if (surface.at(x, y) != line_colour) {
                continue;
            }
            ++pieces;
            std::vector<Point> open = {{x, y}};
            while (!open.empty()) {
                const Point at = open.back();
                open.pop_back();
                if (at.x < 0 || at.y < 0 || at.x >= surface.width() || at.y >= surface.height() ||
                    surface.at(at.x, at.y) != line_colour) {
                    continue;
                }
                surface.at(at.x, at.y) = 0;
                for (int beside = 0; beside < 9; ++beside) {
                    open.push_back({at.x + beside % 3 - 1, at.y + beside / 3 - 1});
                }
            }
        }
    }
    return pieces;
}

TEST(PlotMarks, SlantWithoutHolesAtAnyScale) {
    const std::vector<PlotMark> slants = {
        {100.0, 100.0, 160.0, 160.0}, {160.0, 100.0, 100.0, 160.0}, {100.0, 100.0, 180.0, 127.0},
        {100.0, 127.0, 180.0, 100.0}, {100.0, 100.0, 119.5, 163.3}, {120.0, 300.0, 100.0, 383.0},
        {620.0, 480.0, 640.0, 512.0}, {0.0, 40.0, 33.0, 0.0}};
    for (const double factor : {1.0, 1.25, 1.3, 1.4, 1.45, 1.5, 1.9, 2.05, 2.3, 2.45, 3.4, 4.7}) {
        for (const PlotMark& slant : slants) {
            EXPECT_EQ(pieces_of(slant, factor), 1)
                << factor << " to " << slant.to_x << ' ' << slant.to_y;
        }
    }
}

} // namespace
} // namespace kv408
