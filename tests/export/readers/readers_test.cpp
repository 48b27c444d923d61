// The files and tables as python3-numpy, Python and sigrok-cli read them.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/synthetic.h"
#include "export/computed_channel.h"
#include "export/csv.h"
#include "export/density_file.h"
#include "export/export_type.h"
#include "export/measurement_log.h"
#include "export/recording_files.h"
#include "export/sample_sweep.h"
#include "export/sigrok_session.h"
#include "host/system_files.h"
#include "maths/maths_evaluator.h"
#include "measure/statistics.h"
#include "spectrum/spectrum.h"
#include "state/measurement_state.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

/// What `command` prints to either output.
std::string output_of(const std::string& command) {
    std::FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    std::string text;
    std::array<char, 4096> part = {};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) {
        text.append(part.data(), count);
    }
    EXPECT_EQ(pclose(pipe), 0) << command << '\n' << text;
    return text;
}

/// The numbers in `text`, each line a row; lines that begin otherwise are left out.
std::vector<std::vector<double>> rows_in(const std::string& text) {
    std::vector<std::vector<double>> rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::vector<double> row;
        const char* at = line.data();
        const char* const end = line.data() + line.size();
        double number = 0.0;
        for (auto read = std::from_chars(at, end, number); read.ec == std::errc();
             read = std::from_chars(at, end, number)) {
            row.push_back(number);
            at = read.ptr;
            if (at == end) {
                break;
            }
            ++at; // the comma
        }
        if (!row.empty() && at == end) {
            rows.push_back(row);
        }
    }
    return rows;
}

/// Files of a sweep in a folder of their own.
struct Exported {
    explicit Exported(const Sweep& taken) : sweep(exported(taken)) {}

    /// Writes the sweep as a file with this ending; its path, which no shell needs quoted.
    [[nodiscard]] std::string file(const std::string& ending) const {
        std::string path = (folder.path() / ("curve" + ending)).string();
        std::ofstream(path, std::ios::binary)
            << export_types().at(export_type_of(path).value()).bytes(sweep);
        return path;
    }

    /// Runs a line of the Python that Debian has numpy for, as np; `f` is the name of the file.
    [[nodiscard]] std::string python(const std::string& ending, const std::string& line) const {
        return output_of("/usr/bin/python3 -c 'import sys, numpy as np; f = sys.argv[1]; " + line +
                         "' " + file(ending));
    }

    /// The rows that a reader should find: times, unless they are `without_times`, and volts.
    [[nodiscard]] std::vector<std::vector<double>> rows(bool without_times = false) const {
        std::vector<std::vector<double>> wanted;
        for (std::size_t point = 0; point < sweep.channels.front().mv.size(); ++point) {
            wanted.emplace_back();
            for (const ExportedChannel& channel : sweep.channels) {
                if (!without_times &&
                    (!sweep.same_times() || &channel == &sweep.channels.front())) {
                    wanted.back().push_back(channel.time(point));
                }
                wanted.back().push_back(channel.volts(point));
            }
        }
        return wanted;
    }

    TemporaryFolder folder;
    ExportedSweep sweep;
};

/// Compares each number of `found` with that of `wanted`, which may differ by `part` of it.
void expect_rows(const std::vector<std::vector<double>>& found,
                 const std::vector<std::vector<double>>& wanted, double part) {
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t row = 0; row < wanted.size(); ++row) {
        ASSERT_EQ(found[row].size(), wanted[row].size()) << "row " << row;
        for (std::size_t column = 0; column < wanted[row].size(); ++column) {
            ASSERT_LE(std::abs(found[row][column] - wanted[row][column]),
                      part * std::abs(wanted[row][column]))
                << row << ", " << column;
        }
    }
}

constexpr double twelve_digits = 5e-12;
constexpr double exactly = 0.0;
const std::string print_rows =
    "[print(*[repr(float(x)) for x in r], sep=\",\") for r in a.tolist()]";

