#pragma once

#include <string>

#include "panel/controls.h"

namespace kv408 {

/// The line under the status. It holds two things: why nothing can be written, as long as that is
/// so, and what was said last.
class CalibrationNote {
public:
    /// Shows itself in `label`.
    explicit CalibrationNote(Label& label) : label_(label) {}

    /// Says `text` in place of what was said last; empty: nothing.
    void say(std::string text);

    /// Says why nothing can be written, above everything else; empty: it can.
    void set_obstacle(std::string text);

private:
    void show();

    Label& label_;
    std::string said_;
    std::string obstacle_;
};

} // namespace kv408
