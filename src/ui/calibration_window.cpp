#include "ui/calibration_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

#include "ui/calibration_frames.h"
#include "ui/window_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int gap = 8;

/// What the title bar of a desktop takes at most, pixels.
constexpr int title_bar_height = 40;

/// Moves `window`, which is not shown yet, to its place beside `parent` with its `plot`.
void place(QWidget& window, const QWidget& parent, const QWidget& plot) {
    const QRect shown_plot(plot.mapToGlobal(QPoint(0, 0)), plot.size());
    window.move(place_beside(window.sizeHint() + QSize(0, title_bar_height),
                             {.room = parent.screen()->availableGeometry(),
                              .main = parent.frameGeometry(),
                              .plot = shown_plot}));
}

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
    steps->setSpacing(gap);
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
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->setSpacing(gap);
    layout->addLayout(steps, 1);
    layout->addWidget(make_calibration_status(form, driver));
}

void CalibrationWindow::closeEvent(QCloseEvent* event) {
    driver_.act([this] { form_.window.close(); });
    event->accept();
}

void follow(CalibrationForm& form, QWidget& parent, const QWidget& plot, ScopeDriver& driver) {
    form.window.on_shown([&form, &driver, over = QPointer(&parent), plot = QPointer(&plot),
                          window = QPointer<QWidget>()]() mutable {
        if (form.window.is_open() && window.isNull() && over && plot) {
            window = new CalibrationWindow(over, form, driver);
            place(*window, *over, *plot);
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
