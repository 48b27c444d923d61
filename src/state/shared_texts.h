#pragma once

// Texts of one part of the program that another one compares with. The picture is drawn by what the
// status box and the results panel say.

namespace kv408 {

/// What the status box says while the instrument sees no trigger; then no trace is drawn.
inline constexpr const char* waiting_for_trigger_text = "Waiting For TRIGGER";

/// What the status box says while a set-up is sent.
inline constexpr const char* setup_text = "Setup...";

/// What a result says when there is no such pulse or edge, and when an edge takes no time; then
/// nothing is marked on the trace. Its label adds one blank.
inline constexpr const char* not_measurable = "---";
inline constexpr const char* infinitely_fast = "-inf-";

} // namespace kv408
