// What of the picture is drawn when: with a change of the set-up, without a trigger, after Stop.

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "scope/settings_shown.h"
#include "scope/trace_reader.h"

namespace kv408 {
namespace {

/// Positions of the tabs of the cursor strip.
constexpr int voltage_cursors = 1;
constexpr int no_cursors = 3;

/// Both channels sweep the demo's signals; what is drawn is watched.
class Redrawn : public testing::Test, public Program {
protected:
    void start(int ticks_first = 10) {
        ASSERT_TRUE(scope.start());
        watch([] {});
        ticks(ticks_first);
    }

    FrontPanel& panel() { return scope.panel(); }

    [[nodiscard]] bool shows_trace(Channel channel) {
        return top_row(scope.picture().surface(), scope.parts().colours.channel(channel)) >= 0;
    }

    /// A dot of the graticule; no trace lies there while both channels are off.
    [[nodiscard]] bool shows_grid() {
        return scope.picture().surface().at(plot::division, plot::division) ==
               pixel_of(scope.parts().colours.grid);
    }

    /// Calls `look` after each drawing from now on.
    void watch(const std::function<void()>& look) {
        scope.picture().on_drawn([look](Columns /*columns*/) { look(); });
    }

    /// Every pixel of the picture as it is now.
    [[nodiscard]] std::vector<Pixel> pixels() {
        std::vector<Pixel> result;
        const Surface& picture = scope.picture().surface();
        for (int y = 0; y < picture.height(); ++y) {
            const auto row = picture.row(y);
            result.insert(result.end(), row.begin(), row.end());
        }
        return result;
    }

    /// Every pixel once all of the picture has been drawn anew.
    [[nodiscard]] std::vector<Pixel> pixels_of_a_whole_drawing() {
        scope.act([this] { panel().tabstrip2.select(panel().tabstrip2.selected()); });
        return pixels();
    }

    void stop() {
        scope.act([this] { panel().cmdstop.click(); });
        ticks(3);
        ASSERT_EQ(status(), "Stopped");
    }
};

TEST_F(Redrawn, AnInvertedTraceComesWithAllTheRest) {
    start();
    scope.act([this] { panel().tabstrip3.select(voltage_cursors); });
    stop();
    for (const Channel index : both_channels) {
        scope.act([&] { channel(index).invert.press(true); });
        const auto after_the_press = pixels();
        EXPECT_EQ(after_the_press, pixels_of_a_whole_drawing()) << index;
        EXPECT_TRUE(shows_trace(ch1));
        EXPECT_TRUE(shows_trace(ch2));
    }
}

TEST_F(Redrawn, TheCursorsStayWhereATraceIsInvertedThatWaitsForATrigger) {
    start();
    scope.act([this] { panel().tabstrip3.select(voltage_cursors); });
    simulation.bench().faults.no_trigger = true;
    ticks(10);
    ASSERT_EQ(status(), "Waiting For TRIGGER");
    const auto before = pixels();
    scope.act([this] { channel(ch1).invert.press(true); });
    EXPECT_EQ(pixels(), before) << "no trace is drawn that could have changed";
}

/// The program without a trigger.
class Untriggered : public Redrawn {
protected:
    /// Makes changes of every kind that bring a new set-up and watches for a trace.
    void expect_no_trace_with_any_change() {
        simulation.bench().faults.no_trigger = true;
        ticks(10);
        ASSERT_EQ(status(), "Waiting For TRIGGER");
        int drawn = 0;
        const char* change = "";
        watch([&] {
            ++drawn;
            EXPECT_FALSE(shows_trace(ch1)) << change << ", " << status();
            EXPECT_FALSE(shows_trace(ch2)) << change << ", " << status();
        });
        for (const auto& [name, make] : changes()) {
            change = name;
            scope.act(make);
            ticks(1);
            scope.act([this] { panel().gridenable.press(!panel().gridenable.checked()); });
            ticks(1);
            EXPECT_EQ(status(), "Setup...") << name;
            scope.act([this] { panel().gridenable.press(!panel().gridenable.checked()); });
            ticks(4);
            ASSERT_EQ(status(), "Waiting For TRIGGER") << name;
        }
        EXPECT_GE(drawn, 1);
        watch([] {});
    }

private:
    struct Change {
        const char* name;
        std::function<void()> make;
    };

