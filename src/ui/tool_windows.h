#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QAction>
#include <QPointer>
#include <QWidget>

#include "scope/tools.h"
#include "ui/autoset_window.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The windows of the tools, each made when it is opened first.
class ToolWindows {
public:
    /// Shows `tools` in windows over `owner` that leave its part `plot` in sight; all of them
    /// outlive this.
    ToolWindows(Tools& tools, ScopeDriver& driver, QWidget& owner, const QWidget& plot);
    ~ToolWindows();
    ToolWindows(const ToolWindows&) = delete;
    ToolWindows& operator=(const ToolWindows&) = delete;

    /// The menu entry that copies the sweep as a table to the clipboard.
    [[nodiscard]] QAction& copy_table() { return copy_table_; }

    /// Hides each whose tool has been closed from elsewhere, as by a client of remote control; to
    /// be called after each tick.
    void tick_over();

    /// Closes all of them.
    void close();

private:
    /// A tool's window, and what it shows.
    struct Tool {
        std::function<bool()> is_open;                     ///< the window is to be seen
        std::function<QWidget*()> make;                    ///< makes it
        std::function<void(std::function<void()>)> listen; ///< sets what follows its opening
        QPointer<QWidget> window;                          ///< null before
    };

    /// Adds the window of `dialog`, which `make` makes of it; or one like the others.
    template <typename Dialog, typename Maker>
    void add(Dialog& dialog, Maker make);
    template <typename Window, typename Dialog>
    void add(Dialog& dialog);

    void show(Tool& tool);
    void show_autoset();

    ScopeDriver& driver_;
    QWidget& owner_;
    const QWidget& plot_;
    QAction& copy_table_;
    std::vector<std::unique_ptr<Tool>> tools_;
    QPointer<AutosetWindow> autoset_;
};

} // namespace kv408::ui
