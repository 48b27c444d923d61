#include "host/ending.h"

#include <chrono>

#include <gtest/gtest.h>

#include "host/system_clock.h"
#include "support/fake_host.h"

namespace kv408 {
namespace {

TEST(Ending, NothingIsShownOnceTheProgramHasEnded) {
    ProgramState program;
    FakeMessageBoxes boxes;
    EndingMessageBoxes ending(boxes, program);
    boxes.answers = {MessageAnswer::retry};
    EXPECT_EQ(ending.show({.text = "before"}), MessageAnswer::retry);
    program.ended = true;
    EXPECT_THROW(ending.show({.text = "after"}), ProgramEnded);
    EXPECT_EQ(boxes.texts(), std::vector<std::string>{"before"});
}

TEST(Ending, NoMessageSteersTheScreen) {
    ProgramState program;
    FakeMessageBoxes boxes;
    EndingMessageBoxes ending(boxes, program);
    ending.show({.text = "saved to:\n\x1B]0;x", .informative = "\xFF", .details = "\xE2\x80\xAE"});
    EXPECT_EQ(boxes.shown[0].text, "saved to:\n\\x1b]0;x");
    EXPECT_EQ(boxes.shown[0].informative, "\\xff");
    EXPECT_EQ(boxes.shown[0].details, "\\xe2\\x80\\xae");
}

TEST(Ending, AnEndWhileABoxIsOpenUnwindsWhenItCloses) {
    ProgramState program;
    FakeMessageBoxes boxes;
    EndingMessageBoxes ending(boxes, program);
    boxes.on_show = [&](const Message&) { program.ended = true; };
    EXPECT_THROW(ending.show({.text = "open"}), ProgramEnded);
}

TEST(Ending, AnEndAmongTheWindowMessagesUnwindsTheirCaller) {
    ProgramState program;
    FakeWindowMessages messages;
    EndingWindowMessages ending(messages, program);
    EXPECT_NO_THROW(ending.process_pending());
    messages.on_process = [&](int) { program.ended = true; };
    EXPECT_THROW(ending.process_pending(), ProgramEnded);
}

TEST(Ending, RepaintsArePassedOn) {
    ProgramState program;
    FakeWindowMessages messages;
    EndingWindowMessages ending(messages, program);
    ending.repaint("textstatus");
    EXPECT_EQ(messages.repainted, std::vector<std::string>{"textstatus"});
}

TEST(SystemClock, RunsAndKnowsTheDate) {
    SystemClock clock;
    const auto before = clock.now();
    clock.sleep(std::chrono::microseconds(50));
    EXPECT_GE(clock.now() - before, std::chrono::microseconds(50));
    const LocalTime time = clock.local_time();
    EXPECT_GE(time.year, 2024);
    EXPECT_TRUE(time.month >= 1 && time.month <= 12);
    EXPECT_TRUE(time.day >= 1 && time.day <= 31);
    EXPECT_TRUE(time.hour >= 0 && time.hour <= 23);
    EXPECT_TRUE(time.minute >= 0 && time.minute <= 59);
    EXPECT_TRUE(time.second >= 0 && time.second <= 60);
}

} // namespace
} // namespace kv408
