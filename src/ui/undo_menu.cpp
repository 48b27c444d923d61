#include "ui/undo_menu.h"

#include <utility>

#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QEvent>
#include <QMouseEvent>

#include "config/undo.h"
#include "ui/menu_entry.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Fills `menu` with the steps as they are now, the newest at the top.
void list_steps(QMenu& menu, ScopeDriver& driver) {
    menu.clear();
    ListBox& steps = driver.undo().controls().lststeps;
    auto* const group = new QActionGroup(&menu);
    for (int place = static_cast<int>(steps.entries().size()) - 1; place >= 0; --place) {
        // A person's words may hold the sign that marks a menu's key.
        QString words = QString::fromStdString(steps.entries()[static_cast<std::size_t>(place)]);
        auto* const step = new QAction(words.replace(u'&', u"&&"_s), group);
        step->setCheckable(true);
        step->setEnabled(steps.enabled());
        step->setChecked(place == steps.index());
        QObject::connect(step, &QAction::triggered, step, [&driver, &steps, place] {
            driver.act([&steps, place] {
                if (steps.has_index(place)) {
                    steps.set_index(place);
                }
            });
        });
        menu.addAction(step);
    }
}

} // namespace

void fill_undo_menu(QMenu& menu, ScopeDriver& driver) {
    UndoControls& controls = driver.undo().controls();
    add_entry(menu, controls.mnuundo, driver,
              {u"&Undo"_s, u"Takes the last step back"_s, QKeySequence(u"Ctrl+Z"_s)});
    add_entry(menu, controls.mnuredo, driver,
              {u"Red&o"_s, u"Takes the step again that was taken back last"_s,
               QKeySequence(u"Ctrl+Shift+Z"_s)});
    QMenu* const steps = menu.addMenu(u"Ste&ps"_s);
    steps->setObjectName(object_name(controls.lststeps));
    steps->setAccessibleName(u"Steps"_s);
    steps->setToolTip(u"Goes back or forth to any of the steps"_s);
    QObject::connect(steps, &QMenu::aboutToShow, steps,
                     [steps, &driver] { list_steps(*steps, driver); });
    list_steps(*steps, driver);
}

PressWatch::PressWatch(ScopeDriver& driver, QObject* parent) : QObject(parent), driver_(driver) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool PressWatch::eventFilter(QObject* /*watched*/, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
        // One press comes to the native window, to a widget and to those behind it.
        const quint64 time = static_cast<QMouseEvent*>(event)->timestamp();
        if (std::exchange(last_, time) != time) {
            driver_.undo().press_begins();
        }
    } else if (type == QEvent::MouseButtonRelease) {
        driver_.undo().press_ends();
    }
    return false;
}

} // namespace kv408::ui
