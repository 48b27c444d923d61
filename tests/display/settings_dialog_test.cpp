#include "display/settings_dialog.h"

#include <gtest/gtest.h>

#include "support/fake_files.h"
#include "support/fake_screen.h"

namespace kv408::test {
namespace {

using Texts = std::vector<std::string>;

/// The places of the components among the sliders.
constexpr std::size_t red_part = 0;
constexpr std::size_t green_part = 1;
constexpr std::size_t blue_part = 2;

/// Seven colours of which no two are alike.
constexpr ColourTable edited_colours = {.ch1 = rgb(11, 12, 13),
                                        .ch2 = rgb(21, 22, 23),
                                        .background = rgb(31, 32, 33),
                                        .normal_text = rgb(41, 42, 43),
                                        .grid = rgb(51, 52, 53),
                                        .text_background = rgb(61, 62, 63),
                                        .annotations = rgb(71, 72, 73)};

/// What applying colours asks of the screen.
/// Whether the picture on the screen has the colours and the persistence that were set last.
bool shows_colours(const FakeScreen& screen) {
    return screen.shows_both_traces_anew() && screen.shows("calcPersistColors") &&
           screen.shows("ClearTrace 1") && screen.shows("ClearTrace 2") && screen.shows("makegrid");
}

struct SettingsDialogTest : testing::Test {
    SettingsDialogTest() {
        dialog.on_show([this] { ++shown; });
        dialog.on_close([this] { ++closed; });
    }

    void open() {
        dialog.mnusettings_Click();
        screen.calls.clear();
    }

    [[nodiscard]] int slider(std::size_t component) { return controls.slrgb[component].value(); }
    [[nodiscard]] const std::string& text(std::size_t component) {
        return controls.txtrgb[component].text();
    }
    [[nodiscard]] std::optional<Colour> swatch(std::size_t item) {
        return controls.shpcolor[item].back_colour();
    }

