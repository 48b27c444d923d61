#pragma once

#include <filesystem>
#include <string>

#include "analysis/shipped_masks.h"
#include "host/system_files.h"
#include "support/fake_files.h"

namespace kv408::ui {

/// Puts the masks that come with the program into `folder` of `files`.
inline void add_shipped_masks(FakeFiles& files, const std::string& folder) {
    SystemFiles disk;
    for (const std::string_view file : shipped_masks) {
        std::string text;
        disk.read(std::filesystem::path(KV408_SOURCE_ROOT) / "packaging" / "masks" / file, text);
        files.files[folder + '/' + std::string(file)] = text;
    }
}

} // namespace kv408::ui
