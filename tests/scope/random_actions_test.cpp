// A minute of turning everything at random while the instrument sweeps never leaves it with
// another set-up than the panel shows.

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "display/plot_mouse.h"
#include "panel/time_base.h"
#include "scope/trace_reader.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

/// The program in the hands of someone who does anything, decided by a seed.
class RandomActions : public testing::TestWithParam<unsigned>, protected Program {
protected:
    RandomActions() { EXPECT_TRUE(scope.start()); }

    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }
    bool chance(int percent) { return random(1, 100) <= percent; }

    ChannelControls& any_channel() { return channel(random(ch1, ch2)); }

    MeasurementControls& any_slot() {
        return panel.measurement[static_cast<std::size_t>(random(0, 2))];
    }

    void any_entry(ListBox& list) {
        list.set_index(random(0, static_cast<int>(list.entries().size()) - 1));
    }

    void any_tick() {
        if (chance(50)) {
            ticks(1);
        }
    }

    /// Runs `action` as a user's.
    void act(const std::function<void()>& action) { scope.act(action); }

    void choose_time_base() {
        constexpr int slowest_block_mode = 8;
        const int first = chance(10) ? 0 : slowest_block_mode;
        panel.seltimediv.set_index(random(first, 20));
    }

    void type_time_out() {
        constexpr std::array texts{"1000", "5", "70000", "20000", "300", "x", "-4"};
        panel.trtout.set_text(texts[static_cast<std::size_t>(random(0, 6))]);
        panel.trigsource.set_index(panel.trigsource.index());
    }

    void type_delay() {
        TextBox& box = any_channel().psofset;
        if (!box.enabled()) {
            return;
        }
        box.focus();
        box.set_text(chance(20) ? (chance(50) ? "70000" : "-3") : std::to_string(random(0, 65535)));
        box.enter();
    }

    /// A drag of the wheel on any tab, with ticks in the middle of it.
    void drag_wheel() {
        ThumbWheel& wheel = panel.slider1;
        int x = 0;
        act([&] {
            panel.tabstrip2.select(random(1, static_cast<int>(panel.tabstrip2.tabs().size())));
            wheel.mouse_down(0, 0);
        });
        for (int moves = random(1, 20); moves > 0; --moves) {
            act([&] { wheel.mouse_move(left_mouse_button, x += random(-25, 25), 0); });
            any_tick();
        }
        act([&] { wheel.mouse_up(); });
    }

    void drag_marker() {
        const int marker = random(0, 2);
        PlotMouse& mouse = scope.plot_mouse();
        act([&] {
            marker == 2 ? mouse.trigertext_MouseDown(6) : mouse.chtext_MouseDown(marker, 6);
        });
        for (int moves = random(1, 10); moves > 0; --moves) {
            const int y = 6 + random(-60, 60);
            act([&] {
                marker == 2 ? mouse.trigertext_MouseMove(y) : mouse.chtext_MouseMove(marker, y);
            });
            any_tick();
        }
        act([&] { marker == 2 ? mouse.trigertext_MouseUp() : mouse.chtext_MouseUp(); });
    }

    void drag_cursor() {
        PlotMouse& mouse = scope.plot_mouse();
        const CursorState& cursors = scope.parts().cursor_state;
        const auto cursor = static_cast<std::size_t>(random(0, 1));
        bool held = false;
        act([&] {
            held = mouse.plot_MouseDown(cursors.hpos[cursor], cursors.vpos[cursor], chance(30));
        });
        for (int moves = random(0, 5); held && moves > 0; --moves) {
            act([&] { mouse.plot_MouseMove(random(-50, 700), random(-50, 560)); });
            any_tick();
        }
        act([&] { mouse.plot_MouseUp(); });
    }

    void do_anything() {
        const std::vector<std::function<void()>> actions = {
            [this] { act([this] { any_entry(any_channel().vdiv); }); },
            [this] { act([this] { any_channel().inviatr.set_checked(chance(50)); }); },
            [this] { act([this] { any_channel().invert.set_checked(chance(50)); }); },
            [this] { act([this] { any_channel().enable.set_checked(chance(80)); }); },
            [this] { act([this] { any_channel().slenps.set_checked(chance(70)); }); },
            [this] { act([this] { any_entry(panel.trigsource); }); },
            [this] { act([this] { any_entry(panel.trigeredge); }); },
            [this] { act([this] { panel.shyst.set_value(random(0, 255)); }); },
            [this] { act([this] { panel.trzero.click(); }); },
            [this] { act([this] { type_time_out(); }); },
            [this] { act([this] { choose_time_base(); }); },
            [this] { act([this] { type_delay(); }); },
            [this] { act([this] { panel.tabstrip3.select(random(1, 3)); }); },
            [this] { act([this] { any_entry(panel.combocursorselect); }); },
            [this] { act([this] { panel.average.set_checked(chance(30)); }); },
            [this] { act([this] { panel.persist.set_checked(chance(50)); }); },
            [this] { act([this] { panel.eyeon.set_checked(chance(50)); }); },
            [this] { act([this] { panel.gridenable.set_checked(chance(50)); }); },
            [this] { act([this] { panel.check1.press(chance(80)); }); },
            [this] { act([this] { any_entry(any_slot().selector); }); },
            [this] { act([this] { any_slot().annotate.press(chance(70)); }); },
            [this] { drag_wheel(); },
            [this] { drag_wheel(); },
            [this] { drag_marker(); },
            [this] { drag_marker(); },
            [this] { drag_cursor(); },
            [this] {
                act([this] { panel.cmdstop.click(); });
                any_tick();
                act([this] { any_entry(panel.trigeredge); });
                any_tick();
                act([this] { panel.cmdstartsweep.click(); });
            }};
        const int chosen = random(0, static_cast<int>(actions.size()) - 1);
        done_ += " " + std::to_string(chosen);
        actions[static_cast<std::size_t>(chosen)]();
    }

    void expect_trigger_uploaded() {
        const simulator::TriggerSettings& sent = simulation.settings().trigger;
        const auto source = static_cast<std::size_t>(panel.trigsource.index());
        EXPECT_EQ(sent.input, source);
        EXPECT_EQ(sent.rising, panel.trigeredge.text() == "Positive");
        EXPECT_EQ(sent.level_mv, scope.parts().trigger_state.saved_trigpos[source] - 2048);
        EXPECT_EQ(sent.hysteresis_mv, panel.shyst.value());
        EXPECT_EQ(sent.time_out_us,
                  std::clamp(round_to_int32(leading_number(panel.trtout.text())), 10, 65535));
    }

    void expect_channels_uploaded() {
        constexpr int finest_of_low_gain = 2;
        for (std::size_t index = 0; index < 2; ++index) {
            const ChannelControls& controls = panel.channel[index];
            const ChannelState& state = scope.parts().channels[index];
            EXPECT_EQ(simulation.settings().range[index],
                      controls.vdiv.index() <= finest_of_low_gain ? simulator::low_range
                                                                  : simulator::high_range);
            EXPECT_EQ(simulation.settings().offset_ps[index], std::stoi(controls.psofset.text()));
            EXPECT_EQ(marker_row(controls.text), state.pos);
            EXPECT_EQ(state.offsetdac, offset_code(state));
            EXPECT_EQ(state.delaypts, state.uploaded_delaypts);
        }
    }

    void expect_wheel_at_its_quantity() {
        const std::string key = panel.tabstrip2.selected_key();
        const int value = panel.slider1.Value();
        const CursorState& cursors = scope.parts().cursor_state;
        for (std::size_t index = 0; index < 2; ++index) {
            if (key == "CH" + std::to_string(index + 1)) {
                EXPECT_EQ(value, scope.parts().channels[index].marker_wheel);
            }
            EXPECT_EQ(std::clamp<int>(cursors.vpos[index], 0, 512), cursors.vpos[index]);
            EXPECT_EQ(std::clamp<int>(cursors.hpos[index], 0, 640), cursors.hpos[index]);
        }
        if (key == "TRIG") {
            EXPECT_EQ(value, scope.parts().trigger_state.trigwheel);
        }
        EXPECT_EQ(cursors.cursormode == cursor_mode::none, panel.tabstrip3.selected() == 3);
    }

    void expect_time_base_uploaded() {
        const auto rows = time_base_rows();
        const auto row = std::find_if(rows.begin(), rows.end(), [this](const TimeBaseRow& entry) {
            return entry.text == panel.seltimediv.text();
        });
        ASSERT_NE(row, rows.end());
        EXPECT_EQ(simulation.settings().resolution_ps, static_cast<int>(row->tbresolution));
        if (row->pointmode) {
            EXPECT_EQ(state(), "scope");
        } else {
            EXPECT_TRUE(state() == "scopech1f" || state() == "scopech2f") << state();
        }
    }

    void expect_one_annotation_at_most() {
        int annotated = 0;
        for (const MeasurementControls& slot : panel.measurement) {
            annotated += slot.annotate.checked() ? 1 : 0;
        }
        EXPECT_LE(annotated, 1);
        if (!panel.check1.checked()) {
            EXPECT_FALSE(panel.picmeasure.visible());
        }
    }

    FrontPanel& panel = scope.panel();
    std::mt19937 random_{GetParam()};
    std::string done_; ///< numbers of the actions of this burst
};

TEST_P(RandomActions, LeaveTheInstrumentAsThePanelShows) {
    int bursts = 0;
    for (; clock.now() < std::chrono::seconds(180); ++bursts) {
        for (int actions = random(1, 12); actions > 0; --actions) {
            any_tick();
            do_anything();
        }
        ticks(6);
        expect_trigger_uploaded();
        expect_channels_uploaded();
        expect_time_base_uploaded();
        expect_wheel_at_its_quantity();
        expect_one_annotation_at_most();
        EXPECT_TRUE(boxes.texts().empty()) << boxes.texts().front();
        EXPECT_FALSE(scope.ended());
        ASSERT_FALSE(HasFailure()) << "burst " << bursts << ", actions" << done_;
        done_.clear();
    }
    EXPECT_GT(bursts, 60);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomActions, testing::Range(1U, 9U));

} // namespace
} // namespace kv408
