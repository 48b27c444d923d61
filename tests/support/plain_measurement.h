#pragma once

// The rules of the measurement engine read plainly, as the yardstick of the engine: 32 compares a
// column and channel, the crossing state as a text. Only the texts are written by the engine's own
// routine.

#include <array>
#include <cmath>
#include <string>

#include "measure/measurement_texts.h"
#include "state/measurement_state.h"
#include "state/samples.h"

namespace kv408 {

/// One channel's working state of a run.
struct PlainChannel {
    double maximum = -10000.0;
    double minimum = 10000.0;
    double sum = 0.0;
    double squares = 0.0;
    double mid = 0.0;
    double low = 0.0;
    double high = 0.0;
    double width = 0.0;
    double base = 0.0;
    std::array<double, 33> upper_sum = {};
    std::array<double, 33> lower_sum = {};
    std::array<std::int16_t, 33> upper_count = {};
    std::array<std::int16_t, 33> lower_count = {};
    std::string state;
    std::array<double, 17> crossings = {};
    std::size_t crossing_count = 0;
    std::array<double, 16> rises = {};
    std::size_t rise_count = 0;
    std::array<double, 16> falls = {};
    std::size_t fall_count = 0;
    bool rise_armed = false;
    double pending_low = 0.0;
    bool fall_armed = false;
    double pending_high = 0.0;

    /// Thresholds and histogram range of the sweep before.
    void prepare(const MeasurementRecord& previous) {
        mid = (previous[0] - previous[1]) / 2 + previous[1];
        low = (previous[2] - previous[3]) * 0.1 + previous[3];
        high = previous[2] - (previous[2] - previous[3]) * 0.1;
        width = previous[6] / 32;
        base = previous[1];
    }

    /// Column `c` with value `v`, and `u` in the column before.
    void take(int c, double u, double v) {
        sum += v;
        squares += v * v;
        take_into_histogram(v);
        if (v < minimum) {
            minimum = v;
        }
        if (v > maximum) {
            maximum = v;
        }
        if (c == 1) {
            return;
        }
        if (crossing_count <= 16 || state.empty()) {
            take_crossing(c, u, v);
        }
        if (rise_count < 16) {
            take_rise(c, u, v);
        }
        if (fall_count < 16) {
            take_fall(c, u, v);
        }
    }

    void take_into_histogram(double v) {
        for (int k = 1; k <= 32; ++k) {
            if (v > base + (k - 1) * width && v <= base + k * width) {
                const auto bin = static_cast<std::size_t>(k);
                if (v > mid) {
                    upper_sum[bin] += v;
                    ++upper_count[bin];
                } else {
                    lower_sum[bin] += v;
                    ++lower_count[bin];
                }
            }
        }
    }

    static double position(int c, double level, double u, double v) {
        if (std::fabs(v - u) == 0) {
            return c;
        }
        return c - 1 + std::fabs(level - u) / std::fabs(v - u);
    }

    void take_crossing(int c, double u, double v) {
        if (state == "CrossPOS" && v > high) {
            state = "AmpPOS";
        } else if (state == "CrossNEG" && v < low) {
            state = "AmpNEG";
        }
        if (u >= mid && v < mid && (state.empty() || state == "AmpPOS")) {
            crossings[crossing_count++] = -position(c, mid, u, v);
            state = "CrossNEG";
        }
        if (u <= mid && v > mid && (state.empty() || state == "AmpNEG")) {
            crossings[crossing_count++] = position(c, mid, u, v);
            state = "CrossPOS";
        }
    }

    void take_rise(int c, double u, double v) {
        if (u <= low && v > low) {
            rise_armed = true;
            pending_low = position(c, low, u, v);
        }
        if (rise_armed && u <= high && v > high) {
            rises[rise_count++] = pending_low;
            rises[rise_count++] = position(c, high, u, v);
            rise_armed = false;
        }
    }

    void take_fall(int c, double u, double v) {
        if (u >= high && v < high) {
            fall_armed = true;
            pending_high = position(c, high, u, v);
        }
        if (fall_armed && u >= low && v < low) {
            falls[fall_count++] = pending_high;
            falls[fall_count++] = position(c, low, u, v);
            fall_armed = false;
        }
    }

