#include "ui/maths_window.h"

#include <array>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/changing_text.h"
#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/told_window.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int least_maths_width = 300; // of a trace's frame, for its sentences

/// The captions of a trace's settings, with letters that the other one has not.
struct Captions {
    QString function;
    QString a;
    QString b;
    QString count;
    QString scale;
    QString position;
    QString clear;
};

Captions captions_of(std::size_t place) {
    return place == 0
               ? Captions{u"&Function"_s,
                          u"&A"_s,
                          u"&B"_s,
                          u"&Number of sweeps"_s,
                          u"&Per division"_s,
                          u"P&osition"_s,
                          u"Be&gin anew"_s}
               : Captions{
                     u"F&unction"_s,     u"A"_s,         u"B"_s,          u"Nu&mber of sweeps"_s,
                     u"Per &division"_s, u"Pos&ition"_s, u"B&egin anew"_s};
}

} // namespace

MathsWindow::MathsWindow(MathsDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmMaths"_s);
    setWindowTitle(u"Kv408 - Tarvo  Maths"_s);
    QVBoxLayout* const layout = make_window_layout(*this);
    auto* const traces = new QHBoxLayout;
    traces->setSpacing(window_gap);
    for (std::size_t place = 0; place < MathsDialog::count; ++place) {
        traces->addWidget(make_trace(place), 1);
    }
    layout->addLayout(traces, 1);
    add_ending(*this, make_ending());
    copy_to_clipboard(dialog.controls().cmdMathsCopy, [&dialog] { return dialog.table(); });
}

MathsWindow::~MathsWindow() {
    dialog_.controls().cmdMathsCopy.on_click({});
}

QWidget* MathsWindow::make_trace(std::size_t place) {
    MathsTool& tool = dialog_.tool(place);
    auto* const frame = new PanelFrame(QString::fromStdString(tool.name()));
    frame->keep_width(least_maths_width);
    WidgetMaker make(frame, driver_);
    MathsControls& controls = tool.controls();
    auto* const column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(window_gap);
    column->addLayout(make_settings(make, place));
    ToldText* const state = make_changing(
        make, controls.lblMathsState,
        {u"State of the trace"_s, u"What is shown, or why there is nothing to show"_s});
    state->keep_lines(2);
    column->addWidget(new ChangingText(state));
    column->addLayout(make_values(make, controls));
    ToldText* const remark =
        make_changing(make, controls.lblMathsRemark,
                      {u"Remarks on the trace"_s, u"What has to be known of it"_s});
    remark->keep_lines(5);
    column->addWidget(new ChangingText(remark));
    column->addStretch(1);
    return frame;
}

QLayout* MathsWindow::make_settings(WidgetMaker& make, std::size_t place) {
    MathsControls& controls = dialog_.tool(place).controls();
    const Captions captions = captions_of(place);
    QGridLayout* const grid = make_tool_grid(nullptr);
    add_captioned(*grid, 0, captions.function,
                  make.list(controls.cmbMathsFunction,
                            {u"Function"_s, u"What is computed of each sweep; Off takes the trace "
                                            u"off the plot"_s}));
    add_captioned(*grid, 1, captions.a,
                  make.list(controls.cmbMathsA, {u"Channel A"_s, u"The channel whose times the "
                                                                 u"trace has"_s}));
    add_captioned(*grid, 2, captions.b,
                  make.list(controls.cmbMathsB,
                            {u"Channel B"_s, u"The second channel of functions with two"_s}));
    add_captioned(*grid, 3, captions.count,
                  make.text_box(controls.txtMathsCount,
                                {u"Number of sweeps"_s,
                                 u"For mean and envelope, 1 to 1000: the last so many"_s}));
    add_captioned(*grid, 4, captions.scale,
                  make_typed(make, controls.txtMathsScale, u"found"_s,
                             {u"Units per division"_s,
                              u"As 50mV or 2GV/s; empty: volts as channel A, others so that the "
                              u"trace fits"_s}));
    add_captioned(*grid, 5, captions.position,
                  make_typed(make, controls.txtMathsPosition, u"found"_s,
                             {u"Position of the zero line"_s,
                              u"Divisions above the middle, -4 to 4; empty: volts as channel A, "
                              u"others in the middle"_s}));
    grid->addWidget(make.button(controls.cmdMathsClear, captions.clear,
                                {u"Begin anew"_s, u"Forgets the sweeps of mean and envelope"_s}),
                    6, 1, Qt::AlignRight);
    return grid;
}

QLayout* MathsWindow::make_values(WidgetMaker& make, MathsControls& controls) {
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * window_gap);
    add_values(make, *grid, 0, controls.lblMathsNames, controls.lblMathsValues,
               {u"Measurements of the trace"_s, u"Of an envelope those of its upper line"_s});
    return grid;
}

QLayout* MathsWindow::make_ending() {
    WidgetMaker make(this, driver_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make.button(dialog_.controls().cmdMathsCopy, u"&Copy"_s,
                               {u"Copy"_s, u"Copies the measurements to the clipboard"_s}));
    row->addWidget(make_plain_button(*this, u"cmdMathsClose"_s, u"C&lose"_s,
                                     {u"Close"_s, u"Closes the window; the traces stay"_s},
                                     [this] { reject(); }));
    return row;
}

void MathsWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