    std::vector<Change> changes() {
        return {{"edge", [this] { panel().trigeredge.set_index(1); }},
                {"hysteresis", [this] { panel().shyst.set_value(20); }},
                {"range", [this] { channel(ch2).vdiv.set_index(4); }},
                {"position", [this] { panel().slider1.turn(3); }},
                {"averaging", [this] { panel().average.press(true); }},
                {"point by point", [this] { panel().seltimediv.set_index(6); }},
                {"edge, point by point", [this] { panel().trigeredge.set_index(0); }},
                {"blocks", [this] { panel().seltimediv.set_index(11); }}};
    }
};

TEST_F(Untriggered, NoChangeOfTheSetUpShowsTheOldTraces) {
    start();
    ASSERT_TRUE(shows_trace(ch1));
    ASSERT_TRUE(shows_trace(ch2));
    expect_no_trace_with_any_change();
    simulation.bench().faults.no_trigger = false;
    ticks(6);
    EXPECT_EQ(status(), "Running");
    EXPECT_TRUE(shows_trace(ch1));
    EXPECT_TRUE(shows_trace(ch2));
}

TEST_F(Untriggered, NoChangeOfTheSetUpShowsATraceThatNeverCame) {
    simulation.bench().faults.no_trigger = true;
    start();
    expect_no_trace_with_any_change();
}

TEST_F(Untriggered, StopBringsTheOldTracesBackAlsoRightAfterAChange) {
    start();
    for (const int ticks_after_the_change : {0, 1, 2, 3}) {
        SCOPED_TRACE(ticks_after_the_change);
        simulation.bench().faults.no_trigger = true;
        ticks(10);
        ASSERT_FALSE(shows_trace(ch1));
        scope.act([this] { panel().trigeredge.set_index(1); });
        ticks(ticks_after_the_change);
        stop();
        EXPECT_TRUE(shows_trace(ch1));
        EXPECT_TRUE(shows_trace(ch2));
        simulation.bench().faults.no_trigger = false;
        scope.act([this] { panel().cmdstartsweep.click(); });
        ticks(6);
        ASSERT_EQ(status(), "Running");
    }
}

// Stop

TEST_F(Redrawn, StopRightAfterAChangeKeepsBothTraces) {
    start();
    const std::vector<std::function<void()>> changes = {
        [this] {
            panel().tabstrip2.select(1);
            panel().slider1.turn(4);
        },
        [this] { channel(ch2).vdiv.set_index(1); },
        [this] { channel(ch2).vdiv.set_index(3); }, // the other range
    };
    for (std::size_t index = 0; index < changes.size(); ++index) {
        for (const int ticks_between : {0, 1, 2, 3}) {
            SCOPED_TRACE(testing::Message() << "change " << index << ", tick " << ticks_between);
            scope.act(changes[index]);
            ticks(ticks_between);
            stop();
            scope.act([this] { panel().gridenable.press(!panel().gridenable.checked()); });
            EXPECT_TRUE(shows_trace(ch1));
            EXPECT_TRUE(shows_trace(ch2));
            scope.act([this] { panel().cmdstartsweep.click(); });
            ticks(6);
        }
    }
}

TEST_F(Redrawn, AChannelThatNeverSweptIsNotBroughtByStop) {
    files.files[settings_path] = "ch2enable\t 0 \r\n";
    start();
    ASSERT_FALSE(channel(ch2).enable.checked());
    stop();
    scope.act([this] { channel(ch2).enable.press(true); });
    EXPECT_FALSE(shows_trace(ch2)) << "there is nothing of it to show";
}

// During a set-up

TEST_F(Redrawn, WhatIsAskedForDuringASetUpIsDrawnAfterIt) {
    start();
    scope.act([this] {
        for (ChannelControls& controls : panel().channel) {
            controls.enable.press(false);
        }
    });
    ticks(6);
    for (const int ticks_before : {0, 1}) {
        SCOPED_TRACE(ticks_before == 0 ? "changes" : "startscope");
        scope.act([this] { panel().trigeredge.set_index(1); });
        ticks(ticks_before);
        ASSERT_EQ(state(), ticks_before == 0 ? "changes" : "startscope");
        scope.act([this] {
            panel().gridenable.press(false);
            panel().tabstrip3.select(voltage_cursors);
        });
        EXPECT_TRUE(shows_grid()) << "not drawn as yet";
        ticks(2 - ticks_before);
        EXPECT_FALSE(shows_grid());
        EXPECT_EQ(pixels(), pixels_of_a_whole_drawing()) << "cursors";
        scope.act([this] {
            panel().gridenable.press(true);
            panel().tabstrip3.select(no_cursors);
        });
    }
}

TEST_F(Redrawn, WhatIsAskedForDuringASetUpIsDrawnAlsoWhereNoDataFollows) {
    start();
    simulation.bench().faults.block_bytes = 0;
    scope.act([this] { panel().slider1.turn(4); });
    scope.act([this] { panel().gridenable.press(false); });
    ticks(2);
    ASSERT_TRUE(shows_grid()) << "data may follow";
    ticks(10);
    EXPECT_FALSE(shows_grid());
}

TEST_F(Redrawn, NoTraceIsTakenOffUntilItsNewDataCome) {
    start();
    int drawn = 0;
    watch([&] {
        ++drawn;
        EXPECT_TRUE(shows_trace(ch1));
        EXPECT_TRUE(shows_trace(ch2));
    });
    for (int notch = 0; notch < 2; ++notch) {
        scope.act([this] { panel().slider1.turn(1); });
    }
    ticks(6);
    EXPECT_GE(drawn, 2);
    scope.picture().on_drawn({});
}

// CH1's 200 mV are 128 rows at 0.1V/div and more than the plot has at 50mV/div. Samples of the one
// range drawn as if they were of the other would give 85 rows.
TEST_F(Redrawn, NoTraceIsDrawnWithTheScaleOfAnotherRange) {
    start();
    watch([this] {
        const int top = top_row(scope.picture().surface(), scope.parts().colours.ch1);
        EXPECT_TRUE(top == 1 || std::abs(top - 128) <= 2) << top;
    });
    scope.act([this] { channel(ch1).vdiv.set_index(3); });
    ticks(6);
    EXPECT_EQ(top_row(scope.picture().surface(), scope.parts().colours.ch1), 1);
    scope.picture().on_drawn({});
}

} // namespace
} // namespace kv408
