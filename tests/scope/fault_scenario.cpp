#include "scope/fault_scenario.h"

#include <algorithm>
#include <stdexcept>

#include "calibration/calibration_form.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

// How long a step may take: the time-outs, attempts and pauses of the link added up, and what the
// bytes take on the wire.
constexpr milliseconds wire = 30ms;
constexpr milliseconds read_time_out = 1000ms;
constexpr milliseconds acknowledged = 3 * (20ms + read_time_out);
constexpr milliseconds idle_wait = 40 * 100ms;
constexpr milliseconds trigger = acknowledged + 10ms + acknowledged;
constexpr milliseconds time_base = acknowledged + 20ms + acknowledged + 1ms + acknowledged;
constexpr milliseconds set_up = trigger + time_base + 2ms + wire;
constexpr milliseconds block = 1ms + read_time_out + wire;
/// An exchange takes 8 bytes, a conversion and 2 bytes: less than a quarter of a millisecond.
constexpr milliseconds pass = 1280 * 1ms / 4 + read_time_out;
constexpr milliseconds trigger_time_out = 1ms; ///< 1000 us stand in its box
constexpr milliseconds flash_word = 20ms + wire / 30;
/// The check, once more after Retry, with frames at the first speed; then both gains and the
/// trigger as the lists are filled, and again, with the trigger once more, as settings apply.
constexpr milliseconds start_up = 2 * acknowledged + 4 * acknowledged + 3 * trigger + 3 * wire;

FaultStep tick(milliseconds longest) {
    return {.tick = true, .longest = longest};
}

FaultStep act(milliseconds longest, std::function<void(Program&)> action) {
    return {.tick = false, .longest = longest, .action = std::move(action)};
}

/// Sweeps in block mode, a block of channel 1 on its way.
void sweep(Program& program) {
    EXPECT_TRUE(program.scope.start());
    program.ticks(4);
    EXPECT_EQ(program.state(), "scopech1f");
}

void sweep_only(Program& program, int channel) {
    EXPECT_TRUE(program.scope.start());
    program.scope.act([&] { program.channel(1 - channel).enable.set_checked(false); });
    program.ticks(4);
    EXPECT_EQ(program.state(), channel == ch1 ? "scopech1f" : "scopech2f");
}

void sweep_points(Program& program) {
    EXPECT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    EXPECT_EQ(program.state(), "scope");
}

void stop(Program& program) {
    sweep(program);
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(1);
}

void disconnect_triggers(Program& program) {
    program.simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                           simulator::TriggerRoute::disconnected};
}

void press(Program& program, Button& button) {
    program.scope.act([&] { button.click(); });
}

void start_sweep(Program& program) {
    press(program, program.scope.panel().cmdstartsweep);
}

std::vector<int> repeated(int code, std::size_t count) {
    return std::vector<int>(count, code);
}

