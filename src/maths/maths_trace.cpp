#include "maths/maths_trace.h"

#include <algorithm>
#include <cmath>

#include "state/plot_geometry.h"
#include "state/units.h"

namespace kv408 {

std::string_view unit_name(MathsUnit unit) {
    constexpr std::array<std::string_view, 4> names = {"V", "V^2", "V/s", "Vs"};
    return names.at(static_cast<std::size_t>(unit));
}

bool MathsDefinition::has_two_channels() const {
    return function == MathsFunction::sum || function == MathsFunction::difference ||
           function == MathsFunction::product;
}

bool MathsDefinition::has_sweeps() const {
    return function == MathsFunction::mean || function == MathsFunction::envelope;
}

MathsUnit MathsDefinition::unit() const {
    switch (function) {
    case MathsFunction::product:
        return MathsUnit::square_volt;
    case MathsFunction::derivative:
        return MathsUnit::volt_per_second;
    case MathsFunction::integral:
        return MathsUnit::volt_second;
    default:
        return MathsUnit::volt;
    }
}

std::string MathsDefinition::label() const {
    std::string text;
    for (const char letter : maths_function_names.at(static_cast<std::size_t>(function))) {
        text += letter == 'A'   ? channel_label(a)
                : letter == 'B' ? channel_label(b)
                                : std::string(1, letter);
    }
    return text;
}

std::vector<double> screen_columns(const MathsTrace& trace) {
    constexpr double rounding = 1e-9; // quotients that are whole lie a little beside that
    const double columns_per_point =
        trace.columns_per_second * trace.time_per_point / picoseconds_per_second;
    const auto points = trace.first_point + trace.values.size();
    std::vector<double> columns;
    for (int column = 0; column + 1 < plot::width; ++column) {
        const double place = std::max(column / columns_per_point + rounding, 0.0);
        if (place >= static_cast<double>(points)) {
            break;
        }
        const auto point = static_cast<std::size_t>(place);
        if (point >= trace.first_point) {
            columns.push_back(trace.values[point - trace.first_point]);
        }
    }
    return columns;
}

} // namespace kv408
