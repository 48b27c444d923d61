#include "ui/jitter_window.h"

#include <QVBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/told_window.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int least_values_width = 470; // for the longest reason

} // namespace

JitterWindow::JitterWindow(JitterDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver), plot_(new BathtubPlot(dialog)) {
    setObjectName(u"frmJitter"_s);
    setWindowTitle(u"Kv408 - Tarvo  Jitter"_s);
    JitterControls& controls = dialog.controls();
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_edge());
    layout->addWidget(make_told_frame(driver,
                                      {.names = controls.lblJitterNames,
                                       .values = controls.lblJitterValues,
                                       .remark = controls.lblJitterRemark,
                                       .subject = u"jitter"_s,
                                       .state = &controls.lblJitterState,
                                       .reason = &controls.lblJitterEdge},
                                      least_values_width));
    layout->addWidget(make_bathtub(), 1);
    add_ending(*this,
               make_told_ending(*this, driver, controls.cmdJitterCopy,
                                u"Copies the values to the clipboard"_s, u"cmdJitterClose"_s));
    copy_to_clipboard(controls.cmdJitterCopy, [&dialog] { return dialog.table(); });
    dialog.on_computed([this] { plot_->update(); });
}

JitterWindow::~JitterWindow() {
    dialog_.on_computed({});
    dialog_.controls().cmdJitterCopy.on_click({});
}

QWidget* JitterWindow::make_edge() {
    auto* const frame = new PanelFrame(u"Edge"_s);
    WidgetMaker make(frame, driver_);
    JitterControls& controls = dialog_.controls();
    const auto [left, right] = make_two_grids(*frame);
    add_captioned(left, 0, u"C&hannel"_s,
                  make.list(controls.cmbJitterChannel,
                            {u"Channel of the jitter"_s, u"Whose density is looked at"_s}));
    add_captioned(
        right, 0, u"&Edge"_s,
        make.list(controls.cmbJitterEdge,
                  {u"Edge"_s, u"Which edges count; of random data both directions do"_s}));
    add_captioned(left, 1, u"&Number"_s,
                  make_typed(make, controls.txtJitterNumber, u"in the middle"_s,
                             {u"Number of the edge"_s,
                              u"Which of these edges, 1 the first from the left; empty: the one "
                              u"nearest to the middle of the screen"_s}));
    add_captioned(right, 1, u"Le&vel"_s,
                  make_typed(make, controls.txtJitterLevel, u"50 %"_s,
                             {u"Crossing level"_s, u"The level that the edge crosses, as 50mV; "
                                                   u"empty: half way between zero and one"_s}));
    add_captioned(left, 2, u"&Own jitter"_s,
                  make_typed(make, controls.txtJitterOwn, u"none"_s,
                             {u"Own jitter of the instrument"_s,
                              u"Its rms value, as 2ps, which is taken off; empty: none"_s}));
    add_captioned(right, 2, u"&Unit interval"_s,
                  make_typed(make, controls.txtJitterInterval, u"found"_s,
                             {u"Unit interval"_s, u"Of random data, as 8ns; empty: found"_s}));
    return frame;
}

QWidget* JitterWindow::make_bathtub() {
    auto* const frame = new PanelFrame(u"Bathtub"_s);
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    plot_->setParent(frame);
    describe(*plot_, {u"Bathtub curve"_s,
                      u"An estimate of the bit error ratio by the time of decision, from one "
                      u"crossing to the next"_s});
    layout->addWidget(plot_);
    return frame;
}

void JitterWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
