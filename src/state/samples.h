#pragma once

#include <array>
#include <cstdint>

namespace kv408 {

/// Points that a block sweep fills and that the sweep command asks for.
inline constexpr std::int32_t npoints = 650;

/// The code that stands for 0 V on the 12-bit scale of the instrument.
inline constexpr std::int32_t zero_volt_code = 2048;

/// One channel's samples, written by the sweep procedures, index 1 the first point on screen.
struct SampleBuffer {
    /// `ch1raw`/`ch2raw`: codes after offset and inversion, `zero_volt_code` is 0 V.
    std::array<std::uint16_t, 7501> raw = {};
    /// `ch1mv`/`ch2mv`: input value in millivolts.
    std::array<double, npoints + 1> mv = {};
};

/// Both channels' samples.
using Samples = std::array<SampleBuffer, 2>;

} // namespace kv408
