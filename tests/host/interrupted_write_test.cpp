// A write that is cut off at any byte, or read at any time, leaves the old file or the new one.

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "host/system_files.h"
#include "support/series_stride.h"
#include "support/temporary_folder.h"
#ifdef __linux__
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
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

/// Lets the system answer `answer`, a SECCOMP_RET_... value, to this process's every one of
/// `calls`.
void answer_calls(std::uint32_t answer, const std::vector<std::uint32_t>& calls) {
    std::vector<sock_filter> rules = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const std::uint32_t call : calls) {
        rules.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1));
        rules.push_back(BPF_STMT(BPF_RET | BPF_K, answer));
    }
    rules.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    sock_fprog program = {.len = static_cast<unsigned short>(rules.size()), .filter = rules.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
        _exit(99);
    }
}

/// Lets the system answer `answer` to this process's every renaming.
void answer_renaming(std::uint32_t answer) {
    answer_calls(answer, {
#ifdef SYS_rename
                             SYS_rename,
#endif
                             SYS_renameat, SYS_renameat2});
}

TEST(InterruptedWrite, WhereTheSystemKnowsNoRenamingToAFreeNameAFileIsMadeOnlyWhereNothingIs) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    for (const bool there : {false, true}) {
        const pid_t child = fork();
        if (child == 0) {
            answer_calls(SECCOMP_RET_ERRNO | EINVAL, {SYS_renameat2});
            _exit(static_cast<int>(SystemFiles().create(path, there ? "again" : "new").status));
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status),
                  static_cast<int>(there ? FileStatus::exists : FileStatus::done));
        EXPECT_EQ(content(path), "new");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
    }
}

/// How a child process ended that wrote `bytes` to `path` where every renaming is answered with
/// `answer`.
int write_without_renaming(const std::filesystem::path& path, const std::string& bytes,
                           std::uint32_t answer) {
    const pid_t child = fork();
    if (child == 0) {
        answer_renaming(answer);
        _exit(static_cast<int>(SystemFiles().replace(path, bytes).status));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

/// The names of the files in `folder`, in their order.
std::vector<std::string> names(const std::filesystem::path& folder) {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        result.push_back(entry.path().filename().string());
    }
    std::sort(result.begin(), result.end());
    return result;
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

/// Every so many-th byte is tried: all but under the sanitizers, where each process takes long to
/// make.
std::size_t stride() {
    return series_stride == 1 ? 1 : 5 * series_stride;
}

TEST(InterruptedWrite, OnAFullDiskTheOldFileStaysWholeAtEveryByte) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const std::string old_bytes = settings('1');
    const std::string new_bytes = settings('2') + "and more";
    ASSERT_EQ(SystemFiles().replace(path, old_bytes).status, FileStatus::done);
    for (std::size_t space = 0; space < new_bytes.size(); space += stride()) {
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
    for (std::size_t space = 0; space < new_bytes.size(); space += stride()) {
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

/// Makes the file at `path` look written an hour and a minute ago.
void make_old(const std::filesystem::path& path) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() -
                                               std::chrono::minutes(61));
}

TEST(InterruptedWrite, KilledBeforeTheRenamingTheOldFileStaysAndTheNextWriteTidiesUp) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const std::string old_bytes = settings('1');
    const std::string new_bytes = settings('2');
    ASSERT_EQ(SystemFiles().replace(path, old_bytes).status, FileStatus::done);
    std::filesystem::permissions(path, std::filesystem::perms::all);
    const int status = write_without_renaming(path, new_bytes, SECCOMP_RET_KILL_PROCESS);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_EQ(WTERMSIG(status), SIGSYS);
    EXPECT_EQ(content(path), old_bytes);
    // The new content was whole already.
    ASSERT_EQ(names(folder.path()).size(), 2U);
    const auto left = folder.path() / names(folder.path())[1];
    EXPECT_EQ(content(left), new_bytes);
    EXPECT_EQ(std::filesystem::status(left).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    make_old(left);
    EXPECT_EQ(SystemFiles().replace(path, new_bytes).status, FileStatus::done);
    EXPECT_EQ(content(path), new_bytes);
    EXPECT_EQ(names(folder.path()), std::vector<std::string>{"file"});
}

TEST(InterruptedWrite, ARefusedRenamingLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    ASSERT_EQ(SystemFiles().replace(path, "old").status, FileStatus::done);
    for (const std::uint32_t error : {EBUSY, EIO, ENOSPC}) {
        const int status = write_without_renaming(path, "new", SECCOMP_RET_ERRNO | error);
        ASSERT_TRUE(WIFEXITED(status)) << error;
        EXPECT_EQ(WEXITSTATUS(status), static_cast<int>(FileStatus::failed)) << error;
        EXPECT_EQ(content(path), "old") << error;
        EXPECT_EQ(names(folder.path()), std::vector<std::string>{"file"}) << error;
    }
}

pid_t process_that_is_gone() {
    const pid_t gone = fork();
    if (gone == 0) {
        _exit(0);
    }
    waitpid(gone, nullptr, 0);
    return gone;
}

TEST(InterruptedWrite, OnlyWhatAKilledWriteOfThisFileLeftIsRemoved) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    const pid_t gone = process_that_is_gone();
    const pid_t other = process_that_is_gone();
    const std::string number = "-0123456789abcdef";
    const std::string left = ".kv408-new" + std::to_string(gone) + number;
    // A process that runs, another file's, and names that no write gives.
    std::vector<std::string> kept = {"file",
                                     "file.kv408-new",
                                     "file.kv408-new" + number,
                                     "file.kv408-new" + std::to_string(getppid()) + number,
                                     "file.kv408-new" + std::to_string(getppid()),
                                     "file.kv408-new" + std::to_string(gone) + "a",
                                     "file.kv408-new" + std::to_string(gone) + ".bak",
                                     "file" + left + "a",
                                     "file.kv408-new" + std::to_string(gone) + "_0123456789abcdef",
                                     "file.kv408-new" + std::to_string(gone) + "-0123456789abcdeg",
                                     "file.kv408-new 1" + number,
                                     "file.new" + std::to_string(gone) + number,
                                     "fold" + left};
    for (const std::string& name : kept) {
        std::ofstream(folder.path() / name) << "kept";
        make_old(folder.path() / name);
    }
    const auto leftover = folder.path() / ("file" + left);
    std::ofstream(leftover) << "half";
    // Earlier releases gave such names.
    const auto former = folder.path() / ("file.kv408-new" + std::to_string(gone));
    std::ofstream(former) << "half";
    // It may be another computer's, as long as it is young.
    ASSERT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    EXPECT_TRUE(std::filesystem::exists(leftover));
    EXPECT_TRUE(std::filesystem::exists(former));
    make_old(leftover);
    make_old(former);
    ASSERT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    // What lies there in place of a file was planted.
    const auto planted = folder.path() / ("file.kv408-new" + std::to_string(other));
    std::filesystem::create_symlink("file.kv408-new", planted);
    kept.push_back(planted.filename());
    ASSERT_EQ(SystemFiles().replace(path, "new").status, FileStatus::done);
    std::vector<std::string> expected = kept;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names(folder.path()), expected);
    // Also where the file's name is all that is given.
    std::ofstream(leftover) << "half";
    make_old(leftover);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_EQ(SystemFiles().replace("file", "newer").status, FileStatus::done);
    std::filesystem::current_path(before);
    EXPECT_EQ(names(folder.path()), expected);
}

#endif

} // namespace
} // namespace kv408
