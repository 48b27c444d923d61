// Steps of the set-up: what belongs to one, what is forgotten, and where Undo and Redo lead.

#include "config/set_up_steps.h"

#include <chrono>
#include <string>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

using std::chrono::milliseconds;

PanelSetUp settings_of(const std::string& settings) {
    return {
        .settings = settings, .trigger_time_out = "1000", .additional_delay = "0", .speed = false};
}

std::string as_written(const std::map<std::string, std::string>& changed) {
    std::string text;
    for (const auto& [key, value] : changed) {
        text += key + '=' + value + ';';
    }
    return text;
}

/// Steps that begin at "a 0, b 0", at times and presses that the test says.
struct TakenSteps : testing::Test {
    TakenSteps() { steps.begin(settings_of("a\t0\nb\t0\n")); }

    void note(const std::string& settings, int milliseconds_later, std::uint64_t press = 0,
              const std::string& name = {}) {
        time += milliseconds(milliseconds_later);
        steps.note(settings_of(settings), {.time = time, .press = press}, name);
    }

    SetUpSteps steps{as_written};
    std::chrono::nanoseconds time{0};
};

TEST_F(TakenSteps, WhatChangesNothingIsNone) {
    note("a\t0\nb\t0\n", 5000);
    EXPECT_EQ(steps.count(), 0U);
    EXPECT_EQ(steps.place(), 0U);
}

TEST_F(TakenSteps, EachIsToldByItsDifferences) {
    note("a\t1\nb\t0\n", 5000);
    note("a\t1\nb\t2\nc\t3\n", 5000);
    note("a\t1\nb\t2\n", 5000);
    ASSERT_EQ(steps.count(), 3U);
    EXPECT_EQ(steps.words(0), "a=1;");
    EXPECT_EQ(steps.words(1), "b=2;c=3;");
    EXPECT_EQ(steps.words(2), "c=;");
}

TEST_F(TakenSteps, TheNotchesOfATurnAreOne) {
    note("a\t1\nb\t0\n", 5000);
    note("a\t2\nb\t0\n", 1000);
    note("a\t3\nb\t0\n", 1000);
    ASSERT_EQ(steps.count(), 1U);
    EXPECT_EQ(steps.words(0), "a=3;");
    note("a\t4\nb\t0\n", 1001);
    EXPECT_EQ(steps.count(), 2U);
    note("a\t4\nb\t1\n", 10);
    EXPECT_EQ(steps.count(), 3U) << "something else has been turned";
}

TEST_F(TakenSteps, OnePressOfTheMouseIsOneHoweverLongItLasts) {
    note("a\t1\nb\t0\n", 10, 7);
    note("a\t1\nb\t5\n", 20000, 7);
    ASSERT_EQ(steps.count(), 1U);
    EXPECT_EQ(steps.words(0), "a=1;b=5;");
    note("a\t1\nb\t6\n", 10, 8);
    EXPECT_EQ(steps.count(), 2U) << "a click after a click";
}

TEST_F(TakenSteps, WhatGoesBackToWhereItBeganIsNone) {
    note("a\t1\nb\t0\n", 10, 7);
    note("a\t0\nb\t0\n", 10, 7);
    EXPECT_EQ(steps.count(), 0U);
    EXPECT_EQ(steps.present(), settings_of("a\t0\nb\t0\n"));
}

TEST_F(TakenSteps, ANamedOneStandsByItself) {
    note("a\t1\nb\t0\n", 10);
    note("a\t2\nb\t0\n", 10, 0, "Load Setup");
    note("a\t3\nb\t0\n", 10);
    ASSERT_EQ(steps.count(), 3U);
    EXPECT_EQ(steps.words(1), "Load Setup");
    EXPECT_EQ(steps.words(2), "a=3;");
}

TEST_F(TakenSteps, LeadBackAndForth) {
    note("a\t1\nb\t0\n", 5000);
    note("a\t1\nb\t2\n", 5000);
    EXPECT_EQ(steps.go(1), settings_of("a\t1\nb\t0\n"));
    EXPECT_EQ(steps.go(0), settings_of("a\t0\nb\t0\n"));
    EXPECT_EQ(steps.go(2), settings_of("a\t1\nb\t2\n"));
    EXPECT_EQ(steps.place(), 2U);
}

TEST_F(TakenSteps, ThatWereTakenBackAreForgottenByTheNext) {
    note("a\t1\nb\t0\n", 5000);
    note("a\t2\nb\t0\n", 5000);
    steps.go(1);
    note("a\t3\nb\t0\n", 10);
    ASSERT_EQ(steps.count(), 2U);
    EXPECT_EQ(steps.words(1), "a=3;");
    EXPECT_EQ(steps.go(1), settings_of("a\t1\nb\t0\n")) << "it is no part of the step before";
}

TEST_F(TakenSteps, AHundredAreKept) {
    for (int step = 1; step <= 103; ++step) {
        note("a\t" + std::to_string(step) + "\nb\t0\n", 5000);
    }
    EXPECT_EQ(steps.count(), 100U);
    EXPECT_EQ(steps.go(0), settings_of("a\t3\nb\t0\n"));
    EXPECT_EQ(steps.go(100), settings_of("a\t103\nb\t0\n"));
}

TEST_F(TakenSteps, CountWhatNoFileKeeps) {
    PanelSetUp now = settings_of("a\t0\nb\t0\n");
    now.speed = true;
    now.trigger_time_out = "20";
    steps.note(now, {.time = time, .press = 0});
    ASSERT_EQ(steps.count(), 1U);
    EXPECT_EQ(steps.words(0), "adcspeed=1;trtout=20;");
}

} // namespace
} // namespace kv408
