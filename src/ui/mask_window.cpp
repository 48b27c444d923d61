#include "ui/mask_window.h"

#include <QHBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/told_window.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int least_mask_width = 470; // for the longest reason

} // namespace

MaskWindow::MaskWindow(MaskDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmMask"_s);
    setWindowTitle(u"Kv408 - Tarvo  Mask Test"_s);
    MaskControls& controls = dialog.controls();
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_mask());
    layout->addWidget(make_verdict(), 1);
    layout->addWidget(make_told_frame(driver,
                                      {.names = controls.lblMaskNames,
                                       .values = controls.lblMaskValues,
                                       .remark = controls.lblMaskRemark,
                                       .subject = u"mask test"_s,
                                       .state = &controls.lblMaskState,
                                       .reason = &controls.lblMaskFound},
                                      least_mask_width));
    add_ending(*this, make_told_ending(*this, driver, controls.cmdMaskCopy,
                                       u"Copies the values to the clipboard"_s, u"cmdMaskClose"_s));
    copy_to_clipboard(controls.cmdMaskCopy, [&dialog] { return dialog.table(); });
}

MaskWindow::~MaskWindow() {
    dialog_.controls().cmdMaskCopy.on_click({});
}

QWidget* MaskWindow::make_mask() {
    auto* const frame = new PanelFrame(u"Mask"_s);
    WidgetMaker make(frame, driver_);
    MaskControls& controls = dialog_.controls();
    QGridLayout* const grid = make_tool_grid(frame);
    add_captioned(*grid, 0, u"C&hannel"_s,
                  make.list(controls.cmbMaskChannel,
                            {u"Channel of the mask test"_s, u"Whose density is looked at"_s}));
    QComboBox* const masks = make.list(
        controls.cmbMask, {u"Mask"_s, u"The polygons that the trace is to keep out of"_s});
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addWidget(masks, 1);
    row->addWidget(make.button(controls.cmdMaskLoad, u"Loa&d..."_s,
                               {u"Load"_s, u"Takes a mask from a file"_s}));
    grid->addWidget(make_caption(u"&Mask"_s, masks), 1, 0);
    grid->addLayout(row, 1, 1);
    add_captioned(
        *grid, 2, u"Allowed &ratio"_s,
        make_typed(make, controls.txtMaskRatio, u"the mask's"_s,
                   {u"Allowed ratio"_s, u"The share of the hits that may lie in the mask, "
                                        u"as 5e-5; empty: as the mask says"_s}));
    add_captioned(*grid, 3, u"On first h&it"_s,
                  make.list(controls.cmbMaskAction,
                            {u"On first hit"_s, u"What the first hit in the mask brings about"_s}));
    return frame;
}

QWidget* MaskWindow::make_verdict() {
    auto* const frame = new PanelFrame(u"Verdict"_s);
    WidgetMaker make(frame, driver_);
    constexpr int times_larger = 6;
    QLabel* const verdict =
        make.label(dialog_.controls().lblMaskVerdict,
                   {u"Verdict"_s, u"PASS while no more hits than allowed lie in the mask"_s});
    QFont large = verdict->font();
    large.setPointSizeF(large.pointSizeF() * times_larger);
    large.setBold(true);
    verdict->setFont(large);
    verdict->setAlignment(Qt::AlignCenter);
    verdict->setMinimumHeight(QFontMetrics(large).height());
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(verdict, 1);
    return frame;
}

void MaskWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
