// Jitter and eyes as computed, against what the simulated instrument's signals are.

#include <gtest/gtest.h>

#include "support/known_figures.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

// What bench/accuracy.cpp prints.
TEST(Figures, AreThoseOfTheSignalAfterTheSweepsTheyAskFor) {
    for (const FigureCase& one : figure_cases()) {
        CollectingProgram program(one.collecting);
        for (const KnownFigure& figure : one.figures(program)) {
            EXPECT_TRUE(figure.holds())
                << one.name << ": " << figure.name << " is "
                << (figure.value ? std::to_string(*figure.value)
                                 : std::string(text_of(figure.value.why())))
                << ", true " << figure.truth << ", allowed " << figure.allowed;
        }
        if (series_stride > 1) {
            break; // the sanitizers look at how, not at what comes out
        }
    }
}

TEST(Figures, AClosedEyeIsToldAsClosed) {
    CollectingProgram noisy({.connection = simulator::TestConnection::eye_closing,
                             .change = [](simulator::Source& signal) { signal.noise_mv = 20.0; }});
    const auto eye = eye_of(noisy.after(200), {});
    ASSERT_TRUE(eye);
    EXPECT_EQ(eye->height.why(), WhyNot::closed);
    EXPECT_FALSE(eye->height);
    CollectingProgram jittery(
        {.change = [](simulator::Source& signal) { signal.jitter_ps = 16000.0; }});
    const auto narrow = eye_of(jittery.after(200), {});
    if (narrow) {
        EXPECT_FALSE(narrow->width);
        EXPECT_EQ(narrow->width.why(), WhyNot::closed);
    } else {
        EXPECT_EQ(narrow.why(), WhyNot::closed);
    }
}

TEST(Figures, ASignalThatLeavesTheScaleHasNoHeight) {
    // At 10mV/div the instrument converts from -341 to 341 mV.
    CollectingProgram program(
        {.change = [](simulator::Source& signal) { signal.amplitude_mvpp = 800.0; },
         .volts = "10mV"});
    const auto eye = eye_of(program.after(60), {});
    ASSERT_TRUE(eye) << text_of(eye.why());
    EXPECT_FALSE(eye->height);
    EXPECT_EQ(eye->height.why(), WhyNot::clipped);
    EXPECT_FALSE(eye->q);
    EXPECT_EQ(eye->q.why(), WhyNot::clipped);
    EXPECT_TRUE(eye->width);
}

TEST(Figures, ASteadySignalHasNeitherEdgesNorAnEye) {
    CollectingProgram program(
        {.change = [](simulator::Source& signal) { signal.amplitude_mvpp = 0.0; }});
    EXPECT_EQ(eye_of(program.after(60), {}).why(), WhyNot::flat);
    EXPECT_EQ(jitter_of(program.after(60), {}).why(), WhyNot::flat);
}

} // namespace
} // namespace kv408
