// Reading the record, at the first opening and by the button; and what the boxes take.

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using testing::Test;

const CalibrationRecord held = {100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110};
const Texts held_texts = {"100", "101", "102", "103", "104", "105",
                          "106", "107", "108", "109", "110"};

class RecordRead : public Test, public CalibrationRig {};

TEST_F(RecordRead, EveryWordIsAskedForHighByteFirst) {
    forget();
    form.cmdreadcald.click();
    const auto asked = flash_frames(33);
    ASSERT_EQ(asked.size(), 13U);
    for (int index = 0; index < 11; ++index) {
        EXPECT_EQ(asked.at(static_cast<std::size_t>(index)),
                  (FakeBridge::Frame{0xA4, index, 0, 0, 0}));
    }
    EXPECT_EQ(asked[11], (FakeBridge::Frame{0xA4, 0x3D, 0, 0, 0}));
    EXPECT_EQ(asked[12], (FakeBridge::Frame{0xA4, 0x3E, 0, 0, 0}));
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(RecordRead, TheRecordComesIntoUseAndIntoTheBoxes) {
    form.cmdreadcald.click();
    EXPECT_EQ(calibration, held);
    EXPECT_EQ(calibrating.record().edited(), held);
    EXPECT_EQ(box_texts(), held_texts);
    EXPECT_EQ(form.cald61.text(), "408");
    EXPECT_EQ(form.cald62.text(), "16");
    EXPECT_EQ(calstatus(), "Read complete");
}

TEST_F(RecordRead, AWordWithItsHighestBitIsANegativeValueButNotAnIdentification) {
    flash[0xA403] = 0xFFFE;
    flash[0xA43D] = 0xFFFF;
    form.cmdreadcald.click();
    EXPECT_EQ(calibration[3], -2);
    EXPECT_EQ(form.cald[3].text(), "-2");
    EXPECT_EQ(form.cald61.text(), "65535");
}

TEST_F(RecordRead, TheBarIsFullAfterTheLastWord) {
    form.cmdreadcald.click();
    EXPECT_EQ(form.progressbar1.steps(), 13);
    EXPECT_EQ(form.progressbar1.value(), 13);
    EXPECT_EQ(std::count(messages.repainted.begin(), messages.repainted.end(), "ProgressBar1"), 13);
}

TEST_F(RecordRead, ReadingStopsTheSweepAndThrowsAwayWhatIsStillComing) {
    tick(); // "idle"
    tick(); // set-up, the sweep begins
    ASSERT_EQ(acquisition.scopestate, "scopech1f");
    bridge.flush_empties = false;
    bridge.receive(std::vector<int>(1300, 7));
    form.cmdreadcald.click();
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_FALSE(acquisition.acqrunning);
    EXPECT_TRUE(acquisition.stoprequest);
    EXPECT_EQ(calibration, held);
}

TEST_F(RecordRead, AtMost1400BytesAreThrownAway) {
    bridge.flush_empties = false;
    bridge.receive(std::vector<int>(1402, 7));
    form.cmdreadcald.click();
    EXPECT_EQ(calibration[0], 7 * 256 + 7);
}

TEST_F(RecordRead, TheFirstWordThatDoesNotComeEndsTheReading) {
    form.cmdreadcald.click();
    for (int index = 0; index < 11; ++index) {
        flash[0xA400 + index] = 900 + index;
    }
    forget();
    words_that_come = 3;
    form.cmdreadcald.click();
    EXPECT_EQ(flash_frames(33).size(), 4U);
    EXPECT_EQ(calibration, held);
    EXPECT_EQ(calibrating.record().edited(), held);
    EXPECT_EQ(box_texts(), held_texts);
    EXPECT_EQ(calstatus(), "");
    EXPECT_EQ(note(), "Word 4 of 13 did not come from the instrument. The record here is as it was "
                      "before.");
    EXPECT_EQ(form.progressbar1.value(), 3);
}

TEST_F(RecordRead, AMissingIdentificationLeavesTheRecordTooAsItWas) {
    words_that_come = 12;
    form.cmdreadcald.click();
    EXPECT_EQ(calibration, default_calibration);
    EXPECT_EQ(form.cald61.text(), "");
}

TEST_F(RecordRead, OpeningTheFormReadsAgainAfterAReadingThatFailed) {
    words_that_come = 3;
    panel.mnucalibration.click();
    EXPECT_EQ(box_texts(), Texts(11));
    EXPECT_TRUE(form.cald[7].faulty());
    EXPECT_EQ(note(),
              "Not a whole number from -32768 to 32767: CH1 offset, low gain; CH1 offset, "
              "high gain and 9 more. Cannot be written.\nWord 4 of 13 did not come from the "
              "instrument. The record here is as it was before.");
    form.window.close();
    words_that_come = 1000;
    panel.mnucalibration.click();
    EXPECT_EQ(box_texts(), held_texts);
    EXPECT_EQ(calibration, held);
    EXPECT_EQ(note(), "The boxes were filled with the values that the instrument works with.");
}

TEST_F(RecordRead, OpeningTheFormLeavesARecordInTheBoxesThatWasNotRead) {
    words_that_come = 3;
    panel.mnucalibration.click();
    boxes.answers = {MessageAnswer::yes};
    form.cmdsetalltodefault.click();
    form.window.close();
    forget();
    words_that_come = 1000;
    panel.mnucalibration.click();
    EXPECT_TRUE(bridge.frames().empty());
    EXPECT_EQ(form.cald[0].text(), "2048");
}

TEST_F(RecordRead, OpeningTheFormReadsOnce) {
    forget();
    panel.mnucalibration.click();
    EXPECT_TRUE(form.window.is_open());
    EXPECT_EQ(calibration, held);
    form.window.close();
    forget();
    panel.mnucalibration.click();
    EXPECT_TRUE(form.window.is_open());
    EXPECT_TRUE(bridge.frames().empty());
}

TEST_F(RecordRead, OpeningTheFormLetsARunningSweepGoOn) {
    tick();
    tick();
    ASSERT_TRUE(acquisition.acqrunning);
    panel.mnucalibration.click();
    EXPECT_EQ(acquisition.scopestate, "startscope");
    EXPECT_TRUE(acquisition.acqrunning);
}

TEST_F(RecordRead, OpeningTheFormBeforeTheFirstTickDoesNotKeepTheSweepFromStarting) {
    ASSERT_EQ(acquisition.scopestate, "idle");
    panel.mnucalibration.click();
    EXPECT_EQ(acquisition.scopestate, "startscope");
}

TEST_F(RecordRead, OpeningTheFormLeavesAStoppedSweepStopped) {
    panel.cmdstop.on_click([this] { state_machine.cmdstop_Click(); });
    panel.cmdstop.click();
    panel.mnucalibration.click();
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_FALSE(acquisition.acqrunning);
}

TEST_F(RecordRead, EveryKeystrokeChangesTheEditedValueAndNoOther) {
    form.cmdreadcald.click();
    form.cald[8].set_text("1");
    EXPECT_EQ(calibrating.record().edited()[8], 1);
    form.cald[8].set_text("10");
    EXPECT_EQ(calibrating.record().edited()[8], 10);
    EXPECT_EQ(calibration, held);
    EXPECT_EQ(calibrating.record().edited()[7], 107);
}

TEST_F(RecordRead, AValueOutsideTheShownRangeIsTaken) {
    form.cmdreadcald.click();
    form.cald[0].set_text("12");
    EXPECT_EQ(calibrating.record().edited()[0], 12);
    EXPECT_FALSE(form.cald[0].faulty());
    EXPECT_TRUE(form.cmdwritecal.enabled());
}

TEST_F(RecordRead, ATextThatIsNoValueIsMarkedAndTheValueBeforeItStays) {
    form.cmdreadcald.click();
    for (const char* const text : {"12x", "", "40000"}) {
        form.cald[4].set_text(text);
        EXPECT_TRUE(form.cald[4].faulty()) << text;
        EXPECT_EQ(calibrating.record().edited()[4], 104) << text;
        EXPECT_FALSE(form.cmdwritecal.enabled()) << text;
        EXPECT_TRUE(note().starts_with("Not a whole number from -32768 to 32767: CH1 gain, low "
                                       "gain. Cannot be written.\n"))
            << note();
    }
    form.cald[4].set_text("10000");
    EXPECT_FALSE(form.cald[4].faulty());
    EXPECT_TRUE(form.cmdwritecal.enabled());
    EXPECT_EQ(note(), "The boxes were filled with the values that the instrument works with.");
}

TEST_F(RecordRead, OfManyTextsThatAreNoValuesTheFirstAreNamed) {
    form.cmdreadcald.click();
    for (TextBox& box : form.cald) {
        box.set_text("?");
    }
    EXPECT_TRUE(note().starts_with("Not a whole number from -32768 to 32767: CH1 offset, low gain; "
                                   "CH1 offset, high gain and 9 more. Cannot be written.\n"))
        << note();
}

TEST_F(RecordRead, WhyNothingCanBeWrittenStaysInSightWhateverIsSaid) {
    form.cmdreadcald.click();
    form.cald[4].set_text("x");
    const std::string reason =
        "Not a whole number from -32768 to 32767: CH1 gain, low gain. Cannot "
        "be written.";
    form.cmdsetforcalgainl.click();
    EXPECT_EQ(note(), reason);
    sweep();
    measure(0, meas::vpp, 1000.0);
    form.cald[5].set_text("y");
    form.cmdcalgain.click();
    EXPECT_EQ(note(), "Not a whole number from -32768 to 32767: CH1 gain, high gain. Cannot be "
                      "written.\n1000mV peak to peak measured in place of 1000mV.");
    choosers.answers = {"/a/missing.txt"};
    form.cmdrestorecal.click();
    EXPECT_TRUE(note().starts_with("Not a whole number")) << note();
    form.cmdcalint.click();
    bridge.receive({0});
    tick();
    EXPECT_TRUE(note().starts_with("Not a whole number")) << note();
    EXPECT_NE(note().find("\nTime left: "), std::string::npos) << note();
}

} // namespace
} // namespace kv408
