// What a user meets when the link or the instrument misbehaves: a message or a quiet new start,
// never a crash, never a second exchange inside a first one.

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "scope/program.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using simulator::AcknowledgeFault;
using simulator::Operation;
using Texts = std::vector<std::string>;

const std::string retry_text =
    "No connection to Device, maybe it's not powered. Please check and click <Retry>!";
const std::string not_found_text = "Error finding WKTP2B device. Aborting application.";

/// How many pixels of the picture have exactly the colour `pixel`.
std::ptrdiff_t pixels_of(Program& program, Pixel pixel) {
    const auto pixels = program.scope.picture().surface().pixels();
    return std::count(pixels.begin(), pixels.end(), pixel);
}

TEST(Robustness, PoweringTheInstrumentAndPressingRetryConnects) {
    Program program;
    program.simulation.bench().faults.no_power = true;
    program.boxes.answers = {MessageAnswer::retry};
    program.boxes.on_show = [&](const Message&) {
        program.simulation.bench().faults.no_power = false;
    };
    EXPECT_TRUE(program.scope.start());
    ASSERT_EQ(program.boxes.texts(), Texts{retry_text});
    EXPECT_EQ(program.boxes.shown[0].buttons, MessageButtons::retry_cancel);
    EXPECT_EQ(program.boxes.shown[0].icon, MessageIcon::exclamation);
    program.ticks(4);
    EXPECT_EQ(program.status(), "Running");
}

TEST(Robustness, CancelAfterNoAnswerEndsTheProgram) {
    Program program;
    program.simulation.bench().faults.no_power = true;
    program.boxes.answers = {MessageAnswer::cancel};
    EXPECT_FALSE(program.scope.start());
    EXPECT_TRUE(program.scope.ended());
}

TEST(Robustness, PluggingTheInstrumentInAndPressingRetryConnects) {
    Program program;
    program.simulation.bench().faults.unplugged = true;
    program.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry};
    program.boxes.on_show = [&](const Message& message) {
        program.simulation.bench().faults.unplugged = message.text != retry_text;
    };
    EXPECT_TRUE(program.scope.start());
    EXPECT_EQ(program.boxes.texts(),
              (Texts{"ERROR!!! No attached device is found!!!", retry_text}));
}

TEST(Robustness, PullingTheCableWhileSweepingEndsTheProgramWithItsMessage) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    program.simulation.bench().faults.unplugged = true;
    program.ticks(1);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_EQ(program.boxes.texts(), Texts{not_found_text});
    const std::size_t operations = program.log.operations.size();
    program.ticks(3);
    EXPECT_EQ(program.log.operations.size(), operations);
}

TEST(Robustness, AFrameThatCannotBeWrittenLeavesNoDeviceOpen) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    program.simulation.bench().faults.operations[Operation::write] = {};
    program.ticks(1);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_EQ(program.boxes.texts(), Texts{not_found_text});
    EXPECT_EQ(program.log.operations.back().operation, Operation::close);
    EXPECT_EQ(program.log.operations.back().status, bridge_success);
}

TEST(Robustness, PullingTheCableInAPointPassDrawsNothingMore) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    int drawn_after = 0;
    program.scope.picture().on_drawn(
        [&](Columns) { drawn_after += program.simulation.bench().faults.unplugged ? 1 : 0; });
    program.messages.on_process = [&](int) {
        if (program.messages.processed == 50) {
            program.simulation.bench().faults.unplugged = true;
        }
    };
    program.ticks(1);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_EQ(drawn_after, 0);
}

TEST(Robustness, ClosingTheWindowInAPointPassClosesTheDeviceAndUnwinds) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    std::size_t frames = 0;
    program.messages.on_process = [&](int) {
        if (program.messages.processed == 30) {
            program.scope.close();
            frames = program.log.frames.size();
        }
    };
    program.ticks(1);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_EQ(program.log.frames.size(), frames);
    EXPECT_EQ(program.log.operations.back().operation, Operation::close);
}

TEST(Robustness, ATickInAnOpenMessageBoxStartsNoSecondExchange) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(3);
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::lost;
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    bool nested = false;
    program.boxes.on_show = [&](const Message&) {
        const std::size_t before = program.log.operations.size();
        program.clock.set_local_time(
            {.year = 2026, .month = 11, .day = 21, .hour = 7, .minute = 8});
        program.scope.tick();
        EXPECT_EQ(program.log.operations.size(), before);
        EXPECT_EQ(program.scope.panel().lbldate.caption(), "07:08:00, 21.11.26");
        nested = true;
    };
    program.ticks(1);
    EXPECT_TRUE(nested);
    EXPECT_EQ(program.boxes.texts(),
              (Texts{" SETTRIG Comm timed out", "Error Sending Data.", "error set triger",
                     " set time base offset ch1 Comm timed out", "Error Sending Data.",
                     "Error setting scope"}));
    EXPECT_EQ(program.state(), "scope");
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::none;
    program.ticks(5);
    EXPECT_EQ(program.status(), "Running");
}

