// What is saved is what is restored, and nothing that the user set is lost.

#include <gtest/gtest.h>

#include "display/settings_dialog.h"
#include "scope/kept_settings.h"

namespace kv408 {
namespace {

using simulator::Operation;
using simulator::OperationFault;
using Texts = std::vector<std::string>;

constexpr const char* link_lost = "Error finding WKTP2B device. Aborting application.";

/// Ends `program` and returns what it saved.
std::string close_and_save(Program& program) {
    program.files.files.erase(settings_path);
    program.scope.close();
    return program.files.files[settings_path];
}

class KeptSettingsTest : public testing::TestWithParam<unsigned> {
protected:
    KeptSettingsTest() {
        EXPECT_TRUE(first_.scope.start());
        if (GetParam() % 2 == 0) {
            first_.ticks(3);
        }
        RandomSetter(first_, GetParam()).set_all();
        shown_ = settings_shown(first_);
        frames_ = next_set_up(first_);
        saved_ = close_and_save(first_);
        EXPECT_TRUE(first_.boxes.shown.empty());
    }

    void expect_same(Program& program) {
        EXPECT_EQ(settings_shown(program), shown_);
        EXPECT_EQ(next_set_up(program), frames_);
        EXPECT_EQ(program.simulation.settings().range, first_.simulation.settings().range);
        EXPECT_EQ(settings_shown(program), shown_);
        EXPECT_EQ(close_and_save(program), saved_);
        EXPECT_TRUE(program.boxes.shown.empty());
    }

    Program first_;
    std::vector<std::string> shown_;
    std::vector<std::vector<int>> frames_;
    std::string saved_;
};

TEST_P(KeptSettingsTest, AFreshStartRestoresWhatWasSaved) {
    ASSERT_GT(std::count(saved_.begin(), saved_.end(), '\n'), 46);
    Program second;
    second.files.files[settings_path] = saved_;
    ASSERT_TRUE(second.scope.start());
    expect_same(second);
}

TEST_P(KeptSettingsTest, LoadSetupRestoresItOverAnyOtherSettings) {
    Program second;
    ASSERT_TRUE(second.scope.start());
    second.ticks(3);
    RandomSetter(second, GetParam() + 1000).set_all();
    FrontPanel& panel = second.scope.panel();
    for (MeasurementControls& slot : panel.measurement) {
        // A file without a line for it leaves a checked box checked.
        second.scope.act([&] { slot.annotate.set_checked(false); });
    }
    second.files.files["/set-up.TXT"] = saved_;
    second.choosers.answers = {"/set-up.TXT"};
    second.scope.act([&] { panel.loadconfig.click(); });
    expect_same(second);
}

INSTANTIATE_TEST_SUITE_P(Seeds, KeptSettingsTest, testing::Range(1U, 41U));

TEST(LoadSetup, WhileSweepingBringsAllOfItToTheInstrument) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.files.files["/set-up.TXT"] =
        "trigpos2\t 2300 \r\nhyst2\t 77 \r\ntrigeredge\t 1 \r\ntrigsource\t 1 \r\n"
        "ch1vdiv\t 4 \r\nhorpos\t640\r\nhorpos2\t1280\r\nseltimediv\t 14 \r\naverage\t 1 \r\n";
    program.choosers.answers = {"/set-up.TXT"};
    const std::size_t first = program.log.frames.size();
    program.scope.act([&] { program.scope.panel().loadconfig.click(); });
    EXPECT_EQ(program.state(), "changes");
    program.ticks(4);
    const auto frames = frames_of(program, first);
    const auto sent = [&frames](const std::vector<int>& frame) {
        return std::find(frames.begin(), frames.end(), frame) != frames.end();
    };
    // 2300 is 8 * 256 + 252; TRIG2 on the negative edge; 640 is 2 * 256 + 128; 1280 is 5 * 256.
    EXPECT_TRUE(sent({8, 8, 252, 22, 255, 77}));
    EXPECT_TRUE(sent({9, 1, 2, 0, 0, 0}));
    EXPECT_EQ(program.simulation.settings().range, (std::array<std::size_t, 2>{1, 0}));
    const auto& parts = program.scope.parts();
    EXPECT_EQ(parts.acquisition.offset, (std::array<std::int32_t, 2>{640, 1280}));
    EXPECT_TRUE(parts.acquisition.acqrunning);
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(LoadSetup, WhileStoppedStaysStopped) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.scope.act([&] { program.scope.panel().cmdstop.click(); });
    program.ticks(1);
    program.files.files["/set-up.TXT"] = "ch1vdiv\t 4 \r\nseltimediv\t 3 \r\n";
    program.choosers.answers = {"/set-up.TXT"};
    program.scope.act([&] { program.scope.panel().loadconfig.click(); });
    program.ticks(5);
    EXPECT_EQ(program.status(), "Stopped");
    EXPECT_EQ(program.scope.panel().tdivtext.caption(), "10us/div");
}

TEST(LoadSetup, InTheMiddleOfAPointPassEndsThePassAndIsUploaded) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.ticks(2);
    program.files.files["/set-up.TXT"] = "ch2vdiv\t 4 \r\nseltimediv\t 12 \r\n";
    program.choosers.answers = {"/set-up.TXT"};
    program.messages.on_process = [&](int) {
        if (program.messages.processed == 100) {
            program.scope.act([&] { program.scope.panel().loadconfig.click(); });
        }
    };
    program.ticks(6);
    EXPECT_TRUE(program.boxes.shown.empty());
    EXPECT_EQ(program.simulation.settings().range, (std::array<std::size_t, 2>{0, 1}));
    EXPECT_EQ(program.scope.panel().tdivtext.caption(), "10ns/div");
    EXPECT_EQ(program.status(), "Running");
}

