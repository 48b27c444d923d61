#include "config/settings_file.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include "host/path_text.h"
#include "host/shown_text.h"
#include "host/text_encoding.h"
#include "state/text.h"

namespace kv408 {
namespace {

constexpr const char* file_name = "ConfigsLM4RX.TXT";
constexpr const char* settings_file_kinds = "Text files (*.TXT)|*.TXT|All Files (*.*)|*.*";
constexpr char separator = '\t';
constexpr std::string_view line_end = "\r\n";
/// What a file of UTF-8 may begin with.
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
/// How long a set-up is loaded before its progress is shown, and before events are processed, so
/// that the program can be ended.
constexpr std::chrono::milliseconds unshown_loading{1000};
constexpr std::chrono::milliseconds undisturbed_loading{500};

/// Takes the first line off `lines`, without its end: line feed, alone or after a carriage return.
std::string_view take_line(std::string_view& lines) {
    const auto end = lines.find('\n');
    std::string_view line = lines.substr(0, end);
    lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

/// A line's key and value.
struct Fields {
    std::string_view key;
    std::string_view value;
};

/// The first two fields of `line`, without_blanks; nothing for a line without a separator.
std::optional<Fields> fields_of(std::string_view line) {
    const auto first = line.find(separator);
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = line.substr(first + 1);
    return Fields{.key = without_blanks(line.substr(0, first)),
                  .value = without_blanks(rest.substr(0, rest.find(separator)))};
}

} // namespace

SettingsFile::SettingsFile(const KeptSettings& kept, const Host& host, Hooks hooks)
    : kept_(kept), host_(host), hooks_(std::move(hooks)), rows_(setting_rows(kept_)),
      last_(host.files, host.log) {
    for (const SettingRow& row : rows_) {
        row_of_key_.emplace(row.key, &row);
    }
    kept.panel.loadconfig.on_click([this] { loadconfig_Click(); });
    kept.panel.saveconfig.on_click([this] { saveconfig_Click(); });
}

std::filesystem::path SettingsFile::default_path() const {
    return host_.places.settings / file_name;
}

void SettingsFile::restore() {
    kept_.colours = {};
    kept_.display.snapshotpath = text_of_path(host_.places.program);
    factory_ = bytes();
    std::string bytes;
    restored_ = host_.files.read(default_path(), bytes);
    if (loadconfigfile(default_path()) == Reading::bad_line) {
        std::filesystem::path copy = default_path();
        copy += ".bad";
        // Where it cannot be made, the message about the line has said what will be missing.
        host_.files.put_copy(copy, bytes, default_path());
    }
    offer_aside();
}

void SettingsFile::start_keeping() {
    keeping_ = true;
    loading_.set_caption({});
}

void SettingsFile::offer_aside() {
    const std::filesystem::path aside = host_.files.aside(default_path());
    if (aside.empty()) {
        return;
    }
    const MessageAnswer answer = host_.boxes.show(
        {.text = "Settings of an earlier run could not be saved. Take them now?",
         .buttons = MessageButtons::yes_no,
         .icon = MessageIcon::question,
         .informative = "They are in " + shown_path(aside) + "; No discards them."});
    if (answer != MessageAnswer::yes) {
        host_.files.drop_aside(default_path());
        return;
    }
    // A file has lines only for annotated rows, so the others are cleared first.
    annotate_nothing();
    // They stay set aside as long as they could be lost once more.
    const Reading reading = loadconfigfile(aside);
    if (reading != Reading::failed && restored_.status != FileStatus::failed &&
        write(default_path()).result.status == FileStatus::done) {
        host_.files.drop_aside(default_path());
    }
}

void SettingsFile::annotate_nothing() {
    for (MeasurementControls& slot : kept_.panel.measurement) {
        slot.annotate.put_checked(false);
    }
}

void SettingsFile::save_at_end(bool tell) {
    if (!keeping_ || saved_at_end_) {
        return;
    }
    // Set first: while a failure is being shown the window may be closed once more.
    saved_at_end_ = true;
    hooks_.cancel_edits();
    note();
    const Outcome outcome = last_.save(true);
    if (tell) {
        tell_failure(outcome, where_aside(outcome));
    }
}

void SettingsFile::note_for_end() {
    if (keeping_ && !saved_at_end_) {
        note();
    }
}

void SettingsFile::hold() {
    held_ = confirmed_bytes();
}

void SettingsFile::save_without_the_window() {
    if (keeping_ && !saved_at_end_) {
        saved_at_end_ = true;
        note();
        last_.save(true);
    }
}

void SettingsFile::note() {
    noted_ = held_ ? *held_ : confirmed_bytes();
    last_.note(default_path(), noted_, restored_);
}

std::string SettingsFile::confirmed_bytes() {
    const ColourTable shown = kept_.colours;
    if (hooks_.confirmed_colours) {
        kept_.colours = hooks_.confirmed_colours();
    }
    std::string confirmed = bytes();
    kept_.colours = shown;
    return confirmed;
}

SettingsFile::Reading SettingsFile::loadconfigfile(const std::filesystem::path& path) {
    std::string bytes;
    const FileResult result = host_.files.read(path, bytes);
    switch (result.status) {
    case FileStatus::done:
        if (const int line = take_lines(std::move(bytes)); line > 0) {
            tell_line(line, shown_path(path) +
                                ": the lines before it have been taken over, it and those after "
                                "it have not.");
            return Reading::bad_line;
        }
        return Reading::complete;
    case FileStatus::not_found:
        saveconfigsmon(path);
        return Reading::missing;
    case FileStatus::exists: // which no reading ends with
    case FileStatus::failed:
        break;
    }
    tell_line(1, shown_path(path) + ": " + result.reason);
    return Reading::failed;
}

int SettingsFile::take_lines(std::string bytes) {
    if (bytes.starts_with(byte_order_mark)) {
        bytes.erase(0, byte_order_mark.size());
    } else {
        bytes = from_code_page(std::move(bytes));
    }
    std::string_view lines = bytes;
    std::unordered_map<std::string_view, int> taken;
    for (line_ = 1; !lines.empty(); ++line_) {
        if (!take_line_of(take_line(lines), taken)) {
            return std::exchange(line_, 0);
        }
        let_end();
    }
    line_ = 0;
    return 0;
}

void SettingsFile::let_end() {
    constexpr std::chrono::milliseconds interval{100};
    const auto since = host_.program.taking_over_since;
    const auto now = host_.clock.now();
    if (!since || now - *since < undisturbed_loading || now - looked_at_ < interval) {
        return;
    }
    tell_progress();
    if (by_hand_) {
        host_.messages.process_pending();
    } else {
        host_.messages.process_endings(); // there is nothing to press before the start is complete
    }
    looked_at_ = host_.clock.now();
}

void SettingsFile::tell_progress() {
    const auto since = host_.program.taking_over_since;
    if (since && host_.clock.now() - *since >= unshown_loading) {
        loading_.set_caption("Loading the set-up: " +
                             (line_ > 0 ? "line " + std::to_string(line_) : "it takes effect"));
    }
}

bool SettingsFile::take_line_of(std::string_view line,
                                std::unordered_map<std::string_view, int>& taken) {
    const auto fields = fields_of(line);
    if (!fields) {
        return false;
    }
    const auto row = row_of_key_.find(fields->key);
    if (row == row_of_key_.end()) {
        return true;
    }
    const int times = ++taken[row->first];
    return times <= row->second->most_lines && take(*row->second, fields->value, times == 1);
}

void SettingsFile::tell_line(int line, const std::string& help) {
    std::string text = "Error while reading configuration file in line ";
    text += std::to_string(line);
    // The settings are taken over in part.
    host_.boxes.show(
        {.text = text, .icon = MessageIcon::exclamation, .informative = help, .holds_sweep = true});
}

bool SettingsFile::setConfigVal(std::string_view key, std::string_view value) {
    const auto row = row_of_key_.find(key);
    return row == row_of_key_.end() || take(*row->second, value, false);
}

bool SettingsFile::take(const SettingRow& row, std::string_view value, bool first) {
    const bool taken = row.read(value, first);
    // A handler that follows the wheel must find it where the quantity is now.
    kept_.adjust.refresh_wheel();
    return taken;
}

std::string SettingsFile::text() const {
    std::string lines;
    for (const SettingRow& row : rows_) {
        for (const std::string& value : row.write()) {
            lines.append(row.key).append(1, separator).append(value).append(line_end);
        }
    }
    return lines;
}

SettingsFile::Outcome SettingsFile::write(const std::filesystem::path& path) {
    // The default folder is made whatever file is written; the write fails only where the file's
    // own folder is missing.
    host_.files.create_folder(host_.places.settings);
    const std::filesystem::path folder = path.parent_path();
    if (!folder.empty()) {
        FileResult made = host_.files.create_folder(folder);
        if (made.status != FileStatus::done) {
            return {.path = folder, .result = std::move(made)};
        }
    }
    return {.path = path, .result = host_.files.replace(path, to_code_page(text()))};
}

void SettingsFile::saveconfigsmon(const std::filesystem::path& path) {
    const Outcome outcome = write(path);
    tell_failure(outcome, {});
    if (!outcome.result.copy.empty()) {
        host_.boxes.show(
            {.text = where_copy(path, outcome.result.copy), .icon = MessageIcon::information});
    }
}

void SettingsFile::tell_failure(const Outcome& outcome, const std::string& help) {
    if (outcome.result.status == FileStatus::done) {
        return;
    }
    std::string text = "The settings could not be saved. ";
    text.append(shown_path(outcome.path)).append(": ").append(outcome.result.reason);
    // Before start-up is complete, and once the program ends, no sweep can go on.
    host_.boxes.show({.text = text,
                      .icon = MessageIcon::critical,
                      .informative = help,
                      .holds_sweep = !keeping_ || saved_at_end_});
}

void SettingsFile::loadconfig_Click() {
    if (by_hand_) {
        return; // pressed while the last one is being loaded
    }
    const auto path = host_.choosers.open_file(
        {.title = "Open File", .filter = settings_file_kinds, .folder = folder_});
    if (path && !path->empty()) {
        folder_ = path->parent_path();
        hooks_.cancel_edits();
        load_by_hand(*path);
    }
}

void SettingsFile::load_by_hand(const std::filesystem::path& path) {
    const TakingOver taking = take_over();
    by_hand_ = true;
    const Reading reading = loadconfigfile(path);
    if (reading == Reading::complete || reading == Reading::bad_line) {
        hooks_.apply();
        if (hooks_.loaded) {
            hooks_.loaded();
        }
    }
    by_hand_ = false;
    loading_.set_caption({});
}

std::string SettingsFile::bytes() const {
    return to_code_page(text());
}

int SettingsFile::load_bytes(std::string bytes) {
    hooks_.cancel_edits();
    const TakingOver taking = take_over();
    by_hand_ = true;
    const int line = take_lines(std::move(bytes));
    hooks_.apply();
    by_hand_ = false;
    loading_.set_caption({});
    return line;
}

void SettingsFile::put_back(const PanelSetUp& set_up) {
    annotate_nothing();
    load_bytes(set_up.settings);
    put_unkept(kept_.panel, set_up);
}

void SettingsFile::saveconfig_Click() {
    const auto chosen = host_.choosers.save_file({.title = "Save File",
                                                  .filter = settings_file_kinds,
                                                  .default_suffix = "TXT",
                                                  .folder = folder_});
    if (chosen && !chosen->path.empty()) {
        folder_ = chosen->path.parent_path();
        saveconfigsmon(chosen->path);
    }
}

} // namespace kv408
