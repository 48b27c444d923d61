// Writing the record, keeping the one before, defaults, and bringing a record back.

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using testing::Test;

const std::string backup = "/settings/kv408/calibration-2026-11-21-090705.txt";

class RecordWrite : public Test, public CalibrationRig {
protected:
    RecordWrite() {
        form.cmdreadcald.click();
        forget();
    }

    void expect_nothing_written() { EXPECT_TRUE(flash_frames(34).empty()); }
};

/// The same before anything was read.
class RecordNeverRead : public Test, public CalibrationRig {};

TEST_F(RecordWrite, EveryWordAndTheMarkerAreWritten) {
    form.cald[0].set_text("2050");
    form.cald[9].set_text("-3");
    form.cmdwritecal.click();
    const auto written = flash_frames(34);
    ASSERT_EQ(written.size(), 12U);
    EXPECT_EQ(written[0], (FakeBridge::Frame{0xA4, 0x00, 0x08, 0x02, 0}));
    EXPECT_EQ(written[1], (FakeBridge::Frame{0xA4, 0x01, 0, 101, 0}));
    EXPECT_EQ(written[9], (FakeBridge::Frame{0xA4, 0x09, 0xFF, 0xFD, 0}));
    EXPECT_EQ(written[10], (FakeBridge::Frame{0xA4, 0x0A, 0, 110, 0}));
    EXPECT_EQ(written[11], (FakeBridge::Frame{0xA4, 0x3F, 0, 55, 0}));
    EXPECT_EQ(calibration[0], 2050);
    EXPECT_EQ(calibration[9], -3);
    EXPECT_EQ(calstatus(), "Write complete");
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(RecordWrite, TheMarkerEndsAWriteOfUnchangedValuesToo) {
    form.cmdwritecal.click();
    EXPECT_EQ(flash_frames(34).back(), (FakeBridge::Frame{0xA4, 0x3F, 0, 55, 0}));
    EXPECT_EQ(flash[0xA43F], 55);
}

TEST_F(RecordWrite, TheLinkIsFlushedAndThePausesAreKept) {
    const auto before = clock.now();
    form.cmdwritecal.click();
    EXPECT_EQ(bridge.calls.front().operation, "SI_FlushBuffers");
    EXPECT_EQ(bridge.calls.front().time, before);
    std::vector<std::chrono::nanoseconds> times;
    for (const FakeBridge::Call& call : bridge.calls) {
        if (call.operation == "SI_Write") {
            times.push_back(call.time);
        }
    }
    // 500 ms, then 20 ms before each word; 200 ms after the marker, then it is read back.
    ASSERT_GE(times.size(), 13U);
    EXPECT_EQ(times[0] - before, milliseconds(520));
    EXPECT_EQ(times[11] - before, milliseconds(500 + 12 * 20));
    EXPECT_EQ(times[12] - times[11], milliseconds(200));
}

TEST_F(RecordWrite, TheStatusSaysThatItIsWriting) {
    Texts seen;
    const Listening listening = form.calstatus.on_shown([&] { seen.push_back(calstatus()); });
    form.cmdwritecal.click();
    EXPECT_EQ(seen, (Texts{"Writing Cal Data", "Write complete"}));
}

TEST_F(RecordWrite, TheBarIsFullAfterTheMarker) {
    form.cmdwritecal.click();
    EXPECT_EQ(form.progressbar1.steps(), 12);
    EXPECT_EQ(form.progressbar1.value(), 12);
}

TEST_F(RecordWrite, AValueOutsideTheShownRangeIsWrittenAsTyped) {
    form.cald[8].set_text("20000");
    form.cmdwritecal.click();
    EXPECT_EQ(flash[0xA408], 20000);
}

TEST_F(RecordWrite, NothingIsWrittenWhileABoxHoldsNoValue) {
    form.cald[8].set_text("1o000");
    form.cmdwritecal.click();
    expect_nothing_written();
    EXPECT_EQ(calibration[8], 108);
    EXPECT_NE(calstatus(), "Write complete");
    EXPECT_TRUE(note().starts_with("Not a whole number from -32768 to 32767: time-base scale. "
                                   "Cannot be written.\n"))
        << note();
}

TEST_F(RecordWrite, TheRecordReadBeforeIsKeptInADatedFile) {
    form.cald[0].set_text("2050");
    form.cmdwritecal.click();
    EXPECT_TRUE(files.folders.contains("/settings/kv408"));
    ASSERT_EQ(kept(), Texts{backup});
    EXPECT_NE(files.files[backup].find("\n0 100 CH1 offset, low gain\n"), std::string::npos);
    EXPECT_EQ(note(), "Read back and found right. The values before are in "
                      "calibration-2026-11-21-090705.txt");
}

TEST_F(RecordWrite, TheNextWriteKeepsWhatWasReadBack) {
    form.cald[0].set_text("2050");
    form.cmdwritecal.click();
    form.cald[0].set_text("2060");
    clock.set_local_time({.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5});
    form.cmdwritecal.click();
    EXPECT_NE(files.files["/settings/kv408/calibration-2026-01-02-030405.txt"].find("\n0 2050 "),
              std::string::npos);
}

TEST_F(RecordWrite, WhatDiffersWhenReadBackIsNamed) {
    form.cald[4].set_text("10200");
    stubborn[0xA404] = 10100;
    form.cmdwritecal.click();
    EXPECT_EQ(calstatus(), "Write complete");
    EXPECT_EQ(note(), "Read back from the instrument: CH1 gain, low gain is 10100 and not 10200");
    EXPECT_EQ(flash_frames(33).size(), 11U);
    // What the instrument holds is what it works with.
    EXPECT_EQ(calibration[4], 10100);
    EXPECT_EQ(calibrating.record().edited()[4], 10200);
}

TEST_F(RecordWrite, AnInstrumentThatKeepsAllItsWordsGivesAShortNote) {
    for (int index = 0; index < 11; ++index) {
        stubborn[0xA400 + index] = 100 + index;
        form.cald.at(static_cast<std::size_t>(index)).set_text("1");
    }
    const CalibrationRecord before = calibration;
    form.cmdwritecal.click();
    EXPECT_EQ(note(), "Read back from the instrument: CH1 offset, low gain is 100 and not 1; CH1 "
                      "offset, high gain is 101 and not 1 and 9 more");
    EXPECT_EQ(calibration, before);
}

TEST_F(RecordWrite, SilenceWhenReadingBackIsTold) {
    words_that_come = 5;
    form.cmdwritecal.click();
    EXPECT_EQ(calstatus(), "Write complete");
    EXPECT_EQ(note(), "The instrument did not answer when the record was read back.");
}

TEST_F(RecordWrite, WithoutAFileItIsAskedWhetherToGoOn) {
    files.refusal = "No space left on device";
    boxes.answers = {MessageAnswer::no};
    form.cmdwritecal.click();
    expect_nothing_written();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Write without keeping the calibration read before?");
    EXPECT_EQ(boxes.shown[0].informative,
              "It could not be kept in a file: No space left on device");
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::yes_no);
    boxes.answers = {MessageAnswer::yes};
    form.cmdwritecal.click();
    EXPECT_EQ(flash_frames(34).size(), 12U);
    EXPECT_EQ(note(), "Read back and found right.");
}

