#pragma once

#include <cstdint>
#include <string>

namespace kv408 {

/// What the settings dialog edits besides the colours; kept in the settings file.
struct DisplaySettings {
    std::int16_t persisttime = 3;    ///< persistence depth, generations
    std::string snapshotpath;        ///< folder that snapshots are saved in silently, UTF-8
    std::int32_t snapshotdialog = 0; ///< 1: always ask for a snapshot's file name
    std::int32_t snapshotinvert = 0; ///< 1: save snapshots with inverted colours
};

} // namespace kv408
