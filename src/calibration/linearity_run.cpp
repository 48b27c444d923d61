#include "calibration/linearity_run.h"

#include <algorithm>
#include <array>
#include <string>

#include "acquisition/status.h"

namespace kv408 {
namespace {

using std::chrono::minutes;
using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr Colour run_background = rgb(192, 255, 255);
constexpr std::uint32_t start_timeout_ms = 100;

/// After so long without a point something is wrong.
constexpr seconds silence{5};

} // namespace

std::int16_t linearity_error(Byte reported) {
    constexpr int full = 256;
    constexpr int largest_positive = 128;
    if (reported == 1 || reported == full - 1) {
        return 0;
    }
    return static_cast<std::int16_t>(reported > largest_positive ? full - reported : reported);
}

std::string minutes_in_words(nanoseconds left) {
    if (left < minutes(1)) {
        return "less than a minute";
    }
    const auto whole = std::chrono::ceil<minutes>(left).count();
    std::string text = "about ";
    text += std::to_string(whole);
    text += whole == 1 ? " minute" : " minutes";
    return text;
}

void LinearityRun::cmdcalint_Click() {
    if (around_.boxes.show({.text = std::string(linearity_warning) + "\n\nStart now?",
                            .title = "Calibrate Linearity",
                            .buttons = MessageButtons::ok_cancel,
                            .icon = MessageIcon::question}) != MessageAnswer::ok) {
        return;
    }
    state_machine_.cmdstop_Click();
    around_.link.waitrxidle();
    std::int16_t retries = command_attempts;
    const bool begun = around_.link.sendcmdack(command::start_linearity, around_.link.cmdargs(),
                                               retries, start_timeout_ms, " CALDELPS");
    // What is read or written next has no time-out of its own.
    around_.link.set_usual_timeouts();
    if (!begun) {
        return;
    }
    around_.acquisition.scopestate = state_word::linearity;
    begun_ = around_.clock.now();
    last_byte_ = begun_;
    points_of_run_ = 0;
    note_.say("");
    form_.progressbar1.start(end_point - (started_ ? point_ : first_point));
}

void LinearityRun::broken_off() {
    form_.calstatus.set_caption("");
    note_.say(started_ && point_ > first_point ? "Broken off. The next run counts on from here."
                                               : "Broken off before the first point.");
}

void LinearityRun::caldelaypstint() {
    if (!started_) {
        point_ = first_point;
        errors_ = 0;
        largest_ = 0;
        started_ = true;
    }
    std::array<Byte, 1> byte = {};
    // Asked first, so that a tick without a byte does not wait for one.
    if (around_.link.waiting() > 0 && around_.link.read(byte)) {
        take_point(byte[0]);
    } else {
        tell_silence();
    }
    if (point_ == end_point) {
        finish();
    }
}

void LinearityRun::take_point(Byte reported) {
    std::string text = "Calibrating ";
    text += std::to_string(point_);
    text += " of 10500 points";
    show_status(text);
    ++point_;
    const std::int16_t error = linearity_error(reported);
    if (error > 0) {
        ++errors_;
    }
    form_.calerorcnt.set_caption(std::to_string(errors_));
    largest_ = std::max(largest_, error);
    form_.calerormax.set_caption(std::to_string(largest_));
    ++points_of_run_;
    form_.progressbar1.step();
    last_byte_ = around_.clock.now();
    tell_time_left();
}

void LinearityRun::tell_time_left() {
    const nanoseconds pace = (last_byte_ - begun_) / points_of_run_;
    note_.say("Time left: " + minutes_in_words(pace * (end_point - point_)));
}

void LinearityRun::tell_silence() {
    const nanoseconds since = around_.clock.now() - last_byte_;
    if (since < silence) {
        return;
    }
    std::string text = "No point has come for ";
    text += std::to_string(std::chrono::duration_cast<seconds>(since).count());
    text += "s. Stop breaks the run off.";
    note_.say(text);
}

void LinearityRun::finish() {
    started_ = false;
    show_status("Calibration Completed");
    note_.say("");
    around_.messages.repaint(around_.panel.textstatus.name());
    around_.acquisition.scopestate = state_word::stopped;
}

void LinearityRun::show_status(const std::string& text) {
    form_.calstatus.set_caption(text);
    kv408::show_status(
        around_.panel, around_.acquisition,
        {.activity = Activity::calibrating, .text = text.c_str(), .background = run_background});
}

} // namespace kv408
