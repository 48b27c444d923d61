#pragma once

#include <cstddef>

namespace kv408 {

/// Of long series, as the places of a pass or the lengths of a block, every so many-th is tried:
/// all but under the sanitizers, where that takes minutes. Decided where a program is linked,
/// because the same compiled tests run with and without them.
extern const std::size_t series_stride;

} // namespace kv408
