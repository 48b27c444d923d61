// Turning the horizontal delay moves the trace at once, and the data taken with it falls in the
// same place.

#include <gtest/gtest.h>

#include "scope/trace_reader.h"

namespace kv408 {
namespace {

using simulator::SignalKind;

/// Column in which the trace of `channel` falls through the centre row for the first time; -1
/// without one.
int fall(Program& program, Channel channel = ch1) {
    for (int column = 2; column <= 639; ++column) {
        const int before = trace_row(program, channel, column - 1);
        const int row = trace_row(program, channel, column);
        if (before >= 0 && before < 256 && row >= 256) {
            return column;
        }
    }
    return -1;
}

/// CH1 alone at 20ns/div with a 10 MHz sine: it falls through 0 V 50 ns after the trigger, between
/// samples 159 and 160 of 313 ps. The first sample, number 0, lies in columns 1 and 2, so that
/// sample 160 lies in column 162. The wheel stands on the delay of CH1.
struct Delay : testing::Test, Program {
    Delay() {
        simulation.bench().sources[0] = {
            .kind = SignalKind::sine, .amplitude_mvpp = 400.0, .frequency_hz = 10.0e6};
        EXPECT_TRUE(scope.start());
        scope.act([this] {
            channel(ch2).enable.set_checked(false);
            panel.eyeon.set_checked(true);
            channel(ch1).slenps.set_checked(true);
            channel(ch1).psofset.focus();
        });
        ticks(5);
    }

    /// Drags the wheel to a delay of `picoseconds`, or also lets go.
    void drag(int picoseconds) {
        scope.act([&] { panel.slider1.drag_to(32767 - picoseconds); });
    }
    void turn(int picoseconds) {
        scope.act([&] { panel.slider1.turn_to(32767 - picoseconds); });
    }

    /// The new data has arrived: a point lies in the column of its index.
    void expect_settled() {
        const ChannelState& state = scope.parts().channels[0];
        EXPECT_EQ(state.delaypts, state.shown_delaypts);
        EXPECT_GE(trace_row(*this, ch1, 1), 0);
        EXPECT_GE(trace_row(*this, ch1, 639), 0);
    }

