#pragma once

#include <cstddef>

namespace kv408 {

/// Of long series, as the places of a pass or the lengths of a block, every so many-th is tried:
/// all but under the sanitizers, where that takes minutes.
#ifdef __SANITIZE_ADDRESS__
inline constexpr std::size_t series_stride = 10;
#else
inline constexpr std::size_t series_stride = 1;
#endif

} // namespace kv408
