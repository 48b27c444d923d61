// The tools beside a sweeping instrument: what they get, and that nothing else changes.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/export_dialog.h"
#include "export/record_dialog.h"
#include "host/shown_text.h"
#include "scope/help.h"
#include "scope/program.h"

namespace kv408 {
namespace {

TEST(Tools, BothMenuEntriesOpenTheExportOfTheSweepThatIsShown) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(12);
    ExportDialog& dialog = program.scope.tools().export_dialog();
    int shown = 0;
    dialog.on_show([&shown] { ++shown; });
    program.scope.act([&] { program.scope.panel().exportdata.click(); });
    program.scope.act([&] { program.scope.panel().mnuexport.click(); });
    EXPECT_EQ(shown, 2);
    const std::string preview = dialog.controls().lblExportPreview.caption();
    EXPECT_EQ(preview.find("# Kv408 1.6.0\n# serial: lm4rxa"), 0U);
    EXPECT_NE(preview.find("\nTime (s),CH1 (V),CH2 (V)\n0,"), std::string::npos);
    program.ticks(4);
    EXPECT_NE(dialog.controls().lblExportPreview.caption(), preview) << "follows the sweeps";
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(4);
    program.scope.act([&] { dialog.controls().cmdExport.click(); });
    EXPECT_EQ(program.files.written.back().find("/documents/Kv408_"), 0U);
    dialog.on_show({});
}

TEST(Tools, ARecordingSendsNothingAndMissesNothing) {
    Program with;
    Program without;
    for (Program* const program : {&with, &without}) {
        ASSERT_TRUE(program->scope.start());
        program->ticks(4);
    }
    RecordDialog& dialog = with.scope.tools().record_dialog();
    with.scope.act([&] {
        with.scope.panel().mnurecord.click();
        dialog.controls().cmbRecordType.set_index(1); // numbered, which the files in memory take
        dialog.controls().txtRecordCount.set_text("5");
        dialog.controls().cmdRecord.click();
    });
    for (Program* const program : {&with, &without}) {
        program->ticks(60);
    }
    while (dialog.controls().cmdRecordStop.enabled()) {
        with.ticks(1);
        without.ticks(1);
    }
    EXPECT_EQ(dialog.controls().lblRecordDone.caption(), "5");
    EXPECT_EQ(dialog.controls().lblRecordMissed.caption(), "0");
    EXPECT_EQ(frames_of(with), frames_of(without));
}

/// `path` as people read it here: with this system's separators.
std::string shown_here(const char* path) {
    return shown_path(std::filesystem::path(path).make_preferred());
}

/// The program with the manual's page at `page`, and what was browsed.
struct Helped {
    explicit Helped(const std::string& page) { files.files[page] = "<html>"; }

    VirtualClock clock;
    FakeMessageBoxes boxes;
    FakeFiles files;
    FrontPanel panel;
    std::vector<std::string> browsed;
    bool opens = true;
    Help help{panel,
              {.files = files,
               .boxes = boxes,
               .places = {.settings = "/home/me/.config/kv408", .program = "/usr/bin"},
               .browse =
                   [this](const std::filesystem::path& page) {
                       browsed.push_back(page.generic_string());
                       return opens;
                   }},
              "1.6.0"};
};

TEST(Help, OpensThePageOfTheTopicWhereverTheManualLies) {
    for (const char* const page :
         {"/usr/bin/manual/trigger.html", "/usr/share/doc/kv408/manual/trigger.html",
          "/docs/manual/trigger.md"}) {
        Helped on(page);
        on.help.on_topic([] { return "trigger"; });
        on.panel.menuhelp.click();
        EXPECT_EQ(on.browsed, std::vector<std::string>{page});
        EXPECT_TRUE(on.boxes.shown.empty());
    }
    Helped on("/usr/bin/manual/index.html");
    on.panel.menuhelp.click();
    on.help.on_topic([] { return "missing"; });
    on.panel.menuhelp.click();
    EXPECT_EQ(on.browsed, (std::vector<std::string>(2, "/usr/bin/manual/index.html")));
}

TEST(Help, SaysWhereToLookWhereThePageOrTheBrowserIsMissing) {
    Helped on("/usr/bin/manual/index.html");
    on.opens = false;
    on.panel.menuhelp.click();
    ASSERT_EQ(on.boxes.shown.size(), 1U);
    EXPECT_EQ(on.boxes.shown[0].text, "No browser could be started.");
    EXPECT_EQ(on.boxes.shown[0].informative,
              "The page of the manual is " + shown_here("/usr/bin/manual/index.html"));
    on.files.files.clear();
    on.panel.menuhelp.click();
    EXPECT_EQ(on.boxes.shown[1].text, "The manual has not been found.");
    EXPECT_EQ(on.boxes.shown[1].informative,
              "It was looked for here:\n" + shown_here("/usr/bin/manual/index.html") + '\n' +
                  shown_here("/usr/share/doc/kv408/manual/index.html") + '\n' +
                  shown_here("/docs/manual/index.md"));
}

TEST(Help, AboutTellsVersionLicencesAndPaths) {
    Helped on("/usr/share/doc/kv408/manual/index.html");
    on.panel.menuabout.click();
    ASSERT_EQ(on.boxes.shown.size(), 1U);
    const Message& about = on.boxes.shown[0];
    EXPECT_EQ(about.title, "About Kv408");
    EXPECT_EQ(about.text, "Kv408 1.6.0");
    for (const std::string& told : std::vector<std::string>{
             "Licence: MIT", "Qt 6 (GNU LGPL version 3)", "Asio (Boost Software License 1.0)",
             "KissFFT (copyright Mark Borgerding, BSD 3-Clause License)",
             "Settings: /home/me/.config/kv408\n",
             "Manual: " + shown_here("/usr/share/doc/kv408/manual/index.html")}) {
        EXPECT_NE(about.informative.find(told), std::string::npos) << told;
    }
#ifdef _WIN32
    constexpr bool serial_ports_by_library = false;
#else
    constexpr bool serial_ports_by_library = true;
#endif
    EXPECT_EQ(about.informative.find("libserialport (GNU LGPL version 3)") != std::string::npos,
              serial_ports_by_library);
}

} // namespace
} // namespace kv408
