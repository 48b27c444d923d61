#include "ui/tool_area.h"

#include <algorithm>

#include <QEvent>
#include <QScreen>
#include <QScrollBar>
#include <QShowEvent>

namespace kv408::ui {
namespace {

/// A widget that is as high as it is given, and at least as high as it has to be: Qt would scroll
/// as soon as it is less high than it would like to be.
class Content : public QWidget {
public:
    [[nodiscard]] int heightForWidth(int /*width*/) const override {
        return minimumSizeHint().height();
    }
};

} // namespace

ToolArea::ToolArea(QWidget* parent) : ScrollingArea(new Content, parent) {}

QSize ToolArea::minimumSizeHint() const {
    // 1024x600 less title bar, task bar, and what stands around and below the area, in large
    // letters too.
    constexpr QSize most(980, 430);
    QSize least = widget()->minimumSizeHint();
    if (scrolls_) {
        least.rwidth() += verticalScrollBar()->sizeHint().width();
    }
    return least.boundedTo(most);
}

void ToolArea::resizeEvent(QResizeEvent* event) {
    ScrollingArea::resizeEvent(event);
    const int needed = widget()->minimumSizeHint().height();
    // What has grown with its content may not be laid out yet.
    scrolls_ = needed > height() && (scrolls_ || height() < event->oldSize().height());
    updateGeometry();
}

void ToolArea::showEvent(QShowEvent* event) {
    ScrollingArea::showEvent(event);
    if (!event->spontaneous()) {
        for (QWidget* const inner : widget()->findChildren<QWidget*>()) {
            follow_keyboard(*inner);
        }
    }
}

bool ToolArea::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        // The content needs another height.
        const int needed = widget()->minimumSizeHint().height();
        if (!scrolls_) {
            grow_by(needed - height());
        }
        scrolls_ = needed > height();
        updateGeometry();
    }
    return ScrollingArea::viewportEvent(event);
}

void ToolArea::grow_by(int missing) {
    QWidget& whole = *window();
    const QRect room = whole.screen()->availableGeometry();
    const QRect frame = whole.frameGeometry();
    const int more = std::min(missing, room.height() - frame.height());
    if (more <= 0) {
        return;
    }
    const int beyond = std::max(0, frame.bottom() + more - room.bottom());
    if (beyond > 0) {
        whole.move(frame.left(), std::max(room.top(), frame.top() - beyond));
    }
    whole.resize(whole.width(), whole.height() + more);
}

} // namespace kv408::ui
