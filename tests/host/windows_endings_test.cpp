// What ends a program from outside on Windows: the session, and whoever asks its windows to close.

#ifdef _WIN32

#include <atomic>
#include <chrono>
#include <cstdlib>

#include <gtest/gtest.h>

#include "host/system_clock.h"
#include "host/termination_signals.h"
#include <windows.h>

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// Waits until `condition` holds, `longest` at most; whether it does.
template <typename Condition>
bool comes_true(Condition condition, std::chrono::milliseconds longest) {
    SystemClock clock;
    for (const auto end = clock.now() + longest; !condition(); clock.sleep(10ms)) {
        if (clock.now() > end) {
            return false;
        }
    }
    return true;
}

/// The window of this process that hears requests; null where none comes within 10 s.
HWND hearing_window() {
    HWND found = nullptr;
    comes_true(
        [&found] {
            while ((found = FindWindowExW(nullptr, found, TerminationSignals::window_class,
                                          nullptr)) != nullptr) {
                DWORD process = 0;
                GetWindowThreadProcessId(found, &process);
                if (process == GetCurrentProcessId() &&
                    GetWindowLongPtrW(found, GWLP_USERDATA) != 0) {
                    return true;
                }
            }
            return false;
        },
        10s);
    return found;
}

/// A program whose own thread answers nothing, as while the bridge library blocks: it stands in the
/// test.
class WindowsEndings : public testing::Test {
protected:
    WindowsEndings() {
        signals_.set_handlers({.ask = [this] { ++asked_; }, .save = [this] { ++saved_; }});
    }
    ~WindowsEndings() override { signals_.set_handlers({}); }

    std::atomic<int> asked_ = 0;
    std::atomic<int> saved_ = 0;
    TerminationSignals signals_;
    HWND window_ = hearing_window();
};

TEST_F(WindowsEndings, WhatAsksTheWindowsToCloseIsPassedOnAndAfterThreeSecondsSaves) {
    ASSERT_NE(window_, nullptr);
    EXPECT_FALSE(IsWindowVisible(window_));
    SystemClock clock;
    const auto begin = clock.now();
    PostMessageW(window_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(comes_true([this] { return asked_ == 1; }, 30s));
    EXPECT_TRUE(comes_true([this] { return saved_ == 1; }, 30s));
    EXPECT_GE(clock.now() - begin, 3s) << "the program was given too little time of its own";
    EXPECT_TRUE(IsWindow(window_)) << "it hears further ones";
}

TEST_F(WindowsEndings, ASessionThatEndsWaitsUntilTheSettingsAreSaved) {
    ASSERT_NE(window_, nullptr);
    EXPECT_NE(SendMessageW(window_, WM_QUERYENDSESSION, 0, 0), 0);
    EXPECT_EQ(asked_, 0) << "it may go on yet";
    SendMessageW(window_, WM_ENDSESSION, FALSE, 0);
    EXPECT_EQ(asked_, 0) << "it goes on";
    SendMessageW(window_, WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(asked_, 1);
    EXPECT_EQ(saved_, 1);
}

TEST(WindowsEndingsDeath, WhileTheProgramIsHeldUpASecondRequestEndsIt) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            TerminationSignals signals;
            PostMessageW(hearing_window(), WM_CLOSE, 0, 0);
            PostMessageW(hearing_window(), WM_CLOSE, 0, 0);
            SystemClock().sleep(30s);
            std::_Exit(EXIT_SUCCESS);
        },
        testing::ExitedWithCode(EXIT_FAILURE), "");
}

} // namespace
} // namespace kv408

#endif
