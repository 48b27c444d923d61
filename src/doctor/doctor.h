#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

#include "host/clock.h"
#include "host/diagnose.h"
#include "link/bridge.h"

namespace kv408 {

/// What `kv408-doctor` tells whoever started it, as its exit code.
enum class DoctorResult {
    answers = 0,   ///< an instrument answers
    no_answer = 1, ///< none does
    wrong_use = 2  ///< its command line is wrong
};

/// Answers `arguments`, those of the command line after the program's name, when there are any: the
/// help goes to `out` and is `answers`, everything else is wrong use and told in `errors`.
[[nodiscard]] DoctorResult answer_arguments(std::span<const char* const> arguments,
                                            std::ostream& out, std::ostream& errors);

/// Writes to `out` what `diagnose` tells, then finds, opens and
/// checks the instrument over `bridge` just as the program does at its start, and writes what came
/// of it. The device is closed at the end.
[[nodiscard]] DoctorResult examine(Bridge& bridge, const Diagnose& diagnose, Clock& clock,
                                   std::ostream& out);

} // namespace kv408
