#include "calibration/guided_calibration.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "acquisition/status.h"
#include "calibration/corrections.h"
#include "calibration/linearity_run.h"
#include "panel/vertical.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

/// Does what a click does that sets `list` to the entry `text`, which it has.
void choose(ListBox& list, std::string_view text) {
    const auto& entries = list.entries();
    const auto found = std::find(entries.begin(), entries.end(), text);
    if (found != entries.end()) {
        list.set_index(static_cast<int>(found - entries.begin()));
    }
}

/// Does what a click does that leaves `box` as `checked` says; nothing when it is so already.
void check(CheckBox& box, bool checked) {
    if (box.checked() != checked) {
        box.set_checked(checked);
    }
}

/// The gain range of a volts-per-division entry; 0 for any other text.
std::int16_t range_of(std::string_view v_div) {
    const auto scale = vertical_scale(v_div);
    return scale ? scale->gain : std::int16_t{0};
}

} // namespace

void GuidedCalibration::set_up(const Guide& guide) {
    Message message = {.text = set_up_text(guide, form_),
                       .title = std::string(guide.title),
                       .buttons = MessageButtons::ok_cancel,
                       .icon = MessageIcon::information};
    if (around_.acquisition.scopestate == state_word::linearity) {
        message.informative = "The linearity calibration is under way. OK breaks it off.";
    }
    if (around_.boxes.show(message) != MessageAnswer::ok) {
        return;
    }
    if (around_.acquisition.scopestate == state_word::linearity) {
        state_machine_.cmdstop_Click();
    } else {
        note_.say("");
    }
    if (around_.panel.cmdcaloofset.checked()) {
        around_.panel.cmdcaloofset.set_checked(false);
        note_.say("Software Calibrate Offset was switched off: it would be measured along.");
    }
    set_panel(guide);
    form_.calstatus.set_caption(ready_text(guide, form_));
    state_machine_.cmdstartsweep_Click();
}

void GuidedCalibration::set_panel(const Guide& guide) {
    FrontPanel& panel = around_.panel;
    for (const Channel channel : both_channels) {
        ChannelControls& controls = panel.channel.at(channel);
        check(controls.enable, guide.channels.at(channel));
        check(controls.invert, false);
        check(controls.inviatr, false);
    }
    check(panel.persist, false);
    check(panel.average, false);
    check(panel.adcspeed, false);
    check(panel.check1, true);
    choose(panel.seltimediv, guide.time_div);
    choose(panel.channel[0].vdiv, guide.v_div);
    choose(panel.channel[1].vdiv, guide.v_div);
    if (guide.trig1) {
        choose(panel.trigsource, "TRIG1");
    }
}

bool GuidedCalibration::fits_gain(const Guide& guide) const {
    const Channel channel = guide.channels[ch1] ? ch1 : ch2;
    return around_.panel.channel.at(channel).vdiv.text() == guide.v_div;
}

bool GuidedCalibration::fits_offsets(const Guide& guide) const {
    // Any entry of the range that the set-up selects will do. What turns the trace over or shifts
    // it would be taken for the offset.
    return !around_.panel.cmdcaloofset.checked() &&
           std::all_of(around_.panel.channel.begin(), around_.panel.channel.end(),
                       [&guide](const ChannelControls& controls) {
                           return range_of(controls.vdiv.text()) == range_of(guide.v_div) &&
                                  !controls.invert.checked();
                       });
}

bool GuidedCalibration::panel_is_right(const Guide& guide) const {
    const FrontPanel& panel = around_.panel;
    for (const Channel channel : both_channels) {
        if (guide.channels.at(channel) && !panel.channel.at(channel).enable.checked()) {
            return false;
        }
    }
    if (!panel.check1.checked()) {
        return false;
    }
    if (guide.what == Calibrates::gain) {
        return fits_gain(guide);
    }
    if (guide.what == Calibrates::offset) {
        return fits_offsets(guide);
    }
    return panel.seltimediv.text() == guide.time_div;
}

std::string GuidedCalibration::sweep_missing(const Guide& guide) const {
    const AcquisitionState& acquisition = around_.acquisition;
    if (acquisition.scopestate == state_word::linearity) {
        return "The linearity calibration is under way.";
    }
    if (!acquisition.acqrunning) {
        return "The sweep is stopped: start it, and wait for the trace.";
    }
    if (acquisition.activity == Activity::waiting_for_trigger) {
        return "The instrument waits for a trigger.";
    }
    // In any other state the set-up is still to be sent.
    bool fresh = state_word::sweeps(acquisition.scopestate);
    for (const Channel channel : both_channels) {
        fresh = fresh && (!guide.channels.at(channel) || acquisition.taken_as_set.at(channel));
    }
    return fresh ? ""
                 : "No whole sweep has come since the panel or the calibration was changed, or "
                   "since the instrument fell silent: wait for the trace.";
}

