#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace kv408::ui {

/// Keeps mouse and keyboard away from a window and from all that belongs to it, except for one
/// dialog and what that opens. Unlike a modal dialog it leaves the window its end: it can be
/// closed, from its title bar too. Other windows of the program are not touched.
class InputBlock : public QObject {
public:
    /// Blocks `window`, null for none, in favour of `dialog` until destroyed.
    InputBlock(QWidget* window, QWidget* dialog);

    /// The dialog in whose favour `window` was blocked last; `window` itself where it is not.
    [[nodiscard]] static QWidget* front_of(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool blocks(const QObject& watched) const;

    QPointer<QWidget> window_;
    QPointer<QWidget> dialog_;
};

} // namespace kv408::ui
