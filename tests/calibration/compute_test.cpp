// The compute buttons: what they refuse with which message, and the values that they compute.

#include <cmath>

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using testing::Test;

const std::string settings_wrong = "Scope settings are incorrect!\nPlease press  <";
const std::string range = "Sampled data out of range!\n";
const std::string trigger_and = "Make sure that trigger signal is present and\n";

class Compute : public Test, public CalibrationRig {
protected:
    Compute() {
        panel.mnucalibration.click();
        // In use: the values 100 to 110, which no correction can be mixed up with.
        calibration = {2040, 2050, 2060, 2070, 10100, 10200, 10300, 10400, 10500, 100, 70};
    }

    /// Presses a set-up button, says OK, waits for the trace, and forgets.
    void set_up(Button& button) {
        button.click();
        sweep();
        forget();
        form.calstatus.set_caption("");
    }

    void expect_refused(const std::string& title, const std::string& text) {
        ASSERT_EQ(boxes.shown.size(), 1U);
        EXPECT_EQ(boxes.shown[0].text, text);
        EXPECT_EQ(boxes.shown[0].title, title);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::exclamation);
        EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::ok);
        EXPECT_EQ(calstatus(), "");
        EXPECT_EQ(calibrating.record().edited(), before_);
        EXPECT_EQ(calibrating.record().calibrated(), false);
        boxes.shown.clear();
    }

    void choose(ListBox& list, int index) {
        list.set_index(index);
        forget();
    }

    static constexpr CalibrationRecord before_ = {100, 101, 102, 103, 104, 105,
                                                  106, 107, 108, 109, 110};
};

struct Gain {
    Button CalibrationForm::*set_up;
    Button CalibrationForm::*compute;
    std::size_t channel;
    std::size_t field;
    double expected;
    std::string title;
    std::string success;
};

std::vector<Gain> gains() {
    using F = CalibrationForm;
    return {{&F::cmdsetforcalgainh, &F::cmdcalgain1h, 0, 5, 200.0, "Calibrate High Gain",
             "CH1 high gain calibration complete! Press  <Write Cal. to Kv408 flash memeory>"},
            {&F::cmdsetforcalgainh2, &F::cmdcalgain2h, 1, 7, 200.0, "Calibrate High Gain",
             "CH2 high gain calibration complete! Press  <Write Cal. to Kv408 flash memeory>"},
            {&F::cmdsetforcalgainl, &F::cmdcalgain, 0, 4, 1000.0, "Calibrate Low Gain",
             "CH1 low gain calibration complete! Press  <Write Cal. to Kv408 flash memeory>"},
            {&F::cmdsetforcalgainl2, &F::cmdcalg2l, 1, 6, 1000.0, "Calibrate Low Gain",
             "CH2 low gain calibration complete! Press  <Write Cal. to Kv408 flash memeory>"}};
}

TEST_F(Compute, AGainIsComputedFromTheValueInUse) {
    for (const Gain& gain : gains()) {
        set_up(form.*gain.set_up);
        // 4 % too much, a fraction of a millivolt of which does not count.
        measure(gain.channel, meas::vpp, gain.expected * 1.04 + 0.4);
        measure(1 - gain.channel, meas::vpp, 5.0);
        const auto expected = static_cast<int>(std::lround(calibration[gain.field] / 1.04));
        for (int press = 0; press < 2; ++press) {
            (form.*gain.compute).click();
            EXPECT_EQ(calibrating.record().edited().at(gain.field), expected) << gain.success;
        }
        EXPECT_EQ(form.cald.at(gain.field).text(), std::to_string(expected));
        EXPECT_EQ(calstatus(), gain.success);
        EXPECT_TRUE(calibrating.record().calibrated());
        EXPECT_TRUE(boxes.shown.empty());
        EXPECT_EQ(calibration[gain.field], 10100 + 100 * static_cast<int>(gain.field - 4));
    }
    EXPECT_TRUE(flash_frames(34).empty());
}

