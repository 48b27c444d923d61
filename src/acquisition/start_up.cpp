#include "acquisition/start_up.h"

#include <string>

namespace kv408 {
namespace {

/// What is known where no device is attached; at the first look also what can be done without one.
std::string without_device(bool first) {
    std::string known = "No device is attached.";
    if (first) {
        known += " To try the program without an instrument, start kv408-demo.";
    }
    return known;
}

} // namespace

void StartUp::Form_Load() {
    if (!connect()) {
        return;
    }
    {
        const TakingOver taking = handlers_.settings.take_over();
        initialise_panel();
        handlers_.settings.restore();
        apply_settings();
    }
    handlers_.settings.start_keeping();
}

bool StartUp::connect() {
    for (bool first = true;; first = false) {
        Form_Activate();
        if (program_.loaded) {
            return false;
        }
        if (link_.checkdevice()) {
            return true;
        }
        // A wrong answer leaves the device open; it must be free to be listed and opened again.
        link_.close();
        const MessageAnswer answer = boxes_.show(
            {.text = "No connection to Device, maybe it's not powered. Please check and click "
                     "<Retry>!",
             .buttons = MessageButtons::retry_cancel,
             .icon = MessageIcon::exclamation,
             .informative = link_.none_attached() ? without_device(first) : std::string(),
             .details = link_.diagnosis(),
             .holds_sweep = true});
        if (answer != MessageAnswer::retry) {
            end_program(program_);
        }
        program_.loaded = false;
        program_.activated = false;
    }
}

void StartUp::Form_Activate() {
    if (program_.activated) {
        return;
    }
    program_.activated = true;
    acquisition_.scopestate = state_word::nothing;
    link_.finddevice();
    if (link_.select_and_open()) {
        inicijalizacija();
    }
}

void StartUp::inicijalizacija() {
    calibration_ = default_calibration;
    link_.set_link_speed();
}

void StartUp::initialise_panel() {
    samples_ = {};
    acquisition_.scopestate = state_word::begin;
    handlers_.vertical.fill_lists();
    handlers_.time_base.fill_list();
    panel_.trigeredge.set_entries({"Positive", "Negative"});
    panel_.trigsource.set_entries({"TRIG1", "TRIG2"});
    panel_.combocursorselect.set_entries({"CH1", "CH2"});
    for (MeasurementControls& slot : panel_.measurement) {
        slot.selector.set_entries(handlers_.measurements);
    }
    constexpr int largest_value = 1;
    constexpr int peak_to_peak = 3;
    constexpr int frequency = 9;
    panel_.measurement[0].selector.set_index(largest_value);
    panel_.measurement[1].selector.set_index(peak_to_peak);
    panel_.measurement[2].selector.set_index(frequency);
    constexpr int tenth_of_a_volt = 2;
    constexpr int twenty_nanoseconds = 11;
    panel_.channel[0].vdiv.set_index(tenth_of_a_volt);
    panel_.channel[1].vdiv.set_index(tenth_of_a_volt);
    panel_.trigeredge.set_index(0);
    panel_.trigsource.set_index(0);
    panel_.combocursorselect.set_index(0);
    panel_.seltimediv.set_index(twenty_nanoseconds);
}

void StartUp::apply_settings() {
    handlers_.colour_update.colorupdate();
    handlers_.trigger.trigeredge_Click();
    handlers_.trigger.trigsource_Click();
    handlers_.time_base.seltimediv_Click();
    handlers_.vertical.ch1vdiv_Click();
    handlers_.vertical.ch2vdiv_Click();
    handlers_.time_base.seltimediv_Click();
    handlers_.trigger.settriger();
    handlers_.time_base.seltimediv_Click();
    handlers_.adjust.sliderupdate();
    handlers_.cursors.combocursorselect_Click();
    handlers_.vertical.ch1enable_Click();
    handlers_.vertical.ch2enable_Click();
    handlers_.vertical.place_marker(0);
    handlers_.vertical.place_marker(1);
    screen_.makegrid();
    program_.loaded = true;
    screen_.draw(draw_flags::all);
}

void StartUp::Form_Unload(bool tell) {
    link_.close();
    handlers_.settings.save_at_end(tell);
    end_program(program_);
}

} // namespace kv408
