#include "calibration/record_backup.h"

#include <array>
#include <cstdio>

#include "host/shown_text.h"

namespace kv408 {
namespace {

std::string dated_name(const LocalTime& time) {
    std::array<char, 96> text = {};
    std::snprintf(text.data(), text.size(), "calibration-%04d-%02d-%02d-%02d%02d%02d", time.year,
                  time.month, time.day, time.hour, time.minute, time.second);
    return text.data();
}

/// Holds the name of a kept file while a write is under way, and nothing otherwise.
constexpr const char* write_note = "write-under-way.txt";

} // namespace

void RecordBackup::begin_write() {
    // After one write that was cut off, what the instrument held before that one still counts.
    if (!kept_.empty() && unfinished().empty()) {
        files_.put(places_.settings / write_note, kept_);
    }
}

void RecordBackup::end_write() {
    if (!unfinished().empty()) {
        files_.put(places_.settings / write_note, "");
    }
}

std::string RecordBackup::unfinished() {
    std::string name;
    files_.read(places_.settings / write_note, name);
    return name;
}

FileResult RecordBackup::keep(const KeptRecord& record) {
    kept_.clear();
    FileResult result = files_.create_folder(places_.settings);
    if (result.status != FileStatus::done) {
        return result;
    }
    constexpr int most = 99;
    const std::string dated = dated_name(clock_.local_time());
    const std::string bytes = record_file(record);
    for (int count = 1; count <= most; ++count) {
        const std::string name = dated + (count > 1 ? '-' + std::to_string(count) : "") + ".txt";
        result = files_.create(places_.settings / name, bytes);
        if (result.status == FileStatus::done) {
            kept_ = name;
        }
        if (result.status != FileStatus::exists) {
            return result;
        }
    }
    return {.status = FileStatus::failed,
            .reason = "no name is free in " + shown_path(places_.settings)};
}

RecordBackup::Restored RecordBackup::restore() {
    const auto path =
        choosers_.open_file({.title = "Restore Calibration",
                             .filter = "Calibration records (calibration-*.txt)|calibration-*.txt|"
                                       "All Files (*.*)|*.*",
                             .folder = places_.settings});
    if (!path) {
        return {};
    }
    Restored restored{.file = shown_path(path->filename())};
    std::string bytes;
    const FileResult result = files_.read(*path, bytes);
    if (result.status != FileStatus::done) {
        restored.failure = result.reason;
        return restored;
    }
    restored.record = record_of_file(bytes);
    if (!restored.record) {
        restored.failure = "it holds no calibration record";
    }
    return restored;
}

} // namespace kv408