TEST(NumpyReads, AnArrayToTheLastBit) {
    for (const Sweep& sweep : {block_sweep(), block_sweep(64.0), pass_sweep()}) {
        Exported files(sweep);
        const std::string text = files.python(".npy", "a = np.load(f); " + print_rows);
        expect_rows(rows_in(text), files.rows(), exactly);
    }
    const std::string names = "a = np.load(f); print(a.dtype.names, a.dtype.itemsize, a.shape)";
    EXPECT_EQ(Exported(block_sweep()).python(".npy", names), "('time', 'ch1', 'ch2') 24 (650,)\n");
    EXPECT_EQ(Exported(block_sweep(64.0)).python(".npy", names),
              "('time1', 'ch1', 'time2', 'ch2') 32 (650,)\n");
    EXPECT_EQ(Exported(pass_sweep()).python(".npy", names), "('time', 'ch2') 16 (640,)\n");
}

TEST(NumpyReads, NoNumberWhereAChannelHasFewerPoints) {
    Exported files(block_sweep());
    files.sweep.channels.back().mv.resize(649);
    EXPECT_EQ(files.python(".npy", "a = np.load(f); print(a.dtype.names, a.shape, "
                                   "np.isnan(a[\"ch2\"]).sum(), np.isnan(a[\"time2\"][-1]))"),
              "('time1', 'ch1', 'time2', 'ch2') (650,) 1 True\n");
}

// What docs/manual/spectrum.md defines.
TEST(NumpyReads, WhatItsOwnTransformAgreesWithTheSpectrumOf) {
    const std::array windows = {
        std::pair{SpectrumWindow::none, "1 + 0 * t"},
        std::pair{SpectrumWindow::hann, "0.5 - 0.5 * np.cos(t)"},
        std::pair{
            SpectrumWindow::blackman_harris,
            "0.35875 - 0.48829 * np.cos(t) + 0.14128 * np.cos(2 * t) - 0.01168 * np.cos(3 * t)"},
        std::pair{SpectrumWindow::flat_top,
                  "0.21557895 - 0.41663158 * np.cos(t) + 0.277263158 * np.cos(2 * t) - "
                  "0.083578947 * np.cos(3 * t) + 0.006947368 * np.cos(4 * t)"}};
    for (const Sweep& sweep : {block_sweep(), pass_sweep()}) {
        Exported files(sweep);
        const ExportedChannel& channel = files.sweep.channels.back();
        for (const auto& [window, weights] : windows) {
            const Spectrum ours = spectrum_of(channel.mv, channel.interval, window);
            const std::string text = files.python(
                ".npy", "a = np.load(f); v = a[\"ch2\"]; n = len(v); t = 2 * np.pi * "
                        "np.arange(n) / n; w = " +
                            std::string(weights) +
                            "; h = 0.5 - 0.5 * np.cos(t); m = (v * h).sum() / h.sum(); "
                            "x = np.fft.rfft((v - m) * w) / w.sum(); p = 2 * abs(x) ** 2; "
                            "p[-1] /= 2; p[0] = m ** 2; print(repr(float(1 / (a[\"time\"][1]"
                            " - a[\"time\"][0]) / n))); [print(repr(float(q))) for q in p]");
            const auto rows = rows_in(text);
            ASSERT_EQ(rows.size(), ours.power.size() + 1);
            EXPECT_NEAR(rows[0][0], ours.step, 1e-9 * ours.step);
            double highest = 0.0;
            for (const double power : ours.power) {
                highest = std::max(highest, power);
            }
            for (std::size_t line = 0; line < ours.power.size(); ++line) {
                EXPECT_NEAR(rows[line + 1][0], ours.power[line], 1e-9 * highest) << line;
            }
        }
    }
}

/// Adds to `files`, those of the last of `sweeps`, what `functions` compute of them.
void compute(const std::vector<Sweep>& sweeps, std::span<const MathsFunction> functions,
             Exported& files) {
    for (std::size_t place = 0; place < functions.size(); ++place) {
        MathsEvaluator maths;
        maths.define({functions[place], ch1, ch2});
        for (const Sweep& sweep : sweeps) {
            maths.take(sweep);
        }
        add_computed(*maths.trace(), maths_name(place), 1.0, 0.0, sweeps.back(), files.sweep);
    }
}

