#include "ratio_reporter.h"

#include <cstdio>

namespace kv408::bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const auto median = run.counters.find(median_counter);
        if (median != run.counters.end()) {
            medians_[run.run_name.function_name] = median->second.value;
        }
    }
}

void RatioReporter::print_ratio(const std::string& text, const std::string& whole,
                                const std::string& part) const {
    const auto dividend = medians_.find(whole);
    const auto divisor = medians_.find(part);
    if (dividend == medians_.end() || divisor == medians_.end()) {
        return;
    }
    std::printf("%-58s %8.2f\n", text.c_str(), dividend->second / divisor->second);
}

} // namespace kv408::bench
