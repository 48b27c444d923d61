#include <algorithm>

#include <gtest/gtest.h>

#include "acquisition/point_pass_rig.h"

namespace kv408 {
namespace {

using std::chrono::microseconds;

bool shifted(const AcquisitionRig& rig) {
    const Texts& calls = rig.screen.calls;
    return std::find(calls.begin(), calls.end(), "movepersistance") != calls.end();
}

TEST(PointPassEnd, TheWaitingWordEndsThePassWithoutItsClosingSteps) {
    // 16, 10 is the word itself; larger high bytes read the same after their limit.
    for (const int high : {16, 17, 26, 255}) {
        PassRig rig(true, false);
        rig.answer = [&](int point) {
            return point == 5 ? std::vector{high, 10} : std::vector{8, 0};
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.fetched, 5) << high;
        EXPECT_EQ(rig.status(), "Waiting For TRIGGER");
        EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(255, 224, 192));
        EXPECT_FALSE(shifted(rig));
        EXPECT_EQ(rig.screen.calls.size(), 4U * 4U);
        EXPECT_EQ(rig.samples[0].raw[5], 4106);
        EXPECT_FALSE(rig.acquisition.ready[0]);
        EXPECT_EQ(rig.acquisition.scopestate, "scope");
    }
}

TEST(PointPassEnd, WordsBesideTheWaitingWordAreSamples) {
    PassRig rig(true, false);
    rig.answer = [](int point) { return std::vector{16, point % 2 == 0 ? 9 : 11}; };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.fetched, 640);
}

TEST(PointPassEnd, TheWaitingWordOfEitherChannelEndsAnInterleavedPass) {
    for (const int waiting_reply : {1, 2}) {
        PassRig rig(true, true);
        rig.answer = [&](int point) {
            return point == waiting_reply ? std::vector{16, 10} : std::vector{8, 0};
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.fetched, waiting_reply);
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
        EXPECT_TRUE(rig.screen.calls.empty());
        EXPECT_EQ(rig.status(), "Waiting For TRIGGER");
    }
}

struct PassFailureRow {
    const char* what;
    BridgeStatus status;
    std::vector<int> reply;
};

TEST(PointPassEnd, AFailedReadEndsThePassQuietly) {
    const PassFailureRow rows[] = {
        {"nothing came", 0, {}},
        {"one byte came", 0, {8}},
        {"the library failed", 5, {8, 0}},
        {"a failure whose low 16 bits are 0", 65536, {8, 0}},
    };
    for (const PassFailureRow& row : rows) {
        for (const bool second : {false, true}) {
            PassRig rig(true, second);
            rig.answer = [&](int point) {
                if (point < 4) {
                    return std::vector{8, 0};
                }
                rig.bridge.status["SI_Read"] = row.status;
                return row.reply;
            };
            rig.pass.sdisplay1ghzt();
            EXPECT_EQ(rig.fetched, 4) << row.what;
            EXPECT_FALSE(shifted(rig)) << row.what;
            EXPECT_EQ(rig.status(), "Running") << row.what;
            EXPECT_TRUE(rig.boxes.shown.empty()) << row.what;
            EXPECT_FALSE(rig.program.ended) << row.what;
            EXPECT_EQ(rig.acquisition.scopestate, "scope") << row.what;
            // Three replies: three points of one channel, one point of both.
            EXPECT_EQ(rig.screen.calls.size(), second ? 4U : 12U) << row.what;
            EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{second, second})) << row.what;
        }
    }
}

TEST(PointPassEnd, AChangedStateWordEndsThePassAtItsNextPoint) {
    for (const bool second : {false, true}) {
        PassRig rig(true, second);
        rig.messages.on_process = [&](int processed) {
            if (processed == 5) {
                rig.acquisition.scopestate = "changes";
            }
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.fetched, second ? 8 : 4);
        EXPECT_EQ(rig.messages.processed, 5);
        EXPECT_EQ(rig.screen.calls.back(), "movepersistance");
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{second, second}));
        EXPECT_EQ(rig.acquisition.scopestate, "changes");
    }
}

TEST(PointPassEnd, StoppingBeforeTheLastPointLeavesTheSingleChannelUnready) {
    PassRig rig(false, true);
    rig.messages.on_process = [&](int processed) {
        if (processed == 640) {
            rig.state_machine.cmdstop_Click();
        }
    };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.fetched, 639);
    EXPECT_FALSE(rig.acquisition.ready[1]);
    EXPECT_FALSE(rig.acquisition.taken_as_set[1]);
    EXPECT_TRUE(shifted(rig));
}

