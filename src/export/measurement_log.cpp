#include "export/measurement_log.h"

#include "export/number_text.h"
#include "measure/measured_value.h"
#include "measure/measurement_rows.h"
#include "state/channel.h"

namespace kv408 {

std::string measurement_log_headings(const ExportOrigin& origin) {
    std::string text = "# Kv408 " + origin.version + "\n# serial: " + origin.serial;
    text += "\nSweep,Date";
    for (const Channel channel : both_channels) {
        for (const MeasurementRow& row : measurement_rows()) {
            text += channel == ch1 ? ",CH1 " : ",CH2 ";
            text.append(row.name).append(" (").append(unit_name(row.unit)).append(")");
        }
    }
    return text += '\n';
}

std::string measurement_log_line(std::uint64_t sweep, const std::string& date,
                                 const Statistics& statistics) {
    std::string text = std::to_string(sweep) + ',' + date;
    for (const Channel channel : both_channels) {
        for (std::size_t row = 0; row < measurement_rows().size(); ++row) {
            text += ',';
            const auto& present = statistics.of(channel, row).present;
            if (present && present->value) {
                text += number_text(*present->value);
            }
        }
    }
    return text += '\n';
}

} // namespace kv408
