#pragma once

#include <array>
#include <optional>
#include <string>

#include "panel/controls.h"
#include "panel/thumb_wheel.h"
#include "state/channel.h"

namespace kv408 {

/// The controls that each channel has once, named with the channel's number.
struct ChannelControls {
    /// The controls of `channel`, added to `all`.
    ChannelControls(ControlList& all, Channel channel)
        : ChannelControls(all, std::to_string(number_of(channel)), number_of(channel) - 1) {}

    ListBox vdiv;     ///< volts per division
    CheckBox enable;  ///< channel shown and swept
    CheckBox inviatr; ///< "Input Via Trigger": the signal comes through the trigger input, halved
    CheckBox invert;  ///< "Invert": the trace upside down
    Label ofset;      ///< offset read-out
    Label vdivtext;   ///< volts per division under the plot, with its suffixes
    MarkerLabel text; ///< zero-line marker at the left edge of the plot
    Label label;      ///< channel's heading in the VERTICAL frame
    Label labelframe; ///< frame behind that heading
    TextBox psofset;  ///< horizontal delay
    CheckBox slenps;  ///< whether the adjust wheel moves this channel's delay
    Label hor_delay;  ///< delay read-out over the plot

private:
    /// The lines of both channels stand side by side in the settings file.
    ChannelControls(ControlList& all, const std::string& number, int second)
        : vdiv(all, {.name = "ch" + number + "vdiv",
                     .line = 15 + second,
                     .words = "CH" + number + " V/div"}),
          enable(all,
                 {.name = "ch" + number + "enable", .line = 21 + second, .words = "CH" + number}),
          inviatr(all, {.name = "inviatr" + number,
                        .line = 17 + second,
                        .words = "CH" + number + " Input Via Trigger"}),
          invert(
              all,
              {.name = "invert" + number, .line = 19 + second, .words = "CH" + number + " Invert"}),
          ofset(all, "ofsetch" + number, "V"), vdivtext(all, "ch" + number + "vdivtext"),
          text(all, "ch" + number + "text"), label(all, "ch" + number + "label"),
          labelframe(all, "ch" + number + "labelframe"),
          psofset(all, {.name = "psofsetch" + number,
                        .line = 23 + second,
                        .key = second == 0 ? "horpos" : "horpos2",
                        .unit = "ps",
                        .words = "CH" + number + " delay"}),
          slenps(all, {.name = "slenps" + number,
                       .line = 25 + second,
                       .words = "Wheel moves the delay of CH" + number}),
          hor_delay(all, "lblHorDelay" + number, "ps") {}
};

/// One row of the measurement frame and of its results panel.
struct MeasurementControls {
    /// The controls of slot `index`, 0..2, added to `all`.
    MeasurementControls(ControlList& all, std::size_t index)
        : selector(all, {.name = indexed("cmbMeas", index),
                         .line = 34 + static_cast<int>(index),
                         .key = indexed("cmbmeas", index),
                         .words = "Measurement " + std::to_string(index + 1)}),
          annotate(all, {indexed("chkMeasAnno", index)}), label(all, indexed("lblMeas", index)),
          ch1(all, indexed("txtMeasCH1", index)), ch2(all, indexed("txtMeasCH2", index)),
          mark(all, indexed("lblAnnoMark", index)) {}

    ListBox selector;  ///< `cmbMeas`: the slot's measurement
    CheckBox annotate; ///< `chkMeasAnno`: mark it on the trace
    Label label;       ///< `lblMeas`: short name in the results panel
    Label ch1;         ///< `txtMeasCH1`: result of channel 1
    Label ch2;         ///< `txtMeasCH2`: result of channel 2
    Label mark;        ///< `lblAnnoMark`: "*" beside the annotated slot
};

/// Every control of the main window. This is the one description of the panel: what is not said
/// about a control here, nobody knows.
struct FrontPanel {
    /// The panel before start-up: start values, no lists filled, no handlers.
    FrontPanel();

    /// All of them.
    ControlList all;

    // Menus.
    Button loadconfig = dialog("loadconfig");         ///< Load Setup
    Button saveconfig = dialog("saveconfig");         ///< Save Setup
    Button menuexit = dialog("MenuExit");             ///< Exit
    Button mnucalibration = dialog("mnucalibration"); ///< Calibration: the calibration form
    CheckBox cmdcaloofset{all,
                          {.name = "cmdcaloofset",
                           .outside = Outside::none}}; ///< Calibration: Software Calibrate Offset
    Button mnusettings = dialog("mnusettings");        ///< Options: the settings dialog
    Button mnuexport = dialog("mnuexport");            ///< Tools: the export dialog
    Button mnurecord = dialog("mnurecord");            ///< Tools: the recording dialog
    Button mnustatistics = dialog("mnustatistics");    ///< Tools: the statistics window
    Button mnudensity = dialog("mnudensity");          ///< Tools: the density window
    Button mnuremote = dialog("mnuremote");            ///< Tools: the remote control window
    Button menuhelp = dialog("MenuHelp");              ///< Help: the manual
    Button menuabout = dialog("MenuAbout");            ///< About: name, version, licences, paths
    Button exportdata = dialog("ExportData");          ///< Export Data: the export dialog, too

