#pragma once

#include <string>

#include "export/background_writer.h"
#include "export/exported_sweep.h"
#include "export/recording_files.h"
#include "measure/statistics.h"

namespace kv408 {

/// The beginning of a log: comments that tell its `origin`, and a line of headings.
[[nodiscard]] std::string measurement_log_headings(const ExportOrigin& origin);

/// The line of the sweep with the number `sweep` that came at `date`: the present values of
/// `statistics`. A cell is empty where there is no value, or where it has not settled yet.
[[nodiscard]] std::string measurement_log_line(std::uint64_t sweep, const std::string& date,
                                               const Statistics& statistics);

/// The lines of a log in one file. Whatever ends the program, it holds whole lines up to the last
/// one that was added.
class MeasurementLogFile : public WriterTarget<std::string> {
public:
    /// Begins the file at `path` with `headings`; it replaces one that is there. `begun` says how
    /// that ended; unless done, nothing can be added.
    MeasurementLogFile(Files& files, std::filesystem::path path, const std::string& headings,
                       SavedFile& begun, FreeSpace space = free_space)
        : file_(files, std::move(path), headings, true, begun, std::move(space)) {}

    SavedFile add(const std::string& line) override { return file_.append(line, "the log"); }

private:
    WatchedFile file_;
};

} // namespace kv408
