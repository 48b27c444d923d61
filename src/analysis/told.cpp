#include "analysis/told.h"

namespace kv408 {

std::string_view text_of(WhyNot why) {
    switch (why) {
    case WhyNot::no_hits:
        return "Nothing has been collected";
    case WhyNot::flat:
        return "The trace does not go between two levels";
    case WhyNot::clipped:
        return "The trace leaves the instrument's scale";
    case WhyNot::no_crossing:
        return "The trace does not cross the level there";
    case WhyNot::few_hits:
        return "More sweeps are needed";
    case WhyNot::points_apart:
        return "The edge passes between two points: choose a faster time base";
    case WhyNot::one_crossing:
        return "Two crossings have to be on the screen";
    case WhyNot::no_middle:
        return "The middle of a unit interval has to be on the screen";
    case WhyNot::no_rest:
        return "The trace has to rest at a level on the screen";
    case WhyNot::closed:
        return "The eye is closed";
    case WhyNot::only_noise:
        return "What is taken off is more than what was found";
    }
    return "";
}

} // namespace kv408
