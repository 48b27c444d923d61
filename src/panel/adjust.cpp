#include "panel/adjust.h"

#include <algorithm>
#include <string>

#include "panel/delay_text.h"
#include "panel/set_up_change.h"
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

constexpr std::array<Adjust::Target, 6> Adjust::targets = {{
    {adjust_key::ch1, 0, plot::wheel_span, 4, &Adjust::position, &Adjust::move_position,
     &Adjust::mark_new_data_needed, 0},
    {adjust_key::ch2, 0, plot::wheel_span, 4, &Adjust::position, &Adjust::move_position,
     &Adjust::mark_new_data_needed, 1},
    {adjust_key::trigger, 0, plot::wheel_span, 1, &Adjust::level, &Adjust::move_level,
     &Adjust::commit_level, 0},
    {adjust_key::horizontal, -horizontal_zero, horizontal_zero - 1, 0, &Adjust::delays,
     &Adjust::move_delays, &Adjust::commit_delays, 0},
    {adjust_key::cursor_1, 0, plot::wheel_span, 4, &Adjust::cursor, &Adjust::move_cursor,
     &Adjust::mark_new_data_needed, 0},
    {adjust_key::cursor_2, 0, plot::wheel_span, 4, &Adjust::cursor, &Adjust::move_cursor,
     &Adjust::mark_new_data_needed, 1},
}};

Adjust::Adjust(const Surroundings& around, Vertical& vertical, Trigger& trigger)
    : around_(around), vertical_(vertical), trigger_(trigger) {
    FrontPanel& panel = around.panel;
    panel.tabstrip2.on_click([this] { TabStrip2_Click(); });
    panel.slider1.on_scroll([this] { Slider1_Scroll(); });
    panel.slider1.on_change([this] { Slider1_Change(); });
    panel.trigsource.on_click([this] {
        trigger_.trigsource_Click();
        refresh_wheel();
    });
    for (const Channel channel : both_channels) {
        ChannelControls& controls = panel.channel[channel];
        controls.psofset.on_change([this, channel] { psofset_Change(channel); });
        controls.psofset.on_enter([this, channel] {
            psofset_Enter(channel);
            show_change(around_);
        });
        controls.psofset.on_leave([this, channel] {
            psofset_Leave(channel);
            show_change(around_);
        });
        controls.psofset.on_focus([this] { select_target(adjust_key::horizontal); });
        controls.slenps.on_click([this, channel] { slenps_Click(channel); });
    }
}

const Adjust::Target& Adjust::selected() const {
    const std::string key = around_.panel.tabstrip2.selected_key();
    const auto* const found = std::find_if(targets.begin(), targets.end(),
                                           [&key](const Target& at) { return at.key == key; });
    return found == targets.end() ? targets.front() : *found;
}

void Adjust::setadjuststep() {
    const Target& target = selected();
    around_.panel.slider1.set_range(target.lowest, target.highest);
    around_.panel.slider1.set_SlideStep(target.step > 0 ? target.step
                                                        : delay_step(around_.time_base.samplerate));
}

void Adjust::TabStrip2_Click() {
    const Target& target = selected();
    const bool chosen = &target != target_;
    const bool dragged = around_.panel.slider1.uncommitted();
    if (chosen && dragged && target_ != nullptr) {
        // Whatever the wheel was dragged for so far keeps its value.
        (this->*target_->commit)();
    }
    target_ = &target;
    if (target.value == &Adjust::position) {
        around_.panel.channel[target.which].text.bring_to_front();
    } else if (target.value == &Adjust::cursor) {
        activate_cursor(target.which);
    }
    if (!chosen && dragged) {
        setadjuststep();
        return;
    }
    refresh_wheel();
    around_.screen.draw(draw_flags::all);
}

void Adjust::refresh_wheel() {
    const Target& target = selected();
    setadjuststep();
    if (target.key == adjust_key::horizontal) {
        hposwheel_ = wheel_for_delays();
    }
    follow(value_of(target));
}

