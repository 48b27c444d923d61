// A level at the input, the trace, the zero-line marker, the cursors and the millivolts agree.

#include <ostream>
#include <vector>

#include <gtest/gtest.h>

#include "scope/trace_reader.h"

namespace kv408 {
namespace {

using simulator::SamplerRoute;
using simulator::SignalKind;

struct Position {
    int wheel;
    int row; ///< (1024 - wheel) / 2, halves to even
};

constexpr Position positions[] = {{1024, 0},  {1021, 2}, {811, 106}, {512, 256},
                                  {301, 362}, {3, 510},  {0, 512}};

struct Volts {
    const char* text;
    double millivolts; ///< a division
};

struct ChannelAt {
    Channel channel;
    Volts volts;
};

/// What the test's name says of it.
void PrintTo(const ChannelAt& at, std::ostream* out) {
    *out << "CH" << at.channel + 1 << "_at_" << at.volts.text;
}

/// One channel alone on a steady level, dot by dot; the other one's signal triggers.
class LevelAgreement : public testing::TestWithParam<ChannelAt> {
protected:
    LevelAgreement() {
        // A signal that crosses 0 V now and then, for the trigger, and one that stands still.
        source() = {.kind = SignalKind::sine, .amplitude_mvpp = 0.0};
        EXPECT_TRUE(program.scope.start());
        const Channel other = own == ch1 ? ch2 : ch1;
        program.choose(program.scope.panel().trigsource, other == ch1 ? "TRIG1" : "TRIG2");
        program.scope.act([this, other] {
            program.channel(other).enable.set_checked(false);
            program.scope.panel().eyeon.set_checked(true);
            program.scope.panel().combocursorselect.set_index(own == ch1 ? 0 : 1);
        });
        program.choose(program.channel(own).vdiv, GetParam().volts.text);
    }

    simulator::Source& source() { return program.simulation.bench().sources[own]; }

    /// Puts `level` millivolts at the input and sweeps.
    void measure(double level, bool via_trigger, bool inverted, int wheel) {
        source().offset_mv = level;
        program.simulation.bench().samplers[own] =
            via_trigger ? SamplerRoute::via_trigger : SamplerRoute::own_signal;
        program.scope.act([&] {
            program.channel(own).inviatr.set_checked(via_trigger);
            program.channel(own).invert.set_checked(inverted);
            program.scope.panel().tabstrip3.select(3);
        });
        turn_wheel(program, number_of(own), wheel);
        program.ticks(5);
    }

    /// What cursor 1 reads when it is laid on `row`.
    double cursor_on(int row) {
        FrontPanel& panel = program.scope.panel();
        program.scope.act([&] {
            panel.tabstrip3.select(1);
            panel.slider1.turn_to(1024 - 2 * row);
        });
        EXPECT_EQ(program.scope.parts().cursor_state.vpos[0], row);
        return millivolts_of(panel.lblc1.caption());
    }

    void check(double level, bool via_trigger, bool inverted, const Position& position) {
        const double pixel = GetParam().volts.millivolts / 64.0;
        const double shown = inverted ? -level : level;
        const double expected_row = position.row - shown / pixel;
        if (expected_row < 2.0 || expected_row > 510.0) {
            return; // at the edge a trace is held within the plot
        }
        measure(level, via_trigger, inverted, position.wheel);
        const int row = trace_row(program, own, 300);
        ASSERT_NEAR(row, expected_row, 1.0);
        ASSERT_EQ(marker_row(program.channel(own).text), position.row);
        ASSERT_NEAR(program.scope.parts().samples[own].mv[300], shown, pixel);
        ASSERT_NEAR(cursor_on(row), shown, pixel);
        ++checked;
    }

    Program program;
    Channel own = GetParam().channel;
    int checked = 0;
};

// The levels are whole codes, also after the halving of the trigger input.
TEST_P(LevelAgreement, AtEveryPositionInvertedOrNotAndViaTheTriggerInputOrNot) {
    for (const Position& position : positions) {
        for (const double divisions : {0.0, 0.5, -1.0}) {
            for (const bool via_trigger : {false, true}) {
                for (const bool inverted : {false, true}) {
                    SCOPED_TRACE(testing::Message()
                                 << divisions << " div, wheel " << position.wheel
                                 << (via_trigger ? ", VT" : "") << (inverted ? ", inv" : ""));
                    check(divisions * GetParam().volts.millivolts, via_trigger, inverted, position);
                    if (HasFatalFailure()) {
                        return;
                    }
                }
            }
        }
    }
    EXPECT_GE(checked, 40);
    EXPECT_TRUE(program.boxes.shown.empty());
}

INSTANTIATE_TEST_SUITE_P(VoltsPerDivision, LevelAgreement, testing::ValuesIn([] {
                             std::vector<ChannelAt> all;
                             for (const Channel channel : both_channels) {
                                 for (const Volts& volts :
                                      {Volts{"0.5V", 500}, Volts{"0.2V", 200}, Volts{"0.1V", 100},
                                       Volts{"50mV", 50}, Volts{"20mV", 20}, Volts{"10mV", 10}}) {
                                     all.push_back({channel, volts});
                                 }
                             }
                             return all;
                         }()));

struct TriggerRow {
    const char* volts;
    int wheel;
    bool via_trigger;
};

// The sweep starts where the signal passes the level: on the marker's row.
TEST(TriggerMarkerInLowGain, LiesWhereTheTraceStarts) {
    constexpr TriggerRow rows[] = {{"0.5V", 500, false}, {"0.5V", 545, false}, {"0.2V", 545, false},
                                   {"0.1V", 545, false}, {"0.1V", 480, false}, {"0.1V", 530, true},
                                   {"0.2V", 490, true},  {"0.5V", 530, true}};
    for (const TriggerRow& row : rows) {
        SCOPED_TRACE(testing::Message() << row.volts << " wheel " << row.wheel);
        Program program;
        program.simulation.bench().samplers[0] =
            row.via_trigger ? SamplerRoute::via_trigger : SamplerRoute::own_signal;
        ASSERT_TRUE(program.scope.start());
        program.scope.act([&] {
            program.channel(ch2).enable.set_checked(false);
            program.channel(ch1).inviatr.set_checked(row.via_trigger);
            program.scope.panel().eyeon.set_checked(true);
        });
        program.choose(program.channel(ch1).vdiv, row.volts);
        turn_wheel(program, 1, 600);
        turn_wheel(program, 3, row.wheel);
        program.ticks(5);
        const int marker = marker_row(program.scope.panel().trigertext);
        const Surface& picture = program.scope.picture().surface();
        EXPECT_EQ(picture.at(0, marker), pixel_of(program.scope.parts().colours.normal_text));
        program.ticks(8); // the line goes
        EXPECT_NEAR(trace_row(program, ch1, 1), marker, 1.0);
        // Millivolts at the input: four a wheel step, twice that behind the halving.
        const int millivolts = (row.wheel - 512) * (row.via_trigger ? 8 : 4);
        const std::string sign = millivolts < 0 ? "" : " ";
        EXPECT_EQ(program.scope.panel().trlevelmv.caption(),
                  sign + std::to_string(millivolts) + "mV");
        EXPECT_NEAR(program.scope.parts().samples[0].mv[1], millivolts, 1.1);
    }
}

} // namespace
} // namespace kv408
