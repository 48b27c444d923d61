// Undo and Redo: the panel, the instrument and the picture come back, to the byte of the settings
// file.

#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/undo.h"
#include "scope/panel_agreement.h"
#include "scope/program.h"
#include "scope/random_user.h"
#include "scope/set_up_agreement.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

struct UndoTest : testing::Test, protected Program {
    UndoTest() {
        EXPECT_TRUE(scope.start());
        ticks(20);
    }

    [[nodiscard]] PanelSetUp now() {
        return set_up_of(scope.panel(), scope.settings_file().bytes());
    }

    [[nodiscard]] const SetUpSteps& steps() { return scope.undo().steps(); }
    [[nodiscard]] UndoControls& controls() { return scope.undo().controls(); }

    void undo() {
        scope.act([this] { controls().mnuundo.click(); });
    }
    void redo() {
        scope.act([this] { controls().mnuredo.click(); });
    }

    /// Does `action` as a hand does that presses a button of the mouse for it.
    void by_mouse(const std::function<void()>& action) {
        clock.advance(std::chrono::seconds(2));
        scope.undo().press_begins();
        action();
        scope.undo().press_ends();
    }

    /// The pixels of the picture at natural size.
    [[nodiscard]] std::vector<Pixel> pixels() {
        const auto all = scope.picture().surface().pixels();
        return {all.begin(), all.end()};
    }

    void expect_agreement() {
        EXPECT_THAT(set_up_differences(scope.parts(), simulation.settings()), testing::IsEmpty());
        EXPECT_TRUE(boxes.texts().empty());
    }
};

TEST_F(UndoTest, NothingCanBeTakenBackAtFirst) {
    EXPECT_FALSE(controls().mnuundo.enabled());
    EXPECT_FALSE(controls().mnuredo.enabled());
    const PanelSetUp before = now();
    undo();
    redo();
    EXPECT_EQ(now(), before);
}

TEST_F(UndoTest, BringsBackPanelAndInstrument) {
    const PanelSetUp before = now();
    choose(channel(ch1).vdiv, "10mV");
    ticks(20);
    const PanelSetUp after = now();
    ASSERT_NE(before, after);
    EXPECT_EQ(steps().words(0), "CH1 V/div 10mV");

    undo();
    EXPECT_EQ(now(), before);
    EXPECT_EQ(channel(ch1).vdiv.text(), "0.1V");
    EXPECT_FALSE(controls().mnuundo.enabled());
    EXPECT_TRUE(controls().mnuredo.enabled());
    ticks(20);
    expect_agreement();

    redo();
    EXPECT_EQ(now(), after);
    ticks(20);
    expect_agreement();
}

TEST_F(UndoTest, TakesATurnOfTheWheelBackAtOnce) {
    const PanelSetUp before = now();
    for (int value = 513; value < 560; ++value) {
        scope.act([&] { scope.panel().slider1.set_Value(value); });
    }
    EXPECT_EQ(steps().count(), 1U);
    EXPECT_EQ(steps().words(0), "CH1 position");
    undo();
    EXPECT_EQ(now(), before);
}

TEST_F(UndoTest, TakesALoadedSetUpBackAtOnce) {
    choose(scope.panel().seltimediv, "5ns/div");
    scope.act([this] { channel(ch2).enable.press(false); });
    choosers.answers = {"/kept.TXT"};
    scope.act([this] { scope.panel().saveconfig.click(); });
    scope.act([this] { channel(ch2).enable.press(true); });
    choose(scope.panel().trigsource, "TRIG2");
    choose(scope.panel().seltimediv, "50ns/div");
    ticks(20);
    const PanelSetUp before = now();
    const std::size_t count = steps().count();

    choosers.answers = {"/kept.TXT"};
    scope.act([this] { scope.panel().loadconfig.click(); });
    ASSERT_NE(now(), before);
    EXPECT_EQ(steps().count(), count + 1);
    EXPECT_EQ(steps().words(count), "Load Setup");
    undo();
    EXPECT_EQ(now(), before);
    ticks(20);
    expect_agreement();
}

TEST_F(UndoTest, TakesBackWhatNoSettingsFileKeeps) {
    const PanelSetUp before = now();
    scope.act([this] {
        scope.panel().trtout.set_text("20");
        scope.panel().trtout.leave();
    });
    scope.act([this] { scope.panel().adcspeed.press(true); });
    ASSERT_EQ(steps().count(), 2U);
    EXPECT_EQ(steps().words(0), "Time-out 20");
    EXPECT_EQ(steps().words(1), "Speed opt. on");
    undo();
    undo();
    EXPECT_EQ(now(), before);
    ticks(20);
    expect_agreement();
}

