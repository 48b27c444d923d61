#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kv408 {

/// A measurement as the tests know it, whatever the program's own table says.
struct MeasurementLine {
    std::string_view name;  ///< in the selection lists
    std::string_view label; ///< in the results panel
    std::size_t field;
    std::size_t marked; ///< field whose places are marked
    bool in_time;       ///< marked by dots on the trace, not by level lines
};

/// All measurements, in the order of the selection lists.
inline constexpr std::array measurement_lines{MeasurementLine{"VMax", "Vmax", 0, 0, false},
                                              MeasurementLine{"VMin", "Vmin", 1, 1, false},
                                              MeasurementLine{"Vpp", "Vpp", 6, 6, false},
                                              MeasurementLine{"VAmpl+", "Ampl+", 2, 2, false},
                                              MeasurementLine{"VAmpl-", "Ampl-", 3, 3, false},
                                              MeasurementLine{"VAmplPP", "Ampl", 4, 4, false},
                                              MeasurementLine{"VRMS", "Vrms", 7, 7, false},
                                              MeasurementLine{"VMean", "Vmean", 8, 8, false},
                                              MeasurementLine{"Frequency", "f", 9, 10, true},
                                              MeasurementLine{"Period", "T", 10, 10, true},
                                              MeasurementLine{"tRise", "tr", 11, 11, true},
                                              MeasurementLine{"tFall", "tf", 12, 12, true},
                                              MeasurementLine{"tPuls+", "tp+", 13, 13, true},
                                              MeasurementLine{"tPuls-", "tp-", 14, 14, true}};

/// What the selection lists offer.
inline std::vector<std::string> measurement_entries() {
    std::vector<std::string> entries = {"---"};
    for (const MeasurementLine& line : measurement_lines) {
        entries.emplace_back(line.name);
    }
    return entries;
}

} // namespace kv408
