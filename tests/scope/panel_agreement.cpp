#include "scope/panel_agreement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "scope/differences.h"
#include "support/measurement_lines.h"
#include "support/time_base_lines.h"

namespace kv408 {
namespace {

// Plain rules in plain words; nothing here asks the code that is judged how to do it.

constexpr int plot_left = 32;
constexpr int plot_top = 20;

struct VoltsRule {
    std::string_view text;
    double millivolts; // a division
    double divisor;
};

constexpr std::array<VoltsRule, 6> volts_rules = {{{"0.5V", 500.0, 8000.0},
                                                   {"0.2V", 200.0, 3200.0},
                                                   {"0.1V", 100.0, 1600.0},
                                                   {"50mV", 50.0, 2400.0},
                                                   {"20mV", 20.0, 960.0},
                                                   {"10mV", 10.0, 480.0}}};

template <typename Rules>
const auto& rule_for(const Rules& rules, std::string_view text) {
    const auto* const found = std::find_if(rules.begin(), rules.end(),
                                           [text](const auto& rule) { return rule.text == text; });
    return found == rules.end() ? rules.front() : *found;
}

/// The nearest whole number; of two, the even one.
int nearest(double value) {
    return static_cast<int>(std::nearbyint(value));
}

/// `value` in three significant digits, cut, with its prefix.
std::string three_digits(double value) {
    // Binary fractions are taken for the decimal number that they stand for.
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%.11e", value);
    double number = std::strtod(text.data(), nullptr);
    if (std::abs(number) < 1e-12) {
        return "0.00";
    }
    constexpr std::string_view prefixes = "pnum kMG";
    std::size_t prefix = 4;
    for (; std::abs(number) < 1.0 && prefix > 0; --prefix) {
        number *= 1000.0;
    }
    for (; std::abs(number) >= 1000.0 && prefix + 1 < prefixes.size(); ++prefix) {
        number /= 1000.0;
    }
    std::snprintf(text.data(), text.size(), "%.6f", number);
    std::string cut(text.data());
    const std::size_t sign = number < 0.0 ? 1 : 0;
    // Three digits and the point among them, or the three digits before it.
    cut.resize(sign + (cut.find('.') == sign + 3 ? 3 : 4));
    if (prefixes[prefix] != ' ') {
        cut += prefixes[prefix];
    }
    return cut;
}

class PanelCheck {
public:
    PanelCheck(const Parts& parts, const PanelMoment& moment)
        : parts_(parts), panel_(parts.panel), moment_(moment),
          time_(rule_for(time_base_lines, panel_.seltimediv.text())) {}

    std::vector<std::string> differences() {
        check_time_base();
        for (std::size_t index = 0; index < 2; ++index) {
            check_channel(index);
        }
        check_trigger();
        check_tabs();
        check_cursors();
        check_wheel();
        check_measurements();
        check_silence();
        check_colours();
        return differences_.texts();
    }

private:
    [[nodiscard]] bool point_by_point() const { return time_.pointmode; }
    [[nodiscard]] bool cursors_on() const { return panel_.tabstrip3.selected() != 3; }

    void check_time_base() {
        differences_.compare("time/div label", panel_.tdivtext.caption(), panel_.seltimediv.text());
        differences_.compare("point mode", parts_.acquisition.pointmode, point_by_point());
        differences_.expect(
            "points per second",
            std::abs(parts_.time_base_state.samplerate * time_.division / 64e12 - 1.0) < 1e-12);
        differences_.expect("step", parts_.time_base_state.tbresolution == time_.tbresolution);
        differences_.compare("\"Filter Avg.\" over the plot", panel_.avglabel.visible(),
                             panel_.average.checked());
        if (!moment_.additional_typed) {
            check_trigger_time();
        }
    }

    void check_trigger_time() {
        const int column = panel_.ltp2.marked().value();
        const TextBox& box = panel_.delaytrttdis;
        // Of a text that is not taken the delay before it counts, which no control tells.
        if (box.faulty()) {
            differences_.expect("trigger-time marker is " + std::to_string(column) +
                                    ", should be on the plot",
                                column >= 0 && column <= 640);
            return;
        }
        const double additional = std::strtod(box.text().c_str(), nullptr);
        differences_.compare("trigger-time marker with \"" + box.text() + "\"", column,
                             nearest(std::clamp(-additional / time_.tbresolution, 0.0, 640.0)));
    }

