// How closely each of the fourteen measurements agrees with the signal, at every time base and
// every V/div: prints docs/accuracy.md.

#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "state/engineering_format.h"
#include "support/measured_cell.h"

namespace {

using namespace kv408;

constexpr int shown_digits = 4;

bool is_voltage(std::string_view name) {
    return name.front() == 'V';
}

/// `value` of measurement `name` as the panel writes it.
std::string text_of(std::string_view name, double value) {
    std::string text = engformat(is_voltage(name) ? value / 1000.0 : value, shown_digits);
    text += is_voltage(name) ? "V" : name == "Frequency" ? "Hz" : "s";
    return text;
}

/// A deviation of measurement `name`; times may be shorter than what the panel writes.
std::string deviation_text(std::string_view name, double value) {
    constexpr double femto = 1e-15;
    if (is_voltage(name) || name == "Frequency" || value >= 1e-12) {
        return text_of(name, value);
    }
    std::string text = engformat(value / femto, shown_digits);
    text += "fs";
    return text;
}

/// The part of what is allowed that the deviation takes, in percent.
double used(const MeasuredValue& value) {
    return 100.0 * std::fabs(value.value - value.truth) / value.allowed;
}

/// The cell in which a measurement of a channel agrees worst.
struct Worst {
    std::string where;
    MeasuredValue value = {};
    int failed = 0;
};

/// What has been found over all cells.
struct Findings {
    int cells = 0;
    std::map<std::pair<int, std::string>, Worst> worst;
    std::vector<std::string> failures;

    void take(const std::string& where, const MeasuredValue& value) {
        Worst& kept = worst[{value.channel, std::string(value.name)}];
        if (kept.where.empty() || used(value) > used(kept.value)) {
            kept.where = where;
            kept.value = value;
        }
        if (!value.holds()) {
            ++kept.failed;
            std::string line = "| ";
            line += where;
            line += " | CH";
            line += std::to_string(value.channel);
            line += " ";
            line += value.name;
            line += " | ";
            line += text_of(value.name, value.truth);
            line += " | ";
            line += text_of(value.name, value.value);
            line += " | ";
            line += deviation_text(value.name, value.allowed);
            line += " |";
            failures.push_back(line);
        }
    }
};

constexpr const char* introduction =
    "# How closely the measurements agree with the signal\n\n"
    "Printed by `cmake --preset release && cmake --build --preset release --target accuracy && "
    "build/release/bench/accuracy > docs/accuracy.md`.\n\n"
    "At every time base and every V/div the simulated instrument, with noise of one code (rms), "
    "sees a pulse\ntrain on each channel: CH1 -1.3 to 1.9 divisions, 40 % high, a period of 2.5 "
    "divisions, edges of 0.25\ndivisions (10 % to 90 %); CH2 -1.8 to 1.4 divisions, 60 % high, a "
    "period of 1.25 divisions, edges of 0.2\ndivisions. What is measured is read after the third "
    "sweep. Allowed are 1 % of the screen's height of eight\ndivisions for a voltage; two columns "
    "or 1 %, whichever is more, for a time; for the frequency what\nthat makes of it.\n\n"
    "Vpp at 10mV/div lies beyond that in most cells. It is the distance between the highest and "
    "the lowest\nsample, noise included: of some hundred samples on a level the outermost one "
    "lies about three codes\noff, and six codes are 1 mV there, 1.25 % of the screen.\n";

void print_cell(const std::string& where, const std::vector<MeasuredValue>& values) {
    std::printf("| %s |", where.c_str());
    for (const MeasuredValue& value : values) {
        std::printf(" %s / %s%s |", text_of(value.name, value.truth).c_str(),
                    text_of(value.name, value.value).c_str(), value.holds() ? "" : " **!**");
    }
    std::printf("\n");
}

void print_head(int channel) {
    std::printf("\n## CH%d: true / measured\n\n| at |", channel);
    for (const auto& [name, field] : measured_fields) {
        std::printf(" %s |", std::string(name).c_str());
    }
    std::printf("\n|---|");
    for (std::size_t column = 0; column < measured_fields.size(); ++column) {
        std::printf("---|");
    }
    std::printf("\n");
}

void print_worst(const Findings& findings) {
    std::printf("\n## Where each agrees worst\n\n"
                "| | worst at | true | measured | allowed | part of it | cells beyond |\n"
                "|---|---|---|---|---|---|---|\n");
    for (int channel = 1; channel <= 2; ++channel) {
        for (const auto& [name, field] : measured_fields) {
            const Worst& worst = findings.worst.at({channel, std::string(name)});
            std::printf("| CH%d %s | %s | %s | %s | %s | %.0f %% | %d of %d |\n", channel,
                        std::string(name).c_str(), worst.where.c_str(),
                        text_of(name, worst.value.truth).c_str(),
                        text_of(name, worst.value.value).c_str(),
                        deviation_text(name, worst.value.allowed).c_str(), used(worst.value),
                        worst.failed, findings.cells);
        }
    }
    std::printf("\n## Beyond what is allowed\n\n");
    if (findings.failures.empty()) {
        std::printf("Nothing.\n");
        return;
    }
    std::printf("| at | | true | measured | allowed |\n|---|---|---|---|---|\n");
    for (const std::string& line : findings.failures) {
        std::printf("%s\n", line.c_str());
    }
}

} // namespace

int main() {
    Findings findings;
    std::vector<std::pair<std::string, std::vector<MeasuredValue>>> cells;
    for (const TimeBaseRow& row : time_base_rows()) {
        for (const VoltsCell& volts : volts_cells) {
            std::string where(row.text);
            where += " ";
            where += volts.text;
            cells.emplace_back(where, MeasuredCell(row, volts).values());
            ++findings.cells;
            for (const MeasuredValue& value : cells.back().second) {
                findings.take(where, value);
            }
        }
    }
    std::printf("%s", introduction);
    print_worst(findings);
    for (int channel = 1; channel <= 2; ++channel) {
        print_head(channel);
        const auto first = static_cast<std::ptrdiff_t>(measured_fields.size()) * (channel - 1);
        for (const auto& [where, values] : cells) {
            const auto begin = values.begin() + first;
            print_cell(where, {begin, begin + static_cast<std::ptrdiff_t>(measured_fields.size())});
        }
    }
    return 0;
}
