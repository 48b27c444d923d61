#pragma once

#include "link/bridge.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

namespace kv408::simulator {

/// The operations of the bridge, in the order of its interface.
enum class Operation {
    get_num_devices,
    get_product_string,
    open,
    close,
    set_baud_rate,
    set_timeouts,
    flush_buffers,
    write,
    read,
    check_rx_queue
};

/// `times` of a fault and `PlannedFaults::lasting_operations`: without end.
inline constexpr int without_end = -1;

/// Counts down one occasion of a fault: `after` occasions go well, then `times` fail. True when
/// this one fails.
[[nodiscard]] inline bool strikes(int& after, int& times) {
    if (after > 0) {
        --after;
        return false;
    }
    if (times > 0) {
        --times;
        return true;
    }
    return times == without_end;
}

/// One kind of operation fails. The counts are counted down as the operations come.
struct OperationFault {
    BridgeStatus status = bridge_failed; ///< status given instead of doing the operation
    int after = 0;                       ///< operations of this kind that still go well, 0..
    int times = 1;                       ///< failures that follow, 1.., or `without_end`
    bool done = false; ///< the operation is done all the same; only its status is wrong
};

/// The replies to one command are damaged. The counts are counted down as the replies come.
struct ReplyFault {
    std::optional<std::size_t> length = {}; ///< bytes after which a reply ends; 0 loses it
    std::optional<Byte> replacement = {};   ///< stands in place of every byte
    Byte flipped_bits = 0;                  ///< bits that are inverted in every byte
    std::vector<Byte> before = {};          ///< sent just before a reply
    std::vector<Byte> behind = {};          ///< sent just behind a reply
    std::chrono::nanoseconds late{0};       ///< delay of a reply
    int after = 0;                          ///< replies that still go well, 0..
    int times = 1;                          ///< damaged replies that follow, 1.., or `without_end`
};

/// What becomes of the acknowledge byte.
enum class AcknowledgeFault {
    none,  ///< 6 is sent
    lost,  ///< nothing is sent
    wrong, ///< `Faults::wrong_acknowledge` is sent
};

/// What is broken. Plain values, to be changed at any time; each holds until it is changed.
struct Faults {
    /// The cable is out: no device is listed (status 0, count 0), every other operation fails and
    /// the open device is closed.
    bool unplugged = false;
    /// The instrument is off: its bridge lists and opens, but nothing answers, and the instrument
    /// starts with its power-up settings.
    bool no_power = false;
    AcknowledgeFault acknowledge = AcknowledgeFault::none; ///< fault of every acknowledge
    Byte wrong_acknowledge = 21;                           ///< byte sent by `wrong`
    int lose_every = 0;    ///< every n-th reply byte is lost; 1 loses all, 0 none
    Byte flipped_bits = 0; ///< bits that are inverted in every reply byte
    std::optional<std::size_t> block_bytes = {}; ///< bytes after which a block ends
    std::vector<Byte> extra_bytes = {};          ///< sent just before every reply
    bool no_trigger = false;                     ///< the trigger circuit sees nothing
    bool baud_rate_refused = false;              ///< setting the speed fails and changes nothing
    /// Device count that is reported instead of the real one, as when a device comes or goes
    /// between listing and opening.
    std::optional<std::uint32_t> reported_devices = {};
    std::map<Operation, OperationFault> operations = {}; ///< operations that fail
    std::map<Byte, ReplyFault> replies = {};             ///< damaged replies, by command code
};

/// Faults that set in later, counted in operations of the bridge.
struct PlannedFaults {
    int after_operations = 0; ///< operations that still see the present faults, 0..; counted down
    /// Operations that see `faults`, 1.. or `without_end`; then there are no faults. Counted down.
    int lasting_operations = without_end;
    Faults faults = {}; ///< what sets in
    bool begun = false; ///< set by the bridge when they have set in
};

} // namespace kv408::simulator
