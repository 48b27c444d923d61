#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>

#include "ui/marker.h"

namespace kv408::ui {

using namespace Qt::StringLiterals;

/// Name and place of `widget`.
inline QString described(const QWidget& widget) {
    const QRect place = widget.geometry();
    return u"%1 \"%2\" at %3,%4 %5x%6"_s.arg(widget.objectName(), widget.accessibleName())
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

/// Room for text in `list`.
inline int text_room(const QComboBox& list) {
    QStyleOptionComboBox option;
    option.initFrom(&list);
    return list.style()
        ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list)
        .width();
}

/// What is cut off below `top`, in words; empty when nothing is.
inline QStringList cut_off(const QWidget& top) {
    QStringList findings;
    for (const QWidget* const widget : top.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&top) || widget->isWindow() || widget->sizeHint().isEmpty()) {
            continue;
        }
        const QWidget& parent = *widget->parentWidget();
        if (!parent.rect().contains(widget->geometry())) {
            findings.append(u"outside: "_s + described(*widget));
        }
        bool fits = true;
        if (const auto* const list = qobject_cast<const QComboBox*>(widget)) {
            for (int entry = 0; entry < list->count(); ++entry) {
                const QString text = list->itemText(entry);
                fits &= list->fontMetrics().horizontalAdvance(text) <= text_room(*list);
            }
            fits &= list->height() >= list->fontMetrics().height() + 4;
        } else if (qobject_cast<const QLabel*>(widget) != nullptr ||
                   qobject_cast<const QAbstractButton*>(widget) != nullptr) {
            const QSize needed = widget->sizeHint();
            // Markers and the plates of the headings are no plain texts.
            bool plain =
                dynamic_cast<const Marker*>(widget) == nullptr && widget->layout() == nullptr;
            const auto* const label = qobject_cast<const QLabel*>(widget);
            if (label != nullptr && label->wordWrap()) {
                fits = label->heightForWidth(label->width()) <= label->height();
                plain = false;
            }
            fits &= !plain || (widget->width() >= needed.width() &&
                               widget->height() >= widget->fontMetrics().height());
        }
        if (!fits) {
            findings.append(u"too small: "_s + described(*widget));
        }
    }
    return findings;
}

/// Leaves a picture of `widget` for people to look at.
inline void save_picture(QWidget& widget, const QString& name) {
    const QString file = u"" KV408_PICTURE_DIR "/screenshot-%1-at-%2.png"_s.arg(name).arg(
        widget.devicePixelRatioF());
    QVERIFY(widget.grab().save(file));
}

} // namespace kv408::ui
