#include "ui/histogram_window.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "ui/frame_grid.h"
#include "ui/panel_frame.h"
#include "ui/told_window.h"
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
    constexpr int least_width = 430; // for the longest place
    HistogramControls& controls = dialog.controls();
    layout->addWidget(make_told_frame(driver,
                                      {.names = controls.lblHistogramNames,
                                       .values = controls.lblHistogramValues,
                                       .remark = controls.lblHistogramRemark,
                                       .subject = u"histogram"_s},
                                      least_width),
                      1);
    add_ending(*this, make_told_ending(*this, driver, controls.cmdHistogramCopy,
                                       u"Copies values and histogram to the clipboard"_s,
                                       u"cmdHistogramClose"_s));
    copy_to_clipboard(controls.cmdHistogramCopy, [&dialog] { return dialog.table(); });
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
