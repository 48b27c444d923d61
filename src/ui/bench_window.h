#pragma once

#include <functional>

#include <QWidget>

#include "simulator/bench.h"

namespace kv408::ui {

/// The window of the simulated bench: signals, cables and faults, changed while the program runs.
/// Closing it only hides it. A list connects at once what a calibration asks for.
class BenchWindow : public QWidget {
public:
    /// Edits `bench`, which outlives the window, and calls `notice` whenever a fault was switched.
    explicit BenchWindow(
        simulator::Bench& bench, const std::function<void()>& notice = [] {});

    /// Moves the window to a place on the screen where it does not cover `window`, beside or below
    /// it, and returns true; without such a place to the corner of the screen, and returns false.
    bool place_beside(const QWidget& window);

private:
    QWidget* make_connections();
    void show_bench();

    simulator::Bench& bench_;
    QWidget* shown_ = nullptr; ///< signals and cables as they were when it was made
};

} // namespace kv408::ui
