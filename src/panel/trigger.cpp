#include "panel/trigger.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "panel/set_up_change.h"
#include "state/engineering_format.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/samples.h"

namespace kv408 {

std::size_t Trigger::source() const {
    return panel_.trigsource.text() == "TRIG1" ? 0 : 1;
}

void Trigger::trigsource_Click() {
    mark_changed(acquisition_, link_);
    trigger_.trigpos = trigger_.saved_trigpos[source()];
    panel_.shyst.set_value(trigger_.hyst[source()]);
    show_level();
    trigger_.trigwheel =
        round_to_int32(static_cast<double>(trigger_.trigpos) / codes_per_wheel_step);
    settriger();
}

void Trigger::trigeredge_Click() {
    mark_changed(acquisition_, link_);
}

void Trigger::shyst_Change() {
    trigger_.hyst[source()] = static_cast<std::int16_t>(panel_.shyst.value());
    mark_changed(acquisition_, link_);
}

void Trigger::trzero_Click() {
    trigger_.trigpos = zero_volt_code;
    trigger_.saved_trigpos[source()] = zero_volt_code;
    trigger_.trigwheel = zero_volt_code / codes_per_wheel_step;
    // Before the screen is drawn, so that it shows the line at once.
    show_trigger_line(acquisition_);
    panel_.tabstrip2.select(panel_.tabstrip2.selected());
    shyst_Change();
}

void Trigger::trtout_Change() {
    panel_.trtout.set_faulty(!typed_trigger_timeout(panel_.trtout.text()));
}

void Trigger::trtout_Commit() {
    if (const auto typed = typed_trigger_timeout(panel_.trtout.text())) {
        taken_timeout_ = *typed;
        panel_.trtout.set_text(std::to_string(*typed));
    }
    // What stood there before it was left may have been sent with something else.
    if (taken_timeout_ != acquisition_.trigger.timeout) {
        mark_changed(acquisition_, link_);
    }
}

void Trigger::delaytrttdis_Change() {
    TextBox& box = panel_.delaytrttdis;
    box.set_faulty(!quantity_in(box.text(), picosecond_units));
}

void Trigger::delaytrttdis_Leave() {
    TextBox& box = panel_.delaytrttdis;
    if (const auto typed = quantity_in(box.text(), picosecond_units)) {
        taken_additional_ = round_to_int32(*typed);
        box.set_text(std::to_string(taken_additional_));
    }
    trigposupdate();
}

std::int32_t Trigger::additional_delay() const {
    const TextBox& box = panel_.delaytrttdis;
    if (box.faulty()) {
        return taken_additional_;
    }
    const auto typed = quantity_in(box.text(), picosecond_units);
    return round_to_int32(typed.value_or(leading_number(box.text())));
}

void Trigger::settrigfromwheel() {
    trigger_.trigpos = static_cast<std::int16_t>(trigger_.trigwheel * codes_per_wheel_step);
    trigger_.saved_trigpos[source()] = trigger_.trigpos;
}

void Trigger::trigposupdate() {
    constexpr int leftmost = plot::left;
    constexpr int rightmost = plot::left + plot::width - 1;
    const double columns =
        (static_cast<double>(additional_delay()) - trigger_.trigsrcdelay) / time_base_.tbresolution;
    panel_.ltp2.move(std::clamp(round_to_int32(leftmost - columns), leftmost, rightmost),
                     panel_.ltp2.top());
}

void Trigger::show_level() {
    panel_.trlevelmv.set_caption(
        printed_number((trigger_.trigpos - zero_volt_code) * channels_[source()].vtfactor) + "mV");
}

void Trigger::settriger() {
    const std::int32_t timeout =
        panel_.trtout.faulty() ? taken_timeout_ : trigger_timeout(panel_.trtout.text());
    trigger_.trigsrcdelay = trigger_.trigdelay[source()];
    if (acquisition_.scopestate == state_word::linearity) {
        // A command would break the linearity run off; the next set-up sends the trigger.
        return;
    }
    const TriggerSetting setting = {.source = source(),
                                    .positive = panel_.trigeredge.text() == "Positive",
                                    .level_mv =
                                        static_cast<double>(trigger_.trigpos - zero_volt_code),
                                    .hysteresis = static_cast<std::int16_t>(panel_.shyst.value()),
                                    .timeout = acquisition_.trigger.timeout};
    fill_trigger(link_.cmdargs(), {.level = trigger_.trigpos,
                                   .trig1 = setting.source == 0,
                                   .positive = setting.positive,
                                   .hysteresis = setting.hysteresis});
    bool done = link_.send_setup(command::set_trigger, " SETTRIG ");
    if (done) {
        acquisition_.trigger = setting;
        clock_.sleep(std::chrono::milliseconds(10));
        fill_trigger_timeout(link_.cmdargs(), timeout);
        done = link_.send_setup(command::set_trigger_timeout, " SETTTO ");
        if (done) {
            acquisition_.trigger.timeout = timeout;
        }
    }
    if (!done) {
        boxes_.show({.text = "error set triger", .link_failure = true});
    }
}

} // namespace kv408
