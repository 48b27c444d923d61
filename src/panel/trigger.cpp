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

Trigger::Trigger(const Surroundings& around)
    : around_(around), taken_timeout_(trigger_timeout(around.panel.trtout.text())) {
    FrontPanel& panel = around.panel;
    panel.trigeredge.on_click([this] { trigeredge_Click(); });
    panel.shyst.on_change([this] { shyst_Change(); });
    panel.trtout.on_change([this] { trtout_Change(); });
    panel.trtout.on_enter([this] { trtout_Commit(); });
    panel.trtout.on_leave([this] { trtout_Commit(); });
    panel.trzero.on_click([this] { trzero_Click(); });
    panel.delaytrttdis.on_change([this] { delaytrttdis_Change(); });
    panel.delaytrttdis.on_leave([this] { delaytrttdis_Leave(); });
}

Channel Trigger::source() const {
    return around_.panel.trigsource.text() == "TRIG1" ? ch1 : ch2;
}

void Trigger::trigsource_Click() {
    mark_changed(around_);
    around_.trigger.trigpos = around_.trigger.saved_trigpos[source()];
    around_.panel.shyst.set_value(around_.trigger.hyst[source()]);
    show_level();
    around_.trigger.trigwheel =
        round_to_int32(static_cast<double>(around_.trigger.trigpos) / codes_per_wheel_step);
    settriger();
}

void Trigger::trigeredge_Click() {
    mark_changed(around_);
}

void Trigger::shyst_Change() {
    around_.trigger.hyst[source()] = static_cast<std::int16_t>(around_.panel.shyst.value());
    mark_changed(around_);
}

void Trigger::trzero_Click() {
    around_.trigger.trigpos = zero_volt_code;
    around_.trigger.saved_trigpos[source()] = zero_volt_code;
    around_.trigger.trigwheel = zero_volt_code / codes_per_wheel_step;
    // Before the screen is drawn, so that it shows the line at once.
    show_trigger_line(around_.acquisition);
    around_.panel.tabstrip2.select(around_.panel.tabstrip2.selected());
    shyst_Change();
}

void Trigger::trtout_Change() {
    around_.panel.trtout.set_faulty(!typed_trigger_timeout(around_.panel.trtout.text()));
}

void Trigger::trtout_Commit() {
    if (const auto typed = typed_trigger_timeout(around_.panel.trtout.text())) {
        taken_timeout_ = *typed;
        around_.panel.trtout.set_text(std::to_string(*typed));
    }
    // What stood there before it was left may have been sent with something else.
    if (taken_timeout_ != around_.acquisition.trigger.timeout) {
        mark_changed(around_);
    }
}

void Trigger::delaytrttdis_Change() {
    TextBox& box = around_.panel.delaytrttdis;
    box.set_faulty(!quantity_in(box.text(), picosecond_units));
}

void Trigger::delaytrttdis_Leave() {
    TextBox& box = around_.panel.delaytrttdis;
    if (const auto typed = quantity_in(box.text(), picosecond_units)) {
        taken_additional_ = round_to_int32(*typed);
        box.set_text(std::to_string(taken_additional_));
    }
    trigposupdate();
}

std::int32_t Trigger::additional_delay() const {
    const TextBox& box = around_.panel.delaytrttdis;
    if (box.faulty()) {
        return taken_additional_;
    }
    const auto typed = quantity_in(box.text(), picosecond_units);
    return round_to_int32(typed.value_or(leading_number(box.text())));
}

void Trigger::settrigfromwheel() {
    around_.trigger.trigpos =
        static_cast<std::int16_t>(around_.trigger.trigwheel * codes_per_wheel_step);
    around_.trigger.saved_trigpos[source()] = around_.trigger.trigpos;
}

void Trigger::trigposupdate() {
    const double columns =
        (static_cast<double>(additional_delay()) - around_.trigger.trigsrcdelay) /
        around_.time_base.tbresolution;
    around_.panel.ltp2.mark(std::clamp(round_to_int32(-columns), 0, plot::width - 1));
}

void Trigger::show_level() {
    around_.panel.trlevelmv.set_caption(printed_number((around_.trigger.trigpos - zero_volt_code) *
                                                       around_.channels[source()].vtfactor) +
                                        "mV");
}

void Trigger::settriger() {
    const std::int32_t timeout = around_.panel.trtout.faulty()
                                     ? taken_timeout_
                                     : trigger_timeout(around_.panel.trtout.text());
    around_.trigger.trigsrcdelay = around_.trigger.trigdelay[source()];
    if (around_.acquisition.scopestate == state_word::linearity) {
        // A command would break the linearity run off; the next set-up sends the trigger.
        return;
    }
    const TriggerSetting setting = {
        .source = source(),
        .positive = around_.panel.trigeredge.text() == "Positive",
        .level_mv = static_cast<double>(around_.trigger.trigpos - zero_volt_code),
        .hysteresis = static_cast<std::int16_t>(around_.panel.shyst.value()),
        .timeout = around_.acquisition.trigger.timeout};
    fill_trigger(around_.link.cmdargs(), {.level = around_.trigger.trigpos,
                                          .trig1 = setting.source == ch1,
                                          .positive = setting.positive,
                                          .hysteresis = setting.hysteresis});
    bool done = around_.link.send_setup(command::set_trigger, " SETTRIG ");
    if (done) {
        around_.acquisition.trigger = setting;
        around_.clock.sleep(std::chrono::milliseconds(10));
        fill_trigger_timeout(around_.link.cmdargs(), timeout);
        done = around_.link.send_setup(command::set_trigger_timeout, " SETTTO ");
        if (done) {
            around_.acquisition.trigger.timeout = timeout;
        }
    }
    if (!done) {
        around_.boxes.show({.text = "error set triger", .link_failure = true});
    }
}

} // namespace kv408
