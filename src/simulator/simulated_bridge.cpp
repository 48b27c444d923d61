#include "simulator/simulated_bridge.h"

#include <algorithm>
#include <utility>

namespace kv408::simulator {

using std::chrono::nanoseconds;

void SimulatedBridge::notice_faults() {
    if (bench_.faults.unplugged) {
        open_ = false;
    }
    instrument_.run_until(clock_.now());
}

template <typename Action>
BridgeStatus SimulatedBridge::perform(Operation operation, std::vector<Dword> arguments,
                                      Action action) {
    WireOperation record;
    record.operation = operation;
    record.arguments = std::move(arguments);
    record.began = clock_.now();
    advance_plan();
    notice_faults();
    const auto fault = fault_of(operation);
    if (!fault || fault->done) {
        record.status = action(record);
    }
    if (fault) {
        record.status = fault->status;
    }
    record.ended = clock_.now();
    const BridgeStatus status = record.status;
    if (log_ != nullptr) {
        log_->operations.push_back(std::move(record));
    }
    return status;
}

BridgeStatus SimulatedBridge::SI_GetNumDevices(Dword& count) {
    count = 0;
    return perform(Operation::get_num_devices, {}, [&](WireOperation& record) {
        const std::size_t attached = bench_.faults.unplugged ? 0 : bench_.devices.size();
        count = bench_.faults.reported_devices.value_or(static_cast<Dword>(attached));
        record.count = count;
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_GetProductString(Dword index,
                                                  std::span<Byte, product_string_size> text,
                                                  Dword option) {
    return perform(Operation::get_product_string, {index, option}, [&](WireOperation& record) {
        if (index >= bench_.devices.size() || option != si_return_serial_number) {
            return si_failed;
        }
        const std::string& serial = bench_.devices[index].serial;
        const std::size_t length = std::min(serial.size(), text.size() - 1);
        std::transform(serial.begin(), serial.begin() + static_cast<std::ptrdiff_t>(length),
                       text.begin(), [](char character) { return static_cast<Byte>(character); });
        text[length] = 0;
        record.bytes.assign(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_Open(Dword index, Handle& handle) {
    return perform(Operation::open, {index}, [&](WireOperation& record) {
        if (open_ || index >= bench_.devices.size() || !bench_.devices[index].opens) {
            return si_failed;
        }
        open_ = true;
        open_index_ = index;
        baud_rate_ = first_baud_rate;
        // Made before the old one goes, so that its address is another one.
        token_ = std::make_unique<char>();
        handle = token_.get();
        // What came while nobody listened is lost.
        instrument_.line().drop_arrived(record.began);
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_Close(Handle handle) {
    return perform(Operation::close, {}, [&](WireOperation&) {
        if (!is_open(handle)) {
            return si_failed;
        }
        open_ = false;
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_SetBaudRate(Handle handle, Dword baud_rate) {
    return perform(Operation::set_baud_rate, {baud_rate}, [&](WireOperation&) {
        if (!is_open(handle) || baud_rate == 0 || bench_.faults.baud_rate_refused) {
            return si_failed;
        }
        baud_rate_ = baud_rate;
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_SetTimeouts(Dword read_ms, Dword write_ms) {
    return perform(Operation::set_timeouts, {read_ms, write_ms}, [&](WireOperation&) {
        // The line always takes what is written, so the write time-out never strikes.
        read_time_out_ = std::chrono::milliseconds(read_ms);
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) {
    return perform(Operation::flush_buffers, {transmit, receive}, [&](WireOperation& record) {
        if (!is_open(handle)) {
            return si_failed;
        }
        // Writing waits for the wire, so the transmit queue is empty between operations.
        if (receive != 0) {
            instrument_.line().drop_arrived(record.began);
        }
        return si_success;
    });
}

BridgeStatus SimulatedBridge::SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) {
    written = 0;
    return perform(Operation::write, {static_cast<Dword>(bytes.size())},
                   [&](WireOperation& record) {
                       if (!is_open(handle)) {
                           return si_failed;
                       }
                       clock_.sleep(wire_time(bytes.size(), baud_rate_));
                       for (std::size_t index = 0; index < bytes.size(); ++index) {
                           deliver(bytes[index], record.began + wire_time(index + 1, baud_rate_));
                       }
                       written = static_cast<Dword>(bytes.size());
                       record.count = written;
                       record.bytes.assign(bytes.begin(), bytes.end());
                       return si_success;
                   });
}

BridgeStatus SimulatedBridge::SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) {
    read = 0;
    return perform(Operation::read, {static_cast<Dword>(bytes.size())}, [&](WireOperation& record) {
        if (!is_open(handle)) {
            return si_failed;
        }
        record.bytes = receive(bytes.size());
        std::copy(record.bytes.begin(), record.bytes.end(), bytes.begin());
        read = static_cast<Dword>(record.bytes.size());
        record.count = read;
        return read == 0 && !bytes.empty() ? si_read_timed_out : si_success;
    });
}

BridgeStatus SimulatedBridge::SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) {
    waiting = 0;
    queue_status = 0;
    return perform(Operation::check_rx_queue, {}, [&](WireOperation& record) {
        if (!is_open(handle)) {
            return si_failed;
        }
        waiting = static_cast<Dword>(instrument_.line().arrived(record.began));
        record.count = waiting;
        return si_success;
    });
}

void SimulatedBridge::advance_plan() {
    if (!bench_.planned_faults) {
        return;
    }
    PlannedFaults& plan = *bench_.planned_faults;
    if (plan.after_operations > 0) {
        --plan.after_operations;
        return;
    }
    if (!plan.begun) {
        plan.begun = true;
        bench_.faults = plan.faults;
    }
    if (plan.lasting_operations == 0) {
        bench_.faults = {};
        bench_.planned_faults.reset();
    } else if (plan.lasting_operations > 0) {
        --plan.lasting_operations;
    } else {
        bench_.planned_faults.reset();
    }
}

std::optional<OperationFault> SimulatedBridge::fault_of(Operation operation) {
    if (bench_.faults.unplugged && operation != Operation::get_num_devices) {
        return OperationFault{};
    }
    const auto found = bench_.faults.operations.find(operation);
    if (found == bench_.faults.operations.end() ||
        !strikes(found->second.after, found->second.times)) {
        return std::nullopt;
    }
    return found->second;
}

bool SimulatedBridge::is_open(Handle handle) const {
    return open_ && handle == token_.get();
}

bool SimulatedBridge::in_tune() const {
    constexpr Dword tolerance = instrument_baud_rate / 50;
    return baud_rate_ >= instrument_baud_rate - tolerance &&
           baud_rate_ <= instrument_baud_rate + tolerance;
}

void SimulatedBridge::deliver(Byte byte, nanoseconds at) {
    if (open_index_ >= bench_.devices.size() || !bench_.devices[open_index_].answers) {
        return;
    }
    const Byte received = in_tune() ? byte : static_cast<Byte>(garbage_.bits() & 0xFFU);
    const auto command = instrument_.receive(received, at);
    if (command && log_ != nullptr) {
        log_->frames.push_back({at, *command});
    }
}

std::vector<Byte> SimulatedBridge::receive(std::size_t wanted) {
    const nanoseconds now = clock_.now();
    const nanoseconds deadline = now + read_time_out_;
    instrument_.run_until(deadline);
    const SerialLine& line = instrument_.line();
    const nanoseconds complete = line.arrival(wanted).value_or(deadline);
    const nanoseconds until = wanted == 0 ? now : std::clamp(complete, now, deadline);
    clock_.sleep(until - now);
    auto bytes = instrument_.line().take(wanted, until);
    if (!in_tune()) {
        for (Byte& byte : bytes) {
            byte = static_cast<Byte>(garbage_.bits() & 0xFFU);
        }
    }
    return bytes;
}

} // namespace kv408::simulator
