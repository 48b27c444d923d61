#pragma once

#include <array>
#include <span>
#include <string_view>

namespace kv408 {

/// The channels.
inline constexpr std::array<std::string_view, 2> channel_choices{"CHANnel1", "CHANnel2"};

/// What a measurement list may be set to, entry by entry.
inline constexpr std::array<std::string_view, 15> slot_choices{
    "NONE",  "VMAX",      "VMIN",   "VPP",      "VTOP",     "VBASe",  "VAMPlitude", "VRMS",
    "VMEan", "FREQuency", "PERiod", "RISetime", "FALLtime", "PWIDth", "NWIDth"};

/// The fourteen measurements, in the order of `measurement_rows`.
inline constexpr auto measurement_choices = std::span(slot_choices).subspan<1>();

} // namespace kv408
