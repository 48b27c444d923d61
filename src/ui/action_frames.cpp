#include <QHBoxLayout>

#include "ui/bind.h"
#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/panel_frame.h"
#include "ui/segment_bar.h"
#include "ui/wheel_widget.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

SegmentBar* make_tabs(QWidget* frame, TabStrip& control, ScopeDriver& driver, const Words& words) {
    auto* const tabs = new SegmentBar(frame);
    describe(*tabs, words);
    bind(tabs, control, driver);
    return tabs;
}

/// A row of `widget` with its caption on the left.
QLayout* make_captioned(const QString& caption, QWidget* widget) {
    QGridLayout* const row = make_frame_grid(nullptr, 1);
    row->addWidget(make_caption(caption, widget), 0, 0);
    row->addWidget(widget, 0, 1);
    row->setColumnStretch(1, 1);
    return row;
}

} // namespace

PanelFrame* make_cursor_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Cursor"_s);
    WidgetMaker make(frame, driver);
    FrontPanel& panel = driver.panel();
    QBoxLayout& parts = frame->make_parts(frame_measure::column_spacing);
    QGridLayout* const type = make_frame_grid(nullptr, 1);
    type->addWidget(make_tabs(frame, panel.tabstrip3, driver,
                              {u"Cursor type"_s, u"What the cursors measure: volts or seconds"_s}),
                    0, 0);
    parts.addLayout(type, 3);
    QComboBox* const channel = make.list(
        panel.combocursorselect, {u"Cursor channel"_s, u"Channel that the cursors measure"_s});
    parts.addLayout(make_captioned(u"Channel"_s, channel), 2);
    return frame;
}

PanelFrame* make_adjust_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Adjust"_s);
    FrontPanel& panel = driver.panel();
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(frame_measure::row_spacing + 2);
    layout->addWidget(
        make_tabs(frame, panel.tabstrip2, driver, {u"Adjust"_s, u"What the wheel below turns"_s}));
    auto* const wheel = new WheelWidget(panel.slider1, driver, frame);
    describe(*wheel, {u"Adjust wheel"_s,
                      u"Drag sideways, or use the arrow keys, to turn what is selected above"_s});
    layout->addWidget(wheel);
    return frame;
}

PanelFrame* make_status_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Status"_s);
    WidgetMaker make(frame, driver);
    FrontPanel& panel = driver.panel();
    QLineEdit* const status =
        make.text_box(panel.textstatus,
                      {u"Status"_s, u"What the acquisition is doing; its colour tells it too"_s});
    status->setReadOnly(true);
    status->setFocusPolicy(Qt::NoFocus);
    status->setAlignment(Qt::AlignCenter);
    QFont bold = status->font();
    bold.setBold(true);
    status->setFont(bold);
    // The longest of all texts, with room for the outline.
    status->setMinimumWidth(
        QFontMetrics(bold).horizontalAdvance(u"Calibrating 10499 of 10500 points"_s) + 20);
    QBoxLayout& parts = frame->make_parts(frame_measure::column_spacing);
    QGridLayout* const state = make_frame_grid(nullptr, 1);
    state->addWidget(status, 0, 0);
    parts.addLayout(state, 1);
    QComboBox* const device =
        make.list(panel.device, {u"Instrument"_s, u"Attached instruments by serial number"_s});
    parts.addLayout(make_captioned(u"Device"_s, device), 1);
    frame->set_note(
        make.label(panel.nodata, {u"No data"_s, u"For how long the instrument has sent no data"_s}),
        u"No data for 99999 s"_s);
    return frame;
}

QWidget* make_buttons(ScopeDriver& driver) {
    auto* const row = new QWidget;
    WidgetMaker make(row, driver);
    FrontPanel& panel = driver.panel();
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(frame_measure::column_spacing);
    for (QPushButton* const button :
         {make.button(panel.cmdstartsweep, u"Sta&rt"_s, {u"Start"_s, u"Starts sweeping"_s}),
          make.button(panel.cmdstop, u"Sto&p"_s, {u"Stop"_s, u"Stops sweeping"_s}),
          make.button(panel.snapshot, u"Sn&apshot"_s,
                      {u"Snapshot"_s, u"Saves the picture of the plot as a bitmap"_s})}) {
        button->setMinimumHeight(30);
        layout->addWidget(button, 1);
    }
    return row;
}

} // namespace kv408::ui
