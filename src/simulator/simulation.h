#pragma once

#include "simulator/simulated_bridge.h"

namespace kv408::simulator {

/// A simulated instrument on its bench, complete: construct it, give `bridge()` to the program,
/// change `bench()` at will. It starts in the factory state.
class Simulation {
public:
    /// Runs on `clock`. The flash memory is kept at `flash` (no place: in memory only); a file that
    /// is there is taken over, else the factory's record is written. `seed` decides all
    /// chance. `log`, unless null, gets a record of the wire. Clock and log outlive the simulation.
    explicit Simulation(Clock& clock, FlashPlace flash = {}, std::uint64_t seed = 1,
                        WireLog* log = nullptr);

    Simulation(const Simulation&) = delete;
    Simulation& operator=(const Simulation&) = delete;

    /// Signals, cables, devices and faults, to be read and changed at any time.
    [[nodiscard]] TestBench& bench() { return bench_; }

    /// Lets the instrument notice the faults that there are now, as each operation of the bridge
    /// does: one that comes and goes between two of them leaves no trace otherwise.
    void notice_faults() { bridge_.notice_faults(); }

    /// The bridge over which the program reaches the instrument.
    [[nodiscard]] Bridge& bridge() { return bridge_; }

    /// The instrument's flash memory.
    [[nodiscard]] Flash& flash() { return flash_; }

    /// What the program has set in the instrument.
    [[nodiscard]] const Settings& settings() const { return instrument_.settings(); }

    /// The state as delivered: errors of the sampler, and a record that leaves about 3 % of gain,
    /// 20 codes of offset and 2 % of time for the user to calibrate. Overwrites the record.
    void set_factory_state();

    /// An exact sampler with a record that corrects nothing. Overwrites the record.
    void set_calibrated();

private:
    TestBench bench_;
    Flash flash_;
    Instrument instrument_;
    SimulatedBridge bridge_;
};

/// The errors of every simulated sampler at delivery.
[[nodiscard]] HardwareErrors factory_errors();

} // namespace kv408::simulator
