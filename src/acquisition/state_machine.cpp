#include "acquisition/state_machine.h"

#include <array>
#include <cstdio>

#include "acquisition/status.h"
#include "panel/delay_text.h"

namespace kv408 {
namespace {

/// Ticks after which a drawing that is owed waits for data no longer.
constexpr int longest_owed = 10;

} // namespace

void StateMachine::Timer1_Timer(bool exchange_under_way) {
    const bool withheld = acquisition_.traces_withheld();
    if (!exchange_under_way) {
        act_on_state();
    }
    screen_stale_ |= count_holdoff_down();
    show_date();
    show_age();
    // While the picture waits for data or for a set-up, level and offsets may have been changed.
    screen_.show_labels();
    if (exchange_under_way) {
        return;
    }
    if (redraw_due()) {
        redraw();
    } else if (screen_stale_ || acquisition_.traces_withheld() != withheld || drawing_due()) {
        // No data may ever come to take the trace or the trigger line off the screen.
        screen_.draw(draw_flags::all);
    }
    screen_stale_ = false;
}

bool StateMachine::drawing_due() {
    if (!screen_.owes_drawing()) {
        ticks_owed_ = 0;
        return false;
    }
    // The data that follow a change bring everything to the screen; a drawing before them would
    // take traces off it, or show samples of one range in the scale of another.
    return acquisition_.traces_withheld() || !data_awaited() || ++ticks_owed_ >= longest_owed;
}

bool StateMachine::data_awaited() const {
    for (std::size_t index = 0; index < acquisition_.ready.size(); ++index) {
        if (acquisition_.held.at(index) && !acquisition_.ready.at(index) &&
            panel_.channel.at(index).enable.checked()) {
            return true;
        }
    }
    return false;
}

void StateMachine::cmdstartsweep_Click() {
    acquisition_.acqrunning = true;
    leave_for(state_word::set_up);
}

void StateMachine::cmdstop_Click() {
    acquisition_.stoprequest = true;
    acquisition_.acqrunning = false;
    leave_for(state_word::stopped);
    keep_what_is_held();
}

void StateMachine::keep_what_is_held() {
    if (acquisition_.pending_refresh) {
        // Only what has come since was taken with the delay that was sent.
        acquisition_.pending_refresh = false;
        for (std::size_t index = 0; index < channels_.size(); ++index) {
            if (acquisition_.ready.at(index)) {
                channels_.at(index).shown_delaypts = channels_.at(index).uploaded_delaypts;
                screen_.refresh(static_cast<int>(index), 0);
            }
        }
    }
    for (std::size_t index = 0; index < channels_.size(); ++index) {
        acquisition_.ready.at(index) = acquisition_.ready.at(index) || acquisition_.held.at(index);
    }
}

void StateMachine::show_change() {
    if (acquisition_.scopestate == state_word::stopped) {
        measuring_.showmeasurements();
        screen_.draw(draw_flags::all);
    }
}

void StateMachine::leave_for(std::string_view word) {
    const bool calibrating = acquisition_.scopestate == state_word::linearity;
    acquisition_.scopestate = word;
    if (calibrating && calibration_broken_off_) {
        calibration_broken_off_();
    }
}

void StateMachine::act_on_state() {
    ++acquisition_.steps;
    // A copy: the actions change the state word.
    const std::string state = acquisition_.scopestate;
    if (state == state_word::set_up) {
        set_up();
    } else if (state == state_word::pass) {
        if (acquisition_.pointmode) {
            // Set before the pass, so that Stop in the middle of it stays a stop.
            acquisition_.acqrunning = true;
            procedures_.pass.sdisplay1ghzt();
        } else {
            acquisition_.scopestate = state_word::set_up;
        }
    } else if (state == state_word::block[ch1]) {
        fetch_block(1);
    } else if (state == state_word::block[ch2]) {
        fetch_block(2);
    } else if (state == state_word::linearity && calibration_step_) {
        calibration_step_();
    } else if (state == state_word::changes || state == state_word::changes1) {
        acquisition_.scopestate = state_word::set_up;
    } else if (state == state_word::stopped) {
        show_status(panel_, acquisition_, status::stopped);
    } else if (state == state_word::begin) {
        show_status(panel_, acquisition_, status::idle);
        cmdstartsweep_Click();
    }
}

void StateMachine::set_up() {
    // A set-up that is sent once more follows none that brought data.
    acquisition_.untriggered = acquisition_.traces_withheld();
    show_status(panel_, acquisition_, status::setup);
    messages_.repaint(panel_.textstatus.name());
    procedures_.vertical.ch1vdiv_Click();
    procedures_.vertical.ch2vdiv_Click();
    procedures_.upload.settriger();
    for (std::size_t index = 0; index < acquisition_.offset.size(); ++index) {
        acquisition_.offset[index] = delay_to_send(panel_.channel[index].psofset, channels_[index]);
    }
    if (acquisition_.scopestate != state_word::set_up) {
        // Something pressed while a failure was being told has the last word.
        return;
    }
    acquisition_.scopestate = state_word::pass;
    if (procedures_.upload.setscope8ghz()) {
        procedures_.block.restart();
    }
}

void StateMachine::fetch_block(int channel) {
    procedures_.block.sdisplaych(channel);
    acquisition_.laststate = state_word::block.at(static_cast<std::size_t>(channel - 1));
    acquisition_.acqrunning = true;
}

bool StateMachine::count_holdoff_down() {
    const bool shown = acquisition_.holdoff;
    if (acquisition_.holdoff && acquisition_.holdoff_time > 0) {
        acquisition_.holdoff_time -= timer_interval_ms;
    }
    if (acquisition_.holdoff_time <= 0) {
        acquisition_.holdoff = false;
        acquisition_.holdoff_time = 0;
    }
    return shown && !acquisition_.holdoff;
}

void StateMachine::show_date() {
    const LocalTime time = clock_.local_time();
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d, %02d.%02d.%02d", time.hour,
                  time.minute, time.second, time.day, time.month, time.year % 100);
    panel_.lbldate.set_caption(text.data());
}

void StateMachine::show_age() {
    const bool sweeps = acquisition_.acqrunning &&
                        acquisition_.scopestate != state_word::linearity &&
                        (panel_.channel[0].enable.checked() || panel_.channel[1].enable.checked());
    DataWatch& data = acquisition_.data;
    data.look(clock_.now(), {.sweeps = sweeps, .by_points = acquisition_.pointmode});
    const auto silence = data.silence();
    if (silence) {
        std::string text = "No data for ";
        text += std::to_string(silence->count());
        text += " s";
        panel_.nodata.set_caption(std::move(text));
    }
    panel_.nodata.set_visible(silence.has_value());
    panel_.picture1.set_dimmed(silence.has_value());
    // While the plot is empty the results are of what it showed before.
    panel_.picmeasure.set_dimmed(silence.has_value() || acquisition_.traces_withheld());
}

bool StateMachine::redraw_due() const {
    const bool first = panel_.channel[0].enable.checked();
    const bool second = panel_.channel[1].enable.checked();
    const auto& [first_ready, second_ready] = acquisition_.ready;
    return (((first && second && first_ready) || (!first && second)) && second_ready) ||
           (first && !second && first_ready);
}

void StateMachine::redraw() {
    if (acquisition_.pending_refresh) {
        acquisition_.pending_refresh = false;
        for (ChannelState& channel : channels_) {
            channel.shown_delaypts = channel.uploaded_delaypts;
        }
        screen_.refreshCH1(0);
        screen_.refreshCH2(0);
    }
    measuring_.showmeasurements();
    screen_.draw(draw_flags::all);
}

} // namespace kv408
