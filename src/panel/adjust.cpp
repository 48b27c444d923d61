#include "panel/adjust.h"

#include <algorithm>
#include <string>

#include "panel/delay_text.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr std::int32_t horizontal_zero = 32768; ///< delay wheel value that the 16 bits count from

/// Row of the plot at which the wheel stands at `value`.
std::int16_t row_of(std::int32_t value) {
    return round_to_int16((plot::wheel_span - value) / 2.0);
}

/// Step of the delay wheel by the time per division, in whole picoseconds.
std::int32_t delay_step(double samplerate) {
    const std::int32_t division = round_to_int32(plot::division / (1e-12 * samplerate));
    if (division < 100) {
        return 4;
    }
    if (division < 1000) {
        return 8;
    }
    if (division < 10000) {
        return 16;
    }
    return division < 100000 ? 64 : 256;
}

/// The delay wheel's value for a delay of `picoseconds`.
std::int32_t wheel_at(std::int32_t picoseconds) {
    return longest_delay - picoseconds - horizontal_zero;
}

} // namespace

void Adjust::setadjuststep() {
    const std::string key = panel_.tabstrip2.selected_key();
    ThumbWheel& wheel = panel_.slider1;
    if (key == adjust_key::horizontal) {
        wheel.set_range(-horizontal_zero, horizontal_zero - 1);
        wheel.set_SlideStep(delay_step(quantities_.time_base.samplerate));
    } else if (key == adjust_key::trigger) {
        wheel.set_range(0, plot::wheel_span);
        wheel.set_SlideStep(1);
    } else if (key == adjust_key::ch1 || key == adjust_key::ch2 || key == adjust_key::cursor_1 ||
               key == adjust_key::cursor_2) {
        wheel.set_range(0, plot::wheel_span);
        wheel.set_SlideStep(4);
    }
}

void Adjust::TabStrip2_Click() {
    const std::string key = panel_.tabstrip2.selected_key();
    const bool chosen = key != target_;
    if (chosen && panel_.slider1.uncommitted()) {
        // Whatever the wheel was dragged for so far keeps its value.
        tell_commit(target_);
    }
    target_ = key;
    if (key == adjust_key::ch1 || key == adjust_key::ch2) {
        panel_.channel[key == adjust_key::ch1 ? 0 : 1].text.bring_to_front();
    }
    activate_cursor(key);
    if (!chosen && panel_.slider1.uncommitted()) {
        setadjuststep();
        return;
    }
    refresh_wheel();
    screen_.draw(draw_flags::all);
}

void Adjust::refresh_wheel() {
    const std::string key = panel_.tabstrip2.selected_key();
    setadjuststep();
    if (key == adjust_key::horizontal) {
        hposwheel_ = wheel_for_delays();
    }
    follow(target_value(key));
}

void Adjust::select_target(std::string_view key) {
    int position = 0;
    if (!hasnotab(panel_.tabstrip2, key, position)) {
        panel_.tabstrip2.select(position);
    }
}

std::int32_t Adjust::target_value(std::string_view key) const {
    const CursorState& cursors = quantities_.cursors;
    if (key == adjust_key::ch1) {
        return quantities_.channels[0].marker_wheel;
    }
    if (key == adjust_key::ch2) {
        return quantities_.channels[1].marker_wheel;
    }
    if (key == adjust_key::trigger) {
        return quantities_.trigger.trigwheel;
    }
    if (key == adjust_key::horizontal) {
        return hposwheel_;
    }
    const std::size_t cursor = key == adjust_key::cursor_1 ? 0 : 1;
    return cursor_mode::is_time(cursors.cursormode) ? cursors.hpos[cursor]
                                                    : plot::wheel_span - 2 * cursors.vpos[cursor];
}

void Adjust::activate_cursor(std::string_view key) {
    if (key != adjust_key::cursor_1 && key != adjust_key::cursor_2) {
        return;
    }
    const bool first = key == adjust_key::cursor_1;
    std::int16_t& mode = quantities_.cursors.cursormode;
    if (mode == cursor_mode::voltage_both || mode == cursor_mode::time_both) {
        return;
    }
    if (cursor_mode::is_voltage(mode)) {
        mode = first ? cursor_mode::voltage_1 : cursor_mode::voltage_2;
    } else if (cursor_mode::is_time(mode)) {
        mode = first ? cursor_mode::time_1 : cursor_mode::time_2;
    }
}