    FrontPanel& panel = scope.panel();
};

TEST_F(Delay, MovesTheTraceAtOnceAndNewDataFallsInTheSamePlace) {
    EXPECT_NEAR(fall(*this), 162, 1);
    drag(10000); // 32 columns of 312.5 ps
    EXPECT_NEAR(fall(*this), 130, 1);
    EXPECT_EQ(channel(ch1).psofset.text(), "10000");
    EXPECT_EQ(simulation.settings().offset_ps[0], 0) << "a drag is not sent yet";
    EXPECT_LT(trace_row(*this, ch1, 639), 0) << "there is no data yet that lies here";
    scope.act([&] { panel.slider1.mouse_up(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().offset_ps[0], 10000);
    EXPECT_NEAR(fall(*this), 130, 1);
    expect_settled();
    drag(0);
    EXPECT_NEAR(fall(*this), 162, 1);
    scope.act([&] { panel.slider1.mouse_up(); });
    ticks(5);
    EXPECT_NEAR(fall(*this), 162, 1);
    expect_settled();
}

TEST_F(Delay, TurnedAgainBetweenUploadAndRedrawKeepsTheTraceInItsPlace) {
    turn(10000);
    ticks(2); // uploaded, no new data yet
    ASSERT_EQ(simulation.settings().offset_ps[0], 10000);
    EXPECT_NEAR(fall(*this), 130, 1);
    drag(20000);
    EXPECT_NEAR(fall(*this), 98, 1) << "old data";
    for (int tick = 0; tick < 4; ++tick) { // data with the first delay
        ticks(1);
        EXPECT_NEAR(fall(*this), 98, 1) << tick;
    }
    scope.act([&] { panel.slider1.mouse_up(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().offset_ps[0], 20000);
    EXPECT_NEAR(fall(*this), 98, 1);
    expect_settled();
}

TEST_F(Delay, TurnedOnEveryTickEndsInTheSamePlace) {
    for (int step = 1; step <= 25; ++step) {
        turn(step * 1250); // 4 columns
        if (step % 3 != 0) {
            ticks(1);
        }
    }
    ticks(6);
    EXPECT_EQ(simulation.settings().offset_ps[0], 31250);
    EXPECT_NEAR(fall(*this), 62, 1);
    expect_settled();
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(Delay, TypedWithEnterArrivesWithinItsLimits) {
    for (const auto& [typed, taken] : {std::pair{"5000", 5000}, std::pair{"70000", 65535},
                                       std::pair{"-5", 0}, std::pair{"625 ps", 625}}) {
        scope.act([&, text = typed] {
            channel(ch1).psofset.set_text(text);
            channel(ch1).psofset.enter();
        });
        EXPECT_EQ(channel(ch1).psofset.text(), std::to_string(taken));
        EXPECT_EQ(panel.slider1.Value(), 32767 - taken);
        ticks(5);
        EXPECT_EQ(simulation.settings().offset_ps[0], taken);
        EXPECT_EQ(simulation.settings().offset_ps[1], 0);
        expect_settled();
    }
    EXPECT_NEAR(fall(*this), 160, 1);
}

TEST_F(Delay, OfBothChannelsMovesBoth) {
    scope.act([&] { channel(ch2).slenps.set_checked(true); });
    turn(8192);
    ticks(3);
    EXPECT_EQ(simulation.settings().offset_ps[0], 8192);
    EXPECT_EQ(simulation.settings().offset_ps[1], 8192);
    EXPECT_EQ(channel(ch2).hor_delay.caption(), "Delay:  8192ps");
}

// 65535 ps are 65535 x 2.56 = 167769.6 points.
TEST_F(Delay, IsWideEnoughForTheLongestDelayAtTheFastestTimeBase) {
    choose(panel.seltimediv, "25ps/div");
    ticks(5);
    drag(65535);
    EXPECT_EQ(scope.parts().channels[0].delaypts, 167770);
    for (int column = 0; column <= 640; ++column) {
        ASSERT_LT(trace_row(*this, ch1, column), 0) << "the old data lies far to the left";
    }
    scope.act([&] { panel.slider1.mouse_up(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().offset_ps[0], 65535);
    expect_settled();
    // 10 MHz at 65.5 ns: 200 mV x sin(2 pi x 0.65535) = -165.7 mV, 0.64 rows a millivolt.
    EXPECT_NEAR(trace_row(*this, ch1, 1), 256 + 106, 2);
    drag(65535 - 100); // 256 columns to the right
    EXPECT_LT(trace_row(*this, ch1, 256), 0);
    EXPECT_GE(trace_row(*this, ch1, 257), 0);
}

/// Types a delay of 5000 ps for CH1, which the wheel moves, and one of 50000 ps for CH2.
struct TwoDelays : Delay {
    TwoDelays() {
        for (const auto& [index, delay] : {std::pair{ch1, "5000"}, std::pair{ch2, "50000"}}) {
            scope.act([&, number = index, text = delay] {
                channel(number).psofset.set_text(text);
                channel(number).psofset.enter();
            });
        }
        ticks(5);
        expect_in_instrument(5000, 50000);
    }

    /// Both boxes and the instrument hold these delays, picoseconds.
    void expect_in_instrument(int first, int second) {
        EXPECT_EQ(channel(ch1).psofset.text(), std::to_string(first));
        EXPECT_EQ(channel(ch2).psofset.text(), std::to_string(second));
        EXPECT_EQ(simulation.settings().offset_ps[0], first);
        EXPECT_EQ(simulation.settings().offset_ps[1], second);
    }
};

TEST_F(TwoDelays, OfWhichOneStaysWhereADragEndsWhereItBegan) {
    scope.act([&] {
        panel.slider1.mouse_down(0, 0);
        panel.slider1.mouse_move(left_mouse_button, -10, 0);
        panel.slider1.mouse_move(left_mouse_button, 0, 0);
        panel.slider1.mouse_up();
    });
    ticks(5);
    expect_in_instrument(5000, 50000);
    expect_settled();
}

// At 20ns/div a pixel of the wheel is 64 ps.
TEST_F(TwoDelays, AreNotWrittenIntoEachOther) {
    scope.act([&] { panel.slider1.turn(-1); });
    ticks(5);
    expect_in_instrument(5064, 50000);
    scope.act([&] { panel.tabstrip2.select(1); });
    scope.act([&] {
        channel(ch1).slenps.set_checked(false);
        channel(ch2).slenps.set_checked(true);
        panel.tabstrip2.select(4);
        panel.slider1.turn(1);
    });
    ticks(5);
    expect_in_instrument(5064, 49936);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(TwoDelays, AgreeWithTheInstrumentAfterACursorChannelIsChosen) {
    choose(panel.combocursorselect, "CH2");
    ticks(5);
    for (std::size_t index = 0; index < 2; ++index) {
        EXPECT_EQ(std::to_string(simulation.settings().offset_ps[index]),
                  panel.channel[index].psofset.text());
    }
}

// What is held then was taken with the delay before.
TEST_F(Delay, StoppedBeforeItsDataComeKeepsBothTracesInTheirPlace) {
    scope.act([this] {
        channel(ch2).enable.set_checked(true);
        channel(ch2).slenps.set_checked(true);
    });
    for (const int ticks_between : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(ticks_between);
        turn(0);
        ticks(6);
        const int first = fall(*this, ch1);
        const int second = fall(*this, ch2);
        ASSERT_GT(second, 40);
        turn(10000); // 32 columns
        ticks(ticks_between);
        scope.act([this] { panel.cmdstop.click(); });
        for (int tick = 0; tick < 3; ++tick) {
            ticks(1);
            EXPECT_NEAR(fall(*this, ch1), first - 32, 1);
            EXPECT_NEAR(fall(*this, ch2), second - 32, 1);
        }
        scope.act([this] { panel.cmdstartsweep.click(); });
        ticks(6);
        EXPECT_NEAR(fall(*this, ch1), first - 32, 1);
        EXPECT_NEAR(fall(*this, ch2), second - 32, 1);
        expect_settled();
    }
}

TEST_F(Delay, SurvivesATripToPointMode) {
    turn(10000);
    ticks(5);
    choose(panel.seltimediv, "500ns/div");
    EXPECT_EQ(panel.tabstrip2.selected_key(), "CH1");
    EXPECT_FALSE(channel(ch1).psofset.enabled());
    ticks(4);
    choose(panel.seltimediv, "20ns/div");
    ticks(6);
    EXPECT_EQ(channel(ch1).psofset.text(), "10000");
    EXPECT_EQ(simulation.settings().offset_ps[0], 10000);
    EXPECT_NEAR(fall(*this), 130, 1);
    expect_settled();
}

TEST_F(Delay, UploadedWhileItWasBeingTypedIsUploadedAgainWhenTheBoxIsLeft) {
    TextBox& box = channel(ch1).psofset;
    scope.act([&] { box.set_text("9000"); });
    scope.act([&] { box.enter(); });
    ticks(5);
    scope.act([&] { box.set_text("900000"); });
    choose(panel.trigeredge, "Negative");
    ticks(5);
    ASSERT_EQ(simulation.settings().offset_ps[0], 900000);
    scope.act([&] { box.set_text("9000"); });
    scope.act([&] { box.leave(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().offset_ps[0], 9000);
    EXPECT_EQ(channel(ch1).hor_delay.caption(), "Delay:  9000ps");
}

} // namespace
} // namespace kv408