    // Status frame and the buttons under it.
    ListBox device{all, {"cmbDevice"}}; ///< attached devices by serial number
    TextBox textstatus{
        all, {.name = "textstatus", .outside = Outside::read}}; ///< what the acquisition is doing
    Label nodata{all, "lblNoData"};                             ///< for how long no data have come
    Button cmdstartsweep{all, {"cmdstartsweep"}};               ///< Start
    Button cmdstop{all, {"cmdstop"}};                           ///< Stop
    Button snapshot = dialog("Command1");                       ///< Snapshot

    // Display frame.
    CheckBox gridenable{all, {.name = "gridenable", .line = 29, .words = "Grid On"}}; ///< "Grid On"
    CheckBox eyeon{all, {.name = "eyeon", .line = 28, .words = "Draw Dot"}}; ///< "Draw Dot"
    CheckBox persist{all,
                     {.name = "persist", .line = 30, .words = "Persistence"}}; ///< "Persistence"
    CheckBox average{all,
                     {.name = "average",
                      .line = 31,
                      .words = "Filter Avg."}}; ///< "Filter Avg.": the instrument averages
    CheckBox adcspeed{all,
                      {.name = "adcspeed",
                       .words = "Speed opt."}}; ///< "Speed opt.": the instrument samples faster

    // Measurement frame.
    CheckBox check1{all,
                    {.name = "Check1",
                     .line = 33,
                     .key = "displaymeas",
                     .words = "Measure"}}; ///< measurements on
    std::array<MeasurementControls, 3> measurement{
        MeasurementControls(all, 0), MeasurementControls(all, 1), MeasurementControls(all, 2)};
    Label picmeasure{all, "picMeasure"}; ///< results panel under the plot

    // TRIGGER frame.
    ListBox trigsource{
        all, {.name = "trigsource", .line = 12, .words = "Trigger source"}}; ///< "TRIG1", "TRIG2"
    ListBox trigeredge{
        all,
        {.name = "trigeredge", .line = 11, .words = "Trigger edge"}}; ///< "Positive", "Negative"
    Slider shyst{all, {"shyst"}, 0, 255, 10};                         ///< hysteresis, codes
    Button trzero{all, {"trzero"}};                                   ///< "set to zero"
    Label trlevelmv{all, "trlevelmv", "mV"};                          ///< trigger level
    TextBox trtout{
        all,
        {.name = "trtout", .unit = "us", .words = "Time-out"}}; ///< trigger time-out, 10..65535

    // HORIZONTAL frame; the channels' delay boxes are in ChannelControls.
    ListBox seltimediv{
        all, {.name = "seltimediv", .line = 27, .words = "Time/div"}}; ///< time per division
    TextBox delaytrttdis{all,
                         {.name = "delaytrttdis",
                          .unit = "ps",
                          .words = "Additional Delay"}}; ///< "Additional Delay"

    // VERTICAL frame, CH1 and CH2.
    std::array<ChannelControls, 2> channel{ChannelControls(all, ch1), ChannelControls(all, ch2)};

    // Cursor frame.
    TabStrip tabstrip3{
        all,
        {.name = "TabStrip3", .line = 6, .words = "Cursors"}}; ///< cursor type: voltage, time, off
    ListBox combocursorselect{all,
                              {.name = "combocursorselect",
                               .line = 5,
                               .key = "cursorselect",
                               .words = "Cursors measure"}}; ///< channel that the cursors measure

    // Adjust frame.
    TabStrip tabstrip2{
        all, {.name = "TabStrip2", .line = 32, .words = "Wheel turns"}}; ///< what the wheel turns
    ThumbWheel slider1{all, {"Slider1"}};                                ///< the adjust wheel

    // On and around the plot.
    Label picture1{all, "Picture1"};           ///< the plot box
    Label tdivtext{all, "tdivtext"};           ///< time per division
    Label avglabel{all, "avglabel"};           ///< "Filter Avg." while the instrument averages
    Label lbldate{all, "lblDate"};             ///< time and date
    MarkerLabel trigertext{all, "trigertext"}; ///< trigger-level marker at the right edge
    MarkerLabel ltp2{all, "ltp2"};             ///< trigger-time marker above the plot
    Label centerfr{all, "centerfr"};           ///< difference of the cursors
    Label lblc1{all, "lblC1"};                 ///< cursor 1
    Label lblc2{all, "lblC2"};                 ///< cursor 2

    /// The channel whose trigger input is the selected source: `ch1` for "TRIG1"; nothing while no
    /// source is selected.
    [[nodiscard]] std::optional<Channel> selected_source() const {
        const std::string source = trigsource.text();
        return source == "TRIG1"   ? std::optional(ch1)
               : source == "TRIG2" ? std::optional(ch2)
                                   : std::nullopt;
    }

private:
    /// A button that opens a dialog or ends the program.
    Button dialog(const char* name) { return {all, {.name = name, .outside = Outside::none}}; }
};

} // namespace kv408
