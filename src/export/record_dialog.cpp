#include "export/record_dialog.h"

#include <cmath>
#include <limits>
#include <utility>

#include "export/date_text.h"
#include "export/export_type.h"
#include "host/path_text.h"
#include "host/shown_text.h"
#include "state/rounding.h"
#include "state/text.h"

namespace kv408 {
namespace {

enum Pace { every_sweep, every_nth, every_seconds };

constexpr std::uintmax_t not_known = std::numeric_limits<std::uintmax_t>::max();

/// The whole number, 1.., that `text` is; nothing for any other text.
std::optional<std::uint64_t> count_in(const std::string& text) {
    const auto number = whole_number_in(text);
    if (!number || *number < 1) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(*number);
}

/// The time in seconds that `text` is, from a millisecond to some thirty years; nothing for any
/// other text.
std::optional<std::chrono::nanoseconds> seconds_in(const std::string& text) {
    constexpr double least = 1e-3;
    constexpr double most = 1e9;
    const auto number = entire_number(text);
    if (!number || !(*number >= least && *number <= most)) {
        return std::nullopt;
    }
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::duration<double>(*number));
}

/// The first entry: all in one file.
constexpr const char* one_file = "One file (*.csv)";

std::vector<std::string> record_types() {
    std::vector<std::string> texts = {one_file};
    for (const ExportType& type : export_types()) {
        texts.push_back("Numbered files: " + std::string(type.caption));
    }
    return texts;
}

/// The kind of file at `index` of the list.
const ExportType& record_type(int index) {
    return export_types().at(static_cast<std::size_t>(index > 0 ? index - 1 : 0));
}

std::string size_text(std::uintmax_t bytes) {
    constexpr std::uintmax_t mebibyte = 1024ULL * 1024;
    return std::to_string(bytes / mebibyte) + " MB free";
}

} // namespace

RecordDialog::RecordDialog(const FrontPanel& panel, const Host& host, Origin origin,
                           FreeSpace space)
    : panel_(panel), host_(host), origin_(std::move(origin)), space_(std::move(space)),
      free_(std::make_shared<std::atomic<std::uintmax_t>>(not_known)) {
    controls_.cmbRecordPace.set_entries(
        {"Every sweep", "Every n-th sweep, n:", "One sweep every ... seconds:"});
    controls_.cmbRecordPace.set_index(every_sweep);
    controls_.cmbRecordPace.on_click([this] { enable(); });
    controls_.txtRecordPace.set_text("1");
    controls_.txtRecordPace.on_change([this] { enable(); });
    controls_.txtRecordCount.on_change([this] { enable(); });
    controls_.cmbRecordType.set_entries(record_types());
    controls_.cmbRecordType.set_index(0);
    controls_.cmdRecordBrowse.on_click([this] { cmdRecordBrowse_Click(); });
    controls_.cmdRecord.on_click([this] { cmdRecord_Click(); });
    controls_.cmdRecordStop.on_click([this] {
        if (recorder_) {
            pace_.reset();
            recorder_->stop();
        }
    });
    show_progress({});
    enable();
}

void RecordDialog::open(const std::filesystem::path& folder) {
    if (!std::exchange(open_, true)) {
        TextBox& file = controls_.txtRecordFile;
        if (file.text().empty() || file.text() == offered_) {
            std::filesystem::path name = export_name(export_types()[0], host_.clock.local_time());
            name.replace_filename(text_of_path(name.stem()) + "_sweeps.csv");
            offered_ = text_of_path(folder / name);
            file.set_text(offered_);
        }
    }
    if (show_) {
        show_();
    }
}

void RecordDialog::close() {
    if (recorder_ && pace_ &&
        host_.boxes.show({.text = "Sweeps are being recorded. End the recording?",
                          .buttons = MessageButtons::yes_no,
                          .icon = MessageIcon::question}) != MessageAnswer::yes) {
        return;
    }
    controls_.cmdRecordStop.click();
    open_ = false;
    if (show_) {
        show_();
    }
}

void RecordDialog::cmdRecordBrowse_Click() {
    const std::filesystem::path before = path();
    const ExportType& type = record_type(controls_.cmbRecordType.index());
    const auto chosen = host_.choosers.save_file(
        {.title = "Record",
         .filter = std::string(type.caption) + "|*" + std::string(type.ending),
         .default_name = text_of_path(before.filename()),
         .default_suffix = std::string(type.ending.substr(1)),
         .folder = before.parent_path()});
    if (chosen) {
        controls_.txtRecordFile.set_text(text_of_path(chosen->path));
    }
}

std::optional<RecordingPlan> RecordDialog::plan() {
    RecordingPlan plan;
    bool pace_told = true;
    const std::string& number = controls_.txtRecordPace.text();
    if (controls_.cmbRecordPace.index() == every_nth) {
        const auto every = count_in(number);
        pace_told = every.has_value();
        plan.every = every.value_or(1);
    } else if (controls_.cmbRecordPace.index() == every_seconds) {
        const auto interval = seconds_in(number);
        pace_told = interval.has_value();
        plan.interval = interval.value_or(plan.interval);
    }
    const std::string& most = controls_.txtRecordCount.text();
    const bool until_stopped = is_blank(most);
    if (!until_stopped) {
        plan.most = count_in(most);
    }
    const bool count_told = until_stopped || plan.most.has_value();
    controls_.txtRecordPace.set_faulty(!pace_told);
    controls_.txtRecordCount.set_faulty(!count_told);
    return pace_told && count_told ? std::optional(plan) : std::nullopt;
}

