#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/clock.h"
#include "maths/maths_trace.h"
#include "panel/controls.h"
#include "panel/front_panel.h"
#include "spectrum/spectral_lines.h"
#include "spectrum/spectrum_history.h"
#include "state/sweep.h"

namespace kv408 {

/// The controls of the spectrum window.
struct SpectrumControls {
    Button mnuspectrum{"mnuspectrum"};                ///< Tools: opens it
    ListBox cmbSpectrumChannel{"cmbSpectrumChannel"}; ///< whose sweeps, or which computed trace
    ListBox cmbSpectrumWindow{"cmbSpectrumWindow"};   ///< in the order of `window_names`
    ListBox cmbSpectrumUnit{"cmbSpectrumUnit"};       ///< dBV, dBm in 50 ohms
    ListBox cmbSpectrumHold{"cmbSpectrumHold"};       ///< as `SpectrumHold`
    TextBox txtSpectrumCount{"txtSpectrumCount"};     ///< sweeps for that, 1..1000
    CheckBox chkSpectrumLog{"chkSpectrumLog"};        ///< the axis of frequencies is logarithmic
    Button cmdSpectrumClear{"cmdSpectrumClear"};      ///< begins mean and peak hold anew
    Button cmdSpectrumCopy{"cmdSpectrumCopy"};        ///< copies lines and levels
    Label lblSpectrumState{"lblSpectrumState"};       ///< lines, how many sweeps, Nyquist limit
    Label lblSpectrumPeaks{"lblSpectrumPeaks"};       ///< line by line frequency and level
    Label lblSpectrumPurity{"lblSpectrumPurity"};     ///< distortion and noise, and of what
    Label lblSpectrumRemark{"lblSpectrumRemark"};     ///< what falsifies them
};

/// The spectrum window `frmSpectrum`: what sines a channel's sweeps are made of. It takes sweeps
/// only while it is open.
class SpectrumDialog {
public:
    /// How many peaks are told.
    static constexpr std::size_t most_peaks = 5;

    /// A computed trace, 0 the first: null where there is none, and then the reason why.
    struct Computed {
        std::shared_ptr<const MathsTrace> trace;
        std::string reason;
    };
    using FindComputed = std::function<Computed(std::size_t)>;

    /// Watches what `panel` has on; all outlive it. `find_computed` finds the computed traces,
    /// which have taken each sweep before the dialog does.
    SpectrumDialog(const FrontPanel& panel, const Clock& clock, FindComputed find_computed = {});
    SpectrumDialog(const SpectrumDialog&) = delete;
    SpectrumDialog& operator=(const SpectrumDialog&) = delete;

    [[nodiscard]] SpectrumControls& controls() { return controls_; }
    [[nodiscard]] const SpectrumControls& controls() const { return controls_; }

    /// Opens the window; one that is open already is only brought to the front. `last` is the last
    /// complete sweep, null without any, with which it begins.
    void open(const std::shared_ptr<const Sweep>& last);
    [[nodiscard]] bool is_open() const { return open_; }

    /// Closes it and forgets the sweeps.
    void close();

    /// Begins anew if the computed trace whose spectrum is shown is not the one that was taken
    /// last, with another function as with other sweeps.
    void computed_changed();

    /// A sweep with which every channel that is on has come.
    void take(const std::shared_ptr<const Sweep>& sweep);

    /// The spectrum as it is shown; without lines where there is none.
    [[nodiscard]] const Spectrum& spectrum() const { return shown_; }

    /// The highest peaks of it, the highest first.
    [[nodiscard]] const std::vector<SpectralPeak>& peaks() const { return peaks_; }

    /// Distortion and noise of it; nothing without a peak.
    [[nodiscard]] const std::optional<Purity>& purity() const { return purity_; }

    /// How many sweeps are in it.
    [[nodiscard]] std::size_t sweeps() const;

    /// How many sweeps mean and peak hold take at most.
    [[nodiscard]] std::size_t kept() const { return history_.kept(); }

    /// The level of `power` in the chosen unit, decibels.
    [[nodiscard]] double level(double power) const;

    /// "dBV" or "dBm"; of what is no voltage decibels above its unit rms, "dB(V/s)".
    [[nodiscard]] std::string unit() const;

    /// Why there is no spectrum; empty where there is one.
    [[nodiscard]] const std::string& reason() const { return reason_; }

    /// Frequencies and levels of all lines with headings, separated by tabs.
    [[nodiscard]] std::string table() const;

    /// Brings the texts up to date, not more often than people read; every tick.
    void tick_over();

    /// Sets what shows the window and brings it to the front, and what draws the spectrum anew.
    void on_show(std::function<void()> listener) { present_ = std::move(listener); }
    void on_computed(std::function<void()> listener) { computed_ = std::move(listener); }

private:
    /// The place of the computed trace that is chosen; nothing where a channel is.
    [[nodiscard]] std::optional<std::size_t> computed_place() const;
    [[nodiscard]] Computed computed() const;
    [[nodiscard]] bool in_volts() const { return definition_.unit() == MathsUnit::volt; }
    [[nodiscard]] Channel channel() const;
    [[nodiscard]] SpectrumHold held() const;
    [[nodiscard]] SpectrumWindow window() const;
    void add_computed(const std::shared_ptr<const MathsTrace>& trace);
    void begin_anew();
    void note(bool averaged, bool clips);
    void add(const Sweep& sweep);
    void count_typed();
    void show();
    [[nodiscard]] std::string state_text() const;
    [[nodiscard]] std::string peaks_text() const;
    [[nodiscard]] std::string purity_text() const;
    [[nodiscard]] std::string remark_text() const;

    const FrontPanel& panel_;
    const Clock& clock_;
    SpectrumControls controls_;
    FindComputed find_computed_;
    std::shared_ptr<const MathsTrace> of_; ///< the computed trace that was taken last
    MathsDefinition definition_;           ///< of the computed trace whose spectra are kept
    SpectrumHistory history_;
    std::shared_ptr<const Sweep> last_; ///< the last one that was taken
    bool averaged_ = false;             ///< the last spectrum is of an averaged sweep
    bool clips_ = false;                ///< it is of a sweep that clips
    bool has_clipped_ = false;          ///< or one before it is, since they began anew
    Spectrum shown_;
    std::vector<SpectralPeak> peaks_;
    std::optional<Purity> purity_;
    std::string reason_;
    std::function<void()> present_;
    std::function<void()> computed_;
    bool open_ = false;
    bool stale_ = false; ///< a sweep has come since the texts were made
    std::chrono::nanoseconds shown_at_{0};
};

} // namespace kv408
