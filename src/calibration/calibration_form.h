#pragma once

#include <array>
#include <string>
#include <string_view>

#include "calibration/progress_bar.h"
#include "panel/controls.h"

namespace kv408 {

/// Stands on the form above the button of the linearity calibration, and in its question.
inline constexpr std::string_view linearity_warning =
    "Linearity Calibration will take minimum 30 minutes!";

/// The form itself: open or closed.
class FormWindow : public Control {
public:
    using Control::Control;

    /// True while the form is open.
    [[nodiscard]] bool is_open() const { return open_; }

    /// Opens it; the window of a form that is open already comes to the front.
    void open() {
        open_ = true;
        shown();
    }

    /// Closes it.
    void close() {
        open_ = false;
        shown();
    }

private:
    bool open_ = false;
};

/// Every control of the calibration form, with its caption.
struct CalibrationForm {
    /// The form before it is opened: boxes empty, no handlers.
    CalibrationForm();

    FormWindow window{"frmcalibration"};

    // The record.
    std::array<TextBox, 11> cald; ///< the edited values
    TextBox cald61{"cald61"};     ///< "Hardware ID"
    TextBox cald62{"cald62"};     ///< "Firmware ID"
    Button cmdreadcald{"cmdreadcald"};
    Button cmdwritecal{"cmdwritecal"};
    Button cmdsetalltodefault{"cmdsetalltodefault"};
    Button cmdrestorecal{"cmdrestorecal"}; ///< brings a record back that was kept before a write

    // What is going on.
    Label calstatus{"calstatus"};             ///< status of the form
    Label calnote{"calnote"};                 ///< what there is to say besides
    ProgressBar progressbar1{"ProgressBar1"}; ///< words read or written
    Button cmdcalstop{"cmdcalstop"};          ///< Stop, as in the main window

    // Vertical gain.
    Button cmdsetforcalgainh{"cmdsetforcalgainh"};
    Button cmdcalgain1h{"cmdcalgain1h"};
    Button cmdsetforcalgainh2{"cmdsetforcalgainh2"};
    Button cmdcalgain2h{"cmdcalgain2h"};
    Button cmdsetforcalgainl{"cmdsetforcalgainl"};
    Button cmdcalgain{"cmdcalgain"};
    Button cmdsetforcalgainl2{"cmdsetforcalgainl2"};
    Button cmdcalg2l{"cmdcalg2l"};

    // Vertical offset.
    Button cmdsetforcalh{"cmdsetforcalh"};
    Button cmdcaoffseth{"cmdcaoffseth"};
    Button cmdsetforcall{"cmdsetforcall"};
    Button cmdcaoffsetl{"cmdcaoffsetl"};

    // Time base.
    Button cmdsetforcalhscale{"cmdsetforcalhscale"};
    Button cmdcaltb{"cmdcaltb"};
    Button cmdsetforlinearitycal{"cmdsetforlinearitycal"};
    Button cmdcalint{"cmdcalint"};
    Label calerorcnt{"calerorcnt"}; ///< "Error count"
    Label calerormax{"calerormax"}; ///< "Max Error(ps)"
};

} // namespace kv408