TEST_F(RecordWrite, AnOlderFileIsNotTakenForTheOneThatCouldNotBeKept) {
    form.cmdwritecal.click();
    files.refusal = "No space left on device";
    boxes.answers = {MessageAnswer::yes};
    form.cmdwritecal.click();
    EXPECT_EQ(boxes.shown.back().title, "Write Calibration");
    EXPECT_EQ(note(), "Read back and found right.");
}

TEST_F(RecordWrite, WithoutItsFolderAFileCannotBeKept) {
    files.folder_refusal = "Permission denied";
    boxes.answers = {MessageAnswer::no};
    form.cmdwritecal.click();
    expect_nothing_written();
    EXPECT_EQ(boxes.shown[0].informative, "It could not be kept in a file: Permission denied");
}

TEST_F(RecordWrite, ARunningSweepIsSetUpAnew) {
    state_machine.cmdstartsweep_Click();
    tick();
    ASSERT_EQ(acquisition.scopestate, "scopech1f");
    form.cmdwritecal.click();
    EXPECT_EQ(acquisition.scopestate, "changes");
    EXPECT_TRUE(acquisition.acqrunning);
}

TEST_F(RecordWrite, AStoppedSweepStaysStopped) {
    form.cmdwritecal.click();
    EXPECT_EQ(acquisition.scopestate, "stoped");
}

