#pragma once

#include <array>

#include "panel/controls.h"
#include "panel/thumb_wheel.h"

namespace kv408 {

/// The controls that each channel has once, named with the channel's number.
struct ChannelControls {
    /// The controls of channel `number`, "1" or "2".
    explicit ChannelControls(const std::string& number)
        : vdiv("ch" + number + "vdiv"), enable("ch" + number + "enable"),
          inviatr("inviatr" + number), invert("invert" + number), ofset("ofsetch" + number),
          vdivtext("ch" + number + "vdivtext"), text("ch" + number + "text"),
          label("ch" + number + "label"), labelframe("ch" + number + "labelframe"),
          psofset("psofsetch" + number), slenps("slenps" + number),
          hor_delay("lblHorDelay" + number) {}

    ListBox vdiv;     ///< volts per division
    CheckBox enable;  ///< channel shown and swept
    CheckBox inviatr; ///< "Input Via Trigger": the signal comes through the trigger input, halved
    CheckBox invert;  ///< "Invert": the trace upside down
    Label ofset;      ///< offset read-out, volts
    Label vdivtext;   ///< volts per division under the plot, with its suffixes
    MarkerLabel text; ///< zero-line marker at the left edge of the plot
    Label label;      ///< channel's heading in the VERTICAL frame
    Label labelframe; ///< frame behind that heading
    TextBox psofset;  ///< horizontal delay, picoseconds
    CheckBox slenps;  ///< whether the adjust wheel moves this channel's delay
    Label hor_delay;  ///< delay read-out over the plot
};

/// One row of the measurement frame and of its results panel.
struct MeasurementControls {
    /// The controls of slot `index`, "0" to "2".
    explicit MeasurementControls(const std::string& index)
        : selector("cmbMeas(" + index + ")"), annotate("chkMeasAnno(" + index + ")"),
          label("lblMeas(" + index + ")"), ch1("txtMeasCH1(" + index + ")"),
          ch2("txtMeasCH2(" + index + ")"), mark("lblAnnoMark(" + index + ")") {}

    ListBox selector;  ///< `cmbMeas`: the slot's measurement
    CheckBox annotate; ///< `chkMeasAnno`: mark it on the trace
    Label label;       ///< `lblMeas`: short name in the results panel
    Label ch1;         ///< `txtMeasCH1`: result of channel 1
    Label ch2;         ///< `txtMeasCH2`: result of channel 2
    Label mark;        ///< `lblAnnoMark`: "*" beside the annotated slot
};

/// Every control of the main window.
struct FrontPanel {
    /// The panel before start-up: start values, no lists filled, no handlers.
    FrontPanel();

    // Menus.
    Button loadconfig{"loadconfig"};         ///< Load Setup
    Button saveconfig{"saveconfig"};         ///< Save Setup
    Button exportdata{"ExportData"};         ///< Export Data: no function
    Button menuexit{"MenuExit"};             ///< Exit
    Button mnucalibration{"mnucalibration"}; ///< Calibration: the calibration form
    CheckBox cmdcaloofset{"cmdcaloofset"};   ///< Calibration: Software Calibrate Offset
    Button mnusettings{"mnusettings"};       ///< Options: the settings dialog
    Button menuhelp{"MenuHelp"};             ///< Help: no function
    Button menuabout{"MenuAbout"};           ///< About: no function

    // Status frame and the buttons under it.
    ListBox device{"cmbDevice"};           ///< attached devices by serial number
    TextBox textstatus{"textstatus"};      ///< acquisition status, its colour tells the state
    Label nodata{"lblNoData"};             ///< for how long no data have come
    Button cmdstartsweep{"cmdstartsweep"}; ///< Start
    Button cmdstop{"cmdstop"};             ///< Stop
    Button snapshot{"Command1"};           ///< Snapshot

    // Display frame.
    CheckBox gridenable{"gridenable"}; ///< "Grid On"
    CheckBox eyeon{"eyeon"};           ///< "Draw Dot"
    CheckBox persist{"persist"};       ///< "Persistence"
    CheckBox average{"average"};       ///< "Filter Avg.": the instrument averages
    CheckBox adcspeed{"adcspeed"};     ///< "Speed opt.": the instrument samples faster

    // Measurement frame.
    CheckBox check1{"Check1"}; ///< measurements on
    std::array<MeasurementControls, 3> measurement{
        MeasurementControls("0"), MeasurementControls("1"), MeasurementControls("2")};
    Label picmeasure{"picMeasure"}; ///< results panel under the plot

    // TRIGGER frame.
    ListBox trigsource{"trigsource"};  ///< "TRIG1", "TRIG2"
    ListBox trigeredge{"trigeredge"};  ///< "Positive", "Negative"
    Slider shyst{"shyst", 0, 255, 10}; ///< hysteresis, codes
    Button trzero{"trzero"};           ///< "set to zero"
    Label trlevelmv{"trlevelmv"};      ///< trigger level, millivolts
    TextBox trtout{"trtout"};          ///< trigger time-out, 10..65535

    // HORIZONTAL frame; the channels' delay boxes are in ChannelControls.
    ListBox seltimediv{"seltimediv"};     ///< time per division
    TextBox delaytrttdis{"delaytrttdis"}; ///< "Additional Delay", picoseconds

    // VERTICAL frame, CH1 and CH2.
    std::array<ChannelControls, 2> channel{ChannelControls("1"), ChannelControls("2")};

    // Cursor frame.
    TabStrip tabstrip3{"TabStrip3"};                ///< cursor type: voltage, time, off
    ListBox combocursorselect{"combocursorselect"}; ///< channel that the cursors measure

    // Adjust frame.
    TabStrip tabstrip2{"TabStrip2"}; ///< what the wheel turns
    ThumbWheel slider1{"Slider1"};   ///< the adjust wheel

    // On and around the plot.
    Label picture1{"Picture1"};     ///< the plot box
    Label tdivtext{"tdivtext"};     ///< time per division
    Label avglabel{"avglabel"};     ///< "Filter Avg." while the instrument averages
    Label lbldate{"lblDate"};       ///< time and date
    MarkerLabel trigertext{"trigertext"}; ///< trigger-level marker at the right edge
    MarkerLabel ltp2{"ltp2"};             ///< trigger-time marker above the plot
    Label centerfr{"centerfr"};     ///< difference of the cursors
    Label lblc1{"lblC1"};           ///< cursor 1
    Label lblc2{"lblC2"};           ///< cursor 2
};

} // namespace kv408
