#include "scope/sweep_watch.h"

#include <algorithm>

#include "scope/parts.h"

namespace kv408 {
namespace {

/// Measurements start from the values of earlier sweeps, and are right from the third sweep of a
/// changed signal on.
constexpr int sweeps_to_settle = 3;

} // namespace

SweepWatch::SweepWatch(const Parts& parts)
    : parts_(parts), seen_(set_up()), last_(parts.sweeps.last()->channel) {}

SweepWatch::SetUp SweepWatch::set_up() const {
    const FrontPanel& panel = parts_.panel;
    SetUp now{{panel.trtout.text()},
              {panel.seltimediv.index(), panel.trigsource.index(), panel.trigeredge.index(),
               panel.shyst.value(), panel.average.checked() ? 1 : 0,
               panel.adcspeed.checked() ? 1 : 0, parts_.trigger_state.trigpos}};
    for (const Channel channel : both_channels) {
        const ChannelControls& controls = panel.channel.at(channel);
        now.texts.push_back(controls.psofset.text());
        now.numbers.insert(now.numbers.end(),
                           {controls.vdiv.index(), controls.enable.checked() ? 1 : 0,
                            controls.invert.checked() ? 1 : 0, controls.inviatr.checked() ? 1 : 0,
                            parts_.channels.at(channel).marker_wheel});
    }
    return now;
}

void SweepWatch::look() {
    const std::string& word = parts_.acquisition.scopestate;
    if (SetUp now = set_up(); now != seen_) {
        seen_ = std::move(now);
        want_new();
    }
    if (word == state_word::set_up || word == state_word::changes || word == state_word::changes1) {
        wanted_ = {true, true};
        new_ = {};
        old_under_way_ = false; // uploading the set-up discards the data under way
    }
}

void SweepWatch::want_new() {
    wanted_ = {true, true};
    new_ = {};
    old_under_way_ = state_word::sweeps(parts_.acquisition.scopestate);
}

void SweepWatch::take(const std::shared_ptr<const Sweep>& sweep) {
    look(); // a control may have been pressed in the middle of the sweep
    for (const Channel channel : both_channels) {
        if (sweep->channel.at(channel) == last_.at(channel)) {
            continue;
        }
        unsettled_.at(channel) = sweep->channel.at(channel)->alone
                                     ? std::max(unsettled_.at(channel) - 1, 0)
                                     : sweeps_to_settle;
        new_.at(channel) = !old_under_way_ && unsettled_.at(channel) == 0;
    }
    old_under_way_ = false;
    last_ = sweep->channel;
    bool whole = sweep->complete;
    for (const Channel channel : both_channels) {
        whole = whole && (new_.at(channel) || !sweep->came.at(channel));
    }
    if (whole) {
        wanted_ = {!sweep->came[ch1], !sweep->came[ch2]};
    }
}

bool SweepWatch::pending() const {
    bool any = false;
    for (const Channel channel : both_channels) {
        any = any || (wanted_.at(channel) && parts_.panel.channel.at(channel).enable.checked());
    }
    // The start of the program presses Start on its first tick.
    return any &&
           (parts_.acquisition.acqrunning || parts_.acquisition.scopestate == state_word::begin);
}

} // namespace kv408
