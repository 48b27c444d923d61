#include "acquisition/block_sweep.h"

#include <cassert>
#include <chrono>
#include <span>

#include "acquisition/sample_conversion.h"
#include "acquisition/set_up_upload.h"
#include "acquisition/status.h"

namespace kv408 {
namespace {

constexpr std::uint32_t block_bytes = 2 * npoints;

} // namespace

void BlockSweep::sdisplaych(int channel) {
    const std::uint32_t count = link_.waiting();
    if (count >= 2 && link_.power().is_back()) {
        acquisition_.scopestate = "startscope";
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
    show_status(panel_.textstatus, status::running);
    if (!link_.read(std::span(rxbuffer_).first(block_bytes))) {
        acquisition_.fresh = {};
        rearm(channel);
        return;
    }
    convert_block(channel);
    screen_.movepersistance();
    const std::size_t other = channel == 1 ? 1 : 0;
    if (panel_.channel[other].enable.checked()) {
        acquisition_.scopestate = channel == 1 ? "scopech2f" : "scopech1f";
    }
    acquisition_.ready[static_cast<std::size_t>(channel - 1)] = true;
    acquisition_.fresh[static_cast<std::size_t>(channel - 1)] = true;
    acquisition_.data.take_sweep(clock_.now());
    rearm(channel);
}

void BlockSweep::convert_block(int channel) {
    const auto index = static_cast<std::size_t>(channel - 1);
    const bool inverted = panel_.channel[index].invert.checked();
    double stretchpos = 1.0;
    std::size_t byte = 0;
    for (int point = 1; point <= npoints; ++point) {
        assert(byte + 1 < block_bytes);
        lastword_ = sample_word(rxbuffer_[byte], rxbuffer_[byte + 1], block_high_byte_limit);
        store_sample(samples_[index], channels_[index], inverted, static_cast<std::size_t>(point),
                     lastword_);
        screen_.refresh(channel - 1, point);
        stretchpos += time_base_.hstretch;
        byte += 2;
        if (stretchpos - 1.0 > point) {
            stretchpos -= time_base_.hstretch;
            byte -= 2;
        }
    }
}

void BlockSweep::take_short_reply(int channel, std::uint32_t count) {
    acquisition_.fresh = {};
    if (!link_.read(std::span(rxbuffer_).first(count))) {
        rearm(channel);
        return;
    }
    lastword_ = sample_word(rxbuffer_[count - 2], rxbuffer_[count - 1], block_high_byte_limit);
    if (lastword_ == block_waiting_word) {
        show_status(panel_.textstatus, status::waiting_for_trigger);
        acquisition_.data.take_answer(clock_.now());
        rearm(channel);
    }
}

void BlockSweep::rearm(int channel) {
    clock_.sleep(std::chrono::milliseconds(1));
    link_.flush();
    int next = channel;
    if (panel_.channel[1].enable.checked() && acquisition_.scopestate == "scopech2f") {
        next = 2;
    } else if (panel_.channel[0].enable.checked() && acquisition_.scopestate == "scopech1f") {
        next = 1;
    }
    fill_sweep(link_.cmdargs(), sweep_request(panel_, next));
    link_.sendcommand(command::start_sweep, link_.cmdargs());
    restart();
    measuring_.makemeasurement();
}

} // namespace kv408
