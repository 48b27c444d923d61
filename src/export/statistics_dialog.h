#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "export/background_writer.h"
#include "export/exported_sweep.h"
#include "export/limit_actions.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "measure/statistics.h"
#include "measure/value_trend.h"
#include "panel/controls.h"
#include "state/measurement_state.h"
#include "state/sweep.h"

namespace kv408 {

/// The controls of the statistics window.
struct StatisticsControls {
    ListBox cmbStatisticsChannel{"cmbStatisticsChannel"}; ///< whose trend and limits are shown
    ListBox cmbStatisticsValue{"cmbStatisticsValue"};     ///< the measurement of that value
    TextBox txtStatisticsLow{"txtStatisticsLow"};         ///< its lower limit; empty: none
    TextBox txtStatisticsHigh{"txtStatisticsHigh"};       ///< its upper limit; empty: none
    ListBox cmbStatisticsColour{"cmbStatisticsColour"};   ///< shown for a value outside its limits
    ListBox cmbStatisticsAction{"cmbStatisticsAction"};   ///< what the program does then
    Button cmdStatisticsReset{"cmdStatisticsReset"};      ///< begins anew
    Button cmdStatisticsCopy{"cmdStatisticsCopy"};        ///< copies the table
    Button cmdStatisticsLog{"cmdStatisticsLog"};          ///< begins the log or ends it
    Label lblStatisticsState{"lblStatisticsState"};       ///< sweeps, and since when
    Label lblStatisticsLog{"lblStatisticsLog"};           ///< where the log lies, and how far it is
};

/// What belongs to the limits of one value.
struct LimitRule {
    std::string low; ///< as typed
    std::string high;
    std::size_t colour = 0; ///< of `limit_colours`
    LimitAction action = LimitAction::none;
};

/// A colour that can be chosen for values outside their limits.
struct LimitColour {
    std::string_view name;
    Colour colour;
};
inline constexpr std::array<LimitColour, 3> limit_colours = {
    {{"Red", rgb(225, 60, 60)}, {"Orange", rgb(215, 120, 0)}, {"Violet", rgb(165, 90, 220)}}};

/// The limit that `text` says of a value in `unit`, with or without its unit and a prefix; nothing
/// where it says none that can be taken.
[[nodiscard]] std::optional<double> limit_in(std::string_view text, MeasurementUnit unit);

/// The statistics window `frmStatistics`: statistics of all measurements, limits, the trend of the
/// chosen value, and the log. Nothing is computed while the window is closed and the log is off.
class StatisticsDialog {
public:
    /// What it needs of the machine and of the program.
    struct Host {
        const Clock& clock;
        MessageBoxes& boxes;
        Files& files;
        FileChoosers& choosers;
        std::function<ExportOrigin()> origin; ///< version and serial number
        std::function<void()> beep;
        std::function<void()> stop; ///< stops the sweep
        /// The plot as it is now; calling what it gives saves it, on any thread.
        std::function<std::function<SavedFile()>()> snapshot;
    };

    /// What the program itself has measured of a sweep; null while it does not measure.
    using Measured = const MeasurementState*;

    explicit StatisticsDialog(Host host);
    StatisticsDialog(const StatisticsDialog&) = delete;
    StatisticsDialog& operator=(const StatisticsDialog&) = delete;
    ~StatisticsDialog();

    [[nodiscard]] StatisticsControls& controls() { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open();
    [[nodiscard]] bool is_open() const { return open_; }
    void close() { open_ = false; }

    /// Takes `sweep`, which is complete, and what was measured of it. Waits for nothing.
    void sweep_complete(const Sweep& sweep, Measured measured);

    /// Sweeps have come that were not for it, and may have left other thresholds behind.
    void sweeps_were_missed() { statistics_.pass_over(); }

    /// Acts on values that came outside their limits since the last tick; to be called when the
    /// picture shows them.
    void tick_over();

    /// Begins the log in the file at `path`, in the place of one that is there; what goes wrong is
    /// told in a message.
    void begin_log(const std::filesystem::path& path);

    /// Brings all that the window shows up to date.
    void refresh();

    [[nodiscard]] const Statistics& statistics() const { return statistics_; }
    [[nodiscard]] const ValueTrend& trend(std::size_t channel, std::size_t row) const {
        return trends_.at(channel).at(row);
    }
    [[nodiscard]] const LimitRule& rule(std::size_t channel, std::size_t row) const {
        return rules_.at(channel).at(row);
    }

    /// Index of the channel, and of the row of `measurement_rows`, that are chosen.
    [[nodiscard]] std::size_t chosen_channel() const;
    [[nodiscard]] std::size_t chosen_row() const;
    void choose(std::size_t channel, std::size_t row);

    /// Now, on the clock that the trends are on.
    [[nodiscard]] std::chrono::nanoseconds now() const { return host_.clock.now(); }

    /// Waits until all that was handed over to other threads is written.
    void wait_until_written();

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }

    /// A log is being written.
    [[nodiscard]] bool logging() const { return log_ != nullptr; }

    /// Sets what updates table and plot. It is not called for each sweep, but soon after it.
    void on_refresh(std::function<void()> listener) { refresh_ = std::move(listener); }

private:
    [[nodiscard]] bool working() const { return open_ || log_ != nullptr; }
    void begin();
    void note_beginning();
    void note_outside(std::uint64_t sweep);
    void show_limits();
    void limits_typed();
    void cmdStatisticsReset_Click();
    void cmdStatisticsLog_Click();
    void show_state();
    void tell_problem(std::string problem);
    [[nodiscard]] std::string log_text() const;

    Host host_;
    StatisticsControls controls_;
    Statistics statistics_;
    MeasurementState own_;     ///< while the program does not measure
    bool own_measured_ = true; ///< the last sweep was measured here
    std::array<std::vector<ValueTrend>, 2> trends_;
    std::array<std::vector<LimitRule>, 2> rules_;
    std::uint64_t beginnings_ = 0;
    LocalTime begun_ = {};
    bool filling_ = false; ///< the boxes are being filled for another value
    LimitActions actions_;
    std::string last_outside_; ///< what has been outside last
    std::string log_path_;     ///< for people
    std::unique_ptr<BackgroundWriter<std::string>> log_;
    bool open_ = false;
    bool stale_ = false; ///< sweeps have come since `refreshed_`
    std::chrono::nanoseconds refreshed_{0};
    std::function<void()> show_;
    std::function<void()> refresh_;
};

} // namespace kv408
