#include "ui/calibration_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QPointer>
#include <QVBoxLayout>

#include "ui/bind.h"
#include "ui/calibration_frames.h"
#include "ui/lengths.h"
#include "ui/scrolling_area.h"
#include "ui/window_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Shows the window of a form that is open, and brings it to the front.
void show_in_front(QWidget& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

CalibrationWindow::CalibrationWindow(QWidget* parent, CalibrationForm& form, ScopeDriver& driver)
    : QWidget(parent, Qt::Window), form_(form), driver_(driver) {
    setObjectName(u"frmcalibration"_s);
    setWindowTitle(u"Calibration"_s);
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const steps = new QGridLayout;
    steps->setSpacing(window_gap);
    auto* const left = new QVBoxLayout;
    left->addWidget(make_read_frame(form, driver));
    left->addWidget(make_gain_frame(form, driver));
    left->addWidget(make_offset_frame(form, driver), 1);
    auto* const right = new QVBoxLayout;
    right->addWidget(make_scale_frame(form, driver));
    right->addWidget(make_delay_frame(form, driver));
    right->addWidget(make_write_frame(form, driver));
    right->addWidget(make_linearity_frame(form, driver), 1);
    steps->addLayout(left, 0, 0);
    steps->addLayout(right, 0, 1);
    steps->setColumnStretch(0, 1);
    steps->setColumnStretch(1, 1);
    auto* const content = new QWidget;
    auto* const parts = new QVBoxLayout(content);
    parts->setContentsMargins(window_gap, window_gap, window_gap, window_gap);
    parts->setSpacing(window_gap);
    parts->addLayout(steps, 1);
    parts->addWidget(make_calibration_status(form, driver));
    // Larger letters may need more than the screen has.
    auto* const area = new ScrollingArea(content);
    for (QWidget* const inner : content->findChildren<QWidget*>()) {
        area->follow_keyboard(*inner);
    }
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);
}

void CalibrationWindow::closeEvent(QCloseEvent* event) {
    driver_.act([this] { form_.window.close(); });
    event->accept();
}

void follow(CalibrationForm& form, QWidget& parent, const QWidget& plot, ScopeDriver& driver) {
    keep_shown(
        parent, form.window,
        [&form, &driver, &parent, plot = QPointer(&plot), window = QPointer<QWidget>()]() mutable {
            if (form.window.is_open() && window.isNull() && plot) {
                window = new CalibrationWindow(&parent, form, driver);
                put_beside(*window, parent, *plot);
            }
            if (window.isNull()) {
                return;
            }
            if (form.window.is_open()) {
                show_in_front(*window);
            } else {
                window->hide();
            }
        });
}

} // namespace kv408::ui
