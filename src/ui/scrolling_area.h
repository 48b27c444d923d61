#pragma once

#include <QScrollArea>

namespace kv408::ui {

/// A part of the window that is scrolled, both ways, where there is less room than it needs. What
/// the keyboard goes to comes into sight.
class ScrollingArea : public QScrollArea {
public:
    /// Shows `content`, which it owns, at least as large as its minimum size hint.
    explicit ScrollingArea(QWidget* content, QWidget* parent = nullptr);

    /// The size hint of the content.
    [[nodiscard]] QSize sizeHint() const override;

    /// Small: the rest is scrolled to.
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Follows the keyboard into `inner`, which lies in the content now or later.
    void follow_keyboard(QWidget& inner);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Scrolls as far as it takes to see all of `inner`, or its upper left part where it is larger.
    void bring_into_sight(const QWidget& inner);
};

} // namespace kv408::ui
