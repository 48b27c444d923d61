#pragma once

#include <QProxyStyle>

namespace kv408::ui {

/// The style of every widget: flat fields and buttons with clear outlines, drawn from the palette,
/// over the style that comes with Qt on every system.
class FlatStyle : public QProxyStyle {
public:
    FlatStyle();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace kv408::ui
