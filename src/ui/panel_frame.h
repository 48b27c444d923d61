#pragma once

#include <QFrame>
#include <QLabel>

namespace kv408::ui {

/// A titled frame of the panel: a plate with its title in the upper left corner. What lies in it
/// is laid out within its contents margins.
class PanelFrame : public QFrame {
public:
    /// A frame titled `title`.
    explicit PanelFrame(QString title, QWidget* parent = nullptr);

    /// The title.
    [[nodiscard]] const QString& title() const { return title_; }

    /// Puts `note`, a child of the frame, to the right of the title, wide enough for `longest`.
    void set_note(QLabel* note, const QString& longest);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString title_;
    QLabel* note_ = nullptr;
};

} // namespace kv408::ui