    void check_silence() {
        const bool told = panel_.nodata.visible();
        const std::string& status = panel_.textstatus.text();
        differences_.compare("plot faint", panel_.picture1.dimmed(), told);
        if (told) {
            const std::string& line = panel_.nodata.caption();
            int seconds = 0;
            std::sscanf(line.c_str(), "No data for %d s", &seconds);
            differences_.expect("\"" + line + "\" is no whole number of seconds",
                                seconds >= 1 &&
                                    line == "No data for " + std::to_string(seconds) + " s");
            const bool any_on =
                panel_.channel[0].enable.checked() || panel_.channel[1].enable.checked();
            differences_.expect("\"No data\" where none are to come",
                                any_on && parts_.acquisition.acqrunning && status != "Stopped" &&
                                    parts_.acquisition.scopestate != "calibrationint");
            differences_.expect("\"No data\" while they come", !moment_.swept);
        }
        const bool no_trigger = status == "Waiting For TRIGGER";
        // While a set-up is sent it depends on what was before it.
        if (told || status != "Setup...") {
            differences_.compare("results faint", panel_.picmeasure.dimmed(), told || no_trigger);
        }
    }

    void check_channel(std::size_t index) {
        const ChannelControls& controls = panel_.channel.at(index);
        const ChannelState& state = parts_.channels.at(index);
        const std::string name = controls.label.caption();
        const VoltsRule& volts = rule_for(volts_rules, controls.vdiv.text());
        const int row = nearest((1024 - state.marker_wheel) / 2.0);
        differences_.compare(name + " V/div label", controls.vdivtext.caption(),
                             controls.vdiv.text() + (controls.inviatr.checked() ? " (VT)" : "") +
                                 (controls.invert.checked() ? " (inv)" : ""));
        differences_.compare(name + " V/div label shown", controls.vdivtext.visible(),
                             controls.enable.checked());
        differences_.compare(name + " marker shown", controls.text.visible(),
                             controls.enable.checked());
        differences_.compare(name + " marker's row", controls.text.marked().value_or(-1), row);
        differences_.compare(name + " offset", controls.ofset.caption(),
                             three_digits((256 - row) * volts.millivolts / 64.0 / 1000.0) + "V");
        differences_.compare(name + " delay box", controls.psofset.enabled(), !point_by_point());
        if (!moment_.delays_typed && !controls.psofset.faulty()) {
            const std::string& delay = controls.psofset.text();
            const bool none = delay == "0" || point_by_point();
            differences_.compare(name + " delay label", controls.hor_delay.caption(),
                                 none ? std::string() : "Delay:  " + delay + "ps");
        }
    }

    void check_trigger() {
        const auto source = static_cast<std::size_t>(panel_.trigsource.index());
        const ChannelControls& controls = panel_.channel.at(source);
        const VoltsRule& volts = rule_for(volts_rules, controls.vdiv.text());
        const int level = parts_.trigger_state.saved_trigpos.at(source) - 2048;
        const int halved = controls.inviatr.checked() ? 2 : 1;
        differences_.compare("trigger level", parts_.trigger_state.trigpos - 2048, level);
        differences_.compare("trigger level label", panel_.trlevelmv.caption(),
                             (level < 0 ? "" : " ") + std::to_string(level * halved) + "mV");
        differences_.compare("hysteresis", panel_.shyst.value(),
                             static_cast<int>(parts_.trigger_state.hyst.at(source)));
        const double above = level * 2.0 * (512.0 / volts.divisor) * halved;
        differences_.compare(
            "trigger marker's top", plot_top + panel_.trigertext.marked().value_or(-1) - 7,
            std::clamp(nearest(plot_top + controls.text.marked().value_or(-1) - 7 - above),
                       plot_top - 6, plot_top + 506));
    }

