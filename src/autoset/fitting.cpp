#include "autoset/fitting.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "panel/delay_text.h"
#include "panel/time_base.h"
#include "panel/vertical.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/samples.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr double divisions_across = 10.0;
constexpr double half_screen = 4.0; // divisions above and below the centre

double picoseconds_per_division(const TimeBaseRow& row) {
    return plot::division / row.samplerate * picoseconds_per_second;
}

} // namespace

VerticalFit fit_vertical(const SignalLook& look, const Place& place) {
    VerticalFit fit;
    std::vector<std::string> entries = volts_per_division();
    std::reverse(entries.begin(), entries.end());
    for (std::string& entry : entries) {
        const double mv_per_division = vertical_scale(entry)->mv_per_division;
        const double zero = place.centre - look.middle() / mv_per_division;
        fit.vdiv = std::move(entry);
        fit.wheel =
            round_to_int32(plot::wheel_span / 2.0 +
                           std::clamp(zero, -half_screen, half_screen) * 2.0 * plot::division);
        if (look.height() <= place.height * mv_per_division && std::abs(zero) <= half_screen) {
            break;
        }
    }
    return fit;
}

TimeFit fit_period(double picoseconds) {
    constexpr double periods = 1.98; // what was measured may be a little too long
    TimeFit fit;
    for (const TimeBaseRow& row : time_base_rows()) {
        fit.time_base = row.text;
        if (divisions_across * picoseconds_per_division(row) >= periods * picoseconds) {
            break;
        }
    }
    return fit;
}

TimeFit fit_edge(double picoseconds) {
    const auto rows = time_base_rows();
    const TimeBaseRow* best = &rows.front();
    double least = 0.0;
    TimeFit fit;
    for (const TimeBaseRow& row : rows) {
        const double half = divisions_across / 2.0 * picoseconds_per_division(row);
        const double wanted = picoseconds - half;
        const double delay =
            row.pointmode ? 0.0 : std::clamp(wanted, 0.0, static_cast<double>(longest_delay));
        // Of those that are equally good the slowest, which shows most of what is around it.
        const double off = std::abs(wanted - delay) / half;
        if (&row == best || off <= least) {
            least = off;
            fit = {.time_base = std::string(row.text), .delay = round_to_int32(delay)};
        }
    }
    return fit;
}

LevelFit fit_level(const SignalLook& look, double division) {
    constexpr double most_hysteresis = 20.0;
    const double level = look.middle() / division;
    const double step = codes_per_wheel_step;
    const double wheel =
        std::clamp(std::round((level + zero_volt_code) / step), 0.0, double{plot::wheel_span});
    // To either side there is to be twice as much room as the hysteresis takes.
    const double above_low = wheel * step - zero_volt_code - look.low / division;
    const double below_high = look.high / division - (wheel * step - zero_volt_code);
    const double room = std::min(above_low, below_high);
    return {.wheel = round_to_int32(wheel),
            .hysteresis = static_cast<std::int32_t>(std::clamp(room / 2.0, 0.0, most_hysteresis))};
}

} // namespace kv408
