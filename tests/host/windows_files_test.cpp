// Files on Windows: what others hold or plant neither loses a write nor gets it.

#ifdef _WIN32

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "host/elsewhere.h"
#include "host/in_place.h"
#include "host/new_file.h"
#include "host/new_file_name.h"
#include "host/system_files.h"
#include "support/temporary_folder.h"
#include <windows.h>

#include <aclapi.h>

namespace kv408 {
namespace {

/// A file with "old" and a folder for temporary files of the test's own.
class WindowsFiles : public testing::Test {
public:
    WindowsFiles() {
        std::filesystem::create_directory(place_);
        std::filesystem::create_directory(temporary_);
        std::ofstream(file_) << "old";
        SetEnvironmentVariableW(L"TMP", temporary_.c_str());
    }
    ~WindowsFiles() override {
        let_go();
        forbid(place_, false);
        SetEnvironmentVariableW(L"TMP", before_.c_str());
    }

protected:
    /// Another program holds the file and lets others do what `sharing` says; it may not be
    /// replaced.
    void hold(DWORD sharing) {
        held_ =
            CreateFileW(file_.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(held_, INVALID_HANDLE_VALUE);
    }
    void let_go() {
        if (held_ != INVALID_HANDLE_VALUE) {
            CloseHandle(held_);
            held_ = INVALID_HANDLE_VALUE;
        }
    }

    /// Lets nobody, or everybody again, make files in `folder`; whether that could be said.
    static bool forbid(const std::filesystem::path& folder, bool forbidden) {
        std::array<unsigned char, SECURITY_MAX_SID_SIZE> everybody = {};
        DWORD size = everybody.size();
        CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &size);
        EXPLICIT_ACCESSW access = {};
        access.grfAccessPermissions =
            forbidden ? GENERIC_READ | GENERIC_EXECUTE | WRITE_DAC : GENERIC_ALL;
        access.grfAccessMode = SET_ACCESS;
        BuildTrusteeWithSidW(&access.Trustee, everybody.data());
        ACL* list = nullptr;
        std::wstring name = folder.native();
        const bool said =
            SetEntriesInAclW(1, &access, nullptr, &list) == ERROR_SUCCESS &&
            SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                                  DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                                  nullptr, nullptr, list, nullptr) == ERROR_SUCCESS;
        LocalFree(list);
        return said;
    }

    static std::ptrdiff_t entries(const std::filesystem::path& folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }

