#pragma once

#include <QLabel>

namespace kv408::ui {

/// A field that shows nothing but a colour, the back colour of the control that it is bound to.
class Swatch : public QLabel {
public:
    /// A swatch at least `width` by `height` large.
    Swatch(QWidget* parent, int width, int height);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kv408::ui
