// What is shown besides traces and cursors, at the scales of windows: densities, references,
// computed traces, the histogram, eye's and mask's lines. Each pixel is that of the plain way.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "panel/time_base.h"
#include "plain_picture.h"
#include "support/series_stride.h"

namespace kv408::test {
namespace {

/// At 1 µs/div, where a point lies in each column, and a row is a code.
class Contents : public testing::TestWithParam<unsigned> {
protected:
    static constexpr double step = 15625.0; ///< ps from column to column, the first one step on
    static constexpr int codes_at_centre = 2048;

    Contents() {
        std::vector<std::string> entries;
        for (const TimeBaseRow& row : time_base_rows()) {
            entries.emplace_back(row.text);
        }
        scene_.panel.seltimediv.set_entries(entries);
        scene_.panel.seltimediv.set_index(static_cast<int>(
            std::find(entries.begin(), entries.end(), "1us/div") - entries.begin()));
        for (Collected& collected : collected_) {
            collected.with.mode = SweepMode::point;
            collected.with.time_per_point = step;
            collected.with.first_time = step;
            collected.with.gain = high_gain;
        }
        for (const Channel channel : both_channels) {
            scene_.panel.channel[channel].enable.put_checked(true);
            scene_.picture.refresh(channel, 0);
            plain_.refresh(channel, 0);
        }
        scene_.panel.gridenable.put_checked(true);
        scene_.picture.makegrid();
    }

    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }
    bool chance(int percent) { return random(1, 100) <= percent; }

    void sweep_traces() {
        for (const Channel channel : both_channels) {
            const int centre = random(0, 512);
            for (int index = 1; index <= plot::last_point; ++index) {
                scene_.set_row(channel, index, centre + random(-20, 20));
                scene_.picture.refresh(channel, index);
                plain_.refresh(channel, index);
            }
        }
    }

    void collect(Channel channel) {
        const int centre = random(0, 512);
        const int height = random(0, 60);
        const int times = random(1, 40);
        std::vector<std::int16_t> codes(640);
        for (std::size_t point = 0; point < codes.size(); ++point) {
            const int row = centre + random(-height, height);
            codes[point] = static_cast<std::int16_t>(codes_at_centre + 256 - row);
            if (point < 639) { // of columns 1..639
                plain_.extras.hit(channel, static_cast<int>(point) + 1, std::clamp(row, 1, 511),
                                  static_cast<unsigned>(times));
            }
        }
        Collected& collected = collected_.at(channel);
        collected.counts.add(codes, static_cast<std::uint32_t>(times));
        scene_.picture.densities().set(channel, &collected);
        scene_.picture.densities().add(channel, codes, static_cast<std::uint32_t>(times));
    }

    /// A curve of so many columns for each point, in the picture's and in the plain way.
    std::pair<ShownReference, PlainExtras::Curve> curve(int columns, Colour colour) {
        const int first = random(-20, 300);
        const double position = random(-30, 30) / 10.0;
        const double per_division = random(1, 300) / 7.0;
        std::vector<double> values;
        PlainExtras::Curve plain{.points = {}, .colour = pixel_of(colour)};
        for (int column = first; column <= 660; column += columns) {
            const double value = per_division * random(-500, 500) / 97.0;
            values.push_back(value);
            const double row = 256.0 - 64.0 * position - 64.0 * value / per_division;
            plain.points.emplace_back(column, std::clamp(row, 1.0, 511.0));
        }
        const ReferenceCurve made{.channel = ch1,
                                  .first_time = first * step,
                                  .interval = columns * step,
                                  .mv = std::move(values),
                                  .lower = {},
                                  .scale = {.per_division = per_division, .position = position}};
        return {{std::make_shared<const ReferenceCurve>(made), colour, ""}, plain};
    }

