#pragma once

#include <QLabel>

namespace kv408::ui {

/// A text on a translucent plate, which lets the picture shine through.
class Plate : public QLabel {
public:
    /// A plate over `parent`, which owns it.
    explicit Plate(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kv408::ui
