#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "scope/fault_scenario.h"
#include "scope/fault_wire.h"
#include "support/series_stride.h"

namespace kv408 {

/// What became of the program in one run.
enum class Outcome { quiet, message, ended };

/// Counts the runs of one scenario by fault and outcome.
class FaultTally {
public:
    explicit FaultTally(const FaultScenario& scenario) : scenario_(scenario) {}

    void count(const std::string& fault, Outcome outcome) {
        ++rows_[fault][static_cast<std::size_t>(outcome)];
        ++runs_;
    }

    [[nodiscard]] std::size_t runs() const { return runs_; }

    /// Prints the table; the file that KV408_FAULT_TABLE names gets it as well.
    void print() const {
        std::string text;
        for (const auto& [fault, counts] : rows_) {
            std::array<char, 200> line = {};
            std::snprintf(line.data(), line.size(), "%-24s %-30s %-34s %6zu %8zu %8zu %6zu\n",
                          scenario_.name.c_str(), scenario_.states.c_str(), fault.c_str(),
                          counts[0] + counts[1] + counts[2], counts[0], counts[1], counts[2]);
            text += line.data();
        }
        std::printf("%-24s %-30s %-34s %6s %8s %8s %6s\n%s", "scenario", "state words", "fault",
                    "runs", "re-armed", "message", "ended", text.c_str());
        if (const char* const path = std::getenv("KV408_FAULT_TABLE")) {
            std::ofstream(path, std::ios::app) << text;
        }
    }

private:
    const FaultScenario& scenario_;
    std::map<std::string, std::array<std::size_t, 3>> rows_;
    std::size_t runs_ = 0;
};

/// One run of a scenario with something broken.
class FaultRun {
public:
    using Injection = std::function<void(simulator::TestBench&)>;

    explicit FaultRun(const FaultScenario& scenario) : scenario_(scenario) {
        program_.boxes.on_show = [this](const Message& message) { answer(message); };
        scenario_.prepare(program_);
        EXPECT_EQ(told(), std::vector<std::string>{});
        program_.boxes.shown.clear();
        program_.files.written.clear();
        first_operation_ = program_.log.operations.size();
        first_frame_ = program_.log.frames.size();
    }

    /// Does the steps and then `ticks_more` while `injection` breaks something, judges what was
    /// told and how long it took, mends everything and sees that it sweeps again. What became of
    /// the program.
    Outcome run(const Injection& injection, int ticks_more = 0) {
        injection(program_.simulation.bench());
        do_steps();
        program_.ticks(ticks_more);
        WireReader wire(scenario_.gain_senders);
        EXPECT_EQ(told(), wire.read(program_.log.operations, first_operation_));
        const bool told_something = !told().empty();
        mend();
        if (!program_.scope.ended()) {
            const bool lost = lost_handle();
            if (scenario_.sweeps_on && !lost) {
                go_on(told().size());
            }
            start_again(lost);
        }
        if (program_.scope.ended()) {
            expect_left_in_order();
            restart();
            return Outcome::ended;
        }
        return told_something ? Outcome::message : Outcome::quiet;
    }

    /// Does the steps with nothing broken; the operations they took.
    std::vector<simulator::WireOperation> reference() {
        do_steps();
        EXPECT_EQ(told(), std::vector<std::string>{});
        std::vector<int> codes;
        for (std::size_t index = first_frame_; index < program_.log.frames.size(); ++index) {
            codes.push_back(program_.log.frames[index].command.code);
        }
        EXPECT_EQ(codes, scenario_.codes);
        const auto& all = program_.log.operations;
        return {all.begin() + static_cast<std::ptrdiff_t>(first_operation_), all.end()};
    }

private:
    void answer(const Message& message) {
        if (message.buttons == MessageButtons::retry_cancel) {
            // The user mends what is broken and presses Retry.
            mend();
            program_.boxes.answers = {MessageAnswer::retry};
        } else if (message.buttons == MessageButtons::yes_no) {
            program_.boxes.answers = {MessageAnswer::yes};
        }
    }

    void mend() {
        simulator::TestBench& bench = program_.simulation.bench();
        bench.faults = {};
        bench.planned_faults.reset();
        bench.triggers = simulator::TestBench{}.triggers;
    }

    void do_steps() {
        for (std::size_t index = 0; index < scenario_.steps.size(); ++index) {
            SCOPED_TRACE("step " + std::to_string(index));
            const FaultStep& step = scenario_.steps[index];
            if (step.tick) {
                constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
                program_.clock.advance(interval - program_.clock.now() % interval);
            }
            const auto before = program_.clock.now();
            if (step.tick) {
                program_.scope.tick();
            } else {
                step.action(program_);
            }
            EXPECT_LE(program_.clock.now() - before, step.longest);
            expect_known_state();
            if (program_.scope.ended()) {
                return;
            }
        }
    }

    void expect_known_state() const {
        const std::vector<std::string> states = {
            "Idle",      "idle",           "startscope", "scope",    "scopech1f",
            "scopech2f", "calibrationint", "changes",    "changes1", "stoped"};
        EXPECT_NE(std::find(states.begin(), states.end(), program_.state()), states.end())
            << program_.state();
    }

