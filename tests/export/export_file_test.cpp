// What becomes of saving a file.

#include "export/export_file.h"

#include <gtest/gtest.h>

#include "host/path_text.h"
#include "host/system_files.h"
#include "support/fake_files.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

struct Saving {
    SavedFile save(const std::string& name, const std::string& bytes, bool over = false) {
        return save_export(files, folder.path() / path_of_text(name), bytes, over);
    }
    [[nodiscard]] std::string path(const std::string& name) const {
        return text_of_path(folder.path() / path_of_text(name));
    }

    TemporaryFolder folder;
    SystemFiles files;
};

TEST(ExportFile, SaysWhereItWasSaved) {
    Saving saving;
    for (const std::string name : {"curve.csv", "Messung \xC3\xBC (2), 'x' #1.csv"}) {
        const SavedFile saved = saving.save(name, "points");
        EXPECT_EQ(saved.status, FileStatus::done);
        EXPECT_EQ(saved.message, "Saved to " + saving.path(name));
        EXPECT_EQ(content(saving.folder.path() / path_of_text(name)), "points");
    }
}

TEST(ExportFile, WhatIsThereIsAskedFor) {
    Saving saving;
    saving.save("curve.csv", "first");
    const SavedFile again = saving.save("curve.csv", "second");
    EXPECT_EQ(again.status, FileStatus::exists);
    EXPECT_EQ(again.message, saving.path("curve.csv") + " exists already. Replace it?");
    EXPECT_EQ(content(saving.folder.path() / "curve.csv"), "first");
    EXPECT_EQ(saving.save("curve.csv", "second", true).status, FileStatus::done);
    EXPECT_EQ(content(saving.folder.path() / "curve.csv"), "second");
}

TEST(ExportFile, AFailureNamesFileAndReasonAndLeavesNothing) {
    Saving saving;
    const SavedFile gone = saving.save("gone/curve.csv", "points");
    EXPECT_EQ(gone.status, FileStatus::failed);
    EXPECT_EQ(gone.message.find(saving.path("gone/curve.csv") + " could not be saved: "), 0U)
        << gone.message;
    EXPECT_GT(gone.message.size(),
              (saving.path("gone/curve.csv") + " could not be saved: ").size());
    EXPECT_TRUE(std::filesystem::is_empty(saving.folder.path()));
}

TEST(ExportFile, AFullDiskIsToldAndWhatWasThereStays) {
    FakeFiles files;
    files.files["/data/curve.csv"] = "first";
    files.refusal = "No space left on device";
    for (const std::string path : {"/data/curve.csv", "/data/new.csv"}) {
        const SavedFile saved = save_export(files, path, "points", true);
        EXPECT_EQ(saved.status, FileStatus::failed);
        EXPECT_EQ(saved.message, path + " could not be saved: No space left on device");
    }
    EXPECT_EQ(files.files.size(), 1U);
    EXPECT_EQ(files.files["/data/curve.csv"], "first");
}

} // namespace
} // namespace kv408
