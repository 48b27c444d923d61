#include <gtest/gtest.h>

#include "host/text_encoding.h"
#include "support/settings_rig.h"

namespace kv408 {
namespace {

constexpr const char* bad_line = "Error while reading configuration file in line ";

/// The messages after reading `bytes`.
Texts told_of_loading(std::string bytes) {
    SettingsRig rig;
    rig.load(std::move(bytes));
    return rig.boxes.texts();
}

Texts in_line(int line) {
    return {bad_line + std::to_string(line)};
}

TEST(Loading, TellsTheLineThatCannotBeTaken) {
    EXPECT_EQ(told_of_loading("seltimediv"), in_line(1));
    EXPECT_EQ(told_of_loading("eyeon\t1\r\n\r\neyeon\t1\r\n"), in_line(2));
    EXPECT_EQ(told_of_loading("eyeon\t1\r\neyeon\tx\r\n"), in_line(2));
    EXPECT_EQ(told_of_loading("eyeon\t1\r\neyeon\t2\r\n"), in_line(2));
    EXPECT_EQ(told_of_loading("eyeon\t1\r\nany\t1\r\nch1vdiv\t99999\r\n"), in_line(3));
    EXPECT_EQ(told_of_loading("eyeon 1\r\n"), in_line(1));
    EXPECT_EQ(told_of_loading("\r\n"), in_line(1));
    EXPECT_EQ(told_of_loading("   \r\n"), in_line(1));
}

TEST(Loading, AKeyWithoutATabAsThe27thLine) {
    SettingsRig writer;
    std::string bytes = writer.save();
    const auto place = bytes.find("seltimediv\t 11 \r\n");
    bytes.replace(place, std::string("seltimediv\t 11 ").size(), "seltimediv");
    SettingsRig rig;
    rig.load(bytes);
    ASSERT_EQ(rig.boxes.shown.size(), 1U);
    EXPECT_EQ(rig.boxes.shown[0].text, "Error while reading configuration file in line 27");
    EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::ok);
}

TEST(Loading, LinesBeforeABadOneStayAppliedAndThoseAfterItAreNotRead) {
    SettingsRig rig;
    rig.load("eyeon\t1\r\npersist\tyes\r\naverage\t1\r\nnor this\r\n");
    EXPECT_TRUE(rig.panel.eyeon.checked());
    EXPECT_FALSE(rig.panel.persist.checked());
    EXPECT_FALSE(rig.panel.average.checked());
    EXPECT_EQ(rig.boxes.texts(), in_line(2));
}

TEST(Loading, UnknownKeysArePassedOver) {
    SettingsRig rig;
    const std::string before = rig.save();
    rig.load("unknown\t5\r\n\t\r\n\t7\r\nunknown\tno number\r\n\xFF\xFE\t1\r\n");
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.save(), before);
}

TEST(Loading, TheEndOfTheFileIsNoLine) {
    EXPECT_EQ(told_of_loading(""), Texts{});
    EXPECT_EQ(told_of_loading("eyeon\t1"), Texts{});
    EXPECT_EQ(told_of_loading("eyeon\t1\r"), Texts{});
    EXPECT_EQ(told_of_loading("eyeon\t1\r\n"), Texts{});
    EXPECT_EQ(told_of_loading("eyeon\t1\r\n "), in_line(2));
}

TEST(Loading, LinesMayEndInALineFeedAlone) {
    SettingsRig rig;
    rig.load("eyeon\t1\npersist\t1\r\nhorpos\t55\naverage\t1");
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_TRUE(rig.panel.eyeon.checked());
    EXPECT_TRUE(rig.panel.persist.checked());
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "55");
    EXPECT_TRUE(rig.panel.average.checked());
}

TEST(Loading, TheValueIsTheSecondField) {
    SettingsRig rig;
    rig.load("eyeon\t 1 \t0\tmore\r\npersist\t\t1\r\n");
    EXPECT_TRUE(rig.panel.eyeon.checked());
    EXPECT_EQ(rig.boxes.texts(), in_line(2));
}

TEST(Loading, OnlySpacesAreTrimmed) {
    EXPECT_EQ(told_of_loading("eyeon\t\v1\r\n"), in_line(1));
    EXPECT_EQ(told_of_loading("eyeon\t1\r\r\n"), in_line(1));
    EXPECT_EQ(told_of_loading("eyeon\t\xA0"
                              "1\r\n"),
              in_line(1));
}

