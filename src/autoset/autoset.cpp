#include "autoset/autoset.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "autoset/limits.h"
#include "panel/adjust.h"

namespace kv408 {
namespace {

/// Time bases at which the signals are looked at, each of whose sweeps is so much longer than the
/// one before that a period that does not fit into that has at least some points in this one.
constexpr std::array<std::string_view, 5> rungs = {"25ps/div", "5ns/div", "200ns/div", "2us/div",
                                                   "50us/div"};

/// V/div of the instrument's coarse and of its fine range.
constexpr std::string_view coarse_vdiv = "0.5V";
constexpr std::string_view fine_vdiv = "50mV";

} // namespace

Autoset::Autoset(Works works) : works_(std::move(works)), presses_(works_.panel) {
    controls_.mnuautoset.on_click([this] { start(); });
    controls_.cmdAutosetCancel.on_click([this] { cancel(); });
}

void Autoset::start() {
    if (under_way()) {
        return;
    }
    works_.keep();
    outcome_ = Outcome::under_way;
    began_ = works_.clock.now();
    was_sweeping_ = works_.acquisition.acqrunning;
    users_ = users_set_up(works_.panel, works_.channels, works_.trigger);
    other_tried_ = false;
    back_.reset();
    found_ = {};
    beyond_fine_ = {};
    settled_ = 0;
    const Channel selected = works_.panel.selected_source().value_or(ch2);
    trials_ =
        trials_of({.source = selected, .wheel = users_.level.at(selected) / codes_per_wheel_step});
    next_trial_ = 0;
    try_trial();
}

void Autoset::cancel() {
    if (under_way()) {
        give_up(Outcome::cancelled, "Cancelled. Everything is as it was.");
    }
}

void Autoset::end_if_stopped() {
    if (under_way() && !works_.acquisition.acqrunning) {
        was_sweeping_ = false;
        give_up(Outcome::cancelled, "Stopped. Everything is as it was.");
    }
}

int Autoset::progress() const {
    constexpr int whole = 100;
    if (!under_way()) {
        return whole;
    }
    return static_cast<int>(std::min<std::int64_t>(whole * elapsed() / longest, whole - 1));
}

void Autoset::tick_over() {
    if (!under_way()) {
        return;
    }
    if (!works_.acquisition.acqrunning) {
        end_if_stopped();
    } else if (works_.clock.now() - asked_ > autoset_limit::wait) {
        give_up(Outcome::not_found, "No data come from the instrument. Everything is as it was.");
    } else if (elapsed() > longest - autoset_limit::to_put_back) {
        give_up(Outcome::not_found, "It took too long. Everything is as it was.");
    } else if (stage_ == Stage::searching) {
        search_on();
    } else if (stage_ == Stage::looking) {
        look_on();
    } else {
        settle_on();
    }
    if (change_) {
        change_();
    }
}

// --- Sweeps -------------------------------------------------------------------------------------

/// What is pressed while sweeping waits for what still comes; stopped, it does not.
void Autoset::sweep_anew(const std::function<void()>& press) {
    works_.panel.cmdstop.click();
    press();
    works_.panel.cmdstartsweep.click();
    seen_ = works_.sweeps.last()->channel;
    asked_ = works_.clock.now();
}

bool Autoset::came(Channel channel) const {
    const auto& part = works_.sweeps.last()->channel.at(channel);
    return part != seen_.at(channel) && part->whole;
}

bool Autoset::all_came() const {
    return std::all_of(both_channels.begin(), both_channels.end(), [this](Channel channel) {
        return came(channel) || !works_.panel.channel.at(channel).enable.checked();
    });
}

bool Autoset::untriggered() const {
    return works_.acquisition.activity == Activity::waiting_for_trigger || works_.one_word();
}

StartedBy Autoset::started_by(Channel channel) const {
    if (channel != trial_.source) {
        return StartedBy::unknown;
    }
    return works_.panel.trigeredge.text() == "Positive" ? StartedBy::rising : StartedBy::falling;
}

void Autoset::take_looks() {
    for (const Channel channel : both_channels) {
        if (!came(channel)) {
            continue;
        }
        const SignalLook look =
            look_at(*works_.sweeps.last()->channel.at(channel), started_by(channel));
        SignalLook& known = found_.at(channel).look;
        known.clipped = look.clipped;
        const bool fine = works_.panel.channel.at(channel).vdiv.text() == fine_vdiv;
        beyond_fine_.at(channel) = beyond_fine_.at(channel) || (fine && look.clipped);
        // Of what is far lower than what was seen before only a level is in sight, with its noise.
        const bool tells_time = (look.period || look.edge) && look.height() > known.height() / 2.0;
        // A longer sweep shows more of the signal; what a shorter one has shown of time is finer.
        if (!known.alive || (look.alive && (tells_time || (!known.period && !known.edge &&
                                                           look.height() > known.height())))) {
            known = look;
        }
    }
}

// --- Searching a trigger ------------------------------------------------------------------------

void Autoset::try_trial() {
    stage_ = Stage::searching;
    rung_ = 0;
    trial_ = trials_.at(next_trial_++);
    tell("Looking for a trigger: " + words_of(trial_));
    sweep_anew([this] {
        FrontPanel& panel = works_.panel;
        presses_.choose(panel.seltimediv, rungs.front());
        for (const Channel channel : both_channels) {
            presses_.check(panel.channel.at(channel).enable, true);
            presses_.choose(panel.channel.at(channel).vdiv, coarse_vdiv);
            presses_.type(panel.channel.at(channel).psofset, 0);
        }
        presses_.type(panel.trtout, std::max(users_.timeout, autoset_limit::search_timeout));
        presses_.trigger(trial_.source, trial_.wheel, 0);
    });
}

void Autoset::search_on() {
    if (came(ch1) || came(ch2)) {
        slow_ = works_.clock.now() - asked_ > autoset_limit::fast_sweep;
        stage_ = Stage::looking;
        look_on();
    } else if (untriggered() && back_) {
        trial_ = *std::exchange(back_, std::nullopt);
        settle();
    } else if (untriggered() &&
               (next_trial_ == trials_.size() || elapsed() > autoset_limit::search)) {
        give_up(Outcome::not_found, "No trigger at TRIG1 or TRIG2. Everything is as it was.");
    } else if (untriggered()) {
        try_trial();
    }
}

// --- Looking at the signals ---------------------------------------------------------------------

bool Autoset::is_small(Channel channel) const {
    const SignalLook& look = found_.at(channel).look;
    return !look.clipped && !beyond_fine_.at(channel) &&
           std::max(std::abs(look.low), std::abs(look.high)) < autoset_limit::small;
}

void Autoset::look_with(std::size_t rung) {
    rung_ = rung;
    tell("Looking at the signals: " + std::string(rungs.at(rung)));
    sweep_anew([this] {
        presses_.choose(works_.panel.seltimediv, rungs.at(rung_));
        for (const Channel channel : both_channels) {
            // In its finer range the instrument has a third of the noise.
            presses_.choose(works_.panel.channel.at(channel).vdiv,
                            is_small(channel) ? fine_vdiv : coarse_vdiv);
        }
    });
}

void Autoset::look_on() {
    if (untriggered()) {
        give_up(Outcome::not_found, "The trigger was lost. Everything is as it was.");
        return;
    }
    if (!all_came()) {
        return;
    }
    take_looks();
    for (const Channel channel : both_channels) {
        const bool fine = works_.panel.channel.at(channel).vdiv.text() == fine_vdiv;
        if (fine && found_.at(channel).look.clipped) {
            look_with(rung_);
            return;
        }
    }
    const SignalLook& own = found_.at(trial_.source).look;
    const SignalLook& beside = found_.at(other(trial_.source)).look;
    if (own.period || own.edge) {
        settle();
        return;
    }
    const bool coarse = works_.panel.channel.at(trial_.source).vdiv.text() == coarse_vdiv;
    // What has left the finer range is not small any more, so this comes but once.
    const bool again = rung_ == 0 && !slow_ && coarse && own.height() < autoset_limit::faint &&
                       is_small(trial_.source);
    const std::size_t next = again ? rung_ : rung_ == 0 && slow_ ? rungs.size() - 1 : rung_ + 1;
    // A period of the other channel is enough where only the slowest look is left.
    if (next < rungs.size() && (slow_ || next + 1 < rungs.size() || !beside.period)) {
        look_with(next);
    } else if (!own.alive && beside.alive && !other_tried_) {
        look_by_other_source();
    } else {
        settle();
    }
}

/// The channel of the source has no signal, but the other one: its own source may trigger better.
void Autoset::look_by_other_source() {
    other_tried_ = true;
    back_ = trial_;
    const Channel source = other(trial_.source);
    const double division = works_.channels.at(source).vtfactor;
    trials_ = {{.source = source, .wheel = fit_level(found_.at(source).look, division).wheel}};
    next_trial_ = 0;
    try_trial();
}

// --- Setting up what was found ------------------------------------------------------------------

Plan Autoset::plan() const {
    return plan_of({.panel = works_.panel,
                    .channels = works_.channels,
                    .found = found_,
                    .source = trial_.source,
                    .level_wheel = trial_.wheel,
                    .time_base = rungs.at(rung_),
                    .timeout = users_.timeout});
}

void Autoset::settle() {
    for (FoundSignal& found : found_) {
        found.on = found.look.alive;
    }
    if (!found_[ch1].on && !found_[ch2].on) {
        give_up(Outcome::not_found, name_of_source(trial_.source) +
                                        " triggers, but CH1 and CH2 have no signal. "
                                        "Everything is as it was.");
        return;
    }
    plan_ = plan();
    press_plan();
}

void Autoset::press_plan() {
    stage_ = Stage::settling;
    ++settled_;
    tell("Setting up what was found");
    sweep_anew([this] {
        FrontPanel& panel = works_.panel;
        for (const Channel channel : both_channels) {
            presses_.check(panel.channel.at(channel).enable, found_.at(channel).on);
            if (!found_.at(channel).on) {
                give_back(channel);
            }
        }
        // A delay can be typed up to 200ns/div only.
        presses_.choose(panel.seltimediv, plan_.time.time_base);
        for (const Channel channel : both_channels) {
            ChannelControls& controls = panel.channel.at(channel);
            if (found_.at(channel).on) {
                presses_.choose(controls.vdiv, plan_.vertical.at(channel).vdiv);
                presses_.turn(channel == ch1 ? adjust_key::ch1 : adjust_key::ch2,
                              plan_.vertical.at(channel).wheel);
                presses_.type(controls.psofset, plan_.time.delay);
            }
        }
        presses_.type(panel.trtout, plan_.timeout);
        presses_.trigger(trial_.source, plan_.level.wheel, plan_.level.hysteresis);
    });
}

/// A channel that is switched off gets back what was pressed of it.
void Autoset::give_back(Channel channel) {
    ChannelControls& controls = works_.panel.channel.at(channel);
    presses_.choose(controls.vdiv, users_.vdiv.at(channel));
    if (controls.psofset.text() != users_.delay.at(channel)) {
        presses_.choose(works_.panel.seltimediv, rungs.front()); // where a delay can be typed
        presses_.type(controls.psofset, users_.delay.at(channel));
    }
}

SignalLook Autoset::own_look() const {
    return look_at(*works_.sweeps.last()->channel.at(trial_.source), started_by(trial_.source));
}

/// Whether the source's channel shows again what it was set up for; chance does not come twice.
bool Autoset::confirmed() const {
    const SignalLook& known = found_.at(trial_.source).look;
    const SignalLook again = own_look();
    const auto agree = [](const std::optional<double>& one, const std::optional<double>& other,
                          double tolerance) {
        return !one || (other && std::abs(*other - *one) <= tolerance * *one);
    };
    return !found_.at(trial_.source).on ||
           (agree(known.period, again.period, autoset_limit::alike) &&
            agree(known.edge, again.edge, autoset_limit::alike_edges));
}

void Autoset::settle_on() {
    if (untriggered()) {
        if (settled_ >= autoset_limit::most_settlings) {
            give_up(Outcome::not_found, "The trigger was lost. Everything is as it was.");
            return;
        }
        // What triggered at first does so again.
        plan_.level = {.wheel = trial_.wheel};
        plan_.timeout = std::max(users_.timeout, autoset_limit::search_timeout);
        press_plan();
        return;
    }
    if (!all_came()) {
        return;
    }
    const bool settled = confirmed();
    SignalLook& own = found_.at(trial_.source).look;
    const SignalLook again = own_look();
    if (!settled && !again.period && !again.edge && rung_ + 1 < rungs.size()) {
        own.period.reset();
        own.edge.reset();
        stage_ = Stage::looking;
        look_with(rung_ + 1);
        return;
    }
    if (!settled) {
        own.period.reset();
        own.edge.reset();
    }
    take_looks();
    Plan better = plan();
    better.level = plan_.level;
    better.timeout = plan_.timeout;
    const bool sure =
        settled && (settled_ >= autoset_limit::enough_settlings || better.same_scales(plan_));
    if (settled_ < autoset_limit::most_settlings && !sure) {
        plan_ = better;
        press_plan();
        return;
    }
    end_found();
}

// --- The end ------------------------------------------------------------------------------------

void Autoset::end_found() {
    outcome_ = Outcome::found;
    // Of the source that is not selected nothing is shown or sent.
    const Channel unused = other(trial_.source);
    works_.trigger.saved_trigpos.at(unused) = users_.level.at(unused);
    works_.trigger.hyst.at(unused) = users_.hysteresis.at(unused);
    int position = 0;
    if (!hasnotab(works_.panel.tabstrip2, users_.tab, position)) {
        works_.panel.tabstrip2.select(position);
    }
    const std::string line = words_of(ch1, found_[ch1], trial_.source) + ", " +
                             words_of(ch2, found_[ch2], trial_.source);
    tell(line + (works_.done() ? ". One Undo takes it all back." : ". Nothing had to be changed."));
}

void Autoset::give_up(Outcome outcome, std::string line) {
    outcome_ = outcome;
    works_.panel.cmdstop.click();
    works_.put_back();
    if (was_sweeping_) {
        works_.panel.cmdstartsweep.click();
    }
    tell(std::move(line));
}

void Autoset::tell(std::string line) {
    controls_.lblAutoset.set_caption(std::move(line));
    controls_.cmdAutosetCancel.set_enabled(under_way());
    if (change_) {
        change_();
    }
}

} // namespace kv408
