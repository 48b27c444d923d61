#include "export/export_dialog.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "export/csv.h"
#include "export/date_text.h"
#include "export/sample_sweep.h"
#include "host/path_text.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

constexpr const char* csv_name = "/data/Kv408_261122_130509.csv";

/// What people read of the file called `name` in the folder of the tests: with this system's
/// separator.
std::string in_data(const char* name) {
    return text_of_path(std::filesystem::path("/data") / name);
}

const std::string csv_shown = in_data("Kv408_261122_130509.csv");

/// The dialog over files in memory; both channels are on, and a sweep has come.
struct ExportRig {
    ExportRig() {
        clock.set_local_time(
            {.year = 2026, .month = 11, .day = 22, .hour = 13, .minute = 5, .second = 9});
        for (ChannelControls& channel : panel.channel) {
            channel.enable.set_checked(true);
        }
        finish(block_sweep());
        dialog.on_show([this] { ++shown; });
    }

    void finish(const Sweep& sweep) {
        sweeps.finish(sweep.mode, sweep.time, sweep.channel, {true, true});
    }

    /// The sweep that is there as CSV.
    [[nodiscard]] std::string csv() const {
        ExportOrigin origin = sample_origin;
        origin.utc_offset = utc_offset(clock);
        return csv_text(exported_sweep(*sweeps.last_complete(), {true, true}, origin));
    }

    [[nodiscard]] std::string saved() const { return controls.lblExportSaved.caption(); }

    VirtualClock clock;
    FakeMessageBoxes boxes;
    FakeFiles files;
    FakeFileChoosers choosers;
    FrontPanel panel;
    Sweeps sweeps;
    ExportDialog dialog{panel,
                        sweeps,
                        {.clock = clock, .boxes = boxes, .files = files, .choosers = choosers},
                        [] { return sample_origin; }};
    ExportControls& controls = dialog.controls();
    int shown = 0;
};

TEST(ExportDialog, OpensWithANameFromDateAndTimeAndTheFirstLines) {
    ExportRig rig;
    rig.dialog.open("/data");
    EXPECT_TRUE(rig.dialog.is_open());
    EXPECT_EQ(rig.controls.txtExportFile.text(), csv_shown);
    EXPECT_EQ(rig.controls.cmbExportType.text(), "Comma-separated values (*.csv)");
    const std::string preview = rig.controls.lblExportPreview.caption();
    EXPECT_EQ(preview.find("# Kv408 1.6.0\n"), 0U);
    EXPECT_NE(preview.find("Time (s),CH1 (V),CH2 (V)\n0,-0.024,0.024\n"), std::string::npos);
    EXPECT_EQ(std::count(preview.begin(), preview.end(), '\n'), 16 + 4);
    rig.dialog.open("/elsewhere");
    EXPECT_EQ(rig.shown, 2) << "brought to the front";
    EXPECT_EQ(rig.controls.txtExportFile.text(), csv_shown);
}

TEST(ExportDialog, ANameThatTheUserTypedStays) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.dialog.close();
    rig.clock.set_local_time({.year = 2026, .month = 12, .day = 1});
    rig.dialog.open("/data");
    EXPECT_EQ(rig.controls.txtExportFile.text(), in_data("Kv408_261201_000000.csv"));
    rig.controls.txtExportFile.set_text("/data/mine.csv");
    rig.dialog.close();
    rig.dialog.open("/data");
    EXPECT_EQ(rig.controls.txtExportFile.text(), "/data/mine.csv");
}

TEST(ExportDialog, KindAndEndingFollowEachOther) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.controls.cmbExportType.set_index(2);
    EXPECT_EQ(rig.controls.txtExportFile.text(), in_data("Kv408_261122_130509.npy"));
    rig.controls.txtExportFile.set_text("/data/a.SR");
    EXPECT_EQ(rig.controls.cmbExportType.index(), 1);
    EXPECT_EQ(rig.controls.txtExportFile.text(), "/data/a.SR");
    rig.controls.txtExportFile.set_text("/data/a.b");
    EXPECT_EQ(rig.controls.cmbExportType.index(), 1);
    rig.controls.cmdExport.click();
    EXPECT_EQ(rig.saved(), "Saved to /data/a.b.sr");
}