    void set_curves() {
        const auto any_of = [this](std::vector<PlainExtras::Curve>& plain) {
            std::vector<ShownReference> shown;
            plain.clear();
            for (const Colour colour : {rgb(255, 140, 0), rgb(240, 75, 60)}) {
                auto [made, drawn] = curve(random(1, 40), colour);
                shown.push_back(std::move(made));
                plain.push_back(std::move(drawn));
            }
            return shown;
        };
        scene_.picture.set_references(any_of(plain_.extras.references));
        scene_.picture.set_maths(any_of(plain_.extras.maths));
    }

    void set_lines() {
        DensityMarks marks{.channel = ch1, .with = collected_[0].with, .lines = {}};
        plain_.extras.lines.clear();
        for (int number = 0; number < 12; ++number) {
            PlainExtras::Line line{random(0, 640), random(0, 512), random(0, 640), random(0, 512),
                                   chance(50)};
            line.to_x = number % 3 == 0 ? line.from_x : line.to_x;
            line.to_y = number % 3 == 1 ? line.from_y : line.to_y;
            plain_.extras.lines.push_back(line);
            const auto point = [](int x, int y) {
                return MaskPoint{x - 1.0, codes_at_centre + 256.0 - y};
            };
            marks.lines.push_back(
                {point(line.from_x, line.from_y), point(line.to_x, line.to_y), line.dotted});
        }
        scene_.picture.set_marks(Picture::MarksOf::eye, std::move(marks));
    }

    void set_histogram() {
        const int left = random(0, 600);
        const int top = random(0, 480);
        const PlotWindow window{left, top, random(left + 2, 641), random(top + 2, 513)};
        ShownHistogram shown{.window = window, .levels = chance(50), .bars = {}};
        shown.bars.resize(static_cast<std::size_t>(shown.levels ? window.bottom - window.top
                                                                : window.right - window.left));
        for (double& bar : shown.bars) {
            bar = chance(20) ? 0.0 : random(0, 1000) / 1000.0;
        }
        plain_.extras.histogram = {
            {window.left, window.top, window.right, window.bottom}, shown.levels, shown.bars};
        scene_.picture.set_histogram(std::move(shown));
    }

    testing::AssertionResult same_pixels_at(double factor) {
        scene_.picture.draw(draw_flags::all);
        const Surface& composed = scene_.picture.surface();
        const Surface expected = plain_.draw(draw_flags::all);
        const auto [differs, other] =
            std::mismatch(composed.pixels().begin(), composed.pixels().end(),
                          expected.pixels().begin(), expected.pixels().end());
        if (differs == composed.pixels().end() && other == expected.pixels().end()) {
            return testing::AssertionSuccess();
        }
        const auto place = differs - composed.pixels().begin();
        return testing::AssertionFailure()
               << factor << ": at " << place % composed.width() << ", " << place / composed.width()
               << ": " << std::hex << *differs << " instead of " << *other;
    }

    std::mt19937 random_{GetParam()};
    PictureScene scene_;
    PlainPicture plain_{scene_};
    std::array<Collected, 2> collected_ = {
        {{.counts = Density(640), .with = {}}, {.counts = Density(640), .with = {}}}};
};

TEST_P(Contents, OfAllKindsEqualThePlainPictureAtTheScalesOfWindows) {
    for (const double factor :
         {1.0, 644.0 / 641, 722.0 / 641, 1078.0 / 641, 1465.0 / 641, random(642, 704) / 641.0,
          random(705, 2000) / 641.0, 2.0, random(2001, 5128) / 641.0}) {
        scene_.picture.set_scale(PlotScale(factor));
        plain_.set_factor(factor);
        for (int round = 0; round < (series_stride == 1 ? 2 : 1); ++round) {
            sweep_traces();
            collect(chance(50) ? ch1 : ch2);
            set_curves();
            set_lines();
            set_histogram();
            ASSERT_TRUE(same_pixels_at(factor)) << "round " << round;
            collect(chance(50) ? ch1 : ch2);
            ASSERT_TRUE(same_pixels_at(factor)) << "round " << round << ", one sweep more";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Contents, testing::Range(1U, series_stride == 1 ? 5U : 2U));

} // namespace
} // namespace kv408::test
