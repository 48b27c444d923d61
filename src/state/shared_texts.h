#pragma once

// Texts of one part of the program that another one compares with. The picture is drawn by what the
// status box says.

namespace kv408 {

/// What the status box says while the instrument sees no trigger; then no trace is drawn.
inline constexpr const char* waiting_for_trigger_text = "Waiting For TRIGGER";

/// What the status box says while a set-up is sent.
inline constexpr const char* setup_text = "Setup...";

} // namespace kv408
