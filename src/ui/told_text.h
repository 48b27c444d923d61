#pragma once

#include <QLabel>

namespace kv408::ui {

/// A text that is broken into lines and never squeezed: the least size that it asks for has room
/// for all lines that it takes in its present width. A plain label asks for one line, and a layout
/// then takes what the others need from whatever is largest.
class ToldText : public QLabel {
public:
    explicit ToldText(QWidget* parent);

    /// Keeps room for `lines` lines, for a text that often has another number of them.
    void keep_lines(int lines);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int kept_lines_ = 0; ///< it is never less high
};

} // namespace kv408::ui