TEST(Robustness, ATickInThePointPassStartsNoSecondPass) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    program.messages.on_process = [&](int) {
        const std::size_t before = program.log.operations.size();
        program.scope.tick();
        EXPECT_EQ(program.log.operations.size(), before);
    };
    const std::size_t before = program.log.frames.size();
    program.ticks(1);
    EXPECT_EQ(program.log.frames.size(), before + 1280);
}

TEST(Robustness, StopInAPointPassStaysAStop) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    program.messages.on_process = [&](int) {
        if (program.messages.processed == 100) {
            program.scope.act([&] { program.scope.panel().cmdstop.click(); });
        }
    };
    program.ticks(3);
    EXPECT_EQ(program.state(), "stoped");
    EXPECT_EQ(program.status(), "Stopped");
    EXPECT_FALSE(program.scope.parts().acquisition.acqrunning);
}

TEST(Robustness, AChangeInAPointPassIsUploadedOnTheNextTicks) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    program.messages.on_process = [&](int) {
        if (program.messages.processed == 100) {
            program.choose(program.channel(ch2).vdiv, "20mV");
        }
    };
    program.ticks(5);
    EXPECT_TRUE(program.boxes.shown.empty());
    EXPECT_EQ(program.simulation.settings().range, (std::array<std::size_t, 2>{0, 1}));
    EXPECT_EQ(program.status(), "Running");
}

TEST(Robustness, ATickRightAfterASetUpTakesNothingForLost) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    const std::size_t from = program.log.frames.size();
    program.choose(program.scope.panel().trigeredge, "Negative");
    program.ticks(2); // to the set-up, which takes longer than a tick
    program.scope.tick();
    program.ticks(4);
    program.choose(program.channel(0).vdiv, "0.2V");
    program.choose(program.scope.panel().trigeredge, "Positive");
    program.ticks(4);
    EXPECT_EQ(program.status(), "Running");
    for (const auto& frame : frames_of(program, from)) {
        EXPECT_NE(frame[0], 9);
    }
}

TEST(Robustness, TheDeviceIsClosedWhenAFailureEndsTheProgram) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.simulation.bench().faults.operations[Operation::write] = {};
    program.ticks(2);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_FALSE(program.scope.parts().link.state().open);
    EXPECT_EQ(program.scope.parts().link.state().commstatus, 0);
}

TEST(Robustness, NoTriggerShowsTheWaitAndNoTraceAndRecovers) {
    for (const char* time_base : {"20ns/div", "10us/div"}) {
        SCOPED_TRACE(time_base);
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.choose(program.scope.panel().seltimediv, time_base);
        program.ticks(6);
        const Pixel first_trace = pixel_of(ColourTable{}.ch1);
        const Pixel second_trace = pixel_of(ColourTable{}.ch2);
        EXPECT_GT(pixels_of(program, first_trace), 600);
        EXPECT_GT(pixels_of(program, second_trace), 600);
        program.simulation.bench().faults.no_trigger = true;
        program.ticks(6);
        EXPECT_EQ(program.status(), "Waiting For TRIGGER");
        EXPECT_EQ(pixels_of(program, first_trace), 0);
        EXPECT_EQ(pixels_of(program, second_trace), 0);
        program.simulation.bench().faults.no_trigger = false;
        program.ticks(6);
        EXPECT_NE(program.status(), "Waiting For TRIGGER");
        EXPECT_TRUE(program.boxes.shown.empty());
    }
}

TEST(Robustness, DamagedBlocksAreAskedForAgain) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    for (const std::size_t length : {0U, 1U, 2U, 3U, 650U, 1298U, 1299U}) {
        SCOPED_TRACE(length);
        program.simulation.bench().faults.block_bytes = length;
        program.ticks(6);
        program.simulation.bench().faults.block_bytes.reset();
        program.ticks(5);
        EXPECT_EQ(program.status(), "Running");
    }
    program.simulation.bench().faults.flipped_bits = 0xFF;
    program.ticks(10);
    program.simulation.bench().faults.flipped_bits = 0;
    program.simulation.bench().faults.extra_bytes = {1, 2, 3};
    program.ticks(10);
    program.simulation.bench().faults.extra_bytes.clear();
    program.ticks(5);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(Robustness, GarbageInAPointPassIsNeverMoreThanWrongPoints) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(3);
    program.simulation.bench().faults.flipped_bits = 0xFF;
    program.ticks(3);
    program.simulation.bench().faults.flipped_bits = 0;
    program.simulation.bench().faults.extra_bytes = {200};
    program.ticks(3);
    program.simulation.bench().faults.extra_bytes.clear();
    program.ticks(2);
    EXPECT_TRUE(program.boxes.shown.empty());
    // A clean pass after the garbage shows the signal again: 400 mVpp at CH1.
    const auto& mv = program.scope.parts().samples[0].mv;
    EXPECT_NEAR(*std::max_element(mv.begin() + 1, mv.begin() + 641), 200.0, 1.0);
    EXPECT_NEAR(*std::min_element(mv.begin() + 1, mv.begin() + 641), -200.0, 1.0);
}

