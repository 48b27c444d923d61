#pragma once

#include <functional>
#include <string>
#include <vector>

#include "analysis/jitter.h"
#include "export/density_watch.h"
#include "export/told_values.h"
#include "panel/controls.h"

namespace kv408 {

/// The controls of the jitter window.
struct JitterControls {
    Button mnujitter{"mnujitter"};                  ///< Tools: opens it
    ListBox cmbJitterChannel{"cmbJitterChannel"};   ///< whose density
    ListBox cmbJitterEdge{"cmbJitterEdge"};         ///< any, rising, falling
    TextBox txtJitterNumber{"txtJitterNumber"};     ///< which of these from the left; empty: middle
    TextBox txtJitterLevel{"txtJitterLevel"};       ///< crossing level; empty: 50 %
    TextBox txtJitterOwn{"txtJitterOwn"};           ///< the instrument's jitter, rms; empty: none
    TextBox txtJitterInterval{"txtJitterInterval"}; ///< unit interval of data; empty: found
    Button cmdJitterCopy{"cmdJitterCopy"};          ///< copies the table
    Label lblJitterState{"lblJitterState"};         ///< how many sweeps, since when
    Label lblJitterEdge{"lblJitterEdge"};           ///< which edge it is, or why there is none
    Label lblJitterNames{"lblJitterNames"};
    Label lblJitterValues{"lblJitterValues"}; ///< line by line what the names say
    Label lblJitterRemark{"lblJitterRemark"}; ///< what falsifies them
};

/// The numbers of `jitter` in the order of the window; each without one where there is none.
[[nodiscard]] std::vector<ToldValue> jitter_values(const Told<Jitter>& jitter);

/// The jitter window `frmJitter`: by how much an edge's crossing of a level varies in time. Opening
/// it switches the density on.
class JitterDialog {
public:
    /// From one crossing to the next the bathtub curve has so many steps.
    static constexpr int bathtub_steps = 200;

    /// Works on what `density` collects; both outlive it.
    JitterDialog(DensityDialog& density, const Clock& clock);
    JitterDialog(const JitterDialog&) = delete;
    JitterDialog& operator=(const JitterDialog&) = delete;

    [[nodiscard]] JitterControls& controls() { return controls_; }
    [[nodiscard]] const JitterControls& controls() const { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open() { watch_.open(); }
    [[nodiscard]] bool is_open() const { return watch_.is_open(); }
    void close() { watch_.close(); }

    /// What the boxes say.
    [[nodiscard]] const JitterSetup& setup() const { return setup_; }

    /// The jitter of what is collected now, whether the window is open or not.
    [[nodiscard]] Told<Jitter> jitter() const;

    /// The numbers of that.
    [[nodiscard]] std::vector<ToldValue> values() const { return jitter_values(jitter()); }

    /// The bathtub curve as the window shows it: of what it computed last.
    [[nodiscard]] const Told<std::vector<double>>& bathtub() const { return bathtub_; }

    /// The numbers of the window as a table for the clipboard.
    [[nodiscard]] std::string table() const;

    void refresh() { watch_.refresh(); }
    void tick_over() { watch_.tick_over(); }

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { watch_.on_show(std::move(listener)); }

    /// Sets what draws the bathtub curve anew.
    void on_computed(std::function<void()> listener) { computed_ = std::move(listener); }

private:
    void take_setup();
    void show_values();

    JitterControls controls_;
    JitterSetup setup_;
    DensityWatch watch_;
    std::vector<ToldValue> values_;
    Told<std::vector<double>> bathtub_ = WhyNot::no_hits;
    std::function<void()> computed_;
};

} // namespace kv408
