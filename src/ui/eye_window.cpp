#include "ui/eye_window.h"

#include "ui/panel_frame.h"
#include "ui/told_window.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int least_eye_width = 470; // for the longest reason

} // namespace

EyeWindow::EyeWindow(EyeDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmEye"_s);
    setWindowTitle(u"Kv408 - Tarvo  Eye"_s);
    EyeControls& controls = dialog.controls();
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_interval());
    layout->addWidget(make_told_frame(driver,
                                      {.names = controls.lblEyeNames,
                                       .values = controls.lblEyeValues,
                                       .remark = controls.lblEyeRemark,
                                       .subject = u"eye"_s,
                                       .state = &controls.lblEyeState,
                                       .reason = &controls.lblEyeFound},
                                      least_eye_width),
                      1);
    add_ending(*this, make_told_ending(*this, driver, controls.cmdEyeCopy,
                                       u"Copies the values to the clipboard"_s, u"cmdEyeClose"_s));
    copy_to_clipboard(controls.cmdEyeCopy, [&dialog] { return dialog.table(); });
}

EyeWindow::~EyeWindow() {
    dialog_.controls().cmdEyeCopy.on_click({});
}

QWidget* EyeWindow::make_interval() {
    auto* const frame = new PanelFrame(u"Unit interval"_s);
    WidgetMaker make(frame, driver_);
    EyeControls& controls = dialog_.controls();
    QGridLayout* const grid = make_tool_grid(frame);
    add_captioned(*grid, 0, u"C&hannel"_s,
                  make.list(controls.cmbEyeChannel,
                            {u"Channel of the eye"_s, u"Whose density is looked at"_s}));
    add_captioned(*grid, 1, u"&Interval"_s,
                  make_typed(make, controls.txtEyeInterval, u"found"_s,
                             {u"Interval"_s, u"Of one bit, as 8ns; empty: found"_s}));
    add_captioned(*grid, 2, u"C&rossing"_s,
                  make_typed(make, controls.txtEyeCrossing, u"found"_s,
                             {u"Crossing"_s, u"When the data cross, after the trigger, as 40ns; "
                                             u"empty: found"_s}));
    return frame;
}

void EyeWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
