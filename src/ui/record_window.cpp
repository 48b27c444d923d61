#include "ui/record_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Which sweeps are recorded.
QWidget* make_sweeps_frame(RecordControls& controls, ScopeDriver& driver) {
    constexpr int number_width = 90;
    auto* const frame = new PanelFrame(u"Sweeps"_s);
    WidgetMaker make(frame, driver);
    QGridLayout* const grid = make_tool_grid(frame);
    QComboBox* const pace =
        make.list(controls.cmbRecordPace, {u"Which sweeps"_s, u"Which sweeps are recorded"_s});
    add_captioned(*grid, 0, u"&Which:"_s, pace);
    QLineEdit* const number =
        make.text_box(controls.txtRecordPace,
                      {u"Number or seconds"_s,
                       u"Every how many sweeps, from 1, or every how many seconds, from 0.001"_s});
    number->setFixedWidth(number_width);
    grid->addWidget(number, 0, 2);
    QLineEdit* const count = make.text_box(
        controls.txtRecordCount,
        {u"How many"_s, u"Sweeps after which the recording ends; empty: when it is stopped"_s});
    count->setPlaceholderText(u"until stopped"_s);
    grid->addWidget(make_caption(u"&How many:"_s, count), 1, 0);
    grid->addWidget(count, 1, 1, 1, 2);
    return frame;
}

/// Where they go.
QWidget* make_file_frame(RecordControls& controls, ScopeDriver& driver) {
    constexpr int name_width = 330;
    auto* const frame = new PanelFrame(u"File"_s);
    WidgetMaker make(frame, driver);
    QGridLayout* const grid = make_tool_grid(frame);
    QComboBox* const type =
        make.list(controls.cmbRecordType,
                  {u"Into which files"_s, u"All sweeps in one file, or each in its own"_s});
    grid->addWidget(make_caption(u"&Into:"_s, type), 0, 0);
    grid->addWidget(type, 0, 1, 1, 2);
    QLineEdit* const file = make.text_box(
        controls.txtRecordFile,
        {u"File name"_s, u"The file with its folders; numbered files get _000001 and so on"_s});
    file->setMinimumWidth(name_width);
    add_captioned(*grid, 1, u"File &name:"_s, file);
    grid->addWidget(make.button(controls.cmdRecordBrowse, u"..."_s,
                                {u"Browse"_s, u"Chooses the file to record to"_s}),
                    1, 2);
    return frame;
}

/// How far it is.
QWidget* make_progress_frame(RecordControls& controls, ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Progress"_s);
    WidgetMaker make(frame, driver);
    QGridLayout* const grid = make_tool_grid(frame);
    const auto add = [&](int row, const QString& caption, Label& control, const QString& tip) {
        QLabel* const shown = make.label(control, {caption, tip});
        add_captioned(*grid, row, caption + u":"_s, shown);
    };
    add(0, u"Recorded"_s, controls.lblRecordDone, u"Sweeps that are in the file"_s);
    add(1, u"Missed"_s, controls.lblRecordMissed,
        u"Sweeps that came faster than they could be written"_s);
    add(2, u"Disk"_s, controls.lblRecordFree,
        u"What is free there; the recording ends before it is full"_s);
    grid->addWidget(make_told(make, controls.lblRecordRemark,
                              {u"Recording"_s, u"Where the recording goes, or why it ended"_s}),
                    3, 0, 1, 2);
    return frame;
}

} // namespace

RecordWindow::RecordWindow(RecordDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmRecord"_s);
    setWindowTitle(u"Kv408 - Tarvo  Record"_s);
    RecordControls& controls = dialog.controls();
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_sweeps_frame(controls, driver));
    layout->addWidget(make_file_frame(controls, driver));
    layout->addWidget(make_progress_frame(controls, driver), 1);
    WidgetMaker make(this, driver);
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    QPushButton* const begin =
        make.button(controls.cmdRecord, u"&Record"_s, {u"Record"_s, u"Begins the recording"_s});
    begin->setDefault(true);
    row->addWidget(begin);
    row->addWidget(make.button(controls.cmdRecordStop, u"&Stop"_s,
                               {u"Stop recording"_s, u"Ends the recording; sweeping goes on"_s}));
    row->addWidget(make_plain_button(
        *this, u"cmdRecordClose"_s, u"C&lose"_s,
        {u"Close"_s, u"Closes the window; asks first while sweeps are being recorded"_s},
        [this] { reject(); }));
    add_ending(*this, row);
}

void RecordWindow::reject() {
    driver_.act([this] { dialog_.close(); });
}

} // namespace kv408::ui
