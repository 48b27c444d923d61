// Recordings: which sweeps, as which text, into which files.

#include <algorithm>
#include <atomic>
#include <future>
#include <sstream>

#include <gtest/gtest.h>

#include "export/recorder.h"
#include "export/recording_files.h"
#include "export/recording_plan.h"
#include "export/recording_text.h"
#include "export/sample_sweep.h"
#include "host/path_text.h"
#include "host/system_files.h"
#include "support/fake_files.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Which of `count` sweeps, a tenth of a second apart, are taken, from 0.
std::vector<int> taken(const RecordingPlan& plan, int count) {
    RecordingPace pace(plan);
    std::vector<int> numbers;
    for (int sweep = 0; sweep < count; ++sweep) {
        if (pace.take(seconds(5) + milliseconds(100 * sweep))) {
            numbers.push_back(sweep);
        }
    }
    return numbers;
}

TEST(RecordingPace, TakesEverySweepOrEachOfANumber) {
    EXPECT_EQ(taken({}, 4), (std::vector{0, 1, 2, 3}));
    EXPECT_EQ(taken({.every = 3}, 8), (std::vector{0, 3, 6}));
    EXPECT_EQ(taken({.every = 2, .most = 2}, 8), (std::vector{0, 2}));
    EXPECT_EQ(taken({.every = 0}, 2), (std::vector{0, 1}));
}

TEST(RecordingPace, TakesOneInAnInterval) {
    EXPECT_EQ(taken({.interval = milliseconds(250)}, 12), (std::vector{0, 3, 5, 8, 10}));
    EXPECT_EQ(taken({.interval = milliseconds(250), .most = 2}, 12), (std::vector{0, 3}));
    RecordingPace pace({.interval = seconds(1), .most = {}});
    EXPECT_TRUE(pace.take(seconds(10)));
    EXPECT_TRUE(pace.take(seconds(25))) << "after a pause";
    EXPECT_FALSE(pace.take(seconds(25) + milliseconds(900))) << "nothing is made up for";
    EXPECT_TRUE(pace.take(seconds(26)));
    EXPECT_FALSE(pace.over());
}

TEST(RecordingText, KeepsItsColumnsWhateverIsOn) {
    EXPECT_EQ(recording_headings(), "Sweep,Date,Time CH1 (s),CH1 (V),Time CH2 (s),CH2 (V)\n");
    RecordingText text;
    const std::string first = text.lines(exported(block_sweep()));
    const std::string front = "7,2026-11-22T13:05:09.250+01:00";
    EXPECT_EQ(
        first.find("# Kv408 1.6.0\n# serial: lm4rxa-SIM00001\n# mode: block\n# time/div: 20ns\n"),
        0U);
    EXPECT_NE(first.find("# averaging: off\n" + front + ",0,-0.024,0,0.024\n" + front +
                         ",3.13e-10,-0.0235,3.13e-10,0.0235\n"),
              std::string::npos);
    EXPECT_EQ(std::count(first.begin(), first.end(), '\n'), 13 + 650);
    const std::string second = text.lines(exported(block_sweep()));
    EXPECT_EQ(second.find(front), 0U) << "nothing has changed";
    const std::string pass = text.lines(exported(pass_sweep()));
    EXPECT_NE(pass.find("# averaging: on\n" + front + ",,,7.812e-09,0.000166666666667\n"),
              std::string::npos);
}

TEST(RecordingText, FollowsADelayThatIsChangedMeanwhile) {
    RecordingText text;
    static_cast<void>(text.lines(exported(block_sweep())));
    const std::string later = text.lines(exported(block_sweep(64.0)));
    EXPECT_NE(later.find("# CH2 delay (s): 6.4e-11\n"), std::string::npos);
    EXPECT_NE(later.find(",0,-0.024,6.4e-11,0.024\n"), std::string::npos);
    EXPECT_NE(later.find(",3.13e-10,-0.0235,3.77e-10,0.0235\n"), std::string::npos);
}

