#include "calibration/software_offset.h"

#include <numeric>

#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr std::int32_t largest_correction = 299;

} // namespace

std::int32_t software_offset_mean(const SampleBuffer& samples, std::int32_t start) {
    constexpr int first = 5;
    constexpr int end = 506;
    constexpr double divisor = 500.0;
    const std::int32_t sum =
        std::accumulate(samples.raw.begin() + first, samples.raw.begin() + end, start);
    return round_to_int32(sum / divisor);
}

void SoftwareOffset::cmdcaloofset_Click() {
    if (!around_.panel.cmdcaloofset.checked()) {
        for (ChannelState& channel : around_.channels) {
            channel.swoffset = 0;
        }
        around_.acquisition.taken_as_set = {};
        return;
    }
    // The click has set the mark; it is not due before the user has agreed.
    around_.panel.cmdcaloofset.put_checked(false);
    if (!around_.acquisition.acqrunning) {
        around_.boxes.show({.text = "Scope not running!", .icon = MessageIcon::exclamation});
        return;
    }
    if (around_.boxes.show({.text =
                                "Make sure that trigger signal is present and Sampler inputs are "
                                "disconnected or 0V",
                            .buttons = MessageButtons::ok_cancel}) != MessageAnswer::ok) {
        return;
    }
    around_.panel.cmdcaloofset.put_checked(true);
    const std::int32_t first = software_offset_mean(samples_[ch1], 0);
    correct(ch1, first);
    // The sum of the second channel starts from the mean of the first: the instrument's users know
    // it so.
    correct(ch2, software_offset_mean(samples_[ch2], first));
}

void SoftwareOffset::correct(Channel channel, std::int32_t mean) {
    const std::int32_t correction = zero_volt_code - mean;
    if (correction >= -largest_correction && correction <= largest_correction) {
        around_.channels.at(channel).swoffset = static_cast<std::int16_t>(correction);
        return;
    }
    around_.boxes.show(
        {.text = "Sampled data is out of range, make sure that trigger signal is present "
                 "and Sampler inputs are disconnected or 0V"});
}

} // namespace kv408
