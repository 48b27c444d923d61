// Numbers that are typed with a unit: what reaches the instrument and the settings file.

#include <gtest/gtest.h>

#include "scope/program.h"
#include "scope/settings_shown.h"

namespace kv408 {
namespace {

struct TypedUnits : testing::Test, Program {
    /// Starts with 1000 ps of delay for CH1.
    void SetUp() override {
        files.files[settings_path] = "horpos\t1000\r\n";
        ASSERT_TRUE(scope.start());
        ticks(5);
        ASSERT_EQ(simulation.settings().offset_ps[0], 1000);
    }

    void type(TextBox& box, const std::string& text) {
        scope.act([&] {
            box.focus();
            box.set_text(text);
        });
    }

    /// The line of the settings file that begins with `key`, if the program ended now.
    [[nodiscard]] std::string kept(const std::string& key) {
        scope.close();
        const std::string& file = files.files[settings_path];
        const auto at = file.find(key + "\t");
        return file.substr(at, file.find('\n', at) + 1 - at);
    }

    FrontPanel& panel = scope.panel();
};

TEST_F(TypedUnits, OfADelayReachTheInstrument) {
    type(channel(ch1).psofset, "7ns");
    scope.act([this] { channel(ch1).psofset.enter(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().offset_ps[0], 7000);
    EXPECT_EQ(channel(ch1).hor_delay.caption(), "Delay:  7000ps");
    EXPECT_EQ(kept("horpos"), "horpos\t7000\r\n");
}

TEST_F(TypedUnits, OfATimeOutReachTheInstrument) {
    type(panel.trtout, "2ms");
    scope.act([this] { panel.trtout.leave(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().trigger.time_out_us, 2000);
    EXPECT_EQ(panel.trtout.text(), "2000");
    type(panel.trtout, "3");
    scope.act([this] { panel.trtout.leave(); });
    ticks(5);
    EXPECT_EQ(simulation.settings().trigger.time_out_us, 10);
    EXPECT_EQ(panel.trtout.text(), "10");
}

TEST_F(TypedUnits, NothingThatCannotBeTakenReachesTheInstrument) {
    type(channel(ch1).psofset, "7 of them");
    type(panel.trtout, "2 of them");
    choose(panel.trigeredge, "Negative");
    ticks(5);
    EXPECT_EQ(simulation.settings().offset_ps[0], 1000);
    EXPECT_EQ(simulation.settings().trigger.time_out_us, 1000);
    EXPECT_TRUE(channel(ch1).psofset.faulty());
    EXPECT_TRUE(panel.trtout.faulty());
}

struct TypedAndKept {
    const char* typed;
    const char* kept;
};

class TypedUnitsInTheFile : public TypedUnits, public testing::WithParamInterface<TypedAndKept> {};

TEST_P(TypedUnitsInTheFile, AreKeptAsThePicosecondsThatWillBeReadBack) {
    type(channel(ch1).psofset, GetParam().typed);
    EXPECT_EQ(kept("horpos"), std::string("horpos\t") + GetParam().kept + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(NotYetEntered, TypedUnitsInTheFile,
                         testing::Values(TypedAndKept{"250", "250"}, TypedAndKept{"007", "007"},
                                         TypedAndKept{"", ""}, TypedAndKept{"900000", "900000"},
                                         TypedAndKept{"7ns", "7000"}, TypedAndKept{"70ns", "65535"},
                                         TypedAndKept{"0.25 us", "65535"},
                                         TypedAndKept{"7 of them", "1000"}));

TEST(TypedUnitsFile, ThatHoldsAUnitGivesTheNumberInFront) {
    Program program;
    program.files.files[settings_path] = "horpos\t70ns\r\nhorpos2\t1.5ns\r\n";
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    EXPECT_EQ(program.channel(ch1).psofset.text(), "70");
    EXPECT_EQ(program.channel(ch2).psofset.text(), "2");
    EXPECT_EQ(program.simulation.settings().offset_ps, (std::array<std::int32_t, 2>{70, 2}));
    EXPECT_FALSE(program.channel(ch1).psofset.faulty());
}

} // namespace
} // namespace kv408