TEST(Loading, NulBytesAreBytesLikeOthers) {
    EXPECT_EQ(told_of_loading(std::string("eyeon\t1\0\r\n", 10)), in_line(1));
    EXPECT_EQ(told_of_loading(std::string("eye\0on\t1\r\n", 10)), Texts{});
    EXPECT_EQ(told_of_loading(std::string(1000, '\0')), in_line(1));
    SettingsRig rig;
    rig.load(std::string("snapshotpath\t/a\0b\r\nhorpos\t1\0002\r\n", 31));
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.display.snapshotpath, "/a b");
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "1");
}

TEST(Loading, TextsComeBackInTheCodePage) {
    SettingsRig rig;
    const std::string folder = "/home/me/Bilder f\xC3\xBCr Stra\xC3\x9F"
                               "e";
    const std::string line = to_code_page("snapshotpath\t" + folder + "\r\n");
    rig.load(line);
    EXPECT_EQ(rig.display.snapshotpath, folder);
    EXPECT_NE(rig.save().find(line), std::string::npos);
}

TEST(Loading, LinesOfAHundredMegabytes) {
    constexpr std::size_t length = 100'000'000;
    for (const char* start : {"unknown\t", "eyeon\t", ""}) {
        SCOPED_TRACE(start);
        SettingsRig rig;
        std::string bytes = start;
        bytes.append(length, '1').append("\r\npersist\t1\r\n");
        rig.load(std::move(bytes));
        const bool passed_over = std::string_view(start) == "unknown\t";
        EXPECT_EQ(rig.boxes.texts(), passed_over ? Texts{} : in_line(1));
        EXPECT_EQ(rig.panel.persist.checked(), passed_over);
    }
}

TEST(Loading, AKeyThatComesAThirdTimeIsAnErrorOfItsLine) {
    std::string bytes;
    for (const char* key : {"seltimediv", "ch1vdiv", "eyeon", "horpos", "TabStrip3"}) {
        const std::string line = std::string(key) + "\t1\r\n";
        EXPECT_EQ(told_of_loading(line + "unknown\t1\r\n" + line), Texts{}) << key;
        EXPECT_EQ(told_of_loading(line + line + "unknown\t1\r\n" + line), in_line(4)) << key;
        bytes += line + line;
    }
    EXPECT_EQ(told_of_loading(bytes), Texts{});
    EXPECT_EQ(told_of_loading("unknown\t1\r\nunknown\t1\r\nunknown\t1\r\n"), Texts{});
}

TEST(Loading, TheThreeAnnotationsMayEachHaveTheirLine) {
    const std::string line = "chkmeasanno\t1\r\n";
    EXPECT_EQ(told_of_loading(line + line + line), Texts{});
    EXPECT_EQ(told_of_loading(line + line + line + line), in_line(4));
}

TEST(Loading, AThirdLineOfAKeyDoesNotReachItsControl) {
    SettingsRig rig;
    rig.load("ch1vdiv\t1\r\nch1vdiv\t2\r\nch1vdiv\t3\r\nch2vdiv\t4\r\n");
    EXPECT_EQ(rig.panel.channel[0].vdiv.index(), 2);
    EXPECT_NE(rig.panel.channel[1].vdiv.index(), 4);
}

TEST(Loading, AByteOrderMarkIsNoPartOfTheFirstLine) {
    SettingsRig rig;
    rig.load("\xEF\xBB\xBFseltimediv\t 3 \r\nsnapshotpath\t/M\xC3\xA4rz\r\n");
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.panel.seltimediv.index(), 3);
    // What begins with one is UTF-8, whatever the system's code page is.
    EXPECT_EQ(rig.display.snapshotpath, "/M\xC3\xA4rz");
}

TEST(Loading, AMillionUnknownLinesArePassedOver) {
    std::string bytes;
    for (int line = 0; line < 1'000'000; ++line) {
        bytes += "x\t\n";
    }
    SettingsRig rig;
    rig.load(bytes + "eyeon\t1\n\n");
    EXPECT_TRUE(rig.panel.eyeon.checked());
    EXPECT_EQ(rig.boxes.texts(), in_line(1'000'002));
}

TEST(Loading, AFileThatCannotBeReadIsAnErrorInItsFirstLine) {
    SettingsRig rig;
    rig.files.unreadable = "Is a directory";
    rig.load("eyeon\t1\r\n");
    EXPECT_EQ(rig.boxes.texts(), in_line(1));
    EXPECT_EQ(rig.boxes.shown[0].informative, "/a/setup.txt: Is a directory");
    EXPECT_TRUE(rig.files.written.empty());
    EXPECT_FALSE(rig.panel.eyeon.checked());
}

