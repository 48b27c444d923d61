// Every operation of the bridge fails, times out, lies about its failure, loses its cable or finds
// the instrument switched off, at every place of everything that the program does with the link.
// Each time: the messages that the link's rules give and no others, no more time than the time-outs
// add up to, and a sweep of both channels once the fault has gone.

#include <algorithm>
#include <random>

#include "scope/fault_run.h"

namespace kv408 {
namespace {

using simulator::Operation;
using simulator::OperationFault;
using simulator::PlannedFaults;
using simulator::WireOperation;

constexpr std::array<const char*, 10> operation_names = {
    "SI_GetNumDevices", "SI_GetProductString", "SI_Open",  "SI_Close", "SI_SetBaudRate",
    "SI_SetTimeouts",   "SI_FlushBuffers",     "SI_Write", "SI_Read",  "SI_CheckRXQueue"};

enum class Kind {
    fails,
    times_out,
    fails_though_done,
    fails_on,
    times_out_on,
    unplugged,
    moment,
    powerless
};

constexpr std::array kinds = {Kind::fails,    Kind::times_out,    Kind::fails_though_done,
                              Kind::fails_on, Kind::times_out_on, Kind::unplugged,
                              Kind::moment,   Kind::powerless};

constexpr std::array<const char*, 8> kind_names = {"fails once",
                                                   "times out once",
                                                   "fails once, though done",
                                                   "fails from there on",
                                                   "times out from there on",
                                                   "unplugged before",
                                                   "unplugged for a moment",
                                                   "switched off before"};

/// For how many ticks the instrument stays off after the steps: as long as switching it off and on
/// again takes at least.
constexpr int ticks_off = 20;

/// The fault `kind` that sets in with operation number `index`, which is an `operation`.
PlannedFaults plan(Kind kind, int index, Operation operation) {
    PlannedFaults planned{.after_operations = index};
    OperationFault fault;
    switch (kind) {
    case Kind::fails:
        break;
    case Kind::times_out:
        fault.status = bridge_read_timed_out;
        break;
    case Kind::fails_though_done:
        // An opening that fails leaves nothing open.
        fault.done = operation != Operation::open;
        break;
    case Kind::fails_on:
        fault.times = simulator::without_end;
        break;
    case Kind::times_out_on:
        fault = {.status = bridge_read_timed_out, .times = simulator::without_end};
        break;
    case Kind::moment:
        planned.lasting_operations = 1;
        [[fallthrough]];
    case Kind::unplugged:
        planned.faults.unplugged = true;
        return planned;
    case Kind::powerless:
        planned.faults.no_power = true;
        return planned;
    }
    planned.faults.operations[operation] = fault;
    return planned;
}

bool lasts(Kind kind) {
    return kind == Kind::fails_on || kind == Kind::times_out_on;
}

/// Where in a scenario an operation stands.
struct Place {
    Operation operation;
    bool acknowledge = false; ///< reads an acknowledge
    bool check = false;       ///< reads that of the start-up check
};

/// What must become of a read.
std::vector<Outcome> of_read(const Place& place, Kind kind) {
    if (place.check && kind == Kind::fails) {
        return {Outcome::message}; // the byte that did not come is not 6
    }
    return {place.acknowledge && lasts(kind) ? Outcome::message : Outcome::quiet};
}

/// What may become of the program, by the tables of failures.
std::vector<Outcome> allowed(const Place& place, Kind kind) {
    if (kind == Kind::unplugged || kind == Kind::moment) {
        // Where nothing is sent before the user can plug it in and press Retry.
        const bool retried = place.operation == Operation::get_num_devices || place.check;
        return {retried ? Outcome::message : Outcome::ended};
    }
    if (kind == Kind::powerless && place.operation != Operation::close) {
        return {Outcome::quiet, Outcome::message};
    }
    switch (place.operation) {
    case Operation::get_product_string:
        return {kind == Kind::fails_though_done ? Outcome::quiet : Outcome::ended};
    case Operation::get_num_devices:
    case Operation::open:
    case Operation::close:
    case Operation::write:
        return {Outcome::ended};
    case Operation::set_baud_rate:
        return {Outcome::message};
    case Operation::flush_buffers:
        // What was never emptied may stand where an acknowledge is expected.
        return lasts(kind) ? std::vector{Outcome::quiet, Outcome::message}
                           : std::vector{Outcome::quiet};
    case Operation::read:
        return of_read(place, kind);
    default:
        return {Outcome::quiet};
    }
}

/// Where each of `operations` stands.
std::vector<Place> places_of(const std::vector<WireOperation>& operations) {
    const std::vector<int> acknowledged = {8, 9, 27, 29, 30, 31, 35};
    std::vector<Place> places;
    bool awaited = false;
    bool check = false;
    for (const WireOperation& operation : operations) {
        Place place{.operation = operation.operation};
        if (operation.operation == Operation::open) {
            check = true;
        } else if (operation.operation == Operation::write) {
            awaited = std::find(acknowledged.begin(), acknowledged.end(), operation.bytes.at(1)) !=
                      acknowledged.end();
        } else if (operation.operation == Operation::read && awaited) {
            place.acknowledge = true;
            place.check = check;
            awaited = false;
            check = false;
        }
        places.push_back(place);
    }
    return places;
}

/// Breaks the operations of one scenario.
class Breaker {
public:
    explicit Breaker(const std::string& scenario)
        : scenario_(fault_scenario(scenario)), places_(places_of(FaultRun(scenario_).reference())) {
        EXPECT_EQ(places_.size(), scenario_.operations);
    }

