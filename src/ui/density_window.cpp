#include "ui/density_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/frame_grid.h"
#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/tool_widgets.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

DensityWindow::DensityWindow(DensityDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmDensity"_s);
    setWindowTitle(u"Kv408 - Tarvo  Density"_s);
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_collecting());
    layout->addWidget(make_collected(), 1);
    add_ending(*this, make_ending());
}

QWidget* DensityWindow::make_collecting() {
    auto* const frame = new PanelFrame(u"Collecting"_s);
    WidgetMaker make(frame, driver_);
    DensityControls& controls = dialog_.controls();
    constexpr int rows = 4;
    QGridLayout* const grid = make_frame_grid(frame, rows);
    grid->addWidget(make.check(controls.chkDensity, u"&Density"_s,
                               {u"Density"_s, u"Counts how often the traces pass where, and shows "
                                              u"it in the plot under them"_s}),
                    0, 0);
    auto* const channels = new QHBoxLayout;
    channels->addWidget(make.check(controls.channel[ch1], u"CH&1"_s,
                                   {u"Density of CH1"_s, u"Counts the sweeps of CH1"_s}));
    channels->addWidget(make.check(controls.channel[ch2], u"CH&2"_s,
                                   {u"Density of CH2"_s, u"Counts the sweeps of CH2"_s}));
    channels->addStretch();
    grid->addLayout(channels, 0, 1);
    grid->addWidget(make.check(controls.chkDensityFreeze, u"&Freeze"_s,
                               {u"Freeze"_s, u"Counts nothing more and keeps what was counted"_s}),
                    1, 0);
    QLineEdit* const fade = make.text_box(
        controls.txtDensityHalfLife,
        {u"Half-life"_s, u"Sweeps in which older hits fade to a half, 1 to 100000; empty: they "
                         u"stay"_s});
    fade->setPlaceholderText(u"hits stay"_s);
    add_captioned(*grid, 2, u"&Half-life, sweeps"_s, fade);
    add_captioned(*grid, 3, u"&Palette"_s,
                  make.list(controls.cmbDensityPalette,
                            {u"Palette"_s, u"The colours of few and of many hits"_s}));
    grid->setColumnStretch(1, 1);
    return frame;
}

QWidget* DensityWindow::make_collected() {
    constexpr int least_width = 380;
    auto* const frame = new PanelFrame(u"Collected"_s);
    WidgetMaker make(frame, driver_);
    DensityControls& controls = dialog_.controls();
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    frame->keep_width(least_width);
    for (Label& state : controls.state) {
        const QString channel = &state == &controls.state.front() ? u"CH1"_s : u"CH2"_s;
        layout->addWidget(make_changing(
            make, state,
            {u"State of "_s + channel,
             u"Sweeps that were counted, since when, and what made them begin anew"_s}));
    }
    layout->addWidget(make_told(make, controls.lblDensityRemark,
                                {u"Remarks"_s, u"What makes the counts smaller or wrong"_s}));
    layout->addStretch();
    return frame;
}

QLayout* DensityWindow::make_ending() {
    WidgetMaker make(this, driver_);
    DensityControls& controls = dialog_.controls();
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make.button(controls.cmdDensityClear, u"&Clear"_s,
                               {u"Clear"_s, u"Forgets what was counted and begins anew"_s}));
    row->addWidget(make.button(
        controls.cmdDensityExport, u"&Export..."_s,
        {u"Export"_s, u"Saves the counts as a NumPy file, and their axes beside it"_s}));
    row->addWidget(make_plain_button(
        *this, u"cmdDensityClose"_s, u"C&lose"_s,
        {u"Close"_s, u"Closes the window; the density stays on or off"_s}, [this] { reject(); }));
    return row;
}

void DensityWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
