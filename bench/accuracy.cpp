// How closely each of the fourteen measurements agrees with the signal, at every time base and
// every V/div, and what is computed of many sweeps: prints docs/accuracy.md.

#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "state/engineering_format.h"
#include "support/known_figures.h"
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
double used(const KnownValue& value) {
    return 100.0 * std::fabs(value.value - value.truth) / value.allowed;
}

/// The cell in which a measurement of a channel agrees worst.
struct Worst {
    std::string where;
    KnownValue value = {};
    int failed = 0;
};

/// What has been found over all cells.
struct Findings {
    int cells = 0;
    std::map<std::pair<int, std::string>, Worst> worst;
    std::vector<std::string> failures;

    void take(const std::string& where, const KnownValue& value) {
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

/// Noise whose peaks reach one code: three standard deviations.
constexpr double peaks_of_one_code = 1.0 / 3.0;

/// Noise with a standard deviation of one code.
constexpr double one_code_rms = 1.0;

constexpr const char* introduction =
    "# How closely the measurements agree with the signal\n\n"
    "Printed by `cmake --preset release && cmake --build --preset release --target accuracy && "
    "build/release/bench/accuracy > docs/accuracy.md`.\n\n"
    "At every time base and every V/div the simulated instrument sees a pulse train on each "
    "channel: CH1\n-1.3 to 1.9 divisions, 40 % high, a period of 2.5 divisions, edges of 0.25 "
    "divisions (10 % to 90 %);\nCH2 -1.8 to 1.4 divisions, 60 % high, a period of 1.25 divisions, "
    "edges of 0.2 divisions. What is\nmeasured is read after the third sweep. Allowed are 1 % of "
    "the screen's height of eight divisions for\na voltage; two columns or 1 %, whichever is "
    "more, for a time; for the frequency what that makes of it.\n\n"
    "The noise of the sampler has peaks of one code (a standard deviation of a third). The last "
    "section\ntells what noise with a standard deviation of a whole code makes of it.\n";

constexpr const char* more_noise =
    "\n# With noise of three times as much\n\n"
    "With a standard deviation of one code Vpp at 10mV/div lies beyond what is allowed in some "
    "cells. It is\nthe distance between the highest and the lowest sample, noise included: of some "
    "hundred samples on a\nlevel the outermost one then lies about three codes off, and six codes "
    "are 1 mV there, 1.25 % of the\nscreen.\n";

void print_cell(const std::string& where, const std::vector<KnownValue>& values) {
    std::printf("| %s |", where.c_str());
    for (const KnownValue& value : values) {
        std::printf(" %s / %s%s |", text_of(value.name, value.truth).c_str(),
                    text_of(value.name, value.value).c_str(), value.holds() ? "" : " **!**");
    }
    std::printf("\n");
}

void print_head(int channel) {
    std::printf("\n## CH%d: true / measured\n\n| at |", channel);
    for (const MeasurementLine& line : measurement_lines) {
        std::printf(" %s |", std::string(line.name).c_str());
    }
    std::printf("\n|---|");
    for (std::size_t column = 0; column < measurement_lines.size(); ++column) {
        std::printf("---|");
    }
    std::printf("\n");
}

void print_worst(const Findings& findings) {
    std::printf("\n## Where each agrees worst\n\n"
                "| | worst at | true | measured | allowed | part of it | cells beyond |\n"
                "|---|---|---|---|---|---|---|\n");
    for (int channel = 1; channel <= 2; ++channel) {
        for (const MeasurementLine& line : measurement_lines) {
            const std::string name(line.name);
            const Worst& worst = findings.worst.at({channel, name});
            std::printf("| CH%d %s | %s | %s | %s | %s | %.0f %% | %d of %d |\n", channel,
                        name.c_str(), worst.where.c_str(), text_of(name, worst.value.truth).c_str(),
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

/// What every cell measures with `noise_codes` of noise (standard deviation).
struct Table {
    explicit Table(double noise_codes) {
        for (const TimeBaseRow& row : time_base_rows()) {
            for (const VoltsCell& volts : volts_cells) {
                std::string where(row.text);
                where += " ";
                where += volts.text;
                cells.emplace_back(where, MeasuredCell(row, volts, noise_codes).values());
                ++findings.cells;
                for (const KnownValue& value : cells.back().second) {
                    findings.take(where, value);
                }
            }
        }
    }

    std::vector<std::pair<std::string, std::vector<KnownValue>>> cells;
    Findings findings;
};

void print_cells(const Table& table) {
    const auto fields = static_cast<std::ptrdiff_t>(measurement_lines.size());
    for (int channel = 1; channel <= 2; ++channel) {
        print_head(channel);
        for (const auto& [where, values] : table.cells) {
            const auto begin = values.begin() + fields * (channel - 1);
            print_cell(where, {begin, begin + fields});
        }
    }
}

constexpr const char* many_sweeps =
    "\n# What many sweeps tell\n\n"
    "Noise, jitter and eyes of signals on CH1 of the simulated instrument, with the clock of the "
    "same rate\nas trigger and a standard deviation of one code of noise in the sampler. Each was "
    "read after as many\nsweeps as the computation itself asks for, so that chance alone takes it "
    "out of 2 % once in twenty\ntimes. What is true follows from the signal's settings and the "
    "shape "
    "of its edges, noise with the\nrounding to codes. Allowed are 2 % for noise, jitter, height, "
    "width and Q, 10 % for the dual-Dirac\nparts, one column for a mask's margin.\n";

/// `value` with the unit behind it.
std::string figure_text(double value, const std::string& unit) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.5g", value);
    return unit.empty() ? text.data() : text.data() + (" " + unit);
}

void print_figures() {
    std::printf("%s", many_sweeps);
    for (const FigureCase& one : figure_cases()) {
        CollectingProgram program(one.collecting);
        const std::vector<KnownFigure> figures = one.figures(program);
        std::printf("\n## %s\n\nAfter %llu sweeps.\n\n"
                    "| | true | found | deviation | allowed |\n|---|---|---|---|---|\n",
                    one.name.c_str(), static_cast<unsigned long long>(program.after(1).sweeps));
        for (const KnownFigure& figure : figures) {
            if (!figure.value) {
                std::printf("| %s | %s | %s **!** | | |\n", figure.name.c_str(),
                            figure_text(figure.truth, figure.unit).c_str(),
                            std::string(text_of(figure.value.why())).c_str());
                continue;
            }
            std::printf("| %s | %s | %s%s | %s | %s |\n", figure.name.c_str(),
                        figure_text(figure.truth, figure.unit).c_str(),
                        figure_text(*figure.value, figure.unit).c_str(),
                        figure.holds() ? "" : " **!**",
                        figure_text(*figure.value - figure.truth, figure.unit).c_str(),
                        figure_text(figure.allowed, figure.unit).c_str());
        }
    }
}

} // namespace

int main() {
    const Table table(peaks_of_one_code);
    std::printf("%s", introduction);
    print_worst(table.findings);
    print_cells(table);
    std::printf("%s", more_noise);
    print_worst(Table(one_code_rms).findings);
    print_figures();
    return 0;
}
