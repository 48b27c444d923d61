// The eye window's numbers, what it shows in the plot, and the words where there is none.

#include "export/eye_dialog.h"

#include <gtest/gtest.h>

#include "collected_signal.h"

namespace kv408 {
namespace {

/// The window over random data of 0 and 400 mV, of 3000 ps an interval, that cross at 2000 and 5000
/// ps with edges of 600 ps.
struct EyeDialogTest : testing::Test {
    /// A sweep's points are of bits of their own, as in equivalent time.
    [[nodiscard]] CollectedSignal::Millivolts data(double jitter, double noise) {
        return [=, this](double time) {
            const double late = time - jitter * chance.normal();
            double level = chance.coin() ? 400.0 : 0.0;
            for (const double crossing : {2000.0, 5000.0}) {
                const double next = chance.coin() ? 400.0 : 0.0;
                level += (next - level) * synthetic::edge(late - crossing, 600.0);
            }
            return level + noise * chance.normal();
        };
    }
    [[nodiscard]] double number(std::string_view name) const {
        return number_of_told(dialog.values(), name);
    }
    [[nodiscard]] std::string value(std::string_view name) {
        return line_beside(dialog.controls().lblEyeNames, dialog.controls().lblEyeValues, name);
    }
    [[nodiscard]] const std::string& found() { return dialog.controls().lblEyeFound.caption(); }

    synthetic::Chance chance{11};
    CollectedSignal signal;
    std::optional<DensityMarks> marks;
    EyeDialog dialog{signal.density, signal.clock,
                     [this](std::optional<DensityMarks> shown) { marks = std::move(shown); }};
};

TEST_F(EyeDialogTest, TellsTheEyeAndMarksItInThePlot) {
    dialog.open();
    signal.take(400, data(40.0, 6.0));
    dialog.refresh();
    EXPECT_EQ(found(), "The eye is open");
    EXPECT_NEAR(number("Unit interval"), 3000e-12, 10e-12);
    EXPECT_NEAR(number("Crossing time"), 2000e-12, 10e-12);
    EXPECT_NEAR(number("Crossing percentage"), 50.0, 1.0);
    EXPECT_NEAR(number("One level"), 400e-3, 1e-3);
    EXPECT_NEAR(number("Zero level"), 0.0, 1e-3);
    EXPECT_NEAR(number("Eye height"), 364e-3, 2e-3);    // 400 - 6 * 6
    EXPECT_NEAR(number("Eye width"), 2757e-12, 30e-12); // 3000 - 6 * hypot(40, 6 / 1.05)
    EXPECT_NEAR(number("Q"), 400.0 / 12.0, 0.8);
    EXPECT_NEAR(number("Signal to noise"), 36.48, 0.3); // 20 lg (400 / 6)
    // A cosine's edge takes 2 asin(0.6) / pi of its length from 20 % to 80 %.
    EXPECT_NEAR(number("Rise time"), 245.8e-12, 15e-12);
    EXPECT_NEAR(number("Fall time"), 245.8e-12, 15e-12);
    EXPECT_NEAR(number("Duty-cycle distortion"), 0.0, 12e-12);
    // One level: across the interval, which is points 100 to 400, a quarter of a millivolt per
    // code.
    ASSERT_TRUE(marks);
    ASSERT_EQ(marks->lines.size(), 8U);
    const DensityMark& one = marks->lines[0];
    EXPECT_NEAR(one.from.x, 100.0, 1.0);
    EXPECT_NEAR(one.to.x, 400.0, 1.5);
    EXPECT_NEAR(one.from.y, 2048.0 + 1600.0, 4.0);
    // The middle fifth is dotted, 40 % and 60 % of the interval behind the crossing.
    EXPECT_TRUE(marks->lines[4].dotted && marks->lines[5].dotted);
    EXPECT_NEAR(marks->lines[4].from.x, 220.0, 1.5);
    EXPECT_NEAR(marks->lines[5].from.x, 280.0, 1.5);
    // The cross of the opening: as high and as wide as the numbers say.
    EXPECT_NEAR((marks->lines[6].to.y - marks->lines[6].from.y) / 4000.0, number("Eye height"),
                1e-9);
    EXPECT_NEAR((marks->lines[7].to.x - marks->lines[7].from.x) * 10e-12, number("Eye width"),
                1e-15);
    dialog.close();
    EXPECT_FALSE(marks);
}

TEST_F(EyeDialogTest, TakesATypedIntervalAndCrossing) {
    dialog.open();
    signal.take(200, data(40.0, 6.0));
    dialog.controls().txtEyeInterval.set_text("3.0ns");
    dialog.controls().txtEyeCrossing.set_text("5ns");
    EXPECT_DOUBLE_EQ(number("Unit interval"), 3000e-12);
    EXPECT_FALSE(dialog.controls().txtEyeInterval.faulty());
    dialog.controls().txtEyeInterval.set_text("0");
    EXPECT_TRUE(dialog.controls().txtEyeInterval.faulty());
    dialog.controls().txtEyeCrossing.set_text("4.5mV");
    EXPECT_TRUE(dialog.controls().txtEyeCrossing.faulty());
    EXPECT_NEAR(number("Crossing time"), 2000e-12, 10e-12) << "found again";
}

TEST_F(EyeDialogTest, SaysWhatChangesWhileNothingIsCounted) {
    dialog.open();
    signal.take(20, data(40.0, 6.0));
    dialog.refresh();
    const auto wait = [this] {
        signal.clock.advance(std::chrono::seconds(1));
        dialog.tick_over();
    };
    signal.density.controls().chkDensityFreeze.set_checked(true);
    wait();
    const std::string& state = dialog.controls().lblEyeState.caption();
    EXPECT_TRUE(state.ends_with(", frozen")) << state;
    signal.panel.average.put_checked(true);
    wait();
    EXPECT_TRUE(dialog.controls().lblEyeRemark.caption().starts_with("Filter Avg. is on"))
        << dialog.controls().lblEyeRemark.caption();
}

TEST_F(EyeDialogTest, SaysInWordsWhatIsWrongWithAnEye) {
    dialog.open();
    EXPECT_EQ(found(), "Nothing has been collected");
    EXPECT_FALSE(marks);
    // 200 mV, and 35 mV of noise on both levels.
    signal.take(200, [data = data(40.0, 70.0)](double time) { return 0.5 * data(time); });
    dialog.refresh();
    EXPECT_EQ(found(), "The eye is closed in height");
    EXPECT_EQ(value("Eye height"), "The eye is closed");
    signal.density.clear();
    signal.take(200, [this](double) { return 3.0 * chance.normal(); });
    dialog.refresh();
    EXPECT_EQ(found(), "The trace does not go between two levels");
    EXPECT_FALSE(marks) << "those of the eye before are gone";
    signal.density.clear();
    // One edge is no eye.
    signal.take(200, [this](double time) {
        return 400.0 * synthetic::edge(time - 4000.0, 600.0) + 3.0 * chance.normal();
    });
    dialog.refresh();
    EXPECT_EQ(found(), "Two crossings have to be on the screen");
    signal.density.clear();
    // Ones beyond the scale, which ends at 511 mV.
    signal.take(200, [data = data(40.0, 6.0)](double time) { return 1.5 * data(time); });
    dialog.refresh();
    EXPECT_EQ(found(), "The trace leaves the instrument's scale");
    EXPECT_EQ(value("Eye height"), "The trace leaves the instrument's scale");
}

} // namespace
} // namespace kv408