TEST_F(Compute, AGainOutOfRangeIsRefused) {
    for (const Gain& gain : gains()) {
        set_up(form.*gain.set_up);
        const std::string text = range + trigger_and + "Sampler input CH" +
                                 std::to_string(gain.channel + 1) + " is connected to trigger out";
        // Rounded to whole millivolts: 1111.5 goes to 1112 and 222.5 to 222.
        const double most = gain.expected == 200.0 ? 222.6 : 1111.5;
        const double least = gain.expected == 200.0 ? 181.4 : 909.4;
        for (const double vpp : {most, least, 0.0, 0.4, -500.0}) {
            measure(gain.channel, meas::vpp, vpp);
            (form.*gain.compute).click();
            std::string found = std::to_string(static_cast<int>(std::lrint(vpp)));
            found += "mV peak to peak measured in place of ";
            found += gain.expected == 200.0 ? "200mV." : "1000mV.";
            EXPECT_EQ(boxes.shown.back().informative, found);
            expect_refused(gain.title, text);
        }
    }
    for (const Gain& gain : gains()) {
        set_up(form.*gain.set_up);
        for (const double vpp :
             gain.expected == 200.0 ? std::array{222.5, 181.6} : std::array{1111.4, 909.6}) {
            measure(gain.channel, meas::vpp, vpp);
            (form.*gain.compute).click();
            EXPECT_TRUE(boxes.shown.empty()) << vpp;
        }
    }
}

TEST_F(Compute, AGainWithoutItsSetUpNamesTheButton) {
    for (const Gain& gain : gains()) {
        set_up(form.*gain.set_up);
        measure(gain.channel, meas::vpp, gain.expected);
        // The channel's own list counts; all entries but the right one are wrong.
        ListBox& list = panel.channel.at(gain.channel).vdiv;
        const int right = list.index();
        for (int index = 0; index < 6; ++index) {
            if (index == right) {
                continue;
            }
            choose(list, index);
            (form.*gain.compute).click();
            expect_refused(gain.title, settings_wrong + "Set Cal>-Button first");
        }
        choose(list, right);
        choose(panel.channel.at(1 - gain.channel).vdiv, 5);
        sweep();
        form.calstatus.set_caption("");
    }
    (form.*gains()[3].compute).click();
    EXPECT_TRUE(boxes.shown.empty());
}

struct Offset {
    Button CalibrationForm::*set_up;
    Button CalibrationForm::*compute;
    std::array<std::size_t, 2> fields;
    int factor;
    std::string caption;
    std::string title;
    std::string success;
};

std::vector<Offset> offsets() {
    using F = CalibrationForm;
    return {
        {&F::cmdsetforcalh,
         &F::cmdcaoffseth,
         {1, 3},
         6,
         "Set for CalH",
         "Calibrate Offset - High Gain",
         "Calculate offset calibration values for high gain comlete! Press  <Write Cal. to Kv408 "
         "flash memeory>"},
        {&F::cmdsetforcall,
         &F::cmdcaoffsetl,
         {0, 2},
         2,
         "Set for CalL",
         "Calibrate Offset - Low Gain",
         "Calculate offset calibration values for low gain complete! Press  <Write Cal. to Kv408 "
         "flash memeory>"}};
}

TEST_F(Compute, BothOffsetsAreComputedFromTheMeans) {
    for (const Offset& offset : offsets()) {
        set_up(form.*offset.set_up);
        measure(0, meas::vpp, 29.99);
        measure(1, meas::vpp, 1.0);
        measure(0, meas::vmean, 2.5);
        measure(1, meas::vmean, -4.0);
        for (int press = 0; press < 2; ++press) {
            (form.*offset.compute).click();
            const CalibrationRecord& edited = calibrating.record().edited();
            EXPECT_EQ(edited.at(offset.fields[0]),
                      calibration.at(offset.fields[0]) - 5 * offset.factor / 2);
            EXPECT_EQ(edited.at(offset.fields[1]),
                      calibration.at(offset.fields[1]) + 4 * offset.factor);
        }
        EXPECT_EQ(calstatus(), offset.success);
        EXPECT_FALSE(calibrating.record().calibrated());
        EXPECT_TRUE(boxes.shown.empty());
    }
    EXPECT_EQ(form.cald[1].text(), "2035");
    EXPECT_EQ(form.cald[3].text(), "2094");
    EXPECT_EQ(form.cald[0].text(), "2035");
    EXPECT_EQ(form.cald[2].text(), "2068");
}

