#include "panel/thumb_wheel.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace kv408 {
namespace {

constexpr std::int32_t least_track_width = 4;

[[maybe_unused]] bool fits_scroll_bar(std::int32_t value) {
    return value >= std::numeric_limits<std::int16_t>::min() &&
           value <= std::numeric_limits<std::int16_t>::max();
}

} // namespace

void ThumbWheel::set_Min(std::int32_t minimum) {
    assert(fits_scroll_bar(minimum));
    minimum_ = minimum;
    shown();
}

void ThumbWheel::set_Max(std::int32_t maximum) {
    assert(fits_scroll_bar(maximum));
    maximum_ = maximum;
    shown();
}

void ThumbWheel::set_Value(std::int32_t value) {
    value_ = std::max(std::min(value, maximum_), minimum_);
    shown();
    commit();
}

void ThumbWheel::set_TrackDistance(std::int32_t pixels) {
    track_distance_ = std::max(pixels, 0);
    shift_phase(0);
    shown();
}

void ThumbWheel::set_TrackWidth(std::int32_t pixels) {
    track_width_ = std::max(pixels, least_track_width);
    shift_phase(0);
    shown();
}

void ThumbWheel::set_SlideStep(std::int32_t step) {
    slide_step_ = step;
    shown();
}

void ThumbWheel::mouse_down(std::int32_t x, std::int32_t y) {
    last_x_ = x;
    last_y_ = y;
    dragging_ = true;
}

void ThumbWheel::mouse_move(int button, std::int32_t x, std::int32_t y) {
    if (!dragging_ || button != left_mouse_button) {
        return;
    }
    const std::int32_t delta = x - last_x_;
    last_x_ = x;
    last_y_ = y;
    drag_by(delta);
}

void ThumbWheel::mouse_up() {
    dragging_ = false;
    commit();
}

void ThumbWheel::turn(std::int32_t pixels) {
    drag_by(pixels);
    commit();
}

void ThumbWheel::drag_to(std::int64_t value) {
    const auto target = std::max<std::int64_t>(std::min<std::int64_t>(value, maximum_), minimum_);
    shift_phase(target - value_);
    take(target);
}

void ThumbWheel::turn_to(std::int64_t value) {
    drag_to(value);
    commit();
}

void ThumbWheel::drag_by(std::int32_t pixels) {
    shift_phase(pixels);
    take(value_ + static_cast<std::int64_t>(pixels) * slide_step_);
}

void ThumbWheel::take(std::int64_t value) {
    const auto limited = static_cast<std::int32_t>(
        std::max<std::int64_t>(std::min<std::int64_t>(value, maximum_), minimum_));
    const bool changed = limited != value_;
    value_ = limited;
    shown();
    scrolled_ |= changed;
    if (changed && scroll_) {
        scroll_();
    }
}

void ThumbWheel::shift_phase(std::int64_t pixels) {
    const std::int64_t period = track_width_ + track_distance_;
    const std::int64_t moved = (phase_ + pixels) % period;
    phase_ = static_cast<std::int32_t>(moved < 0 ? moved + period : moved);
}

void ThumbWheel::commit() {
    // A drag that ends where it began has passed other values, and whoever followed it must know
    // its end.
    if (committed_ == value_ && !scrolled_) {
        return;
    }
    committed_ = value_;
    scrolled_ = false;
    if (change_) {
        change_();
    }
}

} // namespace kv408