    /// Levels and sums into `record`.
    void finish(MeasurementRecord& record) {
        std::size_t best_upper = 0;
        std::size_t best_lower = 0;
        for (std::size_t k = 1; k <= 32; ++k) {
            if (upper_count[k] > upper_count[best_upper]) {
                best_upper = k;
            }
            if (lower_count[k] > lower_count[best_lower]) {
                best_lower = k;
            }
            if (upper_count[k] > 0) {
                upper_sum[k] = upper_sum[k] / upper_count[k];
            }
            if (lower_count[k] > 0) {
                lower_sum[k] = lower_sum[k] / lower_count[k];
            }
        }
        record[2] = upper_sum[best_upper];
        record[3] = lower_sum[best_lower];
        record[5] = mid;
        record[0] = maximum;
        record[1] = minimum;
        record[6] = maximum - minimum;
        record[4] = record[2] - record[3];
        record[8] = sum / 640;
        record[7] = std::sqrt(squares / 640);
    }

    /// Pulse widths and edge times into `record`.
    void finish_times(MeasurementRecord& record) const {
        double positive_sum = 0;
        double negative_sum = 0;
        int positive_count = 0;
        int negative_count = 0;
        for (std::size_t i = 1; i < crossing_count; ++i) {
            const double d = std::fabs(crossings[i]) - std::fabs(crossings[i - 1]);
            if (crossings[i - 1] > 0) {
                positive_sum += d;
                ++positive_count;
            }
            if (crossings[i - 1] < 0) {
                negative_sum += d;
                ++negative_count;
            }
        }
        record[11] = mean_of_pairs(rises, rise_count);
        record[12] = mean_of_pairs(falls, fall_count);
        record[13] = positive_count > 0 ? positive_sum / positive_count : 0;
        record[14] = negative_count > 0 ? negative_sum / negative_count : 0;
    }

    static double mean_of_pairs(const std::array<double, 16>& ends, std::size_t count) {
        if (count < 2) {
            return -1;
        }
        double total = 0;
        for (std::size_t i = 1; i < count; i += 2) {
            total += ends[i] - ends[i - 1];
        }
        const std::size_t pairs = count / 2;
        return total / static_cast<double>(pairs);
    }

    void place(const MeasurementRecord& record, AnnotationPlaces& places) const {
        const auto put = [&places](std::size_t field, double start, double end) {
            places.start[field] = std::fabs(start);
            places.end[field] = std::fabs(end);
        };
        for (const std::size_t field : {0U, 1U, 2U, 3U, 7U, 8U}) {
            places.start[field] = record[field];
            places.end[field] = record[field];
        }
        places.start[6] = record[0];
        places.end[6] = record[1];
        places.start[4] = record[2];
        places.end[4] = record[3];
        put(10, crossings[0], crossings[2]);
        if (crossings[0] <= 0) {
            put(13, crossings[1], crossings[2]);
            put(14, crossings[0], crossings[1]);
        } else {
            put(13, crossings[0], crossings[1]);
            put(14, crossings[1], crossings[2]);
        }
        put(11, rises[0], rises[1]);
        put(12, falls[0], falls[1]);
    }
};

/// The pass over both channels: thresholds of `previous`, every column, the levels not yet taken.
inline std::array<PlainChannel, 2> plain_pass(const Samples& samples,
                                              const std::array<MeasurementRecord, 2>& previous) {
    std::array<PlainChannel, 2> channels;
    for (std::size_t channel = 0; channel < 2; ++channel) {
        channels[channel].prepare(previous[channel]);
    }
    for (int c = 1; c <= 640; ++c) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const auto& mv = samples[channel].mv;
            channels[channel].take(c, mv[static_cast<std::size_t>(c - 1)],
                                   mv[static_cast<std::size_t>(c)]);
        }
    }
    return channels;
}

/// What `measure_sweeps` does, by the plain reading.
inline void plain_measure_sweeps(const Samples& samples, double samplerate,
                                 MeasurementState& state) {
    auto channels = plain_pass(samples, state.measresults);
    for (std::size_t channel = 0; channel < 2; ++channel) {
        MeasurementRecord& record = state.measresults[channel];
        channels[channel].finish(record);
        channels[channel].finish_times(record);
        formatmeasvals(state.meastexts[channel], record, samplerate);
        channels[channel].place(record, state.annotations[channel]);
    }
}

} // namespace kv408
