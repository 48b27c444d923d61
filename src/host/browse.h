#pragma once

#include <filesystem>
#include <functional>

namespace kv408 {

/// Opens the file at `page` in what the person reads pages with; false when there is nothing that
/// could. Empty: there is nothing.
using Browse = std::function<bool(const std::filesystem::path& page)>;

} // namespace kv408
