#include "export/reference_menu.h"

#include <gtest/gtest.h>

#include "export/csv.h"
#include "export/sample_sweep.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

struct ReferenceMenuTest : testing::Test {
    /// Announces `sweep` as the last one.
    void finish(const Sweep& sweep) {
        sweeps.finish(sweep.mode, sweep.time, sweep.channel, sweep.came);
    }
    ReferenceControls& controls(std::size_t place) { return menu.controls(place); }

    Sweeps sweeps;
    VirtualClock clock;
    FakeMessageBoxes boxes;
    FakeFiles files;
    FakeFileChoosers choosers;
    std::vector<ShownReference> shown;
    ReferenceMenu menu{sweeps,
                       {.clock = clock, .boxes = boxes, .files = files, .choosers = choosers},
                       [] { return ExportOrigin{.version = "1", .serial = "S"}; },
                       [this](std::vector<ShownReference> next) { shown = std::move(next); }};
};

TEST_F(ReferenceMenuTest, KeepsShowsHidesAndClears) {
    EXPECT_FALSE(controls(0).mnuReferenceShow.enabled());
    EXPECT_FALSE(controls(0).lblReference.visible());
    controls(0).mnuReferenceKeepCH1.click();
    EXPECT_EQ(boxes.shown.at(0).text, "CH1 has no whole sweep to keep.");
    finish(block_sweep());
    controls(0).mnuReferenceKeepCH1.click();
    controls(3).mnuReferenceKeepCH2.click();
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].caption, "R1 CH1 sweep 1   0.1V/div   20ns/div");
    EXPECT_EQ(shown[1].curve->channel, ch2);
    EXPECT_NE(shown[0].colour, shown[1].colour);
    EXPECT_EQ(controls(3).lblReference.caption(), shown[1].caption);
    EXPECT_EQ(controls(3).lblReference.fore_colour(), shown[1].colour);
    EXPECT_TRUE(controls(3).mnuReferenceShow.checked());
    controls(0).mnuReferenceShow.set_checked(false);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].caption, "R4 CH2 sweep 1   0.2V/div   20ns/div");
    EXPECT_TRUE(controls(0).lblReference.visible()) << "to be shown again";
    controls(0).mnuReferenceShow.set_checked(true);
    EXPECT_EQ(shown.size(), 2U);
    controls(3).mnuReferenceClear.click();
    EXPECT_EQ(shown.size(), 1U);
    EXPECT_FALSE(controls(3).mnuReferenceShow.enabled());
    EXPECT_FALSE(controls(3).mnuReferenceShow.checked());
    EXPECT_FALSE(controls(3).lblReference.visible());
    // A place without a reference has nothing to show.
    controls(3).mnuReferenceShow.set_checked(true);
    EXPECT_FALSE(controls(3).mnuReferenceShow.checked());
    EXPECT_EQ(shown.size(), 1U);
}

TEST_F(ReferenceMenuTest, ComesBackFromTheFileThatItSaved) {
    finish(block_sweep(64.0));
    controls(1).mnuReferenceKeepCH2.click();
    choosers.answers = {"/kept.csv", "/kept.csv"};
    controls(1).mnuReferenceSave.click();
    EXPECT_EQ(choosers.saved.at(0).default_name, "R2_CH2.csv");
    controls(2).mnuReferenceLoad.click();
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[1].caption, "R3 kept.csv   0.2V/div   20ns/div");
    EXPECT_EQ(shown[1].curve->mv, shown[0].curve->mv);
    EXPECT_EQ(shown[1].curve->channel, ch2);
    EXPECT_EQ(shown[1].curve->first_time, 64.0);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ReferenceMenuTest, AsksWhichChannelOfAFileWithBoth) {
    files.files["/both.csv"] = csv_text(exported(block_sweep(64.0)));
    choosers.answers = {"/both.csv", "/both.csv", "/both.csv"};
    boxes.answers = {MessageAnswer::cancel, MessageAnswer::ok, MessageAnswer::extra};
    controls(0).mnuReferenceLoad.click();
    EXPECT_TRUE(shown.empty());
    controls(0).mnuReferenceLoad.click();
    controls(1).mnuReferenceLoad.click();
    ASSERT_EQ(boxes.shown.size(), 3U);
    EXPECT_EQ(boxes.shown[0].text, "both.csv holds CH1 and CH2.");
    EXPECT_EQ(boxes.shown[0].informative, "OK keeps CH1.");
    EXPECT_EQ(boxes.shown[0].extra_button, "Keep CH2");
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].curve->channel, ch1);
    EXPECT_EQ(shown[1].curve->channel, ch2);
    EXPECT_EQ(shown[1].curve->first_time, 64.0) << "CH2's own delay";
    EXPECT_EQ(shown[1].caption, "R2 both.csv   0.2V/div   20ns/div");
}

TEST_F(ReferenceMenuTest, TellsWithThePathWhatCannotBeLoadedOrSaved) {
    finish(block_sweep());
    controls(0).mnuReferenceKeepCH1.click();
    choosers.answers = {"/away.csv", "/letter.txt", "/full/kept.csv"};
    files.files["/letter.txt"] = "Dear Sir";
    controls(0).mnuReferenceLoad.click();
    controls(0).mnuReferenceLoad.click();
    files.refusal = "No space left on device";
    controls(0).mnuReferenceSave.click();
    ASSERT_EQ(boxes.shown.size(), 3U);
    EXPECT_EQ(boxes.shown[0].text, "/away.csv could not be loaded: No such file or directory");
    EXPECT_EQ(boxes.shown[1].text,
              "/letter.txt could not be loaded: line 1: no headings of ours: Dear Sir");
    EXPECT_EQ(boxes.shown[2].text, "/full/kept.csv could not be saved: No space left on device");
    EXPECT_EQ(shown.at(0).caption, "R1 CH1 sweep 1   0.1V/div   20ns/div") << "is still there";
    // Nothing chosen, nothing done.
    controls(0).mnuReferenceLoad.click();
    controls(0).mnuReferenceSave.click();
    EXPECT_EQ(boxes.shown.size(), 3U);
}

} // namespace
} // namespace kv408
