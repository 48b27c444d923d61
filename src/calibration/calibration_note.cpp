#include "calibration/calibration_note.h"

#include <utility>

namespace kv408 {

void CalibrationNote::say(std::string text) {
    said_ = std::move(text);
    show();
}

void CalibrationNote::set_obstacle(std::string text) {
    if (obstacle_ != text) {
        obstacle_ = std::move(text);
        show();
    }
}

void CalibrationNote::show() {
    std::string text = obstacle_;
    text += obstacle_.empty() || said_.empty() ? "" : "\n";
    text += said_;
    label_.set_caption(std::move(text));
}

} // namespace kv408