TEST(RecordingText, NoLineCrossesAPage) {
    const std::string line(38, 'x');
    EXPECT_EQ(fill_pages(line + '\n', 4096 - 39), line + '\n') << "up to the end of a page";
    EXPECT_EQ(fill_pages(line + '\n', 4096 - 41), line + '\n') << "a comment has room behind it";
    EXPECT_EQ(fill_pages(line + '\n', 4096 - 40), "#" + std::string(38, ' ') + '\n' + line + '\n');
    EXPECT_EQ(fill_pages(line + '\n', 2 * 4096 - 3), "# \n" + line + '\n');
    EXPECT_EQ(fill_pages(line + '\n', 4096), line + '\n');
    std::string lines;
    std::string kept;
    for (int length = 1; length < 400; ++length) {
        lines += std::string(static_cast<std::size_t>(length), 'x') + '\n';
    }
    const std::string text = fill_pages(lines, 55);
    for (std::size_t end = 4096 - 55; end < text.size(); end += 4096) {
        EXPECT_EQ(text[end - 1], '\n') << end;
    }
    std::istringstream read(text);
    for (std::string each; std::getline(read, each);) {
        kept += each.front() == '#' ? std::string() : each + '\n';
    }
    EXPECT_EQ(kept, lines);
}

/// A folder for recordings on the machine's files.
struct RecordingFolder {
    [[nodiscard]] std::filesystem::path path(const std::string& name) const {
        return folder.path() / name;
    }

    TemporaryFolder folder;
    SystemFiles files;
    SavedFile begun;
};

TEST(OneRecordingFile, HoldsEachSweepAsSoonAsItIsAdded) {
    RecordingFolder on;
    OneRecordingFile file(on.files, on.path("run.csv"), false, on.begun);
    EXPECT_EQ(on.begun.status, FileStatus::done);
    EXPECT_EQ(content(on.path("run.csv")), recording_headings());
    std::string wanted = recording_headings();
    RecordingText text;
    for (int sweep = 0; sweep < 3; ++sweep) {
        EXPECT_EQ(file.add(exported(block_sweep())).status, FileStatus::done);
        wanted += fill_pages(text.lines(exported(block_sweep())), wanted.size());
        EXPECT_EQ(content(on.path("run.csv")), wanted) << "while the recording goes on";
    }
}

TEST(OneRecordingFile, DoesNotBeginInTheFileThatIsThereUnasked) {
    RecordingFolder on;
    on.files.replace(on.path("run.csv"), "mine");
    { const OneRecordingFile file(on.files, on.path("run.csv"), false, on.begun); }
    EXPECT_EQ(on.begun.status, FileStatus::exists);
    EXPECT_EQ(content(on.path("run.csv")), "mine");
    { const OneRecordingFile file(on.files, on.path("run.csv"), true, on.begun); }
    EXPECT_EQ(content(on.path("run.csv")), recording_headings());
}

TEST(OneRecordingFile, EndsWithAReasonWhereTheDiskIsNearlyFullOrTheFileHasGone) {
    RecordingFolder on;
    const std::string name = text_of_path(on.path("run.csv"));
    std::uintmax_t left = space_left_free + 1;
    OneRecordingFile file(on.files, on.path("run.csv"), false, on.begun,
                          [&left](const auto&) { return std::optional(left); });
    EXPECT_EQ(file.add(exported(block_sweep())).status, FileStatus::done);
    const std::string whole = content(on.path("run.csv"));
    left = space_left_free;
    EXPECT_EQ(file.add(exported(block_sweep())).message,
              name + ": the recording has ended because less than 64 MB are free");
    EXPECT_EQ(content(on.path("run.csv")), whole);

    OneRecordingFile gone(on.files, on.path("gone/run.csv"), false, on.begun);
    EXPECT_EQ(on.begun.status, FileStatus::failed);
    EXPECT_EQ(gone.add(exported(block_sweep())).status, FileStatus::failed);
}

TEST(NumberedRecordingFiles, AreNamedInTheirOrderAndNeverWrittenOver) {
    RecordingFolder on;
    NumberedRecordingFiles target(on.files, on.path("run.csv"), export_types()[0]);
    on.files.replace(on.path("run_000003.csv"), "mine");
    EXPECT_EQ(target.add(exported(block_sweep())).status, FileStatus::done);
    EXPECT_EQ(target.add(exported(pass_sweep())).status, FileStatus::done);
    EXPECT_EQ(content(on.path("run_000001.csv")), export_types()[0].bytes(exported(block_sweep())));
    EXPECT_EQ(content(on.path("run_000002.csv")), export_types()[0].bytes(exported(pass_sweep())));
    EXPECT_EQ(target.add(exported(pass_sweep())).message,
              text_of_path(on.path("run_000003.csv")) +
                  ": the recording has ended: there is such a file already");
    EXPECT_EQ(content(on.path("run_000003.csv")), "mine");
}

