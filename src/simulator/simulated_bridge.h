#pragma once

#include "host/clock.h"
#include "link/bridge.h"
#include "simulator/instrument.h"
#include "simulator/wire_log.h"

#include <memory>
#include <optional>

namespace kv408::simulator {

/// The bridge and the serial line of a simulated instrument, paced on a clock that is handed in.
/// Reading and writing take their time by sleeping on that clock. One device is open at a time;
/// every operation on anything else than its handle gives `si_failed`. After `SI_Open` the link
/// speed is 9600 baud, and at any speed that is not the instrument's within 2 % both sides
/// receive garbage.
class SimulatedBridge : public Bridge {
public:
    /// Speed of the link after `SI_Open`, baud.
    static constexpr Dword first_baud_rate = 9600;
    /// Read and write time-out before the first `SI_SetTimeouts`, milliseconds.
    static constexpr Dword first_time_out_ms = 1000;

    /// `bench` says what is attached, `instrument` answers, `log` (may be null) gets a record of
    /// every operation. All outlive the bridge.
    SimulatedBridge(Clock& clock, Bench& bench, Instrument& instrument, WireLog* log)
        : clock_(clock), bench_(bench), instrument_(instrument), log_(log) {}

    /// Lets bridge and instrument notice the faults of the bench, as every operation does.
    void notice_faults();

    BridgeStatus SI_GetNumDevices(Dword& count) override;
    BridgeStatus SI_GetProductString(Dword index, std::span<Byte, product_string_size> text,
                                     Dword option) override;
    BridgeStatus SI_Open(Dword index, Handle& handle) override;
    BridgeStatus SI_Close(Handle handle) override;
    BridgeStatus SI_SetBaudRate(Handle handle, Dword baud_rate) override;
    BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) override;
    BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) override;
    BridgeStatus SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) override;
    BridgeStatus SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) override;
    BridgeStatus SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) override;

private:
    /// Runs `action(record)` unless a fault forbids the operation, and logs it.
    template <typename Action>
    BridgeStatus perform(Operation operation, std::vector<Dword> arguments, Action action);

    void advance_plan();
    /// The fault that strikes `operation`, none when it goes well.
    [[nodiscard]] std::optional<OperationFault> fault_of(Operation operation);
    [[nodiscard]] bool is_open(Handle handle) const;
    [[nodiscard]] bool in_tune() const;
    void deliver(Byte byte, std::chrono::nanoseconds at);
    [[nodiscard]] std::vector<Byte> receive(std::size_t wanted);

    Clock& clock_;
    Bench& bench_;
    Instrument& instrument_;
    WireLog* log_;
    Noise garbage_{408};
    bool open_ = false;
    std::size_t open_index_ = 0;
    std::unique_ptr<char> token_; // its address is the handle of the latest opening
    Dword baud_rate_ = first_baud_rate;
    std::chrono::milliseconds read_time_out_{first_time_out_ms};
};

} // namespace kv408::simulator
