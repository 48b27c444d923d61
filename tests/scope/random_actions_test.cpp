// A minute of turning everything at random while the instrument sweeps never leaves it with
// another set-up than the panel shows, nor the panel with anything that it should not.

#include <chrono>
#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scope/panel_agreement.h"
#include "scope/program.h"
#include "scope/random_user.h"
#include "scope/set_up_agreement.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

/// The program in the hands of someone who does anything, decided by a seed.
class RandomActions : public testing::TestWithParam<unsigned>, protected Program {
protected:
    RandomActions() { EXPECT_TRUE(scope.start()); }

    [[nodiscard]] bool any_on() {
        return channel(ch1).enable.checked() || channel(ch2).enable.checked();
    }

    std::mt19937 random{GetParam()};
    RandomUser user{scope, random, [this] { ticks(1); }};
    std::string done; ///< what was done in this burst
};

TEST_P(RandomActions, LeaveTheInstrumentAsThePanelShows) {
    int bursts = 0;
    for (; clock.now() < std::chrono::seconds(180); ++bursts) {
        for (int actions = user.random(1, 12); actions > 0; --actions) {
            user.any_tick();
            done.append(user.do_anything()).append("; ");
        }
        ticks(6);
        EXPECT_THAT(set_up_differences(scope.parts(), simulation.settings()), testing::IsEmpty());
        EXPECT_THAT(panel_differences(scope.parts(), {.swept = status() == "Running" && any_on()}),
                    testing::IsEmpty());
        EXPECT_TRUE(boxes.texts().empty()) << boxes.texts().front();
        EXPECT_FALSE(scope.ended());
        EXPECT_EQ(scope.picture().surface().width(), plot::width);
        ASSERT_FALSE(HasFailure()) << "burst " << bursts << ": " << done;
        done.clear();
    }
    EXPECT_GT(bursts, 60);
}

// The soak lets someone do the same under the sanitizers, so two are enough there.
INSTANTIATE_TEST_SUITE_P(Seeds, RandomActions, testing::Range(1U, series_stride == 1 ? 9U : 3U));

} // namespace
} // namespace kv408
