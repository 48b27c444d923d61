#include <gtest/gtest.h>

#include "host/path_text.h"
#include "support/settings_rig.h"

namespace kv408 {
namespace {

constexpr const char* expected_file = "/settings/kv408/ConfigsLM4RX.TXT";

constexpr const char* start_values = "intcr1vpos\t 192 \r\n"
                                     "intcr1hpos\t 192 \r\n"
                                     "intcr2vpos\t 320 \r\n"
                                     "intcr2hpos\t 448 \r\n"
                                     "cursorselect\t 0 \r\n"
                                     "TabStrip3\t 3 \r\n"
                                     "trigpos1\t 2048 \r\n"
                                     "trigpos2\t 2048 \r\n"
                                     "hyst1\t 10 \r\n"
                                     "hyst2\t 10 \r\n"
                                     "trigeredge\t 0 \r\n"
                                     "trigsource\t 0 \r\n"
                                     "ch1text.top\t 512 \r\n"
                                     "ch2text.top\t 512 \r\n"
                                     "ch1vdiv\t 2 \r\n"
                                     "ch2vdiv\t 2 \r\n"
                                     "inviatr1\t 0 \r\n"
                                     "inviatr2\t 0 \r\n"
                                     "invert1\t 0 \r\n"
                                     "invert2\t 0 \r\n"
                                     "ch1enable\t 1 \r\n"
                                     "ch2enable\t 1 \r\n"
                                     "horpos\t0\r\n"
                                     "horpos2\t0\r\n"
                                     "slenps1\t 0 \r\n"
                                     "slenps2\t 0 \r\n"
                                     "seltimediv\t 11 \r\n"
                                     "eyeon\t 0 \r\n"
                                     "gridenable\t 1 \r\n"
                                     "persist\t 0 \r\n"
                                     "average\t 0 \r\n"
                                     "TabStrip2\tCH1\r\n"
                                     "displaymeas\t 1 \r\n"
                                     "cmbmeas(0)\t 0 \r\n"
                                     "cmbmeas(1)\t 0 \r\n"
                                     "cmbmeas(2)\t 0 \r\n"
                                     "colorch1\t 65535 \r\n"
                                     "colorch2\t 16768128 \r\n"
                                     "colorbgnd\t 0 \r\n"
                                     "colorcursor\t 16777215 \r\n"
                                     "colordivbgnd\t 0 \r\n"
                                     "colorgrid\t 6052956 \r\n"
                                     "colorannos\t 8421631 \r\n"
                                     "persisttime\t 3 \r\n"
                                     "snapshotpath\t/program\r\n"
                                     "snapshotdialog\t 0 \r\n"
                                     "snapshotinvert\t 0 \r\n";

TEST(Writing, AMissingFileIsCreatedFromTheStartStateWithoutAMessage) {
    SettingsRig rig;
    rig.settings.restore();
    EXPECT_EQ(rig.files.files, (std::map<std::string, std::string>{{expected_file, start_values}}));
    EXPECT_EQ(rig.files.folders, std::set<std::string>{"/settings/kv408"});
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(Writing, HasALineForEachCheckedAnnotationBox) {
    SettingsRig rig;
    rig.display.snapshotpath = "/program";
    const std::string before = "cmbmeas(2)\t 0 \r\n";
    std::string all = start_values;
    const auto place = all.find(before) + before.size();
    rig.panel.measurement[2].annotate.put_checked(true);
    all.insert(place, "chkmeasanno\t 2 \r\n");
    EXPECT_EQ(rig.save(), all);
    rig.panel.measurement[0].annotate.put_checked(true);
    all.insert(place, "chkmeasanno\t 0 \r\n");
    EXPECT_EQ(rig.save(), all);
    rig.panel.measurement[1].annotate.put_checked(true);
    all.insert(place + std::string("chkmeasanno\t 0 \r\n").size(), "chkmeasanno\t 1 \r\n");
    EXPECT_EQ(rig.save(), all);
}

TEST(Writing, ReplacesWhatWasInTheFile) {
    SettingsRig rig;
    rig.display.snapshotpath = "/program";
    rig.files.files["/a/saved.txt"] = "anything longer than the settings" + std::string(5000, 'x');
    EXPECT_EQ(rig.save(), start_values);
}

TEST(Writing, KeepsTheFileWholeWhateverTheFolderIsCalled) {
    SettingsRig rig;
    rig.display.snapshotpath = std::string("/odd\tname\r\nsnapshotdialog\t1\0", 28);
    const std::string text = rig.save();
    EXPECT_NE(text.find("\r\nsnapshotpath\t/odd name  snapshotdialog 1\r\nsnapshotdialog\t 0 \r\n"),
              std::string::npos)
        << text;
}

TEST(Writing, MakesTheDefaultFolderWhateverFileIsWritten) {
    SettingsRig rig;
    rig.save();
    EXPECT_EQ(rig.files.folders, (std::set<std::string>{"/a", "/settings/kv408"}));
    rig.files.folders.clear();
    rig.settings.saveconfigsmon("beside.txt");
    EXPECT_EQ(rig.files.folders, std::set<std::string>{"/settings/kv408"});
    EXPECT_TRUE(rig.files.files.contains("beside.txt"));
}

TEST(Writing, TellsTheFolderThatCannotBeMade) {
    SettingsRig rig;
    rig.files.folder_refusal = "Read-only file system";
    rig.settings.saveconfigsmon(expected_file);
    ASSERT_EQ(rig.boxes.shown.size(), 1U);
    EXPECT_EQ(rig.boxes.shown[0].text,
              "The settings could not be saved. /settings/kv408: Read-only file system");
    EXPECT_EQ(rig.boxes.shown[0].icon, MessageIcon::critical);
    EXPECT_TRUE(rig.files.written.empty());
}

TEST(Writing, TellsTheFileThatCannotBeWritten) {
    SettingsRig rig;
    rig.files.refusal = "No space left on device";
    rig.settings.saveconfigsmon(expected_file);
    EXPECT_EQ(rig.boxes.texts(),
              Texts{"The settings could not be saved. /settings/kv408/ConfigsLM4RX.TXT: "
                    "No space left on device"});
}

TEST(Writing, AtTheEndHappensOnceAndOnlyAfterACompleteStart) {
    SettingsRig rig;
    rig.settings.save_at_end(true);
    EXPECT_TRUE(rig.files.files.empty());
    rig.files.files[expected_file] = "horpos\t77\r\n";
    rig.settings.restore();
    rig.settings.save_at_end(true);
    EXPECT_TRUE(rig.files.written.empty());
    rig.settings.start_keeping();
    rig.settings.save_at_end(true);
    rig.settings.save_at_end(true);
    EXPECT_EQ(rig.cancelled, 1);
    EXPECT_EQ(rig.files.written, Texts{expected_file});
    EXPECT_NE(rig.files.files[expected_file].find("horpos\t77\r\n"), std::string::npos);
}

TEST(Writing, AtTheEndIsToldOnlyWhereItMayBe) {
    for (const bool tell : {true, false}) {
        SettingsRig rig;
        rig.settings.restore();
        rig.settings.start_keeping();
        rig.files.refusal = "Permission denied";
        rig.settings.save_at_end(tell);
        EXPECT_EQ(rig.boxes.shown.size(), tell ? 1U : 0U);
    }
}

TEST(Writing, AtTheEndLeavesAFileThatCouldNotBeRead) {
    for (const bool tell : {true, false}) {
        SettingsRig rig;
        rig.files.unreadable = "Input/output error";
        rig.settings.restore();
        rig.settings.start_keeping();
        rig.boxes.shown.clear();
        rig.settings.save_at_end(tell);
        EXPECT_TRUE(rig.files.written.empty());
        std::string told = "The settings could not be saved. ";
        told += text_of_path(fake_places().settings / "ConfigsLM4RX.TXT");
        told += ": Input/output error";
        EXPECT_EQ(rig.boxes.texts(), tell ? Texts{told} : Texts{});
    }
}

TEST(Writing, AFileWithABadLineIsKeptBesideTheNewOne) {
    SettingsRig rig;
    const std::string bad = "eyeon\t1\nno tab\npersist\t1\n";
    rig.files.files[expected_file] = bad;
    rig.settings.restore();
    rig.settings.start_keeping();
    rig.settings.save_at_end(true);
    EXPECT_EQ(rig.files.files[std::string(expected_file) + ".bad"], bad);
    EXPECT_EQ(rig.files.put_beside, Texts{std::string(expected_file) + ".bad"});
    EXPECT_NE(rig.files.files[expected_file].find("persist\t 0 \r\n"), std::string::npos);
}

} // namespace
} // namespace kv408