TEST(Robustness, ASetUpWithoutAnyAnswerEndsWithinItsTimeOuts) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::lost;
    program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
    const auto before = program.clock.now();
    program.ticks(1);
    // The trigger and the first offset: three attempts each of 20 ms and 1000 ms, and the tick.
    EXPECT_LT(program.clock.now() - before, 6 * 1030ms + 100ms);
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::none;
    program.simulation.bench().faults.extra_bytes = {6, 6, 6};
    program.boxes.shown.clear();
    program.ticks(4);
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(Robustness, HelpAboutAndExportTouchNeitherInstrumentNorState) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    const std::size_t written = program.files.written.size();
    const std::size_t operations = program.log.operations.size();
    program.scope.act([&] {
        program.scope.panel().menuabout.click();
        program.scope.panel().menuhelp.click();
        program.scope.panel().exportdata.click();
    });
    EXPECT_EQ(program.log.operations.size(), operations);
    EXPECT_EQ(program.boxes.texts(),
              (std::vector<std::string>{"Kv408 1.6.0", "The manual has not been found."}));
    EXPECT_EQ(program.files.written.size(), written);
    EXPECT_EQ(program.status(), "Running");
}

TEST(Robustness, LostBytesEndAPointPassQuietlyWithinItsTimeOut) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(3);
    program.simulation.bench().faults.lose_every = 1;
    const auto before = program.clock.now();
    program.ticks(1);
    EXPECT_LT(program.clock.now() - before, 1200ms);
    program.simulation.bench().faults.lose_every = 0;
    program.ticks(2);
    EXPECT_TRUE(program.boxes.shown.empty());
    EXPECT_NE(program.state(), "stoped");
    EXPECT_EQ(program.scope.parts().acquisition.ready, (std::array<bool, 2>{true, true}));
}

TEST(Robustness, AWrongCheckAnswerClosesTheDeviceBeforeRetryListsAgain) {
    Program program;
    program.simulation.bench().faults.acknowledge = AcknowledgeFault::wrong;
    program.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry};
    program.boxes.on_show = [&](const Message& message) {
        if (message.text == retry_text) {
            EXPECT_EQ(program.log.operations.back().operation, Operation::close);
            program.simulation.bench().faults.acknowledge = AcknowledgeFault::none;
        }
    };
    EXPECT_TRUE(program.scope.start());
    EXPECT_EQ(program.boxes.texts(), (Texts{"Buffer(0) <> 6", retry_text}));
}

TEST(Robustness, SerialNumbersOfAnyBytesAreListed) {
    Program program;
    std::string all_bytes;
    for (int byte = 1; byte < 256; ++byte) {
        all_bytes.push_back(static_cast<char>(byte));
    }
    program.simulation.bench().devices = {{all_bytes}, {""}, {"LM4RXA00000001"}, {"lm4rx"}};
    EXPECT_FALSE(program.scope.start());
    EXPECT_EQ(program.boxes.texts(), Texts{not_found_text});
    EXPECT_EQ(program.scope.panel().device.entries()[0], all_bytes);
}

TEST(Robustness, ADeviceThatGoesBetweenListingAndOpeningEndsTheProgramWithItsMessage) {
    Program program;
    program.simulation.bench().devices[0].opens = false;
    EXPECT_FALSE(program.scope.start());
    ASSERT_EQ(program.boxes.shown.size(), 1U);
    EXPECT_EQ(program.boxes.shown[0].text,
              "Error opening device: " + program.simulation.bench().devices[0].serial +
                  ". Application is aborting. Reset hardware and try again.");
}

TEST(Robustness, MoreDevicesCountedThanThereAreIsNoCrash) {
    Program program;
    program.simulation.bench().faults.reported_devices = 5;
    EXPECT_TRUE(program.scope.start());
    program.simulation.bench().devices.clear();
    Program gone;
    gone.simulation.bench().faults.reported_devices = 5;
    gone.simulation.bench().devices.clear();
    EXPECT_FALSE(gone.scope.start());
    EXPECT_EQ(gone.boxes.texts(), Texts{not_found_text});
}

TEST(Robustness, ARefusedSpeedIsToldAndTheCheckThenFails) {
    Program program;
    program.simulation.bench().faults.baud_rate_refused = true;
    program.boxes.answers = {MessageAnswer::ok, MessageAnswer::cancel};
    EXPECT_FALSE(program.scope.start());
    EXPECT_EQ(program.boxes.texts(), (Texts{"error seting baud rate", retry_text}));
}

TEST(Robustness, ExitAndClosingTheWindowBehaveTheSame) {
    for (const bool by_menu : {true, false}) {
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.ticks(3);
        if (by_menu) {
            program.scope.act([&] { program.scope.panel().menuexit.click(); });
        } else {
            program.scope.close();
        }
        EXPECT_TRUE(program.scope.ended());
        EXPECT_EQ(program.log.operations.back().operation, Operation::close);
        program.scope.close();
        EXPECT_EQ(std::count_if(program.log.operations.begin(), program.log.operations.end(),
                                [](const auto& operation) {
                                    return operation.operation == Operation::close;
                                }),
                  1);
    }
}

} // namespace
} // namespace kv408
