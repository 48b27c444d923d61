#pragma once

#include "simulator/faults.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kv408::simulator {

/// Shape of a signal. All start their period at time 0 of the simulation.
enum class SignalKind {
    none,       ///< 0 V
    sine,       ///< rises through its middle at the start of the period
    square,     ///< half of the period high; the rising edge's middle is the start of the period
    pulse,      ///< like `square`, high for `duty` of the period
    random_data ///< repeating pseudo-random pattern of bits, one bit per period
};

/// One signal generator.
struct Source {
    SignalKind kind = SignalKind::none;
    double amplitude_mvpp = 400.0; ///< lowest to highest value, millivolts, 0..
    double frequency_hz = 10.0e6;  ///< periods (or bits) per second, above 0, else a steady offset
    double offset_mv = 0.0;        ///< middle between lowest and highest value, millivolts
    double rise_time_ps = 800.0;   ///< 10 % to 90 % of each edge but a sine's, picoseconds, 0..
    double duty = 0.5;             ///< part of the period that a pulse is high, 0..1 without ends
    double noise_mv = 0.0;         ///< white, millivolts rms
    double jitter_ps = 0.0;        ///< random displacement of each edge in time, picoseconds rms
    double sine_jitter_ps = 0.0;   ///< displacement that comes and goes as a sine, picoseconds peak
    double sine_jitter_hz = 1.0e6; ///< frequency of that sine, hertz, above 0
    int pattern_bits = 7;          ///< random data repeat after 2^this - 1 bits: 7, 15 or 31
    /// By how much random data are longer high than low, bit by bit, picoseconds; may be negative.
    double distortion_ps = 0.0;
    /// Time constant of the cable from random data to the sampler, which has one pole,
    /// picoseconds; 0 none. Longer than three bits it counts as three.
    double cable_ps = 0.0;

    bool operator==(const Source&) const = default;
};

/// What is connected to a channel's sampler input.
enum class SamplerRoute {
    disconnected,   ///< 0 V
    own_signal,     ///< signal 1 at CH1, signal 2 at CH2
    trigger_output, ///< cable from the trigger output, which repeats the selected trigger input
    /// The signal at the trigger input of the same number, passed on inside. This path divides it
    /// by two, for the sampler and for the trigger.
    via_trigger
};

/// What is connected to a trigger input. Each generator has a clock output beside its signal.
enum class TriggerRoute { disconnected, signal_1, signal_2, clock_1, clock_2 };

/// Gain range as an index: the order of the calibration record.
inline constexpr std::size_t low_range = 0;
inline constexpr std::size_t high_range = 1;

/// The sampler's own errors, which the calibration record corrects. First index channel (CH1 is
/// 0), second index `low_range` or `high_range`. The start values are an exact instrument.
struct HardwareErrors {
    std::array<std::array<double, 2>, 2> gain = {{{1.0, 1.0}, {1.0, 1.0}}};   ///< factor, unity 1
    std::array<std::array<double, 2>, 2> offset = {{{0.0, 0.0}, {0.0, 0.0}}}; ///< codes
    double time_scale = 1.0; ///< actual over nominal delay, unity 1
};

/// One bridge on the USB bus.
struct Device {
    std::string serial;  ///< serial-number string, any bytes, at most 256
    bool opens = true;   ///< false: opening it fails
    bool answers = true; ///< an instrument is behind it
};

/// Everything outside the program: signals, cables, devices, faults. Plain values that may be
/// read and changed at any time between two operations of the bridge.
struct TestBench {
    /// Signal 1: 10 MHz, 400 mVpp sine. Signal 2: 20 MHz, 300 mVpp pulse locked to it.
    std::array<Source, 2> sources = {
        {{SignalKind::sine, 400.0, 10.0e6, 0.0, 0.0, 0.5, 0.5, 1.0},
         {SignalKind::pulse, 300.0, 20.0e6, 0.0, 800.0, 0.4, 0.5, 1.0}}};
    /// Sampler inputs of CH1 and CH2.
    std::array<SamplerRoute, 2> samplers = {SamplerRoute::own_signal, SamplerRoute::own_signal};
    /// Trigger inputs TRIG1 and TRIG2.
    std::array<TriggerRoute, 2> triggers = {TriggerRoute::signal_1, TriggerRoute::signal_2};
    double sampler_noise_codes = 1.0; ///< noise of one normal conversion, codes rms
    HardwareErrors errors = {};       ///< of the sampler
    std::vector<Device> devices = {{"lm4rxa-SIM00001"}}; ///< in the order of the bridge's list
    Faults faults = {};                                  ///< what is broken now
    std::optional<PlannedFaults> planned_faults = {};    ///< what will break
};

/// Takes noise and jitter, random and sinusoidal, out of all signals and of the sampler of `bench`.
void silence(TestBench& bench);

/// The clock output of `source`: a square of 400 mVpp around 0 V without noise of its own, which
/// rises where each period, or bit of random data, begins. It has the source's jitter.
[[nodiscard]] Source clock_of(const Source& source);

/// What an input gets.
struct InputSignal {
    const Source* generator = nullptr; ///< where it comes from; null: nothing is connected
    Source signal = {};                ///< the generator's signal, or its clock
    double factor = 1.0;               ///< part of `signal` that arrives, no unit
};

/// What is at trigger input `input` (0 for TRIG1).
[[nodiscard]] InputSignal trigger_signal(const TestBench& bench, std::size_t input);

/// What arrives at the sampler input of `channel` (0 for CH1) while the instrument triggers on
/// `selected_trigger` (0 for TRIG1).
[[nodiscard]] InputSignal sampler_input(const TestBench& bench, std::size_t channel,
                                        std::size_t selected_trigger);

} // namespace kv408::simulator
