// What a recording leaves behind that is killed, or whose disk is full, in the middle of a sweep.

#ifndef _WIN32

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "export/recording_files.h"
#include "export/recording_text.h"
#include "export/sample_sweep.h"
#include "host/system_files.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

/// Records one sweep after the other into the file at `path`, until it is ended from outside or a
/// sweep cannot be written.
[[noreturn]] void record_until_the_end(const std::filesystem::path& path) {
    SystemFiles files;
    SavedFile begun;
    OneRecordingFile file(files, path, false, begun);
    ExportedSweep sweep = exported(block_sweep());
    sweep.number = 0;
    do {
        ++sweep.number;
    } while (file.add(sweep).status == FileStatus::done);
    _exit(0);
}

/// How many lines the sweeps in the file at `path` have, sweep by sweep; a line that is not whole
/// fails the test.
std::vector<int> lines_of_sweeps(const std::filesystem::path& path) {
    const std::string text = content(path);
    EXPECT_EQ(text.back(), '\n');
    std::vector<int> counts;
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line + '\n', recording_headings());
    while (std::getline(lines, line)) {
        if (line.front() == '#') {
            continue;
        }
        EXPECT_EQ(std::count(line.begin(), line.end(), ','), 5) << line;
        counts.resize(static_cast<std::size_t>(std::stoi(line)));
        ++counts.back();
    }
    return counts;
}

TEST(KilledRecording, LeavesWholeLinesOfAllItsSweeps) {
    for (int round = 0; round < 25; ++round) {
        const TemporaryFolder folder;
        const auto path = folder.path() / "run.csv";
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            record_until_the_end(path);
        }
        std::error_code error;
        while (std::filesystem::file_size(path, error) < 200'000U + 7'000U * round || error) {
            usleep(20);
        }
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        std::vector<int> counts = lines_of_sweeps(path);
        ASSERT_GE(counts.size(), 4U);
        counts.pop_back();
        EXPECT_EQ(counts, std::vector<int>(counts.size(), 650));
    }
}

TEST(KilledRecording, AFullDiskTakesNoPartOfASweep) {
    const TemporaryFolder folder;
    for (const rlim_t most : {100'000, 100'001, 131'072}) {
        const auto path = folder.path() / ("run" + std::to_string(most) + ".csv");
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit = {.rlim_cur = most, .rlim_max = most};
            setrlimit(RLIMIT_FSIZE, &limit);
            record_until_the_end(path);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        const std::vector<int> counts = lines_of_sweeps(path);
        EXPECT_GE(counts.size(), 2U);
        EXPECT_EQ(counts, std::vector<int>(counts.size(), 650));
    }
}

} // namespace
} // namespace kv408

#endif
