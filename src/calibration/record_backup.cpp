#include "calibration/record_backup.h"

#include <array>
#include <cstdio>

#include "calibration/record_values.h"

namespace kv408 {
namespace {

std::string dated_name(const LocalTime& time) {
    std::array<char, 96> text = {};
    std::snprintf(text.data(), text.size(), "calibration-%04d-%02d-%02d-%02d%02d%02d.txt",
                  time.year, time.month, time.day, time.hour, time.minute, time.second);
    return text.data();
}

} // namespace

FileResult RecordBackup::keep(const CalibrationRecord& record) {
    const FileResult folder = files_.create_folder(places_.settings);
    if (folder.status != FileStatus::done) {
        return folder;
    }
    const std::string name = dated_name(clock_.local_time());
    FileResult result = files_.replace(places_.settings / name, record_file(record));
    if (result.status == FileStatus::done) {
        kept_ = name;
    }
    return result;
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
    Restored restored{.file = path->filename().string()};
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
