#include "display/snapshot.h"

#include <gtest/gtest.h>

#include "display/bitmap_file.h"
#include "display/colour_update.h"
#include "display/scale_lines.h"
#include "golden.h"
#include "picture_scene.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace kv408::test {
namespace {

using Texts = std::vector<std::string>;

/// What the system parts folders with.
const std::string separator(1, static_cast<char>(std::filesystem::path::preferred_separator));

constexpr Pixel black = pixel_of(rgb(0, 0, 0));
constexpr Pixel white = pixel_of(rgb(255, 255, 255));

/// A pixel of the bitmap file `file` of a plot box, at (`x`, `y`) of the box from its upper left.
Pixel pixel_in(const std::string& file, int x, int y) {
    const std::size_t at =
        54U + static_cast<std::size_t>(539 - y) * 2116U + static_cast<std::size_t>(x) * 3U;
    const auto byte = [&](std::size_t index) {
        return static_cast<std::uint8_t>(file.at(at + index));
    };
    return pixel_of(rgb(byte(2), byte(1), byte(0)));
}

/// CH1 on row 100 of the plot, CH2 off, and a snapshot folder.
struct SnapshotTest : testing::Test, PictureScene {
    SnapshotTest() {
        panel.channel[1].enable.set_checked(false);
        set_flat(ch1, 100);
        settings.snapshotpath = "/pictures";
        clock.set_local_time(
            {.year = 2026, .month = 11, .day = 16, .hour = 1, .minute = 9, .second = 37});
        ColourUpdate(panel, colours, picture).recolour_panel();
    }

    VirtualClock clock;
    FakeMessageBoxes boxes;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Snapshot snapshot{
        panel,
        picture,
        settings,
        {.clock = clock, .boxes = boxes, .files = files, .choosers = choosers, .coder = coder}};
};

struct NameRow {
    LocalTime time;
    const char* name = "";
};

TEST(SnapshotName, IsMadeOfTwoDigitsEach) {
    const NameRow rows[] = {{{2026, 11, 16, 1, 9, 37}, "261116_010937.bmp"},
                            {{2000, 1, 2, 3, 4, 5}, "000102_030405.bmp"},
                            {{2099, 12, 31, 23, 59, 59}, "991231_235959.bmp"},
                            {{2105, 2, 3, 0, 0, 0}, "050203_000000.bmp"}};
    for (const NameRow& row : rows) {
        EXPECT_EQ(snapshot_name(row.time), row.name);
    }
}

TEST_F(SnapshotTest, GoesIntoTheFolderAndSaysSo) {
    snapshot.Command1_Click();
    EXPECT_EQ(files.written, (Texts{"/pictures/261116_010937.bmp"}));
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text,
              "Snapshot saved to: \n/pictures" + separator + "261116_010937.bmp");
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::information);
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::ok);
    EXPECT_TRUE(choosers.saved.empty());
}

TEST_F(SnapshotTest, CompletesAFolderWithoutSeparatorOnce) {
    snapshot.Command1_Click();
    EXPECT_EQ(settings.snapshotpath, "/pictures" + separator);
    snapshot.Command1_Click();
    EXPECT_EQ(settings.snapshotpath, "/pictures" + separator);
    EXPECT_EQ(files.written.back(), "/pictures/261116_010937_2.bmp");
}

TEST_F(SnapshotTest, AFurtherOneOfTheSameSecondTakesTheNextFreeNameAndTellsIt) {
    files.files["/pictures/261116_010937.bmp"] = "another program's";
    files.files["/pictures/261116_010937_3.bmp"] = "one of yesteryear";
    for (int times = 0; times < 3; ++times) {
        snapshot.Command1_Click();
    }
    EXPECT_EQ(files.written,
              (Texts{"/pictures/261116_010937_2.bmp", "/pictures/261116_010937_4.bmp",
                     "/pictures/261116_010937_5.bmp"}));
    EXPECT_EQ(files.files["/pictures/261116_010937.bmp"], "another program's");
    EXPECT_EQ(files.files["/pictures/261116_010937_3.bmp"], "one of yesteryear");
    EXPECT_EQ(boxes.shown[1].text,
              "Snapshot saved to: \n/pictures" + separator + "261116_010937_4.bmp");
}

