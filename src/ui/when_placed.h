#pragma once

#include <functional>

#include <QWidget>

namespace kv408::ui {

/// Calls `then` once, when `window` has been shown and the desktop has put it where it is to be: it
/// has then stood still for a moment. A window that closes before is not waited for.
void when_placed(QWidget& window, std::function<void()> then);

} // namespace kv408::ui
