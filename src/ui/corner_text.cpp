#include "ui/corner_text.h"

#include <algorithm>

#include <QEvent>

namespace kv408::ui {

using namespace Qt::StringLiterals;

CornerText::CornerText(QMenuBar& bar) : QLabel(&bar), bar_(bar) {
    setTextFormat(Qt::PlainText);
    bar.setCornerWidget(this);
    bar.installEventFilter(this);
}

void CornerText::tell(const QString& text) {
    told_ = text;
    setToolTip(text);
    setAccessibleDescription(text);
    fit();
}

QSize CornerText::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

bool CornerText::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        fit();
    }
    return QLabel::eventFilter(watched, event);
}

void CornerText::fit() {
    const QString end = u"  "_s;
    const int room = bar_.width() - bar_.sizeHint().width() - fontMetrics().horizontalAdvance(end);
    const QString shown = fontMetrics().elidedText(told_, Qt::ElideRight, std::max(room, 0)) + end;
    if (shown != text()) {
        setText(shown);
        bar_.setCornerWidget(this); // places it anew
    }
}

} // namespace kv408::ui
