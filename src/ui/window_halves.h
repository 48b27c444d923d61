#pragma once

#include <functional>

#include <QPointer>
#include <QWidget>

#include "ui/control_panel.h"
#include "ui/screen_panel.h"
#include "ui/scrolling_area.h"

namespace kv408::ui {

/// What lies in the main window: the screen on the left, the controls on the right. The controls
/// take what they need, the screen the rest; hidden, they leave the screen all of it but for their
/// Status frame. In a window too small for both the controls become narrower first, then both are
/// scrolled.
class WindowHalves : public QWidget {
public:
    /// Shows `screen` and `controls`, and owns them.
    WindowHalves(ScreenPanel* screen, ControlPanel* controls);

    /// Hides the controls but for their Status frame, which then stands under the results, or shows
    /// them again. Hidden controls have no keyboard; the one that had it gets it back with them
    /// unless it has gone elsewhere meanwhile. The results and that frame stand below the plot, or
    /// in a column to its right where the plot becomes larger so.
    void hide_controls(bool hidden);

    /// Room for everything at its natural size.
    [[nodiscard]] QSize sizeHint() const override;

    /// Small: what has no room is scrolled to.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void lay_out();
    void lay_out_hidden();
    /// The width of the controls in `room`.
    [[nodiscard]] int width_of_controls(QSize room) const;
    /// Whether the plot is as large beside controls that take `wide` of `room` as beside such that
    /// take `narrow`.
    [[nodiscard]] bool as_large_beside(int wide, int narrow, QSize room) const;
    /// Whether the plot gains by a column to its right.
    [[nodiscard]] bool gains_by_column(QSize whole, QSize above_status) const;
    /// Puts the Status frame into the column beside the plot, or below the screen.
    void move_status(bool beside);
    /// Does `move`, after which the Status frame has the keyboard as before.
    void keeping_keyboard(const std::function<void()>& move);

    ScreenPanel* screen_;
    ScrollingArea* area_; ///< around the screen
    ControlPanel* controls_;
    QPointer<QWidget> had_keyboard_; ///< of the controls, when these were hidden
};

} // namespace kv408::ui
