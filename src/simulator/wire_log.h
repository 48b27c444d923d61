#pragma once

#include "simulator/faults.h"
#include "simulator/frame_reader.h"

#include <chrono>
#include <vector>

namespace kv408::simulator {

/// One operation of the bridge. Times are those of the simulation's clock.
struct WireOperation {
    Operation operation = Operation::get_num_devices;
    std::chrono::nanoseconds began{0};
    std::chrono::nanoseconds ended{0};
    /// What was passed in besides handle and data, in the order of the operation: index (and
    /// option), baud rate, read and write time-out, transmit and receive, bytes wanted.
    std::vector<std::uint32_t> arguments = {};
    std::vector<Byte> bytes = {}; ///< written, read, or the serial string without its zero
    std::uint32_t count = 0;      ///< count handed out: devices, bytes written, read, waiting
    BridgeStatus status = bridge_success;
};

/// One command that the instrument has accepted.
struct WireFrame {
    std::chrono::nanoseconds time{0}; ///< at which its last byte had arrived at the instrument
    Command command;                  ///< code and arguments
};

/// Everything that passes the bridge, in order, for tests. It grows without limit.
struct WireLog {
    std::vector<WireOperation> operations = {}; ///< every call, also those that fail
    std::vector<WireFrame> frames = {};         ///< every valid frame
};

} // namespace kv408::simulator
