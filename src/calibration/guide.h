#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "calibration/calibration_form.h"

namespace kv408 {

/// What a calibration computes.
enum class Calibrates { gain, offset, time_scale, linearity };

/// One calibration: its two buttons, what they say and which state of the panel they need.
struct Guide {
    Calibrates what = Calibrates::gain;
    Button CalibrationForm::*set_up = nullptr;  ///< its set-up button
    Button CalibrationForm::*compute = nullptr; ///< its compute button
    std::string_view title;                     ///< of the set-up button's message
    std::string_view connect;                   ///< first line of that message
    std::string_view input;                     ///< second line, empty when there is none
    std::array<bool, 2> channels = {};          ///< the channels that it looks at
    std::string_view time_div;                  ///< entry of the time-base list
    std::string_view v_div;                     ///< entry of both volts-per-division lists
    bool trig1 = false;                         ///< trigger source "TRIG1" is selected
    std::string_view ready;                     ///< status after the set-up, up to the caption
    std::string_view ready_end;                 ///< and behind it
    std::string_view error_title;               ///< of the compute button's messages
    std::string_view out_of_range;              ///< second and third line of its range message
    std::string_view success;                   ///< status after success, up to the caption
    double expected_mvpp = 0.0;                 ///< of the input, millivolts; only for a gain
    std::array<std::size_t, 2> fields = {};     ///< values written: for CH1, for CH2 or alone
};

/// The eight calibrations in the order in which one calibrates.
[[nodiscard]] std::span<const Guide> guides();

/// The text of the set-up button's message.
[[nodiscard]] std::string set_up_text(const Guide& guide, const CalibrationForm& form);

/// The status after the set-up.
[[nodiscard]] std::string ready_text(const Guide& guide, const CalibrationForm& form);

/// The message when the panel is not as the set-up button leaves it.
[[nodiscard]] std::string wrong_panel_text(const Guide& guide, const CalibrationForm& form);

/// The message when the measurement cannot be that of the input to connect.
[[nodiscard]] std::string out_of_range_text(const Guide& guide);

/// The status after success.
[[nodiscard]] std::string success_text(const Guide& guide, const CalibrationForm& form);

} // namespace kv408
