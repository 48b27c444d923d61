#include "ui/control_panel.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QScrollArea>
#include <QScrollBar>

#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/mouse_wheel.h"

namespace kv408::ui {
namespace {

constexpr int panel_width = 540;
constexpr int gap = 6;

/// Beyond this the rows would no longer hold together.
constexpr int greatest_height = 1040;

/// The frames one below the other; a scroll bar beside them where the window is too low.
class FrameColumn : public QScrollArea {
public:
    explicit FrameColumn(QWidget* frames) {
        setWidget(frames);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        viewport()->setAutoFillBackground(false);
        frames->setAutoFillBackground(false);
        setFixedWidth(panel_width);
        set_frames_width(panel_width);
        connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this](int, int greatest) {
            const int bar = greatest > 0 ? verticalScrollBar()->sizeHint().width() : 0;
            set_frames_width(panel_width - bar);
        });
        for (QWidget* const inner : frames->findChildren<QWidget*>()) {
            inner->installEventFilter(this);
        }
    }

    /// Brings into sight what the keyboard goes to.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusIn && by_keyboard(static_cast<QFocusEvent&>(*event))) {
            ensureWidgetVisible(static_cast<QWidget*>(watched));
        }
        return QScrollArea::eventFilter(watched, event);
    }

    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return {panel_width, least_height}; }

private:
    static constexpr int least_height = 300;

    /// Not by the mouse, under which nothing may move away, nor because the window has come to the
    /// front, which a click may have brought about.
    static bool by_keyboard(const QFocusEvent& event) {
        const Qt::FocusReason reason = event.reason();
        return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
               reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
    }

    /// Makes the frames `width` wide, both columns alike.
    void set_frames_width(int width) {
        auto* const grid = static_cast<QGridLayout*>(widget()->layout());
        grid->setColumnMinimumWidth(0, (width - gap) / 2);
        grid->setColumnMinimumWidth(1, (width - gap) / 2);
        widget()->setFixedWidth(width);
    }
};

QWidget* make_frames(ScopeDriver& driver) {
    auto* const panel = new QWidget;
    auto* const grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(gap);
    const auto add = [grid](QWidget* frame, int row, int column, int columns) {
        spread_rows(*frame);
        grid->addWidget(frame, row, column, 1, columns);
    };
    add(make_display_frame(driver), 0, 0, 1);
    add(make_measurement_frame(driver), 0, 1, 1);
    add(make_trigger_frame(driver), 1, 0, 1);
    add(make_horizontal_frame(driver), 1, 1, 1);
    add(make_vertical_frame(driver), 2, 0, 2);
    add(make_cursor_frame(driver), 3, 0, 2);
    // What height is left goes to the frames by the rows they hold.
    int row = 0;
    for (const int rows : {4, 5, 4, 1}) {
        grid->setRowStretch(row++, rows);
    }
    return panel;
}

} // namespace

QWidget* make_control_panel(ScopeDriver& driver) {
    auto* const panel = new QWidget;
    panel->setMaximumHeight(greatest_height);
    auto* const column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(new FrameColumn(make_frames(driver)), 1);
    // What is used all the time is always in sight.
    for (QWidget* const frame : {make_adjust_frame(driver), make_status_frame(driver)}) {
        spread_rows(*frame);
        column->addWidget(frame);
    }
    column->addWidget(make_buttons(driver));
    let_wheel_turn_only_what_has_focus(*panel);
    return panel;
}

} // namespace kv408::ui
