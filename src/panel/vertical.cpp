#include "panel/vertical.h"

#include <string>

#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/samples.h"

namespace kv408 {
namespace {

struct VerticalRow {
    std::string_view text;
    std::int16_t gain;
    double mv_per_division;
};

constexpr std::array<VerticalRow, 7> vertical_rows = {{
    {"1V", low_gain, 1000},
    {"0.5V", low_gain, 500},
    {"0.2V", low_gain, 200},
    {"0.1V", low_gain, 100},
    {"50mV", high_gain, 50},
    {"20mV", high_gain, 20},
    {"10mV", high_gain, 10},
}};

/// Stands for a range that nobody knows, so that every range differs from it.
constexpr std::int16_t unknown_gain = 0;

constexpr std::array<std::string_view, 2> gain_labels = {"_SET AMP GAIN_", " SET AMP GAIN "};

} // namespace

std::optional<VerticalScale> vertical_scale(std::string_view text) {
    for (const VerticalRow& row : vertical_rows) {
        if (row.text == text) {
            const double codes_per_mv = row.gain == low_gain ? 2.0 : 6.0;
            constexpr double divisions = 8.0;
            return VerticalScale{.gain = row.gain,
                                 .atten = 1.0 / codes_per_mv,
                                 .scale = 512.0 / (divisions * row.mv_per_division * codes_per_mv),
                                 .mv_per_division = row.mv_per_division};
        }
    }
    return std::nullopt;
}

std::int16_t offset_code(const ChannelState& channel) {
    return round_to_int16(zero_volt_code -
                          (plot::centre_y - channel.pos) / (channel.vtfactor * channel.scale));
}

void Vertical::fill_lists() {
    for (ChannelControls& controls : panel_.channel) {
        controls.vdiv.set_entries({"0.5V", "0.2V", "0.1V", "50mV", "20mV", "10mV"});
    }
}

void Vertical::vdiv_Click(int channel) {
    ChannelState& state = channels_[static_cast<std::size_t>(channel)];
    const bool known = set_scale(channel);
    if (!known || !send_gain(channel)) {
        boxes_.show({.text = "Error Vold/div set", .link_failure = known});
        return;
    }
    state.offsetdac = offset_code(state);
    // The adjust wheel is refreshed for its present target, as a click on its tab does.
    panel_.tabstrip2.select(panel_.tabstrip2.selected());
    screen_.calccursors();
    show_caption(channel);
    screen_.refreshCH1(0);
    screen_.refreshCH2(0);
    if (!acquisition_.acqrunning) {
        // No new data may come that would bring the traces to the screen in their new scale.
        screen_.draw(draw_flags::all);
    }
}

bool Vertical::set_scale(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    ChannelState& state = channels_[index];
    const ChannelControls& controls = panel_.channel[index];
    const std::int16_t gain_before = state.gain;
    const auto scale = vertical_scale(controls.vdiv.text());
    if (!scale) {
        return false;
    }
    state.atten = scale->atten;
    state.scale = scale->scale;
    state.gain = scale->gain;
    state.mv_per_division = scale->mv_per_division;
    const bool via_trigger = controls.inviatr.checked();
    state.vtfactor = via_trigger ? 2.0 : 1.0;
    state.vtsuffix = via_trigger ? " (VT)" : "";
    state.pixpermv = state.scale / state.atten;
    acquisition_.fresh[index] = false;
    if (acquisition_.acqrunning) {
        if (state.gain != gain_before) {
            acquisition_.scopestate = state_word::changes;
            acquisition_.laststate = acquisition_.scopestate;
            link_.waitrxidle();
        }
        acquisition_.await_new_data(index);
    }
    return true;
}

bool Vertical::send_gain(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    const std::array<std::int16_t, 2> gain = {channels_[0].gain, channels_[1].gain};
    // A choice sends its range only when that changes; what an instrument that was off has lost is
    // the set-up's to send.
    const bool lost = acquisition_.scopestate == state_word::set_up && link_.power().ranges_lost();
    if (!lost && gain[index] == acknowledged_gain_[index]) {
        return true;
    }
    if (acquisition_.scopestate == state_word::linearity) {
        // A command would break the linearity run off; the next set-up sends the range.
        return true;
    }
    if (acquisition_.acqrunning && acquisition_.scopestate != state_word::changes) {
        // A frame that repeats a failed one comes without a change of the range: the reply in
        // progress must have arrived for it too.
        link_.waitrxidle();
    }
    fill_gain(link_.cmdargs(), gain);
    if (!link_.send_setup(command::set_amplifier_gain, gain_labels[index])) {
        // The instrument may have taken the frame and only its answer may be lost. Either way a
        // range that the frame repeats is as it was.
        for (std::size_t each = 0; each < gain.size(); ++each) {
            if (gain.at(each) != acknowledged_gain_.at(each)) {
                acknowledged_gain_.at(each) = unknown_gain;
            }
        }
        return false;
    }
    acknowledged_gain_ = gain;
    return true;
}

void Vertical::show_caption(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    const ChannelState& state = channels_[index];
    ChannelControls& controls = panel_.channel[index];
    controls.vdivtext.set_caption(controls.vdiv.text() + state.vtsuffix + state.invsuffix);
}

void Vertical::invert_Click(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    acquisition_.fresh[index] = false;
    channels_[index].invsuffix = panel_.channel[index].invert.checked() ? " (inv)" : "";
    show_caption(channel);
    screen_.refresh(channel, 0);
    screen_.draw(channel == 0 ? draw_flags::ch1 : draw_flags::ch2);
    // Alone on the screen the trace would stay so until something else is drawn.
    screen_.draw(draw_flags::all);
}

void Vertical::enable_Click(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    ChannelControls& controls = panel_.channel[index];
    const bool enabled = controls.enable.checked();
    acquisition_.fresh[index] = false;
    controls.text.set_visible(enabled);
    controls.vdivtext.set_visible(enabled);
    screen_.refreshCH1(0);
    screen_.refreshCH2(0);
    screen_.draw(draw_flags::all);
}

void Vertical::place_marker(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    panel_.channel[index].text.move(plot::left - plot::marker_width - 1,
                                    plot::top + channels_[index].pos - plot::marker_middle);
}

} // namespace kv408
