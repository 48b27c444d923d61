#include "simulator/sweep.h"

#include "state/rounding.h"

#include <algorithm>

namespace kv408::simulator {
namespace {

using std::chrono::nanoseconds;

void append_word(std::vector<Byte>& bytes, std::int32_t word) {
    bytes.push_back(static_cast<Byte>((word >> 8) & 0xFF));
    bytes.push_back(static_cast<Byte>(word & 0xFF));
}

/// The triggers have random numbers of their own, so that noise of a trigger leaves those of the
/// sampler as they are.
Noise of_triggers(Noise noise) {
    return Noise(noise.bits());
}

SampleReply not_triggered(const Settings& settings, nanoseconds start) {
    return {{waiting_reply.begin(), waiting_reply.end()},
            start + std::chrono::microseconds(settings.trigger.time_out_us)};
}

} // namespace

SweepRequest decode_sweep(const Command& command) {
    SweepRequest request;
    request.points = std::min(word_argument(command, 0), most_points);
    request.average = command.arguments[2] != 0;
    request.fast = command.arguments[3] != 0;
    request.channel = command.arguments[4] == 2 ? 1 : 0;
    return request;
}

SampleReply Sweeper::sweep(const SweepRequest& request, const Settings& settings,
                           nanoseconds start) {
    const auto triggers = find_triggers(bench_, settings.trigger);
    if (!triggers) {
        return not_triggered(settings, start);
    }
    const auto channel = sampler_.prepare(request.channel, settings, request.fast);
    const nanoseconds turn = request.fast ? fast_conversion_time : conversion_time;
    const int conversions = request.average ? averaged_conversions : 1;
    const double first_ps = settings.offset_ps.at(request.channel);
    SampleReply reply;
    reply.ready = start;
    reply.bytes.reserve(2 * request.points);
    nanoseconds last_trigger{-1};
    Noise trigger_noise = of_triggers(noise_);
    for (std::size_t point = 0; point < request.points; ++point) {
        const double delay =
            first_ps + static_cast<double>(point) * static_cast<double>(settings.resolution_ps);
        std::int32_t sum = 0;
        for (int conversion = 0; conversion < conversions; ++conversion) {
            const nanoseconds begin = reply.ready + moment_in(turn);
            auto event = triggers->first_after(begin);
            if (triggers->time_of(event, begin) <= last_trigger) {
                event = triggers->next(event);
            }
            last_trigger = triggers->time_of(event, begin);
            triggers->disturb(event, trigger_noise);
            sum += sampler_.convert(channel, event, delay);
            reply.ready = std::max(reply.ready + turn, last_trigger);
        }
        append_word(reply.bytes, round_to_int32(static_cast<double>(sum) / conversions));
        reply.codes_ready.push_back(reply.ready);
    }
    const auto all_conversions = static_cast<std::int64_t>(request.points) * conversions;
    if (reply.ready == start + all_conversions * turn) {
        reply.codes_ready.clear();
    }
    return reply;
}

SampleReply Sweeper::point(const PointRequest& request, const Settings& settings,
                           nanoseconds start) {
    const auto triggers = find_triggers(bench_, settings.trigger);
    if (!triggers) {
        return not_triggered(settings, start);
    }
    const auto channel = sampler_.prepare(request.channel, settings, false);
    auto event = triggers->first_after(start + moment_in(conversion_time));
    SampleReply reply;
    reply.ready = std::max(start + conversion_time, triggers->time_of(event, start));
    Noise trigger_noise = of_triggers(noise_);
    triggers->disturb(event, trigger_noise);
    append_word(reply.bytes,
                sampler_.convert(channel, event, static_cast<double>(request.delay_ps)));
    return reply;
}

nanoseconds Sweeper::moment_in(nanoseconds turn) {
    return nanoseconds(
        static_cast<std::int64_t>(noise_.uniform() * 0.5 * static_cast<double>(turn.count())));
}

} // namespace kv408::simulator
