#pragma once

#include <QDialog>

#include "export/maths_dialog.h"
#include "ui/scope_driver.h"
#include "ui/widget_maker.h"

namespace kv408::ui {

/// The maths window on the screen, modeless over its owner: a frame for each of the two traces.
class MathsWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    MathsWindow(MathsDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~MathsWindow() override;
    MathsWindow(const MathsWindow&) = delete;
    MathsWindow& operator=(const MathsWindow&) = delete;

    /// Closes it, by its frame or with Escape as well; the traces stay.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_trace(std::size_t place);
    [[nodiscard]] QLayout* make_settings(WidgetMaker& make, std::size_t place);
    [[nodiscard]] QLayout* make_values(WidgetMaker& make, MathsControls& controls);
    [[nodiscard]] QLayout* make_ending();

    MathsDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
