#include "ui/control_panel.h"

#include <algorithm>

#include <QApplication>
#include <QPointer>
#include <QStyle>

#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/mouse_wheel.h"

namespace kv408::ui {
namespace {

constexpr int frame_gap = 6;

/// Usual widths; larger texts need more.
constexpr int usual_width = 540;
constexpr int usual_column = (usual_width - frame_gap) / 2;

/// What the frames keep at least where the rest is to stay in sight.
constexpr int least_height = 150;

template <typename Layout>
Layout* without_margins(Layout* layout) {
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(frame_gap);
    return layout;
}

} // namespace

ControlPanel::ControlPanel(ScopeDriver& driver)
    : halves_{{make_display_frame(driver), 3},
              {make_measurement_frame(driver), 4},
              {make_trigger_frame(driver), 5},
              {make_horizontal_frame(driver), 4}},
      wide_{{make_vertical_frame(driver), 4}, {make_cursor_frame(driver), 1}},
      in_sight_{make_adjust_frame(driver), make_status_frame(driver)}, board_(new QWidget),
      rest_(new QWidget), area_(new ScrollingArea(board_, this)),
      column_(without_margins(new QVBoxLayout(this))) {
    for (const std::vector<Entry>* const entries : {&halves_, &wide_}) {
        for (const Entry& entry : *entries) {
            entry.frame->setParent(board_);
            spread_rows(*entry.frame);
        }
    }
    auto* const rest = without_margins(new QVBoxLayout(rest_));
    for (PanelFrame* const frame : in_sight_) {
        spread_rows(*frame);
        rest->addWidget(frame);
    }
    rest->addWidget(make_buttons(driver));
    column_->addWidget(area_, 1);
    column_->addWidget(rest_);
    put_frames(2, false);
    let_wheel_turn_only_what_has_focus(*this);
    for (QWidget* const half : {board_, rest_}) {
        for (QWidget* const inner : half->findChildren<QWidget*>()) {
            area_->follow_keyboard(*inner);
        }
    }
}

int ControlPanel::least_width(int columns) const {
    const bool stacked = columns == 1;
    int half = 0;
    for (const Entry& entry : halves_) {
        half = std::max(half, entry.frame->least_width(stacked));
    }
    int widest = stacked ? half : 2 * half + frame_gap;
    for (const Entry& entry : wide_) {
        widest = std::max(widest, entry.frame->least_width(stacked));
    }
    for (const PanelFrame* const frame : in_sight_) {
        widest = std::max(widest, frame->least_width(stacked));
    }
    return widest + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

int ControlPanel::width_within(int columns, int room) const {
    return std::max(least_width(columns),
                    std::min(room, columns == 2 ? usual_width : usual_column));
}

void ControlPanel::take_status_back() {
    // Above the row of buttons.
    auto& rest = static_cast<QVBoxLayout&>(*rest_->layout());
    rest.insertWidget(rest.count() - 1, &status());
    status().stack_parts(columns_ == 1);
    status().show();
}

QSize ControlPanel::sizeHint() const {
    constexpr int rows = 13; // one below the other in two columns
    const int rest = rest_scrolls_ ? 0 : rest_->sizeHint().height() + frame_gap;
    return {std::max(least_width(2), usual_width),
            board_->sizeHint().height() + rows * frame_measure::row_ease + rest};
}

QSize ControlPanel::minimumSizeHint() const {
    return area_->minimumSizeHint();
}

bool ControlPanel::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        arrange();
    }
    return handled;
}

void ControlPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void ControlPanel::arrange() {
    const int columns = width() >= least_width(2) ? 2 : 1;
    const bool rest_scrolls = height() < rest_->sizeHint().height() + frame_gap + least_height;
    if (columns == columns_ && rest_scrolls == rest_scrolls_) {
        return;
    }
    // What moves to another parent loses the keyboard.
    const QPointer<QWidget> focused = QApplication::focusWidget();
    put_frames(columns, rest_scrolls);
    if (focused && isAncestorOf(focused)) {
        focused->setFocus(Qt::OtherFocusReason);
    }
}

void ControlPanel::put_frames(int columns, bool with_rest) {
    const bool stacked = columns == 1;
    delete board_->layout();
    auto* const all = without_margins(new QVBoxLayout(board_));
    const auto add = [stacked](QVBoxLayout& layout, const Entry& entry) {
        entry.frame->stack_parts(stacked);
        layout.addWidget(entry.frame, entry.rows);
    };
    if (stacked) {
        for (const Entry& entry : halves_) {
            add(*all, entry);
        }
    } else {
        auto* const both = without_margins(new QHBoxLayout);
        int rows = 0;
        for (const std::size_t side : {0U, 1U}) {
            auto* const column = without_margins(new QVBoxLayout);
            for (std::size_t index = side; index < halves_.size(); index += 2) {
                add(*column, halves_[index]);
                rows += halves_[index].rows;
            }
            both->addLayout(column, 1);
        }
        all->addLayout(both, rows / 2);
    }
    for (const Entry& entry : wide_) {
        add(*all, entry);
    }
    for (PanelFrame* const frame : in_sight_) {
        if (isAncestorOf(frame)) { // the Status frame may stand elsewhere
            frame->stack_parts(stacked);
        }
    }
    if (with_rest) {
        all->addWidget(rest_);
    } else if (column_->indexOf(rest_) < 0) {
        column_->addWidget(rest_);
    }
    rest_->show();
    columns_ = columns;
    rest_scrolls_ = with_rest;
    updateGeometry();
}

} // namespace kv408::ui
