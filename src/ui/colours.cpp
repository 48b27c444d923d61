#include "ui/colours.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>

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

/// Mark of a widget that paints its own background.
constexpr const char* paints_itself = "paintsItself";

/// Copies the text colours of one widget to another.
class Follower : public QObject {
public:
    Follower(QWidget& widget, QWidget& leader) : QObject(&widget), widget_(widget) {
        leader.installEventFilter(this);
        take_over(leader);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::PaletteChange) {
            take_over(*static_cast<const QWidget*>(watched));
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void take_over(const QWidget& leader) {
        QPalette palette; // of the text alone: the rest stays that of the application
        const QPalette& source = leader.palette();
        for (const QPalette::ColorRole role : fore_roles) {
            for (const QPalette::ColorGroup group :
                 {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                palette.setColor(group, role, source.color(group, role));
            }
        }
        widget_.setPalette(palette);
    }

    QWidget& widget_;
};

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
    QPalette palette; // of these colours alone: the rest stays that of the application
    if (back) {
        set_roles(palette, back_roles, qcolor(*back), qcolor(*back));
        // These fill themselves, within their rounded outline.
        const bool fills_itself = widget.property(paints_itself).toBool() ||
                                  qobject_cast<QLineEdit*>(&widget) != nullptr ||
                                  qobject_cast<QComboBox*>(&widget) != nullptr ||
                                  qobject_cast<QAbstractButton*>(&widget) != nullptr;
        widget.setAutoFillBackground(!fills_itself);
    }
    if (back) {
        const QColor behind = qcolor(*back);
        const QColor text = fore ? qcolor(*fore) : readable_on(behind);
        set_roles(palette, fore_roles, text, mixed(behind, text, 0.5));
    } else {
        // What is disabled looks like all that is, on whatever lies behind.
        for (const QPalette::ColorRole role : fore_roles) {
            palette.setColor(QPalette::Active, role, qcolor(*fore));
            palette.setColor(QPalette::Inactive, role, qcolor(*fore));
        }
    }
    if (palette.resolve(widget.palette()) != widget.palette()) {
        widget.setPalette(palette);
    }
}

void let_paint_itself(QWidget& widget) {
    widget.setProperty(paints_itself, true);
}

void follow_colours(QWidget& widget, QWidget& leader) {
    new Follower(widget, leader);
}

void fill_plate(QWidget& widget) {
    constexpr int plate_alpha = 190;
    QColor plate = widget.palette().color(QPalette::Window);
    plate.setAlpha(plate_alpha);
    QPainter(&widget).fillRect(widget.rect(), plate);
}

} // namespace kv408::ui
