#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "analysis/collected.h"
#include "state/channel.h"
#include "state/sweep.h"

namespace kv408 {

/// Counts the finished sweeps of each channel into a density of its own: 10.6 MB a channel, from
/// the first sweep that it counts until it is switched off.
///
/// A sweep counts once, if it came whole and with nothing in front of it. When it was measured with
/// anything else than those before, its channel's density begins anew. With a half-life older hits
/// fade: new ones get a growing weight, and before that gets too high, all are halved together with
/// it until it is the least again.
class DensityCollector {
public:
    /// What a hit counts at least while older ones fade, so that halving rounds little.
    static constexpr std::uint32_t fading_weight = 4096;

    /// The longest half-life, sweeps: no counter reaches its end by fading hits.
    static constexpr int longest_half_life = 100000;

    /// Told of each sweep that was counted: its channel, its codes, and what each hit counted.
    using Counted = std::function<void(Channel, std::span<const std::int16_t>, std::uint32_t)>;

    /// Told when the counters of a channel have changed in any other way.
    using Changed = std::function<void(Channel)>;

    DensityCollector() = default;
    DensityCollector(const DensityCollector&) = delete;
    DensityCollector& operator=(const DensityCollector&) = delete;

    /// Collects from now on what `channel` measures, or no more: then nothing of it is kept.
    void collect(Channel channel, bool on);
    [[nodiscard]] bool collects(Channel channel) const { return channels_.at(channel).on; }

    /// Counts what has come with `sweep` since the sweep before.
    void take(const Sweep& sweep);

    /// Forgets what was collected; what comes is collected.
    void clear();

    /// While it is frozen nothing is counted, and nothing begins anew.
    void freeze(bool frozen) { frozen_ = frozen; }
    [[nodiscard]] bool frozen() const { return frozen_; }

    /// Lets hits fade to a half in `sweeps` sweeps, 1..`longest_half_life`, or not at all. What was
    /// collected before is kept and fades too.
    void set_half_life(std::optional<int> sweeps);

    /// What was collected of `channel`; null before the first sweep.
    [[nodiscard]] const Collected* collected(Channel channel) const {
        return channels_.at(channel).collected.get();
    }

    /// When the first of the sweeps came that `channel` has collected.
    [[nodiscard]] std::chrono::system_clock::time_point since(Channel channel) const {
        return channels_.at(channel).since;
    }

    /// What was changed when `channel` began anew last, as `difference` says it; empty where it has
    /// not since it was switched on or cleared.
    [[nodiscard]] const std::string& begun_anew_by(Channel channel) const {
        return channels_.at(channel).reason;
    }

    void on_counted(Counted listener) { counted_ = std::move(listener); }
    void on_changed(Changed listener) { changed_ = std::move(listener); }

private:
    struct Kept {
        bool on = false;
        std::unique_ptr<Collected> collected;
        std::chrono::system_clock::time_point since{};
        std::string reason;
        std::shared_ptr<const ChannelSweep> last; ///< the part that was looked at last
    };

    void count(Channel channel, const Sweep& sweep, const ChannelSweep& part);
    void begin(Kept& kept, const MeasuredWith& with, const Sweep& sweep, std::size_t points) const;
    void multiply(Channel channel, double factor);
    void drop(Channel channel);
    void tell_changed(Channel channel) const;

    std::array<Kept, 2> channels_;
    bool frozen_ = false;
    std::optional<int> half_life_;
    Counted counted_;
    Changed changed_;
};

} // namespace kv408
