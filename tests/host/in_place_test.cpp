// A file that may be written, in a folder where nothing can be made or replaced.

#ifndef _WIN32

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "host/elsewhere.h"
#include "host/system_files.h"
#include "support/temporary_folder.h"
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kv408 {
namespace {

/// A file with "old" in a folder that the user may not write to, and a folder for temporary files.
class InPlaceTest : public testing::Test {
public:
    InPlaceTest() {
        ::chmod(folder_.path().c_str(), 0755);
        std::filesystem::create_directory(place_);
        std::filesystem::create_directory(temporary_);
        ::chmod(temporary_.c_str(), 01777);
        std::ofstream(file_) << "old";
        ::chmod(file_.c_str(), 0666);
        // Root may write to every folder; what is tried then is tried by somebody else.
        ::chmod(place_.c_str(), ::geteuid() == 0 ? 0755 : 0555);
    }

    ~InPlaceTest() override { ::chmod(place_.c_str(), 0755); }

protected:
    /// Runs `act` as a user who owns neither file nor folder, where that is possible; what it
    /// returns.
    template <typename Act>
    int as_somebody(const Act& act) const {
        const pid_t child = ::fork();
        if (child == 0) {
            ::setenv("TMPDIR", temporary_.c_str(), 1);
            constexpr uid_t nobody = 65534;
            const bool other = ::geteuid() != 0 || ::setuid(nobody) == 0;
            ::_exit(other ? act() : 99);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Replaces the file with `bytes`; 0 when done, and a copy was told.
    [[nodiscard]] int replace(const std::string& bytes) const {
        return as_somebody([&] {
            const FileResult result = SystemFiles().replace(file_, bytes);
            return result.status == FileStatus::done && !content(result.copy).empty() ? 0 : 1;
        });
    }

    /// The contents of the files in the folder for temporary files.
    [[nodiscard]] std::vector<std::string> copies() const {
        std::vector<std::string> texts;
        for (const auto& entry : std::filesystem::directory_iterator(temporary_)) {
            texts.push_back(content(entry.path()));
        }
        return texts;
    }

    TemporaryFolder folder_;
    std::filesystem::path place_ = folder_.path() / "place";
    std::filesystem::path temporary_ = folder_.path() / "temporary";
    std::filesystem::path file_ = place_ / "file";
};

using Texts = std::vector<std::string>;

TEST_F(InPlaceTest, ItIsWrittenInPlaceAndACopyOfTheOldOneLiesElsewhere) {
    EXPECT_EQ(replace("newer and longer"), 0);
    EXPECT_EQ(content(file_), "newer and longer");
    EXPECT_EQ(copies(), Texts{"old"});
    for (const auto& entry : std::filesystem::directory_iterator(temporary_)) {
        EXPECT_EQ(entry.status().permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
    // Of each file one copy is kept.
    EXPECT_EQ(replace("new"), 0);
    EXPECT_EQ(content(file_), "new");
    EXPECT_EQ(copies(), Texts{"newer and longer"});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(place_), {}), 1);
}

TEST_F(InPlaceTest, WhereOnlyOwnersMayReplaceItToo) {
    ::chmod(place_.c_str(), ::geteuid() == 0 ? 01777 : 0555);
    EXPECT_EQ(replace("new"), 0);
    EXPECT_EQ(content(file_), "new");
    EXPECT_EQ(copies(), Texts{"old"});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(place_), {}), 1);
}

TEST_F(InPlaceTest, WithoutACopyItIsLeftAlone) {
    std::filesystem::remove(temporary_);
    EXPECT_EQ(replace("new"), 1);
    EXPECT_EQ(content(file_), "old");
}

TEST_F(InPlaceTest, AFileThatMayNotBeWrittenIsLeftAlone) {
    ::chmod(file_.c_str(), 0444);
    EXPECT_EQ(replace("new"), 1);
    EXPECT_EQ(content(file_), "old");
    EXPECT_EQ(copies(), Texts{});
}

TEST_F(InPlaceTest, WhatIsSetAsideLiesElsewhereWhereItCannotLieBesideAndIsFoundAgain) {
    EXPECT_EQ(as_somebody([&] {
                  SystemFiles files;
                  std::filesystem::path place;
                  const FileResult result = files.set_aside(file_, "mine", place);
                  return result.status == FileStatus::done && place.parent_path() == temporary_ &&
                                 files.aside(file_) == place && content(place) == "mine"
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(copies(), Texts{"mine"});
}

TEST_F(InPlaceTest, WhatSomebodyElsePlantedIsNotFound) {
    const auto plant = [&] {
        SystemFiles files;
        std::filesystem::path place;
        return files.set_aside(file_, "planted", place).status == FileStatus::done ? 0 : 1;
    };
    EXPECT_EQ(as_somebody(plant), 0);
    ::setenv("TMPDIR", temporary_.c_str(), 1);
    SystemFiles files;
    if (::geteuid() == 0) {
        EXPECT_EQ(files.aside(file_), std::filesystem::path());
    }
    // Nor a link under such a name.
    const auto link = elsewhere("unsaved", place_ / "other");
    std::filesystem::create_symlink(file_, link);
    EXPECT_EQ(files.aside(place_ / "other"), std::filesystem::path());
    ::unsetenv("TMPDIR");
}

TEST_F(InPlaceTest, TheLatestThatWasSetAsideCountsAndAllOfItGoes) {
    ::setenv("TMPDIR", temporary_.c_str(), 1);
    SystemFiles files;
    const auto target = folder_.path() / "no" / "such" / "folder" / "file";
    std::filesystem::path first;
    std::filesystem::path second;
    ASSERT_EQ(files.set_aside(target, "first", first).status, FileStatus::done);
    ASSERT_EQ(files.set_aside(target, "second", second).status, FileStatus::done);
    std::filesystem::last_write_time(first, std::filesystem::last_write_time(second) -
                                                std::chrono::seconds(1));
    EXPECT_EQ(files.aside(target), second);
    files.drop_aside(target);
    EXPECT_EQ(files.aside(target), std::filesystem::path());
    EXPECT_EQ(copies(), Texts{});
    ::unsetenv("TMPDIR");
}

} // namespace
} // namespace kv408

#endif