void GuidedCalibration::compute(const Guide& guide) {
    if (!panel_is_right(guide)) {
        refuse(guide, wrong_panel_text(guide, form_));
        return;
    }
    const std::string missing = sweep_missing(guide);
    if (!missing.empty()) {
        refuse(guide, out_of_range_text(guide), missing);
        return;
    }
    if (guide.what == Calibrates::gain) {
        compute_gain(guide);
    } else if (guide.what == Calibrates::offset) {
        compute_offsets(guide);
    } else {
        compute_time_scale(guide);
    }
}

void GuidedCalibration::compute_gain(const Guide& guide) {
    const Channel channel = guide.channels[ch1] ? ch1 : ch2;
    const std::size_t field = guide.fields[0];
    const std::int32_t millivolts = round_to_int32(measured(channel, meas::vpp));
    const auto gain = corrected_gain(record_.in_use().at(field), millivolts, guide.expected_mvpp);
    std::string found = std::to_string(millivolts);
    found += "mV peak to peak measured in place of ";
    found += std::to_string(round_to_int32(guide.expected_mvpp));
    found += "mV.";
    if (!gain) {
        refuse(guide, out_of_range_text(guide), found);
        return;
    }
    record_.put_computed(field, *gain);
    record_.set_calibrated();
    succeed(guide, found);
}

void GuidedCalibration::compute_offsets(const Guide& guide) {
    if (!quiet_enough(measured(ch1, meas::vpp)) || !quiet_enough(measured(ch2, meas::vpp))) {
        refuse(guide, out_of_range_text(guide));
        return;
    }
    const bool high = range_of(guide.v_div) == high_gain;
    for (const Channel channel : both_channels) {
        const bool via_trigger = around_.panel.channel.at(channel).inviatr.checked();
        const double factor = codes_per_millivolt({.high_gain = high, .via_trigger = via_trigger});
        const std::size_t field = guide.fields.at(channel);
        record_.put_computed(field, corrected_offset(record_.in_use().at(field),
                                                     measured(channel, meas::vmean), factor));
    }
    succeed(guide, {});
}

void GuidedCalibration::compute_time_scale(const Guide& guide) {
    // The record keeps the frequency of an earlier sweep where there is none in this one.
    if (measured(ch1, meas::pulse_high) <= 0.0 || measured(ch1, meas::pulse_low) <= 0.0) {
        refuse(guide, "Frequency out of range!",
               "No frequency was measured: the trace shows no whole period.");
        return;
    }
    const std::int32_t frequency =
        round_to_int32(around_.time_base.samplerate * measured(ch1, meas::frequency));
    std::string found = std::to_string(frequency);
    found += "Hz measured in place of 10000000Hz.";
    const std::size_t field = guide.fields[0];
    const auto scale = corrected_time_scale(record_.in_use().at(field), frequency);
    if (!scale) {
        refuse(guide, "Frequency out of range!", found);
        return;
    }
    record_.put_computed(field, *scale);
    // The correction leaves the square of the error: one part in a thousand from 3 % on.
    constexpr std::int32_t once_is_enough_hz = 300000;
    if (std::abs(frequency - round_to_int32(calibration_hz)) > once_is_enough_hz) {
        found += " So large an error takes a second time: write, set up and calibrate again.";
    }
    succeed(guide, found);
}

void GuidedCalibration::refuse(const Guide& guide, const std::string& text,
                               const std::string& help) {
    around_.boxes.show({.text = text,
                        .title = std::string(guide.error_title),
                        .icon = MessageIcon::exclamation,
                        .informative = help});
}

void GuidedCalibration::succeed(const Guide& guide, const std::string& measured) {
    form_.calstatus.set_caption(success_text(guide, form_));
    std::string text = measured;
    if (!record_.was_read()) {
        text += text.empty() ? "" : " ";
        text += "The calibration was never read from the instrument: this comes from the values in "
                "use here. Read it first.";
    } else if (!works_with_base_of(guide)) {
        text += text.empty() ? "" : " ";
        text += "The instrument works with other values than those that this was computed from: "
                "write or read first, then calibrate again.";
    }
    note_.say(std::move(text));
}

bool GuidedCalibration::works_with_base_of(const Guide& guide) const {
    const bool both = guide.what == Calibrates::offset;
    return record_.works_with(guide.fields[0]) && (!both || record_.works_with(guide.fields[1]));
}

double GuidedCalibration::measured(Channel channel, std::size_t field) const {
    return measurements_.measresults.at(channel).at(field);
}

} // namespace kv408