TEST(NumberedRecordingFiles, EndWhereTheTypeCannotHoldTheSweep) {
    RecordingFolder on;
    NumberedRecordingFiles target(on.files, on.path("run.sr"), export_types()[1]);
    EXPECT_NE(
        target.add(exported(block_sweep(64.0))).message.find("the delays of CH1 and CH2 differ"),
        std::string::npos);
    EXPECT_TRUE(std::filesystem::is_empty(on.folder.path()));
}

/// A target that waits to be let on, and refuses from one sweep on.
struct GatedTarget : RecordingTarget {
    GatedTarget(std::shared_future<void> open, std::vector<std::uint64_t>& numbers,
                std::size_t most)
        : open_(std::move(open)), numbers_(numbers), most_(most) {}

    SavedFile add(const ExportedSweep& sweep) override {
        open_.wait();
        if (numbers_.size() >= most_) {
            return {.status = FileStatus::failed, .message = "full"};
        }
        numbers_.push_back(sweep.number);
        return {};
    }

private:
    std::shared_future<void> open_;
    std::vector<std::uint64_t>& numbers_;
    std::size_t most_;
};

/// A recorder over a gated target.
struct GatedRecorder {
    explicit GatedRecorder(std::size_t most = 1000)
        : recorder(std::make_unique<GatedTarget>(gate.get_future().share(), numbers, most)) {}

    void add(std::uint64_t number) {
        ExportedSweep sweep;
        sweep.number = number;
        recorder.add(std::move(sweep));
    }

    std::promise<void> gate;
    std::vector<std::uint64_t> numbers;
    Recorder recorder;
};

TEST(Recorder, NobodyWaitsForADiskThatStandsStillAndWhatIsMissedIsCounted) {
    GatedRecorder gated;
    // One may have left the queue already, to be written.
    for (std::uint64_t sweep = 0; sweep < Recorder::most_waiting + 11; ++sweep) {
        gated.add(sweep);
    }
    EXPECT_EQ(gated.recorder.progress().recorded, 0U);
    EXPECT_GE(gated.recorder.progress().missed, 10U);
    EXPECT_LE(gated.recorder.progress().missed, 11U);
    gated.gate.set_value();
    gated.recorder.wait_until_written();
    const RecordingProgress progress = gated.recorder.progress();
    EXPECT_EQ(progress.recorded + progress.missed, Recorder::most_waiting + 11);
    EXPECT_TRUE(progress.running);
    EXPECT_TRUE(std::is_sorted(gated.numbers.begin(), gated.numbers.end()));
}

TEST(Recorder, WhatWasHandedOverIsWrittenBeforeItEnds) {
    auto gated = std::make_unique<GatedRecorder>();
    for (std::uint64_t sweep = 0; sweep < 20; ++sweep) {
        gated->add(sweep);
    }
    gated->recorder.stop();
    gated->add(99);
    gated->gate.set_value();
    gated->recorder.wait_until_written();
    EXPECT_EQ(gated->recorder.progress().recorded, 20U);
    EXPECT_EQ(gated->recorder.progress().missed, 0U);
    EXPECT_EQ(gated->numbers.back(), 19U);
}

TEST(Recorder, EndsAtTheFirstSweepThatCannotBeWritten) {
    GatedRecorder gated(2);
    for (std::uint64_t sweep = 0; sweep < 5; ++sweep) {
        gated.add(sweep);
    }
    gated.gate.set_value();
    gated.recorder.wait_until_written();
    const RecordingProgress progress = gated.recorder.progress();
    EXPECT_FALSE(progress.running);
    EXPECT_EQ(progress.problem, "full");
    EXPECT_EQ(progress.recorded, 2U);
    gated.add(6);
    EXPECT_EQ(gated.numbers.size(), 2U);
}

} // namespace
} // namespace kv408
