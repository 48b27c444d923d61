#pragma once

// What the windows that tell numbers of many sweeps have in common.

#include <QDialog>
#include <QGridLayout>
#include <QLayout>

#include "ui/widget_maker.h"

namespace kv408::ui {

/// The texts of such a window.
struct ToldLabels {
    Label& names;
    Label& values;
    Label& remark;
    QString subject;         ///< "eye": what the numbers are of, for screen readers
    Label* state = nullptr;  ///< how many sweeps; null: not told
    Label* reason = nullptr; ///< what was found, or why nothing; null: not told
};

/// The frame "Values" of a window: state, numbers beside their names, and what falsifies them; at
/// least `least_width` pixels wide, for the longest of them.
[[nodiscard]] QWidget* make_told_frame(ScopeDriver& driver, const ToldLabels& labels,
                                       int least_width);

/// Adds row `row` to `grid`: the lines of `names`, and beside them those of `values`, which `told`
/// describes.
void add_values(WidgetMaker& make, QGridLayout& grid, int row, Label& names, Label& values,
                const Words& told);

/// The buttons below it: Copy, of `copy`, tells `copied`; Close, named `close`, tells `closes` and
/// rejects `window`.
[[nodiscard]] QLayout*
make_told_ending(QDialog& window, ScopeDriver& driver, Button& copy, const QString& copied,
                 const QString& close,
                 const QString& closes = QStringLiteral("Closes the window; the density stays on"));

/// A box for `control` that shows `without` while it is empty.
[[nodiscard]] QLineEdit* make_typed(WidgetMaker& make, TextBox& control, const QString& without,
                                    const Words& words);

/// Lets `copy` put `text`, unless it is empty, on the clipboard.
void copy_to_clipboard(Button& copy, std::function<std::string()> text);

} // namespace kv408::ui
