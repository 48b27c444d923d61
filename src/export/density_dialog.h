#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/density_collector.h"
#include "export/dialog_host.h"
#include "panel/controls.h"
#include "panel/front_panel.h"
#include "state/sweep.h"

namespace kv408 {

/// The controls of the density window.
struct DensityControls {
    CheckBox chkDensity{"chkDensity"}; ///< collects and shows
    std::array<CheckBox, 2> channel{CheckBox("chkDensityCH1"), CheckBox("chkDensityCH2")};
    ListBox cmbDensityPalette{"cmbDensityPalette"};
    TextBox txtDensityHalfLife{"txtDensityHalfLife"}; ///< sweeps; empty: nothing fades
    CheckBox chkDensityFreeze{"chkDensityFreeze"};
    Button cmdDensityClear{"cmdDensityClear"};
    Button cmdDensityExport{"cmdDensityExport"};
    /// How many sweeps of each channel, since when, and why it began there.
    std::array<Label, 2> state{Label("lblDensityCH1"), Label("lblDensityCH2")};
    Label lblDensityRemark{"lblDensityRemark"}; ///< what makes the counts smaller or wrong
};

/// The number of sweeps that `text` says a half-life has; nothing where it says none that can be
/// taken.
[[nodiscard]] std::optional<int> half_life_in(std::string_view text);

/// The density window `frmDensity`, and what it operates: the counts of how often the traces passed
/// where. Closing the window leaves these as they are.
class DensityDialog {
public:
    /// What it does on the plot.
    struct Plot {
        /// Shows what was collected of a channel, or nothing: null.
        std::function<void(Channel, const Collected*)> show;
        /// Takes in a sweep that was counted, as `DensityCollector::Counted`.
        DensityCollector::Counted add;
        /// Colours it with the palette of that index.
        std::function<void(std::size_t)> colour;
        /// Draws the plot anew.
        std::function<void()> draw;
    };

    /// Works on `panel`; both outlive it.
    DensityDialog(const FrontPanel& panel, const DialogHost& host, Plot plot);
    DensityDialog(const DensityDialog&) = delete;
    DensityDialog& operator=(const DensityDialog&) = delete;

    [[nodiscard]] DensityControls& controls() { return controls_; }
    [[nodiscard]] const DensityControls& controls() const { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open();
    [[nodiscard]] bool is_open() const { return open_; }
    void close() { open_ = false; }

    /// Counts the channels that have come with `sweep`; to be called with each finished one.
    void sweep_finished(const Sweep& sweep);

    /// Brings the texts up to date, not more often than people read.
    void tick_over();

    /// What was collected of `channel`; null where there is nothing.
    [[nodiscard]] const Collected* collected(Channel channel) const {
        return collector_.collected(channel);
    }

    /// Forgets what was collected up to now; collecting goes on.
    void clear();

    /// Writes what was collected of each channel to the file at `path` and its axes to that beside
    /// it; of two channels to files of their own, "_ch1" and "_ch2". What goes wrong is told in a
    /// message.
    void save(const std::filesystem::path& path);

    /// What makes counts smaller or wrong, line by line: averaging, counters at their end, how long
    /// sweeps take.
    [[nodiscard]] std::vector<std::string> remarks() const;

    /// How often counters have changed up to now: by a sweep or in any other way.
    [[nodiscard]] std::uint64_t changes() const { return changes_; }

    /// How many sweeps of `channel` were counted, since when, and what began it anew.
    [[nodiscard]] std::string state_of(Channel channel) const;

    /// Brings the texts up to date.
    void refresh();

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }

private:
    void collect();
    void half_life_typed();
    void cmdDensityExport_Click();
    void draw() const;

    const FrontPanel& panel_;
    DialogHost host_;
    Plot plot_;
    DensityControls controls_;
    DensityCollector collector_;
    std::uint64_t changes_ = 0;
    bool open_ = false;
    std::chrono::nanoseconds refreshed_{0};
    std::function<void()> show_;
};

} // namespace kv408
