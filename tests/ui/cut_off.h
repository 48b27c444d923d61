#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>

#include "ui/marker.h"
#include "ui/picture_folder.h"
#include "ui/screen_panel.h"

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

/// Whether `widget` may be larger than what shows it, for it can be scrolled.
inline bool is_scrolled(const QWidget& widget) {
    const auto* const area =
        qobject_cast<const QScrollArea*>(widget.parentWidget()->parentWidget());
    return area != nullptr && area->widget() == &widget;
}

/// The height of the lines of `text`, which are not wrapped.
inline int height_of_lines(const QWidget& widget, const QString& text) {
    const int lines = static_cast<int>(text.count(u'\n')) + 1;
    return widget.fontMetrics().height() + (lines - 1) * widget.fontMetrics().lineSpacing();
}

/// What is cut off below `top`, in words; empty when nothing is.
inline QStringList cut_off(const QWidget& top) {
    QStringList findings;
    for (const QWidget* const widget : top.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&top) || widget->isWindow() || widget->sizeHint().isEmpty()) {
            continue;
        }
        const QWidget& parent = *widget->parentWidget();
        // On either side the plot box has columns that bear nothing, and the rows above and below
        // it are as wide.
        const int empty = dynamic_cast<const ScreenPanel*>(&parent) != nullptr ? 2 : 0;
        const QRect place = widget->geometry().adjusted(empty, 0, -empty, 0);
        if (!parent.rect().contains(place) && !is_scrolled(*widget)) {
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
            // Markers, the plates of the headings and buttons without a text are no plain texts.
            const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            bool plain = dynamic_cast<const Marker*>(widget) == nullptr &&
                         widget->layout() == nullptr &&
                         (button == nullptr || !button->text().isEmpty());
            const auto* const label = qobject_cast<const QLabel*>(widget);
            if (label != nullptr && label->wordWrap()) {
                fits = label->heightForWidth(label->width()) <= label->height();
                plain = false;
            }
            const QString text = label != nullptr ? label->text() : QString();
            fits &= !plain || (widget->width() >= needed.width() &&
                               widget->height() >= height_of_lines(*widget, text));
        }
        if (!fits) {
            findings.append(u"too small: "_s + described(*widget));
        }
    }
    return findings;
}

/// Leaves a picture of `widget` for people to look at.
inline void save_picture(QWidget& widget, const QString& name) {
    const QString file =
        picture_folder() + u"/screenshot-%1-at-%2.png"_s.arg(name).arg(widget.devicePixelRatioF());
    QVERIFY(widget.grab().save(file));
}

} // namespace kv408::ui
