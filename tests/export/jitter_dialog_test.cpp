// The jitter window's numbers, and the words where there is none.

#include "export/jitter_dialog.h"

#include <cmath>

#include <gtest/gtest.h>

#include "collected_signal.h"

namespace kv408 {
namespace {

/// The window over an edge from -200 to 200 mV at 4200 ps, 1000 ps long: its slope in the middle is
/// 400 mV * pi / 2 / 1000 ps = 0.6283 mV/ps.
struct JitterDialogTest : testing::Test {
    [[nodiscard]] CollectedSignal::Millivolts jittering_edge(double jitter, double noise,
                                                             double sign = 1.0) {
        return [=, this](double time) {
            const double late = jitter * chance.normal();
            return sign * (400.0 * synthetic::edge(time - 4200.0 - late, 1000.0) - 200.0) +
                   noise * chance.normal();
        };
    }
    [[nodiscard]] std::string value(std::string_view name) const {
        return line_beside(dialog.controls().lblJitterNames, dialog.controls().lblJitterValues,
                           name);
    }
    [[nodiscard]] const std::string& edge() const {
        return dialog.controls().lblJitterEdge.caption();
    }
    [[nodiscard]] double number(std::string_view name) const {
        return number_of_told(dialog.values(), name);
    }

    synthetic::Chance chance{7};
    CollectedSignal signal;
    JitterDialog dialog{signal.density, signal.clock};
};

TEST_F(JitterDialogTest, TellsTheJitterWithoutNoiseAndWithoutTheInstruments) {
    dialog.open();
    EXPECT_TRUE(signal.density.controls().chkDensity.checked());
    signal.take(300, jittering_edge(40.0, 5.0));
    dialog.refresh();
    EXPECT_EQ(edge(), "A rising edge");
    // Noise of 5 mV over the slope is 8 ps: sigma is the root of 40^2 + 8^2.
    EXPECT_NEAR(number("RMS jitter"), 40e-12, 1.2e-12);
    EXPECT_NEAR(number("Std dev"), 40.8e-12, 1.2e-12);
    EXPECT_NEAR(number("Noise"), 5e-3, 0.15e-3);
    EXPECT_NEAR(number("Slope"), 0.6283e9, 0.02e9);
    EXPECT_NEAR(number("Crossing level"), 0.0, 2e-3);
    EXPECT_NEAR(number("Mean time"), 4200e-12, 4e-12);
    EXPECT_NEAR(number("Random jitter"), 40e-12, 8e-12);
    EXPECT_NEAR(number("Total jitter at 1E-12"),
                number("Deterministic jitter") + 14.069 * number("Random jitter"), 1e-14);
    // The random part is right within 10 % after 25 000 hits.
    EXPECT_EQ(number("Sweeps for 10 %"), std::ceil(25000.0 * 300.0 / number("Hits")));
    EXPECT_NE(value("Random jitter").find("s (estimate, from "), std::string::npos)
        << value("Random jitter");
    dialog.controls().txtJitterOwn.set_text("24ps");
    EXPECT_NEAR(number("RMS jitter"), 32e-12, 1.5e-12);
    EXPECT_NEAR(number("Taken off"), std::hypot(24e-12, 7.96e-12), 0.3e-12);
}

TEST_F(JitterDialogTest, SaysInWordsWhyThereIsNoNumber) {
    dialog.open();
    EXPECT_EQ(edge(), "Nothing has been collected");
    EXPECT_EQ(value("RMS jitter"), "-");
    signal.take(1, jittering_edge(40.0, 5.0));
    dialog.refresh();
    EXPECT_EQ(edge(), "More sweeps are needed");
    signal.take(60, jittering_edge(40.0, 5.0));
    dialog.controls().txtJitterLevel.set_text("0.45V");
    EXPECT_EQ(edge(), "The trace does not cross the level there");
    dialog.controls().txtJitterLevel.set_text("");
    dialog.controls().cmbJitterEdge.set_index(2);
    EXPECT_EQ(edge(), "The trace does not cross the level there") << "no edge falls";
    dialog.controls().cmbJitterEdge.set_index(1);
    EXPECT_EQ(edge(), "A rising edge");
    EXPECT_EQ(value("Interval"), "Two crossings have to be on the screen");
    EXPECT_FALSE(dialog.bathtub());
    dialog.controls().txtJitterNumber.set_text("2");
    EXPECT_EQ(edge(), "The trace does not cross the level there");
    dialog.controls().txtJitterNumber.set_text("");
    dialog.controls().txtJitterOwn.set_text("1ns");
    EXPECT_EQ(value("RMS jitter"), "What is taken off is more than what was found");
    signal.density.clear();
    signal.take(60, [this](double) { return 3.0 * chance.normal(); });
    dialog.refresh();
    EXPECT_EQ(edge(), "The trace does not go between two levels");
    // A channel that is off.
    signal.panel.channel[ch2].enable.put_checked(false);
    dialog.controls().cmbJitterChannel.set_index(1);
    EXPECT_EQ(edge(), "Nothing has been collected");
    EXPECT_EQ(dialog.controls().lblJitterState.caption(), "CH2: no sweep yet, the channel is off");
}

TEST_F(JitterDialogTest, MarksWhatCannotBeTaken) {
    JitterControls& controls = dialog.controls();
    controls.txtJitterLevel.set_text("50mV");
    EXPECT_DOUBLE_EQ(*dialog.setup().level, 50.0);
    controls.txtJitterInterval.set_text("8ns");
    EXPECT_DOUBLE_EQ(*dialog.setup().interval, 8000.0);
    controls.txtJitterNumber.set_text("3");
    EXPECT_EQ(dialog.setup().number, 3);
    controls.txtJitterNumber.set_text("2.5");
    EXPECT_TRUE(controls.txtJitterNumber.faulty()) << "there is no such edge";
    EXPECT_FALSE(dialog.setup().number);
    controls.txtJitterNumber.set_text("3");
    for (TextBox* const box : {&controls.txtJitterLevel, &controls.txtJitterInterval,
                               &controls.txtJitterNumber, &controls.txtJitterOwn}) {
        EXPECT_FALSE(box->faulty());
        for (const char* const text : {"x", "-3000", "3 s 4"}) {
            box->set_text(text);
            EXPECT_TRUE(box->faulty()) << box->name() << " takes " << text;
        }
    }
    EXPECT_FALSE(dialog.setup().level || dialog.setup().interval || dialog.setup().number);
    controls.txtJitterLevel.set_text(" ");
    EXPECT_FALSE(controls.txtJitterLevel.faulty());
}

TEST_F(JitterDialogTest, TellsWhatFalsifiesIt) {
    dialog.open();
    signal.panel.average.put_checked(true);
    signal.take(2, jittering_edge(40.0, 5.0));
    dialog.refresh();
    EXPECT_EQ(dialog.controls().lblJitterRemark.caption().rfind("Filter Avg. is on", 0), 0U);
    EXPECT_EQ(dialog.controls().lblJitterState.caption().rfind("CH1: 2 sweeps since ", 0), 0U);
    signal.take(1, jittering_edge(40.0, 5.0), ch1, 21.0);
    dialog.refresh();
    const std::string state = dialog.controls().lblJitterState.caption();
    EXPECT_EQ(state.rfind("CH1: 1 sweep since ", 0), 0U) << state;
    EXPECT_NE(state.find("anew with another "), std::string::npos) << state;
}

TEST_F(JitterDialogTest, LooksAnewOnceASecondAndOnlyAtWhatIsNew) {
    int computed = 0;
    dialog.on_computed([&computed] { ++computed; });
    dialog.tick_over();
    EXPECT_EQ(computed, 0) << "it is closed";
    dialog.open();
    EXPECT_EQ(computed, 1);
    for (int tick = 0; tick < 25; ++tick) { // 100 ms each
        signal.take(1, jittering_edge(40.0, 5.0));
        dialog.tick_over();
    }
    EXPECT_EQ(computed, 3);
    signal.clock.advance(std::chrono::seconds(1));
    dialog.tick_over();
    EXPECT_EQ(computed, 4);
    signal.clock.advance(std::chrono::seconds(5));
    dialog.tick_over();
    EXPECT_EQ(computed, 4) << "nothing was counted";
    signal.density.clear();
    dialog.tick_over();
    EXPECT_EQ(computed, 5);
    EXPECT_EQ(edge(), "Nothing has been collected");
}

TEST_F(JitterDialogTest, CopiesATable) {
    dialog.open();
    signal.take(60, jittering_edge(40.0, 5.0));
    dialog.refresh();
    const std::string table = dialog.table();
    EXPECT_EQ(table.rfind("Value\tCH1\tUnit\tRemark\nHits\t", 0), 0U) << table;
    EXPECT_NE(table.find("\nInterval\t\ts\tTwo crossings have to be on the screen\n"),
              std::string::npos)
        << table;
}

TEST(ToldText, HasDigitsBelowAPicosecondToo) {
    EXPECT_EQ(told_text(0.8125e-12, ToldUnit::seconds), "812.50fs");
    EXPECT_EQ(told_text(3.25e-12, ToldUnit::seconds), "3.2500ps");
    EXPECT_EQ(told_text(0.0, ToldUnit::seconds).back(), 's');
    EXPECT_EQ(told_text(1234567.0, ToldUnit::hits), "1234567");
    EXPECT_EQ(told_text(48.5, ToldUnit::percent), "48.500 %");
    EXPECT_EQ(told_text(0.5, ToldUnit::percent), "0.50000 %");
    EXPECT_EQ(told_text(-0.25, ToldUnit::decibels), "-0.25000 dB");
}

} // namespace
} // namespace kv408
