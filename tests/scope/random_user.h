#pragma once

#include <array>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <variant>

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
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"a control", &RandomUser::operate_control},
            Action{"wheel", &RandomUser::drag_wheel},
            Action{"marker", &RandomUser::drag_marker},
            Action{"cursor line", &RandomUser::drag_cursor},
            Action{"stop and start", &RandomUser::stop_and_start},
        };
        const auto chosen =
            static_cast<std::size_t>(random(0, static_cast<int>(std::size(actions)) - 1));
        done_ = actions.at(chosen).name;
        (this->*actions.at(chosen).run)();
        return done_.c_str();
    }

private:
    void act(const std::function<void()>& action) { scope_.act(action); }

    void any_entry(ListBox& list) {
        const int last = static_cast<int>(list.entries().size()) - 1;
        // Point-by-point passes take long: most of the time it is a block.
        constexpr int slowest_in_blocks = 8;
        const int first = &list == &panel_.seltimediv && !chance(10) ? slowest_in_blocks : 0;
        act([&] { list.set_index(random(first, last)); });
    }

    void any_state(CheckBox& box) {
        const bool seldom_off = &box == &panel_.check1 || &box == &panel_.channel[0].enable ||
                                &box == &panel_.channel[1].enable;
        act([&] { box.press(chance(seldom_off ? 80 : 50)); });
    }

    void any_text(TextBox& box) {
        constexpr std::array texts{"1000", "5", "70000", "20000", "300", "x", "-4", "2ms", "7ns"};
        const std::string text = chance(50) ? std::to_string(random(0, 65535))
                                            : texts.at(static_cast<std::size_t>(random(0, 8)));
        act([&] {
            box.focus();
            box.set_text(text);
        });
        if (chance(50)) {
            act([&] { box.enter(); });
        }
        act([&] { box.leave(); });
    }

    /// What there is to do to a control of each kind.
    void operate(std::monostate /*kind*/) {}
    void operate(Label* /*label*/) {}
    void operate(ThumbWheel* /*wheel*/) { drag_wheel(); }
    void operate(Button* button) {
        act([&] { button->click(); });
    }
    void operate(OptionButton* option) {
        act([&] { option->choose(); });
    }
    void operate(CheckBox* box) { any_state(*box); }
    void operate(ListBox* list) { any_entry(*list); }
    void operate(TextBox* box) { any_text(*box); }
    void operate(Slider* slider) {
        act([&] { slider->set_value(random(slider->minimum(), slider->maximum())); });
    }
    void operate(TabStrip* tabs) {
        act([&] { tabs->select(random(1, static_cast<int>(tabs->tabs().size()))); });
    }

    /// Does something to a control of the panel that can be operated.
    void operate_control() {
        const ControlList& all = panel_.all;
        const auto usable = [this](const Control& control) {
            // A stop without a start would leave nothing going on.
            return control.about().outside == Outside::set && control.enabled() &&
                   control.visible() && &control != &panel_.cmdstop;
        };
        Control* control = nullptr;
        do {
            control = all.at(static_cast<std::size_t>(random(0, static_cast<int>(all.size()) - 1)));
        } while (!usable(*control));
        done_ = control->name();
        std::visit([this](auto kind) { operate(kind); }, control->kind());
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
            marker == 2 ? mouse.trigertext_MouseDown(6)
                        : mouse.chtext_MouseDown(marker == 0 ? ch1 : ch2, 6);
        });
        for (int moves = random(1, 10); moves > 0; --moves) {
            const int y = 6 + random(-60, 60);
            act([&] {
                marker == 2 ? mouse.trigertext_MouseMove(y)
                            : mouse.chtext_MouseMove(marker == 0 ? ch1 : ch2, y);
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
    std::string done_; ///< what is being done
};

} // namespace kv408
