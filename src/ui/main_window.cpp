#include "ui/main_window.h"

#include <chrono>
#include <cmath>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

#include "display/picture.h"
#include "display/plot_box.h"
#include "scope/help.h"
#include "scope/parts.h"
#include "scope/tools.h"
#include "ui/calibration_window.h"
#include "ui/control_panel.h"
#include "ui/lengths.h"
#include "ui/loading_note.h"
#include "ui/manual_topic.h"
#include "ui/menus.h"
#include "ui/plot_drags.h"
#include "ui/qt_picture_coder.h"
#include "ui/screen_picture.h"
#include "ui/undo_menu.h"
#include "ui/view_actions.h"
#include "ui/window_halves.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds tick_interval = 100ms;

/// How long the start-up waits at most for the window to be on the screen.
constexpr std::chrono::milliseconds longest_wait_for_screen = 500ms;

/// The largest size in whole units, each of `ratio` pixels, that is no larger than the screen's
/// whose size in units has been rounded to `rounded`.
QSize whole_units(QSize rounded, qreal ratio) {
    constexpr double rounding_error = 1e-6;
    const auto within = [&](int units) {
        const double pixels = std::floor(units * ratio + rounding_error);
        return static_cast<int>(std::floor(pixels / ratio + rounding_error));
    };
    return {within(rounded.width()), within(rounded.height())};
}

} // namespace

MainWindow::MainWindow(Scope& scope, const Dialogs& dialogs)
    : scope_(scope), dialogs_(dialogs), driver_(scope),
      screen_(new ScreenPanel(
          {.surface = scope.picture().surface(),
           .set_scale = [&scope](const PlotScale& scale) { scope.picture().set_scale(scale); },
           .take_changed = [&scope] { return scope.picture().take_changed(); }},
          scope.panel())),
      tools_(scope.tools(), driver_, *this, plot()),
      remote_(dialogs.remote, dialogs.asked, driver_, *this, plot()) {
    setWindowTitle(u"Kv408 - Tarvo  V1.6"_s);
    lay_out();
    const QSize room = whole_units(screen()->availableSize(), screen()->devicePixelRatio()) -
                       QSize(0, title_bar_height);
    resize(sizeHint().boundedTo(room).expandedTo(minimumSizeHint()));
    take_plot_drags(plot(), driver_);
    screen_->add_references(scope.tools().references(), scope.tools().maths(), driver_);
    screen_->add_clipping_marks(scope.tools().readouts().controls());
    listen_to_settings();
    follow(scope.calibration_form(), *this, plot(), driver_);
    scope.help().on_topic([] { return manual_topic(QApplication::focusWidget()); });
    driver_.on_return([this] { entry_returned(); });
    scope.picture().on_drawn([this](Columns /*columns*/) { plot().show_changes(); });
    scope.snapshot().show_by([this] { return picture_of_screen(*screen_); });
    timer_.setObjectName(u"Timer1"_s);
    timer_.setInterval(tick_interval);
    timer_.setTimerType(Qt::PreciseTimer);
    // Queued: while Qt waits for one time-out's handler it delivers no other, and a pass or a
    // message box that a tick has begun is to see ticks.
    connect(
        &timer_, &QTimer::timeout, this, [this] { tick(); }, Qt::QueuedConnection);
}

MainWindow::~MainWindow() {
    // A drag under way is let go now, not when there is no driver any more to tell.
    hide();
    scope_.picture().on_drawn({});
    scope_.snapshot().show_by({});
    scope_.help().on_topic({});
    scope_.settings_dialog().on_show({});
    scope_.settings_dialog().on_close({});
}

void MainWindow::listen_to_settings() {
    SettingsDialog& settings = scope_.settings_dialog();
    settings.on_show([this, &settings] {
        if (!settings_) {
            settings_ = new SettingsWindow(settings, driver_, this);
        }
        settings_->present();
    });
    settings.on_close([this] { close_settings(); });
}

void MainWindow::tick() {
    if (!driver_.ended()) {
        driver_.tick();
        remote_.tick_over();
        tools_.tick_over();
    }
}

void MainWindow::close_settings() {
    if (settings_) {
        settings_->hide();
        // One of its own widgets may be waiting for this to return.
        settings_->deleteLater();
        settings_ = nullptr;
    }
}

void MainWindow::copy_picture() const {
    const Surface box = plot_box(scope_.picture(), scope_.panel());
    QGuiApplication::clipboard()->setImage(image_of(box).copy());
}

void MainWindow::lay_out() {
    auto* const copy = new QAction(u"&Copy Picture"_s, this);
    copy->setObjectName(u"copyPicture"_s);
    copy->setToolTip(u"Copies the picture of the plot to the clipboard"_s);
    copy->setShortcut(QKeySequence::Copy);
    connect(copy, &QAction::triggered, this, [this] { copy_picture(); });
    auto* const copy_scaled = new QAction(u"Copy &with Scales"_s, this);
    copy_scaled->setObjectName(u"copyWithScales"_s);
    copy_scaled->setToolTip(
        u"Copies the picture of the plot with its scales, results and date to the clipboard"_s);
    copy_scaled->setShortcut(QKeySequence(u"Ctrl+Shift+P"_s));
    connect(copy_scaled, &QAction::triggered, this, [this] {
        const Surface picture = scope_.parts().snapshot.with_scales();
        QGuiApplication::clipboard()->setImage(image_of(picture).copy());
    });
    auto* const controls = new ControlPanel(driver_);
    controls_ = controls;
    auto* const halves = new WindowHalves(screen_, controls);
    const ViewActions view(*this, *halves);
    full_screen_ = view.full_screen;
    fill_menus(*menuBar(), driver_, {copy, copy_scaled, &tools_.copy_table()},
               {view.full_screen, view.hide_panel});
    setCentralWidget(halves);
    new LoadingNote(scope_.loading(), *this);
    new PressWatch(driver_, this);
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    QTimer::singleShot(longest_wait_for_screen, this, [this] { start_up(); });
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    if (!started_) {
        // After this painting: looking for the instrument may take seconds, and the window is to
        // be seen while it lasts.
        QTimer::singleShot(0ms, this, [this] { start_up(); });
    }
}

void MainWindow::start_up() {
    if (started_) {
        return;
    }
    started_ = true;
    timer_.start();
    driver_.start();
    if (!driver_.ended()) {
        remote_.attach(scope_);
    }
}

void MainWindow::end() {
    if (!driver_.ended()) {
        driver_.end();
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!driver_.ended()) {
        driver_.close();
    }
    // In the middle of an entry the window waits until that has unwound.
    event->setAccepted(!driver_.busy());
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        // The desktop may have done it.
        full_screen_->setChecked(isFullScreen());
    }
}

void MainWindow::entry_returned() {
    screen_->show_cursors(driver_.cursors());
    if (!driver_.ended()) {
        return;
    }
    timer_.stop();
    close_settings();
    dialogs_.boxes.dismiss();
    dialogs_.choosers.dismiss();
    scope_.calibration_form().window.close();
    tools_.close();
    remote_.end();
    if (!driver_.busy()) {
        close();
        if (closed_) {
            closed_();
        }
    }
}

} // namespace kv408::ui
