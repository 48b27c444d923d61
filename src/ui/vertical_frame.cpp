#include <array>

#include <QFrame>
#include <QHBoxLayout>

#include "ui/bind.h"
#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// What differs between the channels.
struct ChannelLook {
    QString name;
    QString vdiv_caption; ///< with a mnemonic of its own
};

/// The channel's name in its colour on a plate, framed by the same colour.
QWidget* make_heading(WidgetMaker& make, ChannelControls& channel, const ChannelLook& look) {
    auto* const plate = new QLabel(make.frame());
    plate->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    plate->setMinimumHeight(frame_measure::row_height);
    describe(*plate, {look.name, u"The colour of "_s + look.name + u" on the screen"_s});
    bind(plate, channel.labelframe);
    auto* const row = new QHBoxLayout(plate);
    row->setContentsMargins(10, 0, 10, 0);
    QLabel* const heading = make.label(channel.label, {look.name, u"Channel "_s + look.name});
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    row->addWidget(heading, 0, Qt::AlignCenter);
    return plate;
}

void add_channel(QGridLayout& grid, WidgetMaker& make, int column, ChannelControls& channel,
                 const ChannelLook& look) {
    QComboBox* const vdiv = make.list(channel.vdiv, {u"Volts per division of "_s + look.name,
                                                     u"Volts per division of "_s + look.name});
    grid.addWidget(make_heading(make, channel, look), 0, column);
    grid.addWidget(make.check(channel.enable, u"On"_s,
                              {look.name + u" on"_s, u"Sweeps and shows "_s + look.name}),
                   0, column + 1);
    grid.addWidget(make_caption(look.vdiv_caption, vdiv), 1, column);
    grid.addWidget(vdiv, 1, column + 1);
    QLabel* const offset =
        make.label(channel.ofset, {u"Offset of "_s + look.name,
                                   u"Vertical offset of "_s + look.name + u", volts"_s});
    grid.addWidget(make_caption(u"Offset"_s, offset), 2, column);
    grid.addWidget(offset, 2, column + 1);
    grid.addWidget(
        make.check(channel.invert, u"Invert"_s,
                   {u"Invert "_s + look.name, u"Shows "_s + look.name + u" upside down"_s}),
        3, column);
    grid.addWidget(make.check(channel.inviatr, u"Input Via Trigger"_s,
                              {look.name + u" input via trigger"_s,
                               u"The signal of "_s + look.name +
                                   u" comes through the trigger input, which halves it"_s}),
                   3, column + 1);
    grid.setColumnStretch(column + 1, 1);
}

} // namespace

QWidget* make_vertical_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"VERTICAL"_s);
    WidgetMaker make(frame, driver);
    const std::array looks = {ChannelLook{u"CH1"_s, u"&V/div"_s},
                              ChannelLook{u"CH2"_s, u"V/&div"_s}};
    QGridLayout* const grid = make_frame_grid(frame, 4);
    add_channel(*grid, make, 0, driver.panel().channel[0], looks[0]);
    // A column of nothing keeps the channels apart as far as the frames above are.
    grid->setColumnMinimumWidth(2, 14);
    add_channel(*grid, make, 3, driver.panel().channel[1], looks[1]);
    return frame;
}

} // namespace kv408::ui
