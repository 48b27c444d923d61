#include "ui/spectrum_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/told_window.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

SpectrumWindow::SpectrumWindow(SpectrumDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver), plot_(new SpectrumPlot(dialog)) {
    setObjectName(u"frmSpectrum"_s);
    setWindowTitle(u"Kv408 - Tarvo  Spectrum"_s);
    SpectrumControls& controls = dialog.controls();
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_choice());
    layout->addWidget(make_spectrum(), 1);
    layout->addWidget(make_values());
    add_ending(*this, make_told_ending(*this, driver, controls.cmdSpectrumCopy,
                                       u"Copies frequencies and levels to the clipboard"_s,
                                       u"cmdSpectrumClose"_s,
                                       u"Closes the window; its sweeps are forgotten"_s));
    copy_to_clipboard(controls.cmdSpectrumCopy, [&dialog] { return dialog.table(); });
    dialog.on_computed([this] { plot_->update(); });
}

SpectrumWindow::~SpectrumWindow() {
    dialog_.on_computed({});
    dialog_.controls().cmdSpectrumCopy.on_click({});
}

QWidget* SpectrumWindow::make_choice() {
    auto* const frame = new PanelFrame(u"Sweeps"_s);
    WidgetMaker make(frame, driver_);
    SpectrumControls& controls = dialog_.controls();
    const auto [left, right] = make_two_grids(*frame);
    add_captioned(left, 0, u"C&hannel"_s,
                  make.list(controls.cmbSpectrumChannel,
                            {u"Channel of the spectrum"_s, u"Whose sweeps are transformed"_s}));
    add_captioned(right, 0, u"&Window"_s,
                  make.list(controls.cmbSpectrumWindow,
                            {u"Window"_s, u"Hann for most signals, flat top for levels, "
                                          u"Blackman-Harris for small signals beside large ones, "
                                          u"none where whole periods fill the sweep"_s}));
    add_captioned(left, 1, u"&Shows"_s,
                  make.list(controls.cmbSpectrumHold,
                            {u"What is shown"_s, u"The last sweep, or of so many sweeps each "
                                                 u"line's mean power or highest power"_s}));
    add_captioned(right, 1, u"&Number of sweeps"_s,
                  make.text_box(controls.txtSpectrumCount,
                                {u"Number of sweeps"_s,
                                 u"For mean and highest, 1 to 1000: the last so many"_s}));
    add_captioned(
        left, 2, u"&Unit"_s,
        make.list(controls.cmbSpectrumUnit,
                  {u"Unit of the levels"_s, u"Decibels above 1 V rms, or above 1 mW in 50 Ohm"_s}));
    auto* const row = new QHBoxLayout;
    row->addWidget(make.check(
        controls.chkSpectrumLog, u"Lo&garithmic"_s,
        {u"Logarithmic"_s, u"The axis of frequencies is logarithmic; the mean is not on it"_s}));
    row->addStretch();
    row->addWidget(make.button(controls.cmdSpectrumClear, u"&Begin anew"_s,
                               {u"Begin anew"_s, u"Forgets the sweeps of mean and highest"_s}));
    right.addLayout(row, 2, 0, 1, 2);
    return frame;
}

QWidget* SpectrumWindow::make_spectrum() {
    auto* const frame = new PanelFrame(u"Spectrum"_s);
    WidgetMaker make(frame, driver_);
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    plot_->setParent(frame);
    describe(*plot_, {u"Plot of the spectrum"_s,
                      u"The level of each line over its frequency; triangles mark the highest "
                      u"peaks"_s});
    layout->addWidget(plot_, 1);
    layout->addWidget(make_changing(
        make, dialog_.controls().lblSpectrumState,
        {u"State of the spectrum"_s, u"Sweeps that are in it, and how far the axis goes"_s}));
    return frame;
}

QWidget* SpectrumWindow::make_values() {
    auto* const frame = new PanelFrame(u"Values"_s);
    WidgetMaker make(frame, driver_);
    SpectrumControls& controls = dialog_.controls();
    auto* const layout = new QGridLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(window_gap);
    const auto told = [&](Label& control, const Words& words) {
        QLabel* const label = make_changing(make, control, words);
        label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        return label;
    };
    layout->addWidget(told(controls.lblSpectrumPeaks,
                           {u"Highest peaks"_s, u"Frequency and level, the highest first"_s}),
                      0, 0);
    layout->addWidget(told(controls.lblSpectrumPurity,
                           {u"Distortion and noise"_s,
                            u"Total harmonic distortion and signal to noise of the highest peak, "
                            u"and what they are computed over"_s}),
                      0, 1);
    layout->addWidget(
        told(controls.lblSpectrumRemark, {u"Remarks on the spectrum"_s, u"What falsifies it"_s}), 1,
        0, 1, 2);
    // A frequency and its level stand in one line.
    const QString longest = u"123.456MHz   -123.45 dBm"_s;
    layout->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(longest));
    layout->setColumnStretch(1, 1);
    return frame;
}

void SpectrumWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
