#include "ui/histogram_window.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
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

HistogramWindow::HistogramWindow(HistogramDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmHistogram"_s);
    setWindowTitle(u"Kv408 - Tarvo  Histogram"_s);
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_choice());
    layout->addWidget(make_values(), 1);
    layout->addLayout(make_ending());
    dialog.controls().cmdHistogramCopy.on_click([&dialog] {
        const std::string table = dialog.table();
        if (!table.empty()) {
            QGuiApplication::clipboard()->setText(QString::fromStdString(table));
        }
    });
}

HistogramWindow::~HistogramWindow() {
    dialog_.controls().cmdHistogramCopy.on_click({});
}

QWidget* HistogramWindow::make_choice() {
    auto* const frame = new PanelFrame(u"Window"_s);
    WidgetMaker make(frame, driver_);
    HistogramControls& controls = dialog_.controls();
    constexpr int rows = 3;
    QGridLayout* const grid = make_frame_grid(frame, rows);
    add_captioned(*grid, 0, u"C&hannel"_s,
                  make.list(controls.cmbHistogramChannel,
                            {u"Channel of the histogram"_s, u"Whose density is looked at"_s}));
    add_captioned(
        *grid, 1, u"Histogram &of"_s,
        make.list(controls.cmbHistogramOf,
                  {u"Histogram of"_s, u"How the hits spread over levels, or over times"_s}));
    place_ = make.label(controls.lblHistogramWindow,
                        {u"Place of the window"_s,
                         u"Times and levels of the rectangle in the plot. The arrow keys move it, "
                         u"with Shift they resize it, with Ctrl by a fifth of a division"_s});
    place_->setFocusPolicy(Qt::StrongFocus);
    place_->installEventFilter(this);
    add_captioned(*grid, 2, u"&Place"_s, place_);
    grid->setColumnStretch(1, 1);
    return frame;
}

QWidget* HistogramWindow::make_values() {
    constexpr int least_width = 430; // for the longest place
    auto* const frame = new PanelFrame(u"Values"_s);
    frame->setMinimumWidth(least_width);
    WidgetMaker make(frame, driver_);
    HistogramControls& controls = dialog_.controls();
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(make.label(controls.lblHistogramNames,
                               {u"Names of the values"_s, u"What stands beside them"_s}),
                    0, 0, Qt::AlignTop);
    grid->addWidget(make.label(controls.lblHistogramValues,
                               {u"Values of the histogram"_s,
                                u"What the hits in the rectangle have in common"_s}),
                    0, 1, Qt::AlignTop);
    QLabel* const remark =
        make_told(make, controls.lblHistogramRemark,
                  {u"Remarks on the histogram"_s, u"What makes the values smaller or wrong"_s});
    remark->setTextInteractionFlags(Qt::NoTextInteraction);
    grid->addWidget(remark, 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    return frame;
}

QLayout* HistogramWindow::make_ending() {
    WidgetMaker make(this, driver_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make.button(dialog_.controls().cmdHistogramCopy, u"&Copy"_s,
                               {u"Copy"_s, u"Copies values and histogram to the clipboard"_s}));
    row->addWidget(make_plain_button(*this, u"cmdHistogramClose"_s, u"C&lose"_s,
                                     {u"Close"_s, u"Closes the window; the density stays on"_s},
                                     [this] { reject(); }));
    return row;
}

bool HistogramWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == place_ && event->type() == QEvent::KeyPress) {
        const auto& pressed = static_cast<const QKeyEvent&>(*event);
        return take_key(pressed.key(), pressed.modifiers());
    }
    return QDialog::eventFilter(watched, event);
}

bool HistogramWindow::take_key(int key, Qt::KeyboardModifiers modifiers) {
    constexpr int far = 13; // a fifth of a division
    const int step = modifiers.testFlag(Qt::ControlModifier) ? far : 1;
    int right = 0;
    int down = 0;
    switch (key) {
    case Qt::Key_Left:
        right = -step;
        break;
    case Qt::Key_Right:
        right = step;
        break;
    case Qt::Key_Up:
        down = -step;
        break;
    case Qt::Key_Down:
        down = step;
        break;
    default:
        return false;
    }
    driver_.act([&] {
        if (modifiers.testFlag(Qt::ShiftModifier)) {
            dialog_.stretch(right, down);
        } else {
            dialog_.nudge(right, down);
        }
    });
    return true;
}

void HistogramWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