TEST_F(Compute, ThroughTheTriggerInputTheFactorIsHalf) {
    for (const Offset& offset : offsets()) {
        set_up(form.*offset.set_up);
        panel.channel[1].inviatr.set_checked(true);
        sweep();
        measure(0, meas::vpp, 1.0);
        measure(1, meas::vpp, 1.0);
        measure(0, meas::vmean, 10.0);
        measure(1, meas::vmean, 10.0);
        (form.*offset.compute).click();
        const CalibrationRecord& edited = calibrating.record().edited();
        EXPECT_EQ(edited.at(offset.fields[0]),
                  calibration.at(offset.fields[0]) - 10 * offset.factor);
        EXPECT_EQ(edited.at(offset.fields[1]),
                  calibration.at(offset.fields[1]) - 5 * offset.factor);
    }
}

TEST_F(Compute, OffsetsOfALoudInputAreRefused) {
    for (const Offset& offset : offsets()) {
        set_up(form.*offset.set_up);
        for (std::size_t loud = 0; loud < 2; ++loud) {
            // 0 stands for nothing measured.
            for (const double vpp : {30.0, 0.0}) {
                measure(loud, meas::vpp, vpp);
                measure(1 - loud, meas::vpp, 1.0);
                (form.*offset.compute).click();
                expect_refused(offset.title,
                               range + trigger_and + "Sampler inputs are disconnected or 0V");
            }
        }
    }
}

TEST_F(Compute, OffsetsNeedBothChannelsInTheRange) {
    for (const Offset& offset : offsets()) {
        const bool high = offset.factor == 6;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            set_up(form.*offset.set_up);
            measure(0, meas::vpp, 1.0);
            measure(1, meas::vpp, 1.0);
            // "0.5V", "0.2V", "0.1V" are low gain, "50mV", "20mV", "10mV" high gain.
            for (int index = 0; index < 6; ++index) {
                choose(panel.channel.at(channel).vdiv, index);
                sweep();
                const CalibrationRecord before = calibrating.record().edited();
                (form.*offset.compute).click();
                if ((index >= 3) == high) {
                    EXPECT_TRUE(boxes.shown.empty()) << index;
                    EXPECT_EQ(calstatus(), offset.success);
                } else {
                    ASSERT_EQ(boxes.shown.size(), 1U) << index;
                    EXPECT_EQ(boxes.shown[0].text,
                              settings_wrong + offset.caption + ">-Button first");
                    EXPECT_EQ(boxes.shown[0].title, offset.title);
                    EXPECT_EQ(calibrating.record().edited(), before);
                    EXPECT_EQ(calstatus(), "");
                }
                boxes.shown.clear();
                form.calstatus.set_caption("");
            }
        }
    }
}

TEST_F(Compute, OffsetsNeedARangeThatIsSelected) {
    for (const Offset& offset : offsets()) {
        set_up(form.*offset.set_up);
        measure(0, meas::vpp, 1.0);
        measure(1, meas::vpp, 1.0);
        choose(panel.channel[1].vdiv, -1);
        (form.*offset.compute).click();
        expect_refused(offset.title, settings_wrong + offset.caption + ">-Button first");
    }
}

class TimeScale : public Compute {
protected:
    TimeScale() { set_up(form.cmdsetforcalhscale); }

    const std::string title_ = "Calibrate Horizontal Scale";
};

