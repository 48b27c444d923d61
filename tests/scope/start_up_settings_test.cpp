// Settings over the run of the program: read at start-up, saved at the end.

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"
#include "host/path_text.h"

namespace kv408 {
namespace {

constexpr const char* path = "/settings/kv408/ConfigsLM4RX.TXT";

TEST(StartUpSettings, AreReadAfterTheListsAreFilledAndBeforeTheHandlersRun) {
    AcquisitionRig rig;
    rig.files.files[path] = "trigsource\t 1 \r\nch1vdiv\t 5 \r\nseltimediv\t 7 \r\n"
                            "ch2enable\t 0 \r\ncmbmeas(2)\t 14 \r\ncolorgrid\t 255 \r\n";
    rig.start();
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.panel.trigsource.text(), "TRIG2");
    EXPECT_EQ(rig.panel.channel[0].vdiv.text(), "10mV");
    EXPECT_EQ(rig.channels[0].gain, high_gain);
    EXPECT_EQ(rig.panel.seltimediv.text(), "500ns/div");
    EXPECT_TRUE(rig.acquisition.pointmode);
    EXPECT_FALSE(rig.panel.channel[1].text.visible());
    EXPECT_EQ(rig.panel.measurement[2].selector.text(), "tPuls-");
    EXPECT_EQ(rig.colours.grid, rgb(255, 0, 0));
    EXPECT_EQ(rig.acquisition.scopestate, "idle");
    EXPECT_TRUE(rig.files.written.empty());
}

TEST(StartUpSettings, ABadLineIsToldAndTheProgramComesUp) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.files.files[path] = "ch1vdiv\t 5 \r\nno tab\r\nch2vdiv\t 5 \r\n";
    rig.start_up.Form_Load();
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error while reading configuration file in line 2"});
    EXPECT_EQ(rig.panel.channel[0].vdiv.text(), "10mV");
    EXPECT_EQ(rig.panel.channel[1].vdiv.text(), "0.1V");
    EXPECT_TRUE(rig.program.loaded);
}

TEST(StartUpSettings, AMissingFileIsMadeWithTheStartState) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.start_up.Form_Load();
    EXPECT_TRUE(rig.boxes.shown.empty());
    EXPECT_EQ(rig.files.written, Texts{path});
    EXPECT_NE(rig.files.files[path].find("snapshotpath\t/program\r\n"), std::string::npos);
}

TEST(StartUpSettings, AFileThatCannotBeMadeIsToldAndTheProgramComesUp) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.files.folder_refusal = "Permission denied";
    rig.start_up.Form_Load();
    EXPECT_EQ(rig.boxes.texts(),
              Texts{"The settings could not be saved. /settings/kv408: Permission denied"});
    EXPECT_TRUE(rig.program.loaded);
}

TEST(StartUpSettings, TheHandlersThatFollowChangeNoneOfThem) {
    const std::string kept = "intcr1vpos\t 13 \r\nintcr1hpos\t 14 \r\nintcr2vpos\t 511 \r\n"
                             "intcr2hpos\t 639 \r\ncursorselect\t 1 \r\nTabStrip3\t 1 \r\n"
                             "trigpos1\t 2049 \r\ntrigpos2\t 1001 \r\nhyst1\t 33 \r\n"
                             "hyst2\t 44 \r\ntrigeredge\t 1 \r\ntrigsource\t 1 \r\n"
                             "ch1text.top\t 701 \r\nch2text.top\t 3 \r\n";
    const std::string delays = "horpos\t12345\r\nhorpos2\t54321\r\nslenps1\t 1 \r\n"
                               "slenps2\t 1 \r\nseltimediv\t 17 \r\n";
    for (const char* target : {"CH1", "CH2", "TRIG", "HPOS", "C1", "C2"}) {
        SCOPED_TRACE(target);
        AcquisitionRig rig;
        rig.panel.tabstrip3.on_click([&rig] { rig.cursors.TabStrip3_Click(); });
        const std::string line = "TabStrip2\t" + std::string(target) + "\r\n";
        rig.files.files[path] = kept + delays + line;
        rig.start();
        rig.settings_file.saveconfigsmon("/a/saved");
        const std::string& saved = rig.files.files["/a/saved"];
        EXPECT_EQ(saved.find(kept), 0U) << saved;
        EXPECT_NE(saved.find("horpos\t12345\r\nhorpos2\t54321\r\nslenps1\t 1 \r\nslenps2\t 1 \r\n"),
                  std::string::npos)
            << saved;
        EXPECT_NE(saved.find(line), std::string::npos) << saved;
        EXPECT_EQ(rig.trigger_state.trigpos, 1001);
    }
}

