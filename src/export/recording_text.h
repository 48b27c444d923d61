#pragma once

#include <string>

#include "export/exported_sweep.h"

namespace kv408 {

/// The headings of a recording in one file, a line. Each channel has times of its own and its place
/// whether it is on or off, so that the columns stay the same whatever is set meanwhile.
[[nodiscard]] std::string recording_headings();

/// The sweeps of a recording as text, one after the other.
class RecordingText {
public:
    /// The lines of `sweep`, each with its number and date in front. Before them stand the comments
    /// that say what it was taken with, where these differ from those of the sweep before.
    [[nodiscard]] std::string lines(const ExportedSweep& sweep);

private:
    std::string comments_;
};

} // namespace kv408
