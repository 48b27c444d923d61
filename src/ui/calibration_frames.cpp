#include "ui/calibration_frames.h"

#include <algorithm>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QVBoxLayout>

#include "calibration/guide.h"
#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int box_width = 72;

/// The two buttons of a calibration, in words.
struct Pair {
    Button& set_up;
    Button& compute;
    QString what; ///< "the high gain of CH1"
};

/// A frame under construction.
struct Frame {
    Frame(const QString& title, int rows, CalibrationForm& calibration_form, ScopeDriver& driver)
        : widget(new PanelFrame(title)), grid(make_frame_grid(widget, rows)), make(widget, driver),
          form(calibration_form) {}

    /// The box of value `index`, which is `what`.
    QLineEdit* box(std::size_t index, const QString& what) {
        QLineEdit* const result = make.text_box(
            form.cald.at(index),
            {what, what + u". What is typed is not in the instrument before it is written."_s});
        result->setFixedWidth(box_width);
        result->setAlignment(Qt::AlignRight);
        return result;
    }

    /// The two buttons of `pair` in `row`, from column `column` on.
    void buttons(const Pair& pair, int row, int column) {
        grid->addWidget(
            make.button(pair.set_up, {},
                        {u"Set up for "_s + pair.what,
                         u"Says what to connect, sets the panel and starts the sweep"_s}),
            row, column);
        grid->addWidget(make.button(pair.compute, {},
                                    {u"Calibrate "_s + pair.what,
                                     u"Computes the value from what is measured now"_s}),
                        row, column + 1);
    }

    /// A line of text that explains.
    void text(const QString& words, int row, int column, int columns = 1) const {
        auto* const label = new QLabel(words, widget);
        label->setTextFormat(Qt::PlainText);
        grid->addWidget(label, row, column, 1, columns);
    }

    QWidget* widget;
    QGridLayout* grid;
    WidgetMaker make;
    CalibrationForm& form;
};

/// Makes a box that only shows.
QLineEdit* make_identification(Frame& frame, TextBox& control, const Words& words) {
    auto* const box = frame.make.text_box(control, words);
    box->setReadOnly(true);
    box->setFocusPolicy(Qt::NoFocus);
    box->setFixedWidth(box_width);
    box->setAlignment(Qt::AlignRight);
    return box;
}

/// A row of the gains: channel, buttons, V/div and box.
void add_gain(Frame& frame, int row, const Pair& pair, const QString& v_div, std::size_t index) {
    frame.text(pair.what.section(u' ', -1), row, 0);
    frame.buttons(pair, row, 1);
    frame.text(v_div, row, 3);
    frame.grid->addWidget(frame.box(index, u"Value of "_s + pair.what), row, 4);
}

/// The width of the longest status in `font`.
int widest_status(const CalibrationForm& form, const QFont& font) {
    const QFontMetrics metrics(font);
    int widest = 0;
    for (const Guide& guide : guides()) {
        for (const std::string& text : {ready_text(guide, form), success_text(guide, form)}) {
            widest = std::max(widest, metrics.horizontalAdvance(QString::fromStdString(text)));
        }
    }
    return widest;
}

/// A line of the status: as wide as there is room, broken where it must be.
QLabel* make_line(WidgetMaker& make, Label& control, const Words& words, int lines) {
    QLabel* const label = make.label(control, words);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    label->setFixedHeight(lines * label->fontMetrics().lineSpacing() + 2);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

QProgressBar* make_progress_bar(QWidget* frame, ProgressBar& control) {
    auto* const bar = new QProgressBar(frame);
    bar->setObjectName(QString::fromStdString(control.name()));
    describe(*bar, {u"Progress"_s, u"Words read from the instrument or written to it"_s});
    bar->setTextVisible(false);
    bar->setFixedSize(180, 14);
    keep_shown(*bar, control, [&control, bar] {
        bar->setRange(0, control.steps());
        bar->setValue(control.value());
    });
    return bar;
}

} // namespace

