#include "calibration/guide.h"

#include <initializer_list>

namespace kv408 {
namespace {

using Form = CalibrationForm;

constexpr std::array<bool, 2> only_ch1 = {true, false};
constexpr std::array<bool, 2> only_ch2 = {false, true};
constexpr std::array<bool, 2> both = {true, true};

constexpr std::string_view sine_200mv =
    "Connect 200mVpp, 10 MHz Sine Wave to selected trigger input and ";
constexpr std::string_view sine_1v =
    "Connect 1Vpp, 10 MHz Sine Wave to selected trigger input and ";
constexpr std::string_view to_ch1 = "connect sampler input CH1 to trigger output!";
constexpr std::string_view to_ch2 = "connect sampler input CH2 to trigger output!";
constexpr std::string_view nothing_connected =
    "Make sure that trigger is present and  sampler inputs are disconnectand or 0V! ";

constexpr std::string_view after_ch1 = ">  after CH1 display is visible";
constexpr std::string_view after_ch2 = ">  after CH2 display is visible";
constexpr std::string_view after_both = ">  after CH1 AND CH2 display is visible";

constexpr std::string_view gain_low_title = "Calibrate Low Gain";
constexpr std::string_view gain_high_title = "Calibrate High Gain";
constexpr std::string_view offset_high_title = "Calibrate Offset - High Gain";
constexpr std::string_view offset_low_title = "Calibrate Offset - Low Gain";
constexpr std::string_view scale_title = "Calibrate Horizontal Scale";

constexpr std::string_view check_ch1 = "Make sure that trigger signal is present and\n"
                                       "Sampler input CH1 is connected to trigger out";
constexpr std::string_view check_ch2 = "Make sure that trigger signal is present and\n"
                                       "Sampler input CH2 is connected to trigger out";
constexpr std::string_view check_quiet = "Make sure that trigger signal is present and\n"
                                         "Sampler inputs are disconnected or 0V";
constexpr std::string_view check_10mhz = "Make sure that 10MHz trigger signal is present and\n"
                                         "Sampler input CH1 is connected to trigger out";

constexpr std::array<Guide, 8> guide_rows = {{
    {.what = Calibrates::gain,
     .set_up = &Form::cmdsetforcalgainh,
     .compute = &Form::cmdcalgain1h,
     .title = "Calibrate High Gain CH1",
     .connect = sine_200mv,
     .input = to_ch1,
     .channels = only_ch1,
     .time_div = "20ns/div",
     .v_div = "50mV",
     .trig1 = false,
     .ready = "Ready for CH1 high gain calibration @50mV/div, Press  <",
     .ready_end = after_ch1,
     .error_title = gain_high_title,
     .out_of_range = check_ch1,
     .success = "CH1 high gain calibration complete! Press  <",
     .expected_mvpp = 200.0,
     .fields = {5}},
    // The status of CH2's high gain names CH1's display.
    {.what = Calibrates::gain,
     .set_up = &Form::cmdsetforcalgainh2,
     .compute = &Form::cmdcalgain2h,
     .title = "Calibrate High Gain CH2",
     .connect = sine_200mv,
     .input = to_ch2,
     .channels = only_ch2,
     .time_div = "20ns/div",
     .v_div = "50mV",
     .trig1 = false,
     .ready = "Ready for CH2 high gain calibration @50mV/div, Press  <",
     .ready_end = after_ch1,
     .error_title = gain_high_title,
     .out_of_range = check_ch2,
     .success = "CH2 high gain calibration complete! Press  <",
     .expected_mvpp = 200.0,
     .fields = {7}},
    {.what = Calibrates::gain,
     .set_up = &Form::cmdsetforcalgainl,
     .compute = &Form::cmdcalgain,
     .title = "Calibrate Low Gain CH1",
     .connect = sine_1v,
     .input = to_ch1,
     .channels = only_ch1,
     .time_div = "20ns/div",
     .v_div = "0.2V",
     .trig1 = false,
     .ready = "Ready for CH1 gain calibration @200mV/div, Press  <",
     .ready_end = after_ch1,
     .error_title = gain_low_title,
     .out_of_range = check_ch1,
     .success = "CH1 low gain calibration complete! Press  <",
     .expected_mvpp = 1000.0,
     .fields = {4}},
    {.what = Calibrates::gain,
     .set_up = &Form::cmdsetforcalgainl2,
     .compute = &Form::cmdcalg2l,
     .title = "Calibrate Low Gain CH2",
     .connect = sine_1v,
     .input = to_ch2,
     .channels = only_ch2,
     .time_div = "20ns/div",
     .v_div = "0.2V",
     .trig1 = false,
     .ready = "Ready for CH2 gain calibration @200mV/div, Press  <",
     .ready_end = after_ch2,
     .error_title = gain_low_title,
     .out_of_range = check_ch2,
     .success = "CH2 low gain calibration complete! Press  <",
     .expected_mvpp = 1000.0,
     .fields = {6}},
    {.what = Calibrates::offset,
     .set_up = &Form::cmdsetforcalh,
     .compute = &Form::cmdcaoffseth,
     .title = offset_high_title,
     .connect = nothing_connected,
     .input = {},
     .channels = both,
     .time_div = "20ns/div",
     .v_div = "50mV",
     .trig1 = false,
     .ready = "Ready for CH1 AND CH2 offset calibration @50mV/div, Press  <",
     .ready_end = after_both,
     .error_title = offset_high_title,
     .out_of_range = check_quiet,
     .success = "Calculate offset calibration values for high gain comlete! Press  <",
     .expected_mvpp = 0.0,
     .fields = {1, 3}},
    {.what = Calibrates::offset,
     .set_up = &Form::cmdsetforcall,
     .compute = &Form::cmdcaoffsetl,
     .title = offset_low_title,
     .connect = nothing_connected,
     .input = {},
     .channels = both,
     .time_div = "20ns/div",
     .v_div = "0.2V",
     .trig1 = false,
     .ready = "Ready for CH1 AND CH2 offset calibration @200mV/div, Press  <",
     .ready_end = after_both,
     .error_title = offset_low_title,
     .out_of_range = check_quiet,
     .success = "Calculate offset calibration values for low gain complete! Press  <",
     .expected_mvpp = 0.0,
     .fields = {0, 2}},
    {.what = Calibrates::time_scale,
     .set_up = &Form::cmdsetforcalhscale,
     .compute = &Form::cmdcaltb,
     .title = scale_title,
     .connect = sine_1v,
     .input = to_ch1,
     .channels = only_ch1,
     .time_div = "100ns/div",
     .v_div = "0.2V",
     .trig1 = true,
     .ready = "Ready for time base scale calibration, Press  <",
     .ready_end = after_ch1,
     .error_title = scale_title,
     .out_of_range = check_10mhz,
     .success = "Time base scale calibration complete! Press  <",
     .expected_mvpp = 0.0,
     .fields = {8}},
    {.what = Calibrates::linearity,
     .set_up = &Form::cmdsetforlinearitycal,
     .compute = &Form::cmdcalint,
     .title = "Calibrate Linearity Scale",
     .connect = sine_1v,
     .input = to_ch1,
     .channels = only_ch1,
     .time_div = "20ns/div",
     .v_div = "0.2V",
     .trig1 = true,
     .ready = "Ready for time base linearity calibration, Press  <",
     .ready_end = after_ch1,
     .error_title = {},
     .out_of_range = {},
     .success = {},
     .expected_mvpp = 0.0,
     .fields = {}},
}};

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

} // namespace

std::span<const Guide> guides() {
    return guide_rows;
}

std::string set_up_text(const Guide& guide, const CalibrationForm& form) {
    return joined({guide.connect, guide.input.empty() ? "" : "\n", guide.input, "\nThen press  <",
                   (form.*guide.compute).caption(), ">"});
}

std::string ready_text(const Guide& guide, const CalibrationForm& form) {
    return joined({guide.ready, (form.*guide.compute).caption(), guide.ready_end});
}

std::string wrong_panel_text(const Guide& guide, const CalibrationForm& form) {
    return joined({"Scope settings are incorrect!\nPlease press  <", (form.*guide.set_up).caption(),
                   ">-Button first"});
}

std::string out_of_range_text(const Guide& guide) {
    return joined({"Sampled data out of range!\n", guide.out_of_range});
}

std::string success_text(const Guide& guide, const CalibrationForm& form) {
    return joined({guide.success, form.cmdwritecal.caption(), ">"});
}

} // namespace kv408
