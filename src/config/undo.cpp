#include "config/undo.h"

#include <utility>
#include <vector>

namespace kv408 {
namespace {

/// The effects of releasing a mouse button come at most this much later.
constexpr std::chrono::milliseconds after_release{100};

} // namespace

Undo::Undo(FrontPanel& panel, SettingsFile& settings, const Clock& clock)
    : panel_(panel), settings_(settings), clock_(clock),
      steps_([&panel, &settings](const auto& changed) {
          return words_of(panel, settings.rows(), changed);
      }) {
    controls_.mnuundo.on_click([this] {
        if (steps_.place() > 0) {
            go(steps_.place() - 1);
        }
    });
    controls_.mnuredo.on_click([this] { go(steps_.place() + 1); });
    controls_.lststeps.on_click([this] {
        if (!showing_ && controls_.lststeps.index() >= 0) {
            go(static_cast<std::size_t>(controls_.lststeps.index()));
        }
    });
    show();
}

bool Undo::note() {
    const std::string name = std::exchange(name_, {});
    if (!settings_.keeping()) {
        return false;
    }
    PanelSetUp now = set_up_of(panel_, settings_.noted_bytes());
    if (!steps_.begun()) {
        steps_.begin(std::move(now));
    } else if (now != steps_.present()) {
        steps_.note(now, moment(), name);
    } else {
        return false;
    }
    show();
    return true;
}

void Undo::press_begins() {
    ++press_;
    held_ = true;
}

void Undo::press_ends() {
    held_ = false;
    released_ = clock_.now();
}

SetUpSteps::Moment Undo::moment() const {
    const std::chrono::nanoseconds now = clock_.now();
    const bool pressed = held_ || (press_ > 0 && now - released_ <= after_release);
    return {.time = now, .press = pressed ? press_ : 0};
}

void Undo::go(std::size_t place) {
    if (!steps_.begun() || place > steps_.count() || place == steps_.place() ||
        settings_.is_loading()) {
        return;
    }
    settings_.put_back(steps_.go(place));
    steps_.put_right(set_up_of(panel_, settings_.confirmed_bytes()));
    show();
}

void Undo::set_locked(bool locked) {
    locked_ = locked;
    show();
}

void Undo::show() {
    controls_.mnuundo.set_enabled(!locked_ && steps_.place() > 0);
    controls_.mnuredo.set_enabled(!locked_ && steps_.place() < steps_.count());
    controls_.lststeps.set_enabled(!locked_);
    std::vector<std::string> entries;
    if (steps_.begun()) {
        entries.emplace_back("The beginning");
    }
    for (std::size_t step = 0; step < steps_.count(); ++step) {
        entries.push_back(steps_.words(step));
    }
    showing_ = true;
    controls_.lststeps.set_entries(std::move(entries));
    if (steps_.begun()) {
        controls_.lststeps.set_index(static_cast<int>(steps_.place()));
    }
    showing_ = false;
}

} // namespace kv408