TEST(ExportDialog, SavesTheWholeSweepThatIsThereAndStaysOpen) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.controls.cmdExport.click();
    EXPECT_EQ(rig.saved(), "Saved to " + csv_shown);
    const std::string wanted = rig.csv();
    EXPECT_EQ(rig.files.files[csv_name], wanted);
    EXPECT_TRUE(rig.dialog.is_open());
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(ExportDialog, AFileThatIsThereIsReplacedOnlyWhenTheUserSaysSo) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.files.files[csv_name] = "mine";
    rig.boxes.answers = {MessageAnswer::no};
    rig.controls.cmdExport.click();
    EXPECT_EQ(rig.boxes.texts(), (std::vector{csv_shown + " exists already. Replace it?"}));
    EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::yes_no);
    EXPECT_EQ(rig.files.files[csv_name], "mine");
    EXPECT_EQ(rig.saved(), "");
    rig.boxes.answers = {MessageAnswer::yes};
    const std::string before = rig.csv();
    rig.boxes.on_show = [&rig](const Message&) { rig.finish(pass_sweep()); };
    rig.controls.cmdExport.click();
    EXPECT_EQ(rig.files.files[csv_name], before) << "what was there at the press";
}

TEST(ExportDialog, TheSecondExportInOneSecondAsksBeforeItTakesTheNameOfTheFirst) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.controls.cmdExport.click();
    const std::string first = rig.files.files[csv_name];
    ASSERT_FALSE(first.empty());
    rig.finish(pass_sweep());
    rig.dialog.close();
    rig.dialog.open("/data");
    rig.boxes.answers = {MessageAnswer::no};
    rig.controls.cmdExport.click();
    EXPECT_EQ(rig.boxes.texts(), (std::vector{csv_shown + " exists already. Replace it?"}));
    EXPECT_EQ(rig.files.files[csv_name], first);
    EXPECT_EQ(rig.files.files.size(), 1U) << "no half file beside it";
}

TEST(ExportDialog, AFailureIsToldWithPathAndReason) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.files.refusal = "No space left on device";
    rig.controls.cmdExport.click();
    const std::string told = csv_shown + " could not be saved: No space left on device";
    EXPECT_EQ(rig.boxes.texts(), std::vector{told});
    EXPECT_EQ(rig.saved(), told) << "and stays to be read";
    EXPECT_TRUE(rig.files.files.empty());
}

TEST(ExportDialog, TellsWhatAKindOfFileCannotHold) {
    ExportRig rig;
    rig.finish(block_sweep(64.0));
    rig.dialog.open("/data");
    EXPECT_EQ(rig.controls.lblExportRemark.caption(), "");
    rig.controls.cmbExportType.set_index(1);
    EXPECT_NE(rig.controls.lblExportRemark.caption().find("delays of CH1 and CH2 differ"),
              std::string::npos);
    EXPECT_FALSE(rig.controls.cmdExport.enabled());
    rig.controls.cmdExport.click(); // as a script might
    EXPECT_TRUE(rig.files.files.empty());
    rig.finish(block_sweep());
    rig.dialog.show_sweep();
    EXPECT_TRUE(rig.controls.cmdExport.enabled());
    EXPECT_NE(rig.controls.lblExportRemark.caption().find("rounded to 3194888179 Hz"),
              std::string::npos);
}

TEST(ExportDialog, WithoutAWholeSweepOfAChannelThatIsOnThereIsNothingToSave) {
    ExportRig rig;
    for (ChannelControls& channel : rig.panel.channel) {
        channel.enable.set_checked(false);
    }
    rig.dialog.open("/data");
    EXPECT_EQ(rig.controls.lblExportPreview.caption(), "");
    EXPECT_EQ(rig.controls.lblExportRemark.caption(),
              "There is no whole sweep of a channel that is on.");
    EXPECT_FALSE(rig.controls.cmdExport.enabled());
    EXPECT_EQ(rig.dialog.clipboard_text(), "");
    rig.panel.channel[ch2].enable.set_checked(true);
    EXPECT_EQ(rig.dialog.clipboard_text().find("Time (s)\tCH2 (V)\n0\t0.024\n"), 0U);
}

TEST(ExportDialog, TheFileCanBeChosenInADialogOfTheSystem) {
    ExportRig rig;
    rig.dialog.open("/data");
    rig.controls.cmbExportType.set_index(2);
    rig.choosers.answers = {"/other/curve.csv"};
    rig.controls.cmdExportBrowse.click();
    ASSERT_EQ(rig.choosers.saved.size(), 1U);
    EXPECT_EQ(rig.choosers.saved[0].filter, "NumPy array (*.npy)|*.npy|Comma-separated values "
                                            "(*.csv)|*.csv|sigrok session (*.sr)|*.sr");
    EXPECT_EQ(rig.choosers.saved[0].default_name, "Kv408_261122_130509.npy");
    EXPECT_EQ(rig.choosers.saved[0].folder, "/data");
    EXPECT_EQ(rig.controls.txtExportFile.text(), "/other/curve.csv");
    EXPECT_EQ(rig.controls.cmbExportType.index(), 0);
    rig.controls.cmdExportBrowse.click(); // given up
    EXPECT_EQ(rig.controls.txtExportFile.text(), "/other/curve.csv");
}

} // namespace
} // namespace kv408
