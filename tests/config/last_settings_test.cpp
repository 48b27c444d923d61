// The settings at the end of the program: what another thread may save for it, and what becomes of
// those that cannot be saved.

#include "config/last_settings.h"

#include <atomic>
#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "host/path_text.h"
#include "support/settings_rig.h"

namespace kv408 {
namespace {

constexpr const char* default_file = "/settings/kv408/ConfigsLM4RX.TXT";
constexpr const char* aside_file = "/settings/kv408/ConfigsLM4RX.TXT.unsaved";

/// A program that has started.
struct StartedRig : SettingsRig {
    StartedRig() {
        settings.restore();
        settings.start_keeping();
        settings.note_for_end();
        files.written.clear();
    }

    /// Saves as a thread does that nobody answers.
    void save_from_outside() { settings.last_settings().save(false); }

    [[nodiscard]] std::string saved(const char* path = default_file) { return files.files[path]; }
};

TEST(LastSettings, WhatWasNotedIsSavedFromOutside) {
    StartedRig rig;
    rig.panel.persist.set_checked(true);
    rig.settings.note_for_end();
    rig.panel.average.set_checked(true);
    rig.save_from_outside();
    EXPECT_NE(rig.saved().find("persist\t 1 \r\n"), std::string::npos);
    EXPECT_NE(rig.saved().find("average\t 0 \r\n"), std::string::npos) << "not noted yet";
    rig.settings.save_at_end(true);
    EXPECT_NE(rig.saved().find("average\t 1 \r\n"), std::string::npos);
}

TEST(LastSettings, NothingOlderFollowsTheLastSaving) {
    StartedRig rig;
    rig.settings.save_at_end(true);
    rig.files.written.clear();
    rig.save_from_outside();
    EXPECT_TRUE(rig.files.written.empty());
}

TEST(LastSettings, BeforeTheStartIsCompleteNothingIsSaved) {
    SettingsRig rig;
    rig.settings.restore();
    rig.settings.note_for_end();
    rig.files.written.clear();
    rig.settings.last_settings().save(false);
    rig.settings.save_without_the_window();
    EXPECT_TRUE(rig.files.written.empty());
}

TEST(LastSettings, WithoutTheWindowColoursBeingEditedAreSavedAsTheyWereBefore) {
    SettingsRig rig;
    SettingsFile settings(
        {.panel = rig.panel,
         .channels = rig.channels,
         .trigger = rig.trigger_state,
         .cursors = rig.cursor_state,
         .colours = rig.colours,
         .display = rig.display,
         .adjust = rig.adjust},
        {.files = rig.files,
         .choosers = rig.choosers,
         .boxes = rig.boxes,
         .places = rig.places,
         .clock = rig.clock,
         .messages = rig.messages,
         .program = rig.program},
        {.apply = [] {}, .cancel_edits = [] {}, .confirmed_colours = [] { return ColourTable{}; }});
    settings.restore();
    settings.start_keeping();
    rig.colours.ch1 = rgb(1, 2, 3);
    settings.save_without_the_window();
    EXPECT_NE(rig.files.files[default_file].find("colorch1\t 65535 \r\n"), std::string::npos);
    EXPECT_EQ(rig.colours.ch1, rgb(1, 2, 3)) << "what is shown stays";
}

TEST(LastSettings, WhatCannotBeSavedIsSetAsideAndOfferedAtTheNextStart) {
    std::map<std::string, std::string> left;
    {
        StartedRig rig;
        rig.panel.persist.set_checked(true);
        rig.files.refusal = "No space left on device";
        rig.settings.save_at_end(false);
        EXPECT_TRUE(rig.boxes.shown.empty());
        left = rig.files.files;
    }
    ASSERT_TRUE(left.contains(aside_file));
    for (const MessageAnswer answer : {MessageAnswer::yes, MessageAnswer::no}) {
        SettingsRig rig;
        rig.files.files = left;
        rig.boxes.answers = {answer};
        rig.settings.restore();
        ASSERT_EQ(rig.boxes.texts(),
                  Texts{"Settings of an earlier run could not be saved. Take them now?"});
        EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::yes_no);
        EXPECT_NE(rig.boxes.shown[0].informative.find(aside_file), std::string::npos);
        EXPECT_EQ(rig.panel.persist.checked(), answer == MessageAnswer::yes);
        EXPECT_FALSE(rig.files.files.contains(aside_file));
        EXPECT_EQ(rig.files.files[default_file].find("persist\t 1 \r\n") != std::string::npos,
                  answer == MessageAnswer::yes);
    }
}

TEST(LastSettings, TakenSettingsKeepNoAnnotationOfTheFileTheyStandFor) {
    SettingsRig rig;
    rig.files.files[default_file] = "chkmeasanno\t2\r\n";
    rig.files.files[aside_file] = "persist\t1\r\n"; // with nothing annotated
    rig.boxes.answers = {MessageAnswer::yes};
    rig.settings.restore();
    EXPECT_TRUE(rig.panel.persist.checked());
    EXPECT_FALSE(rig.panel.measurement[2].annotate.checked());
}

TEST(LastSettings, TakenSettingsThatStillCannotBeSavedStayAside) {
    SettingsRig rig;
    rig.files.files[default_file] = "persist\t0\r\n";
    rig.files.files[aside_file] = "persist\t1\r\n";
    rig.files.refusal = "Permission denied";
    rig.boxes.answers = {MessageAnswer::yes};
    rig.settings.restore();
    EXPECT_TRUE(rig.panel.persist.checked());
    EXPECT_TRUE(rig.files.files.contains(aside_file));
}

TEST(LastSettings, WhatWasSetAsideGoesWhenTheSettingsAreSavedAfterAll) {
    StartedRig rig;
    rig.files.refusal = "No space left on device";
    rig.save_from_outside();
    EXPECT_TRUE(rig.files.files.contains(aside_file));
    rig.files.refusal.clear();
    rig.settings.save_at_end(false);
    EXPECT_FALSE(rig.files.files.contains(aside_file));
}

TEST(LastSettings, ABoxTellsWhereTheyAreKeptInstead) {
    for (const bool nowhere : {false, true}) {
        StartedRig rig;
        rig.files.refusal = "No space left on device";
        rig.files.aside_refusal = nowhere ? rig.files.refusal : "";
        rig.settings.save_at_end(true);
        ASSERT_EQ(rig.boxes.shown.size(), 1U);
        EXPECT_EQ(rig.boxes.shown[0].informative,
                  nowhere ? "They could not be kept anywhere else either."
                          : "They are kept in " + text_of_path(rig.settings.default_path()) +
                                ".unsaved; the next start offers to take them.");
    }
}

TEST(LastSettings, WhatFailsIsToldOnTheTerminal) {
    FakeFiles files;
    std::ostringstream log;
    LastSettings settings(files, log);
    settings.note(default_file, "settings", {});
    files.refusal = "No space left on device";
    settings.save(true);
    EXPECT_EQ(log.str(), "Kv408: the settings could not be saved. " + text_of_path(default_file) +
                             ": No space left on device\nThey are kept in " +
                             text_of_path(aside_file) + "; the next start offers to take them.\n");
}

TEST(LastSettings, AFolderForgesNoLineOnTheTerminal) {
    FakeFiles files;
    std::ostringstream log;
    LastSettings settings(files, log);
    settings.note("/a\nSaved.\x1B[2J/settings.txt", "settings", {});
    files.refusal = "No space left on device";
    settings.save(true);
    EXPECT_EQ(log.str(),
              "Kv408: the settings could not be saved. /a\\x0aSaved.\\x1b[2J/settings.txt: No "
              "space left on device\nThey are kept in /a\\x0aSaved.\\x1b[2J/settings.txt.unsaved; "
              "the next start offers to take them.\n");
}

TEST(LastSettings, OneThreadNotesWhileAnotherSaves) {
    FakeFiles files;
    std::ostringstream log;
    LastSettings settings(files, log);
    std::atomic<bool> over = false;
    std::thread saver([&] {
        while (!over) {
            settings.save(false);
        }
    });
    for (int times = 0; times < 2000; ++times) {
        settings.note(default_file, std::string(100, times % 2 == 0 ? 'a' : 'b'), {});
    }
    over = true;
    saver.join();
    settings.note(default_file, "the last", {});
    settings.save(true);
    EXPECT_EQ(files.files[default_file], "the last");
}

} // namespace
} // namespace kv408
