#include "export/csv.h"

#include <algorithm>
#include <vector>

#include "export/number_text.h"
#include "export/time_per_div.h"
#include "state/units.h"

namespace kv408 {
namespace {

std::string comments(const ExportedSweep& sweep, bool of_one_sweep) {
    std::string text = "# Kv408 " + sweep.version + '\n';
    const auto add = [&text](const std::string& name, const std::string& value) {
        text += "# " + name + ": " + value + '\n';
    };
    add("serial", sweep.serial);
    if (of_one_sweep) {
        add("date", sweep.date);
    }
    add("mode", sweep.mode);
    if (of_one_sweep) {
        add("sweep", std::to_string(sweep.number));
    }
    add("time/div", time_per_div_text(sweep.time_per_div));
    add("interval (s)", number_text(sweep.channels.empty() ? 0.0
                                                           : sweep.channels.front().interval /
                                                                 picoseconds_per_second));
    for (const ExportedChannel& channel : sweep.channels) {
        if (channel.computed()) {
            add(channel.name, channel.formula);
            add(channel.name + " follows", channel.follows == ch1 ? "CH1" : "CH2");
        }
        add(channel.name + " " + channel.unit + "/div", number_text(channel.v_per_div));
        add(channel.name + " position (div)", number_text(channel.position));
        add(channel.name + " delay (s)", number_text(channel.delay / picoseconds_per_second));
    }
    add("trigger", sweep.trigger);
    add("averaging", sweep.averaged ? "on" : "off");
    return text;
}

/// Appends `cells`, separated by `separator`, as a line.
void add_line(std::string& text, const std::vector<std::string>& cells, char separator) {
    for (const std::string& cell : cells) {
        if (&cell != &cells.front()) {
            text += separator;
        }
        text += cell;
    }
    text += '\n';
}

std::string table(const ExportedSweep& sweep, char separator) {
    const bool shared = sweep.same_times();
    std::vector<std::string> cells;
    std::size_t points = 0;
    for (const ExportedChannel& channel : sweep.channels) {
        if (!shared) {
            cells.push_back("Time " + channel.name + " (s)");
        } else if (cells.empty()) {
            cells.emplace_back("Time (s)");
        }
        cells.push_back(channel.name + " (" + channel.unit + ")");
        points = std::max(points, channel.mv.size());
    }
    std::string text;
    add_line(text, cells, separator);
    for (std::size_t point = 0; point < points; ++point) {
        cells.clear();
        for (const ExportedChannel& channel : sweep.channels) {
            const bool there = point < channel.mv.size();
            if (!shared || cells.empty()) {
                cells.push_back(there ? number_text(channel.time(point)) : std::string());
            }
            cells.push_back(there ? number_text(channel.volts(point)) : std::string());
        }
        add_line(text, cells, separator);
    }
    return text;
}

} // namespace

std::string csv_text(const ExportedSweep& sweep) {
    return comments(sweep, true) + table(sweep, ',');
}

std::string set_up_comments(const ExportedSweep& sweep) {
    return comments(sweep, false);
}

std::string tab_separated(const ExportedSweep& sweep) {
    return table(sweep, '\t');
}

} // namespace kv408
