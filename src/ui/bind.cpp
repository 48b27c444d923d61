#include "ui/bind.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPointer>
#include <QSignalBlocker>

#include "host/shown_text.h"
#include "ui/colours.h"

namespace kv408::ui {
namespace {

/// Calls `show(widget)` now and whenever `control` has changed, as long as the widget lives.
template <typename Widget, typename Show>
void keep_widget_shown(Widget* widget, Control& control, Show show) {
    keep_shown(*widget, control, [widget, show] { show(*widget); });
}

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

/// Marks `widget` as one whose text cannot be taken, or takes the mark away.
void show_fault(QLineEdit& widget, bool faulty) {
    constexpr const char* marked = "faulty";
    if (widget.property(marked).toBool() == faulty) {
        return;
    }
    widget.setProperty(marked, faulty);
    QPalette palette;
    if (faulty) {
        const QColor ground(255, 192, 192);
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Text, readable_on(ground));
    }
    widget.setPalette(palette);
}

QStringList entries_of(const ListBox& control) {
    QStringList entries;
    for (const std::string& entry : control.entries()) {
        // The serial number of a device may be any text.
        entries.append(text_of(shown_line(entry)));
    }
    return entries;
}

QStringList entries_of(const QComboBox& widget) {
    QStringList entries;
    for (int index = 0; index < widget.count(); ++index) {
        entries.append(widget.itemText(index));
    }
    return entries;
}

void show_list(QComboBox& widget, const ListBox& control) {
    const QSignalBlocker quiet(widget);
    const QStringList entries = entries_of(control);
    if (entries_of(widget) != entries) {
        widget.clear();
        widget.addItems(entries);
    }
    widget.setCurrentIndex(control.index());
    show_common(widget, control);
}

void show_tabs(QTabBar& widget, const TabStrip& control) {
    const QSignalBlocker quiet(widget);
    const auto& tabs = control.tabs();
    for (int index = 0; index < static_cast<int>(tabs.size()); ++index) {
        const QString caption = text_of(tabs[static_cast<std::size_t>(index)].caption);
        if (index >= widget.count()) {
            widget.addTab(caption);
        } else if (widget.tabText(index) != caption) {
            widget.setTabText(index, caption);
        }
    }
    while (widget.count() > static_cast<int>(tabs.size())) {
        widget.removeTab(widget.count() - 1);
    }
    widget.setCurrentIndex(control.selected() - 1);
    show_common(widget, control);
}

/// Tells a text box when the keyboard focus comes and goes.
class FocusWatch : public QObject {
public:
    FocusWatch(QLineEdit* widget, TextBox& control, ScopeDriver& driver)
        : QObject(widget), control_(control), driver_(driver) {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusIn && counts(*event)) {
            driver_.act([this] { control_.focus(); });
        } else if (event->type() == QEvent::FocusOut && counts(*event)) {
            driver_.act([this] { control_.leave(); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static bool counts(const QEvent& event) {
        const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
        return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
               reason != Qt::MenuBarFocusReason;
    }

    TextBox& control_;
    ScopeDriver& driver_;
};

} // namespace

QString object_name(const Control& control) {
    return text_of(control.name());
}

void keep_shown(QObject& shower, Control& control, std::function<void()> show) {
    const auto listener = [guard = QPointer(&shower), show = std::move(show)] {
        if (guard) {
            show();
        }
    };
    // Kept by the connection, which ends with the object.
    QObject::connect(&shower, &QObject::destroyed, &shower, [told = control.on_shown(listener)] {});
    listener();
}

void show_common(QWidget& widget, const Control& control) {
    widget.setEnabled(control.enabled());
    if (!control.visible()) {
        widget.hide();
    } else if (widget.testAttribute(Qt::WA_WState_ExplicitShowHide)) {
        widget.show();
    }
    show_colours(widget, control.fore_colour(), control.back_colour());
}

void bind(QAbstractButton* widget, Button& control, ScopeDriver& driver) {
    widget->setObjectName(object_name(control));
    QObject::connect(widget, &QAbstractButton::clicked, widget,
                     [&] { driver.act([&] { control.click(); }); });
    keep_widget_shown(widget, control, [&control](QAbstractButton& shown) {
        if (!control.caption().empty()) {
            shown.setText(text_of(control.caption()));
        }
        show_common(shown, control);
    });
}

void bind(QAction* action, Button& control, ScopeDriver& driver) {
    action->setObjectName(object_name(control));
    QObject::connect(action, &QAction::triggered, action,
                     [&] { driver.act([&] { control.click(); }); });
    keep_widget_shown(action, control, [&control](QAction& shown) {
        shown.setEnabled(control.enabled());
        shown.setVisible(control.visible());
    });
}

void bind(QAction* action, CheckBox& control, ScopeDriver& driver) {
    action->setObjectName(object_name(control));
    action->setCheckable(true);
    QObject::connect(action, &QAction::triggered, action,
                     [&](bool checked) { driver.act([&] { control.set_checked(checked); }); });
    keep_widget_shown(action, control, [&control](QAction& shown) {
        shown.setChecked(control.checked());
        shown.setEnabled(control.enabled());
        shown.setVisible(control.visible());
    });
}

void bind(QCheckBox* widget, CheckBox& control, ScopeDriver& driver) {
    widget->setObjectName(object_name(control));
    QObject::connect(widget, &QCheckBox::clicked, widget,
                     [&](bool checked) { driver.act([&] { control.press(checked); }); });
    keep_widget_shown(widget, control, [&control](QCheckBox& shown) {
        const QSignalBlocker quiet(shown);
        shown.setChecked(control.checked());
        show_common(shown, control);
    });
}

void bind(QRadioButton* widget, OptionButton& control, ScopeDriver& driver) {
    widget->setObjectName(object_name(control));
    QObject::connect(widget, &QRadioButton::clicked, widget,
                     [&] { driver.act([&] { control.choose(); }); });
    keep_widget_shown(widget, control, [&control](QRadioButton& shown) {
        const QSignalBlocker quiet(shown);
        shown.setText(text_of(control.caption()));
        shown.setChecked(control.checked());
        show_common(shown, control);
    });
}

void bind(QComboBox* widget, ListBox& control, ScopeDriver& driver) {
    widget->setObjectName(object_name(control));
    QObject::connect(widget, &QComboBox::activated, widget, [&, widget](int index) {
        driver.act([&] { control.set_index(index); });
        // An action that came to nothing leaves the control, and so the widget, as it was.
        show_list(*widget, control);
    });
    keep_widget_shown(widget, control, [&control](QComboBox& shown) { show_list(shown, control); });
}

void bind(QLineEdit* widget, TextBox& control, ScopeDriver& driver) {
    widget->setObjectName(object_name(control));
    if (!widget->isReadOnly()) {
        new FocusWatch(widget, control, driver);
        QObject::connect(widget, &QLineEdit::textEdited, widget, [&](const QString& text) {
            driver.act([&] { control.set_text(text.toStdString()); });
        });
        QObject::connect(widget, &QLineEdit::returnPressed, widget,
                         [&] { driver.act([&] { control.enter(); }); });
    }
    keep_widget_shown(widget, control, [&control](QLineEdit& shown) {
        const QSignalBlocker quiet(shown);
        if (const QString text = text_of(control.text()); shown.text() != text) {
            shown.setText(text);
        }
        show_fault(shown, control.faulty());
        show_common(shown, control);
    });
}

void bind(QLabel* widget, Label& control) {
    widget->setObjectName(object_name(control));
    keep_widget_shown(widget, control, [&control, name = widget->accessibleName()](QLabel& shown) {
        const QString text = text_of(control.caption());
        shown.setText(text);
        if (!name.isEmpty()) {
            // What reads the screen aloud tells a label's name and nothing else.
            shown.setAccessibleName(text.isEmpty() ? name : name + QStringLiteral(": ") + text);
        }
        show_common(shown, control);
    });
}

void bind(QSlider* widget, Slider& control, ScopeDriver& driver, Moves moves) {
    widget->setObjectName(object_name(control));
    widget->setRange(control.minimum(), control.maximum());
    QObject::connect(widget, &QSlider::valueChanged, widget, [&control, &driver, moves](int value) {
        const auto move = [&control, value] { control.set_value(value); };
        moves == Moves::each ? driver.act(move) : driver.act_after_events(control, move);
    });
    keep_widget_shown(widget, control, [&control](QSlider& shown) {
        const QSignalBlocker quiet(shown);
        shown.setValue(control.value());
        show_common(shown, control);
    });
}

void bind(QTabBar* widget, TabStrip& control, ScopeDriver& driver) {
    widget->setObjectName(object_name(control));
    const auto choose = [&](int index) { driver.act([&] { control.select(index + 1); }); };
    QObject::connect(widget, &QTabBar::currentChanged, widget, choose);
    QObject::connect(widget, &QTabBar::tabBarClicked, widget, [widget, choose](int index) {
        // Any other tab becomes the current one next, which is told on its own.
        if (index >= 0 && index == widget->currentIndex()) {
            choose(index);
        }
    });
    keep_widget_shown(widget, control, [&control](QTabBar& shown) { show_tabs(shown, control); });
}

void bind_appearance(QWidget* widget, Control& control, std::function<void(bool)> dim) {
    widget->setObjectName(object_name(control));
    keep_widget_shown(widget, control, [&control, dim = std::move(dim)](QWidget& shown) {
        show_common(shown, control);
        if (dim) {
            dim(control.dimmed());
        }
    });
}

} // namespace kv408::ui