/// Points that no formula has by chance alike: noise of a generator that is the same everywhere.
Sweep noisy_sweep(double delay, unsigned seed) {
    Sweep sweep = block_sweep(delay);
    std::minstd_rand random(seed);
    for (auto& channel : sweep.channel) {
        ChannelSweep part = *channel;
        for (double& level : part.mv) {
            level = static_cast<double>(random() % 4096) / 6.0 - 340.0;
        }
        channel = std::make_shared<const ChannelSweep>(part);
    }
    return sweep;
}

// What docs/manual/maths.md defines; SciPy's cumulative_trapezoid is the sum that stands here.
TEST(NumpyReads, WhatItComputesItselfOfTheChannelsAgreesWithTheMaths) {
    const std::string begin = "a = np.load(f); m = a[\"math1\"]; ok = ~np.isnan(m); m = m[ok]; x = "
                              "a[\"ch1\"]; y = a[\"ch2\"]; n = a.dtype.names; t1 = a[n[0]]; t2 = "
                              "a[\"time2\"] if \"time2\" in n else t1; T = t1[1] - t1[0]; "
                              "s = (t1 >= t2[0]) & (t1 <= t2[-1]); w = ";
    const std::string end = "; print(repr(float(np.abs(m - w).max() / np.abs(w).max())), "
                            "len(m), sep=\",\")";
    const std::array formulas = {
        std::pair{MathsFunction::sum, "(x + np.interp(t1, t2, y))[s]"},
        std::pair{MathsFunction::difference, "(x - np.interp(t1, t2, y))[s]"},
        std::pair{MathsFunction::product, "(x * np.interp(t1, t2, y))[s]"},
        std::pair{MathsFunction::negative, "-x"},
        std::pair{MathsFunction::derivative, "np.gradient(x, T)"},
        std::pair{MathsFunction::integral,
                  "np.concatenate([[0], np.cumsum(T * (x[1:] + x[:-1]) / 2)])"}};
    for (const double delay : {0.0, 100.0, 64000.0}) {
        for (const auto& [function, formula] : formulas) {
            const Sweep sweep = noisy_sweep(delay, 7);
            Exported files(sweep);
            compute({sweep}, std::array{function}, files);
            const bool two = std::string_view(formula).ends_with("[s]");
            // Delayed by 64 ns the second channel begins 204.5 points later.
            const std::size_t points = !two || delay == 0.0 ? 650 : delay < 313.0 ? 649 : 445;
            const auto rows = rows_in(files.python(".npy", begin + formula + end));
            ASSERT_EQ(rows.size(), 1U) << formula;
            EXPECT_LT(rows[0][0], 1e-9) << formula << " at " << delay;
            EXPECT_EQ(rows[0][1], static_cast<double>(points)) << formula << " at " << delay;
        }
    }
}

TEST(NumpyReads, MeanAndEnvelopeOfTheSweepsAsTheMathsHasThem) {
    std::vector<Sweep> sweeps;
    for (unsigned seed = 1; seed <= 5; ++seed) {
        sweeps.push_back(noisy_sweep(0.0, seed));
    }
    Exported files(sweeps.back());
    compute(sweeps, std::array{MathsFunction::mean, MathsFunction::envelope}, files);
    for (std::size_t sweep = 0; sweep < sweeps.size(); ++sweep) {
        const Exported one(sweeps[sweep]);
        std::filesystem::copy(one.file(".npy"),
                              files.folder.path() / (std::to_string(sweep) + "one.npy"));
    }
    const auto rows = rows_in(files.python(
        ".npy", "import glob, os; a = np.load(f); s = np.array([np.load(g)[\"ch1\"] for g in "
                "sorted(glob.glob(os.path.dirname(f) + \"/*one.npy\"))]); "
                "print(len(s), *[repr(float(np.abs(a[c] - w).max() / np.abs(w).max())) for c, w in "
                "[(\"math1\", s.mean(0)), (\"math2max\", s.max(0)), (\"math2min\", s.min(0))]], "
                "sep=\",\")"));
    ASSERT_EQ(rows.size(), 1U);
    ASSERT_EQ(rows[0].size(), 4U);
    EXPECT_EQ(rows[0][0], 5.0);
    for (std::size_t line = 1; line < 4; ++line) {
        EXPECT_LT(rows[0][line], 1e-9);
    }
}

