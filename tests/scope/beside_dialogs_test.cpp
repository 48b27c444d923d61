// What sweeps while a dialog or a message box is open: everything, unless the box came in the
// middle of an exchange.

#include <string>
#include <vector>

#include "calibration/calibration_form.h"
#include "scope/program.h"

namespace kv408 {
namespace {

/// The program sweeping at `time_div`.
struct Sweeping : Program {
    explicit Sweeping(const std::string& time_div = "20ns/div") {
        EXPECT_TRUE(scope.start());
        choose(scope.panel().seltimediv, time_div);
        ticks(8);
        EXPECT_EQ(status(), "Running");
        boxes.shown.clear();
    }

    /// How often the instrument was asked for samples during `count` ticks.
    std::size_t asked_in_ticks(int count) {
        const std::size_t before = log.frames.size();
        ticks(count);
        return log.frames.size() - before;
    }

    void press(Button& button) {
        scope.act([&] { button.click(); });
    }
};

TEST(BesideDialogs, SweepsGoOnUnderFileDialogs) {
    for (const bool loading : {false, true}) {
        Sweeping program;
        std::size_t asked = 0;
        program.choosers.on_ask = [&] { asked = program.asked_in_ticks(20); };
        FrontPanel& panel = program.scope.panel();
        program.press(loading ? panel.loadconfig : panel.saveconfig);
        EXPECT_EQ(asked, 20U); // a block a tick
        EXPECT_EQ(program.state().substr(0, 7), "scopech");
    }
}

TEST(BesideDialogs, APassOfPointsDoesNotHoldThemEither) {
    Sweeping program("10us/div");
    std::size_t asked = 0;
    bool opened = false;
    program.choosers.on_ask = [&] { asked = program.asked_in_ticks(3); };
    program.messages.on_process = [&](int) {
        if (!opened && program.log.frames.back().command.code == 26) {
            opened = true;
            program.press(program.scope.panel().saveconfig);
        }
    };
    program.ticks(1);
    ASSERT_TRUE(opened);
    EXPECT_EQ(asked, 3U * 1280U);
    program.messages.on_process = nullptr;
    EXPECT_EQ(program.asked_in_ticks(1), 1280U);
}

/// The pass that was interrupted does not mix its points with those of a later one.
TEST(BesideDialogs, APassThatWasOvertakenTakesNoMorePoints) {
    Sweeping program("10us/div");
    bool opened = false;
    std::size_t at_return = 0;
    program.choosers.on_ask = [&] {
        program.choose(program.scope.panel().seltimediv, "20us/div");
        program.ticks(4);
        at_return = program.log.frames.size();
    };
    program.messages.on_process = [&](int) {
        if (!opened && program.log.frames.back().command.code == 26) {
            opened = true;
            program.press(program.scope.panel().saveconfig);
        }
    };
    program.ticks(1);
    EXPECT_EQ(program.log.frames.size(), at_return);
    EXPECT_TRUE(program.scope.parts().acquisition.taken_as_set[0]);
}

TEST(BesideDialogs, AMessageAfterASnapshotHoldsNothing) {
    Sweeping program;
    std::size_t asked = 0;
    program.boxes.on_show = [&](const Message&) { asked = program.asked_in_ticks(10); };
    program.press(program.scope.panel().snapshot);
    ASSERT_EQ(program.boxes.shown.size(), 1U);
    EXPECT_EQ(program.boxes.shown[0].text.substr(0, 18), "Snapshot saved to:");
    EXPECT_EQ(asked, 10U);
}

TEST(BesideDialogs, TheQuestionsOfACalibrationHoldNothing) {
    Sweeping program;
    CalibrationForm& form = program.scope.calibration_form();
    for (Button* const button : {&form.cmdsetforcalgainh, &form.cmdcalint}) {
        std::size_t asked = 0;
        program.boxes.on_show = [&](const Message&) { asked = program.asked_in_ticks(10); };
        program.boxes.answers = {MessageAnswer::cancel};
        program.press(*button);
        EXPECT_EQ(asked, 10U) << button->name();
    }
}

TEST(BesideDialogs, ABoxWithinAnExchangeHoldsTheTicks) {
    Sweeping program;
    program.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    std::size_t asked = 0;
    program.boxes.on_show = [&](const Message&) { asked += program.asked_in_ticks(10); };
    program.choose(program.channel(ch1).vdiv, "20mV");
    EXPECT_EQ(program.boxes.shown.size(), 3U);
    EXPECT_EQ(asked, 0U);
}

TEST(BesideDialogs, ABoxOverAFileDialogHoldsThemUntilItIsAnswered) {
    Sweeping program;
    std::size_t asked = 0;
    std::size_t asked_after = 0;
    program.boxes.on_show = [&](const Message&) {
        asked += program.asked_in_ticks(5);
        program.simulation.bench().faults = {};
    };
    program.boxes.answers = {MessageAnswer::extra};
    program.choosers.on_ask = [&] {
        program.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
        program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
        program.ticks(1);
        EXPECT_EQ(program.state(), "stoped");
        program.scope.act([&] { program.scope.panel().cmdstartsweep.click(); });
        asked_after = program.asked_in_ticks(5);
    };
    program.press(program.scope.panel().saveconfig);
    EXPECT_EQ(program.boxes.shown.size(), 1U);
    EXPECT_EQ(asked, 0U);
    // The set-up; once more, with the ranges, because it may have been off; then a block a tick.
    EXPECT_EQ(asked_after, 6U + 0U + 7U + 2U);
}

TEST(BesideDialogs, WhatIsChosenThereIsTakenOverOnce) {
    Sweeping program;
    program.files.files["/setup.TXT"] = "ch1vdiv\t 4 \r\n";
    program.choosers.answers = {"/setup.TXT"};
    program.choosers.on_ask = [&] { program.ticks(7); };
    program.press(program.scope.panel().loadconfig);
    program.ticks(8);
    EXPECT_EQ(program.channel(ch1).vdiv.text(), "20mV");
    EXPECT_EQ(program.simulation.settings().range[0], 1);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(BesideDialogs, TheEndUnderADialogUnwindsAllOfIt) {
    Sweeping program;
    program.choosers.answers = {"/never-written.TXT"};
    program.choosers.on_ask = [&] {
        program.simulation.bench().faults.unplugged = true;
        program.ticks(3);
        EXPECT_TRUE(program.scope.ended());
    };
    program.press(program.scope.panel().saveconfig);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_FALSE(program.files.files.contains("/never-written.TXT"));
    ASSERT_EQ(program.boxes.shown.size(), 1U);
    EXPECT_FALSE(program.scope.busy());
    const std::size_t operations = program.log.operations.size();
    program.ticks(3);
    EXPECT_EQ(program.log.operations.size(), operations);
}

} // namespace
} // namespace kv408
