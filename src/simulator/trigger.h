#pragma once

#include "simulator/noise.h"
#include "simulator/settings.h"
#include "simulator/waveform.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace kv408::simulator {

/// One trigger: the moment at which the trigger signal crossed the level.
struct TriggerEvent {
    const Source* generator = nullptr; ///< where the signal that triggered comes from
    /// Of that generator, as if its signal had neither jitter nor noise. Periods are counted from
    /// the last whole 1000 s of the clock, where all signals start anew, so that their number stays
    /// exact in a double.
    Phase phase;
    std::int64_t edge = 0;  ///< number of the edge that triggered, as `edge_at` counts
    double jitter_ps = 0.0; ///< delay of that edge by jitter
    double late_ps = 0.0;   ///< delay of the trigger by jitter and noise
};

/// Where a signal is crossed.
struct Crossing {
    double part = 0.5; ///< of the signal's height, 0..1 without ends
    bool rising = true;
};

/// The stream of triggers that the present bench and settings give.
class TriggerEvents {
public:
    /// `signal` comes from `generator` and alternates.
    TriggerEvents(const Source& generator, const Source& signal, const Crossing& crossing);

    /// The first event at or after `time`.
    [[nodiscard]] TriggerEvent first_after(std::chrono::nanoseconds time) const;

    /// The event after `event`.
    [[nodiscard]] TriggerEvent next(const TriggerEvent& event) const;

    /// When `event` happens, which lies in the same whole 1000 s of the clock as `near`; on the
    /// same clock as the time of `first_after`.
    [[nodiscard]] std::chrono::nanoseconds time_of(const TriggerEvent& event,
                                                   std::chrono::nanoseconds near) const;

    /// Lets jitter and noise of the signal make `event` early or late.
    void disturb(TriggerEvent& event, Noise& noise) const;

private:
    [[nodiscard]] TriggerEvent event_in(std::int64_t period) const;

    const Source* generator_;
    Source signal_;
    Crossing crossing_;
    Phase place_; ///< of the crossing, from the start of the period or bit that its edge belongs to
};

/// The triggers of `bench` under `settings`. None when the selected input carries no alternating
/// signal, when the signal does not reach the level after having been beyond the level by the
/// hysteresis on the other side, when crossings are farther apart than the time-out, or when the
/// bench's fault suppresses the trigger.
[[nodiscard]] std::optional<TriggerEvents> find_triggers(const TestBench& bench,
                                                         const TriggerSettings& settings);

/// The phase of `generator` at the moment of `event`, jitter and noise apart: exact for the one
/// that triggered, and for every other one as both started together.
[[nodiscard]] Phase phase_at(const Source& generator, const TriggerEvent& event);

} // namespace kv408::simulator
