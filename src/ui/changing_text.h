#pragma once

#include <QLabel>

namespace kv408::ui {

/// Room for a label whose text changes all the time and is as high as ever: the window around it is
/// laid out anew only when the text needs another height. As a part of a layout itself a label has
/// that done for each new text.
class ChangingText : public QWidget {
public:
    /// Holds `label`.
    explicit ChangingText(QLabel* label);

    [[nodiscard]] QSize sizeHint() const override { return label_->sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return label_->minimumSizeHint(); }
    [[nodiscard]] bool hasHeightForWidth() const override { return label_->hasHeightForWidth(); }
    [[nodiscard]] int heightForWidth(int width) const override {
        return label_->heightForWidth(width);
    }

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* label_;
};

} // namespace kv408::ui
