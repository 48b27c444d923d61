#include "ui/statistics_window.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "export/statistics_table.h"
#include "ui/changing_text.h"
#include "ui/frame_grid.h"
#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/tool_widgets.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

StatisticsWindow::StatisticsWindow(StatisticsDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver),
      grid_(new StatisticsGrid(dialog, driver, this)), plot_(new TrendPlot(dialog)) {
    setObjectName(u"frmStatistics"_s);
    setWindowTitle(u"Kv408 - Tarvo  Statistics"_s);
    WidgetMaker make(this, driver);
    StatisticsControls& controls = dialog.controls();
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(grid_, 3);
    auto* const parts = new QHBoxLayout;
    parts->setSpacing(window_gap);
    parts->addWidget(make_trend(), 1);
    parts->addWidget(make_limits());
    layout->addLayout(parts, 2);
    layout->addWidget(new ChangingText(
        make_changing(make, controls.lblStatisticsState,
                      {u"State"_s, u"Sweeps so far, since when, and the last value outside its "
                                   u"limits"_s})));
    QLabel* const log = make_told(make, controls.lblStatisticsLog,
                                  {u"Log"_s, u"Where the log lies, and how far it is"_s});
    const auto selectable = log->textInteractionFlags();
    layout->addWidget(new ChangingText(log));
    add_ending(*this, make_ending());
    controls.cmdStatisticsCopy.on_click([&dialog] {
        QGuiApplication::clipboard()->setText(
            QString::fromStdString(statistics_table(dialog.statistics())));
    });
    dialog.on_refresh([this, log, selectable] {
        log->setTextInteractionFlags(dialog_.logging() ? Qt::NoTextInteraction : selectable);
        grid_->refresh();
        plot_->update();
    });
}

StatisticsWindow::~StatisticsWindow() {
    dialog_.on_refresh({});
    dialog_.controls().cmdStatisticsCopy.on_click({});
}

QWidget* StatisticsWindow::make_trend() {
    auto* const frame = new PanelFrame(u"Trend"_s);
    WidgetMaker make(frame, driver_);
    StatisticsControls& controls = dialog_.controls();
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    QComboBox* const channel =
        make.list(controls.cmbStatisticsChannel,
                  {u"Channel"_s, u"Whose value trend, histogram and limits are of"_s});
    QComboBox* const value =
        make.list(controls.cmbStatisticsValue,
                  {u"Value"_s, u"The measurement that trend, histogram and limits are of"_s});
    row->addWidget(make_caption(u"C&hannel"_s, channel));
    row->addWidget(channel);
    row->addWidget(make_caption(u"&Value"_s, value));
    row->addWidget(value);
    layout->addLayout(row);
    plot_->setParent(frame);
    describe(*plot_, {u"Trend and histogram"_s,
                      u"The chosen value over the last minutes, and how often it was how large"_s});
    layout->addWidget(plot_, 1);
    return frame;
}

QWidget* StatisticsWindow::make_limits() {
    auto* const frame = new PanelFrame(u"Limits"_s);
    WidgetMaker make(frame, driver_);
    StatisticsControls& controls = dialog_.controls();
    constexpr int rows = 4;
    QGridLayout* const grid = make_frame_grid(frame, rows);
    add_captioned(
        *grid, 0, u"Lo&w"_s,
        make.text_box(controls.txtStatisticsLow,
                      {u"Lower limit"_s, u"The least that the chosen value may be, as 50mV, 2.5ns "
                                         u"or 1MHz; empty: no limit"_s}));
    add_captioned(
        *grid, 1, u"H&igh"_s,
        make.text_box(controls.txtStatisticsHigh,
                      {u"Upper limit"_s, u"The most that the chosen value may be, as 50mV, 2.5ns "
                                         u"or 1MHz; empty: no limit"_s}));
    add_captioned(
        *grid, 2, u"C&olour"_s,
        make.list(controls.cmbStatisticsColour,
                  {u"Colour of the limits"_s, u"How a value outside its limits is marked"_s}));
    add_captioned(
        *grid, 3, u"&Action"_s,
        make.list(controls.cmbStatisticsAction,
                  {u"Action of the limits"_s, u"What a value outside its limits brings about"_s}));
    grid->setRowStretch(rows, 1);
    return frame;
}

QLayout* StatisticsWindow::make_ending() {
    WidgetMaker make(this, driver_);
    StatisticsControls& controls = dialog_.controls();
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make.button(controls.cmdStatisticsReset, u"&Reset"_s,
                               {u"Reset"_s, u"Begins the statistics anew; the limits stay"_s}));
    row->addWidget(make.button(controls.cmdStatisticsCopy, u"&Copy"_s,
                               {u"Copy"_s, u"Copies the table to the clipboard"_s}));
    row->addWidget(make.button(controls.cmdStatisticsLog, {},
                               {u"Log"_s, u"Writes a line for each sweep to a file of "
                                          u"comma-separated values, or ends that"_s}));
    row->addWidget(make_plain_button(*this, u"cmdStatisticsClose"_s, u"C&lose"_s,
                                     {u"Close"_s, u"Closes the window; a log goes on"_s},
                                     [this] { reject(); }));
    return row;
}

void StatisticsWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