void Adjust::follow(std::int32_t value) {
    following_ = true;
    panel_.slider1.set_Value(value);
    following_ = false;
}

void Adjust::sliderupdate() {
    const std::string key = panel_.tabstrip2.selected_key();
    const std::int32_t value = panel_.slider1.Value();
    if (key == adjust_key::ch1) {
        move_channel(ch1, value);
    } else if (key == adjust_key::ch2) {
        move_channel(ch2, value);
    } else if (key == adjust_key::trigger) {
        move_level(value);
    } else if (key == adjust_key::horizontal) {
        move_delays(value);
    } else if (key == adjust_key::cursor_1) {
        move_cursor(0, value);
    } else if (key == adjust_key::cursor_2) {
        move_cursor(1, value);
    }
    // The marks on the traces move with them, so they are placed before the picture is drawn.
    measuring_.showmeasurements();
    screen_.calccursors();
    screen_.show_labels();
    screen_.draw(draw_flags::all);
    measuring_.showmeasurements();
}

void Adjust::move_channel(int channel, std::int32_t value) {
    ChannelState& state = quantities_.channels[static_cast<std::size_t>(channel)];
    state.marker_wheel = value;
    state.pos = row_of(value);
    state.offsetdac = offset_code(state);
    vertical_.place_marker(channel);
    screen_.refresh(channel, 0);
}

void Adjust::move_level(std::int32_t value) {
    if (value == quantities_.trigger.trigwheel) {
        // The wheel has not been turned: a level between two of its steps stays there.
        return;
    }
    quantities_.trigger.trigwheel = value;
    trigger_.settrigfromwheel();
}

std::int32_t Adjust::delay_points(std::int32_t delay) const {
    return round_to_int32(delay /
                          (quantities_.time_base.tbresolution / quantities_.time_base.hstretch));
}

void Adjust::move_delays(std::int32_t value) {
    if (value == hposwheel_) {
        // The wheel has not been turned: boxes that say something else were typed into.
        return;
    }
    const std::int32_t hposdelay = value + horizontal_zero;
    const std::int32_t delay = longest_delay - hposdelay;
    for (std::size_t index = 0; index < quantities_.channels.size(); ++index) {
        ChannelControls& controls = panel_.channel[index];
        if (controls.slenps.checked()) {
            controls.psofset.set_text(std::to_string(delay));
            quantities_.channels[index].delaypts = delay_points(delay);
            quantities_.channels[index].delay = delay;
        }
    }
    hposwheel_ = value;
    trigger_.trigposupdate();
    screen_.refreshCH1(0);
    screen_.refreshCH2(0);
}

void Adjust::move_cursor(std::size_t cursor, std::int32_t value) {
    CursorState& cursors = quantities_.cursors;
    const auto voltage = static_cast<std::int16_t>(cursor_mode::voltage_1 + cursor);
    const auto time = static_cast<std::int16_t>(cursor_mode::time_1 + cursor);
    if (cursors.cursormode == voltage) {
        cursors.vpos[cursor] = row_of(value);
    } else if (cursors.cursormode == time) {
        cursors.hpos[cursor] = static_cast<std::int16_t>(std::min(value, plot::width - 1));
    }
}

void Adjust::Slider1_Scroll() {
    sliderupdate();
    if (panel_.tabstrip2.selected_key() == adjust_key::trigger) {
        show_trigger_line(quantities_.acquisition);
    }
}

void Adjust::Slider1_Change() {
    if (following_) {
        return;
    }
    sliderupdate();
    const std::string key = panel_.tabstrip2.selected_key();
    tell_commit(key);
    if (cursor_mode::is_time(quantities_.cursors.cursormode)) {
        // The columns end before the wheel does: what it was turned beyond is taken back.
        follow(target_value(key));
    }
}

