#include "export/statistics_dialog.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "export/date_text.h"
#include "export/measurement_log.h"
#include "export/statistics_table.h"
#include "host/shown_text.h"
#include "measure/engine.h"
#include "measure/measurement_rows.h"
#include "state/rounding.h"
#include "state/text.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// The time between two updates of table and plot: nobody reads two hundred numbers in less than a
/// second, and painting them is most of what the open window costs.
constexpr std::chrono::nanoseconds between_refreshes = 1s;

constexpr std::array volt_units = {Unit{"uv", 1e-6}, Unit{"mv", 1e-3}, Unit{"v", 1.0}};
constexpr std::array second_units = {Unit{"ps", 1e-12}, Unit{"ns", 1e-9}, Unit{"us", 1e-6},
                                     Unit{"ms", 1e-3}, Unit{"s", 1.0}};
constexpr std::array hertz_units = {Unit{"hz", 1.0}, Unit{"khz", 1e3}, Unit{"mhz", 1e6},
                                    Unit{"ghz", 1e9}};

std::string time_text(const LocalTime& time) {
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", time.hour, time.minute, time.second);
    return text.data();
}

std::vector<std::string> value_names() {
    std::vector<std::string> names;
    for (const MeasurementRow& row : measurement_rows()) {
        names.emplace_back(row.name);
    }
    return names;
}

} // namespace

std::optional<double> limit_in(std::string_view text, MeasurementUnit unit) {
    if (is_blank(text)) {
        return std::nullopt;
    }
    switch (unit) {
    case MeasurementUnit::second:
        return quantity_in(text, second_units);
    case MeasurementUnit::hertz:
        return quantity_in(text, hertz_units);
    default:
        return quantity_in(text, volt_units);
    }
}

StatisticsDialog::StatisticsDialog(Host host)
    : host_(std::move(host)), actions_({.clock = host_.clock,
                                        .beep = host_.beep,
                                        .stop = host_.stop,
                                        .snapshot = host_.snapshot}) {
    for (std::size_t channel = 0; channel < trends_.size(); ++channel) {
        trends_.at(channel).resize(measurement_rows().size());
        rules_.at(channel).resize(measurement_rows().size());
    }
    controls_.cmbStatisticsChannel.set_entries({"CH1", "CH2"});
    controls_.cmbStatisticsChannel.set_index(0);
    controls_.cmbStatisticsValue.set_entries(value_names());
    controls_.cmbStatisticsValue.set_index(0);
    std::vector<std::string> colours;
    colours.reserve(limit_colours.size());
    for (const LimitColour& colour : limit_colours) {
        colours.emplace_back(colour.name);
    }
    controls_.cmbStatisticsColour.set_entries(colours);
    controls_.cmbStatisticsAction.set_entries(
        {limit_action_names.begin(), limit_action_names.end()});
    controls_.cmdStatisticsLog.set_caption("Log...");
    show_limits();
    for (ListBox* const list : {&controls_.cmbStatisticsChannel, &controls_.cmbStatisticsValue}) {
        list->on_click([this] {
            show_limits();
            refresh();
        });
    }
    controls_.txtStatisticsLow.on_change([this] { limits_typed(); });
    controls_.txtStatisticsHigh.on_change([this] { limits_typed(); });
    controls_.cmbStatisticsColour.on_click([this] {
        rules_.at(chosen_channel()).at(chosen_row()).colour =
            static_cast<std::size_t>(controls_.cmbStatisticsColour.index());
    });
    controls_.cmbStatisticsAction.on_click([this] {
        rules_.at(chosen_channel()).at(chosen_row()).action =
            static_cast<LimitAction>(controls_.cmbStatisticsAction.index());
    });
    controls_.cmdStatisticsReset.on_click([this] { cmdStatisticsReset_Click(); });
    controls_.cmdStatisticsLog.on_click([this] { cmdStatisticsLog_Click(); });
}

StatisticsDialog::~StatisticsDialog() = default;

std::size_t StatisticsDialog::chosen_channel() const {
    return static_cast<std::size_t>(controls_.cmbStatisticsChannel.index());
}

std::size_t StatisticsDialog::chosen_row() const {
    return static_cast<std::size_t>(controls_.cmbStatisticsValue.index());
}

void StatisticsDialog::choose(std::size_t channel, std::size_t row) {
    controls_.cmbStatisticsChannel.set_index(static_cast<int>(channel));
    controls_.cmbStatisticsValue.set_index(static_cast<int>(row));
}

void StatisticsDialog::open() {
    if (!working()) {
        begin();
    }
    open_ = true;
    if (show_) {
        show_();
    }
    refresh();
}

void StatisticsDialog::refresh() {
    stale_ = false;
    refreshed_ = host_.clock.now();
    show_state();
    if (refresh_) {
        refresh_();
    }
}

void StatisticsDialog::begin() {
    own_ = {};
    statistics_.settle();
    note_beginning();
}

void StatisticsDialog::note_beginning() {
    beginnings_ = statistics_.beginnings();
    begun_ = host_.clock.local_time();
    last_outside_.clear();
    for (auto& trends : trends_) {
        for (ValueTrend& trend : trends) {
            trend.clear();
        }
    }
}