    std::filesystem::path before_ = std::filesystem::temp_directory_path();
    TemporaryFolder folder_;
    std::filesystem::path place_ = folder_.path() / "place";
    std::filesystem::path temporary_ = folder_.path() / "temporary";
    std::filesystem::path file_ = place_ / "file";
    void* held_ = INVALID_HANDLE_VALUE;
};

TEST_F(WindowsFiles, WhereTheFolderTakesNoNewFileItIsWrittenInPlaceAfterACopy) {
    ASSERT_TRUE(forbid(place_, true));
    const bool refused = !std::ofstream(place_ / "probe").is_open();
    for (const char* text : {"newer and longer", "new"}) {
        const std::string old = content(file_);
        const FileResult result = SystemFiles().replace(file_, text);
        EXPECT_EQ(result.status, FileStatus::done) << result.reason;
        EXPECT_EQ(content(file_), text);
        // Some users, as root under Wine, are refused nothing: for them it is replaced as ever.
        EXPECT_EQ(content(result.copy), refused ? old : "");
        EXPECT_EQ(entries(temporary_), refused ? 1 : 0) << "of each file one copy is kept";
    }
    EXPECT_EQ(entries(place_), refused ? 1 : 2);
}

TEST_F(WindowsFiles, WhatAnotherProgramHoldsIsNotWrittenUnderItsHands) {
    for (const DWORD sharing : {FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE}) {
        hold(sharing);
        EXPECT_EQ(SystemFiles().replace(file_, "new").status, FileStatus::failed);
        EXPECT_EQ(content(file_), "old");
        EXPECT_EQ(entries(temporary_), 0);
        EXPECT_EQ(entries(place_), 1);
        let_go();
    }
}

TEST_F(WindowsFiles, InPlaceAFileGetsLongerAndShorter) {
    EXPECT_TRUE(may_be_written(file_));
    for (const char* text : {"newer and longer", "x", ""}) {
        EXPECT_FALSE(write_in_place(file_, text, content(file_)));
        EXPECT_EQ(content(file_), text);
    }
    hold(FILE_SHARE_READ);
    EXPECT_FALSE(may_be_written(file_));
    EXPECT_TRUE(write_in_place(file_, "new", "old"));
    EXPECT_EQ(content(file_), "");
}

TEST_F(WindowsFiles, FoldersAndDevicesAreNotWrittenInPlace) {
    EXPECT_FALSE(may_be_written(place_));
    EXPECT_FALSE(may_be_written("NUL"));
    EXPECT_FALSE(may_be_written(place_ / "nothing"));
    EXPECT_TRUE(write_in_place(place_ / "nothing", "new", "old"));
    EXPECT_EQ(entries(place_), 1);
}

TEST_F(WindowsFiles, WhatIsSetAsideLiesElsewhereWhereItCannotLieBesideAndIsFoundAgain) {
    const auto target = place_ / "no such folder" / "file";
    SystemFiles files;
    std::filesystem::path place;
    ASSERT_EQ(files.set_aside(target, "mine", place).status, FileStatus::done);
    EXPECT_EQ(place.parent_path(), temporary_);
    EXPECT_EQ(content(place), "mine");
    EXPECT_EQ(files.aside(target), place);
    files.drop_aside(target);
    EXPECT_EQ(files.aside(target), std::filesystem::path());
    EXPECT_EQ(entries(temporary_), 0);
}

TEST_F(WindowsFiles, ANameThatIsTakenByAnythingIsLeftAloneAndAnotherOneTaken) {
    std::filesystem::create_directory(new_file_path(file_, 1));
    std::ofstream(new_file_path(file_, 2)) << "planted";
    std::uint64_t number = 0;
    {
        NewFile file(file_, [&] { return ++number; });
        EXPECT_FALSE(file.write("new"));
        EXPECT_EQ(number, 3U);
        EXPECT_FALSE(file.take_place());
    }
    EXPECT_EQ(content(file_), "new");
    EXPECT_EQ(content(new_file_path(file_, 2)), "planted");
    NewFile held(file_, [] { return std::uint64_t{2}; });
    EXPECT_EQ(held.write("newer"), std::errc::file_exists);
    EXPECT_EQ(content(new_file_path(file_, 2)), "planted");
}

TEST_F(WindowsFiles, NumbersOfNamesDoNotRepeat) {
    std::set<std::uint64_t> numbers;
    for (int times = 0; times < 1000; ++times) {
        numbers.insert(unforeseeable_number());
    }
    EXPECT_EQ(numbers.size(), 1000U);
}

TEST_F(WindowsFiles, AFileIsMadeOnlyWhereNothingIs) {
    EXPECT_EQ(SystemFiles().create(file_, "second").status, FileStatus::exists);
    EXPECT_EQ(SystemFiles().create(place_, "second").status, FileStatus::exists);
    EXPECT_EQ(content(file_), "old");
    EXPECT_EQ(SystemFiles().create(place_ / "other", "first").status, FileStatus::done);
    EXPECT_EQ(content(place_ / "other"), "first");
    EXPECT_EQ(entries(place_), 2);
}

TEST_F(WindowsFiles, NamesAsLongAsTheSystemAllowsAreWritten) {
    // A path of more than 259 letters would need a form of its own.
    const auto room = std::size_t{258} - folder_.path().native().size();
    const auto path = folder_.path() / std::string(room, 'n');
    EXPECT_EQ(SystemFiles().replace(path, "old").status, FileStatus::done);
    EXPECT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    EXPECT_EQ(content(path), "new");
}

} // namespace
} // namespace kv408

#endif
