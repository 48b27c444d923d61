#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "panel/surroundings.h"
#include "panel/trigger.h"
#include "panel/vertical.h"

namespace kv408 {

/// Keys of the adjust tabs.
namespace adjust_key {
inline constexpr std::string_view ch1 = "CH1";
inline constexpr std::string_view ch2 = "CH2";
inline constexpr std::string_view trigger = "TRIG";
inline constexpr std::string_view horizontal = "HPOS";
inline constexpr std::string_view cursor_1 = "C1";
inline constexpr std::string_view cursor_2 = "C2";
} // namespace adjust_key

/// The adjust wheel `Slider1` with the tabs that say what it turns, and the delay boxes.
class Adjust {
public:
    /// Connects the tabs, the wheel, the delay boxes, and the trigger source, each of which has its
    /// own level.
    Adjust(const Surroundings& around, Vertical& vertical, Trigger& trigger);

    /// Sets the wheel's range and step for the selected tab and the time base.
    void setadjuststep();

    /// A tab was chosen: the wheel starts where its quantity is, and a cursor's tab makes that
    /// cursor the active one. Choosing the tab that is selected already refreshes the wheel; a drag
    /// that is under way on it goes on.
    void TabStrip2_Click();

    /// Selects the tab with `key`, if there is one.
    void select_target(std::string_view key);

    /// The quantity of the selected tab follows the wheel, and the screen and the measurements with
    /// it. A quantity that the wheel stands at already stays as it is, also where it lies between
    /// two steps of the wheel.
    void sliderupdate();

    /// Turns the wheel to where the quantity of the selected tab is; for whoever has set one.
    void refresh_wheel();

    /// Puts the zero line of `channel` where the wheel value `value`, 0..1024, puts it.
    void move_channel(Channel channel, std::int32_t value);

    /// The wheel was dragged (scroll event), or its value was committed (change event).
    void Slider1_Scroll();
    void Slider1_Change();

    /// A channel's delay box has another text: it is marked while that is no
    /// delay.
    void psofset_Change(Channel channel);

    /// Enter in a channel's delay box. Does nothing on another tab.
    void psofset_Enter(Channel channel);

    /// A channel's delay box lost the keyboard focus: what was typed counts as entered. A text that
    /// is no delay stays marked, and the delay in use stays.
    void psofset_Leave(Channel channel);

    /// Takes the delay of a channel from `text`: the number that it begins with, held within
    /// 0..65535 ps, as its box then shows it.
    void restore_delay(Channel channel, std::string_view text);

    /// A channel's box "delay moved by the wheel" was clicked: on the delays' tab the wheel goes to
    /// the delay of a box that was checked, and to what it still moves otherwise.
    void slenps_Click(Channel channel);

    /// Shows a channel's delay read-out: empty for a delay box holding "0" and in point mode.
    void show_delay_label(Channel channel);

    /// Re-computes both delays in screen points for a new time base; what is shown counts as taken
    /// with them.
    void rescale_delays();

private:
    /// What the wheel turns on one tab.
    struct Target {
        std::string_view key;
        std::int32_t lowest;
        std::int32_t highest;
        std::int32_t step; ///< per pixel of drag; 0: by the time base
        std::int32_t (Adjust::*value)(std::size_t which) const; ///< where the wheel stands for it
        void (Adjust::*move)(std::size_t which, std::int32_t value);
        void (Adjust::*commit)(); ///< what follows when the wheel is let go
        std::size_t which;        ///< index of the channel or cursor
    };
    static const std::array<Target, 6> targets;

    /// The target on the selected tab; the first one in an empty strip.
    [[nodiscard]] const Target& selected() const;
    [[nodiscard]] std::int32_t value_of(const Target& target) const {
        return (this->*target.value)(target.which);
    }
    [[nodiscard]] std::int32_t position(std::size_t channel) const;
    [[nodiscard]] std::int32_t level(std::size_t which) const;
    [[nodiscard]] std::int32_t delays(std::size_t which) const;
    [[nodiscard]] std::int32_t cursor(std::size_t cursor) const;
    /// Where the wheel stands for the delays that it moves: at that of the first channel whose box
    /// is checked; where it is without one.
    [[nodiscard]] std::int32_t wheel_for_delays() const;
    void follow(std::int32_t value);
    void apply_delay(Channel channel);
    void move_position(std::size_t channel, std::int32_t value);
    void move_level(std::size_t which, std::int32_t value);
    void move_delays(std::size_t which, std::int32_t value);
    void move_cursor(std::size_t cursor, std::int32_t value);
    void commit_level();
    void commit_delays();
    void mark_new_data_needed();
    void activate_cursor(std::size_t cursor);
    [[nodiscard]] std::int32_t delay_points(std::int32_t delay) const;
    [[nodiscard]] std::int32_t delay_in_box(Channel channel) const;
    void take_typed_delay(Channel channel);

    Surroundings around_;
    Vertical& vertical_;
    Trigger& trigger_;
    std::int32_t hposwheel_ = 32767; ///< the wheel's value for the horizontal delay
    const Target* target_ = nullptr; ///< of the tab that the wheel turns for
    bool following_ = false;         ///< the wheel is set to where its quantity is already
};

} // namespace kv408
