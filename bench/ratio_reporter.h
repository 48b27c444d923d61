#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace kv408::bench {

/// The counter in which a benchmark reports the median of its iterations, in seconds.
inline constexpr const char* median_counter = "median";

/// Prints the results as usual and keeps the median of each benchmark, for the ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints how many times the median of `part` goes into that of `whole`, after `text`; nothing
    /// when one of them was not run.
    void print_ratio(const std::string& text, const std::string& whole,
                     const std::string& part) const;

private:
    std::map<std::string, double> medians_; ///< seconds an iteration, by name
};

} // namespace kv408::bench
