#include "acquisition/point_pass.h"

#include <array>

#include "acquisition/point_delay.h"
#include "acquisition/sample_conversion.h"
#include "acquisition/status.h"

namespace kv408 {
namespace {

constexpr int points_a_pass = DataWatch::points_a_pass;
constexpr const char* pass_state = "scope";

/// What one channel's samples are taken with.
struct Conversion {
    bool inverted;
    double atten;
    double vtfactor;
    std::int16_t swoffset;

    friend bool operator==(const Conversion&, const Conversion&) = default;
};

/// What both channels' samples are taken with now.
std::array<Conversion, 2> conversions(const FrontPanel& panel, const Channels& channels) {
    std::array<Conversion, 2> result = {};
    for (std::size_t index = 0; index < result.size(); ++index) {
        const ChannelState& channel = channels[index];
        result[index] = {panel.channel[index].invert.checked(), channel.atten, channel.vtfactor,
                         channel.swoffset};
    }
    return result;
}

} // namespace

void PointPass::sdisplay1ghzt() {
    const std::array<bool, 2> enabled = {panel_.channel[0].enable.checked(),
                                         panel_.channel[1].enable.checked()};
    const bool both = enabled[0] && enabled[1];
    const auto start = clock_.now();
    link_.flush();
    if (!enabled[0] && !enabled[1]) {
        return;
    }
    const auto before = conversions(panel_, channels_);
    acquisition_.data.begin_pass(start);
    const std::uint32_t step = acquisition_.steps;
    int index = 1;
    for (; index <= points_a_pass; ++index) {
        messages_.process_pending();
        if (acquisition_.steps != step) {
            // Under a dialog that a person opened the sweep has gone on without this pass.
            return;
        }
        if (acquisition_.scopestate != pass_state) {
            break;
        }
        const Outcome outcome = take_point(index, enabled);
        if (outcome != Outcome::taken) {
            end_without_point(outcome);
            return;
        }
        screen_.refreshCH1(index);
        screen_.refreshCH2(index);
        show_progress(index, start);
        acquisition_.data.take_point(clock_.now(), index);
        if (both) {
            acquisition_.ready = {true, true};
        }
        screen_.set_newest_point(index);
        screen_.draw(draw_flags::all);
    }
    if (index > points_a_pass) {
        acquisition_.data.take_sweep(clock_.now());
        if (!both) {
            acquisition_.ready[enabled[0] ? 0 : 1] = true;
        }
    }
    if (index > points_a_pass && conversions(panel_, channels_) == before) {
        acquisition_.fresh = enabled;
    }
    screen_.movepersistance();
    measuring_.makemeasurement();
}

void PointPass::end_without_point(Outcome outcome) {
    acquisition_.fresh = {};
    if (outcome == Outcome::waiting) {
        show_status(panel_.textstatus, status::waiting_for_trigger);
        acquisition_.data.take_answer(clock_.now());
    }
}

PointPass::Outcome PointPass::take_point(int index, const std::array<bool, 2>& enabled) {
    const PointDelay delay = point_delay(index, time_base_.tbresolution);
    for (int channel = 1; channel <= 2; ++channel) {
        if (!enabled[static_cast<std::size_t>(channel - 1)]) {
            continue;
        }
        const Outcome outcome = fetch(channel, index, delay);
        if (outcome != Outcome::taken) {
            return outcome;
        }
    }
    return Outcome::taken;
}

PointPass::Outcome PointPass::fetch(int channel, int index, const PointDelay& delay) {
    fill_sample(link_.cmdargs(), delay, channel);
    link_.sendcommand(command::fetch_sample, link_.cmdargs());
    std::array<Byte, 2> reply = {};
    if (!link_.read(reply)) {
        link_.power().note_silence();
        return Outcome::failed;
    }
    if (link_.power().is_back()) {
        acquisition_.scopestate = "startscope";
        return Outcome::failed;
    }
    const std::int16_t word = sample_word(reply[0], reply[1], point_high_byte_limit);
    const auto place = static_cast<std::size_t>(channel - 1);
    store_sample(samples_[place], channels_[place], panel_.channel[place].invert.checked(),
                 static_cast<std::size_t>(index), word);
    return word == point_waiting_word ? Outcome::waiting : Outcome::taken;
}

void PointPass::show_progress(int index, std::chrono::nanoseconds start) {
    using std::chrono::milliseconds;
    if (index == 1) {
        show_status(panel_.textstatus, status::running);
    } else if (std::chrono::duration_cast<milliseconds>(clock_.now() - start) ==
               milliseconds(500)) {
        show_status(panel_.textstatus, status::getting_data);
    } else {
        return;
    }
    messages_.repaint(panel_.textstatus.name());
}

} // namespace kv408
