// Settings that are taken over: many talks with the instrument, in which an end that is asked for
// is heard.

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "scope/kept_settings.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using Texts = std::vector<std::string>;

/// Every key as often as a file may have it, each time with another value where it has several.
std::string longest_file() {
    Program program;
    EXPECT_TRUE(program.scope.start());
    program.scope.close();
    const std::string first = program.files.files[settings_path];
    std::string bytes;
    for (std::size_t at = 0; at < first.size();) {
        const std::size_t end = first.find('\n', at) + 1;
        const std::string line = first.substr(at, end - at);
        bytes += line.starts_with("ch1vdiv") ? "ch1vdiv\t5\r\n" : "";
        bytes += line.starts_with("ch2vdiv") ? "ch2vdiv\t5\r\n" : "";
        bytes += line.starts_with("chkmeasanno") || line.starts_with("ch1vdiv") ||
                         line.starts_with("ch2vdiv")
                     ? line
                     : line + line;
        at = end;
    }
    return bytes;
}

/// A program whose user waits; it notes when it looks for an end, and what the note then says.
struct Waiting : Program {
    Waiting() {
        messages.on_process = [this](int) {
            looks.push_back(clock.now());
            notes.push_back(scope.loading().caption());
            if (end_at && clock.now() >= *end_at) {
                end_at.reset();
                scope.end();
            }
        };
    }

    /// The longest time without a look, from 500 ms after `start` until now.
    [[nodiscard]] milliseconds deafest(nanoseconds start) const {
        nanoseconds longest{0};
        nanoseconds last = start + milliseconds(500);
        for (const nanoseconds look : looks) {
            longest = std::max(longest, look - last);
            last = std::max(look, last);
        }
        return std::chrono::duration_cast<milliseconds>(std::max(longest, clock.now() - last));
    }

    /// Presses Load Setup for a file that takes long.
    void load() {
        files.files["/long.TXT"] = file;
        choosers.answers = {"/long.TXT"};
        looks.clear();
        notes.clear();
        began = clock.now();
        scope.act([this] { scope.panel().loadconfig.click(); });
    }

    std::string file = longest_file();
    std::vector<nanoseconds> looks;
    Texts notes;
    std::optional<nanoseconds> end_at;
    nanoseconds began{0};
};

TEST(TakingOver, LoadingListensForAnEndUntilTheLastHandlerHasRun) {
    Waiting program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.load();
    EXPECT_GT(program.clock.now() - program.began, milliseconds(2000)) << "nothing took long";
    EXPECT_LE(program.deafest(program.began), milliseconds(500));
    EXPECT_EQ(program.scope.panel().channel[0].vdiv.index(), 2);
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(TakingOver, TheNoteStaysUntilItHasTakenEffect) {
    Waiting program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.load();
    for (std::size_t look = 0; look < program.looks.size(); ++look) {
        const bool late = program.looks[look] - program.began >= milliseconds(1000);
        EXPECT_EQ(program.notes[look].empty(), !late) << look;
    }
    ASSERT_FALSE(program.notes.empty());
    EXPECT_EQ(program.notes.back(), "Loading the set-up: it takes effect");
    EXPECT_EQ(program.scope.loading().caption(), "");
}

TEST(TakingOver, AnEndIsHeardWhileItTakesEffect) {
    Waiting program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.load();
    const auto length = program.clock.now() - program.began;
    for (int part = 1; part < 10; ++part) {
        SCOPED_TRACE(part);
        Waiting other;
        ASSERT_TRUE(other.scope.start());
        other.ticks(5);
        const auto asked =
            other.clock.now() + std::max<nanoseconds>(length * part / 10, milliseconds(500));
        other.end_at = asked;
        other.load();
        EXPECT_TRUE(other.scope.ended());
        EXPECT_LE(other.clock.now() - asked, milliseconds(500));
        EXPECT_TRUE(other.files.files.contains(settings_path));
        EXPECT_TRUE(other.boxes.shown.empty());
    }
}

TEST(TakingOver, AnInstrumentThatLeavesCommandsUnansweredKeepsNoEndWaitingLongerThanOneAttempt) {
    Waiting program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    program.load();
    EXPECT_LE(program.deafest(program.began), milliseconds(1100));
}

TEST(TakingOver, AtTheStartAnEndIsHeardToo) {
    Waiting program;
    const simulator::ReplyFault late = {.late = milliseconds(400), .times = simulator::without_end};
    program.simulation.bench().faults.replies[command::set_trigger] = late;
    program.files.files[settings_path] = program.file;
    ASSERT_TRUE(program.scope.start());
    ASSERT_GT(program.clock.now(), milliseconds(2000)) << "nothing took long";
    // It begins when the instrument has answered the check, which is late too.
    EXPECT_LE(program.deafest(milliseconds(400)), milliseconds(600));
    EXPECT_EQ(program.notes.back(), "Loading the set-up: it takes effect");
    EXPECT_EQ(program.scope.loading().caption(), "");
    Waiting other;
    other.simulation.bench().faults.replies[command::set_trigger] = late;
    other.files.files[settings_path] = other.file;
    other.end_at = milliseconds(1200);
    EXPECT_FALSE(other.scope.start());
    EXPECT_LE(other.clock.now(), milliseconds(1800));
    EXPECT_EQ(other.files.files[settings_path], other.file) << "a start that ended saves nothing";
}

} // namespace
} // namespace kv408
