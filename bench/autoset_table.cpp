// Prints the table of docs/manual/autoset-table.md: how many of the signals Autoset finds, how long
// it takes, and every one that it misses. `autoset_table 7` tries every seventh.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "support/autoset_cases.h"

int main(int count, char** arguments) {
    using namespace kv408;
    const std::size_t stride = count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 1;
    struct Row {
        int tried = 0;
        int found = 0;
        double longest = 0.0;
    };
    std::map<double, std::map<simulator::SignalKind, Row>> rows; // by frequency
    std::vector<std::string> misses;
    std::vector<double> times;
    Row all;
    const std::vector<AutosetCase> cases = autoset_cases();
    for (std::size_t index = 0; index < cases.size(); index += stride) {
        AutosetBench bench(cases[index]);
        const double seconds = bench.run();
        const std::string fault = bench.fault(seconds);
        times.push_back(seconds);
        for (Row* const row : {&rows[cases[index].hertz][cases[index].kind], &all}) {
            ++row->tried;
            row->found += fault.empty() ? 1 : 0;
            row->longest = std::max(row->longest, seconds);
        }
        if (!fault.empty()) {
            misses.push_back(name_of(cases[index]) + ": " + fault);
        }
    }
    std::printf("| frequency | sine | square | pulse 30 %% | data | longest, s |\n");
    std::printf("|---|---|---|---|---|---|\n");
    for (const auto& [hertz, kinds] : rows) {
        std::printf("| %g MHz ", hertz / 1e6);
        double longest = 0.0;
        for (const auto& [kind, row] : kinds) {
            std::printf("| %d of %d ", row.found, row.tried);
            longest = std::max(longest, row.longest);
        }
        std::printf("| %.1f |\n", longest);
    }
    std::sort(times.begin(), times.end());
    std::printf("\n%d of %d, %.2f %%; the shortest took %.2f s, half of them %.2f s at most, the "
                "longest %.2f s\n\n",
                all.found, all.tried, 100.0 * all.found / all.tried, times.front(),
                times.at(times.size() / 2), all.longest);
    for (const std::string& miss : misses) {
        std::printf("- %s\n", miss.c_str());
    }
    return 0;
}