    void check_tabs() {
        std::string keys;
        std::string captions;
        for (const Tab& tab : panel_.tabstrip2.tabs()) {
            keys.append(tab.key).append(" ");
            captions.append(tab.caption).append(", ");
        }
        for (const auto& [key, wanted] :
             {std::pair{"CH1 ", true}, std::pair{"CH2 ", true}, std::pair{"TRIG ", true},
              std::pair{"HPOS ", !point_by_point()}, std::pair{"C1 C2 ", cursors_on()}}) {
            const auto place = keys.find(key);
            differences_.compare("tabs " + keys + "with " + key, place != std::string::npos,
                                 wanted);
            if (place != std::string::npos) {
                differences_.compare("a second " + std::string(key),
                                     keys.find(key, place + 1) != std::string::npos, false);
            }
        }
        for (const auto& [caption, wanted] : {std::pair{"Hor. Position, ", !point_by_point()},
                                              std::pair{"Cursor 1, Cursor 2, ", cursors_on()}}) {
            differences_.compare("tab " + std::string(caption),
                                 captions.find(caption) != std::string::npos, wanted);
        }
    }

    void check_cursors() {
        for (const Label* const label : {&panel_.centerfr, &panel_.lblc1, &panel_.lblc2}) {
            differences_.compare(label->name() + " shown", label->visible(), cursors_on());
        }
        const int mode = parts_.cursor_state.cursormode;
        const int kind = panel_.tabstrip3.selected();
        differences_.expect("cursor mode " + std::to_string(mode),
                            kind == 3 ? mode == 0 : mode == 2 * kind - 1 || mode == 2 * kind);
        differences_.compare("cursor channel", number_of(parts_.cursor_state.channel),
                             panel_.combocursorselect.index() + 1);
        if (kind == 1) {
            check_voltages();
        } else if (kind == 2) {
            check_times();
        }
    }

    void check_voltages() {
        const auto index = static_cast<std::size_t>(panel_.combocursorselect.index());
        const ChannelControls& controls = panel_.channel.at(index);
        const VoltsRule& volts = rule_for(volts_rules, controls.vdiv.text());
        const double a_row = volts.millivolts / 64.0 / 1000.0;
        // Rows a code; the zero line lies at the nearest whole code.
        const double rows = 512.0 / volts.divisor * (controls.inviatr.checked() ? 2.0 : 1.0);
        const int below = 256 - parts_.channels.at(index).pos;
        const double zero = (2048 - nearest(2048 - below / rows)) * rows;
        const auto& [first, second] = parts_.cursor_state.vpos;
        differences_.compare("centerfr", panel_.centerfr.caption(),
                             "Delta Cursor : " + three_digits(std::abs(second - first) * a_row) +
                                 "V");
        differences_.compare("lblC1", panel_.lblc1.caption(),
                             "C1: " + three_digits((256 - zero - first) * a_row) + "V");
        differences_.compare("lblC2", panel_.lblc2.caption(),
                             "C2: " + three_digits((256 - zero - second) * a_row) + "V");
    }

    void check_times() {
        const double a_column = time_.division * 1e-12 / 64.0;
        const auto& [first, second] = parts_.cursor_state.hpos;
        differences_.compare("centerfr", panel_.centerfr.caption(),
                             "Delta Cursor: " + three_digits(std::abs(second - first) * a_column) +
                                 "s");
        differences_.compare("lblC1", panel_.lblc1.caption(),
                             "C1: " + three_digits(first * a_column) + "s");
        differences_.compare("lblC2", panel_.lblc2.caption(),
                             "C2: " + three_digits(second * a_column) + "s");
    }

