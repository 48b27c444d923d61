#pragma once

#include <string>

#include "export/background_writer.h"
#include "export/exported_sweep.h"
#include "export/recording_files.h"
#include "measure/statistics.h"

namespace kv408 {

/// The beginning of a log: comments that say of what `origin` it is, and a line of headings.
[[nodiscard]] std::string measurement_log_headings(const ExportOrigin& origin);

/// The line of the sweep with the number `sweep` that came at `date`: what `statistics` has as
/// present. A cell is empty where there is none, or it has not settled yet.
[[nodiscard]] std::string measurement_log_line(std::uint64_t sweep, const std::string& date,
                                               const Statistics& statistics);

/// The lines of a log in one file. Whatever ends the program, it holds whole lines up to the last
/// one that was added.
class MeasurementLogFile : public WriterTarget<std::string> {
public:
    /// Begins the file at `path` with `headings`, in the place of one that is there. `begun` says
    /// what came of it; unless done, nothing can be added.
    MeasurementLogFile(Files& files, std::filesystem::path path, const std::string& headings,
                       SavedFile& begun, FreeSpace space = free_space)
        : file_(files, std::move(path), headings, true, begun, std::move(space)) {}

    SavedFile add(const std::string& line) override { return file_.append(line, "the log"); }

private:
    WatchedFile file_;
};

} // namespace kv408
