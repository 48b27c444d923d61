// The whole program over the serial bridge, in real time.

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include <gtest/gtest.h>

#include "link/make_bridge.h"
#include "panel/front_panel.h"
#include "scope/parts.h"
#include "scope/scope.h"
#include "state/rounding.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/ports/instrument_on_port.h"
#include "support/ports/usb_ports.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Texts = std::vector<std::string>;

constexpr const char* not_found_text = "Error finding WKTP2B device. Aborting application.";

/// The program on `bridge`, told the time by `clock`.
struct ProgramOn {
    ProgramOn(Clock& time, Bridge& bridge)
        : clock(time),
          scope(Machine{clock, boxes, messages, bridge, files, choosers, fake_places(), coder}) {}

    /// Ticks as the window's timer does until both channels have been swept, for 5 s at most.
    void sweep_both() {
        const auto& ready = scope.parts().acquisition.ready;
        const auto end = clock.now() + seconds(5);
        while (clock.now() < end && !(ready[0] && ready[1]) && !scope.ended()) {
            clock.sleep(milliseconds(100));
            scope.tick();
        }
        EXPECT_TRUE(ready[0] && ready[1]);
    }

    /// Does what a click does that sets the time base to one that is swept point by point.
    void sweep_point_by_point() {
        ListBox& list = scope.panel().seltimediv;
        const auto found = std::find(list.entries().begin(), list.entries().end(), "10us/div");
        ASSERT_NE(found, list.entries().end());
        const auto index = static_cast<int>(found - list.entries().begin());
        scope.act([&] { list.set_index(index); });
    }

    Clock& clock;
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope;
};

class SerialProgram : public testing::Test {
protected:
    void plug(const char* serial = "lm4rxa-SIM00001") {
        ports_.plug(0, serial);
        instrument_ = std::make_unique<InstrumentOnPort>(ports_.far_end(0));
    }

    void unplug() {
        instrument_.reset();
        ports_.unplug(0);
    }

    /// Starts the program, which shows `texts` and ends.
    void expect_end_at_start(const Texts& texts) {
        EXPECT_FALSE(program_.scope.start());
        EXPECT_EQ(program_.boxes.texts(), texts);
    }

    SystemClock clock_;
    UsbPorts ports_;
    std::unique_ptr<InstrumentOnPort> instrument_;
    // There is no library of this name.
    std::unique_ptr<Bridge> bridge_ = make_bridge(clock_, std::clog, "libNoSuchBridge.so").bridge;
    ProgramOn program_{clock_, *bridge_};
};

TEST_F(SerialProgram, SweepsWhatTheInstrumentInTheProcessSweeps) {
    plug();
    ASSERT_TRUE(program_.scope.start()) << bridge_->trouble();
    program_.sweep_both();
    VirtualClock virtual_clock;
    simulator::Simulation simulation(virtual_clock);
    make_exact(simulation);
    ProgramOn inside(virtual_clock, simulation.bridge());
    ASSERT_TRUE(inside.scope.start());
    inside.sweep_both();
    for (const Channel channel : both_channels) {
        const SampleBuffer& outer = program_.scope.parts().samples[channel];
        EXPECT_EQ(outer.raw, inside.scope.parts().samples[channel].raw) << channel;
        const auto [low, high] =
            std::minmax_element(outer.raw.begin() + 1, outer.raw.begin() + 641);
        EXPECT_GT(*high - *low, 100) << channel;
    }
    EXPECT_EQ(program_.scope.panel().textstatus.text(), "Running");
    program_.scope.close();
    EXPECT_TRUE(program_.boxes.shown.empty());
}

TEST_F(SerialProgram, SweepsPointByPoint) {
    plug();
    ASSERT_TRUE(program_.scope.start());
    program_.sweep_point_by_point();
    program_.sweep_both();
    for (const Channel channel : both_channels) {
        const auto& mv = program_.scope.parts().samples[channel].mv;
        const auto [low, high] = std::minmax_element(mv.begin() + 1, mv.begin() + 641);
        EXPECT_GT(*high - *low, 100) << channel;
    }
    EXPECT_TRUE(program_.boxes.shown.empty());
}

/// Sweeps for as long as the environment variable KV408_SWEEP_SECONDS says, without it for 2 s;
/// where the machine is so busy that they do not hold the sweeps they should, for longer. A block
/// takes 16 ms and so one tick of 100 ms: both channels, two. Half of these five sweeps per second
/// are expected, and no break as long as fifty of them.
TEST_F(SerialProgram, KeepsSweepingBothChannels) {
    constexpr auto longest_break = seconds(10);
    plug();
    ASSERT_TRUE(program_.scope.start());
    const char* const wanted = std::getenv("KV408_SWEEP_SECONDS");
    const int length_s = wanted != nullptr ? round_to_int32(leading_number(wanted)) : 2;
    const int expected = length_s * 5 / 2;
    const auto end = clock_.now() + seconds(length_s);
    int sweeps = 0; // of both channels: each ends where the second channel hands on to the first
    auto swept_at = clock_.now();
    std::chrono::nanoseconds longest{};
    std::string before;
    const auto wants_more = [&] {
        return clock_.now() < end || (sweeps < expected && clock_.now() < end + seconds(20));
    };
    while (wants_more() && !program_.scope.ended()) {
        clock_.sleep(milliseconds(100));
        program_.scope.tick();
        const std::string& now = program_.scope.parts().acquisition.scopestate;
        longest = std::max(longest, clock_.now() - swept_at);
        if (before == "scopech2f" && now == "scopech1f") {
            ++sweeps;
            swept_at = clock_.now();
        }
        before = now;
    }
    RecordProperty("sweeps", sweeps);
    RecordProperty("longest_break_ms",
                   static_cast<int>(std::chrono::ceil<milliseconds>(longest).count()));
    EXPECT_GE(sweeps, expected);
    EXPECT_LT(longest, longest_break);
    EXPECT_TRUE(program_.boxes.shown.empty());
    EXPECT_EQ(program_.scope.panel().textstatus.text(), "Running");
}

