// The density of the bench's signals, over sweeps of the whole program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "export/density_file.h"
#include "scope/program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

/// A program that sweeps and collects the density of both channels.
struct WithDensity : Program {
    explicit WithDensity(bool on = true) {
        EXPECT_TRUE(scope.start());
        ticks(10);
        if (on) {
            scope.act([this] { controls().chkDensity.set_checked(true); });
        }
    }

    DensityDialog& dialog() { return scope.tools().density(); }
    DensityControls& controls() { return dialog().controls(); }

    /// Hits under the points of the trace that is drawn, that of `channel`: how many columns have
    /// none.
    int columns_beside_the_density(Channel channel) {
        const Picture::Drawn drawn = scope.picture().drawn();
        const std::size_t index = channel == ch1 ? 1 : 0; // CH1 lies on top
        const DensityLayer& layer = *drawn.densities.at(index).layer;
        const Generation& trace = drawn.traces.at(index).trace->current();
        int beside = 0;
        for (int point = 1; point <= 639; ++point) {
            const TracePoint at = trace.point(point);
            if (at.x >= 1 && at.x <= 639) {
                const auto row = static_cast<int>(std::nearbyint(at.y));
                beside += layer.row(row)[static_cast<std::size_t>(at.x)] == 0 ? 1 : 0;
            }
        }
        return beside;
    }
};

TEST(DensityOfTheProgram, CountsEveryPointOfEverySweep) {
    WithDensity program;
    program.ticks(40);
    for (const Channel channel : both_channels) {
        const Collected& collected = *program.dialog().collected(channel);
        EXPECT_GE(collected.sweeps, 10U);
        for (int point = 0; point < npoints; ++point) {
            const auto counts = collected.counts.at(point);
            ASSERT_EQ(std::accumulate(counts.begin(), counts.end(), std::uint64_t{0}),
                      collected.sweeps)
                << point;
        }
    }
}

TEST(DensityOfTheProgram, KnowsTheNoiseOfTheBench) {
    WithDensity program(false);
    // A flat line with noise of four codes.
    program.simulation.bench().samplers[ch1] = simulator::SamplerRoute::disconnected;
    program.simulation.bench().sampler_noise_codes = 4.0;
    program.ticks(10);
    program.scope.act([&] { program.controls().chkDensity.set_checked(true); });
    program.ticks(60);
    const Collected& collected = *program.dialog().collected(ch1);
    double hits = 0;
    double sum = 0;
    double squares = 0;
    for (int point = 0; point < collected.counts.points(); ++point) {
        for (int code = 0; code < scale_codes; ++code) {
            const double count = collected.counts.at(point)[static_cast<std::size_t>(code)];
            hits += count;
            sum += count * code;
            squares += count * code * code;
        }
    }
    const double mean = sum / hits;
    EXPECT_GE(hits, 20 * 650.0);
    // Codes are whole: their rounding adds a twelfth.
    EXPECT_NEAR(std::sqrt(squares / hits - mean * mean), std::sqrt(16.0 + 1.0 / 12), 0.02 * 4.0);
}

TEST(DensityOfTheProgram, LiesUnderTheLiveTraceWhateverThePanelSays) {
    WithDensity program;
    program.ticks(10);
    for (const char* const scale : {"0.2V", "50mV", "10mV"}) {
        program.choose(program.channel(0).vdiv, scale);
        program.ticks(10);
        EXPECT_EQ(program.columns_beside_the_density(ch1), 0) << scale;
        EXPECT_EQ(program.columns_beside_the_density(ch2), 0) << scale;
    }
    program.scope.act([&] { program.channel(0).psofset.set_text("3ns"); });
    program.ticks(10);
    EXPECT_EQ(program.columns_beside_the_density(ch1), 0) << "delayed";
    // While nothing sweeps the trace is moved on the screen, and what was collected with it.
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(3);
    program.scope.act([&] { program.channel(0).psofset.set_text("7ns"); });
    program.ticks(3);
    EXPECT_EQ(program.columns_beside_the_density(ch1), 0) << "moved";
}

TEST(DensityOfTheProgram, OnlyAChangeOfWhatIsMeasuredBeginsAnew) {
    WithDensity program;
    program.ticks(20);
    const std::uint64_t before = program.dialog().collected(ch1)->sweeps;
    program.choose(program.channel(0).vdiv, "0.2V");
    program.ticks(10);
    EXPECT_GT(program.dialog().collected(ch1)->sweeps, before);
    program.choose(program.scope.panel().seltimediv, "10ns/div");
    program.ticks(5);
    program.dialog().refresh();
    EXPECT_LT(program.dialog().collected(ch1)->sweeps, before);
    EXPECT_NE(program.controls().state[ch1].caption().find("anew with another Time base"),
              std::string::npos)
        << program.controls().state[ch1].caption();
}

