#pragma once

#include <mutex>
#include <thread>

#include "host/system_clock.h"
#include "simulator/simulation.h"

namespace kv408 {

/// The simulated instrument at the device's end of a port, in a thread of its own and in real
/// time, free of noise and errors. It hears at the speed that the program has set on the port.
class InstrumentOnPort {
public:
    /// Begins to answer at `far_end`, which outlives it.
    explicit InstrumentOnPort(int far_end) : far_end_(far_end) { begin(); }

    /// Changes the bench: `change(bench)` runs while the instrument stands still.
    template <typename Change>
    void on_bench(const Change& change) {
        const std::lock_guard lock(mutex_);
        change(simulation_.bench());
    }

private:
    void begin();
    void run(const std::stop_token& stop);
    void hear();
    void speak();

    const int far_end_;
    SystemClock clock_;
    simulator::Simulation simulation_{clock_};
    Bridge& bridge_ = simulation_.bridge();
    std::uint32_t baud_ = 0;
    std::mutex mutex_;
    std::jthread thread_; // the last member: it uses all others
};

/// Takes every noise and error out of `simulation`.
inline void make_exact(simulator::Simulation& simulation) {
    simulation.set_calibrated();
    simulation.bench().sampler_noise_codes = 0.0;
    for (simulator::Source& source : simulation.bench().sources) {
        source.noise_mv = 0.0;
        source.jitter_ps = 0.0;
    }
}

} // namespace kv408
