#include "scope/single_sweep.h"

#include "scope/parts.h"

namespace kv408 {

SingleSweep::SingleSweep(Parts& parts) : parts_(parts), watch_(parts) {
    controls_.mnustart.on_click([this] { parts_.panel.cmdstartsweep.click(); });
    controls_.mnustop.on_click([this] { parts_.panel.cmdstop.click(); });
    controls_.mnusingle.on_click([this] {
        if (!begin()) {
            parts_.boxes.show({.text = "No channel is on"});
        }
    });
}

bool SingleSweep::begin() {
    const FrontPanel& panel = parts_.panel;
    if (!panel.channel[ch1].enable.checked() && !panel.channel[ch2].enable.checked()) {
        return false;
    }
    parts_.panel.cmdstartsweep.click();
    watch_.want_new();
    watch_.look();
    state_ = {.under_way = true, .stops = true};
    return true;
}

void SingleSweep::tick_over() {
    watch_.look();
    if (!state_.under_way || watch_.pending()) {
        return;
    }
    const State ended = std::exchange(state_, {});
    const bool came = parts_.acquisition.acqrunning; // else somebody has pressed Stop
    if (came && ended.stops) {
        parts_.panel.cmdstop.click();
    }
    if (const Waiting waiting = done_.lock()) {
        (*waiting)(came);
    }
}

} // namespace kv408
