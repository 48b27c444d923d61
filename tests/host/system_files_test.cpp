#include "host/system_files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "host/path_text.h"
#include "host/text_encoding.h"
#include "support/temporary_folder.h"
#ifdef _WIN32
#include <windows.h>
#endif

namespace kv408 {
namespace {

using std::filesystem::perms;

/// The machine's files, in a folder of the test's own.
class SystemFilesTest : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path at(const std::string& name) const {
        return folder_.path() / path_of_text(name);
    }

    void put(const std::string& name, const std::string& bytes) const {
        std::ofstream(at(name), std::ios::binary) << bytes;
    }

    [[nodiscard]] std::string content(const std::string& name) const {
        std::ifstream file(at(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// How many entries the folder has.
    [[nodiscard]] std::ptrdiff_t entries() const {
        return std::distance(std::filesystem::directory_iterator(folder_.path()), {});
    }

    FileStatus read(const std::string& name) { return files_.read(at(name), bytes_).status; }

    FileStatus replace(const std::string& name, const std::string& bytes) {
        result_ = files_.replace(at(name), bytes);
        return result_.status;
    }

    TemporaryFolder folder_;
    SystemFiles files_;
    std::string bytes_ = "unchanged";
    FileResult result_;
};

TEST_F(SystemFilesTest, WhatWasWrittenIsRead) {
    const std::string every = [] {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte) {
            bytes.push_back(static_cast<char>(byte));
        }
        return bytes;
    }();
    std::string long_content;
    for (int times = 0; times < 1000; ++times) {
        long_content += every;
    }
    for (const std::string& bytes : {std::string(), every, long_content}) {
        EXPECT_EQ(replace("file", bytes), FileStatus::done);
        EXPECT_EQ(read("file"), FileStatus::done);
        EXPECT_TRUE(bytes_ == bytes);
    }
    EXPECT_EQ(entries(), 1);
}

TEST_F(SystemFilesTest, AMissingFileOrFolderIsNotFound) {
    EXPECT_EQ(read("missing"), FileStatus::not_found);
    EXPECT_EQ(read("no folder/missing"), FileStatus::not_found);
    EXPECT_EQ(bytes_, "unchanged");
    EXPECT_EQ(replace("no folder/file", "x"), FileStatus::not_found);
    EXPECT_EQ(result_.reason, "No such file or directory");
    EXPECT_EQ(entries(), 0);
}

TEST_F(SystemFilesTest, AFolderInPlaceOfTheFileFails) {
    std::filesystem::create_directory(at("folder"));
    EXPECT_EQ(read("folder"), FileStatus::failed);
    EXPECT_EQ(replace("folder", "x"), FileStatus::failed);
    EXPECT_EQ(result_.reason, "Is a directory");
    EXPECT_TRUE(std::filesystem::is_directory(at("folder")));
    EXPECT_EQ(entries(), 1);
}

TEST_F(SystemFilesTest, AFileInPlaceOfTheFolderFails) {
    put("file", "old");
    EXPECT_EQ(read("file/below"), FileStatus::failed);
    EXPECT_EQ(replace("file/below", "x"), FileStatus::failed);
    EXPECT_EQ(files_.create_folder(at("file")).status, FileStatus::failed);
    EXPECT_EQ(files_.create_folder(at("file/below")).status, FileStatus::failed);
    EXPECT_EQ(content("file"), "old");
}

TEST_F(SystemFilesTest, AFileThatIsLargerThanAnyOfTheProgramIsNotRead) {
    put("large", "");
    std::filesystem::resize_file(at("large"), (std::uintmax_t{1} << 30U) + 1);
    EXPECT_EQ(read("large"), FileStatus::failed);
    EXPECT_EQ(bytes_, "unchanged");
}

TEST_F(SystemFilesTest, FoldersAreMadeWithThoseAboveThem) {
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(files_.create_folder(at("a/b/c")).status, FileStatus::done);
        EXPECT_TRUE(std::filesystem::is_directory(at("a/b/c")));
    }
}

TEST_F(SystemFilesTest, AWriteProtectedFileStays) {
    put("file", "old");
    std::filesystem::permissions(at("file"), perms::owner_read | perms::group_read);
    EXPECT_EQ(replace("file", "new"), FileStatus::failed);
    EXPECT_EQ(result_.reason, "Permission denied");
    EXPECT_EQ(content("file"), "old");
    EXPECT_EQ(entries(), 1);
}

TEST_F(SystemFilesTest, LeftoversOfACrashDoNotHurt) {
    put("file", "old");
    put("file.kv408-new", "half");
    std::filesystem::create_directory(at("file.kv408-new1"));
    EXPECT_EQ(replace("file", "new"), FileStatus::done);
    EXPECT_EQ(content("file"), "new");
    EXPECT_EQ(entries(), 3);
}

#ifdef _WIN32

TEST_F(SystemFilesTest, PathsAreWrittenWithTheSystemsSeparators) {
    EXPECT_EQ(text_of_path(path_of_text("C:\\a") / path_of_text("Men\xC3\xBC")),
              "C:\\a\\Men\xC3\xBC");
}

TEST_F(SystemFilesTest, TheCodePageIsTheSystems) {
    ASSERT_EQ(GetACP(), 1252U) << "the bytes below are those of the western code page";
    const std::string bytes("Men\xFC\0\x80", 6);
    const std::string text("Men\xC3\xBC\0\xE2\x82\xAC", 9); // the euro comes last
    EXPECT_EQ(from_code_page(bytes), text);
    EXPECT_EQ(to_code_page(text), bytes);
    EXPECT_EQ(to_code_page("\xE4\xB8\xAD."), "?.");
    EXPECT_EQ(from_code_page(""), "");
    EXPECT_EQ(to_code_page(""), "");
}

TEST_F(SystemFilesTest, DevicesAreLeftAlone) {
    for (const char* device : {"NUL", "CON", "nul"}) {
        EXPECT_NE(files_.read(device, bytes_).status, FileStatus::done) << device;
        EXPECT_NE(files_.replace(device, "x").status, FileStatus::done) << device;
    }
    EXPECT_EQ(bytes_, "unchanged");
}

TEST_F(SystemFilesTest, ANameThatTheSystemCannotHoldFails) {
    EXPECT_NE(replace(std::string(5000, 'x'), "x"), FileStatus::done);
    EXPECT_NE(replace("what?", "x"), FileStatus::done);
    EXPECT_EQ(entries(), 0);
}

TEST_F(SystemFilesTest, NamesAreInAnyLetters) {
    EXPECT_EQ(replace("\xE4\xB8\xAD\xD0\x96", "x"), FileStatus::done);
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / L"\u4E2D\u0416"));
}

