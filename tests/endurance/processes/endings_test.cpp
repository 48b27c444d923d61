// Both programs as processes of their own: whatever ends them, the settings of the run are saved
// and the device is closed, and what asks them to end is not kept waiting.

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "endurance/processes/program_process.h"
#include "endurance/processes/x_display.h"
#include "support/places.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// On an idle machine it is a second; nothing that keeps a signal waiting is over in this time.
constexpr auto promptly = 5s;

/// A program with files of its own, over a bridge library that can be made to behave badly.
class Endings : public testing::Test {
protected:
    /// How `kv408` is started here.
    [[nodiscard]] ProgramStart instrument_program() const {
        return {.program = std::filesystem::path(place::programs) / "kv408",
                .environment = {{"APPDATA", folder_.path()},
                                {"TMPDIR", temporary()},
                                {"LD_LIBRARY_PATH", place::hostile_folder},
                                {"KV408_HOSTILE_LOG", log()}}};
    }

    /// The settings file.
    [[nodiscard]] std::filesystem::path file() const {
        return folder_.path() / "kv408" / "ConfigsLM4RX.TXT";
    }

    /// A folder for temporary files, for this test alone.
    [[nodiscard]] std::string temporary() const {
        const auto path = folder_.path() / "temporary";
        std::filesystem::create_directories(path);
        return path;
    }

    /// What the bridge library has been asked to do.
    [[nodiscard]] std::string log() const { return folder_.path() / "log"; }

    /// The name of a file that begins something once it is there.
    [[nodiscard]] std::string switch_file() const { return folder_.path() / "switch"; }
    void throw_switch() const { std::ofstream(switch_file()) << "on"; }

    /// Waits until the program has started and sweeps: it makes the missing settings file in the
    /// middle of its start, and uploads a set-up at its end and with the first ticks.
    [[nodiscard]] bool started() const {
        const auto set_ups = [this] {
            int count = 0;
            const std::string text = content_of(log());
            for (auto at = text.find("set up"); at != std::string::npos;
                 at = text.find("set up", at + 1)) {
                ++count;
            }
            return count;
        };
        const bool ready =
            comes_true([&] { return std::filesystem::exists(file()) && set_ups() >= 4; }, 30s);
        pause_for(500ms);
        return ready;
    }

    /// Takes the settings file away, so that it can be seen when it is written next.
    void take_settings() {
        settings_ = content_of(file());
        std::filesystem::remove(file());
    }

    /// Whether the settings of the run have been saved, whole.
    [[nodiscard]] bool saved() const {
        return !settings_.empty() && content_of(file()) == settings_;
    }

    /// Whether the device has been closed.
    [[nodiscard]] bool closed() const { return content_of(log()).ends_with("close\n"); }

    TemporaryFolder folder_;

private:
    std::string settings_;
};

TEST_F(Endings, WhenTheDisplayGoesTheSettingsAreSavedAndTheDeviceIsClosed) {
    const XDisplay display(folder_.path());
    ASSERT_FALSE(display.name().empty());
    ProgramStart start = instrument_program();
    start.environment["DISPLAY"] = display.name();
    start.environment["QT_QPA_PLATFORM"] = "xcb";
    ProgramProcess program(start);
    ASSERT_TRUE(started()) << program.words();
    take_settings();
    display.kill();
    EXPECT_TRUE(program.end_within(10s).has_value());
    EXPECT_TRUE(saved()) << program.words();
    EXPECT_TRUE(closed()) << content_of(log());
}

TEST_F(Endings, AnExceptionThatNobodyCaughtSavesAndClosesAndIsTold) {
    ProgramStart start = instrument_program();
    start.environment["KV408_HOSTILE_THROW"] = switch_file();
    ProgramProcess program(start);
    ASSERT_TRUE(started()) << program.words();
    take_settings();
    throw_switch();
    EXPECT_EQ(program.end_within(10s), EXIT_FAILURE);
    EXPECT_TRUE(saved());
    EXPECT_TRUE(closed());
    EXPECT_NE(program.words().find("the bridge library lost its head"), std::string::npos)
        << program.words();
}

TEST_F(Endings, ASignalThatWasIgnoredAtTheStartStaysIgnored) {
    ProgramStart start = instrument_program();
    start.ignored = {SIGHUP};
    ProgramProcess program(start);
    ASSERT_TRUE(started());
    program.signal(SIGHUP);
    EXPECT_EQ(program.end_within(1s), std::nullopt);
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(10s), EXIT_SUCCESS);
}

TEST_F(Endings, WordsThatNobodyReadsDoNotEndIt) {
    ProgramStart start = instrument_program();
    start.unread_stderr = true;
    start.environment["QT_DEBUG_PLUGINS"] = "1"; // says much
    ProgramProcess program(start);
    ASSERT_TRUE(started());
    take_settings();
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(10s), EXIT_SUCCESS);
    EXPECT_TRUE(saved());
}

TEST_F(Endings, WhileTheLibraryBlocksASecondSignalEndsItWithTheSettingsSaved) {
    ProgramStart start = instrument_program();
    start.environment["KV408_HOSTILE_BLOCK"] = switch_file();
    ProgramProcess program(start);
    ASSERT_TRUE(started());
    take_settings();
    throw_switch();
    pause_for(500ms);
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(2500ms), std::nullopt);
    // One signal is all that some sessions send before they kill.
    EXPECT_TRUE(comes_true([this] { return saved(); }, 3s));
    take_settings();
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(promptly), EXIT_FAILURE);
    EXPECT_NE(program.words().find("Its settings have been saved"), std::string::npos)
        << program.words();
}

