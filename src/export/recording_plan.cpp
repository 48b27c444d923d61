#include "export/recording_plan.h"

#include <algorithm>

namespace kv408 {

bool RecordingPace::take(std::chrono::nanoseconds now) {
    if (over()) {
        return false;
    }
    const std::uint64_t before = seen_++;
    if (plan_.interval <= std::chrono::nanoseconds::zero()) {
        if (before % std::max<std::uint64_t>(plan_.every, 1) != 0) {
            return false;
        }
    } else if (taken_ == 0) {
        due_ = now + plan_.interval;
    } else if (now < due_) {
        return false;
    } else {
        // Sweeps that were due during a pause are not made up for.
        due_ += plan_.interval * ((now - due_) / plan_.interval + 1);
    }
    ++taken_;
    return true;
}

} // namespace kv408
