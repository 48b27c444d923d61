#pragma once

// One time base and one V/div: two pulse trains of known levels and times on the simulated
// instrument, swept three times and measured, and what the measurements should be.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "link/commands.h"
#include "panel/time_base.h"
#include "scope/parts.h"
#include "scope/scope.h"
#include "simulator/simulation.h"
#include "support/choose_entry.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/measurement_lines.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// A V/div setting.
struct VoltsCell {
    std::string_view text;
    double millivolts; ///< per division
};

inline constexpr std::array<VoltsCell, 6> volts_cells = {
    {{"0.5V", 500}, {"0.2V", 200}, {"0.1V", 100}, {"50mV", 50}, {"20mV", 20}, {"10mV", 10}}};

/// A pulse train in divisions; it rises through 0 V at the trigger.
struct PulseTrain {
    double low;    ///< lower level, vertical divisions
    double high;   ///< upper level, vertical divisions
    double period; ///< horizontal divisions
    double duty;   ///< part of the period above the middle
    double rise;   ///< 10 % to 90 % of either edge, horizontal divisions
};

/// What CH1 and CH2 see. It stays within two divisions of 0 V, as far as the instrument converts at
/// 0.5V/div (1.024 V); whole periods fit the screen, so that mean and effective value do not
/// depend on where it begins.
inline constexpr std::array<PulseTrain, 2> pulse_trains = {
    {{-1.3, 1.9, 2.5, 0.4, 0.25}, {-1.8, 1.4, 1.25, 0.6, 0.2}}};

/// One measurement of one channel; voltages in millivolts, times in seconds, the frequency in
/// hertz.
struct KnownValue {
    std::string_view name;
    int channel;    ///< 1 or 2
    double truth;   ///< of the signal
    double value;   ///< measured
    double allowed; ///< deviation that is allowed

    [[nodiscard]] bool holds() const { return std::fabs(value - truth) <= allowed; }
};

/// What every field of `train` should be, in millivolts and seconds.
inline MeasurementRecord true_record(const PulseTrain& train, double division_mv,
                                     double division_s) {
    MeasurementRecord record = {};
    const double low = train.low * division_mv;
    const double height = (train.high - train.low) * division_mv;
    record[meas::vmin] = record[meas::base] = low;
    record[meas::vmax] = record[meas::top] = low + height;
    record[meas::vpp] = record[meas::amplitude] = height;
    // Both edges are raised cosines, between 10 % and 90 % for this part of their length; the mean
    // of such an edge's square is 3/8.
    const double inner_part = 1.0 - 2.0 * std::acos(0.8) / std::numbers::pi;
    const double edge = train.rise / inner_part / train.period;
    record[meas::vmean] = low + height * train.duty;
    record[meas::vrms] = std::sqrt(low * low + 2.0 * low * height * train.duty +
                                   height * height * (train.duty - edge / 4.0));
    record[meas::period] = train.period * division_s;
    record[meas::frequency] = 1.0 / record[meas::period];
    record[meas::rise] = record[meas::fall] = train.rise * division_s;
    record[meas::pulse_high] = train.duty * record[meas::period];
    record[meas::pulse_low] = (1.0 - train.duty) * record[meas::period];
    return record;
}

/// The whole program on the simulated instrument, sweeping the pulse trains at one setting with
/// `noise_codes` of noise.
class MeasuredCell {
public:
    MeasuredCell(const TimeBaseRow& time_base, const VoltsCell& volts, double noise_codes = 1.0)
        : time_base_(time_base), volts_(volts) {
        simulation_.set_calibrated();
        simulation_.bench().sampler_noise_codes = noise_codes;
        for (std::size_t channel = 0; channel < pulse_trains.size(); ++channel) {
            simulation_.bench().sources.at(channel) = source(pulse_trains.at(channel));
        }
        if (!scope_.start()) {
            throw std::runtime_error("the program did not start");
        }
        FrontPanel& panel = scope_.panel();
        scope_.act([&panel] { panel.shyst.set_value(2); });
        choose_entry(scope_, panel.channel[ch1].vdiv, volts.text);
        choose_entry(scope_, panel.channel[ch2].vdiv, volts.text);
        choose_entry(scope_, panel.seltimediv, time_base.text);
        sweep_three_times();
    }

