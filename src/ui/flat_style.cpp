#include "ui/flat_style.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include "ui/colours.h"
#include "ui/lengths.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

bool has(const QStyleOption& option, QStyle::StateFlag flag) {
    return option.state.testFlag(flag);
}

/// The outline of a field or button: clearer where it can be used, the accent where the keyboard
/// is.
QColor outline_of(const QStyleOption& option) {
    const QPalette& palette = option.palette;
    if (has(option, QStyle::State_HasFocus) && has(option, QStyle::State_Enabled)) {
        return palette.color(QPalette::Active, QPalette::Highlight);
    }
    const QColor outline = palette.color(QPalette::Mid);
    return has(option, QStyle::State_Enabled)
               ? mixed(outline, palette.color(QPalette::Active, QPalette::PlaceholderText), 0.5)
               : outline;
}

void draw_box(QPainter& painter, const QRectF& place, const QColor& fill, const QColor& outline,
              double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(outline);
    painter.setBrush(fill);
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void draw_button(QPainter& painter, const QStyleOption& option) {
    QColor fill = option.palette.color(QPalette::Button);
    if (!has(option, QStyle::State_Enabled)) {
        fill = mixed(fill, option.palette.color(QPalette::AlternateBase), 0.7);
    } else if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On)) {
        fill = mixed(fill, Qt::black, 0.2);
    } else if (has(option, QStyle::State_MouseOver)) {
        fill = mixed(fill, Qt::white, 0.12);
    }
    draw_box(painter, option.rect, fill, outline_of(option), box_corner);
}

/// The largest square at the left of where an indicator belongs.
QRectF indicator_place(const QStyleOption& option) {
    const double side = std::min(option.rect.width(), option.rect.height());
    return {option.rect.x() + 0.0, option.rect.y() + (option.rect.height() - side) / 2.0, side,
            side};
}

void draw_option(QPainter& painter, const QStyleOption& option) {
    const QRectF place = indicator_place(option);
    const bool on = has(option, QStyle::State_On);
    const QPalette& palette = option.palette;
    const QColor fill = palette.color(on ? QPalette::Highlight : QPalette::Base);
    const bool focus = has(option, QStyle::State_HasFocus);
    draw_box(painter, place, fill, on && !focus ? fill : outline_of(option), place.width() / 2.0);
    if (on) {
        const double inset = place.width() * 0.32;
        const QColor dot = palette.color(QPalette::HighlightedText);
        draw_box(painter, place.adjusted(inset, inset, -inset, -inset), dot, dot, inset);
    }
}

void draw_check(QPainter& painter, const QStyleOption& option) {
    const QRectF place = indicator_place(option);
    const double side = place.width();
    const bool on = has(option, QStyle::State_On);
    const QPalette& palette = option.palette;
    const QColor fill = palette.color(on ? QPalette::Highlight : QPalette::Base);
    const bool focus = has(option, QStyle::State_HasFocus);
    draw_box(painter, place, fill, on && !focus ? fill : outline_of(option), 3.0);
    if (!on) {
        return;
    }
    QPainterPath tick;
    tick.moveTo(place.left() + side * 0.24, place.top() + side * 0.52);
    tick.lineTo(place.left() + side * 0.43, place.top() + side * 0.71);
    tick.lineTo(place.left() + side * 0.77, place.top() + side * 0.30);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::HighlightedText), side * 0.14, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(tick);
    painter.restore();
}

/// The handle of a scroll bar at `place`: in a light look that of Qt's own style is white on white.
void draw_handle(QPainter& painter, const QStyleOptionComplex& option, const QRect& place) {
    const bool held = option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider) &&
                      (has(option, QStyle::State_Sunken) || has(option, QStyle::State_MouseOver));
    const QColor fill = mixed(option.palette.color(QPalette::Button),
                              option.palette.color(QPalette::PlaceholderText), held ? 0.7 : 0.45);
    draw_box(painter, place, fill, fill, box_corner);
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    // No etched shadow under disabled texts.
    return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ScrollBar && has(*option, State_Enabled)) {
        draw_handle(*painter, *option,
                    proxy()->subControlRect(control, option, SC_ScrollBarSlider, widget));
    }
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        draw_button(*painter, *option);
        return;
    case PE_IndicatorCheckBox:
        draw_check(*painter, *option);
        return;
    case PE_IndicatorRadioButton:
        draw_option(*painter, *option);
        return;
    case PE_PanelLineEdit:
        if (const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame != nullptr && frame->lineWidth <= 0) {
            // The text field within another widget, which draws the outline.
            painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
            return;
        }
        draw_box(*painter, option->rect, option->palette.color(QPalette::Base), outline_of(*option),
                 box_corner);
        return;
    case PE_FrameLineEdit:
        draw_box(*painter, option->rect, Qt::transparent, outline_of(*option), box_corner);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

} // namespace kv408::ui
