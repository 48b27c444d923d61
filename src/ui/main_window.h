#pragma once

#include <functional>

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include "scope/scope.h"
#include "ui/qt_file_choosers.h"
#include "ui/qt_message_boxes.h"
#include "ui/remote_window.h"
#include "ui/scope_driver.h"
#include "ui/screen_panel.h"
#include "ui/settings_window.h"
#include "ui/tool_windows.h"

namespace kv408::ui {

/// The modal dialogs that the program opens over its window.
struct Dialogs {
    QtMessageBoxes& boxes;
    QtFileChoosers& choosers;
    MessageBoxes& asked; ///< what the program's own messages go through
    RemoteControl& remote;
};

/// The main window: it shows the controls and passes what the user does to the program. Once it
/// has appeared the program starts up, and from then on the timer ticks.
class MainWindow : public QMainWindow {
public:
    /// A window on `scope`, which opens `dialogs`; all of them outlive it.
    MainWindow(Scope& scope, const Dialogs& dialogs);
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    /// The plot.
    [[nodiscard]] PlotWidget& plot() { return screen_->plot(); }

    /// Runs what clients of remote control have sent.
    void serve_remote() { remote_.serve(); }

    /// The controls beside the plot.
    [[nodiscard]] const QWidget& controls() const { return *controls_; }

    /// Ends the program without asking or telling anything in a box, and closes the window.
    void end();

    /// True when the program has ended because of an exception that nobody caught.
    [[nodiscard]] bool failed() const { return driver_.failed(); }

    /// Sets what follows when the program has ended and the window has closed.
    void on_closed(std::function<void()> listener) { closed_ = std::move(listener); }

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void lay_out();
    void listen_to_settings();
    /// A time-out of the timer; one that comes after the program's end does nothing.
    void tick();
    void close_settings();
    void copy_picture() const;
    void start_up();
    void entry_returned();

    Scope& scope_;
    Dialogs dialogs_;
    ScopeDriver driver_;
    ScreenPanel* screen_;
    QWidget* controls_ = nullptr;
    QAction* full_screen_ = nullptr;
    QPointer<SettingsWindow> settings_; ///< while the settings dialog is open
    ToolWindows tools_;
    RemoteInWindow remote_;
    QTimer timer_{this};
    bool started_ = false;
    std::function<void()> closed_;
};

} // namespace kv408::ui