void Adjust::select_target(std::string_view key) {
    int position = 0;
    if (!hasnotab(around_.panel.tabstrip2, key, position)) {
        around_.panel.tabstrip2.select(position);
    }
}

std::int32_t Adjust::position(std::size_t channel) const {
    return around_.channels.at(channel).marker_wheel;
}

std::int32_t Adjust::level(std::size_t /*which*/) const {
    return around_.trigger.trigwheel;
}

std::int32_t Adjust::delays(std::size_t /*which*/) const {
    return hposwheel_;
}

std::int32_t Adjust::cursor(std::size_t cursor) const {
    const CursorState& cursors = around_.cursors;
    return cursor_mode::is_time(cursors.cursormode)
               ? cursors.hpos.at(cursor)
               : plot::wheel_span - 2 * cursors.vpos.at(cursor);
}

void Adjust::activate_cursor(std::size_t cursor) {
    const bool first = cursor == 0;
    std::int16_t& mode = around_.cursors.cursormode;
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
    around_.panel.slider1.set_Value(value);
    following_ = false;
}

void Adjust::sliderupdate() {
    const Target& target = selected();
    (this->*target.move)(target.which, around_.panel.slider1.Value());
    // The marks on the traces move with them, so they are placed before the picture is drawn.
    around_.measuring.showmeasurements();
    around_.screen.calccursors();
    around_.screen.show_labels();
    around_.screen.draw(draw_flags::all);
}

void Adjust::move_position(std::size_t channel, std::int32_t value) {
    move_channel(both_channels.at(channel), value);
}

void Adjust::move_channel(Channel channel, std::int32_t value) {
    ChannelState& state = around_.channels[channel];
    state.marker_wheel = value;
    state.pos = row_of(value);
    state.offsetdac = offset_code(state);
    vertical_.place_marker(channel);
    around_.screen.refresh(channel, 0);
}

void Adjust::move_level(std::size_t /*which*/, std::int32_t value) {
    if (value == around_.trigger.trigwheel) {
        // The wheel has not been turned: a level between two of its steps stays there.
        return;
    }
    around_.trigger.trigwheel = value;
    trigger_.settrigfromwheel();
}

std::int32_t Adjust::delay_points(std::int32_t delay) const {
    return round_to_int32(delay / (around_.time_base.tbresolution / around_.time_base.hstretch));
}

void Adjust::move_delays(std::size_t /*which*/, std::int32_t value) {
    if (value == hposwheel_) {
        // The wheel has not been turned: boxes that say something else were typed into.
        return;
    }
    const std::int32_t hposdelay = value + horizontal_zero;
    const std::int32_t delay = longest_delay - hposdelay;
    for (const Channel channel : both_channels) {
        ChannelControls& controls = around_.panel.channel[channel];
        if (controls.slenps.checked()) {
            controls.psofset.set_text(std::to_string(delay));
            around_.channels[channel].delaypts = delay_points(delay);
            around_.channels[channel].delay = delay;
        }
    }
    hposwheel_ = value;
    trigger_.trigposupdate();
    around_.screen.refreshCH1(0);
    around_.screen.refreshCH2(0);
}

void Adjust::move_cursor(std::size_t cursor, std::int32_t value) {
    CursorState& cursors = around_.cursors;
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
    if (selected().key == adjust_key::trigger) {
        show_trigger_line(around_.acquisition);
    }
}

void Adjust::Slider1_Change() {
    if (following_) {
        return;
    }
    sliderupdate();
    const Target& target = selected();
    (this->*target.commit)();
    if (cursor_mode::is_time(around_.cursors.cursormode)) {
        // The columns end before the wheel does: what it was turned beyond is taken back.
        follow(value_of(target));
    }
}

void Adjust::commit_level() {
    show_trigger_line(around_.acquisition);
    ask_for_set_up(around_);
}

