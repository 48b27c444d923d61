// Colours, settings and snapshots in the whole program, over running sweeps.

#include "display/settings_dialog.h"

#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "scope/program.h"

namespace kv408 {
namespace {

using Texts = std::vector<std::string>;

/// The program on its signals, sweeping.
struct SweepingBesideSettings : Program {
    SweepingBesideSettings() {
        EXPECT_TRUE(scope.start());
        ticks(10);
        EXPECT_EQ(status(), "Running");
    }

    SettingsControls& settings() { return scope.settings_dialog().controls(); }

    void act(const std::function<void()>& action) { scope.act(action); }

    void open_settings() {
        act([this] { scope.panel().mnusettings.click(); });
    }

    /// Edits item `item` to `colour` with the sliders.
    void edit(std::size_t item, Colour colour) {
        act([&] { settings().optcolor[item].choose(); });
        act([&] { settings().slrgb[0].set_value(red_of(colour)); });
        act([&] { settings().slrgb[1].set_value(green_of(colour)); });
        act([&] { settings().slrgb[2].set_value(blue_of(colour)); });
    }

    [[nodiscard]] std::ptrdiff_t pixels(Colour colour) {
        const auto all = scope.picture().surface().pixels();
        return std::count(all.begin(), all.end(), pixel_of(colour));
    }
};

constexpr Colour violet = rgb(200, 10, 220);

TEST(LiveColours, ChangeThePictureAtOnceWhileItSweeps) {
    SweepingBesideSettings program;
    program.open_settings();
    program.act([&] { program.settings().chkautoupd.set_checked(true); });
    const std::ptrdiff_t yellow = program.pixels(rgb(255, 255, 0));
    EXPECT_GT(yellow, 639);
    program.edit(0, violet);
    EXPECT_EQ(program.pixels(violet), yellow);
    EXPECT_EQ(program.pixels(rgb(255, 255, 0)), 0);
    program.ticks(8);
    EXPECT_GT(program.pixels(violet), 600) << "the next sweeps have it too";
    EXPECT_EQ(program.pixels(rgb(255, 255, 0)), 0);
    const std::ptrdiff_t grid = program.pixels(rgb(92, 92, 92));
    program.edit(4, rgb(1, 2, 3));
    EXPECT_EQ(program.pixels(rgb(1, 2, 3)), grid);
    program.edit(2, rgb(60, 60, 60));
    EXPECT_EQ(program.pixels(rgb(0, 0, 0)), 0);
    EXPECT_GT(program.pixels(rgb(60, 60, 60)), 300'000);
}

TEST(LiveColours, CancelBringsTheVeryPictureBack) {
    SweepingBesideSettings program;
    program.act([&] { program.scope.panel().cmdstop.click(); });
    const auto before = program.scope.picture().surface();
    program.open_settings();
    program.act([&] { program.settings().chkautoupd.set_checked(true); });
    for (std::size_t item = 0; item < colour_items; ++item) {
        program.edit(item, rgb(static_cast<std::uint8_t>(30 * item + 1), 77, 99));
    }
    const auto edited = program.scope.picture().surface().pixels();
    EXPECT_FALSE(std::equal(edited.begin(), edited.end(), before.pixels().begin()));
    program.act([&] { program.settings().cmdcancel.click(); });
    const auto after = program.scope.picture().surface().pixels();
    EXPECT_TRUE(std::equal(after.begin(), after.end(), before.pixels().begin()));
}

/// Ticks of a run in which `between` is done after each, and what went over the wire.
std::vector<std::vector<int>>
frames_with(const char* time_div, int ticks,
            const std::function<void(SweepingBesideSettings&, int)>& between) {
    SweepingBesideSettings program;
    program.choose(program.scope.panel().seltimediv, time_div);
    program.open_settings();
    for (int tick = 0; tick < ticks; ++tick) {
        program.ticks(1);
        between(program, tick);
    }
    return frames_of(program);
}

TEST(LiveColours, NothingOfItGoesOverTheWire) {
    const std::pair<const char*, int> rows[] = {{"20ns/div", 24}, {"1us/div", 8}};
    for (const auto& [time_div, count] : rows) {
        const auto quiet = frames_with(time_div, count, [](SweepingBesideSettings&, int) {});
        std::mt19937 random(408);
        const auto busy =
            frames_with(time_div, count, [&random](SweepingBesideSettings& program, int tick) {
                SettingsControls& settings = program.settings();
                switch (tick % 6) {
                case 0:
                    program.act([&] { settings.chkautoupd.set_checked(tick % 12 == 0); });
                    break;
                case 1:
                    program.act([&] { settings.cmdsetdefault.click(); });
                    break;
                case 2:
                    program.act([&] { settings.cmdok.click(); });
                    program.open_settings();
                    break;
                case 3:
                    program.act([&] { program.scope.panel().snapshot.click(); });
                    break;
                default:
                    program.edit(random() % colour_items,
                                 Colour{static_cast<std::uint32_t>(random()) & 0xFFFFFFU});
                    break;
                }
            });
        EXPECT_GT(quiet.size(), 20U);
        EXPECT_EQ(busy, quiet) << time_div;
    }
}

// Edits in the middle of a point-by-point pass, between one point and the next.
TEST(LiveColours, AlsoInTheMiddleOfAPass) {
    SweepingBesideSettings program;
    program.choose(program.scope.panel().seltimediv, "10us/div");
    program.open_settings();
    program.act([&] { program.settings().chkautoupd.set_checked(true); });
    int edits = 0;
    program.messages.on_process = [&](int count) {
        if (count % 50 == 0 && program.state() == "scope") {
            program.edit(0, rgb(static_cast<std::uint8_t>(count % 256), 10, 220));
            ++edits;
        }
    };
    program.ticks(10);
    program.messages.on_process = {};
    EXPECT_GT(edits, 3);
    EXPECT_GT(program.pixels(program.scope.parts().colours.ch1), 300);
    EXPECT_TRUE(program.boxes.shown.empty());
    EXPECT_FALSE(program.scope.ended());
}

// The step from yellow to black at depth 9 is 25: the oldest generation has 255 - 9 * 25 = 30 left.
// At depth 3 it is 63, and 129 is seen only there.
TEST(PersistenceDepth, TakesEffectWithOk) {
    SweepingBesideSettings program;
    program.simulation.bench().sources[0].noise_mv = 20.0;
    // With one channel on, each sweep moves the history on once.
    program.act([&] { program.channel(1).enable.set_checked(false); });
    program.act([&] { program.scope.panel().persist.set_checked(true); });
    program.ticks(100);
    EXPECT_GT(program.pixels(rgb(129, 129, 0)), 50);
    EXPECT_EQ(program.pixels(rgb(30, 30, 0)), 0);
    program.open_settings();
    program.act([&] { program.settings().persist.set_value(9); });
    program.ticks(20);
    EXPECT_EQ(program.pixels(rgb(30, 30, 0)), 0) << "not before OK";
    program.act([&] { program.settings().cmdok.click(); });
    program.ticks(100);
    EXPECT_EQ(program.pixels(rgb(129, 129, 0)), 0);
    EXPECT_GT(program.pixels(rgb(30, 30, 0)), 50);
}

TEST(SettingsDialog, OfAnEndedProgramDoesNothing) {
    SweepingBesideSettings program;
    program.open_settings();
    int closed = 0;
    program.scope.settings_dialog().on_close([&] { ++closed; });
    program.scope.close();
    EXPECT_TRUE(program.scope.ended());
    EXPECT_EQ(closed, 1);
    // What a closing window still does finds nobody in.
    program.act([&] { program.settings().cmdok.click(); });
    EXPECT_EQ(closed, 1);
}

TEST(SnapshotOfTheProgram, HasTheSweepingPictureInIt) {
    SweepingBesideSettings program;
    program.clock.set_local_time(
        {.year = 2026, .month = 11, .day = 16, .hour = 1, .minute = 9, .second = 37});
    program.open_settings();
    program.act([&] {
        program.settings().txtsnapshotpath.set_text("/pictures/");
        program.settings().cmdok.click();
    });
    program.files.written.clear();
    program.act([&] { program.scope.panel().snapshot.click(); });
    ASSERT_EQ(program.files.written, (Texts{"/pictures/261116_010937.bmp"}));
    EXPECT_EQ(program.boxes.texts(), (Texts{"Snapshot saved to: \n/pictures/261116_010937.bmp"}));
    // Of the rows of 2116 bytes the bottom one comes first; the plot area begins in column 32 and
    // row 20 of the plot box, 540 rows high.
    const std::string& file = program.files.files.at("/pictures/261116_010937.bmp");
    const Surface& picture = program.scope.picture().surface();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const std::size_t at = 54U + static_cast<std::size_t>(539 - y - 20) * 2116U +
                                   static_cast<std::size_t>(x + 32) * 3U;
            const Pixel pixel = picture.at(x, y);
            ASSERT_EQ(static_cast<std::uint8_t>(file.at(at)), pixel & 0xFFU);
            ASSERT_EQ(static_cast<std::uint8_t>(file.at(at + 1)), pixel >> 8U & 0xFFU);
            ASSERT_EQ(static_cast<std::uint8_t>(file.at(at + 2)), pixel >> 16U & 0xFFU);
        }
    }
}

// While the file dialog is open the timer ticks and the picture moves on; saved is what was there
// when the button was pressed.
TEST(SnapshotOfTheProgram, IsWhatWasSeenWhenTheButtonWasPressed) {
    SweepingBesideSettings program;
    program.open_settings();
    program.act([&] { program.settings().cmdok.click(); });
    program.act([&] { program.scope.panel().snapshot.click(); });
    const std::string before = program.files.files.at(program.files.written.back());
    program.open_settings();
    program.act([&] {
        program.settings().chksnapshotdialog.set_checked(true);
        program.settings().cmdok.click();
    });
    program.choosers.answers = {"/pictures/later.bmp"};
    program.choosers.on_ask = [&] {
        program.ticks(2);
        program.open_settings();
        program.act([&] { program.settings().chkautoupd.set_checked(true); });
        program.edit(0, violet);
    };
    program.act([&] { program.scope.panel().cmdstop.click(); });
    program.act([&] { program.scope.panel().snapshot.click(); });
    const std::string& saved = program.files.files.at("/pictures/later.bmp");
    EXPECT_GT(program.pixels(violet), 600);
    EXPECT_EQ(saved, before) << "a noise-free signal sweeps alike";
}

} // namespace
} // namespace kv408
