#include "host/end_requests.h"

#include <atomic>
#include <chrono>
#include <future>

#include <gtest/gtest.h>

#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// Requests of a program whose own thread never answers.
class EndRequestsTest : public testing::Test {
protected:
    EndRequestsTest() {
        requests_.set_handlers({.ask = [this] { ++asked_; },
                                .save =
                                    [this] {
                                        ++saved_;
                                        if (holding_.valid()) {
                                            holding_.wait();
                                        }
                                    }});
    }

    void pass(std::chrono::nanoseconds time) {
        clock_.advance(time);
        requests_.look();
    }

    VirtualClock clock_;
    int asked_ = 0;
    std::atomic<int> saved_ = 0;
    int ended_ = 0;
    int saved_by_the_end_ = -1;
    std::shared_future<void> holding_; ///< a saving does not end before this
    EndRequests requests_{clock_, [this] {
                              ++ended_;
                              saved_by_the_end_ = saved_;
                          }};
};

TEST_F(EndRequestsTest, NothingIsDueBeforeARequest) {
    pass(1h);
    EXPECT_EQ(requests_.milliseconds_left(), -1);
    EXPECT_EQ(asked_, 0);
    EXPECT_EQ(saved_, 0);
}

TEST_F(EndRequestsTest, TheFirstIsPassedOnAndAfterThreeSecondsTheSettingsAreSavedOnce) {
    clock_.advance(5s);
    requests_.hear();
    EXPECT_EQ(asked_, 1);
    EXPECT_EQ(requests_.milliseconds_left(), 3000);
    pass(2999ms + 1us);
    EXPECT_EQ(requests_.milliseconds_left(), 1);
    requests_.wait_for_saving();
    EXPECT_EQ(saved_, 0);
    pass(999us);
    requests_.wait_for_saving();
    EXPECT_EQ(saved_, 1);
    EXPECT_EQ(requests_.milliseconds_left(), -1);
    pass(1h);
    requests_.wait_for_saving();
    EXPECT_EQ(saved_, 1);
    EXPECT_EQ(ended_, 0) << "one request alone never breaks it off";
}

TEST_F(EndRequestsTest, AComputerThatSleptPastThatMomentSavesAtOnce) {
    requests_.hear();
    clock_.advance(8h);
    EXPECT_EQ(requests_.milliseconds_left(), 0);
}

TEST_F(EndRequestsTest, ASecondOneAfterThatEndsTheProcessWithTheSettingsSaved) {
    requests_.hear();
    pass(3s);
    pass(1min);
    EXPECT_EQ(ended_, 0);
    requests_.hear();
    requests_.look();
    EXPECT_EQ(asked_, 2);
    EXPECT_EQ(ended_, 1);
    EXPECT_EQ(saved_by_the_end_, 1);
}

TEST_F(EndRequestsTest, ASecondOneBeforeThatEndsItThen) {
    requests_.hear();
    pass(100ms);
    requests_.hear();
    pass(2899ms);
    EXPECT_EQ(ended_, 0);
    pass(1ms);
    EXPECT_EQ(ended_, 1);
    EXPECT_EQ(saved_by_the_end_, 1);
}

TEST_F(EndRequestsTest, ADiskThatDoesNotAnswerKeepsTheEndWaitingForTwoSecondsAtMost) {
    std::promise<void> answer;
    holding_ = answer.get_future().share();
    requests_.hear();
    requests_.hear();
    const auto before = std::chrono::steady_clock::now();
    pass(3s);
    const auto took = std::chrono::steady_clock::now() - before;
    EXPECT_EQ(ended_, 1);
    EXPECT_GE(took, 1900ms);
    EXPECT_LE(took, 20s);
    answer.set_value();
}

TEST_F(EndRequestsTest, OneThatCameBeforeThereWasAnybodyToAskIsPassedOnLater) {
    requests_.set_handlers({});
    requests_.hear();
    int told = 0;
    requests_.set_handlers({.ask = [&told] { ++told; }, .save = {}});
    EXPECT_EQ(told, 1);
    requests_.set_handlers({});
}

} // namespace
} // namespace kv408