std::vector<int> operator+(std::vector<int> left, const std::vector<int>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

const std::vector<int> set_up_codes = {8, 27, 30, 35, 31, 32};

// Operations of the bridge.
constexpr std::size_t an_acknowledged = 4; ///< time-outs, flush, write, read
constexpr std::size_t a_block = 4;         ///< count, read, flush, write
constexpr std::size_t a_point = 2;         ///< write, read
constexpr std::size_t a_word_read = 3;     ///< flush, write, read
constexpr std::size_t a_word_written = 2;  ///< flush, write
constexpr std::size_t set_up_operations = 5 * an_acknowledged + 2;
/// While a block waits in the queue its count is looked at twice.
constexpr std::size_t idle_operations = 2;

std::vector<FaultScenario> starting() {
    return {{.name = "StartUp",
             .states = "Idle",
             .prepare = [](Program&) {},
             .steps = {act(start_up, [](Program& program) { program.scope.start(); })},
             .codes = {8, 9, 9, 8, 27, 8, 27, 8, 27},
             .operations = 4 + 9 * an_acknowledged},
            {.name = "FirstTicks",
             .states = "idle, startscope",
             .prepare = [](Program& program) { EXPECT_TRUE(program.scope.start()); },
             .steps = {tick(0ms), tick(set_up)},
             .codes = set_up_codes,
             .operations = set_up_operations,
             .sweeps_on = true},
            {.name = "SetUpBlock",
             .states = "startscope",
             .prepare = sweep,
             .steps = {act(0ms, start_sweep), tick(set_up)},
             .codes = set_up_codes,
             .operations = set_up_operations,
             .sweeps_on = true},
            {.name = "SetUpPoints",
             .states = "startscope",
             .prepare = sweep_points,
             .steps = {act(0ms, start_sweep), tick(set_up)},
             .codes = {8, 27, 30, 35, 31},
             .operations = 5 * an_acknowledged,
             .sweeps_on = true},
            {.name = "ShutDown",
             .states = "scopech1f",
             .prepare = sweep,
             .steps = {act(0ms, [](Program& program) { program.scope.close(); })},
             .codes = {},
             .operations = 1}};
}

std::vector<FaultScenario> sweeping() {
    return {{.name = "BlocksOfBoth",
             .states = "scopech1f, scopech2f",
             .prepare = sweep,
             .steps = {tick(block), tick(block), tick(block), tick(block)},
             .codes = repeated(32, 4),
             .operations = 4 * a_block,
             .sweeps_on = true},
            {.name = "BlocksOfChannel1",
             .states = "scopech1f",
             .prepare = [](Program& program) { sweep_only(program, ch1); },
             .steps = {tick(block), tick(block)},
             .codes = repeated(32, 2),
             .operations = 2 * a_block,
             .sweeps_on = true},
            {.name = "BlocksOfChannel2",
             .states = "scopech2f",
             .prepare = [](Program& program) { sweep_only(program, ch2); },
             .steps = {tick(block), tick(block)},
             .codes = repeated(32, 2),
             .operations = 2 * a_block,
             .sweeps_on = true},
            {.name = "BlocksWithoutTrigger",
             .states = "scopech1f",
             .prepare =
                 [](Program& program) {
                     sweep(program);
                     disconnect_triggers(program);
                     program.ticks(7);
                     EXPECT_EQ(program.status(), "Waiting For TRIGGER");
                 },
             // A waiting word is looked at twice: the count, then count, read, flush, write.
             .steps = {tick(block), tick(block), tick(block), tick(block)},
             .codes = repeated(32, 2),
             .operations = 2 * (1 + a_block),
             .sweeps_on = true},
            {.name = "PointsWithoutTrigger",
             .states = "scope",
             .prepare =
                 [](Program& program) {
                     sweep_points(program);
                     disconnect_triggers(program);
                 },
             // Words that only look like samples: a whole pass, each point with the trigger's time.
             .steps = std::vector<FaultStep>(2, tick(pass + 1280 * trigger_time_out)),
             .codes = repeated(26, 2),
             .operations = 2 * (1 + a_point),
             .sweeps_on = true}};
}

std::vector<FaultScenario> changing_ranges() {
    const auto range = [](int channel) {
        return
            [channel](Program& program) { program.choose(program.channel(channel).vdiv, "20mV"); };
    };
    return {{.name = "RangeOfChannel1Running",
             .states = "changes, startscope",
             .prepare = sweep,
             .steps = {act(idle_wait + acknowledged + wire, range(ch1)), tick(0ms),
                       tick(2 * (idle_wait + acknowledged) + set_up)},
             .codes = std::vector<int>{9} + set_up_codes,
             .operations = idle_operations + an_acknowledged + set_up_operations,
             .sweeps_on = true,
             .gain_senders = {1}},
            {.name = "RangeOfChannel2Running",
             .states = "changes, startscope",
             .prepare = sweep,
             .steps = {act(idle_wait + acknowledged + wire, range(ch2)), tick(0ms),
                       tick(2 * (idle_wait + acknowledged) + set_up)},
             .codes = std::vector<int>{9} + set_up_codes,
             .operations = idle_operations + an_acknowledged + set_up_operations,
             .sweeps_on = true,
             .gain_senders = {2}},
            {.name = "RangeOfChannel1Stopped",
             .states = "stoped",
             .prepare = stop,
             .steps = {act(acknowledged + wire, range(ch1)), tick(0ms)},
             .codes = {9},
             .operations = an_acknowledged}};
}

std::vector<FaultScenario> changing() {
    const auto source = [](Program& program) {
        program.choose(program.scope.panel().trigsource, "TRIG2");
    };
    const auto slow = [](Program& program) {
        program.choose(program.scope.panel().seltimediv, "10us/div");
    };
    return {{.name = "TriggerSourceRunning",
             .states = "changes, startscope",
             .prepare = sweep,
             // The hysteresis of the other source is a change of its own.
             .steps = {act(2 * idle_wait + trigger + wire, source), tick(0ms), tick(set_up)},
             .codes = std::vector<int>{8, 27} + set_up_codes,
             .operations = 2 * idle_operations + 2 * an_acknowledged + set_up_operations,
             .sweeps_on = true},
            {.name = "TriggerSourceStopped",
             .states = "stoped",
             .prepare = stop,
             .steps = {act(trigger + wire, source), tick(0ms)},
             .codes = {8, 27},
             .operations = 2 * an_acknowledged},
            {.name = "BlocksToPoints",
             .states = "changes, startscope",
             .prepare = sweep,
             .steps = {act(idle_wait, slow), tick(0ms), tick(set_up)},
             .codes = {8, 27, 30, 35, 31},
             .operations = idle_operations + 5 * an_acknowledged,
             .sweeps_on = true}};
}

std::vector<FaultScenario> records() {
    const auto read_record = [](Program& program) {
        press(program, program.scope.calibration_form().cmdreadcald);
    };
    constexpr milliseconds drain = idle_wait + read_time_out;
    constexpr milliseconds read = drain + 13 * flash_word + read_time_out;
    constexpr milliseconds write =
        500ms + 12 * flash_word + 200ms + 11 * flash_word + read_time_out;
    return {{.name = "RecordReadInBlocks",
             .states = "stoped",
             .prepare = sweep,
             .steps = {act(read, read_record), tick(0ms)},
             .codes = repeated(33, 13),
             .operations = idle_operations + 2 + 13 * a_word_read},
            {.name = "RecordReadInPoints",
             .states = "stoped",
             .prepare = sweep_points,
             .steps = {act(read, read_record), tick(0ms)},
             .codes = repeated(33, 13),
             .operations = 1 + 1 + 13 * a_word_read},
            {.name = "RecordWrite",
             .states = "stoped",
             .prepare =
                 [](Program& program) {
                     sweep(program);
                     press(program, program.scope.panel().mnucalibration);
                     press(program, program.scope.panel().cmdstop);
                     program.ticks(1);
                 },
             .steps = {act(write,
                           [](Program& program) {
                               press(program, program.scope.calibration_form().cmdwritecal);
                           }),
                       tick(0ms)},
             .codes = repeated(34, 12) + repeated(33, 11),
             .operations = 1 + 12 * a_word_written + 11 * a_word_read}};
}

std::vector<FaultScenario> linearity() {
    return {{.name = "LinearityStart",
             .states = "stoped, calibrationint",
             .prepare = sweep,
             .steps = {act(idle_wait + 3 * (20ms + 100ms) + wire,
                           [](Program& program) {
                               press(program, program.scope.calibration_form().cmdcalint);
                           })},
             .codes = {29},
             .operations = idle_operations + an_acknowledged + 1},
            {.name = "LinearityRun",
             .states = "calibrationint",
             .prepare =
                 [](Program& program) {
                     sweep(program);
                     press(program, program.scope.calibration_form().cmdcalint);
                     EXPECT_EQ(program.state(), "calibrationint");
                 },
             // A byte comes every 225 ms from the start on: nine ticks look, three find one.
             .steps = std::vector<FaultStep>(9, tick(read_time_out)),
             .codes = {},
             .operations = 9 + 3}};
}

/// The guided calibration of channel 1's high gain: set-up button, sweep, compute button.
FaultScenario guided() {
    constexpr milliseconds gain = idle_wait + acknowledged + wire;
    return {.name = "GuidedGain",
            .states = "changes, startscope, scopech1f",
            .prepare = sweep,
            .steps = {act(idle_wait + 2 * gain,
                          [](Program& program) {
                              press(program, program.scope.calibration_form().cmdsetforcalgainh);
                          }),
                      // A set-up that failed is tried again.
                      tick(2 * gain + set_up), tick(2 * gain + set_up), tick(2 * gain + set_up),
                      act(0ms,
                          [](Program& program) {
                              press(program, program.scope.calibration_form().cmdcalgain1h);
                          })},
            // Both ranges change, one after the other.
            .codes = std::vector<int>{9, 9} + set_up_codes + repeated(32, 2),
            // Three waits for the queue; the gain command empties it for those behind.
            .operations = 2 * idle_operations + an_acknowledged + 1 + an_acknowledged +
                          set_up_operations + 2 * a_block,
            .sweeps_on = true,
            .gain_senders = {1, 2}};
}

} // namespace

std::vector<FaultScenario> fault_scenarios() {
    std::vector<FaultScenario> all = starting();
    for (const auto& more :
         {sweeping(), changing_ranges(), changing(), records(), linearity(), {guided()}}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

std::vector<FaultScenario> point_pass_scenarios() {
    return {{.name = "PointsOfChannel1",
             .states = "scope",
             .prepare =
                 [](Program& program) {
                     sweep_points(program);
                     program.scope.act([&] { program.channel(ch2).enable.set_checked(false); });
                 },
             .steps = {tick(pass)},
             .codes = repeated(26, 640),
             .operations = 1 + 640 * a_point,
             .sweeps_on = true},
            {.name = "PointsOfBoth",
             .states = "scope",
             .prepare = sweep_points,
             .steps = {tick(pass)},
             .codes = repeated(26, 1280),
             .operations = 1 + 1280 * a_point,
             .sweeps_on = true}};
}

FaultScenario fault_scenario(const std::string& name) {
    for (const auto& list : {fault_scenarios(), point_pass_scenarios()}) {
        for (const FaultScenario& scenario : list) {
            if (scenario.name == name) {
                return scenario;
            }
        }
    }
    throw std::invalid_argument(name);
}

} // namespace kv408
