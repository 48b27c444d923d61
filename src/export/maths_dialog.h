#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "export/maths_tool.h"
#include "host/clock.h"
#include "panel/controls.h"
#include "state/reference_curve.h"
#include "state/sweeps.h"

namespace kv408 {

/// The controls of the maths window besides those of its traces.
struct MathsWindowControls {
    Button mnumaths{"mnumaths"};         ///< Tools: opens it
    Button cmdMathsCopy{"cmdMathsCopy"}; ///< copies the measurements
};

/// The maths window `frmMaths`: two traces that are computed from the channels' sweeps. They are on
/// as long as a function is chosen, whether the window is open or not.
class MathsDialog {
public:
    /// How many traces there are.
    static constexpr std::size_t count = 2;

    /// What is to be drawn over the traces.
    using Show = std::function<void(std::vector<ShownReference>)>;

    /// Watches `panel` and `sweeps`; all outlive it. `show` gets the traces whenever they change,
    /// and `draw` draws them where no sweep does.
    MathsDialog(const FrontPanel& panel, const Sweeps& sweeps, const Clock& clock, Show show,
                std::function<void()> draw);
    MathsDialog(const MathsDialog&) = delete;
    MathsDialog& operator=(const MathsDialog&) = delete;

    /// The controls that it has once, for the window and the menu.
    [[nodiscard]] MathsWindowControls& controls() { return controls_; }

    /// The trace in `place`, 0 or 1.
    [[nodiscard]] MathsTool& tool(std::size_t place) { return *tools_.at(place); }
    [[nodiscard]] const MathsTool& tool(std::size_t place) const { return *tools_.at(place); }

    /// Opens the window; one that is open already is only brought to the front.
    void open();

    /// Whether the window is open.
    [[nodiscard]] bool is_open() const { return open_; }

    /// Notes that it is closed: measurements are no longer made for it.
    void close() { open_ = false; }

    /// A sweep with which every channel that is on has come. Costs nothing while both are off.
    void take(const Sweep& sweep);

    /// Adds the traces that are of `sweep` to `exported`.
    void add_to(const Sweep& sweep, ExportedSweep& exported) const;

    /// The measurements of both as a table with headings, separated by tabs.
    [[nodiscard]] std::string table() const;

    /// Brings plot and texts up to date, the texts not more often than people read; every tick.
    void tick_over();

    /// Sets what shows the window and brings it to the front, and what is told after a user's
    /// change of a trace.
    void on_show(std::function<void()> listener) { present_ = std::move(listener); }
    void on_changed(std::function<void()> listener) { changed_ = std::move(listener); }

private:
    void changed();
    void show_traces();
    void show_texts();
    [[nodiscard]] bool any_on() const;

    Show show_;
    std::function<void()> draw_;
    const Clock& clock_;
    MathsWindowControls controls_;
    std::array<std::unique_ptr<MathsTool>, count> tools_;
    std::array<std::string, count> seen_; ///< how each was captioned when they were shown last
    std::function<void()> present_;
    std::function<void()> changed_;
    bool open_ = false;
    std::chrono::nanoseconds shown_at_{0};
};

} // namespace kv408
