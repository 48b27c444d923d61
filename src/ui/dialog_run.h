#pragma once

#include <QDialog>
#include <QWidget>

namespace kv408::ui {

/// Shows `dialog` over `window`, which may be null, and returns once it has been answered or
/// dismissed. Meanwhile nothing that belongs to `window` can be operated; it can be closed.
void run_over(QWidget* window, QDialog& dialog);

} // namespace kv408::ui
