#pragma once

#include <cstddef>

namespace kv408 {

/// What a whole process has taken from the heap with `new` so far.
struct Allocations {
    std::size_t bytes = 0; ///< that it has not given back
    std::size_t times = 0; ///< how often it took some
};

/// Of this process. Whatever is linked with allocations.cpp counts.
[[nodiscard]] Allocations allocations();

} // namespace kv408
