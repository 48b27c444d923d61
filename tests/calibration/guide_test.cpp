// The set-up buttons: their messages, and the panel they leave behind.

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using testing::Test;

const std::string connect_200mv =
    "Connect 200mVpp, 10 MHz Sine Wave to selected trigger input and \n";
const std::string connect_1v = "Connect 1Vpp, 10 MHz Sine Wave to selected trigger input and \n";
const std::string to_ch1 = "connect sampler input CH1 to trigger output!\n";
const std::string to_ch2 = "connect sampler input CH2 to trigger output!\n";
const std::string quiet =
    "Make sure that trigger is present and  sampler inputs are disconnectand or 0V! \n";

/// What a set-up button has to say and to do.
struct GuideRow {
    Button CalibrationForm::*button;
    std::string name;
    std::string caption;
    std::string title;
    std::string text;
    std::string status;
    bool ch1;
    bool ch2;
    std::string time_div;
    std::string v_div;
    bool trig1;
};

std::vector<GuideRow> rows() {
    using F = CalibrationForm;
    return {
        {&F::cmdsetforcalgainh, "cmdsetforcalgainh", "Set Cal", "Calibrate High Gain CH1",
         connect_200mv + to_ch1 + "Then press  <Cal GH1>",
         "Ready for CH1 high gain calibration @50mV/div, Press  <Cal GH1>  after CH1 display is "
         "visible",
         true, false, "20ns/div", "50mV", false},
        {&F::cmdsetforcalgainh2, "cmdsetforcalgainh2", "Set Cal", "Calibrate High Gain CH2",
         connect_200mv + to_ch2 + "Then press  <Cal GH2>",
         "Ready for CH2 high gain calibration @50mV/div, Press  <Cal GH2>  after CH1 display is "
         "visible",
         false, true, "20ns/div", "50mV", false},
        {&F::cmdsetforcalgainl, "cmdsetforcalgainl", "Set Cal", "Calibrate Low Gain CH1",
         connect_1v + to_ch1 + "Then press  <Cal GL1>",
         "Ready for CH1 gain calibration @200mV/div, Press  <Cal GL1>  after CH1 display is "
         "visible",
         true, false, "20ns/div", "0.2V", false},
        {&F::cmdsetforcalgainl2, "cmdsetforcalgainl2", "Set Cal", "Calibrate Low Gain CH2",
         connect_1v + to_ch2 + "Then press  <Cal GL2>",
         "Ready for CH2 gain calibration @200mV/div, Press  <Cal GL2>  after CH2 display is "
         "visible",
         false, true, "20ns/div", "0.2V", false},
        {&F::cmdsetforcalh, "cmdsetforcalh", "Set for CalH", "Calibrate Offset - High Gain",
         quiet + "Then press  <Cal. OffsetH>",
         "Ready for CH1 AND CH2 offset calibration @50mV/div, Press  <Cal. OffsetH>  after CH1 AND "
         "CH2 display is visible",
         true, true, "20ns/div", "50mV", false},
        {&F::cmdsetforcall, "cmdsetforcall", "Set for CalL", "Calibrate Offset - Low Gain",
         quiet + "Then press  <Cal. OffsetL>",
         "Ready for CH1 AND CH2 offset calibration @200mV/div, Press  <Cal. OffsetL>  after CH1 "
         "AND CH2 display is visible",
         true, true, "20ns/div", "0.2V", false},
        {&F::cmdsetforcalhscale, "cmdsetforcalhscale", "Set for Cal GL",
         "Calibrate Horizontal Scale", connect_1v + to_ch1 + "Then press  <Cal. time base scale>",
         "Ready for time base scale calibration, Press  <Cal. time base scale>  after CH1 display "
         "is visible",
         true, false, "100ns/div", "0.2V", true},
        {&F::cmdsetforlinearitycal, "cmdsetforlinearitycal", "Set for Linearity Calibration",
         "Calibrate Linearity Scale",
         connect_1v + to_ch1 + "Then press  <Cal. Time Base Linearity>",
         "Ready for time base linearity calibration, Press  <Cal. Time Base Linearity>  after CH1 "
         "display is visible",
         true, false, "20ns/div", "0.2V", true},
    };
}

class Guides : public Test, public CalibrationRig {
protected:
    /// Leaves nothing on the panel as a calibration needs it.
    void spoil_panel() {
        for (ChannelControls& controls : panel.channel) {
            PanelChoice::choose(controls.vdiv, "10mV");
            controls.inviatr.set_checked(true);
            controls.invert.set_checked(true);
        }
        PanelChoice::choose(panel.seltimediv, "1us/div");
        PanelChoice::choose(panel.trigsource, "TRIG2");
        panel.persist.set_checked(true);
        panel.average.set_checked(true);
        panel.adcspeed.set_checked(true);
        panel.check1.set_checked(false);
        state_machine.cmdstop_Click();
        forget();
    }

    struct PanelChoice {
        static void choose(ListBox& list, const std::string& text) {
            const auto& entries = list.entries();
            const auto found = std::find(entries.begin(), entries.end(), text);
            ASSERT_NE(found, entries.end()) << text;
            list.set_index(static_cast<int>(found - entries.begin()));
        }
    };
};

