#pragma once

// Sweeps to measure, from ordinary signals to such as look for a rule's edges.

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "state/measurement_state.h"
#include "state/samples.h"

namespace kv408 {

/// Makes one sweep after the other, each of a kind drawn by chance.
class MeasurementRecords {
public:
    explicit MeasurementRecords(unsigned seed) : random_(seed) {}

    /// Fills a sweep of `channel`. `previous` are the results whose thresholds and bins the sweep
    /// will be measured with: some kinds put samples exactly there.
    void fill(SampleBuffer& channel, const MeasurementRecord& previous) {
        switch (whole(0, 10)) {
        case 0:
            return flat(channel);
        case 1:
            return steps(channel);
        case 2:
            return single_samples(channel, previous);
        case 3:
            return at_thresholds(channel, previous);
        case 4:
            return extremes(channel);
        case 5:
            return noise(channel);
        case 6:
            return at_bin_bounds(channel, previous);
        default:
            return signal(channel);
        }
    }

    int whole(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }
    double real(double lowest, double highest) {
        return std::uniform_real_distribution<double>(lowest, highest)(random_);
    }

private:
    void flat(SampleBuffer& channel) {
        channel.mv.fill(whole(0, 1) == 0 ? 0.0 : real(-2000.0, 2000.0));
    }

    /// Few levels, each held for a while.
    void steps(SampleBuffer& channel) {
        std::array<double, 4> levels = {};
        for (double& level : levels) {
            level = whole(-20, 20) * 12.5;
        }
        const int longest = whole(1, 80);
        int left = 0;
        double level = 0.0;
        for (double& value : channel.mv) {
            if (left == 0) {
                level = levels[static_cast<std::size_t>(whole(0, 3))];
                left = whole(1, longest);
            }
            --left;
            value = level;
        }
    }

    /// A flat trace with a few samples at the bounds of bins, or a rounding beside them.
    void single_samples(SampleBuffer& channel, const MeasurementRecord& previous) {
        channel.mv.fill(real(-100.0, 100.0));
        const int count = whole(1, 5);
        for (int sample = 0; sample < count; ++sample) {
            const auto column = static_cast<std::size_t>(whole(1, 640));
            channel.mv[column] = beside(bin_bound(previous, whole(0, 32)));
        }
    }

    void at_bin_bounds(SampleBuffer& channel, const MeasurementRecord& previous) {
        for (double& value : channel.mv) {
            value = beside(bin_bound(previous, whole(0, 32)));
        }
    }

    /// Every sample at one of the thresholds, or a rounding beside it, or well beyond.
    void at_thresholds(SampleBuffer& channel, const MeasurementRecord& previous) {
        const double top = previous[meas::top];
        const double base = previous[meas::base];
        const double mid = (previous[meas::vmax] - previous[meas::vmin]) / 2 + previous[meas::vmin];
        const std::array<double, 5> levels = {mid, (top - base) * 0.1 + base,
                                              top - (top - base) * 0.1, top + 100.0, base - 100.0};
        for (double& value : channel.mv) {
            value = beside(levels[static_cast<std::size_t>(whole(0, 4))]);
        }
    }

    /// The largest values there may be, and what is next to nothing.
    void extremes(SampleBuffer& channel) {
        const std::array<double, 8> values = {1e100,  -1e100,  63487.0, -2048.0,
                                              5e-324, -5e-324, 0.0,     1e-300};
        for (double& value : channel.mv) {
            value = values[static_cast<std::size_t>(whole(0, 7))];
        }
    }

    void noise(SampleBuffer& channel) {
        const double height = std::pow(10.0, real(-3.0, 4.0));
        for (double& value : channel.mv) {
            value = real(-height, height);
        }
    }

    /// A sine or a rectangle with an offset and some noise, in codes of half a millivolt.
    void signal(SampleBuffer& channel) {
        const double height = real(1.0, 1000.0);
        const double offset = real(-300.0, 300.0);
        const double period = real(3.0, 900.0);
        const double phase = real(0.0, 1.0);
        const double spread = whole(0, 2) * real(0.0, 3.0);
        const bool sine = whole(0, 1) == 0;
        for (std::size_t column = 0; column < channel.mv.size(); ++column) {
            const double turn = static_cast<double>(column) / period + phase;
            double shape = std::sin(2.0 * std::numbers::pi * turn);
            if (!sine) {
                shape = shape > 0.0 ? 1.0 : -1.0;
            }
            const double value = offset + height * shape + spread * real(-1.0, 1.0);
            channel.mv[column] = std::nearbyint(value * 2.0) / 2.0;
        }
    }

    static double bin_bound(const MeasurementRecord& previous, int bin) {
        return previous[meas::vmin] + bin * (previous[meas::vpp] / 32);
    }

    /// `value`, or the double next to it on either side.
    double beside(double value) {
        const int which = whole(0, 3);
        if (which < 2) {
            return value;
        }
        constexpr double far = std::numeric_limits<double>::max();
        return std::nextafter(value, which == 2 ? far : -far);
    }

    std::mt19937 random_;
};

} // namespace kv408
