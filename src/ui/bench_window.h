#pragma once

#include <QWidget>

#include "simulator/bench.h"

namespace kv408::ui {

/// The window of the simulated bench: signals, cables and faults, changed while the program runs.
/// Closing it only hides it.
class BenchWindow : public QWidget {
public:
    /// Edits `bench`, which outlives the window.
    explicit BenchWindow(simulator::Bench& bench);

    /// Moves the window to a place on the screen where it does not cover `window`, beside or below
    /// it, and returns true; without such a place to the corner of the screen, and returns false.
    bool place_beside(const QWidget& window);
};

} // namespace kv408::ui