/// The texts of `lines`, those of one line parted by bars.
Texts texts_of(const std::vector<TextLine>& lines) {
    Texts texts;
    for (const TextLine& line : lines) {
        std::string text;
        for (const PictureText& piece : line) {
            text += (text.empty() ? "" : " | ") + piece.text;
        }
        texts.push_back(text);
    }
    return texts;
}

TEST_F(SnapshotTest, TheDialogOffersOtherKindsBehindTheBitmap) {
    settings.snapshotdialog = true;
    snapshot.Command1_Click();
    EXPECT_EQ(choosers.saved.at(0).filter,
              "Bitmap (*.BMP)|*.bmp|All Files (*.*)|*.*|PNG (*.PNG)|*.png|"
              "Bitmap with Scales (*.BMP)|*.bmp|PNG with Scales (*.PNG)|*.png|"
              "PNG, as on the screen (*.PNG)|*.png|SVG (*.SVG)|*.svg");
}

TEST_F(SnapshotTest, WithScalesTheBitmapHasThemBelowThePlotAndWithoutItHasNot) {
    settings.snapshotdialog = true;
    for (const std::size_t kind : {0U, 1U, 3U}) {
        choosers.kind = kind;
        choosers.answers = {"/mine.bmp"};
        snapshot.Command1_Click();
        const bool scaled = kind == 3;
        const auto lines = scaled ? static_cast<int>(coder.lines.size()) : 0;
        const auto height = static_cast<std::size_t>(540 + 10 * lines);
        EXPECT_EQ(files.files["/mine.bmp"].size(), 54U + height * 2116U) << kind;
    }
    choosers.kind = 4;
    choosers.answers = {"/mine.png"};
    snapshot.Command1_Click();
    EXPECT_GT(coder.pictures.back().height(), 540);
    choosers.kind = 2;
    choosers.answers = {"/mine.png"};
    snapshot.Command1_Click();
    EXPECT_EQ(coder.pictures.back().height(), 540);
}

TEST_F(SnapshotTest, AsOnTheScreenItHasTheSizeThatIsShownAndOtherwiseTheNatural) {
    settings.snapshotdialog = true;
    picture.set_scale(PlotScale(1.9));
    choosers.kind = 5;
    choosers.answers = {"/mine.png"};
    snapshot.Command1_Click();
    // 61 and 38 pixels of margin: 32 and 20 times 1.9; 13 below, 7 times 1.9.
    EXPECT_EQ(coder.pictures.back().width(), 61 + 1218 + 61);
    EXPECT_EQ(coder.pictures.back().height(), 38 + 975 + 13);
    EXPECT_EQ(coder.pictures.back().at(61 + 600, 38 + 190), yellow); // (100 + 0.5) * 1.9 = 190.95
    choosers.kind = 2;
    choosers.answers = {"/mine.png"};
    snapshot.Command1_Click();
    EXPECT_EQ(coder.pictures.back().width(), 705);
    EXPECT_EQ(coder.pictures.back().at(32 + 300, 20 + 100), yellow);
}

TEST_F(SnapshotTest, AsOnTheScreenItIsWhatTheWindowShowsAtTheClick) {
    settings.snapshotdialog = true;
    settings.snapshotinvert = true;
    Surface screen(9, 7);
    screen.at(8, 6) = yellow;
    snapshot.show_by([&screen] { return screen; });
    choosers.on_ask = [&screen] { screen.at(8, 6) = white; };
    choosers.kind = 5;
    choosers.answers = {"/mine.png"};
    snapshot.Command1_Click();
    EXPECT_EQ(coder.pictures.back().width(), 9);
    EXPECT_EQ(coder.pictures.back().height(), 7);
    EXPECT_EQ(coder.pictures.back().at(8, 6), pixel_of(rgb(0, 0, 255)));
    choosers.kind = 2;
    choosers.answers = {"/mine.png"};
    snapshot.Command1_Click();
    EXPECT_EQ(coder.pictures.back().width(), 705) << "the plain kind stays as it is";
}

