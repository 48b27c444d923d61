// The mask window: what it tests, what it says, and what the first hit brings about.

#include "export/mask_dialog.h"

#include <cmath>

#include <gtest/gtest.h>

#include "analysis/mask_file.h"
#include "collected_signal.h"
#include "host/shown_text.h"
#include "host/system_files.h"

namespace kv408 {
namespace {

/// Two bands about a trace of two levels, in time and volts.
constexpr std::string_view bands = "name: Bands\n"
                                   "x: ps\n"
                                   "y: mV\n"
                                   "hit ratio: 0\n"
                                   "polygons:\n"
                                   "  - name: above\n"
                                   "    points:\n"
                                   "      - [2000, 300]\n"
                                   "      - [6000, 300]\n"
                                   "      - [6000, 500]\n"
                                   "      - [2000, 500]\n"
                                   "  - points:\n"
                                   "      - [2000, -300]\n"
                                   "      - [6000, -300]\n"
                                   "      - [6000, -500]\n"
                                   "      - [2000, -500]\n";

/// A triangle in the middle of an eye.
constexpr std::string_view in_an_eye =
    "name: Hexagon\nx: ui\ny: amplitude\npolygons:\n  - points:\n      - [0.3, 0.5]\n"
    "      - [0.5, 0.3]\n      - [0.7, 0.5]\n";

struct MaskDialogTest : testing::Test {
    MaskDialogTest() {
        signal.files.files["/program/masks/hexagon-40.yaml"] = "name: Hexagon, 40 %\nx: ui\n";
        signal.files.files["/own/bands.yaml"] = bands;
    }

    /// 200 mV to 4000 ps and -200 mV from there on; with a spike to `peak` at 3000 to 3090 ps.
    [[nodiscard]] static CollectedSignal::Millivolts step(double peak = 200.0) {
        return [peak](double time) {
            return time >= 3000.0 && time < 3095.0 ? peak : time < 4000.0 ? 200.0 : -200.0;
        };
    }
    void take(int sweeps, const CollectedSignal::Millivolts& what) {
        for (int count = 0; count < sweeps; ++count) {
            signal.take(1, what);
            dialog.tick_over();
        }
    }
    [[nodiscard]] const MaskControls& controls() { return dialog.controls(); }
    [[nodiscard]] std::string value(std::string_view name) {
        return line_beside(controls().lblMaskNames, controls().lblMaskValues, name);
    }

    CollectedSignal signal;
    std::optional<DensityMarks> marks;
    int beeps = 0;
    int stops = 0;
    int snapshots = 0;
    EyeDialog eye{signal.density, signal.clock, [](const std::optional<DensityMarks>&) {}};
    MaskDialog dialog{signal.density, eye,
                      MaskDialog::Host{.machine = {.clock = signal.clock,
                                                   .boxes = signal.boxes,
                                                   .files = signal.files,
                                                   .choosers = signal.choosers},
                                       .program = "/program",
                                       .actions = {.clock = signal.clock,
                                                   .beep = [this] { ++beeps; },
                                                   .stop = [this] { ++stops; },
                                                   .snapshot =
                                                       [this] {
                                                           return [this] {
                                                               ++snapshots;
                                                               return SavedFile{};
                                                           };
                                                       }}},
                      [this](std::optional<DensityMarks> shown) { marks = std::move(shown); }};
};

TEST_F(MaskDialogTest, PassesFailsAndCountsByPolygon) {
    dialog.open();
    dialog.load("/own/bands.yaml");
    EXPECT_EQ(controls().cmbMask.text(), "bands.yaml: Bands");
    take(10, step());
    dialog.refresh();
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "PASS");
    EXPECT_EQ(controls().lblMaskFound.caption(), "Bands, in time and volts");
    // Points 100 to 500, each hit once a sweep.
    EXPECT_EQ(value("Samples"), "4010");
    EXPECT_EQ(value("Hits"), "0");
    // The upper band's lower edge may come down to 200 mV, half of the amplitude's half.
    const std::string margin = value("Margin");
    EXPECT_NEAR(std::stod(margin), 50.0, 0.6) << margin;
    ASSERT_TRUE(marks);
    EXPECT_EQ(marks->lines.size(), 8U) << "two of four edges";
    EXPECT_DOUBLE_EQ(marks->lines[0].from.x, 100.0);
    EXPECT_DOUBLE_EQ(marks->lines[0].from.y, 2048.0 + 1200.0);
    take(2, step(350.0));
    dialog.refresh();
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "FAIL");
    EXPECT_EQ(value("Hits in above"), "20");
    EXPECT_EQ(value("Hits in 2"), "0");
    EXPECT_EQ(value("Hit ratio"), "0.004156"); // 20 of 12 * 401
    EXPECT_LT(std::stod(value("Margin")), 0.0);
    dialog.controls().txtMaskRatio.set_text("0.005");
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "PASS");
    dialog.controls().txtMaskRatio.set_text("2");
    EXPECT_TRUE(controls().txtMaskRatio.faulty());
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "FAIL") << "the mask's own ratio again";
    EXPECT_EQ(dialog.table().rfind("Value\tCH1\tUnit\tRemark\nHits\t20\t", 0), 0U)
        << dialog.table();
    dialog.close();
    EXPECT_FALSE(marks);
}

