#pragma once

// Commands that press one control of the panel each.

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "panel/front_panel.h"
#include "remote/instrument.h"
#include "remote/setting_commands.h"

namespace kv408 {

/// The control of a panel that a command is about.
template <typename Kind>
using ControlOf = std::function<Kind&(FrontPanel&, const Call&)>;

/// The control `member` of the panel.
template <typename Kind>
[[nodiscard]] ControlOf<Kind> control(Kind FrontPanel::*member) {
    return [member](FrontPanel& panel, const Call&) -> Kind& { return panel.*member; };
}

/// The control `member` of the channel that the header names.
template <typename Kind>
[[nodiscard]] ControlOf<Kind> control(Kind ChannelControls::*member) {
    return [member](FrontPanel& panel, const Call& call) -> Kind& {
        return panel.channel.at(static_cast<std::size_t>(call.suffixes.front() - 1)).*member;
    };
}

/// The channel that the header names.
[[nodiscard]] inline Channel channel_of(const Call& call) {
    return both_channels.at(static_cast<std::size_t>(call.suffixes.front() - 1));
}

/// Throws `Refused` where nobody can operate `control` now.
void check_usable(const Control& control);

/// Makes presses of the panel's controls out of commands.
class PanelSettings {
public:
    explicit PanelSettings(Instrument& instrument) : instrument_(instrument) {}

    /// A button.
    [[nodiscard]] Command press(std::string header, Button FrontPanel::*button) const;

    /// A check box; nothing is pressed where it is as it is to be.
    [[nodiscard]] Command check(std::string header, const ControlOf<CheckBox>& box) const;

    /// A list, whose entries are called `choices`.
    [[nodiscard]] Command choice(std::string header, const ControlOf<ListBox>& list,
                                 std::span<const std::string_view> choices) const;

    /// A list of the numbers `steps`, entry by entry.
    [[nodiscard]] Command step(std::string header, const ControlOf<ListBox>& list,
                               std::vector<double> steps, Quantity quantity,
                               std::size_t preset) const;

    /// A slider.
    [[nodiscard]] Command slide(std::string header, const ControlOf<Slider>& slider,
                                const NumberRange& range) const;

    /// A text box into which a whole number is typed, one in `per_unit` parts of the base unit.
    [[nodiscard]] Command type(std::string header, const ControlOf<TextBox>& box,
                               const NumberRange& range, double per_unit,
                               std::function<double(const Parts&, const Call&)> get) const;

    /// A quantity that the adjust wheel turns.
    struct Turned {
        /// The tab of the wheel for it. Throws `Refused` where there is none.
        std::function<std::string(const Parts&, const Call&)> tab;
        std::function<NumberRange(const Parts&, const Call&)> range;
        /// The value of the wheel for a value of the quantity.
        std::function<double(const Parts&, const Call&, double)> wheel;
        std::function<double(const Parts&, const Call&)> get;
        std::string told; ///< what it takes, as the manual has it
    };
    [[nodiscard]] Command turn(std::string header, const Turned& quantity) const;

private:
    /// The control `of` names, as it is now.
    template <typename Kind>
    [[nodiscard]] const Kind& shown(const ControlOf<Kind>& of, const Call& call) const {
        return of(instrument_.scope().panel(), call);
    }

    Instrument& instrument_;
};

} // namespace kv408
