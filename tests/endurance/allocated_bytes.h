#pragma once

#include <cstddef>

namespace kv408 {

/// Bytes that this whole process has taken from the heap with `new` and not given back. Linking
/// allocated_bytes.cpp makes it count.
[[nodiscard]] std::size_t allocated_bytes();

} // namespace kv408
