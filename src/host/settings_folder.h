#pragma once

#include <filesystem>

namespace kv408 {

/// The folder "kv408" under the one that the environment variable APPDATA names; where that is not
/// set, on other systems than Windows, under the user's folder of configurations. Byte for byte: a
/// folder's name may be no text.
[[nodiscard]] std::filesystem::path settings_folder();

} // namespace kv408
