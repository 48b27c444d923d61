#pragma once

#include <functional>
#include <memory>

#include "display/picture.h"
#include "display/snapshot.h"
#include "export/density_dialog.h"
#include "export/export_dialog.h"
#include "export/eye_dialog.h"
#include "export/histogram_dialog.h"
#include "export/jitter_dialog.h"
#include "export/mask_dialog.h"
#include "export/maths_dialog.h"
#include "export/readouts_dialog.h"
#include "export/record_dialog.h"
#include "export/reference_menu.h"
#include "export/spectrum_dialog.h"
#include "export/statistics_dialog.h"
#include "host/places.h"
#include "panel/front_panel.h"
#include "state/measurement_state.h"
#include "state/sweeps.h"

namespace kv408 {

/// What the menu "Tools" opens. Each tool works on finished sweeps and sends nothing. With none of
/// them in use nothing else changes.
class Tools {
public:
    /// What they need of the machine.
    struct Host {
        Clock& clock;
        MessageBoxes& boxes;
        Files& files;
        FileChoosers& choosers;
        Places places;
        std::function<void()> beep = {}; ///< sounds the computer's bell; empty: silent
    };

    /// What they work with besides sweeps and panel.
    struct Shown {
        Picture& picture;
        Snapshot& snapshot;
        const MeasurementState& measurements; ///< of the last sweep, while measuring is on
        ReadoutsDialog::Source readouts;
    };

    /// Connects the menu entries of `panel`.
    Tools(FrontPanel& panel, const Sweeps& sweeps, const Shown& shown, const Host& host);
    Tools(const Tools&) = delete;
    Tools& operator=(const Tools&) = delete;

    /// The export dialog.
    [[nodiscard]] ExportDialog& export_dialog() { return export_dialog_; }

    /// The recording dialog.
    [[nodiscard]] RecordDialog& record_dialog() { return record_dialog_; }

    /// The submenu of the references.
    [[nodiscard]] ReferenceMenu& references() { return references_; }

    /// The statistics window.
    [[nodiscard]] StatisticsDialog& statistics() { return statistics_; }

    /// The density window.
    [[nodiscard]] DensityDialog& density() { return density_; }
    [[nodiscard]] const DensityDialog& density() const { return density_; }

    /// The histogram window.
    [[nodiscard]] HistogramDialog& histogram() { return histogram_; }
    [[nodiscard]] const HistogramDialog& histogram() const { return histogram_; }

    /// The jitter window.
    [[nodiscard]] JitterDialog& jitter() { return jitter_; }
    [[nodiscard]] const JitterDialog& jitter() const { return jitter_; }

    /// The window of read-outs.
    [[nodiscard]] ReadoutsDialog& readouts() { return readouts_; }
    [[nodiscard]] const ReadoutsDialog& readouts() const { return readouts_; }

    /// The eye window.
    [[nodiscard]] EyeDialog& eye() { return eye_; }
    [[nodiscard]] const EyeDialog& eye() const { return eye_; }

    /// The mask window.
    [[nodiscard]] MaskDialog& mask() { return mask_; }

    /// The maths window.
    [[nodiscard]] MathsDialog& maths() { return maths_; }
    [[nodiscard]] const MathsDialog& maths() const { return maths_; }

    /// The spectrum window.
    [[nodiscard]] SpectrumDialog& spectrum() { return spectrum_; }
    [[nodiscard]] const SpectrumDialog& spectrum() const { return spectrum_; }

    /// Hands what has come with `sweep` to those tools that count each channel by itself.
    void sweep_finished(const Sweep& sweep) {
        if (!paused_) {
            density_.sweep_finished(sweep);
        }
    }

    /// While they pause, sweeps are taken with set-ups that are only being tried: density,
    /// statistics, maths and spectrum take none of them, and then go on with what they have.
    void set_paused(bool paused);

    /// Hands `sweep`, with which every channel that is on has come and been measured, to each tool.
    /// Runs in a tick: nothing here waits for a disk.
    void sweep_complete(const std::shared_ptr<const Sweep>& sweep);

    /// Shows how far the recording is; to be called every tick.
    void tick() { record_dialog_.tick(); }

    /// Brings the tools' windows up to date; to be called after each tick, when it has drawn.
    void tick_over() {
        statistics_.tick_over();
        density_.tick_over();
        histogram_.tick_over();
        jitter_.tick_over();
        eye_.tick_over();
        mask_.tick_over();
        readouts_.tick_over();
        maths_.tick_over();
        spectrum_.tick_over();
    }

private:
    [[nodiscard]] ExportOrigin origin() const;
    [[nodiscard]] AddComputed add_computed() const;
    [[nodiscard]] SpectrumDialog::FindComputed find_computed() const;
    void maths_changed();
    [[nodiscard]] LimitActions::Host limit_host(const Host& host);
    [[nodiscard]] StatisticsDialog::Host statistics_host(const Host& host);
    [[nodiscard]] DensityDialog::Plot density_plot();
    [[nodiscard]] HistogramDialog::Plot histogram_plot();
    [[nodiscard]] EyeDialog::ShowMarks marks_of(Picture::MarksOf tool);

    FrontPanel& panel_;
    Shown shown_;
    Places places_;
    MathsDialog maths_;
    ExportDialog export_dialog_;
    RecordDialog record_dialog_;
    ReferenceMenu references_;
    StatisticsDialog statistics_;
    DensityDialog density_;
    HistogramDialog histogram_;
    JitterDialog jitter_;
    EyeDialog eye_;
    MaskDialog mask_;
    ReadoutsDialog readouts_;
    SpectrumDialog spectrum_;
    bool paused_ = false;
};

} // namespace kv408