TEST_F(TimeScale, IsComputedFromTheValueInUse) {
    see_frequency(10200000.0);
    for (int press = 0; press < 2; ++press) {
        form.cmdcaltb.click();
        // 10500 - 2 %
        EXPECT_EQ(calibrating.record().edited()[8], 10290);
    }
    EXPECT_EQ(form.cald[8].text(), "10290");
    EXPECT_EQ(calstatus(), "Time base scale calibration complete! Press  <Write Cal. to Kv408 "
                           "flash memeory>");
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_TRUE(note().starts_with("10200000Hz measured in place of 10000000Hz.")) << note();
}

TEST_F(TimeScale, AFrequencyOutOfRangeIsRefused) {
    for (const double hertz : {9000000.4, 10999999.6, 5e6}) {
        see_frequency(hertz);
        form.cmdcaltb.click();
        std::string found = std::to_string(std::lrint(hertz));
        EXPECT_EQ(boxes.shown.back().informative,
                  found.append("Hz measured in place of 10000000Hz."));
        expect_refused(title_, "Frequency out of range!");
    }
    for (const double hertz : {9000000.6, 10999999.4}) {
        see_frequency(hertz);
        form.cmdcaltb.click();
        EXPECT_TRUE(boxes.shown.empty()) << hertz;
    }
}

TEST_F(TimeScale, TheFrequencyOfAnEarlierSweepDoesNotCount) {
    see_frequency(10200000.0);
    see_frequency(0.0);
    form.cmdcaltb.click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].informative,
              "No frequency was measured: the trace shows no whole period.");
    expect_refused(title_, "Frequency out of range!");
    // A high part alone is not a period either.
    measure(0, meas::pulse_high, 32.0);
    form.cmdcaltb.click();
    expect_refused(title_, "Frequency out of range!");
    measure(0, meas::pulse_high, 0.0);
    measure(0, meas::pulse_low, 32.0);
    form.cmdcaltb.click();
    expect_refused(title_, "Frequency out of range!");
    see_frequency(10200000.0);
    form.cmdcaltb.click();
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(TimeScale, ALargeErrorAsksForASecondTime) {
    see_frequency(10400000.0);
    form.cmdcaltb.click();
    EXPECT_EQ(calibrating.record().edited()[8], 10080);
    EXPECT_NE(note().find("a second time"), std::string::npos);
}

TEST_F(TimeScale, AnErrorOfThreeHundredthsIsStillSmall) {
    for (const auto& [hertz, large] : {std::pair{9699999.0, true}, std::pair{9700000.0, false},
                                       std::pair{10300000.0, false}, std::pair{10300001.0, true}}) {
        see_frequency(hertz);
        form.cmdcaltb.click();
        EXPECT_EQ(note().find("a second time") != std::string::npos, large) << hertz;
    }
}

TEST_F(TimeScale, WithoutItsSetUpNamesTheButton) {
    see_frequency(10200000.0);
    for (int index = 0; index < 21; ++index) {
        choose(panel.seltimediv, index);
        if (panel.seltimediv.text() != "100ns/div") {
            form.cmdcaltb.click();
            expect_refused(title_, settings_wrong + "Set for Cal GL>-Button first");
        }
    }
}

TEST_F(TimeScale, DoesNotSetTheCalibrationFlag) {
    see_frequency(10200000.0);
    form.cmdcaltb.click();
    EXPECT_FALSE(calibrating.record().calibrated());
}

TEST_F(Compute, AWriteEndsWhatTheFlagSays) {
    set_up(form.cmdsetforcalgainl);
    measure(0, meas::vpp, 1000.0);
    form.cmdcalgain.click();
    ASSERT_TRUE(calibrating.record().calibrated());
    form.cmdwritecal.click();
    EXPECT_FALSE(calibrating.record().calibrated());
    EXPECT_EQ(calibration[4], 10100);
}

} // namespace
} // namespace kv408
