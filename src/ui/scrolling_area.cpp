#include "ui/scrolling_area.h"

#include <QFocusEvent>

namespace kv408::ui {
namespace {

/// Not by the mouse, under which nothing may move away, nor because the window has come to the
/// front, which a click may have brought about.
bool by_keyboard(const QFocusEvent& event) {
    const Qt::FocusReason reason = event.reason();
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
}

} // namespace

ScrollingArea::ScrollingArea(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

QSize ScrollingArea::sizeHint() const {
    return widget()->sizeHint();
}

QSize ScrollingArea::minimumSizeHint() const {
    constexpr int least = 80;
    return {least, least};
}

void ScrollingArea::follow_keyboard(QWidget& inner) {
    inner.installEventFilter(this);
}

void ScrollingArea::bring_into_sight(const QWidget& inner) {
    // Qt's own way is content with seeing the text cursor.
    const QRect place(inner.mapTo(widget(), QPoint()), inner.size());
    const QRect seen(-widget()->pos(), viewport()->size());
    if (!seen.contains(place)) {
        constexpr int beyond = 50;
        ensureVisible(place.right(), place.bottom(), 1, beyond);
        ensureVisible(place.left(), place.top(), 0, beyond);
    }
}

bool ScrollingArea::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && by_keyboard(static_cast<QFocusEvent&>(*event))) {
        auto* const focused = static_cast<QWidget*>(watched);
        if (widget()->isAncestorOf(focused)) {
            bring_into_sight(*focused);
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace kv408::ui
