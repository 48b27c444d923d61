// An hour of recording.

#include <fstream>

#include <gtest/gtest.h>

#include "export/recorder.h"
#include "export/recording_files.h"
#include "export/recording_plan.h"
#include "export/sample_sweep.h"
#include "host/system_files.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

TEST(RecordedHour, HasEachSweepOnceAndInItsOrder) {
    // Ten sweeps per second.
    constexpr int sweeps = 36000;
    const TemporaryFolder folder;
    const auto path = folder.path() / "hour.csv";
    SystemFiles files;
    SavedFile begun;
    RecordingPace pace({});
    {
        Recorder recorder(std::make_unique<OneRecordingFile>(files, path, false, begun));
        ExportedSweep sweep = exported(block_sweep());
        // Three points: the disk is not what is looked at.
        for (ExportedChannel& channel : sweep.channels) {
            channel.mv.resize(3);
        }
        for (int number = 1; number <= sweeps; ++number) {
            sweep.number = static_cast<std::uint64_t>(number);
            if (pace.take(std::chrono::milliseconds(100 * number))) {
                recorder.add(sweep);
            }
            if (number % static_cast<int>(Recorder::most_waiting / 2) == 0) {
                recorder.wait_until_written(); // virtual time runs ahead of the disk
            }
        }
        recorder.wait_until_written();
        EXPECT_EQ(recorder.progress().missed, 0U);
        EXPECT_EQ(recorder.progress().recorded, static_cast<std::uint64_t>(sweeps));
        EXPECT_EQ(recorder.progress().problem, "");
    }
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line + '\n', recording_headings());
    int wanted = 3; // lines are three for each sweep
    while (std::getline(file, line)) {
        if (line.front() != '#') {
            ASSERT_EQ(line.substr(0, line.find(',')), std::to_string(wanted / 3));
            ++wanted;
        }
    }
    EXPECT_EQ(wanted, 3 + 3 * sweeps);
}

} // namespace
} // namespace kv408