std::filesystem::path RecordDialog::path() const {
    const std::string_view ending = record_type(controls_.cmbRecordType.index()).ending;
    std::filesystem::path path = path_of_text(controls_.txtRecordFile.text());
    if (export_type_of(path)) {
        path.replace_extension();
    }
    path += ending;
    return path;
}

std::unique_ptr<RecordingTarget> RecordDialog::begin(const std::filesystem::path& path) {
    // The recorder's thread asks the disk: here nothing may wait for it.
    const FreeSpace watched = [space = space_, found = free_](const std::filesystem::path& file) {
        const auto left = space(file);
        found->store(left.value_or(not_known));
        return left;
    };
    const int kind = controls_.cmbRecordType.index();
    if (kind > 0) {
        return std::make_unique<NumberedRecordingFiles>(host_.files, path, record_type(kind),
                                                        watched);
    }
    SavedFile begun;
    auto target = std::make_unique<OneRecordingFile>(host_.files, path, false, begun, watched);
    if (begun.status == FileStatus::exists) {
        const MessageAnswer answer = host_.boxes.show({.text = begun.message,
                                                       .buttons = MessageButtons::yes_no,
                                                       .icon = MessageIcon::question});
        // Another press may have begun to write there meanwhile.
        if (answer != MessageAnswer::yes || recorder_) {
            return nullptr;
        }
        target = std::make_unique<OneRecordingFile>(host_.files, path, true, begun, watched);
    }
    if (begun.status != FileStatus::done) {
        controls_.lblRecordRemark.set_caption(begun.message);
        host_.boxes.show({.text = begun.message, .icon = MessageIcon::exclamation});
        return nullptr;
    }
    return target;
}

void RecordDialog::cmdRecord_Click() {
    const auto planned = plan();
    if (recorder_ || !planned) {
        return;
    }
    const std::filesystem::path file = path();
    auto target = begin(file);
    if (!target) {
        return;
    }
    pace_.emplace(*planned);
    recorder_ = std::make_unique<Recorder>(std::move(target));
    controls_.lblRecordRemark.set_caption("Recording to " + shown_path(file));
    show_progress({});
    enable();
}

void RecordDialog::take(const Sweep& sweep) {
    if (!pace_) {
        return;
    }
    const std::array<bool, 2> on = {panel_.channel[ch1].enable.checked(),
                                    panel_.channel[ch2].enable.checked()};
    if (!pace_->take(host_.clock.now())) {
        return;
    }
    ExportOrigin origin = origin_();
    origin.utc_offset = utc_offset(host_.clock);
    recorder_->add(exported_sweep(sweep, on, origin));
    if (pace_->over()) {
        controls_.cmdRecordStop.click();
    }
}

void RecordDialog::tick() {
    if (!recorder_) {
        return;
    }
    const RecordingProgress progress = recorder_->progress();
    show_progress(progress);
    if (progress.running) {
        return;
    }
    pace_.reset();
    recorder_.reset();
    enable();
    if (progress.problem.empty()) {
        controls_.lblRecordRemark.set_caption(saved_text(progress.recorded));
        return;
    }
    controls_.lblRecordRemark.set_caption(progress.problem);
    host_.boxes.show({.text = progress.problem, .icon = MessageIcon::exclamation});
}

std::string RecordDialog::saved_text(std::uint64_t sweeps) const {
    const int kind = controls_.cmbRecordType.index();
    if (kind == 0) {
        return "Saved to " + shown_path(path());
    }
    if (sweeps == 0) {
        return "No sweep was saved";
    }
    const std::string_view ending = record_type(kind).ending;
    std::string text = "Saved to " + shown_path(numbered_path(path(), ending, 1));
    if (sweeps > 1) {
        text += " to " + shown_path(numbered_path(path(), ending, sweeps).filename());
    }
    return text;
}

void RecordDialog::show_progress(const RecordingProgress& progress) {
    controls_.lblRecordDone.set_caption(std::to_string(progress.recorded));
    controls_.lblRecordMissed.set_caption(std::to_string(progress.missed));
    const std::uintmax_t left = free_->load();
    controls_.lblRecordFree.set_caption(left == not_known ? std::string() : size_text(left));
}

void RecordDialog::enable() {
    // What is recorded, and where, cannot be changed during a recording.
    const bool idle = !recorder_;
    controls_.cmbRecordPace.set_enabled(idle);
    controls_.txtRecordPace.set_enabled(idle && controls_.cmbRecordPace.index() != every_sweep);
    controls_.txtRecordCount.set_enabled(idle);
    controls_.cmbRecordType.set_enabled(idle);
    controls_.txtRecordFile.set_enabled(idle);
    controls_.cmdRecordBrowse.set_enabled(idle);
    controls_.cmdRecord.set_enabled(idle && plan().has_value());
    controls_.cmdRecordStop.set_enabled(!idle);
}

} // namespace kv408
