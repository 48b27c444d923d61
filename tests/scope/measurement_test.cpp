// Measurements of the whole program on the simulated instrument.

#include <algorithm>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "scope/program.h"

namespace kv408 {
namespace {

/// A program that sweeps the bench's two signals: a sine of 400 mVpp and 10 MHz on CH1, a pulse of
/// 300 mVpp, 20 MHz, 40 % high, on CH2.
struct Measured : Program {
    Measured() {
        simulation.bench().sampler_noise_codes = 1.0;
        EXPECT_TRUE(scope.start());
        ticks(10);
    }

    /// Chooses `measurement` in slot 0 and reads its row once it is shown.
    std::pair<std::string, std::string> results(const std::string& measurement) {
        choose(scope.panel().measurement[0].selector, measurement);
        ticks(2);
        const MeasurementControls& slot = scope.panel().measurement[0];
        return {slot.ch1.caption(), slot.ch2.caption()};
    }

    /// Pixels of the picture in the annotation colour.
    std::ptrdiff_t marked_pixels() {
        const Surface& picture = scope.picture().surface();
        return std::count(picture.pixels().begin(), picture.pixels().end(),
                          pixel_of(scope.parts().colours.annotations));
    }

    void press(std::size_t slot, bool checked) {
        scope.act([&] { scope.panel().measurement[slot].annotate.press(checked); });
    }
};

/// The number in front of a result.
double number(const std::string& result) {
    return std::strtod(result.c_str(), nullptr);
}

/// A result's unit with its prefix, up to the blank.
std::string unit(const std::string& result) {
    const auto start = result.find_first_not_of("-0123456789.");
    return result.substr(start, result.size() - start - 1);
}

struct Expected {
    const char* measurement;
    double first;
    const char* first_unit;
    double second;
    const char* second_unit;
};

TEST(Measurements, AreReadOffThePanel) {
    Measured program;
    // 1 % of the full scale of 800 mV, two columns of 0.3125 ns. A sine has no flat top: the mean
    // of its highest 32nd is cos(a) / (pi / 2 - a) = 0.9784 of its peak where sin(a) = 15/16, and
    // from 10 % to 90 % of that takes it 28.61 ns.
    const Expected rows[] = {
        {"VMax", 200.0, "mV", 150.0, "mV"},      {"VMin", -200.0, "mV", -150.0, "mV"},
        {"Vpp", 400.0, "mV", 300.0, "mV"},       {"VAmplPP", 391.4, "mV", 300.0, "mV"},
        {"VAmpl+", 195.7, "mV", 150.0, "mV"},    {"VAmpl-", -195.7, "mV", -150.0, "mV"},
        {"VRMS", 141.4, "mV", 150.0, "mV"},      {"Period", 100.0, "ns", 50.0, "ns"},
        {"tPuls+", 50.0, "ns", 20.0, "ns"},      {"tPuls-", 50.0, "ns", 30.0, "ns"},
        {"tRise", 28.61, "ns", 800.0, "ps"},     {"tFall", 28.61, "ns", 800.0, "ps"},
        {"Frequency", 10.0, "MHz", 20.0, "MHz"},
    };
    for (const Expected& row : rows) {
        const auto [first, second] = program.results(row.measurement);
        const std::string what(row.measurement);
        const bool volts = what[0] == 'V';
        const double tolerance = volts ? 8.0 : what == "Frequency" ? 0.1 : 0.625;
        ASSERT_EQ(unit(first), row.first_unit) << what << " " << first;
        ASSERT_EQ(unit(second), row.second_unit) << what << " " << second;
        EXPECT_NEAR(number(first), row.first, std::max(tolerance, row.first * 0.01)) << what;
        const double factor = std::string(row.second_unit) == "ps" ? 1000.0 : 1.0;
        EXPECT_NEAR(number(second), row.second,
                    std::max((what == "Frequency" ? 0.2 : tolerance) * factor, row.second * 0.01))
            << what;
    }
}

TEST(Measurements, FollowTheSweepsOfPointByPointPassesToo) {
    Measured program;
    program.simulation.bench().sources[0].frequency_hz = 200e3;
    program.choose(program.scope.panel().seltimediv, "1us/div");
    program.ticks(8);
    const auto [first, second] = program.results("Frequency");
    EXPECT_EQ(unit(first), "kHz");
    EXPECT_NEAR(number(first), 200.0, 2.0);
}

TEST(Measurements, OfAChannelThatIsSwitchedOffGoAtOnce) {
    Measured program;
    const MeasurementControls& slot = program.scope.panel().measurement[0];
    ASSERT_NE(slot.ch1.caption(), " ");
    program.scope.act([&] { program.channel(0).enable.set_checked(false); });
    EXPECT_EQ(slot.ch1.caption(), " ");
    EXPECT_NE(slot.ch2.caption(), " ");
    program.scope.act([&] { program.channel(1).enable.set_checked(false); });
    EXPECT_EQ(slot.ch1.caption(), " ");
    EXPECT_EQ(slot.ch2.caption(), " ");
}

TEST(Annotations, AreNotSeenAgainBeforeTheyAreMeasuredAgain) {
    Measured program;
    program.press(0, true);
    ASSERT_GT(program.marked_pixels(), 0);
    program.scope.act([&] {
        program.scope.panel().check1.set_checked(false);
        program.scope.panel().check1.set_checked(true);
        program.scope.picture().draw(draw_flags::all);
    });
    EXPECT_EQ(program.marked_pixels(), 0);
    program.ticks(3);
    EXPECT_GT(program.marked_pixels(), 0);
}

TEST(Annotations, OfARowSetToNothingAreNone) {
    Measured program;
    program.press(0, true);
    program.choose(program.scope.panel().measurement[0].selector, "---");
    EXPECT_EQ(program.marked_pixels(), 0);
    program.ticks(3);
    EXPECT_EQ(program.marked_pixels(), 0);
}

TEST(Measurements, StandStillWhileTheyAreOff) {
    Measured program;
    program.scope.act([&] { program.scope.panel().check1.set_checked(false); });
    EXPECT_FALSE(program.scope.panel().picmeasure.visible());
    const auto before = program.scope.parts().measurements.measresults;
    program.simulation.bench().sources[0].amplitude_mvpp = 100.0;
    program.ticks(6);
    EXPECT_EQ(program.scope.parts().measurements.measresults, before);
    EXPECT_FALSE(program.scope.panel().picmeasure.visible());
    program.scope.act([&] { program.scope.panel().check1.set_checked(true); });
    program.ticks(6);
    EXPECT_TRUE(program.scope.panel().picmeasure.visible());
    EXPECT_NEAR(program.scope.parts().measurements.measresults[0][meas::vpp], 100.0, 8.0);
}

TEST(Measurements, AreNotMadeAnewOverAStoppedSweep) {
    Measured program;
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(1);
    const auto before = program.scope.parts().measurements.measresults;
    program.ticks(5);
    EXPECT_EQ(program.scope.parts().measurements.measresults, before);
    EXPECT_TRUE(program.scope.panel().picmeasure.visible());
}

TEST(Annotations, PressingABoxMarksThePictureAtOnce) {
    Measured program;
    EXPECT_EQ(program.marked_pixels(), 0);
    program.press(1, true);
    // Four lines across, half of 638 pixels each; the traces' maxima may lie on them.
    EXPECT_GT(program.marked_pixels(), 4 * 310);
    EXPECT_EQ(program.scope.panel().measurement[1].mark.caption(), "*");
    program.press(2, true);
    EXPECT_FALSE(program.scope.panel().measurement[1].annotate.checked());
    // At most four dots of 52 pixels.
    EXPECT_GT(program.marked_pixels(), 52);
    EXPECT_LE(program.marked_pixels(), 4 * 52);
    program.press(2, false);
    EXPECT_EQ(program.marked_pixels(), 0);
}

TEST(Annotations, MoveWithTheTraceAndItsWheel) {
    Measured program;
    program.press(0, true); // VMax of CH1, 200 mV at 0.1V/div: row 128
    const auto& marks = program.scope.parts().marks;
    EXPECT_NEAR(marks.mark[ch1][0][0].y, 128, 2);
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(1);
    const std::int32_t before = marks.mark[ch1][0][0].y;
    program.scope.act([&] {
        program.scope.panel().tabstrip2.select(1);
        program.scope.panel().slider1.turn_to(512 - 100); // 50 rows down
    });
    EXPECT_EQ(marks.mark[ch1][0][0].y, before + 50);
    const Surface& picture = program.scope.picture().surface();
    EXPECT_EQ(picture.at(1, before + 50), pixel_of(program.scope.parts().colours.annotations));
}

TEST(Annotations, GoWhileTheInstrumentWaitsForATrigger) {
    Measured program;
    program.press(1, true);
    program.simulation.bench().triggers[0] = simulator::TriggerRoute::disconnected;
    program.ticks(8);
    ASSERT_EQ(program.status(), "Waiting For TRIGGER");
    EXPECT_EQ(program.marked_pixels(), 0);
}

TEST(Annotations, BoxesSetFromCodeStayAsTheyAreSet) {
    Measured program;
    program.scope.act([&] {
        program.scope.panel().measurement[0].annotate.set_checked(true);
        program.scope.panel().measurement[2].annotate.set_checked(true);
    });
    program.ticks(4);
    EXPECT_TRUE(program.scope.panel().measurement[0].annotate.checked());
    EXPECT_TRUE(program.scope.panel().measurement[2].annotate.checked());
    EXPECT_GT(program.marked_pixels(), 0);
}

} // namespace
} // namespace kv408
