#pragma once

#include <QWidget>

namespace kv408::ui {

/// The place of the adjust wheel: a ribbed wheel seen from its edge.
class WheelArea : public QWidget {
public:
    /// A wheel at rest.
    explicit WheelArea(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kv408::ui