TEST_F(SnapshotTest, AnSvgHasGraticuleTracesCursorsMarkersAndScalesAsVectors) {
    settings.snapshotdialog = true;
    cursors.cursormode = cursor_mode::voltage_1;
    panel.channel[0].text.set_caption("<1>");
    panel.channel[0].text.mark(100); // its top at 113, its left at 17
    channels[0].scale = 0.5;         // half a row a code: 100.5
    samples[0].raw[7] = zero_volt_code + 311;
    picture.refresh(ch1, 7);
    choosers.answers = {"/mine.SVG"};
    snapshot.Command1_Click();
    const std::string& svg = files.files["/mine.SVG"];
    const auto has = [&svg](const char* text) { return svg.find(text) != std::string::npos; };
    EXPECT_TRUE(svg.starts_with("<?xml"));
    EXPECT_TRUE(has("L6,100L7,100.5L8,100")) << svg.substr(0, 3000);
    EXPECT_TRUE(has("stroke=\"#ffff00\""));
    EXPECT_TRUE(has("M0,192L640,192")) << "cursor 1 is solid";
    EXPECT_TRUE(has("M0,320L640,320\" fill=\"none\" stroke=\"#ffff80\" stroke-dasharray"));
    EXPECT_TRUE(has("M320,252.5v7")) << "a tick of the graticule";
    // No further, for programs that do not cut off what sticks out.
    EXPECT_TRUE(has("M64,-0.5v4") && has("M64,508.5v4")) << "ticks at top and bottom";
    EXPECT_TRUE(has("<text x=\"20\" y=\"124\" fill=\"#ffff00\">&lt;1&gt;</text>"));
    // In columns of 170 from the plot's edge on, as below a bitmap.
    EXPECT_TRUE(has("<text x=\"202\" y=\"554\" fill=\"#ffffff\">2026-11-16 01:09:37</text>"));
    EXPECT_TRUE(has("<text x=\"372\" y=\"574\" fill=\"#ffff00\">Offset"));
    EXPECT_FALSE(has("stroke=\"#80dcff\"")) << "CH2 is off";
    settings.snapshotinvert = true;
    choosers.answers = {"/other.svg"};
    snapshot.Command1_Click();
    EXPECT_NE(files.files["/other.svg"].find("stroke=\"#0000ff\""), std::string::npos);
}

