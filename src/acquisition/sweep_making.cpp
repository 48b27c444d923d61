#include "acquisition/sweep_making.h"

#include "state/plot_geometry.h"

namespace kv408 {

Conversion SweepSetUp::conversion(Channel channel) const {
    const ChannelState& state = around.channels.at(channel);
    return {.inverted = around.panel.channel.at(channel).invert.checked(),
            .atten = state.atten,
            .vtfactor = state.vtfactor,
            .swoffset = state.swoffset};
}

std::array<bool, 2> SweepSetUp::on() const {
    return {around.panel.channel[ch1].enable.checked(), around.panel.channel[ch2].enable.checked()};
}

ChannelSweep SweepSetUp::begin(Channel channel) const {
    const ChannelState& state = around.channels.at(channel);
    ChannelSweep sweep;
    sweep.codes.reserve(npoints);
    sweep.mv.reserve(npoints);
    sweep.delay = around.acquisition.offset.at(channel);
    sweep.first_time = around.acquisition.pointmode ? around.time_base.tbresolution : sweep.delay;
    sweep.time_per_point = around.time_base.tbresolution;
    sweep.columns_per_second = around.time_base.samplerate;
    sweep.conversion = conversion(channel);
    sweep.gain = state.gain;
    sweep.mv_per_division = state.mv_per_division;
    sweep.position = static_cast<double>(plot::centre_y - state.pos) / plot::division;
    sweep.averaged = around.panel.average.checked();
    sweep.trigger = around.acquisition.trigger;
    sweep.trigger.level_mv *= around.channels.at(sweep.trigger.source).vtfactor;
    return sweep;
}

Sample add_point(ChannelSweep& sweep, const Conversion& conversion, std::int16_t word) {
    const Sample sample = converted(conversion, word);
    sweep.codes.push_back(word);
    sweep.mv.push_back(sample.mv);
    return sample;
}

} // namespace kv408
