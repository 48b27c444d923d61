#pragma once

#include <QPointer>
#include <QWidget>

#include "scope/tools.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The windows of the tools, each made when it is opened first.
class ToolWindows {
public:
    /// Shows `tools` in windows over `owner`; all of them outlive this.
    ToolWindows(Tools& tools, ScopeDriver& driver, QWidget& owner);
    ~ToolWindows();
    ToolWindows(const ToolWindows&) = delete;
    ToolWindows& operator=(const ToolWindows&) = delete;

    /// Closes all of them.
    void close();

private:
    Tools& tools_;
    ScopeDriver& driver_;
    QWidget& owner_;
};

} // namespace kv408::ui