TEST_F(SnapshotTest, AnSvgHasDotsTimeCursorsMarksTriggerLevelAndReadOutsToo) {
    settings.snapshotdialog = 1;
    panel.eyeon.set_checked(true);
    cursors.cursormode = cursor_mode::time_2;
    panel.centerfr.set_visible(true);
    panel.centerfr.set_caption("dT & f");
    panel.ltp2.set_visible(true);
    panel.trigsource.set_entries({"TRIG1"});
    panel.trigsource.set_index(0);
    acquisition.holdoff = true;
    trigger.saved_trigpos[0] = zero_volt_code;
    channels[0].pos = 256;
    panel.check1.set_checked(true);
    panel.measurement[0].annotate.put_checked(true);
    const auto saved = [this](MarkKind kind, AnnotationGeometry mark) {
        marks.kind[0][ch1] = kind;
        marks.mark[ch1].fill(mark);
        picture.draw(draw_flags::all);
        choosers.answers = {"/mine.svg"};
        snapshot.Command1_Click();
        return files.files["/mine.svg"];
    };
    std::string svg = saved(MarkKind::lines, {{{1, 40}, {639, 40}}});
    const auto has = [&svg](const char* text) { return svg.find(text) != std::string::npos; };
    EXPECT_TRUE(has("M6.5,100h1M7.5,100h1")) << "two dots of the trace";
    EXPECT_TRUE(has("M192,0L192,512\" fill=\"none\" stroke=\"#ffff80\" stroke-dasharray"));
    EXPECT_TRUE(has("M448,0L448,512\" fill=\"none\" stroke=\"#ffff80\"/>")) << "cursor 2 is solid";
    EXPECT_TRUE(has("M0,256L640,256")) << "the trigger level, 0 V";
    EXPECT_TRUE(has("M1,40L639,40")) << "a line of the marks";
    EXPECT_TRUE(has(">dT &amp; f</text>"));
    EXPECT_TRUE(has("h9l-4.5,6z")) << "the mark of the trigger's moment";
    svg = saved(MarkKind::dots, {{{60, 70}, {68, 78}}});
    EXPECT_TRUE(has("<circle cx=\"63.5\" cy=\"73.5\" r=\"4\""));
}

TEST_F(SnapshotTest, AnUnknownEndingIsFollowedByThatOfTheKind) {
    settings.snapshotdialog = true;
    const auto saved = [this](std::size_t kind, const char* name) {
        choosers.kind = kind;
        choosers.answers = {name};
        snapshot.Command1_Click();
        return files.written.back();
    };
    EXPECT_EQ(saved(6, "/pictures/mine.txt"), "/pictures/mine.txt.svg");
    EXPECT_TRUE(files.files["/pictures/mine.txt.svg"].starts_with("<?xml"));
    EXPECT_EQ(saved(5, "/pictures/v1.6"), "/pictures/v1.6.png");
    EXPECT_EQ(saved(3, "/pictures/v1.6"), "/pictures/v1.6.bmp");
    EXPECT_TRUE(files.files["/pictures/v1.6.bmp"].starts_with("BM"));
    // The user was not asked whether that file may be overwritten.
    EXPECT_EQ(saved(6, "/pictures/mine.txt"), "/pictures/mine.txt_2.svg");
    // An ending that is known says what the file is, and bitmaps go by any name.
    EXPECT_EQ(saved(6, "/pictures/mine.bmp"), "/pictures/mine.bmp");
    EXPECT_TRUE(files.files["/pictures/mine.bmp"].starts_with("BM"));
    EXPECT_EQ(saved(0, "/pictures/mine.svg"), "/pictures/mine.svg");
    EXPECT_TRUE(files.files["/pictures/mine.svg"].starts_with("<?xml"));
    EXPECT_EQ(saved(1, "/pictures/any.thing"), "/pictures/any.thing");
    EXPECT_TRUE(files.files["/pictures/any.thing"].starts_with("BM"));
}

// Points 1 to 639, moved by 40 units: nothing of them may lie beyond the edges.
TEST_F(SnapshotTest, AnSvgEndsTracesAtTheEdgesOfThePlot) {
    settings.snapshotdialog = true;
    const auto saved = [this](int shift) {
        channels[0].delaypts = shift;
        picture.refresh(ch1, 0);
        choosers.answers = {"/mine.svg"};
        snapshot.Command1_Click();
        return files.files["/mine.svg"];
    };
    const std::string straight = saved(0);
    EXPECT_NE(straight.find("M1,100L2,100"), std::string::npos) << "as it is";
    std::string svg = saved(40);
    EXPECT_NE(svg.find("M0,100L1,100"), std::string::npos) << svg.substr(0, 900);
    EXPECT_EQ(svg.find("M-"), svg.find("M-0.5")) << "only ticks of the graticule";
    svg = saved(-40);
    EXPECT_NE(svg.find("L640,100\""), std::string::npos);
    EXPECT_EQ(svg.find("L641,"), std::string::npos);
    panel.eyeon.set_checked(true);
    svg = saved(-40);
    EXPECT_NE(svg.find("M639.5,100h1\""), std::string::npos);
}