TEST_F(RecordWrite, AnInstrumentThatIsGoneEndsTheProgram) {
    bridge.status["SI_Write"] = 5;
    EXPECT_THROW(form.cmdwritecal.click(), ProgramEnded);
    EXPECT_EQ(boxes.texts(), Texts{"Error finding WKTP2B device. Aborting application."});
}

TEST_F(RecordWrite, AnInstrumentThatGoesInTheMiddleLeavesTheRecordInItsFile) {
    const CalibrationRecord before = calibration;
    for (TextBox& box : form.cald) {
        box.set_text("7");
    }
    int words = 0;
    const auto answering = bridge.on_frame;
    bridge.on_frame = [&](const FakeBridge::Frame& frame) {
        answering(frame);
        if (++words == 4) {
            bridge.status["SI_Write"] = 5;
        }
    };
    EXPECT_THROW(form.cmdwritecal.click(), ProgramEnded);
    EXPECT_EQ(flash[0xA403], 7);
    EXPECT_EQ(flash[0xA404], 104);
    EXPECT_EQ(calibration, before);
    EXPECT_NE(files.files[backup].find("\n0 100 CH1 offset, low gain\n"), std::string::npos);
    // The instrument is back.
    bridge.status.clear();
    bridge.on_frame = answering;
    form.cmdreadcald.click();
    const std::string unfinished = "The last write was not seen to its end. The values before it "
                                   "are in calibration-2026-11-21-090705.txt; Restore brings them "
                                   "back.";
    EXPECT_EQ(note(), unfinished);
    choosers.answers = {backup};
    form.cmdrestorecal.click();
    EXPECT_EQ(calibrating.record().edited(), before);
    form.cmdwritecal.click();
    EXPECT_EQ(flash[0xA400], 100);
    EXPECT_EQ(flash[0xA403], 103);
    form.cmdreadcald.click();
    EXPECT_EQ(note(), "The boxes were filled with the values that the instrument works with.");
}

TEST_F(RecordWrite, AfterTwoWritesThatWereCutOffTheFileBeforeTheFirstIsNamed) {
    words_that_come = 0;
    form.cmdwritecal.click();
    clock.set_local_time({.year = 2026, .month = 11, .day = 21, .hour = 9, .minute = 8});
    form.cmdwritecal.click();
    ASSERT_EQ(kept().size(), 2U);
    words_that_come = 1000;
    form.cmdreadcald.click();
    EXPECT_NE(note().find(" are in calibration-2026-11-21-090705.txt;"), std::string::npos)
        << note();
}

TEST_F(RecordNeverRead, EmptyBoxesAreNotWritten) {
    EXPECT_FALSE(form.cmdwritecal.enabled());
    form.cmdwritecal.click();
    for (std::size_t index = 0; index < 10; ++index) {
        form.cald.at(index).set_text("7");
        EXPECT_FALSE(form.cmdwritecal.enabled());
    }
    form.cmdwritecal.click();
    EXPECT_TRUE(flash_frames(34).empty());
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_EQ(note(), "Not a whole number from -32768 to 32767: ADC delay. Cannot be written.");
    form.cald[10].set_text("7");
    EXPECT_TRUE(form.cmdwritecal.enabled());
}

TEST_F(RecordNeverRead, AComputedValueDoesNotMakeTheOthersWritable) {
    words_that_come = 2;
    panel.mnucalibration.click();
    form.cmdsetforcalgainl.click();
    sweep();
    measure(0, meas::vpp, 1000.0);
    form.cmdcalgain.click();
    EXPECT_EQ(form.cald[4].text(), "10000");
    EXPECT_NE(note().find("The calibration was never read from the instrument"), std::string::npos)
        << note();
    form.cmdwritecal.click();
    EXPECT_TRUE(flash_frames(34).empty());
}

