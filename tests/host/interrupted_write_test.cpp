// A write that is cut off at any byte, or read at any time, leaves the old file or the new one.

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "host/system_files.h"
#include "support/temporary_folder.h"
#ifdef __linux__
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace kv408 {
namespace {

/// Settings of about the usual length.
std::string settings(char digit) {
    std::string text;
    for (int line = 0; line < 48; ++line) {
        text.append("setting").append(std::to_string(line)).append("\t ").append(1, digit);
        text.append(" \r\n");
    }
    return text;
}

TEST(InterruptedWrite, AReaderMeanwhileFindsTheOldFileOrTheNewOne) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const std::string first = settings('1');
    const std::string second = settings('2') + "and more";
    ASSERT_EQ(SystemFiles().replace(path, first).status, FileStatus::done);
    std::atomic<bool> over = false;
    std::thread writer([&] {
        for (int times = 0; times < 200; ++times) {
            // Some systems do not replace a file that is being read: then the old one stays.
            SystemFiles().replace(path, times % 2 == 0 ? second : first);
        }
        over = true;
    });
    int reads = 0;
    int torn = 0;
    while (!over) {
        std::string bytes;
        if (SystemFiles().read(path, bytes).status == FileStatus::done) {
            ++reads;
            torn += bytes == first || bytes == second ? 0 : 1;
        }
    }
    writer.join();
    EXPECT_GT(reads, 0);
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(SystemFiles().replace(path, second).status, FileStatus::done);
}

// Only here the system can be told to end a process at a byte of a file.
#ifdef __linux__

std::string content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// How a child process ended that wrote `bytes` to `path` on a disk that takes `space` bytes a
/// file: killed by the system at that byte, or told that there is no space left.
int write_in_child(const std::filesystem::path& path, const std::string& bytes, std::size_t space,
                   bool killed) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit = {.rlim_cur = space, .rlim_max = space};
        const rlimit no_core = {};
        setrlimit(RLIMIT_CORE, &no_core);
        std::signal(SIGXFSZ, killed ? SIG_DFL : SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const FileResult result = SystemFiles().replace(path, bytes);
        _exit(static_cast<int>(result.status));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

TEST(InterruptedWrite, OnAFullDiskTheOldFileStaysWholeAtEveryByte) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const std::string old_bytes = settings('1');
    const std::string new_bytes = settings('2') + "and more";
    ASSERT_EQ(SystemFiles().replace(path, old_bytes).status, FileStatus::done);
    for (std::size_t space = 0; space < new_bytes.size(); ++space) {
        const int status = write_in_child(path, new_bytes, space, false);
        ASSERT_TRUE(WIFEXITED(status)) << space;
        ASSERT_EQ(WEXITSTATUS(status), static_cast<int>(FileStatus::failed)) << space;
        ASSERT_EQ(content(path), old_bytes) << space;
        ASSERT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
            << space;
    }
    EXPECT_EQ(write_in_child(path, new_bytes, new_bytes.size(), false), 0);
    EXPECT_EQ(content(path), new_bytes);
}

TEST(InterruptedWrite, KilledAtAnyByteTheOldFileStaysWholeAndTheNextWriteSucceeds) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const std::string old_bytes = settings('1');
    const std::string new_bytes = settings('2');
    ASSERT_EQ(SystemFiles().replace(path, old_bytes).status, FileStatus::done);
    for (std::size_t space = 0; space < new_bytes.size(); ++space) {
        const int status = write_in_child(path, new_bytes, space, true);
        ASSERT_TRUE(WIFSIGNALED(status)) << space;
        ASSERT_EQ(WTERMSIG(status), SIGXFSZ) << space;
        ASSERT_EQ(content(path), old_bytes) << space;
    }
    EXPECT_EQ(write_in_child(path, new_bytes, new_bytes.size(), true), 0);
    EXPECT_EQ(content(path), new_bytes);
    ASSERT_EQ(SystemFiles().replace(path, old_bytes).status, FileStatus::done);
    EXPECT_EQ(content(path), old_bytes);
}

#endif

} // namespace
} // namespace kv408
