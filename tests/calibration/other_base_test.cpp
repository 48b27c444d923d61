// Calibrating from values that the instrument does not work with: the errors of the difference
// would be left in it while everything says "complete".

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using testing::Test;

const std::string other_base = "The instrument works with other values than those that this was "
                               "computed from: write or read first, then calibrate again.";

class OtherBase : public Test, public CalibrationRig {
protected:
    OtherBase() {
        flash[0xA404] = 10100;
        flash[0xA405] = 10000;
        flash[0xA401] = 2081;
        flash[0xA403] = 2048;
        form.cmdreadcald.click();
        forget();
        for (std::size_t channel = 0; channel < 2; ++channel) {
            measure(channel, meas::vmean, 1.0);
        }
    }

    void set_defaults() {
        boxes.answers = {MessageAnswer::yes};
        form.cmdsetalltodefault.click();
    }

    /// Sets up, waits, lets `vpp` be measured at both channels, computes.
    void calibrate(Button& set_up, Button& compute, double vpp) {
        set_up.click();
        sweep();
        measure(0, meas::vpp, vpp);
        measure(1, meas::vpp, vpp);
        boxes.shown.clear();
        compute.click();
        ASSERT_TRUE(boxes.shown.empty()) << boxes.shown[0].text;
    }
};

TEST_F(OtherBase, IsToldAtTheCalibrationAndAtTheWrite) {
    set_defaults();
    calibrate(form.cmdsetforcalgainl, form.cmdcalgain, 1000.0);
    EXPECT_EQ(calibrating.record().edited()[4], 10000);
    EXPECT_EQ(note(), "1000mV peak to peak measured in place of 1000mV. " + other_base);
    form.cmdwritecal.click();
    EXPECT_EQ(calstatus(), "Write complete");
    EXPECT_TRUE(note().ends_with("CH1 gain, low gain was computed from a value that the instrument "
                                 "did not work with: calibrate it again."))
        << note();
    // From then on it works with what is in use here.
    calibrate(form.cmdsetforcalgainl, form.cmdcalgain, 1000.0);
    EXPECT_EQ(note(), "1000mV peak to peak measured in place of 1000mV.");
    form.cmdwritecal.click();
    EXPECT_EQ(note().find("calibrate it again"), std::string::npos) << note();
}

TEST_F(OtherBase, IsThatOfTheComputedValueAlone) {
    set_defaults();
    // High gain has the default in the instrument too.
    calibrate(form.cmdsetforcalgainh, form.cmdcalgain1h, 200.0);
    EXPECT_EQ(note(), "200mV peak to peak measured in place of 200mV.");
}

TEST_F(OtherBase, OfEitherChannelCountsForTheOffsets) {
    set_defaults();
    calibrate(form.cmdsetforcalh, form.cmdcaoffseth, 2.0);
    EXPECT_EQ(note(), other_base);
    form.cmdwritecal.click();
    EXPECT_TRUE(note().ends_with("CH1 offset, high gain was computed from a value that the "
                                 "instrument did not work with: calibrate it again."))
        << note();
}

TEST_F(OtherBase, IsNoneAfterTheDefaultsWereWritten) {
    set_defaults();
    form.cmdwritecal.click();
    calibrate(form.cmdsetforcalgainl, form.cmdcalgain, 1000.0);
    EXPECT_EQ(note(), "1000mV peak to peak measured in place of 1000mV.");
}

TEST_F(OtherBase, IsForgottenWithTheValueComputedFromIt) {
    set_defaults();
    calibrate(form.cmdsetforcalgainl, form.cmdcalgain, 1000.0);
    form.cald[4].set_text("10050");
    form.cmdwritecal.click();
    EXPECT_EQ(note().find("calibrate it again"), std::string::npos) << note();
    form.cmdreadcald.click();
    set_defaults();
    calibrate(form.cmdsetforcalgainl, form.cmdcalgain, 1000.0);
    form.cmdreadcald.click();
    form.cmdwritecal.click();
    EXPECT_EQ(note().find("calibrate it again"), std::string::npos) << note();
}

} // namespace
} // namespace kv408
