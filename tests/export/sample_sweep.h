#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "export/exported_sweep.h"

namespace kv408 {

/// A block of both channels at 20ns/div: point k has the code 2000 + k, half a millivolt each; on
/// CH2 inverted and at `delay` picoseconds.
inline Sweep block_sweep(double delay = 0.0) {
    constexpr int points = 650;
    Sweep sweep = {.number = 7,
                   .complete = true,
                   .came = {true, true},
                   .time = std::chrono::sys_days(std::chrono::year(2026) / 11 / 22) +
                           std::chrono::hours(12) + std::chrono::minutes(5) +
                           std::chrono::milliseconds(9250),
                   .mode = SweepMode::block,
                   .channel = {}};
    for (std::size_t channel = 0; channel < 2; ++channel) {
        ChannelSweep part;
        part.whole = true;
        part.time_per_point = 313.0;
        part.mv_per_division = channel == 0 ? 100.0 : 200.0;
        part.position = channel == 0 ? 2.5 : -1.0;
        part.delay = channel == 0 ? 0.0 : delay;
        part.first_time = part.delay;
        part.trigger = {
            .source = ch2, .positive = false, .level_mv = 12.0, .hysteresis = 10, .timeout = 1000};
        for (int point = 0; point < points; ++point) {
            part.codes.push_back(static_cast<std::int16_t>(2000 + point));
            part.mv.push_back((channel == 0 ? 1.0 : -1.0) * (2000 + point - 2048) / 2.0);
        }
        sweep.channel.at(channel) = std::make_shared<const ChannelSweep>(part);
    }
    return sweep;
}

/// A pass of CH2 at 500ns/div: point k, from 1, has k sixths of a millivolt.
inline Sweep pass_sweep() {
    constexpr int points = 640;
    Sweep sweep = block_sweep();
    sweep.mode = SweepMode::point;
    sweep.came = {false, true};
    ChannelSweep part = *sweep.channel[1];
    part.time_per_point = 7812.0;
    part.first_time = 7812.0;
    part.columns_per_second = 128e6;
    part.averaged = true;
    part.mv.clear();
    for (int point = 1; point <= points; ++point) {
        part.mv.push_back(point / 6.0);
    }
    sweep.channel[1] = std::make_shared<const ChannelSweep>(part);
    return sweep;
}

inline const ExportOrigin sample_origin = {
    .version = "1.6.0", .serial = "lm4rxa-SIM00001", .utc_offset = std::chrono::minutes(60)};

/// `sweep` with the channels that came.
inline ExportedSweep exported(const Sweep& sweep) {
    return exported_sweep(sweep, {true, true}, sample_origin);
}

} // namespace kv408
