#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "acquisition/state_machine.h"
#include "calibration/calibration_form.h"
#include "calibration/calibration_note.h"
#include "panel/surroundings.h"

namespace kv408 {

/// The linearity calibration of the time base. The instrument does it by itself and reports the
/// error of each of 8000 points in a byte; the program starts it, counts and shows.
class LinearityRun {
public:
    /// Number of the first point, and the one after the last.
    static constexpr std::int16_t first_point = 2500;
    static constexpr std::int16_t end_point = 10500;

    LinearityRun(const Surroundings& around, CalibrationForm& form, CalibrationNote& note,
                 StateMachine& state_machine)
        : around_(around), form_(form), note_(note), state_machine_(state_machine) {}

    /// After a question: stops the sweep, starts the run in the instrument and sets the state
    /// word to `state_word::linearity`.
    void cmdcalint_Click();

    /// Stop on the form, as in the main window.
    void cmdcalstop_Click() { state_machine_.cmdstop_Click(); }

    /// Says that a run was broken off, whatever did it.
    void broken_off();

    /// One step, on each tick of the timer in that state: takes one byte if there is one. After the
    /// last point the state is `state_word::stopped`. Counting goes on where a run was broken
    /// off.
    void caldelaypstint();

    /// Number of the next point.
    [[nodiscard]] std::int16_t point() const { return point_; }

private:
    void take_point(Byte reported);
    void tell_time_left();
    void tell_silence();
    void finish();
    void show_status(const std::string& text);

    Surroundings around_;
    CalibrationForm& form_;
    CalibrationNote& note_;
    StateMachine& state_machine_;
    bool started_ = false; ///< a run has begun and not come to its end
    std::int16_t point_ = first_point;
    std::int16_t errors_ = 0;
    std::int16_t largest_ = 0; ///< picoseconds
    // The pace of this run, from its start in the instrument on.
    std::chrono::nanoseconds begun_{0};
    std::chrono::nanoseconds last_byte_{0};
    std::int32_t points_of_run_ = 0;
};

/// The size of a reported error, picoseconds: the byte is a signed number, and one of 1 is none.
[[nodiscard]] std::int16_t linearity_error(Byte reported);

/// How long is left, in words: "about 29 minutes", "less than a minute".
[[nodiscard]] std::string minutes_in_words(std::chrono::nanoseconds left);

} // namespace kv408
