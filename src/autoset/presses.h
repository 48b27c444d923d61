#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "panel/front_panel.h"

namespace kv408 {

/// Presses of the panel's controls, as hands do them; what stands already is not pressed again.
class Presses {
public:
    explicit Presses(FrontPanel& panel) : panel_(panel) {}

    /// Chooses the entry `text` of `list`, which has one.
    void choose(ListBox& list, std::string_view text) const;

    /// Switches `box` on or off.
    void check(CheckBox& box, bool on) const;

    /// Turns the wheel to `value` on the tab with `key`; without that tab it does nothing.
    void turn(std::string_view key, std::int32_t value) const;

    /// Types `text` or `number` into `box` and leaves it; a box that cannot be used stays as it is.
    void type(TextBox& box, const std::string& text) const;
    void type(TextBox& box, std::int32_t number) const { type(box, std::to_string(number)); }

    /// Chooses the trigger source of `channel`, and its level and hysteresis.
    void trigger(Channel source, std::int32_t level_wheel, std::int32_t hysteresis) const;

private:
    FrontPanel& panel_;
};

} // namespace kv408
