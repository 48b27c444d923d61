#include "export/record_dialog.h"

#include <iterator>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "export/export_type.h"
#include "export/sample_sweep.h"
#include "host/path_text.h"
#include "host/shown_text.h"
#include "host/system_files.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/temporary_folder.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// The dialog over the machine's files, in a folder of its own; both channels are on.
struct RecordRig {
    RecordRig() {
        clock.set_local_time(
            {.year = 2026, .month = 11, .day = 22, .hour = 13, .minute = 5, .second = 9});
        for (ChannelControls& channel : panel.channel) {
            channel.enable.set_checked(true);
        }
        dialog.open(folder.path());
    }

    /// `count` sweeps, a tenth of a second apart, with a tick each.
    void sweep(int count) {
        for (int index = 0; index < count; ++index) {
            Sweep next = block_sweep();
            next.number = ++number;
            dialog.take(next);
            dialog.tick();
            clock.advance(milliseconds(100));
        }
    }

    /// Ticks until the recording has ended.
    void finish() {
        while (controls.cmdRecordStop.enabled()) {
            std::this_thread::sleep_for(milliseconds(1));
            dialog.tick();
        }
    }

    /// Of which sweeps there are lines in the file that was offered.
    [[nodiscard]] std::vector<int> recorded() const {
        std::vector<int> numbers;
        std::istringstream lines(content(file));
        for (std::string line; std::getline(lines, line);) {
            const int found = std::atoi(line.c_str());
            if (found > 0 && (numbers.empty() || numbers.back() != found)) {
                numbers.push_back(found);
            }
        }
        return numbers;
    }

    VirtualClock clock;
    FakeMessageBoxes boxes;
    SystemFiles files;
    FakeFileChoosers choosers;
    FrontPanel panel;
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "Kv408_261122_130509_sweeps.csv";
    std::uintmax_t left = space_left_free + std::uintmax_t{5} * 1024 * 1024;
    RecordDialog dialog{panel,
                        {.clock = clock, .boxes = boxes, .files = files, .choosers = choosers},
                        [] { return sample_origin; },
                        [this](const auto&) { return std::optional(left); }};
    RecordControls& controls = dialog.controls();
    std::uint64_t number = 0;
};