TEST(Loading, ThePathOfAFileForgesNoLineOfAMessage) {
    SettingsRig rig;
    const std::string path = "/a\nSaved.\x1B/set-up.TXT";
    const std::string shown = "/a\\x0aSaved.\\x1b/set-up.TXT: ";
    rig.files.files[path] = "no tab\r\n";
    rig.settings.loadconfigfile(path);
    rig.files.refusal = "No space left on device";
    rig.settings.saveconfigsmon(path);
    rig.files.unreadable = "Is a directory";
    rig.settings.loadconfigfile(path);
    ASSERT_EQ(rig.boxes.shown.size(), 3U);
    EXPECT_TRUE(rig.boxes.shown[0].informative.starts_with(shown))
        << rig.boxes.shown[0].informative;
    EXPECT_TRUE(rig.boxes.shown[1].text.ends_with(shown + "No space left on device"))
        << rig.boxes.shown[1].text;
    EXPECT_EQ(rig.boxes.shown[2].informative, shown + "Is a directory");
}

TEST(Loading, AMissingFileIsCreatedWithThePresentSettings) {
    SettingsRig rig;
    rig.panel.eyeon.set_checked(true);
    rig.settings.loadconfigfile("/b/missing.txt");
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_NE(rig.files.files["/b/missing.txt"].find("eyeon\t 1 \r\n"), std::string::npos);
    EXPECT_TRUE(rig.files.folders.contains("/b"));
}

TEST(Loading, StartsFromDefaultColoursAndTheProgramsFolder) {
    SettingsRig rig;
    rig.colours.grid = rgb(1, 2, 3);
    rig.display.snapshotpath = "/elsewhere";
    rig.files.files["/settings/kv408/ConfigsLM4RX.TXT"] = "colorch1\t 1 \r\n";
    rig.settings.restore();
    EXPECT_EQ(rig.colours.ch1, rgb(1, 0, 0));
    EXPECT_EQ(rig.colours.grid, rgb(92, 92, 92));
    EXPECT_EQ(rig.display.snapshotpath, "/program");
}

TEST(Loading, ASetUpLoadedByHandKeepsWhatItDoesNotName) {
    SettingsRig rig;
    rig.colours.grid = rgb(1, 2, 3);
    rig.display.snapshotpath = "/elsewhere";
    rig.load("colorch1\t 1 \r\n");
    EXPECT_EQ(rig.colours.grid, rgb(1, 2, 3));
    EXPECT_EQ(rig.display.snapshotpath, "/elsewhere");
}

/// Handlers that take long, as those that talk with the instrument do, for every line.
struct SlowRig : SettingsRig {
    SlowRig() {
        panel.seltimediv.on_click([this] {
            clock.advance(std::chrono::milliseconds(200));
            captions.push_back(settings.loading().caption());
        });
        panel.eyeon.on_click([this] { clock.advance(std::chrono::milliseconds(400)); });
        files.files[loaded] = "eyeon\t1\r\nseltimediv\t1\r\neyeon\t0\r\npersist\t1\r\n"
                              "seltimediv\t2\r\naverage\t1\r\n";
        choosers.answers = {loaded};
    }

    Texts captions; ///< what the note said when a time base was chosen
};

TEST(Dialogs, LoadingThatTakesLongIsShownFromOneSecondOn) {
    SlowRig rig;
    Texts shown;
    rig.messages.on_process = [&](int) { shown.push_back(rig.settings.loading().caption()); };
    rig.settings.loadconfig_Click();
    // 400, 600, 1000, 1000, 1200, 1200 ms after the start, with 100 ms at least between two looks.
    EXPECT_EQ(shown, (Texts{"", "Loading the set-up: line 3", "Loading the set-up: line 5"}));
    EXPECT_EQ(rig.captions, (Texts{"", "Loading the set-up: line 3"}));
    EXPECT_EQ(rig.settings.loading().caption(), "");
    EXPECT_EQ(rig.applied, 1);
}

TEST(Dialogs, AnEndOfTheProgramEndsALoadingThatTakesLong) {
    SlowRig rig;
    rig.messages.on_process = [](int) { throw ProgramEnded{}; };
    const auto start = rig.clock.now();
    EXPECT_THROW(rig.settings.loadconfig_Click(), ProgramEnded);
    EXPECT_LE(rig.clock.now() - start, std::chrono::milliseconds(600));
    EXPECT_EQ(rig.panel.seltimediv.index(), 1);
    EXPECT_FALSE(rig.panel.persist.checked());
}

TEST(Dialogs, NothingIsLoadedWhileASetUpIsBeingLoaded) {
    SlowRig rig;
    rig.messages.on_process = [&](int) { rig.settings.loadconfig_Click(); };
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.choosers.opened.size(), 1U);
}

