#include "autoset/presses.h"

#include <algorithm>

#include "panel/adjust.h"

namespace kv408 {

void Presses::choose(ListBox& list, std::string_view text) const {
    const auto& entries = list.entries();
    const auto found = std::find(entries.begin(), entries.end(), text);
    if (found != entries.end() && list.text() != text) {
        list.set_index(static_cast<int>(found - entries.begin()));
    }
}

void Presses::check(CheckBox& box, bool on) const {
    if (box.checked() != on) {
        box.press(on);
    }
}

void Presses::turn(std::string_view key, std::int32_t value) const {
    int position = 0;
    if (!hasnotab(panel_.tabstrip2, key, position)) {
        panel_.tabstrip2.select(position);
        panel_.slider1.turn_to(value);
    }
}

void Presses::type(TextBox& box, const std::string& text) const {
    if (box.enabled() && box.text() != text) {
        box.focus();
        box.set_text(text);
        box.enter();
        box.leave();
    }
}

void Presses::trigger(Channel source, std::int32_t level_wheel, std::int32_t hysteresis) const {
    choose(panel_.trigsource, source == ch1 ? "TRIG1" : "TRIG2");
    turn(adjust_key::trigger, level_wheel);
    if (panel_.shyst.value() != hysteresis) {
        panel_.shyst.set_value(hysteresis);
    }
}

} // namespace kv408
