#include "ui/tool_windows.h"

namespace kv408::ui {

ToolWindows::ToolWindows(Tools& tools, ScopeDriver& driver, QWidget& owner)
    : tools_(tools), driver_(driver), owner_(owner) {}

ToolWindows::~ToolWindows() = default;

void ToolWindows::close() {}

} // namespace kv408::ui
