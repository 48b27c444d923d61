#include "acquisition/point_pass.h"

#include <array>

#include "acquisition/point_delay.h"
#include "acquisition/status.h"

namespace kv408 {
namespace {

constexpr int points_per_pass = DataWatch::points_per_pass;

} // namespace

void PointPass::sdisplay1ghzt() {
    const std::array<bool, 2> enabled = set_up_.on();
    const bool both = enabled[0] && enabled[1];
    const auto start = around_.clock.now();
    around_.link.flush();
    if (!enabled[0] && !enabled[1]) {
        return;
    }
    for (const Channel channel : both_channels) {
        making_.at(channel) = set_up_.begin(channel);
    }
    around_.acquisition.data.begin_pass(start);
    const std::uint32_t step = around_.acquisition.steps;
    int index = 1;
    for (; index <= points_per_pass; ++index) {
        around_.messages.process_pending();
        if (around_.acquisition.steps != step) {
            // Under a dialog that a person opened the sweep has gone on without this pass.
            return;
        }
        if (around_.acquisition.scopestate != state_word::pass) {
            break;
        }
        const Outcome outcome = take_point(index, enabled);
        if (outcome != Outcome::taken) {
            end_without_point(outcome);
            return;
        }
        around_.screen.refreshCH1(index);
        around_.screen.refreshCH2(index);
        show_progress(index, start);
        around_.acquisition.data.take_point(around_.clock.now(), index);
        if (both) {
            around_.acquisition.ready = {true, true};
        }
        around_.screen.set_newest_point(index);
        around_.screen.draw(draw_flags::all);
    }
    if (index > points_per_pass) {
        around_.acquisition.data.take_sweep(around_.clock.now());
        if (!both) {
            around_.acquisition.ready[enabled[ch1] ? ch1 : ch2] = true;
        }
    }
    end(enabled, index > points_per_pass);
}

void PointPass::end(const std::array<bool, 2>& enabled, bool whole) {
    if (whole && making_[ch1].conversion == set_up_.conversion(ch1) &&
        making_[ch2].conversion == set_up_.conversion(ch2)) {
        around_.acquisition.taken_as_set = enabled;
    }
    Sweeps::Parts parts;
    for (const Channel channel : both_channels) {
        if (enabled.at(channel)) {
            making_.at(channel).columns = samples_.at(channel);
            making_.at(channel).whole = whole;
            parts.at(channel) =
                std::make_shared<const ChannelSweep>(std::move(making_.at(channel)));
        }
    }
    sweeps_.finish(SweepMode::point, around_.clock.time_of_day(), parts, enabled);
}

void PointPass::end_without_point(Outcome outcome) {
    around_.acquisition.taken_as_set = {};
    if (outcome == Outcome::waiting) {
        show_status(around_.panel, around_.acquisition, status::waiting_for_trigger);
        around_.acquisition.data.take_answer(around_.clock.now());
    }
}

PointPass::Outcome PointPass::take_point(int index, const std::array<bool, 2>& enabled) {
    const PointDelay delay = point_delay(index, around_.time_base.tbresolution);
    for (const Channel channel : both_channels) {
        if (!enabled.at(channel)) {
            continue;
        }
        const Outcome outcome = fetch(channel, index, delay);
        if (outcome != Outcome::taken) {
            return outcome;
        }
    }
    return Outcome::taken;
}

PointPass::Outcome PointPass::fetch(Channel channel, int index, const PointDelay& delay) {
    fill_sample(around_.link.cmdargs(), delay, channel);
    around_.link.sendcommand(command::fetch_sample, around_.link.cmdargs());
    std::array<Byte, 2> reply = {};
    if (!around_.link.read(reply)) {
        around_.link.power().note_silence();
        return Outcome::failed;
    }
    if (around_.link.power().is_back()) {
        around_.acquisition.scopestate = state_word::set_up;
        return Outcome::failed;
    }
    const std::int16_t word = sample_word(reply[0], reply[1], point_high_byte_limit);
    store_sample(samples_.at(channel), static_cast<std::size_t>(index),
                 add_point(making_.at(channel), set_up_.conversion(channel), word));
    return word == point_waiting_word ? Outcome::waiting : Outcome::taken;
}

void PointPass::show_progress(int index, std::chrono::nanoseconds start) {
    using std::chrono::milliseconds;
    if (index == 1) {
        show_status(around_.panel, around_.acquisition, status::running);
    } else if (std::chrono::duration_cast<milliseconds>(around_.clock.now() - start) ==
               milliseconds(500)) {
        show_status(around_.panel, around_.acquisition, status::getting_data);
    } else {
        return;
    }
    around_.messages.repaint(around_.panel.textstatus.name());
}

} // namespace kv408
