#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include "panel/controls.h"
#include "ui/bind.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// What people read about a widget.
struct Words {
    QString name; ///< for screen readers
    QString tip;  ///< what it does, and in which unit
};

/// Gives `widget` its words.
void describe(QWidget& widget, const Words& words);

/// Makes a caption for `buddy`, to which its mnemonic leads; dimmed together with it.
[[nodiscard]] QLabel* make_caption(const QString& text, QWidget* buddy);

/// A slider and the label that shows its value.
struct NumberedSlider {
    QSlider* slider;
    QLabel* number;
};

/// Makes the widgets of one frame: each a child of the frame, described, and bound to its control.
class WidgetMaker {
public:
    /// Makes children of `frame` that enter the program through `driver`.
    WidgetMaker(QWidget* frame, ScopeDriver& driver) : frame_(frame), driver_(driver) {}

    /// The widget for `control`; `caption` may hold a mnemonic.
    [[nodiscard]] QPushButton* button(Button& control, const QString& caption, const Words& words);
    [[nodiscard]] QCheckBox* check(CheckBox& control, const QString& caption, const Words& words);
    [[nodiscard]] QComboBox* list(ListBox& control, const Words& words);
    [[nodiscard]] QLineEdit* text_box(TextBox& control, const Words& words);
    [[nodiscard]] QSlider* slider(Slider& control, const Words& words, Moves moves = Moves::each);
    [[nodiscard]] NumberedSlider numbered_slider(Slider& control, const Words& words,
                                                 Moves moves = Moves::each);
    [[nodiscard]] QLabel* label(Label& control, const Words& words);

    /// The frame.
    [[nodiscard]] QWidget* frame() const { return frame_; }

    /// The way into the program.
    [[nodiscard]] ScopeDriver& driver() const { return driver_; }

private:
    QWidget* frame_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
