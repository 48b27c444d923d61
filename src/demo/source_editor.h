#pragma once

#include <QWidget>

#include "simulator/test_bench.h"

namespace kv408::ui {

/// Makes a frame titled `title` that edits `source`, which outlives it, as it is being used.
[[nodiscard]] QWidget* make_source_editor(const QString& title, simulator::Source& source);

} // namespace kv408::ui
