// The way out of an instrument that takes no more commands: Stop beside OK in the boxes that tell
// of it.

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

#include "scope/program.h"
#include "simulator/wire_log.h"

namespace kv408 {
namespace {

using Texts = std::vector<std::string>;
using simulator::AcknowledgeFault;
using simulator::ReplyFault;

/// The whole program, sweeping, with a user who presses `extra` in the boxes that have it.
struct StoppedByBox : Program {
    StoppedByBox() {
        EXPECT_TRUE(scope.start());
        ticks(6);
        EXPECT_EQ(status(), "Running");
        first_frame = log.operations.size();
    }

    /// The box number `index`, counted from 0, is answered by Stop; those before it by OK.
    void press_stop_in(std::size_t index) {
        boxes.answers = std::deque<MessageAnswer>(index, MessageAnswer::ok);
        boxes.answers.push_back(MessageAnswer::extra);
    }

    /// Command codes written since the faults began, each attempt.
    [[nodiscard]] std::vector<int> written() const {
        std::vector<int> codes;
        for (std::size_t index = first_frame; index < log.operations.size(); ++index) {
            if (log.operations[index].operation == simulator::Operation::write) {
                codes.push_back(log.operations[index].bytes.at(1));
            }
        }
        return codes;
    }

    /// The sweep is stopped, and stays so without another box or frame.
    void expect_it_is_over() {
        EXPECT_EQ(state(), "stoped");
        EXPECT_FALSE(scope.parts().acquisition.acqrunning);
        const std::size_t shown = boxes.shown.size();
        const std::size_t frames = written().size();
        ticks(30);
        EXPECT_EQ(boxes.shown.size(), shown);
        EXPECT_EQ(written().size(), frames);
        EXPECT_EQ(state(), "stoped");
        EXPECT_EQ(status(), "Stopped");
    }

