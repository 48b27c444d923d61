#pragma once

// What Autoset is tried on, and what it must have made of it.

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "autoset/autoset.h"
#include "panel/time_base.h"
#include "panel/vertical.h"
#include "scope/program.h"
#include "state/units.h"

namespace kv408 {

/// A signal at CH1 and TRIG1.
struct AutosetCase {
    simulator::SignalKind kind = simulator::SignalKind::sine;
    double millivolts = 0.0; ///< peak to peak
    double hertz = 0.0;      ///< periods, or bits, per second
    double offset = 0.0;     ///< of its middle from 0 V, millivolts
    double noise = 0.0;      ///< rms, of its height
};

/// Names of the kinds, as `simulator::SignalKind` counts them.
inline constexpr std::array<std::string_view, 5> autoset_kinds = {"none", "sine", "square",
                                                                  "pulse 30 %", "data"};

/// Where the middle of a signal of `height` millivolts is put, millivolts: around 0 V, across 0 V,
/// beside it, and where only the highest level that a channel can show triggers it. What fits into
/// the instrument's scale, which ends at 1024 mV, is kept in there; what does not is 300 mV off at
/// most.
inline std::vector<double> autoset_offsets(double height) {
    constexpr double room = 1000.0;
    constexpr double far = 480.0;
    const double most = std::max(room - height / 2.0, 300.0);
    std::vector<double> offsets = {0.0, std::min(0.4 * height, most),
                                   std::max(-0.75 * height, -most)};
    if (height >= 100.0 && far <= most && far > height) {
        offsets.insert(offsets.end(), {far, -far});
    }
    return offsets;
}

/// All of them: kinds by heights, frequencies, offsets and noise.
inline std::vector<AutosetCase> autoset_cases() {
    using simulator::SignalKind;
    std::vector<AutosetCase> all;
    for (const SignalKind kind :
         {SignalKind::sine, SignalKind::square, SignalKind::pulse, SignalKind::random_data}) {
        for (const double height :
             {5.0, 10.0, 20.0, 50.0, 100.0, 200.0, 410.0, 1000.0, 2000.0, 3000.0}) {
            for (const double hertz : {10e3, 70e3, 1e6, 10e6, 120e6, 1e9, 4e9, 15e9}) {
                for (const double offset : autoset_offsets(height)) {
                    for (const double noise : {0.0, 0.03}) {
                        all.push_back({kind, height, hertz, offset, noise});
                    }
                }
            }
        }
    }
    return all;
}

inline std::string name_of(const AutosetCase& tried) {
    std::string name(autoset_kinds.at(static_cast<std::size_t>(tried.kind)));
    const auto add = [&name](double value, const char* unit) {
        std::string text = std::to_string(value);
        text.erase(text.find_last_not_of('0') + 1);
        name.append(", ").append(text, 0, text.back() == '.' ? text.size() - 1 : text.size());
        name.append(unit);
    };
    add(tried.millivolts, " mVpp");
    add(tried.hertz / 1e6, " MHz");
    add(tried.offset, " mV offset");
    add(100.0 * tried.noise, " % noise");
    return name;
}

/// The program on the bench that has nothing but the signal of a case.
struct AutosetBench : Program {
    explicit AutosetBench(const AutosetCase& tried) : Program(false), tried_(tried) {
        constexpr double usual_edge = 800.0; // picoseconds
        const double period = picoseconds_per_second / tried.hertz;
        simulator::TestBench& bench = simulation.bench();
        bench.sources[0] = {};
        bench.sources[0].kind = tried.kind;
        bench.sources[0].amplitude_mvpp = tried.millivolts;
        bench.sources[0].frequency_hz = tried.hertz;
        bench.sources[0].offset_mv = tried.offset;
        bench.sources[0].noise_mv = tried.noise * tried.millivolts;
        bench.sources[0].rise_time_ps = std::min(usual_edge, 0.2 * period);
        bench.sources[0].jitter_ps = std::min(1.0, 0.01 * period);
        bench.sources[0].duty = 0.3;
        bench.sources[1].kind = simulator::SignalKind::none;
        bench.triggers = {simulator::TriggerRoute::signal_1, simulator::TriggerRoute::disconnected};
        scope.start();
        ticks(10);
    }

    /// Runs it to its end; the seconds that it took.
    double run() {
        const auto began = clock.now();
        scope.act([this] { scope.autoset().controls().mnuautoset.click(); });
        while (scope.autoset().under_way()) {
            ticks(1);
        }
        return std::chrono::duration<double>(clock.now() - began).count();
    }

