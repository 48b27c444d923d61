#include "display/colour_update.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "display/colour_items.h"
#include "support/fake_screen.h"

namespace kv408::test {
namespace {

using Colours = std::optional<Colour>;

/// Seven colours of which no two are alike.
constexpr ColourTable odd_colours = {.ch1 = rgb(1, 0, 0),
                                     .ch2 = rgb(2, 0, 0),
                                     .background = rgb(3, 0, 0),
                                     .normal_text = rgb(4, 0, 0),
                                     .grid = rgb(5, 0, 0),
                                     .text_background = rgb(6, 0, 0),
                                     .annotations = rgb(7, 0, 0)};

struct ColourUpdateTest : testing::Test {
    FrontPanel panel;
    ColourTable colours = odd_colours;
    FakeScreen screen;
    ColourUpdate update{panel, colours, screen};
};

TEST_F(ColourUpdateTest, MakesEveryPartOfThePictureAnew) {
    update.colorupdate();
    EXPECT_THAT(screen.calls,
                testing::UnorderedElementsAre("refresh 1 0", "refresh 2 0", "calcPersistColors",
                                              "ClearTrace 1", "ClearTrace 2", "makegrid"));
}

TEST_F(ColourUpdateTest, GivesTheControlsTheirTextColours) {
    update.colorupdate();
    for (const Channel channel : both_channels) {
        const Colours expected = channel == 0 ? odd_colours.ch1 : odd_colours.ch2;
        const ChannelControls& controls = panel.channel[channel];
        for (const Control* const control : {static_cast<const Control*>(&controls.text),
                                             static_cast<const Control*>(&controls.label),
                                             static_cast<const Control*>(&controls.vdiv),
                                             static_cast<const Control*>(&controls.vdivtext),
                                             static_cast<const Control*>(&controls.hor_delay)}) {
            EXPECT_EQ(control->fore_colour(), expected) << control->name();
        }
    }
    for (const MeasurementControls& slot : panel.measurement) {
        EXPECT_EQ(slot.ch1.fore_colour(), odd_colours.ch1);
        EXPECT_EQ(slot.ch2.fore_colour(), odd_colours.ch2);
        EXPECT_EQ(slot.label.fore_colour(), odd_colours.normal_text);
    }
    for (const Label* const label :
         std::initializer_list<const Label*>{&panel.trigertext, &panel.tdivtext, &panel.lbldate}) {
        EXPECT_EQ(label->fore_colour(), odd_colours.normal_text) << label->name();
    }
    EXPECT_EQ(panel.seltimediv.fore_colour(), odd_colours.normal_text);
}

TEST_F(ColourUpdateTest, GivesTheControlsTheirBackgrounds) {
    update.colorupdate();
    EXPECT_EQ(panel.picture1.back_colour(), odd_colours.background);
    EXPECT_EQ(panel.picmeasure.back_colour(), odd_colours.background);
    const Colours plate = odd_colours.text_background;
    for (const ChannelControls& controls : panel.channel) {
        EXPECT_EQ(controls.text.back_colour(), plate);
        EXPECT_EQ(controls.labelframe.back_colour(), plate);
        EXPECT_EQ(controls.vdiv.back_colour(), plate);
        // These lie on what is behind them.
        EXPECT_EQ(controls.label.back_colour(), std::nullopt);
        EXPECT_EQ(controls.vdivtext.back_colour(), std::nullopt);
        EXPECT_EQ(controls.hor_delay.back_colour(), std::nullopt);
    }
    for (const MeasurementControls& slot : panel.measurement) {
        EXPECT_EQ(slot.ch1.back_colour(), plate);
        EXPECT_EQ(slot.ch2.back_colour(), plate);
        EXPECT_EQ(slot.label.back_colour(), std::nullopt);
    }
    EXPECT_EQ(panel.seltimediv.back_colour(), plate);
    EXPECT_EQ(panel.tdivtext.back_colour(), std::nullopt);
}

// They lie on the screen among the others and must be read there.
TEST_F(ColourUpdateTest, TakesTheOtherTextsOfTheScreenAlong) {
    update.colorupdate();
    for (const Label* const label : std::initializer_list<const Label*>{
             &panel.ltp2, &panel.avglabel, &panel.centerfr, &panel.lblc1, &panel.lblc2,
             &panel.measurement[1].mark}) {
        EXPECT_EQ(label->fore_colour(), odd_colours.normal_text) << label->name();
    }
}

TEST_F(ColourUpdateTest, LeavesTheControlsBesideTheScreenTheirDesktopColours) {
    update.colorupdate();
    for (const Control* const control : {static_cast<const Control*>(&panel.trigsource),
                                         static_cast<const Control*>(&panel.trtout),
                                         static_cast<const Control*>(&panel.textstatus),
                                         static_cast<const Control*>(&panel.snapshot)}) {
        EXPECT_EQ(control->fore_colour(), std::nullopt) << control->name();
        EXPECT_EQ(control->back_colour(), std::nullopt) << control->name();
    }
}

TEST(ColourItems, AreListedInTheDialogsOrder) {
    EXPECT_EQ(items_of(odd_colours),
              (ItemColours{rgb(1, 0, 0), rgb(2, 0, 0), rgb(3, 0, 0), rgb(4, 0, 0), rgb(5, 0, 0),
                           rgb(6, 0, 0), rgb(7, 0, 0)}));
    EXPECT_EQ(table_of(items_of(odd_colours)), odd_colours);
    EXPECT_EQ(colour_captions[4], "Grid");
    EXPECT_EQ(colour_captions[5], "Text Background");
}

TEST(ColourItems, FactoryColours) {
    EXPECT_EQ(items_of(ColourTable{}),
              (ItemColours{rgb(255, 255, 0), rgb(128, 220, 255), rgb(0, 0, 0), rgb(255, 255, 255),
                           rgb(92, 92, 92), rgb(0, 0, 0), rgb(255, 128, 128)}));
}

} // namespace
} // namespace kv408::test
