#pragma once

#include "simulator/point_delay.h"
#include "simulator/sampler.h"

#include <chrono>
#include <vector>

namespace kv408::simulator {

/// Time of one conversion in a normal sweep and with "Speed opt.".
inline constexpr std::chrono::nanoseconds conversion_time = std::chrono::microseconds(20);
inline constexpr std::chrono::nanoseconds fast_conversion_time = std::chrono::microseconds(10);

/// Most points of one sweep.
inline constexpr std::uint16_t most_points = 650;

/// The reply to a sweep that got no trigger: the bytes of the word 6666.
inline constexpr std::array<Byte, 2> waiting_reply = {0x1A, 0x0A};

/// A reply that follows from sampling.
struct SampleReply {
    std::vector<Byte> bytes;           ///< codes, high byte first, or `waiting_reply`
    std::chrono::nanoseconds ready{0}; ///< when all bytes can be sent
    /// When each code can be sent, for a sweep that its triggers held up; it is sent as it comes.
    std::vector<std::chrono::nanoseconds> codes_ready = {};
};

/// What a start-sweep command asks for.
struct SweepRequest {
    std::size_t channel = 0; ///< 0 for CH1
    std::size_t points = 0;  ///< 0..`most_points`
    bool average = false;    ///< four conversions per point: half the noise in four times the time
    bool fast = false;       ///< "Speed opt.": half the time with twice the noise
};

/// Decodes the arguments of command 32: number of points, averaging, speed, channel.
[[nodiscard]] SweepRequest decode_sweep(const Command& command);

/// Takes samples as commands ask for them, each at a trigger of its own. A conversion begins at a
/// random moment of the first half of its turn, because the instrument does not run in step with
/// the signals; so a signal that is not locked to the trigger is caught at any phase.
class Sweeper {
public:
    /// Samples what `bench` carries, with `noise` as the source of all chance.
    Sweeper(const TestBench& bench, const Flash& flash, Noise& noise)
        : bench_(bench), noise_(noise), sampler_(bench, flash, noise) {}

    /// A whole sweep that starts at `start`. Its time is that of its conversions, or that of its
    /// triggers where these come more slowly; without triggers it ends after the trigger time-out.
    [[nodiscard]] SampleReply sweep(const SweepRequest& request, const Settings& settings,
                                    std::chrono::nanoseconds start);

    /// One sample, asked for at `start`: ready after the conversion or, if that is later, at the
    /// trigger; without triggers after the trigger time-out.
    [[nodiscard]] SampleReply point(const PointRequest& request, const Settings& settings,
                                    std::chrono::nanoseconds start);

private:
    [[nodiscard]] std::chrono::nanoseconds moment_in(std::chrono::nanoseconds turn);

    const TestBench& bench_;
    Noise& noise_;
    Sampler sampler_;
};

} // namespace kv408::simulator
