// References and the live traces of the whole program on the simulated instrument.

#include <gtest/gtest.h>

#include "scope/program.h"
#include "scope/tools.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

/// A program whose sweeps of the bench's two signals can be kept.
struct Keeping : Program {
    explicit Keeping(const std::string& time_base) {
        EXPECT_TRUE(scope.start());
        choose(scope.panel().seltimediv, time_base);
        ticks(10);
    }

    void stop() {
        scope.act([this] { scope.panel().cmdstop.click(); });
        ticks(1);
    }

    ReferenceControls& reference(std::size_t place) {
        return scope.tools().references().controls(place);
    }

    void keep_ch1(std::size_t place) {
        scope.act([&] { reference(place).mnuReferenceKeepCH1.click(); });
    }

    /// Rows of each column of the plot's inside that have `colour`.
    std::vector<std::vector<int>> rows(Pixel colour) {
        const Surface& picture = scope.picture().surface();
        std::vector<std::vector<int>> found;
        for (int x = 1; x < plot::last_point; ++x) {
            found.emplace_back();
            for (int y = 0; y < picture.height(); ++y) {
                if (picture.at(x, y) == colour) {
                    found.back().push_back(y);
                }
            }
        }
        return found;
    }

    [[nodiscard]] Pixel colour(std::size_t place) {
        return pixel_of(*reference(place).lblReference.fore_colour());
    }

    /// The row that the highest point of the reference in `place` lies on, and the row that it is
    /// to lie on at `mv_per_division` with its zero line in the middle.
    [[nodiscard]] std::pair<int, int> highest(std::size_t place, double mv_per_division) {
        int top = plot::height;
        for (const auto& column : rows(colour(place))) {
            top = column.empty() ? top : std::min(top, column.front());
        }
        const auto& mv = scope.tools().references().references().at(place)->curve->mv;
        const double most = *std::max_element(mv.begin(), mv.begin() + plot::last_point - 1);
        return {top, round_to_int32(plot::centre_y - most * plot::division / mv_per_division)};
    }
};

TEST(ReferencesOfTheProgram, LieUnderTheTraceOfTheirOwnSweepToThePixel) {
    // A pass at 1us/div has a point in each column.
    Keeping program("1us/div");
    program.simulation.bench().sources[0].frequency_hz = 200e3;
    program.ticks(20);
    program.stop();
    const auto trace = program.rows(pixel_of(program.scope.parts().colours.ch1));
    ASSERT_FALSE(trace.at(100).empty());
    program.keep_ch1(0);
    EXPECT_EQ(program.rows(pixel_of(program.scope.parts().colours.ch1)), trace)
        << "the trace lies on top";
    program.scope.act([&] {
        program.channel(ch1).enable.set_checked(false);
        program.channel(ch2).enable.set_checked(false);
    });
    EXPECT_EQ(program.rows(program.colour(0)), trace);
    EXPECT_EQ(program.reference(0).lblReference.caption().find("R1 CH1 sweep "), 0U);
    EXPECT_NE(program.reference(0).lblReference.caption().find("   0.1V/div   1us/div"),
              std::string::npos);
}

TEST(ReferencesOfTheProgram, KeepVoltsAndSecondsWhateverThePanelShows) {
    Keeping program("20ns/div");
    program.simulation.bench().sources[0].amplitude_mvpp = 300.0;
    program.choose(program.channel(ch1).vdiv, "50mV");
    program.ticks(20);
    program.keep_ch1(2);
    program.scope.act([&] {
        program.channel(ch1).enable.set_checked(false);
        program.channel(ch2).enable.set_checked(false);
    });
    const auto [at_50mv, wanted_at_50mv] = program.highest(2, 50.0);
    EXPECT_EQ(at_50mv, wanted_at_50mv);
    EXPECT_NEAR(at_50mv, 256 - 3 * 64, 3) << "150 mV are three divisions";
    program.choose(program.channel(ch1).vdiv, "0.1V");
    program.ticks(10);
    program.scope.picture().draw(draw_flags::all);
    const auto [at_100mv, wanted_at_100mv] = program.highest(2, 100.0);
    EXPECT_EQ(at_100mv, wanted_at_100mv);
    EXPECT_NEAR(256 - at_100mv, (256 - at_50mv) / 2.0, 0.5) << "half the height";
    // Ten divisions of 20 ns are four of 50 ns.
    EXPECT_FALSE(program.rows(program.colour(2)).at(500).empty());
    program.choose(program.scope.panel().seltimediv, "50ns/div");
    program.ticks(10);
    program.scope.picture().draw(draw_flags::all);
    const auto columns = program.rows(program.colour(2));
    EXPECT_FALSE(columns.at(4 * 64 - 1).empty());
    EXPECT_TRUE(columns.at(4 * 64 + 8).empty()); // 650 points reach 4.07 divisions
    // Moved with the channel's zero line: 100 steps of the wheel are 50 rows.
    program.scope.act([&] {
        program.scope.panel().tabstrip2.select(1);
        program.scope.panel().slider1.turn_to(512 - 100);
    });
    program.scope.picture().draw(draw_flags::all);
    EXPECT_EQ(program.highest(2, 100.0).first, at_100mv + 50);
}

TEST(ReferencesOfTheProgram, ChangeNoFrameAndNoPixelOnceTheyAreGone) {
    Keeping plain("20ns/div");
    Keeping keeping("20ns/div");
    keeping.keep_ch1(0);
    keeping.keep_ch1(3);
    keeping.scope.act([&] { keeping.reference(0).mnuReferenceShow.set_checked(false); });
    plain.ticks(10);
    keeping.ticks(10);
    EXPECT_EQ(frames_of(plain), frames_of(keeping));
    keeping.scope.act([&] { keeping.reference(3).mnuReferenceClear.click(); });
    plain.ticks(1);
    keeping.ticks(1);
    const auto pixels = [](Program& program) {
        const auto all = program.scope.picture().surface().pixels();
        return std::vector<Pixel>(all.begin(), all.end());
    };
    EXPECT_EQ(pixels(plain), pixels(keeping));
}

} // namespace
} // namespace kv408
