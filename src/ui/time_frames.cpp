#include <QEvent>
#include <QHBoxLayout>

#include "ui/bind.h"
#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Makes `box` one for a number with or without its unit. Which can be taken is the program's
/// concern: it takes the nearest number within a range, and marks what is none.
void take_quantity(QLineEdit& box) {
    constexpr int longest = 24;
    box.setAlignment(Qt::AlignRight);
    box.setMaxLength(longest);
}

/// `box` with its unit behind it, as one widget of `parent`.
QWidget* with_unit(QLineEdit* box, const QString& unit, QWidget* parent) {
    auto* const both = new QWidget(parent);
    auto* const row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(frame_measure::row_spacing);
    box->setParent(both);
    row->addWidget(box, 1);
    row->addWidget(make_caption(unit, box));
    return both;
}

/// Adds `widget` to row `row` with its caption on the left and its unit, if any, on the right.
void add_row(QGridLayout& grid, int row, const QString& caption, QWidget* widget,
             const QString& unit = {}) {
    grid.addWidget(make_caption(caption, widget), row, 0);
    grid.addWidget(widget, row, 1);
    if (!unit.isEmpty()) {
        grid.addWidget(make_caption(unit, widget), row, 2);
    }
}

/// A push button no wider than its text needs.
class CompactButton : public QPushButton {
public:
    using QPushButton::QPushButton;

    [[nodiscard]] QSize sizeHint() const override {
        constexpr int padding = 8;
        return {fontMetrics().size(Qt::TextShowMnemonic, text()).width() + padding,
                QPushButton::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

/// Lets the tool tip of a trigger level say level and unit.
class LevelTip : public QObject {
public:
    explicit LevelTip(QLabel& level) : QObject(&level), level_(level) {
        level.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ToolTip) {
            QString value = level_.text().trimmed();
            level_.setToolTip(u"Trigger level: "_s + value.replace(u"mV"_s, u" mV"_s));
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QLabel& level_;
};

void add_hysteresis(QGridLayout& grid, WidgetMaker& make, int row) {
    // Each move waits for the reply that is on its way.
    const NumberedSlider slider = make.numbered_slider(
        make.driver().panel().shyst,
        {u"Trigger hysteresis"_s, u"Hysteresis of the trigger level, codes 0 to 255"_s},
        Moves::last_of_the_waiting);
    auto* const line = new QHBoxLayout;
    line->setSpacing(frame_measure::column_spacing);
    line->addWidget(slider.slider, 1);
    line->addWidget(slider.number);
    grid.addWidget(make_caption(u"H&ysteresis"_s, slider.slider), row, 0);
    grid.addLayout(line, row, 1);
}

/// Returns the check box that lets the wheel move the delay.
QWidget* add_channel_delay(QGridLayout& grid, WidgetMaker& make, int row, ChannelControls& channel,
                           const QString& name) {
    QLineEdit* const delay = make.text_box(
        channel.psofset, {u"Delay of "_s + name, u"Horizontal delay of "_s + name +
                                                     u", picoseconds; also with ps, ns or us"_s});
    take_quantity(*delay);
    add_row(grid, row, u"Delay "_s + name, delay, u"ps"_s);
    QCheckBox* const by_wheel = make.check(
        channel.slenps, {},
        {u"Wheel moves delay of "_s + name, u"The adjust wheel moves the delay of "_s + name});
    grid.addWidget(by_wheel, row, 3, Qt::AlignCenter);
    return by_wheel;
}

} // namespace

PanelFrame* make_trigger_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"TRIGGER"_s);
    WidgetMaker make(frame, driver);
    FrontPanel& panel = driver.panel();
    QGridLayout* const grid = make_frame_grid(frame, 5);
    add_row(*grid, 0, u"Source"_s,
            make.list(panel.trigsource, {u"Trigger source"_s, u"Input that starts each sweep"_s}));
    add_row(*grid, 1, u"Edge"_s,
            make.list(panel.trigeredge, {u"Trigger edge"_s, u"Edge that starts each sweep"_s}));
    add_hysteresis(*grid, make, 2);
    auto* const level = new QWidget(frame);
    auto* const level_row = new QHBoxLayout(level);
    level_row->setContentsMargins(0, 0, 0, 0);
    level_row->setSpacing(frame_measure::row_spacing);
    QLabel* const read_out =
        make.label(panel.trlevelmv, {u"Trigger level"_s, u"Trigger level, millivolts"_s});
    level_row->addWidget(read_out, 1);
    // The longest level with the trigger input halved.
    read_out->setMinimumWidth(read_out->fontMetrics().horizontalAdvance(u"-4096mV"_s));
    new LevelTip(*read_out);
    auto* const zero = new CompactButton(u"set to &zero"_s, level);
    describe(*zero, {u"Trigger level to zero"_s, u"Sets the trigger level to 0 mV"_s});
    bind(zero, panel.trzero, driver);
    level_row->addWidget(zero);
    grid->addWidget(make_caption(u"Trigger Pos.(mV)"_s, read_out), 3, 0);
    grid->addWidget(level, 3, 1);
    QLineEdit* const time_out = make.text_box(
        panel.trtout, {u"Trigger time-out"_s,
                       u"How long a sample waits for its trigger, microseconds, 10 to 65535; also "
                       u"with us or ms"_s});
    take_quantity(*time_out);
    grid->addWidget(with_unit(time_out, u"us"_s, frame), 4, 1);
    grid->addWidget(make_caption(u"Time-o&ut"_s, time_out), 4, 0);
    grid->setColumnStretch(1, 1);
    return frame;
}

PanelFrame* make_horizontal_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"HORIZONTAL"_s);
    WidgetMaker make(frame, driver);
    FrontPanel& panel = driver.panel();
    QGridLayout* const grid = make_frame_grid(frame, 4);
    QComboBox* const time =
        make.list(panel.seltimediv, {u"Time per division"_s, u"Time per division of the screen"_s});
    QWidget* const by_wheel = add_channel_delay(*grid, make, 1, panel.channel[0], u"CH1"_s);
    add_channel_delay(*grid, make, 2, panel.channel[1], u"CH2"_s);
    auto* const first = new QHBoxLayout;
    first->setSpacing(frame_measure::column_spacing);
    first->addWidget(make_caption(u"T&ime/div"_s, time));
    first->addWidget(time, 1);
    first->addWidget(make_caption(u"Wheel"_s, by_wheel));
    grid->addLayout(first, 0, 0, 1, 4);
    QLineEdit* const additional = make.text_box(
        panel.delaytrttdis,
        {u"Additional delay"_s,
         u"Delay between the trigger and the screen, picoseconds; also with ps, ns or us"_s});
    take_quantity(*additional);
    add_row(*grid, 3, u"Additional Delay"_s, additional, u"ps"_s);
    grid->setColumnStretch(1, 1);
    return frame;
}

} // namespace kv408::ui
