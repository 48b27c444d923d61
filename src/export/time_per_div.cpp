#include "export/time_per_div.h"

#include "export/number_text.h"
#include "state/rounding.h"

namespace kv408 {

std::string time_per_div_text(double picoseconds) {
    const Unit* unit = picosecond_units.data();
    for (const Unit& larger : picosecond_units) {
        if (picoseconds >= larger.worth) {
            unit = &larger;
        }
    }
    // Twelve digits round away the error of the division by which the time came about.
    return number_text(picoseconds / unit->worth) + std::string(unit->name);
}

std::optional<double> time_per_div_in(std::string_view text) {
    const auto picoseconds = quantity_in(text, picosecond_units);
    return picoseconds && *picoseconds > 0.0 ? picoseconds : std::nullopt;
}

} // namespace kv408