void StatisticsDialog::sweep_complete(const Sweep& sweep, Measured measured) {
    if (!working()) {
        return;
    }
    if (std::exchange(own_measured_, measured == nullptr) != (measured == nullptr)) {
        begin();
    }
    if (measured == nullptr) {
        measure_sweep(sweep, own_);
        measured = &own_;
    }
    const bool outside = statistics_.take(sweep, *measured);
    if (statistics_.beginnings() != beginnings_) {
        note_beginning();
    }
    stale_ = true;
    const std::chrono::nanoseconds time = host_.clock.now();
    for (std::size_t channel = 0; channel < trends_.size(); ++channel) {
        for (std::size_t row = 0; row < trends_.at(channel).size(); ++row) {
            const auto& present = statistics_.of(channel, row).present;
            if (present && present->value) {
                trends_.at(channel)[row].add(time, *present->value);
            }
        }
    }
    if (outside) {
        note_outside(sweep.number);
    }
    if (log_) {
        log_->add(measurement_log_line(sweep.number, date_text(sweep.time, utc_offset(host_.clock)),
                                       statistics_));
    }
}

void StatisticsDialog::note_outside(std::uint64_t sweep) {
    for (std::size_t channel = 0; channel < rules_.size(); ++channel) {
        for (std::size_t row = 0; row < rules_.at(channel).size(); ++row) {
            if (is_outside(statistics_, channel, row)) {
                actions_.ask(rules_.at(channel)[row].action);
                last_outside_ = value_name(channel, row) + " = " +
                                present_text(statistics_, channel, row) + " in sweep " +
                                std::to_string(sweep);
            }
        }
    }
}

void StatisticsDialog::tick_over() {
    const std::string problem = actions_.act();
    if (open_ && stale_ && host_.clock.now() - refreshed_ >= between_refreshes) {
        refresh();
    }
    tell_problem(problem);
}

void StatisticsDialog::tell_problem(std::string problem) {
    if (log_ && !log_->progress().running) {
        problem = log_->progress().problem;
        log_.reset();
        controls_.cmdStatisticsLog.set_caption("Log...");
        controls_.cmdStatisticsLog.set_enabled(true);
        refresh();
    }
    if (!problem.empty()) {
        host_.boxes.show({.text = problem, .icon = MessageIcon::critical});
    }
}

void StatisticsDialog::show_state() {
    std::string text = std::to_string(statistics_.sweeps()) + " sweeps since " + time_text(begun_);
    if (!last_outside_.empty()) {
        text += "; outside last: " + last_outside_;
    }
    if (const auto saved = actions_.snapshots()) {
        text += "; snapshots: " + std::to_string(*saved);
    }
    controls_.lblStatisticsState.set_caption(std::move(text));
    controls_.lblStatisticsLog.set_caption(log_text());
}

std::string StatisticsDialog::log_text() const {
    if (!log_) {
        return log_path_.empty() ? std::string() : "Log ended: " + log_path_;
    }
    const RecordingProgress progress = log_->progress();
    return "Log: " + std::to_string(progress.recorded) + " sweeps, " +
           std::to_string(progress.missed) + " missed: " + log_path_;
}

void StatisticsDialog::show_limits() {
    const LimitRule rule = rules_.at(chosen_channel()).at(chosen_row());
    filling_ = true;
    controls_.txtStatisticsLow.set_text(rule.low);
    controls_.txtStatisticsHigh.set_text(rule.high);
    filling_ = false;
    controls_.cmbStatisticsColour.set_index(static_cast<int>(rule.colour));
    controls_.cmbStatisticsAction.set_index(static_cast<int>(rule.action));
    for (TextBox* const box : {&controls_.txtStatisticsLow, &controls_.txtStatisticsHigh}) {
        box->set_faulty(!is_blank(box->text()) &&
                        !limit_in(box->text(), measurement_rows()[chosen_row()].unit));
    }
}

void StatisticsDialog::limits_typed() {
    if (filling_) {
        return;
    }
    LimitRule& rule = rules_.at(chosen_channel()).at(chosen_row());
    stale_ = true;
    rule.low = controls_.txtStatisticsLow.text();
    rule.high = controls_.txtStatisticsHigh.text();
    const MeasurementUnit unit = measurement_rows()[chosen_row()].unit;
    statistics_.set_limits(
        chosen_channel(), chosen_row(),
        {.least = limit_in(rule.low, unit), .greatest = limit_in(rule.high, unit)});
    show_limits();
}

void StatisticsDialog::cmdStatisticsReset_Click() {
    statistics_.reset();
    note_beginning();
    refresh();
}

void StatisticsDialog::cmdStatisticsLog_Click() {
    if (log_) {
        // What waits is still written; a tick finds it done.
        log_->stop();
        controls_.cmdStatisticsLog.set_enabled(false);
        return;
    }
    const auto chosen = host_.choosers.save_file({.title = "Log",
                                                  .filter = "CSV (*.csv)|*.csv|All Files (*.*)|*.*",
                                                  .default_name = "statistics.csv",
                                                  .default_suffix = "csv"});
    if (chosen) {
        begin_log(chosen->path);
    }
}

void StatisticsDialog::begin_log(const std::filesystem::path& path) {
    SavedFile begun;
    auto file = std::make_unique<MeasurementLogFile>(
        host_.files, path, measurement_log_headings(host_.origin()), begun);
    if (begun.status != FileStatus::done) {
        host_.boxes.show({.text = begun.message, .icon = MessageIcon::critical});
        return;
    }
    if (!working()) {
        begin();
    }
    log_path_ = shown_path(path);
    log_ = std::make_unique<BackgroundWriter<std::string>>(std::move(file));
    controls_.cmdStatisticsLog.set_caption("Stop Log");
    controls_.cmdStatisticsLog.set_enabled(true); // the one before it may be ending
    refresh();
}

void StatisticsDialog::wait_until_written() {
    if (log_) {
        log_->wait_until_written();
    }
    actions_.wait_until_written();
}

} // namespace kv408