    std::size_t first_frame = 0; ///< operations before the faults
};

TEST(GivingUp, OneStopEndsAChoiceThatTheInstrumentDoesNotTake) {
    for (const bool powerless : {false, true}) {
        StoppedByBox program;
        simulator::Faults& faults = program.simulation.bench().faults;
        faults.no_power = powerless;
        faults.acknowledge = powerless ? AcknowledgeFault::none : AcknowledgeFault::lost;
        program.press_stop_in(0);
        program.choose(program.channel(ch1).vdiv, "20mV");
        EXPECT_EQ(program.boxes.texts(), Texts{"_SET AMP GAIN_Comm timed out"});
        EXPECT_EQ(program.boxes.shown.at(0).extra_button, "Stop");
        EXPECT_EQ(program.boxes.shown.at(0).buttons, MessageButtons::ok);
        program.expect_it_is_over();
    }
}

TEST(GivingUp, EachOfTheThreeBoxesBearsIt) {
    const Texts told = {"_SET AMP GAIN_Comm timed out", "Error Sending Data.",
                        "Error Vold/div set"};
    for (std::size_t place = 0; place < told.size(); ++place) {
        StoppedByBox program;
        program.simulation.bench().faults.acknowledge = AcknowledgeFault::lost;
        program.press_stop_in(place);
        program.choose(program.channel(ch1).vdiv, "20mV");
        const auto until = told.begin() + static_cast<std::ptrdiff_t>(place) + 1;
        EXPECT_EQ(program.boxes.texts(), Texts(told.begin(), until));
        for (const Message& message : program.boxes.shown) {
            EXPECT_EQ(message.extra_button, "Stop");
        }
        program.expect_it_is_over();
    }
}

/// In a set-up, what follows the command that was not taken is not sent.
TEST(GivingUp, TheRestOfASetUpIsNotSent) {
    const std::vector<int> order = {8, 27, 30, 35, 31};
    for (std::size_t place = 0; place < order.size(); ++place) {
        StoppedByBox program;
        const int code = order[place];
        program.simulation.bench().faults.replies[static_cast<Byte>(code)] = {
            .length = 0, .times = simulator::without_end};
        program.press_stop_in(0);
        program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
        program.first_frame = program.log.operations.size();
        program.ticks(1);
        std::vector<int> expected(order.begin(),
                                  order.begin() + static_cast<std::ptrdiff_t>(place));
        expected.insert(expected.end(), 3, code);
        EXPECT_EQ(program.written(), expected) << code;
        EXPECT_EQ(program.boxes.shown.size(), 1U) << code;
        program.expect_it_is_over();
    }
}

TEST(GivingUp, OfTwoRangesInASetUpTheSecondIsNotSent) {
    StoppedByBox program;
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::lost;
    program.choose(program.channel(ch1).vdiv, "20mV");
    program.choose(program.channel(ch2).vdiv, "20mV");
    program.boxes.shown.clear();
    program.first_frame = program.log.operations.size();
    program.press_stop_in(0);
    program.ticks(2);
    EXPECT_EQ(program.written(), std::vector<int>(3, 9));
    EXPECT_EQ(program.boxes.texts(), Texts{"_SET AMP GAIN_Comm timed out"});
    program.expect_it_is_over();
}

TEST(GivingUp, WhatWasGivenUpIsSentByTheNextStart) {
    StoppedByBox program;
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::lost;
    program.press_stop_in(0);
    program.choose(program.channel(ch1).vdiv, "20mV");
    program.simulation.bench().faults = {};
    program.boxes.shown.clear();
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    program.ticks(4);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_EQ(program.simulation.settings().range[0], 1);
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(GivingUp, WhatIsChosenAfterwardsIsSentAndToldAnew) {
    StoppedByBox program;
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::lost;
    program.press_stop_in(0);
    program.choose(program.channel(ch1).vdiv, "20mV");
    program.boxes.shown.clear();
    program.choose(program.channel(ch1).vdiv, "10mV");
    EXPECT_EQ(program.boxes.texts(),
              (Texts{"_SET AMP GAIN_Comm timed out", "Error Sending Data.", "Error Vold/div set"}));
    for (const Message& message : program.boxes.shown) {
        EXPECT_EQ(message.extra_button, "") << "nothing sweeps that could be stopped";
    }
}

TEST(GivingUp, OnlyLinkFailuresBearIt) {
    StoppedByBox program;
    program.channel(ch1).vdiv.set_entries({"3V"});
    program.choose(program.channel(ch1).vdiv, "3V");
    ASSERT_EQ(program.boxes.texts(), Texts{"Error Vold/div set"});
    EXPECT_EQ(program.boxes.shown.at(0).extra_button, "");
}

/// What OK alone brings: the choice's own boxes, then with each try those of its range, of the
/// trigger and of the time base. The other channel's range was acknowledged and stays as it is.
TEST(GivingUp, ARangeThatWasAcknowledgedIsNotSentAgain) {
    const Texts trigger = {" SETTRIG Comm timed out", "Error Sending Data.", "error set triger"};
    const Texts time_base = {" set time base offset ch1 Comm timed out", "Error Sending Data.",
                             "Error setting scope"};
    for (const bool powerless : {false, true}) {
        for (const Channel channel : both_channels) {
            StoppedByBox program;
            program.simulation.bench().faults.no_power = powerless;
            program.simulation.bench().faults.acknowledge =
                powerless ? AcknowledgeFault::none : AcknowledgeFault::lost;
            program.choose(program.channel(channel).vdiv, "20mV");
            Texts expected = {channel == ch1 ? "_SET AMP GAIN_Comm timed out"
                                             : " SET AMP GAIN Comm timed out",
                              "Error Sending Data.", "Error Vold/div set"};
            const Texts range = expected;
            for (int set_up = 0; set_up < 2; ++set_up) {
                for (const Texts& told : {range, trigger, time_base}) {
                    expected.insert(expected.end(), told.begin(), told.end());
                }
            }
            program.ticks(4); // changes, set-up, back to it, set-up
            EXPECT_EQ(program.boxes.texts(), expected) << powerless << channel;
        }
    }
}

/// A set-up that no choice of a range has brought sends none.
TEST(GivingUp, ASilentInstrumentIsNotSentTheRangesThatItAcknowledged) {
    StoppedByBox program;
    program.simulation.bench().faults.no_power = true;
    program.ticks(30); // nobody is faster
    program.scope.act([&] { program.scope.panel().trigeredge.set_index(1); });
    program.first_frame = program.log.operations.size();
    program.ticks(4);
    EXPECT_EQ(program.written(), (std::vector<int>{8, 8, 8, 30, 30, 30, 8, 8, 8, 30, 30, 30}));
    EXPECT_EQ(program.boxes.shown.size(), 12U);
}

} // namespace
} // namespace kv408
