#pragma once

#include <cstdint>
#include <string>

namespace kv408 {

/// What the settings dialog edits besides the colours; kept in the settings file.
struct DisplaySettings {
    std::int16_t persisttime = 3; ///< persistence depth, 0..9 generations
    std::string snapshotpath;     ///< folder that snapshots are saved in silently, UTF-8
    bool snapshotdialog = false;  ///< always ask for a snapshot's file name
    bool snapshotinvert = false;  ///< save snapshots with inverted colours
};

} // namespace kv408
