#pragma once

#include "ui/scrolling_area.h"

namespace kv408::ui {

/// What a tool's window shows above its buttons. Where a screen of 1024x600 has room for all of it,
/// the window is never smaller; else it may be as small as that, and the rest is scrolled to. While
/// all of it is seen and a text grows, the window grows with it as far as the screen goes.
class ToolArea : public ScrollingArea {
public:
    /// Makes an area with nothing in it.
    explicit ToolArea(QWidget* parent);

    /// What lies in it, for a layout.
    [[nodiscard]] QWidget& content() { return *widget(); }

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    /// Gives the window `missing` pixels more height, or what the screen has; it stays on that.
    void grow_by(int missing);

    bool scrolls_ = false; ///< it is less high than its content has to be
};

} // namespace kv408::ui
