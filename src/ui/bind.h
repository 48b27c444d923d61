#pragma once

// Ties a widget to its control, both ways: the widget shows whatever the control says, and what the
// user does to the widget reaches the control as one entry into the program. The widget shows with
// its signals blocked, so nothing runs in circles.

#include <functional>

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>

#include "panel/controls.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// Name of `control` as a widget's object name.
[[nodiscard]] QString object_name(const Control& control);

/// Calls `show` now and whenever `control` has changed, as long as `shower` lives.
void keep_shown(QObject& shower, Control& control, std::function<void()> show);

/// Shows on `widget` what every kind of control has: name, enabled, visible, colours.
void show_common(QWidget& widget, const Control& control);

/// A push button: a click presses the control.
void bind(QAbstractButton* widget, Button& control, ScopeDriver& driver);

/// A menu entry: choosing it presses the control.
void bind(QAction* action, Button& control, ScopeDriver& driver);

/// A menu entry with a check mark: choosing it sets the control.
void bind(QAction* action, CheckBox& control, ScopeDriver& driver);

/// A check box: a click sets the control.
void bind(QCheckBox* widget, CheckBox& control, ScopeDriver& driver);

/// One of several options: a click chooses the control.
void bind(QRadioButton* widget, OptionButton& control, ScopeDriver& driver);

/// A drop-down list: a choice, also of the entry that is selected already, sets the control.
void bind(QComboBox* widget, ListBox& control, ScopeDriver& driver);

/// A text box: typing, Enter, and the keyboard focus coming and going reach the control. Focus that
/// goes to another window or to a menu does not count as leaving.
void bind(QLineEdit* widget, TextBox& control, ScopeDriver& driver);

/// A text that the program shows.
void bind(QLabel* widget, Label& control);

/// Which moves of a slider reach its control: each; or, where handling one takes long, of those
/// that wait in the event queue only the last.
enum class Moves { each, last_of_the_waiting };

/// A slider: moving it sets the control.
void bind(QSlider* widget, Slider& control, ScopeDriver& driver, Moves moves = Moves::each);

/// A strip of tabs: a choice, also of the tab that is selected already, selects in the control.
void bind(QTabBar* widget, TabStrip& control, ScopeDriver& driver);

/// Only shows name, enabled, visible and colours of `control` on `widget`; `dim`, where there is
/// one, shows whether it is dimmed.
void bind_appearance(QWidget* widget, Control& control, std::function<void(bool)> dim = {});

} // namespace kv408::ui
