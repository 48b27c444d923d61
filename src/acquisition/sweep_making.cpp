#include "acquisition/sweep_making.h"

namespace kv408 {

Conversion SweepSetUp::conversion(std::size_t channel) const {
    const ChannelState& state = channels.at(channel);
    return {.inverted = panel.channel.at(channel).invert.checked(),
            .atten = state.atten,
            .vtfactor = state.vtfactor,
            .swoffset = state.swoffset};
}

std::array<bool, 2> SweepSetUp::on() const {
    return {panel.channel[ch1].enable.checked(), panel.channel[ch2].enable.checked()};
}

ChannelSweep SweepSetUp::begin(std::size_t channel) const {
    const ChannelState& state = channels.at(channel);
    // The first point of a pass lies one step after the trigger, that of a block at the delay.
    const double delay = acquisition.offset.at(channel);
    ChannelSweep sweep;
    sweep.codes.reserve(npoints);
    sweep.mv.reserve(npoints);
    sweep.first_time = acquisition.pointmode ? time_base.tbresolution : delay;
    sweep.time_per_point = time_base.tbresolution;
    sweep.columns_per_second = time_base.samplerate;
    sweep.conversion = conversion(channel);
    sweep.gain = state.gain;
    sweep.mv_per_division = state.mv_per_division;
    sweep.averaged = panel.average.checked();
    return sweep;
}

Sample add_point(ChannelSweep& sweep, const Conversion& conversion, std::int16_t word) {
    const Sample sample = converted(conversion, word);
    sweep.codes.push_back(word);
    sweep.mv.push_back(sample.mv);
    return sample;
}

} // namespace kv408
