// Every reply that the instrument sends is lost, cut, damaged, late or surrounded by other bytes,
// once or until the third attempt has failed, in everything that the program does with the link.
// Judged as in fault_operations_test.cpp.

#include <algorithm>
#include <chrono>
#include <iterator>
#include <random>

#include "scope/fault_run.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using simulator::ReplyFault;

/// A damage to a reply, and what becomes of it.
struct Damage {
    std::string name;
    ReplyFault fault;
    Outcome outcome = Outcome::quiet;       ///< of any command but the check
    Outcome check_outcome = Outcome::quiet; ///< of the start-up check
};

ReplyFault times(int count, ReplyFault fault) {
    fault.times = count;
    return fault;
}

/// What can become of an acknowledge. Three times spoilt is told; the check tries again only
/// after a time-out.
std::vector<Damage> acknowledge_damages() {
    constexpr Outcome told = Outcome::message;
    constexpr Outcome quiet = Outcome::quiet;
    const ReplyFault lost{.length = 0};
    const ReplyFault wrong{.replacement = 21};
    const ReplyFault zero{.replacement = 0};
    const ReplyFault flipped{.flipped_bits = 0xFF};
    const ReplyFault preceded{.before = {1, 2, 3}};
    const ReplyFault late{.late = 1500ms};
    return {{"lost once", lost},
            {"lost twice", times(2, lost)},
            {"lost three times", times(3, lost), told, told},
            {"wrong once", wrong, quiet, told},
            {"wrong twice", times(2, wrong), quiet, told},
            {"wrong three times", times(3, wrong), told, told},
            {"zero once", zero, quiet, told},
            {"zero three times", times(3, zero), told, told},
            {"bits flipped once", flipped, quiet, told},
            {"bits flipped three times", times(3, flipped), told, told},
            {"bytes before, once", preceded, quiet, told},
            {"bytes before, three times", times(3, preceded), told, told},
            {"another acknowledge before", {.before = {6}}},
            {"bytes behind, three times", times(3, {.behind = {9, 9}})},
            {"late within the time-out", {.late = 60ms}},
            {"late once", late},
            {"late three times", times(3, late), told, told}};
}

/// What can become of the two bytes of a point or of a flash word: never a message.
std::vector<Damage> word_damages() {
    constexpr int on = simulator::without_end;
    return {{"lost once", {.length = 0}},
            {"lost from there on", times(on, {.length = 0})},
            {"cut to 1 once", {.length = 1}},
            {"cut to 1 from there on", times(on, {.length = 1})},
            {"bits flipped once", {.flipped_bits = 0xFF}},
            {"bits flipped from there on", times(on, {.flipped_bits = 0xFF})},
            {"zeros once", {.replacement = 0}},
            {"bytes before, once", {.before = {7}}},
            {"bytes before, from there on", times(on, {.before = {1, 2, 3}})},
            {"bytes behind, once", {.behind = {7}}},
            {"bytes behind, from there on", times(on, {.behind = {1, 2, 3}})},
            {"late within the time-out", {.late = 500ms}},
            {"late once", {.late = 1500ms}},
            {"late from there on", times(on, {.late = 1500ms})}};
}

/// What can become of a block beside its being cut: never a message.
std::vector<Damage> block_damages() {
    constexpr int on = simulator::without_end;
    return {{"lost from there on", times(on, {.length = 0})},
            {"cut to 1 from there on", times(on, {.length = 1})},
            {"cut to 2 from there on", times(on, {.length = 2})},
            {"cut to 1299 from there on", times(on, {.length = 1299})},
            {"bits flipped once", {.flipped_bits = 0xFF}},
            {"bits flipped from there on", times(on, {.flipped_bits = 0xFF})},
            {"zeros from there on", times(on, {.replacement = 0})},
            {"waiting words once", {.length = 2, .replacement = 0x1A}},
            {"byte before, once", {.before = {7}}},
            {"bytes before, from there on", times(on, {.before = {1, 2, 3}})},
            {"bytes behind, from there on", times(on, {.behind = {1, 2, 3}})},
            {"late by a tick", {.late = 100ms}},
            {"late once", {.late = 1500ms}},
            {"late from there on", times(on, {.late = 1500ms})}};
}

std::vector<Damage> damages_of(int code) {
    switch (code) {
    case 26:
    case 33:
        return word_damages();
    case 32:
        return block_damages();
    case 34:
        return {}; // is not answered
    default:
        return acknowledge_damages();
    }
}

/// How many damages there are to the reply to command `code`.
std::size_t damage_count(int code) {
    switch (code) {
    case 34:
        return 0;
    case 26:
    case 32:
    case 33:
        return 14;
    default:
        return 17;
    }
}

/// Damages the replies of one scenario.
class ReplyBreaker {
public:
    explicit ReplyBreaker(const std::string& scenario) : scenario_(fault_scenario(scenario)) {}
    ~ReplyBreaker() { tally_.print(); }
    ReplyBreaker(const ReplyBreaker&) = delete;
    ReplyBreaker& operator=(const ReplyBreaker&) = delete;

    [[nodiscard]] const FaultScenario& scenario() const { return scenario_; }

