#include "demo/fault_switches.h"

#include <functional>

#include <QCheckBox>

#include "ui/frame_grid.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;
using simulator::AcknowledgeFault;
using simulator::Faults;

/// One switch.
struct Switch {
    QString name; ///< object name
    QString caption;
    QString tip;
    std::function<void(Faults&, bool)> set;
};

/// How a fault that has a number is set by its switch.
constexpr int every_lost_byte = 100;
constexpr Byte flipped_bits = 0x55;
constexpr std::size_t short_block = 700;

/// Switching one fault off leaves the other one alone.
void set_acknowledge(Faults& faults, AcknowledgeFault fault, bool on) {
    if (on) {
        faults.acknowledge = fault;
    } else if (faults.acknowledge == fault) {
        faults.acknowledge = AcknowledgeFault::none;
    }
}

QList<Switch> switches() {
    return {
        {u"unplugged"_s, u"Unplugged"_s, u"The cable is out of the computer"_s,
         [](Faults& faults, bool on) { faults.unplugged = on; }},
        {u"no_power"_s, u"No power"_s, u"The instrument is switched off"_s,
         [](Faults& faults, bool on) { faults.no_power = on; }},
        {u"no_trigger"_s, u"No trigger"_s, u"The trigger circuit sees nothing"_s,
         [](Faults& faults, bool on) { faults.no_trigger = on; }},
        {u"acknowledge_lost"_s, u"Acknowledge lost"_s, u"Commands are not acknowledged"_s,
         [](Faults& faults, bool on) { set_acknowledge(faults, AcknowledgeFault::lost, on); }},
        {u"acknowledge_wrong"_s, u"Acknowledge wrong"_s, u"Commands are answered by a wrong byte"_s,
         [](Faults& faults, bool on) { set_acknowledge(faults, AcknowledgeFault::wrong, on); }},
        {u"bytes_lost"_s, u"Bytes lost"_s, u"Every hundredth byte of the replies is lost"_s,
         [](Faults& faults, bool on) { faults.lose_every = on ? every_lost_byte : 0; }},
        {u"bytes_garbled"_s, u"Bytes garbled"_s, u"Half of the bits of the replies are inverted"_s,
         [](Faults& faults, bool on) { faults.flipped_bits = on ? flipped_bits : Byte{0}; }},
        {u"block_short"_s, u"Block cut short"_s, u"A block of samples ends after 700 bytes"_s,
         [](Faults& faults, bool on) {
             faults.block_bytes = on ? std::optional(short_block) : std::nullopt;
         }},
    };
}

} // namespace

QWidget* make_fault_switches(Faults& faults, const std::function<void()>& notice) {
    auto* const frame = new PanelFrame(u"Faults"_s);
    constexpr int columns = 3;
    QGridLayout* const grid = make_frame_grid(frame, columns);
    QCheckBox* lost = nullptr;
    int place = 0;
    for (const Switch& one : switches()) {
        auto* const box = new QCheckBox(one.caption, frame);
        box->setObjectName(one.name);
        describe(*box, {one.caption, one.tip});
        QObject::connect(box, &QCheckBox::toggled, box, [&faults, set = one.set, notice](bool on) {
            set(faults, on);
            notice();
        });
        grid->addWidget(box, place / columns, place % columns);
        grid->setColumnStretch(place % columns, 1);
        ++place;
        if (one.name == u"acknowledge_lost") {
            lost = box;
        } else if (one.name == u"acknowledge_wrong") {
            // An acknowledge cannot be both lost and wrong.
            QObject::connect(box, &QCheckBox::clicked, lost, [lost] { lost->setChecked(false); });
            QObject::connect(lost, &QCheckBox::clicked, box, [box] { box->setChecked(false); });
        }
    }
    return frame;
}

} // namespace kv408::ui
