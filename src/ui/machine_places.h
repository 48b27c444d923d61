#pragma once

#include "host/places.h"

namespace kv408::ui {

/// Where this machine keeps the program's files: the settings under the folder that the environment
/// variable APPDATA names, where it is not set under the platform's own configuration folder.
[[nodiscard]] Places machine_places();

} // namespace kv408::ui
