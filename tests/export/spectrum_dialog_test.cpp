// The spectrum window's numbers, and the words where there is none.

#include "export/spectrum_dialog.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "maths/maths_evaluator.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

/// The window over sweeps of CH1, 650 points 50 ps apart: lines 30.769 MHz apart, up to 10 GHz.
struct SpectrumDialogTest : testing::Test {
    /// A sweep with a sine of `millivolts` at its peak on line `line`.
    static std::shared_ptr<const Sweep> sweep_of(double millivolts, int line) {
        auto part = std::make_shared<ChannelSweep>();
        part->whole = true;
        part->time_per_point = 50.0;
        for (int point = 0; point < 650; ++point) {
            part->mv.push_back(millivolts *
                               std::sin(2.0 * std::numbers::pi * line * point / 650.0));
            part->codes.push_back(2048);
        }
        auto sweep = std::make_shared<Sweep>();
        sweep->complete = true;
        sweep->came = {true, false};
        sweep->channel = {part, std::make_shared<ChannelSweep>()};
        return sweep;
    }

    void take(const std::shared_ptr<const Sweep>& sweep) {
        dialog.take(sweep);
        clock.advance(std::chrono::milliseconds(200));
        dialog.tick_over();
    }

    [[nodiscard]] const std::string& peaks() const { return controls.lblSpectrumPeaks.caption(); }

    VirtualClock clock;
    FrontPanel panel;
    SpectrumDialog dialog{panel, clock};
    SpectrumControls& controls = dialog.controls();
};

TEST_F(SpectrumDialogTest, TellsFrequencyAndLevelOfTheHighestPeak) {
    panel.channel[ch1].enable.set_checked(true);
    dialog.open(nullptr);
    EXPECT_EQ(controls.lblSpectrumState.caption(), "No whole sweep has come yet");
    EXPECT_FALSE(controls.cmdSpectrumCopy.enabled());
    take(sweep_of(200.0, 26)); // 26 / (650 * 50 ps) = 800 MHz; 200 mV are -16.99 dBV
    EXPECT_EQ(peaks(), "800.00MHz   -16.99 dBV");
    controls.cmbSpectrumUnit.set_index(1);
    EXPECT_EQ(peaks(), "800.00MHz   -3.98 dBm");
    EXPECT_EQ(
        controls.lblSpectrumState.caption(),
        "1 sweep; lines 30.769MHz apart, up to the Nyquist limit of 10.000GHz; what the signal "
        "has above it is folded in below");
    EXPECT_EQ(dialog.table().substr(0, 25), "Frequency, Hz\tCH1, dBm\n0\t");
    EXPECT_TRUE(controls.cmdSpectrumCopy.enabled());
}

TEST_F(SpectrumDialogTest, MeanAndHighestAreOfTheLastSweeps) {
    dialog.open(nullptr);
    take(sweep_of(200.0, 26));
    take(sweep_of(100.0, 26));
    EXPECT_EQ(peaks(), "800.00MHz   -23.01 dBV"); // the last one alone
    EXPECT_FALSE(controls.txtSpectrumCount.enabled());
    controls.cmbSpectrumHold.set_index(1);
    EXPECT_EQ(peaks(), "800.00MHz   -19.03 dBV"); // the mean of 0.02 and 0.005
    controls.cmbSpectrumHold.set_index(2);
    EXPECT_EQ(peaks(), "800.00MHz   -16.99 dBV");
    EXPECT_EQ(dialog.sweeps(), 2U);
    controls.txtSpectrumCount.set_text("1");
    EXPECT_EQ(peaks(), "800.00MHz   -23.01 dBV");
    for (const char* const bad : {"", "0", "1001", "2.5", "x"}) {
        controls.txtSpectrumCount.set_text(bad);
        EXPECT_TRUE(controls.txtSpectrumCount.faulty()) << bad;
        EXPECT_EQ(dialog.kept(), 1U);
    }
    controls.txtSpectrumCount.set_text("3");
    EXPECT_FALSE(controls.txtSpectrumCount.faulty());
    take(sweep_of(300.0, 26));
    controls.cmdSpectrumClear.click(); // begins with the last sweep
    EXPECT_EQ(dialog.sweeps(), 1U);
}

TEST(SpectrumOfAMathsTrace, IsOfWhatIsOnThePlot) {
    VirtualClock clock;
    FrontPanel panel;
    SpectrumDialog::Computed found;
    SpectrumDialog dialog(panel, clock, [&found](std::size_t) { return found; });
    const auto mean_of = [](double millivolts) {
        const auto sweep = SpectrumDialogTest::sweep_of(millivolts, 26);
        MathsEvaluator maths;
        maths.define({MathsFunction::mean, ch1, ch2});
        maths.take(*sweep);
        return maths.trace();
    };
    dialog.controls().cmbSpectrumChannel.set_index(2);
    dialog.open(nullptr);
    found.trace = mean_of(200.0);
    dialog.computed_changed();
    EXPECT_EQ(dialog.controls().lblSpectrumPeaks.caption(), "800.00MHz   -16.99 dBV");
    found.trace = mean_of(100.0); // of fewer sweeps, or begun anew
    dialog.computed_changed();
    EXPECT_EQ(dialog.controls().lblSpectrumPeaks.caption(), "800.00MHz   -23.01 dBV");
    dialog.controls().cmbSpectrumHold.set_index(1);
    dialog.take(SpectrumDialogTest::sweep_of(100.0, 26));
    EXPECT_EQ(dialog.sweeps(), 2U);
    dialog.computed_changed(); // of its look: the trace is the same
    EXPECT_EQ(dialog.sweeps(), 2U);
}

