#include "simulator/simulated_bridge.h"

#include <algorithm>
#include <utility>

namespace kv408::simulator {

using std::chrono::nanoseconds;

namespace {

bool needs_open_device(Operation operation) {
    return operation != Operation::get_num_devices && operation != Operation::get_product_string &&
           operation != Operation::open && operation != Operation::set_timeouts;
}

} // namespace

void SimulatedBridge::notice_faults() {
    if (bench_.faults.unplugged) {
        open_ = false;
    }
    instrument_.run_until(clock_.now());
}

template <typename Action>
WireOperation SimulatedBridge::perform(Operation operation, std::vector<std::uint32_t> arguments,
                                       Action action) {
    WireOperation record;
    record.operation = operation;
    record.arguments = std::move(arguments);
    record.began = clock_.now();
    advance_plan();
    notice_faults();
    const auto fault = fault_of(operation);
    if (!fault || fault->done) {
        if (open_ || !needs_open_device(operation)) {
            action(record);
        } else {
            record.status = bridge_failed;
        }
    }
    if (fault) {
        record.status = fault->status;
    }
    record.ended = clock_.now();
    if (log_ != nullptr) {
        log_->operations.push_back(record);
    }
    return record;
}

Counted SimulatedBridge::count_devices() {
    const auto done = perform(Operation::get_num_devices, {}, [&](WireOperation& record) {
        const std::size_t attached = bench_.faults.unplugged ? 0 : bench_.devices.size();
        record.count =
            bench_.faults.reported_devices.value_or(static_cast<std::uint32_t>(attached));
    });
    return {done.status, done.count};
}

SerialNumber SimulatedBridge::serial_number(std::uint32_t index) {
    constexpr std::uint32_t option = 0; // that asks for it
    const auto done =
        perform(Operation::get_product_string, {index, option}, [&](WireOperation& record) {
            if (index >= bench_.devices.size()) {
                record.status = bridge_failed;
                return;
            }
            const auto serial = bench_.devices[index].serial.substr(0, longest_serial_number);
            record.bytes.assign(serial.begin(), serial.end());
        });
    return {done.status, std::string(done.bytes.begin(), done.bytes.end())};
}

BridgeStatus SimulatedBridge::open(std::uint32_t index) {
    const auto done = perform(Operation::open, {index}, [&](WireOperation& record) {
        if (open_ || index >= bench_.devices.size() || !bench_.devices[index].opens) {
            record.status = bridge_failed;
            return;
        }
        open_ = true;
        open_index_ = index;
        baud_rate_ = first_baud_rate;
        // What came while the device was not open is lost.
        instrument_.line().drop_arrived(record.began);
    });
    return done.status;
}

BridgeStatus SimulatedBridge::close() {
    return perform(Operation::close, {}, [&](const WireOperation&) { open_ = false; }).status;
}

BridgeStatus SimulatedBridge::set_speed(std::uint32_t baud) {
    const auto done = perform(Operation::set_baud_rate, {baud}, [&](WireOperation& record) {
        if (baud == 0 || bench_.faults.baud_rate_refused) {
            record.status = bridge_failed;
            return;
        }
        baud_rate_ = baud;
    });
    return done.status;
}

BridgeStatus SimulatedBridge::set_time_out(std::uint32_t milliseconds) {
    // The line always takes what is written: only a read can time out.
    const auto take = [&](const WireOperation&) {
        read_time_out_ = std::chrono::milliseconds(milliseconds);
    };
    return perform(Operation::set_timeouts, {milliseconds, milliseconds}, take).status;
}

BridgeStatus SimulatedBridge::flush() {
    // Writing waits for the wire, so the transmit queue is empty between operations.
    const auto drop = [&](const WireOperation& record) {
        instrument_.line().drop_arrived(record.began);
    };
    return perform(Operation::flush_buffers, {1, 1}, drop).status;
}

BridgeStatus SimulatedBridge::write(std::span<const Byte> bytes) {
    const auto count = static_cast<std::uint32_t>(bytes.size());
    const auto done = perform(Operation::write, {count}, [&](WireOperation& record) {
        clock_.sleep(wire_time(bytes.size(), baud_rate_));
        for (std::size_t index = 0; index < bytes.size(); ++index) {
            deliver(bytes[index], record.began + wire_time(index + 1, baud_rate_));
        }
        record.count = count;
        record.bytes.assign(bytes.begin(), bytes.end());
    });
    return done.status;
}

Counted SimulatedBridge::read(std::span<Byte> bytes) {
    const auto wanted = static_cast<std::uint32_t>(bytes.size());
    const auto done = perform(Operation::read, {wanted}, [&](WireOperation& record) {
        record.bytes = receive(bytes.size());
        record.count = static_cast<std::uint32_t>(record.bytes.size());
        if (record.count == 0 && wanted > 0) {
            record.status = bridge_read_timed_out;
        }
    });
    std::copy(done.bytes.begin(), done.bytes.end(), bytes.begin());
    return {done.status, done.count};
}

Counted SimulatedBridge::waiting() {
    const auto done = perform(Operation::check_rx_queue, {}, [&](WireOperation& record) {
        record.count = static_cast<std::uint32_t>(instrument_.line().arrived(record.began));
    });
    return {done.status, done.count};
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

bool SimulatedBridge::in_tune() const {
    constexpr std::uint32_t tolerance = instrument_baud_rate / 50;
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
