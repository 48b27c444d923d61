#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "calibration/record_values.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/places.h"

namespace kv408 {

/// Keeps calibration records in dated files beside the settings, and brings them back.
class RecordBackup {
public:
    RecordBackup(Files& files, FileChoosers& choosers, Places places, const Clock& clock)
        : files_(files), choosers_(choosers), places_(std::move(places)), clock_(clock) {}

    /// Keeps `record` in a file of its own, named by date and time; no file that is there already
    /// is overwritten. On failure the result says why.
    FileResult keep(const KeptRecord& record);

    /// Name of the file that `keep` wrote when it was called last; empty when it failed, or before.
    [[nodiscard]] const std::string& kept() const { return kept_; }

    /// Notes beside the files that a write begins, before which the instrument held what was kept
    /// last; and that it has come to its end. A failure to do so is not reported.
    void begin_write();
    void end_write();

    /// Name of the file with what the instrument held before a write that has not come to its end,
    /// perhaps in an earlier run of the program; empty when there was none.
    [[nodiscard]] std::string unfinished();

    /// What came of bringing a record back.
    struct Restored {
        std::optional<KeptRecord> record = {}; ///< the record in the file that was chosen
        std::string file = {};                 ///< name of that file; empty when none was chosen
        std::string failure = {}; ///< why there is no record in it; empty when there is
    };

    /// Asks for a file and reads the record in it.
    Restored restore();

private:
    Files& files_;
    FileChoosers& choosers_;
    Places places_;
    const Clock& clock_;
    std::string kept_;
};

} // namespace kv408
