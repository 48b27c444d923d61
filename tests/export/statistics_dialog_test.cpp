#include "export/statistics_dialog.h"

#include <algorithm>
#include <thread>

#include <gtest/gtest.h>

#include "export/statistics_table.h"
#include "host/path_text.h"
#include "host/system_files.h"
#include "measure/measurement_rows.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/measurement_lines.h"
#include "support/temporary_folder.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

/// Of both channels.
constexpr std::size_t values = 2 * measurement_lines.size();

using namespace std::chrono_literals;

/// Index of the row that the lists call `name`.
std::size_t row_named(std::string_view name) {
    return static_cast<std::size_t>(measurement_row(name) - measurement_rows().data());
}

/// Sweeps of both channels whose results are set by hand, no edge on either.
struct StatisticsDialogTest : testing::Test {
    StatisticsDialogTest() {
        clock.set_local_time({2026, 11, 22, 14, 3, 5});
        for (std::size_t channel = 0; channel < 2; ++channel) {
            parts.at(channel).columns_per_second = 3.2e9;
            state.measresults.at(channel)[meas::rise] = -1.0;
            state.measresults.at(channel)[meas::fall] = -1.0;
        }
    }

    /// Takes the next sweep, measured as `state` is, and lets the tick end.
    void take() {
        take(&state);
        dialog.tick_over();
    }
    void take(StatisticsDialog::Measured measured) {
        Sweep sweep = {.number = ++number, .complete = true, .came = {true, true}, .channel = {}};
        for (std::size_t channel = 0; channel < 2; ++channel) {
            sweep.channel.at(channel) = std::make_shared<const ChannelSweep>(parts.at(channel));
        }
        clock.advance(100ms);
        dialog.sweep_complete(sweep, measured);
    }

    /// Opens the window, and takes sweeps until the results have settled.
    void open() {
        dialog.open();
        take();
        take();
    }

    /// A sweep in which VMax of CH1 is so many millivolts.
    void take_vmax(double millivolts) {
        state.measresults[0][meas::vmax] = millivolts;
        take();
    }

    [[nodiscard]] StatisticsCells cells(std::size_t channel, std::string_view name) const {
        return statistics_cells(dialog.statistics(), channel, row_named(name));
    }
    StatisticsControls& controls() { return dialog.controls(); }

    VirtualClock clock;
    FakeMessageBoxes boxes;
    SystemFiles files;
    FakeFileChoosers choosers;
    TemporaryFolder folder;
    std::array<ChannelSweep, 2> parts;
    MeasurementState state;
    std::uint64_t number = 0;
    int beeps = 0;
    int stops = 0;
    std::thread::id saved_by;
    StatisticsDialog dialog{{.clock = clock,
                             .boxes = boxes,
                             .files = files,
                             .choosers = choosers,
                             .origin = [] { return ExportOrigin{.version = "1.6", .serial = "S"}; },
                             .beep = [this] { ++beeps; },
                             .stop = [this] { ++stops; },
                             .snapshot =
                                 [this] {
                                     return [this] {
                                         saved_by = std::this_thread::get_id();
                                         return SavedFile{};
                                     };
                                 }}};
};

TEST_F(StatisticsDialogTest, ShowsWhatAHandMadeSeriesGives) {
    open();
    for (const double millivolts : {100.0, 200.0, 300.0, 400.0, 500.0}) {
        state.measresults[1][meas::rise] = millivolts > 300.0 ? 0.0 : -1.0;
        take_vmax(millivolts);
    }
    // Squared distances from the mean 300: 40000, 10000, 0, 10000, 40000 make 100000; the root of
    // a quarter of that is 158.1.
    EXPECT_EQ(cells(0, "VMax"), (StatisticsCells{"CH1 VMax", "500.0mV", "300.0mV", "158.1mV",
                                                 "100.0mV", "500.0mV", "5", "", ""}));
    EXPECT_EQ(cells(1, "tRise"),
              (StatisticsCells{"CH2 tRise", "", "", "", "", "", "0", "",
                               "3: no edge on the screen; 2: steeper than can be told"}));
    const std::string table = statistics_table(dialog.statistics());
    EXPECT_EQ(table.find("Value\tUnit\tPresent\tMean\tStd dev\tLeast\tGreatest\tCount\tOutside\t"
                         "no edge on the screen\tsteeper than can be told\n"
                         "CH1 VMax\tV\t0.5\t0.3\t0.158113883008\t0.1\t0.5\t5\t0\t0\t0\n"),
              0U);
    EXPECT_NE(table.find("CH2 tRise\ts\t\t\t\t\t\t0\t0\t3\t2\n"), std::string::npos);
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + values);
    dialog.refresh();
    EXPECT_EQ(controls().lblStatisticsState.caption(), "5 sweeps since 14:03:05");
}

