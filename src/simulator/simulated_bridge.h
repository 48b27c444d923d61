#pragma once

#include "host/clock.h"
#include "link/bridge.h"
#include "simulator/instrument.h"
#include "simulator/wire_log.h"

#include <optional>

namespace kv408::simulator {

/// The bridge and the serial line of a simulated instrument, paced by a clock that is passed in.
/// Reading and writing take their time by sleeping on that clock. One device is open at a time;
/// without one an operation that needs it gives `bridge_failed`. After `open` the link
/// speed is 9600 baud, and at any speed that is not the instrument's within 2 % both sides
/// receive garbage.
class SimulatedBridge : public Bridge {
public:
    /// Speed of the link after `open`, baud.
    static constexpr std::uint32_t first_baud_rate = 9600;
    /// Read and write time-out before the first `set_time_out`, milliseconds.
    static constexpr std::uint32_t first_time_out_ms = 1000;

    /// `bench` says what is attached, `instrument` answers, `log` (may be null) gets a record of
    /// every operation. All outlive the bridge.
    SimulatedBridge(Clock& clock, TestBench& bench, Instrument& instrument, WireLog* log)
        : clock_(clock), bench_(bench), instrument_(instrument), log_(log) {}

    /// Lets bridge and instrument notice the faults of the bench, as every operation does.
    void notice_faults();

    Counted count_devices() override;
    SerialNumber serial_number(std::uint32_t index) override;
    BridgeStatus open(std::uint32_t index) override;
    BridgeStatus close() override;
    BridgeStatus set_speed(std::uint32_t baud) override;
    BridgeStatus set_time_out(std::uint32_t milliseconds) override;
    BridgeStatus flush() override;
    BridgeStatus write(std::span<const Byte> bytes) override;
    Counted read(std::span<Byte> bytes) override;
    Counted waiting() override;

private:
    /// Runs `action(record)` unless a fault forbids the operation or it needs an open device and
    /// there is none, and logs it.
    template <typename Action>
    WireOperation perform(Operation operation, std::vector<std::uint32_t> arguments, Action action);

    void advance_plan();
    /// The fault that strikes `operation`, none when it goes well.
    [[nodiscard]] std::optional<OperationFault> fault_of(Operation operation);
    [[nodiscard]] bool in_tune() const;
    void deliver(Byte byte, std::chrono::nanoseconds at);
    [[nodiscard]] std::vector<Byte> receive(std::size_t wanted);

    Clock& clock_;
    TestBench& bench_;
    Instrument& instrument_;
    WireLog* log_;
    Noise garbage_{408};
    bool open_ = false;
    std::size_t open_index_ = 0;
    std::uint32_t baud_rate_ = first_baud_rate;
    std::chrono::milliseconds read_time_out_{first_time_out_ms};
};

} // namespace kv408::simulator
