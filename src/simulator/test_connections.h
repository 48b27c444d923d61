#pragma once

#include <optional>

#include "simulator/test_bench.h"

namespace kv408::simulator {

/// What a person connects to the instrument for a calibration, for an eye, or as it was delivered.
enum class TestConnection {
    delivery,       ///< the signals and cables that every bench starts with
    sine_200mv_ch1, ///< 200 mVpp, 10 MHz sine at the trigger inputs, CH1 at the trigger output
    sine_200mv_ch2, ///< the same, CH2 at the trigger output
    sine_1v_ch1,    ///< 1 Vpp, 10 MHz sine at the trigger inputs, CH1 at the trigger output
    sine_1v_ch2,    ///< the same, CH2 at the trigger output
    inputs_open,    ///< a trigger as before, both sampler inputs open
    // Random data of 12.5 Mbit/s at CH1, and their clock, which is clean, at both trigger inputs.
    eye_clean,        ///< with hardly any noise and jitter
    eye_jitter_noise, ///< with noise, random and sinusoidal jitter and distortion
    eye_closing       ///< through a cable that takes three quarters of a bit
};

/// Connects `connection`: sets signal 1, which for a calibration is then a clean generator without
/// noise and jitter, for an eye signal 2 as well, and the cables. Errors and faults stay.
void connect(TestBench& bench, TestConnection connection);

/// The connection that the signals and cables of `bench` match; none where the user has set others.
[[nodiscard]] std::optional<TestConnection> connected(const TestBench& bench);

} // namespace kv408::simulator
