#pragma once

#include <QLabel>
#include <QMenuBar>

namespace kv408::ui {

/// A text at the right end of a menu bar. It takes only the width that the menus leave; what it is
/// shortened by stands in its tool tip.
class CornerText : public QLabel {
public:
    /// For `bar`, which owns it from now on.
    explicit CornerText(QMenuBar& bar);

    /// Shows `text`.
    void tell(const QString& text);

    /// None: the menus come first.
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Fits the text anew when the bar, which it watches, has another size; swallows no event.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QMenuBar& bar_;
    QString told_;
};

} // namespace kv408::ui
