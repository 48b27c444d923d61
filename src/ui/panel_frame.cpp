#include "ui/panel_frame.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QPainter>

#include "ui/colours.h"
#include "ui/frames.h"
#include "ui/lengths.h"

namespace kv408::ui {
namespace {

constexpr int least_title_height = 20;
constexpr int below_title = 3;
constexpr int side_margin = 10;
constexpr int bottom_margin = 8;
QFont title_font(const QFont& font) {
    QFont result = font;
    result.setBold(true);
    result.setPointSizeF(font.pointSizeF() * 0.86);
    result.setLetterSpacing(QFont::AbsoluteSpacing, 0.8);
    return result;
}

int title_height(const QFont& font) {
    constexpr int around = 4;
    return std::max(least_title_height, QFontMetrics(title_font(font)).height() + around);
}

} // namespace

PanelFrame::PanelFrame(QString title, QWidget* parent) : QFrame(parent), title_(std::move(title)) {
    leave_room_for_title();
    setAccessibleName(title_);
}

void PanelFrame::set_note(QLabel* note, const QString& longest) {
    note_ = note;
    longest_note_ = longest;
    note->setAlignment(Qt::AlignCenter);
    place_note();
}

void PanelFrame::place_note() {
    if (note_ == nullptr) {
        return;
    }
    constexpr int beside_text = 16;
    constexpr int from_top = 3;
    note_->setFixedSize(note_->fontMetrics().horizontalAdvance(longest_note_) + beside_text,
                        title_height(font()) - 1);
    note_->move(width() - side_margin - note_->width(), from_top);
}

void PanelFrame::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    place_note();
}

void PanelFrame::keep_width(int width) {
    kept_width_ = width;
    updateGeometry();
}

QSize PanelFrame::minimumSizeHint() const {
    return QFrame::minimumSizeHint().expandedTo({kept_width_, 0});
}

QBoxLayout& PanelFrame::make_parts(int gap) {
    parts_ = new QBoxLayout(QBoxLayout::LeftToRight, this);
    parts_->setContentsMargins(0, 0, 0, 0);
    gap_ = gap;
    stack_parts(false);
    return *parts_;
}

void PanelFrame::stack_parts(bool stacked) {
    if (parts_ == nullptr) {
        return;
    }
    const auto direction = stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    const int spacing = stacked ? frame_measure::row_spacing : gap_;
    if (parts_->direction() == direction && parts_->spacing() == spacing) {
        return; // whoever lays the frame out may ask for it each time
    }
    parts_->setDirection(direction);
    parts_->setSpacing(spacing);
    // The layout that the frame lies in does not notice by itself.
    updateGeometry();
}

int PanelFrame::least_width(bool stacked) const {
    if (parts_ == nullptr) {
        return minimumSizeHint().width();
    }
    int widest = 0;
    int together = -gap_;
    for (int index = 0; index < parts_->count(); ++index) {
        const int width = parts_->itemAt(index)->minimumSize().width();
        widest = std::max(widest, width);
        together += width + gap_;
    }
    return (stacked ? widest : together) + 2 * side_margin;
}

bool PanelFrame::shows_both_halves_in(int width) const {
    return width >= 2 * least_width(true);
}

int PanelFrame::usual_height(bool stacked) const {
    if (parts_ == nullptr) {
        return sizeHint().height();
    }
    int highest = 0;
    int together = -frame_measure::row_spacing;
    for (int index = 0; index < parts_->count(); ++index) {
        const int height = parts_->itemAt(index)->sizeHint().height();
        highest = std::max(highest, height);
        together += height + frame_measure::row_spacing;
    }
    const QMargins around = contentsMargins();
    return (stacked ? together : highest) + around.top() + around.bottom();
}

void PanelFrame::leave_room_for_title() {
    setContentsMargins(side_margin, title_height(font()) + below_title, side_margin, bottom_margin);
}

void PanelFrame::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        leave_room_for_title();
        place_note();
    }
}

void PanelFrame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::AlternateBase));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), frame_corner,
                            frame_corner);
    painter.setFont(title_font(font()));
    painter.setPen(mixed(palette().color(QPalette::Active, QPalette::WindowText),
                         palette().color(QPalette::AlternateBase), 0.25));
    painter.drawText(
        QRect(side_margin, below_title, width() - 2 * side_margin, title_height(font())),
        Qt::AlignLeft | Qt::AlignVCenter, title_);
}

} // namespace kv408::ui