void Adjust::tell_commit(std::string_view key) {
    if (key == adjust_key::trigger) {
        show_trigger_line(quantities_.acquisition);
        if (quantities_.acquisition.acqrunning) {
            quantities_.acquisition.scopestate = state_word::changes;
        }
        return;
    }
    mark_new_data_needed();
    if (key == adjust_key::horizontal) {
        show_delay_label(ch1);
        show_delay_label(ch2);
    }
}

void Adjust::mark_new_data_needed() {
    AcquisitionState& acquisition = quantities_.acquisition;
    if (acquisition.acqrunning) {
        acquisition.scopestate = state_word::changes;
        acquisition.await_new_data(ch1);
        acquisition.await_new_data(ch2);
    }
}

std::int32_t Adjust::delay_in_box(int channel) const {
    const auto index = static_cast<std::size_t>(channel);
    return delay_of(panel_.channel[index].psofset, quantities_.channels[index]);
}

void Adjust::psofset_Change(int channel) {
    TextBox& box = panel_.channel[static_cast<std::size_t>(channel)].psofset;
    box.set_faulty(!typed_delay(box.text()));
}

void Adjust::psofset_Enter(int channel) {
    if (panel_.tabstrip2.selected_key() == adjust_key::horizontal) {
        take_typed_delay(channel);
    }
}

void Adjust::psofset_Leave(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    TextBox& box = panel_.channel[index].psofset;
    const std::int32_t delay = delay_in_box(channel);
    // What stood there before it was left may have been uploaded with something else.
    const bool sent = delay == quantities_.acquisition.offset[index];
    if (!typed_delay(box.text())) {
        if (!sent) {
            mark_new_data_needed();
        }
    } else if (!sent || delay != quantities_.channels[index].delay) {
        take_typed_delay(channel);
    } else if (box.text() != std::to_string(delay)) {
        box.set_text(std::to_string(delay));
        show_delay_label(channel);
    }
}

void Adjust::take_typed_delay(int channel) {
    TextBox& box = panel_.channel[static_cast<std::size_t>(channel)].psofset;
    if (const auto delay = typed_delay(box.text())) {
        box.set_text(std::to_string(*delay));
        apply_delay(channel);
    }
}

void Adjust::restore_delay(int channel, std::string_view text) {
    panel_.channel[static_cast<std::size_t>(channel)].psofset.set_text(
        std::to_string(leading_delay(text)));
    apply_delay(channel);
}

void Adjust::apply_delay(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    ChannelState& state = quantities_.channels[index];
    state.delay = delay_in_box(channel);
    state.delaypts = delay_points(state.delay);
    if (panel_.tabstrip2.selected_key() == adjust_key::horizontal) {
        refresh_wheel();
    }
    show_delay_label(channel);
    trigger_.trigposupdate();
    screen_.refreshCH1(0);
    screen_.refreshCH2(0);
    // Before the set-up counts as changed: until it is uploaded nothing is drawn.
    screen_.draw(draw_flags::all);
    mark_new_data_needed();
}

void Adjust::slenps_Click(int channel) {
    if (panel_.tabstrip2.selected_key() != adjust_key::horizontal) {
        return;
    }
    hposwheel_ = panel_.channel[static_cast<std::size_t>(channel)].slenps.checked()
                     ? wheel_at(delay_in_box(channel))
                     : wheel_for_delays();
    follow(hposwheel_);
}

std::int32_t Adjust::wheel_for_delays() const {
    for (const int channel : {ch1, ch2}) {
        if (panel_.channel[static_cast<std::size_t>(channel)].slenps.checked()) {
            return wheel_at(delay_in_box(channel));
        }
    }
    return hposwheel_;
}

void Adjust::show_delay_label(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    ChannelControls& controls = panel_.channel[index];
    const std::string delay = delay_text(controls.psofset, quantities_.channels[index]);
    const bool none = delay == "0" || quantities_.acquisition.pointmode;
    controls.hor_delay.set_caption(none ? std::string() : "Delay:  " + delay + "ps");
}

void Adjust::rescale_delays() {
    for (int channel = 0; channel < 2; ++channel) {
        ChannelState& state = quantities_.channels[static_cast<std::size_t>(channel)];
        state.delaypts = delay_points(delay_in_box(channel));
        state.uploaded_delaypts = state.delaypts;
        state.shown_delaypts = state.delaypts;
    }
}

} // namespace kv408