    /// The messages that have the program's own title, as those of the link have.
    [[nodiscard]] std::vector<std::string> told() const {
        std::vector<std::string> texts;
        for (const Message& message : program_.boxes.shown) {
            if (message.title.empty()) {
                texts.push_back(message.text);
            }
        }
        return texts;
    }

    /// Whether the cable was out, if only for a moment, since the device was opened.
    [[nodiscard]] bool lost_handle() {
        return program_.simulation.bridge().waiting().status == bridge_failed;
    }

    /// Signals of other sizes, by which a new sweep is known.
    void change_signals() {
        first_mvpp_ += 40.0;
        program_.simulation.bench().sources[0].amplitude_mvpp = first_mvpp_;
        program_.simulation.bench().sources[1].amplitude_mvpp = first_mvpp_ / 2.0;
    }

    /// The sweep goes on by itself, with no more messages than the `told_before`.
    void go_on(std::size_t told_before) {
        change_signals();
        tick_until_swept(program_.scope);
        EXPECT_TRUE(is_swept(program_.scope)) << "no new sweep came by itself";
        EXPECT_EQ(told().size(), told_before);
    }

    void start_again(bool dead_handle) {
        change_signals();
        const std::size_t shown = program_.boxes.shown.size();
        program_.scope.act([&] { program_.scope.panel().cmdstartsweep.click(); });
        tick_until_swept(program_.scope);
        if (dead_handle) {
            EXPECT_TRUE(program_.scope.ended());
            ASSERT_EQ(program_.boxes.shown.size(), shown + 1);
            EXPECT_EQ(program_.boxes.shown.back().text, told::write_failed);
        } else {
            EXPECT_FALSE(program_.scope.ended());
            EXPECT_EQ(program_.boxes.shown.size(), shown);
            EXPECT_TRUE(is_swept(program_.scope)) << "no new sweep after Start";
        }
    }

    /// Ticks until every enabled channel has a new sweep, at most six times: a failed set-up is
    /// tried again after one, the set-up takes one, and each channel's block one after it.
    void tick_until_swept(Scope& scope) {
        constexpr int most = 6;
        for (int tick = 0; tick < most && !is_swept(scope); ++tick) {
            program_.clock.advance(std::chrono::milliseconds(100));
            scope.tick();
        }
    }

    [[nodiscard]] bool is_swept(Scope& scope) const {
        return has_new_sweep(scope, ch1) && has_new_sweep(scope, ch2);
    }

    /// Whether `channel` is off or holds a whole sweep of the changed signals.
    bool has_new_sweep(Scope& scope, int channel) const {
        const auto index = static_cast<std::size_t>(channel);
        const auto& mv = scope.parts().samples[index].mv;
        const auto [lowest, highest] = std::minmax_element(mv.begin() + 1, mv.begin() + 641);
        const double amplitude = channel == ch1 ? first_mvpp_ / 2.0 : first_mvpp_ / 4.0;
        return !scope.panel().channel[index].enable.checked() ||
               (scope.parts().acquisition.taken_as_set[index] &&
                std::abs(*highest - amplitude) < 2.0 && std::abs(*lowest + amplitude) < 2.0);
    }

    /// After its end: no device open, the settings kept, and nothing sent any more.
    void expect_left_in_order() {
        bool open = false;
        for (const auto& operation : program_.log.operations) {
            if (operation.operation == simulator::Operation::open) {
                open = operation.status == bridge_success;
            } else if (operation.operation == simulator::Operation::close) {
                open = false;
            }
        }
        EXPECT_FALSE(open) << "the device was left open";
        const auto& written = program_.files.written;
        if (scenario_.name != "StartUp") {
            EXPECT_EQ(
                std::count(written.begin(), written.end(), "/settings/kv408/ConfigsLM4RX.TXT"), 1);
        }
        const std::size_t operations = program_.log.operations.size();
        program_.ticks(3);
        program_.scope.act([&] { program_.scope.panel().cmdstartsweep.click(); });
        EXPECT_EQ(program_.log.operations.size(), operations);
    }

    /// The user starts the program once more.
    void restart() {
        change_signals();
        // What an ended program could not close the system closes.
        program_.simulation.bridge().close();
        FakeFiles files;
        Scope again{Machine{program_.clock, program_.boxes, program_.messages,
                            program_.simulation.bridge(), files, program_.choosers, fake_places(),
                            program_.coder}};
        program_.boxes.shown.clear();
        EXPECT_TRUE(again.start());
        tick_until_swept(again);
        EXPECT_EQ(program_.boxes.texts(), std::vector<std::string>{});
        EXPECT_TRUE(is_swept(again)) << "no sweep of the program started anew";
    }

    const FaultScenario& scenario_;
    Program program_;
    std::size_t first_operation_ = 0;
    std::size_t first_frame_ = 0;
    double first_mvpp_ = 400.0; ///< amplitude of signal 1
};

} // namespace kv408