    /// The fourteen measurements of both channels with what they should be.
    [[nodiscard]] std::vector<KnownValue> values() const {
        std::vector<KnownValue> result;
        for (std::size_t channel = 0; channel < pulse_trains.size(); ++channel) {
            const MeasurementRecord truth =
                true_record(pulse_trains.at(channel), volts_.millivolts, division_s());
            const MeasurementRecord& record = scope_.parts().measurements.measresults.at(channel);
            for (const MeasurementLine& line : measurement_lines) {
                result.push_back({line.name, static_cast<int>(channel) + 1, truth.at(line.field),
                                  in_units(record, line), allowed(line, truth)});
            }
        }
        return result;
    }

private:
    [[nodiscard]] double division_s() const { return 64.0 / time_base_.samplerate; }

    [[nodiscard]] simulator::Source source(const PulseTrain& train) const {
        return {.kind = simulator::SignalKind::pulse,
                .amplitude_mvpp = (train.high - train.low) * volts_.millivolts,
                .frequency_hz = 1.0 / (train.period * division_s()),
                .offset_mv = (train.high + train.low) / 2.0 * volts_.millivolts,
                .rise_time_ps = train.rise * division_s() * 1e12,
                .duty = train.duty};
    }

    /// Ticks until the third sweep of each channel has been measured.
    void sweep_three_times() {
        constexpr std::ptrdiff_t sweeps = 3;
        constexpr std::ptrdiff_t pass_points = 640;
        // A pass is measured when it ends; a block when the one after it is asked for, CH1's first.
        const std::ptrdiff_t asked =
            time_base_.pointmode ? sweeps * 2 * pass_points : 2 * sweeps + 1;
        const auto code = time_base_.pointmode ? command::fetch_sample : command::start_sweep;
        const auto count = [&] {
            return std::count_if(log_.frames.begin(), log_.frames.end(),
                                 [code](const auto& frame) { return frame.command.code == code; });
        };
        constexpr int patience = 60;
        for (int tick = 0; count() < asked; ++tick) {
            if (tick == patience) {
                throw std::runtime_error("the sweeps do not come");
            }
            constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
            clock_.advance(interval - clock_.now() % interval);
            scope_.tick();
        }
    }

    /// A field of a record, out of columns.
    [[nodiscard]] double in_units(const MeasurementRecord& record,
                                  const MeasurementLine& line) const {
        const double samplerate = time_base_.samplerate;
        const double value = record.at(line.field);
        if (line.field == meas::frequency) {
            return value * samplerate;
        }
        return line.in_time ? value / samplerate : value;
    }

    /// 1 % of the screen's height for a level; two columns or 1 % for a time, whichever is more;
    /// and for the frequency what that makes of it.
    [[nodiscard]] double allowed(const MeasurementLine& line,
                                 const MeasurementRecord& truth) const {
        if (!line.in_time) {
            return 0.01 * 8.0 * volts_.millivolts;
        }
        const double columns = 2.0 / time_base_.samplerate;
        if (line.field == meas::frequency) {
            return truth.at(line.field) * std::max(0.01, columns / truth.at(meas::period));
        }
        return std::max(columns, 0.01 * truth.at(line.field));
    }

    const TimeBaseRow& time_base_;
    VoltsCell volts_;
    VirtualClock clock_;
    simulator::WireLog log_;
    simulator::Simulation simulation_{clock_, {}, 1, &log_};
    FakeMessageBoxes boxes_;
    FakeWindowMessages messages_;
    FakeFiles files_;
    FakeFileChoosers choosers_;
    FakePictureCoder coder_;
    Scope scope_{Machine{clock_, boxes_, messages_, simulation_.bridge(), files_, choosers_,
                         fake_places(), coder_}};
};

} // namespace kv408
