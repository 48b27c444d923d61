// Every text of the program that users may come to read stands in the manual.

#include <filesystem>
#include <set>

#include <gmock/gmock.h>

#include "docs/documents.h"

namespace kv408::docs {
namespace {

using testing::Contains;
using testing::Gt;
using testing::IsEmpty;
using testing::SizeIs;

/// The literals for users in the sources below the window, and in the single files that hold texts.
std::set<std::string> texts_of_the_program() {
    std::set<std::string> texts;
    const auto add = [&texts](const std::filesystem::path& path) {
        for (const std::string& literal : literals(read_text(path))) {
            if (is_for_users(literal)) {
                texts.insert(plain(literal));
            }
        }
    };
    for (const char* const folder :
         {"acquisition", "calibration", "config", "display", "host", "link", "panel"}) {
        for (const auto& entry : std::filesystem::directory_iterator(root / "src" / folder)) {
            // What a file of vectors is made of, nobody reads.
            if (entry.path().extension() == ".cpp" && entry.path().stem() != "svg_file") {
                add(entry.path());
            }
        }
    }
    for (const char* const file :
         {"acquisition/status.h", "calibration/calibration_form.h", "display/colour_items.h",
          "export/export_dialog.cpp", "export/export_file.cpp", "export/record_dialog.cpp",
          "export/recording_files.cpp"}) {
        add(root / "src" / file);
    }
    return texts;
}

std::string whole_manual() {
    std::string text;
    for (const auto& [name, markdown] : read_pages(root / "docs" / "manual")) {
        text += plain(markdown) + '\n';
    }
    return text;
}

TEST(ManualMessages, SourcesAreReadAtAll) {
    const auto texts = texts_of_the_program();
    EXPECT_THAT(texts, SizeIs(Gt(100U)));
    EXPECT_THAT(texts, Contains("Error Sending Data."));
    EXPECT_THAT(texts, Contains("CommError"));
    EXPECT_THAT(texts, Contains("Waiting For TRIGGER"));
    EXPECT_THAT(texts, Contains("Linearity Calibration will take minimum 30 minutes!"));
}

TEST(ManualMessages, EachTextIsExplained) {
    const std::string manual = whole_manual();
    // Names of controls, which nobody reads.
    const std::set<std::string> unseen = {"ExportData", "MenuAbout", "MenuExit", "MenuHelp",
                                          "SiUSBXp"};
    Findings missing;
    for (const std::string& text : texts_of_the_program()) {
        if (manual.find(text) == std::string::npos && !unseen.contains(text)) {
            missing.push_back(text);
        }
    }
    EXPECT_THAT(missing, IsEmpty());
}

} // namespace
} // namespace kv408::docs
