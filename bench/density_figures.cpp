// Collects densities on the simulated instrument and writes them, as the program exports them, and
// what the program computes of them into the folder that is named: for bench/check-figures, which
// computes the same with NumPy and SciPy.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "analysis/eye.h"
#include "analysis/histogram.h"
#include "analysis/jitter.h"
#include "export/density_file.h"
#include "support/collecting_program.h"
#include "support/known_figures.h"

namespace {

using namespace kv408;

constexpr std::uint64_t sweeps = 2000;

void write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// The figures of one density, a line each: name and value.
class Lines {
public:
    void add(const std::string& name, double value) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), " %.12g\n", value);
        lines_ += name;
        lines_ += text.data();
    }
    void add(const std::string& name, const Told<double>& value) {
        if (value) {
            add(name, *value);
        }
    }
    [[nodiscard]] const std::string& text() const { return lines_; }

private:
    std::string lines_;
};

void add_histogram(Lines& lines, const Collected& all) {
    const auto found = statistics_of(
        histogram_of(all, {.first_point = 100, .end_point = 500}, HistogramOf::levels));
    if (found) {
        lines.add("mean", found->mean);
        lines.add("median", found->median);
        lines.add("sigma", found->sigma);
        lines.add("mode", found->mode);
        lines.add("hits", found->hits);
        lines.add("within_1", found->within_1);
        lines.add("within_2", found->within_2);
    }
}

void add_eye(Lines& lines, const Collected& all) {
    const auto eye = eye_of(all, {});
    if (eye) {
        lines.add("interval", eye->interval);
        lines.add("crossing", eye->crossing);
        lines.add("one", eye->levels.one.mean);
        lines.add("zero", eye->levels.zero.mean);
        lines.add("sigma_one", eye->levels.one.sigma);
        lines.add("sigma_zero", eye->levels.zero.sigma);
        lines.add("height", eye->height);
        lines.add("q", eye->q);
        lines.add("signal_to_noise", eye->signal_to_noise);
        lines.add("crossing_level", eye->crossing_level);
        lines.add("crossing_sigma", eye->crossing_sigma);
    }
}

void add_jitter(Lines& lines, const Collected& all) {
    const auto jitter = jitter_of(all, {});
    if (jitter && jitter->way != Crosses::both) {
        lines.add("crossing_mean", jitter->times.mean);
        lines.add("crossing_times_sigma", jitter->times.sigma);
        lines.add("jitter_level", jitter->level);
        if (jitter->parts) {
            lines.add("random", jitter->parts->random);
            lines.add("deterministic", jitter->parts->deterministic);
            lines.add("total", jitter->parts->total(told_error_ratio));
        }
    }
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "density_figures <folder>\n");
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    int number = 0;
    for (const FigureCase& one : figure_cases()) {
        CollectingProgram program(one.collecting);
        const Collected& all = program.after(sweeps);
        const std::filesystem::path path = folder / ("density" + std::to_string(number++) + ".npy");
        Lines lines;
        add_histogram(lines, all);
        add_eye(lines, all);
        add_jitter(lines, all);
        write(path, density_file(all));
        write(density_axes_path(path), density_axes_file(all));
        std::filesystem::path figures = path;
        write(figures.replace_extension(".txt"), "# " + one.name + "\n" + lines.text());
    }
    return 0;
}