TEST(Dialogs, SaveSetupGivesItsNameTheEndingThatLoadSetupLists) {
    SettingsRig rig;
    rig.settings.saveconfig_Click();
    EXPECT_EQ(rig.choosers.saved.at(0).default_suffix, "TXT");
}

TEST(Dialogs, BothStartInTheFolderThatWasUsedLast) {
    SettingsRig rig;
    rig.files.files["/one/set-up.TXT"] = "eyeon\t 1 \r\n";
    rig.choosers.answers = {"/one/set-up.TXT", "/two/saved.TXT", std::nullopt};
    rig.settings.loadconfig_Click();
    rig.settings.saveconfig_Click();
    rig.settings.loadconfig_Click();
    rig.settings.loadconfig_Click();
    EXPECT_TRUE(rig.choosers.opened.at(0).folder.empty());
    EXPECT_EQ(rig.choosers.saved.at(0).folder, "/one");
    EXPECT_EQ(rig.choosers.opened.at(1).folder, "/two");
    EXPECT_EQ(rig.choosers.opened.at(2).folder, "/two");
}

TEST(Dialogs, LoadSetupAsksReadsAndApplies) {
    SettingsRig rig;
    rig.files.files["/my/set-up.TXT"] = "eyeon\t 1 \r\n";
    rig.choosers.answers = {"/my/set-up.TXT"};
    rig.settings.loadconfig_Click();
    ASSERT_EQ(rig.choosers.opened.size(), 1U);
    EXPECT_EQ(rig.choosers.opened[0].title, "Open File");
    EXPECT_EQ(rig.choosers.opened[0].filter, "Text files (*.TXT)|*.TXT|All Files (*.*)|*.*");
    EXPECT_TRUE(rig.choosers.saved.empty());
    EXPECT_TRUE(rig.panel.eyeon.checked());
    EXPECT_EQ(rig.applied, 1);
}

TEST(Dialogs, SaveSetupAsksAndWritesTheNameAsItStands) {
    SettingsRig rig;
    rig.choosers.answers = {"/my/set-up"};
    rig.settings.saveconfig_Click();
    ASSERT_EQ(rig.choosers.saved.size(), 1U);
    EXPECT_EQ(rig.choosers.saved[0].title, "Save File");
    EXPECT_EQ(rig.choosers.saved[0].filter, "Text files (*.TXT)|*.TXT|All Files (*.*)|*.*");
    EXPECT_TRUE(rig.choosers.opened.empty());
    EXPECT_EQ(rig.files.written, Texts{"/my/set-up"});
    EXPECT_EQ(rig.files.files["/my/set-up"], rig.save());
    EXPECT_EQ(rig.applied, 0);
}

TEST(Dialogs, CancelledOrWithoutANameDoNothing) {
    for (const bool cancelled : {true, false}) {
        SettingsRig rig;
        rig.choosers.answers = {std::nullopt, std::nullopt};
        if (!cancelled) {
            rig.choosers.answers = {std::filesystem::path(), std::filesystem::path()};
        }
        rig.settings.loadconfig_Click();
        rig.settings.saveconfig_Click();
        EXPECT_EQ(rig.choosers.opened.size() + rig.choosers.saved.size(), 2U);
        EXPECT_TRUE(rig.files.files.empty());
        EXPECT_TRUE(rig.boxes.shown.empty());
        EXPECT_EQ(rig.applied, 0);
    }
}

TEST(Dialogs, WhatWasTakenBeforeABadLineIsAppliedToo) {
    SettingsRig rig;
    rig.files.files["/my/set-up.TXT"] = "eyeon\t 1 \r\nbad\r\n";
    rig.choosers.answers = {"/my/set-up.TXT"};
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.boxes.texts(), in_line(2));
    EXPECT_EQ(rig.applied, 1);
}

TEST(Loading, ByHandIsAppliedWhenSomethingWasRead) {
    SettingsRig rig;
    rig.choosers.answers = {"/a/good", "/a/bad", "/a/missing"};
    rig.files.files["/a/good"] = "eyeon\t1\r\n";
    rig.files.files["/a/bad"] = "persist\t1\r\nno tab\r\n";
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.applied, 1);
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.applied, 2);
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.applied, 2);
    rig.files.unreadable = "Is a directory";
    rig.choosers.answers = {"/a/good"};
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.applied, 2);
    EXPECT_EQ(rig.cancelled, 4);
    rig.settings.loadconfig_Click();
    EXPECT_EQ(rig.cancelled, 4);
}

} // namespace
} // namespace kv408