TEST_F(SnapshotTest, AnSvgNumbersTheCursorLines) {
    settings.snapshotdialog = true;
    choosers.answers = {"/mine.svg"};
    cursors.cursormode = cursor_mode::voltage_1;
    snapshot.Command1_Click();
    // Right of the plot, which ends at 673, and of the trigger's marker of 14; 11 below 7 above the
    // rows 192 and 320 of the plot, which begins at 20.
    const std::string* svg = &files.files["/mine.svg"];
    EXPECT_NE(svg->find("<text x=\"688\" y=\"216\""), std::string::npos) << *svg;
    EXPECT_NE(svg->find("<text x=\"696\" y=\"344\""), std::string::npos);
    cursors.cursormode = cursor_mode::time_2;
    choosers.answers = {"/time.svg"};
    snapshot.Command1_Click();
    // Left of column 192 and right of column 448 of the plot, which begins at 32.
    svg = &files.files["/time.svg"];
    EXPECT_NE(svg->find("<text x=\"216\" y=\"15\""), std::string::npos);
    EXPECT_NE(svg->find("<text x=\"481\" y=\"15\""), std::string::npos);
    EXPECT_NE(svg->find(">2</text>"), std::string::npos);
}

TEST_F(SnapshotTest, TheScalesAreThoseOfTheClickAndInItsColours) {
    panel.seltimediv.set_entries({"20ns/div", "10ns/div"});
    panel.seltimediv.set_index(0);
    for (ChannelControls& channel : panel.channel) {
        channel.vdiv.set_entries({"0.1V"});
        channel.vdiv.set_index(0);
        channel.enable.set_checked(true);
        channel.vdivtext.set_caption("0.1V (inv)");
    }
    panel.channel[1].hor_delay.set_caption("Delay:  500ps");
    panel.check1.set_checked(true);
    panel.measurement[0].label.set_caption("Freq");
    panel.measurement[0].ch1.set_caption("10.00MHz");
    panel.measurement[0].ch2.set_caption("---");
    panel.measurement[2].label.set_caption("Vpp");
    panel.measurement[2].ch1.set_caption("100.0mV");
    panel.measurement[1].label.set_caption("Vmean");
    panel.measurement[1].ch2.set_caption("1.500V");
    ColourUpdate(panel, colours, picture).recolour_panel();
    settings.snapshotdialog = true;
    choosers.on_ask = [this] { panel.seltimediv.set_index(1); };
    snapshot.Command1_Click();
    const std::string offset = "Offset: " + panel.channel[0].ofset.caption();
    EXPECT_EQ(texts_of(coder.lines),
              (Texts{"20ns/div | 2026-11-16 01:09:37", "CH1 | 0.1V/div (inv) | " + offset,
                     "CH2 | 0.1V/div (inv) | " + offset + " | Delay:  500ps",
                     "Freq | 10.00MHz | ---", "Vmean |  | 1.500V", "Vpp | 100.0mV"}));
    EXPECT_EQ(coder.lines[0][0].colour, rgb(255, 255, 255));
    EXPECT_EQ(coder.lines[1][0].colour, rgb(255, 255, 0));
    EXPECT_EQ(coder.lines[2][2].colour, rgb(128, 220, 255));
    EXPECT_EQ(coder.lines[3][1].colour, rgb(255, 255, 0));
    panel.channel[1].enable.set_checked(false);
    panel.check1.set_checked(false);
    EXPECT_EQ(scale_lines(panel, {}).size(), 2U);
}

