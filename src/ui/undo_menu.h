#pragma once

#include <optional>

#include <QMenu>
#include <QObject>

#include "ui/scope_driver.h"

namespace kv408::ui {

/// Adds Undo, Redo and the list of steps to `menu`.
void fill_undo_menu(QMenu& menu, ScopeDriver& driver);

/// Tells Undo when a mouse button goes down and up anywhere in the program, as long as it lives.
class PressWatch : public QObject {
public:
    explicit PressWatch(ScopeDriver& driver, QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ScopeDriver& driver_;
    std::optional<quint64> last_ = {}; ///< time of the last press, as its event says
};

} // namespace kv408::ui
