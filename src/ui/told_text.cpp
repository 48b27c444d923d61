#include "ui/told_text.h"

#include <algorithm>

#include <QResizeEvent>

namespace kv408::ui {

ToldText::ToldText(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void ToldText::keep_lines(int lines) {
    kept_lines_ = lines;
    setAlignment(Qt::AlignTop | Qt::AlignLeft);
    updateGeometry();
}

int ToldText::heightForWidth(int width) const {
    return std::max(QLabel::heightForWidth(width), kept_lines_ * fontMetrics().lineSpacing());
}

QSize ToldText::sizeHint() const {
    return QLabel::sizeHint().expandedTo({0, kept_lines_ * fontMetrics().lineSpacing()});
}

QSize ToldText::minimumSizeHint() const {
    const QSize least =
        QLabel::minimumSizeHint().expandedTo({0, kept_lines_ * fontMetrics().lineSpacing()});
    // Before its first layout a widget has some width or other.
    return testAttribute(Qt::WA_Resized) ? least.expandedTo({0, heightForWidth(width())}) : least;
}

void ToldText::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (event->oldSize().width() != width()) {
        updateGeometry();
    }
}

} // namespace kv408::ui