TEST_F(Endings, TwoSignalsAtOnceEndItAfterThreeSecondsWhateverBlocks) {
    ProgramStart start = instrument_program();
    start.environment["KV408_HOSTILE_BLOCK"] = switch_file();
    ProgramProcess program(start);
    ASSERT_TRUE(started());
    take_settings();
    throw_switch();
    pause_for(500ms);
    program.signal(SIGTERM);
    pause_for(100ms);
    program.signal(SIGINT);
    EXPECT_EQ(program.end_within(2s), std::nullopt);
    EXPECT_EQ(program.end_within(4s), EXIT_FAILURE);
    EXPECT_TRUE(saved());
}

TEST_F(Endings, ListingThousandsOfDevicesStopsForASignal) {
    ProgramStart start = instrument_program();
    start.environment["KV408_HOSTILE_FOREIGN"] = "10000";
    ProgramProcess program(start);
    pause_for(2s);
    ASSERT_TRUE(program.runs());
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(promptly), EXIT_SUCCESS);
}

TEST_F(Endings, AHostileSettingsFileAtTheStartDoesNotKeepASignalWaiting) {
    // Each line is one that the program passes over, and there are twenty million of them.
    std::string lines;
    for (int line = 0; line < 20'000'000; ++line) {
        lines += "x\t\n";
    }
    std::filesystem::create_directories(file().parent_path());
    std::ofstream(file(), std::ios::binary) << lines;
    ProgramProcess program(instrument_program());
    ASSERT_TRUE(comes_true([this] { return !content_of(log()).empty(); }, 30s));
    pause_for(300ms);
    ASSERT_TRUE(program.runs());
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(promptly), EXIT_SUCCESS) << program.words();
    EXPECT_EQ(std::filesystem::file_size(file()), lines.size()) << "nothing has been taken over";
}

TEST_F(Endings, WithoutADisplayOneSentenceSaysSo) {
    ProgramStart start = instrument_program();
    start.unset = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    ProgramProcess program(start);
    EXPECT_EQ(program.end_within(10s), EXIT_FAILURE);
    EXPECT_EQ(program.words(),
              "Kv408: no display can be used, so the window cannot open: DISPLAY is "
              "not set, WAYLAND_DISPLAY is not set.\n");
}

TEST_F(Endings, OneSentenceSaysSoAlsoOfADisplayThatIsNotThere) {
    ProgramStart start = instrument_program();
    start.unset = {"DISPLAY", "QT_QPA_PLATFORM"};
    start.environment["WAYLAND_DISPLAY"] = "gone";
    start.environment["XDG_RUNTIME_DIR"] = temporary();
    ProgramProcess program(start);
    EXPECT_EQ(program.end_within(10s), EXIT_FAILURE);
    EXPECT_EQ(program.words(),
              "Kv408: no display can be used, so the window cannot open: DISPLAY is "
              "not set, WAYLAND_DISPLAY is \"gone\".\n");
}

TEST_F(Endings, ASaveThatFailsDoesNotKeepASignalWaiting) {
    ProgramStart start = instrument_program();
    ProgramProcess program(start);
    ASSERT_TRUE(started());
    const std::string settings = content_of(file());
    std::filesystem::remove(file());
    std::filesystem::create_directory(file());
    program.signal(SIGTERM);
    EXPECT_TRUE(program.end_within(3s).has_value());
    EXPECT_EQ(content_of(file().string() + ".unsaved"), settings);
    EXPECT_TRUE(closed());
    EXPECT_NE(program.words().find("could not be saved"), std::string::npos) << program.words();
}

TEST_F(Endings, WhatCouldNotBeSavedLiesInTheTemporaryFolderWhereTheOwnOneIsGone) {
    ProgramProcess program(instrument_program());
    ASSERT_TRUE(started());
    const std::string settings = content_of(file());
    std::filesystem::remove_all(file().parent_path());
    std::ofstream(file().parent_path()) << "no folder";
    program.signal(SIGTERM);
    EXPECT_TRUE(program.end_within(3s).has_value());
    std::string kept;
    for (const auto& entry : std::filesystem::directory_iterator(temporary())) {
        if (entry.path().filename().string().starts_with("kv408-unsaved-")) {
            kept = content_of(entry.path());
            EXPECT_NE(program.words().find(entry.path().string()), std::string::npos)
                << program.words();
        }
    }
    EXPECT_EQ(kept, settings);
}

TEST_F(Endings, StoppedWhileTheInstrumentWasSwitchedOffItIsSetUpAnew) {
    ProgramStart start = instrument_program();
    start.environment["KV408_HOSTILE_OFF"] = switch_file();
    ProgramProcess program(start);
    ASSERT_TRUE(started());
    program.signal(SIGSTOP);
    const std::string before = content_of(log());
    throw_switch();
    pause_for(3s);
    program.signal(SIGCONT);
    EXPECT_TRUE(comes_true(
        [&] { return content_of(log()).find("set up", before.size()) != std::string::npos; }, 5s))
        << content_of(log());
    program.signal(SIGTERM);
    EXPECT_EQ(program.end_within(10s), EXIT_SUCCESS);
}

} // namespace
} // namespace kv408
