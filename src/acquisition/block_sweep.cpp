#include "acquisition/block_sweep.h"

#include <chrono>
#include <span>

#include "acquisition/set_up_upload.h"
#include "acquisition/status.h"

namespace kv408 {
namespace {

constexpr std::uint32_t block_bytes = 2 * npoints;

} // namespace

void BlockSweep::sdisplaych(int channel) {
    const std::uint32_t count = link_.waiting();
    if (count >= 2 && link_.power().is_back()) {
        acquisition_.scopestate = state_word::set_up;
    } else if (count >= block_bytes) {
        take_block(channel);
    } else if (count == lastrxcount_ && count >= 2) {
        take_short_reply(channel, count);
    } else {
        lastrxcount_ = count;
        if (count < 2) {
            if (count == 1) {
                acquisition_.fresh = {};
                link_.read(std::span(rxbuffer_).first(count));
            } else if (link_.power().note_empty_queue()) {
                acquisition_.fresh = {};
            }
            rearm(channel);
        }
    }
}

void BlockSweep::take_block(int channel) {
    show_status(panel_, acquisition_, status::running);
    if (!link_.read(std::span(rxbuffer_).first(block_bytes))) {
        acquisition_.fresh = {};
        rearm(channel);
        return;
    }
    const auto index = static_cast<std::size_t>(channel - 1);
    Sweeps::Parts parts;
    parts.at(index) = convert_block(index);
    if (panel_.channel.at(1 - index).enable.checked()) {
        acquisition_.scopestate = state_word::block[1 - index];
    }
    acquisition_.ready.at(index) = true;
    acquisition_.fresh.at(index) = true;
    acquisition_.data.take_sweep(clock_.now());
    ask_for_next(channel);
    sweeps_.finish(SweepMode::block, clock_.time_of_day(), parts, set_up_.on());
}

std::shared_ptr<const ChannelSweep> BlockSweep::convert_block(std::size_t channel) {
    auto sweep = std::make_shared<ChannelSweep>(set_up_.begin(channel));
    std::array<Sample, npoints> points = {};
    for (std::size_t pair = 0; pair < points.size(); ++pair) {
        const std::int16_t word =
            sample_word(rxbuffer_.at(2 * pair), rxbuffer_.at(2 * pair + 1), block_high_byte_limit);
        points[pair] = add_point(*sweep, sweep->conversion, word);
    }
    double stretchpos = 1.0;
    std::size_t pair = 0;
    for (int point = 1; point <= npoints; ++point) {
        lastword_ = sweep->codes.at(pair);
        store_sample(samples_.at(channel), static_cast<std::size_t>(point), points.at(pair));
        screen_.refresh(static_cast<int>(channel), point);
        stretchpos += set_up_.time_base.hstretch;
        ++pair;
        if (stretchpos - 1.0 > point) {
            stretchpos -= set_up_.time_base.hstretch;
            --pair;
        }
    }
    sweep->columns = samples_.at(channel);
    sweep->whole = true;
    return sweep;
}

void BlockSweep::take_short_reply(int channel, std::uint32_t count) {
    acquisition_.fresh = {};
    if (!link_.read(std::span(rxbuffer_).first(count))) {
        rearm(channel);
        return;
    }
    lastword_ = sample_word(rxbuffer_[count - 2], rxbuffer_[count - 1], block_high_byte_limit);
    if (lastword_ == block_waiting_word) {
        show_status(panel_, acquisition_, status::waiting_for_trigger);
        acquisition_.data.take_answer(clock_.now());
        rearm(channel);
    }
}

void BlockSweep::rearm(int channel) {
    ask_for_next(channel);
    measuring_.makemeasurement();
}

void BlockSweep::ask_for_next(int channel) {
    clock_.sleep(std::chrono::milliseconds(1));
    link_.flush();
    int next = channel;
    if (panel_.channel[1].enable.checked() && acquisition_.scopestate == state_word::block[ch2]) {
        next = 2;
    } else if (panel_.channel[0].enable.checked() &&
               acquisition_.scopestate == state_word::block[ch1]) {
        next = 1;
    }
    fill_sweep(link_.cmdargs(), sweep_request(panel_, next));
    link_.sendcommand(command::start_sweep, link_.cmdargs());
    restart();
}

} // namespace kv408
