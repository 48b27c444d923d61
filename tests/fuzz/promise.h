#pragma once

#include <cstdio>
#include <cstdlib>

namespace kv408 {

/// Aborts, which a fuzzer takes for a finding, unless `promise` holds; `what` says what was
/// promised.
inline void demand(bool promise, const char* what) {
    if (!promise) {
        std::fprintf(stderr, "broken promise: %s\n", what);
        std::abort();
    }
}

} // namespace kv408
