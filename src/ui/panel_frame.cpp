#include "ui/panel_frame.h"

#include <utility>

#include <QPainter>

#include "ui/colours.h"

namespace kv408::ui {
namespace {

constexpr int title_height = 20;
constexpr int side_margin = 10;
constexpr int bottom_margin = 8;
constexpr double corner = 5.0;

QFont title_font(const QFont& font) {
    QFont result = font;
    result.setBold(true);
    result.setPointSizeF(font.pointSizeF() * 0.86);
    result.setLetterSpacing(QFont::AbsoluteSpacing, 0.8);
    return result;
}

} // namespace

PanelFrame::PanelFrame(QString title, QWidget* parent) : QFrame(parent), title_(std::move(title)) {
    setContentsMargins(side_margin, title_height + 3, side_margin, bottom_margin);
    setAccessibleName(title_);
}

void PanelFrame::set_note(QLabel* note, const QString& longest) {
    constexpr int beside_text = 16;
    note_ = note;
    note->setAlignment(Qt::AlignCenter);
    note->setFixedSize(note->fontMetrics().horizontalAdvance(longest) + beside_text,
                       title_height - 1);
}

void PanelFrame::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    if (note_ != nullptr) {
        constexpr int from_top = 3;
        note_->move(width() - side_margin - note_->width(), from_top);
    }
}

void PanelFrame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::AlternateBase));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter.setFont(title_font(font()));
    painter.setPen(mixed(palette().color(QPalette::Active, QPalette::WindowText),
                         palette().color(QPalette::AlternateBase), 0.25));
    painter.drawText(QRect(side_margin, 3, width() - 2 * side_margin, title_height),
                     Qt::AlignLeft | Qt::AlignVCenter, title_);
}

} // namespace kv408::ui