TEST(LoadSetup, HoldsTheWindowUpForTwoSecondsAtMost) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.scope.act([&] { program.choosers.answers = {"/saved", "/saved"}; });
    program.scope.act([&] { program.scope.panel().saveconfig.click(); });
    const auto before = program.clock.now();
    program.scope.act([&] { program.scope.panel().loadconfig.click(); });
    const std::chrono::duration<double> taken = program.clock.now() - before;
    EXPECT_LT(taken.count(), 2.0);
}

TEST(LoadSetup, ABadLineIsToldAndSweepingGoesOn) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.files.files["/set-up.TXT"] = "ch1vdiv\t 4 \r\nseltimediv\t 21 \r\n";
    program.choosers.answers = {"/set-up.TXT"};
    program.scope.act([&] { program.scope.panel().loadconfig.click(); });
    EXPECT_EQ(program.boxes.texts(), Texts{"Error while reading configuration file in line 2"});
    program.ticks(5);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_EQ(program.channel(ch1).vdiv.text(), "20mV");
}

/// What ends the program while it sweeps.
void pull_the_cable(Program& program) {
    program.simulation.bench().faults.unplugged = true;
    program.ticks(10);
}

void pull_the_cable_in_a_handler(Program& program) {
    program.simulation.bench().faults.unplugged = true;
    program.choose(program.channel(ch1).vdiv, "10mV");
}

void close_while_a_message_is_open(Program& program) {
    program.boxes.on_show = [&program](const Message&) { program.scope.close(); };
    pull_the_cable(program);
}

TEST(LostLink, LosesNothingThatTheUserSet) {
    for (const auto& lose :
         {pull_the_cable, pull_the_cable_in_a_handler, close_while_a_message_is_open}) {
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.ticks(5);
        program.scope.act([&] { program.channel(ch2).invert.set_checked(true); });
        program.files.written.clear();
        lose(program);
        EXPECT_TRUE(program.scope.ended());
        EXPECT_EQ(program.boxes.texts(), Texts{link_lost});
        EXPECT_EQ(program.files.written, Texts{settings_path});
        EXPECT_NE(program.files.files[settings_path].find("invert2\t 1 \r\n"), std::string::npos);
        program.scope.close();
        EXPECT_EQ(program.files.written.size(), 1U);
    }
}

TEST(LostLink, AsksNothingMoreWhereTheFolderCannotBeWritten) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.files.refusal = "No space left on device";
    pull_the_cable(program);
    EXPECT_TRUE(program.scope.ended());
    EXPECT_EQ(program.boxes.texts(), Texts{link_lost});
}