TEST_F(StatisticsDialogTest, BeginsAnewByResetAndByAChangeOfTheSetUp) {
    open();
    take_vmax(100.0);
    take_vmax(100.0);
    EXPECT_EQ(dialog.trend(0, 0).points().size(), 2U);
    clock.set_local_time({2026, 11, 22, 14, 30, 0});
    controls().cmdStatisticsReset.click();
    EXPECT_EQ(controls().lblStatisticsState.caption(), "0 sweeps since 14:30:00");
    EXPECT_TRUE(dialog.trend(0, 0).points().empty());
    take_vmax(200.0);
    EXPECT_EQ(cells(0, "VMax")[statistics_column::mean], "200.0mV");
    parts[1].mv_per_division = 20.0;
    take();
    EXPECT_TRUE(dialog.trend(0, 0).points().empty());
    take();
    EXPECT_EQ(cells(0, "VMax")[statistics_column::count], "0") << "has not settled";
    take_vmax(300.0);
    EXPECT_EQ(cells(0, "VMax")[statistics_column::mean], "300.0mV");
    EXPECT_EQ(dialog.trend(0, 0).points().size(), 1U);
}

TEST_F(StatisticsDialogTest, ComputesNothingWhileItIsClosedAndTheLogIsOff) {
    take();
    take();
    take();
    EXPECT_EQ(dialog.statistics().sweeps(), 0U);
    open();
    take();
    EXPECT_EQ(dialog.statistics().sweeps(), 1U);
    dialog.close();
    take();
    EXPECT_EQ(dialog.statistics().sweeps(), 1U);
    dialog.open();
    EXPECT_EQ(dialog.statistics().sweeps(), 0U) << "sweeps are missing between";
}

TEST_F(StatisticsDialogTest, MeasuresByItselfWhileTheProgramDoesNot) {
    for (ChannelSweep& part : parts) {
        part.columns.mv.fill(250.0);
    }
    dialog.open();
    for (int sweep = 0; sweep < 3; ++sweep) {
        take(nullptr);
    }
    EXPECT_EQ(cells(1, "VMax")[statistics_column::mean], "250.0mV");
    take_vmax(100.0);
    EXPECT_EQ(cells(0, "VMax")[statistics_column::count], "0") << "the program measures again";
}

TEST_F(StatisticsDialogTest, IsShownAnewAtMostOnceASecondAndAlwaysInItsLastState) {
    open();
    int shown = 0;
    dialog.on_refresh([&shown] { ++shown; });
    for (int sweep = 0; sweep < 20; ++sweep) {
        take();
    }
    EXPECT_EQ(shown, 2);
    take();
    clock.advance(1s); // stopped
    dialog.tick_over();
    EXPECT_EQ(controls().lblStatisticsState.caption(), "21 sweeps since 14:03:05");
    dialog.close();
    shown = 0;
    for (int sweep = 0; sweep < 20; ++sweep) {
        take();
    }
    EXPECT_EQ(shown, 0);
}

