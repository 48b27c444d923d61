#pragma once

#include <chrono>
#include <string>

#include "host/clock.h"

namespace kv408 {

/// `time` as ISO 8601 has it, to the millisecond, in the local time that is `utc_offset` ahead of
/// UTC: "2026-11-22T13:05:09.250+01:00".
[[nodiscard]] std::string date_text(std::chrono::system_clock::time_point time,
                                    std::chrono::minutes utc_offset);

/// How far the local time of `clock` is ahead of UTC now, in quarters of an hour.
[[nodiscard]] std::chrono::minutes utc_offset(const Clock& clock);

} // namespace kv408
