// How long it takes to measure a sweep of both channels, against the plain reading of the same
// rules, which compares every column with the bounds of all 32 bins. The figures are the medians
// over the iterations, all of one run.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "measure/engine.h"
#include "measure/sweep_pass.h"
#include "ratio_reporter.h"
#include "support/plain_measurement.h"
#include "support/sweep_of.h"

namespace {

using namespace kv408;
using namespace kv408::bench;

constexpr double samplerate = 64.0 / 20e-9; // 20ns/div

enum class Signal { sine, square, noise };

/// Sweeps of `signal` with noise of one code, as they follow each other.
std::vector<Samples> make_samples(Signal signal) {
    std::mt19937 random(408);
    std::normal_distribution<double> gaussian;
    std::vector<Samples> sweeps(16);
    for (Samples& samples : sweeps) {
        for (std::size_t channel = 0; channel < samples.size(); ++channel) {
            const double period = channel == 0 ? 320.0 : 80.0;
            for (std::size_t column = 0; column < samples[channel].mv.size(); ++column) {
                const double sine =
                    std::sin(2.0 * std::numbers::pi * static_cast<double>(column) / period);
                double value = 200.0 * sine;
                if (signal == Signal::square) {
                    value = sine > 0.0 ? 200.0 : -200.0;
                } else if (signal == Signal::noise) {
                    value = 100.0 * gaussian(random);
                }
                samples[channel].mv[column] = std::nearbyint(value * 2.0 + gaussian(random)) / 2.0;
            }
        }
    }
    return sweeps;
}

/// Runs `measure(sweep, samples, state)` over the sweeps of `signal`, one an iteration.
template <typename Measure>
void measure_each(benchmark::State& state, Signal signal, const Measure& measure) {
    const std::vector<Samples> samples = make_samples(signal);
    std::vector<Sweep> sweeps;
    std::transform(samples.begin(), samples.end(), std::back_inserter(sweeps),
                   [](const Samples& columns) { return sweep_of(columns, samplerate); });
    MeasurementState results;
    for (int settling = 0; settling < 3; ++settling) {
        measure_sweep(sweeps.front(), results);
    }
    std::vector<double> seconds;
    std::size_t next = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        measure(sweeps[next], samples[next], results);
        benchmark::ClobberMemory();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
        seconds.push_back(taken.count());
        next = (next + 1) % sweeps.size();
    }
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::nth_element(seconds.begin(), middle, seconds.end());
    state.counters[median_counter] = *middle;
}

/// The engine: everything, and its pass over the columns alone.
void engine(benchmark::State& state, Signal signal) {
    measure_each(state, signal, [](const Sweep& sweep, const Samples&, MeasurementState& results) {
        measure_sweep(sweep, results);
    });
}

void engine_pass(benchmark::State& state, Signal signal) {
    measure_each(state, signal, [](const Sweep& sweep, const Samples&, MeasurementState& results) {
        for (std::size_t channel = 0; channel < sweep.channel.size(); ++channel) {
            auto found = pass_over(sweep.channel[channel]->columns, results.measresults[channel]);
            benchmark::DoNotOptimize(found);
        }
    });
}

/// The plain reading of both.
void plain(benchmark::State& state, Signal signal) {
    measure_each(state, signal,
                 [](const Sweep&, const Samples& samples, MeasurementState& results) {
                     plain_measure_sweeps(samples, samplerate, results);
                 });
}

void plain_pass_alone(benchmark::State& state, Signal signal) {
    measure_each(state, signal,
                 [](const Sweep&, const Samples& samples, MeasurementState& results) {
                     auto channels = plain_pass(samples, results.measresults);
                     benchmark::DoNotOptimize(channels);
                 });
}

struct Subject {
    const char* name;
    Signal signal;
};

constexpr std::array subjects{Subject{"sine", Signal::sine}, Subject{"square", Signal::square},
                              Subject{"noise", Signal::noise}};

std::string name_of(const char* what, const Subject& subject) {
    return std::string(what) + " (" + subject.name + ")";
}

void register_all() {
    for (const Subject& subject : subjects) {
        const auto add = [&subject](const char* what, const auto& work) {
            benchmark::RegisterBenchmark(name_of(what, subject).c_str(), work, subject.signal)
                ->UseManualTime()
                ->Unit(benchmark::kMicrosecond)
                ->MinTime(0.3);
        };
        add("engine", engine);
        add("plain reading", plain);
        add("engine, pass", engine_pass);
        add("plain reading, pass", plain_pass_alone);
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    register_all();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const Subject& subject : subjects) {
        const std::string which = std::string(" (") + subject.name + "):";
        reporter.print_ratio("engine vs plain reading" + which + " faster by",
                             name_of("plain reading", subject), name_of("engine", subject));
        reporter.print_ratio("pass alone" + which + " faster by",
                             name_of("plain reading, pass", subject),
                             name_of("engine, pass", subject));
    }
    return 0;
}
