#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "analysis/collected.h"
#include "export/density_dialog.h"
#include "host/clock.h"
#include "panel/controls.h"
#include "state/channel.h"

namespace kv408 {

/// What the windows that tell something of a channel's density have in common: whose it is, when it
/// is looked at anew, and what falsifies it. Opening one switches the density on, closing it leaves
/// that on.
class DensityWatch {
public:
    /// The window's controls for that.
    struct Controls {
        ListBox& channel;        ///< CH1, CH2
        Label& remark;           ///< what makes counts smaller or wrong
        Label* sweeps = nullptr; ///< how many were counted, and since when; null: not told
    };

    /// When an open window looks at the density anew.
    struct Pace {
        std::chrono::nanoseconds least; ///< from one look to the next
        bool each_time = false;         ///< even if nothing was counted since
    };

    /// Calls `show` to bring the window's numbers up to date. All of these outlive it.
    DensityWatch(DensityDialog& density, const Clock& clock, const Controls& controls, Pace pace,
                 std::function<void()> show);
    DensityWatch(const DensityWatch&) = delete;
    DensityWatch& operator=(const DensityWatch&) = delete;

    /// Opens the window; one that is open already is only brought to the front.
    void open();
    [[nodiscard]] bool is_open() const { return open_; }
    void close() { open_ = false; }

    [[nodiscard]] Channel channel() const;

    /// What was collected of that channel; null where there is nothing.
    [[nodiscard]] const Collected* collected() const { return density_.collected(channel()); }

    /// Brings texts and numbers of the open window up to date.
    void refresh();

    /// The same, when it is time.
    void tick_over();

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { present_ = std::move(listener); }

private:
    [[nodiscard]] std::string remark() const;
    [[nodiscard]] bool is_due() const;

    DensityDialog& density_;
    const Clock& clock_;
    Controls controls_;
    Pace pace_;
    std::function<void()> show_;
    std::function<void()> present_;
    bool open_ = false;
    std::chrono::nanoseconds refreshed_{0};
    std::uint64_t changes_ = 0; ///< of the density, when it was looked at last
};

} // namespace kv408
