#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "state/data_watch.h"
#include "state/trigger_state.h"

namespace kv408 {

/// The state words: what the next tick of the timer does.
namespace state_word {
inline constexpr std::string_view nothing = "Idle";      ///< nothing, ahead of start-up
inline constexpr std::string_view begin = "idle";        ///< presses Start
inline constexpr std::string_view set_up = "startscope"; ///< uploads the set-up
inline constexpr std::string_view pass = "scope";        ///< a point-by-point pass
/// Looks for the block of a channel, by channel.
inline constexpr std::array<std::string_view, 2> block = {"scopech1f", "scopech2f"};
inline constexpr std::string_view linearity = "calibrationint"; ///< a step of the linearity run
/// Leads to `set_up`: something was changed that the instrument must be told.
inline constexpr std::string_view changes = "changes";
inline constexpr std::string_view changes1 = "changes1";
inline constexpr std::string_view stopped = "stoped"; ///< nothing, after Stop

/// True for the words with which data are fetched.
[[nodiscard]] constexpr bool sweeps(std::string_view word) {
    return word == pass || word == block[0] || word == block[1];
}
} // namespace state_word

/// What the acquisition is doing, as the status box says it.
enum class Activity {
    none, ///< nothing has been said yet
    idle,
    stopped,
    set_up,
    running,
    getting_data,
    waiting_for_trigger,
    calibrating,
};

/// What the timer's state machine and its requesters share.
struct AcquisitionState {
    std::string scopestate; ///< the state word, one of `state_word`
    Activity activity = Activity::none;
    std::uint32_t steps = 0;  ///< ticks that have acted on the state word
    std::string laststate;    ///< the last sweep state executed, or "changes" after a range change
    bool acqrunning = false;  ///< acquisition is started
    bool stoprequest = false; ///< Stop was pressed
    bool pointmode = false;   ///< point-by-point passes instead of block sweeps
    /// `ch1ready`, `ch2ready`: the channel's samples may be drawn and marked. Set by each sweep of
    /// it, cleared by a change of what the next one is taken with.
    std::array<bool, 2> ready = {};
    /// `ready` was set when such a change cleared it: there are samples from before the change.
    std::array<bool, 2> held = {};
    /// The instrument saw no trigger before the set-up that is under way or was sent last.
    bool untriggered = false;
    /// What calibration asks, which `ready` does not say: the channel's last sweep is whole and was
    /// taken as everything is set now. A whole sweep has come since range or inversion were
    /// changed, since the last set-up, which each change of the calibration record brings, and
    /// since a reply failed to come whole.
    std::array<bool, 2> taken_as_set = {};
    DataWatch data; ///< whether data still come
    std::array<std::int32_t, 2> offset =
        {}; ///< `ch1offset`, `ch2offset`: time-base offsets, picoseconds
    /// The trigger last acknowledged, its level without "Input Via Trigger".
    TriggerSetting trigger;

    bool holdoff = false;          ///< trigger line shown, after the level was adjusted
    std::int32_t holdoff_time = 0; ///< remaining time of `holdoff`, milliseconds
    bool pending_refresh = false;  ///< the shown delay must follow the set one at the next redraw

    /// Whether no trace is drawn: the instrument sees no trigger. A set-up that is sent then brings
    /// no trace back; the data that come with it, or Stop, do.
    [[nodiscard]] bool traces_withheld() const {
        return activity == Activity::waiting_for_trigger ||
               (activity == Activity::set_up && untriggered);
    }

    /// Clears the new-data flag of `channel`: what it is taken with has changed.
    void await_new_data(Channel channel) {
        held.at(channel) = held.at(channel) || ready.at(channel);
        ready.at(channel) = false;
    }
};

} // namespace kv408
