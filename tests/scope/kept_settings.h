#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "display/settings_dialog.h"
#include "scope/program.h"
#include "scope/settings_shown.h"

namespace kv408 {

/// Someone who sets every setting by hand to a random value, decided by a seed.
class RandomSetter {
public:
    RandomSetter(Program& program, unsigned seed) : program_(program), random_(seed) {}

    /// Sets all of them.
    void set_all() {
        set_lists_and_boxes();
        set_by_wheel();
        set_delays();
        set_annotation();
        set_in_dialog();
        act([this] {
            TabStrip& cursors = panel_.tabstrip3;
            cursors.select(random(1, static_cast<int>(cursors.tabs().size())));
            TabStrip& targets = panel_.tabstrip2;
            targets.select(random(1, static_cast<int>(targets.tabs().size())));
        });
    }

private:
    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }

    void act(const std::function<void()>& action) { program_.scope.act(action); }

    void any_entry(ListBox& list) {
        act([&] { list.set_index(random(0, static_cast<int>(list.entries().size()) - 1)); });
    }

    void set_lists_and_boxes() {
        for (Control* const control : panel_.all) {
            if (control->about().line == 0) {
                continue;
            }
            if (auto* const list = dynamic_cast<ListBox*>(control)) {
                any_entry(*list);
            } else if (auto* const box = dynamic_cast<CheckBox*>(control)) {
                act([&] { box->set_checked(random(0, 1) == 1); });
            }
        }
    }

    /// Turns the wheel on every tab that it has with voltage cursors, with time cursors, and with
    /// both trigger sources.
    void set_by_wheel() {
        for (int round = 0; round < 2; ++round) {
            act([&] { panel_.tabstrip3.select(round + 1); });
            act([&] { panel_.trigsource.set_index(round); });
            act([&] { panel_.shyst.set_value(random(0, 255)); });
            for (int tab = 1; tab <= static_cast<int>(panel_.tabstrip2.tabs().size()); ++tab) {
                act([&] {
                    panel_.tabstrip2.select(tab);
                    panel_.slider1.turn_to(random(panel_.slider1.Min(), panel_.slider1.Max()));
                });
            }
        }
        any_entry(panel_.trigsource);
    }

    void set_delays() {
        for (ChannelControls& channel : panel_.channel) {
            if (!channel.psofset.enabled() || random(0, 2) == 0) {
                continue;
            }
            act([&] {
                channel.psofset.focus();
                channel.psofset.set_text(std::to_string(random(0, 65535)));
            });
            if (random(0, 3) > 0) {
                act([&] { channel.psofset.enter(); });
            }
            act([&] { channel.psofset.leave(); });
        }
    }

    void set_annotation() {
        const auto slot = static_cast<std::size_t>(random(0, 3));
        if (slot < panel_.measurement.size()) {
            act([&] { panel_.measurement[slot].annotate.press(true); });
        }
    }

    /// Colours, persistence depth and the options of snapshots, in the settings dialog.
    void set_in_dialog() {
        act([this] {
            panel_.mnusettings.click();
            SettingsControls& dialog = program_.scope.settings_dialog().controls();
            for (OptionButton& item : dialog.optcolor) {
                item.choose();
                for (Slider& component : dialog.slrgb) {
                    component.set_value(random(0, 255));
                }
            }
            dialog.persist.set_value(random(1, 9));
            std::string folder = "/pictures/";
            folder += std::to_string(random(0, 99));
            dialog.txtsnapshotpath.set_text(folder);
            dialog.chksnapshotdialog.set_checked(random(0, 1) == 1);
            dialog.chksnapshotinvert.set_checked(random(0, 1) == 1);
            dialog.cmdok.click();
        });
    }

    Program& program_;
    FrontPanel& panel_ = program_.scope.panel();
    std::mt19937 random_;
};

/// What the panel of `program` shows of the settings, and what its parts work with.
inline std::vector<std::string> settings_shown(const Program& program) {
    return settings_shown(program.scope.parts());
}

/// The frames of the next set-up from a fresh start of the sweep on, up to its first sweep or
/// point.
inline std::vector<std::vector<int>> next_set_up(Program& program) {
    FrontPanel& panel = program.scope.panel();
    program.scope.act([&] { panel.cmdstop.click(); });
    program.ticks(2);
    const std::size_t first = program.log.frames.size();
    program.scope.act([&] { panel.cmdstartsweep.click(); });
    program.ticks(2);
    auto frames = frames_of(program, first);
    constexpr std::size_t frames_of_a_set_up = 6;
    frames.resize(std::min(frames.size(), frames_of_a_set_up));
    return frames;
}

} // namespace kv408
