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

StateMachine::StateMachine(const Surroundings& around, const Procedures& procedures)
    : around_(around), procedures_(procedures) {
    around.panel.cmdstartsweep.on_click([this] { cmdstartsweep_Click(); });
    around.panel.cmdstop.on_click([this] { cmdstop_Click(); });
}

void StateMachine::Timer1_Timer(bool exchange_under_way) {
    const bool withheld = around_.acquisition.traces_withheld();
    if (!exchange_under_way) {
        act_on_state();
    }
    screen_stale_ |= count_holdoff_down();
    show_date();
    show_age();
    // While the picture waits for data or for a set-up, level and offsets may have been changed.
    around_.screen.show_labels();
    if (exchange_under_way) {
        return;
    }
    if (redraw_due()) {
        redraw();
    } else if (screen_stale_ || around_.acquisition.traces_withheld() != withheld ||
               drawing_due()) {
        // No data may ever come to take the trace or the trigger line off the screen.
        around_.screen.draw(draw_flags::all);
    }
    screen_stale_ = false;
}

bool StateMachine::drawing_due() {
    if (!around_.screen.owes_drawing()) {
        ticks_owed_ = 0;
        return false;
    }
    // The data that follow a change bring everything to the screen; a drawing before them would
    // take traces off it, or show samples of one range in the scale of another.
    return around_.acquisition.traces_withheld() || !data_awaited() ||
           ++ticks_owed_ >= longest_owed;
}

bool StateMachine::data_awaited() const {
    for (const Channel channel : both_channels) {
        if (around_.acquisition.held.at(channel) && !around_.acquisition.ready.at(channel) &&
            around_.panel.channel.at(channel).enable.checked()) {
            return true;
        }
    }
    return false;
}

void StateMachine::cmdstartsweep_Click() {
    around_.acquisition.acqrunning = true;
    leave_for(state_word::set_up);
    if (started_) {
        started_();
    }
}

void StateMachine::cmdstop_Click() {
    around_.acquisition.stoprequest = true;
    around_.acquisition.acqrunning = false;
    leave_for(state_word::stopped);
    keep_what_is_held();
}

void StateMachine::keep_what_is_held() {
    if (around_.acquisition.pending_refresh) {
        // Only what has come since was taken with the delay that was sent.
        around_.acquisition.pending_refresh = false;
        for (const Channel channel : both_channels) {
            if (around_.acquisition.ready.at(channel)) {
                around_.channels.at(channel).shown_delaypts =
                    around_.channels.at(channel).uploaded_delaypts;
                around_.screen.refresh(channel, 0);
            }
        }
    }
    for (const Channel channel : both_channels) {
        around_.acquisition.ready.at(channel) =
            around_.acquisition.ready.at(channel) || around_.acquisition.held.at(channel);
    }
}

void StateMachine::leave_for(std::string_view word) {
    const bool calibrating = around_.acquisition.scopestate == state_word::linearity;
    around_.acquisition.scopestate = word;
    if (calibrating && calibration_broken_off_) {
        calibration_broken_off_();
    }
}

void StateMachine::act_on_state() {
    ++around_.acquisition.steps;
    // A copy: the actions change the state word.
    const std::string state = around_.acquisition.scopestate;
    if (state == state_word::set_up) {
        set_up();
    } else if (state == state_word::pass) {
        if (around_.acquisition.pointmode) {
            // Set before the pass, so that Stop in the middle of it stays a stop.
            around_.acquisition.acqrunning = true;
            procedures_.pass.sdisplay1ghzt();
        } else {
            around_.acquisition.scopestate = state_word::set_up;
        }
    } else if (state == state_word::block[ch1]) {
        fetch_block(ch1);
    } else if (state == state_word::block[ch2]) {
        fetch_block(ch2);
    } else if (state == state_word::linearity && calibration_step_) {
        calibration_step_();
    } else if (state == state_word::changes || state == state_word::changes1) {
        around_.acquisition.scopestate = state_word::set_up;
    } else if (state == state_word::stopped) {
        show_status(around_.panel, around_.acquisition, status::stopped);
    } else if (state == state_word::begin) {
        show_status(around_.panel, around_.acquisition, status::idle);
        cmdstartsweep_Click();
    }
}