TEST_F(RecordNeverRead, IsOverwrittenOnlyAfterAQuestion) {
    boxes.answers = {MessageAnswer::yes};
    form.cmdsetalltodefault.click();
    forget();
    boxes.answers = {MessageAnswer::no};
    form.cmdwritecal.click();
    EXPECT_TRUE(bridge.frames().empty());
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Overwrite the calibration in the instrument?");
    EXPECT_EQ(boxes.shown[0].title, "Write Calibration");
    EXPECT_EQ(boxes.shown[0].informative, "It was never read, so it cannot be kept in a file and "
                                          "cannot be brought back.");
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::yes_no);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::question);
    boxes.answers = {MessageAnswer::yes};
    form.cmdwritecal.click();
    EXPECT_EQ(flash_frames(34).size(), 12U);
    EXPECT_EQ(flash[0xA400], 2048);
    EXPECT_TRUE(files.written.empty());
    EXPECT_EQ(note(), "Read back and found right.");
    // It is known now.
    boxes.shown.clear();
    form.cmdwritecal.click();
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_EQ(kept(), Texts{backup});
}

TEST_F(RecordNeverRead, AReadingThatFailedDoesNotCount) {
    words_that_come = 12;
    form.cmdreadcald.click();
    boxes.answers = {MessageAnswer::yes, MessageAnswer::no};
    form.cmdsetalltodefault.click();
    form.cmdwritecal.click();
    EXPECT_EQ(boxes.texts(), (Texts{"Set calibration data to default?",
                                    "Overwrite the calibration in the instrument?"}));
}

TEST_F(RecordWrite, DefaultsAreAskedFor) {
    boxes.answers = {MessageAnswer::no};
    form.cmdsetalltodefault.click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Set calibration data to default?");
    EXPECT_EQ(boxes.shown[0].title, "Set to Default");
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::yes_no);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::question);
    const CalibrationRecord held = {100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110};
    EXPECT_EQ(calibration, held);
    EXPECT_EQ(calibrating.record().edited(), held);
    EXPECT_EQ(box_texts(),
              (Texts{"100", "101", "102", "103", "104", "105", "106", "107", "108", "109", "110"}));
}

TEST_F(RecordWrite, DefaultsComeIntoUseAtOnceButNotIntoTheInstrument) {
    boxes.answers = {MessageAnswer::yes};
    form.cald[3].set_text("x");
    form.cmdsetalltodefault.click();
    const CalibrationRecord defaults = {2048,  2048,  2048,  2048, 10000, 10000,
                                        10000, 10000, 10000, 100,  70};
    EXPECT_EQ(calibration, defaults);
    EXPECT_EQ(calibrating.record().edited(), defaults);
    EXPECT_EQ(box_texts(), (Texts{"2048", "2048", "2048", "2048", "10000", "10000", "10000",
                                  "10000", "10000", "100", "70"}));
    EXPECT_FALSE(form.cald[3].faulty());
    EXPECT_TRUE(form.cmdwritecal.enabled());
    EXPECT_TRUE(bridge.frames().empty());
    EXPECT_EQ(flash[0xA400], 100);
}

TEST_F(RecordWrite, DefaultsSetARunningSweepUpAnew) {
    state_machine.cmdstartsweep_Click();
    tick();
    boxes.answers = {MessageAnswer::yes};
    form.cmdsetalltodefault.click();
    EXPECT_EQ(acquisition.scopestate, "changes");
}

