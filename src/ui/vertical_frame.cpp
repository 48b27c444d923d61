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

QLayout* make_channel(WidgetMaker& make, ChannelControls& channel, const ChannelLook& look) {
    QGridLayout& grid = *make_frame_grid(nullptr, 4);
    QComboBox* const vdiv = make.list(channel.vdiv, {u"Volts per division of "_s + look.name,
                                                     u"Volts per division of "_s + look.name});
    grid.addWidget(make_heading(make, channel, look), 0, 0);
    grid.addWidget(make.check(channel.enable, u"On"_s,
                              {look.name + u" on"_s, u"Sweeps and shows "_s + look.name}),
                   0, 1);
    grid.addWidget(make_caption(look.vdiv_caption, vdiv), 1, 0);
    grid.addWidget(vdiv, 1, 1);
    QLabel* const offset =
        make.label(channel.ofset, {u"Offset of "_s + look.name,
                                   u"Vertical offset of "_s + look.name + u", volts"_s});
    grid.addWidget(make_caption(u"Offset"_s, offset), 2, 0);
    grid.addWidget(offset, 2, 1);
    grid.addWidget(
        make.check(channel.invert, u"Invert"_s,
                   {u"Invert "_s + look.name, u"Shows "_s + look.name + u" upside down"_s}),
        3, 0);
    grid.addWidget(make.check(channel.inviatr, u"Input Via Trigger"_s,
                              {look.name + u" input via trigger"_s,
                               u"The signal of "_s + look.name +
                                   u" comes through the trigger input, which halves it"_s}),
                   3, 1);
    grid.setColumnStretch(1, 1);
    return &grid;
}

} // namespace

PanelFrame* make_vertical_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"VERTICAL"_s);
    WidgetMaker make(frame, driver);
    const std::array looks = {ChannelLook{u"CH1"_s, u"&V/div"_s},
                              ChannelLook{u"CH2"_s, u"V/&div"_s}};
    // Apart as far as the frames above are.
    constexpr int between_channels = 30;
    QBoxLayout& parts = frame->make_parts(between_channels);
    for (std::size_t index = 0; index < looks.size(); ++index) {
        parts.addLayout(make_channel(make, driver.panel().channel[index], looks[index]), 1);
    }
    return frame;
}

} // namespace kv408::ui
