#pragma once

#include <array>
#include <cstdint>

#include "state/channel.h"

namespace kv408 {

/// What the cursors show, as `cursormode` numbers it.
namespace cursor_mode {
inline constexpr std::int16_t none = 0;
inline constexpr std::int16_t voltage_1 = 1;    ///< voltage cursors, cursor 1 active
inline constexpr std::int16_t voltage_2 = 2;    ///< voltage cursors, cursor 2 active
inline constexpr std::int16_t time_1 = 3;       ///< time cursors, cursor 1 active
inline constexpr std::int16_t time_2 = 4;       ///< time cursors, cursor 2 active
inline constexpr std::int16_t voltage_both = 5; ///< voltage cursors moved together
inline constexpr std::int16_t time_both = 6;    ///< time cursors moved together

/// True for the modes that show the two horizontal lines.
[[nodiscard]] constexpr bool is_voltage(std::int16_t mode) {
    return mode == voltage_1 || mode == voltage_2 || mode == voltage_both;
}

/// True for the modes that show the two vertical lines.
[[nodiscard]] constexpr bool is_time(std::int16_t mode) {
    return mode == time_1 || mode == time_2 || mode == time_both;
}
} // namespace cursor_mode

/// The two measuring cursors. Arrays hold cursor 1 at index 0 and cursor 2 at index 1.
struct CursorState {
    std::int16_t cursormode = cursor_mode::none;
    Channel channel = ch1; ///< channel that the voltage cursors measure
    std::array<std::int16_t, 2> vpos = {192,
                                        320}; ///< `intcr1vpos`, `intcr2vpos`: plot rows, 0..512
    std::array<std::int16_t, 2> hpos = {192,
                                        448}; ///< `intcr1hpos`, `intcr2hpos`: plot columns, 0..640
};

} // namespace kv408