TEST_F(SystemFilesTest, AFileThatAnotherProgramHoldsStays) {
    put("file", "old");
    void* const held = CreateFileW(at("file").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(replace("file", "new"), FileStatus::failed);
    // A sentence of the system's, not a bare number.
    EXPECT_GT(result_.reason.size(), 10U) << result_.reason;
    EXPECT_EQ(result_.reason.find("system error"), std::string::npos) << result_.reason;
    CloseHandle(held);
    EXPECT_EQ(content("file"), "old");
    EXPECT_EQ(entries(), 1);
    EXPECT_EQ(replace("file", "new"), FileStatus::done);
    EXPECT_EQ(content("file"), "new");
}

#else

TEST_F(SystemFilesTest, PathsAndCodePageKeepTheirBytes) {
    const std::string name = "Men\xC3\xBC";
    EXPECT_EQ(text_of_path(std::filesystem::path("/a") / std::filesystem::path(u8"Men\u00fc")),
              "/a/" + name);
    EXPECT_EQ(from_code_page(name), name);
    EXPECT_EQ(to_code_page(name), name);
    EXPECT_EQ(to_code_page(std::string("\0\xFF", 2)), std::string("\0\xFF", 2));
}

// Elsewhere a file knows write protection and no other permission.
TEST_F(SystemFilesTest, PermissionsAreKept) {
    for (const perms mode : {perms::owner_read | perms::owner_write,
                             perms::owner_all | perms::group_read | perms::others_read}) {
        put("file", "old");
        std::filesystem::permissions(at("file"), mode);
        EXPECT_EQ(replace("file", "new"), FileStatus::done);
        EXPECT_EQ(content("file"), "new");
        EXPECT_EQ(std::filesystem::status(at("file")).permissions(), mode);
    }
}

TEST_F(SystemFilesTest, ALinkStaysALink) {
    std::filesystem::create_directory(at("elsewhere"));
    put("elsewhere/real", "old");
    std::filesystem::create_symlink("elsewhere/real", at("link"));
    std::filesystem::create_symlink(at("link"), at("link to the link"));
    EXPECT_EQ(replace("link to the link", "new"), FileStatus::done);
    EXPECT_TRUE(std::filesystem::is_symlink(at("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(at("link to the link")));
    EXPECT_FALSE(std::filesystem::is_symlink(at("elsewhere/real")));
    EXPECT_EQ(content("elsewhere/real"), "new");
}

TEST_F(SystemFilesTest, ALinkToNothingYetIsFilled) {
    std::filesystem::create_symlink("not yet", at("link"));
    EXPECT_EQ(read("link"), FileStatus::not_found);
    EXPECT_EQ(replace("link", "new"), FileStatus::done);
    EXPECT_TRUE(std::filesystem::is_symlink(at("link")));
    EXPECT_EQ(content("not yet"), "new");
}

TEST_F(SystemFilesTest, LinksInACircleFail) {
    std::filesystem::create_symlink("b", at("a"));
    std::filesystem::create_symlink("a", at("b"));
    EXPECT_EQ(read("a"), FileStatus::failed);
    EXPECT_EQ(replace("a", "new"), FileStatus::failed);
    EXPECT_TRUE(std::filesystem::is_symlink(at("a")));
}

TEST_F(SystemFilesTest, AFolderBehindALinkIsThere) {
    std::filesystem::create_directory(at("real"));
    std::filesystem::create_symlink("real", at("link"));
    EXPECT_EQ(files_.create_folder(at("link")).status, FileStatus::done);
    EXPECT_EQ(replace("link/file", "new"), FileStatus::done);
    EXPECT_EQ(content("real/file"), "new");
}

TEST_F(SystemFilesTest, DevicesAreLeftAlone) {
    std::string bytes;
    EXPECT_EQ(files_.read("/dev/zero", bytes).status, FileStatus::failed);
    EXPECT_EQ(files_.read("/dev/null", bytes).status, FileStatus::failed);
    EXPECT_EQ(files_.replace("/dev/null", "x").status, FileStatus::failed);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(SystemFilesTest, ANameThatTheSystemCannotHoldFails) {
    const std::string name(5000, 'x');
    EXPECT_EQ(read(name), FileStatus::failed);
    EXPECT_EQ(replace(name, "x"), FileStatus::failed);
}

#endif

} // namespace
} // namespace kv408