void Adjust::commit_delays() {
    mark_new_data_needed();
    show_delay_label(ch1);
    show_delay_label(ch2);
}

void Adjust::mark_new_data_needed() {
    if (ask_for_set_up(around_)) {
        around_.acquisition.await_new_data(ch1);
        around_.acquisition.await_new_data(ch2);
    }
}

std::int32_t Adjust::delay_in_box(Channel channel) const {
    return delay_of(around_.panel.channel[channel].psofset, around_.channels[channel]);
}

void Adjust::psofset_Change(Channel channel) {
    TextBox& box = around_.panel.channel[channel].psofset;
    box.set_faulty(!typed_delay(box.text()));
}

void Adjust::psofset_Enter(Channel channel) {
    if (around_.panel.tabstrip2.selected_key() == adjust_key::horizontal) {
        take_typed_delay(channel);
    }
}

void Adjust::psofset_Leave(Channel channel) {
    TextBox& box = around_.panel.channel[channel].psofset;
    const std::int32_t delay = delay_in_box(channel);
    // What stood there before it was left may have been uploaded with something else.
    const bool sent = delay == around_.acquisition.offset[channel];
    if (!typed_delay(box.text())) {
        if (!sent) {
            mark_new_data_needed();
        }
    } else if (!sent || delay != around_.channels[channel].delay) {
        take_typed_delay(channel);
    } else if (box.text() != std::to_string(delay)) {
        box.set_text(std::to_string(delay));
        show_delay_label(channel);
    }
}

void Adjust::take_typed_delay(Channel channel) {
    TextBox& box = around_.panel.channel[channel].psofset;
    if (const auto delay = typed_delay(box.text())) {
        box.set_text(std::to_string(*delay));
        apply_delay(channel);
    }
}

void Adjust::restore_delay(Channel channel, std::string_view text) {
    around_.panel.channel[channel].psofset.set_text(std::to_string(leading_delay(text)));
    apply_delay(channel);
}

void Adjust::apply_delay(Channel channel) {
    ChannelState& state = around_.channels[channel];
    state.delay = delay_in_box(channel);
    state.delaypts = delay_points(state.delay);
    if (around_.panel.tabstrip2.selected_key() == adjust_key::horizontal) {
        refresh_wheel();
    }
    show_delay_label(channel);
    trigger_.trigposupdate();
    around_.screen.refreshCH1(0);
    around_.screen.refreshCH2(0);
    // Before the set-up counts as changed: until it is uploaded nothing is drawn.
    around_.screen.draw(draw_flags::all);
    mark_new_data_needed();
}

void Adjust::slenps_Click(Channel channel) {
    if (around_.panel.tabstrip2.selected_key() != adjust_key::horizontal) {
        return;
    }
    hposwheel_ = around_.panel.channel[channel].slenps.checked() ? wheel_at(delay_in_box(channel))
                                                                 : wheel_for_delays();
    follow(hposwheel_);
}

std::int32_t Adjust::wheel_for_delays() const {
    for (const Channel channel : both_channels) {
        if (around_.panel.channel[channel].slenps.checked()) {
            return wheel_at(delay_in_box(channel));
        }
    }
    return hposwheel_;
}

void Adjust::show_delay_label(Channel channel) {
    ChannelControls& controls = around_.panel.channel[channel];
    const std::string delay = delay_text(controls.psofset, around_.channels[channel]);
    const bool none = delay == "0" || around_.acquisition.pointmode;
    controls.hor_delay.set_caption(none ? std::string() : "Delay:  " + delay + "ps");
}

void Adjust::rescale_delays() {
    for (const Channel channel : both_channels) {
        ChannelState& state = around_.channels[channel];
        state.delaypts = delay_points(delay_in_box(channel));
        state.uploaded_delaypts = state.delaypts;
        state.shown_delaypts = state.delaypts;
    }
}

} // namespace kv408
