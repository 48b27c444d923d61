#pragma once

#include "simulator/flash.h"
#include "simulator/noise.h"
#include "simulator/settings.h"
#include "simulator/trigger.h"

#include <array>
#include <cstdint>

namespace kv408::simulator {

/// Codes per millivolt in each gain range, index `low_range` or `high_range`.
inline constexpr std::array<double, 2> codes_per_mv = {2.0, 6.0};

/// Conversions that "Filter Avg." takes the mean of.
inline constexpr int averaged_conversions = 4;

/// The sampling gate and converter of both channels: turns the signal at a delay after a trigger
/// into the code that the instrument sends. The calibration record corrects its errors:
/// code = 2048 + error offset + record offset - 2048 + millivolts * codes per millivolt *
/// error gain * record gain / 10000, and delay = nominal delay * error scale * record scale /
/// 10000.
class Sampler {
public:
    /// Samples what `bench` carries, corrected with the record in `flash`; `noise` is drawn from.
    Sampler(const TestBench& bench, const Flash& flash, Noise& noise)
        : bench_(bench), flash_(flash), noise_(noise) {}

    /// What stays the same for every sample of a sweep.
    struct Channel {
        InputSignal input;         ///< what is sampled
        double codes_per_mv = 0.0; ///< with all gain errors and corrections
        double zero_code = 2048.0; ///< with all offset errors and corrections
        double delay_scale = 1.0;  ///< actual over nominal delay
        double noise_codes = 0.0;  ///< of one conversion, rms
    };

    /// Prepares sampling of `channel` (0 for CH1); `fast` conversions have twice the noise.
    [[nodiscard]] Channel prepare(std::size_t channel, const Settings& settings, bool fast) const;

    /// One conversion at the nominal delay `delay_ps` after `event`: 0..4095.
    [[nodiscard]] std::int32_t convert(const Channel& channel, const TriggerEvent& event,
                                       double delay_ps);

private:
    /// The phase of the signal that is sampled `picoseconds` after `event`.
    [[nodiscard]] Phase sampled_phase(const InputSignal& input, const TriggerEvent& event,
                                      double picoseconds);

    const TestBench& bench_;
    const Flash& flash_;
    Noise& noise_;
};

} // namespace kv408::simulator
