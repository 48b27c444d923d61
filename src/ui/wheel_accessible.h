#pragma once

namespace kv408::ui {

/// Lets screen readers see every `WheelWidget` as a slider with its value and range, which they
/// may also set. Calling it again changes nothing.
void offer_wheels_to_screen_readers();

} // namespace kv408::ui
