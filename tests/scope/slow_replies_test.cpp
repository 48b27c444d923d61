// Samples come more than two seconds apart: the instrument may have been off before the first of
// them, so it is set up once more, and what comes after that is shown.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <string>

#include "link/commands.h"
#include "scope/program.h"

namespace kv408 {
namespace {

using std::chrono::seconds;

/// The program sweeping on an instrument that acknowledges as ever but answers only one request
/// for samples every so often. Each answer has a voltage of its own, by which it is known.
class SlowProgram : public Program {
public:
    SlowProgram(const std::string& time_div, bool both) {
        simulation.bench().triggers[0] = simulator::TriggerRoute::clock_1;
        EXPECT_TRUE(scope.start());
        scope.act([&] { scope.panel().channel[1].enable.press(both); });
        choose(scope.panel().seltimediv, time_div);
        ticks(10);
        EXPECT_EQ(status(), "Running");
        log = {};
    }

    /// Ticks for `duration`; the first answer comes `every` after the beginning.
    void answer_every(seconds every, seconds duration) {
        auto next = clock.now() + every;
        for (const auto end = clock.now() + duration; clock.now() < end;) {
            if (clock.now() < next) {
                let_answer(0);
                ticks(1);
                continue;
            }
            next += every;
            change_voltage();
            let_answer(1);
            ticks(1); // asks
            let_answer(0);
            ticks(1); // takes the block; a point has been taken at once
            ++answered;
            shown += is_shown() ? 1 : 0;
        }
        simulation.bench().faults.replies = {};
    }

    /// Set-ups that were sent.
    [[nodiscard]] std::ptrdiff_t set_ups() const {
        return std::count_if(log.frames.begin(), log.frames.end(), [](const auto& frame) {
            return frame.command.code == command::set_trigger;
        });
    }

    /// Replies of so many bytes that were read.
    [[nodiscard]] std::ptrdiff_t replies_read(std::uint32_t bytes) const {
        return std::count_if(log.operations.begin(), log.operations.end(), [&](const auto& each) {
            return each.operation == simulator::Operation::read && each.count == bytes;
        });
    }

    int answered = 0; ///< requests for samples that were answered
    int shown = 0;    ///< those among them whose samples are there

private:
    /// Lets the instrument answer so many more requests for samples.
    void let_answer(int requests) {
        for (const Byte request : {Byte{32}, Byte{26}}) {
            simulation.bench().faults.replies[request] = {
                .length = 0, .after = requests, .times = simulator::without_end};
        }
    }

    void change_voltage() {
        voltage_mv_ += 10.0;
        for (simulator::Source& source : simulation.bench().sources) {
            source.amplitude_mvpp = 0.0;
            source.offset_mv = voltage_mv_;
        }
    }

    [[nodiscard]] bool is_shown() const {
        const Samples& samples = scope.parts().samples;
        return std::any_of(samples.begin(), samples.end(), [this](const SampleBuffer& buffer) {
            return std::abs(buffer.mv[1] - voltage_mv_) < 1.0;
        });
    }

    double voltage_mv_ = 0.0;
};

/// Five answers come, one `every` so many seconds. The first gives way to a set-up; the others are
/// shown, and the user is told nothing.
void expect_the_first_of_five_gives_way(SlowProgram& program, seconds every) {
    program.answer_every(every, 5 * every + seconds(1));
    EXPECT_EQ(program.answered, 5);
    EXPECT_EQ(program.shown, 4);
    EXPECT_EQ(program.set_ups(), 1);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(SlowReplies, OnlyTheFirstBlockGivesWayToASetUp) {
    for (const bool both : {false, true}) {
        for (const int every : {3, 13}) {
            SCOPED_TRACE(std::to_string(every) + (both ? " s, both" : " s, CH1"));
            SlowProgram program("20ns/div", both);
            expect_the_first_of_five_gives_way(program, seconds(every));
        }
    }
}

TEST(SlowReplies, OnlyTheFirstPointGivesWayToASetUp) {
    for (const int every : {3, 13}) {
        SCOPED_TRACE(every);
        SlowProgram program("10us/div", false);
        expect_the_first_of_five_gives_way(program, seconds(every));
    }
}

TEST(SlowReplies, BothChannelsComeToTheScreen) {
    SlowProgram program("20ns/div", true);
    program.answer_every(seconds(3), seconds(16));
    EXPECT_EQ(program.scope.parts().acquisition.ready, (std::array<bool, 2>{true, true}));
}

TEST(SlowReplies, OnceTheyComeInTimeAgainTheInstrumentIsSetUpOnceMore) {
    // It is not that slow, so it may have been off before the last slow one.
    for (const char* const time : {"20ns/div", "10us/div"}) {
        SCOPED_TRACE(time);
        SlowProgram program(time, false);
        program.answer_every(seconds(3), seconds(10));
        ASSERT_EQ(program.set_ups(), 1);
        program.ticks(50);
        EXPECT_EQ(program.set_ups(), 2);
        EXPECT_EQ(program.status(), "Running");
        EXPECT_TRUE(program.scope.parts().acquisition.taken_as_set[0]);
    }
}

TEST(SlowReplies, TicksThatComeLateBringOneSetUpToo) {
    // As on a computer that does not get round to the program.
    for (const bool points : {false, true}) {
        SCOPED_TRACE(points);
        SlowProgram program(points ? "10us/div" : "20ns/div", false);
        for (int tick = 0; tick < 5; ++tick) {
            program.clock.advance(seconds(3));
            program.scope.tick();
        }
        EXPECT_EQ(program.set_ups(), 1);
        // The set-up takes the first tick; each of the others takes a sweep.
        EXPECT_EQ(program.replies_read(points ? 2 : 1300), points ? 4 * 640 : 4);
        program.ticks(20);
        EXPECT_EQ(program.set_ups(), 2);
        EXPECT_EQ(program.status(), "Running");
    }
}

} // namespace
} // namespace kv408
