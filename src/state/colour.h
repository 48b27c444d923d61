#pragma once

#include <cstdint>

#include "state/channel.h"

namespace kv408 {

/// A 24-bit colour, red in the low byte, as the settings file keeps it: 0x00BBGGRR.
struct Colour {
    std::uint32_t value = 0;

    friend constexpr bool operator==(const Colour&, const Colour&) = default;
};

/// The colour with the components `red`, `green` and `blue`, each 0..255.
[[nodiscard]] constexpr Colour rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return Colour{static_cast<std::uint32_t>(red) | static_cast<std::uint32_t>(green) << 8U |
                  static_cast<std::uint32_t>(blue) << 16U};
}

/// The red component, 0..255.
[[nodiscard]] constexpr std::uint8_t red_of(Colour colour) {
    return static_cast<std::uint8_t>(colour.value & 0xFFU);
}

/// The green component, 0..255.
[[nodiscard]] constexpr std::uint8_t green_of(Colour colour) {
    return static_cast<std::uint8_t>(colour.value >> 8U & 0xFFU);
}

/// The blue component, 0..255.
[[nodiscard]] constexpr std::uint8_t blue_of(Colour colour) {
    return static_cast<std::uint8_t>(colour.value >> 16U & 0xFFU);
}

/// The seven colours of the screen, with their factory values.
struct ColourTable {
    Colour ch1 = rgb(255, 255, 0);           ///< CH1 trace and texts
    Colour ch2 = rgb(128, 220, 255);         ///< CH2 trace and texts
    Colour background = rgb(0, 0, 0);        ///< plot background, transparent key of the traces
    Colour normal_text = rgb(255, 255, 255); ///< general labels, cursors, trigger-level line
    Colour grid = rgb(92, 92, 92);           ///< border, graticule dots and ticks
    Colour text_background = rgb(0, 0, 0);   ///< background of marker labels and read-outs
    Colour annotations = rgb(255, 128, 128); ///< annotation lines and dots

    /// The trace colour of `which`.
    [[nodiscard]] constexpr Colour channel(Channel which) const {
        return which == Channel::ch1 ? ch1 : ch2;
    }

    friend constexpr bool operator==(const ColourTable&, const ColourTable&) = default;
};

} // namespace kv408
