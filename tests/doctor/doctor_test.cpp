#include "doctor/doctor.h"

#include <array>
#include <sstream>

#include <gtest/gtest.h>

#include "support/fake_bridge.h"

namespace kv408 {
namespace {

class Doctor : public testing::Test {
protected:
    /// Expects that an examination writes `text` and comes to `result`.
    void expect(DoctorResult result, const std::string& text) {
        std::ostringstream out;
        EXPECT_EQ(examine(
                      bridge_, [] { return "what is there\n"; }, clock_, out),
                  result);
        EXPECT_EQ(out.str(), "what is there\n\n" + text);
    }

    /// What the arguments are answered with.
    DoctorResult answer(const std::vector<const char*>& arguments) {
        return answer_arguments(arguments, out_, errors_);
    }

    VirtualClock clock_;
    FakeBridge bridge_{clock_};
    std::ostringstream out_;
    std::ostringstream errors_;
};

TEST_F(Doctor, AnInstrumentThatAnswersIsNamed) {
    bridge_.serials = {"other", "lm4rxa-SIM00001"};
    bridge_.acknowledge_all();
    expect(DoctorResult::answers, "The instrument lm4rxa-SIM00001 answers.\n");
    EXPECT_EQ(bridge_.timeline(),
              (std::vector<std::string>{"SI_GetNumDevices @0", "SI_GetProductString 0 0 @0",
                                        "SI_GetProductString 1 0 @0", "SI_Open 1 @0",
                                        "SI_SetBaudRate 833000 @0", "SI_SetTimeouts 1000 1000 @0",
                                        "SI_FlushBuffers 1 1 @0", "SI_Write 4 8 0 0 1 0 255 8 @0",
                                        "SI_Read 1 @20", "SI_Close @20"}));
}

TEST_F(Doctor, ASerialNumberForgesNoAnswer) {
    bridge_.serials = {"lm4rxa\r\nThe instrument X answers.\x1B[8m"};
    expect(DoctorResult::no_answer,
           "The instrument lm4rxa\\x0d\\x0aThe instrument X answers.\\x1b[8m does not answer: "
           "check its power.\n");
}

TEST_F(Doctor, AnInstrumentThatIsSilentIsAskedThreeTimes) {
    expect(DoctorResult::no_answer,
           "The instrument lm4rxa0SERIAL1 does not answer: check its power.\n");
    EXPECT_EQ(bridge_.count("SI_Write"), 3);
    EXPECT_EQ(bridge_.count("SI_Close"), 1);
}

TEST_F(Doctor, AWrongAnswerIsTold) {
    bridge_.on_frame = [this](const FakeBridge::Frame&) { bridge_.receive({7}); };
    expect(DoctorResult::no_answer,
           "Buffer(0) <> 6\n"
           "The instrument lm4rxa0SERIAL1 gave a wrong answer: close every other program that uses "
           "it, then unplug it and plug it in again.\n");
    EXPECT_EQ(bridge_.count("SI_Close"), 1);
}

TEST_F(Doctor, AReadThatFailsIsNoWrongAnswer) {
    bridge_.status["SI_Read"] = 2;
    expect(DoctorResult::no_answer,
           "Buffer(0) <> 6\n"
           "The instrument lm4rxa0SERIAL1 does not answer: check its power.\n");
    EXPECT_EQ(bridge_.count("SI_Close"), 1);
}

TEST_F(Doctor, NothingAttachedIsTold) {
    bridge_.serials = {};
    expect(DoctorResult::no_answer, "ERROR!!! No attached device is found!!!\n"
                                    "Connect the instrument to a USB port of this computer.\n"
                                    "No instrument answers.\n");
}

TEST_F(Doctor, DevicesThatCannotBeCountedAreTold) {
    bridge_.status["SI_GetNumDevices"] = 2;
    bridge_.trouble_text = "why";
    expect(DoctorResult::no_answer, "Error finding USB device. Aborting application.\nwhy\n"
                                    "No instrument answers.\n");
}

TEST_F(Doctor, AnInstrumentThatCannotBeOpenedIsTold) {
    bridge_.status["SI_Open"] = 2;
    expect(DoctorResult::no_answer, "Error opening device: lm4rxa0SERIAL1. Application is "
                                    "aborting. Reset hardware and try again.\n"
                                    "No instrument answers.\n");
    EXPECT_EQ(bridge_.count("SI_Close"), 0);
}

TEST_F(Doctor, AFrameThatCannotBeWrittenIsToldAndTheDeviceClosed) {
    bridge_.status["SI_Write"] = 2;
    expect(DoctorResult::no_answer,
           "Error finding WKTP2B device. Aborting application.\n"
           "The instrument takes no more data. Check its USB cable and its power, then start the "
           "program again.\n"
           "The instrument lm4rxa0SERIAL1 does not answer: check its power.\n");
    EXPECT_EQ(bridge_.count("SI_Close"), 1);
}

TEST_F(Doctor, HelpIsAnAnswer) {
    EXPECT_EQ(answer({"--help"}), DoctorResult::answers);
    EXPECT_EQ(out_.str().find("Usage: kv408-doctor\n"), 0U);
    EXPECT_NE(out_.str().find("Exit code: 0 an oscilloscope answers, 1 none answers, 2 wrong use. "
                              "After this help: 0.\n"),
              std::string::npos);
    EXPECT_EQ(errors_.str(), "");
}

TEST_F(Doctor, EveryOtherArgumentIsWrongUse) {
    for (const auto& arguments :
         {std::vector<const char*>{"-h"}, {"--help", "--help"}, {"/dev/ttyUSB0"}, {""}}) {
        errors_.str("");
        EXPECT_EQ(answer(arguments), DoctorResult::wrong_use) << arguments.front();
        EXPECT_EQ(errors_.str(), "kv408-doctor takes no arguments but --help.\n");
    }
    EXPECT_EQ(out_.str(), "");
}

} // namespace
} // namespace kv408
