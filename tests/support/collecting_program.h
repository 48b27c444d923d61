#pragma once

// The whole program on the simulated instrument, of whose CH1 many sweeps are collected.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "analysis/collected.h"
#include "scope/parts.h"
#include "scope/scope.h"
#include "simulator/simulation.h"
#include "simulator/test_connections.h"
#include "support/choose_entry.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// What is collected.
struct Collecting {
    /// The entry of the simulated bench that is set up first.
    simulator::TestConnection connection = simulator::TestConnection::eye_clean;
    /// Changes signal 1 of that; none: left as it is.
    std::function<void(simulator::Source&)> change = {};
    std::string_view time_base = "20ns/div";
    std::string_view volts = "0.1V";
    std::string_view delay = {}; ///< as it is typed for CH1, picoseconds; empty: left as it is
    double sampler_noise_codes = 1.0;
    bool inverted = false;
    std::uint64_t seed = 1;
};

class CollectingProgram {
public:
    explicit CollectingProgram(const Collecting& what)
        : simulation_{clock_, {}, what.seed, nullptr} {
        simulation_.set_calibrated();
        simulator::TestBench& bench = simulation_.bench();
        simulator::connect(bench, what.connection);
        bench.sampler_noise_codes = what.sampler_noise_codes;
        if (what.change) {
            what.change(bench.sources[0]);
        }
        if (!scope_.start()) {
            throw std::runtime_error("the program did not start");
        }
        FrontPanel& panel = scope_.panel();
        choose_entry(scope_, panel.seltimediv, what.time_base);
        choose_entry(scope_, panel.channel[ch1].vdiv, what.volts);
        scope_.act([&] { panel.channel[ch2].enable.set_checked(false); });
        scope_.act([&] { panel.channel[ch1].invert.set_checked(what.inverted); });
        if (!what.delay.empty()) {
            scope_.act([&] { panel.channel[ch1].psofset.set_text(std::string(what.delay)); });
        }
        ticks(settling_ticks); // what was measured with the set-up before
        scope_.sweeps().on_finished(
            [this](const std::shared_ptr<const Sweep>& sweep) { take(*sweep); });
    }

    /// What has been collected when there are `sweeps` sweeps of it.
    const Collected& after(std::uint64_t sweeps) {
        constexpr int patience = 20;
        for (std::uint64_t tick = 0; !collected_ || collected_->sweeps < sweeps; ++tick) {
            if (tick > patience * sweeps + patience) {
                throw std::runtime_error("the sweeps do not come");
            }
            ticks(1);
        }
        return *collected_;
    }

    [[nodiscard]] const simulator::Source& signal() { return simulation_.bench().sources[0]; }
    [[nodiscard]] Scope& scope() { return scope_; }

    /// Code steps of one millivolt at the input.
    [[nodiscard]] double codes_per_millivolt() const {
        return 1.0 / collected_->with.conversion.atten;
    }

    void ticks(int count) {
        for (int tick = 0; tick < count; ++tick) {
            constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
            clock_.advance(interval - clock_.now() % interval);
            scope_.tick();
        }
    }

private:
    static constexpr int settling_ticks = 12;

    void take(const Sweep& sweep) {
        if (!sweep.came[ch1]) {
            return;
        }
        const ChannelSweep& channel = *sweep.channel[ch1];
        const MeasuredWith with = measured_with(sweep.mode, channel);
        if (!collected_ || !(collected_->with == with)) {
            collected_.emplace(
                Collected{.counts = Density(static_cast<int>(channel.codes.size())), .with = with});
        }
        collected_->counts.add(channel.codes);
        ++collected_->sweeps;
    }

    VirtualClock clock_;
    simulator::Simulation simulation_;
    FakeMessageBoxes boxes_;
    FakeWindowMessages messages_;
    FakeFiles files_;
    FakeFileChoosers choosers_;
    FakePictureCoder coder_;
    Scope scope_{Machine{clock_, boxes_, messages_, simulation_.bridge(), files_, choosers_,
                         fake_places(), coder_}};
    std::optional<Collected> collected_;
};

} // namespace kv408
