// Everything that the instrument sends is damaged alike, or nothing triggers, all through a
// scenario and for two seconds more. Judged as in fault_operations_test.cpp.

#include <functional>

#include "scope/fault_run.h"

namespace kv408 {
namespace {

using simulator::AcknowledgeFault;
using simulator::Faults;

/// How many ticks the damage outlasts the steps.
constexpr int ticks_more = 20;

struct LineFault {
    std::string name;
    std::function<void(Faults&)> set;
};

std::vector<LineFault> line_faults() {
    std::vector<LineFault> all = {
        {"acknowledges lost", [](Faults& faults) { faults.acknowledge = AcknowledgeFault::lost; }},
        {"acknowledges wrong",
         [](Faults& faults) { faults.acknowledge = AcknowledgeFault::wrong; }},
        {"no trigger", [](Faults& faults) { faults.no_trigger = true; }}};
    for (const int every : {1, 2, 3, 10, 100, 1000}) {
        all.push_back({"byte lost, every " + std::to_string(every),
                       [every](Faults& faults) { faults.lose_every = every; }});
    }
    for (const Byte bits : std::vector<Byte>{0x01, 0x55, 0xFF}) {
        all.push_back({"bits flipped, " + std::to_string(bits),
                       [bits](Faults& faults) { faults.flipped_bits = bits; }});
    }
    for (const std::vector<Byte>& bytes : {std::vector<Byte>{0}, {6}, {1, 2, 3}}) {
        all.push_back({"bytes before, " + std::to_string(bytes.size()) + " from " +
                           std::to_string(bytes.front()),
                       [bytes](Faults& faults) { faults.extra_bytes = bytes; }});
    }
    for (const std::size_t length : std::vector<std::size_t>{0, 1, 2, 700, 1299}) {
        all.push_back({"blocks cut to " + std::to_string(length),
                       [length](Faults& faults) { faults.block_bytes = length; }});
    }
    return all;
}

std::vector<std::string> names_of_all() {
    std::vector<std::string> names;
    for (const auto& scenarios : {fault_scenarios(), point_pass_scenarios()}) {
        for (const FaultScenario& scenario : scenarios) {
            names.push_back(scenario.name);
        }
    }
    return names;
}

class LineFaults : public testing::TestWithParam<std::string> {};

TEST_P(LineFaults, EachAllThrough) {
    const FaultScenario scenario = fault_scenario(GetParam());
    FaultTally tally(scenario);
    const std::vector<LineFault> faults = line_faults();
    ASSERT_EQ(faults.size(), 20U);
    std::size_t expected = 0;
    // Under the sanitizers, where all of them take minutes, every tenth, not of each scenario the
    // same.
    for (std::size_t index = scenario.name.size() % series_stride; index < faults.size();
         index += series_stride) {
        const LineFault& fault = faults[index];
        ++expected;
        SCOPED_TRACE(scenario.name + ": " + fault.name);
        const Outcome outcome = FaultRun(scenario).run(
            [&](simulator::TestBench& bench) { fault.set(bench.faults); }, ticks_more);
        EXPECT_EQ(outcome == Outcome::ended, scenario.name == "ShutDown");
        tally.count(fault.name, outcome);
        if (HasFailure()) {
            break;
        }
    }
    tally.print();
    EXPECT_EQ(tally.runs(), expected);
}

INSTANTIATE_TEST_SUITE_P(All, LineFaults, testing::ValuesIn(names_of_all()),
                         [](const auto& test) { return test.param; });

} // namespace
} // namespace kv408