    FrontPanel panel;
    ColourTable colours = edited_colours;
    DisplaySettings settings{.persisttime = 5,
                             .snapshotpath = "/pictures",
                             .snapshotdialog = false,
                             .snapshotinvert = true};
    FakeScreen screen;
    FakeFileChoosers choosers;
    ColourUpdate update{panel, colours, screen};
    SettingsDialog dialog{panel, settings, colours, update, screen, choosers};
    SettingsControls& controls = dialog.controls();
    int shown = 0;
    int closed = 0;
};

TEST_F(SettingsDialogTest, OpensOnceAndIsOnlyRaisedAfterThat) {
    EXPECT_FALSE(dialog.is_open());
    dialog.mnusettings_Click();
    EXPECT_TRUE(dialog.is_open());
    EXPECT_EQ(shown, 1);
    controls.persist.set_value(8);
    dialog.mnusettings_Click();
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(controls.persist.value(), 8) << "what was edited stays";
    EXPECT_EQ(closed, 0);
}

TEST_F(SettingsDialogTest, LoadsWhatIsInForce) {
    dialog.mnusettings_Click();
    for (std::size_t item = 0; item < colour_items; ++item) {
        EXPECT_EQ(swatch(item), items_of(edited_colours)[item]) << item;
        EXPECT_EQ(controls.optcolor[item].checked(), item == 0) << item;
    }
    EXPECT_EQ(controls.txtsnapshotpath.text(), "/pictures");
    EXPECT_EQ(controls.persist.value(), 5);
    EXPECT_FALSE(controls.chksnapshotdialog.checked());
    EXPECT_TRUE(controls.chksnapshotinvert.checked());
    EXPECT_FALSE(controls.chkautoupd.checked());
    EXPECT_EQ(text(red_part), "11");
    EXPECT_EQ(slider(green_part), 12);
    EXPECT_EQ(slider(blue_part), 13);
    EXPECT_EQ(controls.shpcurrentcol.back_colour(), edited_colours.ch1);
    EXPECT_TRUE(screen.calls.empty()) << "opening redraws nothing";
    EXPECT_EQ(colours, edited_colours);
}

TEST_F(SettingsDialogTest, LoadingSwitchesThePathAsTheCheckBoxSays) {
    settings.snapshotdialog = true;
    dialog.mnusettings_Click();
    EXPECT_TRUE(controls.chksnapshotdialog.checked());
    EXPECT_FALSE(controls.txtsnapshotpath.enabled());
    EXPECT_FALSE(controls.browse.enabled());
}

TEST_F(SettingsDialogTest, CaptionsAreTheGivenOnes) {
    const Texts captions = {"CH1 trace", "CH2 trace",       "Background", "Normal Text",
                            "Grid",      "Text Background", "Annotations"};
    for (std::size_t item = 0; item < colour_items; ++item) {
        EXPECT_EQ(controls.optcolor[item].caption(), captions[item]);
    }
    EXPECT_EQ(
        controls.tabstrip1.tabs(),
        (std::vector<Tab>{{"Snapshot", "Snapshot"}, {"Display", "Display"}, {"Colors", "Colors"}}));
    EXPECT_EQ(controls.cmdok.caption(), "OK");
    EXPECT_EQ(controls.cmdcancel.caption(), "Cancel");
    EXPECT_EQ(controls.cmdsetdefault.caption(), "Set all colors to default");
    EXPECT_EQ(controls.persist.minimum(), 1);
    EXPECT_EQ(controls.persist.maximum(), 9);
    for (const Slider& slider : controls.slrgb) {
        EXPECT_EQ(slider.minimum(), 0);
        EXPECT_EQ(slider.maximum(), 255);
    }
}

TEST_F(SettingsDialogTest, ATabShowsItsPageAlone) {
    open();
    for (int tab = 3; tab >= 1; --tab) {
        controls.tabstrip1.select(tab);
        EXPECT_EQ(controls.frmsnapshot.visible(), tab == 1);
        EXPECT_EQ(controls.frmdisplay.visible(), tab == 2);
        EXPECT_EQ(controls.frmcolors.visible(), tab == 3);
    }
}

TEST_F(SettingsDialogTest, AnOptionLoadsItsColourIntoTheEditor) {
    open();
    for (std::size_t item = colour_items; item-- > 0;) {
        controls.optcolor[item].choose();
        for (std::size_t other = 0; other < colour_items; ++other) {
            EXPECT_EQ(controls.optcolor[other].checked(), other == item);
        }
        const int tens = 10 * (static_cast<int>(item) + 1);
        for (const std::size_t component : {red_part, green_part, blue_part}) {
            const int value = tens + 1 + static_cast<int>(component);
            EXPECT_EQ(slider(component), value);
            EXPECT_EQ(text(component), std::to_string(value));
        }
        EXPECT_EQ(controls.shpcurrentcol.back_colour(), items_of(edited_colours)[item]);
        EXPECT_EQ(controls.component[red_part].back_colour(),
                  rgb(static_cast<std::uint8_t>(tens + 1), 0, 0));
        EXPECT_EQ(controls.component[green_part].back_colour(),
                  rgb(0, static_cast<std::uint8_t>(tens + 2), 0));
        EXPECT_EQ(controls.component[blue_part].back_colour(),
                  rgb(0, 0, static_cast<std::uint8_t>(tens + 3)));
    }
    for (std::size_t item = 0; item < colour_items; ++item) {
        EXPECT_EQ(swatch(item), items_of(edited_colours)[item]) << "choosing edits nothing";
    }
}

// The components of the colour before and of the one after must not be mixed on the way.
TEST_F(SettingsDialogTest, LoadingAnOptionAppliesNoColourInBetween) {
    open();
    controls.chkautoupd.set_checked(true);
    std::vector<Colour> seen;
    screen.on_draw = [&] { seen.push_back(colours.ch2); };
    controls.optcolor[1].choose();
    EXPECT_EQ(swatch(1), edited_colours.ch2);
    for (const Colour& colour : seen) {
        EXPECT_EQ(colour, edited_colours.ch2);
    }
    EXPECT_EQ(colours, edited_colours);
}

TEST_F(SettingsDialogTest, ASliderChangesTheDialogOnly) {
    open();
    controls.optcolor[4].choose();
    controls.slrgb[green_part].set_value(200);
    EXPECT_EQ(text(green_part), "200");
    EXPECT_EQ(text(red_part), "51");
    EXPECT_EQ(slider(red_part), 51);
    EXPECT_EQ(slider(blue_part), 53);
    EXPECT_EQ(swatch(4), rgb(51, 200, 53));
    EXPECT_EQ(controls.shpcurrentcol.back_colour(), rgb(51, 200, 53));
    EXPECT_EQ(controls.component[green_part].back_colour(), rgb(0, 200, 0));
    EXPECT_EQ(colours, edited_colours);
    EXPECT_TRUE(screen.calls.empty());
    EXPECT_EQ(swatch(5), edited_colours.text_background);
}

TEST_F(SettingsDialogTest, CheckingAutoupdateAppliesAllPendingEditsAtOnce) {
    open();
    controls.slrgb[red_part].set_value(100);
    controls.optcolor[4].choose();
    controls.slrgb[green_part].set_value(200);
    ColourTable expected = edited_colours;
    expected.ch1 = rgb(100, 12, 13);
    expected.grid = rgb(51, 200, 53);
    controls.chkautoupd.set_checked(true);
    EXPECT_EQ(colours, expected);
    EXPECT_TRUE(shows_colours(screen));
    EXPECT_EQ(panel.channel[0].text.fore_colour(), expected.ch1);
}

TEST_F(SettingsDialogTest, WithAutoupdateEverySliderMoveIsAppliedOnce) {
    open();
    controls.chkautoupd.set_checked(true);
    controls.optcolor[5].choose();
    screen.calls.clear();
    controls.slrgb[blue_part].set_value(99);
    EXPECT_TRUE(shows_colours(screen));
    EXPECT_EQ(colours.text_background, rgb(61, 62, 99));
    EXPECT_EQ(colours.grid, edited_colours.grid);
    controls.txtrgb[red_part].set_text("7");
    EXPECT_EQ(colours.text_background, rgb(7, 62, 99));
}

TEST_F(SettingsDialogTest, UncheckingAutoupdateShowsTheColoursFromBefore) {
    open();
    controls.chkautoupd.set_checked(true);
    controls.slrgb[red_part].set_value(100);
    screen.calls.clear();
    controls.chkautoupd.set_checked(false);
    EXPECT_EQ(colours, edited_colours);
    EXPECT_TRUE(shows_colours(screen));
    EXPECT_EQ(swatch(0), rgb(100, 12, 13)) << "the edit itself stays";
    controls.cmdok.click();
    EXPECT_EQ(colours.ch1, rgb(100, 12, 13));
}

struct TypedRow {
    const char* typed;
    int value;
    const char* text; ///< what then stands in the box
};

TEST_F(SettingsDialogTest, ATypedNumberMovesTheSlider) {
    open();
    const TypedRow rows[] = {{"0", 0, "0"},       {"128", 128, "128"}, {"255", 255, "255"},
                             {"256", 255, "255"}, {"300", 255, "255"}, {"99999999999", 255, "255"},
                             {"-1", 0, "-1"},     {"-300", 0, "-300"}, {"", 0, ""},
                             {"-", 0, "-"},       {"abc", 0, "abc"},   {"12abc", 12, "12"},
                             {" 7", 7, "7"},      {"2.5", 2, "2"},     {"3.5", 4, "4"}};
    for (const TypedRow& row : rows) {
        controls.slrgb[green_part].set_value(77);
        controls.txtrgb[green_part].set_text(row.typed);
        EXPECT_EQ(slider(green_part), row.value) << row.typed;
        EXPECT_EQ(text(green_part), row.text) << row.typed;
        EXPECT_EQ(swatch(0), rgb(11, static_cast<std::uint8_t>(row.value), 13)) << row.typed;
        controls.txtrgb[green_part].leave();
        EXPECT_EQ(text(green_part), std::to_string(row.value)) << row.typed;
        EXPECT_EQ(slider(green_part), row.value) << row.typed;
    }
}

TEST_F(SettingsDialogTest, ATooGreatNumberIsCutAlsoWhenTheSliderStandsThere) {
    open();
    controls.slrgb[green_part].set_value(255);
    controls.txtrgb[green_part].set_text("300");
    EXPECT_EQ(slider(green_part), 255);
    EXPECT_EQ(text(green_part), "255");
}

// As it is typed: each key makes a new text out of the one that is there.
TEST_F(SettingsDialogTest, ANegativeNumberCanBeTypedKeyByKey) {
    open();
    TextBox& box = controls.txtrgb[red_part];
    box.set_text("");
    for (const char key : std::string("-52")) {
        box.set_text(box.text() + key);
    }
    EXPECT_EQ(slider(red_part), 0);
    EXPECT_EQ(box.text(), "-52");
    box.leave();
    EXPECT_EQ(box.text(), "0");
}

TEST_F(SettingsDialogTest, SetDefaultAppliesWhateverAutoupdateSays) {
    open();
    controls.optcolor[6].choose();
    for (const bool automatic : {false, true}) {
        controls.chkautoupd.set_checked(automatic);
        controls.slrgb[red_part].set_value(9);
        screen.calls.clear();
        controls.cmdsetdefault.click();
        EXPECT_EQ(colours, ColourTable{});
        EXPECT_TRUE(shows_colours(screen));
        for (std::size_t item = 0; item < colour_items; ++item) {
            EXPECT_EQ(swatch(item), items_of(ColourTable{})[item]);
        }
        EXPECT_TRUE(controls.optcolor[6].checked());
        EXPECT_EQ(text(red_part), "255");
        EXPECT_EQ(text(green_part), "128");
        EXPECT_EQ(slider(blue_part), 128);
        EXPECT_EQ(controls.shpcurrentcol.back_colour(), rgb(255, 128, 128));
    }
}

TEST_F(SettingsDialogTest, DefaultsThenOkRestoreExactlyTheFactoryColours) {
    open();
    controls.cmdsetdefault.click();
    controls.cmdok.click();
    EXPECT_EQ(items_of(colours),
              (ItemColours{rgb(255, 255, 0), rgb(128, 220, 255), rgb(0, 0, 0), rgb(255, 255, 255),
                           rgb(92, 92, 92), rgb(0, 0, 0), rgb(255, 128, 128)}));
}

TEST_F(SettingsDialogTest, CancelAfterDefaultsRestoresTheColoursFromBefore) {
    open();
    controls.cmdsetdefault.click();
    controls.cmdcancel.click();
    EXPECT_EQ(colours, edited_colours);
}

TEST_F(SettingsDialogTest, TheDialogCheckBoxSwitchesThePath) {
    open();
    controls.chksnapshotdialog.set_checked(true);
    EXPECT_FALSE(controls.txtsnapshotpath.enabled());
    EXPECT_FALSE(controls.browse.enabled());
    controls.chksnapshotdialog.set_checked(false);
    EXPECT_TRUE(controls.txtsnapshotpath.enabled());
    EXPECT_TRUE(controls.browse.enabled());
}

TEST_F(SettingsDialogTest, TheBrowseButtonPutsAChosenFolderIntoTheBox) {
    open();
    choosers.answers = {"/other/folder", std::nullopt};
    controls.browse.click();
    EXPECT_EQ(controls.txtsnapshotpath.text(), "/other/folder");
    controls.browse.click();
    EXPECT_EQ(controls.txtsnapshotpath.text(), "/other/folder") << "cancelled";
    EXPECT_EQ(choosers.folders, (Texts{"Select a Folder", "Select a Folder"}));
    EXPECT_EQ(settings.snapshotpath, "/pictures") << "until OK";
}

TEST_F(SettingsDialogTest, OkStoresEverythingAndCloses) {
    open();
    controls.txtsnapshotpath.set_text("/new");
    controls.persist.set_value(9);
    controls.chksnapshotdialog.set_checked(true);
    controls.chksnapshotinvert.set_checked(false);
    controls.slrgb[red_part].set_value(200);
    int depth_when_applied = 0;
    screen.on_draw = [&] { depth_when_applied = settings.persisttime; };
    controls.cmdok.click();
    EXPECT_EQ(settings.snapshotpath, "/new");
    EXPECT_EQ(settings.persisttime, 9);
    EXPECT_TRUE(settings.snapshotdialog);
    EXPECT_FALSE(settings.snapshotinvert);
    EXPECT_EQ(colours.ch1, rgb(200, 12, 13));
    EXPECT_TRUE(shows_colours(screen));
    EXPECT_EQ(depth_when_applied, 9) << "the ramp follows at once";
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(dialog.is_open());
}

TEST_F(SettingsDialogTest, CancelRestoresTheColoursAndStoresNothing) {
    open();
    controls.chkautoupd.set_checked(true);
    for (std::size_t item = 0; item < colour_items; ++item) {
        controls.optcolor[item].choose();
        controls.slrgb[blue_part].set_value(250);
    }
    controls.txtsnapshotpath.set_text("/new");
    controls.persist.set_value(1);
    controls.chksnapshotdialog.set_checked(true);
    controls.chksnapshotinvert.set_checked(false);
    EXPECT_NE(colours, edited_colours);
    screen.calls.clear();
    controls.cmdcancel.click();
    EXPECT_EQ(colours, edited_colours);
    EXPECT_TRUE(shows_colours(screen));
    EXPECT_EQ(settings.snapshotpath, "/pictures");
    EXPECT_EQ(settings.persisttime, 5);
    EXPECT_FALSE(settings.snapshotdialog);
    EXPECT_TRUE(settings.snapshotinvert);
    EXPECT_EQ(closed, 1);
}

TEST_F(SettingsDialogTest, CancelledFromOutsideItClosesWhereItIsOpen) {
    dialog.cancel();
    EXPECT_EQ(closed, 0);
    EXPECT_TRUE(screen.calls.empty());
    open();
    controls.chkautoupd.set_checked(true);
    controls.slrgb[blue_part].set_value(250);
    EXPECT_NE(colours, edited_colours);
    dialog.cancel();
    EXPECT_EQ(colours, edited_colours);
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(dialog.is_open());
}

TEST_F(SettingsDialogTest, IsLoadedAfreshEachTimeItOpens) {
    open();
    controls.tabstrip1.select(3);
    controls.optcolor[3].choose();
    controls.chkautoupd.set_checked(true);
    controls.slrgb[red_part].set_value(0);
    controls.cmdcancel.click();
    screen.calls.clear();
    dialog.mnusettings_Click();
    EXPECT_EQ(controls.tabstrip1.selected(), 1);
    EXPECT_TRUE(controls.optcolor[0].checked());
    EXPECT_FALSE(controls.optcolor[3].checked());
    EXPECT_FALSE(controls.chkautoupd.checked());
    EXPECT_EQ(swatch(3), edited_colours.normal_text);
    EXPECT_TRUE(screen.calls.empty());
}

// The settings file may hold a depth that the slider has not.
TEST_F(SettingsDialogTest, ADepthBeyondTheSliderIsHeldInItsRange) {
    settings.persisttime = 40;
    open();
    EXPECT_EQ(controls.persist.value(), 9);
    controls.cmdcancel.click();
    EXPECT_EQ(settings.persisttime, 40);
    settings.persisttime = 0;
    open();
    EXPECT_EQ(controls.persist.value(), 1);
}

TEST_F(SettingsDialogTest, WhatSteersTheScreenInASnapshotPathIsShownAndStaysInIt) {
    open();
    EXPECT_FALSE(controls.shownpath.visible());
    EXPECT_EQ(controls.shownpath.caption(), "");
    dialog.cancel();
    // A set-up from somebody else: an escape sequence, a turned direction, a byte that is no text.
    const std::string path = "/a\x1b[2Jb\xE2\x80\xAE/gpj\xFF";
    settings.snapshotpath = path;
    open();
    EXPECT_TRUE(controls.shownpath.visible());
    EXPECT_EQ(controls.shownpath.caption(), "that is: /a\\x1b[2Jb\\xe2\\x80\\xae/gpj\\xff");
    EXPECT_EQ(controls.txtsnapshotpath.text(), path);
    controls.cmdok.click();
    EXPECT_EQ(settings.snapshotpath, path);
    // What is typed counts at once.
    open();
    controls.txtsnapshotpath.set_text("/b");
    EXPECT_FALSE(controls.shownpath.visible());
    controls.txtsnapshotpath.set_text("/b\n");
    EXPECT_EQ(controls.shownpath.caption(), "that is: /b\\x0a");
}

} // namespace
} // namespace kv408::test
