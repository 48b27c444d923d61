#include "export/typed_quantity.h"

#include "export/statistics_dialog.h"
#include "state/rounding.h"
#include "state/text.h"
#include "state/units.h"

namespace kv408 {
namespace {

/// `found` where it lies in `range`; marks `box` where something else is typed.
std::optional<double> taken(TextBox& box, std::optional<double> found, TypedRange range) {
    const bool none = is_blank(box.text());
    if (none || (found && (*found < range.least || *found > range.most))) {
        found.reset();
    }
    box.set_faulty(!none && !found);
    return found;
}

std::optional<double> times(std::optional<double> value, double factor) {
    return value ? std::optional(*value * factor) : std::nullopt;
}

} // namespace

std::optional<double> typed_level(TextBox& box) {
    return taken(box, times(limit_in(box.text(), MeasurementUnit::volt), millivolts_per_volt),
                 {-highest_typed_level, highest_typed_level});
}

std::optional<double> typed_time(TextBox& box, TypedRange range) {
    return taken(box, times(limit_in(box.text(), MeasurementUnit::second), picoseconds_per_second),
                 range);
}

std::optional<int> typed_whole(TextBox& box, TypedRange range) {
    const auto typed = whole_number_in(box.text());
    const auto found = taken(box, typed ? std::optional<double>(*typed) : std::nullopt, range);
    return found ? typed : std::nullopt;
}

std::optional<double> typed_ratio(TextBox& box, TypedRange range) {
    return taken(box, entire_number(box.text()), range);
}

} // namespace kv408
