// What others plant in a folder that they may write to neither gets the program's writes nor holds
// it, and what the program writes is seen only by whom the old file allowed.

#ifndef _WIN32

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "host/new_file.h"
#include "host/new_file_name.h"
#include "host/processes.h"
#include "host/system_files.h"
#include "support/temporary_folder.h"
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kv408 {
namespace {

/// Permission bits of the file at `path`.
unsigned mode_of(const std::filesystem::path& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

/// The status of writing `bytes` to `path` in a process that ends by itself after two seconds;
/// -1 when it had to.
int write_within_two_seconds(const std::filesystem::path& path, const std::string& bytes) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(2);
        ::_exit(static_cast<int>(SystemFiles().replace(path, bytes).status));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(PlantedFiles, ALinkUnderTheNameThatAnEarlierReleaseWouldTakeIsNotFollowed) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const auto prey = folder.path() / "prey";
    std::ofstream(prey) << "the user's own";
    std::filesystem::create_symlink(prey, folder.path() /
                                              ("file.kv408-new" + std::to_string(process_id())));
    EXPECT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    EXPECT_EQ(content(prey), "the user's own");
    EXPECT_FALSE(std::filesystem::is_symlink(path));
    EXPECT_EQ(content(path), "new");
}

TEST(PlantedFiles, WhatTheProgramLaysBesideAFileFollowsNoLink) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const auto prey = folder.path() / "prey";
    std::ofstream(prey) << "the user's own";
    const auto copy = folder.path() / "file.bad";
    const auto aside = folder.path() / "file.unsaved";
    std::filesystem::create_symlink(prey, copy);
    std::filesystem::create_symlink(prey, aside);
    EXPECT_EQ(SystemFiles().put(copy, "a copy").status, FileStatus::done);
    std::filesystem::path place;
    EXPECT_EQ(SystemFiles().set_aside(path, "settings", place).status, FileStatus::done);
    EXPECT_EQ(content(prey), "the user's own");
    EXPECT_EQ(content(copy), "a copy");
    EXPECT_EQ(content(aside), "settings");
    // It is found by the next start, and not taken for another user's.
    EXPECT_EQ(SystemFiles().aside(path), aside);
}

TEST(PlantedFiles, AFifoUnderThatNameHoldsNobody) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(2);
        const auto fifo =
            folder.path() / ("file.kv408-new" + std::to_string(static_cast<int>(::getpid())));
        const bool planted = ::mkfifo(fifo.c_str(), 0666) == 0;
        ::_exit(planted ? static_cast<int>(SystemFiles().replace(path, "new").status) : 99);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << "it hung";
    EXPECT_EQ(WEXITSTATUS(status), static_cast<int>(FileStatus::done));
    EXPECT_EQ(content(path), "new");
}

TEST(PlantedFiles, ANameThatIsTakenByAnythingIsLeftAloneAndAnotherOneTaken) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const auto prey = folder.path() / "prey";
    std::ofstream(prey) << "the user's own";
    std::filesystem::create_symlink(prey, new_file_path(path, 1));
    std::filesystem::create_symlink(folder.path() / "nothing", new_file_path(path, 2));
    ASSERT_EQ(::mkfifo(new_file_path(path, 3).c_str(), 0666), 0);
    std::filesystem::create_directory(new_file_path(path, 4));
    std::ofstream(new_file_path(path, 5)) << "another write";
    std::uint64_t number = 0;
    {
        NewFile file(path, [&] { return ++number; });
        EXPECT_FALSE(file.write("new"));
        EXPECT_EQ(number, 6U);
        EXPECT_EQ(mode_of(new_file_path(path, 6)), 0600U);
        EXPECT_FALSE(file.take_place());
    }
    EXPECT_EQ(content(path), "new");
    EXPECT_EQ(content(prey), "the user's own");
    EXPECT_EQ(content(new_file_path(path, 5)), "another write");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "nothing"));
    NewFile held(path, [] { return std::uint64_t{1}; });
    EXPECT_EQ(held.write("newer"), std::errc::file_exists);
}

TEST(PlantedFiles, NumbersOfNamesDoNotRepeat) {
    std::set<std::uint64_t> numbers;
    for (int times = 0; times < 1000; ++times) {
        numbers.insert(unforeseeable_number());
    }
    EXPECT_EQ(numbers.size(), 1000U);
}

TEST(PlantedFiles, AFileIsMadeOnlyWhereNothingIs) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const auto link = folder.path() / "link";
    EXPECT_EQ(SystemFiles().create(path, "first").status, FileStatus::done);
    EXPECT_EQ(SystemFiles().create(path, "second").status, FileStatus::exists);
    EXPECT_EQ(content(path), "first");
    std::filesystem::create_symlink("nothing", link);
    EXPECT_EQ(SystemFiles().create(link, "second").status, FileStatus::exists);
    EXPECT_EQ(SystemFiles().create(folder.path() / "none" / "file", "x").status,
              FileStatus::not_found);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(PlantedFiles, ForANameThatIsTakenNothingIsWritten) {
    // A snapshot tries all the names of its second, and each would be a picture on the disk.
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    std::ofstream(path) << "first";
    std::filesystem::create_symlink("nothing", folder.path() / "link");
    const auto long_ago = std::filesystem::last_write_time(path) - std::chrono::hours(1);
    std::filesystem::last_write_time(folder.path(), long_ago);
    EXPECT_EQ(SystemFiles().create(path, "second").status, FileStatus::exists);
    EXPECT_EQ(SystemFiles().create(folder.path() / "link", "second").status, FileStatus::exists);
    EXPECT_EQ(std::filesystem::last_write_time(folder.path()), long_ago);
}

