// What a density takes: counting a sweep in, colouring the whole plot, and counting all hits anew,
// with both channels, and one that fills the plot from edge to edge.

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <random>
#include <vector>

#include "analysis/collected.h"
#include "display/density_layer.h"
#include "state/plot_geometry.h"
#include "state/samples.h"

namespace {

using namespace kv408;

/// Both channels' densities, each of 2000 sweeps of noise over `codes` codes.
struct Densities {
    explicit Densities(int codes) {
        std::uniform_int_distribution<int> code(zero_volt_code - codes / 2,
                                                zero_volt_code + codes / 2);
        for (std::vector<std::int16_t>& sweep : sweeps) {
            sweep.resize(npoints);
            for (std::int16_t& each : sweep) {
                each = static_cast<std::int16_t>(code(random));
            }
        }
        for (std::size_t channel = 0; channel < layers.size(); ++channel) {
            for (int count = 0; count < 2000; ++count) {
                collected[channel].counts.add(
                    sweeps[static_cast<std::size_t>(count) % sweeps.size()]);
            }
            layers[channel].show(collected[channel], screen);
        }
    }

    std::mt19937 random{7};
    std::array<std::vector<std::int16_t>, 500> sweeps;
    std::array<Collected, 2> collected{Collected{.counts = Density(npoints), .with = {}},
                                       Collected{.counts = Density(npoints), .with = {}}};
    std::array<DensityLayer, 2> layers;
    DensityScreen screen{.centre_code = zero_volt_code,
                         .rows_per_code = 512.0 / 2400.0,
                         .aligned = true,
                         .stretched = true,
                         .hstretch = 1.0016};
};

void plain_copy(benchmark::State& state) {
    const Surface source(plot::width, plot::height);
    Surface target(plot::width, plot::height);
    for (auto _ : state) {
        std::memcpy(target.pixels().data(), source.pixels().data(), source.pixels().size_bytes());
        benchmark::ClobberMemory();
    }
}

void colour_plot(benchmark::State& state, int codes, double factor) {
    Densities densities(codes);
    const PlotScale scale(factor);
    Surface surface(scale.width(), scale.height());
    const DensityColours colours = density_colours(DensityPalette::cividis, {}, {});
    for (auto _ : state) {
        for (DensityLayer& layer : densities.layers) {
            layer.change_all();
            const Tiles changed = layer.take_changed();
            for (int top = 0; top < plot::height; top += Tiles::band_rows) {
                changed.for_each_row({0, plot::width}, top, [&](const Rectangle& units) {
                    layer.paint(surface, scale, units, colours);
                });
            }
        }
        benchmark::ClobberMemory();
    }
}

void count_sweep(benchmark::State& state) {
    Densities densities(2400);
    std::size_t next = 0;
    for (auto _ : state) {
        const std::vector<std::int16_t>& sweep = densities.sweeps[next++ % 500];
        for (std::size_t channel = 0; channel < densities.layers.size(); ++channel) {
            densities.collected[channel].counts.add(sweep);
            densities.layers[channel].add(sweep, 1);
        }
    }
}

void count_anew(benchmark::State& state, int codes) {
    Densities densities(codes);
    for (auto _ : state) {
        for (std::size_t channel = 0; channel < densities.layers.size(); ++channel) {
            densities.layers[channel].forget();
            densities.layers[channel].show(densities.collected[channel], densities.screen);
        }
    }
}

} // namespace

BENCHMARK(plain_copy)->Unit(benchmark::kMicrosecond);
BENCHMARK(count_sweep)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(colour_plot, whole, 2400, 1.0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(colour_plot, tenth, 240, 1.0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(colour_plot, whole_at_1_9, 2400, 1.9)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(count_anew, whole, 2400)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(count_anew, tenth, 240)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
