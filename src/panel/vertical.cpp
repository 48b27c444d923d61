#include "panel/vertical.h"

#include <string>

#include "panel/set_up_change.h"
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

/// Is known, but no list has it.
constexpr std::string_view not_offered = "1V";

constexpr std::array<VerticalRow, 7> vertical_rows = {{
    {not_offered, low_gain, 1000},
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

std::vector<std::string> volts_per_division() {
    std::vector<std::string> entries;
    for (const VerticalRow& row : vertical_rows) {
        if (row.text != not_offered) {
            entries.emplace_back(row.text);
        }
    }
    return entries;
}

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

Vertical::Vertical(const Surroundings& around) : around_(around) {
    for (const Channel channel : both_channels) {
        ChannelControls& controls = around.panel.channel[channel];
        const auto vdiv = [this, channel] {
            vdiv_Click(channel);
            show_change(around_);
        };
        controls.vdiv.on_click(vdiv);
        controls.inviatr.on_click(vdiv);
        controls.invert.on_click([this, channel] { invert_Click(channel); });
        controls.enable.on_click([this, channel] {
            // Before the picture is drawn, which marks by what the results say.
            around_.measuring.showmeasurements();
            enable_Click(channel);
        });
    }
}

void Vertical::fill_lists() {
    for (ChannelControls& controls : around_.panel.channel) {
        controls.vdiv.set_entries(volts_per_division());
    }
}

void Vertical::vdiv_Click(Channel channel) {
    ChannelState& state = around_.channels[channel];
    const bool known = set_scale(channel);
    if (!known || !send_gain(channel)) {
        around_.boxes.show({.text = "Error Vold/div set", .link_failure = known});
        return;
    }
    state.offsetdac = offset_code(state);
    // The adjust wheel is refreshed for its present target, as a click on its tab does.
    around_.panel.tabstrip2.select(around_.panel.tabstrip2.selected());
    around_.screen.calccursors();
    show_caption(channel);
    around_.screen.refreshCH1(0);
    around_.screen.refreshCH2(0);
    if (!around_.acquisition.acqrunning) {
        // No new data may come that would bring the traces to the screen in their new scale.
        around_.screen.draw(draw_flags::all);
    }
}

bool Vertical::set_scale(Channel channel) {
    ChannelState& state = around_.channels[channel];
    const ChannelControls& controls = around_.panel.channel[channel];
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
    around_.acquisition.taken_as_set[channel] = false;
    if (around_.acquisition.acqrunning) {
        if (state.gain != gain_before) {
            around_.acquisition.scopestate = state_word::changes;
            around_.acquisition.laststate = around_.acquisition.scopestate;
            around_.link.waitrxidle();
        }
        around_.acquisition.await_new_data(channel);
    }
    return true;
}

bool Vertical::send_gain(Channel channel) {
    const std::array<std::int16_t, 2> gain = {around_.channels[0].gain, around_.channels[1].gain};
    // A choice sends its range only when that changes; what an instrument that was off has lost is
    // the set-up's to send.
    const bool lost =
        around_.acquisition.scopestate == state_word::set_up && around_.link.power().ranges_lost();
    if (!lost && gain[channel] == acknowledged_gain_[channel]) {
        return true;
    }
    if (around_.acquisition.scopestate == state_word::linearity) {
        // A command would break the linearity run off; the next set-up sends the range.
        return true;
    }
    if (around_.acquisition.acqrunning && around_.acquisition.scopestate != state_word::changes) {
        // A frame that repeats a failed one comes without a change of the range: the reply in
        // progress must have arrived for it too.
        around_.link.waitrxidle();
    }
    fill_gain(around_.link.cmdargs(), gain);
    if (!around_.link.send_setup(command::set_amplifier_gain, gain_labels[channel])) {
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

void Vertical::show_caption(Channel channel) {
    const ChannelState& state = around_.channels[channel];
    ChannelControls& controls = around_.panel.channel[channel];
    controls.vdivtext.set_caption(controls.vdiv.text() + state.vtsuffix + state.invsuffix);
}

void Vertical::invert_Click(Channel channel) {
    around_.acquisition.taken_as_set[channel] = false;
    around_.channels[channel].invsuffix =
        around_.panel.channel[channel].invert.checked() ? " (inv)" : "";
    show_caption(channel);
    around_.screen.refresh(channel, 0);
    around_.screen.draw(channel == ch1 ? draw_flags::ch1 : draw_flags::ch2);
    // Alone on the screen the trace would stay so until something else is drawn.
    around_.screen.draw(draw_flags::all);
}

void Vertical::enable_Click(Channel channel) {
    ChannelControls& controls = around_.panel.channel[channel];
    const bool enabled = controls.enable.checked();
    around_.acquisition.taken_as_set[channel] = false;
    controls.text.set_visible(enabled);
    controls.vdivtext.set_visible(enabled);
    around_.screen.refreshCH1(0);
    around_.screen.refreshCH2(0);
    around_.screen.draw(draw_flags::all);
}

void Vertical::place_marker(Channel channel) {
    around_.panel.channel[channel].text.mark(around_.channels[channel].pos);
}

} // namespace kv408
