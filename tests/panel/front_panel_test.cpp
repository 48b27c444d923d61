#include "panel/front_panel.h"

#include <set>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(FrontPanel, StartsWithBothChannelsTheGridAndTheMeasurementsOn) {
    const FrontPanel panel;
    EXPECT_TRUE(panel.gridenable.checked());
    EXPECT_TRUE(panel.check1.checked());
    for (const ChannelControls& controls : panel.channel) {
        EXPECT_TRUE(controls.enable.checked());
    }
}

TEST(FrontPanel, StartsWithEveryOtherBoxUnchecked) {
    const FrontPanel panel;
    const CheckBox* const boxes[] = {
        &panel.eyeon,
        &panel.persist,
        &panel.average,
        &panel.adcspeed,
        &panel.channel[0].inviatr,
        &panel.channel[1].inviatr,
        &panel.channel[0].invert,
        &panel.channel[1].invert,
        &panel.channel[0].slenps,
        &panel.channel[1].slenps,
        &panel.measurement[0].annotate,
        &panel.measurement[1].annotate,
        &panel.measurement[2].annotate,
    };
    for (const CheckBox* const box : boxes) {
        EXPECT_FALSE(box->checked()) << box->name();
    }
}

TEST(FrontPanel, StartsWithItsTriggerAndDelays) {
    const FrontPanel panel;
    EXPECT_EQ(panel.trtout.text(), "1000");
    EXPECT_EQ(panel.shyst.value(), 10);
    EXPECT_EQ(panel.shyst.minimum(), 0);
    EXPECT_EQ(panel.shyst.maximum(), 255);
    for (const ChannelControls& controls : panel.channel) {
        EXPECT_EQ(controls.psofset.text(), "0");
        EXPECT_EQ(controls.ofset.caption(), "0.00mV");
        EXPECT_EQ(controls.hor_delay.caption(), "");
    }
}

TEST(FrontPanel, StartsWithTheWheelInTheMiddleOfItsRange) {
    const FrontPanel panel;
    EXPECT_EQ(panel.slider1.Min(), 0);
    EXPECT_EQ(panel.slider1.Max(), 1024);
    EXPECT_EQ(panel.slider1.Value(), 512);
}

TEST(FrontPanel, StartsWithTheTargetsOfTheWheelAndCursorsOff) {
    const FrontPanel panel;
    std::vector<std::string> keys;
    for (const Tab& tab : panel.tabstrip2.tabs()) {
        keys.push_back(tab.key);
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"CH1", "CH2", "TRIG"}));
    EXPECT_EQ(panel.tabstrip2.selected(), 1);
    EXPECT_EQ(panel.tabstrip3.tabs().size(), 3U);
    EXPECT_EQ(panel.tabstrip3.selected(), 3);
}

TEST(FrontPanel, StartsWithEmptyLists) {
    const FrontPanel panel;
    const ListBox* const lists[] = {
        &panel.device,
        &panel.trigsource,
        &panel.trigeredge,
        &panel.seltimediv,
        &panel.combocursorselect,
        &panel.channel[0].vdiv,
        &panel.channel[1].vdiv,
        &panel.measurement[0].selector,
    };
    for (const ListBox* const list : lists) {
        EXPECT_TRUE(list->entries().empty()) << list->name();
        EXPECT_EQ(list->index(), -1) << list->name();
    }
}

TEST(FrontPanel, MarkersBearTheirChannelOrTrigger) {
    const FrontPanel panel;
    EXPECT_EQ(panel.channel[0].text.caption(), "1");
    EXPECT_EQ(panel.channel[1].text.caption(), "2");
    EXPECT_EQ(panel.channel[0].label.caption(), "CH1");
    EXPECT_EQ(panel.channel[1].label.caption(), "CH2");
    EXPECT_EQ(panel.trigertext.caption(), "T");
    EXPECT_EQ(panel.ltp2.marked(), 0);
}

TEST(FrontPanel, TheAveragingLabelWaitsForItsBox) {
    const FrontPanel panel;
    EXPECT_EQ(panel.avglabel.caption(), "Filter Avg.");
    EXPECT_FALSE(panel.avglabel.visible());
}

