#include "analysis/density_collector.h"

#include <cmath>

namespace kv408 {

void DensityCollector::collect(Channel channel, bool on) {
    Kept& kept = channels_.at(channel);
    if (kept.on != on) {
        kept.on = on;
        kept.last.reset();
        drop(channel);
    }
}

void DensityCollector::take(const Sweep& sweep) {
    for (const Channel channel : both_channels) {
        Kept& kept = channels_.at(channel);
        const auto& part = sweep.channel.at(channel);
        // Both parts of a sweep are announced, the first one twice.
        if (!kept.on || !sweep.came.at(channel) || part == kept.last) {
            continue;
        }
        kept.last = part;
        if (!frozen_ && part->whole && part->alone && !part->codes.empty()) {
            count(channel, sweep, *part);
        }
    }
}

void DensityCollector::count(Channel channel, const Sweep& sweep, const ChannelSweep& part) {
    Kept& kept = channels_.at(channel);
    const MeasuredWith with = measured_with(sweep.mode, part);
    if (!kept.collected || kept.collected->with != with) {
        begin(kept, with, sweep, part.codes.size());
        tell_changed(channel);
    }
    Collected& collected = *kept.collected;
    if (half_life_ && collected.sweeps > 0) {
        collected.weight *= std::exp2(1.0 / *half_life_);
        // No counter gets higher than 1.45 half-lives of the highest weight. Counters are seldom
        // halved, for that takes some milliseconds.
        if (collected.weight >= highest_count / (4.0 * *half_life_)) {
            const double halvings = std::floor(std::log2(collected.weight / fading_weight));
            collected.weight = std::ldexp(collected.weight, -static_cast<int>(halvings));
            multiply(channel, std::exp2(-halvings));
        }
    }
    const auto weight = static_cast<std::uint32_t>(std::lround(collected.weight));
    collected.counts.add(part.codes, weight);
    ++collected.sweeps;
    collected.averaged += part.averaged ? 1 : 0;
    if (counted_) {
        counted_(channel, part.codes, weight);
    }
}

void DensityCollector::begin(Kept& kept, const MeasuredWith& with, const Sweep& sweep,
                             std::size_t points) const {
    if (kept.collected) {
        kept.reason = difference(kept.collected->with, with);
    }
    if (kept.collected && kept.collected->counts.points() == static_cast<int>(points)) {
        kept.collected->counts.clear();
    } else {
        kept.collected.reset(); // its memory goes before the other's comes
        kept.collected = std::make_unique<Collected>(
            Collected{.counts = Density(static_cast<int>(points)), .with = with});
    }
    kept.collected->with = with;
    kept.collected->sweeps = 0;
    kept.collected->averaged = 0;
    kept.collected->weight = half_life_ ? double{fading_weight} : 1.0;
    kept.since = sweep.time;
}

void DensityCollector::clear() {
    for (const Channel channel : both_channels) {
        drop(channel);
    }
}

void DensityCollector::set_half_life(std::optional<int> sweeps) {
    const bool faded = half_life_.has_value();
    half_life_ = sweeps;
    if (faded == sweeps.has_value()) {
        return;
    }
    for (const Channel channel : both_channels) {
        if (Collected* const collected = channels_.at(channel).collected.get()) {
            const double weight = faded ? 1.0 : double{fading_weight};
            multiply(channel, weight / collected->weight);
            collected->weight = weight;
        }
    }
}

void DensityCollector::multiply(Channel channel, double factor) {
    channels_.at(channel).collected->counts.multiply(factor);
    tell_changed(channel);
}

void DensityCollector::drop(Channel channel) {
    Kept& kept = channels_.at(channel);
    kept.collected.reset();
    kept.reason.clear();
    tell_changed(channel);
}

void DensityCollector::tell_changed(Channel channel) const {
    if (changed_) {
        changed_(channel);
    }
}

} // namespace kv408
