#include "ui/changing_text.h"

#include <QEvent>

namespace kv408::ui {

ChangingText::ChangingText(QLabel* label) : label_(label) {
    label->setParent(this);
    setSizePolicy(label->sizePolicy());
}

bool ChangingText::event(QEvent* event) {
    // A label whose parent has no layout tells it so that its text has changed.
    if (event->type() == QEvent::LayoutRequest && heightForWidth(width()) != height()) {
        updateGeometry();
    }
    return QWidget::event(event);
}

void ChangingText::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    label_->setGeometry(rect());
}

} // namespace kv408::ui
