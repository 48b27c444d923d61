#include "display/plot_mouse.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/samples.h"

namespace kv408 {

bool PlotMouse::reaches(double at, int line) {
    return std::abs(round_to_int32(at) - line) <= grab_distance;
}

void PlotMouse::chtext_MouseDown(Channel channel, double y) {
    grab_offset_ = y;
    grab(channel == ch1 ? adjust_key::ch1 : adjust_key::ch2);
}

void PlotMouse::grab(std::string_view key) {
    grabbed_ = key;
    adjust_.select_target(key);
}

bool PlotMouse::turns_grabbed() const {
    return panel_.tabstrip2.selected_key() == grabbed_;
}

void PlotMouse::chtext_MouseMove(Channel channel, double y) {
    if (!turns_grabbed()) {
        return;
    }
    turn_to_row(channels_[channel].pos + (y - grab_offset_));
}

/// Turns the wheel to `row`, as near as half a row.
void PlotMouse::turn_to_row(double row) {
    panel_.slider1.drag_to(round_to_int32(plot::wheel_span - 2 * row));
}

void PlotMouse::chtext_MouseUp() {
    panel_.slider1.mouse_up();
}

void PlotMouse::trigertext_MouseDown(double y) {
    grab_offset_ = y;
    grab(adjust_key::trigger);
}

void PlotMouse::trigertext_MouseMove(double y) {
    if (!turns_grabbed()) {
        return;
    }
    const Channel source = panel_.selected_source().value_or(ch2);
    const ChannelState& channel = channels_[source];
    const double row =
        std::clamp<double>(panel_.trigertext.marked().value_or(0) + (y - grab_offset_),
                           plot::trigger_marker_highest, plot::trigger_marker_lowest);
    const std::int32_t code = round_to_int32(
        zero_volt_code - (row - channel.pos) / (2.0 * channel.scale * channel.vtfactor));
    panel_.slider1.drag_to(round_to_int32(static_cast<double>(code) / codes_per_wheel_step));
}

void PlotMouse::trigertext_MouseUp() {
    panel_.slider1.mouse_up();
}

bool PlotMouse::on_line(std::size_t cursor, double x, double y) const {
    if (cursor_mode::is_voltage(cursors_.cursormode)) {
        return reaches(y, cursors_.vpos[cursor]);
    }
    return cursor_mode::is_time(cursors_.cursormode) && reaches(x, cursors_.hpos[cursor]);
}

bool PlotMouse::plot_MouseDown(double x, double y, bool together) {
    // The nearer line wins where both can be reached.
    const bool voltage = cursor_mode::is_voltage(cursors_.cursormode);
    const auto distance = [&](std::size_t cursor) {
        return voltage ? std::abs(y - cursors_.vpos[cursor]) : std::abs(x - cursors_.hpos[cursor]);
    };
    held_ = distance(1) < distance(0) ? 1 : 0;
    holding_ = on_line(held_, x, y);
    if (!holding_) {
        return false;
    }
    grab(held_ == 0 ? adjust_key::cursor_1 : adjust_key::cursor_2);
    held_voltage_ = voltage;
    last_x_ = round_to_int32(x);
    last_y_ = round_to_int32(y);
    mode_before_ = cursors_.cursormode;
    if (together) {
        cursors_.cursormode = voltage ? cursor_mode::voltage_both : cursor_mode::time_both;
        screen_.draw(draw_flags::all);
    }
    return true;
}

bool PlotMouse::still_held() const {
    const std::int16_t mode = cursors_.cursormode;
    return holding_ && turns_grabbed() &&
           (held_voltage_ ? cursor_mode::is_voltage(mode) : cursor_mode::is_time(mode));
}

void PlotMouse::plot_MouseMove(double x, double y) {
    if (!still_held()) {
        return;
    }
    const bool voltage = cursor_mode::is_voltage(cursors_.cursormode);
    if (cursors_.cursormode == cursor_mode::voltage_both ||
        cursors_.cursormode == cursor_mode::time_both) {
        // From unit to unit, as a single line goes: pixels that are no whole number of units apart
        // would come to another distance at each scale.
        int& last = voltage ? last_y_ : last_x_;
        const int now = round_to_int32(voltage ? y : x);
        move_both(now - std::exchange(last, now));
    } else if (voltage) {
        turn_to_row(round_to_int32(y)); // the line stands on whole rows
    } else {
        panel_.slider1.drag_to(std::clamp(round_to_int32(x), 0, plot::width - 1));
    }
}

void PlotMouse::move_both(int distance) {
    auto& positions = cursor_mode::is_voltage(cursors_.cursormode) ? cursors_.vpos : cursors_.hpos;
    const int last =
        cursor_mode::is_voltage(cursors_.cursormode) ? plot::height - 1 : plot::width - 1;
    const auto [lowest, highest] = std::minmax(positions[0], positions[1]);
    // Both stop where the first of them meets the edge, so that their distance stays.
    const int moved = std::clamp(distance, -static_cast<int>(lowest), last - highest);
    for (std::int16_t& position : positions) {
        position = static_cast<std::int16_t>(position + moved);
    }
    screen_.calccursors();
    screen_.draw(draw_flags::all);
}

void PlotMouse::plot_MouseUp() {
    const bool held = still_held();
    holding_ = false;
    if (!held) {
        // Nothing of the line that was held is left to end.
        return;
    }
    if (cursors_.cursormode != mode_before_) {
        cursors_.cursormode = mode_before_;
        adjust_.TabStrip2_Click();
    } else {
        panel_.slider1.mouse_up();
    }
}

} // namespace kv408
