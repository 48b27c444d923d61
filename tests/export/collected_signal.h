#pragma once

#include <cmath>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "analysis/synthetic.h"
#include "export/density_dialog.h"
#include "export/told_values.h"
#include "panel/front_panel.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// A density that is fed with made-up sweeps: 640 points of 10 ps from 1000 ps on, a quarter of a
/// millivolt per code, -512 to 511 mV.
struct CollectedSignal {
    using Millivolts = std::function<double(double)>;

    CollectedSignal() {
        for (ChannelControls& channel : panel.channel) {
            channel.enable.put_checked(true);
        }
    }

    /// Takes `sweeps` sweeps of what `millivolts(time)` gives, one each 100 ms; with another
    /// trigger level each is another set-up.
    void take(int sweeps, const Millivolts& millivolts, Channel channel = ch1,
              double level_mv = 0.0) {
        const Collected like = synthetic::nothing();
        for (int count = 0; count < sweeps; ++count) {
            ChannelSweep part;
            part.whole = true;
            part.first_time = like.with.first_time;
            part.time_per_point = like.with.time_per_point;
            part.conversion = like.with.conversion;
            part.trigger.level_mv = level_mv;
            for (int point = 0; point < like.counts.points(); ++point) {
                const double code = code_at(like.with, millivolts(time_of(like.with, point)));
                part.codes.push_back(
                    static_cast<std::int16_t>(std::clamp(std::round(code), 0.0, 4095.0)));
            }
            Sweep sweep;
            sweep.number = ++number;
            sweep.came.at(channel) = true;
            sweep.channel = {std::make_shared<const ChannelSweep>(),
                             std::make_shared<const ChannelSweep>()};
            sweep.channel.at(channel) = std::make_shared<const ChannelSweep>(part);
            clock.advance(std::chrono::milliseconds(100));
            density.sweep_finished(sweep);
        }
    }

    VirtualClock clock;
    FakeMessageBoxes boxes;
    FakeFiles files;
    FakeFileChoosers choosers;
    FrontPanel panel;
    std::uint64_t number = 0;
    DensityDialog density{panel,
                          {.clock = clock, .boxes = boxes, .files = files, .choosers = choosers},
                          {.show = [](Channel, const Collected*) {},
                           .add = [](Channel, std::span<const std::int16_t>, std::uint32_t) {},
                           .colour = [](std::size_t) {},
                           .draw = [] {}}};
};

/// The number of `name` among `values`; not a number where there is none.
inline double number_of_told(std::span<const ToldValue> values, std::string_view name) {
    for (const ToldValue& told : values) {
        if (told.name == name && told.value) {
            return *told.value;
        }
    }
    return NAN;
}

/// The line of `values` beside `name` in `names`.
inline std::string line_beside(const Label& names, const Label& values, std::string_view name) {
    const auto lines = [](const std::string& text) {
        std::vector<std::string> found(1);
        for (const char letter : text) {
            if (letter == '\n') {
                found.emplace_back();
            } else {
                found.back() += letter;
            }
        }
        return found;
    };
    const auto all = lines(names.caption());
    const auto found = std::find(all.begin(), all.end(), name);
    return found == all.end()
               ? "no such name"
               : lines(values.caption()).at(static_cast<std::size_t>(found - all.begin()));
}

} // namespace kv408
