#pragma once

#include <array>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <utility>

#include "display/plot_mouse.h"
#include "scope/parts.h"
#include "scope/scope.h"

namespace kv408 {

/// Someone who does anything to the panel while the program sweeps. All chance comes from one
/// generator.
class RandomUser {
public:
    /// In front of `scope`; `tick` is one tick of the timer, of which some come in the middle of
    /// an action. Everything outlives the user.
    RandomUser(Scope& scope, std::mt19937& random, std::function<void()> tick)
        : scope_(scope), random_(random), tick_(std::move(tick)) {}

    /// A whole number, `lowest` .. `highest`.
    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }

    /// True in `percent` of all cases.
    bool chance(int percent) { return random(1, 100) <= percent; }

    /// Lets a tick come, or none.
    void any_tick() {
        if (chance(50)) {
            tick_();
        }
    }

    /// Does one thing, and tells which.
    const char* do_anything() {
        struct Action {
            const char* name;
            void (RandomUser::*run)();
        };
        static constexpr std::array actions = {
            Action{"volts per division", &RandomUser::choose_volts},
            Action{"a channel's boxes", &RandomUser::press_channel_box},
            Action{"a channel's boxes", &RandomUser::press_channel_box},
            Action{"a channel's boxes", &RandomUser::press_channel_box},
            Action{"trigger lists", &RandomUser::choose_trigger},
            Action{"trigger lists", &RandomUser::choose_trigger},
            Action{"hysteresis", &RandomUser::slide_hysteresis},
            Action{"set to zero", &RandomUser::zero_level},
            Action{"time-out", &RandomUser::type_time_out},
            Action{"time base", &RandomUser::choose_time_base},
            Action{"delay", &RandomUser::type_delay},
            Action{"cursors", &RandomUser::choose_cursors},
            Action{"cursors", &RandomUser::choose_cursors},
            Action{"display boxes", &RandomUser::press_display_box},
            Action{"display boxes", &RandomUser::press_display_box},
            Action{"display boxes", &RandomUser::press_display_box},
            Action{"measurements", &RandomUser::choose_measurements},
            Action{"measurements", &RandomUser::choose_measurements},
            Action{"measurements", &RandomUser::choose_measurements},
            Action{"wheel", &RandomUser::drag_wheel},
            Action{"wheel", &RandomUser::drag_wheel},
            Action{"marker", &RandomUser::drag_marker},
            Action{"marker", &RandomUser::drag_marker},
            Action{"cursor line", &RandomUser::drag_cursor},
            Action{"stop and start", &RandomUser::stop_and_start},
        };
        const auto chosen =
            static_cast<std::size_t>(random(0, static_cast<int>(std::size(actions)) - 1));
        (this->*actions.at(chosen).run)();
        return actions.at(chosen).name;
    }

private:
    void act(const std::function<void()>& action) { scope_.act(action); }

    ChannelControls& any_channel() {
        return panel_.channel.at(static_cast<std::size_t>(random(0, 1)));
    }

    MeasurementControls& any_slot() {
        return panel_.measurement.at(static_cast<std::size_t>(random(0, 2)));
    }

    void any_entry(ListBox& list) {
        const int index = random(0, static_cast<int>(list.entries().size()) - 1);
        act([&] { list.set_index(index); });
    }

    void any_state(CheckBox& box, int percent) {
        const bool checked = chance(percent);
        act([&] { box.press(checked); });
    }

    void choose_volts() { any_entry(any_channel().vdiv); }

    void press_channel_box() {
        ChannelControls& controls = any_channel();
        switch (random(0, 3)) {
        case 0:
            any_state(controls.inviatr, 50);
            break;
        case 1:
            any_state(controls.invert, 50);
            break;
        case 2:
            any_state(controls.enable, 80);
            break;
        default:
            any_state(controls.slenps, 70);
            break;
        }
    }