TEST(LostLink, AtAnyFrameOfTheStartUpLeavesTheFileAsItWas) {
    Program first;
    ASSERT_TRUE(first.scope.start());
    RandomSetter(first, 7).set_all();
    // What the program itself would not write.
    const std::string odd = close_and_save(first) + "unknown\t1\nno tab\n";
    bool came_up = false;
    for (int frame = 0; !came_up; ++frame) {
        SCOPED_TRACE(frame);
        ASSERT_LT(frame, 100);
        Program program;
        program.files.files[settings_path] = odd;
        program.simulation.bench().faults.operations[Operation::write] = {.after = frame};
        came_up = program.scope.start();
        EXPECT_EQ(program.scope.ended(), !came_up);
        EXPECT_EQ(program.files.files[settings_path], odd);
    }
}

TEST(LostLink, KeepsTheSettingsBeforeItsMessageIsAnswered) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    program.scope.act([&] { program.channel(ch2).invert.set_checked(true); });
    program.files.written.clear();
    std::size_t written_by_then = 0;
    program.boxes.on_show = [&](const Message&) { written_by_then = program.files.written.size(); };
    pull_the_cable(program);
    EXPECT_EQ(written_by_then, 1U);
    EXPECT_NE(program.files.files[settings_path].find("invert2\t 1 \r\n"), std::string::npos);
}

/// Edits the grid's colour in the settings dialog, live.
void edit_the_grid(Program& program) {
    program.scope.act([&] {
        program.scope.panel().mnusettings.click();
        SettingsControls& dialog = program.scope.settings_dialog().controls();
        dialog.chkautoupd.set_checked(true);
        dialog.optcolor[4].choose();
        dialog.slrgb[0].set_value(200);
    });
    ASSERT_EQ(program.scope.parts().colours.grid, rgb(200, 92, 92));
}

TEST(SettingsDialogAtTheEnd, CountsAsCancelled) {
    for (const bool lost : {false, true}) {
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.ticks(5);
        edit_the_grid(program);
        if (lost) {
            pull_the_cable(program);
        } else {
            program.scope.close();
        }
        EXPECT_NE(program.files.files[settings_path].find("colorgrid\t 6052956 \r\n"),
                  std::string::npos);
        EXPECT_FALSE(program.scope.settings_dialog().is_open());
    }
}

TEST(LoadSetup, ClosesTheSettingsDialogWhoseColoursItReplaces) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(5);
    edit_the_grid(program);
    program.files.files["/set-up.TXT"] = "colorgrid\t 255 \r\n";
    program.choosers.answers = {"/set-up.TXT"};
    program.scope.act([&] { program.scope.panel().loadconfig.click(); });
    EXPECT_FALSE(program.scope.settings_dialog().is_open());
    EXPECT_EQ(program.scope.parts().colours.grid, rgb(255, 0, 0));
}

TEST(ShutDown, ByMenuAndByWindowSavesTheSame) {
    Texts saved;
    for (const bool by_menu : {true, false}) {
        Program program;
        ASSERT_TRUE(program.scope.start());
        program.ticks(3);
        RandomSetter(program, 3).set_all();
        program.files.files.clear();
        if (by_menu) {
            program.scope.act([&] { program.scope.panel().menuexit.click(); });
        } else {
            program.scope.close();
        }
        EXPECT_TRUE(program.scope.ended());
        EXPECT_EQ(program.log.operations.back().operation, Operation::close);
        saved.push_back(program.files.files[settings_path]);
    }
    EXPECT_FALSE(saved[0].empty());
    EXPECT_EQ(saved[0], saved[1]);
}

TEST(SaveSetup, WritesTheFileWithoutEnding) {
    Program program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(3);
    program.choosers.answers = {"/my/set-up"};
    program.scope.act([&] { program.scope.panel().saveconfig.click(); });
    EXPECT_FALSE(program.scope.ended());
    EXPECT_EQ(program.files.files["/my/set-up"], program.files.files[settings_path]);
    program.ticks(3);
    EXPECT_EQ(program.status(), "Running");
}

} // namespace
} // namespace kv408
