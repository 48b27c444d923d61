// How long it takes to compose the picture, against QPainter drawing the same picture and against
// one plain copy of it. The figures are the medians over the iterations, all of one run.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>

#include "painter_picture.h"
#include "ratio_reporter.h"
#include "scope_scene.h"

namespace {

using namespace kv408;
using namespace kv408::bench;

/// The times of the iterations of one benchmark. Their median tells what the work takes even when
/// other programs interrupt some of the iterations.
class IterationTimes {
public:
    explicit IterationTimes(benchmark::State& state) : state_(state) {}

    /// Runs `timed` once and takes its time as that of the iteration.
    template <typename Work>
    void add(const Work& timed) {
        const auto start = std::chrono::steady_clock::now();
        timed();
        benchmark::ClobberMemory();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state_.SetIterationTime(taken.count());
        seconds_.push_back(taken.count());
    }

    /// Reports the median of all iterations.
    void report() {
        const auto middle = seconds_.begin() + static_cast<std::ptrdiff_t>(seconds_.size() / 2);
        std::nth_element(seconds_.begin(), middle, seconds_.end());
        state_.counters[median_counter] = *middle;
    }

private:
    benchmark::State& state_;
    std::vector<double> seconds_;
};

/// One plain copy of the picture.
void plain_copy(benchmark::State& state, double scale) {
    const PlotScale size(scale);
    const Surface source(size.width(), size.height());
    Surface target(size.width(), size.height());
    IterationTimes times(state);
    for (auto _ : state) {
        times.add([&] {
            std::memcpy(target.pixels().data(), source.pixels().data(),
                        source.pixels().size_bytes());
        });
    }
    times.report();
}

/// The draw after a complete sweep of both channels.
void full_composition(benchmark::State& state, Signal signal, int depth, double scale) {
    ScopeScene scene(signal, depth, scale);
    IterationTimes times(state);
    for (auto _ : state) {
        scene.sweep();
        times.add([&] { scene.picture().draw(draw_flags::all); });
    }
    times.report();
}

/// The same picture with QPainter.
void painter_composition(benchmark::State& state, Signal signal, int depth, double scale) {
    ScopeScene scene(signal, depth, scale);
    PainterPicture painter(scene);
    IterationTimes times(state);
    for (auto _ : state) {
        times.add([&] { painter.draw(); });
    }
    times.report();
}

/// One new point of both channels in a point-by-point pass: mapped and drawn.
void new_point(benchmark::State& state, Signal signal, int depth, double scale) {
    ScopeScene scene(signal, depth, scale);
    scene.sample_next_point();
    scene.show_point(); // the pass has begun: what follows changes single points only
    IterationTimes times(state);
    for (auto _ : state) {
        scene.sample_next_point();
        times.add([&] { scene.show_point(); });
    }
    times.report();
}

/// The columns that a new point changes, its own and the gap's 20, with QPainter.
void painter_point(benchmark::State& state, Signal signal, int depth, double scale) {
    constexpr int changed = 21;
    ScopeScene scene(signal, depth, scale);
    PainterPicture painter(scene);
    painter.draw();
    IterationTimes times(state);
    int column = 0;
    for (auto _ : state) {
        column = (column + 1) % (plot::width - changed);
        times.add([&] { painter.draw_columns(column, changed); });
    }
    times.report();
}

/// A picture to measure with.
struct Subject {
    const char* name;
    Signal signal;
    int depth;
    double scale;
    const char* copy; ///< what its plain copy goes by
};

constexpr const char* natural_copy = "plain copy";
constexpr const char* copy_19 = "plain copy at 1.9";
constexpr const char* copy_3 = "plain copy at 3";
constexpr const char* copy_5 = "plain copy at 5";

constexpr std::array subjects{Subject{"sine, depth 3", Signal::sine, 3, 1.0, natural_copy},
                              Subject{"sine, depth 9", Signal::sine, 9, 1.0, natural_copy},
                              Subject{"noise, depth 3", Signal::noise, 3, 1.0, natural_copy},
                              Subject{"noise, depth 9", Signal::noise, 9, 1.0, natural_copy},
                              Subject{"sine at 1.9", Signal::sine, 9, 1.9, copy_19},
                              Subject{"noise at 1.9", Signal::noise, 9, 1.9, copy_19},
                              Subject{"sine at 3", Signal::sine, 9, 3.0, copy_3},
                              Subject{"noise at 3", Signal::noise, 9, 3.0, copy_3},
                              Subject{"sine at 5", Signal::sine, 9, 5.0, copy_5},
                              Subject{"noise at 5", Signal::noise, 9, 5.0, copy_5}};

std::string name_of(const char* what, const Subject& subject) {
    return std::string(what) + " (" + subject.name + ")";
}

void settle(benchmark::internal::Benchmark* measured) {
    measured->UseManualTime()->Unit(benchmark::kMicrosecond)->MinTime(0.3);
}

void register_all() {
    const char* copy = "";
    for (const Subject& subject : subjects) {
        if (subject.copy != copy) {
            copy = subject.copy;
            settle(benchmark::RegisterBenchmark(copy, plain_copy, subject.scale));
        }
        const auto add = [&subject](const char* what, const auto& work) {
            settle(benchmark::RegisterBenchmark(name_of(what, subject).c_str(), work,
                                                subject.signal, subject.depth, subject.scale));
        };
        add("full composition", full_composition);
        add("QPainter", painter_composition);
        add("one new point", new_point);
        if (subject.scale == PlotScale::natural) {
            add("QPainter's new point", painter_point);
        }
    }
}

void print_ratios(const RatioReporter& reporter) {
    for (const Subject& subject : subjects) {
        const std::string full = name_of("full composition", subject);
        const std::string which = std::string(" (") + subject.name + "):";
        reporter.print_ratio("full composition vs QPainter" + which + " faster by",
                             name_of("QPainter", subject), full);
        reporter.print_ratio("full composition vs one plain copy" + which + " costs", full,
                             subject.copy);
        reporter.print_ratio("one new point vs full composition" + which + " faster by", full,
                             name_of("one new point", subject));
        if (subject.scale == PlotScale::natural) {
            reporter.print_ratio("one new point vs QPainter" + which + " faster by",
                                 name_of("QPainter's new point", subject),
                                 name_of("one new point", subject));
        }
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
    print_ratios(reporter);
    return 0;
}
