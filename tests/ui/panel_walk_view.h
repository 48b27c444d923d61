#pragma once

#include <QStringList>
#include <QWidget>

#include "display/surface.h"
#include "scope/parts.h"
#include "scope/scope.h"

namespace kv408::ui {

/// Every widget of `window`, and of the dialogs that are open over it, against its control: what it
/// shows, whether it can be used and seen. All that does not agree.
[[nodiscard]] QStringList view_differences(QWidget& window, Scope& scope);

/// The picture of the plot against what the panel says should be drawn, while it sweeps.
[[nodiscard]] QStringList picture_differences(const Surface& picture, const Parts& parts);

} // namespace kv408::ui
