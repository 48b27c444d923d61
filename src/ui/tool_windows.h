#pragma once

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

    /// Closes all of them.
    void close();

private:
    void show_export();
    void show_recording();
    void show_statistics();
    void show_density();
    void show_histogram();
    void show_jitter();
    void show_eye();
    void show_mask();
    void show_readouts();
    void show_maths();
    void show_spectrum();
    void show_autoset();

    Tools& tools_;
    ScopeDriver& driver_;
    QWidget& owner_;
    const QWidget& plot_;
    QAction& copy_table_;
    QPointer<QWidget> export_;
    QPointer<QWidget> recording_;
    QPointer<QWidget> statistics_;
    QPointer<QWidget> density_;
    QPointer<QWidget> histogram_;
    QPointer<QWidget> jitter_;
    QPointer<QWidget> eye_;
    QPointer<QWidget> mask_;
    QPointer<QWidget> readouts_;
    QPointer<QWidget> maths_;
    QPointer<QWidget> spectrum_;
    QPointer<AutosetWindow> autoset_;
};

} // namespace kv408::ui