    /// What is wrong with what it has made; empty where all is right.
    std::string fault(double seconds) {
        Autoset& autoset = scope.autoset();
        if (autoset.outcome() != Autoset::Outcome::found) {
            return autoset.line();
        }
        const SignalLook& look = autoset.found()[ch1].look;
        if (autoset.source() != ch1 || autoset.found()[ch2].on) {
            return "took it for another signal: " + autoset.line();
        }
        if (!right_height(look)) {
            return "height: " + autoset.line() + " at " + channel(0).vdiv.text();
        }
        if (!right_time(look)) {
            return "time: " + autoset.line() + " at " + scope.panel().seltimediv.text();
        }
        if (seconds > 6.0 + 0.001) {
            return "took " + std::to_string(seconds) + " s";
        }
        const auto before = scope.sweeps().last_complete();
        ticks(10);
        if (scope.sweeps().last_complete() == before) {
            return "does not trigger: " + autoset.line();
        }
        return on_screen() ? "" : "not on the screen: " + autoset.line();
    }

private:
    /// Height within 10 % and 1 mV, and V/div the finest with room for it, where the true height
    /// is not within that of where the choice changes.
    bool right_height(const SignalLook& look) {
        constexpr double tolerance = 0.1;
        constexpr double scale_end = 1023.0; // millivolts of the coarse range
        const double high = tried_.offset + tried_.millivolts / 2.0;
        const double low = tried_.offset - tried_.millivolts / 2.0;
        const double height = std::min(high, scale_end) - std::max(low, -scale_end);
        const double off = tolerance * height + 1.0;
        const bool beyond = high > scale_end || low < -scale_end;
        if (std::abs(look.height() - height) > off || (beyond && !look.clipped)) {
            return false;
        }
        const double shown = vertical_scale(channel(0).vdiv.text())->mv_per_division;
        const double top = std::min(high, scale_end);
        const double bottom = std::max(low, -scale_end);
        return shown >= finest(bottom + off / 2.0, top - off / 2.0) &&
               shown <= finest(bottom - off / 2.0, top + off / 2.0);
    }

    /// The finest V/div, millivolts, at which what lies between `bottom` and `top` is at most six
    /// and a half divisions high, and the zero line need not leave the screen to have it in the
    /// middle; the coarsest where none is.
    static double finest(double bottom, double top) {
        constexpr double most_divisions = 6.5;
        constexpr double half_screen_divisions = 4.0;
        constexpr std::array<double, 6> all = {10.0, 20.0, 50.0, 100.0, 200.0, 500.0};
        for (const double candidate : all) {
            if (top - bottom <= most_divisions * candidate &&
                std::abs(top + bottom) / 2.0 <= half_screen_divisions * candidate) {
                return candidate;
            }
        }
        return all.back();
    }

    /// The whole trace of the last sweep lies on the screen, and its middle within a division of
    /// the screen's.
    bool on_screen() {
        constexpr double half_screen_divisions = 4.0;
        const ChannelSweep& part = *scope.sweeps().last_complete()->channel[ch1];
        const auto [lowest, highest] = std::minmax_element(part.mv.begin(), part.mv.end());
        const double bottom = part.position + *lowest / part.mv_per_division;
        const double top = part.position + *highest / part.mv_per_division;
        return bottom >= -half_screen_divisions && top <= half_screen_divisions &&
               std::abs(top + bottom) / 2.0 <= 1.0;
    }

    /// Two to five periods of the right length; of data the next bit's edge where steps of 2.5 and
    /// no delay in passes can bring it.
    bool right_time(const SignalLook& look) {
        constexpr double tolerance = 0.02;
        const double period = picoseconds_per_second / tried_.hertz;
        const double across = 10.0 * plot::division /
                              selected_time_base(scope.panel())->samplerate *
                              picoseconds_per_second;
        if (tried_.kind == simulator::SignalKind::random_data) {
            const double place = (period - scope.parts().channels[ch1].delay) / across;
            // The first bit of more than 12 Gbit/s ends on the left of any screen.
            const bool fastest = scope.panel().seltimediv.text() == "25ps/div";
            return !look.period && (place > 0.28 || fastest) && place < 0.72;
        }
        const double periods = across / period;
        return look.period && std::abs(*look.period - period) <= tolerance * period &&
               periods > 2.0 * (1.0 - tolerance) && periods < 5.0 * (1.0 + tolerance);
    }

    AutosetCase tried_;
};

} // namespace kv408