    void check_wheel() {
        const std::string key = panel_.tabstrip2.selected_key();
        const bool delay = key == "HPOS";
        differences_.compare("wheel's least", panel_.slider1.Min(), delay ? -32768 : 0);
        differences_.compare("wheel's most", panel_.slider1.Max(), delay ? 32767 : 1024);
        differences_.compare("wheel's step", panel_.slider1.SlideStep(),
                             delay ? time_.wheel_step : (key == "TRIG" ? 1 : 4));
        const CursorState& cursors = parts_.cursor_state;
        if (key == "TRIG") {
            differences_.compare("level under the wheel", panel_.slider1.Value(),
                                 parts_.trigger_state.trigwheel);
        }
        for (std::size_t index = 0; index < 2; ++index) {
            if (key == "CH" + std::to_string(index + 1)) {
                differences_.compare("position under the wheel", panel_.slider1.Value(),
                                     parts_.channels.at(index).marker_wheel);
            }
            if (key == "C" + std::to_string(index + 1)) {
                differences_.compare("active cursor",
                                     (cursors.cursormode - 1) % 2 == static_cast<int>(index), true);
                // Rows lie two wheel steps apart, and the end of the columns before the wheel's.
                const bool in_time = panel_.tabstrip3.selected() == 2;
                const int value = panel_.slider1.Value();
                const int place = in_time ? std::min(value, 640) : nearest((1024 - value) / 2.0);
                differences_.compare(
                    "cursor under the wheel", place,
                    static_cast<int>(in_time ? cursors.hpos.at(index) : cursors.vpos.at(index)));
            }
        }
    }

    void check_measurements() {
        int annotated = 0;
        for (const MeasurementControls& slot : panel_.measurement) {
            annotated += slot.annotate.checked() ? 1 : 0;
        }
        differences_.expect("more than one annotation", annotated <= 1);
        if (!panel_.check1.checked()) {
            differences_.compare("results shown", panel_.picmeasure.visible(), false);
            return;
        }
        if (!moment_.swept) {
            return;
        }
        differences_.compare("results shown", panel_.picmeasure.visible(), true);
        for (const MeasurementControls& slot : panel_.measurement) {
            check_slot(slot);
        }
    }

    void check_slot(const MeasurementControls& slot) {
        const auto* const rule = std::find_if(
            measurement_lines.begin(), measurement_lines.end(),
            [&slot](const MeasurementLine& entry) { return entry.name == slot.selector.text(); });
        const bool any = rule != measurement_lines.end();
        const std::string& name = slot.selector.name();
        differences_.compare(name + " label", slot.label.caption(),
                             std::string(any ? rule->label : ""));
        differences_.compare(name + " mark", slot.mark.caption(),
                             std::string(any && slot.annotate.checked() ? "*" : ""));
        const std::array results = {&slot.ch1, &slot.ch2};
        for (std::size_t index = 0; any && index < 2; ++index) {
            const std::string& text = parts_.measurements.meastexts.at(index).at(rule->field);
            const bool enabled = panel_.channel.at(index).enable.checked();
            const std::string shown = enabled ? (text.empty() ? "---" : text) : "";
            differences_.compare(name + " result", results.at(index)->caption(), shown + " ");
        }
    }

    void expect_colour(const Control& control, std::optional<Colour> is, Colour should_be) {
        differences_.expect(control.name() + " has another colour", is == should_be);
    }

    void check_colours() {
        const ColourTable& colours = parts_.colours;
        for (std::size_t index = 0; index < 2; ++index) {
            const ChannelControls& controls = panel_.channel.at(index);
            const Colour colour = index == 0 ? colours.ch1 : colours.ch2;
            for (const Label* const label : std::initializer_list<const Label*>{
                     &controls.text, &controls.label, &controls.vdivtext, &controls.hor_delay}) {
                expect_colour(*label, label->fore_colour(), colour);
            }
            expect_colour(controls.vdiv, controls.vdiv.fore_colour(), colour);
            expect_colour(controls.vdiv, controls.vdiv.back_colour(), colours.text_background);
            expect_colour(controls.text, controls.text.back_colour(), colours.text_background);
        }
        expect_colour(panel_.picture1, panel_.picture1.back_colour(), colours.background);
        expect_colour(panel_.picmeasure, panel_.picmeasure.back_colour(), colours.background);
        expect_colour(panel_.seltimediv, panel_.seltimediv.fore_colour(), colours.normal_text);
        expect_colour(panel_.tdivtext, panel_.tdivtext.fore_colour(), colours.normal_text);
        expect_colour(panel_.trigertext, panel_.trigertext.fore_colour(), colours.normal_text);
    }

    const Parts& parts_;
    const FrontPanel& panel_;
    PanelMoment moment_;
    const TimeBaseLine& time_;
    Differences differences_;
};

} // namespace

std::vector<std::string> panel_differences(const Parts& parts, const PanelMoment& moment) {
    return PanelCheck(parts, moment).differences();
}

} // namespace kv408
