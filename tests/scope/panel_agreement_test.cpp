// The rules by which those who do anything judge the panel: that they find what is wrong with a
// read-out, and nothing where the panel is right.

#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scope/panel_agreement.h"
#include "scope/program.h"

namespace kv408 {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Judged : testing::Test, Program {
    void SetUp() override {
        ASSERT_TRUE(scope.start());
        ticks(8);
    }

    [[nodiscard]] auto differences(bool swept = true) {
        return panel_differences(scope.parts(), {.swept = swept});
    }

    /// Takes the data away for two seconds.
    void fall_silent() {
        simulation.bench().faults.no_power = true;
        ticks(30);
        ASSERT_TRUE(panel.nodata.visible());
    }

    /// Types `text` into "Additional Delay" and leaves it.
    void enter_additional(const std::string& text) {
        scope.act([&] {
            panel.delaytrttdis.set_text(text);
            panel.delaytrttdis.leave();
        });
        ticks(2);
    }

    FrontPanel& panel = scope.panel();
};

TEST_F(Judged, APanelThatIsRightIsRight) {
    EXPECT_THAT(differences(), IsEmpty());
}

TEST_F(Judged, AnAdditionalDelayThatIsNoneLeavesTheMarkerWhereItIs) {
    enter_additional("-30000");
    const int column = panel.ltp2.marked().value();
    ASSERT_GT(column, 0);
    enter_additional("20 of them");
    ASSERT_TRUE(panel.delaytrttdis.faulty());
    EXPECT_EQ(panel.ltp2.marked(), column);
    EXPECT_THAT(differences(), IsEmpty());
    // Of what is not taken nothing can be told but that it is one of the places on the plot.
    panel.ltp2.mark(641);
    EXPECT_THAT(differences(), ElementsAre(HasSubstr("trigger-time marker")));
    enter_additional("20ns");
    EXPECT_THAT(differences(), IsEmpty());
    panel.ltp2.mark(column);
    EXPECT_THAT(differences(), ElementsAre(HasSubstr("trigger-time marker")));
}

TEST_F(Judged, ASilenceThatIsToldIsRightAndNoneIsNotAsLongAsDataCome) {
    fall_silent();
    EXPECT_THAT(differences(false), IsEmpty());
    EXPECT_THAT(differences(), ElementsAre(HasSubstr("\"No data\"")));
    simulation.bench().faults = {};
    ticks(20);
    EXPECT_THAT(differences(), IsEmpty());
}

TEST_F(Judged, WhatDoesNotFitASilenceIsFound) {
    const std::function<void()> wrongs[] = {
        [this] { panel.nodata.set_caption("No data for 0 s"); },
        [this] { panel.nodata.set_caption("No data for -1 s"); },
        [this] { panel.nodata.set_caption("No data"); },
        [this] { panel.nodata.set_visible(false); },
        [this] { panel.picture1.set_dimmed(false); },
        [this] { panel.picmeasure.set_dimmed(false); }};
    for (const auto& do_wrong : wrongs) {
        fall_silent();
        do_wrong();
        EXPECT_THAT(differences(false), testing::Not(IsEmpty()));
        simulation.bench().faults = {};
        ticks(20);
    }
}

TEST_F(Judged, ASilenceOfASweepThatIsStoppedIsFound) {
    fall_silent();
    scope.act([this] { panel.cmdstop.click(); });
    ticks(1);
    EXPECT_THAT(differences(false), IsEmpty());
    panel.nodata.set_visible(true);
    EXPECT_THAT(differences(false), testing::Contains(HasSubstr("\"No data\"")));
}

TEST_F(Judged, ResultsAreFaintWithoutATriggerAlone) {
    simulation.bench().triggers[0] = simulator::TriggerRoute::disconnected;
    ticks(8);
    ASSERT_TRUE(panel.picmeasure.dimmed());
    EXPECT_THAT(differences(false), IsEmpty());
    panel.picmeasure.set_dimmed(false);
    EXPECT_THAT(differences(false), ElementsAre(HasSubstr("results faint")));
    simulation.bench().triggers[0] = simulator::TriggerRoute::signal_1;
    ticks(8);
    EXPECT_THAT(differences(), IsEmpty());
    panel.picmeasure.set_dimmed(true);
    EXPECT_THAT(differences(), ElementsAre(HasSubstr("results faint")));
}

} // namespace
} // namespace kv408