TEST_F(StatisticsDialogTest, CountsAndColoursWhatLiesOutsideTheLimitsAsTyped) {
    open();
    controls().txtStatisticsHigh.set_text("0.25");
    controls().txtStatisticsLow.set_text(" 150 mV");
    for (const double millivolts : {149.0, 150.0, 250.0, 251.0}) {
        take_vmax(millivolts);
        EXPECT_EQ(is_outside(dialog.statistics(), 0, 0), millivolts < 150 || millivolts > 250);
    }
    EXPECT_EQ(cells(0, "VMax")[statistics_column::outside], "2");
    EXPECT_EQ(cells(0, "VMin")[statistics_column::outside], "");
    dialog.refresh();
    EXPECT_EQ(controls().lblStatisticsState.caption(),
              "4 sweeps since 14:03:05; outside last: CH1 VMax = 251.0mV in sweep 6");
    // What cannot be taken is marked and limits nothing.
    controls().txtStatisticsHigh.set_text("high");
    EXPECT_TRUE(controls().txtStatisticsHigh.faulty());
    EXPECT_FALSE(controls().txtStatisticsLow.faulty());
    EXPECT_FALSE(dialog.statistics().limits(0, 0).greatest);
    // Another value has limits of its own, and each comes back with its value.
    dialog.choose(1, row_named("tRise"));
    EXPECT_EQ(controls().txtStatisticsLow.text(), "");
    EXPECT_FALSE(controls().txtStatisticsHigh.faulty());
    controls().txtStatisticsLow.set_text("2.5ns");
    controls().cmbStatisticsColour.set_index(2);
    EXPECT_DOUBLE_EQ(*dialog.statistics().limits(1, row_named("tRise")).least, 2.5e-9);
    dialog.choose(0, 0);
    EXPECT_EQ(controls().txtStatisticsLow.text(), " 150 mV");
    EXPECT_EQ(controls().cmbStatisticsColour.text(), "Red");
    dialog.choose(1, row_named("tRise"));
    EXPECT_EQ(controls().cmbStatisticsColour.text(), "Violet");
    EXPECT_EQ(limit_in("3 MHz", MeasurementUnit::hertz), 3e6);
    EXPECT_EQ(limit_in("3 ns", MeasurementUnit::hertz), std::nullopt);
}

TEST_F(StatisticsDialogTest, StopsTheSweepOnceTheTickIsOver) {
    open();
    controls().txtStatisticsHigh.set_text("0.3");
    controls().cmbStatisticsAction.set_index(2);
    EXPECT_EQ(controls().cmbStatisticsAction.text(), "Stop");
    take_vmax(300.0);
    EXPECT_EQ(stops, 0);
    state.measresults[0][meas::vmax] = 301.0;
    take(&state);
    EXPECT_EQ(stops, 0) << "the sweep is still being taken";
    dialog.tick_over();
    EXPECT_EQ(stops, 1);
    dialog.tick_over();
    EXPECT_EQ(stops, 1);
}

TEST_F(StatisticsDialogTest, BeepsAndSavesSnapshotsOnceASecondOnAThreadOfTheirOwn) {
    open();
    controls().txtStatisticsHigh.set_text("0.3");
    controls().cmbStatisticsAction.set_index(1);
    dialog.choose(0, row_named("VMin"));
    controls().txtStatisticsHigh.set_text("-1");
    controls().cmbStatisticsAction.set_index(3);
    for (int sweep = 0; sweep < 11; ++sweep) {
        take_vmax(400.0);
    }
    EXPECT_EQ(beeps, 2);
    dialog.wait_until_written();
    EXPECT_NE(saved_by, std::thread::id());
    EXPECT_NE(saved_by, std::this_thread::get_id());
    dialog.refresh();
    EXPECT_NE(controls().lblStatisticsState.caption().find("; snapshots: 2"), std::string::npos);
    EXPECT_EQ(cells(0, "VMax")[statistics_column::outside], "11");
}

TEST_F(StatisticsDialogTest, ABeepWithEachSweepDoesNotKeepASnapshotFromBeingSaved) {
    open();
    controls().txtStatisticsHigh.set_text("0.3");
    controls().cmbStatisticsAction.set_index(1); // VMax beeps
    dialog.choose(0, row_named("VMean"));
    controls().txtStatisticsHigh.set_text("0.7");
    controls().cmbStatisticsAction.set_index(3);
    take_vmax(400.0);
    EXPECT_EQ(beeps, 1);
    state.measresults[0][meas::vmean] = 800.0;
    take(); // a tenth of a second later
    dialog.wait_until_written();
    EXPECT_NE(saved_by, std::thread::id());
}

