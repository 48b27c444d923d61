#include "ui/tool_widgets.h"

#include <utility>

#include <QHBoxLayout>

#include "ui/lengths.h"
#include "ui/tool_area.h"
#include "ui/window_places.h"

namespace kv408::ui {

QVBoxLayout* make_window_layout(QWidget& window) {
    auto* const layout = new QVBoxLayout(&window);
    layout->setContentsMargins(window_gap, window_gap, window_gap, window_gap);
    layout->setSpacing(window_gap);
    auto* const area = new ToolArea(&window);
    layout->addWidget(area, 1);
    auto* const parts = new QVBoxLayout(&area->content());
    parts->setContentsMargins(0, 0, 0, 0);
    parts->setSpacing(window_gap);
    return parts;
}

void add_ending(QWidget& window, QLayout* row) {
    static_cast<QVBoxLayout*>(window.layout())->addLayout(row);
}

QGridLayout* make_tool_grid(QWidget* frame) {
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(window_gap);
    grid->setColumnStretch(1, 1);
    return grid;
}

TwoGrids make_two_grids(QWidget& frame) {
    auto* const columns = new QHBoxLayout(&frame);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(window_gap);
    QGridLayout* const left = make_tool_grid(nullptr);
    QGridLayout* const right = make_tool_grid(nullptr);
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    return {*left, *right};
}

void add_captioned(QGridLayout& grid, int row, const QString& caption, QWidget* widget) {
    grid.addWidget(make_caption(caption, widget), row, 0);
    grid.addWidget(widget, row, 1);
}

QLabel* make_told(WidgetMaker& make, Label& control, const Words& words) {
    QLabel* const line = make_changing(make, control, words);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return line;
}

ToldText* make_changing(WidgetMaker& make, Label& control, const Words& words) {
    auto* const line = new ToldText(make.frame());
    describe(*line, words);
    bind(line, control);
    return line;
}

QPushButton* make_plain_button(QWidget& window, const QString& name, const QString& caption,
                               const Words& words, std::function<void()> pressed) {
    auto* const button = new QPushButton(caption, &window);
    button->setObjectName(name);
    button->setAutoDefault(false);
    describe(*button, words);
    QObject::connect(button, &QPushButton::clicked, button, std::move(pressed));
    return button;
}

void present_beside(QWidget& window, const QWidget& main_window, const QWidget& keep) {
    if (!window.isVisible()) {
        put_beside(window, main_window, keep);
    }
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace kv408::ui
