#include "ui/plate.h"

#include "ui/colours.h"

namespace kv408::ui {

Plate::Plate(QWidget* parent) : QLabel(parent) {
    let_paint_itself(*this);
    setContentsMargins(6, 1, 6, 1);
}

void Plate::paintEvent(QPaintEvent* event) {
    fill_plate(*this);
    QLabel::paintEvent(event);
}

} // namespace kv408::ui
