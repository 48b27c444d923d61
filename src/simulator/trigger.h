#pragma once

#include "simulator/settings.h"
#include "simulator/waveform.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace kv408::simulator {

/// One trigger: the moment at which the trigger source crossed the level.
struct TriggerEvent {
    const Source* source = nullptr; ///< the source that triggered
    /// Of that source. Periods are counted from the last whole 1000 s of the clock, where all
    /// signals start anew, so that their number stays exact in a double.
    Phase phase;
};

/// The stream of triggers that the present bench and settings give.
class TriggerEvents {
public:
    /// `source` alternates and crosses the level at `fraction` of each period, 0..1 without 1.
    TriggerEvents(const Source& source, double fraction) : source_(&source), fraction_(fraction) {}

    /// The first event at or after `time` and not before period `first_period` of the source.
    [[nodiscard]] TriggerEvent first_after(std::chrono::nanoseconds time,
                                           std::int64_t first_period = 0) const;

    /// When `event` happens, on the clock that `time` of `first_after` is of.
    [[nodiscard]] std::chrono::nanoseconds time_of(const TriggerEvent& event,
                                                   std::chrono::nanoseconds near) const;

private:
    const Source* source_;
    double fraction_;
};

/// The triggers of `bench` under `settings`. None when the selected input carries no alternating
/// signal, when the signal does not reach the level after having been beyond the level by the
/// hysteresis on the other side, when a period is longer than the time-out, or when the bench's
/// fault suppresses the trigger.
[[nodiscard]] std::optional<TriggerEvents> find_triggers(const Bench& bench,
                                                         const TriggerSettings& settings);

/// The phase of `source` at the moment of `event`: exact for the source that triggered, and for
/// every other one as both started together.
[[nodiscard]] Phase phase_at(const Source& source, const TriggerEvent& event);

} // namespace kv408::simulator