TEST_F(SnapshotTest, AFolderForgesNoLineOfTheMessageAndIsWrittenToAsItIs) {
    settings.snapshotpath = "/a\nSaved.\x1B/";
    snapshot.Command1_Click();
    EXPECT_EQ(files.written, (Texts{"/a\nSaved.\x1B/261116_010937.bmp"}));
    EXPECT_EQ(boxes.shown.at(0).text, "Snapshot saved to: \n/a\\x0aSaved.\\x1b/261116_010937.bmp");
    EXPECT_EQ(settings.snapshotpath, "/a\nSaved.\x1B/");
}

TEST_F(SnapshotTest, LeavesAFolderThatEndsInASeparator) {
    settings.snapshotpath = "/pictures/";
    snapshot.Command1_Click();
    EXPECT_EQ(settings.snapshotpath, "/pictures/");
    EXPECT_EQ(boxes.shown.back().text, "Snapshot saved to: \n/pictures/261116_010937.bmp");
}

#ifdef _WIN32
TEST_F(SnapshotTest, KnowsTheBackslashAsASeparator) {
    settings.snapshotpath = "C:\\pictures\\";
    snapshot.Command1_Click();
    EXPECT_EQ(boxes.shown.back().text, "Snapshot saved to: \nC:\\pictures\\261116_010937.bmp");
}
#else
TEST_F(SnapshotTest, KnowsTheBackslashAsALetter) {
    settings.snapshotpath = "/pictures\\";
    snapshot.Command1_Click();
    EXPECT_EQ(files.written.back(), "/pictures\\/261116_010937.bmp");
}
#endif

TEST_F(SnapshotTest, AFolderMayBeNamedInAnyLetters) {
    settings.snapshotpath = "/Bilder/M\xC3\xA4rz";
    snapshot.Command1_Click();
    EXPECT_EQ(files.written.back(), "/Bilder/M\xC3\xA4rz/261116_010937.bmp");
}

// The plot box: 705 by 540 pixels, the plot area from column 32 and row 20 on, and the background
// around it.
TEST_F(SnapshotTest, SavesTheWholePlotBox) {
    snapshot.Command1_Click();
    const std::string& file = files.files.at("/pictures/261116_010937.bmp");
    ASSERT_EQ(file.size(), 54U + 540U * 2116U);
    Golden golden(black);
    golden.graticule(pixel_of(rgb(92, 92, 92)));
    golden.across(1, 638, 100, yellow); // a line leaves its last pixel out
    for (int y = 0; y < 540; ++y) {
        for (int x = 0; x < 705; ++x) {
            const bool in_plot = x >= 32 && x < 32 + 641 && y >= 20 && y < 20 + 513;
            ASSERT_EQ(pixel_in(file, x, y), in_plot ? golden.at(x - 32, y - 20) : black)
                << x << ", " << y;
        }
    }
}

TEST_F(SnapshotTest, TheMarginHasTheBackgroundColour) {
    colours.background = rgb(1, 2, 3);
    ColourUpdate(panel, colours, picture).colorupdate();
    snapshot.Command1_Click();
    const std::string& file = files.files.at("/pictures/261116_010937.bmp");
    EXPECT_EQ(pixel_in(file, 0, 0), pixel_of(rgb(1, 2, 3)));
    EXPECT_EQ(pixel_in(file, 704, 539), pixel_of(rgb(1, 2, 3)));
    EXPECT_EQ(pixel_in(file, 40, 30), pixel_of(rgb(1, 2, 3)));
}

TEST_F(SnapshotTest, DrawsThePlotFirst) {
    set_flat(ch1, 200);
    snapshot.Command1_Click();
    const std::string& file = files.files.at("/pictures/261116_010937.bmp");
    EXPECT_EQ(pixel_in(file, 32 + 20, 20 + 200), yellow);
}

