#pragma once

#include <QWidget>

#include "simulator/faults.h"

namespace kv408::ui {

/// Makes a frame of switches, each of which breaks one thing in `faults`, which outlives it.
[[nodiscard]] QWidget* make_fault_switches(simulator::Faults& faults);

} // namespace kv408::ui
