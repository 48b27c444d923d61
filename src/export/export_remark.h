#pragma once

#include <string>

namespace kv408 {

/// What the user should know before a sweep is saved.
struct ExportRemark {
    bool possible = true; ///< false: it cannot be saved in this way
    std::string text; ///< why not, or what saving it changes; empty when there is nothing to say
};

} // namespace kv408