QWidget* make_read_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"1  Read"_s, 3, form, driver);
    frame.grid->addWidget(
        frame.make.button(
            form.cmdreadcald, {},
            {u"Read the calibration"_s,
             u"Reads the record from the instrument into the boxes; stops the sweep"_s}),
        0, 0, 1, 2);
    frame.grid->addWidget(
        frame.make.button(form.cmdsetalltodefault, {},
                          {u"Set to defaults"_s,
                           u"Sets all boxes to the values of an instrument without calibration"_s}),
        1, 0, 1, 2);
    frame.grid->addWidget(
        frame.make.button(form.cmdrestorecal, {},
                          {u"Restore a calibration"_s,
                           u"Puts a record that was kept before a write into the boxes"_s}),
        2, 0, 1, 2);
    QLineEdit* const hardware = make_identification(
        frame, form.cald61, {u"Hardware ID"_s, u"Identification of the instrument's hardware"_s});
    QLineEdit* const firmware = make_identification(
        frame, form.cald62, {u"Firmware ID"_s, u"Identification of the instrument's firmware"_s});
    frame.grid->addWidget(make_caption(u"Hardware ID"_s, hardware), 0, 3);
    frame.grid->addWidget(hardware, 0, 4);
    frame.grid->addWidget(make_caption(u"Firmware ID"_s, firmware), 1, 3);
    frame.grid->addWidget(firmware, 1, 4);
    frame.grid->setColumnStretch(2, 1);
    return frame.widget;
}

QWidget* make_gain_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"2  Vertical gain"_s, 5, form, driver);
    add_gain(frame, 0, {form.cmdsetforcalgainh, form.cmdcalgain1h, u"the high gain of CH1"_s},
             u"@50mV/div"_s, 5);
    add_gain(frame, 1, {form.cmdsetforcalgainh2, form.cmdcalgain2h, u"the high gain of CH2"_s},
             u"@50mV/div"_s, 7);
    add_gain(frame, 2, {form.cmdsetforcalgainl, form.cmdcalgain, u"the low gain of CH1"_s},
             u"@200mV/div"_s, 4);
    add_gain(frame, 3, {form.cmdsetforcalgainl2, form.cmdcalg2l, u"the low gain of CH2"_s},
             u"@200mV/div"_s, 6);
    frame.text(u"Cal Data Range : 9000-11000"_s, 4, 1, 4);
    frame.grid->setColumnStretch(1, 1);
    frame.grid->setColumnStretch(2, 1);
    return frame.widget;
}

QWidget* make_offset_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"3  Vertical offset"_s, 4, form, driver);
    const auto add = [&frame](int row, const Pair& pair, const QString& v_div, std::size_t ch1,
                              std::size_t ch2) {
        frame.buttons(pair, row, 0);
        frame.text(v_div, row, 2);
        frame.grid->addWidget(frame.box(ch1, u"Value of CH1 of "_s + pair.what), row, 3);
        frame.grid->addWidget(frame.box(ch2, u"Value of CH2 of "_s + pair.what), row, 4);
    };
    frame.text(u"CH1"_s, 0, 3);
    frame.text(u"CH2"_s, 0, 4);
    add(1, {form.cmdsetforcalh, form.cmdcaoffseth, u"the offsets in high gain"_s}, u"@50mV/div"_s,
        1, 3);
    add(2, {form.cmdsetforcall, form.cmdcaoffsetl, u"the offsets in low gain"_s}, u"@200mV/div"_s,
        0, 2);
    frame.text(u"Cal Data Range = 1800 - 2400"_s, 3, 0, 3);
    frame.grid->setColumnStretch(0, 1);
    frame.grid->setColumnStretch(1, 1);
    return frame.widget;
}

QWidget* make_scale_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"4  Time base scale"_s, 2, form, driver);
    frame.buttons({form.cmdsetforcalhscale, form.cmdcaltb, u"the time base scale"_s}, 0, 0);
    frame.grid->addWidget(frame.box(8, u"Value of the time base scale"_s), 0, 2);
    frame.text(u"Cal Data Range = 9000-11000"_s, 1, 0, 3);
    frame.grid->setColumnStretch(0, 1);
    frame.grid->setColumnStretch(1, 1);
    return frame.widget;
}

