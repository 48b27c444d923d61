#pragma once

#include <functional>

#include <QComboBox>
#include <QWidget>

#include "simulator/test_bench.h"

namespace kv408::ui {

/// The window of the simulated bench: signals, cables and faults, which can be changed while the
/// program runs. Closing it only hides it. Its list of connections sets signals and cables at once
/// to what a calibration asks for.
class TestBenchWindow : public QWidget {
public:
    /// Edits `bench`, which outlives the window, and calls `notice` whenever a fault was switched.
    explicit TestBenchWindow(
        simulator::TestBench& bench, const std::function<void()>& notice = [] {});

private:
    QWidget* make_connections();
    void show_bench();
    /// Shows which connection the bench has, if any.
    void show_connection();

    simulator::TestBench& bench_;
    QComboBox* connections_ = nullptr;
    QWidget* shown_ = nullptr; ///< editors of signals and cables; each connection makes new ones
};

} // namespace kv408::ui
