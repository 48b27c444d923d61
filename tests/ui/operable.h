#pragma once

#include <QStringList>
#include <QWidget>

#include "panel/front_panel.h"
#include "ui/bind.h"

namespace kv408::ui {

/// The names of those controls of `panel` that can be operated now by a widget inside `area`.
inline QStringList operable(const FrontPanel& panel, const QWidget& area) {
    QStringList names;
    for (const Control* const control : panel.all) {
        const auto* const widget = area.findChild<QWidget*>(object_name(*control));
        if (control->about().outside == Outside::set && widget != nullptr && widget->isVisible() &&
            widget->isEnabled()) {
            names += widget->objectName();
        }
    }
    return names;
}

/// Those of `names` that are not among `others`, in one text.
inline QString missing_in(const QStringList& others, QStringList names) {
    names.removeIf([&](const QString& name) { return others.contains(name); });
    return names.join(u' ');
}

} // namespace kv408::ui
