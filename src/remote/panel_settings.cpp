#include "remote/panel_settings.h"

#include <algorithm>
#include <utility>

#include "remote/replies.h"
#include "state/rounding.h"

namespace kv408 {

void check_usable(const Control& control) {
    if (!control.enabled()) {
        throw Refused{ScpiError::settings_conflict, "It cannot be operated now"};
    }
}

Command PanelSettings::press(std::string header, Button FrontPanel::*button) const {
    return {std::move(header), [this_instrument = &instrument_, button](const Call& call) {
                this_instrument->act(call.client,
                                     [button](Scope& scope) { (scope.panel().*button).click(); });
            }};
}

Command PanelSettings::check(std::string header, const ControlOf<CheckBox>& box) const {
    Instrument& instrument = instrument_;
    return boolean_setting(
        std::move(header),
        [&instrument, box](const Call& call, bool on) {
            instrument.act(call.client, [&](Scope& scope) {
                CheckBox& pressed = box(scope.panel(), call);
                check_usable(pressed);
                if (pressed.checked() != on) {
                    pressed.press(on);
                }
            });
        },
        [settings = *this, box](const Call& call) { return settings.shown(box, call).checked(); });
}

Command PanelSettings::choice(std::string header, const ControlOf<ListBox>& list,
                              std::span<const std::string_view> choices) const {
    Instrument& instrument = instrument_;
    return choice_setting(
        std::move(header), choices,
        [&instrument, list](const Call& call, std::size_t index) {
            instrument.act(call.client, [&](Scope& scope) {
                list(scope.panel(), call).set_index(static_cast<int>(index));
            });
        },
        [settings = *this, list](const Call& call) {
            return static_cast<std::size_t>(std::max(settings.shown(list, call).index(), 0));
        });
}

Command PanelSettings::step(std::string header, const ControlOf<ListBox>& list,
                            std::vector<double> steps, Quantity quantity,
                            std::size_t preset) const {
    Instrument& instrument = instrument_;
    return step_setting(std::move(header),
                        {.steps = std::move(steps),
                         .quantity = quantity,
                         .preset = preset,
                         .set =
                             [&instrument, list](const Call& call, std::size_t index) {
                                 instrument.act(call.client, [&](Scope& scope) {
                                     list(scope.panel(), call).set_index(static_cast<int>(index));
                                 });
                             },
                         .get =
                             [settings = *this, list](const Call& call) {
                                 return static_cast<std::size_t>(
                                     std::max(settings.shown(list, call).index(), 0));
                             }});
}

Command PanelSettings::slide(std::string header, const ControlOf<Slider>& slider,
                             const NumberRange& range) const {
    NumberSetting setting{range, {}, {}};
    setting.set = [&instrument = instrument_, slider](const Call& call, double value) {
        instrument.act(call.client, [&](Scope& scope) {
            slider(scope.panel(), call).set_value(round_to_int32(value));
        });
    };
    setting.get = [settings = *this, slider](const Call& call) {
        return static_cast<double>(settings.shown(slider, call).value());
    };
    return whole_setting(std::move(header), setting);
}

Command PanelSettings::type(std::string header, const ControlOf<TextBox>& box,
                            const NumberRange& range, double per_unit,
                            std::function<double(const Parts&, const Call&)> get) const {
    NumberSetting setting{range, {}, {}};
    setting.set = [&instrument = instrument_, box, per_unit](const Call& call, double value) {
        instrument.act(call.client, [&](Scope& scope) {
            TextBox& typed = box(scope.panel(), call);
            check_usable(typed);
            typed.focus();
            typed.set_text(std::to_string(round_to_int32(value * per_unit)));
            typed.enter();
            typed.leave();
        });
    };
    setting.get = [&instrument = instrument_, get = std::move(get)](const Call& call) {
        return get(instrument.parts(), call);
    };
    const bool whole =
        range.quantity == Quantity::number || range.quantity == Quantity::microseconds;
    return whole ? whole_setting(std::move(header), setting)
                 : real_setting(std::move(header), setting);
}

Command PanelSettings::turn(std::string header, const Turned& quantity) const {
    Instrument& instrument = instrument_;
    NumberSetting setting{{}, {}, {}};
    setting.told = quantity.told;
    setting.range_now = [&instrument, quantity](const Call& call) {
        return quantity.range(instrument.parts(), call);
    };
    setting.set = [&instrument, quantity](const Call& call, double value) {
        instrument.act(call.client, [&](Scope& scope) {
            const Parts& parts = scope.parts();
            const std::string tab = quantity.tab(parts, call);
            const std::int32_t wheel = round_to_int32(quantity.wheel(parts, call, value));
            int position = 0;
            if (hasnotab(scope.panel().tabstrip2, tab, position)) {
                throw Refused{ScpiError::settings_conflict};
            }
            scope.panel().tabstrip2.select(position);
            scope.panel().slider1.turn_to(wheel);
        });
    };
    setting.get = [&instrument, quantity](const Call& call) {
        return quantity.get(instrument.parts(), call);
    };
    return real_setting(std::move(header), setting);
}

} // namespace kv408
