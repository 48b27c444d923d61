#pragma once

#include <memory>

#include <QDialog>
#include <QProgressBar>
#include <QPushButton>

#include "autoset/autoset.h"
#include "ui/input_block.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// What Autoset does and has found, over its owner. While it works nothing else of the owner can be
/// used.
class AutosetWindow : public QDialog {
public:
    /// Shows `autoset`; all outlive the window.
    AutosetWindow(Autoset& autoset, ScopeDriver& driver, QWidget& owner);

    /// Brings all that is shown up to date.
    void refresh();

    /// Closes it, by its frame or with Escape as well; an Autoset that is under way is cancelled.
    void reject() override;

private:
    Autoset& autoset_;
    ScopeDriver& driver_;
    QWidget& owner_;
    QProgressBar* progress_;
    QPushButton* cancel_;
    QPushButton* close_;
    std::unique_ptr<InputBlock> block_; ///< while it is under way
};

} // namespace kv408::ui
