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
    SampleReply reply;
    reply.ready = start;
    reply.bytes.reserve(2 * request.points);
    std::int64_t next_period = 0;
    for (std::size_t point = 0; point < request.points; ++point) {
        const double delay =
            static_cast<double>(settings.offset_ps.at(request.channel)) +
            static_cast<double>(point) * static_cast<double>(settings.resolution_ps);
        std::int32_t sum = 0;
        for (int conversion = 0; conversion < conversions; ++conversion) {
            const auto event = triggers->first_after(reply.ready + moment_in(turn), next_period);
            next_period = event.phase.periods + 1;
            sum += sampler_.convert(channel, event, delay);
            reply.ready += turn;
        }
        append_word(reply.bytes, round_to_int32(static_cast<double>(sum) / conversions));
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
    const auto event = triggers->first_after(start + moment_in(conversion_time));
    SampleReply reply;
    reply.ready = std::max(start + conversion_time, triggers->time_of(event, start));
    append_word(reply.bytes,
                sampler_.convert(channel, event, static_cast<double>(request.delay_ps)));
    return reply;
}

nanoseconds Sweeper::moment_in(nanoseconds turn) {
    return nanoseconds(
        static_cast<std::int64_t>(noise_.uniform() * 0.5 * static_cast<double>(turn.count())));
}

} // namespace kv408::simulator