TEST_F(SpectrumDialogTest, SaysWhatFalsifiesIt) {
    panel.channel[ch1].enable.set_checked(true);
    dialog.open(nullptr);
    auto clipped = std::make_shared<Sweep>(*sweep_of(200.0, 26));
    auto part = std::make_shared<ChannelSweep>(*clipped->channel[ch1]);
    part->codes[7] = 4095;
    part->averaged = true;
    clipped->channel[ch1] = part;
    take(clipped);
    EXPECT_EQ(controls.lblSpectrumRemark.caption(),
              "The trace leaves the instrument's scale: it has harmonics that the signal has not.\n"
              "Filter Avg. is on: noise is smaller than the signal's.");
    take(sweep_of(200.0, 26));
    EXPECT_EQ(controls.lblSpectrumRemark.caption(), "");
    // The one before is still in the mean; in the highest noise is too high as well.
    controls.cmbSpectrumHold.set_index(1);
    const std::string clips =
        "The trace leaves the instrument's scale: it has harmonics that the signal has not.";
    EXPECT_EQ(controls.lblSpectrumRemark.caption(), clips);
    controls.cmbSpectrumHold.set_index(2);
    EXPECT_EQ(controls.lblSpectrumRemark.caption(),
              clips + "\nThe highest of sweeps makes noise look higher: SNR and THD are worse than "
                      "the signal's.");
    controls.cmdSpectrumClear.click();
    EXPECT_EQ(controls.lblSpectrumRemark.caption(), "");
    take(sweep_of(200.0, 1));
    EXPECT_EQ(controls.lblSpectrumRemark.caption(),
              "Few periods of the highest peak are on the screen: its frequency and level are "
              "rough.");
    panel.channel[ch1].enable.set_checked(false);
    auto of_ch2 = std::make_shared<Sweep>(*sweep_of(200.0, 1));
    of_ch2->came = {false, true};
    take(of_ch2);
    EXPECT_EQ(controls.lblSpectrumRemark.caption(),
              "The channel is off: this is of its last sweeps.");
}

TEST_F(SpectrumDialogTest, OnlyWholeSweepsOfAChannelThatIsOnWhileItIsOpen) {
    take(sweep_of(200.0, 26));
    EXPECT_TRUE(dialog.spectrum().power.empty());
    dialog.open(sweep_of(200.0, 26)); // begins with the last sweep there was
    EXPECT_EQ(dialog.sweeps(), 1U);
    auto broken = std::make_shared<Sweep>(*sweep_of(200.0, 26));
    auto part = std::make_shared<ChannelSweep>(*broken->channel[ch1]);
    part->whole = false;
    broken->channel[ch1] = part;
    controls.cmbSpectrumHold.set_index(1);
    take(broken);
    EXPECT_EQ(dialog.sweeps(), 1U);
    controls.cmbSpectrumChannel.set_index(1);
    panel.channel[ch2].enable.set_checked(false);
    take(sweep_of(200.0, 26));
    EXPECT_EQ(controls.lblSpectrumState.caption(), "The channel is off");
    dialog.close();
    EXPECT_TRUE(dialog.spectrum().power.empty());
}

TEST_F(SpectrumDialogTest, TellsDistortionAndNoiseAndOverWhat) {
    dialog.open(nullptr);
    auto sum = std::make_shared<Sweep>(*sweep_of(200.0, 26));
    auto part = std::make_shared<ChannelSweep>(*sum->channel[ch1]);
    for (int point = 0; point < 650; ++point) {
        part->mv[static_cast<std::size_t>(point)] +=
            10.0 * std::sin(2.0 * std::numbers::pi * 52.0 * point / 650.0);
    }
    sum->channel[ch1] = part;
    take(sum);
    // A twentieth in the second harmonic.
    EXPECT_TRUE(
        controls.lblSpectrumPurity.caption().starts_with("THD 5.0000 %, of harmonics 2 to 6\nSNR "))
        << controls.lblSpectrumPurity.caption();
    // A hundredth of that: small as it is, it is read without a prefix.
    for (int point = 0; point < 650; ++point) {
        part->mv[static_cast<std::size_t>(point)] -=
            9.0 * std::sin(2.0 * std::numbers::pi * 52.0 * point / 650.0);
    }
    take(sum);
    EXPECT_TRUE(
        controls.lblSpectrumPurity.caption().starts_with("THD 0.50000 %, of harmonics 2 to 6\n"))
        << controls.lblSpectrumPurity.caption();
    take(sweep_of(200.0, 4));
    EXPECT_EQ(controls.lblSpectrumPurity.caption(),
              "THD and SNR not told: with this window 5 periods have to be on the screen");
    take(sweep_of(200.0, 200)); // its second harmonic lies beyond the limit of line 325
    EXPECT_TRUE(controls.lblSpectrumPurity.caption().starts_with(
        "THD not told: no harmonic lies below the limit\n"));
}

} // namespace
} // namespace kv408