TEST_F(SerialProgram, UnpluggedInMidSweepEndsWithItsMessage) {
    plug();
    ASSERT_TRUE(program_.scope.start());
    program_.sweep_both();
    unplug();
    const auto limit = clock_.now() + seconds(10);
    while (clock_.now() < limit && !program_.scope.ended()) {
        clock_.sleep(milliseconds(100));
        program_.scope.tick();
    }
    EXPECT_TRUE(program_.scope.ended());
    EXPECT_EQ(program_.boxes.texts(), Texts{not_found_text});
}

TEST_F(SerialProgram, UnpluggedInAPointPassEndsWithItsMessage) {
    plug();
    ASSERT_TRUE(program_.scope.start());
    program_.sweep_point_by_point();
    bool pulled = false;
    program_.messages.on_process = [&](int) {
        if (!pulled && program_.scope.parts().acquisition.scopestate == "scope") {
            pulled = true;
            unplug();
        }
    };
    const auto limit = clock_.now() + seconds(10);
    while (clock_.now() < limit && !program_.scope.ended()) {
        clock_.sleep(milliseconds(100));
        program_.scope.tick();
    }
    EXPECT_TRUE(pulled);
    EXPECT_TRUE(program_.scope.ended());
    EXPECT_EQ(program_.boxes.texts(), Texts{not_found_text});
}

TEST_F(SerialProgram, PortsThatCannotBeListedEndIt) {
    expect_end_at_start({"Error finding USB device. Aborting application."});
    EXPECT_EQ(program_.boxes.shown[0].informative, "The system does not list its serial ports.");
}

TEST_F(SerialProgram, NoPortWithASerialNumberIsNoDevice) {
    plug(nullptr);
    program_.boxes.answers = {MessageAnswer::ok, MessageAnswer::cancel};
    EXPECT_FALSE(program_.scope.start());
    ASSERT_EQ(program_.boxes.shown.size(), 2U);
    EXPECT_EQ(program_.boxes.shown[0].text, "ERROR!!! No attached device is found!!!");
}

TEST_F(SerialProgram, AnotherSerialNumberIsNotOpened) {
    plug("LM4RXA-SIM00001");
    expect_end_at_start({not_found_text});
}

TEST_F(SerialProgram, APortThatIsInUseEndsItAndSaysSo) {
    plug();
    const auto other = make_bridge(clock_, std::clog, "libNoSuchBridge.so").bridge;
    ASSERT_EQ(other->count_devices().status, bridge_success);
    ASSERT_EQ(other->open(0), bridge_success);
    expect_end_at_start({"Error opening device: lm4rxa-SIM00001. Application is aborting. Reset "
                         "hardware and try again."});
    EXPECT_EQ(program_.boxes.shown[0].informative,
              "Another program is using /dev/ttyUSB0. Close it and start this one again.");
}

TEST_F(SerialProgram, ARefusedSpeedIsTold) {
    plug();
    ports_.speed_refused = true;
    program_.boxes.answers = {MessageAnswer::ok, MessageAnswer::cancel};
    EXPECT_FALSE(program_.scope.start());
    // The instrument then hears noise and does not answer within 3 s.
    ASSERT_EQ(program_.boxes.shown.size(), 2U);
    EXPECT_EQ(program_.boxes.shown[0].text, "error seting baud rate");
    EXPECT_EQ(program_.boxes.shown[0].informative.find("The port /dev/ttyUSB0 failed: "), 0U);
}

TEST_F(SerialProgram, AWrongAnswerToTheCheckIsTold) {
    plug();
    instrument_->on_bench([](simulator::TestBench& bench) {
        bench.faults.acknowledge = simulator::AcknowledgeFault::wrong;
    });
    program_.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry};
    program_.boxes.on_show = [&](const Message& message) {
        if (message.text != "Buffer(0) <> 6") {
            instrument_->on_bench([](simulator::TestBench& bench) {
                bench.faults.acknowledge = simulator::AcknowledgeFault::none;
            });
        }
    };
    EXPECT_TRUE(program_.scope.start());
    ASSERT_EQ(program_.boxes.shown.size(), 2U);
    EXPECT_EQ(program_.boxes.shown[0].text, "Buffer(0) <> 6");
}

TEST_F(SerialProgram, AMissingAndAWrongAcknowledgeAreTold) {
    plug();
    FakeMessageBoxes boxes;
    ProgramState state;
    DeviceLink link(*bridge_, clock_, boxes, state);
    link.finddevice();
    ASSERT_TRUE(link.select_and_open());
    link.set_link_speed();
    ASSERT_TRUE(link.checkdevice());
    for (const auto& [fault, text] :
         {std::pair(simulator::AcknowledgeFault::lost, " SETTRIG Comm timed out"),
          std::pair(simulator::AcknowledgeFault::wrong, " SETTRIG CommError")}) {
        instrument_->on_bench(
            [fault = fault](simulator::TestBench& bench) { bench.faults.acknowledge = fault; });
        boxes.shown.clear();
        std::int16_t attempts = 2;
        EXPECT_FALSE(link.sendcmdack(command::set_trigger, {0, 8, 0, 1, 20, 255}, attempts, 50,
                                     " SETTRIG "));
        EXPECT_EQ(boxes.texts(), (Texts{text, "Error Sending Data."}));
    }
}

} // namespace
} // namespace kv408