/// The lines of the file at `path`.
std::vector<std::string> lines_of(const std::filesystem::path& path) {
    std::vector<std::string> lines;
    std::string text = content(path);
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
        lines.push_back(text.substr(0, end));
        text.erase(0, end + 1);
    }
    EXPECT_EQ(text, "") << "a whole line";
    return lines;
}

TEST_F(StatisticsDialogTest, LogsALineASweepWhetherItIsOpenOrNot) {
    const std::filesystem::path path = folder.path() / "log.csv";
    choosers.answers = {text_of_path(path)};
    controls().cmdStatisticsLog.click();
    EXPECT_EQ(controls().cmdStatisticsLog.caption(), "Stop Log");
    take_vmax(100.0);
    take_vmax(100.0);
    take_vmax(125.0);
    dialog.wait_until_written();
    auto lines = lines_of(path);
    ASSERT_EQ(lines.size(), 3U + 3U);
    EXPECT_EQ(lines[0], "# Kv408 1.6");
    EXPECT_EQ(lines[1], "# serial: S");
    EXPECT_EQ(lines[2].find("Sweep,Date,CH1 VMax (V),CH1 VMin (V),"), 0U);
    EXPECT_NE(lines[2].find(",CH2 tPuls+ (s),CH2 tPuls- (s)"), std::string::npos);
    EXPECT_EQ(std::count(lines[2].begin(), lines[2].end(), ','), 1 + values);
    EXPECT_EQ(lines[3].find("1,"), 0U);
    EXPECT_EQ(lines[3].substr(lines[3].size() - values), std::string(values, ','))
        << "has not settled";
    EXPECT_NE(lines[5].find(",0.125,0,"), std::string::npos) << lines[5];
    EXPECT_EQ(std::count(lines[5].begin(), lines[5].end(), ','), 1 + values);
    dialog.refresh();
    EXPECT_EQ(controls().lblStatisticsLog.caption(),
              "Log: 3 sweeps, 0 missed: " + text_of_path(path));
    // The press waits for no disk: what was taken before it is written afterwards.
    take();
    controls().cmdStatisticsLog.click();
    EXPECT_FALSE(controls().cmdStatisticsLog.enabled());
    take();
    while (!controls().cmdStatisticsLog.enabled()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        dialog.tick_over();
    }
    EXPECT_EQ(controls().cmdStatisticsLog.caption(), "Log...");
    EXPECT_EQ(controls().lblStatisticsLog.caption(), "Log ended: " + text_of_path(path));
    take();
    EXPECT_EQ(lines_of(path).size(), 7U);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(StatisticsDialogTest, TellsWhyALogCannotBeginOrGoOn) {
    choosers.answers = {text_of_path(folder.path() / "no" / "log.csv")};
    controls().cmdStatisticsLog.click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text.find(text_of_path(folder.path() / "no" / "log.csv") +
                                       " could not be saved: "),
              0U);
    EXPECT_EQ(controls().cmdStatisticsLog.caption(), "Log...");
    const std::filesystem::path path = folder.path() / "log.csv";
    choosers.answers = {text_of_path(path)};
    controls().cmdStatisticsLog.click();
    std::filesystem::remove(path);
    take();
    dialog.wait_until_written();
    dialog.tick_over();
    ASSERT_EQ(boxes.shown.size(), 2U);
    EXPECT_EQ(boxes.shown[1].text.find(text_of_path(path) + ": the log has ended: "), 0U);
    EXPECT_EQ(controls().cmdStatisticsLog.caption(), "Log...");
}

TEST_F(StatisticsDialogTest, ALogThatTakesTheStoppedOnesPlaceCanBeStopped) {
    choosers.answers = {text_of_path(folder.path() / "one.csv")};
    controls().cmdStatisticsLog.click();
    controls().cmdStatisticsLog.click(); // and what waits is still being written
    EXPECT_FALSE(controls().cmdStatisticsLog.enabled());
    dialog.begin_log(folder.path() / "other.csv");
    EXPECT_EQ(controls().cmdStatisticsLog.caption(), "Stop Log");
    EXPECT_TRUE(controls().cmdStatisticsLog.enabled());
    EXPECT_TRUE(dialog.logging());
}

} // namespace
} // namespace kv408