    void choose_trigger() { any_entry(chance(50) ? panel_.trigsource : panel_.trigeredge); }

    void slide_hysteresis() {
        const int value = random(0, 255);
        act([&] { panel_.shyst.set_value(value); });
    }

    void zero_level() {
        act([this] { panel_.trzero.click(); });
    }

    void type_time_out() {
        constexpr std::array texts{"1000", "5", "70000", "20000", "300", "x", "-4", "2ms"};
        const char* const text = texts.at(static_cast<std::size_t>(random(0, 7)));
        act([&] { panel_.trtout.set_text(text); });
        act([&] { chance(50) ? panel_.trtout.enter() : panel_.trtout.leave(); });
    }

    void choose_time_base() {
        constexpr int slowest_block_mode = 8;
        const int first = chance(10) ? 0 : slowest_block_mode;
        const int index = random(first, 20);
        act([&] { panel_.seltimediv.set_index(index); });
    }

    void type_delay() {
        TextBox& box = any_channel().psofset;
        if (!box.enabled()) {
            return;
        }
        const std::string text =
            chance(20) ? (chance(50) ? "7ns" : "-3") : std::to_string(random(0, 65535));
        act([&] {
            box.focus();
            box.set_text(text);
            box.enter();
        });
    }

    void choose_cursors() {
        if (chance(50)) {
            any_entry(panel_.combocursorselect);
            return;
        }
        const int tab = random(1, 3);
        act([&] { panel_.tabstrip3.select(tab); });
    }

    void press_display_box() {
        switch (random(0, 3)) {
        case 0:
            any_state(panel_.average, 30);
            break;
        case 1:
            any_state(panel_.persist, 50);
            break;
        case 2:
            any_state(panel_.eyeon, 50);
            break;
        default:
            any_state(panel_.gridenable, 50);
            break;
        }
    }

    void choose_measurements() {
        switch (random(0, 2)) {
        case 0:
            any_state(panel_.check1, 80);
            break;
        case 1:
            any_entry(any_slot().selector);
            break;
        default:
            any_state(any_slot().annotate, 70);
            break;
        }
    }

    /// A drag of the wheel on any tab, with ticks in the middle of it.
    void drag_wheel() {
        ThumbWheel& wheel = panel_.slider1;
        int x = 0;
        const int tab = random(1, static_cast<int>(panel_.tabstrip2.tabs().size()));
        act([&] {
            panel_.tabstrip2.select(tab);
            wheel.mouse_down(0, 0);
        });
        for (int moves = random(1, 20); moves > 0; --moves) {
            x += random(-25, 25);
            act([&] { wheel.mouse_move(left_mouse_button, x, 0); });
            any_tick();
        }
        act([&] { wheel.mouse_up(); });
    }

    void drag_marker() {
        const int marker = random(0, 2);
        PlotMouse& mouse = scope_.plot_mouse();
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
        PlotMouse& mouse = scope_.plot_mouse();
        const CursorState& cursors = scope_.parts().cursor_state;
        const auto cursor = static_cast<std::size_t>(random(0, 1));
        const bool together = chance(30);
        bool held = false;
        act([&] {
            held = mouse.plot_MouseDown(cursors.hpos.at(cursor), cursors.vpos.at(cursor), together);
        });
        for (int moves = random(0, 5); held && moves > 0; --moves) {
            const int x = random(-50, 700);
            const int y = random(-50, 560);
            act([&] { mouse.plot_MouseMove(x, y); });
            any_tick();
        }
        act([&] { mouse.plot_MouseUp(); });
    }

    void stop_and_start() {
        act([this] { panel_.cmdstop.click(); });
        any_tick();
        any_entry(panel_.trigeredge);
        any_tick();
        act([this] { panel_.cmdstartsweep.click(); });
    }

    Scope& scope_;
    FrontPanel& panel_ = scope_.panel();
    std::mt19937& random_;
    std::function<void()> tick_;
};

} // namespace kv408