TEST_F(RecordWrite, AKeptRecordComesBackIntoTheBoxes) {
    const Texts before = box_texts();
    form.cald[0].set_text("2050");
    form.cald[10].set_text("71");
    form.cmdwritecal.click();
    choosers.answers = {backup};
    form.cmdrestorecal.click();
    ASSERT_EQ(choosers.opened.size(), 1U);
    EXPECT_EQ(choosers.opened[0].folder, "/settings/kv408");
    EXPECT_EQ(choosers.opened[0].title, "Restore Calibration");
    EXPECT_EQ(choosers.opened[0].filter,
              "Calibration records (calibration-*.txt)|calibration-*.txt|"
              "All Files (*.*)|*.*");
    EXPECT_EQ(box_texts(), before);
    EXPECT_EQ(calibrating.record().edited()[0], 100);
    EXPECT_EQ(calibration[0], 2050);
    EXPECT_EQ(flash[0xA400], 2050);
    EXPECT_EQ(note(), "calibration-2026-11-21-090705.txt is in the boxes, not yet in the "
                      "instrument.");
    form.cmdwritecal.click();
    EXPECT_EQ(flash[0xA400], 100);
    EXPECT_EQ(flash[0xA40A], 110);
}

TEST_F(RecordWrite, AFileOfTheSameSecondIsNotOverwritten) {
    form.cald[0].set_text("2050");
    form.cmdwritecal.click();
    form.cald[0].set_text("2060");
    form.cmdwritecal.click();
    const std::string second = "/settings/kv408/calibration-2026-11-21-090705-2.txt";
    EXPECT_EQ(kept(), (Texts{backup, second}));
    EXPECT_NE(files.files[backup].find("\n0 100 "), std::string::npos);
    EXPECT_NE(files.files[second].find("\n0 2050 "), std::string::npos);
}

TEST_F(RecordWrite, WithoutAFreeNameItIsAskedWhetherToGoOn) {
    const std::string dated = "/settings/kv408/calibration-2026-11-21-090705";
    files.files[dated + ".txt"] = "kept";
    for (int count = 2; count <= 99; ++count) {
        files.files[dated + "-" + std::to_string(count) + ".txt"] = "kept";
    }
    boxes.answers = {MessageAnswer::no};
    form.cmdwritecal.click();
    expect_nothing_written();
    EXPECT_TRUE(files.written.empty());
    EXPECT_EQ(boxes.shown[0].informative,
              "It could not be kept in a file: no name is free in /settings/kv408");
}

TEST_F(RecordWrite, TheFileSaysWhichInstrumentItIsOf) {
    form.cmdwritecal.click();
    EXPECT_TRUE(files.files[backup].starts_with(
        "Kv408 calibration\nserial SERIAL1\nhardware 408\nfirmware 16\n"))
        << files.files[backup];
}

TEST_F(RecordWrite, ARecordOfAnotherInstrumentIsRestoredOnlyAfterAQuestion) {
    form.cmdwritecal.click();
    std::string& file = files.files[backup];
    file.replace(file.find("SERIAL1"), 7, "SERIAL9");
    file.replace(file.find("\n0 100 "), 7, "\n0 900 ");
    choosers.answers = {backup, backup};
    boxes.answers = {MessageAnswer::no};
    form.cmdrestorecal.click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Restore the calibration of another instrument?");
    EXPECT_EQ(boxes.shown[0].informative, "It was kept for the instrument with the serial number "
                                          "SERIAL9 and the hardware ID 408, not for this one.");
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::yes_no);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::exclamation);
    EXPECT_EQ(form.cald[0].text(), "100");
    boxes.answers = {MessageAnswer::yes};
    form.cmdrestorecal.click();
    EXPECT_EQ(form.cald[0].text(), "900");
}

TEST_F(RecordWrite, AFileThatCannotBeRestoredChangesNothing) {
    files.files["/a/letter.txt"] = "Dear Sir\n";
    choosers.answers = {"/a/letter.txt", "/a/missing.txt"};
    form.cmdrestorecal.click();
    EXPECT_EQ(note(), "letter.txt cannot be restored: it holds no calibration record");
    form.cmdrestorecal.click();
    EXPECT_EQ(note(), "missing.txt cannot be restored: No such file or directory");
    choosers.answers = {"/a/x\x1B\n.txt", std::nullopt};
    form.cmdrestorecal.click();
    EXPECT_EQ(note(), "x\\x1b\\x0a.txt cannot be restored: No such file or directory");
    form.calnote.set_caption("-");
    form.cmdrestorecal.click();
    EXPECT_EQ(note(), "-"); // nothing was chosen
    EXPECT_EQ(form.cald[0].text(), "100");
}

} // namespace
} // namespace kv408
