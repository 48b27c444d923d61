#pragma once

#include "panel/front_panel.h"
#include "panel/measuring.h"
#include "panel/screen.h"
#include "state/channel_state.h"
#include "state/measurement_state.h"
#include "state/sweeps.h"

namespace kv408 {

/// The automatic measurements: the engine, the results panel under the plot, and the marks of the
/// annotated measurement.
class Measurements : public Measuring {
public:
    /// What the measurements are made from, and what they leave behind.
    struct Data {
        const Sweeps& sweeps;
        const Channels& channels;
        MeasurementState& state;
        AnnotationMarks& marks;
    };

    /// Connects the Measurement frame.
    Measurements(FrontPanel& panel, const Data& data, Screen& screen);

    /// Measures the last finished sweep; changes nothing while `Check1` is not checked.
    void makemeasurement() override;

    /// Shows name and results of each slot, and takes the marks of the annotated one for the
    /// picture; hides the panel while `Check1` is not checked. A slot set to "---" shows an empty
    /// row, a channel that is off an empty result. All three rows are always there, so the panel
    /// never leaves its place under the plot.
    void showmeasurements() override;

    /// Shows the results panel, or hides it.
    void enablemeasurements() { panel_.picmeasure.set_visible(true); }
    void disablemeasurements() { panel_.picmeasure.set_visible(false); }

    /// `Check1` was clicked: unchecked, the panel and the marks go at once; checked, they come back
    /// with the next results.
    void Check1_Click();

    /// A slot's measurement was chosen: its results, already there, and its marks are shown.
    void cmbMeas_Click();

    /// The user pressed the annotation box of slot `index` (0..2), which has its new value: the
    /// other two are unchecked and the mark is shown. Setting a box from code does not run this; so
    /// a settings file with two annotated slots gets both boxes checked by running this for each of
    /// them and checking all of them after that. The highest slot is the marked one then, until the
    /// user presses a box.
    void chkMeasAnno_MouseDown(int index);

private:
    void show_slot(std::size_t slot);
    void take_marks(std::size_t slot);

    FrontPanel& panel_;
    Data data_;
    Screen& screen_;
};

} // namespace kv408