QWidget* make_delay_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"5  Delays, by hand"_s, 2, form, driver);
    QLineEdit* const bridge = frame.box(9, u"Bridge offset at 8 ns, picoseconds above -100"_s);
    QLineEdit* const adc = frame.box(10, u"ADC delay"_s);
    frame.grid->addWidget(make_caption(u"Bridge offset@8ns"_s, bridge), 0, 0);
    frame.text(u"Offset = -100ps +Cal Data"_s, 0, 1);
    frame.grid->addWidget(bridge, 0, 2);
    frame.grid->addWidget(make_caption(u"ADC Delay"_s, adc), 1, 0);
    frame.text(u"Cal Data range 50-200 (nom=70)"_s, 1, 1);
    frame.grid->addWidget(adc, 1, 2);
    frame.grid->setColumnStretch(1, 1);
    return frame.widget;
}

QWidget* make_write_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"6  Write"_s, 1, form, driver);
    frame.grid->addWidget(
        frame.make.button(form.cmdwritecal, {},
                          {u"Write the calibration"_s,
                           u"Writes all boxes to the instrument and reads them back; the values "
                           u"before are kept in a file"_s}),
        0, 0);
    return frame.widget;
}

QWidget* make_linearity_frame(CalibrationForm& form, ScopeDriver& driver) {
    Frame frame(u"7  Time base linearity"_s, 3, form, driver);
    frame.text(QString::fromUtf8(linearity_warning.data(),
                                 static_cast<qsizetype>(linearity_warning.size())),
               0, 0, 4);
    frame.grid->addWidget(
        frame.make.button(form.cmdsetforlinearitycal, {},
                          {u"Set up for the linearity"_s,
                           u"Says what to connect, sets the panel and starts the sweep"_s}),
        1, 0, 1, 2);
    frame.grid->addWidget(
        frame.make.button(form.cmdcalint, {},
                          {u"Calibrate the linearity"_s,
                           u"Lets the instrument calibrate its time base point by point"_s}),
        1, 2, 1, 2);
    const auto add_result = [&frame](Label& control, const QString& caption, const QString& tip,
                                     int column) {
        QLabel* const result = frame.make.label(control, {caption, tip});
        result->setMinimumWidth(box_width / 2);
        frame.grid->addWidget(make_caption(caption, result), 2, column);
        frame.grid->addWidget(result, 2, column + 1);
    };
    add_result(form.calerorcnt, u"Error count"_s, u"Points with an error so far"_s, 0);
    add_result(form.calerormax, u"Max Error(ps)"_s, u"The largest error so far, picoseconds"_s, 2);
    frame.grid->setColumnStretch(1, 1);
    frame.grid->setColumnStretch(3, 1);
    return frame.widget;
}

QWidget* make_calibration_status(CalibrationForm& form, ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Status"_s);
    WidgetMaker make(frame, driver);
    auto* const lines = new QVBoxLayout;
    QLabel* const status =
        make_line(make, form.calstatus, {u"Calibration status"_s, u"What to do next"_s}, 1);
    QFont bold = status->font();
    bold.setBold(true);
    status->setFont(bold);
    status->setMinimumWidth(widest_status(form, bold) + 2);
    lines->addWidget(status);
    lines->addWidget(make_line(make, form.calnote,
                               {u"Calibration note"_s, u"What there is to know besides"_s}, 3));
    auto* const side = new QVBoxLayout;
    side->addWidget(make_progress_bar(frame, form.progressbar1));
    side->addWidget(make.button(
        form.cmdcalstop, {}, {u"Stop"_s, u"Stops the sweep, or breaks the linearity run off"_s}));
    auto* const layout = new QHBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(frame_measure::column_spacing);
    layout->addLayout(lines, 1);
    layout->addLayout(side);
    return frame;
}

} // namespace kv408::ui
