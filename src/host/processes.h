#pragma once

namespace kv408 {

/// The number of this process.
[[nodiscard]] int process_id();

/// Whether the process of the number `process` runs on this machine; true where the system does not
/// say.
[[nodiscard]] bool process_runs(int process);

} // namespace kv408