TEST(RecordDialog, RecordsEverySweepUntilItIsStopped) {
    RecordRig rig;
    rig.sweep(2); // before the press
    rig.controls.cmdRecord.click();
    EXPECT_FALSE(rig.controls.cmdRecord.enabled());
    EXPECT_TRUE(rig.controls.cmdRecordStop.enabled());
    EXPECT_FALSE(rig.controls.txtRecordFile.enabled());
    rig.sweep(5);
    rig.controls.cmdRecordStop.click();
    rig.sweep(2);
    rig.finish();
    EXPECT_EQ(rig.recorded(), (std::vector{3, 4, 5, 6, 7}));
    EXPECT_EQ(rig.controls.lblRecordDone.caption(), "5");
    EXPECT_EQ(rig.controls.lblRecordMissed.caption(), "0");
    EXPECT_EQ(rig.controls.lblRecordFree.caption(), "69 MB free");
    EXPECT_EQ(rig.controls.lblRecordRemark.caption(), "Saved to " + shown_path(rig.file));
    EXPECT_TRUE(rig.controls.cmdRecord.enabled());
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(RecordDialog, TakesEveryNthOrOneInATimeAndEndsByItself) {
    RecordRig rig;
    rig.controls.cmbRecordPace.set_index(1);
    rig.controls.txtRecordPace.set_text("3");
    rig.controls.txtRecordCount.set_text("2");
    rig.controls.cmdRecord.click();
    rig.sweep(4);
    rig.finish();
    EXPECT_EQ(rig.recorded(), (std::vector{1, 4}));
    rig.controls.cmbRecordPace.set_index(2);
    rig.controls.txtRecordPace.set_text("0.25");
    rig.controls.txtRecordCount.set_text("3");
    rig.boxes.answers = {MessageAnswer::yes};
    rig.controls.cmdRecord.click();
    rig.sweep(6);
    rig.finish();
    EXPECT_EQ(rig.recorded(), (std::vector{5, 8, 10}));
}

TEST(RecordDialog, WhatSaysNoPlanIsMarkedAndCannotBegin) {
    RecordRig rig;
    rig.controls.cmbRecordPace.set_index(1);
    for (const char* const text : {"", "0", "-1", "2.5", "x", "1e20"}) {
        rig.controls.txtRecordPace.set_text(text);
        EXPECT_TRUE(rig.controls.txtRecordPace.faulty()) << text;
        EXPECT_FALSE(rig.controls.cmdRecord.enabled()) << text;
        rig.controls.cmdRecord.click();
        EXPECT_FALSE(rig.controls.cmdRecordStop.enabled()) << text;
    }
    rig.controls.cmbRecordPace.set_index(2);
    rig.controls.txtRecordPace.set_text("2.5");
    EXPECT_FALSE(rig.controls.txtRecordPace.faulty());
    rig.controls.txtRecordCount.set_text("0");
    EXPECT_TRUE(rig.controls.txtRecordCount.faulty());
    rig.controls.txtRecordCount.set_text(" ");
    EXPECT_FALSE(rig.controls.txtRecordCount.faulty());
    EXPECT_TRUE(rig.controls.cmdRecord.enabled());
}

TEST(RecordDialog, AFileThatIsThereIsReplacedOnlyWhenTheUserSaysSo) {
    RecordRig rig;
    rig.files.replace(rig.file, "mine");
    rig.boxes.answers = {MessageAnswer::no};
    rig.controls.cmdRecord.click();
    EXPECT_EQ(rig.boxes.texts(),
              std::vector{shown_path(rig.file) + " exists already. Replace it?"});
    EXPECT_FALSE(rig.controls.cmdRecordStop.enabled());
    EXPECT_EQ(content(rig.file), "mine");
    rig.boxes.answers = {MessageAnswer::yes};
    rig.controls.cmdRecord.click();
    rig.sweep(1);
    rig.controls.cmdRecordStop.click();
    rig.finish();
    EXPECT_EQ(rig.recorded(), std::vector{1});
}

TEST(RecordDialog, APressWhileItAsksDoesNotBeginASecondTime) {
    RecordRig rig;
    rig.files.replace(rig.file, "mine");
    rig.boxes.answers = {MessageAnswer::yes, MessageAnswer::yes};
    rig.boxes.on_show = [&](const Message&) {
        rig.boxes.on_show = {};
        rig.controls.cmdRecord.click();
        rig.sweep(2);
    };
    rig.controls.cmdRecord.click();
    rig.sweep(1);
    rig.controls.cmdRecordStop.click();
    rig.finish();
    EXPECT_EQ(rig.recorded(), (std::vector{1, 2, 3}));
}

TEST(RecordDialog, WhatCannotBeginOrGoOnIsToldOnceWithPathAndReason) {
    RecordRig rig;
    rig.controls.txtRecordFile.set_text(text_of_path(rig.folder.path() / "gone" / "run.csv"));
    rig.controls.cmdRecord.click();
    ASSERT_EQ(rig.boxes.shown.size(), 1U);
    EXPECT_NE(rig.boxes.shown[0].text.find("run.csv could not be saved: No such file"),
              std::string::npos);
    EXPECT_FALSE(rig.controls.cmdRecordStop.enabled());
    rig.boxes.shown.clear();

    rig.controls.txtRecordFile.set_text(text_of_path(rig.file));
    rig.controls.cmdRecord.click();
    rig.sweep(2);
    rig.left = space_left_free;
    rig.sweep(3);
    rig.finish();
    rig.sweep(3);
    EXPECT_EQ(rig.boxes.texts(),
              std::vector{shown_path(rig.file) +
                          ": the recording has ended because less than 64 MB are free"});
    EXPECT_EQ(rig.controls.lblRecordRemark.caption(), rig.boxes.shown[0].text);
    EXPECT_TRUE(rig.controls.cmdRecord.enabled());
}

TEST(RecordDialog, NumberedFilesAreOfTheChosenKind) {
    RecordRig rig;
    rig.controls.cmbRecordType.set_index(3); // NumPy
    rig.controls.txtRecordFile.set_text(text_of_path(rig.folder.path() / "run"));
    rig.controls.txtRecordCount.set_text("2");
    rig.controls.cmdRecord.click();
    rig.sweep(3);
    rig.finish();
    EXPECT_EQ(content(rig.folder.path() / "run_000002.npy").substr(1, 5), "NUMPY");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(rig.folder.path()), {}), 2);
    EXPECT_EQ(rig.controls.lblRecordRemark.caption(),
              "Saved to " + shown_path(rig.folder.path() / "run_000001.npy") +
                  " to run_000002.npy");
}

TEST(RecordDialog, ClosingItAsksFirstWhileItRecords) {
    RecordRig rig;
    rig.controls.cmdRecord.click();
    rig.boxes.answers = {MessageAnswer::no, MessageAnswer::yes};
    rig.dialog.close();
    EXPECT_TRUE(rig.dialog.is_open());
    rig.sweep(1);
    rig.dialog.close();
    EXPECT_FALSE(rig.dialog.is_open());
    rig.finish();
    EXPECT_EQ(rig.recorded(), std::vector{1});
    rig.dialog.open(rig.folder.path());
    rig.dialog.close();
    EXPECT_EQ(rig.boxes.shown.size(), 2U) << "nothing is recorded";
}

TEST(RecordDialog, TheFileCanBeChosenInADialogOfTheSystem) {
    RecordRig rig;
    rig.choosers.answers = {"/other/run.csv"};
    rig.controls.cmdRecordBrowse.click();
    ASSERT_EQ(rig.choosers.saved.size(), 1U);
    EXPECT_EQ(rig.choosers.saved[0].default_name, "Kv408_261122_130509_sweeps.csv");
    EXPECT_EQ(rig.controls.txtRecordFile.text(), "/other/run.csv");
    rig.controls.cmdRecordBrowse.click(); // given up
    EXPECT_EQ(rig.controls.txtRecordFile.text(), "/other/run.csv");
}

} // namespace
} // namespace kv408
