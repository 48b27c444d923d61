#pragma once

#include <algorithm>

#include "panel/controls.h"

namespace kv408 {

/// A bar that fills in equal steps.
class ProgressBar : public Control {
public:
    using Control::Control;

    /// Steps taken, and steps that fill the bar (at least 1).
    [[nodiscard]] int value() const { return value_; }
    [[nodiscard]] int steps() const { return steps_; }

    /// Empties the bar; `steps` (at least 1) will fill it.
    void start(int steps) {
        steps_ = std::max(steps, 1);
        value_ = 0;
        shown();
    }

    /// Takes one step, as long as the bar is not full.
    void step() { show(value_, std::min(value_ + 1, steps_)); }

private:
    int value_ = 0;
    int steps_ = 1;
};

} // namespace kv408