TEST(NumpyReads, OurCsvWithItsHeadings) {
    for (const Sweep& sweep : {block_sweep(), block_sweep(64.0), pass_sweep()}) {
        Exported files(sweep);
        const std::string read = "a = np.genfromtxt(f, delimiter=\",\", names=True, "
                                 "deletechars=\"\", skip_header=";
        const std::string comments = std::to_string(9 + 3 * files.sweep.channels.size());
        const std::string text = files.python(".csv", read + comments + "); " + print_rows);
        expect_rows(rows_in(text), files.rows(), twelve_digits);
    }
}

TEST(NumpyReads, ARecordingWithEachSweepInItsLines) {
    Exported block(block_sweep(64.0));
    Exported pass(pass_sweep());
    pass.sweep.number = 8;
    const std::filesystem::path path = block.folder.path() / "run.csv";
    SystemFiles files;
    SavedFile begun;
    {
        OneRecordingFile recording(files, path, false, begun);
        ASSERT_EQ(recording.add(block.sweep).status, FileStatus::done);
        ASSERT_EQ(recording.add(pass.sweep).status, FileStatus::done);
    }
    const auto rows = rows_in(output_of(
        "/usr/bin/python3 -c 'import numpy as np; a = np.genfromtxt(\"" + path.string() +
        "\", delimiter=\",\", names=True, dtype=None, encoding=\"utf-8\", deletechars=\"\"); "
        "assert a.dtype.names[2:] == (\"Time_CH1_(s)\", \"CH1_(V)\", \"Time_CH2_(s)\", "
        "\"CH2_(V)\"), a.dtype; [print(*[repr(float(r[n])) for n in (0, 2, 3, 4, 5)], sep=\",\") "
        "for r in a]'"));
    const auto of_block = block.rows();
    const auto of_pass = pass.rows();
    std::vector<std::vector<double>> wanted;
    wanted.reserve(of_block.size());
    for (const std::vector<double>& row : of_block) {
        wanted.push_back({7.0, row.at(0), row.at(1), row.at(2), row.at(3)});
    }
    expect_rows({rows.begin(), rows.begin() + 650}, wanted, twelve_digits);
    for (std::size_t point = 0; point < of_pass.size(); ++point) {
        const std::vector<double>& row = rows.at(650 + point);
        EXPECT_EQ(row.at(0), 8.0);
        EXPECT_TRUE(std::isnan(row.at(1)) && std::isnan(row.at(2))) << "CH1 was off";
        expect_rows({{row.at(3), row.at(4)}}, {of_pass.at(point)}, twelve_digits);
    }
}

TEST(NumpyReads, ADensityWithItsAxes) {
    // 640 points of 10 ps from 1 ns on, a quarter of a millivolt per code; two sweeps at 25 mV,
    // which is code 2148, and one at -25 mV, 1948.
    Collected collected = synthetic::nothing();
    synthetic::count(collected, 2, [](double) { return 25.0; });
    synthetic::count(collected, 1, [](double) { return -25.0; });
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "density.npy";
    std::ofstream(path, std::ios::binary) << density_file(collected);
    std::ofstream(density_axes_path(path), std::ios::binary) << density_axes_file(collected);
    EXPECT_EQ(output_of("/usr/bin/python3 -c 'import numpy as np; a = np.load(\"" + path.string() +
                        "\"); x = np.load(\"" + density_axes_path(path).string() +
                        "\"); print(a.shape, a.dtype, a.sum(), (a[:, 2148] == 2).all(), "
                        "(a[:, 1948] == 1).all()); print(x[\"first_time\"], x[\"time_per_point\"], "
                        "x[\"sweeps\"], x[\"weight\"]); mean = (a[7] * x[\"levels\"]).sum() / "
                        "a[7].sum(); print(round(float(mean), 9))'"),
              "(640, 4096) uint32 1920 True True\n1e-09 1e-11 3 1.0\n0.008333333\n");
}

