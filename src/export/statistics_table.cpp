#include "export/statistics_table.h"

#include "export/number_text.h"
#include "measure/measured_value.h"
#include "measure/measurement_rows.h"
#include "state/engineering_format.h"

namespace kv408 {
namespace {

constexpr int shown_digits = 4;

std::string with_unit(double value, std::size_t row) {
    return engformat(value, shown_digits).append(unit_name(measurement_rows()[row].unit));
}

std::uint64_t without(const MeasurementStatistics& cell, NoValue why) {
    return cell.without.at(static_cast<std::size_t>(why));
}

/// How many sweeps had no value, and why: "3: no edge on the screen".
std::string without_text(const MeasurementStatistics& cell) {
    std::string text;
    for (const NoValue why : {NoValue::no_edge, NoValue::too_steep}) {
        if (const std::uint64_t count = without(cell, why); count > 0) {
            text += text.empty() ? "" : "; ";
            text.append(std::to_string(count)).append(": ").append(reason_text(why));
        }
    }
    return text;
}

void add_cell(std::string& line, const std::string& cell) {
    line += '\t';
    line += cell;
}

} // namespace

std::string value_name(std::size_t channel, std::size_t row) {
    std::string name = channel == 0 ? "CH1 " : "CH2 ";
    return name.append(measurement_rows()[row].name);
}

std::string present_text(const Statistics& statistics, std::size_t channel, std::size_t row) {
    const auto& present = statistics.of(channel, row).present;
    return present && present->value ? with_unit(*present->value, row) : std::string();
}

bool is_outside(const Statistics& statistics, std::size_t channel, std::size_t row) {
    const auto& present = statistics.of(channel, row).present;
    return present && present->value && !statistics.limits(channel, row).hold(*present->value);
}

StatisticsCells statistics_cells(const Statistics& statistics, std::size_t channel,
                                 std::size_t row) {
    const MeasurementStatistics& cell = statistics.of(channel, row);
    StatisticsCells cells;
    cells[statistics_column::value] = value_name(channel, row);
    cells[statistics_column::present] = present_text(statistics, channel, row);
    if (cell.values.count() > 0) {
        cells[statistics_column::mean] = with_unit(cell.values.mean(), row);
        cells[statistics_column::deviation] = with_unit(cell.values.deviation(), row);
        cells[statistics_column::least] = with_unit(cell.values.least(), row);
        cells[statistics_column::greatest] = with_unit(cell.values.greatest(), row);
    }
    cells[statistics_column::count] = std::to_string(cell.values.count());
    const ValueLimits& limits = statistics.limits(channel, row);
    if (limits.least || limits.greatest) {
        cells[statistics_column::outside] = std::to_string(cell.outside);
    }
    cells[statistics_column::without] = without_text(cell);
    return cells;
}

std::string statistics_table(const Statistics& statistics) {
    std::string text = "Value\tUnit\tPresent\tMean\tStd dev\tLeast\tGreatest\tCount\tOutside";
    for (const NoValue why : {NoValue::no_edge, NoValue::too_steep}) {
        add_cell(text, std::string(reason_text(why)));
    }
    text += '\n';
    for (const std::size_t channel : {0U, 1U}) {
        for (std::size_t row = 0; row < measurement_rows().size(); ++row) {
            const MeasurementStatistics& cell = statistics.of(channel, row);
            const RunningStatistics& values = cell.values;
            text += value_name(channel, row);
            add_cell(text, std::string(unit_name(measurement_rows()[row].unit)));
            const bool present = cell.present && cell.present->value;
            add_cell(text, present ? number_text(*cell.present->value) : std::string());
            for (const double value :
                 {values.mean(), values.deviation(), values.least(), values.greatest()}) {
                add_cell(text, values.count() > 0 ? number_text(value) : std::string());
            }
            for (const std::uint64_t count :
                 {values.count(), cell.outside, without(cell, NoValue::no_edge),
                  without(cell, NoValue::too_steep)}) {
                add_cell(text, std::to_string(count));
            }
            text += '\n';
        }
    }
    return text;
}

} // namespace kv408
