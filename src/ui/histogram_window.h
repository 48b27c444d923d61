#pragma once

#include <QDialog>
#include <QLabel>

#include "export/histogram_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The histogram window on the screen, modeless over its owner.
class HistogramWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    HistogramWindow(HistogramDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~HistogramWindow() override;
    HistogramWindow(const HistogramWindow&) = delete;
    HistogramWindow& operator=(const HistogramWindow&) = delete;

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

    /// Lets the arrow keys move the rectangle while the keyboard is on where it lies.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* make_choice();
    [[nodiscard]] bool take_key(int key, Qt::KeyboardModifiers modifiers);

    HistogramDialog& dialog_;
    ScopeDriver& driver_;
    QLabel* place_ = nullptr;
};

} // namespace kv408::ui
