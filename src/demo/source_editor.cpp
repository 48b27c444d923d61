#include "demo/source_editor.h"

#include <QComboBox>
#include <QLabel>

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
    bool of_data = false; ///< only random data have it
};

QList<Quantity> quantities() {
    using simulator::Source;
    constexpr double milli = 1e-3;
    constexpr double pico = 1e-12;
    return {
        {u"Amplitude"_s, u"amplitude"_s, u"From the lowest to the highest value, volts"_s,
         &Source::amplitude_mvpp, u"Vpp"_s, milli, 0.0, 10e3},
        {u"Frequency"_s, u"frequency"_s, u"Periods, or bits of random data, per second"_s,
         &Source::frequency_hz, u"Hz"_s, 1.0, 1.0, 20e9},
        {u"Offset"_s, u"offset"_s, u"Middle between the lowest and the highest value, volts"_s,
         &Source::offset_mv, u"V"_s, milli, -5e3, 5e3},
        {u"Rise time"_s, u"rise"_s, u"10 % to 90 % of each edge, seconds; not of a sine"_s,
         &Source::rise_time_ps, u"s"_s, pico, 0.0, 1e9},
        {u"Noise"_s, u"noise"_s, u"Noise, volts rms; of a trigger signal it moves the trigger"_s,
         &Source::noise_mv, u"V"_s, milli, 0.0, 1e3},
        {u"Jitter"_s, u"jitter"_s,
         u"Random jitter of each edge, seconds rms; of a trigger signal it moves the trigger"_s,
         &Source::jitter_ps, u"s"_s, pico, 0.0, 1e6},
        {u"Sine jitter"_s, u"sine_jitter"_s,
         u"Jitter that comes and goes as a sine, seconds from its middle to its peak"_s,
         &Source::sine_jitter_ps, u"s"_s, pico, 0.0, 1e6},
        {u"Its rate"_s, u"sine_jitter_rate"_s, u"Periods of the sine jitter per second"_s,
         &Source::sine_jitter_hz, u"Hz"_s, 1.0, 1.0, 1e9},
        {u"Distortion"_s, u"distortion"_s,
         u"By how much random data are longer high than low, seconds; at most a bit less its edge"_s,
         &Source::distortion_ps, u"s"_s, pico, -1e6, 1e6, true},
        {u"Cable"_s, u"cable"_s,
         u"Time constant of a cable of one pole to the sampler, seconds; at most three bits"_s,
         &Source::cable_ps, u"s"_s, pico, 0.0, 1e6, true},
    };
}

/// An entry of the list of kinds.
struct Kind {
    QString text;
    simulator::SignalKind kind;
    int pattern_bits = 7; ///< of random data
};

QList<Kind> kinds() {
    using simulator::SignalKind;
    return {{u"None"_s, SignalKind::none},
            {u"Sine"_s, SignalKind::sine},
            {u"Square"_s, SignalKind::square},
            {u"Pulse"_s, SignalKind::pulse},
            {u"Random data"_s, SignalKind::random_data},
            {u"Random 2^15 - 1"_s, SignalKind::random_data, 15},
            {u"Random 2^31 - 1"_s, SignalKind::random_data, 31}};
}

QComboBox* make_kind(QWidget* frame, simulator::Source& source) {
    auto* const kind = new QComboBox(frame);
    kind->setObjectName(u"kind"_s);
    describe(*kind, {u"Kind of signal"_s, u"Shape of the signal"_s});
    for (const Kind& one : kinds()) {
        kind->addItem(one.text);
        if (one.kind == source.kind && (one.kind != simulator::SignalKind::random_data ||
                                        one.pattern_bits == source.pattern_bits)) {
            kind->setCurrentIndex(kind->count() - 1);
        }
    }
    QObject::connect(kind, &QComboBox::currentIndexChanged, kind, [&source](int index) {
        source.kind = kinds().at(index).kind;
        source.pattern_bits = kinds().at(index).pattern_bits;
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
    constexpr int rows_of_all = 9; // what one kind of signal has alone comes below
    QGridLayout* const grid = make_frame_grid(frame, rows_of_all);
    QComboBox* const kind = make_kind(frame, source);
    int row = 0;
    const auto add = [&](const QString& caption, QWidget* widget) {
        QLabel* const label = make_caption(caption, widget);
        grid->addWidget(label, row, 0);
        grid->addWidget(widget, row, 1);
        ++row;
        return label;
    };
    // A quantity of one kind of signal is shown only for that kind.
    const auto add_of_kind = [&](const QString& caption, QWidget* widget,
                                 simulator::SignalKind only) {
        QLabel* const label = add(caption, widget);
        const auto show = [label, widget, only](int index) {
            label->setVisible(kinds().at(index).kind == only);
            widget->setVisible(kinds().at(index).kind == only);
        };
        QObject::connect(kind, &QComboBox::currentIndexChanged, widget, show);
        show(kind->currentIndex());
    };
    add(u"Kind"_s, kind);
    for (const Quantity& quantity : quantities()) {
        QWidget* const box = make_quantity(frame, source, quantity);
        if (quantity.of_data) {
            add_of_kind(quantity.caption, box, simulator::SignalKind::random_data);
        } else {
            add(quantity.caption, box);
        }
    }
    add_of_kind(u"Duty"_s, make_duty(frame, source), simulator::SignalKind::pulse);
    // Where the other signal's frame is higher, the rest of the height stays below the rows.
    constexpr int all_of_it = 100;
    grid->setRowStretch(row, all_of_it);
    grid->setColumnStretch(1, 1);
    return frame;
}

} // namespace kv408::ui