TEST_F(MaskDialogTest, TheFirstHitStopsBeepsOrTakesASnapshot) {
    dialog.open();
    dialog.load("/own/bands.yaml");
    dialog.controls().cmbMaskAction.set_index(2);
    take(15, step());
    EXPECT_EQ(stops, 0);
    take(1, step(350.0));
    EXPECT_EQ(stops, 1) << "with the sweep that has hit it, not a second later";
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "FAIL");
    take(15, step(350.0));
    EXPECT_EQ(stops, 1) << "the first one only";
    signal.density.clear();
    take(15, step());
    take(3, step(350.0));
    EXPECT_EQ(stops, 2) << "the first one of what was begun anew";
    dialog.controls().cmbMaskAction.set_index(1);
    take(2, step());
    EXPECT_EQ(beeps, 1) << "what was collected has hits";
    dialog.controls().cmbMaskAction.set_index(3);
    signal.clock.advance(std::chrono::seconds(1));
    take(2, step());
    dialog.wait_until_written();
    EXPECT_EQ(snapshots, 1);
    dialog.close();
    dialog.controls().cmbMaskAction.set_index(2);
    take(3, step(350.0));
    EXPECT_EQ(stops, 2) << "it is closed";
}

TEST_F(MaskDialogTest, AClosedEyeCountsAsAHit) {
    signal.files.files["/program/masks/hexagon-40.yaml"] = in_an_eye;
    dialog.open();
    dialog.controls().cmbMaskAction.set_index(2);
    // Random data of 800 ps a bit, whose edges come at any time.
    synthetic::Chance chance(5);
    const CollectedSignal::Millivolts smeared = [&chance](double time) {
        const double late = time - 800.0 * chance.uniform();
        const double before = chance.coin() ? 200.0 : -200.0;
        const double after = chance.coin() ? 200.0 : -200.0;
        return before + (after - before) * synthetic::edge(std::remainder(late, 800.0), 600.0);
    };
    signal.take(1000, smeared); // so many that chance makes no gaps
    take(12, smeared);
    EXPECT_EQ(controls().lblMaskFound.caption(), "The eye is closed");
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "FAIL");
    EXPECT_EQ(stops, 1);
}

TEST_F(MaskDialogTest, SaysInWordsWhyNothingCanBeTested) {
    dialog.open();
    // The file above ends before its polygons.
    const std::string& found = controls().lblMaskFound.caption();
    const auto file = std::filesystem::path("/program/masks/hexagon-40.yaml").lexically_normal();
    EXPECT_EQ(found.rfind(shown_path(file) + ", line ", 0), 0U) << found;
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "NO RESULT");
    dialog.controls().cmbMask.set_index(3);
    EXPECT_EQ(found, "stm-1.yaml has not been found beside the program");
    dialog.load("/own/bands.yaml");
    EXPECT_EQ(found, "Nothing has been collected");
    signal.take(3, step());
    signal.files.files["/own/later.yaml"] =
        "name: Later\nx: ns\ny: mV\npolygons:\n  - points:\n      - [20, 0]\n      - [30, 0]\n"
        "      - [30, 9]\n";
    dialog.load("/own/later.yaml");
    EXPECT_EQ(found, "The mask lies beside the screen: no hit has come in its time");
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "NO RESULT");
    signal.files.files["/program/masks/hexagon-40.yaml"] = in_an_eye;
    dialog.controls().cmbMask.set_index(0);
    EXPECT_EQ(found, "Two crossings have to be on the screen") << "one edge is no eye";
    // A flat line within bands in time and volts passes; only its margin cannot be told.
    signal.density.clear();
    signal.take(3, [](double) { return 50.0; });
    dialog.load("/own/bands.yaml");
    EXPECT_EQ(controls().lblMaskVerdict.caption(), "PASS");
    EXPECT_EQ(value("Margin"), "The trace does not go between two levels");
}

TEST_F(MaskDialogTest, TellsWhatIsWrongWithAFile) {
    dialog.open();
    signal.files.files["/own/bad.yaml"] = "name: Bad\nx: parsecs\n";
    signal.choosers.answers = {"/own/bad.yaml", "/own/none.yaml", std::nullopt, "/own/bands.yaml"};
    for (int click = 0; click < 3; ++click) {
        dialog.controls().cmdMaskLoad.click();
    }
    ASSERT_EQ(signal.boxes.shown.size(), 2U);
    EXPECT_EQ(signal.boxes.shown[0].text.rfind("/own/bad.yaml could not be loaded: line 2: ", 0),
              0U)
        << signal.boxes.shown[0].text;
    EXPECT_EQ(signal.boxes.shown[1].text,
              "/own/none.yaml could not be loaded: No such file or directory");
    EXPECT_EQ(controls().cmbMask.index(), 0);
    EXPECT_FALSE(dialog.has_loaded());
    dialog.controls().cmdMaskLoad.click();
    EXPECT_EQ(controls().cmbMask.index(), 6);
    // The one before gives its place up.
    dialog.load("/own/bands.yaml");
    EXPECT_EQ(controls().cmbMask.entries().size(), 7U);
}

TEST(ShippedMaskNames, AreThoseInTheirFiles) {
    SystemFiles files;
    for (std::size_t index = 0; index < shipped_masks.size(); ++index) {
        std::string text;
        const auto path = std::filesystem::path(KV408_SOURCE_ROOT) / "packaging" / "masks" /
                          shipped_masks.at(index);
        ASSERT_EQ(files.read(path, text).status, FileStatus::done) << path;
        const auto read = mask_in(text);
        ASSERT_TRUE(std::holds_alternative<Mask>(read)) << path;
        EXPECT_EQ(std::get<Mask>(read).name, shipped_mask_names.at(index));
    }
}

} // namespace
} // namespace kv408
