#include "scope/start_up.h"

#include <string>

#include "measure/measurement_rows.h"

namespace kv408 {
namespace {

/// What the user is told when no device is attached; the first time also what works without one.
std::string without_device(bool first) {
    std::string known = "No device is attached.";
    if (first) {
        known += " To try the program without an instrument, start kv408-demo.";
    }
    return known;
}

} // namespace

StartUp::StartUp(PanelParts& on_panel, const Parts& parts)
    : on_panel_(on_panel), around_(on_panel.around), parts_(parts) {
    around_.panel.menuexit.on_click([this] { Form_Unload(); });
}

void StartUp::Form_Load() {
    if (!connect()) {
        return;
    }
    {
        const TakingOver taking = parts_.settings.take_over();
        initialise_panel();
        parts_.settings.restore();
        apply_settings();
    }
    parts_.settings.start_keeping();
}

bool StartUp::connect() {
    for (bool first = true;; first = false) {
        Form_Activate();
        if (parts_.program.loaded) {
            return false;
        }
        if (around_.link.checkdevice()) {
            return true;
        }
        // A wrong answer leaves the device open; it must be free to be listed and opened again.
        around_.link.close();
        const MessageAnswer answer = around_.boxes.show(
            {.text = "No connection to Device, maybe it's not powered. Please check and click "
                     "<Retry>!",
             .buttons = MessageButtons::retry_cancel,
             .icon = MessageIcon::exclamation,
             .informative = around_.link.none_attached() ? without_device(first) : std::string(),
             .details = around_.link.diagnosis(),
             .holds_sweep = true});
        if (answer != MessageAnswer::retry) {
            end_program(parts_.program);
        }
        parts_.program.loaded = false;
        parts_.program.activated = false;
    }
}

void StartUp::Form_Activate() {
    if (parts_.program.activated) {
        return;
    }
    parts_.program.activated = true;
    around_.acquisition.scopestate = state_word::nothing;
    around_.link.finddevice();
    if (around_.link.select_and_open()) {
        inicijalizacija();
    }
}

void StartUp::inicijalizacija() {
    parts_.calibration = default_calibration;
    around_.link.set_link_speed();
}

void StartUp::initialise_panel() {
    parts_.samples = {};
    around_.acquisition.scopestate = state_word::begin;
    on_panel_.vertical.fill_lists();
    on_panel_.time_base.fill_list();
    around_.panel.trigeredge.set_entries({"Positive", "Negative"});
    around_.panel.trigsource.set_entries({"TRIG1", "TRIG2"});
    around_.panel.combocursorselect.set_entries({"CH1", "CH2"});
    for (MeasurementControls& slot : around_.panel.measurement) {
        slot.selector.set_entries(measurement_names());
    }
    constexpr int largest_value = 1;
    constexpr int peak_to_peak = 3;
    constexpr int frequency = 9;
    around_.panel.measurement[0].selector.set_index(largest_value);
    around_.panel.measurement[1].selector.set_index(peak_to_peak);
    around_.panel.measurement[2].selector.set_index(frequency);
    constexpr int tenth_of_a_volt = 2;
    constexpr int twenty_nanoseconds = 11;
    around_.panel.channel[0].vdiv.set_index(tenth_of_a_volt);
    around_.panel.channel[1].vdiv.set_index(tenth_of_a_volt);
    around_.panel.trigeredge.set_index(0);
    around_.panel.trigsource.set_index(0);
    around_.panel.combocursorselect.set_index(0);
    around_.panel.seltimediv.set_index(twenty_nanoseconds);
}

void StartUp::apply_settings() {
    parts_.colour_update.colorupdate();
    on_panel_.trigger.trigeredge_Click();
    on_panel_.trigger.trigsource_Click();
    on_panel_.time_base.seltimediv_Click();
    on_panel_.vertical.vdiv_Click(ch1);
    on_panel_.vertical.vdiv_Click(ch2);
    on_panel_.time_base.seltimediv_Click();
    on_panel_.trigger.settriger();
    on_panel_.time_base.seltimediv_Click();
    on_panel_.adjust.sliderupdate();
    parts_.cursors.combocursorselect_Click();
    for (const Channel channel : both_channels) {
        on_panel_.vertical.enable_Click(channel);
    }
    for (const Channel channel : both_channels) {
        on_panel_.vertical.place_marker(channel);
    }
    around_.screen.makegrid();
    parts_.program.loaded = true;
    around_.screen.draw(draw_flags::all);
}

void StartUp::Form_Unload(bool tell) {
    around_.link.close();
    parts_.settings.save_at_end(tell);
    end_program(parts_.program);
}

} // namespace kv408