TEST(PythonReads, TheLogOfTheStatistics) {
    Exported files(block_sweep());
    Statistics statistics;
    MeasurementState measured; // no widths: no edge was found
    measured.measresults[ch2][meas::vmax] = 125.0;
    for (int sweep = 0; sweep <= Statistics::settling_sweeps; ++sweep) {
        statistics.take(block_sweep(), measured);
    }
    const std::string path = (files.folder.path() / "log.csv").string();
    std::ofstream(path) << measurement_log_headings({.version = "1", .serial = "S"})
                        << measurement_log_line(7, "today", statistics);
    EXPECT_EQ(output_of("/usr/bin/python3 -c 'import csv; rows = list(csv.DictReader(line for line "
                        "in open(\"" +
                        path +
                        "\") if line[0] != \"#\")); print(len(rows), len(rows[0]), "
                        "rows[0][\"Sweep\"], rows[0][\"CH2 VMax (V)\"], "
                        "repr(rows[0][\"CH2 Period (s)\"]))'"),
              "1 30 7 0.125 \'\'\n");
}

TEST(PythonReads, TheTableOfTheClipboard) {
    for (const Sweep& sweep : {block_sweep(), block_sweep(64.0)}) {
        Exported files(sweep);
        const std::string path = (files.folder.path() / "table.txt").string();
        std::ofstream(path) << tab_separated(files.sweep);
        const std::string text =
            output_of("/usr/bin/python3 -c 'import csv; rows = list(csv.reader(open(\"" + path +
                      "\"), delimiter=\"\\t\")); print(rows[0]); "
                      "[print(*row, sep=\",\") for row in rows[1:]]'");
        EXPECT_EQ(text.substr(0, text.find('\n')),
                  files.sweep.same_times()
                      ? "['Time (s)', 'CH1 (V)', 'CH2 (V)']"
                      : "['Time CH1 (s)', 'CH1 (V)', 'Time CH2 (s)', 'CH2 (V)']");
        expect_rows(rows_in(text), files.rows(), twelve_digits);
    }
}

TEST(PythonReads, TheSigrokArchiveWithoutAComplaint) {
    Exported files(block_sweep());
    EXPECT_EQ(files.python(".sr", "import zipfile; z = zipfile.ZipFile(f); "
                                  "print(z.testzip(), *z.namelist())"),
              "None version metadata analog-1-1-1 analog-1-2-1\n");
}

TEST(SigrokReads, ASession) {
    for (const Sweep& sweep : {block_sweep(), pass_sweep()}) {
        Exported files(sweep);
        const std::string path = files.file(".sr");
        const std::string shown = output_of("sigrok-cli --input-file " + path + " --show");
        EXPECT_NE(shown.find("Samplerate: " + std::to_string(sigrok_sample_rate(files.sweep))),
                  std::string::npos)
            << shown;
        for (const ExportedChannel& channel : files.sweep.channels) {
            EXPECT_NE(shown.find("- " + channel.name + ": analog"), std::string::npos) << shown;
        }
        const std::string points = output_of("sigrok-cli --input-file " + path +
                                             " -O csv:time=false:header=false:label=off");
        constexpr double float32_and_six_digits = 1e-5;
        expect_rows(rows_in(points), files.rows(true), float32_and_six_digits);
    }
}

TEST(SigrokReads, OurCsv) {
    // The columns as the manual tells them; of two columns of times sigrok takes the first.
    for (const auto& [sweep, columns] :
         {std::pair{block_sweep(), "t,2a"}, std::pair{pass_sweep(), "t,a"},
          std::pair{block_sweep(64.0), "t,a,-,a"}}) {
        Exported files(sweep);
        const std::string points = output_of(
            "sigrok-cli -I csv:comment_leader=#:header=yes:column_formats=" + std::string(columns) +
            " --input-file " + files.file(".csv") + " -O csv:time=false:header=false:label=off");
        expect_rows(rows_in(points), files.rows(true), 1e-5);
    }
}

} // namespace
} // namespace kv408
