#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "state/data_watch.h"
#include "state/trigger_state.h"

namespace kv408 {

/// What the timer's state machine and its requesters share.
struct AcquisitionState {
    /// The state word: "Idle" (does nothing), "idle", "startscope", "scope", "scopech1f",
    /// "scopech2f", "calibrationint", "changes", "changes1", "stoped".
    std::string scopestate;
    std::uint32_t steps = 0;  ///< ticks that have acted on the state word
    std::string laststate;    ///< the last sweep state executed, or "changes" after a range change
    bool acqrunning = false;  ///< acquisition is started
    bool stoprequest = false; ///< Stop was pressed
    bool pointmode = false;   ///< point-by-point passes instead of block sweeps
    std::array<bool, 2> ready = {}; ///< `ch1ready`, `ch2ready`: a sweep of the channel is complete
    /// `ready` was set before a change of the set-up cleared it: samples of the channel are held.
    std::array<bool, 2> held = {};
    /// The instrument saw no trigger before the set-up that is under way or was sent last.
    bool untriggered = false;
    /// A whole sweep of the channel has come since range or inversion were changed, since the last
    /// set-up, which each change of the record in use brings, and since a reply failed to come
    /// whole.
    std::array<bool, 2> fresh = {};
    DataWatch data; ///< whether data still come
    std::array<std::int32_t, 2> offset =
        {}; ///< `ch1offset`, `ch2offset`: time-base offsets, picoseconds
    /// The trigger last acknowledged, its level without "Input Via Trigger".
    TriggerSetting trigger;

    bool holdoff = false;          ///< trigger line shown, after the level was adjusted
    std::int32_t holdoff_time = 0; ///< remaining time of `holdoff`, milliseconds
    bool pending_refresh = false;  ///< the shown delay must follow the set one at the next redraw

    /// Clears the new-data flag of channel index `channel`: what it is taken with has changed.
    void await_new_data(std::size_t channel) {
        held.at(channel) = held.at(channel) || ready.at(channel);
        ready.at(channel) = false;
    }
};

} // namespace kv408
