#pragma once

#include <QFrame>

namespace kv408::ui {

/// A titled frame of the panel: a plate with its title in the upper left corner. What lies in it
/// is laid out within its contents margins.
class PanelFrame : public QFrame {
public:
    /// A frame titled `title`.
    explicit PanelFrame(QString title, QWidget* parent = nullptr);

    /// The title.
    [[nodiscard]] const QString& title() const { return title_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString title_;
};

} // namespace kv408::ui