TEST(DensityOfTheProgram, SaysInPlainSightWhatFalsifiesIt) {
    WithDensity program;
    program.ticks(5);
    EXPECT_EQ(program.controls().lblDensityRemark.caption(), "");
    program.scope.act([&] { program.scope.panel().average.set_checked(true); });
    program.ticks(10);
    program.dialog().refresh();
    const std::string remark = program.controls().lblDensityRemark.caption();
    EXPECT_EQ(remark.rfind("Filter Avg. is on:", 0), 0U) << remark;
    EXPECT_NE(remark.find("CH1: "), std::string::npos) << remark;
    EXPECT_NE(remark.find("were averaged"), std::string::npos) << remark;
    program.scope.act([&] { program.scope.panel().average.set_checked(false); });
    program.scope.act([&] { program.controls().cmdDensityClear.click(); });
    program.dialog().refresh();
    EXPECT_EQ(program.controls().lblDensityRemark.caption(), "");
}

TEST(DensityOfTheProgram, CollectsPassesTooAndSaysThatTheyAreSlow) {
    WithDensity program;
    program.choose(program.scope.panel().seltimediv, "1us/div");
    program.ticks(60);
    program.dialog().refresh();
    ASSERT_NE(program.dialog().collected(ch1), nullptr);
    EXPECT_EQ(program.dialog().collected(ch1)->counts.points(), 640);
    EXPECT_GE(program.dialog().collected(ch1)->sweeps, 1U);
    EXPECT_NE(program.controls().lblDensityRemark.caption().find("point by point"),
              std::string::npos);
}

TEST(DensityOfTheProgram, SendsNothingAndLeavesNothingBehind) {
    WithDensity with;
    WithDensity without(false);
    with.ticks(30);
    without.ticks(30);
    const Surface plain = without.scope.picture().surface();
    EXPECT_FALSE(std::ranges::equal(with.scope.picture().surface().pixels(), plain.pixels()));
    with.scope.act([&] { with.controls().chkDensity.set_checked(false); });
    EXPECT_TRUE(std::ranges::equal(with.scope.picture().surface().pixels(), plain.pixels()));
    EXPECT_EQ(with.dialog().collected(ch1), nullptr);
    EXPECT_EQ(frames_of(with), frames_of(without));
}

TEST(DensityOfTheProgram, AChannelThatIsOffCollectsNothing) {
    WithDensity program(false);
    program.scope.act([&] { program.channel(1).enable.set_checked(false); });
    program.ticks(5);
    program.scope.act([&] { program.controls().chkDensity.set_checked(true); });
    program.ticks(20);
    program.dialog().refresh();
    EXPECT_NE(program.dialog().collected(ch1), nullptr);
    EXPECT_EQ(program.dialog().collected(ch2), nullptr);
    EXPECT_EQ(program.controls().state[ch2].caption(), "CH2: no sweep yet, the channel is off");
}

TEST(DensityOfTheProgram, IsSavedWithItsAxes) {
    WithDensity program;
    program.ticks(20);
    program.scope.act([&] { program.controls().chkDensityFreeze.set_checked(true); });
    program.scope.act([&] { program.dialog().save("/data/eye.npy"); });
    const Collected& collected = *program.dialog().collected(ch2);
    EXPECT_EQ(program.files.files.at("/data/eye_ch2.npy"), density_file(collected));
    EXPECT_EQ(program.files.files.at("/data/eye_ch2_axes.npy"), density_axes_file(collected));
    EXPECT_EQ(program.files.files.count("/data/eye.npy"), 0U);
    program.scope.act([&] { program.controls().channel[ch1].set_checked(false); });
    program.scope.act([&] { program.dialog().save("/data/eye.npy"); });
    EXPECT_EQ(program.files.files.count("/data/eye.npy"), 1U) << "one channel needs no number";
}

TEST(DensityOfTheProgram, TakesNoHalfLifeThatIsNone) {
    WithDensity program;
    TextBox& box = program.controls().txtDensityHalfLife;
    for (const auto& [text, faulty] : {std::pair{"10", false},
                                       {"", false},
                                       {"0", true},
                                       {"1.5", true},
                                       {"100000", false},
                                       {"100001", true},
                                       {"ten", true}}) {
        program.scope.act([&, text = text] { box.set_text(text); });
        EXPECT_EQ(box.faulty(), faulty) << text;
    }
}

} // namespace
} // namespace kv408
