#include "ui/readouts_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/told_window.h"
#include "ui/tool_widgets.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

ReadoutsWindow::ReadoutsWindow(ReadoutsDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmReadouts"_s);
    setWindowTitle(u"Kv408 - Tarvo  Read-outs"_s);
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_values(), 1);
    layout->addWidget(make_clipping());
    auto* const ending = new QHBoxLayout;
    ending->addStretch();
    ending->addWidget(make_plain_button(*this, u"cmdReadoutsClose"_s, u"C&lose"_s,
                                        {u"Close"_s, u"Closes the window"_s},
                                        [this] { reject(); }));
    add_ending(*this, ending);
}

QWidget* ReadoutsWindow::make_values() {
    auto* const frame = new PanelFrame(u"Time cursors"_s);
    WidgetMaker make(frame, driver_);
    ReadoutsControls& controls = dialog_.controls();
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2 * window_gap);
    add_values(make, *grid, 0, controls.lblReadoutsNames, controls.lblReadoutsValues,
               {u"Read-outs"_s, u"Time and frequency between the time cursors, and the voltages "
                                u"where these cross the traces"_s});
    // The longest of them must not widen a window that has its place already.
    const QString longest = u"--- (no time cursors: choose Time in the frame Cursor)"_s;
    grid->setColumnMinimumWidth(1, fontMetrics().horizontalAdvance(longest));
    grid->setRowStretch(1, 1);
    return frame;
}

QWidget* ReadoutsWindow::make_clipping() {
    auto* const frame = new PanelFrame(u"Clipping"_s);
    WidgetMaker make(frame, driver_);
    ReadoutsControls& controls = dialog_.controls();
    auto* const column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(make.check(controls.chkClippingMark, u"&Mark at the plot's edge"_s,
                                 {u"Mark clipping"_s,
                                  u"Says at the upper and lower edge of the plot which channel "
                                  u"leaves the instrument's scale there"_s}));
    column->addWidget(
        make_changing(make, controls.lblReadoutsClipping,
                      {u"Clipping"_s, u"Which channels leave the instrument's scale"_s}));
    return frame;
}

void ReadoutsWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
