#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "export/export_type.h"
#include "export/recorder.h"
#include "export/recording_text.h"
#include "host/files.h"
#include "host/growing_file.h"

namespace kv408 {

/// The bytes that are free where the file at a path lies; nothing where the system does not tell.
using FreeSpace = std::function<std::optional<std::uintmax_t>(const std::filesystem::path& path)>;
[[nodiscard]] std::optional<std::uintmax_t> free_space(const std::filesystem::path& path);

/// What a recording leaves free at least, bytes, so that other programs do not find the disk full.
inline constexpr std::uintmax_t space_left_free = 64ULL * 1024 * 1024;

/// A file that grows while the disk has room for it and for others.
class WatchedFile {
public:
    /// Begins the file at `path` with `beginning`; with `over` it replaces one that is there.
    /// `begun` says how that ended; unless done, nothing can be appended.
    WatchedFile(Files& files, std::filesystem::path path, std::string_view beginning, bool over,
                SavedFile& begun, FreeSpace space);

    /// Appends `bytes`. Where that fails the message says that `what`, as "the recording", has
    /// ended, and why.
    SavedFile append(std::string_view bytes, std::string_view what);

    /// Bytes that are in it.
    [[nodiscard]] std::uintmax_t size() const { return file_.size(); }

private:
    std::filesystem::path path_;
    FreeSpace space_;
    GrowingFile file_;
};

/// All sweeps in one CSV file. Whatever ends the program, the file holds whole lines up to the last
/// sweep that was added.
class OneRecordingFile : public RecordingTarget {
public:
    /// Begins the file at `path`; with `over` it replaces one that is there. `begun` says how that
    /// ended; unless done, nothing can be added.
    OneRecordingFile(Files& files, std::filesystem::path path, bool over, SavedFile& begun,
                     FreeSpace space = free_space);

    SavedFile add(const ExportedSweep& sweep) override;

private:
    RecordingText text_;
    WatchedFile file_;
};

/// `path` with `number`, from 1, of six digits or more, and `ending`: of "curve.csv" and 1
/// "curve_000001.csv".
[[nodiscard]] std::filesystem::path numbered_path(std::filesystem::path path,
                                                  std::string_view ending, std::uint64_t number);

/// Each sweep in a file of its own: "curve.csv" begins with "curve_000001.csv". A file that is
/// there is not written over and ends the recording.
class NumberedRecordingFiles : public RecordingTarget {
public:
    /// Files named after `path`, of `type`.
    NumberedRecordingFiles(Files& files, std::filesystem::path path, const ExportType& type,
                           FreeSpace space = free_space);

    SavedFile add(const ExportedSweep& sweep) override;

private:
    Files& files_;
    std::filesystem::path path_;
    const ExportType& type_;
    FreeSpace space_;
    std::uint64_t number_ = 0;
};

} // namespace kv408