TEST(FrontPanel, EachControlHasANameAndAKeyOfItsOwn) {
    const FrontPanel panel;
    std::set<std::string> names;
    std::set<std::string> keys;
    std::set<int> lines;
    for (const Control* const control : panel.all) {
        EXPECT_TRUE(names.insert(control->name()).second) << control->name();
        if (control->about().line > 0) {
            EXPECT_TRUE(keys.insert(control->key()).second) << control->key();
            EXPECT_TRUE(lines.insert(control->about().line).second) << control->key();
        }
    }
    EXPECT_FALSE(keys.empty());
}

TEST(FrontPanel, ControlsBearTheirNames) {
    const FrontPanel panel;
    const std::pair<const Control*, const char*> rows[] = {
        {&panel.device, "cmbDevice"},
        {&panel.textstatus, "textstatus"},
        {&panel.cmdstartsweep, "cmdstartsweep"},
        {&panel.cmdstop, "cmdstop"},
        {&panel.gridenable, "gridenable"},
        {&panel.eyeon, "eyeon"},
        {&panel.persist, "persist"},
        {&panel.average, "average"},
        {&panel.adcspeed, "adcspeed"},
        {&panel.trigsource, "trigsource"},
        {&panel.trigeredge, "trigeredge"},
        {&panel.shyst, "shyst"},
        {&panel.trzero, "trzero"},
        {&panel.trlevelmv, "trlevelmv"},
        {&panel.trtout, "trtout"},
        {&panel.seltimediv, "seltimediv"},
        {&panel.delaytrttdis, "delaytrttdis"},
        {&panel.combocursorselect, "combocursorselect"},
        {&panel.tabstrip2, "TabStrip2"},
        {&panel.tabstrip3, "TabStrip3"},
        {&panel.slider1, "Slider1"},
        {&panel.picture1, "Picture1"},
        {&panel.tdivtext, "tdivtext"},
        {&panel.avglabel, "avglabel"},
        {&panel.lbldate, "lblDate"},
        {&panel.trigertext, "trigertext"},
        {&panel.ltp2, "ltp2"},
        {&panel.centerfr, "centerfr"},
        {&panel.lblc1, "lblC1"},
        {&panel.lblc2, "lblC2"},
        {&panel.picmeasure, "picMeasure"},
        {&panel.loadconfig, "loadconfig"},
        {&panel.saveconfig, "saveconfig"},
        {&panel.menuexit, "MenuExit"},
        {&panel.menuhelp, "MenuHelp"},
        {&panel.menuabout, "MenuAbout"},
        {&panel.exportdata, "ExportData"},
        {&panel.mnuexport, "mnuexport"},
        {&panel.mnurecord, "mnurecord"},
        {&panel.mnustatistics, "mnustatistics"},
        {&panel.mnudensity, "mnudensity"},
        {&panel.mnuremote, "mnuremote"},
        {&panel.channel[0].vdiv, "ch1vdiv"},
        {&panel.channel[1].vdiv, "ch2vdiv"},
        {&panel.channel[0].enable, "ch1enable"},
        {&panel.channel[1].enable, "ch2enable"},
        {&panel.channel[0].inviatr, "inviatr1"},
        {&panel.channel[1].inviatr, "inviatr2"},
        {&panel.channel[0].invert, "invert1"},
        {&panel.channel[1].invert, "invert2"},
        {&panel.channel[0].ofset, "ofsetch1"},
        {&panel.channel[1].ofset, "ofsetch2"},
        {&panel.channel[0].vdivtext, "ch1vdivtext"},
        {&panel.channel[1].vdivtext, "ch2vdivtext"},
        {&panel.channel[0].text, "ch1text"},
        {&panel.channel[1].text, "ch2text"},
        {&panel.channel[0].psofset, "psofsetch1"},
        {&panel.channel[1].psofset, "psofsetch2"},
        {&panel.channel[0].slenps, "slenps1"},
        {&panel.channel[1].slenps, "slenps2"},
        {&panel.channel[0].hor_delay, "lblHorDelay1"},
        {&panel.channel[1].hor_delay, "lblHorDelay2"},
        {&panel.measurement[0].selector, "cmbMeas(0)"},
        {&panel.measurement[2].selector, "cmbMeas(2)"},
        {&panel.measurement[1].annotate, "chkMeasAnno(1)"},
        {&panel.measurement[0].ch1, "txtMeasCH1(0)"},
        {&panel.measurement[2].ch2, "txtMeasCH2(2)"},
    };
    for (const auto& [control, name] : rows) {
        EXPECT_EQ(control->name(), name);
    }
}

} // namespace
} // namespace kv408