TEST(PlantedFiles, ANewFileIsAsTheUmaskSaysAndAnOldOneStaysAsItWas) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const mode_t before = ::umask(027);
    EXPECT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    EXPECT_EQ(mode_of(path), 0640U);
    for (const mode_t mode : {0600U, 0604U, 0666U}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        EXPECT_EQ(SystemFiles().replace(path, "newer").status, FileStatus::done);
        EXPECT_EQ(mode_of(path), mode);
    }
    EXPECT_EQ(::umask(before), 027U);
}

TEST(PlantedFiles, RootLeavesAFileToItsOwner) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    std::ofstream(path) << "old";
    constexpr uid_t owner = 4711;
    constexpr gid_t group = 4712;
    // Only root may give a file away; for anybody else it stays the user's own.
    const bool given = ::chown(path.c_str(), owner, group) == 0;
    EXPECT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, given ? owner : ::geteuid());
    EXPECT_EQ(status.st_gid, given ? group : status.st_gid);
    EXPECT_EQ(content(path), "new");
}

TEST(PlantedFiles, CopiesAreReadByNobodyWhoMayNotReadTheFile) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const auto copy = folder.path() / "file.bad";
    std::ofstream(path) << "old";
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    constexpr uid_t owner = 4711;
    const bool given = ::chown(path.c_str(), owner, 4712) == 0;
    // Behind a link it is the file that counts.
    const auto link = folder.path() / "link";
    std::filesystem::create_symlink("file", link);
    std::ofstream(copy) << "an older copy";
    ASSERT_EQ(::chmod(copy.c_str(), 0666), 0);
    EXPECT_EQ(SystemFiles().put_copy(copy, "old", link).status, FileStatus::done);
    EXPECT_EQ(content(copy), "old");
    EXPECT_EQ(mode_of(copy), 0640U);
    struct stat status = {};
    ASSERT_EQ(::stat(copy.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, given ? owner : ::geteuid());
    // What is set aside is the user's own, beside the file and elsewhere.
    std::filesystem::path place;
    EXPECT_EQ(SystemFiles().set_aside(path, "settings", place).status, FileStatus::done);
    EXPECT_EQ(mode_of(place), 0600U);
    const auto target = folder.path() / "no folder" / "file";
    EXPECT_EQ(SystemFiles().set_aside(target, "settings", place).status, FileStatus::done);
    EXPECT_EQ(mode_of(place), 0600U);
    SystemFiles().drop_aside(target);
}

TEST(PlantedFiles, TwoProcessesThatMakeFilesAtATimeTakeNoNameTwice) {
    const TemporaryFolder folder;
    constexpr int files_each = 60;
    const auto make = [&folder](char letter) {
        SystemFiles files;
        for (int made = 0, number = 1; made < files_each && number <= 4 * files_each; ++number) {
            const auto name = folder.path() / std::to_string(number);
            made +=
                files.create(name, std::string(1000, letter)).status == FileStatus::done ? 1 : 0;
        }
    };
    const pid_t child = ::fork();
    if (child == 0) {
        make('a');
        ::_exit(0);
    }
    make('b');
    ::waitpid(child, nullptr, 0);
    int of_the_child = 0;
    for (int number = 1; number <= 2 * files_each; ++number) {
        const std::string bytes = content(folder.path() / std::to_string(number));
        of_the_child += bytes == std::string(1000, 'a') ? 1 : 0;
        EXPECT_EQ(bytes.size(), 1000U) << number;
    }
    EXPECT_EQ(of_the_child, files_each);
}

TEST(PlantedFiles, NamesAsLongAsTheSystemAllowsAreWritten) {
    const TemporaryFolder folder;
    for (const std::size_t length : {std::size_t{240}, std::size_t{241}, std::size_t{255}}) {
        const auto path = folder.path() / std::string(length, 'n');
        EXPECT_EQ(write_within_two_seconds(path, "old"), 0) << length;
        EXPECT_EQ(write_within_two_seconds(path, "new"), 0) << length;
        EXPECT_EQ(content(path), "new") << length;
    }
    // Letters of more than one byte are not cut in two.
    std::string name;
    while (name.size() + 2 < 255) {
        name += "\xE4\xB8\xAD";
    }
    EXPECT_EQ(write_within_two_seconds(folder.path() / name, "new"), 0);
    EXPECT_EQ(content(folder.path() / name), "new");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 4);
}

} // namespace
} // namespace kv408

#endif
