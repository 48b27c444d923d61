#include "acquisition/block_sweep.h"

#include <chrono>
#include <span>

#include "acquisition/set_up_upload.h"
#include "acquisition/status.h"
#include "state/block_points.h"

namespace kv408 {
namespace {

constexpr std::uint32_t block_bytes = 2 * npoints;

} // namespace

void BlockSweep::sdisplaych(Channel channel) {
    const std::uint32_t count = around_.link.waiting();
    if (count >= 2 && around_.link.power().is_back()) {
        around_.acquisition.scopestate = state_word::set_up;
    } else if (count >= block_bytes) {
        take_block(channel, count);
    } else if (count == lastrxcount_ && count >= 2) {
        take_short_reply(channel, count);
    } else {
        lastrxcount_ = count;
        if (count < 2) {
            if (count == 1) {
                around_.acquisition.taken_as_set = {};
                around_.link.read(std::span(rxbuffer_).first(count));
            } else if (around_.link.power().note_empty_queue()) {
                around_.acquisition.taken_as_set = {};
            }
            rearm(channel);
        }
    }
}

void BlockSweep::take_block(Channel channel, std::uint32_t count) {
    show_status(around_.panel, around_.acquisition, status::running);
    if (!around_.link.read(std::span(rxbuffer_).first(block_bytes))) {
        around_.acquisition.taken_as_set = {};
        rearm(channel);
        return;
    }
    Sweeps::Parts parts;
    parts.at(channel) = convert_block(channel, count == block_bytes);
    if (around_.panel.channel.at(other(channel)).enable.checked()) {
        around_.acquisition.scopestate = state_word::block[other(channel)];
    }
    around_.acquisition.ready.at(channel) = true;
    around_.acquisition.taken_as_set.at(channel) = true;
    around_.acquisition.data.take_sweep(around_.clock.now());
    ask_for_next(channel);
    sweeps_.finish(SweepMode::block, around_.clock.time_of_day(), parts, set_up_.on());
}

std::shared_ptr<const ChannelSweep> BlockSweep::convert_block(Channel channel, bool alone) {
    auto sweep = std::make_shared<ChannelSweep>(set_up_.begin(channel));
    sweep->alone = alone;
    std::array<Sample, npoints> points = {};
    for (std::size_t pair = 0; pair < points.size(); ++pair) {
        const std::int16_t word =
            sample_word(rxbuffer_.at(2 * pair), rxbuffer_.at(2 * pair + 1), block_high_byte_limit);
        points[pair] = add_point(*sweep, sweep->conversion, word);
    }
    const auto point_in = block_points(around_.time_base.hstretch);
    for (int column = 1; column <= npoints; ++column) {
        const auto pair = static_cast<std::size_t>(point_in.at(static_cast<std::size_t>(column)));
        lastword_ = sweep->codes.at(pair);
        store_sample(samples_.at(channel), static_cast<std::size_t>(column), points.at(pair));
        around_.screen.refresh(channel, column);
    }
    sweep->columns = samples_.at(channel);
    sweep->whole = true;
    return sweep;
}

void BlockSweep::take_short_reply(Channel channel, std::uint32_t count) {
    around_.acquisition.taken_as_set = {};
    if (!around_.link.read(std::span(rxbuffer_).first(count))) {
        rearm(channel);
        return;
    }
    lastword_ = sample_word(rxbuffer_[count - 2], rxbuffer_[count - 1], block_high_byte_limit);
    if (lastword_ == block_waiting_word) {
        show_status(around_.panel, around_.acquisition, status::waiting_for_trigger);
        around_.acquisition.data.take_answer(around_.clock.now());
        rearm(channel);
    }
}

void BlockSweep::rearm(Channel channel) {
    ask_for_next(channel);
    around_.measuring.makemeasurement();
}

void BlockSweep::ask_for_next(Channel channel) {
    around_.clock.sleep(std::chrono::milliseconds(1));
    around_.link.flush();
    Channel next = channel;
    if (around_.panel.channel[ch2].enable.checked() &&
        around_.acquisition.scopestate == state_word::block[ch2]) {
        next = ch2;
    } else if (around_.panel.channel[ch1].enable.checked() &&
               around_.acquisition.scopestate == state_word::block[ch1]) {
        next = ch1;
    }
    fill_sweep(around_.link.cmdargs(), sweep_request(around_.panel, next));
    around_.link.sendcommand(command::start_sweep, around_.link.cmdargs());
    restart();
}

} // namespace kv408
