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

    /// All controls of it; the form itself is none of them.
    ControlList all;

    FormWindow window{"frmcalibration"};

    // The record.
    std::array<TextBox, 11> cald = numbered<TextBox, 11>(all, "cald"); ///< the edited values
    TextBox cald61{all, {.name = "cald61", .outside = Outside::read}}; ///< "Hardware ID"
    TextBox cald62{all, {.name = "cald62", .outside = Outside::read}}; ///< "Firmware ID"
    Button cmdreadcald{all, {"cmdreadcald"}};
    Button cmdwritecal{all, {"cmdwritecal"}};
    Button cmdsetalltodefault{all, {"cmdsetalltodefault"}};
    Button cmdrestorecal{all,
                         {"cmdrestorecal"}}; ///< brings a record back that was kept before a write

    // What is going on.
    Label calstatus{all, "calstatus"}; ///< status of the form
    Label calnote{all, "calnote"};     ///< what there is to say besides
    ProgressBar progressbar1{
        all, {.name = "ProgressBar1", .outside = Outside::read}}; ///< words read or written
    Button cmdcalstop{all, {"cmdcalstop"}};                       ///< Stop, as in the main window

    // Vertical gain.
    Button cmdsetforcalgainh{all, {"cmdsetforcalgainh"}};
    Button cmdcalgain1h{all, {"cmdcalgain1h"}};
    Button cmdsetforcalgainh2{all, {"cmdsetforcalgainh2"}};
    Button cmdcalgain2h{all, {"cmdcalgain2h"}};
    Button cmdsetforcalgainl{all, {"cmdsetforcalgainl"}};
    Button cmdcalgain{all, {"cmdcalgain"}};
    Button cmdsetforcalgainl2{all, {"cmdsetforcalgainl2"}};
    Button cmdcalg2l{all, {"cmdcalg2l"}};

    // Vertical offset.
    Button cmdsetforcalh{all, {"cmdsetforcalh"}};
    Button cmdcaoffseth{all, {"cmdcaoffseth"}};
    Button cmdsetforcall{all, {"cmdsetforcall"}};
    Button cmdcaoffsetl{all, {"cmdcaoffsetl"}};

    // Time base.
    Button cmdsetforcalhscale{all, {"cmdsetforcalhscale"}};
    Button cmdcaltb{all, {"cmdcaltb"}};
    Button cmdsetforlinearitycal{all, {"cmdsetforlinearitycal"}};
    Button cmdcalint{all, {"cmdcalint"}};
    Label calerorcnt{all, "calerorcnt"}; ///< "Error count"
    Label calerormax{all, "calerormax"}; ///< "Max Error(ps)"
};

} // namespace kv408
