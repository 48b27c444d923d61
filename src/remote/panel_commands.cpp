#include <algorithm>
#include <array>

#include "panel/delay_text.h"
#include "panel/time_base.h"
#include "remote/panel_settings.h"
#include "remote/tree.h"
#include "scope/parts.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> trigger_sources{"TRIG1", "TRIG2"};
constexpr std::array<std::string_view, 2> trigger_slopes{"POSitive", "NEGative"};

// Seconds per division, in the order of the list.
std::vector<double> times_per_division() {
    std::vector<double> times;
    for (const TimeBaseRow& row : time_base_rows()) {
        times.insert(times.begin(), plot::division / row.samplerate);
    }
    return times;
}

// Volts per division, in the order of the list.
const std::vector<double> volts_per_division{0.5, 0.2, 0.1, 0.05, 0.02, 0.01};

// Wheel steps for one division, and the wheel's value for the centre.
constexpr double wheel_per_division = 2.0 * plot::division;
constexpr double wheel_at_centre = plot::wheel_span / 2.0;

// Divisions.
constexpr NumberRange position_range{-4.0, 4.0, 0.0};

PanelSettings::Turned channel_position() {
    return {
        .tab = [](const Parts&,
                  const Call& call) { return "CH" + std::to_string(call.suffixes.front()); },
        .range = [](const Parts&, const Call&) { return position_range; },
        .wheel = [](const Parts&, const Call&,
                    double divisions) { return wheel_at_centre + divisions * wheel_per_division; },
        .get =
            [](const Parts& parts, const Call& call) {
                return (parts.channels.at(channel_of(call)).marker_wheel - wheel_at_centre) /
                       wheel_per_division;
            },
        .told = range_text(position_range)};
}

// Level codes are millivolts behind what "Input Via Trigger" takes off.
double volts_per_code(const Parts& parts) {
    return parts.channels.at(parts.on_panel.trigger.source()).vtfactor / millivolts_per_volt;
}

PanelSettings::Turned trigger_level() {
    return {.tab = [](const Parts&, const Call&) { return std::string(adjust_key::trigger); },
            .range =
                [](const Parts& parts, const Call&) {
                    constexpr double codes = plot::wheel_span * codes_per_wheel_step;
                    const double volts = volts_per_code(parts);
                    return NumberRange{-zero_volt_code * volts, (codes - zero_volt_code) * volts,
                                       0.0, Quantity::volts};
                },
            .wheel =
                [](const Parts& parts, const Call&, double volts) {
                    return (volts / volts_per_code(parts) + zero_volt_code) / codes_per_wheel_step;
                },
            .get =
                [](const Parts& parts, const Call&) {
                    return (parts.trigger_state.trigpos - zero_volt_code) * volts_per_code(parts);
                },
            .told = "volts, at first 0 V"};
}

std::vector<Command> time_base_commands(const PanelSettings& settings) {
    constexpr std::size_t twenty_nanoseconds = 11;
    const NumberRange delay{0, longest_delay / picoseconds_per_second, 0, Quantity::seconds};
    constexpr double longest_additional = 2147483647;
    const NumberRange additional{-longest_additional / picoseconds_per_second,
                                 longest_additional / picoseconds_per_second, 0, Quantity::seconds};
    return {
        settings.step("TIMebase:SCALe", control(&FrontPanel::seltimediv), times_per_division(),
                      Quantity::seconds, twenty_nanoseconds),
        settings.type("TIMebase:DELay<n>", control(&ChannelControls::psofset), delay,
                      picoseconds_per_second,
                      [](const Parts& parts, const Call& call) {
                          const Channel channel = channel_of(call);
                          return delay_of(parts.panel.channel.at(channel).psofset,
                                          parts.channels.at(channel)) /
                                 picoseconds_per_second;
                      }),
        settings.check("TIMebase:DELay<n>:WHEel", control(&ChannelControls::slenps)),
        settings.type("TIMebase:DELay:ADDitional", control(&FrontPanel::delaytrttdis), additional,
                      picoseconds_per_second,
                      [](const Parts& parts, const Call&) {
                          const std::string& text = parts.panel.delaytrttdis.text();
                          return quantity_in(text, picosecond_units).value_or(0.0) /
                                 picoseconds_per_second;
                      }),
    };
}

std::vector<Command> channel_commands(const PanelSettings& settings) {
    constexpr std::size_t tenth_of_a_volt = 2;
    return {
        settings.check("CHANnel<n>:DISPlay", control(&ChannelControls::enable)),
        settings.step("CHANnel<n>:SCALe", control(&ChannelControls::vdiv), volts_per_division,
                      Quantity::volts, tenth_of_a_volt),
        settings.turn("CHANnel<n>:POSition", channel_position()),
        settings.check("CHANnel<n>:INVert", control(&ChannelControls::invert)),
        settings.check("CHANnel<n>:VTRigger", control(&ChannelControls::inviatr)),
    };
}

std::vector<Command> trigger_commands(const PanelSettings& settings) {
    const NumberRange hysteresis{0, 255, 10};
    const NumberRange time_out{10, 65535, 1000, Quantity::microseconds};
    return {
        settings.choice("TRIGger:SOURce", control(&FrontPanel::trigsource), trigger_sources),
        settings.choice("TRIGger:SLOPe", control(&FrontPanel::trigeredge), trigger_slopes),
        settings.turn("TRIGger:LEVel", trigger_level()),
        settings.press("TRIGger:ZERO", &FrontPanel::trzero),
        settings.slide("TRIGger:HYSTeresis", control(&FrontPanel::shyst), hysteresis),
        settings.type("TRIGger:TIMeout", control(&FrontPanel::trtout), time_out, 1.0,
                      [](const Parts& parts, const Call&) {
                          const std::string& text = parts.panel.trtout.text();
                          return quantity_in(text, microsecond_units).value_or(0.0);
                      }),
    };
}

} // namespace

std::vector<Command> panel_commands(Instrument& instrument) {
    const PanelSettings settings(instrument);
    std::vector<Command> all = time_base_commands(settings);
    for (const auto& more : {channel_commands(settings), trigger_commands(settings)}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

} // namespace kv408
