#pragma once

#include <cstdint>
#include <string>

#include "panel/controls.h"

namespace kv408 {

/// The mouse buttons as the wheel numbers them.
inline constexpr int left_mouse_button = 1;

/// An endless ribbed wheel seen from its edge, without its painting. Dragging it sideways changes
/// its value by `SlideStep` per pixel within `Min`..`Max` while the ribs move along; letting go
/// commits the value. A value is committed through a scroll bar of 16 bits, which raises the
/// change event when its own value changes or a drag has passed other values since the last commit.
class ThumbWheel : public Control {
public:
    /// A wheel with the defaults: 0..100, standing at 50, ribs of 8 pixels and gaps of 4.
    using Control::Control;

    [[nodiscard]] AnyControl kind() override { return this; }

    /// Lowest and highest value, -32768..32767; a value outside that is a programming error.
    [[nodiscard]] std::int32_t Min() const { return minimum_; }
    [[nodiscard]] std::int32_t Max() const { return maximum_; }
    /// Sets the range. The value stays as it is: whoever changes the range sets the value next.
    void set_Min(std::int32_t minimum);
    void set_Max(std::int32_t maximum);
    void set_range(std::int32_t minimum, std::int32_t maximum) {
        set_Min(minimum);
        set_Max(maximum);
    }

    /// The value now, during a drag the value dragged to.
    [[nodiscard]] std::int32_t Value() const { return value_; }
    /// Sets and commits the value, held within the range; raises the change event once when the
    /// committed value changes.
    void set_Value(std::int32_t value);

    /// Gap between two ribs in pixels; a negative gap becomes 0.
    [[nodiscard]] std::int32_t TrackDistance() const { return track_distance_; }
    void set_TrackDistance(std::int32_t pixels);

    /// Width of one rib in pixels; below 4 it becomes 4.
    [[nodiscard]] std::int32_t TrackWidth() const { return track_width_; }
    void set_TrackWidth(std::int32_t pixels);

    /// Change of the value per pixel of drag; any number.
    [[nodiscard]] std::int32_t SlideStep() const { return slide_step_; }
    void set_SlideStep(std::int32_t step);

    /// Offset of the rib pattern in pixels, 0 .. `TrackWidth` + `TrackDistance` - 1.
    [[nodiscard]] std::int32_t phase() const { return phase_; }

    /// True while a drag has changed the value and it has not been committed yet.
    [[nodiscard]] bool uncommitted() const { return scrolled_; }

    /// The mouse at (`x`, `y`) pixels: pressed, moved with `button` held, let go.
    void mouse_down(std::int32_t x, std::int32_t y);
    void mouse_move(int button, std::int32_t x, std::int32_t y);
    void mouse_up();

    /// Turns the wheel by `pixels` of drag and lets go, as keys and the mouse wheel do.
    void turn(std::int32_t pixels);

    /// Drags the wheel to `value`, held within the range, without letting go.
    void drag_to(std::int64_t value);

    /// Drags the wheel to `value`, held within the range, and lets go.
    void turn_to(std::int64_t value);

    /// Sets what a committed value does (the change event) and what a dragged one does (the scroll
    /// event).
    void on_change(Handler handler) { change_ = std::move(handler); }
    void on_scroll(Handler handler) { scroll_ = std::move(handler); }

private:
    void drag_by(std::int32_t pixels);
    void take(std::int64_t value);
    void shift_phase(std::int64_t pixels);
    void commit();

    std::int32_t minimum_ = 0;
    std::int32_t maximum_ = 100;
    std::int32_t value_ = 50;
    std::int32_t committed_ = 50; ///< the scroll bar's own value
    std::int32_t track_distance_ = 4;
    std::int32_t track_width_ = 8;
    std::int32_t slide_step_ = 1;
    std::int32_t phase_ = 0;
    std::int32_t last_x_ = 0;
    std::int32_t last_y_ = 0;
    bool dragging_ = false; ///< between mouse-down and mouse-up
    bool scrolled_ = false; ///< a drag has changed the value since the last commit
    Handler change_;
    Handler scroll_;
};

} // namespace kv408