    ~Breaker() { tally_.print(); }
    Breaker(const Breaker&) = delete;
    Breaker& operator=(const Breaker&) = delete;

    /// Number of operations.
    [[nodiscard]] std::size_t size() const { return places_.size(); }

    /// Runs so far.
    [[nodiscard]] std::size_t runs() const { return tally_.runs(); }

    /// How many ways there are to break operation `index`: all of them but under the sanitizers,
    /// where that takes minutes and each twelfth is tried.
    static std::size_t ways_at(std::size_t index) {
        return static_cast<std::size_t>(std::count_if(
            kinds.begin(), kinds.end(), [index](Kind kind) { return is_tried(index, kind); }));
    }

    void break_each_way_at(std::size_t index) {
        for (const Kind kind : kinds) {
            if (is_tried(index, kind)) {
                break_at(index, kind);
            }
        }
    }

    void break_at(std::size_t index, Kind kind) {
        const Place& place = places_[index];
        const auto number = static_cast<std::size_t>(kind);
        std::string fault = operation_names.at(static_cast<std::size_t>(place.operation));
        fault += ' ';
        fault += kind_names.at(number);
        SCOPED_TRACE(scenario_.name + ", operation " + std::to_string(index) + ": " + fault);
        const auto break_it = [&](simulator::TestBench& bench) {
            bench.planned_faults = plan(kind, static_cast<int>(index), place.operation);
        };
        const Outcome outcome =
            FaultRun(scenario_).run(break_it, kind == Kind::powerless ? ticks_off : 0);
        const auto outcomes = allowed(place, kind);
        EXPECT_NE(std::find(outcomes.begin(), outcomes.end(), outcome), outcomes.end())
            << "outcome " << static_cast<int>(outcome);
        tally_.count(fault, outcome);
    }

private:
    static bool is_tried(std::size_t index, Kind kind) {
        return series_stride == 1 || (index + static_cast<std::size_t>(kind)) % 12 == 0;
    }

    const FaultScenario scenario_;
    std::vector<Place> places_;
    FaultTally tally_{scenario_};
};

std::vector<std::string> names(const std::vector<FaultScenario>& scenarios) {
    std::vector<std::string> result(scenarios.size());
    std::transform(scenarios.begin(), scenarios.end(), result.begin(),
                   [](const FaultScenario& scenario) { return scenario.name; });
    return result;
}

class OperationFaults : public testing::TestWithParam<std::string> {};

TEST_P(OperationFaults, EachAtEachPlace) {
    Breaker breaker(GetParam());
    std::size_t expected = 0;
    for (std::size_t index = 0; index < breaker.size() && !HasFailure(); ++index) {
        breaker.break_each_way_at(index);
        expected += Breaker::ways_at(index);
    }
    EXPECT_EQ(breaker.runs(), expected);
    if (series_stride == 1) {
        EXPECT_EQ(expected, fault_scenario(GetParam()).operations * kinds.size());
    }
}

INSTANTIATE_TEST_SUITE_P(All, OperationFaults, testing::ValuesIn(names(fault_scenarios())),
                         [](const auto& test) { return test.param; });

/// A whole pass has too many operations to break each in each way: the first and last are, and a
/// sample of the rest.
class PassFaults : public testing::TestWithParam<std::string> {};

TEST_P(PassFaults, EachAtASampleOfPlaces) {
    const std::size_t ends = series_stride == 1 ? 10 : 3;
    const std::size_t sample = 20 / series_stride;
    Breaker breaker(GetParam());
    std::vector<std::size_t> indices;
    for (std::size_t index = 0; index < ends; ++index) {
        indices.push_back(index);
        indices.push_back(breaker.size() - 1 - index);
    }
    std::mt19937 random(408);
    std::uniform_int_distribution<std::size_t> any(ends, breaker.size() - ends - 1);
    std::generate_n(std::back_inserter(indices), sample, [&] { return any(random); });
    std::size_t expected = 0;
    for (const std::size_t index : indices) {
        breaker.break_each_way_at(index);
        expected += Breaker::ways_at(index);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_EQ(breaker.runs(), expected);
}

INSTANTIATE_TEST_SUITE_P(All, PassFaults, testing::ValuesIn(names(point_pass_scenarios())),
                         [](const auto& test) { return test.param; });

/// The cable comes out before four of each twelve operations of a pass of channel 1, which ask for
/// and read two of its points, in parts that run beside each other.
class CablePulls : public testing::TestWithParam<std::size_t> {
protected:
    static constexpr std::size_t parts = 4;
    const std::size_t stride = parts * std::max<std::size_t>(series_stride, 3);
};

TEST_P(CablePulls, BeforeOperationsAllThroughAPass) {
    Breaker breaker("PointsOfChannel1");
    std::size_t expected = 0;
    for (std::size_t index = GetParam(); index < breaker.size() && !HasFailure(); index += stride) {
        breaker.break_at(index, Kind::unplugged);
        ++expected;
    }
    EXPECT_EQ(breaker.runs(), expected);
    EXPECT_GE(expected, (1 + 640 * 2) / stride);
}

INSTANTIATE_TEST_SUITE_P(Quarters, CablePulls, testing::Range(std::size_t{0}, std::size_t{4}));

} // namespace
} // namespace kv408