TEST(PointPassEnd, StopInTheMiddleOfAPassStaysAStop) {
    PassRig rig(true, true);
    rig.acquisition.acqrunning = false;
    rig.messages.on_process = [&](int processed) {
        EXPECT_EQ(rig.acquisition.acqrunning, processed <= 3);
        if (processed == 3) {
            rig.state_machine.cmdstop_Click();
            EXPECT_FALSE(rig.acquisition.acqrunning);
        }
    };
    rig.tick();
    EXPECT_EQ(rig.fetched, 4);
    EXPECT_EQ(rig.acquisition.scopestate, "stoped");
    EXPECT_FALSE(rig.acquisition.acqrunning);
    rig.tick();
    EXPECT_EQ(rig.status(), "Stopped");
    EXPECT_EQ(rig.fetched, 4);
}

TEST(PointPassProgress, RunningIsShownAndPaintedWithTheFirstPoint) {
    PassRig rig(true, false);
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.status(), "Running");
    EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(192, 255, 192));
    EXPECT_EQ(rig.messages.repainted, Texts{"textstatus"});
}

struct ProgressRow {
    int at_point;
    microseconds elapsed;
    bool shown;
};

TEST(PointPassProgress, GettingDataIsShownAtExactly500WholeMilliseconds) {
    const ProgressRow rows[] = {
        {2, microseconds(499999), false},
        {2, microseconds(500000), true},
        {2, microseconds(500999), true},
        {2, microseconds(501000), false},
        {7, microseconds(500400), true},
        {640, microseconds(500000), true},
        // The first point says "Running" and nothing else.
        {1, microseconds(500000), false},
        {3, microseconds(1500000), false},
    };
    for (const ProgressRow& row : rows) {
        PassRig rig(true, false);
        Texts seen;
        rig.panel.textstatus.on_change([&] { seen.push_back(rig.status()); });
        rig.answer = [&](int point) {
            if (point == row.at_point) {
                rig.clock.advance(row.elapsed);
            } else if (point == row.at_point + 1) {
                rig.clock.advance(std::chrono::milliseconds(5));
            }
            return std::vector{8, 0};
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(seen, row.shown ? (Texts{"Running", "Getting Data"}) : Texts{"Running"})
            << row.at_point << " " << row.elapsed.count();
        EXPECT_EQ(rig.messages.repainted.size(), seen.size());
        if (row.shown) {
            EXPECT_EQ(rig.panel.textstatus.back_colour(), rgb(255, 255, 192));
        }
    }
}

TEST(PointPassEnd, OnlyAPassTakenInOneWayIsFresh) {
    enum class Change { none, inverted, by_trigger };
    for (const Change change : {Change::none, Change::inverted, Change::by_trigger}) {
        PassRig rig(true, true);
        rig.messages.on_process = [&](int processed) {
            ChannelControls& controls = rig.panel.channel[1];
            if (processed == 300 && change == Change::inverted) {
                controls.invert.set_checked(true);
            } else if (processed == 300 && change == Change::by_trigger) {
                controls.inviatr.set_checked(true);
            }
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.fetched, 1280);
        const bool fresh = change == Change::none;
        EXPECT_EQ(rig.acquisition.taken_as_set, (std::array<bool, 2>{fresh, fresh}));
    }
}

TEST(PointPassEnd, APointWithoutAReplyIsASilence) {
    PassRig rig(true, false);
    rig.answer = [](int point) { return point < 3 ? std::vector{8, 0} : std::vector<int>(); };
    EXPECT_FALSE(rig.link.power().ranges_lost());
    rig.pass.sdisplay1ghzt();
    EXPECT_TRUE(rig.link.power().ranges_lost());
}

TEST(PointPassEnd, AfterTwoSecondsOfSilenceTheFirstPointBringsASetUpInsteadOfATrace) {
    PassRig rig(true, false);
    bool off = true;
    rig.answer = [&](int) { return off ? std::vector<int>() : std::vector{8, 0}; };
    rig.pass.sdisplay1ghzt(); // waits for a second
    rig.pass.sdisplay1ghzt();
    off = false;
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.acquisition.scopestate, "startscope");
    EXPECT_EQ(rig.fetched, 3);
    EXPECT_EQ(rig.measuring.measured, 0);
}

} // namespace
} // namespace kv408
