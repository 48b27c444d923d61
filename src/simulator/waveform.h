#pragma once

#include "simulator/test_bench.h"

#include <cstdint>

namespace kv408::simulator {

/// A moment on a signal, counted in the signal's own periods so that it stays exact however long
/// the simulation runs.
struct Phase {
    std::int64_t periods = 0; ///< whole periods since the start of the simulation
    double fraction = 0.0;    ///< of the period that has begun, 0..1 without 1
};

/// `phase` moved on by `periods`, which may be negative and need not be whole.
[[nodiscard]] Phase moved(Phase phase, double periods);

/// Length of a whole edge as a part of the period, from the 10 % to 90 % rise time; limited so
/// that the edges of one period do not meet. 0 for a step.
[[nodiscard]] double edge_width(const Source& source);

/// Part of the period for which the source is high: its `duty`, held within 0.001..0.999, and 0.5
/// for a square.
[[nodiscard]] double high_part(const Source& source);

/// Number of the edge of `source` that is nearest to `phase`: even for the one at the start of a
/// period or bit, odd for the one after it. A generator's clock counts as its signal does.
[[nodiscard]] std::int64_t edge_at(const Source& source, Phase phase);

/// How much later than the start of its bit the middle of an edge of random data comes, bits: by
/// the source's distortion, of which each direction takes half, held so that edges do not meet.
[[nodiscard]] double data_edge_delay(const Source& source, bool rising);

/// `phase`, in periods of `phase_hz`, in those of a signal of `frequency_hz` that started with it.
[[nodiscard]] Phase in_periods_of(double frequency_hz, Phase phase, double phase_hz);

/// How late the source's sinusoidal jitter makes what is at `phase` of it, picoseconds.
[[nodiscard]] double sine_jitter_at(const Source& source, Phase phase);

/// Whether the source repeats: it has a shape, an amplitude above 0 and a finite frequency above 0.
[[nodiscard]] bool alternates(const Source& source);

/// The source's value at `phase`, millivolts, without noise and jitter. A source that does not
/// alternate gives its offset, `none` gives 0.
[[nodiscard]] double value_mv(const Source& source, Phase phase);

} // namespace kv408::simulator
