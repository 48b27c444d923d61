#include "demo/source_editor.h"

#include <QComboBox>

#include "ui/engineering_spin_box.h"
#include "ui/frame_grid.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// One quantity of a signal.
struct Quantity {
    QString caption;
    QString name; ///< object name of its box
    QString tip;
    double simulator::Source::*value;
    QString unit;
    double base;
    double minimum;
    double maximum;
};

QList<Quantity> quantities() {
    using simulator::Source;
    constexpr double milli = 1e-3;
    constexpr double pico = 1e-12;
    return {
        {u"Amplitude"_s, u"amplitude"_s, u"From the lowest to the highest value, volts"_s,
         &Source::amplitude_mvpp, u"Vpp"_s, milli, 0.0, 10e3},
        {u"Frequency"_s, u"frequency"_s, u"Periods, or bits of random data, a second"_s,
         &Source::frequency_hz, u"Hz"_s, 1.0, 1.0, 20e9},
        {u"Offset"_s, u"offset"_s, u"Middle between the lowest and the highest value, volts"_s,
         &Source::offset_mv, u"V"_s, milli, -5e3, 5e3},
        {u"Rise time"_s, u"rise"_s, u"10 % to 90 % of each edge, seconds; not of a sine"_s,
         &Source::rise_time_ps, u"s"_s, pico, 0.0, 1e9},
        {u"Noise"_s, u"noise"_s, u"Noise, volts rms; of a trigger signal it moves the trigger"_s,
         &Source::noise_mv, u"V"_s, milli, 0.0, 1e3},
        {u"Jitter"_s, u"jitter"_s,
         u"Jitter of each edge, seconds rms; of a trigger signal it moves the trigger"_s,
         &Source::jitter_ps, u"s"_s, pico, 0.0, 1e6},
    };
}

QWidget* make_kind(QWidget* frame, simulator::Source& source) {
    auto* const kind = new QComboBox(frame);
    kind->setObjectName(u"kind"_s);
    describe(*kind, {u"Kind of signal"_s, u"Shape of the signal"_s});
    kind->addItems({u"None"_s, u"Sine"_s, u"Square"_s, u"Pulse"_s, u"Random data"_s});
    kind->setCurrentIndex(static_cast<int>(source.kind));
    QObject::connect(kind, &QComboBox::currentIndexChanged, kind, [&source](int index) {
        source.kind = static_cast<simulator::SignalKind>(index);
    });
    return kind;
}

QWidget* make_quantity(QWidget* frame, simulator::Source& source, const Quantity& quantity) {
    auto* const box = new EngineeringSpinBox(quantity.unit, quantity.base, frame);
    box->setObjectName(quantity.name);
    describe(*box, {quantity.caption, quantity.tip});
    box->setRange(quantity.minimum, quantity.maximum);
    box->setValue(source.*quantity.value);
    QObject::connect(box, &QDoubleSpinBox::valueChanged, box,
                     [&source, member = quantity.value](double value) { source.*member = value; });
    return box;
}

QWidget* make_duty(QWidget* frame, simulator::Source& source) {
    auto* const box = new QDoubleSpinBox(frame);
    box->setObjectName(u"duty"_s);
    describe(*box, {u"Duty"_s, u"Part of the period that a pulse is high, percent"_s});
    box->setDecimals(1);
    box->setRange(0.1, 99.9);
    box->setSuffix(u" %"_s);
    box->setAlignment(Qt::AlignRight);
    constexpr double percent = 0.01;
    box->setValue(source.duty / percent);
    QObject::connect(box, &QDoubleSpinBox::valueChanged, box,
                     [&source](double value) { source.duty = value * percent; });
    return box;
}

} // namespace

QWidget* make_source_editor(const QString& title, simulator::Source& source) {
    auto* const frame = new PanelFrame(title);
    QGridLayout* const grid = make_frame_grid(frame, 8);
    int row = 0;
    const auto add = [&](const QString& caption, QWidget* widget) {
        grid->addWidget(make_caption(caption, widget), row, 0);
        grid->addWidget(widget, row, 1);
        ++row;
    };
    add(u"Kind"_s, make_kind(frame, source));
    for (const Quantity& quantity : quantities()) {
        add(quantity.caption, make_quantity(frame, source, quantity));
    }
    add(u"Duty"_s, make_duty(frame, source));
    grid->setColumnStretch(1, 1);
    return frame;
}

} // namespace kv408::ui