TEST_F(SnapshotTest, InvertedBlackBecomesWhiteAndYellowBlue) {
    settings.snapshotinvert = true;
    snapshot.Command1_Click();
    const std::string& file = files.files.at("/pictures/261116_010937.bmp");
    EXPECT_EQ(pixel_in(file, 32 + 20, 20 + 100), pixel_of(rgb(0, 0, 255)));
    EXPECT_EQ(pixel_in(file, 32 + 20, 20 + 105), white);
    EXPECT_EQ(pixel_in(file, 32, 20), pixel_of(rgb(163, 163, 163))) << "grid";
    EXPECT_EQ(pixel_in(file, 0, 0), white);
    EXPECT_EQ(at(20, 100), yellow) << "the picture itself stays";
}

TEST_F(SnapshotTest, AsksForTheNameWhenTold) {
    settings.snapshotdialog = true;
    choosers.answers = {"/elsewhere/mine.bmp"};
    snapshot.Command1_Click();
    ASSERT_EQ(choosers.saved.size(), 1U);
    EXPECT_EQ(choosers.saved[0].title, "Save Snapshot");
    EXPECT_TRUE(choosers.saved[0].filter.starts_with("Bitmap (*.BMP)|*.bmp|All Files (*.*)|*.*"));
    EXPECT_EQ(choosers.saved[0].default_name, "261116_010937.bmp");
    EXPECT_EQ(files.written, (Texts{"/elsewhere/mine.bmp"}));
    EXPECT_EQ(files.files.at("/elsewhere/mine.bmp").substr(0, 2), "BM");
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_EQ(settings.snapshotpath, "/pictures");
}

TEST_F(SnapshotTest, CancelledSavesNothingAndSaysNothing) {
    settings.snapshotdialog = true;
    choosers.answers = {std::nullopt};
    snapshot.Command1_Click();
    EXPECT_EQ(choosers.saved.size(), 1U);
    EXPECT_TRUE(files.written.empty());
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(SnapshotTest, ANameEndingInPngGetsThat) {
    settings.snapshotdialog = true;
    settings.snapshotinvert = true;
    for (const char* name : {"/a/one.png", "/a/two.PNG", "/a/three.Png"}) {
        choosers.answers = {name};
        snapshot.Command1_Click();
        EXPECT_EQ(files.files.at(name), "a PNG file") << name;
    }
    ASSERT_EQ(coder.pictures.size(), 3U);
    EXPECT_EQ(coder.pictures[0].width(), 705);
    EXPECT_EQ(coder.pictures[0].height(), 540);
    EXPECT_EQ(coder.pictures[0].at(0, 0), white);
}

TEST_F(SnapshotTest, AnyOtherNameGetsABitmap) {
    settings.snapshotdialog = true;
    for (const char* name : {"/a/png", "/a/x.png.bak", "/a/.png/x", "/a/x.jpg", "/a/plain"}) {
        choosers.answers = {name};
        snapshot.Command1_Click();
        EXPECT_EQ(files.files.at(name).substr(0, 2), "BM") << name;
    }
    EXPECT_TRUE(coder.pictures.empty());
}

TEST_F(SnapshotTest, AFailureIsToldWithItsReason) {
    files.refusal = "No space left on device";
    for (const bool dialog : {false, true}) {
        settings.snapshotdialog = dialog;
        choosers.answers = {"/elsewhere/mine.bmp"};
        snapshot.Command1_Click();
        EXPECT_EQ(boxes.shown.back().text, "Snapshot wasn't saved!\nError:No space left on device");
        EXPECT_EQ(boxes.shown.back().icon, MessageIcon::critical);
    }
    EXPECT_EQ(boxes.shown.size(), 2U);
    EXPECT_TRUE(files.written.empty());
}

TEST_F(SnapshotTest, APictureThatCannotBeEncodedReplacesNothing) {
    settings.snapshotdialog = true;
    coder.bytes.clear();
    choosers.answers = {"/a/one.png"};
    snapshot.Command1_Click();
    EXPECT_TRUE(files.written.empty());
    EXPECT_EQ(boxes.texts(),
              (Texts{"Snapshot wasn't saved!\nError:The picture could not be encoded"}));
}

} // namespace
} // namespace kv408::test