TEST_F(UndoTest, TakesAMarkBack) {
    const PanelSetUp before = now();
    scope.act([this] { scope.panel().measurement[1].annotate.press(true); });
    ASSERT_NE(now(), before);
    EXPECT_EQ(steps().words(0), "Marked measurement");
    undo();
    EXPECT_EQ(now(), before);
    EXPECT_FALSE(scope.panel().measurement[1].annotate.checked());
}

TEST_F(UndoTest, BringsAStoppedPictureBack) {
    scope.act([this] { scope.panel().cmdstop.click(); });
    ticks(20);
    const auto before = pixels();
    choose(channel(ch1).vdiv, "0.5V");
    clock.advance(std::chrono::seconds(2));
    scope.act([this] { scope.panel().slider1.set_Value(700); });
    clock.advance(std::chrono::seconds(2));
    scope.act([this] { scope.panel().tabstrip3.select(1); });
    ASSERT_EQ(steps().count(), 3U);
    EXPECT_NE(pixels(), before);
    for (int step = 0; step < 3; ++step) {
        undo();
    }
    EXPECT_EQ(pixels(), before);
}

TEST_F(UndoTest, TheListLeadsToEachStep) {
    const PanelSetUp first = now();
    choose(channel(ch1).vdiv, "10mV");
    const PanelSetUp second = now();
    choose(channel(ch2).vdiv, "10mV");
    const PanelSetUp third = now();
    EXPECT_EQ(controls().lststeps.entries(),
              (std::vector<std::string>{"The beginning", "CH1 V/div 10mV", "CH2 V/div 10mV"}));
    EXPECT_EQ(controls().lststeps.index(), 2);
    scope.act([this] { controls().lststeps.set_index(0); });
    EXPECT_EQ(now(), first);
    scope.act([this] { controls().lststeps.set_index(2); });
    EXPECT_EQ(now(), third);
    scope.act([this] { controls().lststeps.set_index(1); });
    EXPECT_EQ(now(), second);
    EXPECT_TRUE(controls().mnuundo.enabled());
    EXPECT_TRUE(controls().mnuredo.enabled());
}

TEST_F(UndoTest, EverythingThatIsKeptHasItsWords) {
    scope.act([this] { scope.panel().measurement[0].annotate.press(true); });
    scope.act([this] { scope.panel().adcspeed.press(true); });
    const auto kept = differences(PanelSetUp{}, now());
    for (const Control* const control : scope.panel().all) {
        EXPECT_TRUE(control->about().line == 0 || kept.contains(control->key())) << control->key();
    }
    for (const char* const key :
         {"chkmeasanno", "colorgrid", "trtout", "delaytrttdis", "adcspeed"}) {
        EXPECT_TRUE(kept.contains(key)) << key;
    }
    for (const auto& [key, value] : kept) {
        EXPECT_NE(words_of(scope.panel(), scope.parts().settings_file.rows(), {{key, value}})
                      .substr(0, key.size()),
                  key);
    }
}

/// Someone who does anything at all, decided by a seed.
struct UndoOfAnything : testing::TestWithParam<unsigned> {};

TEST_P(UndoOfAnything, BringsEverySetUpBack) {
    struct Rig : UndoTest {
        void TestBody() override {}
        void run(unsigned seed) {
            std::mt19937 random(seed);
            RandomUser user(scope, random, [this] { ticks(1); });
            std::vector<PanelSetUp> gone_through = {now()};
            std::string done;
            while (gone_through.size() <= 60) {
                by_mouse([&] { done.append(user.do_anything()).append("; "); });
                const PanelSetUp after = now();
                if (after != gone_through.back()) {
                    gone_through.push_back(after);
                }
                ASSERT_EQ(steps().count(), gone_through.size() - 1) << done;
                ASSERT_EQ(steps().present(), after) << done;
            }
            for (std::size_t place = gone_through.size() - 1; place > 0; --place) {
                undo();
                ASSERT_EQ(now().settings, gone_through[place - 1].settings)
                    << "step " << place << ": " << steps().words(place - 1) << "\n"
                    << done;
                ASSERT_EQ(now(), gone_through[place - 1]) << done;
                ticks(user.random(0, 12));
            }
            ticks(20);
            expect_agreement();
            for (std::size_t place = 1; place < gone_through.size(); ++place) {
                redo();
                ASSERT_EQ(now(), gone_through[place]) << done;
            }
            ticks(20);
            expect_agreement();
        }
    };
    Rig().run(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoOfAnything, testing::Range(1U, series_stride == 1 ? 7U : 2U));

} // namespace
} // namespace kv408
