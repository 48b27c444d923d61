#pragma once

#include <functional>

#include <QWidget>

#include "simulator/faults.h"

namespace kv408::ui {

/// Makes a frame of switches, each of which breaks one thing in `faults`, which outlives it, and
/// then calls `notice`.
[[nodiscard]] QWidget* make_fault_switches(simulator::Faults& faults,
                                           const std::function<void()>& notice);

} // namespace kv408::ui