TEST_F(Guides, EveryButtonHasItsNameAndCaption) {
    for (const GuideRow& row : rows()) {
        EXPECT_EQ((form.*row.button).name(), row.name);
        EXPECT_EQ((form.*row.button).caption(), row.caption);
    }
    const std::vector<std::array<std::string, 3>> others = {
        {form.cmdcalgain1h.name(), form.cmdcalgain1h.caption(), "cmdcalgain1h Cal GH1"},
        {form.cmdcalgain2h.name(), form.cmdcalgain2h.caption(), "cmdcalgain2h Cal GH2"},
        {form.cmdcalgain.name(), form.cmdcalgain.caption(), "cmdcalgain Cal GL1"},
        {form.cmdcalg2l.name(), form.cmdcalg2l.caption(), "cmdcalg2l Cal GL2"},
        {form.cmdcaoffseth.name(), form.cmdcaoffseth.caption(), "cmdcaoffseth Cal. OffsetH"},
        {form.cmdcaoffsetl.name(), form.cmdcaoffsetl.caption(), "cmdcaoffsetl Cal. OffsetL"},
        {form.cmdcaltb.name(), form.cmdcaltb.caption(), "cmdcaltb Cal. time base scale"},
        {form.cmdcalint.name(), form.cmdcalint.caption(), "cmdcalint Cal. Time Base Linearity"},
        {form.cmdreadcald.name(), form.cmdreadcald.caption(),
         "cmdreadcald Read Cal. from Kv408 flash memory"},
        {form.cmdwritecal.name(), form.cmdwritecal.caption(),
         "cmdwritecal Write Cal. to Kv408 flash memeory"},
        {form.cmdsetalltodefault.name(), form.cmdsetalltodefault.caption(),
         "cmdsetalltodefault Set all to Default none calibrated values"}};
    for (const auto& [name, caption, both] : others) {
        EXPECT_EQ(name + " " + caption, both);
    }
}

TEST_F(Guides, TheMessageSaysWhatToConnect) {
    for (const GuideRow& row : rows()) {
        boxes.shown.clear();
        (form.*row.button).click();
        ASSERT_EQ(boxes.shown.size(), 1U) << row.name;
        EXPECT_EQ(boxes.shown[0].text, row.text);
        EXPECT_EQ(boxes.shown[0].title, row.title);
        EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::ok_cancel);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::information);
    }
}

TEST_F(Guides, CancelChangesNothing) {
    for (const GuideRow& row : rows()) {
        spoil_panel();
        form.calstatus.set_caption("-");
        boxes.answers = {MessageAnswer::cancel};
        (form.*row.button).click();
        EXPECT_EQ(calstatus(), "-");
        EXPECT_EQ(acquisition.scopestate, "stoped");
        EXPECT_EQ(panel.seltimediv.text(), "1us/div");
        EXPECT_EQ(panel.channel[0].vdiv.text(), "10mV");
        EXPECT_TRUE(panel.average.checked());
        EXPECT_TRUE(bridge.frames().empty());
    }
}

TEST_F(Guides, OkSetsThePanelAndStartsTheSweep) {
    for (const GuideRow& row : rows()) {
        SCOPED_TRACE(row.name);
        spoil_panel();
        (form.*row.button).click();
        EXPECT_EQ(panel.seltimediv.text(), row.time_div);
        EXPECT_EQ(panel.tdivtext.caption(), row.time_div);
        EXPECT_EQ(panel.channel[0].enable.checked(), row.ch1);
        EXPECT_EQ(panel.channel[1].enable.checked(), row.ch2);
        for (std::size_t channel = 0; channel < 2; ++channel) {
            EXPECT_EQ(panel.channel.at(channel).vdiv.text(), row.v_div);
            EXPECT_EQ(channels.at(channel).gain, row.v_div == "50mV" ? high_gain : low_gain);
            EXPECT_EQ(channels.at(channel).vtfactor, 1.0);
            EXPECT_FALSE(panel.channel.at(channel).invert.checked());
            EXPECT_FALSE(panel.channel.at(channel).inviatr.checked());
        }
        EXPECT_FALSE(panel.persist.checked());
        EXPECT_FALSE(panel.average.checked());
        EXPECT_FALSE(panel.adcspeed.checked());
        EXPECT_TRUE(panel.check1.checked());
        EXPECT_EQ(panel.trigsource.text(), row.trig1 ? "TRIG1" : "TRIG2");
        EXPECT_EQ(calstatus(), row.status);
        EXPECT_EQ(acquisition.scopestate, "startscope");
        EXPECT_TRUE(acquisition.acqrunning);
    }
}

TEST_F(Guides, ARunningSweepIsSetUpTheSameWay) {
    for (const GuideRow& row : rows()) {
        spoil_panel();
        state_machine.cmdstartsweep_Click();
        (form.*row.button).click();
        EXPECT_EQ(calstatus(), row.status);
        EXPECT_EQ(panel.seltimediv.text(), row.time_div);
        EXPECT_EQ(acquisition.scopestate, "startscope");
    }
}

} // namespace
} // namespace kv408
