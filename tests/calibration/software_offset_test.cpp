#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using testing::Test;

const std::string question = "Make sure that trigger signal is present and Sampler inputs are "
                             "disconnected or 0V";
const std::string refusal = "Sampled data is out of range, make sure that trigger signal is "
                            "present and Sampler inputs are disconnected or 0V";

class SoftwareOffsets : public Test, public CalibrationRig {
protected:
    SoftwareOffsets() {
        acquisition.acqrunning = true;
        fill(0, 2048);
        fill(1, 2048);
        forget();
    }

    /// Fills the codes 5 to 505 of a channel, and everything around them with what must not count.
    void fill(std::size_t channel, int code) {
        samples.at(channel).raw.fill(4000);
        for (std::size_t index = 5; index <= 505; ++index) {
            samples.at(channel).raw.at(index) = static_cast<std::uint16_t>(code);
        }
    }

    /// Fills them so that their sum is `sum`.
    void fill_sum(std::size_t channel, int sum) {
        fill(channel, sum / 501);
        samples.at(channel).raw[100] =
            static_cast<std::uint16_t>(sum / 501 + sum - sum / 501 * 501);
    }

    void click() { panel.cmdcaloofset.set_checked(!panel.cmdcaloofset.checked()); }

    [[nodiscard]] std::array<int, 2> corrections() const {
        return {channels[0].swoffset, channels[1].swoffset};
    }
};

TEST_F(SoftwareOffsets, TheSumOf501CodesIsDividedBy500) {
    fill(0, 2000);
    EXPECT_EQ(software_offset_mean(samples[0], 0), 2004);
    // 1002000 + 250 is a half above 2004: to even; + 750 is a half above 2005.
    fill_sum(0, 1002250);
    EXPECT_EQ(software_offset_mean(samples[0], 0), 2004);
    fill_sum(0, 1002750);
    EXPECT_EQ(software_offset_mean(samples[0], 0), 2006);
    EXPECT_EQ(software_offset_mean(samples[0], 500), 2006);
}

TEST_F(SoftwareOffsets, TheSecondSumStartsFromTheFirstMean) {
    // 501 * 2000 / 500 = 2004; (2004 + 501 * 2000) / 500 = 2008.008
    fill(0, 2000);
    fill(1, 2000);
    click();
    EXPECT_EQ(corrections(), (std::array{44, 40}));
    EXPECT_TRUE(panel.cmdcaloofset.checked());
}

TEST_F(SoftwareOffsets, TheFirstSumStartsFromNothing) {
    // A half above 2004 goes down to even; the least more would go up.
    fill_sum(0, 1002250);
    fill(1, 2000);
    click();
    EXPECT_EQ(corrections(), (std::array{44, 40}));
}

TEST_F(SoftwareOffsets, ExactInputsAreCorrectedByFourAndEight) {
    // 501 * 2048 / 500 = 2052.096; (2052 + 1026048) / 500 = 2056.2
    click();
    EXPECT_EQ(corrections(), (std::array{-4, -8}));
}

TEST_F(SoftwareOffsets, IsAskedFor) {
    boxes.answers = {MessageAnswer::cancel};
    bool marked_meanwhile = true;
    boxes.on_show = [&](const Message&) { marked_meanwhile = panel.cmdcaloofset.checked(); };
    click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, question);
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::ok_cancel);
    EXPECT_FALSE(marked_meanwhile);
    EXPECT_FALSE(panel.cmdcaloofset.checked());
    EXPECT_EQ(corrections(), (std::array{0, 0}));
}

TEST_F(SoftwareOffsets, NeedsARunningScope) {
    acquisition.acqrunning = false;
    click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Scope not running!");
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::exclamation);
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::ok);
    EXPECT_FALSE(panel.cmdcaloofset.checked());
    EXPECT_EQ(corrections(), (std::array{0, 0}));
}

TEST_F(SoftwareOffsets, TheCheckedItemTakesBothBackWithoutAQuestion) {
    click();
    ASSERT_TRUE(panel.cmdcaloofset.checked());
    acquisition.acqrunning = false;
    boxes.shown.clear();
    click();
    EXPECT_FALSE(panel.cmdcaloofset.checked());
    EXPECT_EQ(corrections(), (std::array{0, 0}));
    EXPECT_TRUE(boxes.shown.empty());
}

struct Limit {
    int mean;       ///< of the channel
    int correction; ///< 0 where it is refused
};

class SoftwareOffsetLimits : public SoftwareOffsets, public testing::WithParamInterface<Limit> {};

TEST_P(SoftwareOffsetLimits, OfTheFirstChannel) {
    const auto& [mean, correction] = GetParam();
    fill_sum(0, mean * 500);
    // The second stays right whatever is carried over.
    fill_sum(1, 2048 * 500 - mean);
    click();
    EXPECT_EQ(corrections(), (std::array{correction, 0}));
    EXPECT_EQ(boxes.texts(), correction != 0 ? Texts{question} : (Texts{question, refusal}));
    EXPECT_EQ(boxes.shown.back().buttons,
              correction != 0 ? MessageButtons::ok_cancel : MessageButtons::ok);
    EXPECT_TRUE(panel.cmdcaloofset.checked());
}

TEST_P(SoftwareOffsetLimits, OfTheSecondChannel) {
    const auto& [mean, correction] = GetParam();
    fill_sum(0, 2048 * 500);
    fill_sum(1, mean * 500 - 2048);
    click();
    EXPECT_EQ(corrections(), (std::array{0, correction}));
    EXPECT_EQ(boxes.texts(), correction != 0 ? Texts{question} : (Texts{question, refusal}));
}

INSTANTIATE_TEST_SUITE_P(BothSides, SoftwareOffsetLimits,
                         testing::Values(Limit{2048 - 299, 299}, Limit{2048 - 300, 0},
                                         Limit{2048 + 299, -299}, Limit{2048 + 300, 0}));

TEST_F(SoftwareOffsets, ARefusedChannelKeepsItsCorrection) {
    channels[0].swoffset = 17;
    fill_sum(0, 3000 * 500);
    fill_sum(1, 2048 * 500 - 3000);
    click();
    EXPECT_EQ(corrections(), (std::array{17, 0}));
}

} // namespace
} // namespace kv408