void StateMachine::set_up() {
    // A set-up that is sent once more follows none that brought data.
    around_.acquisition.untriggered = around_.acquisition.traces_withheld();
    show_status(around_.panel, around_.acquisition, status::setup);
    around_.messages.repaint(around_.panel.textstatus.name());
    procedures_.vertical.vdiv_Click(ch1);
    procedures_.vertical.vdiv_Click(ch2);
    procedures_.upload.settriger();
    for (const Channel channel : both_channels) {
        around_.acquisition.offset[channel] =
            delay_to_send(around_.panel.channel[channel].psofset, around_.channels[channel]);
    }
    if (around_.acquisition.scopestate != state_word::set_up) {
        // Something pressed while a failure was being told has the last word.
        return;
    }
    around_.acquisition.scopestate = state_word::pass;
    if (procedures_.upload.setscope8ghz()) {
        procedures_.block.restart();
    }
}

void StateMachine::fetch_block(Channel channel) {
    procedures_.block.sdisplaych(channel);
    around_.acquisition.laststate = state_word::block.at(channel);
    around_.acquisition.acqrunning = true;
}

bool StateMachine::count_holdoff_down() {
    const bool shown = around_.acquisition.holdoff;
    if (around_.acquisition.holdoff && around_.acquisition.holdoff_time > 0) {
        around_.acquisition.holdoff_time -= timer_interval_ms;
    }
    if (around_.acquisition.holdoff_time <= 0) {
        around_.acquisition.holdoff = false;
        around_.acquisition.holdoff_time = 0;
    }
    return shown && !around_.acquisition.holdoff;
}

void StateMachine::show_date() {
    const LocalTime time = around_.clock.local_time();
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d, %02d.%02d.%02d", time.hour,
                  time.minute, time.second, time.day, time.month, time.year % 100);
    around_.panel.lbldate.set_caption(text.data());
}

void StateMachine::show_age() {
    const bool sweeps =
        around_.acquisition.acqrunning && around_.acquisition.scopestate != state_word::linearity &&
        (around_.panel.channel[0].enable.checked() || around_.panel.channel[1].enable.checked());
    DataWatch& data = around_.acquisition.data;
    data.look(around_.clock.now(), {.sweeps = sweeps, .by_points = around_.acquisition.pointmode});
    const auto silence = data.silence();
    if (silence) {
        std::string text = "No data for ";
        text += std::to_string(silence->count());
        text += " s";
        around_.panel.nodata.set_caption(std::move(text));
    }
    around_.panel.nodata.set_visible(silence.has_value());
    around_.panel.picture1.set_dimmed(silence.has_value());
    // While the plot is empty the results are of what it showed before.
    around_.panel.picmeasure.set_dimmed(silence.has_value() ||
                                        around_.acquisition.traces_withheld());
}

bool StateMachine::redraw_due() const {
    const bool first = around_.panel.channel[0].enable.checked();
    const bool second = around_.panel.channel[1].enable.checked();
    const auto& [first_ready, second_ready] = around_.acquisition.ready;
    return (((first && second && first_ready) || (!first && second)) && second_ready) ||
           (first && !second && first_ready);
}

void StateMachine::redraw() {
    if (around_.acquisition.pending_refresh) {
        around_.acquisition.pending_refresh = false;
        for (ChannelState& channel : around_.channels) {
            channel.shown_delaypts = channel.uploaded_delaypts;
        }
        around_.screen.refreshCH1(0);
        around_.screen.refreshCH2(0);
    }
    around_.measuring.showmeasurements();
    around_.screen.draw(draw_flags::all);
}

} // namespace kv408