TEST(ShutDownSettings, AreSavedAfterTheDeviceIsClosed) {
    for (const bool by_menu : {true, false}) {
        AcquisitionRig rig;
        rig.start();
        rig.files.written.clear();
        rig.panel.channel[0].invert.set_checked(true);
        const auto leave = [&] {
            by_menu ? rig.panel.menuexit.click() : rig.start_up.Form_Unload();
        };
        EXPECT_THROW(leave(), ProgramEnded);
        EXPECT_EQ(rig.bridge.count("SI_Close"), 1);
        EXPECT_EQ(rig.files.written, Texts{path});
        EXPECT_NE(rig.files.files[path].find("invert1\t 1 \r\n"), std::string::npos);
    }
}

TEST(ShutDownSettings, AreSavedThoughTheDeviceCannotBeClosed) {
    AcquisitionRig rig;
    rig.start();
    rig.files.written.clear();
    rig.bridge.status["SI_Close"] = 3;
    EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
    EXPECT_EQ(rig.link.state().commstatus, 3);
    EXPECT_EQ(rig.files.written, Texts{path});
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(ShutDownSettings, AFolderThatCannotBeWrittenIsToldAndTheProgramEnds) {
    AcquisitionRig rig;
    rig.start();
    rig.files.refusal = "No space left on device";
    int times = 0;
    rig.boxes.on_show = [&](const Message&) {
        ++times;
        EXPECT_EQ(rig.bridge.count("SI_Close"), 1);
        // The window is closed once more while the message stands.
        EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
    };
    EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
    EXPECT_TRUE(rig.program.ended);
    EXPECT_EQ(times, 1);
    EXPECT_EQ(rig.boxes.texts(), Texts{"The settings could not be saved. " +
                                       text_of_path(fake_places().settings / "ConfigsLM4RX.TXT") +
                                       ": No space left on device"});
}

TEST(ShutDownSettings, AFailedStartLeavesTheFileAlone) {
    for (const MessageAnswer answer : {MessageAnswer::cancel, MessageAnswer::retry}) {
        AcquisitionRig rig;
        rig.files.files[path] = "the user's own";
        rig.boxes.answers = {answer};
        rig.boxes.on_show = [&](const Message&) {
            if (answer == MessageAnswer::retry) {
                // The window is closed while the question stands.
                EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
            }
        };
        EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
        EXPECT_TRUE(rig.program.ended);
        EXPECT_TRUE(rig.files.written.empty());
        EXPECT_EQ(rig.files.files[path], "the user's own");
    }
}

TEST(ShutDownSettings, ClosingTheWindowWhileTheFileIsBeingReadLeavesItAlone) {
    AcquisitionRig rig;
    rig.acknowledge_set_up();
    rig.files.files[path] = "ch1vdiv\t 5 \r\nbad\r\n";
    rig.boxes.on_show = [&](const Message&) {
        EXPECT_THROW(rig.start_up.Form_Unload(), ProgramEnded);
    };
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    EXPECT_EQ(rig.files.files[path], "ch1vdiv\t 5 \r\nbad\r\n");
}

} // namespace
} // namespace kv408