    /// Runs so far.
    [[nodiscard]] std::size_t runs() const { return tally_.runs(); }

    /// Damages the reply to command number `occurrence` (from 0) of those with `code`.
    void damage(int code, int occurrence, const Damage& damage) {
        std::string fault = "command " + std::to_string(code);
        fault += ": ";
        fault += damage.name;
        SCOPED_TRACE(scenario_.name + ", number " + std::to_string(occurrence) + " of " + fault);
        const bool check = scenario_.name == "StartUp" && code == 8 && occurrence == 0;
        const Outcome outcome = FaultRun(scenario_).run([&](simulator::TestBench& bench) {
            ReplyFault& planned = bench.faults.replies[static_cast<Byte>(code)];
            planned = damage.fault;
            planned.after = occurrence;
        });
        EXPECT_EQ(outcome, check ? damage.check_outcome : damage.outcome);
        tally_.count(fault, outcome);
    }

private:
    const FaultScenario scenario_;
    FaultTally tally_{scenario_};
};

std::vector<std::string> names_of_answered() {
    std::vector<std::string> names;
    for (const FaultScenario& scenario : fault_scenarios()) {
        if (!scenario.codes.empty()) {
            names.push_back(scenario.name);
        }
    }
    return names;
}

class ReplyFaults : public testing::TestWithParam<std::string> {};

TEST_P(ReplyFaults, EachOfEachReply) {
    ReplyBreaker breaker(GetParam());
    // Under the sanitizers every sixth; which, goes on from reply to reply.
    const std::size_t stride = std::min<std::size_t>(series_stride, 6);
    std::map<int, int> seen;
    std::size_t expected = 0;
    std::size_t next = 0;
    for (const int code : breaker.scenario().codes) {
        const int occurrence = seen[code]++;
        const auto damages = damages_of(code);
        EXPECT_EQ(damages.size(), damage_count(code));
        for (; next < damages.size(); next += stride) {
            breaker.damage(code, occurrence, damages[next]);
            ++expected;
        }
        next -= damages.size();
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_EQ(breaker.runs(), expected);
}

INSTANTIATE_TEST_SUITE_P(All, ReplyFaults, testing::ValuesIn(names_of_answered()),
                         [](const auto& test) { return test.param; });

/// The replies of a whole pass: its first, middle and last points.
class PassReplyFaults : public testing::TestWithParam<std::string> {};

TEST_P(PassReplyFaults, EachOfTheFirstMiddleAndLastReplies) {
    ReplyBreaker breaker(GetParam());
    const auto points = static_cast<int>(breaker.scenario().codes.size());
    const auto damages = word_damages();
    std::size_t next = 0; // under the sanitizers every so many-th, going on from point to point
    for (const int point : {0, 1, 2, points / 2, points - 2, points - 1}) {
        for (; next < damages.size(); next += series_stride) {
            breaker.damage(26, point, damages[next]);
        }
        next -= damages.size();
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_EQ(breaker.runs(), (6 * damage_count(26) + series_stride - 1) / series_stride);
}

INSTANTIATE_TEST_SUITE_P(All, PassReplyFaults, testing::Values("PointsOfChannel1", "PointsOfBoth"),
                         [](const auto& test) { return test.param; });

/// A block that ends too early, in two tests that run beside each other: at each of its shortest
/// and longest lengths and each third between them with both channels on, and at the ends, around
/// the middle and at a sample with channel 2 alone.
class CutBlocks : public testing::Test {
protected:
    static constexpr std::size_t whole = 1300;

    static void cut_to(ReplyBreaker& breaker, std::size_t length) {
        breaker.damage(32, 0, {"cut to 0 .. 1299 bytes", {.length = length}});
    }

    void cut_to_each(std::size_t first) {
        ReplyBreaker breaker("BlocksOfBoth");
        std::size_t expected = 0;
        for (std::size_t length = first; length < whole && !HasFailure();) {
            cut_to(breaker, length);
            ++expected;
            const bool near_an_end = length < 60 || length >= whole - 60;
            length += 2 * std::max<std::size_t>(series_stride, near_an_end ? 1 : 3);
        }
        EXPECT_EQ(breaker.runs(), expected);
        EXPECT_GE(expected, series_stride == 1 ? 250 : 65);
    }
};

TEST_F(CutBlocks, AtEvenLengths) {
    cut_to_each(0);
}

TEST_F(CutBlocks, AtOddLengths) {
    cut_to_each(1);
}

TEST_F(CutBlocks, OfChannel2Alone) {
    std::vector<std::size_t> lengths = {0, 1, 2, 3, 4, 5, 6, 7, 8, 649, 650, 651, 1298, 1299};
    std::mt19937 random(408);
    std::uniform_int_distribution<std::size_t> any(0, whole - 1);
    std::generate_n(std::back_inserter(lengths), 50, [&] { return any(random); });
    ReplyBreaker breaker("BlocksOfChannel2");
    for (const std::size_t length : lengths) {
        cut_to(breaker, length);
    }
    EXPECT_EQ(breaker.runs(), 64U);
}

} // namespace
} // namespace kv408
