#include "ui/colours.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>

namespace kv408::ui {
namespace {

/// The roles of the text and of what lies behind it, over the kinds of widgets that have them.
constexpr std::array fore_roles = {QPalette::WindowText, QPalette::Text, QPalette::ButtonText};
constexpr std::array back_roles = {QPalette::Window, QPalette::Base, QPalette::Button};

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

template <typename Roles>
void set_roles(QPalette& palette, const Roles& roles, const QColor& colour,
               const QColor& when_disabled) {
    for (const QPalette::ColorRole role : roles) {
        palette.setColor(QPalette::Active, role, colour);
        palette.setColor(QPalette::Inactive, role, colour);
        palette.setColor(QPalette::Disabled, role, when_disabled);
    }
}

} // namespace

QColor qcolor(Colour colour) {
    return {red_of(colour), green_of(colour), blue_of(colour)};
}

QColor readable_on(const QColor& background) {
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrast(black, background) >= contrast(white, background) ? black : white;
}

QColor mixed(const QColor& from, const QColor& to, double part) {
    const auto between = [part](int first, int second) {
        return static_cast<int>(std::lround(first + (second - first) * part));
    };
    return {between(from.red(), to.red()), between(from.green(), to.green()),
            between(from.blue(), to.blue())};
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

void show_colours(QWidget& widget, std::optional<Colour> fore, std::optional<Colour> back) {
    if (!fore && !back) {
        return;
    }
    QPalette palette = widget.palette();
    if (back) {
        set_roles(palette, back_roles, qcolor(*back), qcolor(*back));
        // These fill themselves, within their rounded outline.
        const bool fills_itself = qobject_cast<QLineEdit*>(&widget) != nullptr ||
                                  qobject_cast<QComboBox*>(&widget) != nullptr ||
                                  qobject_cast<QAbstractButton*>(&widget) != nullptr;
        widget.setAutoFillBackground(!fills_itself);
    }
    const QColor behind = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = fore ? qcolor(*fore) : readable_on(behind);
    set_roles(palette, fore_roles, text, mixed(behind, text, 0.5));
    if (palette != widget.palette()) {
        widget.setPalette(palette);
    }
}

void make_read_out(QWidget& widget, const QColor& text) {
    const QColor black(Qt::black);
    QPalette palette = widget.palette();
    set_roles(palette, back_roles, black, black);
    set_roles(palette, fore_roles, text, mixed(black, text, 0.5));
    widget.setPalette(palette);
}

} // namespace kv408::ui
