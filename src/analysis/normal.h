#pragma once

namespace kv408 {

/// The share of a normal distribution of mean 0 and deviation 1 below `x`.
[[nodiscard]] double normal_share(double x);

/// The inverse of `normal_share`: the x below which the share `share` lies, which is above 0 and
/// below 1.
[[nodiscard]] double normal_quantile(double share);

} // namespace kv408
